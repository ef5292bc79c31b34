#pragma once

#include <array>
#include <cstdint>

#include "base/status.h"
#include "drawing/blip_store.h"
#include "drawing/shape.h"

class KDRDocument;

namespace mso_escher {

/// What the drawings of a document share.
class MsoRODrawingGroup {
 public:
  void Init(const MsoRORecInfo& container, ChainAllocator& allocator);
  const MsoROBlipStore& GetBlipStore() const { return blipStore_; }
  /// Properties that nothing falls back to.
  const MsoROShapeOPT& GetDefaultProperties() const { return defaults_; }

 private:
  MsoROShapeOPT defaults_;
  MsoROBlipStore blipStore_;
};

/// The shapes of the main document, or of its headers. Only the first group and the first shape count.
class MsoRODrawing {
 public:
  void Init(const MsoRORecInfo& container, ChainAllocator& allocator);
  /// The group of all top-level shapes; not `Good` without.
  const MsoROShape& GetRootShape() const { return root_; }
  const MsoROShape& GetBackgroundShape() const { return background_; }

 private:
  MsoROShape root_;
  MsoROShape background_;
};

}  // namespace mso_escher

/// The drawing group and the two drawings of a document. What could not be read is empty.
class KDRDggInfo {
 public:
  /// kMalformed on a bad layout; what was read until then stays.
  Status Read(const KDRDocument& document);
  Status ReadRecord(ByteView bytes, ChainAllocator& allocator);

  const mso_escher::MsoRODrawingGroup& GetDrawingGroup() const { return group_; }
  /// 0 the main document's drawing, 1 that of the headers.
  const mso_escher::MsoRODrawing& GetDrawing(unsigned int i) const { return drawings_[i < 2 ? i : 0]; }

 private:
  mso_escher::MsoRODrawingGroup group_;
  std::array<mso_escher::MsoRODrawing, 2> drawings_;
};

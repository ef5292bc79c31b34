#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "drawing/embed_shapes.h"
#include "drawing/shape.h"
#include "drawing/shape_positions.h"

class KDRDocument;

namespace ObjectWriter {

/// Finds the shapes of a document by the character positions that anchor them. Built once, so that a search
/// is no walk through the tables.
class ShapeLookup {
 public:
  explicit ShapeLookup(const KDRDocument& document);

  /// A floating shape of the main document.
  struct Floating {
    mso_escher::MsoROShape shape;
    mso_word::FSPA anchor{};
    uint32_t index = 0;  ///< among the top-level shapes
  };
  /// The shape of the first anchor whose range holds `cp`; its handle is null when there is no anchor, or no
  /// top-level shape of its number.
  Floating FindFloating(uint32_t cp) const;

  /// The first inline picture at `cp` that has a shape; null without.
  const KDREmbedShape* FindEmbedded(uint32_t cp) const;

 private:
  void AddAnchors();
  void AddEmbedded();

  const KDRDocument& document_;
  /// Where one anchor, or none, begins to count: sorted, and in effect up to the next.
  struct AnchorStart {
    uint32_t cp;
    uint32_t index;  ///< in the anchor table, kNone between anchors
  };
  static constexpr uint32_t kNone = UINT32_MAX;
  std::vector<AnchorStart> anchors_;
  std::unordered_map<uint32_t, uint32_t> shapes_;    ///< top-level shapes by number
  std::unordered_map<uint32_t, uint32_t> embedded_;  ///< inline pictures by position
};

}  // namespace ObjectWriter

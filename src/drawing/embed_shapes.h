#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "base/byte_view.h"
#include "base/status.h"
#include "drawing/blip_store.h"
#include "drawing/shape.h"
#include "storage/byte_archives.h"
#include "wordreader/plcf.h"
#include "wordreader/text_pool.h"

class KDRDocument;

/// The head of a picture in the "Data" stream (PICF), by offset.
struct PICF {
  static constexpr size_t kSize = 68;
  static constexpr size_t kLength = 0;       ///< u32: bytes of all picture data, this included
  static constexpr size_t kKind = 6;         ///< i16: 100 a shape, 102 a shape with a file name
  static constexpr size_t kMode = 14;        ///< i16: 2 is for readers of VML alone
  static constexpr size_t kGoalWidth = 28;   ///< u16: twips
  static constexpr size_t kGoalHeight = 30;  ///< u16: twips
  static constexpr size_t kScaleX = 32;      ///< u16: thousandths
  static constexpr size_t kScaleY = 34;      ///< u16: thousandths
};

/// An inline picture. Copied by value; what it points at lives in the document's allocator.
struct KDREmbedShape {
  ByteView picture;  ///< the PICF; empty if it is cut, and then there is no shape
  uint8_t nameLength = 0;
  ByteView name;
  const mso_escher::MsoROShape* shape = nullptr;
  const KDRBseTable* blips = nullptr;
  uint32_t cp = 0;  ///< position of the picture's character in its sub-document

  /// Reads the picture at `offset` of the "Data" stream. kFailure for what is no picture.
  Status Init(DsMemReadArchive& stream, uint32_t offset, uint32_t position, ChainAllocator& allocator);
};

/// The inline pictures of all sub-documents.
class KDREmbedShapes {
 public:
  Status Read(const KDRDocument& document);
  uint32_t Count() const { return static_cast<uint32_t>(shapes_.size()); }
  const KDREmbedShape& Item(uint32_t i) const { return shapes_[i]; }

 private:
  Status AppendShape(uint32_t offset, DsMemReadArchive& stream, const KTextPool& pool, const KDWRange& range,
                     ChainAllocator& allocator);

  std::vector<KDREmbedShape> shapes_;
  std::map<uint32_t, KDREmbedShape> byOffset_;  ///< each picture is read once, however many runs name it
  uint64_t bytesLeft_ = 0;                      ///< that may still be read
  uint64_t charactersLeft_ = 0;                 ///< of the story that may still be searched
};

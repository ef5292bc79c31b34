#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "base/byte_view.h"
#include "base/status.h"
#include "drawing/bse_table.h"
#include "drawing/shape.h"
#include "drawing/stream_pieces.h"
#include "wordreader/mso_word.h"

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
  const mso_escher::MsoROShape* shape = nullptr;  ///< good, or null
  const KDRBseTable* blips = nullptr;  ///< the pictures themselves, which are read when they are asked for
  uint32_t cp = 0;                     ///< position of the picture's character in its sub-document

  /// Reads the picture at `offset` of the "Data" stream. `pieces` stays. kFailure for what is no picture.
  Status Init(StreamPieces& pieces, uint32_t offset, uint32_t position, ChainAllocator& allocator);
};

/// The inline pictures of all sub-documents, in the order in which they are found: the main text, headers,
/// text boxes, text boxes of headers, annotations, footnotes, endnotes.
class KDREmbedShapes {
 public:
  KDREmbedShapes() = default;
  KDREmbedShapes(const KDREmbedShapes&) = delete;
  KDREmbedShapes& operator=(const KDREmbedShapes&) = delete;

  /// Looks through the runs of the document. The result tells of the last picture only.
  Status Read(const KDRDocument& document);
  uint32_t Count() const { return static_cast<uint32_t>(shapes_.size()); }
  const KDREmbedShape& Item(uint32_t i) const { return shapes_[i]; }

 private:
  /// The index of the picture at an offset, or that there is none.
  using Known = std::unordered_map<uint32_t, std::optional<uint32_t>>;

  void ReadSubDoc(const KDRDocument& document, mso_word::SUBDOC_TYPE type, Known& known, Status& status);
  Status AppendShape(uint32_t offset, uint32_t cp, Known& known, ChainAllocator& allocator);

  std::vector<KDREmbedShape> shapes_;
  std::optional<StreamPieces> data_;
};

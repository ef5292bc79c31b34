#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "drawing/drawing.h"
#include "drawing/embed_shapes.h"
#include "drawing/stream_pieces.h"
#include "flow/handler.h"
#include "flow/shape_facts.h"
#include "flow/shape_frame.h"
#include "flow/shape_reader.h"
#include "wordreader/position_table.h"
#include "wordreader/word_file.h"

namespace pagerex {

/// A shape as the walk tells it: a picture or a drawing, and the texts of its boxes.
struct FoundShape {
  PictureFacts place;  ///< where it stands, and how large it is
  std::u16string description, name, linkedAddress;
  std::u16string artText;  ///< that is drawn as a picture
  int32_t box = -1;        ///< number of the text box; -1 for none
  bool isRule = false;     ///< a horizontal line between paragraphs
  std::unique_ptr<PictureSource> source;
  std::unique_ptr<PictureSource> fillSource;
  std::unique_ptr<ShapeFacts> shape;

  /// Refers to this.
  PictureFacts Facts() const;
};

/// Shapes and pictures of a document: floating ones by their anchors, inline ones by their place in "Data".
/// Everything is read when it is first asked for. What cannot be read is absent.
class Drawings {
 public:
  explicit Drawings(WordFile& file) : file_(file) {}

  /// What hangs at the anchor at `position` of the main text or of the headers: a picture, a box, or all that
  /// stands in a group.
  std::vector<FoundShape> At(bool isInHeaders, uint32_t position);
  /// The inline picture at `offset` of "Data"; false for none.
  bool Inline(uint32_t offset, FoundShape& out);
  /// What an embedded object shows of itself, by its number; false where it keeps no picture.
  bool Object(uint32_t number, FoundShape& out);

  /// Where the text of box `number` lies in its story; empty for none.
  KDWRange BoxText(bool isInHeaders, uint32_t number);
  uint32_t BoxCount(bool isInHeaders) { return Boxes(isInHeaders).Count(); }
  /// What lies under the pages.
  Shading Background();

 private:
  using Shape = mso_escher::MsoROShape;

  /// Where a shape of the anchor that is told stands.
  struct Placed {
    PictureFacts facts;
    ShapeFrame frame;
    unsigned depth = 0;  ///< in groups
  };

  PositionTable& Boxes(bool isInHeaders);
  const Shape* ShapeWithId(bool isInHeaders, uint32_t id);
  void ReadDrawings();
  void CollectShapes(const Shape& root, std::unordered_map<uint32_t, Shape>& shapes);
  void AddShape(const Shape& shape, const Placed& placed, std::vector<FoundShape>& out);
  void AddChildren(const Shape& group, const Placed& placed, std::vector<FoundShape>& out);
  void TakePlace(const Shape& shape);
  bool ReadProperties(const Shape& shape, ShapeProperties& properties);
  void AddFacts(const Shape& shape, const Placed& placed, FoundShape& out);
  void AddInlineFacts(const KDREmbedShape& shape, FoundShape& out);
  void AddFillPicture(uint32_t index, FoundShape& out);
  std::unique_ptr<PictureSource> StoredPictureAt(uint32_t index);
  void AddNames(const Shape& shape, FoundShape& out);
  void AddText(const Shape& shape, FoundShape& out);
  void Account(std::u16string& text);
  void AddPicture(const Shape& shape, FoundShape& out);

  WordFile& file_;
  std::optional<PositionTable> anchors_[2], boxes_[2];
  std::optional<KDRDggInfo> drawings_;
  std::unordered_map<uint32_t, Shape> shapes_[2];
  uint64_t shapesLeft_ = 0;  ///< that may still be told: a sound document anchors each once
  uint64_t textLeft_ = 0;    ///< characters of descriptions and names that may still be told
  bool hasTextLeft_ = false;
  std::optional<uint64_t> propertyBytesLeft_;  ///< that may still be read: many places may show one shape
  uint64_t inlineBytes_ = 0;                   ///< of properties in "Data", not yet counted there
  bool isInHeaders_ = false;                   ///< the anchor that is told
  ShapePlace place_;                           ///< of the anchor that is told
  DsMemReadArchive text_, data_;
  std::optional<StreamPieces> dataPieces_;
  std::unordered_map<uint32_t, std::optional<KDREmbedShape>> inline_;  ///< by offset
  struct ObjectFace {
    ByteView metafile;
    int32_t width = 0, height = 0;  ///< twips
    uint32_t identity = 0;
  };
  std::unordered_map<uint32_t, ObjectFace> objects_;  ///< by number
  uint32_t objectBytesLeft_ = 64U << 20;              ///< that may still be kept of them
};

}  // namespace pagerex

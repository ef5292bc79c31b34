#include "drawing/drawing.h"
#include "drawing/embed_shapes.h"
#include "drawing/shape_positions.h"
#include "wordreader/document.h"

Status _KDRShpPos::Read(const KDRDocument& document) {
  main_.Read(document);
  KDRTableRecord record;
  Status status = document.GetTableRecord(&record, mso_word::FCLCB_HEADER_SHAPE_ANCHORS);
  if (status == Status::kOk) status = headers_.ReadRecord(record.bytes);
  return failed(status) && headers_.Count() > 0 ? status : Status::kOk;
}

const KShapeAnchors& _KDRShpPos::GetShpPos(mso_word::SUBDOC_TYPE type) const {
  static const KShapeAnchors kNone;
  if (type == mso_word::SUBDOC_MAIN) return main_;
  return type == mso_word::SUBDOC_HEADER ? headers_ : kNone;
}

namespace {

/// A document is not lost for its drawings: a table that lies outside its stream, which throws, counts as
/// absent. Asked for again, it is what was read of it.
template <class T>
const T& Tolerant(const KDRPtr<T>& table, const KDRDocument& document) {
  try {
    return table.ref(document);
  } catch (int) {
    return table.ref(document);
  }
}

}  // namespace

const mso_escher::MsoRODrawingGroup& KDRDocument::GetDrawingGroup() const {
  return Tolerant(drawings_, *this).GetDrawingGroup();
}

const mso_escher::MsoRODrawing& KDRDocument::GetDrawing(unsigned int i) const {
  return Tolerant(drawings_, *this).GetDrawing(i);
}

const KDREmbedShapes& KDRDocument::GetEmbedShapes() const {
  return Tolerant(embedShapes_, *this);
}

const KShapeAnchors& KDRDocument::GetShapePositions(mso_word::SUBDOC_TYPE type) const {
  return Tolerant(shapePositions_, *this).GetShpPos(type);
}

const KTextBoxes& KDRDocument::GetTxbxTxt() const {
  return Tolerant(textBoxes_, *this);
}

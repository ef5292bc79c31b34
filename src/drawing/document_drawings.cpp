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

const mso_escher::MsoRODrawingGroup& KDRDocument::GetDrawingGroup() const {
  return drawings_.ref(*this).GetDrawingGroup();
}

const mso_escher::MsoRODrawing& KDRDocument::GetDrawing(unsigned int i) const {
  return drawings_.ref(*this).GetDrawing(i);
}

const KDREmbedShapes& KDRDocument::GetEmbedShapes() const {
  return embedShapes_.ref(*this);
}

const KShapeAnchors& KDRDocument::GetShapePositions(mso_word::SUBDOC_TYPE type) const {
  return shapePositions_.ref(*this).GetShpPos(type);
}

const KTextBoxes& KDRDocument::GetTxbxTxt() const {
  return textBoxes_.ref(*this);
}

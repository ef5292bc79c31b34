#pragma once

#include "drawing/embed_shapes.h"
#include "drawing/shape_positions.h"
#include "read_drawing.h"
#include "wordreader/document.h"

namespace drawing_test {

/// Asks for all that the reader has and touches every byte that it points at.
class ReadEverything {
 public:
  void drawings(const MsoRODrawing& drawing) {
    shape(drawing.GetRootShape());
    shape(drawing.GetBackgroundShape());
  }

  void shape(const MsoROShape& shape, unsigned int depth = 0) {
    if (!shape.Good()) return;
    ++shapes;
    deepest = std::max(deepest, depth);
    tagRECT rect;
    shape.GetChildAnchor(rect);
    shape.GetGroupCoordBounds(rect);
    sum += shape.GetTextBox().u16(2) + shape.GetShapeType() + shape.GetZOrder();
    table(shape.GetProperties());
    table(shape.GetUDefProperties());
    for (const PID text : {0x00C0, 0x0105, 0x0187, 0x0381}) {
      std::u16string units;
      KQueryProp::QueryBstrProp(&shape, text, units);
      sum += units.size();
    }
    for (unsigned int i = 0; i < shape.GetChildCount(); ++i) this->shape(shape.GetChildShape(i), depth + 1);
  }

  void table(MsoROShapeOPT& table) {
    MsoROShapeProp property;
    for (MsoROShapeOPT::Enumerator walk(table); walk.Next(&property) == Status::kOk;) {
      ++properties;
      touch(property.data);
      const object::CMsoArray array(property.data);
      for (unsigned int i = 0; i < array.GetItemCount(); ++i) touch(array.GetEle(i));
    }
    for (PID id = 0; id < 0x400; ++id) lookUp(table, id);
    table.InitMap();
    for (PID id = 0; id < 0x400; ++id) lookUp(table, id);
    table.ClearMap();
  }

  void store(const MsoROBlipStore& store, DsMemReadArchive* delayStream) {
    for (unsigned int i = 0; i < store.GetCount(); ++i) {
      touch(store.GetFBSE(i));
      const MsoROBlip* const embedded = store.GetBlipNoDelayStrm(i);
      const MsoROBlip* const delayed = store.GetBlipWithDelayStrm(i, delayStream);
      blip(embedded);
      if (delayed != embedded) blip(delayed);
    }
  }

  void table(const KDRBseTable& table) {
    for (unsigned int i = 0; i < table.Count(); ++i) {
      const KDRBseImage& image = *table.ImageItem(i);
      sum += table.Item(i < 3 ? i : 0).u8(8);
      touch(image.uid.part(0, 16));
      touch(image.metafileHeader);
      touch(image.data);
      blips += image.data.empty() ? 0 : 1;
    }
  }

  void embedded(const KDREmbedShape& picture) {
    ++pictures;
    touch(picture.picture);
    touch(picture.name);
    if (picture.shape) shape(*picture.shape);
    if (picture.blips) table(*picture.blips);
  }

  void document(const KDRDocument& document) {
    drawings(document.GetDrawing(0));
    drawings(document.GetDrawing(1));
    store(document.GetDrawingGroup().GetBlipStore(), &document.GetDocFile().getWordDocumentStrm());
    const KDREmbedShapes& embeddedShapes = document.GetEmbedShapes();
    for (uint32_t i = 0; i < embeddedShapes.Count(); ++i) embedded(embeddedShapes.Item(i));
    for (const auto type : {mso_word::SUBDOC_MAIN, mso_word::SUBDOC_HEADER}) {
      const KShapeAnchors& anchors = document.GetShapePositions(type);
      for (uint32_t i = 0; i < anchors.PresentCount(); ++i) sum += anchors.Item(i).data.shapeId;
    }
    sum += document.GetTxbxTxt().Count();
  }

  size_t shapes = 0;
  size_t properties = 0;
  size_t blips = 0;  ///< with an image
  size_t pictures = 0;
  unsigned int deepest = 0;
  uint64_t sum = 0;  ///< of all that was touched, so that the reading is not left out

 private:
  void lookUp(const MsoROShapeOPT& table, PID id) {
    MsoROShapeProp property;
    bool flag = false;
    if (table.Find(id, &property) == Status::kOk) touch(property.data);
    if (table.FindBool(id, flag) == Status::kOk) sum += flag;
  }

  void blip(const MsoROBlip* blip) {
    if (!blip) return;
    blips += blip->data.empty() ? 0 : 1;
    touch(blip->metafileHeader);
    touch(blip->data);
  }

  void touch(ByteView bytes) {
    for (size_t i = 0; i < bytes.size(); ++i) sum += bytes.data()[i];
  }
};

}  // namespace drawing_test

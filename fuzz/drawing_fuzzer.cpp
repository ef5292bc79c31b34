// Reads the drawings of a document, and writes them: shapes, their properties and pictures.
//
// Input: 32 bits of the length of the drawing table, the table, then the "Data" stream. The text around them
// is always the same: anchors of the shapes numbered from 1025, pictures in the line, two text boxes.

#include "base/chain_allocator.h"
#include "document_input.h"
#include "drawing/drawing.h"
#include "drawing/query_prop.h"
#include "drawing_text.h"

namespace {

using mso_escher::MsoROShape;
using mso_escher::MsoROShapeOPT;
using mso_escher::MsoROShapeProp;

void readProperties(const MsoROShape& shape) {
  MsoROShapeOPT::Enumerator all(shape.GetProperties());
  int count = 0;
  for (MsoROShapeProp prop; count < 64 && all.Next(&prop) == Status::kOk; ++count) {
    int number = 0;
    bool flag = false;
    std::u16string text;
    KQueryProp::QueryI4Prop(&shape, prop.id(), number);
    KQueryProp::QueryBoolProp(&shape, prop.id(), flag);
    KQueryProp::QueryBstrProp(&shape, prop.id(), text);
    const object::CMsoArray array(prop.data);
    for (unsigned i = 0; i < array.GetItemCount() && i < 64; ++i) array.GetEle(i);
  }
}

void readShape(const MsoROShape& shape) {
  if (!shape.Good()) return;
  readProperties(shape);
  for (unsigned i = 0; i < shape.GetChildCount(); ++i) readShape(shape.GetChildShape(i));
}

void readTable(ByteView bytes) {
  ChainAllocator allocator;
  KDRDggInfo info;
  info.ReadRecord(bytes, allocator);
  for (unsigned i : {0u, 1u}) {
    readShape(info.GetDrawing(i).GetRootShape());
    readShape(info.GetDrawing(i).GetBackgroundShape());
  }
  const mso_escher::MsoROBlipStore& store = info.GetDrawingGroup().GetBlipStore();
  for (unsigned i = 0; i < store.GetCount(); ++i) store.GetBlipNoDelayStrm(i);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  const fuzz::DrawingInput drawing = fuzz::splitDrawing(input, size);
  readTable(ByteView(drawing.table.data(), drawing.table.size()));
  fuzz::convert(fuzz::documentWith(drawing).build(), "normal");
  return 0;
}

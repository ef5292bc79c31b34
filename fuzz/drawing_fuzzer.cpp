// Reads the drawings of a document, and writes them: shapes, their properties and pictures.
//
// Input: 32 bits of the length of the drawing table, the table, then the "Data" stream. The text around them
// is always the same: anchors of the shapes numbered from 1025, pictures in the line, two text boxes.

#include <algorithm>

#include "base/chain_allocator.h"
#include "document_input.h"
#include "drawing/drawing.h"
#include "drawing/query_prop.h"
#include "drawing_text.h"
#include "mutations.h"

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

// Half of the changes to the data leave it as long as it is: the text points at places in it.
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned int seed) {
  fuzz::Random random(seed);
  fuzz::DrawingInput drawing = fuzz::splitDrawing(data, size);
  const size_t room = maxSize - std::min(maxSize, size);
  if (drawing.data.empty() || random() % 3 != 0) {
    fuzz::changeRecords(drawing.table, room, random);
  } else if (random() % 2) {
    fuzz::changeInPlace(drawing.data, 0, drawing.data.size());
  } else {
    fuzz::changeRecords(drawing.data, room, random);
  }
  const support::Bytes joined = fuzz::joinDrawing(drawing);
  const size_t result = std::min(joined.size(), maxSize);
  std::copy_n(joined.begin(), result, data);
  return result;
}

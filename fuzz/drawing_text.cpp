#include "drawing_text.h"

#include <algorithm>
#include <vector>

#include "support/drawing_writer.h"

namespace fuzz {

using namespace support;

namespace {

constexpr uint32_t kPictureOffsets[] = {0, 200, 1000};
constexpr char16_t kShapeMark = 8;
constexpr char16_t kPictureMark = 1;

/// The table has to name the shapes by their anchors; what it holds comes from the input.
void addAnchors(WordDocument& doc) {
  drawing::Drawing anchors;
  for (uint32_t i = 0; i < kShapeCount; ++i) {
    const int32_t left = static_cast<int32_t>(i) * 1500;
    anchors.anchor(i, kFirstShapeId + i, {.rect = {left, 0, left + 1000, 800}});
  }
  Story& boxes = doc.story(mso_word::SUBDOC_TEXTBOX);
  boxes.paragraph("one");
  boxes.paragraph("two");
  anchors.addTo(doc, {4, 4});
}

}  // namespace

DrawingInput splitDrawing(const uint8_t* input, size_t size) {
  DrawingInput drawing;
  if (size < 4) return drawing;
  const size_t wanted = input[0] | input[1] << 8 | input[2] << 16 | uint32_t{input[3]} << 24;
  const size_t length = std::min(wanted, size - 4);
  drawing.table.assign(input + 4, input + 4 + length);
  drawing.data.assign(input + 4 + length, input + size);
  return drawing;
}

Bytes joinDrawing(const DrawingInput& drawing) {
  return ByteWriter()
      .u32(static_cast<uint32_t>(drawing.table.size()))
      .bytes(drawing.table)
      .bytes(drawing.data)
      .take();
}

WordDocument documentWith(const DrawingInput& drawing) {
  WordDocument doc;
  Paragraph& anchors = doc.paragraph();
  for (uint32_t i = 0; i < kShapeCount; ++i) anchors.special(kShapeMark);
  Paragraph& pictures = doc.paragraph("pictures ");
  for (const uint32_t offset : kPictureOffsets) pictures.special(kPictureMark, {sprm(0x6A03, offset)});
  doc.paragraph("end");
  addAnchors(doc);
  doc.table(mso_word::FCLCB_DRAWINGS, drawing.table);
  if (!drawing.data.empty()) doc.data(drawing.data);
  return doc;
}

}  // namespace fuzz

#include <zlib.h>

#include "base/byte_view.h"
#include "limits/hostile_documents.h"
#include "support/drawing_writer.h"
#include "support/word_document_writer.h"

using namespace support;
using namespace support::drawing;

namespace {

constexpr Rect kBox = {0, 0, 2000, 1000};

Bytes deflated(const Bytes& raw) {
  Bytes out(compressBound(raw.size()));
  uLongf size = out.size();
  compress2(out.data(), &size, raw.data(), raw.size(), 9);
  out.resize(size);
  return out;
}

/// One anchor for all of the text in front of the end.
void anchorAll(WordDocument& document, uint32_t characters, uint32_t shapeId) {
  const Bytes record = ByteWriter().u32(shapeId).zeros(22).take();
  document.table(mso_word::FCLCB_SHAPE_ANCHORS, positionTable({0, characters}, {record}));
}

/// A shape of many points.
Props longPath(uint16_t points) {
  Bytes vertices;
  Bytes segments;
  for (uint16_t i = 0; i < points; ++i) {
    const Bytes point = ByteWriter().u16(60000u + i % 5000).u16(61111).take();
    vertices.insert(vertices.end(), point.begin(), point.end());
    segments.insert(segments.end(), {1, 0});
  }
  return Props().array(0x0145, points, 4, vertices).array(0x0146, points, 2, segments);
}

/// A text box that is drawn at each character.
Bytes boxDrawnOften(uint32_t scale) {
  WordDocument document;
  const uint32_t count = scale * 1000;
  document.paragraph().run(std::string(count, '\x08'), {sprm(0x0855, 1)});
  document.paragraph(kTheEnd);
  document.story(mso_word::SUBDOC_TEXTBOX).paragraph("Inside");
  Drawing().shape(0, Shape(202).textBox(1), {.rect = kBox}).addTo(document, {7});
  anchorAll(document, count, 1025);
  return document.build();
}

/// Text boxes that show each other.
Bytes boxesOfBoxes(uint32_t scale) {
  WordDocument document;
  const uint32_t boxes = scale * 4;
  Drawing drawing;
  std::vector<uint32_t> lengths;
  Story& story = document.story(mso_word::SUBDOC_TEXTBOX);
  for (uint32_t i = 0; i < boxes; ++i) {
    story.paragraph().special(8).special(8).special(8);
    lengths.push_back(4);
    drawing.shape(i, Shape(202, 1 + i).textBox(static_cast<uint16_t>(i * 7 % boxes + 1)), {.rect = kBox});
  }
  document.paragraph().run(std::string(4 * size_t{boxes}, '\x08'), {sprm(0x0855, 1)});
  document.paragraph(kTheEnd);
  drawing.addTo(document, lengths);
  return document.build();
}

/// A group of many shapes that is drawn at each character.
Bytes groupDrawnOften(uint32_t scale) {
  WordDocument document;
  std::vector<Shape> children;
  for (uint32_t i = 0; i < scale * 12; ++i) children.push_back(Shape(1, 2 + i).at({0, 0, 9, 9}));
  document.paragraph().run(std::string(1000, '\x08'), {sprm(0x0855, 1)});
  document.paragraph(kTheEnd);
  Drawing().shape(0, Shape(0, 1).group({0, 0, 99, 99}, children), {.rect = kBox}).addTo(document);
  anchorAll(document, 1000, 1);
  return document.build();
}

/// Runs that all show one picture.
Bytes runsOfOnePicture(uint32_t scale, const Props& props) {
  WordDocument document;
  Inline picture;
  picture.shape = Shape(75).props(props);
  const Sprms run = pictureRun(document, picture);
  Paragraph& paragraph = document.paragraph();
  for (uint32_t i = 0; i < scale * 60; ++i) paragraph.breakRun().special(1, run);
  document.paragraph(kTheEnd);
  return document.build();
}

Bytes runsOfOneLongPicture(uint32_t scale) {
  return runsOfOnePicture(scale, longPath(10000));
}

/// Its properties are looked at each time and write nothing.
Bytes runsOfOneSilentPicture(uint32_t scale) {
  return runsOfOnePicture(scale, Props().complex(0x0382, Bytes(100000)));
}

Bytes runsOfOneSmallPicture(uint32_t scale) {
  return runsOfOnePicture(scale, Props());
}

Blip hugeMetafile(size_t bytes) {
  return {
      .type = 2, .data = deflated(Bytes(bytes)), .rawSize = static_cast<uint32_t>(bytes), .compression = 0};
}

/// Metafiles of 64 MiB from a thousandth of it, one behind the other.
Bytes hugeMetafiles(uint32_t scale) {
  WordDocument document;
  Drawing drawing;
  Blip blip = hugeMetafile(8 << 20);
  Paragraph& paragraph = document.paragraph();
  for (uint32_t i = 0; i < scale / 8 + 1; ++i) {
    blip.uid = static_cast<uint8_t>(i);
    paragraph.special(8);
    drawing.shape(i, Shape(75, 1 + i).props(Props().number(0x4104, drawing.blip(blip))), {.rect = kBox});
  }
  document.paragraph(kTheEnd);
  drawing.addTo(document);
  return document.build();
}

/// Entries of the store with identities of their own that share one metafile.
Bytes entriesOfOneMetafile(uint32_t scale) {
  WordDocument document;
  Drawing drawing;
  Blip blip = hugeMetafile(1 << 20);
  blip.delayed = true;
  const uint32_t place = document.wordDocumentData(blip.bytes());
  Paragraph& paragraph = document.paragraph();
  const uint32_t count = std::min(scale * 4, 255u);
  for (uint32_t i = 0; i < count; ++i) {
    Blip entry{.type = 2, .data = {}, .uid = static_cast<uint8_t>(i), .delayed = true};
    paragraph.special(8);
    drawing.shape(i, Shape(75, 1 + i).props(Props().number(0x4104, drawing.blip(entry))), {.rect = kBox});
  }
  document.paragraph(kTheEnd);
  Bytes table = drawing.table(document);
  drawing.addTo(document);
  // All entries name the first place.
  constexpr size_t kDelayOffset = 8 + 28;
  for (size_t at = 0; at + 44 < table.size(); ++at) {
    const ByteView record(table.data() + at, 8);
    if (record.u16(2) == 0xF007 && record.u32(4) == 36) patchInteger(table, at + kDelayOffset, place);
  }
  document.table(mso_word::FCLCB_DRAWINGS, table);
  document.wordDocumentData(Bytes(size_t{scale} * 500));
  return document.build();
}

/// Shapes that are nothing but the head of a record.
Bytes emptyShapes(uint32_t scale) {
  WordDocument document;
  document.paragraph().special(8);
  document.paragraph(kTheEnd);
  Bytes shapes;
  const Bytes head = container(0xF004, {});
  for (uint32_t i = 0; i < scale * 120; ++i) shapes.insert(shapes.end(), head.begin(), head.end());
  const Bytes own = Shape(0, 1024).flags(5).bytes();
  const Bytes root = container(0xF003, {own, shapes});
  const Bytes drawing = container(0xF002, {record(0xF008, 1, 0, Bytes(8)), root});
  document.table(
      mso_word::FCLCB_DRAWINGS,
      ByteWriter().bytes(container(0xF000, {record(0xF006, 0, 0, Bytes(16))})).u8(0).bytes(drawing).take());
  anchorAll(document, 1, 1);
  return document.build();
}

/// Shapes that are small in the file and long in the page.
Bytes smallShapes(uint32_t scale) {
  WordDocument document;
  Drawing drawing;
  const uint32_t count = scale * 10;
  document.paragraph().run(std::string(count, '\x08'), {sprm(0x0855, 1)});
  document.paragraph(kTheEnd);
  for (uint32_t i = 0; i < count; ++i) drawing.shape(i, Shape(3, 1 + i), {.rect = kBox});
  drawing.addTo(document);
  return document.build();
}

}  // namespace

std::vector<HostileDocument> hostileObjects() {
  return {
      {"BoxDrawnOften", boxDrawnOften},
      {"BoxesOfBoxes", boxesOfBoxes},
      {"GroupDrawnOften", groupDrawnOften},
      {"RunsOfOneSmallPicture", runsOfOneSmallPicture},
      {"RunsOfOneLongPicture", runsOfOneLongPicture},
      {"RunsOfOneSilentPicture", runsOfOneSilentPicture},
      {"HugeMetafiles", hugeMetafiles},
      {"EntriesOfOneMetafile", entriesOfOneMetafile},
      {"EmptyShapes", emptyShapes},
      {"SmallShapes", smallShapes},
  };
}

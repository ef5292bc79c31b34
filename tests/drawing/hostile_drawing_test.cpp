#include <gtest/gtest.h>

#include <random>

#include "read_everything.h"
#include "support/opened_document.h"

using namespace drawing_test;
using support::OpenedDocument;
using support::sprm;
using support::WordDocument;
using support::drawing::Inline;
using support::drawing::pictureRun;

namespace {

/// Shapes with all that the reader looks at.
Shape richShape(uint32_t id) {
  const Props props = Props()
                          .number(0x4104, 1)
                          .text(0x105, u"name")
                          .array(0x145, 2, 0xFFF0, Bytes(8, 3))
                          .array(0x146, 3, 2, Bytes(6))
                          .flag(0x1BB, true)
                          .complex(0x381, Bytes(20, 'a'));
  return Shape(202, id).props(props).userProps(Props().flag(0x1BA, false)).textBox(1);
}

Drawing richDrawing() {
  Drawing drawing;
  const Shape inner = Shape(0, 20).group({0, 0, 100, 100}, {richShape(21).at({1, 2, 3, 4}), richShape(22)});
  drawing.shape(0, richShape(10));
  drawing.shape(1, Shape(0, 11).group({0, 0, 50, 50}, {inner, richShape(12)}));
  drawing.blip({.type = 6, .data = Bytes(50, 1)});
  drawing.blip({.type = 3, .data = Bytes(50, 2), .rawSize = 100, .compression = 0});
  drawing.blip({.type = 5, .data = Bytes(50, 3), .delayed = true});
  return drawing;
}

Inline richPicture() {
  return {.shape = richShape(5), .blips = {Blip{.type = 6, .data = Bytes(30)}, Blip{.type = 2}}, .mm = 102};
}

/// Changes a few bytes or whole words, or cuts the end off. Small and large values hit lengths best.
Bytes mutated(const Bytes& sound, std::mt19937& random) {
  Bytes bytes = sound;
  for (unsigned int changes = 1 + random() % 8; changes > 0; --changes) {
    const size_t at = random() % bytes.size();
    switch (random() % 4) {
      case 0:
        bytes[at] = static_cast<uint8_t>(random());
        break;
      case 1:
        bytes[at] = random() % 2 ? 0xFF : 0x00;
        break;
      case 2:
        if (at + 4 <= bytes.size()) support::patchInteger(bytes, at, static_cast<uint32_t>(random()));
        break;
      default:
        bytes[at] = static_cast<uint8_t>(bytes[at] + random() % 9 - 4);
        break;
    }
  }
  if (random() % 8 == 0) bytes.resize(random() % bytes.size() + 1);
  return Bytes(bytes);  // in memory of exactly its size
}

TEST(HostileDrawing, OfRandomChangesIsReadWithinItsBytes) {
  WordDocument unused;
  const Bytes sound = richDrawing().table(unused);
  std::mt19937 random(1);
  size_t shapes = 0;
  for (int i = 0; i < 3000; ++i) {
    const ReadDrawings read(mutated(sound, random));
    ReadEverything all;
    all.drawings(read.drawing());
    all.store(read.store(), nullptr);
    EXPECT_LE(all.shapes, sound.size() / 8);
    shapes += all.shapes;
  }
  EXPECT_GT(shapes, 3000u) << "most changes leave shapes";
}

TEST(HostileDrawing, OfRandomBytesIsReadWithinThem) {
  std::mt19937 random(2);
  for (int i = 0; i < 3000; ++i) {
    Bytes bytes =
        joined({ByteWriter().u16(0xF).u16(0xF000).u32(random() % 300).take(), Bytes(random() % 400)});
    for (size_t at = 8; at < bytes.size(); ++at)
      bytes[at] = static_cast<uint8_t>(random() % 16 ? 0 : random());
    // Types of records, where chance would hardly bring them.
    for (size_t at = 8; at + 8 < bytes.size(); at += 8 + random() % 30) {
      support::patchInteger(bytes, at + 2, static_cast<uint16_t>(0xF000 + random() % 0x14));
      support::patchInteger(bytes, at + 4, static_cast<uint32_t>(random() % 200));
    }
    const ReadDrawings read(bytes);
    ReadEverything all;
    all.drawings(read.drawing());
    all.store(read.store(), nullptr);
    EXPECT_LE(all.shapes, bytes.size() / 8);
  }
}

TEST(HostileBlipList, OfRandomChangesIsReadWithinItsBytes) {
  Bytes sound;
  for (const Blip& blip : richPicture().blips) sound = joined({sound, blip.entry()});
  std::mt19937 random(3);
  for (int i = 0; i < 5000; ++i) {
    const Bytes bytes = mutated(sound, random);
    KDRBseTable table;
    table.Init(viewOf(bytes));
    ReadEverything all;
    all.table(table);
    EXPECT_LE(all.blips, bytes.size() / 44);
  }
}

TEST(HostileDocument, OfRandomChangesToItsDrawingsIsReadSafely) {
  std::mt19937 random(4);
  for (int i = 0; i < 150; ++i) {
    WordDocument document;
    document.paragraph().special(8).special(8).special(1, pictureRun(document, richPicture()));
    document.paragraph().special(1, pictureRun(document, richPicture()));
    richDrawing().addTo(document, {3});
    const auto change = [&random](Bytes& bytes) { bytes = mutated(bytes, random); };
    document.editData(change);
    document.editTable(mso_word::FCLCB_DRAWINGS, change);
    document.editTable(mso_word::FCLCB_SHAPE_ANCHORS, change);
    const OpenedDocument opened(document);
    ASSERT_EQ(opened.status(), Status::kOk);
    ReadEverything().document(*opened);
  }
}

TEST(HostileDocument, IsReadAsTheSoundOneWithoutChanges) {
  WordDocument document;
  document.paragraph().special(8).special(8).special(1, pictureRun(document, richPicture()));
  richDrawing().addTo(document, {3});
  const OpenedDocument opened(document);
  ReadEverything all;
  all.document(*opened);
  EXPECT_EQ(all.shapes, 1u + 6u + 1u) << "the root, its shapes and the inline one";
  EXPECT_EQ(all.deepest, 3u);
  EXPECT_EQ(all.pictures, 1u);
  EXPECT_EQ(all.blips, 3u + 2u);
}

// What is read is limited, so that more than one walk does not come to its end.

TEST(ManyPictures, AreReadInOneWalk) {
  constexpr uint32_t kPictures = 10'000;
  WordDocument document;
  support::Paragraph& paragraph = document.paragraph();
  for (uint32_t i = 0; i < kPictures; ++i) paragraph.special(1, pictureRun(document, richPicture()));
  const OpenedDocument opened(document);
  const KDREmbedShapes& shapes = opened->GetEmbedShapes();
  ASSERT_EQ(shapes.Count(), kPictures) << "a search from the text's start for each would end at its limit";
  for (uint32_t i = 0; i < kPictures; ++i) {
    ASSERT_NE(shapes.Item(i).shape, nullptr)
        << "what is read twice from the stream counts twice, and ends too";
  }
}

// So many that a walk over those before each would go on for hours.
TEST(ManyShapes, AreReadInOneWalk) {
  constexpr uint32_t kShapes = 1'000'000;
  ByteWriter children;
  children.bytes(container(0xF004, {fsp(0, 1, kGroupFlags)}));
  Bytes child = container(0xF004, {fsp(1, 0, kShapeFlags)});
  for (uint32_t i = 0; i < kShapes; ++i) {
    support::patchInteger(child, 16, i);
    children.bytes(child);
  }
  const ReadDrawings read(
      joined({groupOf({}), {0}, container(0xF002, {container(0xF003, {children.take()})})}));
  const MsoROShape root = read.drawing().GetRootShape();
  ASSERT_EQ(root.GetChildCount(), kShapes);
  for (uint32_t i = 0; i < kShapes; ++i) ASSERT_EQ(root.GetChildShape(i).GetShapeID(), i);
}

}  // namespace

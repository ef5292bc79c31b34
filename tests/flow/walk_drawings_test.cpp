#include <gtest/gtest.h>

#include "flow/walked_document.h"
#include "support/canvas.h"
#include "support/named_sprms.h"

using namespace flow_test;
using namespace support;
using namespace support::drawing;

namespace {

FillStory text(const char* words) {
  return [words](Story& story) { story.paragraph(words); };
}

}  // namespace

TEST(WalkDrawings, TextBoxesStandBehindTheirParagraph) {
  WordDocument doc;
  addShape(doc.paragraph("a"), textBox(doc, 1025, text("in the box"))).run("b");
  doc.paragraph("c");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "ab"
textBox 0
  paragraph
    text "in the box"
paragraph
  text "c"
)");
}

TEST(WalkDrawings, TextBoxesHaveTablesAndSeveralParagraphs) {
  WordDocument doc;
  addShape(doc.paragraph("a"), textBox(doc, 1025, [](Story& story) {
             story.row({"x", "y"}, {defTableSprm({0, 1000, 2000})});
             story.paragraph("behind");
           }));
  EXPECT_EQ(Walked(doc).characters(), u"a\nx\ny\nbehind\n");
}

TEST(WalkDrawings, GroupedTextBoxesAreAllTold) {
  WordDocument doc;
  const Shape one = textBox(doc, 1026, text("one")).at({0, 0, 100, 100});
  const Shape two = textBox(doc, 1027, text("two")).at({100, 0, 200, 100});
  const Shape inner = Shape(0, 1028).at({0, 0, 200, 100}).group({0, 0, 200, 100}, {two});
  addShape(doc.paragraph("a"), Shape(0, 1025).group({0, 0, 200, 100}, {one, inner}),
           {.rect = {0, 0, 2000, 1000}});
  EXPECT_EQ(Walked(doc).characters(), u"a\none\ntwo\n");
}

TEST(WalkDrawings, ChainedTextBoxesTellTheirTextOnce) {
  WordDocument doc;
  const auto boxes = textBoxes(doc, {1025, 1026}, text("flows on"));
  addShape(addShape(doc.paragraph("a"), boxes[0]), boxes[1]);
  EXPECT_EQ(Walked(doc).characters(), u"a\nflows on\n");
}

TEST(WalkDrawings, TextBoxesOfHeadersStandThere) {
  WordDocument doc;
  addShape(doc.paragraph("text"), textBox(doc, 1025, text("box of the text")));
  addShape(doc.header(0, HeaderSlot::kOddHeader).paragraph("head"),
           textBox(doc, 2049, text("box of the header"), true));
  EXPECT_EQ(Walked(doc).characters(), u"head\nbox of the header\ntext\nbox of the text\n");
}

TEST(WalkDrawings, FieldsAndListsWorkInTextBoxes) {
  WordDocument doc;
  addShape(doc.paragraph("a"), textBox(doc, 1025, [](Story& story) {
             story.paragraph("x").field(88, " HYPERLINK \\l \"b\" ", "y");
           }));
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "a"
textBox 0
  paragraph
    text "x"
    link #b
      text "y"
)");
}

TEST(WalkDrawings, ATextBoxWhoseTextIsMissingIsNoTrouble) {
  WordDocument doc;
  addShape(doc.paragraph("a"), textBox(doc, 1025, text("gone"))).run("b");
  doc.dropTable(mso_word::FCLCB_TEXTBOXES);
  EXPECT_EQ(Walked(doc).characters().substr(0, 3), u"ab\n");
}

TEST(WalkDrawings, InlinePicturesStandInTheText) {
  WordDocument doc;
  Canvas canvas(doc);
  doc.paragraph("a").special(1, canvas.inlinePicture(kPng, Bytes(100, 7), 1440, 720)).run("b");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "a"
  picture 1440x720 inline type=6 bytes=100
  text "b"
)");
}

TEST(WalkDrawings, InlinePicturesThatAreCountedOnHaveTheirOwnBytes) {
  WordDocument doc;
  const Inline second{.shape = Shape(75).props(Props().number(property::kPicture, 2)),
                      .blips = {Blip{.type = kPng, .data = Bytes(30, 7)}}};
  doc.paragraph().special(1, pictureRun(doc, second));
  const std::string told = transcriptOf(doc);
  EXPECT_NE(told.find("type=6 bytes=30"), std::string::npos) << told;
}

TEST(WalkDrawings, PicturesOfRareKindsAreTold) {
  constexpr uint8_t kStoredTiff = 17, kStoredCmykJpeg = 18;
  for (const auto& [stored, told] :
       {std::pair(kStoredTiff, "type=8 bytes=30"), {kStoredCmykJpeg, "type=5 bytes=30"}}) {
    WordDocument doc;
    const Blip blip{.type = stored, .data = Bytes(30, 7)};
    const Props props = Props().number(property::kPicture, doc.storePicture(blip.entry()));
    addShape(doc.paragraph(), Shape(kPictureFrame, 1025).props(props));
    doc.paragraph().special(1, pictureRun(doc, {.shape = Shape(75).props(props), .blips = {blip}}));
    const std::string all = transcriptOf(doc);
    const size_t first = all.find(told);
    ASSERT_NE(first, std::string::npos) << all;
    EXPECT_NE(all.find(told, first + 1), std::string::npos) << all;
  }
}

namespace {

/// A document with an object whose storage keeps a metafile of 10 bytes, to be shown 700 x 250 twips large.
void addObject(WordDocument& doc) {
  ByteWriter size;
  size.zeros(20).u32(1400).u32(500).zeros(16).u32(500).u32(500);
  doc.stream(u"ObjectPool/_1234567/\x03PIC", size.take());
  doc.stream(u"ObjectPool/_1234567/\x03META", ByteWriter().zeros(8).bytes(Bytes(10, 7)).take());
}

}  // namespace

TEST(WalkDrawings, ObjectsShowTheMetafileThatTheyKeep) {
  WordDocument doc;
  addObject(doc);
  doc.paragraph("a").special(1, {sprm(0x6A03, 1234567), sprm(0x080A, 1)}).run("b");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "a"
  picture 700x250 inline type=3 bytes=10
  text "b"
)");
}

TEST(WalkDrawings, NumbersOfObjectsAreNoneOfOtherPictures) {
  WordDocument doc;
  addObject(doc);
  doc.paragraph("a").special(1, {sprm(0x6A03, 1234567)}).run("b");
  doc.paragraph("c").special(1, {sprm(0x6A03, 7654321), sprm(0x080A, 1)}).run("d");
  Walked walked(doc);
  EXPECT_EQ(walked.characters(), u"ab\ncd\n");
  EXPECT_TRUE(walked.warnsOf(pagerex::WarningCode::kPicture)) << "of the first, which is no object";
}

TEST(WalkDrawings, InlinePicturesOfTwoIdentitiesHaveTheirOwnBytes) {
  WordDocument doc;
  constexpr size_t kInstance = 44, kBytes = 28, kIdentity = 52;
  Bytes entry = Blip{.type = kPng, .data = Bytes(30, 7)}.entry();
  entry[kInstance] |= 0x10;
  patchInteger(entry, kInstance + 4, uint32_t{16 + 16 + 1 + 30});
  patchInteger(entry, kBytes, uint32_t{8 + 16 + 16 + 1 + 30});
  patchInteger(entry, 4, uint32_t{36 + 8 + 16 + 16 + 1 + 30});
  entry.insert(entry.begin() + kIdentity, 16, 0x22);
  Bytes picture = Inline{.shape = Shape(75).props(Props().number(property::kPicture, 1))}.bytes();
  picture.insert(picture.end(), entry.begin(), entry.end());
  patchInteger(picture, 0, static_cast<uint32_t>(picture.size()));
  doc.paragraph().special(1, {sprm(0x6A03, doc.data(picture))});
  const std::string told = transcriptOf(doc);
  EXPECT_NE(told.find("type=6 bytes=30"), std::string::npos) << told;
}

TEST(WalkDrawings, HorizontalLinesAreRules) {
  constexpr uint16_t kHorizontalRule = 0x03B4;
  const Props rule = Props().flag(kHorizontalRule, true);
  for (const Shape& shape : {Shape(1).props(rule), Shape(1).userProps(rule)}) {
    WordDocument doc;
    doc.paragraph().special(1, pictureRun(doc, Inline{.shape = shape}));
    EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  rule
)");
  }
}

TEST(WalkDrawings, FloatingPicturesAreTold) {
  WordDocument doc;
  const uint32_t picture = doc.storePicture(Blip{.type = kJpeg, .data = Bytes(50, 9)}.entry());
  const Props props = Props().number(property::kPicture, picture).text(0x0381, u"What it shows");
  addShape(doc.paragraph("a"), Shape(kPictureFrame, 1025).props(props),
           {.rect = {100, 200, 2100, 1200}, .wrap = 2});
  const std::string told = transcriptOf(doc);
  EXPECT_NE(
      told.find("picture description=\"What it shows\" 2000x1000 wrap=2 left=100 top=200 type=5 bytes=50"),
      std::string::npos)
      << told;
}

TEST(WalkDrawings, ADrawingWithoutPictureIsOneWithoutBytes) {
  WordDocument doc;
  addShape(doc.paragraph("a"), Shape(kEllipse, 1025), {.rect = {0, 0, 2000, 1000}});
  const std::string told = transcriptOf(doc);
  EXPECT_NE(told.find("picture 2000x1000"), std::string::npos) << told;
  EXPECT_EQ(told.find("bytes="), std::string::npos) << told;
}

TEST(WalkDrawings, APictureThatIsNotThereIsTold) {
  WordDocument doc;
  doc.paragraph("a").special(1, {sprm(0x6A03, 0x7FFFFFFF)}).run("b");
  Walked walked(doc);
  EXPECT_EQ(walked.characters(), u"ab\n");
  EXPECT_TRUE(walked.warnsOf(pagerex::WarningCode::kPicture));
}

#include "drawing/embed_shapes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "read_drawing.h"
#include "support/opened_document.h"

using namespace drawing_test;
using support::OpenedDocument;
using support::sprm;
using support::Sprms;
using support::WordDocument;
using support::drawing::Inline;
using support::drawing::pictureRun;
using testing::ElementsAre;

namespace {

constexpr uint16_t kSprmCFData = 0x0806;
constexpr uint16_t kSprmCPicLocation = 0x6A03;
constexpr size_t kShapeAt = PICF::kSize;

Bytes bytesOf(ByteView view) {
  return Bytes(view.data(), view.data() + view.size());
}

Inline pictureOf(uint32_t id) {
  return {.shape = Shape(75, id)};
}

/// A document of one picture, as its bytes in "Data".
class OnePicture {
 public:
  explicit OnePicture(const Inline& picture) : OnePicture(picture.bytes()) {}
  explicit OnePicture(const Bytes& data) : opened_(documentOf(data)) {}

  bool isThere() const { return opened_->GetEmbedShapes().Count() == 1; }
  const KDREmbedShape* operator->() const { return &opened_->GetEmbedShapes().Item(0); }

 private:
  static WordDocument documentOf(const Bytes& data) {
    WordDocument document;
    document.paragraph().special(1, {sprm(kSprmCPicLocation, document.data(data))});
    return document;
  }

  OpenedDocument opened_;
};

std::vector<uint32_t> positionsOf(const KDREmbedShapes& pictures) {
  std::vector<uint32_t> positions;
  for (uint32_t i = 0; i < pictures.Count(); ++i) positions.push_back(pictures.Item(i).cp);
  return positions;
}

std::vector<uint32_t> idsOf(const KDREmbedShapes& pictures) {
  std::vector<uint32_t> ids;
  for (uint32_t i = 0; i < pictures.Count(); ++i) ids.push_back(pictures.Item(i).shape->GetShapeID());
  return ids;
}

// Where pictures are found.

TEST(InlinePictures, OfADocumentWithoutDataAreNone) {
  WordDocument document;
  document.paragraph().special(1, {sprm(kSprmCPicLocation, 0)});
  EXPECT_EQ(OpenedDocument(document)->GetEmbedShapes().Count(), 0u);
}

TEST(InlinePictures, LieWhereTheirCharactersAre) {
  WordDocument document;
  document.paragraph("ab").special(1, pictureRun(document, pictureOf(5)));
  document.paragraph("c").special(1, pictureRun(document, pictureOf(6)));
  const OpenedDocument opened(document);
  EXPECT_THAT(positionsOf(opened->GetEmbedShapes()), ElementsAre(2, 5));
  EXPECT_THAT(idsOf(opened->GetEmbedShapes()), ElementsAre(5, 6));
}

TEST(InlinePictures, LieAtTheFirstCharacterOfTheirRun) {
  WordDocument document;
  document.paragraph("ab").run(u"cd\x01\x01", pictureRun(document, pictureOf(5)));
  EXPECT_THAT(positionsOf(OpenedDocument(document)->GetEmbedShapes()), ElementsAre(4));
}

TEST(InlinePictures, NeedACharacterInTheirRun) {
  WordDocument document;
  document.paragraph().special(1).run("text", pictureRun(document, pictureOf(5))).breakRun().special(1);
  EXPECT_EQ(OpenedDocument(document)->GetEmbedShapes().Count(), 0u);
}

TEST(InlinePictures, AreNoneInAFormField) {
  WordDocument document;
  const Bytes location = sprm(kSprmCPicLocation, document.data(pictureOf(5).bytes()));
  document.paragraph().special(1, {sprm(kSprmCFData, 1), location});
  document.paragraph().special(1, {location, sprm(kSprmCFData, 0)});
  EXPECT_EQ(OpenedDocument(document)->GetEmbedShapes().Count(), 0u);
}

TEST(InlinePictures, AreTakenFromTheFirstLocationOfTheirRun) {
  WordDocument document;
  const uint32_t first = document.data(pictureOf(5).bytes());
  const uint32_t second = document.data(pictureOf(6).bytes());
  document.paragraph().special(1, {sprm(kSprmCPicLocation, first), sprm(kSprmCPicLocation, second)});
  EXPECT_THAT(idsOf(OpenedDocument(document)->GetEmbedShapes()), ElementsAre(5));
}

TEST(InlinePictures, AreReadFromAllStoriesInAnOrderOfTheirOwn) {
  WordDocument document;
  document.paragraph("x").footnote(
      [&](support::Story& note) { note.paragraph().special(1, pictureRun(document, pictureOf(1))); });
  document.paragraph("y").endnote(
      [&](support::Story& note) { note.paragraph().special(1, pictureRun(document, pictureOf(5))); });
  document.paragraph("z").annotation(
      [&](support::Story& note) { note.paragraph().special(1, pictureRun(document, pictureOf(4))); });
  for (const auto type :
       {mso_word::SUBDOC_HEADER, mso_word::SUBDOC_TEXTBOX, mso_word::SUBDOC_HEADER_TEXTBOX}) {
    document.story(type).paragraph().special(1, pictureRun(document, pictureOf(type)));
  }
  document.paragraph().special(1, pictureRun(document, pictureOf(100)));
  EXPECT_THAT(idsOf(OpenedDocument(document)->GetEmbedShapes()), ElementsAre(100, 2, 6, 7, 4, 1, 5));
}

TEST(InlinePictures, AreSharedByRunsThatNameTheSamePlace) {
  WordDocument document;
  const Sprms run = pictureRun(document, pictureOf(5));
  document.paragraph().special(1, run).run("between").special(1, run);
  const OpenedDocument opened(document);
  const KDREmbedShapes& pictures = opened->GetEmbedShapes();
  EXPECT_THAT(positionsOf(pictures), ElementsAre(0, 8));
  EXPECT_EQ(pictures.Item(0).shape, pictures.Item(1).shape);
  EXPECT_EQ(pictures.Item(0).blips, pictures.Item(1).blips);
}

TEST(InlinePictures, OutsideTheDataAreLeftOut) {
  WordDocument document;
  document.paragraph().special(1, {sprm(kSprmCPicLocation, 0x7FFFFFFF)});
  document.paragraph().special(1, {sprm(kSprmCPicLocation, -1)});
  document.paragraph().special(1, pictureRun(document, pictureOf(5)));
  EXPECT_THAT(idsOf(OpenedDocument(document)->GetEmbedShapes()), ElementsAre(5));
}

// What a picture is.

TEST(InlinePicture, HasItsHeadShapeAndBlips) {
  Inline picture = pictureOf(5);
  picture.goalWidth = 1234;
  picture.blips = {Blip{.data = {1, 2, 3}}};
  const OnePicture read(picture);
  ASSERT_TRUE(read.isThere());
  EXPECT_EQ(read->picture.size(), 68u);
  EXPECT_EQ(read->picture.u16(PICF::kGoalWidth), 1234);
  EXPECT_EQ(read->shape->GetShapeType(), 75u);
  ASSERT_EQ(read->blips->Count(), 1u);
  EXPECT_THAT(bytesOf(read->blips->ImageItem(0)->data), ElementsAre(1, 2, 3));
}

TEST(InlinePicture, OfKind100HasNoName) {
  const OnePicture read(pictureOf(5));
  EXPECT_EQ(read->nameLength, 0);
  EXPECT_EQ(read->name.data(), nullptr);
}

TEST(InlinePicture, OfKind102HasAName) {
  Inline picture = pictureOf(5);
  picture.mm = 102;
  picture.blips = {Blip{.data = {1, 2, 3}}};
  const OnePicture read(picture);
  ASSERT_TRUE(read.isThere());
  EXPECT_EQ(read->nameLength, 3);
  EXPECT_THAT(bytesOf(read->name), ElementsAre('p', 'i', 'c'));
  EXPECT_EQ(read->shape->GetShapeID(), 5u);
  EXPECT_EQ(read->blips->Count(), 1u);
}

TEST(InlinePicture, OfAnotherKindIsNone) {
  for (const int16_t kind : {99, 0, 101, 103, -100}) {
    Inline picture = pictureOf(5);
    picture.mm = kind;
    EXPECT_FALSE(OnePicture(picture).isThere()) << kind;
  }
}

TEST(InlinePicture, WhoseHeadIsCutHasNoShape) {
  WordDocument document(
      {.compound = {.tinyPageShift = 2}});  // pages of 4 bytes: the stream ends where it says
  document.paragraph().special(1, {sprm(kSprmCPicLocation, document.data(Bytes(64)))});
  const OpenedDocument opened(document);
  ASSERT_EQ(opened->GetEmbedShapes().Count(), 1u);
  EXPECT_EQ(opened->GetEmbedShapes().Item(0).picture.data(), nullptr);
  EXPECT_EQ(opened->GetEmbedShapes().Item(0).shape, nullptr);
}

TEST(InlinePicture, DoesNotLookAtTheTypeOfItsContainer) {
  Bytes bytes = pictureOf(5).bytes();
  support::patchInteger(bytes, kShapeAt + 2, uint16_t{0x1234});
  EXPECT_EQ(OnePicture(bytes)->shape->GetShapeID(), 5u);
}

TEST(InlinePicture, WhoseContainerClaimsToBeAGroupHasNoShape) {
  const OnePicture read(Inline{.shape = Shape(0).flags(1)});
  ASSERT_TRUE(read.isThere());
  EXPECT_EQ(read->shape, nullptr);
}

TEST(InlinePicture, WhoseLengthEndsBehindTheShapeHasNoBlips) {
  Inline picture = pictureOf(5);
  picture.blips = {Blip()};
  for (const uint32_t length : {0u, 68u, 80u}) {
    Bytes bytes = picture.bytes();
    support::patchInteger(bytes, PICF::kLength, length);
    const OnePicture read(bytes);
    ASSERT_TRUE(read.isThere());
    EXPECT_EQ(read->shape->GetShapeID(), 5u);
    EXPECT_EQ(read->blips->Count(), 0u);
  }
}

TEST(InlinePicture, ThatClaimsMoreThanIsThereIsCut) {
  Inline picture = pictureOf(5);
  picture.blips = {Blip{.data = Bytes(5000, 7)}};
  Bytes bytes = picture.bytes();
  support::patchInteger(bytes, PICF::kLength, uint32_t{0xFFFFFFFF});
  const OnePicture read(bytes);
  ASSERT_TRUE(read.isThere());
  EXPECT_EQ(read->blips->ImageItem(0)->data.size(), 5000u);
}

TEST(InlinePicture, WhoseShapeClaimsAllThatIsLeftIsCut) {
  Bytes bytes = pictureOf(5).bytes();
  support::patchInteger(bytes, kShapeAt + 4, uint32_t{0xFFFFFFFF});
  const OnePicture read(bytes);
  ASSERT_TRUE(read.isThere());
  EXPECT_EQ(read->shape->GetShapeID(), 5u);
  EXPECT_EQ(read->blips->Count(), 0u);
}

// When and how often they are read.

TEST(InlinePictures, AreReadWhenTheyAreAskedFor) {
  WordDocument document;
  Inline picture = pictureOf(5);
  picture.blips = {Blip{.data = Bytes(20000, 7)}};
  document.paragraph().special(1, pictureRun(document, picture));
  document.paragraph().special(1, pictureRun(document, picture));
  const support::TempFolder folder;
  KDRDocument read;
  ASSERT_EQ(read.OpenDocument(folder.write("test.doc", document.build()).c_str(), 0), Status::kOk);
  const KDREmbedShapes& pictures = read.GetEmbedShapes();
  EXPECT_EQ(pictures.Item(0).blips->Count(), 1u);
  read.Close();
  EXPECT_EQ(pictures.Item(0).blips->ImageItem(0)->data.size(), 20000u) << "kept once it is read";
  EXPECT_EQ(pictures.Item(1).shape->GetShapeID(), 5u);
  EXPECT_EQ(pictures.Item(1).blips->Count(), 0u) << "not read before the document was closed";
}

TEST(InlinePictures, TakeNoMemoryWithoutEndWhereAllOverlap) {
  // Heads of pictures, each of which claims all the rest of the stream.
  constexpr uint32_t kCount = 2000;
  WordDocument document;
  support::Paragraph& paragraph = document.paragraph();
  Bytes head = pictureOf(5).bytes();
  support::patchInteger(head, PICF::kLength, uint32_t{0x7FFFFFFF});
  for (uint32_t i = 0; i < kCount; ++i) paragraph.special(1, {sprm(kSprmCPicLocation, document.data(head))});
  const OpenedDocument opened(document);
  const KDREmbedShapes& pictures = opened->GetEmbedShapes();
  ASSERT_EQ(pictures.Count(), kCount);
  size_t images = 0;
  for (uint32_t i = 0; i < kCount; ++i) images += pictures.Item(i).blips->Count();
  EXPECT_LT(images, 3 * kCount * head.size() / 44);
}

}  // namespace

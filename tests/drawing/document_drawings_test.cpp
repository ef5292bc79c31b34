#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <random>

#include "drawing/embed_shapes.h"
#include "drawing/query_prop.h"
#include "drawing/shape_positions.h"
#include "records.h"
#include "support/opened_document.h"
#include "wordreader/doc_file.h"

using namespace escher;
using namespace support;

namespace {

const Bytes kImage = {10, 20, 30, 40, 50};

Sprms pictureAt(uint32_t offset) {
  return {sprm(0x6A03, offset)};
}

/// A document whose one run with the picture's character has these properties.
OpenedDocument withRun(const Bytes& data, const Sprms& sprms, const char* text = "\x01") {
  WordDocument doc;
  doc.data(data);
  doc.paragraph().run("ab").run(text, sprms).run("c");
  return OpenedDocument(doc);
}

const mso_escher::MsoROBlip* delayed(const OpenedDocument& opened, unsigned int i) {
  return opened->GetDrawingGroup().GetBlipStore().GetBlipWithDelayStrm(
      i, &opened->GetDocFile().getWordDocumentStrm());
}

void visit(const mso_escher::MsoROShape& shape) {
  if (!shape.Good()) return;
  mso_escher::MsoROShapeProp property;
  mso_escher::MsoROShapeOPT::Enumerator walk(shape.GetProperties());
  while (walk.Next(&property) == Status::kOk) object::CMsoArray(property.data).GetEle(0);
  for (unsigned int i = 0; i < shape.GetChildCount(); ++i) visit(shape.GetChildShape(i));
}

/// Reads all drawings of a document. Returns how many shapes and pictures it has at the top.
unsigned int visitAll(const KDRDocument& document) {
  unsigned int found = 0;
  for (unsigned int i = 0; i < 2; ++i) {
    visit(document.GetDrawing(i).GetRootShape());
    found += document.GetDrawing(i).GetRootShape().GetChildCount();
  }
  const mso_escher::MsoROBlipStore& store = document.GetDrawingGroup().GetBlipStore();
  for (unsigned int i = 0; i < store.GetCount(); ++i) {
    if (!store.GetBlipNoDelayStrm(i))
      store.GetBlipWithDelayStrm(i, &document.GetDocFile().getWordDocumentStrm());
  }
  const KDREmbedShapes& pictures = document.GetEmbedShapes();
  for (uint32_t i = 0; i < pictures.Count(); ++i) {
    const KDREmbedShape& picture = pictures.Item(i);
    if (picture.shape) visit(*picture.shape);
    for (unsigned int k = 0; picture.blips && k < picture.blips->Count(); ++k) picture.blips->Item(k);
  }
  return found + pictures.Count();
}

}  // namespace

TEST(DocumentDrawings, WithoutTableAreEmpty) {
  WordDocument doc;
  doc.paragraph("a");
  const OpenedDocument opened(doc);
  EXPECT_EQ(opened->GetDrawingGroup().GetBlipStore().GetCount(), 0u);
  EXPECT_FALSE(opened->GetDrawing(0).GetRootShape().Good());
  EXPECT_EQ(opened->GetEmbedShapes().Count(), 0u);
}

TEST(DocumentDrawings, AreReadFromTheTableStream) {
  WordDocument doc;
  doc.paragraph("a");
  doc.table(50, joined({drawingGroup({fbse({.blip = bitmapBlip(6, kImage)})}),
                        drawing(0, {group(1, {plainShape(2), plainShape(3)})})}));
  const OpenedDocument opened(doc);
  EXPECT_EQ(opened->GetDrawingGroup().GetBlipStore().GetCount(), 1u);
  EXPECT_EQ(opened->GetDrawing(0).GetRootShape().GetChildShape(1).GetShapeID(), 3u);
}

TEST(DocumentDrawings, HaveAnchorsInTheMainTextAndInTheHeaders) {
  const Bytes fspa = ByteWriter().u32(1026).u32(1).u32(2).u32(3).u32(4).u16(0x60).u32(0).take();
  WordDocument doc;
  doc.paragraph("a");
  doc.table(40, joined({ByteWriter().u32(0).u32(1).take(), fspa}));
  doc.table(41, joined({ByteWriter().u32(0).u32(1).u32(2).take(), fspa, fspa}));
  const OpenedDocument opened(doc);
  EXPECT_EQ(opened->GetShapePositions(mso_word::SUBDOC_MAIN).Count(), 1u);
  EXPECT_EQ(opened->GetShapePositions(mso_word::SUBDOC_HEADER).Count(), 2u);
  EXPECT_EQ(opened->GetShapePositions(mso_word::SUBDOC_FOOTNOTE).Count(), 0u);
}

TEST(DelayedPicture, IsReadWhateverSizeItsEntryTells) {
  WordDocument doc;
  doc.paragraph("a");
  const uint32_t offset = doc.wordDocumentData(bitmapBlip(6, kImage));
  doc.table(50, drawingGroup({fbse({.delayOffset = offset})}));
  const OpenedDocument opened(doc);
  ASSERT_NE(delayed(opened, 0), nullptr);
  EXPECT_EQ(delayed(opened, 0)->data.size(), kImage.size());
  EXPECT_EQ(opened->GetDrawingGroup().GetBlipStore().GetBlipWithDelayStrm(0, nullptr), delayed(opened, 0));
}

TEST(DelayedPicture, OutsideTheStreamIsNull) {
  WordDocument doc;
  doc.paragraph("a");
  doc.table(50,
            drawingGroup({fbse({.delayOffset = 0x00F00000}), fbse({.delayOffset = 0xFFFFFFF0}), fbse({})}));
  const OpenedDocument opened(doc);
  for (unsigned int i = 0; i < 3; ++i) EXPECT_EQ(delayed(opened, i), nullptr);
}

TEST(DelayedPicture, ThatSharesBytesWithOthersIsReadAsOftenAsTheStreamIsLong) {
  WordDocument doc;
  doc.paragraph("a");
  const uint32_t offset = doc.wordDocumentData(bitmapBlip(6, Bytes(100000, 7)));
  const Bytes entry = fbse({.delayOffset = offset});
  doc.table(50, drawingGroup({entry, entry, entry, entry}));
  const OpenedDocument opened(doc);
  EXPECT_NE(delayed(opened, 0), nullptr);
  EXPECT_EQ(delayed(opened, 3), nullptr);
}

TEST(DelayedPicture, OfAKindThatIsNotDecodedTakesNothingFromOthers) {
  WordDocument doc;
  doc.paragraph("a");
  const uint32_t other = doc.wordDocumentData(bitmapBlip(17, Bytes(100000, 7)));
  const uint32_t known = doc.wordDocumentData(bitmapBlip(6, kImage));
  doc.table(50, drawingGroup({fbse({.delayOffset = other}), fbse({.delayOffset = known})}));
  const OpenedDocument opened(doc);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(delayed(opened, 0), nullptr);
  EXPECT_NE(delayed(opened, 1), nullptr);
}

TEST(InlinePicture, IsReadWithItsShapeAndBlips) {
  const Bytes blips = fbse({.blip = bitmapBlip(6, kImage)});
  const OpenedDocument opened = withRun(inlinePicture(plainShape(5), blips), pictureAt(0));
  ASSERT_EQ(opened->GetEmbedShapes().Count(), 1u);
  const KDREmbedShape& picture = opened->GetEmbedShapes().Item(0);
  EXPECT_EQ(picture.cp, 2u);
  EXPECT_EQ(picture.picture.u16(PICF::kGoalWidth), 1440u);
  EXPECT_EQ(picture.shape->GetShapeID(), 5u);
  ASSERT_EQ(picture.blips->Count(), 1u);
  EXPECT_EQ(picture.blips->ImageItem(0)->data.size(), kImage.size());
}

TEST(InlinePicture, OfKind102HasAName) {
  const OpenedDocument opened = withRun(inlinePicture(plainShape(5), {}, 102, "a.png"), pictureAt(0));
  ASSERT_EQ(opened->GetEmbedShapes().Count(), 1u);
  EXPECT_EQ(opened->GetEmbedShapes().Item(0).nameLength, 5);
  EXPECT_EQ(opened->GetEmbedShapes().Item(0).shape->GetShapeID(), 5u);
}

TEST(InlinePicture, OfAnotherKindIsNone) {
  EXPECT_EQ(withRun(inlinePicture(plainShape(5), {}, 99), pictureAt(0))->GetEmbedShapes().Count(), 0u);
}

TEST(InlinePicture, IsNoneInAFormField) {
  const Bytes data = inlinePicture(plainShape(5));
  EXPECT_EQ(withRun(data, {sprm(0x0806, 1), sprm(0x6A03, 0)})->GetEmbedShapes().Count(), 0u);
  EXPECT_EQ(withRun(data, {sprm(0x6A03, 0), sprm(0x0806, 0)})->GetEmbedShapes().Count(), 0u);
}

TEST(InlinePicture, IsNoneWithoutItsCharacter) {
  EXPECT_EQ(withRun(inlinePicture(plainShape(5)), pictureAt(0), "x")->GetEmbedShapes().Count(), 0u);
}

TEST(InlinePicture, ThatIsCutHasNoShape) {
  const OpenedDocument opened = withRun(Bytes(67, 0), pictureAt(0));
  ASSERT_EQ(opened->GetEmbedShapes().Count(), 1u);
  EXPECT_TRUE(opened->GetEmbedShapes().Item(0).picture.empty());
  EXPECT_EQ(opened->GetEmbedShapes().Item(0).shape, nullptr);
}

TEST(InlinePicture, IsReadOnceForAllRunsThatNameIt) {
  WordDocument doc;
  doc.data(inlinePicture(plainShape(5)));
  for (int i = 0; i < 3; ++i) doc.paragraph().run("\x01", pictureAt(0)).run("x");
  const OpenedDocument opened(doc);
  ASSERT_EQ(opened->GetEmbedShapes().Count(), 3u);
  EXPECT_EQ(opened->GetEmbedShapes().Item(0).shape, opened->GetEmbedShapes().Item(2).shape);
  EXPECT_EQ(opened->GetEmbedShapes().Item(2).cp, 6u);
}

TEST(InlinePicture, OfRandomBytesIsReadWithoutHarm) {
  std::mt19937 random(2);
  const Bytes sound = inlinePicture(shape({fsp(75, 5), propertyTable({textProperty(0xC0, u"ab")})}),
                                    fbse({.blip = bitmapBlip(6, kImage)}), 102, "name");
  unsigned int found = 0;
  for (int round = 0; round < 200; ++round) {
    Bytes bytes = sound;
    for (int i = 0; i < 1 + round % 4; ++i) bytes[random() % bytes.size()] = static_cast<uint8_t>(random());
    found += visitAll(*withRun(bytes, pictureAt(0)));
  }
  EXPECT_GT(found, 0u);
}

TEST(DrawingsOfTheCorpus, AreReadWithoutHarm) {
  namespace fs = std::filesystem;
  fs::path folder = fs::current_path();
  while (!fs::is_directory(folder / "shared/corpus") && folder.has_relative_path())
    folder = folder.parent_path();
  folder /= "shared/corpus";
  if (const char* named = std::getenv("PAGEREX_CORPUS")) folder = named;
  if (!fs::is_directory(folder)) GTEST_SKIP() << "no corpus";
  unsigned int found = 0;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() != ".doc") continue;
    SCOPED_TRACE(entry.path().string());
    const TempFolder temporary;  // the original may be write-protected, and such a file does not open
    fs::copy_file(entry.path(), temporary.path("copy.doc"));
    fs::permissions(temporary.path("copy.doc"), fs::perms::owner_all);
    KDRDocument document;
    try {
      if (failed(document.OpenDocument(temporary.path("copy.doc").c_str(), 0))) continue;
      found += visitAll(document);
    } catch (int) {
      continue;  // a damaged file
    }
  }
  EXPECT_GT(found, 0u);
}

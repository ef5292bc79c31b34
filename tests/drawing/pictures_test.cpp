#include <gtest/gtest.h>

#include "drawing/drawing.h"
#include "drawing/embed_shapes.h"
#include "drawing/shape_positions.h"
#include "support/drawing_writer.h"
#include "support/opened_document.h"

namespace {

using mso_escher::MsoROBlip;
using mso_escher::MsoROBlipStore;
using support::Bytes;
using support::ByteWriter;
using support::OpenedDocument;
using support::sprm;
using support::WordDocument;
using support::drawing::Blip;
using support::drawing::container;
using support::drawing::Drawing;
using support::drawing::Inline;
using support::drawing::pictureRun;
using support::drawing::record;
using support::drawing::Shape;

/// A store entry of 36 bytes, and what is embedded behind it.
Bytes entry(uint32_t size, uint32_t delayOffset, const Bytes& embedded) {
  ByteWriter body;
  body.zeros(20).u32(size).u32(1).u32(delayOffset).zeros(4);
  return record(0xF007, 6, 2, body.bytes(embedded).take());
}

struct Store {
  explicit Store(const std::vector<Bytes>& entries) : bytes(container(0xF001, entries)) {
    mso_escher::MsoRORecInfo info;
    mso_escher::MsoRORecords(ByteView(bytes.data(), bytes.size())).Next(&info);
    store.Init(info, allocator);
  }
  Bytes bytes;
  ChainAllocator allocator;
  MsoROBlipStore store;
};

Bytes png(const Bytes& image) {
  return record(0xF01E, 0x6E0, 0, ByteWriter().zeros(17).bytes(image).take());
}

TEST(BlipStore, ADocumentWithoutDrawingsHasAnEmptyOne) {
  WordDocument doc;
  doc.paragraph("x");
  const OpenedDocument opened(doc);
  EXPECT_EQ(opened->GetDrawingGroup().GetBlipStore().GetCount(), 0u);
  EXPECT_FALSE(opened->GetDrawing(0).GetRootShape().Good());
}

TEST(BlipStore, AnEmbeddedBitmapHasATagBehindItsIdentity) {
  const Store read({entry(100, 0, png({7, 8, 9}))});
  const MsoROBlip* blip = read.store.GetBlipNoDelayStrm(0);
  ASSERT_NE(blip, nullptr);
  EXPECT_EQ(blip->type, 6u);
  ASSERT_EQ(blip->data.size(), 3u);
  EXPECT_EQ(blip->data.u8(0), 7);
  EXPECT_TRUE(blip->metafileHeader.empty());
  EXPECT_EQ(blip->refs, 1u);
  EXPECT_EQ(read.store.GetBlipNoDelayStrm(0), blip);
}

TEST(BlipStore, AMetafileHasAHeaderAndMayHaveTwoIdentities) {
  const Bytes body = ByteWriter().zeros(32).u32(99).zeros(30).u8(5).take();
  const Store read({entry(100, 0, record(0xF01A, 0x3D5, 0, body))});
  const MsoROBlip* blip = read.store.GetBlipNoDelayStrm(0);
  ASSERT_NE(blip, nullptr);
  EXPECT_EQ(blip->metafileHeader.u32(0), 99u);
  ASSERT_EQ(blip->data.size(), 1u);
  EXPECT_EQ(blip->data.u8(0), 5);
}

TEST(BlipStore, AnEntryOfSizeZeroHasNone) {
  EXPECT_EQ(Store({entry(0, 0, png({1}))}).store.GetBlipNoDelayStrm(0), nullptr);
}

TEST(BlipStore, TypesFromEightOnHaveNone) {
  EXPECT_EQ(Store({entry(9, 0, record(0xF020, 0, 0, Bytes(40, 0)))}).store.GetBlipNoDelayStrm(0), nullptr);
  EXPECT_EQ(Store({entry(9, 0, record(0xF00A, 0, 0, Bytes(40, 0)))}).store.GetBlipNoDelayStrm(0), nullptr);
}

TEST(BlipStore, ANamedEntrysBlipIsStillLookedForBehindTheEntry) {
  Bytes named = entry(100, 0, png({7}));
  named[8 + 33] = 4;  // the length of a name
  const Store read({named});
  ASSERT_NE(read.store.GetBlipNoDelayStrm(0), nullptr);
}

TEST(BlipStore, AnIndexOutsideIsNull) {
  const Store read({entry(100, 0, png({7}))});
  EXPECT_EQ(read.store.GetBlipNoDelayStrm(1), nullptr);
  EXPECT_TRUE(read.store.GetFBSE(1).empty());
}

TEST(BlipStore, ABlipThatRunsPastItsEntryIsCut) {
  Bytes cut = png(Bytes(100, 1));
  cut.erase(cut.begin() + 60, cut.end());
  const Store read({entry(100, 0, cut)});
  ASSERT_NE(read.store.GetBlipNoDelayStrm(0), nullptr);
  EXPECT_EQ(read.store.GetBlipNoDelayStrm(0)->data.size(), 60u - 8 - 17);
}

TEST(DelayStream, ABlipIsReadFromItWhateverItsSizeSays) {
  WordDocument doc;
  doc.paragraph().special(8);
  Drawing drawing;
  drawing.blip({.data = {4, 5, 6}, .delayed = true});
  drawing.shape(0, Shape(75), {});
  drawing.addTo(doc);
  const OpenedDocument opened(doc);
  const MsoROBlipStore& store = opened->GetDrawingGroup().GetBlipStore();
  ASSERT_EQ(store.GetCount(), 1u);
  const MsoROBlip* blip = store.GetBlipWithDelayStrm(0, &opened->GetDocFile().getWordDocumentStrm());
  ASSERT_NE(blip, nullptr);
  EXPECT_EQ(blip->data.size(), 3u);
  EXPECT_EQ(store.GetBlipWithDelayStrm(0, nullptr), blip);
}

TEST(DelayStream, AnOffsetOutsideItGivesNull) {
  WordDocument doc;
  doc.paragraph("x");
  const OpenedDocument opened(doc);
  const Store read({entry(5, 0x7FFFFFFF, {}), entry(5, 1, {})});
  DsMemReadArchive& word = opened->GetDocFile().getWordDocumentStrm();
  EXPECT_EQ(read.store.GetBlipWithDelayStrm(0, &word), nullptr);
  EXPECT_EQ(read.store.GetBlipWithDelayStrm(1, &word), nullptr);  // what lies there is no blip
}

// The blips behind an inline picture.

Bytes bse(uint16_t instance, const Bytes& blip) {
  return ByteWriter()
      .u16(static_cast<uint16_t>(instance << 4 | 2))
      .u16(0xF007)
      .u32(static_cast<uint32_t>(36 + blip.size()))
      .zeros(20)
      .u32(static_cast<uint32_t>(blip.size()))
      .zeros(12)
      .bytes(blip)
      .take();
}

TEST(BlipList, BitmapsHaveOneIdentityAndATag) {
  const Bytes bytes = bse(6, png({1, 2, 3}));
  KDRBseTable table;
  table.Init(ByteView(bytes.data(), bytes.size()));
  ASSERT_EQ(table.Count(), 1u);
  EXPECT_EQ(table.ImageItem(0)->data.size(), 3u);
  EXPECT_TRUE(table.ImageItem(0)->metafileHeader.empty());
  EXPECT_EQ(table.ImageItem(1), nullptr);
}

TEST(BlipList, MetafilesTellTheSizeOfTheirData) {
  const Bytes body = ByteWriter().zeros(16).u32(50).zeros(24).u32(2).u8(0).u8(0xFE).u8(8).u8(9).u8(10).take();
  const Bytes bytes = bse(3, record(0xF01B, 0x216, 0, body));
  KDRBseTable table;
  table.Init(ByteView(bytes.data(), bytes.size()));
  ASSERT_EQ(table.Count(), 1u);
  EXPECT_EQ(table.ImageItem(0)->metafileHeader.u32(0), 50u);
  ASSERT_EQ(table.ImageItem(0)->data.size(), 2u);
  EXPECT_EQ(table.ImageItem(0)->data.u8(0), 8);
}

TEST(BlipList, OneThatIsCutInItsLastRecordCountsOneLess) {
  Bytes bytes = bse(6, png({1}));
  const Bytes second = bse(6, png({2, 3, 4}));
  bytes.insert(bytes.end(), second.begin(), second.end());
  KDRBseTable table;
  table.Init(ByteView(bytes.data(), bytes.size()));
  EXPECT_EQ(table.Count(), 2u);
  bytes.pop_back();
  table.Init(ByteView(bytes.data(), bytes.size()));
  EXPECT_EQ(table.Count(), 1u);
}

TEST(BlipList, RecordsBehindTheFirstAreLookedForTooFarOn) {
  Bytes bytes = bse(6, png({1}));
  const size_t length = bytes.size();
  const Bytes second = bse(6, png(Bytes(90, 3)));
  bytes.insert(bytes.end(), second.begin(), second.end());
  KDRBseTable table;
  table.Init(ByteView(bytes.data(), bytes.size()));
  EXPECT_EQ(table.Item(0).data(), bytes.data());
  EXPECT_EQ(table.Item(1).data(), bytes.data() + length + 25);
  EXPECT_TRUE(table.Item(2).empty());
}

// Inline pictures.

TEST(InlinePictures, OneIsFoundAtItsCharacter) {
  WordDocument doc;
  doc.paragraph("ab").special(1, pictureRun(doc, {.blips = {Blip{}}})).run("c");
  const OpenedDocument opened(doc);
  const KDREmbedShapes& pictures = opened->GetEmbedShapes();
  ASSERT_EQ(pictures.Count(), 1u);
  EXPECT_EQ(pictures.Item(0).cp, 2u);
  EXPECT_TRUE(pictures.Item(0).shape->Good());
  EXPECT_EQ(pictures.Item(0).shape->GetShapeType(), 75u);
  EXPECT_EQ(pictures.Item(0).picture.u16(PICF::kGoalWidth), 1440);
  EXPECT_EQ(pictures.Item(0).blips->Count(), 1u);
}

TEST(InlinePictures, AFormFieldIsNone) {
  WordDocument doc;
  support::Sprms sprms = pictureRun(doc, {});
  for (const int operand : {0, 1}) {
    support::Sprms both = sprms;
    doc.paragraph().special(1, both.add(sprm(0x0806, operand)));
  }
  EXPECT_EQ(OpenedDocument(doc)->GetEmbedShapes().Count(), 0u);
}

TEST(InlinePictures, ARunWithoutTheCharacterHasNone) {
  WordDocument doc;
  doc.paragraph().run("text", pictureRun(doc, {}));
  EXPECT_EQ(OpenedDocument(doc)->GetEmbedShapes().Count(), 0u);
}

TEST(InlinePictures, AnotherKindIsNone) {
  WordDocument doc;
  doc.paragraph().special(1, pictureRun(doc, {.mm = 99}));
  EXPECT_EQ(OpenedDocument(doc)->GetEmbedShapes().Count(), 0u);
}

TEST(InlinePictures, OneThatIsCutHasNoShape) {
  WordDocument doc;
  const uint32_t offset = doc.data(Bytes(20, 0));
  doc.paragraph().special(1, {support::sprm32(0x6A03, offset)});
  const OpenedDocument opened(doc);
  for (uint32_t i = 0; i < opened->GetEmbedShapes().Count(); ++i) {
    const KDREmbedShape& picture = opened->GetEmbedShapes().Item(i);
    EXPECT_TRUE(!picture.shape || !picture.shape->Good());
  }
}

TEST(InlinePictures, AnOffsetOutsideTheStreamIsNone) {
  WordDocument doc;
  doc.data(Bytes(20, 0));
  doc.paragraph().special(1, {support::sprm32(0x6A03, 0x7FFFFFFF)});
  EXPECT_EQ(OpenedDocument(doc)->GetEmbedShapes().Count(), 0u);
}

TEST(InlinePictures, ManyRunsShareOnePictureThatIsReadOnce) {
  WordDocument doc;
  const support::Sprms picture = pictureRun(doc, {.blips = {Blip{.data = Bytes(5000, 1)}}});
  for (int i = 0; i < 200; ++i) doc.paragraph().special(1, picture).run("x");
  const OpenedDocument opened(doc);
  const KDREmbedShapes& pictures = opened->GetEmbedShapes();
  ASSERT_EQ(pictures.Count(), 200u);
  EXPECT_EQ(pictures.Item(0).blips, pictures.Item(199).blips);
  EXPECT_EQ(pictures.Item(199).cp, 199u * 3);
}

TEST(Anchors, TheMainDocumentAndTheHeadersHaveTheirOwn) {
  WordDocument doc;
  doc.paragraph("a").special(8);
  Drawing drawing;
  drawing.shape(1, Shape(1), {.rect = {10, 20, 30, 40}});
  drawing.addTo(doc);
  const OpenedDocument opened(doc);
  ASSERT_EQ(opened->GetShapePositions(mso_word::SUBDOC_MAIN).Count(), 1u);
  const auto anchor = opened->GetShapePositions(mso_word::SUBDOC_MAIN).Item(0);
  EXPECT_EQ(anchor.range.start, 1u);
  EXPECT_EQ(+anchor.data.bottom, 40);
  EXPECT_EQ(opened->GetShapePositions(mso_word::SUBDOC_HEADER).Count(), 0u);
  EXPECT_EQ(opened->GetShapePositions(mso_word::SUBDOC_TEXTBOX).Count(), 0u);
}

}  // namespace

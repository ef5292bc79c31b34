#include <gtest/gtest.h>

#include <random>

#include "records.h"

using namespace escher;
using namespace support;
using mso_escher::MsoROBlip;

namespace {

const Bytes kImage = {10, 20, 30, 40, 50};

ReadDrawings storeOf(const BlipEntry& entry) {
  return ReadDrawings(drawingGroup({fbse(entry)}));
}

Bytes copyOf(ByteView view) {
  return Bytes(view.data(), view.data() + view.size());
}

struct ReadList {
  explicit ReadList(Bytes made) : bytes(std::move(made)) { table.Init(viewOf(bytes)); }
  Bytes bytes;
  KDRBseTable table;
};

void visit(const mso_escher::MsoROShape& shape) {
  tagRECT rect;
  shape.GetChildAnchor(rect);
  mso_escher::MsoROShapeProp property;
  if (shape.Good()) {
    mso_escher::MsoROShapeOPT::Enumerator walk(shape.GetProperties());
    while (walk.Next(&property) == Status::kOk) object::CMsoArray(property.data).GetEle(0);
  }
  for (unsigned i = 0; i < shape.GetChildCount(); ++i) visit(shape.GetChildShape(i));
}

}  // namespace

TEST(Records, ThatOverrunTheirParentAreShortenedAndLast) {
  Bytes bytes = joined({atom(0xF00A, 1, {1, 2, 3}), atom(0xF00B, 2, {4})});
  patchInteger(bytes, 4, uint32_t{1000});
  mso_escher::MsoRORecords records(viewOf(bytes));
  mso_escher::MsoRORecInfo record;
  ASSERT_EQ(records.Next(&record), Status::kOk);
  EXPECT_EQ(record.body.size(), 12u);
  EXPECT_EQ(records.Next(&record), Status::kNothing);
}

TEST(Records, EndAtANegativeLength) {
  Bytes bytes = joined({atom(0xF00A, 1, {}), atom(0xF00B, 2, {4}), atom(0xF00B, 3, {})});
  patchInteger(bytes, 12, uint32_t{0x80000000});
  mso_escher::MsoRORecords records(viewOf(bytes));
  mso_escher::MsoRORecInfo record;
  EXPECT_EQ(records.Next(&record), Status::kOk);
  EXPECT_EQ(records.Next(&record), Status::kNothing);
}

TEST(Drawings, EndWellBehindTheGroup) {
  const ReadDrawings read(drawingGroup({fbse({})}));
  EXPECT_EQ(read.status, Status::kOk);
  EXPECT_EQ(read.store().GetCount(), 1u);
  EXPECT_FALSE(read.root(0).Good());
  EXPECT_FALSE(read.root(1).Good());
}

TEST(Drawings, AreToldApartByTheirLabels) {
  const ReadDrawings read(joined({drawingGroup({}), drawing(1, {group(7, {})}), drawing(0, {group(8, {})})}));
  EXPECT_EQ(read.status, Status::kOk);
  EXPECT_EQ(read.root(0).GetShapeID(), 8u);
  EXPECT_EQ(read.root(1).GetShapeID(), 7u);
}

TEST(Drawings, StopAtABadLabelAndKeepWhatWasRead) {
  const ReadDrawings read(joined(
      {drawingGroup({fbse({})}), drawing(0, {group(8, {})}), drawing(2, {}), drawing(1, {group(9, {})})}));
  EXPECT_EQ(read.status, Status::kMalformed);
  EXPECT_EQ(read.store().GetCount(), 1u);
  EXPECT_EQ(read.root(0).GetShapeID(), 8u);
  EXPECT_FALSE(read.root(1).Good());
}

TEST(Drawings, NeedAGroupAndDrawingContainers) {
  EXPECT_EQ(ReadDrawings({}).status, Status::kMalformed);
  EXPECT_EQ(ReadDrawings(container(0xF002, {})).status, Status::kMalformed);
  EXPECT_EQ(ReadDrawings(joined({drawingGroup({}), {0}})).status, Status::kMalformed);
  EXPECT_EQ(ReadDrawings(joined({drawingGroup({}), {0}, plainShape(1)})).status, Status::kMalformed);
}

TEST(Drawings, TakeOnlyTheFirstGroupAndTheFirstShape) {
  const ReadDrawings read(
      joined({drawingGroup({}), drawing(0, {group(1, {}), plainShape(2), group(3, {}), plainShape(4)}),
              drawing(0, {group(5, {}), plainShape(6)})}));
  EXPECT_EQ(read.root().GetShapeID(), 1u);
  EXPECT_EQ(read.info.GetDrawing(0).GetBackgroundShape().GetShapeID(), 2u);
}

TEST(BlipStore, GivesAnEmbeddedBitmap) {
  const ReadDrawings read = storeOf({.references = 3, .blip = bitmapBlip(6, kImage)});
  const MsoROBlip* blip = read.store().GetBlipNoDelayStrm(0);
  ASSERT_NE(blip, nullptr);
  EXPECT_EQ(blip->type, mso_escher::kBlipPng);
  EXPECT_EQ(copyOf(blip->data), kImage);
  EXPECT_EQ(blip->refs, 3u);
  EXPECT_TRUE(blip->metafileHeader.empty());
  EXPECT_EQ(read.store().GetBlipNoDelayStrm(0), blip);
}

TEST(BlipStore, GivesAnEmbeddedMetafile) {
  const ReadDrawings read = storeOf({.kind = 3, .blip = metafileBlip(3, kImage)});
  const MsoROBlip* blip = read.store().GetBlipNoDelayStrm(0);
  ASSERT_NE(blip, nullptr);
  EXPECT_EQ(copyOf(blip->data), kImage);
  EXPECT_EQ(blip->metafileHeader.size(), 34u);
  EXPECT_EQ(blip->metafileHeader.u32(0), kImage.size());
}

TEST(BlipStore, StepsOverASecondIdentity) {
  const ReadDrawings read = storeOf({.blip = bitmapBlip(5, kImage, true)});
  ASSERT_NE(read.store().GetBlipNoDelayStrm(0), nullptr);
  EXPECT_EQ(copyOf(read.store().GetBlipNoDelayStrm(0)->data), kImage);
}

TEST(BlipStore, SeeksThePictureRightBehindTheEntryThoughItHasAName) {
  const ReadDrawings read = storeOf({.nameBytes = 8, .blip = bitmapBlip(6, kImage)});
  ASSERT_NE(read.store().GetBlipNoDelayStrm(0), nullptr);
  EXPECT_EQ(copyOf(read.store().GetBlipNoDelayStrm(0)->data), kImage);
}

TEST(BlipStore, HasNoPictureInAnEntryOfNoSize) {
  EXPECT_EQ(storeOf({}).store().GetBlipNoDelayStrm(0), nullptr);
  EXPECT_EQ(storeOf({}).store().GetBlipWithDelayStrm(0, nullptr), nullptr);
}

TEST(BlipStore, HasNoPictureOfAKindFromEightOn) {
  EXPECT_NE(storeOf({.blip = bitmapBlip(7, kImage)}).store().GetBlipNoDelayStrm(0), nullptr);
  EXPECT_EQ(storeOf({.blip = bitmapBlip(8, kImage)}).store().GetBlipNoDelayStrm(0), nullptr);
  EXPECT_EQ(storeOf({.blip = bitmapBlip(17, kImage)}).store().GetBlipNoDelayStrm(0), nullptr);
}

TEST(BlipStore, CutsAPictureThatRunsPastTheEnd) {
  Bytes blip = bitmapBlip(6, kImage);
  patchInteger(blip, 4, uint32_t{0x7FFFFFFF});
  const ReadDrawings read = storeOf({.blip = blip});
  ASSERT_NE(read.store().GetBlipNoDelayStrm(0), nullptr);
  EXPECT_EQ(copyOf(read.store().GetBlipNoDelayStrm(0)->data), kImage);
}

TEST(BlipStore, IsEmptyOutside) {
  const ReadDrawings read = storeOf({.blip = bitmapBlip(6, kImage)});
  EXPECT_TRUE(read.store().GetFBSE(1).empty());
  EXPECT_EQ(read.store().GetBlipNoDelayStrm(1), nullptr);
  EXPECT_EQ(read.store().GetBlipWithDelayStrm(1, nullptr), nullptr);
}

TEST(BlipStore, KnowsThePublishedKinds) {
  EXPECT_EQ(mso_escher::GetBlipSignature(2).signature, 0x3D4);
  EXPECT_EQ(mso_escher::GetBlipSignature(6).signature, 0x6E0);
  EXPECT_EQ(mso_escher::GetBlipSignature(6).kind, 0xFE);
  EXPECT_EQ(mso_escher::GetBlipSignature(31).kind, 0);
  EXPECT_EQ(mso_escher::GetBlipSignature(32).signature, 0x800);
}

TEST(BlipList, GivesBitmapsAndMetafiles) {
  const ReadList read(joined({fbse({.kind = 6, .blip = bitmapBlip(6, kImage)}),
                              fbse({.kind = 2, .blip = metafileBlip(2, kImage, true)})}));
  ASSERT_EQ(read.table.Count(), 2u);
  EXPECT_EQ(copyOf(read.table.ImageItem(0)->data), kImage);
  EXPECT_TRUE(read.table.ImageItem(0)->metafileHeader.empty());
  EXPECT_EQ(copyOf(read.table.ImageItem(1)->data), kImage);
  EXPECT_EQ(read.table.ImageItem(1)->uid.u8(0), 0xA1);
  EXPECT_EQ(read.table.ImageItem(2), nullptr);
}

TEST(BlipList, DoesNotCountALastEntryThatIsCut) {
  const Bytes entry = fbse({.blip = bitmapBlip(6, kImage)});
  Bytes bytes = joined({entry, entry});
  bytes.pop_back();
  EXPECT_EQ(ReadList(bytes).table.Count(), 1u);
  bytes.resize(entry.size() - 1);
  EXPECT_EQ(ReadList(bytes).table.Count(), 0u);
}

TEST(BlipList, SeeksALaterRecordFurtherOnThanItsImage) {
  const Bytes bitmap = fbse({.kind = 6, .blip = bitmapBlip(6, kImage)});
  const Bytes metafile = fbse({.kind = 2, .blip = metafileBlip(2, kImage)});
  const ReadList bitmaps(joined({bitmap, bitmap}));
  EXPECT_EQ(bitmaps.table.Item(0).data(), bitmaps.bytes.data());
  EXPECT_EQ(bitmaps.table.Item(1).data(), bitmaps.bytes.data() + bitmap.size() + 25);
  const ReadList metafiles(joined({metafile, metafile}));
  EXPECT_EQ(metafiles.table.Item(1).data(), metafiles.bytes.data() + metafile.size() + 58);
  EXPECT_TRUE(metafiles.table.Item(2).empty());
}

TEST(BlipList, BitmapThatIsTooSmallHasNoImage) {
  const ReadList read(fbse({.blip = {1, 2, 3}}));
  ASSERT_EQ(read.table.Count(), 1u);
  EXPECT_TRUE(read.table.ImageItem(0)->data.empty());
}

TEST(Drawings, OfRandomBytesAreReadWithoutHarm) {
  std::mt19937 random(1);
  const Bytes sound =
      joined({drawingGroup({fbse({.blip = bitmapBlip(6, kImage)})}),
              drawing(0, {group(1, {shape({fsp(1, 2), childAnchor(1, 2, 3, 4),
                                           propertyTable({arrayProperty(0x145, 2, 0xFFF0, kImage),
                                                          textProperty(0xC0, u"ab")})})})})});
  unsigned read = 0;
  for (int round = 0; round < 5000; ++round) {
    Bytes bytes = sound;
    for (int i = 0; i < 1 + round % 5; ++i) bytes[random() % bytes.size()] = static_cast<uint8_t>(random());
    const ReadDrawings drawings(bytes);
    visit(drawings.root());
    for (unsigned i = 0; i < drawings.store().GetCount(); ++i) drawings.store().GetBlipNoDelayStrm(i);
    const ReadList list(bytes);
    for (unsigned i = 0; i < list.table.Count(); ++i) list.table.Item(i);
    read += drawings.root().Good() ? 1 : 0;
  }
  EXPECT_GT(read, 0u);
}

#include "drawing/bse_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "read_drawing.h"

using namespace drawing_test;
using testing::ElementsAre;

namespace {

Bytes bytesOf(ByteView view) {
  return Bytes(view.data(), view.data() + view.size());
}

class Table {
 public:
  explicit Table(const Bytes& bytes) : bytes_(bytes) { table_.Init(viewOf(bytes_)); }
  const KDRBseTable* operator->() const { return &table_; }
  const KDRBseImage& image(unsigned int i = 0) const { return *table_.ImageItem(i); }
  /// Where in the bytes record i is sought.
  size_t placeOf(unsigned int i) const { return static_cast<size_t>(table_.Item(i).data() - bytes_.data()); }

 private:
  Bytes bytes_;
  KDRBseTable table_;
};

TEST(BseTable, GivesTheImagesBackToBack) {
  const Table table(joined({Blip{.type = 6, .data = {1, 2}}.entry(), Blip{.type = 5, .data = {3}}.entry()}));
  ASSERT_EQ(table->Count(), 2u);
  EXPECT_THAT(bytesOf(table.image(0).data), ElementsAre(1, 2));
  EXPECT_THAT(bytesOf(table.image(1).data), ElementsAre(3));
}

TEST(BseTable, OfNoBytesIsEmpty) {
  const Table table({});
  EXPECT_EQ(table->Count(), 0u);
  EXPECT_EQ(table->ImageItem(0), nullptr);
  EXPECT_EQ(table->Item(0).data(), nullptr);
}

TEST(BseTable, DoesNotCountALastRecordThatIsCut) {
  Bytes bytes = joined({Blip().entry(), Blip().entry()});
  bytes.pop_back();
  EXPECT_EQ(Table(bytes)->Count(), 1u);
  EXPECT_EQ(Table(Bytes(20))->Count(), 0u);
}

TEST(BseTable, PointsAtTheBlipItsIdentityAndItsImage) {
  const Table table(Blip{.type = 6, .data = {1, 2}, .uid = 0x5A}.entry());
  EXPECT_EQ(table.image().blipRecord.u16(2), 0xF01E);
  EXPECT_EQ(table.image().uid.data(), table.image().blipRecord.data() + 8);
  EXPECT_EQ(table.image().uid.u8(0), 0x5A);
  EXPECT_EQ(table.image().data.data(), table.image().uid.data() + 17);
  EXPECT_EQ(table.image().metafileHeader.data(), nullptr);
}

TEST(BseTable, TakesABitmapToHaveOneIdentity) {
  const Bytes blip = record(0xF01D, 0x46B, 0, ByteWriter().fill(32, 1).u8(0xFF).u8(9).take());
  const Bytes entry = record(0xF007, 5, 2, joined({ByteWriter().zeros(20).u32(42).zeros(12).take(), blip}));
  EXPECT_EQ(Table(entry).image().data.size(), 17u);
}

TEST(BseTable, PointsAtTheHeaderOfAMetafile) {
  const Table table(Blip{.type = 2, .data = {1, 2, 3}, .rawSize = 77, .compression = 0}.entry());
  EXPECT_EQ(table.image().metafileHeader.size(), 34u);
  EXPECT_EQ(table.image().metafileHeader.u32(0), 77u);
  EXPECT_THAT(bytesOf(table.image().data), ElementsAre(1, 2, 3));
}

TEST(BseTable, StepsOverTwoIdentitiesOfAMetafile) {
  const Bytes header = ByteWriter().u32(50).zeros(24).u32(2).u8(0).u8(0xFE).take();
  const Bytes blip = record(0xF01B, 0x217, 0, joined({Bytes(32), header, {7, 8, 9}}));
  const Bytes fbse = ByteWriter().zeros(20).u32(static_cast<uint32_t>(blip.size())).zeros(12).take();
  const Table table(record(0xF007, 3, 2, joined({fbse, blip})));
  EXPECT_EQ(table.image().metafileHeader.u32(0), 50u);
  EXPECT_THAT(bytesOf(table.image().data), ElementsAre(7, 8)) << "as much as the header says is stored";
}

TEST(BseTable, GoesByTheInstanceOfTheEntryForTheKindOfImage) {
  Bytes entry = Blip{.type = 6}.entry();
  EXPECT_TRUE(Table(entry).image().metafileHeader.empty());
  for (const uint16_t metafile : {2, 3, 4}) {
    support::patchInteger(entry, 0, static_cast<uint16_t>(metafile << 4 | 2));
    EXPECT_NE(Table(entry).image().metafileHeader.data(), nullptr) << metafile;
  }
}

TEST(BseTable, SeeksRecordsBehindTheFirstFurtherOn) {
  const std::vector<Bytes> entries = {Blip{.type = 6, .data = Bytes(300)}.entry(),
                                      Blip{.type = 3, .data = Bytes(300)}.entry(), Blip().entry()};
  const Table table(joined(entries));
  ASSERT_EQ(table->Count(), 3u);
  EXPECT_EQ(table.placeOf(0), 0u);
  EXPECT_EQ(table.placeOf(1), entries[0].size() + 25);
}

TEST(BseTable, SeeksFurtherOnBehindAMetafile) {
  const std::vector<Bytes> entries = {Blip{.type = 4, .data = Bytes(300)}.entry(),
                                      Blip{.type = 6, .data = Bytes(300)}.entry()};
  const Table table(joined(entries));
  EXPECT_EQ(table.placeOf(1), entries[0].size() + 58);
}

TEST(BseTable, HasNoRecordWhereTheStrideLeadsOutside) {
  const Table table(joined({Blip{.type = 3}.entry(), Blip{.type = 6, .data = {}}.entry(), Blip().entry()}));
  ASSERT_EQ(table->Count(), 3u);
  EXPECT_EQ(table->Item(2).data(), nullptr);
}

TEST(BseTable, SurvivesSizesThatWrap) {
  for (const uint32_t size : {0xFFFFFFFFu, 0xFFFFFFD4u, 0x80000000u, 0xFFFFFF00u}) {
    Bytes bytes = joined({Blip().entry(), Blip().entry()});
    support::patchInteger(bytes, 28, size);
    EXPECT_EQ(Table(bytes)->Count(), 0u) << size;
  }
}

TEST(BseTable, HasEmptyImagesWhereEntriesHoldNoBlip) {
  const Table table(joined({Bytes(44), Bytes(44)}));
  ASSERT_EQ(table->Count(), 2u);
  EXPECT_TRUE(table.image(0).data.empty());
  EXPECT_TRUE(table.image(1).uid.empty());
}

TEST(BseTable, CutsAMetafileThatClaimsMoreThanIsThere) {
  Bytes entry = Blip{.type = 3, .data = {1, 2, 3}}.entry();
  support::patchInteger(entry, 44 + 8 + 16 + 28, uint32_t{0xFFFFFFFF});
  EXPECT_THAT(bytesOf(Table(entry).image().data), ElementsAre(1, 2, 3));
}

}  // namespace

#include "wordreader/plcf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "memory_storage.h"
#include "wordreader/merged_propx.h"
#include "wordreader/notes.h"

using support::Bytes;
using support::ByteWriter;
using support::positionTable;

namespace {

/// Positions only.
class Positions : public KDRPlcf<void, 0> {
 public:
  explicit Positions(const std::vector<uint32_t>& positions) : bytes_(positionTable(positions)) {
    status = ReadRecord(ByteView(bytes_.data(), bytes_.size()));
  }
  Status status;

 private:
  Bytes bytes_;
};

struct Flags : KDRPlcf<int16_t, 0> {
  explicit Flags(Bytes content) : bytes(std::move(content)) {
    status = ReadRecord(ByteView(bytes.data(), bytes.size()));
  }
  Bytes bytes;
  Status status;
};

const Bytes kTwoFlags = ByteWriter().u32(10).u32(20).u32(30).u16(7).u16(8).take();

}  // namespace

TEST(PositionTable, GivesPositionsAndRecords) {
  const Flags table(kTwoFlags);
  EXPECT_EQ(table.status, Status::kOk);
  ASSERT_EQ(table.Count(), 2u);
  EXPECT_EQ(table.Item(1).range.start, 20u);
  EXPECT_EQ(table.Item(1).range.end, 30u);
  EXPECT_EQ(table.Item(1).data, 8);
  EXPECT_EQ(*table.Data(0), 7);
}

TEST(PositionTable, LosesWhatDoesNotDivide) {
  Bytes bytes = kTwoFlags;
  bytes.insert(bytes.end(), {1, 2, 3});
  const Flags table(bytes);
  EXPECT_EQ(table.Count(), 2u);
  EXPECT_EQ(table.Item(1).data, 8);
}

TEST(PositionTable, IsAbsentWithFourBytes) {
  const Positions table({17});
  EXPECT_EQ(table.status, Status::kNothing);
  EXPECT_EQ(table.Count(), 0u);
  EXPECT_EQ(table.Position(0), 0u);
}

TEST(PositionTable, IsAbsentWithFewerThanFourBytes) {
  const Flags table({1, 2, 3});
  EXPECT_EQ(table.status, Status::kNothing);
  EXPECT_EQ(table.Count(), 0u);
}

TEST(PositionTable, ReadsAsZeroOutsideOfIt) {
  const Flags table(kTwoFlags);
  EXPECT_EQ(table.Position(3), 0u);
  EXPECT_EQ(table.Range(2).start, 30u);
  EXPECT_EQ(table.Range(2).end, 0u);
  EXPECT_EQ(table.Item(0xFFFFFFFF).data, 0);
  EXPECT_EQ(table.Data(2), nullptr);
}

TEST(PositionTable, CountsNothingOnceCleared) {
  Flags table(kTwoFlags);
  table.Clear();
  EXPECT_EQ(table.Count(), 0u);
}

TEST(PositionTable, FindsTheLaterEntryOnABoundary) {
  const Positions table({10, 20, 30});
  EXPECT_EQ(table.UpperBound(20) - 1, 1u);
  EXPECT_EQ(table.UpperBound(19) - 1, 0u);
}

TEST(PositionTable, SearchesPositionsAtEitherEnd) {
  const Positions table({10, 20, 30});
  EXPECT_EQ(table.UpperBound(9), 0u);
  EXPECT_EQ(table.UpperBound(29), 2u);
  EXPECT_EQ(table.UpperBound(30), 3u);  // Count() + 1: none lies above
}

TEST(PositionTable, SearchesFromAGivenIndexOn) {
  const Positions table({10, 20, 30, 40});
  EXPECT_EQ(table.UpperBound(5, 2), 2u);
  EXPECT_EQ(table.UpperBound(35, 2), 3u);
  EXPECT_EQ(table.UpperBound(5, 9), 4u);
}

TEST(PositionTable, ComparesPositionsUnsigned) {
  const Positions table({10, 0x80000000, 0xFFFFFFFE});
  EXPECT_EQ(table.UpperBound(0x7FFFFFFF), 1u);
  EXPECT_EQ(table.UpperBound(0xFFFFFFFF), 3u);
}

TEST(PositionTable, HasADivisorForEachKindOfRecord) {
  const auto countOf = [](auto table, size_t size) {
    const Bytes bytes(size);
    table.ReadRecord(ByteView(bytes.data(), bytes.size()));
    return table.Count();
  };
  EXPECT_EQ(countOf(KDRPlcf<mso_word::PCD, 0>(), 4 + 12 * 3 + 11), 3u);
  EXPECT_EQ(countOf(KDRPlcf<mso_word::SED, 6>(), 4 + 16 * 3 + 15), 3u);
  EXPECT_EQ(countOf(KDRPlcf<mso_word::ATRD, 4>(), 4 + 34 * 3 + 33), 3u);
  EXPECT_EQ(countOf(KDRPlcf<mso_word::BKF, 22>(), 4 + 8 * 3 + 7), 3u);
  EXPECT_EQ(countOf(KDRPlcf<mso_word::FLD, 0>(), 4 + 6 * 3 + 5), 3u);
  EXPECT_EQ(countOf(KDRPlcf<mso_word::FSPA, 40>(), 4 + 30 * 3 + 29), 3u);
  EXPECT_EQ(countOf(KDRPlcf<mso_word::FTXBXS, 56>(), 4 + 26 * 3 + 25), 3u);
  EXPECT_EQ(countOf(KDRPlcf<uint32_t, 12>(), 4 + 8 * 3 + 7), 3u);
}

TEST(PositionTable, IsAbsentWhenTheDocumentHasNone) {
  support::WordDocument source;
  source.paragraph("x");
  OpenedDocument opened(source);
  KDRFootnotes::Positions table;
  EXPECT_EQ(table.Read(opened.document), Status::kNothing);
  EXPECT_EQ(table.Count(), 0u);
}

TEST(PositionTable, IsEmptyWhenTheStreamCutsItShort) {
  support::WordDocument source;
  source.paragraph("x").footnote("note");
  source.patchFib(support::WordDocument::pairOffset(mso_word::FCLCB_FOOTNOTE_REFS) + 4, uint32_t{0x7FFFFFFF});
  OpenedDocument opened(source);
  KDRFootnotes::Positions table;
  EXPECT_EQ(table.Read(opened.document), Status::kNothing);
  EXPECT_EQ(table.Count(), 0u);
}

// The table that the scanner fills.

namespace {

KDRMergePropx propx(uint16_t size) {
  static const uint8_t kData[16] = {};
  return {size, 0, kData, nullptr};
}

}  // namespace

TEST(PropertyTable, IsEmptyAtFirst) {
  const KPropxTable table;
  EXPECT_EQ(table.Count(), 0u);
  EXPECT_EQ(table.Data(0), nullptr);
  EXPECT_EQ(table.Range(0).start, 0xFFFFFFFFu);
  EXPECT_EQ(table.Range(0).end, 0u);
}

TEST(PropertyTable, EndsEachEntryWhereTheNextBegins) {
  KPropxTable table;
  table.NewItem(0, propx(1));
  table.NewItem(7, propx(2));
  table.Finalize(12);
  ASSERT_EQ(table.Count(), 2u);
  EXPECT_EQ(table.Range(0).end, 7u);
  EXPECT_EQ(table.Range(1).start, 7u);
  EXPECT_EQ(table.Range(1).end, 12u);
  EXPECT_EQ(table.Item(1).data.fkpSize, 2);
}

TEST(PropertyTable, GivesTheLastEntryNoLengthUntilFinalised) {
  KPropxTable table;
  table.NewItem(4, propx(1));
  EXPECT_EQ(table.Range(0).start, 4u);
  EXPECT_EQ(table.Range(0).end, 4u);
}

TEST(PropertyTable, FindsTheFirstEntryFromAPosition) {
  KPropxTable table;
  for (uint32_t position : {0, 5, 9, 30}) table.NewItem(position, propx(1));
  EXPECT_EQ(table.FirstFrom(0), 0u);
  EXPECT_EQ(table.FirstFrom(6), 2u);
  EXPECT_EQ(table.FirstFrom(30), 3u);
  EXPECT_EQ(table.FirstFrom(31), 4u);
}

TEST(PropertyTable, FindsTheFirstEntryAlsoWherePositionsDescend) {
  KPropxTable table;
  for (uint32_t position : {0, 50, 9, 30}) table.NewItem(position, propx(1));
  EXPECT_EQ(table.FirstFrom(10), 1u);
  EXPECT_EQ(table.FirstFrom(51), 4u);
}

TEST(PropertyTable, HoldsManyEntries) {
  KPropxTable table;
  for (uint32_t i = 0; i < 5000; ++i) table.NewItem(i * 2, propx(static_cast<uint16_t>(i % 16)));
  table.Finalize(10000);
  EXPECT_EQ(table.Data(4999)->fkpSize, 4999 % 16);
  EXPECT_EQ(table.Range(4999).end, 10000u);
  EXPECT_EQ(table.FirstFrom(7777), 3889u);
}

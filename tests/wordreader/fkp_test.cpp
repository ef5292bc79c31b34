#include "wordreader/fkp.h"

#include <gtest/gtest.h>

#include "memory_storage.h"
#include "support/fkp_writer.h"

using support::Bytes;
using support::ByteWriter;
using support::FkpEntry;

namespace {

Bytes bytesOf(ByteView view) {
  return Bytes(view.data(), view.data() + view.size());
}

Bytes runPage(const std::vector<FkpEntry>& entries) {
  return support::packFkp(entries, 1, 255).pages.at(0);
}

Bytes paragraphPage(const std::vector<FkpEntry>& entries) {
  return support::packFkp(entries, 13, 255).pages.at(0);
}

template <class Fkp>
Fkp pageOf(const Bytes& bytes) {
  Fkp page;
  page.Read(ByteView(bytes.data(), bytes.size()));
  return page;
}

/// A document with these pages of runs; `starts` are the offsets of its bin table, one more than pages.
struct Bins {
  Bins(const std::vector<uint32_t>& starts, const std::vector<Bytes>& pages) {
    std::vector<Bytes> numbers;
    for (size_t i = 0; i < pages.size(); ++i) {
      const uint32_t offset = source.wordDocumentData(pages[i]);
      numbers.push_back(ByteWriter().u32(offset / 512).take());
    }
    source.paragraph("text");
    source.table(mso_word::FCLCB_CHPX_BINS, support::positionTable(starts, numbers));
  }
  support::WordDocument source;
};

const Bytes kBold = {0x35, 0x08, 1};
const Bytes kItalic = {0x36, 0x08, 1};

std::vector<FkpEntry> runs(uint32_t start) {
  return {{start, start + 10, support::chpxData(kBold)},
          {start + 10, start + 20, {}},
          {start + 20, start + 30, support::chpxData(kItalic)}};
}

/// Two pages of three runs: 100 to 130 and 130 to 160.
Bins twoPages() {
  return Bins({100, 130, 160}, {runPage(runs(100)), runPage(runs(130))});
}

struct OpenedBins {
  explicit OpenedBins(const Bins& bins) : opened(bins.source) { status = fkps.Read(opened.document); }
  OpenedDocument opened;
  KDRChpxFkps fkps;
  Status status;
};

}  // namespace

// One page.

TEST(RunPage, GivesOffsetsAndProperties) {
  const Bytes bytes = runPage(runs(100));
  const auto page = pageOf<KDRChpxFkp>(bytes);
  ASSERT_EQ(page.Count(), 3u);
  EXPECT_EQ(page.Item(2).range.start, 120u);
  EXPECT_EQ(page.Item(2).range.end, 130u);
  EXPECT_EQ(bytesOf(page.Item(2).sprms), kItalic);
}

TEST(RunPage, GivesNoPropertiesForARecordOfZero) {
  const Bytes bytes = runPage(runs(100));
  const auto item = pageOf<KDRChpxFkp>(bytes).Item(1);
  EXPECT_EQ(item.range.start, 110u);
  EXPECT_TRUE(item.sprms.empty());
}

TEST(RunPage, CutsPropertiesAtItsEnd) {
  Bytes bytes = runPage(runs(100));
  bytes[4 * 4] = 254;  // word offset of the first run: 508
  bytes[508] = 200;
  EXPECT_EQ(pageOf<KDRChpxFkp>(bytes).Item(0).sprms.size(), 3u);
}

TEST(RunPage, ReadsEntriesThatDoNotFitAsZero) {
  Bytes bytes(512, 0xFF);
  const auto page = pageOf<KDRChpxFkp>(bytes);
  EXPECT_EQ(page.Count(), 255u);
  EXPECT_EQ(page.Item(254).range.start, 0u);
  EXPECT_TRUE(page.Item(254).sprms.empty());
}

TEST(ParagraphPage, ReadsAnOddSizeByItsCountOfWords) {
  const Bytes bytes = paragraphPage({{0, 9, support::papxData(5, {1, 2, 3})}});
  EXPECT_EQ(bytesOf(pageOf<KDRPapxFkp>(bytes).Item(0).sprms), (Bytes{5, 0, 1, 2, 3}));
}

TEST(ParagraphPage, TakesTheSizeFromTheNextByteWhereTheCountIsZero) {
  const Bytes papx = support::papxData(5, {1, 2, 3, 4});
  ASSERT_EQ(papx[0], 0);
  const Bytes bytes = paragraphPage({{0, 9, papx}});
  EXPECT_EQ(bytesOf(pageOf<KDRPapxFkp>(bytes).Item(0).sprms), (Bytes{5, 0, 1, 2, 3, 4}));
}

TEST(ParagraphPage, CutsPropertiesAtItsEnd) {
  Bytes bytes = paragraphPage({{0, 9, support::papxData(5, {1})}});
  bytes[8] = 255;  // word offset 510
  bytes[510] = 0;  // the size stands in the last byte, which is the count of entries
  EXPECT_TRUE(pageOf<KDRPapxFkp>(bytes).Item(0).sprms.empty());
}

// All pages.

TEST(Fkps, FindsTheLaterEntryOnABoundary) {
  const OpenedBins bins(twoPages());
  const auto between = bins.fkps.UpperBound(110);
  EXPECT_EQ(between.GetFkpIndex(), 0u);
  EXPECT_EQ(between.GetPropxIndex(), 1u);
  const auto betweenPages = bins.fkps.UpperBound(130);
  EXPECT_EQ(betweenPages.GetFkpIndex(), 1u);
  EXPECT_EQ(betweenPages.GetPropxIndex(), 0u);
}

TEST(Fkps, FindsNothingInFrontOfTheFirstOffset) {
  const OpenedBins bins(twoPages());
  const auto entry = bins.fkps.UpperBound(99);
  EXPECT_EQ(entry.GetFkpIndex(), kNoFkpIndex);
  EXPECT_EQ(bins.fkps.Item(entry).range.start, 0xFFFFFFFFu);
  EXPECT_EQ(bins.fkps.Item(entry).range.end, 0xFFFFFFFFu);
  EXPECT_EQ(bins.fkps.Size(entry), 0u);
  EXPECT_FALSE(entry <= bins.fkps.End());
}

TEST(Fkps, FindsNothingBehindTheLastOffset) {
  const OpenedBins bins(twoPages());
  EXPECT_EQ(bins.fkps.UpperBound(160).GetFkpIndex(), kNoFkpIndex);
}

TEST(Fkps, FindsNothingInFrontOfThePagesOwnFirstOffset) {
  const OpenedBins bins(Bins({50, 130}, {runPage(runs(100))}));
  const auto entry = bins.fkps.UpperBound(60);
  EXPECT_EQ(entry.GetFkpIndex(), 0u);
  EXPECT_EQ(entry.GetPropxIndex(), kNoFkpIndex);
  EXPECT_FALSE(entry <= bins.fkps.End());
}

TEST(Fkps, GivesSizesOfEntries) {
  const OpenedBins bins(twoPages());
  EXPECT_EQ(bins.fkps.Size(bins.fkps.UpperBound(100)), 3u);
  EXPECT_EQ(bins.fkps.Size(bins.fkps.UpperBound(115)), 0u);
}

TEST(Fkps, WalksAcrossPagesToTheEnd) {
  const OpenedBins bins(twoPages());
  std::vector<uint32_t> starts;
  for (auto entry = bins.fkps.UpperBound(115); entry <= bins.fkps.End(); ++entry) {
    starts.push_back(bins.fkps.Item(entry).range.start);
  }
  EXPECT_EQ(starts, (std::vector<uint32_t>{110, 120, 130, 140, 150}));
}

TEST(Fkps, EndsBehindTheLastEntryWithNoIndexes) {
  const OpenedBins bins(twoPages());
  auto entry = bins.fkps.End();
  ++entry;
  EXPECT_EQ(entry.GetFkpIndex(), kNoFkpIndex);
  EXPECT_EQ(entry.GetPropxIndex(), kNoFkpIndex);
}

TEST(Fkps, OfAnEmptyBinTableEndAtOnce) {
  const OpenedBins bins(Bins({}, {}));
  EXPECT_EQ(bins.status, Status::kNothing);
  EXPECT_FALSE(bins.fkps.UpperBound(0) <= bins.fkps.End());
  EXPECT_FALSE(bins.fkps.End() <= bins.fkps.End());
}

TEST(Fkps, ComparesByPageFirst) {
  const OpenedBins bins(twoPages());
  EXPECT_TRUE(bins.fkps.UpperBound(125) <= bins.fkps.UpperBound(131));
  EXPECT_FALSE(bins.fkps.UpperBound(131) <= bins.fkps.UpperBound(125));
  EXPECT_TRUE(bins.fkps.UpperBound(125) <= bins.fkps.UpperBound(125));
}

TEST(Fkps, ReadsEachPageOnceWhenItIsNeeded) {
  OpenedBins bins(twoPages());
  const auto reads = [&] { return bins.opened.storage.content(L"WordDocument").reads; };
  const unsigned int before = reads();
  bins.fkps.UpperBound(105);
  EXPECT_EQ(reads(), before + 1);
  bins.fkps.UpperBound(125);
  bins.fkps.Item(bins.fkps.UpperBound(115));
  EXPECT_EQ(reads(), before + 1);
  bins.fkps.End();
  EXPECT_EQ(reads(), before + 2);
}

TEST(Fkps, ShareAPageThatTwoBinsName) {
  Bins source({100, 130, 160}, {runPage(runs(100)), runPage(runs(130))});
  source.source.editTable(mso_word::FCLCB_CHPX_BINS, [](Bytes& table) {
    support::patchBytes(table, 16, Bytes(table.begin() + 12, table.begin() + 16));
  });
  OpenedBins bins(source);
  const unsigned int before = bins.opened.storage.content(L"WordDocument").reads;
  EXPECT_EQ(bins.fkps.GetFkp(1).Item(0).range.start, 100u);
  EXPECT_EQ(bins.fkps.GetFkp(0).Item(0).range.start, 100u);
  EXPECT_EQ(bins.opened.storage.content(L"WordDocument").reads, before + 1);
}

TEST(Fkps, ReadTheMissingRestOfAPageAsZero) {
  Bins source({0, 130}, {runPage(runs(100))});
  const auto lastPage = static_cast<uint32_t>(source.source.streams().wordDocument.size() / 512);
  source.source.editWordDocument([=](Bytes& stream) { stream.resize(lastPage * 512 + 100, 0xAA); });
  source.source.editTable(mso_word::FCLCB_CHPX_BINS,
                          [=](Bytes& table) { support::patchInteger(table, 8, lastPage); });
  const OpenedBins bins(source);
  EXPECT_EQ(bins.fkps.GetFkp(0).Count(), 0u);
}

TEST(Fkps, ThrowForAPageOutsideTheStream) {
  Bins source({0, 130}, {runPage(runs(100))});
  source.source.editTable(mso_word::FCLCB_CHPX_BINS,
                          [](Bytes& table) { support::patchInteger(table, 8, uint32_t{0x3FFFFF}); });
  const OpenedBins bins(source);
  EXPECT_THROW(bins.fkps.UpperBound(10), int);
}

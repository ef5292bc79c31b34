#include <gtest/gtest.h>

#include "table_test_support.h"

/// Damaged and hostile tables that would take minutes if the work grew with the square of their size. Steps
/// are counted, not seconds.
namespace pagerex {
namespace {

using support::Bytes;
using support::defTableSprm;
using support::sprm;
using support::Sprms;
using support::TableCell;

constexpr TableCell kMergeStart{.verticalMerge = 3};
constexpr TableCell kMergeContinued{.verticalMerge = 1};

/// How many paragraphs were looked at ahead.
uint64_t looksOf(const KEnv& env) {
  return UINT64_MAX - env.conversion->Limits().looksLeft();
}

Sprms inTable(uint32_t depth = 1) {
  return {sprm(0x2416, 1), sprm(0x6649, depth)};
}

Sprms rowEnd(const Bytes& definition) {
  return {sprm(0x2416, 1), sprm(0x2417, 1), definition};
}

TEST(TableSpeed, DoesNotScanAgainWhereAParagraphClosesTheTableButNotTheScan) {
  ManyParagraphs story;
  story.Add(rowEnd(defTableSprm({0, 100})));
  story.Add({sprm(0x2416, 0)});
  story.Add(inTable());
  for (int i = 0; i < 2'000; ++i) {
    for (size_t paragraph : {2, 0, 1}) story.AddAgain(paragraph);
  }
  story.WriteAll();
  EXPECT_LE(looksOf(story.env), story.count());
}

TEST(TableSpeed, DoesNotScanTheNotesBehindEachNote) {
  ManyParagraphs story;
  story.Add(inTable());
  story.Add(rowEnd(defTableSprm({0, 100})));
  for (int i = 0; i < 2'000; ++i) {
    story.AddAgain(0);
    story.AddAgain(1);
  }
  for (uint32_t i = 0; i + 1 < story.count(); i += 2) {
    KEnv note = KEnv::NestedIn(story.env);
    KHtmlTableWriter writer;
    writer.Init(&note);
    note.pap.papIndex = i;
    note.pap.papx.AssignPapx(note.plcfPap->Data(i)->fkp());
    writer.Write();
  }
  EXPECT_LE(looksOf(story.env), story.count());
}

TEST(TableSpeed, CountsTheRowsOfManyMergesTogether) {
  constexpr int64_t kRows = 2'000;
  std::vector<int16_t> edges(17, 0);
  std::vector<TableCell> cells(16, kMergeStart);
  cells[0] = kMergeContinued;
  const Sprms row = rowEnd(defTableSprm(edges, cells));
  KTableScan scan;
  scan.Start(0);
  for (uint32_t i = 0; i < kRows; ++i)
    scan.CollectRow(i, ByteView(row.bytes().data(), row.bytes().size()), 0);
  scan.Finish(kRows);
  KMergeRuns runs;
  for (int64_t i = 0; i < kRows; ++i) {
    for (int cell = 0; cell < 16; ++cell) ASSERT_EQ(kRows - i, SearchRowSpan(scan, i, 0, runs));
  }
  EXPECT_LE(runs.looks(), uint64_t{kRows});
}

TEST(TableSpeed, ScansNestedTablesOnceForEachLevel) {
  ManyParagraphs story;
  for (uint32_t depth = 1; depth <= kDeepestTable; ++depth) {
    story.Add(Sprms(inTable(depth)).add(defTableSprm({0, 100})));
  }
  for (int i = 0; i < 2'000; ++i) {
    for (size_t depth : {63, 62, 63, 1, 62}) story.AddAgain(depth);
  }
  story.WriteAll();
  EXPECT_LE(looksOf(story.env), uint64_t{kDeepestTable} * story.count());
}

TEST(TableSpeed, BringsEdgesIntoOrderInBulk) {
  constexpr int kEdges = 65'536;
  KColumnEdges edges;
  for (int i = 0; i < kEdges; ++i) edges.Add(static_cast<int16_t>(i * 40'503), static_cast<uint32_t>(i));
  edges.Finish();
  ASSERT_EQ(uint32_t{kEdges}, edges.Count());
  EXPECT_LE(edges.ordered(), uint64_t{4} * kEdges);
}

TEST(TableSpeed, BearsATableOfEveryColumnThereIs) {
  ManyParagraphs story;
  story.Add(inTable());
  for (int row = 0; row < 257; ++row) {
    std::vector<int16_t> edges;
    for (int i = 0; i < 256; ++i) edges.push_back(static_cast<int16_t>(-32768 + row + i * 257));
    story.Add(rowEnd(defTableSprm(edges)));
  }
  story.WriteAll();
  EXPECT_NE(std::string::npos, story.archive.text().find("<td width=\"16\" colspan=\"257\""));
}

}  // namespace
}  // namespace pagerex

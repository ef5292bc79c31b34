#include "story/table_grid.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "story/table_cells.h"
#include "support/sprms.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::ByteWriter;
using support::defTableSprm;
using support::sprm;
using support::Sprms;
using support::TableCell;

constexpr TableCell kMergeStart{.verticalMerge = 3};
constexpr TableCell kMergeContinued{.verticalMerge = 1};

KColumnEdges edgesOf(std::initializer_list<int16_t> values) {
  KColumnEdges edges;
  uint32_t row = 0;
  for (int16_t value : values) edges.Add(value, row++);
  edges.Finish();
  return edges;
}

/// A scan over rows that stand in paragraphs 0, 1, 2, ..., and the rows themselves.
class Rows {
 public:
  explicit Rows(std::vector<Sprms> rows) : rows_(std::move(rows)), scan_(std::make_shared<KTableScan>()) {
    scan_->Start(0);
    uint32_t paragraph = 0;
    for (const Sprms& row : rows_) {
      scan_->CollectRow(paragraph++, ByteView(row.bytes().data(), row.size()), 0);
    }
    scan_->Finish(paragraph);
  }
  KTableScan& operator*() const { return *scan_; }
  KTableScan* operator->() const { return scan_.get(); }
  KCellQueue cells() const {
    KCellQueue queue;
    CollectCellFormat(scan_, queue);
    return queue;
  }

 private:
  std::vector<Sprms> rows_;
  std::shared_ptr<KTableScan> scan_;
};

TEST(ColumnEdges, AscendAndHoldEachValueOnce) {
  const KColumnEdges edges = edgesOf({500, -108, 500, 0, 0, 32767, -32768});
  ASSERT_EQ(5u, edges.Count());
  const int16_t expected[] = {-32768, -108, 0, 500, 32767};
  for (uint32_t i = 0; i < 5; ++i) {
    EXPECT_EQ(expected[i], edges[i]);
    EXPECT_EQ(static_cast<int32_t>(i), edges.IndexOf(expected[i]));
  }
  EXPECT_EQ(-1, edges.IndexOf(1));
}

TEST(ColumnEdges, HoldEveryValueThatThereIs) {
  KColumnEdges edges;
  // 40503 is odd, so that the products run through all 16-bit values.
  for (uint32_t i = 0; i < 65536; ++i) edges.Add(static_cast<int16_t>(i * 40503), i);
  edges.Finish();
  ASSERT_EQ(65536u, edges.Count());
  for (int32_t i = 0; i < 65536; ++i) ASSERT_EQ(i, edges.IndexOf(static_cast<int16_t>(i - 32768)));
}

TEST(ColumnEdges, ForgetThoseThatNoFurtherRowHas) {
  KColumnEdges edges;
  for (int16_t value : {0, 100, 300}) edges.Add(value, 0);
  for (int16_t value : {0, 200, 300}) edges.Add(value, 1);
  edges.Finish();
  EXPECT_TRUE(edges.EndsBefore(100, 1));
  EXPECT_FALSE(edges.EndsBefore(0, 1));
  edges.DropBefore(1);
  EXPECT_EQ(3u, edges.Count());
  EXPECT_EQ(-1, edges.IndexOf(100));
}

TEST(ColSpan, CountsTheEdgesFromTheLeftUpToTheRight) {
  const KColumnEdges edges = edgesOf({0, 100, 200, 300});
  EXPECT_EQ(1u, SearchColSpan(edges, 0, 100));
  EXPECT_EQ(3u, SearchColSpan(edges, 0, 300));
  EXPECT_EQ(0u, SearchColSpan(edges, 100, 100));
}

TEST(ColSpan, IsZeroBackwardAndFromAnUnknownEdge) {
  const KColumnEdges edges = edgesOf({0, 100, 200, 300});
  EXPECT_EQ(0u, SearchColSpan(edges, 200, 100));
  EXPECT_EQ(0u, SearchColSpan(edges, 50, 100));
}

TEST(ColSpan, RunsToTheEndForAnUnknownRightEdge) {
  EXPECT_EQ(3u, SearchColSpan(edgesOf({0, 100, 200, 300}), 100, 250));
}

uint32_t rowSpan(const Rows& rows, int64_t row, int16_t left) {
  KMergeRuns runs;
  return SearchRowSpan(*rows, row, left, runs);
}

TEST(RowSpan, RefusesANegativeRow) {
  const Rows rows({Sprms{defTableSprm({0, 100})}});
  EXPECT_EQ(static_cast<uint32_t>(Status::kInvalidArgument), rowSpan(rows, -1, 0));
}

TEST(RowSpan, EndsAtARowWithoutCellRecords) {
  const Rows rows({{defTableSprm({0, 100}, {kMergeStart})},
                   {defTableSprm({0, 100}, {kMergeContinued})},
                   {defTableSprm({0, 100})},
                   {defTableSprm({0, 100}, {kMergeContinued})}});
  EXPECT_EQ(2u, rowSpan(rows, 0, 0));
}

TEST(RowSpan, EndsAtACellBehindTheCellRecords) {
  const Rows rows({{defTableSprm({0, 100, 200}, {kMergeStart, kMergeStart})},
                   {defTableSprm({0, 100, 200}, {kMergeContinued})}});
  EXPECT_EQ(2u, rowSpan(rows, 0, 0));
  EXPECT_EQ(1u, rowSpan(rows, 0, 100));
}

TEST(RowSpan, LooksAtTheFirstCellOfAnEdge) {
  const Rows rows(
      {{defTableSprm({0, 100}, {kMergeStart})}, {defTableSprm({0, 0, 100}, {kMergeStart, kMergeContinued})}});
  EXPECT_EQ(1u, rowSpan(rows, 0, 0));
}

TEST(RowSpan, DoesNotTakeTheRightEdgeOfARowForACell) {
  const Rows rows({{defTableSprm({0, 100, 200}, {kMergeStart, kMergeStart})},
                   {defTableSprm({0, 100}, {kMergeContinued, kMergeContinued})}});
  EXPECT_EQ(1u, rowSpan(rows, 0, 100));
}

TEST(RowSpan, IsTheSameFromEveryRowOfARun) {
  std::vector<Sprms> list(5, Sprms{defTableSprm({0, 0, 100}, {kMergeContinued, kMergeStart})});
  list.push_back({defTableSprm({0, 100}, {kMergeStart})});
  list.push_back({defTableSprm({0, 100}, {kMergeContinued})});
  const Rows rows(std::move(list));
  KMergeRuns runs;
  for (uint32_t row = 0; row < 5; ++row) EXPECT_EQ(5 - row, SearchRowSpan(*rows, row, 0, runs));
  EXPECT_EQ(2u, SearchRowSpan(*rows, 5, 0, runs));
  EXPECT_EQ(1u, SearchRowSpan(*rows, 6, 0, runs));
  EXPECT_EQ(5u, SearchRowSpan(*rows, 0, 0, runs));
}

TEST(CellQueue, IsRefusedWithoutRows) {
  KCellQueue cells;
  EXPECT_EQ(Status::kInvalidArgument, CollectCellFormat(nullptr, cells));
  EXPECT_EQ(Status::kInvalidArgument, CollectCellFormat(std::make_shared<KTableScan>(), cells));
  EXPECT_TRUE(cells.empty());
}

TEST(CellQueue, PassesOverRowsWithoutCells) {
  const Rows rows({{defTableSprm({7})}, {defTableSprm({0, 100})}, {sprm(0xD608, Bytes())}});
  KCellQueue cells = rows.cells();
  ASSERT_FALSE(cells.empty());
  EXPECT_EQ(2u, cells.front().colSpan);
  cells.pop();
  EXPECT_TRUE(cells.empty());
}

TEST(CellQueue, TellsThePlaceOfEachCell) {
  const Rows rows({{defTableSprm({0, 100, 200})}, {defTableSprm({100, 200})}});
  KCellQueue cells = rows.cells();
  EXPECT_EQ(CELL_IN_FIRST_ROW | CELL_FIRST_IN_ROW, cells.front().position);
  cells.pop();
  EXPECT_EQ(CELL_IN_FIRST_ROW | CELL_LAST_IN_ROW, cells.front().position);
  cells.pop();
  EXPECT_EQ(CELL_IN_LAST_ROW | CELL_FIRST_IN_ROW | CELL_LAST_IN_ROW, cells.front().position);
  EXPECT_EQ(1, cells.front().column);
}

TEST(CellQueue, TakesBytesThatAreMissingAsZeros) {
  // Three cells are claimed, and two edges are there.
  const Rows rows({Sprms{sprm(0xD608, ByteWriter().u8(3).u16(100).u16(200).take())}});
  KCellQueue cells = rows.cells();
  EXPECT_EQ(100, cells.front().width);
  cells.pop();
  EXPECT_EQ(-200, cells.front().width);
  EXPECT_EQ(0u, cells.front().colSpan);
  cells.pop();
  EXPECT_EQ(0, cells.front().width);
  EXPECT_EQ(nullptr, cells.front().tc);
}

TEST(CellQueue, HasNoRecordForACellBehindTheLast) {
  const Rows rows({Sprms{defTableSprm({0, 100, 200}, {TableCell{}})}});
  KCellQueue cells = rows.cells();
  EXPECT_NE(nullptr, cells.front().tc);
  cells.pop();
  EXPECT_EQ(nullptr, cells.front().tc);
}

/// What a scan from `first` on must look like, made anew.
void expectSameAsFrom(const std::vector<Sprms>& rows, uint32_t first, KTableScan& scan) {
  const Rows expected(std::vector<Sprms>(rows.begin() + first, rows.end()));
  ASSERT_EQ(expected->edges().Count(), scan.edges().Count());
  for (uint32_t i = 0; i < scan.edges().Count(); ++i) EXPECT_EQ(expected->edges()[i], scan.edges()[i]);
  EXPECT_EQ(expected->EndRow(), scan.EndRow() - scan.FirstRow());
  EXPECT_EQ(expected->style().indent, scan.style().indent);
  EXPECT_EQ(expected->style().cellSpacing, scan.style().cellSpacing);
  EXPECT_EQ(expected->style().justification, scan.style().justification);
  EXPECT_EQ(expected->style().fromTextLeft, scan.style().fromTextLeft);
  EXPECT_EQ(expected->style().borders.has_value(), scan.style().borders.has_value());
}

TEST(TableScan, ServesTheTableThatBeginsWithinItsRows) {
  const Bytes indent = sprm(0xF661, ByteWriter().u8(3).u16(500).take());
  const auto spacing = [](int16_t width) { return support::cellDistanceSprm(0xD633, 0, 1, 15, 3, width); };
  const std::vector<Sprms> list = {
      {defTableSprm({0, 10, 90}), spacing(11), sprm(0x548A, 2)},
      {defTableSprm({0, 20, 90}), indent, sprm(0x9410, 7)},
      {defTableSprm({0, 10, 30, 80}), spacing(13)},
      {defTableSprm({5, 80}), sprm(0x9410, 8), support::tableBorders80Sprm({support::Border80{}})},
      {defTableSprm({0, 70})},
  };
  const Rows rows(list);
  for (uint32_t first = 0; first < list.size(); ++first) {
    ASSERT_TRUE(rows->Covers(first));
    rows->StartAt(first, 0);
    expectSameAsFrom(list, first, *rows);
  }
  EXPECT_FALSE(rows->Covers(0));
  EXPECT_FALSE(rows->Covers(5));
}

}  // namespace
}  // namespace pagerex

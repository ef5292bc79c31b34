#include "flow/row_grid.h"

#include <gtest/gtest.h>

#include <vector>

#include "sprm_view.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::ByteWriter;
using support::sprm;
using support::Sprms;
using support::TableCell;

struct Grid {
  explicit Grid(const Sprms& sprms) { isThere = rowGridOf(viewOf(sprms), grid); }

  std::vector<int> edges() const { return {grid.edges, grid.edges + grid.count + 1}; }
  std::vector<int> merges() const { return {grid.merges, grid.merges + grid.count}; }

  RowGrid grid;
  bool isThere;
};
using Ints = std::vector<int>;

constexpr int kF = kMergeFirst, kC = kMergeContinued, kDF = kMergeDownFirst, kDC = kMergeDownContinued;

Bytes range(uint16_t opcode, uint8_t first, uint8_t limit) {
  return sprm(opcode, int64_t{first} | int64_t{limit} << 8);
}
Bytes rangeAndWidth(uint16_t opcode, uint8_t first, uint8_t second, uint16_t width) {
  return sprm(opcode, int64_t{first} | int64_t{second} << 8 | int64_t{width} << 16);
}

const Sprms kThree{support::defTableSprm({-100, 900, 1900, 2900}, {{}, {}, {}})};

Sprms threeAnd(const Bytes& sprm) {
  return Sprms(kThree).add(sprm);
}

TEST(RowGrid, HasTheEdgesOfItsDefinition) {
  const Grid row(kThree);
  EXPECT_TRUE(row.isThere);
  EXPECT_EQ(row.edges(), (Ints{-100, 900, 1900, 2900}));
  EXPECT_EQ(row.merges(), (Ints{0, 0, 0}));
}

TEST(RowGrid, IsNotThereWithoutADefinition) {
  EXPECT_FALSE(Grid(sprm(0x9601, 100)).isThere);
  EXPECT_FALSE(Grid(Sprms{}).isThere);
}

TEST(RowGrid, IsNotThereIfItsDefinitionIsCut) {
  EXPECT_FALSE(Grid(sprm(0xD608, Bytes{3, 0, 0, 1, 0})).isThere);
  EXPECT_FALSE(Grid(sprm(0xD608, Bytes{0, 0, 0})).isThere);
  EXPECT_FALSE(Grid(sprm(0xD608, Bytes(300, 65))).isThere);
}

TEST(RowGrid, HasEdgesThatNeverGoBack) {
  EXPECT_EQ(Grid(support::defTableSprm({0, 500, 300, 800})).edges(), (Ints{0, 500, 500, 800}));
}

TEST(RowGrid, HasTheMergesOfCells) {
  const Grid row(support::defTableSprm({0, 1, 2, 3, 4}, {{.horizontalMerge = 2, .verticalMerge = 3},
                                                         {.horizontalMerge = 1},
                                                         {.horizontalMerge = 1},
                                                         {.verticalMerge = 1}}));
  EXPECT_EQ(row.merges(), (Ints{kF | kDF, kC, kC, kDC}));
}

TEST(RowGrid, BeginsASecondMergeBehindAFirst) {
  const TableCell first{.horizontalMerge = 3}, other{.horizontalMerge = 1};
  const Grid row(support::defTableSprm({0, 1, 2, 3, 4}, {first, other, first, other}));
  EXPECT_EQ(row.merges(), (Ints{kF, kC, kF, kC}));
}

TEST(RowGrid, TakesMergesThatAreToldTheOtherWayRound) {
  const TableCell first{.horizontalMerge = 1}, other{.horizontalMerge = 2};
  const Grid row(support::defTableSprm({0, 1, 2, 3, 4}, {first, other, other, {}}));
  EXPECT_EQ(row.merges(), (Ints{kF, kC, kC, 0}));
}

TEST(RowGrid, HasMergesOfTheCellsThatHaveRecords) {
  const Grid row(support::defTableSprm({0, 1, 2}, {{.verticalMerge = 3}}));
  EXPECT_EQ(row.merges(), (Ints{kDF, 0}));
}

TEST(RowGrid, InsertsCells) {
  const Grid row(threeAnd(rangeAndWidth(0x7621, 1, 2, 50)));
  EXPECT_EQ(row.edges(), (Ints{-100, 900, 950, 1000, 2000, 3000}));
}

TEST(RowGrid, InsertsCellsUpToAPlaceBehindTheLastOne) {
  const Grid row(threeAnd(rangeAndWidth(0x7621, 4, 1, 50)));
  EXPECT_EQ(row.edges(), (Ints{-100, 900, 1900, 2900, 2950, 3000}));
}

TEST(RowGrid, InsertsCellsWithoutADefinition) {
  const Grid row(rangeAndWidth(0x7621, 0, 2, 700));
  EXPECT_TRUE(row.isThere);
  EXPECT_EQ(row.edges(), (Ints{0, 700, 1400}));
}

TEST(RowGrid, HasNoMoreCellsThanThereIsRoomFor) {
  const Grid row(
      Sprms(kThree).add(rangeAndWidth(0x7621, 1, 255, 9000)).add(rangeAndWidth(0x7621, 9, 255, 9)));
  EXPECT_EQ(row.grid.count, kMostCells);
  EXPECT_EQ(row.edges().back(), 32767);
}

TEST(RowGrid, DeletesCells) {
  const Sprms list{
      support::defTableSprm({0, 10, 30, 60, 100}, {{}, {}, {.verticalMerge = 1}, {.verticalMerge = 3}}),
      range(0x5622, 1, 3)};
  const Grid row(list);
  EXPECT_EQ(row.edges(), (Ints{0, 10, 50}));
  EXPECT_EQ(row.merges(), (Ints{0, kDF}));
}

TEST(RowGrid, DeletesTheLastCells) {
  EXPECT_EQ(Grid(threeAnd(range(0x5622, 1, 200))).edges(), (Ints{-100, 900}));
  EXPECT_FALSE(Grid(threeAnd(range(0x5622, 0, 3))).isThere);
}

TEST(RowGrid, WidensColumns) {
  EXPECT_EQ(Grid(threeAnd(rangeAndWidth(0x7623, 0, 2, 100))).edges(), (Ints{-100, 0, 100, 1100}));
}

TEST(RowGrid, MergesAndSplitsCells) {
  EXPECT_EQ(Grid(threeAnd(range(0x5624, 1, 3))).merges(), (Ints{0, kF, kC}));
  EXPECT_EQ(Grid(Sprms(kThree).add(range(0x5624, 0, 3)).add(range(0x5625, 0, 3))).merges(), (Ints{0, 0, 0}));
}

TEST(RowGrid, MergesCellsDown) {
  EXPECT_EQ(Grid(threeAnd(sprm(0xD62B, Bytes{1, 3}))).merges(), (Ints{0, kDF, 0}));
  EXPECT_EQ(Grid(threeAnd(sprm(0xD62B, Bytes{2, 1}))).merges(), (Ints{0, 0, kDC}));
  EXPECT_EQ(Grid(Sprms(kThree).add(sprm(0xD62B, Bytes{1, 3})).add(sprm(0xD62B, Bytes{1, 0}))).merges(),
            (Ints{0, 0, 0}));
}

TEST(RowGrid, IgnoresCellsThatAreNotThere) {
  for (const Bytes& change :
       {range(0x5622, 3, 9), range(0x5624, 7, 9), range(0x5625, 9, 3), rangeAndWidth(0x7623, 3, 255, 9),
        sprm(0xD62B, Bytes{3, 3}), sprm(0xD62B, Bytes{255, 1})}) {
    const Grid row(threeAnd(change));
    EXPECT_EQ(row.edges(), (Ints{-100, 900, 1900, 2900}));
    EXPECT_EQ(row.merges(), (Ints{0, 0, 0}));
  }
}

TEST(RowGrid, ForgetsTheRowThatItHeld) {
  Grid row(kThree);
  EXPECT_FALSE(rowGridOf({}, row.grid));
  EXPECT_EQ(row.grid.count, 0);
}

}  // namespace
}  // namespace pagerex

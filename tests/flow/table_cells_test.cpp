#include "flow/table_cells.h"

#include <gtest/gtest.h>

#include "sprm_view.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::sprm;
using support::Sprms;

support::Border wide(uint8_t width) {
  return {.width = width, .type = 1};
}

/// A row of three cells.
RowDefinition rowOf(const Sprms& sprms, const std::vector<support::TableCell>& cells = {}) {
  RowDefinition row;
  const Sprms list = Sprms{support::defTableSprm({-100, 900, 1900, 3000}, cells)}.add(sprms);
  applyTableSprms(viewOf(list), row);
  return row;
}

CellProperties resolved(const RowDefinition& row, const CellPosition& position,
                        const StyleCells& conditional = {}) {
  CellProperties cell;
  resolveCell(row, position, conditional, cell);
  return cell;
}

constexpr CellPosition kFirstCell{0, 0, true, true}, kInside{1, 1, false, false}, kLastCell{2, 2, true, true};
const Sprms kTableBorders{support::tableBordersSprm({wide(1), wide(2), wide(3), wide(4), wide(5), wide(6)})};

TEST(ResolvedCell, LiesBetweenItsEdges) {
  const CellProperties one = resolved(rowOf({}), kInside);
  EXPECT_EQ(one.left, 900);
  EXPECT_EQ(one.width, 1000);
  const CellProperties merged = resolved(rowOf({}), {0, 1, true, true});
  EXPECT_EQ(merged.left, -100);
  EXPECT_EQ(merged.width, 2000);
}

TEST(ResolvedCell, IsLeftAloneOutsideOfTheRow) {
  EXPECT_EQ(resolved(rowOf({}), {2, 3, false, false}).width, 0);
  EXPECT_EQ(resolved(rowOf({}), {2, 1, false, false}).width, 0);
  EXPECT_EQ(resolved(RowDefinition(), {0, 0, false, false}).width, 0);
}

TEST(ResolvedCell, HasTheTablesBordersByItsPlace) {
  const RowDefinition row = rowOf(kTableBorders);
  const CellProperties first = resolved(row, kFirstCell);
  EXPECT_EQ(first.top.widthEighths, 1);
  EXPECT_EQ(first.start.widthEighths, 2);
  EXPECT_EQ(first.bottom.widthEighths, 3);
  EXPECT_EQ(first.end.widthEighths, 6);
  const CellProperties inside = resolved(row, kInside);
  EXPECT_EQ(inside.top.widthEighths, 5);
  EXPECT_EQ(inside.start.widthEighths, 6);
  EXPECT_EQ(inside.bottom.widthEighths, 5);
  EXPECT_EQ(inside.end.widthEighths, 6);
  EXPECT_EQ(resolved(row, kLastCell).end.widthEighths, 4);
}

TEST(ResolvedCell, HasItsOwnBordersFirst) {
  const support::Border80 own{9, 1}, none{255, 255, 255, 255};
  const RowDefinition row = rowOf(kTableBorders, {{.top = own, .left = none}, {.right = own}});
  const CellProperties cell = resolved(row, {0, 1, true, true});
  EXPECT_EQ(cell.top.widthEighths, 9);
  EXPECT_FALSE(cell.start.isThere());
  EXPECT_EQ(cell.bottom.widthEighths, 3);
  EXPECT_EQ(cell.end.widthEighths, 9) << "of the last cell that is merged into it";
}

TEST(ResolvedCell, HasBordersOfConditionsWhereTheRowHasNone) {
  StyleCells conditional;
  conditional.setBorders = 1 << kTop;
  conditional.borders[kTop].widthEighths = 8;
  RowDefinition row = rowOf({});
  row.styleCells.setBorders = 1 << kTop | 1 << kBottom;
  row.styleCells.borders[kTop].widthEighths = 7;
  row.styleCells.borders[kBottom].widthEighths = 7;
  EXPECT_EQ(resolved(row, kFirstCell, conditional).top.widthEighths, 8);
  EXPECT_EQ(resolved(row, kFirstCell, conditional).bottom.widthEighths, 7);
  EXPECT_EQ(resolved(rowOf(kTableBorders), kFirstCell, conditional).top.widthEighths, 1);
}

TEST(ResolvedCell, IsPaddedByItselfOrTheTableOrTheGap) {
  const Bytes gap = sprm(0x9602, 70);
  const Bytes table = support::cellDistanceSprm(0xD634, 0, 1, 0x3, 3, 60);
  const Bytes own = support::cellDistanceSprm(0xD632, 0, 1, 0x1, 3, 50);
  const CellProperties cell = resolved(rowOf({gap, table, own}), kFirstCell);
  EXPECT_EQ(cell.paddingTop, 50);
  EXPECT_EQ(cell.paddingStart, 60);
  EXPECT_EQ(cell.paddingEnd, 70);
  EXPECT_EQ(cell.paddingBottom, 0);
}

TEST(ResolvedCell, IsShadedByItselfOrAConditionOrTheStyle) {
  const Shading one{true, {1, false}}, two{true, {2, false}}, three{true, {3, false}};
  RowDefinition row = rowOf({});
  row.styleCells.shading = three;
  StyleCells conditional;
  EXPECT_EQ(resolved(row, kInside, conditional).shading, three);
  conditional.setsShading = true;
  conditional.shading = two;
  EXPECT_EQ(resolved(row, kInside, conditional).shading, two);
  row.cells[1].setsShading = true;
  row.cells[1].shading = one;
  EXPECT_EQ(resolved(row, kInside, conditional).shading, one);
}

TEST(ResolvedCell, AlignsItsTextByItselfOrAConditionOrTheStyle) {
  RowDefinition row = rowOf({});
  row.styleCells.setsVerticalAlignment = true;
  row.styleCells.verticalAlignment = 1;
  StyleCells conditional;
  EXPECT_EQ(resolved(row, kInside, conditional).verticalAlignment, 1);
  conditional.setsVerticalAlignment = true;
  conditional.verticalAlignment = 2;
  EXPECT_EQ(resolved(row, kInside, conditional).verticalAlignment, 2);
  row.cells[1].verticalAlignment = 1;
  EXPECT_EQ(resolved(row, kInside, conditional).verticalAlignment, 1);
}

TEST(ResolvedCell, HasTextFlowAndWrapping) {
  RowDefinition row = rowOf({});
  row.cells[1].textFlow = 3;
  row.styleCells.noWrap = true;
  EXPECT_EQ(resolved(row, kInside).textFlow, 3);
  EXPECT_TRUE(resolved(row, kInside).noWrap);
  StyleCells wraps;
  wraps.setsNoWrap = true;
  EXPECT_FALSE(resolved(row, kInside, wraps).noWrap);
}

RowDefinition looking(uint16_t look) {
  RowDefinition row;
  row.look = look;
  return row;
}
constexpr uint16_t kNoBands = kLookNoRowBands | kLookNoColumnBands;
constexpr uint16_t kAllEdges = kNoBands | kLookFirstRow | kLookLastRow | kLookFirstColumn | kLookLastColumn;

TEST(Conditions, AreThoseThatTheTableLooksFor) {
  EXPECT_EQ(conditionsOf(looking(kNoBands), 0, 3, 0, 3), 0);
  const RowDefinition row = looking(kAllEdges);
  EXPECT_EQ(conditionsOf(row, 0, 3, 0, 3), kFirstRow | kFirstColumn | kTopLeft);
  EXPECT_EQ(conditionsOf(row, 0, 3, 1, 3), kFirstRow);
  EXPECT_EQ(conditionsOf(row, 0, 3, 2, 3), kFirstRow | kLastColumn | kTopRight);
  EXPECT_EQ(conditionsOf(row, 1, 3, 1, 3), 0);
  EXPECT_EQ(conditionsOf(row, 2, 3, 0, 3), kLastRow | kFirstColumn | kBottomLeft);
  EXPECT_EQ(conditionsOf(row, 2, 3, 2, 3), kLastRow | kLastColumn | kBottomRight);
  EXPECT_EQ(conditionsOf(row, 0, 1, 0, 1), kFirstRow | kFirstColumn | kTopLeft) << "but one cell";
}

TEST(Conditions, CountBandsBehindTheFirstRow) {
  const RowDefinition row = looking(kLookNoColumnBands | kLookFirstRow | kLookLastRow);
  EXPECT_EQ(conditionsOf(row, 0, 9, 1, 3), kFirstRow);
  EXPECT_EQ(conditionsOf(row, 1, 9, 1, 3), kOddRowBand);
  EXPECT_EQ(conditionsOf(row, 2, 9, 1, 3), kEvenRowBand);
  EXPECT_EQ(conditionsOf(row, 3, 9, 1, 3), kOddRowBand);
  EXPECT_EQ(conditionsOf(row, 8, 9, 1, 3), kLastRow);
}

TEST(Conditions, CountBandsOfSeveralRowsAndColumns) {
  RowDefinition row = looking(0);
  row.rowBandSize = 2;
  row.columnBandSize = 3;
  EXPECT_EQ(conditionsOf(row, 1, 9, 2, 9), kOddRowBand | kOddColumnBand);
  EXPECT_EQ(conditionsOf(row, 2, 9, 3, 9), kEvenRowBand | kEvenColumnBand);
  EXPECT_EQ(conditionsOf(row, 4, 9, 6, 9), kOddRowBand | kOddColumnBand);
  row.rowBandSize = 0;
  EXPECT_EQ(conditionsOf(row, 1, 9, 0, 9), kEvenRowBand | kOddColumnBand) << "no size is a size of one";
}

/// Widths of the borders that a part gives the sides of a cell: top, start, bottom, end; 0 for none.
std::vector<int> widthsOf(uint16_t condition, const CellPosition& position) {
  StyleCells part, cells;
  part.setBorders = 0x3F;
  for (uint8_t side = 0; side < kTableSides; ++side) part.borders[side].widthEighths = side + 1;
  addConditionalPart(part, condition, rowOf({}), position, cells);
  return {cells.borders[0].widthEighths, cells.borders[1].widthEighths, cells.borders[2].widthEighths,
          cells.borders[3].widthEighths};
}

TEST(ConditionalPart, OfRowsHasUpperAndLowerBordersAtAllCells) {
  EXPECT_EQ(widthsOf(kFirstRow, kFirstCell), (std::vector<int>{1, 2, 3, 6}));
  EXPECT_EQ(widthsOf(kLastRow, kLastCell), (std::vector<int>{1, 6, 3, 4}));
  EXPECT_EQ(widthsOf(kEvenRowBand, kInside), (std::vector<int>{1, 6, 3, 6}));
}

TEST(ConditionalPart, OfColumnsHasLeftAndRightBordersAtAllCells) {
  EXPECT_EQ(widthsOf(kFirstColumn, {0, 0, true, false}), (std::vector<int>{1, 2, 5, 4}));
  EXPECT_EQ(widthsOf(kOddColumnBand, kInside), (std::vector<int>{5, 2, 5, 4}));
  EXPECT_EQ(widthsOf(kLastColumn, {2, 2, false, true}), (std::vector<int>{5, 2, 3, 4}));
}

TEST(ConditionalPart, OfACornerHasAllItsBorders) {
  EXPECT_EQ(widthsOf(kTopLeft, kInside), (std::vector<int>{1, 2, 3, 4}));
}

TEST(ConditionalPart, LeavesWhatItDoesNotSay) {
  StyleCells part, cells;
  cells.setsShading = cells.setsVerticalAlignment = cells.setsNoWrap = cells.noWrap = true;
  cells.shading = {true, {5, false}};
  cells.verticalAlignment = 2;
  addConditionalPart(part, kFirstRow, rowOf({}), kInside, cells);
  EXPECT_EQ(cells.shading.fill.rgb, 5u);
  EXPECT_EQ(cells.verticalAlignment, 2);
  EXPECT_TRUE(cells.noWrap);
  part.setsShading = part.setsVerticalAlignment = part.setsNoWrap = true;
  part.verticalAlignment = 1;
  addConditionalPart(part, kFirstRow, rowOf({}), kInside, cells);
  EXPECT_FALSE(cells.shading.isThere);
  EXPECT_EQ(cells.verticalAlignment, 1);
  EXPECT_FALSE(cells.noWrap);
}

}  // namespace
}  // namespace pagerex

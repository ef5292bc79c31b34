#include "flow/table_styles.h"

#include <gtest/gtest.h>

#include "sprm_view.h"
#include "style_sheet_of.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::rgb;
using support::sprm;
using support::Sprms;
using support::Style;

constexpr uint16_t kTableCondition = 0xD66A;

Style tableStyle(const Sprms& tapx) {
  return Style().kind(support::StyleKind::kTable).tapx(tapx);
}
Bytes allBorders(uint8_t width) {
  return support::tableBordersSprm(std::vector<support::Border>(6, {.width = width}));
}
Bytes shading(uint32_t colour) {
  return sprm(0xD687, support::Shading{.background = colour}.bytes());
}

const Bytes kTwoCells = support::defTableSprm({0, 1000, 2000}, {{}, {}});

struct StyledRow {
  StyledRow(const SheetOfStyles& sheet, const Sprms& sprms, const Sprms& pieceSprms = {})
      : styles(sheet.table) {
    styles.Row(viewOf(sprms), viewOf(pieceSprms), row);
  }
  CellProperties cell(uint16_t conditions) {
    CellProperties cell;
    styles.Cell(row, {0, 0, true, true}, conditions, cell);
    return cell;
  }

  TableStyles styles;
  RowDefinition row;
};

TEST(TableStyles, GiveRowsWhatTheirStyleAndItsBasesSay) {
  const SheetOfStyles sheet({tableStyle({sprm(0x9602, 50), sprm(0x3488, 2)}),
                             tableStyle({sprm(0x9602, 60), allBorders(7)}).basedOn(0)});
  StyledRow styled(sheet, {sprm(0x563A, 1), kTwoCells});
  EXPECT_EQ(styled.row.style, 1);
  EXPECT_EQ(styled.row.gapHalf, 60);
  EXPECT_EQ(styled.row.rowBandSize, 2);
  EXPECT_EQ(styled.row.cells.size(), 2u);
  EXPECT_EQ(styled.row.setBorders, 0) << "those of the style are not the row's";
  EXPECT_EQ(styled.cell(0).top.widthEighths, 7);
}

TEST(TableStyles, LetTheRowOverride) {
  const SheetOfStyles sheet({tableStyle({allBorders(7), sprm(0x9602, 50)})});
  StyledRow styled(sheet, {sprm(0x563A, 0), kTwoCells, allBorders(3), sprm(0x9602, 20)}, {sprm(0x9602, 10)});
  EXPECT_EQ(styled.cell(0).top.widthEighths, 3);
  EXPECT_EQ(styled.row.gapHalf, 10) << "that of the piece";
}

TEST(TableStyles, AreNormalTableWhereNoneIsNamed) {
  std::vector<std::optional<Style>> styles(12);
  styles[11] = tableStyle({support::cellDistanceSprm(0xD634, 0, 1, 0xA, 3, 108)});
  const SheetOfStyles sheet(styles);
  StyledRow styled(sheet, {kTwoCells});
  EXPECT_EQ(styled.row.style, 11);
  EXPECT_EQ(styled.cell(0).paddingStart, 108);
}

TEST(TableStyles, AreNoneOfOtherKinds) {
  const SheetOfStyles sheet({Style()});
  EXPECT_EQ(StyledRow(sheet, {sprm(0x563A, 0), kTwoCells}).row.style, kNoStyle);
  EXPECT_EQ(StyledRow(sheet, {kTwoCells}).row.style, kNoStyle);
  EXPECT_EQ(StyledRow(sheet, {sprm(0x563A, 0xFFFF), kTwoCells}).row.style, kNoStyle);
}

TEST(TableStyles, DefineNoCells) {
  const SheetOfStyles sheet({tableStyle({kTwoCells})});
  const StyledRow styled(sheet, {sprm(0x563A, 0)});
  EXPECT_EQ(styled.row.grid.count, 0);
  EXPECT_TRUE(styled.row.cells.empty());
}

TEST(TableStyles, ForgetTheRowBefore) {
  const SheetOfStyles sheet({tableStyle({})});
  StyledRow styled(sheet, {sprm(0x563A, 0), kTwoCells, sprm(0x3404, 1), allBorders(2)});
  styled.styles.Row({}, {}, styled.row);
  EXPECT_EQ(styled.row.grid.count, 0);
  EXPECT_TRUE(styled.row.cells.empty());
  EXPECT_FALSE(styled.row.row.isHeader);
  EXPECT_EQ(styled.row.setBorders, 0);
}

TEST(TableStyles, GiveCellsWhatHoldsUnderTheirConditions) {
  const SheetOfStyles sheet(
      {tableStyle({allBorders(7), conditional(kTableCondition, kFirstRow, {shading(rgb(1, 1, 1))}),
                   conditional(kTableCondition, kFirstColumn, {shading(rgb(2, 2, 2)), sprm(0x347C, 1)}),
                   conditional(kTableCondition, kLastRow, {shading(rgb(3, 3, 3))})})});
  StyledRow styled(sheet, {sprm(0x563A, 0), kTwoCells});
  EXPECT_FALSE(styled.cell(0).shading.isThere);
  EXPECT_EQ(styled.cell(kFirstRow).shading.fill.rgb, 0x010101u);
  EXPECT_EQ(styled.cell(kFirstRow | kFirstColumn).shading.fill.rgb, 0x020202u) << "columns over rows";
  EXPECT_EQ(styled.cell(kFirstRow | kFirstColumn).verticalAlignment, 1);
  EXPECT_EQ(styled.cell(kLastColumn).shading, Shading());
}

TEST(TableStyles, GiveCellsTheBordersOfTheirConditions) {
  const SheetOfStyles sheet({tableStyle(
      {conditional(kTableCondition, kFirstRow, {allBorders(5)}),
       conditional(kTableCondition, kLastRow, {sprm(0xD47F, support::Border{.width = 9}.bytes())})})});
  StyledRow styled(sheet, {sprm(0x563A, 0), kTwoCells});
  EXPECT_EQ(styled.cell(kFirstRow).bottom.widthEighths, 5);
  EXPECT_EQ(styled.cell(kLastRow).top.widthEighths, 9);
  EXPECT_FALSE(styled.cell(kLastRow).bottom.isThere());
}

TEST(TableStyles, TakeConditionsOfTheirBases) {
  const SheetOfStyles sheet(
      {tableStyle({conditional(kTableCondition, kFirstRow, {shading(rgb(1, 1, 1)), sprm(0x347C, 2)})}),
       tableStyle({conditional(kTableCondition, kFirstRow, {shading(rgb(2, 2, 2))})}).basedOn(0)});
  StyledRow styled(sheet, {sprm(0x563A, 1), kTwoCells});
  EXPECT_EQ(styled.cell(kFirstRow).shading.fill.rgb, 0x020202u);
  EXPECT_EQ(styled.cell(kFirstRow).verticalAlignment, 2);
}

TEST(TableStyles, HaveNoConditionsWithoutAStyle) {
  const SheetOfStyles sheet({Style()});
  StyledRow styled(sheet, {kTwoCells});
  EXPECT_EQ(styled.cell(0xFFFF).shading, Shading());
  EXPECT_EQ(styled.cell(0xFFFF).width, 1000);
}

TEST(TableStyles, AreNotAppliedIfTheirListsAreEndless) {
  Sprms tapx;
  for (int i = 0; i < 3000; ++i) tapx.add(sprm(0x9602, 60));
  const SheetOfStyles sheet({tableStyle(tapx)});
  EXPECT_EQ(StyledRow(sheet, {sprm(0x563A, 0), kTwoCells}).row.gapHalf, 0);
}

}  // namespace
}  // namespace pagerex

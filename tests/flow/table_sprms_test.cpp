#include "flow/table_sprms.h"

#include <gtest/gtest.h>

#include <functional>

#include "sprm_view.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::ByteWriter;
using support::rgb;
using support::sprm;
using support::Sprms;

const Border kRed = {3, 12, 4, false, {0xFF0000, false}};
const support::Border kRedBrc{rgb(255, 0, 0), 12, 3, 4};
const support::Border80 kRedBrc80{12, 3, 6, 4};
const Shading kYellow = {true, {0xFFFF00, false}};
const support::Shading kYellowShd{.background = rgb(255, 255, 0)};
const Bytes kNilShd(10, 0xFF);

RowDefinition applied(const Sprms& sprms, const RowDefinition& before = {}) {
  RowDefinition row = before;
  applyTableSprms(viewOf(sprms), row);
  return row;
}

/// Three cells, and then what `sprms` make of them.
RowDefinition three(const Sprms& sprms, const std::vector<support::TableCell>& cells = {}) {
  return applied(Sprms{support::defTableSprm({0, 1000, 2000, 3000}, cells)}.add(sprms));
}

struct Case {
  Bytes sprm;
  std::function<bool(const RowDefinition&)> holds;  ///< not of a row without the sprm
};
using R = RowDefinition;

const Case kRowCases[] = {
    {sprm(0x5400, 2), [](const R& r) { return r.alignment == Alignment::kEnd; }},
    {sprm(0x548A, 1), [](const R& r) { return r.alignment == Alignment::kCentre; }},
    {sprm(0x9601, -108), [](const R& r) { return r.left == -108; }},
    {sprm(0x9602, 108), [](const R& r) { return r.gapHalf == 108; }},
    {sprm(0x3403, 1), [](const R& r) { return r.row.cantSplit; }},
    {sprm(0x3466, 1), [](const R& r) { return r.row.cantSplit; }},
    {sprm(0x3404, 1), [](const R& r) { return r.row.isHeader; }},
    {sprm(0x9407, 500), [](const R& r) { return r.row.height == 500 && !r.row.isExactHeight; }},
    {sprm(0x9407, -500), [](const R& r) { return r.row.height == 500 && r.row.isExactHeight; }},
    {sprm(0x740A, int64_t{0x04A0} << 16), [](const R& r) { return r.look == 0x04A0; }},
    {sprm(0x560B, 1), [](const R& r) { return r.isRightToLeft; }},
    {sprm(0x5664, 1), [](const R& r) { return r.isRightToLeft; }},
    {sprm(0x563A, 20), [](const R& r) { return r.style == 20; }},
    {sprm(0xF614, int64_t{5000} << 8 | 2), [](const R& r) { return r.widthKind == 2 && r.width == 5000; }},
    {sprm(0xF661, int64_t{0xFF94} << 8 | 3), [](const R& r) { return r.setsIndent && r.indent == -108; }},
    {sprm(0x3615, 1), [](const R& r) { return r.isAutofit; }},
    {sprm(0x360D, 0x90), [](const R& r) { return r.floats; }},
    {sprm(0x940E, 700), [](const R& r) { return r.floats; }},
    {sprm(0x940F, 0x100), [](const R& r) { return r.floats; }},
    {support::cellDistanceSprm(0xD633, 0, 1, 0xF, 3, 15), [](const R& r) { return r.cellSpacing == 15; }},
    {support::cellDistanceSprm(0xD634, 0, 1, 0xA, 3, 99),
     [](const R& r) {
       return r.setPadding == 0xA && r.padding[kStart] == 99 && r.padding[kEnd] == 99 && r.padding[kTop] == 0;
     }},
    {sprm(0x3488, 2), [](const R& r) { return r.rowBandSize == 2; }},
    {sprm(0x3489, 3), [](const R& r) { return r.columnBandSize == 3; }},
    {sprm(0xD47F, kRedBrc.bytes()),
     [](const R& r) { return r.styleCells.borders[kTop] == kRed && r.styleCells.setBorders == 1; }},
    {sprm(0xD681, kRedBrc.bytes()),
     [](const R& r) { return r.styleCells.borders[kStart] == kRed && r.styleCells.setBorders == 2; }},
    {sprm(0xD680, kRedBrc.bytes()),
     [](const R& r) { return r.styleCells.borders[kBottom] == kRed && r.styleCells.setBorders == 4; }},
    {sprm(0xD682, kRedBrc.bytes()),
     [](const R& r) { return r.styleCells.borders[kEnd] == kRed && r.styleCells.setBorders == 8; }},
    {sprm(0xD683, kRedBrc.bytes()),
     [](const R& r) { return r.styleCells.borders[kInsideRows] == kRed && r.styleCells.setBorders == 16; }},
    {sprm(0xD684, kRedBrc.bytes()),
     [](const R& r) {
       return r.styleCells.borders[kInsideColumns] == kRed && r.styleCells.setBorders == 32;
     }},
    {sprm(0xD687, kYellowShd.bytes()),
     [](const R& r) { return r.styleCells.setsShading && r.styleCells.shading == kYellow; }},
    {sprm(0xD660, kYellowShd.bytes()),
     [](const R& r) { return r.styleCells.setsShading && r.styleCells.shading == kYellow; }},
    {sprm(0x347C, 1),
     [](const R& r) { return r.styleCells.setsVerticalAlignment && r.styleCells.verticalAlignment == 1; }},
    {sprm(0x347D, 1), [](const R& r) { return r.styleCells.setsNoWrap && r.styleCells.noWrap; }},
};

TEST(TableSprms, SetPropertiesOfRows) {
  for (const Case& each : kRowCases) {
    EXPECT_FALSE(each.holds(R())) << std::hex << (each.sprm[0] | each.sprm[1] << 8);
    EXPECT_TRUE(each.holds(applied(each.sprm))) << std::hex << (each.sprm[0] | each.sprm[1] << 8);
  }
}

const auto kMiddle = [](const R& r) -> const CellDefinition& { return r.cells.at(1); };

Bytes ranged(uint16_t opcode, uint8_t first, uint8_t limit, const Bytes& rest) {
  return sprm(opcode, ByteWriter().u8(first).u8(limit).bytes(rest).take());
}

const Case kRangeCases[] = {
    {ranged(0xD620, 1, 2, ByteWriter().u8(9).bytes(kRedBrc80.bytes()).take()),
     [](const R& r) {
       return kMiddle(r).setBorders == 9 && kMiddle(r).borders[kTop] == kRed &&
              kMiddle(r).borders[kEnd] == kRed;
     }},
    {ranged(0xD62F, 1, 2, ByteWriter().u8(6).bytes(kRedBrc.bytes()).take()),
     [](const R& r) {
       return kMiddle(r).setBorders == 6 && kMiddle(r).borders[kStart] == kRed &&
              kMiddle(r).borders[kBottom] == kRed;
     }},
    {ranged(0x7627, 1, 2, {0xE0, 0x00}),
     [](const R& r) { return kMiddle(r).setsShading && kMiddle(r).shading == kYellow; }},
    {ranged(0xD62D, 1, 2, kYellowShd.bytes()),
     [](const R& r) { return kMiddle(r).setsShading && kMiddle(r).shading == kYellow; }},
    {ranged(0xD62E, 1, 3, kYellowShd.bytes()),
     [](const R& r) { return kMiddle(r).setsShading && kMiddle(r).shading == kYellow; }},
    {support::cellDistanceSprm(0xD632, 1, 2, 5, 3, 77),
     [](const R& r) {
       return kMiddle(r).setPadding == 5 && kMiddle(r).padding[kTop] == 77 &&
              kMiddle(r).padding[kBottom] == 77;
     }},
    {ranged(0xD635, 1, 2, {3, 0xE8, 0x03}),
     [](const R& r) { return kMiddle(r).widthKind == 3 && kMiddle(r).width == 1000; }},
    {ranged(0xD62C, 1, 2, {2}), [](const R& r) { return kMiddle(r).verticalAlignment == 2; }},
    {ranged(0x7629, 1, 2, {5, 0}), [](const R& r) { return kMiddle(r).textFlow == 5; }},
    {ranged(0xF636, 1, 2, {1}), [](const R& r) { return kMiddle(r).fitText; }},
    {ranged(0xD639, 1, 2, {1}), [](const R& r) { return kMiddle(r).noWrap; }},
};

TEST(TableSprms, SetPropertiesOfARangeOfCells) {
  const RowDefinition plain = three({});
  for (const Case& each : kRangeCases) {
    const RowDefinition row = three(each.sprm);
    EXPECT_FALSE(each.holds(plain)) << std::hex << (each.sprm[0] | each.sprm[1] << 8);
    EXPECT_TRUE(each.holds(row)) << std::hex << (each.sprm[0] | each.sprm[1] << 8);
    RowDefinition first = row;
    first.cells[1] = row.cells[0];
    EXPECT_FALSE(each.holds(first)) << "of a cell outside the range";
    first.cells[1] = row.cells[2];
    EXPECT_FALSE(each.holds(first)) << "of a cell behind the range";
  }
}

TEST(TableSprms, IgnoreCellsThatAreNotThere) {
  for (const Case& each : kRangeCases) {
    Bytes beyond = each.sprm;
    const size_t operand = beyond[1] >> 5 == 6 ? 3 : 2;
    beyond[operand] = 3;
    beyond[operand + 1] = 255;
    EXPECT_FALSE(each.holds(three(beyond)));
    EXPECT_TRUE(applied(beyond).cells.empty());
  }
}

TEST(TableSprms, ShadeEverySecondCell) {
  const RowDefinition row = three(ranged(0xD62E, 0, 3, kYellowShd.bytes()));
  EXPECT_TRUE(row.cells[0].setsShading);
  EXPECT_FALSE(row.cells[1].setsShading);
  EXPECT_TRUE(row.cells[2].setsShading);
}

TEST(TableSprms, TurnTheSideOfATableAround) {
  EXPECT_EQ(applied({sprm(0x5400, 0), sprm(0x560B, 1)}).alignment, Alignment::kEnd);
  EXPECT_EQ(applied({sprm(0x5400, 2), sprm(0x560B, 1)}).alignment, Alignment::kStart);
  EXPECT_EQ(applied({sprm(0x5400, 2), sprm(0x560B, 1), sprm(0x548A, 2)}).alignment, Alignment::kEnd);
  EXPECT_EQ(applied({sprm(0x548A, 9)}).alignment, Alignment::kStart);
}

TEST(TableSprms, FloatOnlyWithAPlace) {
  EXPECT_FALSE(applied({sprm(0x360D, 0), sprm(0x940E, 0), sprm(0x9410, 180)}).floats);
}

TEST(TableSprms, SetTheBordersOfTheTable) {
  const std::vector<support::Border> six{kRedBrc, {.type = 0xFF}, kRedBrc, {}, {}, {.width = 9}};
  const RowDefinition row = applied(support::tableBordersSprm(six));
  EXPECT_EQ(row.setBorders, 0x3F);
  EXPECT_EQ(row.borders[kTop], kRed);
  EXPECT_EQ(row.borders[kStart], Border());
  EXPECT_EQ(row.borders[kBottom], kRed);
  EXPECT_EQ(row.borders[kInsideColumns].widthEighths, 9);
}

TEST(TableSprms, SetTheBordersOfTheTableInWord97) {
  const RowDefinition row = applied(support::tableBorders80Sprm({{}, {}, {}, kRedBrc80, {}, {.width = 9}}));
  EXPECT_EQ(row.setBorders, 0x3F);
  EXPECT_EQ(row.borders[kEnd], kRed);
  EXPECT_EQ(row.borders[kInsideColumns].widthEighths, 9);
}

TEST(TableSprms, SetTheBordersThatAreWhole) {
  EXPECT_EQ(applied(support::tableBordersSprm({kRedBrc, kRedBrc})).setBorders, 3);
}

TEST(TableSprms, TakeWhatTheRecordsOfCellsSay) {
  const RowDefinition row = three({}, {{.verticalAlign = 2,
                                        .flags = 5 << 2 | 3 << 9 | 0x1000 | 0x2000,
                                        .width = 900,
                                        .top = kRedBrc80,
                                        .left = support::Border80{255, 255, 255, 255}}});
  const CellDefinition& cell = row.cells[0];
  EXPECT_EQ(cell.verticalAlignment, 2);
  EXPECT_EQ(cell.textFlow, 5);
  EXPECT_EQ(cell.widthKind, 3);
  EXPECT_EQ(cell.width, 900);
  EXPECT_TRUE(cell.fitText);
  EXPECT_TRUE(cell.noWrap);
  EXPECT_EQ(cell.setBorders, 1 << kTop | 1 << kStart);
  EXPECT_EQ(cell.borders[kTop], kRed);
  EXPECT_FALSE(cell.borders[kStart].isThere());
  EXPECT_EQ(row.cells[1].setBorders, 0);
}

TEST(TableSprms, ColourTheBordersOfCells) {
  const std::vector<support::TableCell> cells(
      3, {.top = kRedBrc80, .left = kRedBrc80, .bottom = kRedBrc80, .right = kRedBrc80});
  const Bytes colours = ByteWriter().u32(rgb(1, 1, 1)).u32(rgb(2, 2, 2)).take();
  constexpr Side kSides[] = {kTop, kStart, kBottom, kEnd};
  for (uint16_t i = 0; i < 4; ++i) {
    const RowDefinition row = three(sprm(static_cast<uint16_t>(0xD61A + i), colours), cells);
    EXPECT_EQ(row.cells[0].borders[kSides[i]].colour, (Colour{0x010101, false}));
    EXPECT_EQ(row.cells[1].borders[kSides[i]].colour, (Colour{0x020202, false}));
    EXPECT_EQ(row.cells[2].borders[kSides[i]].colour, kRed.colour);
    EXPECT_EQ(row.cells[0].borders[kSides[(i + 1) % 4]].colour, kRed.colour);
  }
}

TEST(TableSprms, LeaveBordersOfCellsToTheStyle) {
  const std::vector<support::TableCell> cells(3, {.top = kRedBrc80, .left = kRedBrc80});
  const RowDefinition row = three(sprm(0xD662, Bytes{0xFF, 1, 0xFF, 0xFF, 3, 0xFF}), cells);
  EXPECT_EQ(row.cells[0].setBorders, 1 << kStart);
  EXPECT_EQ(row.cells[0].borders[kStart].kind, 1);
  EXPECT_EQ(row.cells[1].setBorders, 3) << "four bytes a cell";
}

TEST(TableSprms, ShadeCells) {
  const RowDefinition row = three(support::tableShadingSprm({{}, kYellowShd}));
  EXPECT_TRUE(row.cells[0].setsShading);
  EXPECT_FALSE(row.cells[0].shading.isThere);
  EXPECT_EQ(row.cells[1].shading, kYellow);
  EXPECT_FALSE(row.cells[2].setsShading);
}

TEST(TableSprms, ShadeCellsAsInWord97) {
  const RowDefinition row = three(sprm(0xD609, Bytes{0xFF, 0xFF, 0xE0, 0x00}));
  EXPECT_FALSE(row.cells[0].setsShading);
  EXPECT_EQ(row.cells[1].shading, kYellow);
}

TEST(TableSprms, ShadeWithTheLatestGeneration) {
  const Bytes old = sprm(0xD609, Bytes{0xC0, 0x00});
  const Bytes middle = support::tableShadingSprm({{.background = rgb(1, 1, 1)}});
  const Bytes raw = sprm(0xD670, kYellowShd.bytes());
  EXPECT_EQ(three({old, middle, raw}).cells[0].shading, kYellow);
  EXPECT_EQ(three({raw, middle, old}).cells[0].shading, kYellow);
  EXPECT_EQ(three({middle, old}).cells[0].shading.fill.rgb, 0x010101u);
  EXPECT_FALSE(three({middle, sprm(0xD670, kNilShd)}).cells[0].setsShading) << "left to the style";
}

TEST(TableSprms, ShadeAllCellsOfLongRows) {
  std::vector<int16_t> edges;
  for (int i = 0; i <= 63; ++i) edges.push_back(static_cast<int16_t>(i * 100));
  const auto shaded = [&](uint16_t opcode) {
    const RowDefinition row = applied(Sprms{support::defTableSprm(edges), sprm(opcode, kYellowShd.bytes())});
    size_t cell = 0;
    while (cell < row.cells.size() && !row.cells[cell].setsShading) ++cell;
    return cell;
  };
  EXPECT_EQ(shaded(0xD612), 0u);
  EXPECT_EQ(shaded(0xD616), 22u);
  EXPECT_EQ(shaded(0xD60C), 44u);
  EXPECT_EQ(shaded(0xD670), 0u);
  EXPECT_EQ(shaded(0xD671), 22u);
  EXPECT_EQ(shaded(0xD672), 44u);
}

TEST(TableSprms, KeepCellsAndTheirPlacesTogether) {
  const Bytes insert = sprm(0x7621, int64_t{1} | int64_t{2} << 8 | int64_t{100} << 16);
  const Bytes erase = sprm(0x5622, int64_t{0} | int64_t{1} << 8);
  const Bytes low = ranged(0xD62C, 0, 1, {2}), middle = ranged(0xD62C, 1, 2, {1});
  const RowDefinition inserted = three({low, middle, insert});
  EXPECT_EQ(inserted.grid.count, 5);
  ASSERT_EQ(inserted.cells.size(), 5u);
  EXPECT_EQ(inserted.cells[0].verticalAlignment, 2);
  EXPECT_EQ(inserted.cells[1].verticalAlignment, 0);
  EXPECT_EQ(inserted.cells[3].verticalAlignment, 1);
  const RowDefinition erased = three({low, middle, erase});
  ASSERT_EQ(erased.cells.size(), 2u);
  EXPECT_EQ(erased.cells[0].verticalAlignment, 1);
}

TEST(TableSprms, TakePaddingBack) {
  const Bytes set = support::cellDistanceSprm(0xD632, 0, 1, 0xF, 3, 50);
  const Bytes unset = support::cellDistanceSprm(0xD632, 0, 1, 1, 0, 0);
  EXPECT_EQ(three({set, unset}).cells[0].setPadding, 0xE);
}

TEST(TableSprms, SurviveEveryCutOfAList) {
  Sprms whole{support::defTableSprm({0, 1000, 2000, 3000}, {{}, {}, {}})};
  for (const Case& each : kRowCases) whole.add(each.sprm);
  for (const Case& each : kRangeCases) whole.add(each.sprm);
  whole.add(support::tableShadingSprm({{}, kYellowShd})).add(sprm(0xD662, Bytes(12)));
  for (size_t size = 0; size < whole.size(); ++size) {
    const Bytes cut(whole.bytes().begin(), whole.bytes().begin() + static_cast<std::ptrdiff_t>(size));
    const RowDefinition row = applied(cut);
    EXPECT_EQ(row.cells.size(), row.grid.count);
  }
}

}  // namespace
}  // namespace pagerex

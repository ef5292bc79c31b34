#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "htmlwriter/cell_format.h"
#include "htmlwriter/cell_format_css.h"
#include "story/colour.h"
#include "support/sprms.h"
#include "table_test_support.h"

namespace pagerex {
namespace {

using mso_word::BRC;
using mso_word::BRCEX;
using mso_word::SHDEX;
using support::Border;
using support::Border80;
using support::Bytes;
using support::ByteWriter;
using testing::HasSubstr;
using testing::Not;

constexpr uint32_t kRed = support::rgb(255, 0, 0);
constexpr uint32_t kBlue = support::rgb(0, 0, 255);
constexpr uint32_t kAuto = mso_word::kAutomaticColour;

template <class Border>
std::string borderText(const Border& border) {
  char text[kBorderTextSize];
  return failed(GetBorderStr(&border, text, sizeof text)) ? "failed" : text;
}

ByteView viewOf(const Bytes& bytes) {
  return ByteView(bytes.data(), bytes.size());
}

std::string tableFormat(const TableStyle& style) {
  RecordingArchive archive;
  archive->BeginElement("table");
  WriteTableFormat(style, archive.get());
  return archive.text();
}

std::string cellCss(const CELL_FORMAT& cell) {
  RecordingArchive archive;
  archive->BeginElement("td");
  WriteCellCss(cell, archive.get());
  return archive.text();
}

std::string paddingCss(const PADDING& padding) {
  RecordingArchive archive;
  WritePadding(padding, archive.get());
  return archive.text();
}

/// Six equal borders of a table.
template <class Border>
Bytes sixBorders(const Border& border) {
  ByteWriter bytes;
  for (int i = 0; i < 6; ++i) bytes.bytes(border.bytes());
  return bytes.take();
}

/// Six single borders, each an eighth of a point wider than the one before.
Bytes sixWidths() {
  ByteWriter bytes;
  for (uint8_t width = 1; width <= 6; ++width) bytes.bytes(Border{.colour = 0, .width = width}.bytes());
  return bytes.take();
}

KDWSprm paddingSprm(const Bytes& operand) {
  return KDWSprm(0xD634, viewOf(operand), 0);
}

TEST(BorderType, IsOutsetInsetDoubleOrElseSolid) {
  EXPECT_STREQ("outset", GetBorderType(26));
  EXPECT_STREQ("inset", GetBorderType(27));
  EXPECT_STREQ("double", GetBorderType(3));
  EXPECT_STREQ("solid", GetBorderType(5));
}

TEST(BorderText, TakesTheColourOfWord97ThroughThePalette) {
  EXPECT_EQ("0.50pt outset rgb(00,00,00)", borderText(BRC{4, 26, 1, 0}));
  EXPECT_EQ("0.50pt solid rgb(00,00,255)", borderText(BRC{4, 5, 2, 0}));
  EXPECT_EQ("0.50pt solid rgb(255,255,255)", borderText(BRC{4, 1, 17, 0}));
}

TEST(BorderText, IsBlackForTheAutomaticColourIndex) {
  EXPECT_EQ("1.00pt solid rgb(00,00,00)", borderText(BRC{8, 1, 0, 0}));
}

TEST(BorderText, TriplesTheWidthOfADoubleBorder) {
  EXPECT_EQ("1.50pt double rgb(00,00,00)", borderText(BRC{4, 3, 1, 0}));
  EXPECT_EQ("95.62pt double rgb(00,00,00)", borderText(BRCEX{0, 255, 3, 0, 0}));
}

TEST(BorderText, RoundsHalfAHundredthToTheEvenOne) {
  EXPECT_EQ("0.12pt solid rgb(00,00,00)", borderText(BRCEX{0, 1, 1, 0, 0}));
  EXPECT_EQ("0.38pt solid rgb(00,00,00)", borderText(BRCEX{0, 3, 1, 0, 0}));
  EXPECT_EQ("0.62pt solid rgb(00,00,00)", borderText(BRCEX{0, 5, 1, 0, 0}));
  EXPECT_EQ("0.88pt solid rgb(00,00,00)", borderText(BRCEX{0, 7, 1, 0, 0}));
}

TEST(BorderText, AgreesWithPrintfForEveryWidth) {
  for (int width = 0; width < 256; ++width) {
    for (uint8_t type : {uint8_t{1}, uint8_t{3}}) {
      char expected[64];
      snprintf(expected, sizeof expected, "%.2fpt %s rgb(%02d,%02d,%02d)",
               static_cast<float>(width) / 8.0 * (type == 3 ? 3.0 : 1.0), GetBorderType(type), 9, 10, 100);
      EXPECT_EQ(expected,
                borderText(BRCEX{support::rgb(9, 10, 100), static_cast<uint8_t>(width), type, 0, 0}));
    }
  }
}

TEST(BorderText, FailsForNoneAndForNull) {
  EXPECT_EQ("failed", borderText(BRC{255, 255, 255, 255}));
  char text[kBorderTextSize];
  EXPECT_EQ(Status::kFailure, GetBorderStr(static_cast<const BRC*>(nullptr), text, sizeof text));
  EXPECT_EQ(Status::kFailure, GetBorderStr(static_cast<const BRCEX*>(nullptr), text, sizeof text));
}

TEST(BorderText, IsCutToTheBuffer) {
  const BRCEX border{0, 8, 1, 0, 0};
  char text[6];
  EXPECT_EQ(Status::kOk, GetBorderStr(&border, text, sizeof text));
  EXPECT_STREQ("1.00p", text);
}

TEST(Padding, ReplacesTheSidesOfTheMask) {
  PADDING padding;
  const Bytes first = ByteWriter().u8(0).u8(1).u8(1 | 2).u8(3).u16(100).take();
  const Bytes second = ByteWriter().u8(0).u8(1).u8(2 | 8).u8(2).u16(7).take();
  EXPECT_EQ(Status::kOk, MergedPadding(padding, paddingSprm(first)));
  EXPECT_EQ(Status::kOk, MergedPadding(padding, paddingSprm(second)));
  EXPECT_EQ("padding:5.00pt 3.50% 0.00pt 3.50%;", paddingCss(padding).substr(8));
}

TEST(Padding, WritesZerosByDefault) {
  EXPECT_EQ(" style=\"padding:0.00pt 0.00pt 0.00pt 0.00pt;", paddingCss({}));
}

TEST(Padding, WritesOneTextInTheOrderTopRightBottomLeft) {
  EXPECT_EQ(" style=\"padding:0.50pt 2.00pt 1.50pt 1.00pt;",
            paddingCss({.top = 10, .left = 20, .bottom = 30, .right = 40}));
}

TEST(Padding, LeavesOutAutomaticSides) {
  EXPECT_EQ(" style=\"padding-top:0.50pt;padding-bottom:1.50pt;",
            paddingCss({.unitLeft = 1, .unitRight = 1, .top = 10, .left = 20, .bottom = 30, .right = 40}));
}

TEST(Padding, WritesSidesInTheOrderLeftTopRightBottom) {
  EXPECT_EQ(" style=\"padding-left:1.00pt;padding-right:2.00pt;padding-bottom:1.50pt;",
            paddingCss({.unitTop = 1, .top = 10, .left = 20, .bottom = 30, .right = 40}));
}

TEST(Padding, MultipliesPercentsByFiftyInTheFormPerSide) {
  EXPECT_EQ(" style=\"padding-top:100%;",
            paddingCss({.unitTop = 2, .unitLeft = 1, .unitBottom = 1, .unitRight = 1, .top = 2}));
}

TEST(Padding, HalvesPercentsInTheShortForm) {
  EXPECT_EQ(" style=\"padding:1.00% 0.00pt 0.00pt -0.50%;",
            paddingCss({.unitTop = 2, .unitLeft = 2, .top = 2, .left = -1}));
}

TEST(Padding, KeepsTheSignOfASmallNegativeLength) {
  EXPECT_EQ(" style=\"padding:-0.05pt 0.00pt 0.00pt -1638.40pt;", paddingCss({.top = -1, .left = -32768}));
}

TEST(Padding, RefusesToBeWrittenNowhere) {
  EXPECT_EQ(Status::kInvalidArgument, WritePadding({}, nullptr));
}

TEST(ShadingColour, IsTheBackgroundForTheEmptyPatternAndTheForegroundForTheSolidOne) {
  SHDEX shading{kRed, kBlue, 0};
  EXPECT_EQ(kBlue, GetBGColor(&shading));
  shading.pattern = 1;
  EXPECT_EQ(kRed, GetBGColor(&shading));
}

TEST(ShadingColour, MixesByTheShareOfThePattern) {
  SHDEX shading{support::rgb(255, 0, 100), support::rgb(0, 255, 200), 14};
  EXPECT_EQ(support::rgb(127, 127, 150), GetBGColor(&shading));
  shading.pattern = 35;
  EXPECT_EQ(support::rgb(5, 249, 198), GetBGColor(&shading));
  shading.pattern = 60;
  EXPECT_EQ(support::rgb(242, 12, 105), GetBGColor(&shading));
}

TEST(ShadingColour, HasAShareForEachPattern) {
  const std::vector<unsigned> reds = {
      255, 12,  25,  51,  63,  76,  102, 127, 153, 178, 191, 204, 229,                      // 1
      127, 127, 127, 127, 127, 127, 127, 127, 127, 127, 127, 127, 127, 127, 127, 127, 127,  // 14
      127, 127, 127, 127,                                                                   // 31
      5,   17,  31,  38,  43,  56,  68,  81,  89,  95,  107, 114, 119, 132,                 // 35
      140, 145, 159, 165, 170, 183, 196, 209, 216, 223, 234, 242};                          // 49
  ASSERT_EQ(reds.size(), 60u);
  for (uint16_t pattern = 1; pattern <= 60; ++pattern) {
    const SHDEX shading{support::rgb(255, 0, 0), support::rgb(0, 0, 0), pattern};
    EXPECT_EQ(GetBGColor(&shading) & 0xFF, reds[pattern - 1]) << pattern;
  }
}

TEST(ShadingColour, IsTheBackgroundForPatternsWithoutAShare) {
  for (uint16_t pattern : {61, 243, 244, 0xFFFF}) {
    const SHDEX shading{kRed, kBlue, pattern};
    EXPECT_EQ(kBlue, GetBGColor(&shading)) << pattern;
  }
}

TEST(TableFormat, CollapsesBordersWithoutSpacing) {
  const Bytes borders = sixBorders(Border80{});
  TableStyle style;
  style.borders = viewOf(borders);
  EXPECT_EQ(
      "<table cellspacing=\"0\" cellpadding=\"0\" style=\"word-wrap:break-word;table-layout:fixed;"
      "border-collapse:collapse;mso-table-layout-alt:fixed;position:relative;\"",
      tableFormat(style));
}

TEST(TableFormat, WritesEveryLengthThatIsNotZero) {
  TableStyle style;
  style.indent = -108;
  style.fromTextLeft = 180;
  style.fromTextRight = 181;
  style.fromTextTop = 1;
  style.fromTextBottom = 40;
  style.cellSpacing = 30;
  EXPECT_EQ(
      "<table cellspacing=\"4\" cellpadding=\"0\" align=\"left\" style=\"word-wrap:break-word;"
      "table-layout:fixed;mso-table-layout-alt:fixed;margin-left:-5.40 pt;mso-table-lspace:9.00 pt;"
      "mso-table-rspace:9.05 pt;mso-table-tspace:0.05 pt;mso-table-bspace:2.00 pt;position:relative;"
      "mso-cellspacing:3.00 pt;\"",
      tableFormat(style));
}

TEST(TableFormat, CollapsesBordersWhereSpacingIsLessThanAPixel) {
  TableStyle style;
  style.cellSpacing = 7;
  EXPECT_THAT(tableFormat(style), HasSubstr("border-collapse:collapse;"));
  EXPECT_THAT(tableFormat(style), HasSubstr("mso-cellspacing:0.70 pt;"));
}

TEST(TableFormat, AlignsByJustificationAndDistanceFromText) {
  const auto alignment = [](int32_t justification, int32_t fromText) {
    TableStyle style;
    style.justification = justification;
    style.fromTextTop = fromText;
    const std::string format = tableFormat(style);
    const size_t align = format.find("align=");
    return align == std::string::npos ? "" : format.substr(align, format.find(' ', align) - align);
  };
  EXPECT_EQ("", alignment(0, 0));
  EXPECT_EQ("align=\"left\"", alignment(0, 10));
  EXPECT_EQ("align=\"center\"", alignment(1, 0));
  EXPECT_EQ("align=\"left\"", alignment(1, 10));
  EXPECT_EQ("align=\"right\"", alignment(2, 0));
  EXPECT_EQ("", alignment(3, 10));
}

TEST(TableFormat, PutsEqualDoubleBordersIntoTheAlternativeProperty) {
  const Bytes borders = sixBorders(Border80{.width = 4, .type = 3, .ico = 1});
  TableStyle style;
  style.cellSpacing = 30;
  style.borders = viewOf(borders);
  EXPECT_THAT(tableFormat(style), HasSubstr("border:none;mso-border-alt:1.50pt double rgb(00,00,00);\""));
}

TEST(TableFormat, WritesEqualBordersAsOne) {
  const Bytes borders = sixBorders(Border{.colour = kRed, .width = 8});
  TableStyle style;
  style.cellSpacing = 30;
  style.bordersEx = viewOf(borders);
  EXPECT_THAT(tableFormat(style), HasSubstr("mso-cellspacing:3.00 pt;border:1.00pt solid rgb(255,00,00);\""));
}

TEST(TableFormat, WritesEqualBordersWithoutWidthOnlyInTheFormOfWord97) {
  const Bytes borders = sixBorders(Border{.colour = 0, .width = 0});
  const Bytes borders80 = sixBorders(Border80{.width = 0});
  TableStyle style;
  style.cellSpacing = 30;
  style.borders = viewOf(borders80);
  EXPECT_THAT(tableFormat(style), HasSubstr("border:0.00pt solid rgb(00,00,00);\""));
  style.bordersEx = viewOf(borders);
  EXPECT_THAT(tableFormat(style), HasSubstr("mso-cellspacing:3.00 pt;\""));
}

TEST(TableFormat, WritesUnequalBordersSideBySide) {
  Bytes borders = sixBorders(Border{.colour = 0, .width = 8});
  borders[8 + 4] = 0;   // left: no width
  borders[16 + 4] = 4;  // bottom
  TableStyle style;
  style.cellSpacing = 30;
  style.bordersEx = viewOf(borders);
  EXPECT_THAT(tableFormat(style), HasSubstr("border:none;mso-border-top-alt:1.00pt solid rgb(00,00,00);"
                                            "mso-border-bottom-alt:0.50pt solid rgb(00,00,00);"
                                            "mso-border-right-alt:1.00pt solid rgb(00,00,00);\""));
}

TEST(TableFormat, LeavesOutBordersThatSayNone) {
  const Bytes borders = sixBorders(Border80{255, 255, 255, 255});
  TableStyle style;
  style.cellSpacing = 30;
  style.borders = viewOf(borders);
  EXPECT_THAT(tableFormat(style), HasSubstr("mso-cellspacing:3.00 pt;\""));
}

TEST(TableFormat, TakesBordersThatAreMissingAsZeros) {
  const Bytes borders = Border{.colour = 0, .width = 8}.bytes();
  TableStyle style;
  style.cellSpacing = 30;
  style.bordersEx = viewOf(borders);
  EXPECT_THAT(tableFormat(style), HasSubstr("border:none;mso-border-top-alt:1.00pt solid rgb(00,00,00);\""));
}

CELL_FORMAT cellOfTable(const Bytes& bordersEx, uint32_t position) {
  CELL_FORMAT cell;
  cell.bordersEx = viewOf(bordersEx);
  cell.position = position;
  return cell;
}

TEST(CellBorders, AreThoseOfTheTableAtItsRimAndTheInsideOnesElsewhere) {
  const Bytes borders = sixWidths();
  EXPECT_EQ(
      "<td style=\"border-top:0.12pt solid rgb(00,00,00);border-left:0.25pt solid rgb(00,00,00);"
      "border-bottom:0.38pt solid rgb(00,00,00);border-right:0.50pt solid rgb(00,00,00);"
      "padding:0.00pt 0.00pt 0.00pt 0.00pt;\"",
      cellCss(cellOfTable(borders, 15)));
  EXPECT_EQ(
      "<td style=\"border-top:0.62pt solid rgb(00,00,00);border-left:0.75pt solid rgb(00,00,00);"
      "border-bottom:0.62pt solid rgb(00,00,00);border-right:0.75pt solid rgb(00,00,00);"
      "padding:0.00pt 0.00pt 0.00pt 0.00pt;\"",
      cellCss(cellOfTable(borders, 0)));
}

TEST(CellBorders, FollowEachSideOfThePosition) {
  const Bytes borders = sixWidths();
  EXPECT_THAT(cellCss(cellOfTable(borders, CELL_IN_FIRST_ROW)), HasSubstr("border-top:0.12pt"));
  EXPECT_THAT(cellCss(cellOfTable(borders, CELL_FIRST_IN_ROW)), HasSubstr("border-left:0.25pt"));
  EXPECT_THAT(cellCss(cellOfTable(borders, CELL_IN_LAST_ROW)), HasSubstr("border-bottom:0.38pt"));
  EXPECT_THAT(cellCss(cellOfTable(borders, CELL_LAST_IN_ROW)), HasSubstr("border-right:0.50pt"));
}

TEST(CellBorders, AreTheInsideOnesOnAllSidesOfASpacedTable) {
  const Bytes borders = sixWidths();
  CELL_FORMAT cell = cellOfTable(borders, 15);
  cell.hasSpacing = true;
  EXPECT_THAT(cellCss(cell), HasSubstr("border-top:0.62pt solid rgb(00,00,00);"
                                       "border-left:0.75pt solid rgb(00,00,00);"
                                       "border-bottom:0.62pt solid rgb(00,00,00);"
                                       "border-right:0.75pt solid rgb(00,00,00);"));
}

TEST(CellBorders, OfTheCellItselfComeFirst) {
  const Bytes borders = sixBorders(Border{.colour = 0, .width = 8});
  support::TableCell own;
  own.top = Border80{.width = 16, .type = 26, .ico = 6};
  const Bytes record = own.bytes();
  CELL_FORMAT cell = cellOfTable(borders, 15);
  cell.tc = viewOf(record).record<mso_word::TC>(0);
  EXPECT_THAT(cellCss(cell), HasSubstr("border-top:2.00pt outset rgb(255,00,00);"
                                       "border-left:1.00pt solid rgb(00,00,00);"));
}

TEST(CellBorders, ThatSayNoneHideThoseOfTheTable) {
  const Bytes borders = sixBorders(Border{.colour = 0, .width = 8});
  support::TableCell own;
  own.left = Border80{255, 255, 255, 255};
  const Bytes record = own.bytes();
  CELL_FORMAT cell = cellOfTable(borders, 15);
  cell.tc = viewOf(record).record<mso_word::TC>(0);
  EXPECT_THAT(cellCss(cell), HasSubstr("border-top:1.00pt"));
  EXPECT_THAT(cellCss(cell), Not(HasSubstr("border-left")));
}

TEST(CellBorders, ComeFromTheFormOfWord97WhereTheOtherIsNotSet) {
  const Bytes bordersEx = sixBorders(Border{.colour = kRed, .width = 0, .type = 0});
  const Bytes borders = sixBorders(Border80{.width = 6, .ico = 2});
  CELL_FORMAT cell = cellOfTable(bordersEx, 15);
  cell.borders = viewOf(borders);
  EXPECT_THAT(cellCss(cell), HasSubstr("border-right:0.75pt solid rgb(00,00,255);"));
}

TEST(CellBorders, AreLeftOutWhereNoneIsSet) {
  const Bytes borders = sixBorders(Border80{0, 0, 0, 0});
  CELL_FORMAT cell;
  cell.borders = viewOf(borders);
  EXPECT_EQ("<td style=\"padding:0.00pt 0.00pt 0.00pt 0.00pt;\"", cellCss(cell));
}

std::string backgroundOf(const SHDEX& shading) {
  CELL_FORMAT cell;
  cell.shadingEx = &shading;
  const std::string css = cellCss(cell);
  const size_t end = css.find("0.00pt;") + 7;
  return css.substr(end);
}

std::string backgroundOf(const mso_word::SHD& shading) {
  CELL_FORMAT cell;
  cell.shading = &shading;
  return cellCss(cell).substr(std::string("<td style=\"padding:0.00pt 0.00pt 0.00pt 0.00pt;").size());
}

TEST(CellBackground, IsLeftOutForAnAutomaticBackgroundWhateverTheForeground) {
  EXPECT_EQ("\"", backgroundOf(SHDEX{kRed, kAuto, 1}));
}

TEST(CellBackground, NamesTheForegroundUnlessItIsAutomatic) {
  EXPECT_EQ("background:#ab0203;\"", backgroundOf(SHDEX{kAuto, support::rgb(0xAB, 2, 3), 0}));
  EXPECT_EQ("background:#ff0000;mso-shading:#ff0000;\"", backgroundOf(SHDEX{kRed, kBlue, 1}));
}

TEST(CellBackground, ComesFromThePaletteInTheFormOfWord97) {
  EXPECT_EQ("\"", backgroundOf(mso_word::SHD{0x041F}));
  EXPECT_EQ("background:#ff0000;\"", backgroundOf(mso_word::SHD{6 << 5}));
  EXPECT_EQ("background:#ffffff;\"", backgroundOf(mso_word::SHD{31 << 5}));
}

TEST(CellBackground, OfTheNewerFormHidesTheOlder) {
  const SHDEX shadingEx{kAuto, kAuto, 0};
  const mso_word::SHD shading{6 << 5};
  CELL_FORMAT cell;
  cell.shadingEx = &shadingEx;
  cell.shading = &shading;
  EXPECT_THAT(cellCss(cell), Not(HasSubstr("background")));
}

}  // namespace
}  // namespace pagerex

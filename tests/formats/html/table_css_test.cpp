#include "formats/html/table_css.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace pagerex {
namespace {

std::string cellCss(const std::function<void(CellProperties&)>& change, const CellProperties& base = {}) {
  CellProperties cell;
  change(cell);
  std::string out;
  appendCellCss(out, cell, base);
  return out;
}

std::string tableCss(const std::function<void(TableProperties&)>& change) {
  TableProperties table;
  change(table);
  std::string out;
  appendTableCss(out, table);
  return out;
}

std::string boxCss(const std::function<void(TableProperties&)>& change) {
  TableProperties table;
  change(table);
  std::string out;
  appendTableBoxCss(out, table);
  return out;
}

std::string rowCss(const RowProperties& row) {
  std::string out;
  appendRowCss(out, row);
  return out;
}

constexpr Border kLine = {1, 4, 0, false, {}};
constexpr int32_t kMost = std::numeric_limits<int32_t>::max();

}  // namespace

TEST(TableCss, SaysEachPropertyOfACellThatDiffers) {
  EXPECT_EQ(cellCss([](auto&) {}), "");
  EXPECT_EQ(cellCss([](auto& c) { c.top = c.start = c.bottom = c.end = kLine; }), "border:.5pt solid;");
  EXPECT_EQ(cellCss([](auto& c) { c.top = c.start = kLine; }),
            "border-top:.5pt solid;border-inline-start:.5pt solid;");
  EXPECT_EQ(cellCss([](auto& c) { c.paddingStart = c.paddingEnd = 108; }),
            "padding-inline-end:5.4pt;padding-inline-start:5.4pt;");
  EXPECT_EQ(cellCss([](auto& c) { c.paddingTop = c.paddingBottom = c.paddingStart = c.paddingEnd = 100; }),
            "padding:5pt;");
  EXPECT_EQ(cellCss([](auto& c) { c.paddingTop = -100; }), "");
  EXPECT_EQ(cellCss([](auto& c) { c.shading = {true, {0xFFEE00, false}}; }), "background-color:#fe0;");
  EXPECT_EQ(cellCss([](auto& c) { c.verticalAlignment = 1; }), "vertical-align:middle;");
  EXPECT_EQ(cellCss([](auto& c) { c.verticalAlignment = 2; }), "vertical-align:bottom;");
  EXPECT_EQ(cellCss([](auto& c) { c.verticalAlignment = 3; }), "");
  EXPECT_EQ(cellCss([](auto& c) { c.textFlow = 3; }), "writing-mode:sideways-lr;");
  EXPECT_EQ(cellCss([](auto& c) { c.noWrap = true; }), "--w:pre;");
}

TEST(TableCss, UndoesWhatTheCellDoesNotHave) {
  CellProperties base;
  base.top = base.start = base.bottom = base.end = kLine;
  base.verticalAlignment = 2;
  base.paddingStart = 108;
  EXPECT_EQ(cellCss([](auto&) {}, base), "border:0;padding-inline-start:0;vertical-align:top;");
  EXPECT_EQ(cellCss([&](auto& c) { c = base; }, base), "");
}

TEST(TableCss, HasTheWidthOfTheColumns) {
  EXPECT_EQ(tableCss([](auto&) {}), "");
  EXPECT_EQ(tableCss([](auto& t) { t.columnWidths = {1440, -5, 720}; }), "width:108pt;");
  EXPECT_EQ(tableCss([](auto& t) { t.columnWidths = {kMost, kMost, kMost}; }), "width:1584pt;");
  EXPECT_EQ(tableCss([](auto& t) {
              t.widthKind = 3;
              t.width = 2000;
            }),
            "width:100pt;");
  EXPECT_EQ(tableCss([](auto& t) {
              t.widthKind = 2;
              t.width = 2525;
              t.columnWidths = {1440};
            }),
            "width:50.5%;");
  EXPECT_EQ(tableCss([](auto& t) {
              t.widthKind = 2;
              t.width = kMost;
            }),
            "width:100%;");
  EXPECT_EQ(tableCss([](auto& t) {
              t.widthKind = 3;
              t.width = -7;
            }),
            "");
}

TEST(TableCss, HasItsPlaceInTheLine) {
  EXPECT_EQ(boxCss([](auto& t) { t.indent = 360; }), "margin-inline-start:calc(18pt*var(--i));");
  EXPECT_EQ(boxCss([](auto& t) { t.indent = -108; }), "margin-inline-start:calc(-5.4pt*var(--n));");
  EXPECT_EQ(boxCss([](auto& t) { t.alignment = Alignment::kCentre; }), "margin-inline:auto;");
  EXPECT_EQ(boxCss([](auto& t) { t.alignment = Alignment::kEnd; }), "margin-inline-start:auto;");
}

TEST(TableCss, FloatsAtTheSideThatItIsAlignedTo) {
  const auto floating = [](Alignment alignment, bool isRightToLeft) {
    return boxCss([&](auto& t) {
      t.floats = true;
      t.alignment = alignment;
      t.isRightToLeft = isRightToLeft;
    });
  };
  EXPECT_EQ(floating(Alignment::kStart, false), "float:left;");
  EXPECT_EQ(floating(Alignment::kEnd, false), "float:right;");
  EXPECT_EQ(floating(Alignment::kStart, true), "float:right;");
  EXPECT_EQ(floating(Alignment::kEnd, true), "float:left;");
  EXPECT_EQ(floating(Alignment::kCentre, false), "margin-inline:auto;");
  EXPECT_EQ(boxCss([](auto&) {}), "");
  EXPECT_EQ(boxCss([](auto& t) {
              t.floats = true;
              t.indent = 360;
            }),
            "float:left;");
}

TEST(TableCss, HasColumnsInPointsOrAsShares) {
  TableProperties table;
  table.columnWidths = {1440, 2880};
  EXPECT_EQ(wholeOfColumns(table), 0);
  table.widthKind = 2;
  table.width = 5000;
  EXPECT_EQ(wholeOfColumns(table), 4320);
  const auto columnCss = [](int64_t twips, int64_t whole) {
    std::string out;
    appendColumnCss(out, twips, whole);
    return out;
  };
  EXPECT_EQ(columnCss(1440, 0), "width:72pt;");
  EXPECT_EQ(columnCss(1440, 4320), "width:33.33%;");
  EXPECT_EQ(columnCss(5000, 4320), "width:100%;");
  EXPECT_EQ(columnCss(0, 4320), "");
  EXPECT_EQ(columnCss(-5, 0), "");
}

TEST(TableCss, HasHeightsOfRows) {
  RowProperties row;
  EXPECT_EQ(rowCss(row), "");
  row.height = 400;
  EXPECT_EQ(rowCss(row), "height:20pt;");
  row.cantSplit = true;
  row.height = -32768;
  EXPECT_EQ(rowCss(row), "height:1584pt;break-inside:avoid;");
}

}  // namespace pagerex

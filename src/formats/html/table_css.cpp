#include "formats/html/table_css.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "formats/html/css_values.h"

namespace pagerex {
namespace {

enum Property : uint8_t {
  kBorderTop,
  kBorderEnd,
  kBorderBottom,
  kBorderStart,
  kPaddingTop,
  kPaddingEnd,
  kPaddingBottom,
  kPaddingStart,
  kBackground,
  kVerticalAlign,
  kWritingMode,
  kWhiteSpace,
  kPropertyCount
};

constexpr CssProperty kProperties[] = {
    {"border-top", "0", "border"}, {"border-inline-end", "0"},        {"border-bottom", "0"},
    {"border-inline-start", "0"},  {"padding-top", "0", "padding"},   {"padding-inline-end", "0"},
    {"padding-bottom", "0"},       {"padding-inline-start", "0"},     {"background-color", "#0000"},
    {"vertical-align", "top"},     {"writing-mode", "horizontal-tb"}, {"--w", "pre-wrap"},
};
static_assert(std::size(kProperties) == kPropertyCount);

using Values = std::array<std::string, kPropertyCount>;

constexpr const char* kVerticalAligns[] = {"", "middle", "bottom"};

void setBorder(std::string& value, const Border& border) {
  if (border.isThere()) appendBorder(value, border);
}

void setPadding(std::string& value, int16_t twips) {
  if (twips > 0) appendPoints(value, twips);
}

Values valuesOf(const CellProperties& cell) {
  Values values;
  setBorder(values[kBorderTop], cell.top);
  setBorder(values[kBorderEnd], cell.end);
  setBorder(values[kBorderBottom], cell.bottom);
  setBorder(values[kBorderStart], cell.start);
  setPadding(values[kPaddingTop], cell.paddingTop);
  setPadding(values[kPaddingEnd], cell.paddingEnd);
  setPadding(values[kPaddingBottom], cell.paddingBottom);
  setPadding(values[kPaddingStart], cell.paddingStart);
  const Shading& shading = cell.shading;
  if (shading.isThere && !shading.fill.isAutomatic) appendColour(values[kBackground], shading.fill.rgb);
  if (cell.verticalAlignment < std::size(kVerticalAligns)) {
    values[kVerticalAlign] = kVerticalAligns[cell.verticalAlignment];
  }
  values[kWritingMode] = writingModeOf(cell.textFlow);
  if (cell.noWrap) values[kWhiteSpace] = "pre";
  return values;
}

constexpr uint8_t kFiftiethsOfAPercent = 2, kTwips = 3;
constexpr int32_t kWholeInFiftieths = 5000;

bool isShare(const TableProperties& table) {
  return table.widthKind == kFiftiethsOfAPercent && table.width > 0;
}

/// What the columns came to when Word laid them out last.
int64_t sumOfColumns(const TableProperties& table) {
  int64_t sum = 0;
  for (const int32_t width : table.columnWidths) sum += std::max(width, 0);
  return sum;
}

void appendWidth(std::string& out, const TableProperties& table) {
  if (isShare(table)) {
    out += "width:";
    appendHundredths(out, int64_t{2} * std::min(table.width, kWholeInFiftieths), "%;");
    return;
  }
  const int64_t sum = sumOfColumns(table);
  const int64_t width = sum != 0 ? sum : table.widthKind == kTwips ? table.width : 0;
  if (width <= 0) return;
  out += "width:";
  appendPoints(out, width);
  out += ';';
}

}  // namespace

void appendTableCss(std::string& out, const TableProperties& table) {
  appendWidth(out, table);
}

void appendTableBoxCss(std::string& out, const TableProperties& table) {
  if (isShare(table)) appendDeclaration(out, "width", "auto");
  if (table.alignment == Alignment::kCentre) return appendDeclaration(out, "margin-inline", "auto");
  if (table.floats) {
    const bool isLeft = (table.alignment == Alignment::kEnd) == table.isRightToLeft;
    return appendDeclaration(out, "float", isLeft ? "left" : "right");
  }
  if (table.alignment == Alignment::kEnd) return appendDeclaration(out, "margin-inline-start", "auto");
  if (table.indent == 0) return;
  out += "margin-inline-start:";
  appendIndent(out, table.indent);
  out += ';';
}

void appendColumnCss(std::string& out, int64_t twips, int64_t whole) {
  if (twips <= 0) return;
  out += "width:";
  if (whole > 0) {
    constexpr int64_t kWhole = 10000;
    appendHundredths(out, std::min(twips, whole) * kWhole / whole, "%");
  } else {
    appendPoints(out, twips);
  }
  out += ';';
}

int64_t wholeOfColumns(const TableProperties& table) {
  return isShare(table) ? sumOfColumns(table) : 0;
}

void appendRowCss(std::string& out, const RowProperties& row) {
  // Rows grow with what is in them, as those do in Word that are not exact; what is cut there can be read
  // here.
  if (row.height != 0) {
    out += "height:";
    appendPoints(out, row.height < 0 ? -int64_t{row.height} : row.height);
    out += ';';
  }
  if (row.cantSplit) appendDeclaration(out, "break-inside", "avoid");
}

void appendCellCss(std::string& out, const CellProperties& cell, const CellProperties& base) {
  appendDifferences(out, kProperties, valuesOf(cell), valuesOf(base));
}

}  // namespace pagerex

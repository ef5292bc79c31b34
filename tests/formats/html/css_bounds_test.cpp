#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include "formats/html/paragraph_css.h"
#include "formats/html/run_css.h"
#include "formats/html/section_css.h"
#include "formats/html/table_css.h"

namespace pagerex {
namespace {

/// Values that a damaged file may have, least and most included.
class Damage {
 public:
  template <class T>
  void Set(T& value) {
    constexpr T kLeast = std::numeric_limits<T>::min(), kMost = std::numeric_limits<T>::max();
    const T values[] = {kLeast, static_cast<T>(kLeast + 1), 0, 1, static_cast<T>(kMost - 1),
                        kMost,  static_cast<T>(random_())};
    value = values[random_() % std::size(values)];
  }
  void Set(bool& value) { value = random_() % 2 != 0; }
  void Set(Colour& colour) { SetAll(colour.rgb, colour.isAutomatic); }
  void Set(Shading& shading) { SetAll(shading.isThere, shading.fill); }
  void Set(Border& b) { SetAll(b.kind, b.widthEighths, b.spacePoints, b.hasShadow, b.colour); }
  template <class... T>
  void SetAll(T&... values) {
    (Set(values), ...);
  }

  RunProperties Run() {
    RunProperties r;
    SetAll(r.bold, r.italic, r.strike, r.doubleStrike, r.outline, r.shadow, r.emboss, r.imprint, r.smallCaps);
    SetAll(r.caps, r.hidden, r.isComplexScript, r.underline, r.highlight, r.verticalAlignment,
           r.emphasisMark);
    SetAll(r.sizeHalfPoints, r.complexSizeHalfPoints, r.spacing, r.scalePercent, r.raisedHalfPoints);
    SetAll(r.kerningHalfPoints, r.colour, r.underlineColour, r.border, r.shading, r.fonts.ascii,
           r.fonts.complex);
    return r;
  }
  ParagraphProperties Paragraph() {
    ParagraphProperties p;
    SetAll(p.isRightToLeft, p.keepLines, p.keepWithNext, p.pageBreakBefore, p.widowControl, p.noHyphens);
    SetAll(p.spacesOnlyBetweenStyles, p.indentStart, p.indentEnd, p.indentFirstLine, p.spaceBefore,
           p.spaceAfter);
    SetAll(p.autoSpaceBefore, p.autoSpaceAfter, p.lineHeight, p.top, p.start, p.bottom, p.end, p.between,
           p.bar);
    SetAll(p.shading, p.frame.isThere, p.frame.width, p.frame.height, p.frame.dropCapLines, p.textFlow);
    p.lineSpacing = static_cast<ParagraphProperties::LineSpacing>(random_() % 3);
    p.alignment = static_cast<Alignment>(random_() % 5);
    return p;
  }
  CellProperties Cell() {
    CellProperties c;
    SetAll(c.verticalAlignment, c.textFlow, c.noWrap, c.top, c.start, c.bottom, c.end, c.shading);
    SetAll(c.paddingTop, c.paddingStart, c.paddingBottom, c.paddingEnd);
    return c;
  }
  TableProperties Table() {
    TableProperties t;
    t.columnWidths.resize(5);
    for (int32_t& width : t.columnWidths) Set(width);
    SetAll(t.isRightToLeft, t.indent, t.width, t.widthKind, t.floats);
    t.alignment = static_cast<Alignment>(random_() % 5);
    return t;
  }
  SectionProperties Section() {
    SectionProperties s;
    SetAll(s.pageWidth, s.pageHeight, s.marginTop, s.marginBottom, s.marginLeft, s.marginRight, s.gutter);
    SetAll(s.columnCount, s.hasLineBetweenColumns, s.columnSpace, s.textFlow);
    return s;
  }

 private:
  std::mt19937 random_{97};
};

/// "name:value;" any number of times, with numbers of a few digits.
bool isDeclarations(std::string_view css) {
  while (!css.empty()) {
    const size_t colon = css.find(':'), end = css.find(';');
    if (colon == 0 || end == css.npos || colon > end || end - colon < 2) return false;
    const std::string_view name = css.substr(0, colon), value = css.substr(colon + 1, end - colon - 1);
    if (name.find_first_not_of("abcdefghijklmnopqrstuvwxyz-") != name.npos) return false;
    if (value.find_first_of("{}:<>\n") != value.npos) return false;
    if (std::count(value.begin(), value.end(), '(') != std::count(value.begin(), value.end(), ')'))
      return false;
    css.remove_prefix(end + 1);
  }
  return true;
}

/// No number is beyond what a page can have.
bool hasSaneNumbers(std::string_view css) {
  size_t digits = 0;
  for (size_t i = 0; i < css.size(); ++i) {
    if (css[i] == '#') {
      while (i + 1 < css.size() && std::isxdigit(static_cast<unsigned char>(css[i + 1]))) ++i;
    }
    digits = css[i] >= '0' && css[i] <= '9' ? digits + 1 : 0;
    if (digits > 4) return false;
  }
  return true;
}

void expectSane(const std::string& css) {
  EXPECT_TRUE(isDeclarations(css)) << css;
  EXPECT_TRUE(hasSaneNumbers(css)) << css;
}

constexpr int kRounds = 2000;

}  // namespace

TEST(CssBounds, HoldForAnyRun) {
  Damage damage;
  FontFamilies fonts(nullptr);
  for (int i = 0; i < kRounds; ++i) {
    std::string css;
    const auto script = static_cast<FontScript>(i % 4);
    appendRunCss(css, damage.Run(), damage.Run(), script, static_cast<Tags>(i % 64), fonts, {});
    expectSane(css);
  }
}

TEST(CssBounds, HoldForAnyParagraph) {
  Damage damage;
  for (int i = 0; i < kRounds; ++i) {
    std::string css;
    const ParagraphProperties paragraph = damage.Paragraph();
    appendParagraphCss(css, paragraph, damage.Paragraph(), {i % 2 == 0, i % 3 == 0, i % 5 == 0, i % 7 == 0});
    appendFrameSizeCss(css, paragraph.frame);
    expectSane(css);
  }
}

TEST(CssBounds, HoldForAnyTable) {
  Damage damage;
  for (int i = 0; i < kRounds; ++i) {
    std::string css;
    const TableProperties table = damage.Table();
    appendTableCss(css, table);
    appendTableBoxCss(css, table);
    for (const int32_t width : table.columnWidths) appendColumnCss(css, width, wholeOfColumns(table));
    appendCellCss(css, damage.Cell(), damage.Cell());
    expectSane(css);
  }
}

TEST(CssBounds, HoldForAnySection) {
  Damage damage;
  for (int i = 0; i < kRounds; ++i) {
    std::string css, rule;
    const SectionProperties section = damage.Section();
    appendSectionCss(css, section);
    appendPageRule(rule, {}, section);
    ASSERT_TRUE(rule.starts_with("@page{") && rule.ends_with('}')) << rule;
    expectSane(css + rule.substr(6, rule.size() - 7) + ';');
  }
}

}  // namespace pagerex

#include "formats/html/paragraph_css.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "formats/html/css_values.h"

namespace pagerex {
namespace {

enum Property : uint8_t {
  kTextAlign,
  kTextAlignLast,
  kMarginStart,
  kMarginEnd,
  kIndent,
  kMarginTop,
  kMarginBottom,
  kPaddingTop,
  kPaddingEnd,
  kPaddingBottom,
  kPaddingStart,
  kLineHeight,
  kBorderTop,
  kBorderEnd,
  kBorderBottom,
  kBorderStart,
  kShadow,
  kBackground,
  kFloat,
  kHeight,
  kWritingMode,
  kBreakBefore,
  kBreakInside,
  kBreakAfter,
  kOrphans,
  kWidows,
  kHyphens,
  kPropertyCount
};

constexpr CssProperty kProperties[] = {
    {"text-align", "start"},
    {"text-align-last", "auto"},
    {"margin-inline-start", "0"},
    {"margin-inline-end", "0"},
    {"text-indent", "0"},
    {"margin-top", "0"},
    {"margin-bottom", "0"},
    {"padding-top", "0", "padding"},
    {"padding-inline-end", "0"},
    {"padding-bottom", "0"},
    {"padding-inline-start", "0"},
    {"line-height", "normal"},
    {"border-top", "0", "border"},
    {"border-inline-end", "0"},
    {"border-bottom", "0"},
    {"border-inline-start", "0"},
    {"box-shadow", "none"},
    {"background-color", "#0000"},
    {"float", "none"},
    {"height", "auto"},
    {"writing-mode", "horizontal-tb"},
    {"break-before", "auto"},
    {"break-inside", "auto"},
    {"break-after", "auto"},
    {"orphans", "2"},
    {"widows", "2"},
    {"hyphens", "inherit"},
};
static_assert(std::size(kProperties) == kPropertyCount);

using Values = std::array<std::string, kPropertyCount>;

constexpr const char* kTextAligns[] = {"", "center", "end", "justify", "justify"};

/// A line of Word is as high as its font says, which is `normal`; but CSS cannot multiply `normal`. This is
/// what it comes to in the usual fonts.
constexpr int64_t kLinePercent = 117;
constexpr int64_t kSingleLine = 240;
constexpr int64_t kMostLineHeight = 31680;

/// Space that browsers leave around paragraphs, in Word.
constexpr int64_t kAutoSpace = 280;

int64_t spaceTwips(const Border& border) {
  return border.isThere() ? border.spacePoints * int64_t{20} : 0;
}

int64_t hangOf(const ParagraphProperties& paragraph) {
  return std::max<int64_t>(0, -int64_t{paragraph.indentFirstLine});
}

const Border& startBorderOf(const ParagraphProperties& paragraph) {
  return paragraph.start.isThere() ? paragraph.start : paragraph.bar;
}

void setTwips(std::string& value, int64_t twips) {
  if (twips != 0) appendPoints(value, twips);
}

/// Text stays where its indents say: what a box adds stands out, and so does what is hung out of it.
void setSides(const ParagraphProperties& paragraph, Values& values) {
  const Border& start = startBorderOf(paragraph);
  const int64_t hang = isBoxed(paragraph) ? hangOf(paragraph) : 0;
  const int64_t atStart = spaceTwips(start), atEnd = spaceTwips(paragraph.end);
  appendIndent(values[kMarginStart], paragraph.indentStart - hang - atStart - borderWidthTwips(start));
  appendIndent(values[kMarginEnd], paragraph.indentEnd - atEnd - borderWidthTwips(paragraph.end));
  appendIndent(values[kIndent], paragraph.indentFirstLine);
  setTwips(values[kPaddingEnd], atEnd);
  if (hang == 0) return setTwips(values[kPaddingStart], atStart);
  std::string& padding = values[kPaddingStart];
  padding = "calc(";
  if (atStart != 0) {
    appendPoints(padding, atStart);
    padding += " + ";
  }
  appendPoints(padding, hang);
  padding += "*var(--n))";
}

/// Space below one paragraph and above the next add up. Margins would not, so that space above is padding,
/// unless that can be seen.
void setSpace(const ParagraphProperties& paragraph, const Neighbours& neighbours, Values& values) {
  const bool isNear = paragraph.spacesOnlyBetweenStyles;
  const int64_t above = isNear && neighbours.isStyleAbove ? 0
                        : paragraph.autoSpaceBefore       ? kAutoSpace
                                                          : paragraph.spaceBefore;
  const int64_t below = isNear && neighbours.isStyleBelow ? 0
                        : paragraph.autoSpaceAfter        ? kAutoSpace
                                                          : paragraph.spaceAfter;
  const bool isOutside = isBoxed(paragraph) || paragraph.autoSpaceBefore;
  const Border& top = neighbours.joinsAbove ? paragraph.between : paragraph.top;
  const Border& bottom = neighbours.joinsBelow ? paragraph.between : paragraph.bottom;
  const bool isMargin = isOutside && !neighbours.joinsAbove;
  setTwips(values[kMarginTop], isMargin ? above : 0);
  setTwips(values[kPaddingTop], spaceTwips(top) + (isMargin ? 0 : above));
  setTwips(values[kMarginBottom], neighbours.joinsBelow ? 0 : below);
  setTwips(values[kPaddingBottom], spaceTwips(bottom) + (neighbours.joinsBelow ? below : 0));
}

void setLineHeight(const ParagraphProperties& paragraph, Values& values) {
  using enum ParagraphProperties::LineSpacing;
  std::string& value = values[kLineHeight];
  const int64_t height = std::min<int64_t>(paragraph.lineHeight, kMostLineHeight);
  if (height == 0) return;
  switch (paragraph.lineSpacing) {
    case kMultiple:
      if (height == kSingleLine) return;
      return appendHundredths(value, (height * kLinePercent + kSingleLine / 2) / kSingleLine, "");
    case kAtLeast:
      value = "max(";
      appendPoints(value, height);
      value += ',';
      appendHundredths(value, kLinePercent, "em)");
      return;
    case kExactly:
      return appendPoints(value, height);
  }
}

void setBorder(std::string& value, const Border& border) {
  if (border.isThere()) appendBorder(value, border);
}

void setBox(const ParagraphProperties& paragraph, const Neighbours& neighbours, Values& values) {
  setBorder(values[kBorderTop], neighbours.joinsAbove ? paragraph.between : paragraph.top);
  setBorder(values[kBorderEnd], paragraph.end);
  if (!neighbours.joinsBelow) setBorder(values[kBorderBottom], paragraph.bottom);
  setBorder(values[kBorderStart], startBorderOf(paragraph));
  const Border& shadowed = paragraph.end.isThere() ? paragraph.end : paragraph.bottom;
  if (shadowed.isThere() && shadowed.hasShadow) {
    appendPoints(values[kShadow], borderWidthTwips(shadowed));
    values[kShadow] += ' ' + values[kShadow];
  }
  const Shading& shading = paragraph.shading;
  if (shading.isThere && !shading.fill.isAutomatic) appendColour(values[kBackground], shading.fill.rgb);
}

void setFrame(const ParagraphProperties& paragraph, Values& values) {
  if (!paragraph.frame.isThere) return;
  values[kWritingMode] = writingModeOf(paragraph.textFlow);
  if (paragraph.frame.dropCapLines == 0) return;
  values[kFloat] = paragraph.isRightToLeft ? "right" : "left";
  // Word gives a drop cap an exact line, as high as the lines beside it. A letter that is lowered in it must
  // not make it higher. Where there is no such line it is as high as its letter.
  if (paragraph.lineSpacing == ParagraphProperties::LineSpacing::kExactly) {
    values[kHeight] = values[kLineHeight];
  } else {
    values[kLineHeight] = "1";
  }
}

void setBreaks(const ParagraphProperties& paragraph, Values& values) {
  if (paragraph.pageBreakBefore) values[kBreakBefore] = "page";
  if (paragraph.keepLines) values[kBreakInside] = "avoid";
  if (paragraph.keepWithNext) values[kBreakAfter] = "avoid";
  if (!paragraph.widowControl) values[kOrphans] = values[kWidows] = "1";
  if (paragraph.noHyphens) values[kHyphens] = "manual";
}

Values valuesOf(const ParagraphProperties& paragraph, const Neighbours& neighbours) {
  Values values;
  const auto alignment = static_cast<size_t>(paragraph.alignment);
  if (alignment < std::size(kTextAligns)) values[kTextAlign] = kTextAligns[alignment];
  if (paragraph.alignment == Alignment::kDistribute) values[kTextAlignLast] = "justify";
  setSides(paragraph, values);
  setSpace(paragraph, neighbours, values);
  setLineHeight(paragraph, values);
  setBox(paragraph, neighbours, values);
  setFrame(paragraph, values);
  setBreaks(paragraph, values);
  return values;
}

}  // namespace

void appendParagraphCss(std::string& out, const ParagraphProperties& paragraph,
                        const ParagraphProperties& base, const Neighbours& neighbours) {
  appendDifferences(out, kProperties, valuesOf(paragraph, neighbours), valuesOf(base, {}));
}

bool isBoxed(const ParagraphProperties& paragraph) {
  return paragraph.shading.isThere || paragraph.top.isThere() || paragraph.bottom.isThere() ||
         paragraph.end.isThere() || startBorderOf(paragraph).isThere();
}

bool boxesJoin(const ParagraphProperties& above, const ParagraphProperties& below) {
  return isBoxed(above) && isBoxed(below) && above.top == below.top && above.start == below.start &&
         above.bottom == below.bottom && above.end == below.end && above.between == below.between &&
         above.bar == below.bar && above.shading.isThere == below.shading.isThere &&
         above.indentStart - hangOf(above) == below.indentStart - hangOf(below) &&
         above.indentEnd == below.indentEnd && above.isRightToLeft == below.isRightToLeft &&
         above.frame == below.frame;
}

void appendFrameSizeCss(std::string& out, const Frame& frame) {
  if (!frame.isThere || frame.dropCapLines != 0) return;
  if (frame.width != 0) {
    out += "width:";
    appendPoints(out, frame.width);
    out += ";max-width:100%;";
  }
  if (frame.height == 0) return;
  out += frame.isLeastHeight ? "min-height:" : "height:";
  appendPoints(out, frame.height);
  out += ';';
}

}  // namespace pagerex

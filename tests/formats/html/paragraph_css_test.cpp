#include "formats/html/paragraph_css.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace pagerex {
namespace {

using Change = std::function<void(ParagraphProperties&)>;
using LineSpacing = ParagraphProperties::LineSpacing;

ParagraphProperties changed(const Change& change) {
  ParagraphProperties paragraph;
  change(paragraph);
  return paragraph;
}

std::string cssBetween(const ParagraphProperties& paragraph, const ParagraphProperties& base,
                       const Neighbours& neighbours = {}) {
  std::string out;
  appendParagraphCss(out, paragraph, base, neighbours);
  return out;
}

std::string cssOf(const Change& change, const Neighbours& neighbours = {}) {
  return cssBetween(changed(change), {}, neighbours);
}

constexpr Border kLine = {1, 8, 4, false, {}};  // with its space 100 twips
constexpr Shading kGrey = {true, {0xCCCCCC, false}};

void makeBox(ParagraphProperties& p) {
  p.top = p.start = p.bottom = p.end = kLine;
}

}  // namespace

TEST(ParagraphCss, SaysEachPropertyThatDiffers) {
  const struct {
    Change change;
    const char* css;
  } kCases[] = {
      {[](auto&) {}, ""},
      {[](auto& p) { p.alignment = Alignment::kCentre; }, "text-align:center;"},
      {[](auto& p) { p.alignment = Alignment::kEnd; }, "text-align:end;"},
      {[](auto& p) { p.alignment = Alignment::kJustify; }, "text-align:justify;"},
      {[](auto& p) { p.alignment = Alignment::kDistribute; }, "text-align:justify;text-align-last:justify;"},
      {[](auto& p) { p.alignment = static_cast<Alignment>(200); }, ""},
      {[](auto& p) { p.indentStart = 720; }, "margin-inline-start:calc(36pt*var(--i));"},
      {[](auto& p) { p.indentStart = -720; }, "margin-inline-start:calc(-36pt*var(--n));"},
      {[](auto& p) { p.indentEnd = 567; }, "margin-inline-end:calc(28.35pt*var(--i));"},
      {[](auto& p) { p.indentFirstLine = 360; }, "text-indent:calc(18pt*var(--i));"},
      {[](auto& p) { p.indentFirstLine = -360; }, "text-indent:calc(-18pt*var(--n));"},
      {[](auto& p) { p.indentFirstLine = std::numeric_limits<int32_t>::min(); },
       "text-indent:calc(-1584pt*var(--n));"},
      {[](auto& p) { p.spaceBefore = 240; }, "padding-top:12pt;"},
      {[](auto& p) { p.spaceAfter = 120; }, "margin-bottom:6pt;"},
      {[](auto& p) { p.autoSpaceBefore = p.autoSpaceAfter = true; }, "margin-top:14pt;margin-bottom:14pt;"},
      {[](auto& p) { p.lineHeight = 360; }, "line-height:1.76;"},
      {[](auto& p) { p.lineHeight = 480; }, "line-height:2.34;"},
      {[](auto& p) { p.lineHeight = 0; }, ""},
      {[](auto& p) {
         p.lineSpacing = LineSpacing::kExactly;
         p.lineHeight = 300;
       },
       "line-height:15pt;"},
      {[](auto& p) {
         p.lineSpacing = LineSpacing::kAtLeast;
         p.lineHeight = 240;
       },
       "line-height:max(12pt,1.17em);"},
      {[](auto& p) { p.pageBreakBefore = true; }, "break-before:page;"},
      {[](auto& p) { p.keepLines = true; }, "break-inside:avoid;"},
      {[](auto& p) { p.keepWithNext = true; }, "break-after:avoid;"},
      {[](auto& p) { p.widowControl = false; }, "orphans:1;widows:1;"},
      {[](auto& p) { p.noHyphens = true; }, "hyphens:manual;"},
      {[](auto& p) { p.shading = kGrey; }, "background-color:#ccc;"},
      {[](auto& p) { p.shading.isThere = true; }, ""},
      {[](auto& p) { p.textFlow = 1; }, ""},
      {[](auto& p) {
         p.frame.isThere = true;
         p.textFlow = 1;
       },
       "writing-mode:vertical-rl;"},
      {[](auto& p) { p.outlineLevel = 3; }, ""},
  };
  for (size_t i = 0; i < std::size(kCases); ++i) EXPECT_EQ(cssOf(kCases[i].change), kCases[i].css) << i;
}

TEST(ParagraphCss, UndoesWhatTheParagraphDoesNotHave) {
  EXPECT_EQ(
      cssBetween({}, changed([](auto& p) {
                   p.alignment = Alignment::kCentre;
                   p.indentStart = p.indentFirstLine = 360;
                   p.spaceBefore = p.spaceAfter = 100;
                   p.lineHeight = 360;
                   p.widowControl = false;
                   p.keepWithNext = p.noHyphens = true;
                   p.shading = kGrey;
                 })),
      "text-align:start;margin-inline-start:0;text-indent:0;margin-top:0;margin-bottom:0;line-height:normal;"
      "background-color:#0000;break-after:auto;orphans:2;widows:2;hyphens:inherit;");
}

TEST(ParagraphCss, LetsBoxesStandOutOfTheText) {
  EXPECT_EQ(cssOf(makeBox),
            "margin-inline-start:calc(-5pt*var(--n));margin-inline-end:calc(-5pt*var(--n));padding:4pt;"
            "border:1pt solid;");
  EXPECT_EQ(cssOf([](auto& p) {
              p.bottom = {3, 8, 1, false, {0xFF, false}};
              p.spaceBefore = 200;
            }),
            "margin-top:10pt;padding-bottom:1pt;border-bottom:3pt double #00f;");
}

TEST(ParagraphCss, PutsHangingTextIntoTheBox) {
  EXPECT_EQ(cssOf([](auto& p) {
              p.shading = kGrey;
              p.indentStart = 720;
              p.indentFirstLine = -360;
            }),
            "margin-inline-start:calc(18pt*var(--i));text-indent:calc(-18pt*var(--n));"
            "padding-inline-start:calc(18pt*var(--n));background-color:#ccc;");
  EXPECT_EQ(cssOf([](auto& p) {
              p.start = kLine;
              p.indentStart = 720;
              p.indentFirstLine = -360;
            }),
            "margin-inline-start:calc(13pt*var(--i));text-indent:calc(-18pt*var(--n));"
            "padding-inline-start:calc(4pt + 18pt*var(--n));border-inline-start:1pt solid;");
}

TEST(ParagraphCss, DrawsOneBoxAroundParagraphsThatJoin) {
  const auto spaced = [](auto& p) {
    makeBox(p);
    p.spaceBefore = 200;
    p.spaceAfter = 100;
  };
  const std::string sides = "margin-inline-start:calc(-5pt*var(--n));margin-inline-end:calc(-5pt*var(--n));";
  EXPECT_EQ(cssOf(spaced, {.joinsBelow = true}),
            sides +
                "margin-top:10pt;padding-top:4pt;padding-inline-end:4pt;padding-bottom:5pt;"
                "padding-inline-start:4pt;border-top:1pt solid;border-inline-end:1pt solid;"
                "border-inline-start:1pt solid;");
  EXPECT_EQ(cssOf(spaced, {.joinsAbove = true}),
            sides +
                "margin-bottom:5pt;padding-top:10pt;padding-inline-end:4pt;padding-bottom:4pt;"
                "padding-inline-start:4pt;border-inline-end:1pt solid;border-bottom:1pt solid;"
                "border-inline-start:1pt solid;");
}

TEST(ParagraphCss, DrawsLinesBetweenParagraphsOfOneBox) {
  const auto parted = [](auto& p) {
    makeBox(p);
    p.between = {6, 8, 2, false, {}};
  };
  EXPECT_EQ(cssOf(parted, {.joinsAbove = true, .joinsBelow = true}),
            "margin-inline-start:calc(-5pt*var(--n));margin-inline-end:calc(-5pt*var(--n));padding-top:2pt;"
            "padding-inline-end:4pt;padding-bottom:2pt;padding-inline-start:4pt;border-top:1pt dotted;"
            "border-inline-end:1pt solid;border-inline-start:1pt solid;");
}

TEST(ParagraphCss, KnowsWhichBoxesJoin) {
  const ParagraphProperties box = changed(makeBox);
  EXPECT_TRUE(boxesJoin(box, box));
  EXPECT_FALSE(boxesJoin({}, {}));
  EXPECT_FALSE(boxesJoin(box, {}));
  ParagraphProperties other = box;
  other.spaceAfter = 100;
  EXPECT_TRUE(boxesJoin(box, other));
  other.indentStart = 360;
  EXPECT_FALSE(boxesJoin(box, other));
  other.indentFirstLine = -360;
  EXPECT_TRUE(boxesJoin(box, other));
  other.end.kind = 3;
  EXPECT_FALSE(boxesJoin(box, other));
}

TEST(ParagraphCss, LeavesNoSpaceBetweenParagraphsOfOneStyleWhereToldSo) {
  const auto spaced = [](auto& p) {
    p.spacesOnlyBetweenStyles = true;
    p.spaceBefore = 200;
    p.spaceAfter = 100;
  };
  EXPECT_EQ(cssOf(spaced), "margin-bottom:5pt;padding-top:10pt;");
  EXPECT_EQ(cssOf(spaced, {.isStyleAbove = true}), "margin-bottom:5pt;");
  EXPECT_EQ(cssOf(spaced, {.isStyleBelow = true}), "padding-top:10pt;");
}

TEST(ParagraphCss, DrawsBarsAndShadows) {
  EXPECT_EQ(
      cssOf([](auto& p) { p.bar = kLine; }),
      "margin-inline-start:calc(-5pt*var(--n));padding-inline-start:4pt;border-inline-start:1pt solid;");
  EXPECT_EQ(cssOf([](auto& p) {
              p.bottom = {1, 8, 0, true, {}};
            }),
            "border-bottom:1pt solid;box-shadow:1pt 1pt;");
}

TEST(ParagraphCss, SetsDropCapsAside) {
  EXPECT_EQ(cssOf([](auto& p) {
              p.frame.isThere = true;
              p.frame.dropCapLines = 3;
            }),
            "line-height:1;float:left;");
  EXPECT_EQ(cssOf([](auto& p) {
              p.frame.isThere = p.isRightToLeft = true;
              p.frame.dropCapLines = 3;
              p.lineSpacing = LineSpacing::kExactly;
              p.lineHeight = 820;
            }),
            "line-height:41pt;float:right;height:41pt;");
}

TEST(ParagraphCss, HasSizesOfFrames) {
  const auto sizeOf = [](const Frame& frame) {
    std::string out;
    appendFrameSizeCss(out, frame);
    return out;
  };
  Frame frame;
  frame.width = 2880;
  EXPECT_EQ(sizeOf(frame), "");
  frame.isThere = true;
  EXPECT_EQ(sizeOf(frame), "width:144pt;max-width:100%;");
  frame.height = 1440;
  EXPECT_EQ(sizeOf(frame), "width:144pt;max-width:100%;height:72pt;");
  frame.isLeastHeight = true;
  frame.width = 0;
  EXPECT_EQ(sizeOf(frame), "min-height:72pt;");
  frame.dropCapLines = 2;
  EXPECT_EQ(sizeOf(frame), "");
}

}  // namespace pagerex

#include <gtest/gtest.h>

#include "htmlwriter/css_props.h"
#include "support/markup.h"

namespace pagerex {
namespace {

namespace mask = paragraph_mask;

/// CSS of a paragraph; `lineSpacing` is handed in and out.
std::string css(const KDRParagraphProp& prop, int* lineSpacing = nullptr) {
  int local = 0;
  return support::cssOf(
      [&](IWriteArchive* archive) { WritePapProps(&prop, archive, lineSpacing ? *lineSpacing : local); });
}

template <class Field, class Value>
KDRParagraphProp with(PropMask bit, Field __ParagraphData::*field, Value value) {
  KDRParagraphProp prop;
  prop.*field = static_cast<Field>(value);
  prop.setPresent(bit);
  return prop;
}

const std::string kPlain = "margin-top:0pt;";

TEST(PapProps, APlainParagraphStillHasItsTopMargin) {
  EXPECT_EQ(css(KDRParagraphProp()), kPlain);
}

TEST(PapProps, NullPropertiesWriteNothing) {
  int lineSpacing = 7;
  EXPECT_EQ(support::cssOf([&](IWriteArchive* archive) { WritePapProps(nullptr, archive, lineSpacing); }),
            "");
  EXPECT_EQ(lineSpacing, 7);
}

TEST(PapProps, ALeftIndentOfZeroCharactersYieldsToTheTwips) {
  KDRParagraphProp prop;
  prop.dxcLeft = 0;
  prop.dxaLeft = 720;
  prop.setPresent(mask::dxcLeft);
  prop.setPresent(mask::dxaLeft);
  EXPECT_EQ(css(prop), "margin-left:36.000000pt;" + kPlain);
  prop.dxcLeft = 200;
  EXPECT_EQ(css(prop), "margin-left:21.000000pt;" + kPlain);
}

TEST(PapProps, IndentsAndSpacingComeInTheirOrder) {
  KDRParagraphProp prop;
  prop.dxaLeft = 1;
  prop.dxaLeft1 = -360;
  prop.dxaRight = 30;
  prop.dyaAfter = 200;
  prop.dyaBefore = 100;
  for (PropMask bit : {mask::dxaLeft, mask::dxaLeft1, mask::dxaRight, mask::dyaAfter, mask::dyaBefore}) {
    prop.setPresent(bit);
  }
  EXPECT_EQ(css(prop),
            "margin-left:0.050000pt;text-indent:-18.000000pt;margin-right:1.500000pt;"
            "margin-bottom:10.000000pt;margin-top:5.000000pt;");
}

TEST(PapProps, CharacterUnitsWorkForFirstLineAndRightIndent) {
  KDRParagraphProp prop;
  prop.dxcLeft1 = 100;
  prop.dxcRight = -50;
  prop.setPresent(mask::dxcLeft1);
  prop.setPresent(mask::dxcRight);
  EXPECT_EQ(css(prop), "text-indent:10.500000pt;margin-right:-5.250000pt;" + kPlain);
}

struct JustificationCase {
  int jc;
  const char* css;
};

TEST(PapProps, JustificationByNumber) {
  const JustificationCase cases[] = {
      {0, "text-align:left;"},
      {1, "text-align:center;"},
      {2, "text-align:right;"},
      {3, "text-align:justify;"},
      {4, "text-align:justify;text-justify:distribute-all-lines;"},
      {5, "text-align:left;"},
      {255, "text-align:left;"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(css(with(mask::jc, &KDRParagraphProp::jc, each.jc)), kPlain + each.css) << each.jc;
  }
}

TEST(PapProps, FontAlignmentByNumber) {
  const char* words[] = {"top", "middle", "baseline", "bottom", "", "baseline"};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(css(with(mask::wAlignFont, &KDRParagraphProp::wAlignFont, 0x100 + i)),
              kPlain + "vertical-align:" + words[i] + ";");
  }
}

TEST(PapProps, FlagsHaveTheirWordsForOneOfTheirValues) {
  struct Case {
    PropMask bit;
    uint8_t __ParagraphData::*flag;
    int when;
    const char* css;
  };
  const Case cases[] = {
      {mask::fAdjustRight, &__ParagraphData::fAdjustRight, 0, "layout-grid-mode:char;"},
      {mask::fAutoSpaceDN, &__ParagraphData::fAutoSpaceDN, 1, "text-autospace:ideograph-numeric;"},
      {mask::fAutoSpaceDE, &__ParagraphData::fAutoSpaceDE, 1, "text-autospace:ideograph-other;"},
      {mask::fKeepFollow, &__ParagraphData::fKeepFollow, 1, "page-break-after:void;"},
      {mask::fOverflowPunct, &__ParagraphData::fOverflowPunct, 1, "word-break:simple;"},
      {mask::fPageBreakBefore, &__ParagraphData::fPageBreakBefore, 1, "page-break-before:always;"},
      {mask::fTopLinePunct, &__ParagraphData::fTopLinePunct, 1, "punctuation-trim:leading;"},
      {mask::fWordWrap, &__ParagraphData::fWordWrap, 0, "word-break:break-all;"},
  };
  for (const Case& each : cases) {
    KDRParagraphProp prop;
    prop.*each.flag = static_cast<uint8_t>(each.when);
    EXPECT_EQ(css(prop), kPlain) << "absent " << each.css;
    prop.setPresent(each.bit);
    EXPECT_EQ(css(prop), kPlain + each.css);
    prop.*each.flag = static_cast<uint8_t>(1 - each.when);
    EXPECT_EQ(css(prop), kPlain) << "the other value of " << each.css;
  }
}

TEST(PapProps, BothAutoSpacesAndBothWordBreaksAreWritten) {
  KDRParagraphProp prop;
  prop.fAutoSpaceDE = prop.fAutoSpaceDN = prop.fOverflowPunct = 1;
  prop.fWordWrap = 0;
  for (PropMask bit : {mask::fAutoSpaceDE, mask::fAutoSpaceDN, mask::fOverflowPunct, mask::fWordWrap}) {
    prop.setPresent(bit);
  }
  EXPECT_EQ(css(prop), kPlain +
                           "text-autospace:ideograph-numeric;text-autospace:ideograph-other;"
                           "word-break:simple;word-break:break-all;");
}

TEST(PapProps, ShadingIsTheBackgroundUnlessAutomatic) {
  KDRParagraphProp prop;
  prop.setPresent(mask::shd);
  EXPECT_EQ(css(prop), kPlain);
  prop.shd.background = 0x0000FF;
  EXPECT_EQ(css(prop), kPlain + "background:#FF0000;");
}

TEST(PapLineSpacing, AMultipleIsAPercentageOfAtLeastAHundred) {
  KDRParagraphProp prop;
  prop.setPresent(mask::dyaLine);
  prop.fMultLinespace = 1;
  int lineSpacing = 0;
  prop.dyaLine = 360;
  EXPECT_EQ(css(prop, &lineSpacing), kPlain + "line-height:150%;");
  EXPECT_EQ(lineSpacing, 151);
  prop.dyaLine = 120;
  EXPECT_EQ(css(prop, &lineSpacing), kPlain + "line-height:100%;");
  EXPECT_EQ(lineSpacing, 101);
  prop.dyaLine = 365;  // 152.08 percent
  EXPECT_EQ(css(prop, &lineSpacing), kPlain + "line-height:152%;");
  EXPECT_EQ(lineSpacing, 153);
}

TEST(PapLineSpacing, ALengthIsAbsoluteAndAtLeastTenAndAHalfPoints) {
  KDRParagraphProp prop;
  prop.setPresent(mask::dyaLine);
  prop.fMultLinespace = 0;
  int lineSpacing = 0;
  prop.dyaLine = -400;
  EXPECT_EQ(css(prop, &lineSpacing), kPlain + "line-height:20.0pt;");
  EXPECT_EQ(lineSpacing, 400);
  prop.dyaLine = 100;
  EXPECT_EQ(css(prop, &lineSpacing), kPlain + "line-height:10.5pt;");
  EXPECT_EQ(lineSpacing, 100);
  prop.dyaLine = -32768;
  EXPECT_EQ(css(prop, &lineSpacing), kPlain + "line-height:1638.4pt;");
}

TEST(PapLineSpacing, AnotherModeOrNoneLeavesTheValueAlone) {
  KDRParagraphProp prop;
  int lineSpacing = 44;
  EXPECT_EQ(css(prop, &lineSpacing), kPlain);
  EXPECT_EQ(lineSpacing, 44);
  prop.setPresent(mask::dyaLine);
  prop.fMultLinespace = 2;
  EXPECT_EQ(css(prop, &lineSpacing), kPlain);
  EXPECT_EQ(lineSpacing, 44);
}

constexpr mso_word::BRCEX kRedDouble = {0x0000FF, 12, 3, 4, 0};

TEST(PapBorders, ATopBorderAloneGivesPaddingOfAllSides) {
  EXPECT_EQ(css(with(mask::brcTop, &KDRParagraphProp::brcTop, kRedDouble)),
            kPlain +
                "border-top:1.500000pt double rgb(255,0,0);mso-border-top:1.500000pt double rgb(255,0,0);"
                "padding:0.200000pt 0pt 0pt 0pt;");
}

TEST(PapBorders, BottomAndLeftAreWrittenTwiceUnderOneName) {
  KDRParagraphProp prop;
  prop.brcBottom = prop.brcLeft = {0x030201, 8, 8, 0xFF, 0};
  prop.setPresent(mask::brcBottom);
  prop.setPresent(mask::brcLeft);
  EXPECT_EQ(css(prop),
            kPlain +
                "border-bottom:1.000000pt dashed rgb(1,2,3);border-bottom:1.000000pt dot-dash rgb(1,2,3);"
                "border-left:1.000000pt dashed rgb(1,2,3);border-left:1.000000pt dot-dash rgb(1,2,3);"
                "padding:0pt 0pt 1.550000pt 1.550000pt;");
}

TEST(PapBorders, AnUndefinedBorderIsLeftOutButItsSpaceIsNot) {
  KDRParagraphProp prop;
  prop.setPresent(mask::brcRight);
  EXPECT_EQ(css(prop), kPlain + "padding:0pt 0.000000pt 0pt 0pt;");
}

TEST(Border, TypesAboveTheTableAreNone) {
  EXPECT_STREQ(BRCTYPE2Cssval(27), "inset");
  EXPECT_STREQ(BRCTYPE2Cssval(28), "none");
  EXPECT_STREQ(BRCTYPE2MsoCssval(255), "none");
}

struct BorderWord {
  const char* css;
  const char* mso;
};

TEST(Border, EveryTypeHasItsTwoWords) {
  const BorderWord words[] = {
      {"none", "none"},
      {"solid", "solid"},
      {"solid", "solid"},
      {"double", "double"},
      {"solid", "solid"},
      {"dotted", "dotted"},
      {"dotted", "dotted"},
      {"dashed", "dashed"},
      {"dashed", "dot-dash"},
      {"dashed", "dot-dot-dash"},
      {"double", "triple"},
      {"double", "thin-thick-small-gap"},
      {"double", "thick-thin-small-gap"},
      {"double", "thin-thick-thin-small-gap"},
      {"double", "thin-thick-medium-gap"},
      {"double", "thick-thin-medium-gap"},
      {"double", "thin-thick-thin-medium-gap"},
      {"double", "thick-thin-large-gap"},
      {"double", "thick-thin-large-gap"},
      {"double", "thin-thick-thin-large-gap"},
      {"solid", "wave"},
      {"double", "double-wave"},
      {"dashed", "dashed"},
      {"solid", "dash-dot-stroked"},
      {"ridge", "three-d-emboss"},
      {"groove", "three-d-engrave"},
      {"outset", "outset"},
      {"inset", "inset"},
  };
  for (unsigned i = 0; i < std::size(words); ++i) {
    EXPECT_STREQ(BRCTYPE2Cssval(i), words[i].css) << i;
    EXPECT_STREQ(BRCTYPE2MsoCssval(i), words[i].mso) << i;
  }
}

std::string border(const mso_word::BRCEX& brc, const mso_word::BRCEX* fallback,
                   const mso_word::BRCEX* compare, bool expected) {
  return support::cssOf([&](IWriteArchive* archive) {
    EXPECT_EQ(ConvertBorderEx(archive, &brc, "b", nullptr, fallback, compare), expected);
  });
}

TEST(Border, TypeNoneIsWrittenAsNone) {
  EXPECT_EQ(border({0, 8, 0, 0, 0}, nullptr, nullptr, true), "b:none;");
}

TEST(Border, AnUndefinedBorderWritesItsFallbackAndSaysNo) {
  EXPECT_EQ(border({1, 0, 0, 0, 0}, nullptr, nullptr, false), "");
  EXPECT_EQ(border({1, 0, 0, 0, 0}, &kRedDouble, nullptr, false), "b:1.500000pt double rgb(255,0,0);");
}

TEST(Border, ABorderThatEqualsTheComparedOneIsNone) {
  const mso_word::BRCEX sameButBlue = {0xFF0000, 12, 3, 4, 0};
  EXPECT_EQ(border(kRedDouble, nullptr, &sameButBlue, true), "b:none;");
  const mso_word::BRCEX wider = {0x0000FF, 13, 3, 4, 0};
  EXPECT_EQ(border(kRedDouble, nullptr, &wider, true), "b:1.500000pt double rgb(255,0,0);");
}

}  // namespace
}  // namespace pagerex

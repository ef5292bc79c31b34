#include <gtest/gtest.h>

#include "htmlwriter/css_props.h"
#include "htmlwriter/env.h"
#include "story/colour.h"
#include "support/markup.h"

namespace pagerex {
namespace {

namespace mask = span_mask;

std::string css(const KDRSpanProp& prop, int lineSpacing = -1, float baseSize = 10.5f) {
  return support::cssOf(
      [&](IWriteArchive* archive) { WriteChProps(&prop, archive, nullptr, lineSpacing, baseSize); });
}

template <class Field, class Value>
KDRSpanProp& set(KDRSpanProp& prop, PropMask bit, Field __SpanData::*field, Value value) {
  prop.*field = static_cast<Field>(value);
  prop.setPresent(bit);
  return prop;
}

template <class Field, class Value>
KDRSpanProp with(PropMask bit, Field __SpanData::*field, Value value) {
  KDRSpanProp prop;
  return set(prop, bit, field, value);
}

TEST(ChProps, NothingPresentWritesNothing) {
  EXPECT_EQ(css(KDRSpanProp()), "");
}

TEST(ChProps, ColourComesLowByteFirst) {
  EXPECT_EQ(css(with(mask::cv, &KDRSpanProp::cv, 0x0000FF)), "color:#FF0000;");
}

TEST(ChProps, LetterSpacingIsSigned) {
  EXPECT_EQ(css(with(mask::dxaSpace, &KDRSpanProp::dxaSpace, -25)), "letter-spacing:-1.250000pt;");
}

TEST(ChProps, BoldAbsentOffAndOn) {
  EXPECT_EQ(css(with(mask::fBold, &KDRSpanProp::fBold, 0)), "font-weight:normal;");
  EXPECT_EQ(css(with(mask::fBold, &KDRSpanProp::fBold, 1)), "font-weight:bold;");
}

TEST(ChProps, SwitchesHaveAWordForOnAndOff) {
  EXPECT_EQ(css(with(mask::fCaps, &KDRSpanProp::fCaps, 1)), "text-transform:uppercase;");
  EXPECT_EQ(css(with(mask::fCaps, &KDRSpanProp::fCaps, 0)), "text-transform:none;");
  EXPECT_EQ(css(with(mask::kcd, &KDRSpanProp::kcd, 3)), "font-emphasize:dot;");
  EXPECT_EQ(css(with(mask::kcd, &KDRSpanProp::kcd, 0)), "font-emphasize:none;");
  EXPECT_EQ(css(with(mask::fItalic, &KDRSpanProp::fItalic, 1)), "font-style:italic;");
  EXPECT_EQ(css(with(mask::fItalic, &KDRSpanProp::fItalic, 0)), "font-style:normal;");
  EXPECT_EQ(css(with(mask::fSmallCaps, &KDRSpanProp::fSmallCaps, 1)), "font-variant:small-caps;");
  EXPECT_EQ(css(with(mask::fSmallCaps, &KDRSpanProp::fSmallCaps, 0)), "font-variant:normal;");
}

TEST(ChProps, FlagsThatAreOffWriteNothing) {
  for (int on : {0, 1}) {
    EXPECT_EQ(css(with(mask::fEmboss, &KDRSpanProp::fEmboss, on)), on ? "color:gray;" : "");
    EXPECT_EQ(css(with(mask::fImprint, &KDRSpanProp::fImprint, on)), on ? "color:gray;" : "");
    EXPECT_EQ(css(with(mask::fOutline, &KDRSpanProp::fOutline, on)), on ? "font-weight:bold;" : "");
    EXPECT_EQ(css(with(mask::fShadow, &KDRSpanProp::fShadow, on)), on ? "font-weight:bold;" : "");
    EXPECT_EQ(css(with(mask::fVanish, &KDRSpanProp::fVanish, on)), on ? "display:none;" : "");
  }
}

TEST(ChProps, ABoldOutlinedRunWritesItsWeightTwice) {
  KDRSpanProp prop = with(mask::fBold, &KDRSpanProp::fBold, 1);
  set(prop, mask::fOutline, &KDRSpanProp::fOutline, 1);
  EXPECT_EQ(css(prop), "font-weight:bold;font-weight:bold;");
}

TEST(ChDecorations, EachKindJoinsTheOneProperty) {
  KDRSpanProp prop = with(mask::fStrike, &KDRSpanProp::fStrike, 1);
  set(prop, mask::kul, &KDRSpanProp::kul, 11);
  EXPECT_EQ(css(prop), "text-decoration:line-through underline;");
}

TEST(ChDecorations, SingleStrikeOverridesDouble) {
  KDRSpanProp prop = with(mask::fDStrike, &KDRSpanProp::fDStrike, 1);
  EXPECT_EQ(css(prop), "text-decoration:line-through;");
  set(prop, mask::fStrike, &KDRSpanProp::fStrike, 0);
  EXPECT_EQ(css(prop), "");
}

TEST(ChDecorations, RevisionsShowByTheirPresenceAlone) {
  KDRSpanProp prop = with(mask::fRMark, &KDRSpanProp::fRMark, 0);
  EXPECT_EQ(css(prop), "color:#0000FF;text-decoration:underline;");
  set(prop, mask::fRMarkDel, &KDRSpanProp::fRMarkDel, 0);
  EXPECT_EQ(css(prop), "color:#0000FF;color:#FF0000;text-decoration:underline line-through;");
}

TEST(ChDecorations, ARevisionLeavesAColourOfTheRunAlone) {
  KDRSpanProp prop = with(mask::fRMark, &KDRSpanProp::fRMark, 1);
  set(prop, mask::cv, &KDRSpanProp::cv, 0x00FF00);
  EXPECT_EQ(css(prop), "color:#00FF00;text-decoration:underline;");
}

TEST(ChDecorations, AnAutomaticColourIsNotWrittenAndARevisionMayAddItsOwn) {
  KDRSpanProp prop = with(mask::cv, &KDRSpanProp::cv, mso_word::kAutomaticColour);
  EXPECT_EQ(css(prop), "");
  set(prop, mask::fRMarkDel, &KDRSpanProp::fRMarkDel, 1);
  EXPECT_EQ(css(prop), "color:#FF0000;text-decoration:line-through;");
}

TEST(ChSize, AnOwnSizeIsHalfTheHalfPoints) {
  EXPECT_EQ(css(with(mask::hps, &KDRSpanProp::hps, 25)), "font-size:12.500000pt;");
}

TEST(ChSize, ASuperscriptWithoutSizeShrinksTheBase) {
  EXPECT_EQ(css(with(mask::iss, &KDRSpanProp::iss, 1)), "font-size:8.715000pt;vertical-align:super;");
  EXPECT_EQ(css(with(mask::iss, &KDRSpanProp::iss, 2), -1, 20), "font-size:16.600000pt;vertical-align:sub;");
  EXPECT_EQ(css(with(mask::iss, &KDRSpanProp::iss, 0)), "");
  EXPECT_EQ(css(with(mask::iss, &KDRSpanProp::iss, 3)), "");
}

TEST(ChSize, APositionShrinksToo) {
  EXPECT_EQ(css(with(mask::hpsPos, &KDRSpanProp::hpsPos, 6)), "font-size:8.715000pt;vertical-align:super;");
  EXPECT_EQ(css(with(mask::hpsPos, &KDRSpanProp::hpsPos, -6)), "font-size:8.715000pt;vertical-align:sub;");
  EXPECT_EQ(css(with(mask::hpsPos, &KDRSpanProp::hpsPos, 0)), "");
}

TEST(ChBackground, HighlightComesFromThePalette) {
  EXPECT_EQ(css(with(mask::highlight, &KDRSpanProp::highlight, 7)), "background:#FFFF00;");
  EXPECT_EQ(css(with(mask::highlight, &KDRSpanProp::highlight, 0)), "");
  EXPECT_EQ(css(with(mask::highlight, &KDRSpanProp::highlight, 17)), "background:#FFFFFF;");
}

TEST(ChBackground, ShadingComesBehindTheHighlight) {
  KDRSpanProp prop = with(mask::highlight, &KDRSpanProp::highlight, 2);
  prop.setPresent(mask::shd);
  EXPECT_EQ(css(prop), "background:#0000FF;");
  prop.shd = {0, 0x112233, 0};
  EXPECT_EQ(css(prop), "background:#0000FF;background:#332211;");
}

TEST(ChLineHeight, AnOddSpacingIsAPercentagePlusOne) {
  EXPECT_EQ(css(KDRSpanProp(), 241), "line-height:240%;");
}

TEST(ChLineHeight, AnEvenSpacingIsAtLeastTenAndAHalfAndTheSize) {
  EXPECT_EQ(css(KDRSpanProp(), 0), "line-height:10.5pt;");
  EXPECT_EQ(css(KDRSpanProp(), 400), "line-height:20.0pt;");
  EXPECT_EQ(css(KDRSpanProp(), 400, 30), "line-height:30.0pt;");
  EXPECT_EQ(css(with(mask::hps, &KDRSpanProp::hps, 96), 400), "font-size:48.000000pt;line-height:48.0pt;");
}

TEST(Colours, MixIsTheTruncatedMeanOfEachChannel) {
  EXPECT_EQ(MixColor(0xFF000000u, 0u), 0u);
  EXPECT_EQ(MixColor(0x00FF01FE, 0x00000001), 0x7F007Fu);
  EXPECT_EQ(MixColor(0xFFFFFF, 0xFFFFFF), 0xFFFFFFu);
}

TEST(Colours, AShadingsPatternDecides) {
  using mso_word::SHDEX;
  constexpr uint32_t kAuto = mso_word::kAutomaticColour;
  EXPECT_EQ(MixColor(SHDEX{1, 2, 0}), 2u);
  EXPECT_EQ(MixColor(SHDEX{1, 2, 1}), 1u);
  EXPECT_EQ(MixColor(SHDEX{0x02, 0x04, 2}), 3u);
  EXPECT_EQ(MixColor(SHDEX{kAuto, kAuto, 62}), 0x7F7F7Fu);
  EXPECT_EQ(MixColor(SHDEX{0xFF, 0xFF, 63}), 0x7F7F7Fu);
  EXPECT_EQ(MixColor(SHDEX{0xFF, 0xFF, 65535}), 0x7F7F7Fu);
}

TEST(Colours, ThePaletteHasSeventeenEntries) {
  const uint32_t redInTheLowByte[] = {0xFF000000, 0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0xFF00FF,
                                      0x0000FF,   0x00FFFF, 0xFFFFFF, 0x800000, 0x808000, 0x008000,
                                      0x800080,   0x000080, 0x008080, 0x808080, 0xC0C0C0};
  for (unsigned i = 0; i < 17; ++i) EXPECT_EQ(Ico2RGB(i), redInTheLowByte[i]) << i;
  EXPECT_EQ(Ico2RGB(17), 0xFFFFFFFFu);
}

TEST(BaseFontSize, FallsBackWithoutStyleOrEntry) {
  OutputFiles files;
  KHtmlConversionEnv conversion(files);
  conversion.styleFontSizes = {-1, -1, 0, 14.5f, -1};
  const KEnv env(conversion);
  EXPECT_EQ(GetBaseFontSize(&env, 1, 10.5f), 10.5f);
  EXPECT_EQ(GetBaseFontSize(&env, 2, 10.5f), 0.0f);
  EXPECT_EQ(GetBaseFontSize(&env, 3, 10.5f), 14.5f);
  EXPECT_EQ(GetBaseFontSize(&env, 4, 10.5f), 10.5f);
  EXPECT_EQ(GetBaseFontSize(&env, 4095, 11.0f), 11.0f);
  EXPECT_EQ(GetBaseFontSize(nullptr, 3, 12.0f), 12.0f);
}

}  // namespace
}  // namespace pagerex

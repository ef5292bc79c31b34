#include "wordreader/span_prop.h"

#include <gtest/gtest.h>

#include "support/sprms.h"

using support::Bytes;
using support::sprm;
using support::Sprms;

namespace {

KDRSpanProp Decode(const Sprms& sprms, const KDRSpanProp* base = nullptr, KDRSpanProp start = {}) {
  const ByteView bytes(sprms.bytes().data(), sprms.size());
  EXPECT_EQ(Sprms2SpanProp(KDWSprmList(bytes), &start, base), Status::kOk);
  return start;
}

KDRSpanProp Bold(uint8_t value) {
  KDRSpanProp prop;
  prop.fBold = value;
  return prop;
}

uint8_t ToggledBold(uint8_t operand, uint8_t baseBold) {
  const KDRSpanProp base = Bold(baseBold);
  return Decode({sprm(0x0835, operand)}, &base).fBold;
}

TEST(SpanProp, HasAFontSizeOf21HalfPointsByDefault) {
  EXPECT_EQ(Decode({}).hps, 21);
  EXPECT_FALSE(Decode({}).has(span_mask::hps));
}

TEST(SpanProp, HasItsDefaultsAfterAReset) {
  KDRSpanProp prop = Decode({sprm(0x4A43, 40), sprm(0x6870, 0), sprm(0x4A30, 3), sprm(0x4852, 50)});
  prop.Reset();
  EXPECT_EQ(prop.hps, 21);
  EXPECT_EQ(prop.cv, 0xFF000000u);
  EXPECT_EQ(prop.cvUl, 0xFF000000u);
  EXPECT_EQ(prop.istd, 4095);
  EXPECT_EQ(prop.wCharScale, 100);
  EXPECT_EQ(prop.rgftc[1], 1);
  EXPECT_EQ(prop.fUsePgsu, 1);
  EXPECT_EQ(prop.brc.colour, 0xFF000000u);
  EXPECT_EQ(prop.shd.foreground, 0xFF000000u);
  EXPECT_EQ(prop.shd.background, 0xFF000000u);
  for (uint8_t byte : prop.mask.bytes) EXPECT_EQ(byte, 0);
}

TEST(SpanProp, IsNotResetByDecoding) {
  const KDRSpanProp start = Decode({sprm(0x4A43, 40)});
  const KDRSpanProp prop = Decode({sprm(0x0835, 1)}, nullptr, start);
  EXPECT_EQ(prop.hps, 40);
  EXPECT_TRUE(prop.has(span_mask::hps));
}

TEST(Toggle, Of128TakesTheBasesValue) {
  EXPECT_EQ(ToggledBold(0x80, 1), 1);
  EXPECT_EQ(ToggledBold(0x80, 0), 0);
}

TEST(Toggle, Of129NegatesTheBasesValue) {
  EXPECT_EQ(ToggledBold(0x81, 1), 0);
  EXPECT_EQ(ToggledBold(0x81, 0), 1);
  EXPECT_EQ(ToggledBold(0x81, 7), 0);
}

TEST(Toggle, OfAnyOtherValueIsStoredAsItStands) {
  EXPECT_EQ(ToggledBold(0, 1), 0);
  EXPECT_EQ(ToggledBold(1, 0), 1);
  EXPECT_EQ(ToggledBold(0x7F, 0), 0x7F);
  EXPECT_EQ(ToggledBold(0xFF, 0), 0xFF);
}

TEST(Toggle, IsJudgedAgainstTheRecordItselfWithoutABase) {
  EXPECT_EQ(Decode({sprm(0x0835, 0x81)}, nullptr, Bold(1)).fBold, 0);
  EXPECT_EQ(Decode({sprm(0x0835, 1), sprm(0x0835, 0x81), sprm(0x0835, 0x81)}).fBold, 1);
}

TEST(SpanProp, TakesTheLaterOfTwoLanguageSprms) {
  EXPECT_EQ(Decode({sprm(0x486D, 1033), sprm(0x4873, 2052)}).lidDefault, 2052);
  EXPECT_EQ(Decode({sprm(0x4873, 2052), sprm(0x486D, 1033)}).lidDefault, 1033);
  EXPECT_EQ(Decode({sprm(0x486E, 1033), sprm(0x4874, 2052)}).lidFE, 2052);
}

TEST(SpanProp, KeepsRevisionFlagsAsZeroOrOne) {
  EXPECT_EQ(Decode({sprm(0x0800, 0x81)}).fRMarkDel, 1);
  EXPECT_EQ(Decode({sprm(0x0801, 0)}).fRMark, 0);
  EXPECT_TRUE(Decode({sprm(0x0801, 0)}).has(span_mask::fRMark));
}

TEST(SpanProp, SplitsASymbolIntoFontAndCharacter) {
  const KDRSpanProp prop = Decode({sprm(0x6A09, 0xF0B70003)});
  EXPECT_EQ(prop.ftcSym, 3);
  EXPECT_EQ(prop.xchSym, 0xF0B7);
}

TEST(SpanProp, KeepsSignedLengthsSigned) {
  const KDRSpanProp prop = Decode({sprm(0x8840, -20), sprm(0x4845, -6), sprm(0x484B, -1)});
  EXPECT_EQ(prop.dxaSpace, -20);
  EXPECT_EQ(prop.hpsPos, -6);
  EXPECT_EQ(prop.hpsKern, -1);
}

TEST(SpanProp, IgnoresTheOldBordersAndColours) {
  const KDRSpanProp prop = Decode({sprm(0x6865, 0x01010101), sprm(0x4866, 0x1234), sprm(0x2A42, 6)});
  for (uint8_t byte : prop.mask.bytes) EXPECT_EQ(byte, 0);
}

TEST(SpanProp, StopsAtAOneByteRest) {
  const KDRSpanProp prop = Decode({sprm(0x0835, 1), Bytes{0x36}});
  EXPECT_EQ(prop.fBold, 1);
  EXPECT_FALSE(prop.has(span_mask::fItalic));
}

TEST(SpanProp, CountsMissingBytesOfTheLastOperandAsZeros) {
  const KDRSpanProp prop = Decode({sprm(0x0835, 1), Bytes{0x70, 0x68, 0x11, 0x22}});
  EXPECT_EQ(prop.cv, 0x2211u);
  EXPECT_TRUE(prop.has(span_mask::cv));
  EXPECT_EQ(Decode({Bytes{0x43, 0x4A}}).hps, 0);
}

TEST(SpanProp, DecodesTheSameUnderBothNames) {
  const Bytes list = sprm(0x0835, 0x81);
  const KDRSpanProp base = Bold(1);
  KDRSpanProp prop;
  EXPECT_EQ(Sprms2MaskSpanPr(KDWSprmList(ByteView(list.data(), list.size())), &prop, &base), Status::kOk);
  EXPECT_EQ(prop.fBold, 0);
}

TEST(OverwriteByAnother, TakesWhatTheOtherHasSet) {
  KDRSpanProp prop = Decode({sprm(0x4A43, 40)});
  const KDRSpanProp other = Decode({sprm(0x0835, 1), sprm(0x6A09, 0x00020001)});
  prop.OverwriteByAnother(&other);
  EXPECT_EQ(prop.fBold, 1);
  EXPECT_EQ(prop.ftcSym, 1);
  EXPECT_EQ(prop.xchSym, 2);
  EXPECT_TRUE(prop.has(span_mask::fBold));
}

TEST(OverwriteByAnother, LeavesWhatTheOtherHasNotSet) {
  KDRSpanProp prop = Decode({sprm(0x4A43, 40)});
  KDRSpanProp other = Bold(1);
  other.hps = 99;
  prop.OverwriteByAnother(&other);
  EXPECT_EQ(prop.hps, 40);
  EXPECT_EQ(prop.fBold, 0);
  EXPECT_FALSE(prop.has(span_mask::fBold));
}

TEST(OverwriteByAnother, DoesNothingForNull) {
  KDRSpanProp prop = Decode({sprm(0x4A43, 40)});
  prop.OverwriteByAnother(nullptr);
  EXPECT_EQ(prop.hps, 40);
}

TEST(OverwriteByAnother, TakesTheWordsBehindTheRevisionDates) {
  KDRSpanProp prop;
  KDRSpanProp other = Decode({sprm(0x0800, 0), sprm(0x0801, 0)});
  other.unusedRMarkDel = 7;
  other.unusedRMark = 8;
  prop.OverwriteByAnother(&other);
  EXPECT_EQ(prop.unusedRMarkDel, 7);
  EXPECT_EQ(prop.unusedRMark, 8);
}

TEST(OverwriteByAnother, LeavesThoseWordsWithoutTheFlagsOfTheMarks) {
  KDRSpanProp prop;
  KDRSpanProp other = Decode({sprm(0x6864, 1), sprm(0x6805, 1)});
  other.unusedRMarkDel = 7;
  other.unusedRMark = 8;
  prop.OverwriteByAnother(&other);
  EXPECT_EQ(prop.unusedRMarkDel, 0);
  EXPECT_EQ(prop.unusedRMark, 0);
}

TEST(OverwriteByAnother, TakesAnOle2FlagByItsValue) {
  KDRSpanProp prop;
  KDRSpanProp other;
  other.fOle2 = 1;
  prop.OverwriteByAnother(&other);
  EXPECT_EQ(prop.fOle2, 1);
  EXPECT_TRUE(prop.has(span_mask::fOle2));
}

TEST(OverwriteByAnother, LeavesAnOle2FlagThatTheOtherHasCleared) {
  KDRSpanProp prop = Decode({sprm(0x080A, 1)});
  const KDRSpanProp other = Decode({sprm(0x080A, 0)});
  prop.OverwriteByAnother(&other);
  EXPECT_EQ(prop.fOle2, 1);
}

TEST(AssignBrcEx, CopiesTheBorder) {
  const Bytes operand = {1, 2, 3, 4, 5, 6, 0x67, 8};
  KDRBrc border;
  AssignBrcEx(border, ByteView(operand.data(), operand.size()));
  EXPECT_EQ(border.colour, 0x04030201u);
  EXPECT_EQ(border.width, 5);
  EXPECT_EQ(border.type, 6);
  EXPECT_EQ(border.space, 0x67);
  border.put_Nil();
  EXPECT_EQ(border.colour, 0xFF000000u);
  EXPECT_EQ(border.width, 0);
}

TEST(AssignShdex, CopiesTheShading) {
  const Bytes operand = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
  KDRShd shading;
  AssignShdex(shading, ByteView(operand.data(), operand.size()));
  EXPECT_EQ(shading.background, 0x08070605u);
  EXPECT_EQ(shading.pattern, 0x0A09);
  shading.put_Normal();
  EXPECT_EQ(shading.foreground, 0xFF000000u);
  EXPECT_EQ(shading.pattern, 0);
}

}  // namespace

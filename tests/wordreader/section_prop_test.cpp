#include "wordreader/section_prop.h"

#include <gtest/gtest.h>

#include "support/sprms.h"

using support::Bytes;
using support::ByteWriter;
using support::sprm;
using support::Sprms;

namespace {

KDRSectionProp Decode(const Sprms& sprms) {
  KDRSectionProp prop;
  EXPECT_EQ(Sprms2ZeloSectionProp(KDWSprmList(ByteView(sprms.bytes().data(), sprms.size())), &prop),
            Status::kOk);
  return prop;
}

Bytes ColumnWidth(uint8_t column, uint16_t width) {
  return sprm(0xF203, column | width << 8);
}
Bytes ColumnSpacing(uint8_t column, uint16_t spacing) {
  return sprm(0xF204, column | spacing << 8);
}

/// The private sprm of the document grid block.
Bytes Grid(uint8_t kind) {
  return sprm(0xD1FF, ByteWriter().u8(kind).fill(19, 0x11).take());
}

TEST(SectionProp, HasItsDefaults) {
  const KDRSectionProp prop = Decode({});
  EXPECT_EQ(prop.xaPage, 12240);
  EXPECT_EQ(prop.yaPage, 15840);
  EXPECT_EQ(prop.dxaLeft, 1800);
  EXPECT_EQ(prop.dxaRight, 1800);
  EXPECT_EQ(prop.dyaTop, 1440);
  EXPECT_EQ(prop.dyaBottom, 1440);
  EXPECT_EQ(prop.dyaHdrTop, 720);
  EXPECT_EQ(prop.dyaHdrBottom, 720);
  EXPECT_EQ(prop.dxaColumns, 720);
  EXPECT_EQ(prop.bkc, 2);
  EXPECT_EQ(prop.fEndnote, 1);
  EXPECT_EQ(prop.pgnStart, 1);
  EXPECT_EQ(prop.fEvenlySpaced, 1);
  EXPECT_EQ(prop.pgbOffsetFrom, 1);
  EXPECT_EQ(prop.dmPaperReq, 9);
  EXPECT_EQ(prop.fpc, 1);
  EXPECT_EQ(prop.nfcEdnRef, 2);
  EXPECT_EQ(prop.nFtn, 1);
  EXPECT_EQ(prop.nEdn, 1);
  EXPECT_EQ(prop.fUnlocked, 1);
  EXPECT_EQ(prop.ccolM1, 0);
  EXPECT_EQ(prop.brcTopEx.colour, 0xFF000000u);
  EXPECT_EQ(prop.brcTop.type, 0);
}

TEST(SectionProp, IsResetByDecoding) {
  KDRSectionProp prop = Decode({sprm(0x5026, 1), ColumnWidth(3, 4)});
  Sprms2ZeloSectionProp(KDWSprmList(), &prop);
  EXPECT_EQ(prop.dmPaperReq, 9);
  EXPECT_FALSE(prop.has(section_mask::dmPaperReq));
  EXPECT_FALSE(prop.hasColumnWidth(3));
}

TEST(SectionColumns, OfZeroMeanOneColumn) {
  EXPECT_EQ(Decode({sprm(0x500B, 0)}).ccolM1, 1);
  EXPECT_EQ(Decode({sprm(0x500B, 6)}).ccolM1, 7);
}

TEST(SectionColumns, HaveWidthsAndSpacingsByNumber) {
  const KDRSectionProp prop = Decode({ColumnWidth(0, 1000), ColumnWidth(89, 0xFFFF), ColumnSpacing(2, 720)});
  EXPECT_EQ(prop.rgdxaColumnWidth[0], 1000u);
  EXPECT_EQ(prop.rgdxaColumnWidth[89], 0xFFFFu);
  EXPECT_EQ(prop.rgdxaColumnSpacing[2], 720u);
}

TEST(SectionColumns, HaveAPresenceByteEach) {
  const KDRSectionProp prop = Decode({ColumnWidth(89, 1), ColumnSpacing(0, 1)});
  EXPECT_TRUE(prop.hasColumnWidth(89));
  EXPECT_FALSE(prop.hasColumnWidth(88));
  EXPECT_TRUE(prop.hasColumnSpacing(0));
  EXPECT_FALSE(prop.hasColumnSpacing(1));
}

TEST(SectionColumns, AreIgnoredFromNumber90On) {
  const KDRSectionProp prop =
      Decode({ColumnWidth(90, 1), ColumnWidth(255, 1), ColumnSpacing(90, 1), ColumnSpacing(255, 1)});
  for (uint8_t byte : prop.mask.bytes) EXPECT_EQ(byte, 0);
  for (uint32_t width : prop.rgdxaColumnWidth) EXPECT_EQ(width, 0u);
  for (uint32_t spacing : prop.rgdxaColumnSpacing) EXPECT_EQ(spacing, 0u);
}

TEST(SectionProp, SplitsThePageBorderWord) {
  const KDRSectionProp prop = Decode({sprm(0x522F, 0x0049)});
  EXPECT_EQ(prop.pgbApplyTo, 1);
  EXPECT_EQ(prop.pgbPageDepth, 1);
  EXPECT_EQ(prop.pgbOffsetFrom, 2);
}

TEST(SectionProp, KeepsSignedLengthsSigned) {
  const KDRSectionProp prop = Decode({sprm(0x9023, -1440), sprm(0x7030, -4096)});
  EXPECT_EQ(prop.dyaTop, -1440);
  EXPECT_EQ(prop.dxtCharSpace, -4096);
}

TEST(SectionGrid, IsTakenFromTheOperandBehindItsKind) {
  const KDRSectionProp prop = Decode({Grid(4)});
  EXPECT_TRUE(prop.has(section_mask::manuscript));
  for (uint8_t byte : prop.manuscript.bytes) EXPECT_EQ(byte, 0x11);
}

TEST(SectionGrid, OfAnotherKindIsIgnored) {
  const KDRSectionProp prop = Decode({Grid(3)});
  EXPECT_FALSE(prop.has(section_mask::manuscript));
  for (uint8_t byte : prop.manuscript.bytes) EXPECT_EQ(byte, 0);
}

TEST(SectionGrid, HasTheUsualGridAsItsValueUnlessASprmSetIt) {
  static constexpr uint8_t kUsual[19] = {0xD0, 0x2F, 0xE0, 0x3D, 0,   20, 0, 20, 0, 0,
                                         0,    0,    128,  0,    255, 2,  0, 0,  0};
  const auto unset = Decode({}).GetValue(&__SectionData::manuscript, section_mask::manuscript);
  EXPECT_EQ(std::memcmp(unset.bytes, kUsual, sizeof(kUsual)), 0);
  const auto set = Decode({Grid(4)}).GetValue(&__SectionData::manuscript, section_mask::manuscript);
  EXPECT_EQ(set.bytes[0], 0x11);
}

TEST(SectionProp, CountsMissingBytesOfTheLastOperandAsZeros) {
  EXPECT_EQ(Decode({Bytes{0x1F, 0xB0, 0x11}}).xaPage, 0x11);
  EXPECT_EQ(Decode({Bytes{0x0B, 0x50}}).ccolM1, 1);
}

}  // namespace

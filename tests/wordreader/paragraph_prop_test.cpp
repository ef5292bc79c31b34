#include "wordreader/paragraph_prop.h"

#include <gtest/gtest.h>

#include "support/sprms.h"

using support::Bytes;
using support::ByteWriter;
using support::sprm;
using support::Sprms;

namespace {

KDRParagraphProp Decode(const Sprms& sprms, const KDRParagraphProp* base = nullptr) {
  KDRParagraphProp prop;
  const KDWSprmList list(ByteView(sprms.bytes().data(), sprms.size()));
  EXPECT_EQ(Sprms2ParagraphProp(list, &prop, nullptr, nullptr, base), Status::kOk);
  return prop;
}

KDRTab TabsOf(const Bytes& operand) {
  KDRTab tabs;
  __AssignKDRtab(tabs, ByteView(operand.data(), operand.size()));
  return tabs;
}

TEST(ParagraphProp, HasItsDefaultsAfterAReset) {
  KDRParagraphProp prop = Decode({sprm(0x6412, 0), sprm(0x2640, 1), sprm(0x4439, 0), sprm(0x2433, 0)});
  prop.Reset();
  EXPECT_EQ(prop.dyaLine, 240);
  EXPECT_EQ(prop.fMultLinespace, 1);
  EXPECT_EQ(prop.lvl, 9);
  EXPECT_EQ(prop.wAlignFont, 4);
  EXPECT_EQ(prop.fKinsoku, 1);
  EXPECT_EQ(prop.fUsePgsuSettings, 1);
  EXPECT_EQ(prop.fWordWrap, 1);
  EXPECT_EQ(prop.fOverflowPunct, 1);
  EXPECT_EQ(prop.brcBar.colour, 0xFF000000u);
  EXPECT_EQ(prop.shd.background, 0xFF000000u);
  for (uint8_t byte : prop.mask.bytes) EXPECT_EQ(byte, 0);
}

TEST(ParagraphProp, JudgesTogglesAgainstTheBase) {
  KDRParagraphProp base;
  base.fKeep = 1;
  base.fLocked = 1;
  EXPECT_EQ(Decode({sprm(0x2405, 0x80)}, &base).fKeep, 1);
  EXPECT_EQ(Decode({sprm(0x2405, 0x81)}, &base).fKeep, 0);
  EXPECT_EQ(Decode({sprm(0x2430, 0x80)}, &base).fLocked, 1);
}

TEST(ParagraphProp, SplitsTheLineSpacing) {
  const KDRParagraphProp prop = Decode({sprm(0x6412, 0x0000FE98)});
  EXPECT_EQ(prop.dyaLine, -360);
  EXPECT_EQ(prop.fMultLinespace, 0);
}

TEST(ParagraphProp, SplitsTheFrameHeight) {
  const KDRParagraphProp prop = Decode({sprm(0x442B, 0x8123)});
  EXPECT_EQ(prop.wHeightAbs, 0x123);
  EXPECT_EQ(prop.fMinHeight, 1);
  EXPECT_EQ(Decode({sprm(0x442B, 0x7123)}).fMinHeight, 0);
}

TEST(ParagraphProp, KeepsAnchorsAndLowBitsOfThePosition) {
  EXPECT_EQ(Decode({sprm(0x261B, 0x9F)}).pc, 0x93);
}

TEST(ParagraphProp, ClearsTheUpperByteOfTheDropCap) {
  EXPECT_EQ(Decode({sprm(0x442C, 0xFF1A)}).dcs, 0x1A);
}

TEST(ParagraphProp, TellsAPrivateSprmByItsFirstByte) {
  EXPECT_EQ(Decode({sprm(0xC5FF, Bytes{2})}).fHasPrivate, 1);
  EXPECT_TRUE(Decode({sprm(0xC5FF, Bytes{2})}).has(paragraph_mask::fHasPrivate));
  EXPECT_EQ(Decode({sprm(0xC5FF, Bytes{1})}).fHasPrivate, 0);
  EXPECT_FALSE(Decode({sprm(0xC5FF, Bytes{1})}).has(paragraph_mask::fHasPrivate));
}

TEST(ParagraphProp, StoresAListNumberWithoutLists) {
  const KDRParagraphProp prop = Decode({sprm(0x260A, 2), sprm(0x460B, 5)});
  EXPECT_EQ(prop.ilvl, 2);
  EXPECT_EQ(prop.ilfo, 5);
  EXPECT_TRUE(prop.has(paragraph_mask::ilfo));
  EXPECT_TRUE(prop.has(paragraph_mask::ilvl));
}

TEST(ParagraphProp, IgnoresTheOldIndents) {
  const KDRParagraphProp prop = Decode({sprm(0x840F, 720), sprm(0x8411, 720), sprm(0x840E, 720)});
  for (uint8_t byte : prop.mask.bytes) EXPECT_EQ(byte, 0);
}

TEST(Tabs, AreReadWithPositionsAlignmentAndLeader) {
  const KDRTab tabs =
      TabsOf(ByteWriter().u8(1).u16(0xFFFF).u8(2).u16(720).u16(1440).u8(0x0A).u8(0x02).take());
  EXPECT_EQ(tabs.deleteCount, 1);
  EXPECT_EQ(tabs.deletePositions[0], -1);
  EXPECT_EQ(tabs.addCount, 2);
  EXPECT_EQ(tabs.addPositions[1], 1440);
  EXPECT_EQ(tabs.descriptors[0], 0x0A);
  EXPECT_EQ(tabs.descriptors[1], 0x02);
}

TEST(Tabs, AreCutAt64) {
  ByteWriter operand;
  operand.u8(70);
  for (unsigned i = 0; i < 70; ++i) operand.u16(i);
  operand.u8(80);
  for (unsigned i = 0; i < 80; ++i) operand.u16(1000 + i);
  for (unsigned i = 0; i < 80; ++i) operand.u8(i);
  const KDRTab tabs = TabsOf(operand.take());
  EXPECT_EQ(tabs.deleteCount, 64);
  EXPECT_EQ(tabs.addCount, 64);
  EXPECT_EQ(tabs.addPositions[0], 1000);
  EXPECT_EQ(tabs.descriptors[63], 63);
}

TEST(Tabs, ThatAreMissingCountAsZeros) {
  const KDRTab tabs = TabsOf({0, 3, 0xD0, 0x02});
  EXPECT_EQ(tabs.addCount, 3);
  EXPECT_EQ(tabs.addPositions[0], 720);
  EXPECT_EQ(tabs.addPositions[2], 0);
  EXPECT_EQ(TabsOf({}).addCount, 0);
}

TEST(Tabs, TakeThePlaceOfThoseBefore) {
  KDRTab tabs = TabsOf(ByteWriter().u8(0).u8(2).u16(1).u16(2).u8(3).u8(4).take());
  const Bytes one = ByteWriter().u8(0).u8(1).u16(9).u8(5).take();
  __AssignKDRtab(tabs, ByteView(one.data(), one.size()));
  EXPECT_EQ(tabs.addCount, 1);
  EXPECT_EQ(tabs.addPositions[1], 0);
  tabs.put_Nil();
  EXPECT_EQ(tabs.addCount, 0);
}

TEST(Tabs, ClearTheirDefaultEntryAlone) {
  KDRTab tabs = TabsOf({0, 1, 9, 0, 5});
  tabs.defaultAlignment = tabs.defaultLeader = 3;
  tabs.put_DefaultTBD();
  EXPECT_EQ(tabs.defaultAlignment, 0);
  EXPECT_EQ(tabs.defaultLeader, 0);
  EXPECT_EQ(tabs.addCount, 1);
}

TEST(ListPapx, BringsIndentsAndTabsOnly) {
  const Sprms level{sprm(0x845E, 720), sprm(0x8460, -360), support::tabsSprm({{720}}), sprm(0x845D, 99),
                    sprm(0x2461, 1)};
  KDRParagraphProp prop;
  ApplyListPapx(&prop, ByteView(level.bytes().data(), level.size()));
  EXPECT_EQ(prop.dxaLeft, 720);
  EXPECT_EQ(prop.dxaLeft1, -360);
  EXPECT_EQ(prop.tabs.addPositions[0], 720);
  EXPECT_EQ(prop.dxaRight, 0);
  EXPECT_EQ(prop.jc, 0);
}

TEST(ListPapx, SetsThePresenceBitsOfWhatItBrings) {
  const Sprms level{sprm(0x845E, 720), sprm(0x2461, 1)};
  KDRParagraphProp prop;
  ApplyListPapx(&prop, ByteView(level.bytes().data(), level.size()));
  EXPECT_TRUE(prop.has(paragraph_mask::dxaLeft));
  EXPECT_FALSE(prop.has(paragraph_mask::dxaLeft1));
  EXPECT_FALSE(prop.has(paragraph_mask::jc));
}

}  // namespace

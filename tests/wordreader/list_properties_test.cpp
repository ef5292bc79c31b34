#include <gtest/gtest.h>

#include "wordreader/list_table.h"
#include "wordreader/memory_storage.h"
#include "wordreader/paragraph_prop.h"
#include "wordreader/style_merger.h"

using support::Bytes;
using support::List;
using support::ListLevel;
using support::sprm;
using support::Sprms;
using support::Style;
using support::WordDocument;

namespace {

namespace mask = paragraph_mask;

Bytes Level(uint8_t ilvl) {
  return sprm(0x260A, ilvl);
}
Bytes Number(uint16_t ilfo) {
  return sprm(0x460B, ilfo);
}
Bytes Left(int16_t twips) {
  return sprm(0x845E, twips);
}

/// List 1 has nine levels: level 0 is indented by 720 twips with a hanging number and a tab stop, level 1 by
/// 1440 twips, the others not at all. List 2 has one level, indented by 300.
WordDocument WithLists() {
  WordDocument source;
  source.list({.lsid = 1,
               .levels = {{.papx = {Left(720), sprm(0x8460, -360), support::tabsSprm({{720}})}},
                          {.papx = {Left(1440)}}}});
  source.list({.lsid = 2, .levels = {{.papx = {Left(300)}}}, .simple = true});
  return source;
}

struct Decoder {
  explicit Decoder(const WordDocument& source = WithLists()) : opened(source) {}

  KDRParagraphProp operator()(const Sprms& sprms, KDRParagraphProp start = {}) {
    const KDWSprmList list(ByteView(sprms.bytes().data(), sprms.size()));
    Sprms2ParagraphProp(list, &start, &opened.document.GetListTable(), &opened.document);
    return start;
  }

  OpenedDocument opened;
};

TEST(ListProperties, ApplyWhenTheNumberFollowsTheLevel) {
  const KDRParagraphProp prop = Decoder()({Level(1), Number(1)});
  EXPECT_EQ(prop.dxaLeft, 1440);
  EXPECT_TRUE(prop.has(mask::ilvl));
  EXPECT_TRUE(prop.has(mask::ilfo));
}

TEST(ListProperties, ApplyWhenTheLevelFollowsTheNumber) {
  EXPECT_EQ(Decoder()({Number(1), Level(1)}).dxaLeft, 1440);
}

TEST(ListProperties, StandAsIfTheyWereDefaults) {
  const KDRParagraphProp prop = Decoder()({Level(0), Number(1)});
  EXPECT_EQ(prop.dxaLeft, 720);
  EXPECT_EQ(prop.dxaLeft1, -360);
  EXPECT_EQ(prop.tabs.addPositions[0], 720);
  EXPECT_FALSE(prop.has(mask::dxaLeft));
  EXPECT_FALSE(prop.has(mask::dxaLeft1));
  EXPECT_FALSE(prop.has(mask::tabs));
}

TEST(ListProperties, GiveWayToASprmBehindThem) {
  const KDRParagraphProp prop = Decoder()({Level(0), Number(1), Left(99)});
  EXPECT_EQ(prop.dxaLeft, 99);
  EXPECT_TRUE(prop.has(mask::dxaLeft));
}

TEST(ListProperties, OverwriteASprmBeforeThem) {
  const KDRParagraphProp prop = Decoder()({Left(99), Level(0), Number(1)});
  EXPECT_EQ(prop.dxaLeft, 720);
  EXPECT_FALSE(prop.has(mask::dxaLeft));
}

TEST(ListProperties, StandAtThePlaceOfTheSecondOfBoth) {
  const KDRParagraphProp prop = Decoder()({Number(1), Left(99), Level(0)});
  EXPECT_EQ(prop.dxaLeft, 720);
  EXPECT_FALSE(prop.has(mask::dxaLeft));
}

TEST(ListProperties, ClearThePresenceBitsAlsoOfWhatTheLevelDoesNotBring) {
  const KDRParagraphProp prop = Decoder()({Left(99), sprm(0x8460, 98), Level(5), Number(1)});
  EXPECT_EQ(prop.dxaLeft, 99);
  EXPECT_EQ(prop.dxaLeft1, 98);
  EXPECT_FALSE(prop.has(mask::dxaLeft));
  EXPECT_FALSE(prop.has(mask::dxaLeft1));
}

TEST(ListProperties, NeedBothSprms) {
  EXPECT_EQ(Decoder()({Number(1)}).dxaLeft, 0);
  EXPECT_EQ(Decoder()({Level(0)}).dxaLeft, 0);
}

TEST(ListProperties, TakeTheOtherOneFromTheRecordThatIsDecodedOver) {
  Decoder decode;
  const KDRParagraphProp style = decode({Level(0), Number(1)});
  EXPECT_EQ(decode({Level(1)}, style).dxaLeft, 1440);
  EXPECT_EQ(decode({Number(2)}, style).dxaLeft, 300);
}

TEST(ListProperties, ApplyAgainWithEachFurtherSprm) {
  EXPECT_EQ(Decoder()({Level(0), Number(1), Level(1)}).dxaLeft, 1440);
}

TEST(ListProperties, DoNotApplyForANumberAboveTheCountOfLists) {
  const KDRParagraphProp prop = Decoder()({Left(99), Level(0), Number(3)});
  EXPECT_EQ(prop.ilfo, 3);
  EXPECT_TRUE(prop.has(mask::ilfo));
  EXPECT_EQ(prop.dxaLeft, 99);
  EXPECT_TRUE(prop.has(mask::dxaLeft));
}

TEST(ListProperties, DoNotApplyForNumberZero) {
  const KDRParagraphProp prop = Decoder()({Left(99), Level(0), Number(0)});
  EXPECT_EQ(prop.dxaLeft, 99);
  EXPECT_TRUE(prop.has(mask::dxaLeft));
}

TEST(ListProperties, DoNotApplyForALevelThatTheListDoesNotHave) {
  const KDRParagraphProp prop = Decoder()({Left(99), Level(1), Number(2)});
  EXPECT_EQ(prop.dxaLeft, 99);
  EXPECT_TRUE(prop.has(mask::dxaLeft));
  EXPECT_EQ(Decoder()({Left(99), Level(255), Number(1)}).dxaLeft, 99);
}

TEST(ListProperties, DoNotApplyInADocumentWithoutLists) {
  const KDRParagraphProp prop = Decoder(WordDocument())({Left(99), Level(0), Number(1)});
  EXPECT_EQ(prop.dxaLeft, 99);
  EXPECT_EQ(prop.ilfo, 1);
}

TEST(ListProperties, OfAnOverridingLevelTakeThePlaceOfTheDefinitions) {
  WordDocument source;
  source.listDefinition({.lsid = 1, .levels = {{.papx = {Left(720)}}}});
  source.listOverride({.lsid = 1, .levels = {{.level = 0, .format = ListLevel{.papx = {Left(50)}}}}});
  EXPECT_EQ(Decoder(source)({Level(0), Number(1)}).dxaLeft, 50);
}

TEST(ListProperties, StandBetweenTheStyleAndItsOwnSprms) {
  WordDocument source = WithLists();
  source.style(0, Style().papx({Left(11), sprm(0x8460, 12)}));
  source.style(1, Style().basedOn(0).papx({Level(1), Number(1), sprm(0x8460, 13)}));
  OpenedDocument opened(source);
  KStyleMerger merger;
  EXPECT_EQ(merger.Init(&opened.document), Status::kOk);
  const KDRParagraphProp* merged = merger.GetMergedPapx(1);
  EXPECT_EQ(merged->dxaLeft, 1440);
  EXPECT_FALSE(merged->has(mask::dxaLeft));
  EXPECT_EQ(merged->dxaLeft1, 13);
}

TEST(StyleMerger, TakesTheStylesAndFontsOfItsDocument) {
  WordDocument source({.styleSheet = {.defaultFontAscii = 3}});
  source.style(20, Style().chpx({sprm(0x4A43, 40)}));
  OpenedDocument opened(source);
  KStyleMerger merger;
  merger.Init(&opened.document);
  EXPECT_EQ(merger.GetMergedChpxAtPStyle(20)->hps, 40);
  EXPECT_EQ(merger.GetDefaultChpx()->rgftc[0], 3);
}

}  // namespace

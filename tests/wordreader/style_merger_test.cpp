#include "wordreader/style_merger.h"

#include <gtest/gtest.h>

#include <random>

#include "support/word_tables.h"
#include "wordreader/style_sheet.h"

using support::Bytes;
using support::sprm;
using support::Sprms;
using support::Style;
using support::StyleKind;
using support::StyleSheetHeader;

namespace {

/// A merger over a style sheet that is read from bytes, without lists.
struct Merged {
  explicit Merged(Bytes table) : bytes(std::move(table)) {
    sheet.ReadRecord(ByteView(bytes.data(), bytes.size()), allocator);
    merger.Init(sheet, nullptr, nullptr);
  }
  explicit Merged(const std::vector<std::optional<Style>>& styles, const StyleSheetHeader& header = {})
      : Merged(support::styleSheetTable(styles, header)) {}

  KDRSpanProp All(int charStyle, int paraStyle) {
    KDRSpanProp span;
    merger.GetMergedChpxAll(span, charStyle, paraStyle);
    return span;
  }

  ChainAllocator allocator;
  Bytes bytes;
  KDRStyleSheet sheet;
  KStyleMerger merger;
};

constexpr int kNone = 0xFFF;

Sprms Bold(uint8_t value) {
  return {sprm(0x0835, value)};
}
Sprms Size(uint16_t halfPoints) {
  return {sprm(0x4A43, halfPoints)};
}
Sprms Keep(uint8_t value) {
  return {sprm(0x2405, value)};
}
Style Character() {
  return Style().kind(StyleKind::kCharacter);
}

TEST(StyleMerger, NeedsADocument) {
  EXPECT_EQ(KStyleMerger().Init(nullptr), Status::kInvalidArgument);
}

TEST(StyleMerger, CopiesTheDefaultsForAStyleWithoutABase) {
  Merged sheet({Style().chpx(Size(24))}, {.defaultFontAscii = 3, .defaultFontFarEast = 4});
  const KDRSpanProp* span = sheet.merger.GetMergedChpxAtPStyle(0);
  EXPECT_EQ(span->hps, 24);
  EXPECT_EQ(span->rgftc[0], 3);
  EXPECT_EQ(span->rgftc[1], 4);
  EXPECT_FALSE(span->has(span_mask::rgftc0));
  EXPECT_EQ(sheet.merger.GetMergedPapx(0)->dyaLine, 240);
}

TEST(StyleMerger, HasTheDefaultFontsOfItsOwnDocument) {
  const Merged first({Style()}, {.defaultFontAscii = 3, .defaultFontComplex = 9});
  const Merged second({Style()}, {.defaultFontAscii = 7});
  EXPECT_EQ(first.merger.GetDefaultChpx()->rgftc[0], 3);
  EXPECT_EQ(first.merger.GetDefaultChpx()->rgftc[2], 9);
  EXPECT_EQ(second.merger.GetDefaultChpx()->rgftc[0], 7);
  EXPECT_EQ(second.merger.GetDefaultPapx()->lvl, 9);
}

TEST(StyleMerger, MergesTheWholeChainWithItsPresenceBits) {
  Merged sheet({Style().papx({sprm(0x845E, 100)}), Style().basedOn(0).papx(Keep(1)),
                Style().basedOn(1).papx({sprm(0x2461, 1)})});
  const KDRParagraphProp* merged = sheet.merger.GetMergedPapx(2);
  EXPECT_EQ(merged->dxaLeft, 100);
  EXPECT_EQ(merged->fKeep, 1);
  EXPECT_EQ(merged->jc, 1);
  EXPECT_TRUE(merged->has(paragraph_mask::dxaLeft));
  EXPECT_TRUE(merged->has(paragraph_mask::fKeep));
}

TEST(StyleMerger, JudgesTogglesAgainstTheBase) {
  Merged sheet({Style().chpx(Bold(1)).papx(Keep(1)), Style().basedOn(0).chpx(Bold(0x81)).papx(Keep(0x81))});
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(1)->fBold, 0);
  EXPECT_EQ(sheet.merger.GetMergedPapx(1)->fKeep, 0);
}

TEST(StyleMerger, MergesEachStyleOnce) {
  Merged sheet({Style().chpx(Bold(1)), Style().basedOn(0)});
  const KDRSpanProp* first = sheet.merger.GetMergedChpxAtPStyle(1);
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(1), first);
  EXPECT_NE(sheet.merger.GetMergedChpx(1), first);
}

TEST(StyleMerger, HasNoRecordForAStyleThatIsNotThere) {
  Merged sheet({Style(), {}});
  for (int istd : {1, 2, 4095, 70000, -1}) {
    EXPECT_EQ(sheet.merger.GetMergedPapx(istd), nullptr);
    EXPECT_EQ(sheet.merger.GetMergedChpx(istd), nullptr);
    EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(istd), nullptr);
  }
}

TEST(StyleMerger, HasNoRecordForAStyleWithoutTheGroup) {
  Merged sheet({Character().chpx(Bold(1)), Style().groupCount(1)});
  EXPECT_EQ(sheet.merger.GetMergedPapx(0), nullptr);
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(1), nullptr);
}

TEST(StyleMerger, TakesNothingThroughABaseWithoutTheGroup) {
  Merged sheet({Style().papx(Keep(1)), Character().basedOn(0), Style().basedOn(1).papx({sprm(0x2406, 0x81)})},
               {.defaultFontAscii = 3});
  const KDRParagraphProp* merged = sheet.merger.GetMergedPapx(2);
  EXPECT_EQ(merged->fKeep, 0);
  EXPECT_EQ(merged->fKeepFollow, 1);
}

TEST(StyleMerger, MergesCharacterStylesThroughABaseWithoutTheGroup) {
  Merged sheet({Style().groupCount(1), Character().basedOn(0).chpx(Bold(0x81))}, {.defaultFontAscii = 3});
  EXPECT_EQ(sheet.merger.GetMergedChpx(1)->fBold, 1);
  EXPECT_EQ(sheet.merger.GetMergedChpx(1)->rgftc[0], 0);
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(1)->fBold, 1);
}

TEST(StyleMerger, TakesNothingFromABaseThatIsNotThere) {
  Merged sheet({{}, Style().basedOn(0).chpx(Size(30)), Style().basedOn(77).chpx(Size(31))},
               {.defaultFontAscii = 3});
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(1)->hps, 30);
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(1)->rgftc[0], 0);
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(2)->hps, 31);
}

TEST(StyleCycle, CountsAStyleThatIsItsOwnBaseAsHavingNone) {
  Merged sheet({Style().basedOn(0).chpx(Size(30))}, {.defaultFontAscii = 3});
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(0)->hps, 30);
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(0)->rgftc[0], 3);
}

TEST(StyleCycle, EndsWhereAStyleIsMetAgain) {
  // 0 is based on 1, 1 on 2, and 2 on 1 again: 1 has no base.
  Merged sheet({Style().basedOn(1).chpx({sprm(0x0836, 1)}), Style().basedOn(2).chpx(Bold(0x81)),
                Style().basedOn(1).chpx(Size(30))});
  const KDRSpanProp* merged = sheet.merger.GetMergedChpxAtPStyle(0);
  EXPECT_EQ(merged->fItalic, 1);
  EXPECT_EQ(merged->fBold, 1);
  EXPECT_EQ(merged->hps, 21);
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(2)->fBold, 1);
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(2)->hps, 30);
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(1)->hps, 21);
}

TEST(StyleMerger, ResolvesTheLongestChain) {
  std::vector<std::optional<Style>> styles;
  styles.push_back(Style().chpx(Size(40)));
  for (uint16_t istd = 1; istd < 4095; ++istd) styles.push_back(Style().basedOn(istd - 1));
  Merged sheet(styles);
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(4094)->hps, 40);
  EXPECT_EQ(sheet.merger.GetMergedPapx(4094)->dyaLine, 240);
}

TEST(StyleMerger, ResolvesAsManyStylesAsASheetCanHold) {
  std::vector<std::optional<Style>> styles;
  for (uint32_t istd = 0; istd < 0xFFFF; ++istd) styles.push_back(Style().basedOn((istd + 1) % 4095));
  Merged sheet(styles);
  for (int istd = 0; istd < 0xFFFF; ++istd) ASSERT_NE(sheet.merger.GetMergedChpx(istd), nullptr);
}

TEST(StyleMerger, ResolvesStyleNumber4095ByItself) {
  std::vector<std::optional<Style>> styles(4095);
  styles.push_back(Style().chpx(Size(40)));
  Merged sheet(styles);
  EXPECT_EQ(sheet.merger.GetMergedChpxAtPStyle(4095)->hps, 40);
}

TEST(MergedChpxAll, GivesTheDefaultsWithoutStyles) {
  Merged sheet({Style().chpx(Bold(1))}, {.defaultFontAscii = 3});
  const KDRSpanProp span = sheet.All(kNone, kNone);
  EXPECT_EQ(span.fBold, 0);
  EXPECT_EQ(span.rgftc[0], 3);
}

TEST(MergedChpxAll, GivesTheParagraphStyleWithoutACharacterStyle) {
  Merged sheet({Style().chpx(Size(30))});
  EXPECT_EQ(sheet.All(kNone, 0).hps, 30);
}

TEST(MergedChpxAll, LaysTheCharacterStyleOverTheParagraphStyle) {
  Merged sheet({Style().chpx({sprm(0x4A43, 30), sprm(0x0836, 1)}), Character().chpx(Size(40))});
  const KDRSpanProp span = sheet.All(1, 0);
  EXPECT_EQ(span.hps, 40);
  EXPECT_EQ(span.fItalic, 1);
}

TEST(MergedChpxAll, LeavesAFieldThatTheCharacterStyleHasNotSet) {
  Merged sheet({Style().chpx(Size(30)), Character().chpx({sprm(0x0836, 1)})});
  EXPECT_EQ(sheet.merger.GetMergedChpx(1)->hps, 21);
  EXPECT_EQ(sheet.All(1, 0).hps, 30);
}

TEST(MergedChpxAll, MakesABoldCharacterStyleInABoldParagraphStyleNotBold) {
  Merged sheet({Style().chpx(Bold(1)), Character().chpx(Bold(0x81)), Style()});
  EXPECT_EQ(sheet.All(1, 0).fBold, 0);
  EXPECT_EQ(sheet.All(1, 2).fBold, 1);
}

TEST(MergedChpxAll, JudgesTogglesAgainstTheDefaultsWithoutAParagraphStyle) {
  Merged sheet({Style().chpx(Bold(1)), Character().chpx(Bold(0x81))});
  EXPECT_EQ(sheet.All(1, kNone).fBold, 1);
}

TEST(MergedChpxAll, KeepsWhatTheRecordHeldForAParagraphStyleThatIsNotThere) {
  Merged sheet({Style()});
  KDRSpanProp span;
  span.hps = 77;
  sheet.merger.GetMergedChpxAll(span, kNone, 5);
  EXPECT_EQ(span.hps, 77);
}

TEST(MergedChpxAll, BringsNothingFromACharacterStyleThatIsNotThere) {
  Merged sheet({Style().chpx(Size(30))});
  EXPECT_EQ(sheet.All(9, 0).hps, 30);
}

TEST(StyleGroups, AreGivenBehindTheirSizeWord) {
  const Merged sheet({Style().papx(Keep(1)).chpx(Bold(1))});
  EXPECT_EQ(sheet.merger.GetPapx(0).u16(2), 0x2405);
  EXPECT_EQ(sheet.merger.GetPapx(0).size(), 5u);
  EXPECT_EQ(sheet.merger.GetChpx(0).u16(0), 0x0835);
  EXPECT_TRUE(sheet.merger.GetChpx(9).empty());
}

TEST(StyleGroups, AreGivenAsLists) {
  const Merged sheet({Style().chpx(Bold(1)), Style().groupCount(1)});
  KDWSprmList list;
  EXPECT_EQ(sheet.merger.GetChpxSprms(&list, 0), Status::kOk);
  EXPECT_EQ(list.FindSprm(0x0835, nullptr), Status::kOk);
  EXPECT_EQ(sheet.merger.GetChpxSprms(&list, 1), Status::kFailure);
  EXPECT_EQ(list.FindSprm(0x0835, nullptr), Status::kFailure);
}

/// A paragraph style whose character group is so large that its size word is the opcode of sprmPFKeep.
TEST(StyleGroups, OfParagraphsAreWalkedTwoWordsTooFar) {
  Merged sheet({Style().chpx(Bytes(0x2405))});
  EXPECT_TRUE(sheet.merger.GetMergedPapx(0)->has(paragraph_mask::fKeep));
}

TEST(StyleGroups, OfCharactersAreWalkedToTheirEnd) {
  // The next style's size word would be read as sprmCFBold.
  Merged sheet({Character(), Character().rawRecord(Bytes(0x0835))});
  EXPECT_FALSE(sheet.merger.GetMergedChpx(0)->has(span_mask::fBold));
}

TEST(StyleGroups, AreWalkedOnlyToTheEndOfTheSheet) {
  Merged sheet({Style().kind(StyleKind::kNumbering).papx(Keep(1))});
  EXPECT_EQ(sheet.merger.GetMergedPapx(0)->fKeep, 1);
}

TEST(HostileStyleSheet, IsReadAndMergedWithinItsBytes) {
  const Bytes table =
      support::styleSheetTable({Style().name("A").papx(Keep(1)).chpx(Bold(1)),
                                Style().basedOn(0).papx({support::tabsSprm({{1}, {2}})}),
                                Character().basedOn(1).chpx(Size(9)), Style().kind(StyleKind::kTable)},
                               {});
  std::mt19937 random(7);
  for (int i = 0; i < 3000; ++i) {
    Bytes damaged = table;
    for (int j = 0; j < 3; ++j) damaged[random() % damaged.size()] = static_cast<uint8_t>(random());
    damaged.resize(random() % 2 ? damaged.size() : random() % damaged.size());
    Merged sheet{Bytes(damaged)};
    for (int istd = 0; istd < 5; ++istd) {
      sheet.merger.GetMergedPapx(istd);
      sheet.All(istd, 4 - istd);
    }
  }
}

}  // namespace

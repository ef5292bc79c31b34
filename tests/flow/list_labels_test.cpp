#include "flow/list_labels.h"

#include <gtest/gtest.h>

#include "flow/list_bytes.h"

namespace pagerex {
namespace {

using namespace std::literals;

constexpr uint8_t kBullet = 23, kNone = 255;

Bytes fontTable(const std::vector<std::u16string_view>& names, uint8_t characterSet = 0) {
  Bytes table;
  append(table, names.size(), 2);
  append(table, 0, 2);
  for (const std::u16string_view name : names) {
    append(table, 39 + 2 * (name.size() + 1), 1);
    Bytes record(39);
    record[3] = characterSet;
    append(table, record);
    for (const char16_t c : name) append(table, c, 2);
    append(table, 0, 2);
  }
  return table;
}

Bytes fontSprm(uint8_t ftc) {
  return {0x4F, 0x4A, ftc, 0};
}

/// Lists, and labels from paragraph to paragraph.
struct Labels {
  Labels(const std::vector<TestList>& lists, const std::vector<TestUse>& uses,
         const Bytes& fontBytes = fontTable({u"Times", u"Symbol", u"Wingdings"}))
      : bytes(listBytes(lists, uses)), definitions(Read(bytes)), labels(definitions, fonts) {
    fonts.Read({fontBytes.data(), fontBytes.size()});
  }
  static ListDefinitions Read(const TestLists& bytes) {
    ListDefinitions definitions;
    definitions.Read(bytes.definitionsView(), bytes.levelsView(), bytes.usesView(), nullptr);
    return definitions;
  }

  /// "-" for a paragraph without a label.
  std::u16string Next(uint16_t ilfo, uint8_t level = 0) {
    return labels.Next(ilfo, level, facts) ? std::u16string(facts.text) : u"-";
  }

  TestLists bytes;
  ListDefinitions definitions;
  FontNames fonts;
  ListLabels labels;
  LabelFacts facts;
};

const TestList kOutline = {1, {{u"\0."sv}, {u"\0.\1"sv}, {u"\0.\1.\2"sv}}};

TEST(ListLabels, CountParagraphs) {
  Labels list({{9, {{u"\0)"sv, 4}}}}, {{9}});
  EXPECT_EQ(list.Next(1), u"a)");
  EXPECT_EQ(list.Next(1), u"b)");
  EXPECT_EQ(list.facts.number, 2);
  EXPECT_EQ(list.facts.listId, 9);
  EXPECT_EQ(list.facts.nfc, 4);
  EXPECT_FALSE(list.facts.isBullet);
  EXPECT_EQ(list.facts.level, list.definitions.Level(1, 0).level);
}

TEST(ListLabels, ShowTheNumbersOfLevelsAbove) {
  Labels list({kOutline}, {{1}});
  EXPECT_EQ(list.Next(1, 0), u"1.");
  EXPECT_EQ(list.Next(1, 1), u"1.1");
  EXPECT_EQ(list.Next(1, 1), u"1.2");
  EXPECT_EQ(list.Next(1, 2), u"1.2.1");
  EXPECT_EQ(list.Next(1, 0), u"2.");
  EXPECT_EQ(list.Next(1, 1), u"2.1");
  EXPECT_EQ(list.Next(1, 2), u"2.1.1");
}

TEST(ListLabels, ShowTheStartOfLevelsThatHadNoParagraph) {
  Labels list({kOutline}, {{1}});
  EXPECT_EQ(list.Next(1, 2), u"1.1.1");
  EXPECT_EQ(list.Next(1, 1), u"1.1");
  EXPECT_EQ(list.Next(1, 0), u"1.");
}

TEST(ListLabels, ShowEachNumberAsItsLevelDoes) {
  Labels list({{1, {{u"\0"sv, 1}, {u"\0.\1"sv, 4}, {u"\0.\1.\2"sv, 0, 1, 4}}}}, {{1}});
  list.Next(1, 0);
  EXPECT_EQ(list.Next(1, 0), u"II");
  EXPECT_EQ(list.Next(1, 1), u"II.a");
  EXPECT_EQ(list.Next(1, 2), u"2.1.1");
}

TEST(ListLabels, KeepLeadingZerosAndBulletsOfLegalNumbers) {
  Labels list({{1, {{u"\0"sv, 22}, {u"\1"sv, kBullet}, {u"\0.\1.\2"sv, 1, 1, 4}}}}, {{1}});
  EXPECT_EQ(list.Next(1, 2), u"01..1");
}

TEST(ListLabels, LeaveOutNumbersOfLevelsBelow) {
  Labels list({{1, {{u"\0-\1"sv}, {u"\1"sv}}}}, {{1}});
  EXPECT_EQ(list.Next(1, 0), u"1-");
}

TEST(ListLabels, BeginAtTheStart) {
  Labels list({{1, {{u"\0"sv, 0, 5}, {u"\1"sv, 0, 0}}}}, {{1}});
  EXPECT_EQ(list.Next(1, 0), u"5");
  EXPECT_EQ(list.Next(1, 1), u"0");
  EXPECT_EQ(list.Next(1, 1), u"1");
  EXPECT_EQ(list.Next(1, 0), u"6");
  EXPECT_EQ(list.Next(1, 1), u"0");
}

TEST(ListLabels, GoOnWhereNothingStartsALevelAnew) {
  Labels list({{1, {{u"\0"sv}, {u"\0.\1"sv, 0, 1, 8, 0}}}}, {{1}});
  list.Next(1, 0);
  EXPECT_EQ(list.Next(1, 1), u"1.1");
  list.Next(1, 0);
  EXPECT_EQ(list.Next(1, 1), u"2.2");
}

TEST(ListLabels, StartAnewOnlyBehindLevelsBelowTheLimit) {
  Labels list({{1, {{u"\0"sv}, {u"\1"sv}, {u"\2"sv, 0, 1, 8, 1}}}}, {{1}});
  EXPECT_EQ(list.Next(1, 2), u"1");
  list.Next(1, 1);
  EXPECT_EQ(list.Next(1, 2), u"2");
  list.Next(1, 0);
  EXPECT_EQ(list.Next(1, 2), u"1");
}

TEST(ListLabels, CountAllUsesOfADefinitionTogether) {
  Labels list({{1, {{u"\0"sv}}}, {2, {{u"\0"sv}}}}, {{1}, {1}, {2}});
  EXPECT_EQ(list.Next(1), u"1");
  EXPECT_EQ(list.Next(2), u"2");
  EXPECT_EQ(list.Next(3), u"1");
  EXPECT_EQ(list.Next(1), u"3");
}

TEST(ListLabels, TakeTheStartOfAUseOnce) {
  Labels list({{1, {{u"\0"sv}, {u"\1"sv}}}}, {{1}, {1, {{0, 1}}}});
  list.Next(1);
  EXPECT_EQ(list.Next(1), u"2");
  EXPECT_EQ(list.Next(2), u"1");
  EXPECT_EQ(list.Next(2), u"2");
  EXPECT_EQ(list.Next(1), u"3");
  EXPECT_EQ(list.Next(2), u"4");
}

TEST(ListLabels, TakeTheStartOfALevelOfAUseWhereItComesFirst) {
  Labels list({kOutline}, {{1}, {1, {{0, 1}, {1, 1}}}});
  list.Next(1, 0);
  list.Next(1, 1);
  EXPECT_EQ(list.Next(1, 1), u"1.2");
  EXPECT_EQ(list.Next(2, 1), u"1.1");
  EXPECT_EQ(list.Next(2, 1), u"1.2");
  EXPECT_EQ(list.Next(2, 0), u"1.");
}

TEST(ListLabels, StartAnewAtTheStartOfTheUse) {
  Labels list({kOutline}, {{1, {{1, 4}}}});
  list.Next(1, 0);
  EXPECT_EQ(list.Next(1, 1), u"1.4");
  EXPECT_EQ(list.Next(1, 1), u"1.5");
  list.Next(1, 0);
  EXPECT_EQ(list.Next(1, 1), u"2.4");
}

TEST(ListLabels, LookAsTheUseSays) {
  Labels list({{1, {{u"\0"sv}}}}, {{1}, {1, {{0, -1, {{u"(\0)"sv, 4, 7}}}}}});
  list.Next(1);
  EXPECT_EQ(list.Next(2), u"(b)");
}

TEST(ListLabels, OfAListWithOneLevelCountAllLevelsAsOne) {
  Labels list({{1, {{u"\0."sv}}}}, {{1}});
  EXPECT_EQ(list.Next(1, 0), u"1.");
  EXPECT_EQ(list.Next(1, 3), u"2.");
}

TEST(ListLabels, BeginAnewInANewStory) {
  Labels list({{1, {{u"\0"sv}}}}, {{1}, {1, {{0, 7}}}});
  list.Next(1);
  EXPECT_EQ(list.Next(2), u"7");
  list.labels.Reset();
  EXPECT_EQ(list.Next(1), u"1");
  EXPECT_EQ(list.Next(2), u"7");
}

TEST(ListLabels, AreNoneWithoutAList) {
  Labels list({{1, {{u"\0"sv}, {u"\1"sv}}}}, {{1}, {77}});
  for (const uint16_t ilfo : {0, 2, 3, 0x7FF, 0xFFFF}) EXPECT_EQ(list.Next(ilfo), u"-") << ilfo;
  EXPECT_EQ(list.Next(1, 9), u"-");
  EXPECT_EQ(list.Next(1, 255), u"-");
}

TEST(ListLabels, MayBeEmpty) {
  Labels list({{1, {{u"", kNone}}}}, {{1}});
  EXPECT_EQ(list.Next(1), u"");
}

TEST(ListLabels, MayBeTextAlone) {
  Labels list({{1, {{u"Note:", kNone}}}}, {{1}});
  EXPECT_EQ(list.Next(1), u"Note:");
  EXPECT_FALSE(list.facts.isBullet);
}

TEST(ListLabels, ShowBulletsAsUnicode) {
  Labels list({{1,
                {{u"\uF0B7", kBullet, 1, 0, 0, 0, fontSprm(1)},
                 {u"\uF0A7", kBullet, 1, 0, 0, 0, fontSprm(2)},
                 {u"o", kBullet, 1, 0, 0, 0, fontSprm(0)},
                 {u"v", kBullet, 1, 0, 0, 0, fontSprm(2)},
                 {u"\uF0B7", kBullet}}}},
              {{1}});
  EXPECT_EQ(list.Next(1, 0), u"•");
  EXPECT_TRUE(list.facts.isBullet);
  EXPECT_EQ(list.facts.symbols, SymbolFont::kSymbol);
  EXPECT_EQ(list.Next(1, 1), u"▪");
  EXPECT_EQ(list.Next(1, 2), u"o");
  EXPECT_EQ(list.facts.symbols, SymbolFont::kNone);
  EXPECT_EQ(list.Next(1, 3), u"❖");
  EXPECT_EQ(list.Next(1, 4), u"•");
}

TEST(ListLabels, TakeTheFontOfTheMarkIfTheLevelHasNone) {
  Labels list({{1, {{u"v", kBullet}}}}, {{1}});
  ASSERT_TRUE(list.labels.Next(1, 0, list.facts, 0, 2));
  EXPECT_EQ(list.facts.text, u"❖");
}

TEST(ListLabels, KeepSignsOfAFontOfSignsThatIsNotKnown) {
  Labels list({{1, {{u"\uF0B7", kBullet, 1, 0, 0, 0, fontSprm(0)}}}}, {{1}}, fontTable({u"My Signs"}, 2));
  EXPECT_EQ(list.Next(1), u"\uF0B7");
}

TEST(ListLabels, ShowNumbersAsLettersWhateverTheFont) {
  Labels list({{1, {{u"\0 a\uF0B7"sv, 0, 1, 0, 0, 0, fontSprm(1)}}}}, {{1}});
  EXPECT_EQ(list.Next(1), u"1 a•");
}

TEST(ListLabels, TellThePictureOfABullet) {
  const Bytes picture = {0x87, 0x68, 3, 0, 0, 0, 0x88, 0x48, 1, 0};
  const Bytes noPicture = {0x87, 0x68, 3, 0, 0, 0, 0x88, 0x48, 0, 0};
  Labels list({{1, {{u"\uF0B7", kBullet, 1, 0, 0, 0, picture}, {u"\uF0B7", kBullet, 1, 0, 0, 0, noPicture}}}},
              {{1}});
  list.Next(1, 0);
  EXPECT_EQ(list.facts.pictureBullet, 3);
  list.Next(1, 1);
  EXPECT_EQ(list.facts.pictureBullet, -1);
}

TEST(ListLabels, TakeWordsOfTheLanguage) {
  Labels list({{1, {{u"\0"sv, 6}}}}, {{1}});
  ASSERT_TRUE(list.labels.Next(1, 0, list.facts, 0x0409));
  EXPECT_EQ(list.facts.text, u"One");
  ASSERT_TRUE(list.labels.Next(1, 0, list.facts, 0x0407));
  EXPECT_EQ(list.facts.text, u"2");
}

TEST(ListLabels, AreCut) {
  const std::u16string longText(20000, u'x'), numbers(20000, u'\0');
  Labels list({{1, {{longText}, {numbers, 6, 999}}}}, {{1}});
  EXPECT_EQ(list.Next(1, 0).size(), 255u);
  EXPECT_LT(list.Next(1, 1).size(), 600u);
}

}  // namespace
}  // namespace pagerex

#include "wordreader/list_definitions.h"

#include <gtest/gtest.h>

#include <random>

#include "flow/list_bytes.h"

namespace pagerex {
namespace {

using namespace std::literals;

/// Lists with the bytes that they are read from.
struct Lists {
  Lists(const std::vector<TestList>& lists, const std::vector<TestUse>& uses)
      : bytes(listBytes(lists, uses)) {
    definitions.Read(bytes.definitionsView(), bytes.levelsView(), bytes.usesView(), &warnings);
  }

  TestLists bytes;
  Warnings warnings;
  ListDefinitions definitions;
};

TEST(ListDefinitions, TellALevel) {
  const TestLevel level{u"\0."sv, 2, 5, 2 | 4, 0, 1, {0x35, 0x08, 1}, {0x0F, 0x84, 0xD0, 0x02}};
  const Lists lists({{7, {level}}}, {{7}});
  const UsedLevel used = lists.definitions.Level(1, 0);
  ASSERT_NE(used.level, nullptr);
  EXPECT_EQ(used.start, 5);
  EXPECT_EQ(used.level->nfc, 2);
  EXPECT_EQ(used.level->alignment, 2);
  EXPECT_TRUE(used.level->isLegal);
  EXPECT_EQ(used.level->restartLimit, 9);
  EXPECT_EQ(used.level->follow, 1);
  EXPECT_EQ(used.level->text.size(), 4u);
  EXPECT_EQ(used.level->placeholders.u8(0), 1);
  EXPECT_EQ(used.level->placeholders.u8(1), 0);
  EXPECT_EQ(used.level->chpx.size(), 3u);
  EXPECT_EQ(used.level->chpx.u16(0), 0x0835);
  EXPECT_EQ(used.level->papx.size(), 4u);
  EXPECT_TRUE(lists.warnings.all().empty());
}

TEST(ListDefinitions, AreFoundByTheirIdsInAnyOrder) {
  const Lists lists({{30, {{u"c"}}}, {-4, {{u"a"}}}, {20, {{u"b"}, {u"B"}}}}, {{-4}, {20}, {30}});
  EXPECT_EQ(lists.definitions.UseCount(), 3u);
  EXPECT_EQ(lists.definitions.Lsid(lists.definitions.DefinitionOf(1)), -4);
  EXPECT_EQ(lists.definitions.Level(1, 0).level->text.u16(0), u'a');
  EXPECT_EQ(lists.definitions.Level(2, 0).level->text.u16(0), u'b');
  EXPECT_EQ(lists.definitions.Level(2, 1).level->text.u16(0), u'B');
  EXPECT_EQ(lists.definitions.Level(3, 0).level->text.u16(0), u'c');
}

TEST(ListDefinitions, OfTwoWithOneIdTheFirstCounts) {
  const Lists lists({{1, {{u"a"}}}, {1, {{u"b"}}}}, {{1}});
  EXPECT_EQ(lists.definitions.Level(1, 0).level->text.u16(0), u'a');
}

TEST(ListDefinitions, HaveNoListForNumbersThatStandForNone) {
  const Lists lists({{1, {{u"a"}}}}, {{1}, {99}});
  for (const uint16_t ilfo : {0, 2, 3, 0x7FF, 0xF801, 0xFFFF}) {
    EXPECT_EQ(lists.definitions.DefinitionOf(ilfo), -1) << ilfo;
    EXPECT_EQ(lists.definitions.Level(ilfo, 0).level, nullptr) << ilfo;
  }
  EXPECT_EQ(lists.definitions.Level(1, 9).level, nullptr);
}

TEST(ListDefinitions, WithOneLevelHaveThatForAll) {
  const Lists lists({{1, {{u"a"}}}}, {{1, {{0, 6}}}});
  const UsedLevel used = lists.definitions.Level(1, 4);
  EXPECT_EQ(used.level->text.u16(0), u'a');
  EXPECT_EQ(used.number, 0);
  EXPECT_EQ(used.start, 6);
}

TEST(ListDefinitions, TakeAStartFromTheUse) {
  const Lists lists({{1, {{u"a"}, {u"b"}}}}, {{1, {{1, 8}}}, {1}});
  EXPECT_EQ(lists.definitions.Level(1, 1).start, 8);
  EXPECT_TRUE(lists.definitions.Level(1, 1).hasOwnStart);
  EXPECT_EQ(lists.definitions.Level(1, 0).start, 1);
  EXPECT_FALSE(lists.definitions.Level(1, 0).hasOwnStart);
  EXPECT_EQ(lists.definitions.Level(2, 1).start, 1);
}

TEST(ListDefinitions, TakeALevelFromTheUse) {
  const TestLevel other{u"x", 4, 3};
  const Lists lists({{1, {{u"a"}, {u"b"}}}}, {{1, {{0, -1, {other}}}}, {1, {{1, 8, {other}}}}});
  const UsedLevel looks = lists.definitions.Level(1, 0), begins = lists.definitions.Level(2, 1);
  EXPECT_EQ(looks.level->text.u16(0), u'x');
  EXPECT_EQ(looks.start, 1);
  EXPECT_FALSE(looks.hasOwnStart);
  EXPECT_EQ(begins.level->text.u16(0), u'x');
  EXPECT_EQ(begins.start, 3);
  EXPECT_TRUE(begins.hasOwnStart);
}

TEST(ListDefinitions, OfTwoOverridesOfALevelTakeTheFirst) {
  const Lists lists({{1, {{u"a"}, {u"b"}}}}, {{1, {{1, 8}, {1, 9}, {12, 3}}}});
  EXPECT_EQ(lists.definitions.Level(1, 1).start, 8);
}

TEST(ListDefinitions, LimitWhatStartsALevelAnew) {
  const Lists lists({{1, {{u"a"}, {u"b", 0, 1, 8, 0}, {u"c", 0, 1, 8, 1}, {u"d", 0, 1, 0, 1}}}}, {{1}});
  EXPECT_EQ(lists.definitions.Level(1, 1).level->restartLimit, 0);
  EXPECT_EQ(lists.definitions.Level(1, 2).level->restartLimit, 1);
  EXPECT_EQ(lists.definitions.Level(1, 3).level->restartLimit, 9);
}

TEST(ListDefinitions, LinkLevelsAndStyles) {
  const Lists lists({{1, {{u"a"}, {u"b"}}, {1, 2}}}, {{1}});
  EXPECT_EQ(lists.definitions.StyleOfLevel(1, 1), 2);
  EXPECT_EQ(lists.definitions.StyleOfLevel(1, 2), ListDefinitions::kNoStyle);
  EXPECT_EQ(lists.definitions.StyleOfLevel(2, 0), ListDefinitions::kNoStyle);
  EXPECT_EQ(lists.definitions.StyleOfLevel(1, 9), ListDefinitions::kNoStyle);
  EXPECT_EQ(lists.definitions.LevelOfStyle(1, 2), 1);
  EXPECT_EQ(lists.definitions.LevelOfStyle(1, 3), -1);
  EXPECT_EQ(lists.definitions.LevelOfStyle(1, ListDefinitions::kNoStyle), -1);
}

TEST(ListDefinitions, WithoutBytesAreNone) {
  ListDefinitions definitions;
  Warnings warnings;
  definitions.Read({}, {}, {}, &warnings);
  EXPECT_EQ(definitions.UseCount(), 0u);
  EXPECT_EQ(definitions.DefinitionCount(), 0u);
  EXPECT_TRUE(warnings.all().empty());
}

const std::vector<TestList> kLists = {{1, {{u"a", 0, 1, 0, 0, 0, {1, 2, 3}}, {u"bc"}}}, {2, {{u"d"}}}};
const std::vector<TestUse> kUses = {{1, {{0, 4}, {1, -1, {{u"long text", 3}}}}}, {2}};

TEST(ListDefinitions, EndWhereLevelsAreCut) {
  const TestLists whole = listBytes(kLists, kUses);
  for (size_t size = 0; size < whole.levels.size(); ++size) {
    ListDefinitions definitions;
    Warnings warnings;
    definitions.Read(whole.definitionsView(), whole.levelsView().part(0, size), whole.usesView(), &warnings);
    ASSERT_EQ(warnings.all().size(), 1u) << size;
    EXPECT_EQ(definitions.Level(2, 0).level, nullptr) << size;
  }
}

TEST(ListDefinitions, KeepUsesWhoseOverridesAreCut) {
  const TestLists whole = listBytes(kLists, kUses);
  for (size_t size = 1; size < whole.uses.size(); ++size) {
    ListDefinitions definitions;
    Warnings warnings;
    definitions.Read(whole.definitionsView(), whole.levelsView(), whole.usesView().part(0, size), &warnings);
    if (size >= 4 + 2 * 16) {
      EXPECT_EQ(definitions.Level(2, 0).level->text.u16(0), u'd');
    }
  }
}

TEST(ListDefinitions, OfAnyBytesAreReadInBounds) {
  std::mt19937 random(8);
  for (int round = 0; round < 3000; ++round) {
    TestLists bytes = listBytes(kLists, kUses);
    for (Bytes* part : {&bytes.definitions, &bytes.levels, &bytes.uses}) {
      for (int i = 0; i < 3; ++i) (*part)[random() % part->size()] = static_cast<uint8_t>(random());
    }
    ListDefinitions definitions;
    definitions.Read(bytes.definitionsView(), bytes.levelsView(), bytes.usesView(), nullptr);
    EXPECT_LE(definitions.UseCount(), bytes.uses.size() / 16);
    for (uint16_t ilfo = 0; ilfo < 5; ++ilfo) {
      for (unsigned level = 0; level < 10; ++level) {
        const UsedLevel used = definitions.Level(ilfo, level);
        if (used.level) {
          EXPECT_LE(used.level->text.size(), bytes.levels.size() + bytes.uses.size());
        }
      }
    }
  }
}

}  // namespace
}  // namespace pagerex

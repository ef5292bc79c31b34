#include "wordreader/list_table.h"

#include <gtest/gtest.h>

#include "support/opened_document.h"

namespace {

using support::Bytes;
using support::List;
using support::ListLevel;
using support::OpenedDocument;
using support::sprm;
using support::WordDocument;

constexpr uint32_t kDefinitions = mso_word::FCLCB_LIST_DEFINITIONS;
constexpr uint32_t kOverrides = mso_word::FCLCB_LIST_OVERRIDES;

/// A document with a paragraph, to which a test adds lists.
WordDocument document() {
  WordDocument doc;
  doc.paragraph("x");
  return doc;
}

std::u16string textOf(const KDRListLevel& level) {
  return std::u16string(level.GetXst(), level.GetXst() + level.GetXstLen());
}

TEST(ListTable, IsEmptyWithoutTables) {
  const WordDocument doc = document();
  EXPECT_EQ(OpenedDocument(doc)->GetListTable().Count(), 0u);
}

TEST(ListTable, ASimpleListHasOneLevelAndAnotherNine) {
  WordDocument doc = document();
  doc.list({.lsid = 7, .simple = true});
  doc.list({.lsid = 8});
  const OpenedDocument opened(doc);
  const KDRListTable& lists = opened->GetListTable();
  ASSERT_EQ(lists.Count(), 2u);
  EXPECT_EQ(lists.Item(1)->GetLevelCount(), 1u);
  EXPECT_EQ(lists.Item(2)->GetLevelCount(), 9u);
  EXPECT_EQ(lists.Item(0), nullptr);
  EXPECT_EQ(lists.Item(3), nullptr);
}

TEST(ListTable, ALevelTellsHowItIsNumbered) {
  WordDocument doc = document();
  ListLevel level{.startAt = 4, .numberFormat = 3, .text = u"(%1)", .follow = 2};
  level.papx = {sprm(0x845E, 720)};
  level.chpx = {sprm(0x0835, 1)};
  doc.list({.lsid = 1, .levels = {level}, .simple = true});
  const OpenedDocument opened(doc);
  const KDRListLevel& read = *opened->GetListTable().Item(1)->GetLevel(0);
  EXPECT_TRUE(read.Good());
  EXPECT_EQ(read.GetStartAt(), 4);
  EXPECT_EQ(read.GetNfc(), 3);
  EXPECT_EQ(read.GetIxchFollow(), 2);
  EXPECT_EQ(textOf(read), std::u16string(u"(\0)", 3));
  EXPECT_EQ(read.GetrgbxchNums()[0], 2);
  EXPECT_EQ(read.GetPapx(*opened)->size, 4);
  EXPECT_EQ(read.GetPapx(*opened)->sprms().u16(0), 0x845E);
  EXPECT_EQ(read.GetChpx(*opened)->sprms().u16(0), 0x0835);
  EXPECT_EQ(read.GetChpx(*opened), read.GetChpx(*opened));
}

TEST(ListTable, ALevelWithoutGroupsHasListsOfSizeZero) {
  WordDocument doc = document();
  doc.list({.lsid = 1, .levels = {ListLevel{.text = u""}}, .simple = true});
  const OpenedDocument opened(doc);
  const KDRListLevel& level = *opened->GetListTable().Item(1)->GetLevel(0);
  EXPECT_EQ(level.GetPapx(*opened)->size, 0);
  EXPECT_EQ(level.GetChpx(*opened)->size, 0);
  EXPECT_EQ(level.GetXstLen(), 0);
}

TEST(ListOverrides, OnlyTheStartBitChangesTheStartAlone) {
  WordDocument doc = document();
  doc.listDefinition({.lsid = 1, .levels = std::vector<ListLevel>(9, ListLevel{.startAt = 2})});
  doc.listOverride({.lsid = 1, .levels = {{.level = 3, .startAt = 40}}});
  const OpenedDocument opened(doc);
  const KDRList& list = *opened->GetListTable().Item(1);
  EXPECT_EQ(list.GetLevelStartAt(3), 40);
  EXPECT_EQ(list.GetLevelStartAt(2), 2);
  EXPECT_EQ(list.GetLevel(3)->GetStartAt(), 2);
}

TEST(ListOverrides, AFullLevelTakesThePlaceOfTheDefinitionsButNotItsStart) {
  WordDocument doc = document();
  doc.listDefinition({.lsid = 1, .levels = {ListLevel{.startAt = 2, .numberFormat = 0}}});
  doc.listOverride(
      {.lsid = 1,
       .levels = {{.level = 0, .startAt = 9, .format = ListLevel{.startAt = 30, .numberFormat = 4}}}});
  const OpenedDocument opened(doc);
  const KDRList& list = *opened->GetListTable().Item(1);
  EXPECT_EQ(list.GetLevel(0)->GetNfc(), 4);
  EXPECT_EQ(list.GetLevelStartAt(0), 2);
}

TEST(ListOverrides, WithoutLevelsAreTheDefinition) {
  WordDocument doc = document();
  doc.list({.lsid = 5, .levels = {ListLevel{.startAt = 3}}});
  const OpenedDocument opened(doc);
  const KDRList& list = *opened->GetListTable().Item(1);
  EXPECT_EQ(list.GetLevelStartAt(0), 3);
  EXPECT_EQ(list.GetLevel(0)->GetStartAt(), 3);
}

TEST(ListOverrides, OneWithoutDefinitionMovesTheOthersUp) {
  WordDocument doc = document();
  doc.listDefinition({.lsid = 1, .levels = {ListLevel{.startAt = 11}}});
  doc.listOverride({.lsid = 99});
  doc.listOverride({.lsid = 1});
  const OpenedDocument opened(doc);
  ASSERT_EQ(opened->GetListTable().Count(), 1u);
  EXPECT_EQ(opened->GetListTable().Item(1)->GetLevelStartAt(0), 11);
}

TEST(ListDefinitions, OfTwoWithOneIdTheFirstStays) {
  WordDocument doc = document();
  doc.listDefinition({.lsid = 1, .levels = {ListLevel{.startAt = 5}}});
  doc.listDefinition({.lsid = 1, .levels = {ListLevel{.startAt = 6}}});
  doc.listOverride({.lsid = 1});
  EXPECT_EQ(OpenedDocument(doc)->GetListTable().Item(1)->GetLevelStartAt(0), 5);
}

TEST(DamagedLists, LevelsThatAreNotThereLeaveNoLists) {
  WordDocument doc = document();
  doc.list({.lsid = 1});
  doc.table(kDefinitions, support::listDefinitionTable({List{.lsid = 1}}).table);  // and no levels behind it
  const OpenedDocument opened(doc);
  const KDRListTable& lists = opened->GetListTable();
  for (unsigned i = 1; i <= lists.Count(); ++i) {
    for (unsigned short level = 0; level < 9; ++level) lists.Item(i)->GetLevel(level);
  }
  EXPECT_LE(lists.Count(), 1u);
}

TEST(DamagedLists, CountsBeyondTheStreamReadNothing) {
  WordDocument doc = document();
  doc.list({.lsid = 1});
  doc.editTable(kOverrides, [](Bytes& table) { support::patchInteger(table, 0, uint32_t{0xFFFFFFFF}); });
  EXPECT_EQ(OpenedDocument(doc)->GetListTable().Count(), 0u);
}

TEST(DamagedLists, ACountOfDefinitionsBeyondTheTableStopsAtItsEnd) {
  WordDocument doc = document();
  doc.list({.lsid = 1});
  doc.editTable(kDefinitions, [](Bytes& table) { support::patchInteger(table, 0, uint16_t{0xFFFF}); });
  EXPECT_EQ(OpenedDocument(doc)->GetListTable().Count(), 1u);
}

}  // namespace

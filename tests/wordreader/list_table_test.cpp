#include "wordreader/list_table.h"

#include <gtest/gtest.h>

#include <random>

#include "wordreader/memory_storage.h"

using support::Bytes;
using support::LevelOverride;
using support::List;
using support::ListLevel;
using support::ListOverride;
using support::sprm;
using support::Sprms;
using support::WordDocument;

namespace {

constexpr uint32_t kDefinitions = mso_word::FCLCB_LIST_DEFINITIONS;
constexpr uint32_t kOverrides = mso_word::FCLCB_LIST_OVERRIDES;

/// A document with these lists and overrides, and its list table.
struct Lists {
  explicit Lists(const WordDocument& source) : opened(source), table(&opened.document.GetListTable()) {}
  Lists(const std::vector<List>& lists, const std::vector<ListOverride>& overrides)
      : Lists(Source(lists, overrides)) {}

  static WordDocument Source(const std::vector<List>& lists, const std::vector<ListOverride>& overrides) {
    WordDocument source;
    for (const List& list : lists) source.listDefinition(list);
    for (const ListOverride& entry : overrides) source.listOverride(entry);
    return source;
  }
  const KDRList& list(unsigned int ilfo) const { return *table->Item(ilfo); }

  OpenedDocument opened;
  const KDRListTable* table;
};

/// Where a table lies in the table stream.
mso_word::FCLCB PlaceOf(const WordDocument& source, uint32_t fibIndex) {
  const Bytes stream = source.streams().wordDocument;
  return ByteView(stream.data(), stream.size()).copyOf<mso_word::FCLCB>(WordDocument::pairOffset(fibIndex));
}

/// Cuts the table stream so many bytes behind the end of a table.
WordDocument& CutBehind(WordDocument& source, uint32_t fibIndex, size_t bytes) {
  const mso_word::FCLCB place = PlaceOf(source, fibIndex);
  const size_t size = size_t{place.fc} + place.lcb + bytes;
  return source.editTableStream([size](Bytes& stream) { stream.resize(size); });
}

ListLevel Starting(uint16_t startAt) {
  return {.startAt = startAt};
}

std::u16string TextOf(const KDRListLevel& level) {
  return level.GetXst() ? std::u16string(reinterpret_cast<const char16_t*>(level.GetXst()), level.GetXstLen())
                        : std::u16string();
}

TEST(ListTable, IsEmptyInADocumentWithoutListTables) {
  const Lists lists(WordDocument().dropTable(kDefinitions).dropTable(kOverrides));
  EXPECT_EQ(lists.table->Count(), 0u);
  EXPECT_EQ(lists.table->Item(1), nullptr);
}

TEST(ListTable, IsEmptyWithDefinitionsOnly) {
  const Lists lists(Lists::Source({{.lsid = 5}}, {}).dropTable(kOverrides));
  EXPECT_EQ(lists.table->Count(), 0u);
}

TEST(ListTable, IsEmptyWithOverridesOnly) {
  const Lists lists(Lists::Source({}, {{.lsid = 5}}).dropTable(kDefinitions));
  EXPECT_EQ(lists.table->Count(), 0u);
}

TEST(ListTable, CountsListsFromOne) {
  const Lists lists({{.lsid = 5, .levels = {Starting(50)}}, {.lsid = 6, .levels = {Starting(60)}}},
                    {{.lsid = 6}, {.lsid = 5}, {.lsid = 6}});
  ASSERT_EQ(lists.table->Count(), 3u);
  EXPECT_EQ(lists.list(1).GetLevelStartAt(0), 60);
  EXPECT_EQ(lists.list(2).GetLevelStartAt(0), 50);
  EXPECT_EQ(lists.list(3).GetLevelStartAt(0), 60);
  EXPECT_EQ(lists.table->Item(0), nullptr);
  EXPECT_EQ(lists.table->Item(4), nullptr);
}

TEST(ListTable, MovesListsUpBehindAnOverrideWithoutADefinition) {
  const Lists lists({{.lsid = 5, .levels = {Starting(50)}}}, {{.lsid = 99}, {.lsid = 5}});
  ASSERT_EQ(lists.table->Count(), 1u);
  EXPECT_EQ(lists.list(1).GetLevelStartAt(0), 50);
}

TEST(ListTable, KeepsTheFirstOfTwoDefinitionsWithOneId) {
  const Lists lists({{.lsid = 5, .levels = {Starting(50)}}, {.lsid = 5, .levels = {Starting(51)}}},
                    {{.lsid = 5}});
  EXPECT_EQ(lists.list(1).GetLevelStartAt(0), 50);
}

TEST(ListTable, TakesNegativeIds) {
  const Lists lists({{.lsid = -7}}, {{.lsid = -7}});
  EXPECT_EQ(lists.table->Count(), 1u);
}

TEST(List, OfTheSimpleKindHasOneLevel) {
  const Lists lists({{.lsid = 5, .simple = true}, {.lsid = 6}}, {{.lsid = 5}, {.lsid = 6}});
  EXPECT_EQ(lists.list(1).GetLevelCount(), 1u);
  EXPECT_EQ(lists.list(1).GetLevel(1), nullptr);
  EXPECT_EQ(lists.list(2).GetLevelCount(), 9u);
  EXPECT_EQ(lists.list(2).GetLevel(9), nullptr);
}

TEST(List, WithoutLevelOverridesIsItsDefinition) {
  const Lists lists(
      {{.lsid = 5, .levels = {Starting(3), {.startAt = 4, .numberFormat = 2, .text = u"(%2)"}}}},
      {{.lsid = 5}});
  EXPECT_TRUE(lists.list(1).Good());
  EXPECT_EQ(lists.list(1).GetLevelStartAt(0), 3);
  EXPECT_EQ(lists.list(1).GetLevelStartAt(1), 4);
  EXPECT_EQ(lists.list(1).GetLevel(1)->GetNfc(), 2);
  EXPECT_EQ(TextOf(*lists.list(1).GetLevel(1)), std::u16string(u"(\u0001)"));
}

TEST(List, TakesTheStartOfAnOverrideAndNothingElse) {
  std::vector<ListLevel> levels(9, {.startAt = 1, .numberFormat = 4});
  const Lists lists({{.lsid = 5, .levels = levels}}, {{.lsid = 5, .levels = {{.level = 3, .startAt = 7}}}});
  EXPECT_EQ(lists.list(1).GetLevelStartAt(3), 7);
  EXPECT_EQ(lists.list(1).GetLevelStartAt(2), 1);
  EXPECT_EQ(lists.list(1).GetLevel(3)->GetStartAt(), 1);
  EXPECT_EQ(lists.list(1).GetLevel(3)->GetNfc(), 4);
}

TEST(List, TakesAWholeLevelFromAnOverrideButNotItsStart) {
  const ListLevel format{.startAt = 70, .numberFormat = 2, .text = u"%1)"};
  const Lists lists({{.lsid = 5, .levels = {Starting(3)}}},
                    {{.lsid = 5, .levels = {{.level = 0, .startAt = 7, .format = format}}}});
  EXPECT_EQ(lists.list(1).GetLevel(0)->GetNfc(), 2);
  EXPECT_EQ(lists.list(1).GetLevel(0)->GetStartAt(), 70);
  EXPECT_EQ(lists.list(1).GetLevelStartAt(0), 3);
}

TEST(List, TakesTheFirstOfTwoOverridesOfALevel) {
  const Lists lists({{.lsid = 5}},
                    {{.lsid = 5, .levels = {{.level = 2, .startAt = 7}, {.level = 2, .startAt = 8}}}});
  EXPECT_EQ(lists.list(1).GetLevelStartAt(2), 7);
}

TEST(List, IgnoresAnOverrideWithNeitherBit) {
  const Lists lists({{.lsid = 5, .levels = {Starting(3)}}}, {{.lsid = 5, .levels = {{.level = 0}}}});
  EXPECT_EQ(lists.list(1).GetLevelStartAt(0), 3);
  EXPECT_NE(lists.list(1).GetLevel(0), nullptr);
}

TEST(List, HasNoStartOutsideItsLevels) {
  const Lists lists({{.lsid = 5}}, {{.lsid = 5}});
  EXPECT_EQ(lists.list(1).GetLevelStartAt(9), 0);
  EXPECT_EQ(lists.list(1).GetLevelStartAt(0xFFFF), 0);
}

TEST(ListLevel, HasWhatTheFileSays) {
  const Lists lists(
      {{.lsid = 5, .levels = {{.startAt = 9, .numberFormat = 3, .text = u"<%1-%2>", .follow = 2}}}},
      {{.lsid = 5}});
  const KDRListLevel& level = *lists.list(1).GetLevel(0);
  EXPECT_TRUE(level.Good());
  EXPECT_EQ(level.GetStartAt(), 9);
  EXPECT_EQ(level.GetNfc(), 3);
  EXPECT_EQ(level.GetIxchFollow(), 2);
  EXPECT_EQ(level.GetrgbxchNums()[0], 2);
  EXPECT_EQ(level.GetrgbxchNums()[1], 4);
  EXPECT_EQ(level.GetXstLen(), 5);
  EXPECT_EQ(level.GetXst()[4], u'>');
  EXPECT_EQ(level.GetXst()[5], 0);
}

TEST(ListLevel, MayHaveNoText) {
  const Lists lists({{.lsid = 5, .levels = {{.text = u""}, Starting(8)}}}, {{.lsid = 5}});
  EXPECT_EQ(lists.list(1).GetLevel(0)->GetXstLen(), 0);
  EXPECT_EQ(lists.list(1).GetLevel(0)->GetXst(), nullptr);
  EXPECT_EQ(lists.list(1).GetLevelStartAt(1), 8);
}

TEST(ListLevel, ReadsItsPropertyGroupsOnFirstUse) {
  const Lists lists({{.lsid = 5, .levels = {{.papx = {sprm(0x845E, 720)}, .chpx = {sprm(0x0835, 1)}}}}},
                    {{.lsid = 5}});
  const KDRListLevel& level = *lists.list(1).GetLevel(0);
  const KDRPropx* papx = level.GetPapx(lists.opened.document);
  EXPECT_EQ(papx->size, 4);
  EXPECT_EQ(papx->sprms().u16(0), 0x845E);
  EXPECT_EQ(level.GetChpx(lists.opened.document)->sprms().u16(0), 0x0835);
  EXPECT_EQ(level.GetPapx(lists.opened.document), papx);
}

TEST(ListLevel, HasPropertyGroupsOfSizeZero) {
  const Lists lists({{.lsid = 5}}, {{.lsid = 5}});
  const KDRListLevel& level = *lists.list(1).GetLevel(0);
  ASSERT_NE(level.GetPapx(lists.opened.document), nullptr);
  EXPECT_EQ(level.GetPapx(lists.opened.document)->size, 0);
  EXPECT_EQ(level.GetChpx(lists.opened.document)->size, 0);
}

TEST(ListOverrides, AreReadWhateverLengthTheTableDeclares) {
  WordDocument source = Lists::Source({{.lsid = 5}}, {{.lsid = 5}, {.lsid = 5}});
  source.patchFib(WordDocument::pairOffset(kOverrides) + 4, uint32_t{1});
  EXPECT_EQ(Lists(source).table->Count(), 2u);
}

TEST(ListOverrides, OfAnImpossibleCountAreNotRead) {
  for (uint32_t count : {0xFFFFFFFFu, 0x10000001u, 0x10000000u, 0x0FFFFFFFu}) {
    WordDocument source = Lists::Source({{.lsid = 5}}, {{.lsid = 5}});
    source.editTable(kOverrides, [count](Bytes& table) { support::patchInteger(table, 0, count); });
    EXPECT_EQ(Lists(source).table->Count(), 0u);
  }
}

TEST(ListOverrides, MayBeNone) {
  WordDocument source = Lists::Source({{.lsid = 5}}, {});
  source.table(kOverrides, Bytes{0, 0, 0, 0});
  EXPECT_EQ(Lists(source).table->Count(), 0u);
}

TEST(DamagedLists, AreNotJoinedWhenALevelIsCutInItsText) {
  WordDocument whole = Lists::Source({{.lsid = 5, .levels = {{.text = u"0123456789"}}}}, {{.lsid = 5}});
  const Lists lists(CutBehind(whole, kDefinitions, 28 + 2 + 4));
  EXPECT_EQ(lists.table->Count(), 0u);
}

TEST(DamagedLists, AreNotJoinedWhenALevelIsCutInItsRecord) {
  WordDocument whole = Lists::Source({{.lsid = 5}}, {{.lsid = 5}});
  EXPECT_EQ(Lists(CutBehind(whole, kDefinitions, 20)).table->Count(), 0u);
}

TEST(DamagedLists, ThrowWhatASeekOutsideTheStreamThrows) {
  WordDocument whole = Lists::Source({{.lsid = 5}}, {{.lsid = 5}});
  OpenedDocument opened(CutBehind(whole, kDefinitions, 0));
  EXPECT_THROW(opened.document.GetListTable(), int);
  EXPECT_EQ(opened.document.GetListTable().Count(), 0u);
}

TEST(DamagedLists, CountMissingBytesOfADefinitionAsZeros) {
  WordDocument source = Lists::Source({{.lsid = 5}}, {{.lsid = 5}});
  // The table ends behind the id; the levels begin there, so the first one begins with what was cut off.
  source.table(kDefinitions, Bytes{1, 0, 5, 0, 0, 0}, Bytes(9 * 30));
  const Lists lists(source);
  ASSERT_EQ(lists.table->Count(), 1u);
  EXPECT_EQ(lists.list(1).GetLevelCount(), 9u);
}

TEST(DamagedLists, HaveNoDefinitionsBehindTheTablesEnd) {
  WordDocument source = Lists::Source({{.lsid = 5}}, {{.lsid = 0}});
  source.table(kDefinitions, Bytes{0xFF, 0xFF}, Bytes(1000));
  EXPECT_EQ(Lists(source).table->Count(), 0u);
}

/// Asks for all that the lists of a document hold. A seek outside the stream may end it.
void ReadAll(const KDRDocument& document) try {
  const KDRListTable& lists = document.GetListTable();
  for (unsigned int ilfo = 1; ilfo <= lists.Count(); ++ilfo) {
    for (unsigned short number = 0; number < 10; ++number) {
      const KDRListLevel* level = lists.Item(ilfo)->GetLevel(number);
      if (level) level->GetPapx(document);
      if (level) level->GetChpx(document);
      lists.Item(ilfo)->GetLevelStartAt(number);
    }
  }
} catch (int) {
}

/// Overwrites some bytes from `from` on and now and then cuts the rest.
Bytes Damaged(Bytes stream, size_t from, std::mt19937& random) {
  const size_t size = stream.size() - from;
  for (int i = 0; i < 4; ++i)
    stream[from + random() % size] = static_cast<uint8_t>(random() % 2 ? 0xFF : random());
  if (random() % 4 == 0) stream.resize(from + random() % size);
  return stream;
}

TEST(DamagedLists, AreReadWithinTheStream) {
  const ListLevel level{.text = u"%1.", .papx = {sprm(0x845E, 720)}, .chpx = {sprm(0x0835, 1)}};
  const WordDocument whole =
      Lists::Source({{.lsid = 5, .levels = {level, level}}, {.lsid = 6, .simple = true}},
                    {{.lsid = 5, .levels = {{.level = 1, .startAt = 2, .format = level}}},
                     {.lsid = 6, .levels = {{.level = 0, .startAt = 2}}}});
  const support::WordStreams streams = whole.streams();
  const size_t from = PlaceOf(whole, kDefinitions).fc;
  std::mt19937 random(11);
  for (int i = 0; i < 3000; ++i) {
    MemoryStorage storage;
    storage.add(L"WordDocument", streams.wordDocument);
    storage.add(L"1Table", Damaged(streams.table, from, random));
    KDRDocument document;
    if (!failed(document.OpenDocument(&storage))) ReadAll(document);
  }
}

}  // namespace

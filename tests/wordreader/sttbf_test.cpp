#include "wordreader/sttbf.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/bytes.h"
#include "support/word_tables.h"
#include "wordreader/document.h"

using support::Bytes;
using support::ByteWriter;

namespace {

struct ReadStrings {
  explicit ReadStrings(Bytes content) : bytes(std::move(content)) {
    KDRTableRecord record;
    record.place.lcb = static_cast<uint32_t>(bytes.size());
    record.bytes = ByteView(bytes.data(), bytes.size());
    status = table.ReadRecord(record, document);
  }
  std::u16string text(int i) const { return reinterpret_cast<const char16_t*>(table.Item(i).text); }

  Bytes bytes;
  KDRDocument document;
  KDRSttbf<mso_word::FCLCB_BOOKMARK_NAMES> table;
  Status status;
};

}  // namespace

TEST(StringTable, TellsItsFormByTheFirstTwoBytes) {
  const Bytes wide = {0xFF, 0xFF};
  const Bytes narrow = {0xFF, 0x00};
  using Table = KDRSttbf<mso_word::FCLCB_BOOKMARK_NAMES>;
  EXPECT_EQ(Table::GetStrType(ByteView(wide.data(), 2)), 0);
  EXPECT_EQ(Table::GetStrType(ByteView(narrow.data(), 2)), 1);
  EXPECT_EQ(Table::GetStrType({}), 1);
}

TEST(StringTable, Reads16BitStrings) {
  const ReadStrings read(support::stringTable({u"one", u"", u"\u4E2D"}));
  EXPECT_EQ(read.status, Status::kOk);
  ASSERT_EQ(read.table.Count(), 3u);
  EXPECT_EQ(read.text(0), u"one");
  EXPECT_EQ(read.text(1), u"");
  EXPECT_EQ(read.text(2), u"\u4E2D");
  EXPECT_TRUE(read.table.Item(0).extra.empty());
}

TEST(StringTable, GivesTheExtraDataBehindEachString) {
  const ReadStrings read(support::stringTable({u"a", u"bc"}, 4, {{1, 2, 3, 4}, {5, 6, 7, 8}}));
  EXPECT_EQ(read.text(1), u"bc");
  EXPECT_EQ(read.table.Item(0).extra.u32(0), 0x04030201u);
  EXPECT_EQ(read.table.Item(1).extra.u32(0), 0x08070605u);
}

TEST(StringTable, UsesTheLowByteOfTheExtraSize) {
  Bytes bytes = support::stringTable({u"a", u"b"}, 2, {{1, 2}, {3, 4}});
  bytes[5] = 0x7F;
  const ReadStrings read(bytes);
  EXPECT_EQ(read.table.Item(0).extra.size(), 2u);
  EXPECT_EQ(read.text(1), u"b");
}

TEST(StringTable, GetsOutOfStepBehindAStringOfMoreThan255Characters) {
  // Of the length 257 the low byte counts, so that the second string begins at the second character.
  const ReadStrings read(support::stringTable({u"ab" + std::u16string(255, u'c'), u"second"}));
  ASSERT_EQ(read.table.Count(), 2u);
  EXPECT_EQ(read.text(0), u"a");
  EXPECT_EQ(read.text(1), std::u16string('b', u'c'));
}

TEST(StringTable, CountsStringsThatItDoesNotHoldAsEmpty) {
  Bytes bytes = support::stringTable({u"one", u"two"});
  support::patchInteger(bytes, 2, uint16_t{0xFFFE});
  const ReadStrings read(bytes);
  EXPECT_EQ(read.table.Count(), 0xFFFEu);
  EXPECT_EQ(read.text(1), u"two");
  EXPECT_EQ(read.text(2), u"");
  EXPECT_EQ(read.text(0xFFFD), u"");
  EXPECT_TRUE(read.table.Item(0xFFFD).extra.empty());
}

TEST(StringTable, CutsAStringAtItsEnd) {
  Bytes bytes = support::stringTable({u"onetwo"});
  bytes.resize(6 + 2 + 7);
  EXPECT_EQ(ReadStrings(bytes).text(0), u"one");
}

TEST(StringTable, Reads8BitStringsByCodePage1252) {
  const ReadStrings read(
      ByteWriter().u8(2).u8(0).u8(0).zeros(3).u8(2).u8(0).u8('a').u8(0x80).u8(1).u8(0).u8('z').take());
  ASSERT_EQ(read.table.Count(), 2u);
  EXPECT_EQ(read.text(0), u"a\u20AC");
  EXPECT_EQ(read.text(1), u"z");
}

TEST(StringTable, LooksForTheExtraDataOf8BitStringsFurtherBehind) {
  // The next string begins 2 bytes, the extra size, behind the text of 3; the extra data 3 + 6 bytes behind.
  ByteWriter table;
  table.u8(2).u8(0).u8(2).zeros(3);
  table.u8(3).u8(0).text8("abc").u16(0x1111);
  table.u8(1).u8(0).text8("d").zeros(4).u16(0x2222).zeros(9);
  const ReadStrings read(table.take());
  EXPECT_EQ(read.text(0), u"abc");
  EXPECT_EQ(read.text(1), u"d");
  EXPECT_EQ(read.table.Item(0).extra.u16(0), 0x2222);
}

TEST(StringTable, ThrowsForAnIndexOutsideOfIt) {
  const ReadStrings read(support::stringTable({u"one"}));
  EXPECT_THROW(read.table.Item(1), std::out_of_range);
  EXPECT_THROW(read.table.Item(-1), std::out_of_range);
}

TEST(StringTable, IsEmptyWithoutBytes) {
  const ReadStrings read({});
  EXPECT_EQ(read.status, Status::kNothing);
  EXPECT_EQ(read.table.Count(), 0u);
}

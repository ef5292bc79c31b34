#include "wordreader/font_table.h"

#include <gtest/gtest.h>

#include "memory_storage.h"
#include "storage/byte_archives.h"

using support::Bytes;
using support::ByteWriter;
using support::Font;

namespace {

struct ReadFonts {
  explicit ReadFonts(Bytes content) : bytes(std::move(content)) {
    status = table.ReadRecord(ByteView(bytes.data(), bytes.size()), allocator);
  }
  KFontX font(unsigned int i) const {
    KFontX result;
    EXPECT_EQ(table.Item(i, &result), Status::kOk);
    return result;
  }

  Bytes bytes;
  ChainAllocator allocator;
  KDRFontTable table;
  Status status;
};

std::u16string textOf(const unsigned short* text) {
  return {reinterpret_cast<const char16_t*>(text), wcslen_2bit(text)};
}

/// A record with these bytes behind its size byte, in a table of its own.
Bytes tableOf(const Bytes& record, uint16_t extraSize = 0) {
  return ByteWriter().u16(1).u16(extraSize).u8(record.size()).bytes(record).take();
}

}  // namespace

TEST(FontTable, DecodesAFont) {
  Font font{.name = u"Arial", .alternateName = u"Helvetica", .family = 2, .trueType = true, .charset = 134};
  for (uint8_t i = 0; i < 10; ++i) font.panose[i] = static_cast<uint8_t>(i + 1);
  for (uint8_t i = 0; i < 24; ++i) font.signature[i] = static_cast<uint8_t>(i + 100);
  const ReadFonts read(support::fontTable({font}));
  const KFontX result = read.font(0);
  EXPECT_EQ(textOf(result.name), u"Arial");
  EXPECT_EQ(textOf(result.alternateName), u"Helvetica");
  EXPECT_EQ(result.family, 2);
  EXPECT_EQ(result.trueType, 1);
  EXPECT_EQ(result.characterSet, 134);
  EXPECT_EQ(result.panose[9], 10);
  EXPECT_EQ(result.signature[23], 123);
}

TEST(FontTable, GivesNoAlternateNameWhereThereIsNone) {
  const ReadFonts read(support::fontTable({Font{.name = u"Arial", .trueType = false}}));
  const KFontX result = read.font(0);
  EXPECT_EQ(result.alternateName, nullptr);
  EXPECT_EQ(result.trueType, 0);
  EXPECT_EQ(reinterpret_cast<const uint8_t*>(result.name), read.bytes.data() + 4 + 40);
}

TEST(FontTable, FindsFontsByIndex) {
  const ReadFonts read(support::fontTable({Font{.name = u"A"}, Font{.name = u"Bee"}, Font{.name = u"C"}}));
  EXPECT_EQ(read.table.Count(), 3u);
  EXPECT_EQ(textOf(read.font(1).name), u"Bee");
  EXPECT_EQ(textOf(read.font(2).name), u"C");
}

TEST(FontTable, SkipsTheExtraSizeBehindEachFont) {
  const Bytes one = tableOf(Bytes(43));
  Bytes table = ByteWriter().u16(2).u16(3).bytes(Bytes(one.begin() + 4, one.end())).zeros(3).u8(41).take();
  table.resize(table.size() + 39);
  table.insert(table.end(), {'z', 0});
  EXPECT_EQ(textOf(ReadFonts(table).font(1).name), u"z");
}

TEST(FontTable, FailsWithACountOfZeroOrMinusOne) {
  for (uint16_t count : {0, 0xFFFF}) {
    Bytes table = support::fontTable({Font{.name = u"A"}});
    support::patchInteger(table, 0, count);
    const ReadFonts read(table);
    EXPECT_EQ(read.status, Status::kMalformed);
    KFontX font;
    EXPECT_EQ(read.table.Item(0, &font), Status::kFailure);
    EXPECT_EQ(font.name, nullptr);
  }
}

TEST(FontTable, RefusesAnIndexOutsideOfIt) {
  const ReadFonts read(support::fontTable({Font{.name = u"A"}}));
  KFontX font;
  EXPECT_EQ(read.table.Item(1, &font), Status::kFailure);
  EXPECT_EQ(read.table.Item(0xFFFFFFFF, &font), Status::kFailure);
}

TEST(FontTable, HoldsNoFontsBehindItsBytes) {
  Bytes table = support::fontTable({Font{.name = u"A"}, Font{.name = u"B"}});
  support::patchInteger(table, 0, uint16_t{0xFFFE});
  EXPECT_EQ(ReadFonts(table).table.Count(), 2u);
}

TEST(FontTable, EndsANameWithItsRecord) {
  const ReadFonts read(tableOf(ByteWriter().zeros(39).text16(u"Name").take()));
  EXPECT_EQ(textOf(read.font(0).name), u"Name");
}

TEST(FontTable, EndsAnAlternateNameWithItsRecord) {
  const ReadFonts read(
      tableOf(ByteWriter().zeros(4).u8(2).zeros(34).text16(u"N").u16(0).text16(u"Alt").take()));
  EXPECT_EQ(textOf(read.font(0).name), u"N");
  EXPECT_EQ(textOf(read.font(0).alternateName), u"Alt");
}

TEST(FontTable, TakesAnAlternateNameOutsideTheRecordAsAbsent) {
  const ReadFonts read(tableOf(ByteWriter().zeros(4).u8(200).zeros(34).text16(u"N").u16(0).take()));
  EXPECT_EQ(read.font(0).alternateName, nullptr);
}

TEST(FontTable, ReadsNamesAtOddPlaces) {
  Bytes table = ByteWriter().u16(2).u16(0).u8(0).take();  // a record of one byte, which shifts the next
  const Bytes record = ByteWriter().zeros(39).text16(u"Odd").u16(0).take();
  const ReadFonts shifted(ByteWriter().bytes(table).u8(record.size()).bytes(record).take());
  EXPECT_EQ(textOf(shifted.font(0).name), u"");
  EXPECT_EQ(textOf(shifted.font(1).name), u"Odd");
}

TEST(FontTable, ReadsShortRecordsAsZero) {
  const ReadFonts read(tableOf({0x26, 0x90}));
  const KFontX font = read.font(0);
  EXPECT_EQ(font.family, 2);
  EXPECT_EQ(font.trueType, 1);
  EXPECT_EQ(font.characterSet, 0);
  EXPECT_EQ(textOf(font.name), u"");
}

TEST(FontTable, IsReadFromTheDocument) {
  support::WordDocument source;
  source.paragraph("x");
  source.font(u"Courier");
  const OpenedDocument opened(source);
  KFontX font;
  ASSERT_EQ(opened.document.GetFontTable().Item(0, &font), Status::kOk);
  EXPECT_EQ(textOf(font.name), u"Courier");
}

TEST(FontTable, IsEmptyIfTheDocumentHasNone) {
  support::WordDocument source;
  source.paragraph("x");
  source.dropTable(mso_word::FCLCB_FONTS);
  EXPECT_EQ(OpenedDocument(source).document.GetFontTable().Count(), 0u);
}

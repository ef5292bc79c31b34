#include "wordreader/sections.h"

#include <gtest/gtest.h>

#include "memory_storage.h"

using support::Bytes;
using support::sprm;
using support::WordDocument;

namespace {

const Bytes kWidth = sprm(0xB01F, 15840);
constexpr uint32_t kFcSepxOfFirst = 8 + 2;  // in a table of one section: behind two positions

Bytes bytesOf(ByteView view) {
  return Bytes(view.data(), view.data() + view.size());
}

Bytes propertiesOf(const OpenedDocument& opened, uint32_t section) {
  return bytesOf(opened.document.GetPlcfsed().Item(section, opened.document).sprms);
}

WordDocument oneSection(const support::Sprms& sprms) {
  WordDocument source;
  source.section(sprms);
  source.paragraph("text");
  return source;
}

}  // namespace

TEST(Sections, HaveARangeAndProperties) {
  WordDocument source;
  source.section({kWidth});
  source.paragraph("one");
  source.section({sprm(0x3009, 1)});
  source.paragraph("two");
  const OpenedDocument opened(source);
  ASSERT_EQ(opened.document.GetPlcfsed().Count(), 2u);
  EXPECT_EQ(opened.document.GetPlcfsed().Item(1, opened.document).range.start, 4u);
  EXPECT_EQ(propertiesOf(opened, 0), kWidth);
  EXPECT_EQ(propertiesOf(opened, 1), sprm(0x3009, 1));
}

TEST(Sections, WithOffsetMinusOneHaveNoProperties) {
  WordDocument source = oneSection({kWidth});
  source.editTable(mso_word::FCLCB_SECTIONS,
                   [](Bytes& table) { support::patchInteger(table, kFcSepxOfFirst, uint32_t{0xFFFFFFFF}); });
  EXPECT_TRUE(propertiesOf(OpenedDocument(source), 0).empty());
}

TEST(Sections, OutsideTheTableAreEmpty) {
  const OpenedDocument opened(oneSection({kWidth}));
  EXPECT_TRUE(propertiesOf(opened, 1).empty());
}

TEST(Sections, KeepTheirListOnceItIsRead) {
  const OpenedDocument opened(oneSection({kWidth}));
  const ByteView first = opened.document.GetPlcfsed().Item(0, opened.document).sprms;
  const unsigned int before = opened.storage.content(L"WordDocument").reads;
  EXPECT_EQ(opened.document.GetPlcfsed().Item(0, opened.document).sprms.data(), first.data());
  EXPECT_EQ(opened.storage.content(L"WordDocument").reads, before);
}

TEST(Sections, WhoseListTheStreamCutsHaveWhatIsThere) {
  WordDocument source = oneSection({kWidth});
  const auto end = static_cast<uint32_t>(source.streams().wordDocument.size());
  source.editWordDocument([](Bytes& stream) { stream.insert(stream.end(), {0xFF, 0x00, 1, 2, 3}); });
  source.editTable(mso_word::FCLCB_SECTIONS,
                   [=](Bytes& table) { support::patchInteger(table, kFcSepxOfFirst, end); });
  EXPECT_EQ(propertiesOf(OpenedDocument(source), 0), (Bytes{1, 2, 3}));
}

TEST(Sections, OutsideTheStreamThrow) {
  WordDocument source = oneSection({kWidth});
  source.editTable(mso_word::FCLCB_SECTIONS,
                   [](Bytes& table) { support::patchInteger(table, kFcSepxOfFirst, uint32_t{0xFFFFFFF0}); });
  const OpenedDocument opened(source);
  EXPECT_THROW(propertiesOf(opened, 0), int);
}

TEST(Sections, HaveNoMorePropertiesInAllThanTheStreamHolds) {
  WordDocument source;
  source.paragraph("text");
  const uint32_t offset = source.wordDocumentData(Bytes(2000, 4));  // any two bytes are the size 0x0404
  std::vector<uint32_t> positions = {0};
  std::vector<Bytes> records;
  for (uint32_t i = 0; i < 500; ++i) {
    positions.push_back(i + 1);
    records.push_back(support::ByteWriter().u16(0).u32(offset + i).zeros(6).take());
  }
  source.table(mso_word::FCLCB_SECTIONS, support::positionTable(positions, records));
  const OpenedDocument opened(source);
  size_t total = 0;
  for (uint32_t i = 0; i < records.size(); ++i) total += propertiesOf(opened, i).size();
  EXPECT_GE(total, 0x0404u);
  EXPECT_LE(total, opened.storage.content(L"WordDocument").bytes.size());
}

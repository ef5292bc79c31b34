#include "story/table_paragraph.h"

#include <gtest/gtest.h>

#include <deque>
#include <stdexcept>

#include "support/temp_folder.h"
#include "support/word_document_writer.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::ByteWriter;
using support::sprm;
using support::Sprms;

/// A document with this "Data" stream (none if it is empty).
class OpenDocument {
 public:
  explicit OpenDocument(const Bytes& data) {
    support::WordDocument document;
    document.paragraph("text");
    if (!data.empty()) document.data(data);
    document.save(folder_.path("in.doc"));
    if (failed(document_.OpenDocument(folder_.path("in.doc").c_str(), 0))) {
      throw std::runtime_error("the document does not open");
    }
  }
  const KDRDocument* get() const { return &document_; }

 private:
  support::TempFolder folder_;
  KDRDocument document_;
};

/// The list stays where it is, as those of a document do.
TableParagraph look(KTableParagraphs& paragraphs, const Sprms& sprms) {
  static std::deque<Bytes> lists;
  const Bytes& list = lists.emplace_back(sprms.bytes());
  return paragraphs.Look(ByteView(list.data(), list.size()));
}

TableParagraph lookWithData(const Bytes& data, const Sprms& sprms) {
  const OpenDocument document(data);
  KTableParagraphs paragraphs(document.get());
  TableParagraph found = look(paragraphs, sprms);
  found.sprms = {};  // goes with the document
  return found;
}

/// A list as it lies in the "Data" stream.
Bytes hugeList(const Sprms& sprms) {
  return ByteWriter().u16(static_cast<uint32_t>(sprms.size())).bytes(sprms.bytes()).take();
}

TEST(TableParagraph, IsOutsideWithoutTheFlag) {
  KTableParagraphs paragraphs(nullptr);
  EXPECT_EQ(TableParagraph::OUTSIDE, look(paragraphs, {}).kind);
  EXPECT_EQ(TableParagraph::OUTSIDE, look(paragraphs, {sprm(0x6649, 2), sprm(0x2417, 1)}).kind);
}

TEST(TableParagraph, TakesTheFirstOfRepeatedSprms) {
  KTableParagraphs paragraphs(nullptr);
  const TableParagraph found =
      look(paragraphs, {sprm(0x2416, 3), sprm(0x2416, 0), sprm(0x6649, 2), sprm(0x6649, 5)});
  EXPECT_EQ(TableParagraph::INSIDE, found.kind);
  EXPECT_EQ(3, found.inTable);
  EXPECT_EQ(2, found.depth);
}

TEST(TableParagraph, CountsFlagsByTheirPresence) {
  KTableParagraphs paragraphs(nullptr);
  const TableParagraph plain = look(paragraphs, {sprm(0x2416, 1)});
  EXPECT_FALSE(plain.rowEnd || plain.innerCellEnd || plain.definesRow);
  const TableParagraph flagged = look(paragraphs, {sprm(0x2416, 1), sprm(0x244C, 0), sprm(0x244B, 0)});
  EXPECT_TRUE(flagged.rowEnd && flagged.innerCellEnd);
  EXPECT_TRUE(look(paragraphs, {sprm(0x2416, 1), sprm(0x2417, 0)}).rowEnd);
}

TEST(TableParagraph, LooksIntoTheDataStreamOnlyWithoutTheFlag) {
  KTableParagraphs paragraphs(nullptr);
  EXPECT_EQ(1, look(paragraphs, {sprm(0x2416, 1), sprm(0x6646, 0)}).depth);
  EXPECT_EQ(TableParagraph::INSIDE, look(paragraphs, {sprm(0x2416, 1), sprm(0x6646, 0)}).kind);
}

TEST(TableParagraph, TakesTheListOfTheDataStreamInPlaceOfItsOwn) {
  const Bytes data = hugeList({sprm(0x6649, 3), sprm(0x2416, 0)});
  const TableParagraph found = lookWithData(data, {sprm(0x2417, 1), sprm(0x6649, 2), sprm(0x6645, 0)});
  EXPECT_EQ(TableParagraph::INSIDE, found.kind);
  EXPECT_EQ(1, found.inTable);
  EXPECT_EQ(3, found.depth);
  EXPECT_FALSE(found.rowEnd);
}

TEST(TableParagraph, PrefersTheNewerSprmThatPointsIntoTheDataStream) {
  Bytes data = hugeList({sprm(0x6649, 3), sprm(0x2416, 1)});
  const auto second = static_cast<int64_t>(data.size());
  const Bytes more = hugeList({sprm(0x6649, 4), sprm(0x2416, 1)});
  data.insert(data.end(), more.begin(), more.end());
  EXPECT_EQ(4, lookWithData(data, {sprm(0x6645, 0), sprm(0x6646, second)}).depth);
}

TEST(TableParagraph, IsUnreadableWhereTheDataStreamDoesNotSayTable) {
  const Bytes data = hugeList({sprm(0x6649, 3)});
  EXPECT_EQ(TableParagraph::UNREADABLE, lookWithData(data, {sprm(0x6646, 0)}).kind);
  EXPECT_EQ(TableParagraph::UNREADABLE, lookWithData(data, {sprm(0x6646, 0xFFFFFFFF)}).kind);
  EXPECT_EQ(TableParagraph::UNREADABLE, lookWithData(hugeList({}), {sprm(0x6646, 0)}).kind);
  EXPECT_EQ(TableParagraph::UNREADABLE, lookWithData({}, {sprm(0x6646, 0)}).kind);
}

TEST(TableParagraph, IsUnreadableWithACutOffset) {
  KTableParagraphs paragraphs(nullptr);
  EXPECT_EQ(TableParagraph::UNREADABLE, look(paragraphs, support::sprm16(0x6646, 0)).kind);
}

TEST(TableParagraph, CutsAListAtTheEndOfTheDataStream) {
  const Bytes data = ByteWriter().u16(0xFFFF).bytes(sprm(0x2416, 1)).take();
  EXPECT_EQ(TableParagraph::INSIDE, lookWithData(data, {sprm(0x6646, 0)}).kind);
}

TEST(TableParagraphs, ReadAListOnce) {
  const OpenDocument document(hugeList({sprm(0x2416, 1)}));
  KTableParagraphs paragraphs(document.get());
  const TableParagraph first = look(paragraphs, {sprm(0x6646, 0)});
  EXPECT_EQ(first.sprms.data(), look(paragraphs, {sprm(0x6645, 0)}).sprms.data());
}

TEST(TableParagraphs, ShareTheBytesOfListsThatOverlap) {
  // From every third byte on: the length 0x0124, then sprmPFInTable again and again.
  ByteWriter data;
  for (int i = 0; i < 1000; ++i) data.bytes(sprm(0x2416, 1));
  const OpenDocument document(data.take());
  KTableParagraphs paragraphs(document.get());
  const uint8_t* before = nullptr;
  for (int i = 0; i < 900; ++i) {
    const TableParagraph found = look(paragraphs, {sprm(0x6646, 1 + i * 3)});
    ASSERT_EQ(TableParagraph::INSIDE, found.kind);
    ASSERT_EQ(std::min(0x0124, 3000 - 3 - i * 3), static_cast<int>(found.sprms.size()));
    if (i >= 100) {
      ASSERT_EQ(before + 3, found.sprms.data());
    }
    before = found.sprms.data();
  }
}

}  // namespace
}  // namespace pagerex

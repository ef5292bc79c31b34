// What the document writer of the tests writes where the views do not look: the bytes of its tables.

#include <gtest/gtest.h>

#include "support/drawing_writer.h"
#include "support/form_fields.h"
#include "support/opened_document.h"
#include "support/word_document_writer.h"

using namespace support;
using namespace mso_word;

namespace {

/// A table by its FIB index.
Bytes tableOf(const WordStreams& streams, uint32_t fibIndex) {
  const ByteView fib(streams.wordDocument.data(), streams.wordDocument.size());
  const uint32_t start = fib.u32(WordDocument::pairOffset(fibIndex));
  const uint32_t length = fib.u32(WordDocument::pairOffset(fibIndex) + 4);
  return {streams.table.begin() + start, streams.table.begin() + start + length};
}

/// The first `count` numbers of a table, its positions.
std::vector<uint32_t> numbers(const Bytes& table, size_t count) {
  const ByteView view(table.data(), table.size());
  std::vector<uint32_t> result;
  for (size_t i = 0; i < count; ++i) result.push_back(view.u32(i * 4));
  return result;
}

constexpr uint32_t kHeaders = 11, kAuthors = 51, kHeaderTextBoxes = 58, kTextBoxBreaks = 75;

}  // namespace

TEST(DocumentWriterTables, HeadersLieBehindTheSeparators) {
  WordDocument doc;
  doc.paragraph("x");
  doc.header(0, HeaderSlot::kOddHeader).paragraph("ab");
  doc.header(0, HeaderSlot::kFirstFooter).paragraph("c");
  EXPECT_EQ(OpenedDocument(doc).text(SUBDOC_HEADER), u"ab\r\rc\r\r");
  EXPECT_EQ(numbers(tableOf(doc.streams(), kHeaders), 14),
            (std::vector<uint32_t>{0, 0, 0, 0, 0, 0, 0, 0, 4, 4, 4, 4, 7, 8}));
  EXPECT_EQ(tableOf(doc.streams(), kHeaders).size(), 14 * 4u);
}

TEST(DocumentWriterTables, EachSectionHasItsHeaders) {
  WordDocument doc;
  doc.paragraph("one");
  doc.section({}).paragraph("two");
  doc.header(1, HeaderSlot::kEvenHeader).paragraph("a");
  doc.noteSeparator(0).paragraph("s");
  const Bytes table = tableOf(doc.streams(), kHeaders);
  EXPECT_EQ(table.size(), (6 + 12 + 2) * 4u);
  EXPECT_EQ(numbers(table, 14), (std::vector<uint32_t>{0, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 6}));
}

TEST(DocumentWriterTables, RefusesAHeaderOfNoSection) {
  WordDocument doc;
  doc.paragraph("x");
  doc.header(1, HeaderSlot::kOddHeader).paragraph("a");
  EXPECT_THROW(doc.build(), std::invalid_argument);
}

TEST(DocumentWriterTables, FormFieldsHaveTheirData) {
  WordDocument doc;
  formDropDown(doc, doc.paragraph(), "Drop", {"one", "two"}, 1);
  const WordStreams streams = doc.streams();
  const ByteView data(streams.data.data(), streams.data.size());
  EXPECT_EQ(OpenedDocument(doc).text(), u"\x13 FORMDROPDOWN \x01\x14\x15\r");
  EXPECT_EQ(data.u32(0), data.size());
  EXPECT_EQ(data.u16(4), 68);
  EXPECT_EQ(data.u32(68), 0xFFFFFFFF);
  EXPECT_EQ(data.u16(72), 0x8000 | 1 << 2 | 2);
  EXPECT_EQ(data.u16(78), 4);  // characters of the name
  EXPECT_EQ(data.u16(90), 0);  // the default
  EXPECT_EQ(data.u16(112), 0xFFFF);
  EXPECT_EQ(data.u16(114), 2);
  EXPECT_EQ(data.u16(126), 3);
  EXPECT_EQ(data.u16(128), u't');
}

TEST(DocumentWriterTables, FormFieldsKeepTheirState) {
  const auto bitsOf = [](const FormField& field) {
    const Bytes bytes = field.bytes();
    return ByteView(bytes.data(), bytes.size()).u16(72);
  };
  EXPECT_EQ(bitsOf({.kind = FormField::Kind::kCheckBox, .checked = true}), 1 << 2 | 1);
  EXPECT_EQ(bitsOf({.kind = FormField::Kind::kCheckBox, .byDefault = 1}), 25 << 2 | 1);
  EXPECT_EQ(bitsOf({.kind = FormField::Kind::kText}), 0);
}

TEST(DocumentWriterTables, AuthorsOfChangesAreTabled) {
  WordDocument doc;
  const uint16_t ann = doc.author("Ann");
  doc.paragraph().inserted("in", ann, 5).deleted("out", ann, 6);
  EXPECT_EQ(ann, 1);
  EXPECT_EQ(tableOf(doc.streams(), kAuthors), stringTable({u"Unknown", u"Ann"}));
  EXPECT_EQ(insertedSprms(1, 5).bytes(), (Bytes{0x01, 0x08, 1, 0x04, 0x48, 1, 0, 0x05, 0x68, 5, 0, 0, 0}));
  EXPECT_EQ(deletedSprms(1, 5).bytes(), (Bytes{0x00, 0x08, 1, 0x63, 0x48, 1, 0, 0x64, 0x68, 5, 0, 0, 0}));
}

TEST(DocumentWriterTables, TextBoxesHaveAnchorsAndTexts) {
  WordDocument doc;
  Paragraph& paragraph = doc.paragraph("ab");
  drawing::addShape(paragraph, drawing::textBox(doc, 1025, [](Story& s) { s.paragraph("one"); }));
  drawing::addShape(paragraph, drawing::textBox(doc, 1026, [](Story& s) { s.paragraph("two!"); }));
  const WordStreams streams = doc.streams();
  EXPECT_EQ(OpenedDocument(doc).text(), u"ab\b\b\r");
  EXPECT_EQ(OpenedDocument(doc).text(SUBDOC_TEXTBOX), u"one\rtwo!\r");
  EXPECT_EQ(numbers(tableOf(streams, FCLCB_SHAPE_ANCHORS), 4), (std::vector<uint32_t>{2, 3, 5, 1025}));
  EXPECT_EQ(numbers(tableOf(streams, FCLCB_TEXTBOXES), 5), (std::vector<uint32_t>{0, 4, 9, 10, 1}));
  EXPECT_EQ(tableOf(streams, FCLCB_TEXTBOXES).size(), 4 * 4 + 3 * 22u);
  EXPECT_EQ(tableOf(streams, kTextBoxBreaks).size(), 4 * 4 + 3 * 6u);
}

TEST(DocumentWriterTables, TextBoxesOfHeadersStandApart) {
  WordDocument doc;
  doc.paragraph("x");
  drawing::addShape(doc.header(0, HeaderSlot::kEvenHeader).paragraph("e"),
                    drawing::textBox(
                        doc, 2049, [](Story& s) { s.paragraph("in it"); }, true));
  const WordStreams streams = doc.streams();
  EXPECT_EQ(OpenedDocument(doc).text(SUBDOC_HEADER_TEXTBOX), u"in it\r");
  EXPECT_EQ(numbers(tableOf(streams, FCLCB_HEADER_SHAPE_ANCHORS), 3), (std::vector<uint32_t>{1, 5, 2049}));
  EXPECT_EQ(numbers(tableOf(streams, kHeaderTextBoxes), 3), (std::vector<uint32_t>{0, 6, 7}));
  EXPECT_TRUE(tableOf(streams, FCLCB_SHAPE_ANCHORS).empty());
  // The one drawing, behind the group of both, is that of headers.
  EXPECT_EQ(tableOf(streams, FCLCB_DRAWINGS)[8 + 8 + 16], 1);
}

TEST(DocumentWriterTables, ChainedTextBoxesShareAText) {
  WordDocument doc;
  const auto boxes = drawing::textBoxes(doc, {1025, 1026}, [](Story& s) { s.paragraph("text"); });
  drawing::addShape(drawing::addShape(doc.paragraph(), boxes[0]), boxes[1]);
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(OpenedDocument(doc).text(SUBDOC_TEXTBOX), u"text\r");
  const Bytes texts = tableOf(doc.streams(), FCLCB_TEXTBOXES);
  EXPECT_EQ(numbers(texts, 4), (std::vector<uint32_t>{0, 5, 6, 2}));  // and the count of boxes
}

TEST(DocumentWriterTables, StoredPicturesLieInTheGroup) {
  WordDocument doc;
  EXPECT_EQ(doc.storePicture(drawing::Blip{}.entry()), 1u);
  drawing::addShape(doc.paragraph(), drawing::Shape(75));
  const Bytes drawings = tableOf(doc.streams(), FCLCB_DRAWINGS);
  EXPECT_EQ(ByteView(drawings.data(), drawings.size()).u16(8 + 24 + 2), 0xF001);
}

TEST(DocumentWriterTables, SummaryHasBothStreams) {
  WordDocument doc;
  doc.paragraph("x");
  doc.summary({.title = "T"});
  const CompoundFile file = doc.compound().build();
  EXPECT_NO_THROW(file.startPage(u"\005SummaryInformation"));
  EXPECT_NO_THROW(file.startPage(u"\005DocumentSummaryInformation"));
}

TEST(DocumentWriterTables, DocumentPropertiesCanBePatched) {
  WordDocument doc;
  doc.paragraph("x");
  doc.patchDop(492, uint16_t{2});
  EXPECT_EQ(tableOf(doc.streams(), FCLCB_DOCUMENT_PROPERTIES)[492], 2);
}

TEST(DocumentWriterTables, PartsOfATableStyleAreSprms) {
  EXPECT_EQ(partSprm(kPartOfRun, kFirstRow, {sprm(0x0835, 1)}), (Bytes{0x85, 0xCA, 5, 1, 0, 0x35, 0x08, 1}));
  EXPECT_EQ(tableLookSprm(0x20), (Bytes{0x0A, 0x74, 0, 0, 0x20, 0}));
}

// Fonts, bookmarks, notes, annotations, fields, sections and string tables.
#include <gtest/gtest.h>

#include "support/opened_document.h"
#include "wordreader/annotations.h"
#include "wordreader/bookmarks.h"
#include "wordreader/fields.h"
#include "wordreader/font_table.h"
#include "wordreader/notes.h"
#include "wordreader/sections.h"

namespace {

using mso_word::SUBDOC_ANNOTATION;
using mso_word::SUBDOC_FOOTNOTE;
using mso_word::SUBDOC_MAIN;
using support::Annotation;
using support::Bytes;
using support::ByteWriter;
using support::OpenedDocument;
using support::sprm;
using support::Story;
using support::WordDocument;

std::u16string textOf(const unsigned short* text) {
  std::u16string result;
  while (*text) result += static_cast<char16_t>(*text++);
  return result;
}

WordDocument document() {
  WordDocument doc;
  doc.paragraph("x");
  return doc;
}

// Fonts.

TEST(Fonts, ARecordIsDecoded) {
  WordDocument doc = document();
  support::Font font{.name = u"\u5B8B\u4F53", .alternateName = "SimSun", .family = 3, .charset = 134};
  font.panose[9] = 7;
  font.signature[23] = 8;
  const uint16_t index = doc.font(font);
  const OpenedDocument opened(doc);
  KFontX read;
  ASSERT_EQ(opened->GetFontTable().Item(index, &read), Status::kOk);
  EXPECT_EQ(textOf(read.name), u"\u5B8B\u4F53");
  EXPECT_EQ(textOf(read.alternateName), u"SimSun");
  EXPECT_EQ(read.family, 3);
  EXPECT_EQ(read.characterSet, 134);
  EXPECT_EQ(read.trueType, 1);
  EXPECT_EQ(read.panose[9], 7);
  EXPECT_EQ(read.signature[23], 8);
}

TEST(Fonts, WithoutAnAlternateNameThePointerIsNull) {
  WordDocument doc = document();
  const uint16_t index = doc.font("Arial");
  const OpenedDocument opened(doc);
  KFontX read;
  ASSERT_EQ(opened->GetFontTable().Item(index, &read), Status::kOk);
  EXPECT_EQ(textOf(read.name), u"Arial");
  EXPECT_EQ(read.alternateName, nullptr);
}

TEST(Fonts, ACountOfZeroFailsForEveryIndex) {
  for (const uint16_t count : {uint16_t{0}, uint16_t{0xFFFF}}) {
    WordDocument doc = document();
    doc.editTable(mso_word::FCLCB_FONTS, [count](Bytes& table) { support::patchInteger(table, 0, count); });
    const OpenedDocument opened(doc);
    KFontX read;
    EXPECT_EQ(opened->GetFontTable().Item(0, &read), Status::kFailure);
    EXPECT_EQ(read.name, nullptr);
  }
}

TEST(Fonts, ANameWithoutItsEndIsReadToTheEndOfTheRecord) {
  WordDocument doc = document();
  doc.table(mso_word::FCLCB_FONTS,
            ByteWriter().u16(1).u16(0).u8(40 + 4 - 1).zeros(39).u16('a').u16('b').take());
  const OpenedDocument opened(doc);
  KFontX read;
  ASSERT_EQ(opened->GetFontTable().Item(0, &read), Status::kOk);
  EXPECT_EQ(textOf(read.name), u"ab");
}

TEST(Fonts, ARecordTooShortForItsNameHasAnEmptyOne) {
  WordDocument doc = document();
  doc.table(mso_word::FCLCB_FONTS, ByteWriter().u16(1).u16(0).u8(3).zeros(3).take());
  const OpenedDocument opened(doc);
  KFontX read;
  ASSERT_EQ(opened->GetFontTable().Item(0, &read), Status::kOk);
  EXPECT_EQ(textOf(read.name), u"");
}

// Bookmarks.

TEST(BookmarkTable, ABookmarkInAFootnoteIsRelativeToTheFootnotes) {
  WordDocument doc;
  doc.paragraph("abc").bookmarkStart("main").run("d").bookmarkEnd("main").footnote(
      [](Story& story) { story.paragraph("n").bookmarkStart("note").run("o").bookmarkEnd("note"); });
  const OpenedDocument opened(doc);
  const KDRBookMarks& bookmarks = opened->GetBookMarks();
  ASSERT_EQ(bookmarks.GetStarts(SUBDOC_MAIN).Count(), 1u);
  EXPECT_EQ(bookmarks.GetStarts(SUBDOC_MAIN).Item(0).range.start, 3u);
  ASSERT_EQ(bookmarks.GetStarts(SUBDOC_FOOTNOTE).Count(), 1u);
  const auto note = bookmarks.GetStarts(SUBDOC_FOOTNOTE).Item(0);
  EXPECT_EQ(opened.text(SUBDOC_FOOTNOTE)[note.range.start], u'o');
  EXPECT_EQ(textOf(note.name.text), u"note");
  EXPECT_EQ(note.bkf.ibkl, 0);
}

TEST(BookmarkTable, StartsAtOnePositionAllStandInTheMapInTheirOrder) {
  WordDocument doc;
  doc.paragraph("a").bookmarkStart("p").bookmarkStart("q").run("b").bookmarkEnd("p").bookmarkEnd("q");
  const OpenedDocument opened(doc);
  const KBookmarkPositions& starts = opened->GetBookMarks().GetCPStarts(SUBDOC_MAIN);
  const std::vector<std::pair<unsigned, unsigned>> entries(starts.begin(), starts.end());
  EXPECT_EQ(entries, (std::vector<std::pair<unsigned, unsigned>>{{1, 0}, {1, 1}}));
}

TEST(BookmarkTable, IsEmptyWhereNamesAndPositionsDiffer) {
  WordDocument doc;
  doc.paragraph("a").bookmarkStart("p").run("b").bookmarkEnd("p");
  doc.table(mso_word::FCLCB_BOOKMARK_NAMES, support::stringTable({u"p", u"too many"}));
  const OpenedDocument opened(doc);
  EXPECT_EQ(opened->GetBookMarks().GetStarts(SUBDOC_MAIN).Count(), 0u);
  EXPECT_TRUE(opened->GetBookMarks().GetCPStarts(SUBDOC_MAIN).empty());
}

TEST(BookmarkTable, AnIndexOutsideNamesNothing) {
  const WordDocument doc = document();
  const OpenedDocument opened(doc);
  const auto item = opened->GetBookMarks().GetStarts(SUBDOC_MAIN).Item(5);
  EXPECT_EQ(textOf(item.name.text), u"");
}

// String tables, through the names of bookmarks.

/// The names of as many bookmarks at the start of the text as the table says there are.
std::vector<std::u16string> namesOf(const Bytes& table, uint32_t count) {
  WordDocument doc = document();
  doc.table(mso_word::FCLCB_BOOKMARK_NAMES, table);
  const std::vector<uint32_t> positions(count + 1, 0);
  doc.table(mso_word::FCLCB_BOOKMARK_STARTS,
            support::positionTable(positions, std::vector<Bytes>(count, Bytes(4, 0))));
  doc.table(mso_word::FCLCB_BOOKMARK_ENDS, support::positionTable(positions));
  const OpenedDocument opened(doc);
  std::vector<std::u16string> names;
  const KDRPlcfBkf& starts = opened->GetBookMarks().GetStarts(SUBDOC_MAIN);
  for (uint32_t i = 0; i < starts.Count(); ++i)
    names.push_back(textOf(starts.Item(static_cast<int>(i)).name.text));
  return names;
}

using Names = std::vector<std::u16string>;

TEST(StringTable, SixteenBitStringsAndTheirExtraData) {
  EXPECT_EQ(namesOf(support::stringTable({u"one", u"", u"\u0436"}, 2, {{1, 2}, {3, 4}, {5, 6}}), 3),
            (Names{u"one", u"", u"\u0436"}));
}

TEST(StringTable, OnlyTheLowByteOfALengthCountsSoThatTheRestIsOutOfStep) {
  const std::u16string longName(258, u'a');
  const Names names = namesOf(support::stringTable({longName, u"next"}), 2);
  ASSERT_EQ(names.size(), 2u);
  EXPECT_EQ(names[0], u"aa");
  EXPECT_NE(names[1], u"next");
}

TEST(StringTable, EightBitStringsSkipAByteBehindTheirLength) {
  const Bytes table =
      ByteWriter().u8(2).u8(0).u8(1).zeros(3).u8(2).u8(0).u8('a').u8(0x80).u8(0).u8(1).u8(0).u8('b').take();
  EXPECT_EQ(namesOf(table, 2), (Names{u"a\u20AC", u"b"}));
}

TEST(StringTable, StringsThatAreCutOffAreWhatIsThere) {
  Bytes table = support::stringTable({u"whole", u"cut"});
  table.pop_back();
  table.pop_back();
  EXPECT_EQ(namesOf(table, 2), (Names{u"whole", u"cu"}));
}

TEST(StringTable, ACountWithoutStringsNamesNothing) {
  EXPECT_EQ(namesOf(ByteWriter().u16(0xFFFF).u16(3).u16(0).take(), 3), (Names{u"", u"", u""}));
}

// Notes.

TEST(NoteTables, TellReferencesAndTexts) {
  WordDocument doc;
  doc.paragraph("ab").footnote("First.").run("c").endnote("End.");
  const OpenedDocument opened(doc);
  ASSERT_EQ(opened->GetFootnotes().GetPositions().Count(), 1u);
  EXPECT_EQ(opened->GetFootnotes().GetPositions().Position(0), 2u);
  EXPECT_EQ(opened->GetFootnotes().GetTextRanges().Range(0).start, 0u);
  ASSERT_EQ(opened->GetEndnotes().GetPositions().Count(), 1u);
  EXPECT_EQ(opened->GetEndnotes().GetPositions().Position(0), 4u);
}

TEST(NoteTables, EndnoteTextsAreNotReadWithoutReferencesButFootnoteTextsAre) {
  WordDocument doc;
  doc.paragraph("ab").footnote("First.").run("c").endnote("End.");
  doc.dropTable(mso_word::FCLCB_FOOTNOTE_REFS).dropTable(mso_word::FCLCB_ENDNOTE_REFS);
  const OpenedDocument opened(doc);
  EXPECT_GT(opened->GetFootnotes().GetTextRanges().Count(), 0u);
  EXPECT_EQ(opened->GetEndnotes().GetTextRanges().Count(), 0u);
}

// Annotations.

TEST(AnnotationTables, ATagOfMinusOneHasARangeOfLengthZero) {
  WordDocument doc;
  doc.paragraph("abcdef").annotation("Look.");
  const OpenedDocument opened(doc);
  ASSERT_EQ(opened->GetAnnotations().GetRefs().Count(), 1u);
  EXPECT_EQ(opened->GetAnnotations().GetRefs().Item(0).rangeLength, 0u);
  EXPECT_EQ(opened->GetAnnotations().GetRefs().Item(0).position, 6u);
}

TEST(AnnotationTables, ARangeReachesFromItsStartToTheReference) {
  WordDocument doc;
  Annotation by;
  by.rangeTag = 1234;
  doc.paragraph("ab").annotationStart(1234).run("cdef").annotationEnd(1234).annotation("Look.", by);
  EXPECT_EQ(OpenedDocument(doc)->GetAnnotations().GetRefs().Item(0).rangeLength, 4u);
}

TEST(AnnotationTables, ATagThatNamesNoRangeHasLengthZero) {
  WordDocument doc;
  Annotation by;
  by.rangeTag = 77;
  doc.paragraph("ab").annotation("Look.", by);
  EXPECT_EQ(OpenedDocument(doc)->GetAnnotations().GetRefs().Item(0).rangeLength, 0u);
}

TEST(AnnotationTables, WithoutOwnersThereAreNoReferences) {
  WordDocument doc;
  doc.paragraph("ab").annotation("Look.");
  doc.dropTable(mso_word::FCLCB_ANNOTATION_OWNERS);
  EXPECT_EQ(OpenedDocument(doc)->GetAnnotations().GetRefs().Count(), 0u);
}

TEST(AnnotationTables, AuthorsHaveNamesAndInitials) {
  WordDocument doc;
  doc.paragraph("ab")
      .annotation("1", {.author = u"Ann", .initials = u"AX"})
      .annotation("2", {.author = u"Bob"});
  const OpenedDocument opened(doc);
  const KDRAnnotations& annotations = opened->GetAnnotations();
  const UserInfo& first = annotations.GetAuthor(annotations.GetRefs().Item(0));
  EXPECT_EQ(textOf(first.name), u"Ann");
  EXPECT_EQ(textOf(annotations.GetAuthor(annotations.GetRefs().Item(1)).name), u"Bob");
}

TEST(AnnotationTables, ALongAuthorIsCutTo63Characters) {
  WordDocument doc;
  doc.paragraph("ab").annotation("1", {.author = std::u16string(200, u'n')});
  const OpenedDocument opened(doc);
  EXPECT_EQ(textOf(opened->GetAnnotations().GetUsers().at(0).name), std::u16string(63, u'n'));
}

TEST(AnnotationTables, AStrayAuthorIndexNamesNobody) {
  for (const int16_t index : {int16_t{5}, int16_t{-1}, int16_t{0x7FFF}}) {
    WordDocument doc;
    doc.paragraph("ab").annotation("1");
    doc.editTable(mso_word::FCLCB_ANNOTATION_REFS,
                  [index](Bytes& table) { support::patchInteger(table, 8 + 20, index); });
    const OpenedDocument opened(doc);
    const KDRAnnotations& annotations = opened->GetAnnotations();
    ASSERT_EQ(annotations.GetRefs().Count(), 1u);
    EXPECT_EQ(textOf(annotations.GetAuthor(annotations.GetRefs().Item(0)).name), u"");
  }
}

TEST(AnnotationTables, DatesHaveEighteenBytesEach) {
  WordDocument doc;
  doc.paragraph("ab").annotation("1", {.dttm = 0x12345678}).annotation("2", {.dttm = 0x9ABCDEF0});
  const OpenedDocument opened(doc);
  const KDRAtnDTTMs& dates = opened->GetAnnotations().GetDTTMs();
  ASSERT_EQ(dates.Count(), 2u);
  EXPECT_EQ(+dates.Item(1)->value, 0x9ABCDEF0u);
  EXPECT_EQ(dates.Item(2), nullptr);
}

// Fields.

TEST(FieldTables, MarksAppearAsTheyStand) {
  WordDocument doc;
  doc.paragraph("a").field(88, "code", "b").fieldBegin(0);
  const OpenedDocument opened(doc);
  const KDRFieldContext& fields = opened->GetFields(SUBDOC_MAIN);
  ASSERT_EQ(fields.Count(), 4u);
  EXPECT_EQ(fields.GetCP(0), 1u);
  EXPECT_EQ(fields.Item(0).GetFieldType(), 88);
  EXPECT_EQ(fields.Item(1).fld.mark & 31, 20);
  EXPECT_EQ(fields.Item(2).fld.mark & 31, 21);
  EXPECT_EQ(fields.Item(3).GetFieldType(), 0);
}

TEST(FieldTables, ASubDocumentWithoutFieldsHasAnEmptyContext) {
  const WordDocument doc = document();
  const OpenedDocument opened(doc);
  for (uint32_t type = 0; type < mso_word::kSubDocCount; ++type) {
    const KDRFieldContext& fields = opened->GetFields(static_cast<mso_word::SUBDOC_TYPE>(type));
    EXPECT_EQ(fields.Count(), 0u);
    EXPECT_FALSE(fields.Good());
  }
}

TEST(FieldTables, EachSubDocumentHasItsOwn) {
  WordDocument doc;
  doc.paragraph("a").footnote([](Story& story) { story.paragraph("n").field(33, "PAGE", "1"); });
  const OpenedDocument opened(doc);
  EXPECT_EQ(opened->GetFields(SUBDOC_FOOTNOTE).Count(), 3u);
  EXPECT_EQ(opened->GetFields(SUBDOC_MAIN).Count(), 0u);
  EXPECT_EQ(opened->GetFields(SUBDOC_ANNOTATION).Count(), 0u);
}

TEST(FieldTables, AMarkIsFoundByItsPositionAlsoWherePositionsDescend) {
  const Bytes mark = {19, 33};
  for (const std::vector<uint32_t>& positions : {std::vector<uint32_t>{1, 5, 5, 9, 20}, {9, 5, 1, 5, 20}}) {
    WordDocument doc = document();
    doc.table(mso_word::FCLCB_FIELDS_MAIN, support::positionTable(positions, {mark, mark, mark, mark}));
    const OpenedDocument opened(doc);
    const KDRFieldContext& fields = opened->GetFields(SUBDOC_MAIN);
    EXPECT_EQ(fields.Find(5), 1u);
    EXPECT_EQ(fields.Find(7), 4u);
    EXPECT_EQ(positions[fields.Find(9)], 9u);
  }
}

// Sections.

TEST(SectionTable, ASectionHasItsRangeAndProperties) {
  WordDocument doc;
  doc.section({sprm(0xB01F, 9000)});
  doc.paragraph("one");
  doc.section({});
  doc.paragraph("two");
  const OpenedDocument opened(doc);
  const KDRPlcfsed& sections = opened->GetPlcfsed();
  ASSERT_EQ(sections.Count(), 2u);
  const auto first = sections.Item(0, *opened);
  EXPECT_EQ(first.range.end, 4u);
  EXPECT_EQ(first.sprms.u16(0), 0xB01F);
  EXPECT_TRUE(sections.Item(1, *opened).sprms.empty());
}

TEST(SectionTable, AnOffsetOutsideTheStreamThrowsAsASeekDoes) {
  WordDocument doc = document();
  doc.editTable(mso_word::FCLCB_SECTIONS, [](Bytes& table) {
    support::patchInteger(table, table.size() - 12 + 2, int32_t{0x7FFFFFFF});
  });
  const OpenedDocument opened(doc);
  EXPECT_THROW(opened->GetPlcfsed().Item(0, *opened), int);
}

}  // namespace

// What the document writer of the tests states is what the reader finds: the two were written apart.

#include <gtest/gtest.h>

#include "base/byte_view.h"
#include "support/opened_document.h"
#include "wordreader/annotations.h"
#include "wordreader/bookmarks.h"
#include "wordreader/fields.h"
#include "wordreader/font_table.h"
#include "wordreader/list_table.h"
#include "wordreader/notes.h"
#include "wordreader/sections.h"
#include "wordreader/style_sheet.h"

using namespace support;
using namespace mso_word;

namespace {

Bytes copyOf(ByteView bytes) {
  return {bytes.data(), bytes.data() + bytes.size()};
}

/// "[0,5) 350801" for each entry of a property table.
std::vector<std::string> entries(const KPropxTable& table) {
  std::vector<std::string> result;
  for (uint32_t i = 0; i < table.Count(); ++i) {
    const auto [range, propx] = table.Item(i);
    std::string entry = "[" + std::to_string(range.start) + "," + std::to_string(range.end) + ")";
    for (uint8_t byte : copyOf(propx.fkp())) {
      constexpr char kDigits[] = "0123456789abcdef";
      entry += {kDigits[byte >> 4], kDigits[byte & 15]};
    }
    result.push_back(entry);
  }
  return result;
}
using Entries = std::vector<std::string>;

std::u16string utf16(const unsigned short* text) {
  std::u16string result;
  for (; *text; ++text) result += static_cast<char16_t>(*text);
  return result;
}

}  // namespace

// --- Text ---

TEST(DocumentWriter, TextOfEachStoryIsReadBack) {
  WordDocument doc;
  doc.paragraph("Main");
  for (uint32_t type = 1; type < kSubDocCount; ++type) {
    doc.story(static_cast<SUBDOC_TYPE>(type)).paragraph("Story " + std::to_string(type));
  }
  const OpenedDocument opened(doc);
  EXPECT_EQ(opened.text(), u"Main\r");
  EXPECT_EQ(opened.text(SUBDOC_FOOTNOTE), u"Story 1\r");
  EXPECT_EQ(opened.text(SUBDOC_HEADER_TEXTBOX), u"Story 7\r");
}

TEST(DocumentWriter, PiecesOfBothWidthsAreReadBack) {
  WordDocument doc;
  doc.paragraph("8-bit \x80 ").newPiece().run(u"Ω 😀").newPiece({.width = Piece::Width::k16}).run(" end");
  EXPECT_EQ(OpenedDocument(doc).text(), u"8-bit € Ω 😀 end\r");
}

TEST(DocumentWriter, PiecesOutOfOrderInTheFileAreReadInTheOrderOfTheText) {
  WordDocument doc;
  doc.paragraph("one ").newPiece({.fileOrder = 2}).run("two ").newPiece({.fileOrder = 1}).run("three");
  doc.paragraph("four").newPiece({.fileOrder = 3});
  const OpenedDocument opened(doc);
  EXPECT_EQ(opened.text(), u"one two three\rfour\r");
  EXPECT_EQ(opened->GetPlcfPap(SUBDOC_MAIN).Count(), 2u);
}

TEST(DocumentWriter, RefusesAn8BitPieceOfWiderText) {
  WordDocument doc;
  doc.paragraph().newPiece({.width = Piece::Width::k8}).run(u"Ω");
  EXPECT_THROW(doc.build(), std::invalid_argument);
}

// --- Runs and paragraphs ---

TEST(DocumentWriter, RunsHaveTheirProperties) {
  WordDocument doc;
  doc.paragraph("plain ").run("bold", {sprm(0x0835, 1)});
  EXPECT_EQ(entries(OpenedDocument(doc)->GetPlcfChp(SUBDOC_MAIN)), (Entries{"[0,6)", "[6,11)350801"}));
}

TEST(DocumentWriter, EqualNeighboursAreOneRunUnlessTold) {
  WordDocument doc;
  doc.paragraph("a").run("b");
  doc.paragraph("c").breakRun().run("d").ownMark();
  EXPECT_EQ(entries(OpenedDocument(doc)->GetPlcfChp(SUBDOC_MAIN)), (Entries{"[0,4)", "[4,5)", "[5,6)"}));
}

TEST(DocumentWriter, MarkCanHavePropertiesOfItsOwn) {
  WordDocument doc;
  doc.paragraph("a").mark({sprm(0x0836, 1)});
  EXPECT_EQ(entries(OpenedDocument(doc)->GetPlcfChp(SUBDOC_MAIN)), (Entries{"[0,1)", "[1,2)360801"}));
}

TEST(DocumentWriter, ParagraphsHaveTheirStyleAndProperties) {
  WordDocument doc;
  doc.paragraph("a").istd(3).sprms({sprm(0x845E, 720)});
  doc.paragraph("b").noPapx();
  EXPECT_EQ(entries(OpenedDocument(doc)->GetPlcfPap(SUBDOC_MAIN)), (Entries{"[0,2)03005e84d002", "[2,4)"}));
}

TEST(DocumentWriter, PropertiesSpreadOverPages) {
  WordDocument doc({.maxFkpEntries = 2});
  for (int i = 0; i < 5; ++i) doc.paragraph("x", {sprm(0x4A43, i)}).sprms({sprm(0x845E, i)});
  const OpenedDocument opened(doc);
  EXPECT_EQ(entries(opened->GetPlcfChp(SUBDOC_MAIN)).back(), "[8,10)434a0400");
  EXPECT_EQ(entries(opened->GetPlcfPap(SUBDOC_MAIN)).back(), "[8,10)00005e840400");
}

TEST(DocumentWriter, HugePropertiesLieInTheDataStream) {
  WordDocument doc;
  doc.data({1, 2, 3});
  doc.paragraph("x").sprms({sprm(0x845E, 720)}).huge(0x6645);
  EXPECT_EQ(entries(OpenedDocument(doc)->GetPlcfPap(SUBDOC_MAIN)), (Entries{"[0,2)0000456603000000"}));
  EXPECT_EQ(doc.streams().data, (Bytes{1, 2, 3, 4, 0, 0x5E, 0x84, 0xD0, 0x02}));
}

TEST(DocumentWriter, CellsAndRowEndsAreMarked) {
  WordDocument doc;
  doc.row({"a", "b"}, {sprm(0x9407, 300)});
  const OpenedDocument opened(doc);
  EXPECT_EQ(opened.text(), u"a\ab\a\a");
  EXPECT_EQ(entries(opened->GetPlcfPap(SUBDOC_MAIN)),
            (Entries{"[0,2)0000162401496601000000", "[2,4)0000162401496601000000",
                     "[4,5)000016240149660100000017240107942c01"}));
}

// --- Sections, notes, fields, bookmarks ---

TEST(DocumentWriter, SectionsBeginWhereTheyWereStated) {
  WordDocument doc;
  doc.paragraph("one");
  doc.section({sprm(0xB01F, 1000)}).paragraph("two");
  const OpenedDocument opened(doc);
  const KDRPlcfsed& sections = opened->GetPlcfsed();
  EXPECT_EQ(opened.text(), u"one\ftwo\r");
  ASSERT_EQ(sections.Count(), 2u);
  EXPECT_TRUE(sections.Item(0, *opened).sprms.empty());
  EXPECT_EQ(sections.Item(1, *opened).range.start, 4u);
  EXPECT_EQ(copyOf(sections.Item(1, *opened).sprms), sprm(0xB01F, 1000));
}

TEST(DocumentWriter, NotesFollowTheOrderOfTheirReferences) {
  WordDocument doc;
  doc.paragraph("a").footnote("first").run("b").footnote("second", {.customMark = "*"}).endnote("end");
  const OpenedDocument opened(doc);
  const KDRFootnotes::Positions& positions = opened->GetFootnotes().GetPositions();
  const KDRFootnotes::TextRanges& ranges = opened->GetFootnotes().GetTextRanges();
  EXPECT_EQ(opened.text(),
            u"a\x02"
            u"b*\x02\r");
  EXPECT_EQ(opened.text(SUBDOC_FOOTNOTE),
            u"\x02"
            u"first\r*second\r");
  EXPECT_EQ(opened.text(SUBDOC_ENDNOTE),
            u"\x02"
            u"end\r");
  ASSERT_EQ(positions.Count(), 2u);
  EXPECT_EQ(positions.Item(0).data, 1);
  EXPECT_EQ(positions.Item(1).data, 0);
  EXPECT_EQ(positions.Item(1).range.start, 3u);
  EXPECT_EQ(ranges.Item(1).range.start, 7u);
  EXPECT_EQ(ranges.Item(1).range.end, 15u);
}

namespace {
WordDocument documentWithAnnotations(const WordOptions& options) {
  WordDocument doc(options);
  doc.paragraph("a")
      .annotation("one", {.author = "Ann", .initials = "AA", .dttm = 5})
      .annotationStart(7)
      .run("range")
      .annotationEnd(7)
      .annotation("two", {.author = "Bob", .initials = "BB", .rangeTag = 7, .dttm = 6});
  return doc;
}
}  // namespace

TEST(DocumentWriter, AnnotationsHaveAuthorsRangesAndDates) {
  const OpenedDocument opened(documentWithAnnotations({}));
  const KDRAnnotations& annotations = opened->GetAnnotations();
  ASSERT_EQ(annotations.GetRefs().Count(), 2u);
  const AtnRef second = annotations.GetRefs().Item(1);
  EXPECT_EQ(annotations.GetRefs().Item(0).rangeLength, 0u);
  EXPECT_EQ(second.rangeLength, 5u);
  EXPECT_EQ(utf16(annotations.GetAuthor(second).name), u"Bob");
  EXPECT_EQ(utf16(annotations.GetAuthor(second).initials), u"BB");
  ASSERT_NE(annotations.GetDTTMs().Item(1), nullptr);
  EXPECT_EQ(uint32_t{annotations.GetDTTMs().Item(1)->value}, 6u);  // a copy: the record may lie unaligned
}

TEST(DocumentWriter, ShortFibHasNoAnnotationDates) {
  const OpenedDocument opened(documentWithAnnotations({.fibPairs = 93}));
  EXPECT_EQ(opened->GetAnnotations().GetRefs().Count(), 2u);
  EXPECT_EQ(opened->GetAnnotations().GetDTTMs().Count(), 0u);
}

TEST(DocumentWriter, FieldMarksAreTabledInTheirStory) {
  WordDocument doc;
  doc.paragraph("a").footnote([](Story& note) { note.paragraph("x").field(33, " PAGE ", "1"); });
  const OpenedDocument opened(doc);
  const KDRFieldContext& fields = opened->GetFields(SUBDOC_FOOTNOTE);
  ASSERT_EQ(fields.Count(), 3u);
  EXPECT_EQ(fields.GetCP(0), 2u);
  EXPECT_EQ(fields.Item(0).GetFieldType(), 33);
  EXPECT_EQ(fields.Item(1).fld.mark, 20);
  EXPECT_EQ(opened->GetFields(SUBDOC_MAIN).Count(), 0u);
}

TEST(DocumentWriter, BookmarksAreTabledInTheOrderOfTheText) {
  WordDocument doc;
  doc.paragraph("ab").bookmarkStart("B").run("c").bookmarkEnd("B");
  doc.story(SUBDOC_FOOTNOTE).paragraph("x").bookmarkStart("N").bookmarkEnd("N");
  const OpenedDocument opened(doc);
  const KDRPlcfBkf& inNotes = opened->GetBookMarks().GetStarts(SUBDOC_FOOTNOTE);
  EXPECT_EQ(opened->GetBookMarks().GetStarts(SUBDOC_MAIN).Start(0), 2u);
  ASSERT_EQ(inNotes.Count(), 1u);
  EXPECT_EQ(inNotes.Start(0), 1u);
  EXPECT_EQ(utf16(inNotes.Item(0).name.text), u"N");
}

// --- Styles, fonts, lists ---

TEST(DocumentWriter, StylesHaveNamesBasesAndGroups) {
  WordDocument doc;
  doc.style(20, Style().name("Mine").kind(StyleKind::kTable).basedOn(11).chpx({sprm(0x0835, 1)}));
  const OpenedDocument opened(doc);
  const KDRStyle* style = nullptr;
  ASSERT_EQ(opened->GetStyleSheet().GetStyle(20, &style), Status::kOk);
  EXPECT_EQ(style->GetKind(), SGC_TABLE);
  EXPECT_EQ(style->GetBaseStyle(), 11);
  EXPECT_EQ(style->GetName().size(), 8u);
  EXPECT_EQ(style->GetPapx().part(0, 4).u16(2), 20);
  EXPECT_EQ(copyOf(style->GetChpx().part(0, 5)), (Bytes{3, 0, 0x35, 0x08, 1}));
}

TEST(DocumentWriter, FontsHaveBothNames) {
  WordDocument doc;
  doc.font("Arial");
  doc.font({.name = u"宋体", .alternateName = "SimSun", .family = 3, .charset = 134});
  const OpenedDocument opened(doc);
  KFontX font;
  ASSERT_EQ(opened->GetFontTable().Item(1, &font), Status::kOk);
  EXPECT_EQ(utf16(font.name), u"宋体");
  EXPECT_EQ(utf16(font.alternateName), u"SimSun");
  EXPECT_EQ(font.family, 3);
  EXPECT_EQ(font.characterSet, 134);
}

TEST(DocumentWriter, ListsAndOverridesAreReadBack) {
  WordDocument doc;
  const ListLevel second = {.startAt = 3, .numberFormat = 4, .text = "%1.%2)", .papx = {sprm(0x845E, 720)}};
  doc.list({.lsid = 5, .levels = {ListLevel{}, second}});
  doc.listOverride({.lsid = 5, .levels = {{.level = 1, .startAt = 9}, {.level = 0, .format = second}}});
  const OpenedDocument opened(doc);
  const KDRListTable& lists = opened->GetListTable();
  ASSERT_EQ(lists.Count(), 2u);
  const KDRListLevel* level = lists.Item(1)->GetLevel(1);
  EXPECT_EQ(level->GetNfc(), 4);
  ASSERT_EQ(level->GetXstLen(), 4);
  EXPECT_EQ(level->GetXst()[0], 0);
  EXPECT_EQ(utf16(level->GetXst() + 1), u".\x01)");
  EXPECT_EQ(level->GetrgbxchNums()[1], 3);
  EXPECT_EQ(copyOf(level->GetPapx(*opened)->sprms()), sprm(0x845E, 720));
  EXPECT_EQ(lists.Item(2)->GetLevelStartAt(1), 9);
  EXPECT_EQ(lists.Item(2)->GetLevel(0)->GetNfc(), 4);
}

// --- Layout and damage ---

TEST(DocumentWriter, ReadsFromTheTableStreamThatTheFlagNames) {
  WordDocument doc({.tableStream = 0});
  doc.paragraph("x");
  EXPECT_EQ(OpenedDocument(doc).text(), u"x\r");
}

TEST(DocumentWriter, EditsDamageWhatTheyName) {
  WordDocument doc;
  doc.paragraph("x");
  doc.editTable(FCLCB_CLX, [](Bytes& table) { patchInteger(table, 1, uint32_t{999}); });
  EXPECT_EQ(OpenedDocument(doc).status(), Status::kMalformed);
}

TEST(DocumentWriter, RefusesATableThatTheFibHasNoPairFor) {
  WordDocument doc({.fibPairs = 93});
  doc.table(FCLCB_ANNOTATION_DATES, {1});
  EXPECT_THROW(doc.build(), std::invalid_argument);
}

TEST(DocumentWriter, RefusesNotesOutsideTheMainText) {
  WordDocument doc;
  doc.story(SUBDOC_HEADER).paragraph("x").footnote("note");
  EXPECT_THROW(doc.build(), std::invalid_argument);
}

TEST(DocumentWriter, PiecesNameTheirPropertyGroup) {
  WordDocument doc;
  const uint32_t group = doc.propertyGroup({sprm(0x0835, 1)});
  doc.paragraph().newPiece({.prm = prmOfGroup(group)}).run("x");
  const OpenedDocument opened(doc);
  EXPECT_EQ(opened->GetPlcfChp(SUBDOC_MAIN).Item(0).data.pieceSize, 3);
}

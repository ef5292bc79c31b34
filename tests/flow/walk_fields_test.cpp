#include <gtest/gtest.h>

#include "flow/walked_document.h"
#include "support/form_fields.h"
#include "support/named_sprms.h"

using namespace flow_test;
using namespace support;

namespace {

enum Field : uint8_t {
  kRef = 3,
  kIndexEntry = 4,
  kNumPages = 26,
  kToc = 13,
  kPage = 33,
  kPageRef = 37,
  kDate = 31,
  kNoteRef = 72,
  kHyperlink = 88
};
constexpr char kAddress[] = " HYPERLINK \"http://www.example.com/a\" ";

std::u16string charactersOf(const WordDocument& doc) {
  return Walked(doc).characters();
}

}  // namespace

TEST(WalkFields, ResultsAreToldAndCodesAreNot) {
  WordDocument doc;
  doc.paragraph("a ").field(kDate, " DATE ", "today").run(" b");
  EXPECT_EQ(charactersOf(doc), u"a today b\n");
}

TEST(WalkFields, FieldsWithoutResultTellNothing) {
  WordDocument doc;
  doc.paragraph("a").field(kIndexEntry, " XE \"entry\" ").run("b");
  EXPECT_EQ(charactersOf(doc), u"ab\n");
}

TEST(WalkFields, NestedFieldsTellTheirResultsWithinResultsOnly) {
  WordDocument doc;
  doc.paragraph().fieldBegin(7).run(" IF ").field(kPage, " PAGE ", "in code").run(" = 1 ");
  doc.paragraphs().back()->fieldSeparator().run("x").field(kPage, " PAGE ", "in result").run("y").fieldEnd();
  EXPECT_EQ(charactersOf(doc), u"xin resulty\n");
}

TEST(WalkFields, CodesOverParagraphsAreNoParagraphs) {
  WordDocument doc;
  doc.paragraph("a").fieldBegin(7).run(" IF 1 = 1 \"one");
  doc.paragraph("two\" ");
  doc.paragraph("three").fieldSeparator().run("result").fieldEnd().run("b");
  doc.paragraph("c");
  EXPECT_EQ(charactersOf(doc), u"aresultb\nc\n");
}

TEST(WalkFields, ResultsOverParagraphsAreParagraphs) {
  WordDocument doc;
  doc.paragraph().fieldBegin(kToc).run(" TOC \\o ").fieldSeparator().run("one\t1");
  doc.paragraph("two\t2");
  doc.paragraph().fieldEnd();
  doc.paragraph("text");
  EXPECT_EQ(charactersOf(doc), u"one\t1\ntwo\t2\n\ntext\n");
}

TEST(WalkFields, AFieldThatIsNotClosedHidesNoText) {
  WordDocument doc;
  doc.paragraph("a").fieldBegin(kDate).run(" b");
  doc.paragraph("c");
  EXPECT_EQ(charactersOf(doc), u"a b\nc\n");
}

TEST(WalkFields, EndsWithoutBeginningAreNothing) {
  WordDocument doc;
  doc.paragraph("a").fieldSeparator().run("b").fieldEnd().run("c");
  EXPECT_EQ(charactersOf(doc), u"abc\n");
}

TEST(WalkFields, HyperlinksAreLinks) {
  WordDocument doc;
  doc.paragraph("See ").field(kHyperlink, kAddress, "here", {underline(1)}).run(".");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "See "
  link "http://www.example.com/a"
    text "here"
  text "."
)");
}

TEST(WalkFields, HyperlinksHaveAllTheirParts) {
  WordDocument doc;
  doc.paragraph().field(
      kHyperlink, " HYPERLINK \"http://www.example.com/\" \\l \"place\" \\o \"Tip\" \\t \"_blank\" ", "x");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  link "http://www.example.com/" #place title="Tip" target="_blank"
    text "x"
)");
}

TEST(WalkFields, LinksEndWithTheirParagraphAndBeginAnew) {
  WordDocument doc;
  doc.paragraph().fieldBegin(kHyperlink).run(kAddress).fieldSeparator().run("one");
  doc.paragraph("two").fieldEnd().run(" text");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  link "http://www.example.com/a"
    text "one"
paragraph
  link "http://www.example.com/a"
    text "two"
  text " text"
)");
}

TEST(WalkFields, TwoLinksAreTwoLinks) {
  WordDocument doc;
  doc.paragraph()
      .field(kHyperlink, " HYPERLINK \\l \"a\" ", "one")
      .field(kHyperlink, " HYPERLINK \\l \"b\" ", "two");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  link #a
    text "one"
  link #b
    text "two"
)");
}

TEST(WalkFields, ReferencesAreLinksWhereTheyCanBeFollowed) {
  WordDocument doc;
  doc.paragraph().field(kRef, " REF Place \\h ", "one").run(" ").field(kRef, " REF Place ", "two").run(" ");
  doc.paragraphs()
      .back()
      ->field(kPageRef, " PAGEREF Place \\h ", "3")
      .field(kNoteRef, " NOTEREF Note \\h ", "1");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  link #Place
    text "one"
  text " two "
  link #Place
    text "3"
  link #Note
    text "1"
)");
}

TEST(WalkFields, EntriesOfATableOfContentsAreLinks) {
  WordDocument doc;
  Paragraph& entry = doc.paragraph().fieldBegin(kToc).run(" TOC \\o \\h ").fieldSeparator();
  entry.fieldBegin(kHyperlink).run(" HYPERLINK \\l \"_Toc1\" ").fieldSeparator().run("Chapter\t");
  entry.field(kPageRef, " PAGEREF _Toc1 \\h ", "5").fieldEnd();
  doc.paragraph().fieldEnd();
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  link #_Toc1
    text "Chapter"
    tab
    text "5"
paragraph
)");
}

TEST(WalkFields, FormTextsAreToldWithTheirText) {
  WordDocument doc;
  formText(doc, doc.paragraph("Name: "), "Text1", "Ann").run(".");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "Name: "
  formField text name="Text1"
  text "Ann."
)");
}

TEST(WalkFields, CheckBoxesAreToldWithTheirState) {
  WordDocument doc;
  formCheckBox(doc, formCheckBox(doc, doc.paragraph(), "Yes", true), "No", false);
  addFormField(doc, doc.paragraph(), {.kind = FormField::Kind::kCheckBox, .name = "Default", .byDefault = 1});
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  formField checkBox name="Yes" checked
  formField checkBox name="No"
paragraph
  formField checkBox name="Default" checked
)");
}

TEST(WalkFields, ListsAreToldWithTheirChoice) {
  WordDocument doc;
  formDropDown(doc, doc.paragraph(), "Drop", {"one", "two"}, 1);
  addFormField(doc, doc.paragraph(),
               {.kind = FormField::Kind::kDropDown, .choices = {"a", "b"}, .byDefault = 0});
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  formField dropDown name="Drop" value="two"
paragraph
  formField dropDown value="a"
)");
}

TEST(WalkFields, FormFieldsLieInTheirBookmark) {
  WordDocument doc;
  formText(doc, doc.paragraph("a"), "Text1", "b");
  EXPECT_EQ(transcriptOf(doc, kWithBookmarks), R"(
paragraph
  text "a"
  bookmarkStart Text1
  formField text name="Text1"
  text "b"
  bookmarkEnd Text1
)");
}

#include <gtest/gtest.h>

#include "flow/walked_document.h"
#include "support/named_sprms.h"

using namespace flow_test;
using namespace support;

namespace {

/// Offsets of the document's properties.
constexpr size_t kFootnoteNumbering = 2, kEndnoteNumbering = 52, kFootnoteFormat = 492, kEndnoteFormat = 494;
constexpr uint16_t kRestartOfSection = 0x303C, kFootnoteStartOfSection = 0x503F,
                   kFootnoteFormatOfSection = 0x5040;
constexpr uint16_t kLowerRoman = 2, kLowerLetter = 4;

/// Restart (0 never, 1 in each section) and first number.
constexpr uint16_t numbering(unsigned restart, unsigned start) {
  return static_cast<uint16_t>(restart | start << 2);
}

/// The labels of all references, in order.
std::string labelsOf(const WordDocument& doc) {
  const std::string text = transcriptOf(doc);
  std::string labels;
  constexpr std::string_view kLabel = "label=\"";
  for (size_t at = text.find("reference "); at != std::string::npos; at = text.find("reference ", at + 1)) {
    const size_t start = text.find(kLabel, at) + kLabel.size();
    labels += text.substr(start, text.find('"', start) - start) + " ";
  }
  return labels;
}

}  // namespace

TEST(WalkNotes, StandBehindTheText) {
  WordDocument doc;
  doc.paragraph("a").footnote(" first").run("b").endnote(" end").run("c");
  doc.paragraph("d");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "a"
  reference footnote 0 label="1"
  text "b"
  reference endnote 0 label="1"
  text "c"
paragraph
  text "d"
note footnote 0 label="1"
  paragraph
    mark footnote 0 label="1"
    text " first"
note endnote 0 label="1"
  paragraph
    mark endnote 0 label="1"
    text " end"
)");
}

TEST(WalkNotes, NeighboursAreTwoNotes) {
  WordDocument doc;
  doc.paragraph("a").footnote("x").footnote("y").run("b");
  EXPECT_EQ(labelsOf(doc), "1 2 ");
  EXPECT_EQ(Walked(doc).characters(), u"ab\nx\ny\n");
}

TEST(WalkNotes, HaveSeveralParagraphs) {
  WordDocument doc;
  doc.paragraph("a").footnote([](Story& note) {
    note.paragraph(" one");
    note.paragraph("two");
  });
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "a"
  reference footnote 0 label="1"
note footnote 0 label="1"
  paragraph
    mark footnote 0 label="1"
    text " one"
  paragraph
    text "two"
)");
}

TEST(WalkNotes, LabelsHaveTheFormatOfTheDocument) {
  WordDocument doc;
  doc.paragraph("a").footnote("x").footnote("y").endnote("z");
  doc.patchDop(kFootnoteFormat, kLowerLetter).patchDop(kEndnoteFormat, kLowerRoman);
  doc.patchDop(kFootnoteNumbering, numbering(0, 3)).patchDop(kEndnoteNumbering, numbering(0, 4));
  EXPECT_EQ(labelsOf(doc), "c d iv ");
}

TEST(WalkNotes, MayBeNumberedAnewInEachSection) {
  WordDocument doc;
  doc.paragraph("a").footnote("x").footnote("y");
  doc.section({}).paragraph("b").footnote("z");
  doc.patchDop(kFootnoteNumbering, numbering(1, 1));
  EXPECT_EQ(labelsOf(doc), "1 2 1 ");
}

TEST(WalkNotes, NumbersGoOnThroughSections) {
  WordDocument doc;
  doc.paragraph("a").footnote("x");
  doc.section({}).paragraph("b").footnote("z");
  EXPECT_EQ(labelsOf(doc), "1 2 ");
}

TEST(WalkNotes, SectionsSayHowTheyAreNumbered) {
  WordDocument doc;
  doc.paragraph("a").footnote("x");
  doc.section({sprm(kRestartOfSection, 1), sprm(kFootnoteStartOfSection, 5),
               sprm(kFootnoteFormatOfSection, kLowerRoman)});
  doc.paragraph("b").footnote("y").footnote("z");
  EXPECT_EQ(labelsOf(doc), "1 v vi ");
}

TEST(WalkNotes, MarksOfTheirOwnDoNotCount) {
  WordDocument doc;
  doc.paragraph("a").footnote("x").run(" ").footnote(" own", {.customMark = "*"}).run(" b ").footnote("y");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "a"
  reference footnote 0 label="1"
  text " "
  reference footnote 1 label="*" custom
  text " b "
  reference footnote 2 label="2"
note footnote 0 label="1"
  paragraph
    mark footnote 0 label="1"
    text "x"
note footnote 1 label="*" custom
  paragraph
    mark footnote 1 label="*" custom
    text " own"
note footnote 2 label="2"
  paragraph
    mark footnote 2 label="2"
    text "y"
)");
}

TEST(WalkNotes, OfHiddenTextAreLeftOutAndNotCounted) {
  WordDocument doc;
  doc.paragraph("a").footnote("gone", {.sprms = {sprm(0x083C, 1)}}).run("b").footnote("x");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "ab"
  reference footnote 1 label="1"
note footnote 1 label="1"
  paragraph
    mark footnote 1 label="1"
    text "x"
)");
}

TEST(WalkComments, HaveAuthorsDatesAndRanges) {
  WordDocument doc;
  doc.paragraph("a ").annotationStart(7).run("word").annotationEnd(7);
  doc.paragraphs().back()->annotation(
      " remark", {.author = "Ann Other", .initials = "AO", .rangeTag = 7, .dttm = dttm(2004, 3, 1, 12, 30)});
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "a "
  commentStart 0
  text "word"
  commentEnd 0
  commentReference 0 author="Ann Other" initials="AO" 2004-03-01T12:30
comment 0 author="Ann Other" initials="AO" 2004-03-01T12:30
  paragraph
    text " remark"
)");
}

TEST(WalkComments, NeedNoRange) {
  WordDocument doc;
  doc.paragraph("a").annotation("x", {.author = "Ann"}).run("b").annotation("y", {.author = "Bob"});
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "a"
  commentReference 0 author="Ann" initials="A"
  text "b"
  commentReference 1 author="Bob" initials="A"
comment 0 author="Ann" initials="A"
  paragraph
    text "x"
comment 1 author="Bob" initials="A"
  paragraph
    text "y"
)");
}

TEST(WalkComments, RangesReachOverParagraphsAndOverlap) {
  WordDocument doc;
  doc.paragraph("a").annotationStart(1).run("b").annotationStart(2).run("c");
  doc.paragraph("d").annotationEnd(1).annotation("x", {.rangeTag = 1}).run("e").annotationEnd(2);
  doc.paragraphs().back()->annotation("y", {.rangeTag = 2});
  const std::string text = transcriptOf(doc);
  EXPECT_EQ(text.substr(0, text.find("comment 0")), R"(
paragraph
  text "a"
  commentStart 0
  text "b"
  commentStart 1
  text "c"
paragraph
  text "d"
  commentEnd 0
  commentReference 0 author="Author" initials="A"
  text "e"
  commentEnd 1
  commentReference 1 author="Author" initials="A"
)");
}

TEST(WalkBookmarks, StandWhereTheyBeginAndEnd) {
  WordDocument doc;
  doc.paragraph("a").bookmarkStart("One").run("b").bookmarkEnd("One").bookmarkStart("Here").bookmarkEnd(
      "Here");
  doc.paragraph("c").bookmarkStart("Two").run("d");
  doc.paragraph("e").bookmarkEnd("Two");
  EXPECT_EQ(transcriptOf(doc, kWithBookmarks), R"(
paragraph
  text "a"
  bookmarkStart One
  text "b"
  bookmarkEnd One
  bookmarkStart Here
  bookmarkEnd Here
paragraph
  text "c"
  bookmarkStart Two
  text "d"
paragraph
  text "e"
  bookmarkEnd Two
)");
}

TEST(WalkBookmarks, StandInNotesToo) {
  WordDocument doc;
  doc.paragraph("a").footnote(
      [](Story& note) { note.paragraph(" x").bookmarkStart("InNote").run("y").bookmarkEnd("InNote"); });
  EXPECT_EQ(transcriptOf(doc, kWithBookmarks), R"(
paragraph
  text "a"
  reference footnote 0 label="1"
note footnote 0 label="1"
  paragraph
    mark footnote 0 label="1"
    text " x"
    bookmarkStart InNote
    text "y"
    bookmarkEnd InNote
)");
}

TEST(WalkBookmarks, BeginBehindANoteOfTheSameLook) {
  WordDocument doc;
  doc.paragraph("a")
      .footnote("x", {.customMark = "*"})
      .run(" b")
      .bookmarkStart("B")
      .run("c")
      .bookmarkEnd("B");
  const std::string text = transcriptOf(doc, kWithBookmarks);
  EXPECT_EQ(text.substr(0, text.find("note footnote")), R"(
paragraph
  text "a"
  reference footnote 0 label="*" custom
  text " b"
  bookmarkStart B
  text "c"
  bookmarkEnd B
)");
}

#include <gtest/gtest.h>

#include "documents/converted.h"

namespace {

using support::Annotation;
using support::sprm;
using support::Story;
using support::WordDocument;

std::string anchor(const std::string& kind, int number, const std::string& text) {
  const std::string id = kind + std::to_string(number);
  return "<span id=\"anchor_" + id + "\" class=\"anchor_" + kind +
         "\" onmouseover=\"onMouseOverAnchor(content_" + id + ", event)\" onmouseout=\"onMouseOut(content_" +
         id + ")\">" + text + "</span>";
}

std::string content(const std::string& kind, int number, const std::string& text) {
  const std::string id = "content_" + kind + std::to_string(number);
  return "<span id=\"" + id + "\" class=\"content\" onmouseover=\"onMouseOverContent(" + id +
         ")\" onmouseout=\"onMouseOut(" + id + ")\">" + text + "</span>";
}

/// What stands behind the last section of a page.
std::string notesOf(const Converted& converted, int page = 1) {
  const std::string body = converted.body(page);
  const std::string gap = "</script><p><o:p>&nbsp;</o:p></p>";
  return body.substr(body.rfind(gap) + gap.size());
}

/// The footnote's own reference mark is no text of it.
std::string noteParagraph(const std::string& text) {
  return p(span(text));
}

const std::string kCommentLabel = "</b><br>\xE6\x89\xB9\xE6\xB3\xA8\xEF\xBC\x9A";

TEST(Footnotes, TwoNotesAreNumberedFromZero) {
  WordDocument doc;
  doc.paragraph("a").footnote("First.").run("b").footnote("Second.").run("c");
  const Converted converted(doc);
  EXPECT_EQ(converted.text(),
            p(span("a") + anchor("footnote", 0, "0") + span("b") + anchor("footnote", 1, "1") + span("c")));
  EXPECT_EQ(notesOf(converted), content("footnote", 0, noteParagraph("First.")) +
                                    content("footnote", 1, noteParagraph("Second.")));
}

TEST(Footnotes, TheirFormattingSurvives) {
  WordDocument doc;
  doc.paragraph("a").footnote(
      [](Story& story) { story.paragraph().run("bold", {sprm(0x0835, 1)}).run("."); });
  EXPECT_EQ(notesOf(Converted(doc)),
            content("footnote", 0, p(span("bold", "font-weight:bold;line-height:10.5pt;") + span("."))));
}

TEST(Footnotes, AReferenceInsideAFootnoteWritesNoAnchor) {
  WordDocument doc;
  doc.paragraph("a").footnote([](Story& story) { story.paragraph("x").special(2).run("y"); });
  EXPECT_EQ(notesOf(Converted(doc)), content("footnote", 0, p(span("x") + span("y"))));
}

TEST(Footnotes, ALostReferenceLosesAllThatFollow) {
  WordDocument doc;
  doc.paragraph("a").footnote("First.").run("b").footnote("Second.");
  doc.editTable(2, [](support::Bytes& table) { table[0] = 77; });
  const Converted converted(doc);
  EXPECT_EQ(converted.text().find("anchor_footnote"), std::string::npos);
  EXPECT_EQ(notesOf(converted), "");
}

TEST(Endnotes, TheyFollowTheFootnotes) {
  WordDocument doc;
  doc.paragraph("a").endnote("End.").footnote("Foot.").annotation("Note.");
  const Converted converted(doc);
  const std::string text = converted.text();
  EXPECT_NE(text.find(anchor("endnote", 0, "0")), std::string::npos);
  EXPECT_EQ(notesOf(converted), content("annotation", 0,
                                        "<b>Author,&nbsp;1900-0-0&nbsp;0:0:00&nbsp;\xE6\x98\x9F\xE6\x9C\x9F"
                                        "0" +
                                            kCommentLabel + noteParagraph("Note.")) +
                                    content("footnote", 0, noteParagraph("Foot.")) +
                                    content("endnote", 0, noteParagraph("End.")));
}

uint32_t dttm(uint32_t year, uint32_t month, uint32_t day, uint32_t hour, uint32_t minute, uint32_t weekday) {
  return minute | hour << 6 | day << 11 | month << 16 | (year - 1900) << 20 | weekday << 29;
}

TEST(Annotations, TheHeaderNamesAuthorAndDateUnpadded) {
  WordDocument doc;
  Annotation by;
  by.author = u"J\u00F6rg";
  by.dttm = dttm(2005, 5, 3, 9, 5, 2);
  doc.paragraph("a").annotation("Look.", by);
  const Converted converted(doc);
  EXPECT_EQ(converted.text().substr(0, 200).find(p(span("a") + anchor("annotation", 0, "|")).substr(0, 120)),
            0u);
  EXPECT_EQ(notesOf(converted),
            content("annotation", 0,
                    "<b>J\xC3\xB6rg,&nbsp;2005-5-3&nbsp;9:5:00&nbsp;\xE6\x98\x9F\xE6\x9C\x9F"
                    "2" +
                        kCommentLabel + noteParagraph("Look.")));
}

TEST(Annotations, TheirFormattingSurvives) {
  WordDocument doc;
  doc.paragraph("a").annotation(
      [](Story& story) { story.paragraph().run("bold", {sprm(0x0835, 1)}).run("."); });
  EXPECT_EQ(notesOf(Converted(doc)),
            content("annotation", 0,
                    "<b>Author,&nbsp;1900-0-0&nbsp;0:0:00&nbsp;\xE6\x98\x9F\xE6\x9C\x9F"
                    "0" +
                        kCommentLabel + p(span("bold", "font-weight:bold;line-height:10.5pt;") + span("."))));
}

TEST(Annotations, WithoutDateRecordsTheNameStandsAlone) {
  WordDocument doc(support::WordOptions{.fibPairs = 108});
  doc.paragraph("a").annotation("Look.");
  EXPECT_EQ(notesOf(Converted(doc)),
            content("annotation", 0, "<b>Author," + kCommentLabel + noteParagraph("Look.")));
}

TEST(Annotations, WithoutOwnersTheAnchorStaysAndTheContentDoesNot) {
  WordDocument doc;
  doc.paragraph("a").annotation("Look.");
  doc.dropTable(36);
  const Converted converted(doc);
  EXPECT_NE(converted.text().find(anchor("annotation", 0, "|")), std::string::npos);
  EXPECT_EQ(notesOf(converted), "");
}

TEST(Notes, ViewPhoneHasNone) {
  WordDocument doc;
  doc.paragraph("a").footnote("Foot.").annotation("Note.").run("b");
  const Converted converted(doc, {"view=phone", "pagesize=1000"});
  EXPECT_EQ(converted.body(), p(span("a") + span("b")));
}

TEST(Notes, ViewMulpagesPutsThemAtTheEndOfTheirPage) {
  WordDocument doc;
  doc.paragraph("one").footnote("First.").run(std::string(100, 'x'));
  doc.paragraph("two").footnote("Second.").run(std::string(100, 'y'));
  const Converted converted(doc, {"view=mulpages", "pagesize=100"});
  ASSERT_EQ(converted.pageCount(), 3);
  EXPECT_EQ(notesOf(converted, 1), content("footnote", 0, noteParagraph("First.")));
  EXPECT_EQ(notesOf(converted, 2), content("footnote", 1, noteParagraph("Second.")));
  EXPECT_EQ(notesOf(converted, 3), "");
}

TEST(Notes, LongOnesStayOnThePageOfTheirAnchor) {
  const std::string text(500, 'x');
  WordDocument doc;
  doc.paragraph("a").footnote(text).annotation(text).run("b");
  const Converted converted(doc, {"view=mulpages", "pagesize=100"});
  EXPECT_EQ(converted.pageCount(), 1);
  EXPECT_NE(notesOf(converted).find(content("footnote", 0, noteParagraph(text))), std::string::npos);
  EXPECT_NE(notesOf(converted).find(kCommentLabel + noteParagraph(text)), std::string::npos);
}

}  // namespace

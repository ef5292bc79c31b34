#include <gtest/gtest.h>

#include "documents/converted.h"

namespace {

using support::WordDocument;

std::string bm(int position) {
  return "<a name=\"BM_" + std::to_string(position) + "\"></a>";
}

TEST(Bookmarks, EachIsAnAnchorWhereItStands) {
  WordDocument doc;
  doc.paragraph("ab").bookmarkStart("m").run("cd").bookmarkEnd("m").run("ef");
  const Converted converted(doc);
  EXPECT_EQ(converted.text(), p(span("ab" + bm(2) + "cdef")));
}

TEST(Bookmarks, SeveralInOneRunComeInOrder) {
  WordDocument doc;
  doc.paragraph()
      .bookmarkStart("a")
      .run("12")
      .bookmarkStart("b")
      .run("34")
      .bookmarkEnd("a")
      .bookmarkEnd("b")
      .run("5");
  EXPECT_EQ(Converted(doc).text(), p(span(bm(0) + "12" + bm(2) + "345")));
}

TEST(Bookmarks, TwoAtOnePositionGiveTwoEqualAnchors) {
  WordDocument doc;
  doc.paragraph("x").bookmarkStart("a").bookmarkStart("b").run("y").bookmarkEnd("a").bookmarkEnd("b").run(
      "z");
  EXPECT_EQ(Converted(doc).text(), p(span("x" + bm(1) + bm(1) + "yz")));
}

TEST(Bookmarks, AnEmptyParagraphTakesItsBookmarkInFront) {
  WordDocument doc;
  doc.paragraph("a");
  doc.paragraph().bookmarkStart("m").bookmarkEnd("m");
  EXPECT_EQ(Converted(doc).text(), p(span("a")) + p(span(bm(2) + kEmpty)));
}

TEST(Bookmarks, AHiddenOneHasNoAnchorInAViewWithNavigation) {
  WordDocument doc;
  doc.paragraph("a").bookmarkStart("_Toc1").run("b").bookmarkEnd("_Toc1").run("c");
  const Converted converted(doc);
  EXPECT_EQ(converted.text(), p(span("abc")));
  EXPECT_FALSE(converted.has("navigation.html"));
}

TEST(Bookmarks, AHiddenOneInANoteHasItsAnchorSinceNotesHaveNoNavigation) {
  WordDocument doc;
  doc.paragraph("a").footnote([](support::Story& story) {
    story.paragraph("n").bookmarkStart("_Ref1").run("o").bookmarkEnd("_Ref1");
  });
  // The note's text begins with its reference mark and a space.
  EXPECT_NE(Converted(doc).body().find("<a name=\"BM_"), std::string::npos);
}

TEST(Bookmarks, PagedViewsHaveNone) {
  WordDocument doc;
  doc.paragraph("a").bookmarkStart("m").run("b").bookmarkEnd("m").run("c");
  EXPECT_EQ(Converted(doc, {"view=mulpages", "pagesize=100"}).text(), p(span("abc")));
}

TEST(NavigationPage, HeadingsAndBookmarksMakeATree) {
  WordDocument doc;
  doc.style(1, support::Style().name("heading 1"));
  doc.style(2, support::Style().name("heading 2"));
  doc.paragraph("First").istd(1);
  doc.paragraph("text ").bookmarkStart("mark").run("here").bookmarkEnd("mark").run(".");
  doc.paragraph(u"Below \u6C34").istd(2);
  const Converted converted(doc);
  EXPECT_EQ(converted.text(), "<a name=\"TITLE_0\"></a>" + p(span("First"), "std1") +
                                  p(span("text " + bm(11) + "here.")) + "<a name=\"TITLE_17\"></a>" +
                                  p(span("Below \xE6\xB0\xB4"), "std2"));
  const std::string page = converted.file("navigation.html");
  EXPECT_NE(
      page.find("<a id=\"fold0\" href=\"#\" class=\"fold\" onclick=\"fun(0)\">-</a>&nbsp;"
                "<a target=\"main\" href=\"1.htm#TITLE_0\">First</a><br/>\r\n"
                "<div id=\"div0\" style=\"margin-left:20;\">"
                "&nbsp;&nbsp;<a target=\"main\" href=\"1.htm#BM_11\">[mark]</a><br/>\r\n\r\n"
                "&nbsp;&nbsp;<a target=\"main\" href=\"1.htm#TITLE_17\">Below \xE6\xB0\xB4</a><br/>\r\n\r\n"
                "</div>\r\n"),
      std::string::npos)
      << page;
  EXPECT_NE(converted.main().find("src=\"out.files/navigation.html\""), std::string::npos);
}

TEST(NavigationPage, ATitleKeepsCharactersBeyondTheBasicPlane) {
  WordDocument doc;
  doc.style(1, support::Style().name("heading 1"));
  doc.paragraph(u"\U0001F600 <x>").istd(1);
  EXPECT_NE(Converted(doc).file("navigation.html").find(">\xF0\x9F\x98\x80 &lt;x&gt</a>"), std::string::npos);
}

TEST(NavigationPage, AnEmptyHeadingHasItsAnchorAndEntry) {
  WordDocument doc;
  doc.style(1, support::Style().name("heading 1"));
  doc.paragraph().istd(1);
  const Converted converted(doc);
  EXPECT_EQ(converted.text(), "<a name=\"TITLE_0\"></a>" + p(span(kEmpty), "std1"));
  EXPECT_NE(converted.file("navigation.html").find("href=\"1.htm#TITLE_0\"></a>"), std::string::npos);
}

}  // namespace

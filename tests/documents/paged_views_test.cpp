#include <gtest/gtest.h>

#include "documents/converted.h"

namespace {

using support::sprm;
using support::WordDocument;

const support::Sprms kBold = {sprm(0x0835, 1)};
const std::string kBoldCss = "font-weight:bold;line-height:10.5pt;";
const std::string kPap = "<p class=\"std0\" style=\"margin-top:0pt;\">";

std::vector<std::string> phone(int pageSize) {
  return {"view=phone", "pagesize=" + std::to_string(pageSize)};
}
std::vector<std::string> mulpages(int pageSize) {
  return {"view=mulpages", "pagesize=" + std::to_string(pageSize)};
}

std::string x(int n) {
  return std::string(static_cast<size_t>(n), 'x');
}

TEST(PhonePages, ALongRunIsCutIntoFullPages) {
  WordDocument doc;
  doc.paragraph(x(499));  // and its mark
  const Converted converted(doc, phone(200));
  ASSERT_EQ(converted.pageCount(), 3);
  // The old page gets no end tag of "p", since no section block is open there.
  EXPECT_EQ(converted.body(1), kPap + span(x(200)));
  EXPECT_EQ(converted.body(2), kPap + span(x(200)));
  EXPECT_EQ(converted.body(3), p(span(x(99))));
}

TEST(PhonePages, AHeadHasNoScript) {
  WordDocument doc;
  doc.paragraph("x");
  EXPECT_EQ(Converted(doc, phone(100)).page().find("initFun"), std::string::npos);
}

TEST(PhonePages, TheMainFileListsThePages) {
  WordDocument doc;
  doc.paragraph(x(250));
  const Converted converted(doc, phone(200));
  EXPECT_NE(converted.main().find("total2page"), std::string::npos);
  EXPECT_NE(converted.main().find("<a href=\"out.files/2.htm\">2</a>"), std::string::npos);
}

TEST(PhonePages, AParagraphThatEndsALittleAboveThePageSizeStaysWhole) {
  WordDocument doc;
  doc.paragraph(x(219));
  EXPECT_EQ(Converted(doc, phone(200)).pageCount(), 1);
  WordDocument longer;
  longer.paragraph(x(220));
  EXPECT_EQ(Converted(longer, phone(200)).pageCount(), 2);
}

TEST(PhonePages, AParagraphThatDoesNotFitOpensAPageOnceNineTenthsAreFull) {
  WordDocument doc;
  doc.paragraph(x(180));  // 181 characters: above the 180 at which a page counts as full
  doc.paragraph(x(99));
  const Converted converted(doc, phone(200));
  ASSERT_EQ(converted.pageCount(), 2);
  // The page opens with the paragraph that goes on, and then the paragraph itself begins.
  EXPECT_EQ(converted.body(1), p(span(x(180))));
  EXPECT_EQ(converted.body(2), kPap + p(span(x(99))));
}

TEST(PhonePages, ALongParagraphBeginsOnAPageThatIsNotFullAndIsCutThere) {
  WordDocument doc;
  doc.paragraph(x(99));   // 100 with its mark
  doc.paragraph(x(299));  // 300
  const Converted converted(doc, phone(200));
  ASSERT_EQ(converted.pageCount(), 2);
  EXPECT_EQ(converted.body(1), p(span(x(99))) + kPap + span(x(100)));
  EXPECT_EQ(converted.body(2), p(span(x(199))));
}

TEST(PhonePages, ARunThatExactlyFillsThePageStaysWhole) {
  WordDocument doc;
  doc.paragraph(x(200)).run("b", kBold).run(x(30));
  const Converted converted(doc, phone(200));
  ASSERT_EQ(converted.pageCount(), 2);
  EXPECT_EQ(converted.body(1), kPap + span(x(200)));
  EXPECT_EQ(converted.body(2), p(span("b", kBoldCss) + span(x(30))));
}

TEST(PhonePages, WithoutAPageSizeEveryRunHasAPageOfItsOwn) {
  WordDocument doc;
  doc.paragraph("a").run("b", kBold).run("c");
  const Converted converted(doc, {"view=phone"});
  ASSERT_EQ(converted.pageCount(), 4);
  // The page ends before the bracket of the open start tag came out.
  EXPECT_TRUE(
      converted.page(1).ends_with("<p class=\"std0\" style=\"margin-top:0pt;\"\r\n></body>\r\n</html>"));
  EXPECT_EQ(converted.body(2), kPap + span("a"));
  EXPECT_EQ(converted.body(3), kPap + span("b", kBoldCss));
  EXPECT_EQ(converted.body(4), p(span("c")));
}

TEST(PhonePages, WithoutAPageSizeAParagraphBehindTextBeginsOnAPageOfItsOwn) {
  WordDocument doc;
  doc.paragraph("a");
  doc.paragraph("b");
  const Converted converted(doc, {"view=phone"});
  ASSERT_EQ(converted.pageCount(), 4);
  EXPECT_EQ(converted.body(2), p(span("a")));
  // The change in front of the paragraph opens it once, the paragraph itself again; then its run leaves.
  EXPECT_TRUE(converted.page(3).ends_with(
      kPap + "<p class=\"std0\" style=\"margin-top:0pt;\"\r\n></body>\r\n</html>"));
  EXPECT_EQ(converted.body(4), p(span("b")));
}

TEST(PhonePages, APageSizeOfZeroGivesEachRunAPageAndNeverCuts) {
  WordDocument doc;
  doc.paragraph(x(50)).run("b", kBold);
  const Converted converted(doc, phone(0));
  ASSERT_EQ(converted.result, PAGEREX_OK);
  ASSERT_EQ(converted.pageCount(), 3);
  EXPECT_EQ(converted.body(2), kPap + span(x(50)));
}

TEST(PhonePages, NegativePageSizesEnd) {
  WordDocument doc;
  doc.paragraph(x(50)).run("b", kBold);
  for (const char* size : {"pagesize=-2", "pagesize=-2147483648"}) {
    EXPECT_EQ(Converted(doc, {"view=phone", size}).result, PAGEREX_OK) << size;
  }
}

TEST(PhonePages, AHyperlinkIsNotCut) {
  WordDocument doc;
  doc.paragraph().field(88, "HYPERLINK \"u\"", x(500)).run("b").run(x(300), kBold);
  const Converted converted(doc, phone(200));
  ASSERT_EQ(converted.pageCount(), 3);
  EXPECT_EQ(converted.body(1), kPap + span("<a href=\"u\">" + x(500)) + "</a>");
  EXPECT_EQ(converted.body(2), kPap + span("b") + span(x(199), kBoldCss));
}

TEST(PhonePages, AParagraphInsideAHyperlinkOpensNoPage) {
  WordDocument doc;
  doc.paragraph().fieldBegin(88).run("HYPERLINK \"u\"").fieldSeparator().run(x(190));
  doc.paragraph().run(x(100)).fieldEnd().run(".");
  const Converted converted(doc, phone(200));
  ASSERT_EQ(converted.pageCount(), 2);
  EXPECT_EQ(converted.body(1), p(span("<a href=\"u\">" + x(190))) + kPap + span(x(100)) + "</a>");
  EXPECT_EQ(converted.body(2), p(span(".")));
}

TEST(PhonePages, ATableIsNotCut) {
  WordDocument doc;
  for (int i = 0; i < 10; ++i) doc.row({x(100), x(100)}, {support::defTableSprm({0, 1000, 2000})});
  doc.paragraph("end");
  EXPECT_EQ(Converted(doc, phone(200)).pageCount(), 2);
}

TEST(PhonePages, EmptyParagraphsAndPageBreaksCountTen) {
  WordDocument doc;
  for (int i = 0; i < 9; ++i) doc.paragraph();
  doc.paragraph(x(20));
  // 90 are counted and 21 come: 111 is above 110, and 90 is not above 90.
  EXPECT_EQ(Converted(doc, phone(100)).pageCount(), 2);
  WordDocument fewer;
  for (int i = 0; i < 8; ++i) fewer.paragraph();
  fewer.paragraph(x(20));
  EXPECT_EQ(Converted(fewer, phone(100)).pageCount(), 1);
}

TEST(MulpagesPages, APageChangeClosesAndReopensSectionAndParagraph) {
  WordDocument doc;
  doc.paragraph(x(250));
  const Converted converted(doc, mulpages(200));
  ASSERT_EQ(converted.pageCount(), 2);
  const std::string first = converted.body(1);
  EXPECT_NE(first.find(kPap + span(x(200)) + "</p>\r\n</div></div></div></center><script"),
            std::string::npos);
  EXPECT_NE(first.find("getElementById('parent0')"), std::string::npos);
  const std::string second = converted.body(2);
  EXPECT_EQ(second.find("<center><div id=\"parent0\""), 0u);
  EXPECT_EQ(converted.text(2), p(span(x(50))));
}

TEST(MulpagesPages, APageChangeInFrontOfAParagraphLeavesItsStrayTags) {
  WordDocument doc;
  doc.paragraph(x(180));
  doc.paragraph(x(99));
  const Converted converted(doc, mulpages(200));
  ASSERT_EQ(converted.pageCount(), 2);
  EXPECT_EQ(converted.text(1), p(span(x(180))) + "</p>\r\n");
  EXPECT_EQ(converted.text(2), kPap + p(span(x(99))));
}

TEST(MulpagesPages, TheMainFileCountsThem) {
  WordDocument doc;
  doc.paragraph(x(250));
  EXPECT_EQ(Converted(doc, mulpages(200)).main(),
            "<file totalpages=\"2\"><page>out.files/1.htm</page><page>out.files/2.htm</page></file>");
}

TEST(MulpagesPages, NoNavigationIsWritten) {
  WordDocument doc;
  doc.style(1, support::Style().name("heading 1"));
  doc.paragraph("T").istd(1);
  const Converted converted(doc, mulpages(200));
  EXPECT_EQ(converted.text(), p(span("T"), "std1"));
  EXPECT_FALSE(converted.has("navigation.html"));
}

std::string preview(const WordDocument& document, int pageSize) {
  const Converted converted(document, {"view=preview", "pagesize=" + std::to_string(pageSize)});
  EXPECT_EQ(converted.result, PAGEREX_OK);
  EXPECT_EQ(converted.folder.files(), (std::vector<std::string>{"in.doc", "out.htm"}));
  return converted.main();
}

TEST(Preview, TextIsCutAtThePageSizeInSourceCharacters) {
  WordDocument doc;
  doc.paragraph("a<b>c").ownMark();
  doc.paragraph("defgh");
  EXPECT_EQ(preview(doc, 100), "a&lt;b&gtc<br>defgh");
  EXPECT_EQ(preview(doc, 7), "a&lt;b&gtc<br>de");
  EXPECT_EQ(preview(doc, 2), "a&lt;");
}

TEST(Preview, AMarkInsideTheLastRunGivesNoLineBreak) {
  WordDocument doc;
  doc.paragraph("a");
  doc.paragraph("b");
  EXPECT_EQ(preview(doc, 100), "ab");
}

TEST(Preview, EmptyParagraphsCellsAndPageBreaks) {
  WordDocument doc;
  doc.paragraph("a").ownMark();
  doc.paragraph();
  doc.paragraph("b").breakRun().run("\x0c").ownMark();
  EXPECT_EQ(preview(doc, 100), "a<br><br>b<br><br>");
}

TEST(Preview, ATableIsItsBareParagraphs) {
  WordDocument doc;
  doc.row({"one", ""}, {support::defTableSprm({0, 1000, 2000})});
  doc.paragraph("end");
  const std::string text = preview(doc, 100);
  EXPECT_EQ(text.find("<t"), std::string::npos);
  EXPECT_EQ(text.find("one"), 0u);
  EXPECT_NE(text.find("&nbsp;"), std::string::npos);
}

TEST(Preview, WithoutRoomPlainRunsWriteNothing) {
  WordDocument doc;
  doc.paragraph("a").ownMark();
  doc.paragraph("b");
  EXPECT_EQ(preview(doc, 0), "");
  EXPECT_EQ(Converted(doc, {"view=preview"}).main(), "");
}

TEST(Preview, LaterSectionsStopAtTheirFirstPlainRun) {
  WordDocument doc;
  doc.paragraph("abcdef");
  doc.section({});
  doc.paragraph();
  doc.paragraph("never");
  EXPECT_EQ(preview(doc, 3), "abc<br>");
}

}  // namespace

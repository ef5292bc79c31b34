#include <gtest/gtest.h>

#include "documents/converted.h"

namespace {

using support::sprm;
using support::WordDocument;

std::string textOf(const WordDocument& document) {
  const Converted converted(document);
  EXPECT_EQ(converted.result, PAGEREX_OK);
  return converted.text();
}

TEST(PlainDocument, TheWholePage) {
  WordDocument doc;
  doc.paragraph("Hello");
  const Converted converted(doc);
  EXPECT_EQ(converted.result, PAGEREX_OK);
  EXPECT_EQ(
      converted.page(),
      "<html xmlns:v=\"urn:schemas-microsoft-com:vml\"\r\n "
      "xmlns:o=\"urn:schemas-microsoft-com:office:office\"\r\n"
      " xmlns:w=\"urn:schemas-microsoft-com:office:word\"\r\n "
      "xmlns=\"http://www.w3.org/TR/REC-html40\">\r\n\r\n"
      "<head><script language=\"JavaScript\" src=\"shapejs.js\"></script>\r\n"
      "<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\"></meta>\r\n"
      "<meta name=\"ProgId\" content=\"Word.Document\"></meta>\r\n"
      "<meta name=\"Generator\" content=\"Qel 2009\"></meta>\r\n"
      "<meta name=\"Originator\" content=\"Qel 2009\"></meta>\r\n"
      "<!--[if !mso]>\r\n<style>\r\n"
      "v\\:* {behavior:url(#default#VML);}\r\no\\:* {behavior:url(#default#VML);}\r\n"
      "w\\:* {behavior:url(#default#VML);}\r\n.shape {behavior:url(#default#VML);}\r\n"
      "</style>\r\n<![endif]-->\r\n"
      "<link rel=\"stylesheet\" type=\"text/css\" href=\"style.css\"/>"
      "<script language=\"javascript\">var initFun = new Array();\r\n"
      "window.onload = function(){\r\nsetTimeout(runInitFun, 0);\r\n"
      "if (navigator.appName == \"Microsoft Internet Explorer\")document.body.style.background = "
      "'#808080';}\r\n"
      "function runInitFun()\r\n{for (var i = 0 ; i < initFun.length ; ++i) initFun[i]();}\r\n\r\n"
      "var contentLeft;\r\nvar contentTop;\r\nfunction onMouseOverAnchor(contentID, event)\r\n{\r\n"
      "contentID.style.visibility = \"visible\";\r\ncontentID.style.display = \"block\";\r\n"
      "contentLeft = event.clientX + document.body.scrollLeft;\r\n"
      "contentTop = event.clientY + document.body.scrollTop;\r\n"
      "contentID.style.left = contentLeft;\r\ncontentID.style.top = contentTop;\r\n\r\n}\r\n\r\n"
      "function onMouseOverContent(contentID)\r\n{\r\n"
      "contentID.style.visibility = \"visible\";\r\ncontentID.style.display = \"block\";\r\n"
      "contentID.style.left = contentLeft;\r\ncontentID.style.top = contentTop;\r\n}\r\n\r\n"
      "function onMouseOut(contentID)\r\n{\r\n"
      "contentID.style.visibility = \"hidden\";\r\ncontentID.style.display = \"none\";\r\n}\r\n\r\n"
      "</script>\r\n\r\n</head>\r\n\r\n"
      "<body style=\"background:#FFFFFF;\">\r\n"
      "<center><div id=\"parent0\" style=\"background:#FFFFFF;width:612.000000pt;\">"
      "<!--[if gte vml 1]></center><center><![endif]-->"
      "<div id=\"child0\" style=\"position:absolute;\">"
      "<div style=\"position:relative;width:432.000000pt;margin-left:90.000000pt;margin-right:90.000000pt;"
      "margin-top:72.000000pt;margin-bottom:72.000000pt;\">"
      "<p class=\"std0\" style=\"margin-top:0pt;\"><span style=\"line-height:10.5pt;\">Hello</span></p>\r\n"
      "</div></div></div></center>"
      "<script type='text/javascript'>\r\n"
      "initFun[initFun.length] = function(){document.getElementById('parent0').style.height = "
      "document.getElementById('child0').offsetHeight+144;}</script><p><o:p>&nbsp;</o:p></p>"
      "\r\n</body>\r\n</html>");
}

TEST(PlainDocument, TheFramePageShowsTheOnePage) {
  WordDocument doc;
  doc.paragraph("Hello");
  const Converted converted(doc);
  EXPECT_FALSE(converted.has("navigation.html"));
  EXPECT_NE(converted.main().find("src=\"out.files/1.htm\""), std::string::npos);
  EXPECT_EQ(converted.main().find("navigation.html"), std::string::npos);
  EXPECT_EQ(converted.file("shapejs.js"), "");
}

// Sections.

TEST(Sections, ASectionWithoutPropertiesHasTheDefaultMeasures) {
  WordDocument doc;
  doc.paragraph("x");
  const std::string body = Converted(doc).body();
  EXPECT_NE(body.find("width:612.000000pt;\">"), std::string::npos);
  EXPECT_NE(body.find("width:432.000000pt;margin-left:90.000000pt;"), std::string::npos);
}

TEST(Sections, NegativeMarginsShrinkTheScriptsHeightAndTruncateTowardZero) {
  WordDocument doc;
  doc.section({sprm(0x9023, -10), sprm(0x9024, -20)});
  doc.paragraph("x");
  EXPECT_NE(Converted(doc).body().find(".offsetHeight+-1;}"), std::string::npos);
}

TEST(Sections, AWidePageStaysPositive) {
  WordDocument doc;
  doc.section({sprm(0xB01F, 40000)});
  doc.paragraph("x");
  EXPECT_NE(Converted(doc).body().find("id=\"parent0\" style=\"background:#FFFFFF;width:2000.000000pt;\""),
            std::string::npos);
}

TEST(Sections, AllSectionsFollowEachOtherOnTheOnePage) {
  WordDocument doc;
  doc.paragraph("one");
  doc.section({sprm(0xB01F, 10000)});
  doc.paragraph("two");
  doc.section({sprm(0xB01F, 9000)});
  doc.paragraph("three");
  const Converted converted(doc);
  EXPECT_EQ(converted.pageCount(), 1);
  const std::string body = converted.body();
  const size_t second = body.find("<p><o:p>&nbsp;</o:p></p><center><div id=\"parent1\"");
  ASSERT_NE(second, std::string::npos);
  EXPECT_LT(body.find("one"), second);
  EXPECT_LT(second, body.find("two"));
  EXPECT_NE(body.find("id=\"parent2\" style=\"background:#FFFFFF;width:450.000000pt;\""), std::string::npos);
}

TEST(Sections, ASectionDoesNotTakeOverMeasuresOfTheOneBefore) {
  WordDocument doc;
  doc.section({sprm(0xB01F, 10000)});
  doc.paragraph("one");
  doc.section({});
  doc.paragraph("two");
  const std::string body = Converted(doc).body();
  EXPECT_NE(body.find("id=\"parent0\" style=\"background:#FFFFFF;width:500.000000pt;\""), std::string::npos);
  EXPECT_NE(body.find("id=\"parent1\" style=\"background:#FFFFFF;width:612.000000pt;\""), std::string::npos);
}

// Paragraphs.

TEST(Paragraphs, ALongDocumentIsOnePage) {
  WordDocument doc;
  for (int i = 0; i < 500; ++i) doc.paragraph("Paragraph of a long document.");
  const Converted converted(doc);
  EXPECT_EQ(converted.pageCount(), 1);
}

TEST(Paragraphs, TheStyleIsTheClass) {
  WordDocument doc;
  doc.style(12, support::Style().name("Mine"));
  doc.paragraph("x").istd(12);
  EXPECT_EQ(textOf(doc), p(span("x"), "std12"));
}

TEST(Paragraphs, AParagraphWithoutStyleHasNoClass) {
  WordDocument doc;
  doc.paragraph("x").istd(4095);
  EXPECT_EQ(textOf(doc), "<p style=\"margin-top:0pt;\">" + span("x") + "</p>\r\n");
}

TEST(Paragraphs, AnEntryWithoutDataYieldsNothing) {
  WordDocument doc;
  doc.paragraph("before");
  doc.paragraph("lost").noPapx();
  doc.paragraph("after");
  EXPECT_EQ(textOf(doc), p(span("before")) + p(span("after")));
}

TEST(Paragraphs, DirectPropertiesComeAsCss) {
  WordDocument doc;
  doc.paragraph("x").sprms({sprm(0x2461, 1), sprm(0x845E, 720)});
  EXPECT_EQ(textOf(doc),
            "<p class=\"std0\" style=\"margin-left:36.000000pt;margin-top:0pt;text-align:center;\">" +
                span("x") + "</p>\r\n");
}

TEST(Paragraphs, LineSpacingReachesTheRunsAndLasts) {
  WordDocument doc;
  doc.paragraph("x").sprms({sprm(0x6412, 0x0001'0168)});  // 360: one and a half lines
  doc.paragraph("y");
  EXPECT_EQ(textOf(doc), "<p class=\"std0\" style=\"margin-top:0pt;line-height:150%;\">" +
                             span("x", "line-height:150%;") + "</p>\r\n" + p(span("y", "line-height:150%;")));
}

TEST(Paragraphs, ManyRunsAndParagraphsFindEachOther) {
  WordDocument doc;
  std::string expected;
  for (int i = 0; i < 40; ++i) {
    auto& paragraph = doc.paragraph();
    std::string spans;
    for (int run = 0; run <= i % 5; ++run) {
      const bool bold = run % 2 != 0;
      paragraph.run("w", bold ? support::Sprms{sprm(0x0835, 1)} : support::Sprms{});
      spans += span("w", bold ? "font-weight:bold;line-height:10.5pt;" : "line-height:10.5pt;");
    }
    paragraph.ownMark();
    expected +=
        p(spans + span(kEmpty, (i % 5) % 2 ? "font-weight:bold;line-height:10.5pt;" : "line-height:10.5pt;"));
  }
  EXPECT_EQ(textOf(doc), expected);
}

TEST(Paragraphs, OneRunOverManyParagraphsGivesEachItsPart) {
  WordDocument doc;
  doc.paragraph("one");
  doc.paragraph("two");
  doc.paragraph("three");
  EXPECT_EQ(textOf(doc), p(span("one")) + p(span("two")) + p(span("three")));
}

// Runs.

TEST(Runs, AnEmptyParagraphHasItsHeight) {
  WordDocument doc;
  doc.paragraph();
  EXPECT_EQ(textOf(doc), p(span(kEmpty)));
}

TEST(Runs, AMarkInARunOfItsOwnLeavesAnEmptySpan) {
  WordDocument doc;
  doc.paragraph("x").mark({sprm(0x0835, 1)});
  EXPECT_EQ(textOf(doc), p(span("x") + span(kEmpty, "font-weight:bold;line-height:10.5pt;")));
}

TEST(Runs, AMarkAtTheEndOfALongerRunLeavesNoTrace) {
  WordDocument doc;
  doc.paragraph("x");
  EXPECT_EQ(textOf(doc), p(span("x")));
}

TEST(Runs, APageBreakAtTheStartReplacesTheRun) {
  WordDocument doc;
  doc.paragraph().run("a").breakRun().run("\x0c").breakRun().run("b");
  EXPECT_EQ(textOf(doc), p(span("a") + span("<br clear=all style='page-break-before:always'>") + span("b")));
}

TEST(Runs, APageBreakInsideARunPassesThrough) {
  WordDocument doc;
  doc.paragraph(
      "a\x0c"
      "b");
  EXPECT_EQ(textOf(doc), p(span("a\x0c"
                                "b")));
}

TEST(Runs, ARunThatBeginsWithAMarkLosesItsRest) {
  WordDocument doc;
  doc.paragraph().run("\rrest");
  EXPECT_EQ(textOf(doc), p(span(kEmpty)));
}

TEST(Runs, TextIsEscaped) {
  WordDocument doc;
  doc.paragraph(
      "a<b>&\t\x0b"
      "c  d   e");
  EXPECT_EQ(textOf(doc), p(span("a&lt;b&gt&amp;&nbsp;&nbsp;&nbsp;&nbsp;<br>c &nbsp;d &nbsp;&nbsp;e")));
}

TEST(Runs, SpacesOfNeighbouringRunsStartAnew) {
  WordDocument doc;
  doc.paragraph().run("a ").run(" b", {sprm(0x0836, 1)});
  EXPECT_EQ(textOf(doc), p(span("a ") + span(" b", "font-style:italic;line-height:10.5pt;")));
}

TEST(Runs, EveryScriptComesOutAsUtf8) {
  WordDocument doc;
  doc.paragraph(u"Zo\u00EB \u0416\u0443\u043A \u03A9 \u6C34 \u3042 \U0001F600.");
  EXPECT_EQ(
      textOf(doc),
      p(span("Zo\xC3\xAB \xD0\x96\xD1\x83\xD0\xBA \xCE\xA9 \xE6\xB0\xB4 \xE3\x81\x82 \xF0\x9F\x98\x80.")));
}

TEST(Runs, ALoneSurrogateWritesNothing) {
  WordDocument doc;
  doc.paragraph(
      std::u16string(u"a\xD83D"
                     u"b\xDE00"
                     u"c"));
  EXPECT_EQ(textOf(doc), p(span("abc")));
}

TEST(Runs, ACharacterStyleIsTheClassAndItsSizeTheBase) {
  WordDocument doc;
  doc.style(15, support::Style().kind(support::StyleKind::kCharacter).name("C").chpx({sprm(0x4A43, 40)}));
  doc.paragraph("x", {sprm(0x4A30, 15)});
  // Sizes are collected from paragraph styles' merged groups; a character style's group counts there too.
  EXPECT_EQ(textOf(doc), p("<span class=\"std15\" style=\"line-height:20.0pt;\">x</span>"));
}

TEST(Runs, CharacterStyle4095IsNoClass) {
  WordDocument doc;
  doc.paragraph("x", {sprm(0x4A30, 4095)});
  EXPECT_EQ(textOf(doc), p(span("x")));
}

TEST(Runs, AParagraphStylesSizeIsTheBaseOfItsRuns) {
  WordDocument doc;
  doc.style(0, support::Style().name("Normal").chpx({sprm(0x4A43, 48)}));
  doc.paragraph().run("x", {sprm(0x2A48, 1)});
  EXPECT_EQ(textOf(doc), p(span("x", "font-size:19.920000pt;vertical-align:super;line-height:19.9pt;")));
}

TEST(Runs, ASymbolWritesItsPlaceholderInItsFont) {
  WordDocument doc;
  doc.font("Times New Roman");
  const uint16_t symbol = doc.font("Wingdings");
  doc.paragraph("(", {support::sprm32(0x6A09, 0xF0FC0000 | symbol)});
  EXPECT_EQ(textOf(doc), p(span("(", "font-family:Wingdings;line-height:10.5pt;")));
}

TEST(Runs, AFontNeedsItsHint) {
  WordDocument doc;
  doc.font("Times New Roman");
  const uint16_t arial = doc.font("Arial");
  const uint16_t mincho = doc.font(u"\uFF2D\uFF33 \u660E\u671D");
  doc.paragraph("a", {sprm(0x4A4F, arial)});
  doc.paragraph("b", {sprm(0x286F, 0), sprm(0x4A4F, arial), sprm(0x4A50, mincho)});
  doc.paragraph("c", {sprm(0x286F, 1), sprm(0x4A4F, arial), sprm(0x4A50, mincho)});
  doc.paragraph("d", {sprm(0x286F, 0), sprm(0x4A4F, 99)});
  EXPECT_EQ(
      textOf(doc),
      p(span("a")) + p(span("b", "font-family:Arial;line-height:10.5pt;")) +
          p(span("c", "font-family:\xEF\xBC\xAD\xEF\xBC\xB3 \xE6\x98\x8E\xE6\x9C\x9D;line-height:10.5pt;")) +
          p(span("d")));
}

}  // namespace

#include <gtest/gtest.h>

#include "documents/converted.h"

namespace {

using support::sprm;
using support::Text;
using support::WordDocument;

constexpr uint8_t kToc = 13;
constexpr uint8_t kPage = 33;
constexpr uint8_t kFormula = 34;
constexpr uint8_t kHyperlink = 88;

std::string textOf(const WordDocument& document, const std::vector<std::string>& options = {}) {
  const Converted converted(document, options);
  EXPECT_EQ(converted.result, PAGEREX_OK);
  return converted.text();
}

TEST(Fields, TheResultShowsAndTheCodeDisappears) {
  for (const uint8_t type : {kToc, kPage}) {
    WordDocument doc;
    doc.paragraph("a").field(type, " CODE ", "7").run("b");
    EXPECT_EQ(textOf(doc), p(span("a") + span("7") + span("b")));
  }
}

TEST(Fields, AFieldWithoutSeparatorShowsNothing) {
  WordDocument doc;
  doc.paragraph("a").field(kPage, " CODE ").run("b");
  EXPECT_EQ(textOf(doc), p(span("a") + span("b")));
}

TEST(Fields, AMarkWithoutTableEntryHidesNothing) {
  WordDocument doc;
  doc.paragraph("a").field(kPage, "CODE", "7").run("b");
  doc.dropTable(16);
  EXPECT_EQ(textOf(doc), p(span("a") + span("CODE") + span("7") + span("b")));
}

TEST(Fields, AFieldInACodeLetsTheRestOfTheCodeThrough) {
  WordDocument doc;
  doc.paragraph()
      .fieldBegin(kPage)
      .run("one")
      .field(kPage, "in", "2")
      .run("rest")
      .fieldSeparator()
      .run("3")
      .fieldEnd()
      .run(".");
  EXPECT_EQ(textOf(doc), p(span("2") + span("rest") + span("3") + span(".")));
}

TEST(Fields, AFormulaInAFormulaHidesItsResult) {
  WordDocument doc;
  doc.paragraph()
      .fieldBegin(kFormula)
      .run("= 1 + ")
      .field(kFormula, "= 2", "2")
      .fieldSeparator()
      .run("3")
      .fieldEnd();
  doc.paragraph("x");
  EXPECT_EQ(textOf(doc).find("<span style=\"line-height:10.5pt;\">2</span>"), std::string::npos);
}

TEST(Hyperlinks, TheAnchorOpensInTheFirstSpanAndClosesAtTheEndMark) {
  WordDocument doc;
  doc.paragraph("a").field(kHyperlink, " HYPERLINK \"http://example.org/\" \\o \"tip\" ", "link").run("b");
  EXPECT_EQ(textOf(doc),
            p(span("a") + span("<a href=\"http://example.org/\" title=\"tip\">link") + "</a>" + span("b")));
}

TEST(Hyperlinks, ALocationAloneIsAFragment) {
  WordDocument doc;
  doc.paragraph().field(kHyperlink, "HYPERLINK \\l \"top\"", "up").run(".");
  EXPECT_EQ(textOf(doc), p(span("<a href=\"#top\">up") + "</a>" + span(".")));
}

TEST(Hyperlinks, AnEmptyResultLeavesALoneEndTag) {
  WordDocument doc;
  doc.paragraph("a").field(kHyperlink, "HYPERLINK \"u\"", "").run("b");
  EXPECT_EQ(textOf(doc), p(span("a") + "</a>" + span("b")));
}

TEST(Hyperlinks, OnlyTheFirstRunOfTheResultOpensTheAnchor) {
  WordDocument doc;
  doc.paragraph()
      .fieldBegin(kHyperlink)
      .run("HYPERLINK \"u\"")
      .fieldSeparator()
      .run("one")
      .run("two", {sprm(0x0835, 1)})
      .fieldEnd()
      .run(".");
  EXPECT_EQ(textOf(doc), p(span("<a href=\"u\">one") + span("two", "font-weight:bold;line-height:10.5pt;") +
                           "</a>" + span(".")));
}

TEST(Hyperlinks, PreviewHasNone) {
  WordDocument doc;
  doc.paragraph("a").field(kHyperlink, "HYPERLINK \"u\"", "link").run("b");
  const Converted converted(doc, {"view=preview", "pagesize=100"});
  EXPECT_EQ(converted.main(), "alinkb");
}

TEST(SpecialCharacters, AHiddenPictureAndADrawnObjectWriteNothing) {
  WordDocument doc;
  doc.paragraph("a").special(1, {sprm(0x083C, 1)}).special(8, {sprm(0x083C, 1)}).run("b");
  EXPECT_EQ(textOf(doc), p(span("a") + span("b")));
}

}  // namespace

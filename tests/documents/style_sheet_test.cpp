#include <gtest/gtest.h>

#include "documents/converted.h"

namespace {

using support::sprm;
using support::Style;
using support::WordDocument;

const std::string kFixedRules =
    "div\r\n{word-wrap:break-word;\r\nfont-family:\xE5\xAE\x8B\xE4\xBD\x93;\r\nfont-size:10.00000pt;\r\n"
    "text-align:left;\r\n}\r\n"
    ".content\r\n{font-family:Arial Black;\r\nfont-size:9pt;\r\ncursor:pointer;\r\ndisplay:none;\r\n"
    "visibility:hidden;\r\nposition:absolute;\r\ntop:-1000;\r\nleft:-1000;\r\nbackground:infobackground;\r\n"
    "color:InfoText;\r\nborder-top:1pt solid #f1efe2;\r\nborder-right:2pt solid #aca899;\r\n"
    "border-bottom:2pt solid black;\r\nborder-left:1pt solid black;\r\npadding:3pt 3pt 3pt "
    "3pt;\r\nz-index:100;\r\n"
    "text-indent:0.0pt;\r\ntext-align:left;\r\n}\r\n\r\n"
    ".anchor_annotation\r\n{color:red;\r\ncursor:pointer;\r\nfont-size:20px;\r\nfont-family:Times New "
    "Roman;\r\n"
    "}\r\n\r\n"
    ".anchor_footnote, .anchor_endnote\r\n{color:red;\r\ncursor:pointer;\r\nfont-size:5.5pt;\r\n"
    "font-family:Tahoma;\r\nvertical-align:text-top;\r\n}\r\n";

/// The rules of the document's styles.
std::string rules(const WordDocument& document) {
  const std::string css = Converted(document).file("style.css");
  EXPECT_EQ(css.substr(0, kFixedRules.size()), kFixedRules);
  return css.substr(kFixedRules.size());
}

support::WordOptions noSpareSlots() {
  support::WordOptions options;
  options.minStyleSlots = 0;
  return options;
}

TEST(StyleSheetFile, ADocumentWithoutStylesHasTheFixedRulesOnly) {
  WordDocument doc;
  doc.paragraph("x");
  doc.dropTable(1);
  EXPECT_EQ(rules(doc), "");
}

TEST(StyleSheetFile, EachStyleHasARuleAndEmptySlotsToo) {
  WordDocument doc(noSpareSlots());
  doc.style(0, Style().name("Normal"));
  doc.style(2, Style().name("B").papx({sprm(0x2461, 2)}).chpx({sprm(0x0835, 1)}));
  doc.paragraph("x");
  EXPECT_EQ(rules(doc),
            ".std0\r\n{margin-top:0pt;\r\n}\r\n\r\n.std1\r\n{}\r\n\r\n"
            ".std2\r\n{margin-top:0pt;\r\ntext-align:right;\r\nfont-weight:bold;\r\n}\r\n\r\n");
}

TEST(StyleSheetFile, InheritanceIsResolved) {
  WordDocument doc(noSpareSlots());
  doc.style(0, Style().name("Normal").papx({sprm(0x845E, 200)}).chpx({sprm(0x4A43, 24), sprm(0x0835, 1)}));
  doc.style(1, Style().name("Child").basedOn(0).papx({sprm(0x2461, 1)}).chpx({sprm(0x0835, 129)}));
  doc.paragraph("x");
  EXPECT_EQ(
      rules(doc),
      ".std0\r\n{margin-left:10.000000pt;\r\nmargin-top:0pt;\r\nfont-weight:bold;\r\n"
      "font-size:12.000000pt;\r\n}\r\n\r\n"
      ".std1\r\n{margin-left:10.000000pt;\r\nmargin-top:0pt;\r\ntext-align:center;\r\nfont-weight:normal;\r\n"
      "font-size:12.000000pt;\r\n}\r\n\r\n");
}

TEST(StyleSheetFile, AScriptWithoutSizeShrinksTenAndAHalfPoints) {
  WordDocument doc(noSpareSlots());
  doc.style(0, Style().name("Normal").chpx({sprm(0x2A48, 2)}));
  doc.paragraph("x");
  EXPECT_EQ(rules(doc),
            ".std0\r\n{margin-top:0pt;\r\nfont-size:8.715000pt;\r\nvertical-align:sub;\r\n}\r\n\r\n");
}

TEST(StyleSheetFile, OnlyStylesWithASizeSetTheBaseOfTheirRuns) {
  WordDocument doc;
  doc.style(0, Style().name("Normal").chpx({sprm(0x4A43, 60)}));
  doc.style(11, Style().name("Own").chpx({sprm(0x0835, 1)}));
  doc.paragraph("x").istd(11);
  doc.paragraph("y");
  EXPECT_EQ(Converted(doc).text(), p(span("x"), "std11") + p(span("y", "line-height:30.0pt;")));
}

TEST(StyleSheetFile, AnIndexAboveAnyUsedOneIsWrittenToo) {
  WordDocument doc;
  doc.style(20, Style().name("Far"));
  doc.paragraph("x");
  EXPECT_NE(rules(doc).find(".std20\r\n{margin-top:0pt;\r\n}\r\n"), std::string::npos);
}

}  // namespace

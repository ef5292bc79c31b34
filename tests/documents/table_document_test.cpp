#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "pagerex/pagerex.h"
#include "support/temp_folder.h"
#include "support/word_document_writer.h"

namespace {

using support::cellDistanceSprm;
using support::defTableSprm;
using support::sprm;
using support::Sprms;
using support::TableCell;
using support::TempFolder;
using support::WordDocument;
using testing::HasSubstr;
using testing::Not;

void convert(const TempFolder& folder, const WordDocument& document, const std::string& view,
             const std::string& pageSize) {
  document.save(folder.path("in.doc"));
  std::string options[] = {"view=" + view, "pagesize=" + pageSize};
  char* arguments[] = {options[0].data(), options[1].data()};
  if (PageRex(folder.path("in.doc").c_str(), folder.path("out.htm").c_str(), 2, arguments) != PAGEREX_OK) {
    throw std::runtime_error("the document does not convert");
  }
}

/// The first page, from the first table on to the end of the last one.
std::string tablesOf(const WordDocument& document, const std::string& view = "normal",
                     const std::string& pageSize = "200") {
  const TempFolder folder;
  convert(folder, document, view, pageSize);
  const std::string page = folder.read("out.files/1.htm");
  const size_t start = page.find("<table");
  const std::string end = "</table>";
  return start == std::string::npos ? "" : page.substr(start, page.rfind(end) + end.size() - start);
}

const std::string kTable =
    "<table cellspacing=\"0\" cellpadding=\"0\" style=\"word-wrap:break-word;table-layout:fixed;"
    "border-collapse:collapse;mso-table-layout-alt:fixed;position:relative;\">";

std::string paragraph(const std::string& text) {
  return "<p class=\"std0\" style=\"margin-top:0pt;\"><span style=\"line-height:10.5pt;\">" + text +
         "</span></p>\r\n";
}

/// A cell without borders, by its attributes.
std::string cell(const std::string& attributes, const std::string& content) {
  return "<td " + attributes + " style=\"padding:0.00pt 0.00pt 0.00pt 0.00pt;\">" + content + "</td>";
}

TEST(TableDocument, HasTheGridOfAllRows) {
  WordDocument doc;
  doc.paragraph("before");
  doc.row({"a", "b"}, {defTableSprm({0, 1000, 2000}, {TableCell{}, TableCell{.verticalAlign = 2}})});
  doc.row({"c"}, {defTableSprm({500, 2000}), sprm(0x9407, -300)});
  doc.paragraph("end");
  EXPECT_EQ(kTable + "<tr>" + cell("width=\"66\" colspan=\"2\" valign=\"top\"", paragraph("a")) +
                cell("width=\"66\" valign=\"bottom\"", paragraph("b")) + "</tr><tr height=\"20\"><td></td>" +
                cell("width=\"100\" colspan=\"2\"", paragraph("c")) + "</tr></table>",
            tablesOf(doc));
}

TEST(TableDocument, HasBordersPaddingAndShadingInItsCells) {
  WordDocument doc;
  const std::vector<support::Border> borders(6, {.colour = support::rgb(255, 0, 0), .width = 12});
  doc.row({"a"}, {defTableSprm({0, 1000}), support::tableBordersSprm(borders),
                  cellDistanceSprm(0xD634, 0, 1, 2 | 8, 3, 108),
                  support::tableShadingSprm({{.background = support::rgb(0xD9, 0xE2, 0xF3)}})});
  doc.paragraph("end");
  EXPECT_EQ(kTable +
                "<tr><td width=\"66\" style=\"border-top:1.50pt solid rgb(255,00,00);"
                "border-left:1.50pt solid rgb(255,00,00);border-bottom:1.50pt solid rgb(255,00,00);"
                "border-right:1.50pt solid rgb(255,00,00);padding:0.00pt 5.40pt 0.00pt 5.40pt;"
                "background:#d9e2f3;\">" +
                paragraph("a") + "</td></tr></table>",
            tablesOf(doc));
}

TEST(TableDocument, DropsTheParagraphsOfMergedCells) {
  WordDocument doc;
  const TableCell start{.verticalMerge = 3};
  const TableCell continued{.verticalMerge = 1};
  doc.row({"a", "b"}, {defTableSprm({0, 1000, 2000}, {start, TableCell{}})});
  doc.row({"gone", "c"}, {defTableSprm({0, 1000, 2000}, {continued, TableCell{}})});
  doc.paragraph("end");
  EXPECT_EQ(kTable + "<tr>" + cell("width=\"66\" rowspan=\"2\" valign=\"top\"", paragraph("a")) +
                cell("width=\"66\" valign=\"top\"", paragraph("b")) + "</tr><tr>" +
                cell("width=\"66\" valign=\"top\"", paragraph("c")) + "</tr></table>",
            tablesOf(doc));
}

TEST(TableDocument, NestsTables) {
  WordDocument doc;
  doc.row({"inner"}, {defTableSprm({0, 500})}, 2);
  doc.cell("outer");
  doc.rowEnd({defTableSprm({0, 1000})});
  doc.paragraph("end");
  EXPECT_EQ(kTable + "<tr>" +
                cell("width=\"66\"", kTable + "<tr>" + cell("width=\"33\"", paragraph("inner")) +
                                         "</tr></table>" + paragraph("outer")) +
                "</tr></table>",
            tablesOf(doc));
}

TEST(TableDocument, ReadsPropertiesFromTheDataStream) {
  WordDocument doc;
  doc.cell("a").huge();
  doc.rowEnd({defTableSprm({0, 1000})}).huge();
  doc.paragraph("end");
  // The paragraph itself has no style property in the file but the table's: all of it lies in "Data".
  EXPECT_EQ(kTable + "<tr>" + cell("width=\"66\"", paragraph("a")) + "</tr></table>", tablesOf(doc));
}

TEST(TableDocument, TakesTheSectionsMarginOffATableThatIsPlacedOnThePage) {
  WordDocument doc;
  doc.section({sprm(0xB021, 1000)});
  doc.row({"a"}, {defTableSprm({0, 1000}), sprm(0x360D, 0x80), sprm(0x940E, 1500)});
  doc.paragraph("end");
  EXPECT_THAT(tablesOf(doc), HasSubstr("margin-left:25.00 pt;"));
}

TEST(TableDocument, IsNotDisturbedByATableInANote) {
  WordDocument doc;
  doc.cell("a").footnote([](support::Story& note) { note.row({"n"}, {defTableSprm({0, 100})}); });
  doc.cell("b");
  doc.rowEnd({defTableSprm({0, 1000, 2000})});
  doc.paragraph("end");
  const std::string page = tablesOf(doc);
  EXPECT_THAT(page, HasSubstr("</td>" + cell("width=\"66\"", paragraph("b")) + "</tr></table>"));
}

TEST(TableDocument, StaysOnOnePageInPagedViews) {
  WordDocument doc;
  doc.row({"first", "second"}, {defTableSprm({0, 1000, 2000})});
  doc.row({"third", "fourth"}, {defTableSprm({0, 1000, 2000})});
  doc.paragraph("end");
  for (const char* view : {"phone", "mulpages"}) {
    const std::string page = tablesOf(doc, view, "3");
    EXPECT_EQ(kTable + "<tr>" + cell("width=\"66\"", paragraph("first")) +
                  cell("width=\"66\"", paragraph("second")) + "</tr><tr>" +
                  cell("width=\"66\"", paragraph("third")) + cell("width=\"66\"", paragraph("fourth")) +
                  "</tr></table>",
              page)
        << view;
  }
}

TEST(TableDocument, HasNoTableElementsInThePreview) {
  WordDocument doc;
  doc.row({"first", "second"}, {defTableSprm({0, 1000, 2000})});
  doc.paragraph("end");
  const TempFolder folder;
  convert(folder, doc, "preview", "1000");
  const std::string fragment = folder.read("out.htm");
  EXPECT_THAT(fragment, HasSubstr("first"));
  EXPECT_THAT(fragment, HasSubstr("second"));
  for (const char* element : {"<table", "<tr", "<td"}) EXPECT_THAT(fragment, Not(HasSubstr(element)));
}

}  // namespace

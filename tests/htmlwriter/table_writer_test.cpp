#include "htmlwriter/table_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "table_test_support.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::ByteWriter;
using support::defTableSprm;
using support::sprm;
using support::Sprms;
using support::TableCell;
using support::Text;
using support::WordDocument;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr TableCell kMergeStart{.verticalMerge = 3};
constexpr TableCell kMergeContinued{.verticalMerge = 1};
constexpr TableCell kPlain{};

/// A document of one-row tables is closed by this.
WordDocument& end(WordDocument& doc) {
  doc.paragraph("end");
  return doc;
}

/// Two cells and nothing else that would show.
Sprms twoCells() {
  return {defTableSprm({0, 1000, 2000})};
}

TEST(TableWriter, PutsARowAroundItsCells) {
  WordDocument doc;
  doc.paragraph("before");
  doc.row({"a", "b"}, twoCells());
  EXPECT_EQ("before<table><tr><td>a</td><td>b</td></tr></table>end", StructureOf(end(doc)));
}

TEST(TableWriter, WritesTheFormatOfTableRowAndCell) {
  WordDocument doc;
  doc.row({"a"}, {defTableSprm({0, 1000}, {kPlain}), sprm(0x9407, 300)});
  EXPECT_EQ(
      "<table cellspacing=\"0\" cellpadding=\"0\" style=\"word-wrap:break-word;table-layout:fixed;"
      "border-collapse:collapse;mso-table-layout-alt:fixed;position:relative;\"><tr height=\"20\">"
      "<td width=\"66\" valign=\"top\" style=\"padding:0.00pt 0.00pt 0.00pt 0.00pt;\">a</td></tr></table>end",
      TableStory(end(doc)).Html());
}

TEST(TableWriter, MakesColumnsOfTheBoundariesOfAllRows) {
  WordDocument doc;
  doc.row({"a", "b"}, {defTableSprm({0, 1000, 3000})});
  doc.row({"c", "d"}, {defTableSprm({0, 2000, 3000})});
  EXPECT_EQ(
      "<table><tr><td>a</td><td colspan=\"2\">b</td></tr>"
      "<tr><td colspan=\"2\">c</td><td>d</td></tr></table>end",
      StructureOf(end(doc)));
}

TEST(TableWriter, TakesBoundariesOneTwipApartAsTwoColumns) {
  WordDocument doc;
  doc.row({"a"}, {defTableSprm({0, 1000})});
  doc.row({"b"}, {defTableSprm({0, 1001})});
  EXPECT_EQ("<table><tr><td>a</td></tr><tr><td colspan=\"2\">b</td></tr></table>end", StructureOf(end(doc)));
}

TEST(TableWriter, FillsTheColumnsLeftOfARow) {
  WordDocument doc;
  doc.row({"a", "b", "c"}, {defTableSprm({0, 1000, 2000, 3000})});
  doc.row({"d"}, {defTableSprm({2000, 3000})});
  EXPECT_THAT(StructureOf(end(doc)), HasSubstr("<tr><td></td><td></td><td>d</td></tr>"));
}

/// A row whose second cell begins `gap` columns behind the end of the first. In one definition cells touch,
/// so that here two rows run together: the end of the first is missing.
std::string rowWithGap(int gap) {
  WordDocument doc;
  doc.cell("a");
  doc.cell("b");
  doc.rowEnd({defTableSprm({0, 1000})});
  doc.rowEnd({defTableSprm({static_cast<int16_t>(1000 + 1000 * gap), 9000})});
  doc.rowEnd({defTableSprm({0, 1000, 2000, 3000, 9000})});
  return StructureOf(end(doc));
}

TEST(TableWriter, LeavesOutOneFillerBetweenTheCellsOfARow) {
  EXPECT_THAT(rowWithGap(0), HasSubstr("<tr><td>a</td><td colspan=\"3\">b</td></tr>"));
  EXPECT_THAT(rowWithGap(1), HasSubstr("<tr><td>a</td><td colspan=\"2\">b</td></tr>"));
  EXPECT_THAT(rowWithGap(2), HasSubstr("<tr><td>a</td><td></td><td>b</td></tr>"));
}

TEST(TableWriter, CountsTheRowsOfAVerticalMerge) {
  WordDocument doc;
  doc.row({"a", "b"}, {defTableSprm({0, 1000, 2000}, {kMergeStart, kPlain})});
  for (const char* text : {"c", "d", "e"}) {
    doc.row({"gone", text}, {defTableSprm({0, 1000, 2000}, {kMergeContinued, kPlain})});
  }
  EXPECT_EQ(
      "<table><tr><td rowspan=\"4\">a</td><td>b</td></tr><tr><td>c</td></tr><tr><td>d</td></tr>"
      "<tr><td>e</td></tr></table>end",
      StructureOf(end(doc)));
}

TEST(TableWriter, EndsAVerticalMergeWhereTheLeftEdgeDiffers) {
  WordDocument doc;
  doc.row({"a", "b"}, {defTableSprm({0, 1000, 2000}, {kMergeStart, kPlain})});
  doc.row({"-", "c"}, {defTableSprm({0, 1000, 2000}, {kMergeContinued, kPlain})});
  doc.row({"-", "d"}, {defTableSprm({1, 1000, 2000}, {kMergeContinued, kPlain})});
  EXPECT_THAT(StructureOf(end(doc)), HasSubstr("<td rowspan=\"2\" colspan=\"2\">a</td>"));
}

TEST(TableWriter, KeepsTheColumnsBehindAMergedCell) {
  WordDocument doc;
  doc.row({"a", "b", "c"}, {defTableSprm({0, 1000, 2000, 3000}, {kPlain, kMergeStart, kPlain})});
  doc.row({"d", "gone", "e"}, {defTableSprm({0, 1000, 2000, 3000}, {kPlain, kMergeContinued, kPlain})});
  EXPECT_THAT(StructureOf(end(doc)), HasSubstr("<tr><td>d</td><td>e</td></tr>"));
}

TEST(TableWriter, TakesNoHeightForARowOfMergedCellsOnly) {
  WordDocument doc;
  doc.row({"a"}, {defTableSprm({0, 1000}, {kMergeStart}), sprm(0x9407, 300)});
  doc.row({"gone"}, {defTableSprm({0, 1000}, {kMergeContinued}), sprm(0x9407, 600)});
  doc.row({"b"}, {defTableSprm({0, 1000}, {kPlain}), sprm(0x9407, 900)});
  EXPECT_EQ(
      "<table><tr height=\"20\"><td rowspan=\"2\">a</td></tr><tr height=\"40\"><td>b</td></tr></table>end",
      StructureOf(end(doc)));
}

TEST(TableWriter, DropsTheCellsOfAHorizontalMergeMarkedOne) {
  WordDocument doc;
  doc.row({"a", "gone", "b", "c"},
          {defTableSprm({0, 1000, 2000, 3000, 4000},
                        {kPlain, TableCell{.horizontalMerge = 1}, TableCell{.horizontalMerge = 2},
                         TableCell{.horizontalMerge = 3}})});
  EXPECT_EQ("<table><tr><td>a</td><td>b</td><td>c</td></tr></table>end", StructureOf(end(doc)));
}

std::string rowOfHeight(int height) {
  WordDocument doc;
  doc.row({"a"}, {defTableSprm({0, 1000}), sprm(0x9407, height)});
  return StructureOf(end(doc));
}

TEST(TableRowHeight, IsInPixelsWithoutItsSign) {
  EXPECT_THAT(rowOfHeight(-300), StartsWith("<table><tr height=\"20\">"));
  EXPECT_THAT(rowOfHeight(29), StartsWith("<table><tr height=\"1\">"));
  EXPECT_THAT(rowOfHeight(19), StartsWith("<table><tr height=\"0\">"));
  EXPECT_THAT(rowOfHeight(-32768), StartsWith("<table><tr height=\"2184\">"));
}

TEST(TableRowHeight, OfZeroIsLeftOut) {
  EXPECT_THAT(rowOfHeight(0), StartsWith("<table><tr><td>"));
}

TEST(TableWriter, AlignsCellsVertically) {
  WordDocument doc;
  doc.row({"a", "b", "c", "d", "e"},
          {defTableSprm({0, 100, 200, 300, 400, 500},
                        {kPlain, TableCell{.verticalAlign = 1}, TableCell{.verticalAlign = 2},
                         TableCell{.verticalAlign = 3}})});
  const std::string html = TableStory(end(doc)).Html();
  EXPECT_THAT(html,
              HasSubstr("<td width=\"6\" valign=\"top\" style=\"padding:0.00pt 0.00pt 0.00pt 0.00pt;\">a"));
  EXPECT_THAT(html, HasSubstr("<td width=\"6\" style=\"padding:0.00pt 0.00pt 0.00pt 0.00pt;\">b"));
  EXPECT_THAT(
      html, HasSubstr("<td width=\"6\" valign=\"bottom\" style=\"padding:0.00pt 0.00pt 0.00pt 0.00pt;\">c"));
  EXPECT_THAT(html, HasSubstr("<td width=\"6\" style=\"padding:0.00pt 0.00pt 0.00pt 0.00pt;\">d"));
  EXPECT_THAT(html, HasSubstr("<td width=\"6\" style=\"padding:0.00pt 0.00pt 0.00pt 0.00pt;\">e"));
}

TEST(TableWriter, TakesTheCellSpacingOffTheWidths) {
  WordDocument doc;
  doc.row({"a", "b", "c"},
          {defTableSprm({0, 1000, 2000, 3000}), support::cellDistanceSprm(0xD633, 0, 3, 15, 3, 60)});
  const std::string html = TableStory(end(doc)).Html();
  EXPECT_THAT(html, HasSubstr("<td width=\"62\""));  // 940 twips
  EXPECT_THAT(html, HasSubstr("<td width=\"58\""));  // 880
  EXPECT_THAT(html, HasSubstr("<td width=\"54\""));  // 820
}

TEST(TableWriter, FindsThePropertiesInTheDataStream) {
  for (uint16_t opcode : {0x6645, 0x6646}) {
    WordDocument doc;
    doc.cell("a").huge(opcode);
    doc.cell("b").huge(opcode);
    doc.rowEnd(twoCells()).huge(opcode);
    EXPECT_EQ("<table><tr><td>a</td><td>b</td></tr></table>end", StructureOf(end(doc)));
  }
}

TEST(TableWriter, IgnoresTheInTableFlagsOperandOnlyInTheDataStream) {
  WordDocument doc;
  doc.paragraph("huge").sprms({sprm(0x2416, 0)}).huge();
  doc.paragraph("own").sprms({sprm(0x2416, 0)});
  doc.paragraph("two").sprms({sprm(0x2416, 2)});
  TableStory story(doc);
  story.Begin(0);
  EXPECT_EQ(1, story.env.inTable);
  story.Begin(1);
  EXPECT_EQ(0, story.env.inTable);
  story.Begin(2);
  EXPECT_EQ(2, story.env.inTable);
}

TEST(TableWriter, TakesABadOffsetIntoTheDataStreamAsNoTable) {
  WordDocument doc;
  doc.data(Bytes(10));
  for (uint32_t offset : {0u, 9u, 10u, 11u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
    doc.paragraph("x").sprms({sprm(0x6646, offset)});
  }
  EXPECT_EQ("xxxxxx", StructureOf(doc));
}

TEST(TableWriter, TakesAMissingDataStreamAsNoTable) {
  WordDocument doc;
  doc.paragraph("x").sprms({sprm(0x6646, 0)});
  EXPECT_EQ("x", StructureOf(doc));
}

TEST(TableWriter, OpensTheOuterCellForANestedTable) {
  WordDocument doc;
  doc.row({"a"}, {defTableSprm({0, 500})}, 2);
  doc.cell("b");
  doc.rowEnd({defTableSprm({0, 1000})});
  EXPECT_EQ("<table><tr><td><table><tr><td>a</td></tr></table>b</td></tr></table>end", StructureOf(end(doc)));
}

TEST(TableWriter, NestsATableInAnOpenCell) {
  WordDocument doc;
  doc.paragraph("b").inTable();
  doc.row({"a"}, {defTableSprm({0, 500})}, 2);
  doc.cell();
  doc.cell("c");
  doc.rowEnd(twoCells());
  EXPECT_EQ("<table><tr><td>b<table><tr><td>a</td></tr></table></td><td>c</td></tr></table>end",
            StructureOf(end(doc)));
}

TEST(TableWriter, ClosesEveryTableAtAParagraphOutside) {
  WordDocument doc;
  doc.cell("a", 2);
  doc.paragraph("b").inTable(2);
  doc.rowEnd({defTableSprm({0, 500, 600})}, 2);
  doc.paragraph("c").inTable(2);
  doc.rowEnd({defTableSprm({0, 500})}, 2);
  doc.rowEnd({defTableSprm({0, 500})}, 1).sprms({sprm(0x6649, 1)});
  // The last two paragraphs are cut off, so that both tables are open in a row and a cell.
  TableStory story(doc);
  for (uint32_t i = 0; i < 2; ++i) story.WriteParagraph(i);
  story.env.pap.papx.Assign({});
  story.writer.Write();
  EXPECT_EQ("<table><tr><td><table><tr><td>a</td><td>b</td></tr></table></td></tr></table>",
            Structure(story.archive.text()));
}

TEST(TableWriter, LeavesATableOpenWhereTheTextEnds) {
  WordDocument doc;
  doc.cell("a");
  doc.rowEnd(twoCells());
  EXPECT_EQ("<table><tr><td>a</td></tr>", StructureOf(doc));
}

TEST(TableWriter, WritesParagraphsWithoutACellIntoTheRow) {
  WordDocument doc;
  doc.row({"a", "b", "c"}, twoCells());
  doc.row({"d"}, {sprm(0x9407, 100)});
  EXPECT_EQ("<table><tr><td>a</td><td>b</td>c</tr><tr>d</tr></table>end", StructureOf(end(doc)));
}

TEST(TableWriter, WritesATableWithoutRowsAllTheSame) {
  WordDocument doc;
  doc.paragraph("a").inTable();
  EXPECT_EQ("<table><tr>a</tr></table>end", StructureOf(end(doc)));
}

TEST(TableWriter, KeepsACellOpenAcrossItsParagraphs) {
  WordDocument doc;
  doc.paragraph("a").inTable();
  doc.paragraph("b").inTable();
  doc.row({"c", "d"}, twoCells());
  EXPECT_EQ("<table><tr><td>abc</td><td>d</td></tr></table>end", StructureOf(end(doc)));
}

TEST(TableWriter, TakesADepthOfZeroAsNoTable) {
  WordDocument doc;
  doc.row({"a", "b"}, twoCells());
  doc.paragraph("c").inTable(0);
  doc.row({"d", "e"}, twoCells());
  EXPECT_EQ("<table><tr><td>a</td><td>b</td></tr></table>c<table><tr><td>d</td><td>e</td></tr></table>end",
            StructureOf(end(doc)));
}

TEST(TableWriter, CountsADepthBeyondTheDeepestAsThat) {
  WordDocument doc;
  doc.paragraph("a").inTable(0xFFFFFFFF);
  const std::string html = StructureOf(end(doc));
  size_t tables = 0;
  for (size_t at = 0; (at = html.find("<table>", at)) != std::string::npos; ++at) ++tables;
  EXPECT_EQ(kDeepestTable, tables);
}

TEST(TableWriter, SkipsARowEndOutsideAllTables) {
  WordDocument doc;
  doc.rowEnd(twoCells(), 0);
  TableStory story(doc);
  EXPECT_EQ(Status::kStopped, story.Begin(0));
  EXPECT_EQ("", story.archive.text());
}

TEST(TableWriter, EndsTheScanAtAParagraphWithoutData) {
  WordDocument doc;
  doc.row({"a"}, {defTableSprm({0, 1000})});
  doc.paragraph("dropped").noPapx();
  doc.row({"b"}, {defTableSprm({0, 500})});
  // The second row was not scanned, and the table is still open: its text stands in the row.
  EXPECT_EQ("<table><tr><td>a</td></tr><tr>b</tr></table>end", StructureOf(end(doc)));
}

TEST(TableWriter, PassesOverUnreadablePropertiesInTheScan) {
  WordDocument doc;
  doc.row({"a", "b"}, {defTableSprm({0, 1000, 2000})});
  doc.paragraph("x").sprms({sprm(0x6646, 0x7FFFFFFF)});
  doc.row({"c"}, {defTableSprm({0, 500})});
  // The paragraph closes the table, but its grid knows the row behind.
  EXPECT_EQ(
      "<table><tr><td colspan=\"2\">a</td><td>b</td></tr></table>x<table><tr><td>c</td></tr></table>end",
      StructureOf(end(doc)));
}

TEST(TableWriter, PlacesTheTableByTheRulesOfItsRows) {
  const auto marginOf = [](const Sprms& sprms) {
    WordDocument doc;
    doc.row({"a"}, Sprms{defTableSprm({0, 1000})}.add(sprms));
    TableStory story(end(doc));
    story.env.sectionLeftMargin = 1000;
    const std::string html = story.Html();
    const size_t at = html.find("margin-left:");
    return at == std::string::npos ? "" : html.substr(at + 12, html.find(';', at) - at - 12);
  };
  const Bytes spacing = support::cellDistanceSprm(0xD633, 0, 1, 15, 3, 20);
  const Bytes padding = support::cellDistanceSprm(0xD634, 0, 1, 2, 3, 100);
  const Bytes percentPadding = support::cellDistanceSprm(0xD634, 0, 1, 2, 2, 100);
  const Bytes widthIndent = sprm(0xF661, ByteWriter().u8(3).u16(500).take());
  EXPECT_EQ("", marginOf({}));
  EXPECT_EQ("24.00 pt", marginOf({widthIndent, spacing, padding}));
  EXPECT_EQ("", marginOf({sprm(0xF661, ByteWriter().u8(2).u16(500).take())}));
  EXPECT_EQ("43.00 pt", marginOf({sprm(0x360D, 0x40), sprm(0x940E, 1000), spacing, padding}));
  EXPECT_EQ("-7.00 pt", marginOf({sprm(0x360D, 0x80), sprm(0x940E, 1000), spacing, padding}));
  EXPECT_EQ("-2.00 pt", marginOf({sprm(0x360D, 0x80), sprm(0x940E, 1000), spacing, percentPadding}));
  EXPECT_EQ("24.00 pt", marginOf({widthIndent, spacing, sprm(0x360D, 0xC0), sprm(0x940E, 1000)}));
  EXPECT_EQ("8.00 pt", marginOf({widthIndent, spacing, padding, sprm(0x9601, 300), sprm(0x9602, 9)}));
  EXPECT_EQ("24.00 pt", marginOf({widthIndent, spacing, sprm(0x9601, 300)}));
  EXPECT_EQ("24.00 pt",
            marginOf({widthIndent, spacing, sprm(0x360D, 0), sprm(0x9601, 300), sprm(0x9602, 9)}));
}

TEST(TableWriter, LetsTheLastRowThatSaysItDecideForTheTable) {
  WordDocument doc;
  doc.row({"a"}, {defTableSprm({0, 1000}), sprm(0x548A, 1), sprm(0x9410, 20)});
  doc.row({"b"}, {defTableSprm({0, 1000}), sprm(0x5400, 1), sprm(0x548A, 2)});
  const std::string html = TableStory(end(doc)).Html();
  EXPECT_THAT(html, HasSubstr("align=\"right\""));
  EXPECT_THAT(html, HasSubstr("mso-table-lspace:1.00 pt;"));
}

TEST(TableWriter, TakesTheBordersOfTheLastRowEvenIfItHasNone) {
  const Bytes spacing = support::cellDistanceSprm(0xD633, 0, 1, 15, 3, 30);
  const Bytes borders = support::tableBordersSprm(std::vector<support::Border>(6));
  WordDocument doc;
  doc.row({"a"}, {defTableSprm({0, 1000}), spacing, borders});
  doc.row({"b"}, {defTableSprm({0, 1000})});
  EXPECT_THAT(TableStory(end(doc)).Html(), HasSubstr("mso-cellspacing:3.00 pt;\">"));
}

TEST(TableWriter, ShadesCellByCell) {
  WordDocument doc;
  doc.row({"a", "b", "c"}, {defTableSprm({0, 100, 200, 300}),
                            support::tableShadingSprm({{.background = support::rgb(1, 2, 3)},
                                                       {.background = support::rgb(4, 5, 6)}}),
                            sprm(0xD609, ByteWriter().u16(6 << 5).u16(6 << 5).u16(6 << 5).take())});
  const std::string html = TableStory(end(doc)).Html();
  EXPECT_THAT(html, HasSubstr("background:#010203;\">a"));
  EXPECT_THAT(html, HasSubstr("background:#040506;\">b"));
  EXPECT_THAT(html, HasSubstr("0.00pt;\">c"));
}

TEST(TableWriter, ShadesInTheFormOfWord97WhereTheOtherIsAbsent) {
  WordDocument doc;
  doc.row({"a", "b"}, {defTableSprm({0, 100, 200}), sprm(0xD609, ByteWriter().u16(6 << 5).take())});
  const std::string html = TableStory(end(doc)).Html();
  EXPECT_THAT(html, HasSubstr("background:#ff0000;\">a"));
  EXPECT_THAT(html, HasSubstr("0.00pt;\">b"));
}

TEST(TableWriter, FindsTheCellSpacingOfATable) {
  WordDocument doc;
  doc.row({"a"}, {defTableSprm({0, 500}), support::cellDistanceSprm(0xD633, 0, 1, 15, 3, 11)}, 2);
  doc.row({"b"}, {defTableSprm({0, 1000})});
  doc.row({"c"}, {defTableSprm({0, 1000}), support::cellDistanceSprm(0xD633, 0, 1, 15, 3, 22)});
  TableStory story(end(doc));
  EXPECT_TRUE(story.writer.SearchCellSpacing(0).empty());
  story.writer.StartTable(0);
  EXPECT_EQ(22, story.writer.SearchCellSpacing(0).i16(4));
  story.writer.StartTable(0);
  EXPECT_EQ(11, story.writer.SearchCellSpacing(0).i16(4));
}

TEST(TableWriter, RefusesWithoutAnEnvironment) {
  KHtmlTableWriter writer;
  EXPECT_EQ(Status::kInvalidArgument, writer.Init(nullptr));
  EXPECT_EQ(Status::kInvalidArgument, writer.Write());
  EXPECT_EQ(Status::kFailure, writer.StartTable(0));
  EXPECT_EQ(Status::kFailure, writer.EndTable());
}

TEST(TableWriter, RefusesElementsWithoutATable) {
  WordDocument doc;
  TableStory story(end(doc));
  EXPECT_EQ(Status::kFailure, story.writer.EndTable());
  EXPECT_EQ(Status::kFailure, story.writer.StartTR());
  EXPECT_EQ(Status::kFailure, story.writer.EndTR());
  EXPECT_EQ(Status::kFailure, story.writer.StartTD());
  EXPECT_EQ(Status::kFailure, story.writer.EndTD());
  EXPECT_EQ(Status::kFailure, story.writer.SearchCell(0));
}

}  // namespace
}  // namespace pagerex

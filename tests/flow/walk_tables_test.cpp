#include <gtest/gtest.h>

#include "flow/walked_document.h"
#include "support/named_sprms.h"

using namespace flow_test;
using namespace support;

namespace {

constexpr uint16_t kHeaderRow = 0x3404, kCantSplit = 0x3403, kRightToLeft = 0x560B, kRowHeight = 0x9407;
constexpr uint16_t kTableStyle = 0x563A;

Sprms rowOf(const std::vector<int16_t>& edges, const std::vector<TableCell>& cells = {}) {
  return {defTableSprm(edges, cells)};
}

}  // namespace

TEST(WalkTables, HaveRowsAndCells) {
  WordDocument doc;
  doc.row({"a", "b"}, rowOf({0, 1000, 3000}));
  doc.row({"c", ""}, rowOf({0, 1000, 3000}));
  doc.paragraph("end");
  EXPECT_EQ(transcriptOf(doc), R"(
table
  row
    cell
      paragraph
        text "a"
    cell
      paragraph
        text "b"
  row
    cell
      paragraph
        text "c"
    cell
      paragraph
paragraph
  text "end"
)");
}

TEST(WalkTables, TellWidths) {
  WordDocument doc;
  doc.row({"a", "b"}, rowOf({0, 1000, 3000}));
  const std::string text = transcriptOf(doc, kWithFormats);
  EXPECT_NE(text.find("columns=1000,2000"), std::string::npos) << text;
  EXPECT_NE(text.find("cell width=1000"), std::string::npos) << text;
  EXPECT_NE(text.find("cell width=2000"), std::string::npos) << text;
}

TEST(WalkTables, HeaderRowsAreTold) {
  WordDocument doc;
  doc.row({"head"}, rowOf({0, 1000}).add(sprm(kHeaderRow, 1)).add(sprm(kCantSplit, 1)));
  doc.row({"body"}, rowOf({0, 1000}).add(sprm(kRowHeight, 500)));
  EXPECT_EQ(transcriptOf(doc), R"(
table headers=1
  row header
    cell
      paragraph
        text "head"
  row
    cell
      paragraph
        text "body"
)");
  const std::string text = transcriptOf(doc, kWithFormats);
  EXPECT_NE(text.find("row header cantSplit"), std::string::npos) << text;
  EXPECT_NE(text.find("row height=500"), std::string::npos) << text;
}

TEST(WalkTables, CellsHaveSeveralParagraphs) {
  WordDocument doc;
  doc.paragraph("one").inTable();
  doc.cell("two");
  doc.rowEnd(rowOf({0, 1000}));
  EXPECT_EQ(transcriptOf(doc), R"(
table
  row
    cell
      paragraph
        text "one"
      paragraph
        text "two"
)");
}

TEST(WalkTables, CellsAreMergedAcross) {
  WordDocument doc;
  doc.row({"a", "b", "c"}, rowOf({0, 1000, 2000, 3000}));
  doc.row({"wide", "", "d"},
          rowOf({0, 1000, 2000, 3000}, {{.horizontalMerge = 2}, {.horizontalMerge = 1}, {}}));
  const std::string text = transcriptOf(doc);
  EXPECT_NE(text.find("table merged"), std::string::npos) << text;
  EXPECT_NE(text.find("cell columns=2\n      paragraph\n        text \"wide\""), std::string::npos) << text;
  EXPECT_NE(text.find("text \"d\""), std::string::npos) << text;
}

TEST(WalkTables, EdgesThatHardlyDifferAreOne) {
  WordDocument doc;
  doc.row({"a", "b"}, rowOf({0, 1000, 3000}));
  doc.row({"c", "d"}, rowOf({0, 1050, 2950}));
  const std::string text = transcriptOf(doc);
  EXPECT_EQ(text.find("irregular"), std::string::npos) << text;
}

TEST(WalkTables, NarrowCellsKeepTheirEdges) {
  WordDocument doc;
  doc.row({"a", "", "b"}, rowOf({0, 1000, 1050, 3000}));
  const std::string text = transcriptOf(doc, kWithFormats);
  EXPECT_NE(text.find("columns=1000,50,1950"), std::string::npos) << text;
}

TEST(WalkTables, WiderCellsSpanColumns) {
  WordDocument doc;
  doc.row({"a", "b", "c"}, rowOf({0, 1000, 2000, 3000}));
  doc.row({"wide", "d"}, rowOf({0, 2000, 3000}));
  const std::string text = transcriptOf(doc);
  EXPECT_NE(text.find("cell columns=2\n      paragraph\n        text \"wide\""), std::string::npos) << text;
}

TEST(WalkTables, CellsAreMergedDownwards) {
  WordDocument doc;
  const auto merged = [](uint8_t merge) { return rowOf({0, 1000, 2000}, {{.verticalMerge = merge}, {}}); };
  doc.row({"tall", "a"}, merged(3));
  doc.row({"", "b"}, merged(1));
  doc.row({"", "c"}, merged(1));
  doc.row({"next", "d"}, merged(0));
  EXPECT_EQ(transcriptOf(doc), R"(
table merged
  row
    cell rows=3
      paragraph
        text "tall"
    cell
      paragraph
        text "a"
  row
    cell rows=0
      paragraph
    cell
      paragraph
        text "b"
  row
    cell rows=0
      paragraph
    cell
      paragraph
        text "c"
  row
    cell
      paragraph
        text "next"
    cell
      paragraph
        text "d"
)");
}

TEST(WalkTables, AreNestedInCells) {
  WordDocument doc;
  doc.paragraph("before").inTable();
  doc.row({"x", "y"}, rowOf({0, 500, 1000}), 2);
  doc.row({"z", "w"}, rowOf({0, 500, 1000}), 2);
  doc.cell("behind");
  doc.cell("b");
  doc.rowEnd(rowOf({0, 2000, 3000}));
  EXPECT_EQ(transcriptOf(doc), R"(
table
  row
    cell
      paragraph
        text "before"
      table depth=2
        row
          cell
            paragraph
              text "x"
          cell
            paragraph
              text "y"
        row
          cell
            paragraph
              text "z"
          cell
            paragraph
              text "w"
      paragraph
        text "behind"
    cell
      paragraph
        text "b"
)");
}

TEST(WalkTables, BordersAndGroundsAreThoseOfTheCells) {
  WordDocument doc;
  const Border line = {.colour = rgb(255, 0, 0), .width = 8, .type = 1};
  doc.row({"a"}, rowOf({0, 1000})
                     .add(tableBordersSprm({line, line, line, line, line, line}))
                     .add(tableShadingSprm({{.background = rgb(255, 255, 0)}})));
  const std::string text = transcriptOf(doc, kWithFormats);
  EXPECT_NE(text.find("cell width=1000 top=1/8 topColour=#FF0000 start=1/8 startColour=#FF0000 bottom=1/8 "
                      "bottomColour=#FF0000 end=1/8 endColour=#FF0000 fill=#FFFF00"),
            std::string::npos)
      << text;
}

TEST(WalkTables, TableStylesFormatTheirParts) {
  WordDocument doc;
  doc.style(20, Style()
                    .name("Grid")
                    .kind(StyleKind::kTable)
                    .sti(0x0FFE)
                    .chpx({partSprm(kPartOfRun, kFirstRow, {bold()})}));
  const Sprms shape = rowOf({0, 1000}).add(sprm(kTableStyle, 20)).add(tableLookSprm(0x20));
  doc.row({"head"}, shape);
  doc.row({"body"}, shape);
  const std::string text = transcriptOf(doc, kWithFormats);
  EXPECT_NE(text.find("text \"head\" bold"), std::string::npos) << text;
  EXPECT_NE(text.find("text \"body\"\n"), std::string::npos) << text;
}

TEST(WalkTables, RightToLeftTablesAreTold) {
  WordDocument doc;
  doc.row({"first", "second"}, rowOf({0, 1000, 2000}).add(sprm(kRightToLeft, 1)));
  const std::string text = transcriptOf(doc, kWithFormats);
  EXPECT_NE(text.find("table rtl"), std::string::npos) << text;
  EXPECT_LT(text.find("first"), text.find("second"));
}

TEST(WalkTables, TwoTablesAreApartWithAParagraphBetween) {
  WordDocument doc;
  doc.row({"a"}, rowOf({0, 1000}));
  doc.paragraph("between");
  doc.row({"b"}, rowOf({0, 1000}));
  EXPECT_EQ(transcriptOf(doc), R"(
table
  row
    cell
      paragraph
        text "a"
paragraph
  text "between"
table
  row
    cell
      paragraph
        text "b"
)");
}

// --- What definition and text contradict each other in: no text is lost. ---

TEST(WalkTables, RowsThatFloatElsewhereAreATableOfTheirOwn) {
  constexpr uint16_t kFloatLeft = 0x940E;
  WordDocument doc;
  doc.row({"a"}, rowOf({0, 1000}));
  doc.row({"b"}, rowOf({0, 1000}).add(sprm(kFloatLeft, 500)));
  doc.row({"c"}, rowOf({0, 1000}).add(sprm(kFloatLeft, 500)));
  doc.row({"d"}, rowOf({0, 1000}).add(sprm(kFloatLeft, 700)));
  doc.paragraph("end");
  const std::string text = transcriptOf(doc);
  const auto count = [&text](const std::string& word) {
    size_t found = 0;
    for (size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) ++found;
    return found;
  };
  EXPECT_EQ(count("table"), 3u) << text;
  EXPECT_EQ(count("row"), 4u) << text;
}

TEST(WalkTables, MoreCellsThanDefinedAreAllTold) {
  WordDocument doc;
  doc.row({"a", "b", "c"}, rowOf({0, 1000}));
  EXPECT_EQ(Walked(doc).characters(), u"a\nb\nc\n");
}

TEST(WalkTables, FewerCellsThanDefinedAreTold) {
  WordDocument doc;
  doc.row({"a"}, rowOf({0, 1000, 2000, 3000}));
  EXPECT_EQ(Walked(doc).characters(), u"a\n");
}

TEST(WalkTables, RowsWithoutDefinitionAreTold) {
  WordDocument doc;
  doc.row({"a", "b"}, {});
  EXPECT_EQ(Walked(doc).characters(), u"a\nb\n");
}

TEST(WalkTables, ARowWithoutEndIsTold) {
  WordDocument doc;
  doc.cell("a");
  doc.cell("b");
  doc.paragraph("c");
  EXPECT_EQ(Walked(doc).characters(), u"a\nb\nc\n");
}

TEST(WalkTables, AnEndWithoutCellsIsNoTrouble) {
  WordDocument doc;
  doc.paragraph("a");
  doc.rowEnd(rowOf({0, 1000}));
  doc.paragraph("b");
  const std::u16string characters = Walked(doc).characters();
  EXPECT_LT(characters.find(u'a'), characters.find(u'b'));
}

TEST(WalkTables, TextInFrontOfAnEndIsACell) {
  WordDocument doc;
  doc.rowEnd(rowOf({0, 1000})).run("a");
  doc.paragraph("b").inTable();
  doc.rowEnd(rowOf({0, 1000})).run("c");
  EXPECT_EQ(Walked(doc).characters(), u"a\nb\nc\n");
}

TEST(WalkTables, EdgesThatGoBackwardsLoseNoCell) {
  WordDocument doc;
  doc.row({"a", "b", "c"}, rowOf({3000, 2000, 2000, -1000}));
  EXPECT_EQ(Walked(doc).characters(), u"a\nb\nc\n");
}

TEST(WalkTables, MergesWithoutBeginningLoseNoText) {
  WordDocument doc;
  doc.row({"a", "b"}, rowOf({0, 1000, 2000}, {{.verticalMerge = 1}, {.horizontalMerge = 2}}));
  const std::u16string characters = Walked(doc).characters();
  EXPECT_NE(characters.find(u'a'), std::u16string::npos);
  EXPECT_NE(characters.find(u'b'), std::u16string::npos);
}

#include "limits/hostile_documents.h"
#include "support/named_sprms.h"
#include "support/word_document_writer.h"

using namespace support;

namespace {

Bytes ended(WordDocument& document) {
  document.paragraph("between");
  document.paragraph(kTheEnd);
  return document.build();
}

/// Rows that together have as many column edges as there are numbers, and rows that stand at the far right.
Bytes columns(uint32_t scale) {
  WordDocument document;
  const int step = 60;
  for (int left = -32768; left + step < 32767 && left < -32768 + static_cast<int>(scale) * step * 2;
       left += step) {
    std::vector<int16_t> edges;
    for (int i = 0; i <= step; ++i) edges.push_back(static_cast<int16_t>(left + i));
    document.row({"x"}, {defTableSprm(edges)});
  }
  for (uint32_t i = 0; i < scale * 10; ++i) document.row({"x"}, {defTableSprm({32766, 32767})});
  return ended(document);
}

/// Tables that open 64 deep and close again.
Bytes deepTables(uint32_t scale) {
  WordDocument document;
  for (uint32_t i = 0; i < scale * 10; ++i) {
    document.row({"x"}, {defTableSprm({0, 9})}, 64);
    document.paragraph();
  }
  return ended(document);
}

/// Tables of all depths within each other, time and again.
Bytes tablesOfAllDepths(uint32_t scale) {
  WordDocument document;
  for (uint32_t i = 0; i < scale; ++i) {
    for (uint32_t depth = 1; depth <= 10; ++depth) document.cell("x", depth);
    for (uint32_t depth = 10; depth > 0; --depth) document.rowEnd({defTableSprm({0, 9})}, depth);
  }
  return ended(document);
}

/// The list of a row in the "Data" stream: long, and defining `cells` cells.
Sprms longList(uint8_t cells, uint16_t filler, const Bytes& operand) {
  std::vector<int16_t> edges;
  for (int16_t i = 0; i <= cells; ++i) edges.push_back(static_cast<int16_t>(i * 10));
  Sprms sprms = {sprm(0x2416, 1), sprm(0x2417, 1),
                 defTableSprm(edges, std::vector<TableCell>(cells, TableCell{.verticalMerge = 1}))};
  const Bytes more = operand.empty() ? sprm(filler, 1) : sprm(filler, operand);
  while (sprms.size() + more.size() < 60000) sprms.add(more);
  return sprms;
}

Bytes rowsOfList(uint32_t scale, const Sprms& list) {
  WordDocument document;
  const uint32_t offset =
      document.data(ByteWriter().u16(static_cast<uint32_t>(list.size())).bytes(list.bytes()).take());
  for (uint32_t i = 0; i < scale * 10; ++i) {
    document.cell("x");
    document.cell("y");
    document.paragraph().endWith(7).sprms({sprm(0x6646, offset)});
  }
  return ended(document);
}

/// Rows that share one endless list of properties.
Bytes rowsOfOneList(uint32_t scale) {
  return rowsOfList(scale, longList(2, 0x2405, {}));
}

/// Rows whose every cell looks at thousands of borders.
Bytes cellsOfManyBorders(uint32_t scale) {
  return rowsOfList(scale, longList(200, 0xD62F, Bytes(11, 0xFF)));
}

/// Cells that each have all the formats there are.
Bytes smallCells(uint32_t scale) {
  WordDocument document;
  const Border border = {.colour = rgb(1, 2, 3), .width = 9};
  std::vector<int16_t> edges;
  std::vector<Text> cells;
  for (int16_t i = 0; i <= 15; ++i) edges.push_back(static_cast<int16_t>(i * 10));
  cells.resize(15, Text("&"));
  const Sprms row = {defTableSprm(edges, std::vector<TableCell>(15, TableCell{.verticalAlign = 2})),
                     tableBordersSprm({border, border, border, border, border, border})};
  for (uint32_t i = 0; i < scale * 2; ++i) document.row(cells, row);
  return ended(document);
}

/// Notes that lie in the text in reverse, each the start of a table that reaches to its end.
Bytes tablesInReverse(uint32_t scale) {
  WordDocument document;
  const uint32_t count = scale * 10;
  Paragraph& paragraph = document.paragraph();
  for (uint32_t i = 0; i < count; ++i) {
    paragraph.footnote([](Story& story) { story.paragraph("x").inTable(); });
  }
  std::vector<uint32_t> positions;
  for (uint32_t i = 0; i <= count; ++i) positions.push_back((i % 2 == 0 ? count - i : count - i + 2) * 3);
  document.table(mso_word::FCLCB_FOOTNOTE_TEXT, positionTable(positions));
  return ended(document);
}

}  // namespace

std::vector<HostileDocument> hostileTables() {
  return {
      {"Columns", columns},
      {"DeepTables", deepTables},
      {"TablesOfAllDepths", tablesOfAllDepths},
      {"RowsOfOneList", rowsOfOneList},
      {"CellsOfManyBorders", cellsOfManyBorders},
      {"SmallCells", smallCells},
      {"TablesInReverse", tablesInReverse},
  };
}

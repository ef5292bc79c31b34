#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>
#include <vector>

#include "htmlwriter/cell_format_css.h"
#include "table_test_support.h"

/// The table writer keeps scans, shares them and makes cells when they come up. Here is the same writer the
/// long way round: a fresh scan for every table, a plain list of edges, all cells made at once. Both must
/// agree on whatever paragraphs there are.
namespace pagerex {
namespace {

using support::Bytes;
using support::ByteWriter;
using support::defTableSprm;
using support::sprm;
using support::Sprms;

class PlainTableWriter {
 public:
  explicit PlainTableWriter(KEnv& env) : env_(env), paragraphs_(nullptr) {}

  bool Write(uint32_t index) {
    paragraph_ = paragraphs_.Look(SprmsOfParagraph(*env_.plcfPap->Data(index)));
    const bool inTable = paragraph_.kind == TableParagraph::INSIDE && paragraph_.inTable != 0;
    const uint32_t depth = inTable ? paragraph_.depth : 0;
    while (tables_.size() < depth) StartTable(index);
    while (tables_.size() > depth) EndTable();
    inTable_ = inTable;
    if (!inTable) return true;
    if (paragraph_.rowEnd) {
      if (depth) EndRow();
      return false;
    }
    if (depth == 0 || tables_.back().inCell) return true;
    if (!tables_.back().cells.empty()) {
      const CELL_FORMAT cell = tables_.back().cells.front();
      if (cell.tc && ((cell.tc->flags0 & 0x60) == 0x20 || (cell.tc->flags0 & 3) == 1)) {
        tables_.back().nextColumn = cell.column + static_cast<int32_t>(cell.colSpan);
        tables_.back().cells.pop_front();
        return false;
      }
    }
    StartCell();
    return true;
  }

  void EnsureWriteEnd(uint32_t cp) {
    if (!inTable_) return;
    if (tables_.size() == 1 ? (*env_.textPool)[cp] == 7 : paragraph_.innerCellEnd) EndCell();
  }

 private:
  struct Table {
    std::deque<CELL_FORMAT> cells;
    std::deque<int16_t> heights;
    bool inRow = false;
    bool inCell = false;
    int32_t nextColumn = -1;
  };

  void StartTable(uint32_t index) {
    if (!tables_.empty() && !tables_.back().inCell) StartCell();
    tables_.emplace_back();
    TableStyle style;
    Scan(index, style);
    env_.conversion->archive->BeginElement("table");
    WriteTableFormat(style, env_.conversion->archive);
  }

  void Scan(uint32_t index, TableStyle& style) {
    std::vector<TABLE_ROW> rows;
    std::vector<int16_t> edges;
    for (; index < env_.plcfPap->Count(); ++index) {
      const TableParagraph paragraph = paragraphs_.Look(SprmsOfParagraph(*env_.plcfPap->Data(index)));
      if (paragraph.kind == TableParagraph::OUTSIDE) break;
      if (paragraph.kind == TableParagraph::UNREADABLE) continue;
      if (tables_.size() > paragraph.depth) break;
      if (tables_.size() < paragraph.depth || !paragraph.definesRow) continue;
      ReadTableRow(KDWSprmList(paragraph.sprms), env_.sectionLeftMargin, rows.emplace_back(), style);
      const TABLE_ROW& row = rows.back();
      tables_.back().heights.push_back(static_cast<int16_t>(row.height));
      for (uint32_t i = 0; i <= row.definition.CellCount(); ++i) {
        const auto place = std::find_if(edges.begin(), edges.end(),
                                        [&](int16_t edge) { return edge >= row.definition.Edge(i); });
        if (place == edges.end() || *place != row.definition.Edge(i)) {
          edges.insert(place, row.definition.Edge(i));
        }
      }
    }
    for (uint32_t row = 0; row < rows.size(); ++row) MakeCells(rows, row, edges, style.cellSpacing);
  }

  void MakeCells(const std::vector<TABLE_ROW>& rows, uint32_t r, const std::vector<int16_t>& edges,
                 int32_t spacing) {
    const TABLE_ROW& row = rows[r];
    const uint32_t n = row.definition.CellCount();
    for (uint32_t c = 0; c < n; ++c) {
      const int16_t left = row.definition.Edge(c);
      const int16_t right = row.definition.Edge(c + 1);
      CELL_FORMAT cell;
      if (r == 0) cell.position |= 2;
      if (r + 1 == rows.size()) cell.position |= 8;
      if (c == 0) cell.position |= 1;
      if (c + 1 == n) cell.position |= 4;
      cell.column = static_cast<int32_t>(std::find(edges.begin(), edges.end(), left) - edges.begin());
      cell.width = right - left - spacing * (c == 0 ? 1 : c + 1 == n ? 3 : 2);
      if (c < row.definition.CellRecordCount()) cell.tc = row.definition.CellRecord(c);
      if (cell.tc && (cell.tc->flags0 & 0x60) == 0x60) cell.rowSpan = RowSpan(rows, r, left);
      cell.colSpan = 0;
      for (auto i = static_cast<size_t>(cell.column); left <= right && i < edges.size() && edges[i] != right;
           ++i) {
        ++cell.colSpan;
      }
      cell.borders = row.borders;
      cell.bordersEx = row.bordersEx;
      cell.padding = row.padding;
      cell.hasSpacing = spacing > 0;
      tables_.back().cells.push_back(cell);
    }
  }

  static uint32_t RowSpan(const std::vector<TABLE_ROW>& rows, uint32_t row, int16_t left) {
    uint32_t span = 1;
    while (++row < rows.size()) {
      const KRowDefinition& definition = rows[row].definition;
      uint32_t i = 0;
      while (i < definition.CellCount() && definition.Edge(i) != left) ++i;
      if (i >= definition.CellCount() || i >= definition.CellRecordCount()) break;
      if ((definition.CellRecord(i)->flags0 & 0x60) != 0x20) break;
      ++span;
    }
    return span;
  }

  void StartCell() {
    Table& table = tables_.back();
    if (table.inCell) return;
    if (!table.inRow) {
      table.inRow = true;
      env_.conversion->archive->BeginElement("tr");
      if (!table.heights.empty()) {
        const int height = std::abs(int{table.heights.front()});
        table.heights.pop_front();
        if (height) env_.conversion->archive->AddAttribute("height", height / 20 * 4 / 3);
      }
    }
    if (table.cells.empty()) return;
    table.inCell = true;
    const CELL_FORMAT cell = table.cells.front();
    table.cells.pop_front();
    for (int32_t gap = cell.column - table.nextColumn - 1; gap > 0; --gap) {
      env_.conversion->archive->BeginElement("td");
      env_.conversion->archive->EndElement("td");
    }
    table.nextColumn = cell.column + static_cast<int32_t>(cell.colSpan);
    env_.conversion->archive->BeginElement("td");
    env_.conversion->archive->AddAttribute("width", cell.width / 20 * 4 / 3);
    if (cell.rowSpan > 1) env_.conversion->archive->AddAttribute("rowspan", static_cast<int>(cell.rowSpan));
    if (cell.colSpan > 1) env_.conversion->archive->AddAttribute("colspan", static_cast<int>(cell.colSpan));
    if (cell.tc) {
      const int alignment = cell.tc->flags0 >> 7 | (cell.tc->flags1 & 1) << 1;
      if (alignment == 0) env_.conversion->archive->AddAttribute("valign", "top");
      if (alignment == 2) env_.conversion->archive->AddAttribute("valign", "bottom");
    }
    WriteCellCss(cell, env_.conversion->archive);
  }

  void EndCell() {
    if (tables_.empty() || !tables_.back().inCell) return;
    tables_.back().inCell = false;
    env_.conversion->archive->EndElement("td");
  }

  void EndRow() {
    tables_.back().nextColumn = -1;
    if (!tables_.back().inRow) return;
    EndCell();
    tables_.back().inRow = false;
    env_.conversion->archive->EndElement("tr");
  }

  void EndTable() {
    if (tables_.back().inRow) EndRow();
    tables_.pop_back();
    env_.conversion->archive->EndElement("table");
  }

  KEnv& env_;
  KTableParagraphs paragraphs_;
  TableParagraph paragraph_;
  bool inTable_ = false;
  std::vector<Table> tables_;
};

/// Table paragraphs at random: sound ones as often as damaged ones.
class RandomStory {
 public:
  explicit RandomStory(unsigned seed) : random_(seed) {}

  void Fill(ManyParagraphs& story) {
    const int count = Below(120);
    for (int i = 0; i < count; ++i) AddParagraph(story);
  }

 private:
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  bool Once(int in) { return Below(in) == 0; }

  void AddParagraph(ManyParagraphs& story) {
    if (Once(25)) {
      story.Add(Once(3) ? Sprms{sprm(0x6646, 0)} : Sprms());
      return;
    }
    Sprms sprms{sprm(0x2416, Once(20) ? 0 : 1)};
    if (!Once(3)) sprms.add(sprm(0x6649, Once(20) ? Below(70) : 1 + Below(3)));
    if (Once(3)) sprms.add(sprm(0x244B, 1));
    if (Once(4)) AddRow(sprms);
    story.Add(sprms, Once(2) ? '\x07' : 'x');
  }

  void AddRow(Sprms& sprms) {
    if (!Once(10)) sprms.add(sprm(Once(2) ? 0x2417 : 0x244C, 1));
    if (Once(15)) return;
    std::vector<int16_t> edges;
    const int cells = Below(6);
    for (int i = 0; i <= cells; ++i) edges.push_back(static_cast<int16_t>(Below(6) * 400));
    if (!Once(4)) std::sort(edges.begin(), edges.end());
    std::vector<support::TableCell> records(static_cast<size_t>(Below(cells + 1)));
    for (support::TableCell& record : records) {
      record.horizontalMerge = Once(6) ? static_cast<uint8_t>(Below(4)) : 0;
      record.verticalMerge = static_cast<uint8_t>(Below(4));
      record.verticalAlign = static_cast<uint8_t>(Below(4));
    }
    sprms.add(defTableSprm(edges, records));
    AddStyle(sprms);
  }

  void AddStyle(Sprms& sprms) {
    const auto value = [this] { return Below(2000) - 1000; };
    if (Once(2)) sprms.add(sprm(0x9407, value()));
    if (Once(5)) sprms.add(support::cellDistanceSprm(0xD633, 0, 1, 15, 3, static_cast<int16_t>(Below(60))));
    if (Once(5)) sprms.add(support::cellDistanceSprm(0xD634, 0, 1, 15, static_cast<uint8_t>(Below(4)), 40));
    if (Once(5)) sprms.add(sprm(0xF661, ByteWriter().u8(3).u16(static_cast<uint32_t>(value())).take()));
    if (Once(6)) sprms.add(sprm(0x360D, Below(4) * 0x40)).add(sprm(0x940E, value()));
    if (Once(6)) sprms.add(sprm(0x9601, value())).add(sprm(0x9602, 0));
    if (Once(6)) sprms.add(sprm(0x548A, Below(4)));
    for (int opcode : {0x9410, 0x941E, 0x9411, 0x941F}) {
      if (Once(8)) sprms.add(sprm(static_cast<uint16_t>(opcode), value()));
    }
    if (Once(3)) {
      std::vector<support::Border80> borders(6);
      for (support::Border80& border : borders) border.width = static_cast<uint8_t>(Below(3));
      sprms.add(support::tableBorders80Sprm(borders));
    }
  }

  std::mt19937 random_;
};

std::string htmlOf(unsigned seed) {
  ManyParagraphs story;
  RandomStory(seed).Fill(story);
  story.env.sectionLeftMargin = 700;
  story.WriteAll();
  return story.archive.text();
}

std::string plainHtmlOf(unsigned seed) {
  ManyParagraphs story;
  RandomStory(seed).Fill(story);
  story.env.sectionLeftMargin = 700;
  PlainTableWriter writer(story.env);
  for (uint32_t i = 0; i < story.count(); ++i) {
    if (!writer.Write(i)) continue;
    story.archive->AddContent(static_cast<int>(i));
    writer.EnsureWriteEnd(i);
  }
  return story.archive.text();
}

TEST(TableReference, AgreesOnEveryRandomStory) {
  for (unsigned seed = 0; seed < 300; ++seed) ASSERT_EQ(plainHtmlOf(seed), htmlOf(seed)) << seed;
}

/// The first tag that stands where it may not; empty if there is none.
std::string misplacedTag(const std::string& html) {
  std::vector<std::string> open;
  for (size_t at = html.find('<'); at != std::string::npos; at = html.find('<', at + 1)) {
    const bool closes = html[at + 1] == '/';
    const size_t start = at + (closes ? 2 : 1);
    const std::string name = html.substr(start, html.find_first_of(" >", start) - start);
    if (closes) {
      if (open.empty() || open.back() != name) return html.substr(at, 40);
      open.pop_back();
    } else {
      const std::string parent = open.empty() ? "" : open.back();
      if ((name == "td" && parent != "tr") || (name == "tr" && parent != "table")) return html.substr(at, 40);
      open.push_back(name);
    }
  }
  return "";
}

TEST(TableReference, NestsItsElementsInEveryRandomStory) {
  for (unsigned seed = 0; seed < 100; ++seed) ASSERT_EQ("", misplacedTag(htmlOf(seed))) << seed;
}

}  // namespace
}  // namespace pagerex

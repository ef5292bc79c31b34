#include "formats/html/table_writer.h"

#include <numeric>

#include "formats/html/css_values.h"
#include "formats/html/table_css.h"

namespace pagerex {
namespace {

void putClass(PageText& out, std::string_view name) {
  if (name.empty()) return;
  out.Put(" class=");
  out.Put(name);
}

void putEmptyCell(PageText& out, uint16_t columns) {
  if (columns == 0) return;
  out.Put("<td");
  if (columns > 1) out.Put(" colspan=" + std::to_string(columns));
  out.Put("></td>");
}

/// All but where they stand.
bool haveOneLook(const CellProperties& a, const CellProperties& b) {
  return a.columnSpan == b.columnSpan && a.rowSpan == b.rowSpan &&
         a.verticalAlignment == b.verticalAlignment && a.textFlow == b.textFlow && a.noWrap == b.noWrap &&
         a.top == b.top && a.start == b.start && a.bottom == b.bottom && a.end == b.end &&
         a.shading == b.shading && a.paddingTop == b.paddingTop && a.paddingStart == b.paddingStart &&
         a.paddingBottom == b.paddingBottom && a.paddingEnd == b.paddingEnd;
}

}  // namespace

void TableWriter::BeginTable(const TableProperties& table) {
  // Wider ones may be moved sideways on a small screen, which wants the keyboard as well.
  constexpr int32_t kWide = 5000;
  int64_t width = table.widthKind == 3 ? table.width : 0;
  if (width == 0) width = std::accumulate(table.columnWidths.begin(), table.columnWidths.end(), int64_t{0});
  std::string css;
  appendTableBoxCss(css, table);
  const std::string_view name = sheet_.ClassOf('f', css);
  std::string names = "x";
  if (table.floats && table.alignment != Alignment::kCentre) names += " fl";
  if (!name.empty()) names.append(" ").append(name);
  std::string open = "<div class=";
  appendValue(open, names);
  out_.Put(open);
  out_.Put(width > kWide ? " tabindex=0><table" : "><table");
  css.clear();
  appendTableCss(css, table);
  putClass(out_, sheet_.ClassOf('t', css));
  if (table.isRightToLeft) out_.Put(" dir=rtl");
  const size_t roleAt = out_.size();
  out_.Put("><colgroup>");
  const int64_t whole = wholeOfColumns(table);
  for (const int32_t column : table.columnWidths) {
    css.clear();
    appendColumnCss(css, column, whole);
    out_.Put("<col");
    putClass(out_, sheet_.ClassOf('k', css));
    out_.Put(">");
  }
  out_.Put("</colgroup>\n");
  if (!open_.empty()) open_.back().hasTable = true;
  open_.emplace_back();
  open_.back().rowsLeft = table.headerRowCount;
  open_.back().hasLook = table.headerRowCount > 0;
  open_.back().roleAt = roleAt;
}

void TableWriter::PutGroup(Table& table, Group group) {
  if (table.group == group) return;
  if (table.group != Group::kNone) out_.Put(table.group == Group::kHead ? "</thead>" : "</tbody>");
  if (group != Group::kNone) out_.Put(group == Group::kHead ? "<thead>" : "<tbody>");
  table.group = group;
}

void TableWriter::Given() {
  for (Table& table : open_) table.roleAt = Table::kGiven;
}

/// A single cell that shows nothing of itself, around other tables, is one of layout.
void TableWriter::EndTable() {
  Table& table = open_.back();
  PutGroup(table, Group::kNone);
  const bool isLayout = !table.hasLook && table.cells == 1 && table.hasTable;
  if (isLayout && table.roleAt != Table::kGiven) out_.Insert(table.roleAt, " role=presentation");
  out_.Put("</table></div>\n");
  open_.pop_back();
}

void TableWriter::BeginRow(const RowProperties& row) {
  Table& table = open_.back();
  const bool isHead = row.isHeader && table.rowsLeft > 0;
  table.rowsLeft = isHead ? table.rowsLeft - 1 : 0;
  PutGroup(table, isHead ? Group::kHead : Group::kBody);
  const bool isAsBefore =
      !table.rowTag.empty() && table.row.height == row.height && table.row.cantSplit == row.cantSplit;
  if (!isAsBefore) {
    std::string css;
    appendRowCss(css, row);
    const std::string_view name = sheet_.ClassOf('w', css);
    table.rowTag = name.empty() ? "<tr>" : "<tr class=" + std::string(name) + ">";
    table.row = row;
  }
  out_.Put(table.rowTag);
  putEmptyCell(out_, row.columnsBefore);
  table.columnsAfter = row.columnsAfter;
  table.cell = 0;
}

void TableWriter::EndRow() {
  putEmptyCell(out_, open_.back().columnsAfter);
  out_.Put("</tr>\n");
}

void TableWriter::BeginCell(const CellProperties& cell) {
  Table& table = open_.back();
  ++table.cells;
  out_.Put(table.group == Group::kHead ? "<th scope=col" : "<td");
  if (known_.size() < open_.size()) known_.resize(open_.size());
  std::vector<KnownCells>& row = known_[open_.size() - 1];
  if (table.cell == row.size()) row.emplace_back();
  const KnownCell& known = KnownAs(cell, row[table.cell++]);
  table.hasLook |= known.hasLook;
  table.isCellTurned = known.isTurned;
  out_.Put(known.attributes);
}

const TableWriter::KnownCell& TableWriter::KnownAs(const CellProperties& cell, KnownCells& knownHere) {
  for (const KnownCell& each : knownHere.cells) {
    if (!each.attributes.empty() && haveOneLook(each.properties, cell)) return each;
  }
  KnownCell& known = knownHere.cells[knownHere.next++ % knownHere.cells.size()];
  known.properties = cell;
  known.hasLook = cell.top.isThere() || cell.bottom.isThere() || cell.start.isThere() || cell.end.isThere() ||
                  (cell.shading.isThere && !cell.shading.fill.isAutomatic);
  // Not every engine turns the text of a cell itself.
  CellProperties upright = cell;
  upright.textFlow = 0;
  std::string css;
  appendCellCss(css, upright, CellProperties());
  const std::string_view name = sheet_.ClassOf('c', css);
  const std::string_view mode = writingModeOf(cell.textFlow);
  known.isTurned = !mode.empty();
  known.attributes.clear();
  if (!name.empty()) known.attributes.append(" class=").append(name);
  if (cell.columnSpan > 1) known.attributes.append(" colspan=").append(std::to_string(cell.columnSpan));
  if (cell.rowSpan > 1) known.attributes.append(" rowspan=").append(std::to_string(cell.rowSpan));
  known.attributes += '>';
  if (known.isTurned) {
    css = "writing-mode:" + std::string(mode);
    const std::string_view turned = sheet_.ClassOf('v', css);
    known.attributes += turned.empty() ? "<div>" : "<div class=" + std::string(turned) + ">";
  }
  return known;
}

void TableWriter::EndCell() {
  if (open_.back().isCellTurned) out_.Put("</div>");
  out_.Put(open_.back().group == Group::kHead ? "</th>" : "</td>");
}

}  // namespace pagerex

#include "flow/table_scan.h"

#include <algorithm>
#include <cstring>

#include "wordreader/sprm_list.h"

namespace pagerex {
namespace {

/// Edges that lie so near to each other, in twips, are one.
constexpr int32_t kNear = 10;
constexpr uint32_t kNoShape = UINT32_MAX;
constexpr uint16_t kTableHeader = 0x3404;

bool isHeaderRow(ByteView sprms) {
  KDWSprm sprm;
  return KDWSprmList(sprms).FindSprm(kTableHeader, &sprm) == Status::kOk && sprm.GetArgument().u8(0) != 0;
}

}  // namespace

void TableScan::Read(uint32_t start, uint32_t limit) {
  rows_.push_back({start, start, 0, 0, false});
  end_ = start;
  while (end_ < limit) {
    const FoundParagraph paragraph = document_.paragraphs.At(end_, limit);
    if (paragraph.place.depth < depth_) break;
    end_ = paragraph.end;
    if (paragraph.EndsRow(depth_)) {
      EndRow(paragraph);
      continue;
    }
    ++paragraphsOfCell_;
    if (paragraph.place.depth > depth_) hasSingleParagraphs_ = false;
    if (!paragraph.EndsCell(depth_)) continue;
    if (paragraphsOfCell_ != 1) hasSingleParagraphs_ = false;
    paragraphsOfCell_ = 0;
    if (cellsOfRow_ < UINT16_MAX) ++cellsOfRow_;
  }
  // What no mark ends is a row all the same.
  if (cellsOfRow_ > 0 || paragraphsOfCell_ > 0) {
    if (paragraphsOfCell_ > 0 && cellsOfRow_ < UINT16_MAX) ++cellsOfRow_;
    if (paragraphsOfCell_ > 1) hasSingleParagraphs_ = false;
    CloseRow(kNoShape, false);
  }
  rows_.pop_back();
  MakeColumns();
  PlaceCells();
  SpanRows();
}

void TableScan::EndRow(const FoundParagraph& mark) {
  // Text in front of the mark that belongs to no cell is one.
  if (paragraphsOfCell_ > 0 && cellsOfRow_ < UINT16_MAX) ++cellsOfRow_;
  const KnownRow& row = LookAtRow(mark);
  if (headerRows_ + 1 == rows_.size() && row.isHeader) ++headerRows_;
  CloseRow(row.shape, true);
}

const TableScan::KnownRow& TableScan::LookAtRow(const FoundParagraph& mark) {
  for (const KnownRow& row : known_) {
    if (row.isThere && mark.pieceSprms.empty() && mark.sprms.size() == row.sprms.size() &&
        std::equal(row.sprms.begin(), row.sprms.end(), mark.sprms.data())) {
      return row;
    }
  }
  KnownRow& row = known_[nextKnown_++ % kKnownRows];
  row.sprms.assign(mark.sprms.data(), mark.sprms.data() + mark.sprms.size());
  row.isHeader = isHeaderRow(mark.sprms);
  row.isThere = mark.pieceSprms.empty();
  row.shape = kNoShape;
  RowGrid grid;
  if (!rowGridOf(mark.sprms, grid) && !rowGridOf(mark.pieceSprms, grid)) return row;
  if (shapes_.empty() || std::memcmp(&shapes_.back(), &grid, sizeof(grid)) != 0) shapes_.push_back(grid);
  row.shape = static_cast<uint32_t>(shapes_.size() - 1);
  return row;
}

void TableScan::CloseRow(uint32_t shape, bool hasDefinition) {
  ScannedRow& row = rows_.back();
  row.end = end_;
  row.cellCount = cellsOfRow_;
  row.hasDefinition = hasDefinition;
  shapeOfRow_.push_back(shape);
  cellsOfRow_ = paragraphsOfCell_ = 0;
  rows_.push_back({end_, end_, 0, 0, false});
}

/// The edges of all rows, one for each place.
void TableScan::MakeColumns() {
  for (const RowGrid& shape : shapes_)
    edges_.insert(edges_.end(), shape.edges, shape.edges + shape.count + 1);
  std::sort(edges_.begin(), edges_.end());
  size_t kept = 0;
  for (const int32_t edge : edges_) {
    if (kept == 0 || edge - edges_[kept - 1] > kNear) edges_[kept++] = edge;
  }
  edges_.resize(kept);
}

/// The last edge at or before a place.
uint16_t TableScan::ColumnAt(int32_t edge) const {
  const auto above = std::upper_bound(edges_.begin(), edges_.end(), edge);
  const auto column = above == edges_.begin() ? 0 : above - edges_.begin() - 1;
  return static_cast<uint16_t>(std::min<ptrdiff_t>(column, UINT16_MAX - 1));
}

/// The cells of a shape, as they stand in the columns.
std::vector<ScannedCell> TableScan::CellsOfShape(const RowGrid& shape) const {
  std::vector<ScannedCell> cells(shape.count);
  size_t first = 0;
  for (size_t i = 0; i < cells.size(); ++i) {
    const uint16_t left = ColumnAt(shape.edges[i]), right = ColumnAt(shape.edges[i + 1]);
    cells[i].column = left;
    cells[i].columnSpan = static_cast<uint16_t>(std::max(right - left, 1));
    cells[i].merges = shape.merges[i];
    cells[i].isMergedLeft = i > 0 && (shape.merges[i] & kMergeContinued) != 0;
    if (cells[i].isMergedLeft) {
      cells[first].columnSpan = static_cast<uint16_t>(std::max(right - cells[first].column, 1));
    } else {
      first = i;
    }
  }
  return cells;
}

void TableScan::PlaceCells() {
  std::vector<ScannedCell> ofShape;
  uint32_t lastShape = kNoShape;
  for (size_t i = 0; i < rows_.size(); ++i) {
    ScannedRow& row = rows_[i];
    if (shapeOfRow_[i] != lastShape) {
      lastShape = shapeOfRow_[i];
      ofShape = lastShape != kNoShape ? CellsOfShape(shapes_[lastShape]) : std::vector<ScannedCell>();
    }
    if (row.cellCount != ofShape.size() || row.cellCount != rows_[0].cellCount) isRegular_ = false;
    row.firstCell = static_cast<uint32_t>(cells_.size());
    const size_t known = std::min<size_t>(row.cellCount, ofShape.size());
    cells_.insert(cells_.end(), ofShape.begin(), ofShape.begin() + static_cast<ptrdiff_t>(known));
    for (size_t extra = known; extra < row.cellCount; ++extra) {
      ScannedCell cell;
      if (extra > 0) cell.column = static_cast<uint16_t>(cells_.back().column + cells_.back().columnSpan);
      cells_.push_back(cell);
    }
    if (row.cellCount == 0) continue;
    const ScannedCell& last = cells_.back();
    const ScannedCell& firstOfRow = cells_[row.firstCell];
    if (firstOfRow.column != 0 || last.column + last.columnSpan != static_cast<int>(ColumnCount()))
      isRegular_ = false;
  }
}

void TableScan::SpanRows() {
  struct Open {
    uint32_t cell = UINT32_MAX;
    uint32_t row = 0;
  };
  std::vector<Open> open(ColumnCount());
  for (uint32_t i = 0; i < rows_.size(); ++i) {
    for (uint16_t c = 0; c < rows_[i].cellCount; ++c) {
      const uint32_t index = rows_[i].firstCell + c;
      ScannedCell& cell = cells_[index];
      if (cell.columnSpan > 1 || cell.isMergedLeft) hasMerged_ = true;
      if (cell.column >= open.size()) continue;
      Open& above = open[cell.column];
      const bool continues = (cell.merges & kMergeDownContinued) != 0;
      const bool canContinue = continues && above.cell != UINT32_MAX && above.row + 1 == i &&
                               cells_[above.cell].columnSpan == cell.columnSpan &&
                               cells_[above.cell].rowSpan < UINT16_MAX;
      if (canContinue) {
        ++cells_[above.cell].rowSpan;
        cell.rowSpan = 0;
        above.row = i;
        hasMerged_ = true;
      } else {
        above = continues || (cell.merges & kMergeDownFirst) != 0 ? Open{index, i} : Open{};
      }
    }
  }
}

TableProperties TableScan::Properties(const RowDefinition& firstRow) const {
  TableProperties table;
  table.depth = static_cast<uint8_t>(depth_);
  table.isRightToLeft = firstRow.isRightToLeft;
  table.alignment = firstRow.alignment;
  table.indent = firstRow.setsIndent ? firstRow.indent : edges_.empty() ? 0 : edges_.front();
  table.width = firstRow.width;
  table.widthKind = firstRow.widthKind;
  for (size_t i = 0; i + 1 < edges_.size(); ++i) table.columnWidths.push_back(edges_[i + 1] - edges_[i]);
  table.rowCount = static_cast<uint32_t>(rows_.size());
  table.headerRowCount = static_cast<uint32_t>(headerRows_);
  table.isRegular = isRegular_;
  table.hasMergedCells = hasMerged_;
  table.hasSingleParagraphs = hasSingleParagraphs_;
  table.style = firstRow.style == kNoStyle ? 0 : firstRow.style;
  table.floats = firstRow.floats;
  return table;
}

}  // namespace pagerex

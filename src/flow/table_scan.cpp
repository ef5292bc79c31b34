#include "flow/table_scan.h"

#include <algorithm>

#include "flow/sprm_walk.h"
#include "wordreader/text_marks.h"

namespace pagerex {
namespace {

/// Edges of different rows that lie so near to each other, in twips, are one: less where there are cells that
/// are as narrow.
constexpr int32_t kNear = 60, kNearest = 10;
constexpr uint32_t kNoShape = UINT32_MAX;

void readKind(ByteView sprms, RowKind& kind) {
  forEachSprm(sprms, [&kind](uint16_t opcode, ByteView operand) {
    switch (opcode) {
      case 0x3404:  // sprmTTableHeader
        kind.isHeader = operand.u8(0) != 0;
        break;
      case 0x360D:  // sprmTPc
        kind.floats.anchors = operand.u8(0);
        break;
      case 0x940E:  // sprmTDxaAbs
        kind.floats.left = operand.i16(0);
        break;
      case 0x940F:  // sprmTDyaAbs
        kind.floats.top = operand.i16(0);
        break;
      default:
        break;
    }
  });
}

}  // namespace

void TableScan::Read(uint32_t start, uint32_t limit) {
  rows_.emplace_back().start = start;
  end_ = start;
  while (end_ < limit) {
    const FoundParagraph paragraph = Next(limit);
    if (paragraph.place.depth < depth_) break;
    end_ = paragraph.end;
    if (paragraph.EndsRow(depth_)) {
      if (EndRow(paragraph)) continue;
      TakeRowBack();
      break;
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
    CloseRow(kNoShape);
  }
  rows_.pop_back();
  Account();
  MakeColumns();
  PlaceCells();
  SpanRows();
}

TableScan::~TableScan() {
  if (MemoryBudget* const budget = document_.file.allocator().Budget()) budget->left += accounted_;
}

void TableScan::Account() {
  uint64_t bytes = rows_.size() * (sizeof(ScannedRow) + sizeof(uint32_t)) + shapes_.size() * sizeof(RowGrid);
  for (const ScannedRow& row : rows_) bytes += row.cellCount * sizeof(ScannedCell);
  if (MemoryBudget* const budget = document_.file.allocator().Budget()) budget->Take(bytes);
  accounted_ = bytes;
}

/// The paragraph at the end of what was read. A cell mark behind text ends a cell of the first depth,
/// whatever else there is to know: a row's end has no text.
FoundParagraph TableScan::Next(uint32_t limit) {
  if (depth_ == 1 && end_ != rows_.front().start) {
    FoundParagraph paragraph = document_.paragraphs.TextAt(end_, limit);
    if (paragraph.mark == text_mark::kCellEnd && paragraph.textEnd > paragraph.start) {
      paragraph.place.depth = 1;
      return paragraph;
    }
  }
  return document_.paragraphs.At(end_, limit);
}

/// False if the row belongs to another table.
bool TableScan::EndRow(const FoundParagraph& mark) {
  const size_t shapeCount = shapes_.size();
  // Text in front of the mark that belongs to no cell is one.
  if ((paragraphsOfCell_ > 0 || mark.textEnd > mark.start) && cellsOfRow_ < UINT16_MAX) ++cellsOfRow_;
  const uint32_t kind = FindKind(mark);
  const RowKind& row = kind != ScannedRow::kNoKind ? kinds_[kind] : unkept_;
  const bool isFirst = rows_.size() == 1;
  if (!isFirst && row.floats != floats_) {
    shapes_.resize(shapeCount);
    return false;
  }
  floats_ = row.floats;
  rows_.back().hasDefinition = true;
  rows_.back().kind = kind;
  if (headerRows_ + 1 == rows_.size() && row.isHeader) ++headerRows_;
  CloseRow(row.shape);
  return true;
}

void TableScan::TakeRowBack() {
  end_ = rows_.back().start;
  cellsOfRow_ = paragraphsOfCell_ = 0;
  hasSingleParagraphs_ = hadSingleParagraphs_;
}

/// kNoKind for one that is not kept: then `unkept_` tells of it.
uint32_t TableScan::FindKind(const FoundParagraph& mark) {
  const auto isOf = [&mark](const RowKind& kind) {
    return mark.sprms.size() == kind.sprms.size() &&
           std::equal(kind.sprms.begin(), kind.sprms.end(), mark.sprms.data());
  };
  const bool canBeKept = mark.pieceSprms.empty();
  if (canBeKept) {
    if (lastKind_ < kinds_.size() && isOf(kinds_[lastKind_])) return lastKind_;
    const auto found = std::find_if(kinds_.begin(), kinds_.end(), isOf);
    if (found != kinds_.end()) return lastKind_ = static_cast<uint32_t>(found - kinds_.begin());
  }
  RowKind kind = KindOf(mark);
  if (!canBeKept || kinds_.size() >= kMostKinds || kindBytes_ + kind.sprms.size() > kMostKindBytes) {
    unkept_ = std::move(kind);
    return ScannedRow::kNoKind;
  }
  kindBytes_ += kind.sprms.size();
  kinds_.push_back(std::move(kind));
  return lastKind_ = static_cast<uint32_t>(kinds_.size() - 1);
}

RowKind TableScan::KindOf(const FoundParagraph& mark) {
  RowKind kind;
  kind.sprms.assign(mark.sprms.data(), mark.sprms.data() + mark.sprms.size());
  readKind(mark.sprms, kind);
  RowGrid grid;
  if (!rowGridOf(mark.sprms, grid) && !rowGridOf(mark.pieceSprms, grid)) return kind;
  if (shapes_.empty() || !(shapes_.back() == grid)) shapes_.push_back(grid);
  kind.shape = static_cast<uint32_t>(shapes_.size() - 1);
  return kind;
}

void TableScan::CloseRow(uint32_t shape) {
  ScannedRow& row = rows_.back();
  row.end = end_;
  row.cellCount = cellsOfRow_;
  shapeOfRow_.push_back(shape);
  cellsOfRow_ = paragraphsOfCell_ = 0;
  hadSingleParagraphs_ = hasSingleParagraphs_;
  rows_.emplace_back().start = end_;
}

/// The edges of all rows, one for each place.
void TableScan::MakeColumns() {
  int32_t near = kNear;
  for (const RowGrid& shape : shapes_) {
    edges_.insert(edges_.end(), shape.edges, shape.edges + shape.count + 1);
    for (size_t i = 0; i < shape.count; ++i) near = std::min(near, shape.edges[i + 1] - shape.edges[i] - 1);
  }
  near = std::max(near, kNearest);
  std::sort(edges_.begin(), edges_.end());
  size_t kept = 0;
  for (const int32_t edge : edges_) {
    if (kept == 0 || edge - edges_[kept - 1] > near) edges_[kept++] = edge;
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
  std::vector<std::vector<ScannedCell>> shapes(shapes_.size());
  for (size_t i = 0; i < shapes.size(); ++i) shapes[i] = CellsOfShape(shapes_[i]);
  const std::vector<ScannedCell> none;
  for (size_t i = 0; i < rows_.size(); ++i) {
    ScannedRow& row = rows_[i];
    const std::vector<ScannedCell>& ofShape = shapeOfRow_[i] != kNoShape ? shapes[shapeOfRow_[i]] : none;
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
  // Where Word laid it out counts; what was asked for is measured from the text of the first cell.
  table.indent = edges_.empty() ? firstRow.indent : edges_.front();
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

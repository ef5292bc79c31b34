#include "story/table_cells.h"

#include <utility>

namespace pagerex {

Status CollectCellFormat(std::shared_ptr<const KTableScan> scan, KCellQueue& cells) {
  cells = KCellQueue();
  if (!scan || scan->FirstRow() == scan->EndRow()) return Status::kInvalidArgument;
  cells.row_ = scan->FirstRow();
  cells.scan_ = std::move(scan);
  cells.SkipRowsWithoutCells();
  return Status::kOk;
}

void KCellQueue::SkipRowsWithoutCells() {
  while (row_ < scan_->EndRow() && cell_ >= scan_->Row(row_).definition().CellCount()) {
    ++row_;
    cell_ = 0;
  }
}

void KCellQueue::pop() {
  frontIsMade_ = false;
  ++cell_;
  SkipRowsWithoutCells();
}

namespace {

uint32_t positionOf(uint32_t row, uint32_t firstRow, uint32_t endRow, uint32_t cell, uint32_t cellCount) {
  uint32_t position = 0;
  if (cell == 0) position |= CELL_FIRST_IN_ROW;
  if (row == firstRow) position |= CELL_IN_FIRST_ROW;
  if (cell + 1 == cellCount) position |= CELL_LAST_IN_ROW;
  if (row + 1 == endRow) position |= CELL_IN_LAST_ROW;
  return position;
}

/// The first cell has one gap at its sides, the last has three and any other two.
int32_t widthOf(int16_t left, int16_t right, int32_t spacing, uint32_t position) {
  const int32_t gaps = position & CELL_FIRST_IN_ROW ? 1 : position & CELL_LAST_IN_ROW ? 3 : 2;
  return right - left - gaps * spacing;
}

bool startsVerticalMerge(const mso_word::TC* tc) {
  return tc && (tc->flags0 & mso_word::TC::kVerticalMerge) == mso_word::TC::kMergeStart;
}

}  // namespace

const CELL_FORMAT& KCellQueue::front() {
  if (frontIsMade_) return front_;
  LoadRow();
  const KRowDefinition& row = definition_.definition;
  const int16_t left = row.Edge(cell_);
  const int16_t right = row.Edge(cell_ + 1);
  const int32_t spacing = scan_->style().cellSpacing;
  const int32_t column = scan_->edges().IndexOf(left);

  front_.position = positionOf(row_, scan_->FirstRow(), scan_->EndRow(), cell_, row.CellCount());
  front_.column = column < 0 ? 0 : column;
  front_.width = widthOf(left, right, spacing, front_.position);
  front_.tc = row.CellRecord(cell_);
  front_.rowSpan = startsVerticalMerge(front_.tc) ? SearchRowSpan(*scan_, row_, left, mergeRuns_) : 1;
  front_.colSpan = SearchColSpan(scan_->edges(), left, right);
  front_.borders = definition_.borders;
  front_.bordersEx = definition_.bordersEx;
  front_.shading = definition_.shadings.record<mso_word::SHD>(size_t{cell_} * sizeof(mso_word::SHD));
  front_.shadingEx = definition_.shadingsEx.record<mso_word::SHDEX>(size_t{cell_} * sizeof(mso_word::SHDEX));
  front_.padding = definition_.padding;
  front_.clearedSides = ClearedSides(definition_, cell_);
  front_.hasSpacing = spacing > 0;
  frontIsMade_ = true;
  return front_;
}

void KCellQueue::LoadRow() {
  if (loadedRow_ == row_) return;
  TableStyle ignored;
  ReadTableRow(scan_->Row(row_).sprms(), 0, definition_, ignored);
  loadedRow_ = row_;
}

namespace {

/// Adds the sides of one operand: a range of cells, the sides, and a border of `words` words from offset 3
/// on.
uint8_t clearedBy(ByteView operand, uint32_t cell, unsigned words) {
  if (operand.u8(0) > cell || operand.u8(1) <= cell) return 0;
  for (unsigned word = 0; word < words; ++word) {
    if (operand.u32(3 + word * 4) != 0xFFFFFFFF) return 0;
  }
  return operand.u8(2) & 0x0F;
}

}  // namespace

uint8_t ClearedSides(const TABLE_ROW& row, uint32_t cell) {
  uint8_t sides = 0;
  if (!row.setBrcEx.empty()) {
    for (const ByteView& operand : row.setBrcEx) sides |= clearedBy(operand, cell, 2);
  } else {
    for (const ByteView& operand : row.setBrc) sides |= clearedBy(operand, cell, 1);
  }
  return sides;
}

}  // namespace pagerex

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
  front_.row = loadedList_.data();
  front_.index = cell_;
  front_.tc = row.CellRecord(cell_);
  front_.rowSpan = startsVerticalMerge(front_.tc) ? SearchRowSpan(*scan_, row_, left, mergeRuns_) : 1;
  front_.colSpan = SearchColSpan(scan_->edges(), left, right);
  front_.borders = definition_.borders;
  front_.bordersEx = definition_.bordersEx;
  front_.shading = definition_.shadings.record<mso_word::SHD>(size_t{cell_} * sizeof(mso_word::SHD));
  front_.shadingEx = definition_.shadingsEx.record<mso_word::SHDEX>(size_t{cell_} * sizeof(mso_word::SHDEX));
  front_.padding = definition_.padding;
  front_.hasSpacing = spacing > 0;
  frontIsMade_ = true;
  return front_;
}

/// Neighbouring rows mostly share their list.
void KCellQueue::LoadRow() {
  const ByteView list = scan_->Row(row_).sprms().bytes();
  if (list.data() == loadedList_.data() && list.size() == loadedList_.size()) return;
  TableStyle ignored;
  ReadTableRow(KDWSprmList(list), 0, definition_, ignored);
  loadedList_ = list;
}

}  // namespace pagerex

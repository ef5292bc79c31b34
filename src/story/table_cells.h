#pragma once

#include <cstdint>
#include <memory>

#include "base/status.h"
#include "story/table_grid.h"
#include "story/table_rows.h"

namespace pagerex {

/// Where a cell stands, as bits.
enum CellPosition : uint32_t {
  CELL_FIRST_IN_ROW = 1,
  CELL_IN_FIRST_ROW = 2,
  CELL_LAST_IN_ROW = 4,
  CELL_IN_LAST_ROW = 8,
};

/// One cell as it comes out. Points into the sprms of its row.
struct CELL_FORMAT {
  const uint8_t* row = nullptr;      ///< the list of its row
  uint32_t index = 0;                ///< in the row
  const mso_word::TC* tc = nullptr;  ///< null if the row has no record for the cell
  int32_t width = 0;                 ///< twips, less the cell spacing
  uint32_t rowSpan = 1;
  uint32_t colSpan = 1;
  KTableBorders borders;  ///< of the row
  KTableBorders bordersEx;
  const mso_word::SHD* shading = nullptr;
  const mso_word::SHDEX* shadingEx = nullptr;
  PADDING padding;
  uint32_t position = 0;    ///< CellPosition
  bool hasSpacing = false;  ///< the cells of the table stand apart
  int32_t column = 0;  ///< index of the left edge among the table's column edges; 0 if it is none of them
};

/// The cells of a table, row after row, left to right. A cell is made when it comes to the front: until then
/// a row is no more than the place of its definition.
class KCellQueue {
 public:
  bool empty() const { return !scan_ || row_ == scan_->EndRow(); }
  /// The next cell; there must be one.
  const CELL_FORMAT& front();
  void pop();

 private:
  friend Status CollectCellFormat(std::shared_ptr<const KTableScan> scan, KCellQueue& cells);
  void LoadRow();
  void SkipRowsWithoutCells();

  std::shared_ptr<const KTableScan> scan_;
  uint32_t row_ = 0;
  uint32_t cell_ = 0;
  TABLE_ROW definition_;
  ByteView loadedList_;  ///< that `definition_` was read from
  KMergeRuns mergeRuns_;
  CELL_FORMAT front_;
  bool frontIsMade_ = false;
};

/// Queues the cells of all rows of a scan. kInvalidArgument if it found no row.
Status CollectCellFormat(std::shared_ptr<const KTableScan> scan, KCellQueue& cells);

}  // namespace pagerex

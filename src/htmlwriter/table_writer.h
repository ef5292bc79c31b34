#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/status.h"
#include "htmlwriter/env.h"
#include "story/table_cells.h"
#include "story/table_scans.h"

namespace pagerex {

/// Turns the table paragraphs of one story into `table`, `tr` and `td` elements around them.
/// A document has no table object: a table is a run of paragraphs that are marked so, and what defines a row
/// stands in the paragraph that ends it. So a table is scanned ahead when it opens, which gives the grid of
/// its columns; then its elements open and close as its paragraphs come by. Nested tables stack up. A member
/// of the paragraph writers. A table that is open when the story ends stays open.
class KHtmlTableWriter {
 public:
  /// `env` is not owned. kInvalidArgument for null.
  Status Init(KEnv* env);

  /// To be called for each paragraph, with the environment's paragraph state set, before anything is written
  /// of it. kStopped: the paragraph is not to be written. kInvalidArgument without an environment.
  Status Write();
  /// To be called when the paragraph is written, with the position of its last character: closes the cell
  /// that it ended.
  Status EnsureWriteEnd(unsigned int cp);

  /// The elements. kFailure without an environment and, except for StartTable, without an open table.
  Status StartTable(unsigned int paragraph);
  Status EndTable();
  Status StartTR();
  Status EndTR();
  Status StartTD();
  Status EndTD();

  /// Scans ahead from `paragraph`, of the environment's paragraph table, and queues the cells of the
  /// innermost open table. kFailure if none is open or there is no such paragraph; kInvalidArgument if there
  /// is no row.
  Status SearchCell(unsigned int paragraph);
  /// The operand of the first sprmTCellSpacingDefault of the innermost open table, from `paragraph` on; empty
  /// if there is none.
  ByteView SearchCellSpacing(unsigned int paragraph);

 private:
  /// One open table.
  struct TABLE_CACHE {
    std::shared_ptr<const KTableScan> scan;
    KCellQueue cells;
    uint32_t nextHeight = 0;  ///< the row of the scan whose height the next `tr` takes
    bool inRow = false;
    bool inCell = false;
    int32_t nextColumn = -1;  ///< where the last cell of this row ended; -1 at the start of a row
  };

  TableParagraph LookAtParagraph();
  bool SkipMergedCell();
  bool CanSearch(unsigned int paragraph) const;
  void WriteRowHeight();
  void WriteFillerCells(int32_t column);
  /// All attributes of an open `td` start tag; those but for `style`.
  void WriteCellAttributes(const CELL_FORMAT& cell, int32_t cellSpacing);
  void SpellCellAttributes(const CELL_FORMAT& cell);

  std::vector<TABLE_CACHE> tableStack_;  ///< innermost last
  KEnv* env_ = nullptr;
  KWorkLimits* limits_ = nullptr;
  KTableScans* scans_ = nullptr;
  uint32_t depth_ = 0;  ///< tables open
  bool rowEnd_ = false;
  bool innerCellEnd_ = false;
  TableStyle style_;  ///< of the table that is being opened
};

}  // namespace pagerex

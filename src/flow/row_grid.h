#pragma once

#include <cstddef>
#include <cstdint>

#include "base/byte_view.h"

namespace pagerex {

/// Word has no more than 63 cells in a row.
constexpr size_t kMostCells = 64;

/// How a cell hangs together with its neighbours: bits.
enum CellMerge : uint8_t {
  kMergeFirst = 1,          ///< cells to the right of it may continue it
  kMergeContinued = 2,      ///< continues the cell at its left: has no text of its own
  kMergeDownFirst = 4,      ///< cells below may continue it
  kMergeDownContinued = 8,  ///< continues the cell above
};

/// Where the cells of a row stand.
struct RowGrid {
  uint8_t count = 0;
  int16_t edges[kMostCells + 1] = {};  ///< count + 1 of them, from the margin, ascending
  uint8_t merges[kMostCells] = {};     ///< CellMerge

  friend bool operator==(const RowGrid&, const RowGrid&) = default;
};

/// Of the list at a row's end. False if the list defines no cells.
bool rowGridOf(ByteView sprms, RowGrid& grid);

/// The bytes of the cells' records in a definition of a row (sprmTDefTable), which has `count` cells.
ByteView cellRecordsOf(ByteView definition, size_t count);

/// What became of the cells.
struct GridChange {
  enum Kind : uint8_t { kNone, kDefined, kInserted, kDeleted };
  Kind kind = kNone;
  size_t first = 0, count = 0;  ///< the cells that are new, or were there
};
/// Changes the places and merges of cells if the sprm is one of those that do.
GridChange applyToGrid(uint16_t opcode, ByteView operand, RowGrid& grid);

}  // namespace pagerex

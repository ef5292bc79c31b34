#pragma once

#include <cstdint>

#include "flow/properties.h"
#include "flow/table_sprms.h"

namespace pagerex {

/// Which cells and rows of the table a cell reaches over.
struct CellPosition {
  uint8_t cell = 0;      ///< in RowDefinition::cells
  uint8_t lastCell = 0;  ///< the last one that is merged into it
  bool isInFirstRow = false;
  bool isInLastRow = false;
};

/// What holds in a cell: what it says itself, else what its row's list says of the table by the cell's
/// position, else what the conditional parts of the table style say, else the style. columnSpan and rowSpan
/// are left alone.
void resolveCell(const RowDefinition& row, const CellPosition& position, const StyleCells& conditional,
                 CellProperties& cell);

/// Conditions of table styles: bits.
enum StyleCondition : uint16_t {
  kFirstRow = 0x0001,
  kLastRow = 0x0002,
  kFirstColumn = 0x0004,
  kLastColumn = 0x0008,
  kOddColumnBand = 0x0010,
  kEvenColumnBand = 0x0020,
  kOddRowBand = 0x0040,
  kEvenRowBand = 0x0080,
  kTopRight = 0x0100,
  kTopLeft = 0x0200,
  kBottomRight = 0x0400,
  kBottomLeft = 0x0800,
};

/// Those that hold in a cell, by the row's table look.
uint16_t conditionsOf(const RowDefinition& row, uint32_t rowIndex, uint32_t rowCount, uint32_t cellIndex,
                      uint32_t cellCount);

/// Lays a conditional part over `cells`, of which only the sides of a cell count: its outer borders hold at
/// the outer sides of the rows, columns or corner that it stands for, its inner ones between their cells.
void addConditionalPart(const StyleCells& part, uint16_t condition, const RowDefinition& row,
                        const CellPosition& position, StyleCells& cells);

}  // namespace pagerex

#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "flow/properties.h"
#include "flow/row_grid.h"

namespace pagerex {

/// Sides of cells, and of rows.
enum Side : uint8_t { kTop, kStart, kBottom, kEnd, kInsideRows, kInsideColumns };
constexpr size_t kCellSides = 4;
constexpr size_t kTableSides = 6;

/// What a row's list says of a cell. What it does not say is the row's or the table style's.
struct CellDefinition {
  Border borders[kCellSides];  ///< by Side
  uint8_t setBorders = 0;      ///< bit 1 << Side where `borders` holds, be it without a line
  uint8_t setPadding = 0;      ///< bit 1 << Side where `padding` holds
  uint8_t verticalAlignment = 0;
  uint8_t textFlow = 0;
  bool noWrap = false;
  bool fitText = false;
  bool setsShading = false;
  uint8_t widthKind = 0;  ///< as TableProperties::widthKind
  int16_t width = 0;
  int16_t padding[kCellSides] = {};  ///< by Side
  Shading shading;
};

/// What a table style, or one of its conditional parts, says of cells.
struct StyleCells {
  Border borders[kTableSides];  ///< by Side
  uint8_t setBorders = 0;       ///< bit 1 << Side where `borders` holds, be it without a line
  bool setsShading = false;
  bool setsVerticalAlignment = false;
  uint8_t verticalAlignment = 0;
  bool setsNoWrap = false;
  bool noWrap = false;
  Shading shading;
};

/// A row as the list at its end defines it, with what that says of the whole table.
struct RowDefinition {
  RowGrid grid;
  std::vector<CellDefinition> cells;  ///< grid.count of them
  RowProperties row;
  Alignment alignment = Alignment::kStart;
  bool isRightToLeft = false;
  bool isAutofit = false;
  bool floats = false;
  uint16_t style = 0x0FFF;  ///< istd; 0x0FFF for none
  uint16_t look = 0;        ///< which conditions of the style hold: TableLook
  int16_t left = 0;         ///< sprmTDxaLeft: of the text in the first cell
  int16_t gapHalf = 0;
  bool setsIndent = false;
  int16_t indent = 0;  ///< of the table; where it is not set, that of its first edge
  uint8_t widthKind = 0;
  int16_t width = 0;                 ///< preferred one of the table, by its kind
  Border borders[kTableSides];       ///< of the table
  uint8_t setBorders = 0;            ///< bit 1 << Side where the row's own list says the border
  int16_t padding[kCellSides] = {};  ///< of cells that have none of their own
  uint8_t setPadding = 0;
  int16_t cellSpacing = 0;
  uint8_t rowBandSize = 1, columnBandSize = 1;
  StyleCells styleCells;
  uint8_t shadingGeneration = 0;  ///< of the cells' shadings so far: a later one overrides
};

/// Bits of RowDefinition::look.
enum TableLook : uint16_t {
  kLookFirstRow = 0x0020,
  kLookLastRow = 0x0040,
  kLookFirstColumn = 0x0080,
  kLookLastColumn = 0x0100,
  kLookNoRowBands = 0x0200,
  kLookNoColumnBands = 0x0400,
};

/// Applies a list of table sprms to `row`.
void applyTableSprms(ByteView sprms, RowDefinition& row);

}  // namespace pagerex

#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "flow/properties.h"

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

/// Sides of cells and rows.
enum Side : uint8_t { kTop = 0, kStart = 1, kBottom = 2, kEnd = 3, kInsideRows = 4, kInsideColumns = 5 };

/// What a row's list says of a cell. What it does not say is the row's or the table style's.
struct CellDefinition {
  Border borders[4];       ///< by Side
  uint8_t ownBorders = 0;  ///< bit 1 << Side where `borders` holds, be it with no line
  uint8_t ownPadding = 0;  ///< bit 1 << Side where `padding` holds
  uint8_t verticalAlignment = 0;
  uint8_t textFlow = 0;
  bool noWrap = false;
  bool fitText = false;
  bool hasShading = false;
  uint8_t widthKind = 0;  ///< as TableProperties::widthKind
  uint16_t width = 0;
  int16_t padding[4] = {};  ///< by Side
  Shading shading;
};

/// A row as the list at its end defines it, with what it says of the whole table.
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
  int16_t left = 0;         ///< sprmTDxaLeft
  int16_t gapHalf = 0;
  bool hasIndent = false;
  int32_t indent = 0;  ///< of the table; where it is not set, that of its first edge
  uint8_t widthKind = 0;
  int32_t width = 0;
  Border borders[6];                  ///< of the table, by Side
  int16_t padding[4] = {0, 0, 0, 0};  ///< of cells that have none of their own, by Side
  int16_t cellSpacing = 0;
  uint8_t rowBandSize = 1, columnBandSize = 1;
  bool hasStyleShading = false;  ///< of cells that have none of their own
  Shading styleShading;
  uint8_t styleVerticalAlignment = 0;
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

void applyTableSprms(ByteView sprms, RowDefinition& row);

/// Which rows of the table a cell begins and ends in.
struct CellPosition {
  uint8_t cell = 0;      ///< in RowDefinition::cells
  uint8_t lastCell = 0;  ///< the last one that is merged into it
  bool isInFirstRow = false;
  bool isInLastRow = false;
};

/// What holds in a cell: its own borders, else those of the table by the cell's position, and likewise
/// shading and padding. columnSpan and rowSpan are left alone.
void resolveCell(const RowDefinition& row, const CellPosition& position, CellProperties& cell);

/// Which conditional parts of a table style hold in a cell: bits of sprmTCnf.
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
uint16_t conditionsOf(const RowDefinition& row, uint32_t rowIndex, uint32_t rowCount, uint32_t cellIndex,
                      uint32_t cellCount);

}  // namespace pagerex

#include "flow/table_cells.h"

#include <algorithm>

namespace pagerex {
namespace {

/// Which border of the table a cell's side lies on.
Side tableSideOf(Side side, const RowDefinition& row, const CellPosition& position) {
  switch (side) {
    case kTop:
      return position.isInFirstRow ? kTop : kInsideRows;
    case kBottom:
      return position.isInLastRow ? kBottom : kInsideRows;
    case kStart:
      return position.cell == 0 ? kStart : kInsideColumns;
    default:
      return position.lastCell + 1u >= row.grid.count ? kEnd : kInsideColumns;
  }
}

bool sets(uint8_t bits, Side side) {
  return (bits & 1 << side) != 0;
}

const Border& borderAt(Side side, const RowDefinition& row, const CellPosition& position,
                       const StyleCells& conditional) {
  const CellDefinition& cell = row.cells[side == kEnd ? position.lastCell : position.cell];
  if (sets(cell.setBorders, side)) return cell.borders[side];
  const Side tableSide = tableSideOf(side, row, position);
  if (sets(row.setBorders, tableSide)) return row.borders[tableSide];
  if (sets(conditional.setBorders, side)) return conditional.borders[side];
  if (sets(row.styleCells.setBorders, tableSide)) return row.styleCells.borders[tableSide];
  return row.borders[tableSide];
}

/// Where nothing is said, half the gap between columns lies at either side.
int16_t paddingAt(Side side, const RowDefinition& row, const CellDefinition& cell) {
  if (sets(cell.setPadding, side)) return cell.padding[side];
  if (sets(row.setPadding, side)) return row.padding[side];
  return side == kStart || side == kEnd ? row.gapHalf : int16_t{0};
}

const Shading& shadingOf(const RowDefinition& row, const CellDefinition& cell,
                         const StyleCells& conditional) {
  if (cell.setsShading) return cell.shading;
  return conditional.setsShading ? conditional.shading : row.styleCells.shading;
}

enum class Region : uint8_t { kRows, kColumns, kCorner };

Region regionOf(uint16_t condition) {
  if (condition & (kFirstRow | kLastRow | kOddRowBand | kEvenRowBand)) return Region::kRows;
  if (condition & (kFirstColumn | kLastColumn | kOddColumnBand | kEvenColumnBand)) return Region::kColumns;
  return Region::kCorner;
}

/// Of the part's borders the one for a cell's side. A region of rows has all cells between its upper and its
/// lower edge, one of columns all between its left and right one.
Side partSideOf(Side side, Region region, const RowDefinition& row, const CellPosition& position) {
  const bool isAcross = side == kTop || side == kBottom;
  const bool isOuter = region == Region::kCorner || (region == Region::kRows) == isAcross;
  return isOuter ? side : tableSideOf(side, row, position);
}

/// The band that a row or column lies in: 1 for odd ones, 2 for even ones.
unsigned bandOf(uint32_t index, bool hasFirst, uint8_t size) {
  const uint32_t place = index - (hasFirst ? 1 : 0);
  return place / std::max<uint8_t>(size, 1) % 2 + 1;
}

}  // namespace

void resolveCell(const RowDefinition& row, const CellPosition& position, const StyleCells& conditional,
                 CellProperties& cell) {
  if (position.lastCell >= row.cells.size() || position.cell > position.lastCell) return;
  const CellDefinition& own = row.cells[position.cell];
  cell.left = row.grid.edges[position.cell];
  cell.width = row.grid.edges[position.lastCell + 1] - cell.left;
  cell.verticalAlignment = own.verticalAlignment;
  if (own.verticalAlignment == 0 && row.styleCells.setsVerticalAlignment) {
    cell.verticalAlignment = row.styleCells.verticalAlignment;
  }
  if (own.verticalAlignment == 0 && conditional.setsVerticalAlignment) {
    cell.verticalAlignment = conditional.verticalAlignment;
  }
  cell.textFlow = own.textFlow;
  cell.noWrap = own.noWrap || (conditional.setsNoWrap ? conditional.noWrap : row.styleCells.noWrap);
  cell.top = borderAt(kTop, row, position, conditional);
  cell.start = borderAt(kStart, row, position, conditional);
  cell.bottom = borderAt(kBottom, row, position, conditional);
  cell.end = borderAt(kEnd, row, position, conditional);
  cell.shading = shadingOf(row, own, conditional);
  cell.paddingTop = paddingAt(kTop, row, own);
  cell.paddingStart = paddingAt(kStart, row, own);
  cell.paddingBottom = paddingAt(kBottom, row, own);
  cell.paddingEnd = paddingAt(kEnd, row, own);
}

uint16_t conditionsOf(const RowDefinition& row, uint32_t rowIndex, uint32_t rowCount, uint32_t cellIndex,
                      uint32_t cellCount) {
  const auto looks = [&row](TableLook look) { return (row.look & look) != 0; };
  const bool isFirstRow = looks(kLookFirstRow) && rowIndex == 0;
  const bool isLastRow = looks(kLookLastRow) && rowIndex + 1 == rowCount && !isFirstRow;
  const bool isFirstColumn = looks(kLookFirstColumn) && cellIndex == 0;
  const bool isLastColumn = looks(kLookLastColumn) && cellIndex + 1 == cellCount && !isFirstColumn;
  unsigned conditions = 0;
  if (isFirstRow) conditions |= kFirstRow;
  if (isLastRow) conditions |= kLastRow;
  if (isFirstColumn) conditions |= kFirstColumn;
  if (isLastColumn) conditions |= kLastColumn;
  if (!looks(kLookNoRowBands) && !isFirstRow && !isLastRow) {
    const unsigned band = bandOf(rowIndex, looks(kLookFirstRow), row.rowBandSize);
    conditions |= band == 1 ? kOddRowBand : kEvenRowBand;
  }
  if (!looks(kLookNoColumnBands) && !isFirstColumn && !isLastColumn) {
    const unsigned band = bandOf(cellIndex, looks(kLookFirstColumn), row.columnBandSize);
    conditions |= band == 1 ? kOddColumnBand : kEvenColumnBand;
  }
  if (isFirstRow && isFirstColumn) conditions |= kTopLeft;
  if (isFirstRow && isLastColumn) conditions |= kTopRight;
  if (isLastRow && isFirstColumn) conditions |= kBottomLeft;
  if (isLastRow && isLastColumn) conditions |= kBottomRight;
  return static_cast<uint16_t>(conditions);
}

void addConditionalPart(const StyleCells& part, uint16_t condition, const RowDefinition& row,
                        const CellPosition& position, StyleCells& cells) {
  const Region region = regionOf(condition);
  for (const Side side : {kTop, kStart, kBottom, kEnd}) {
    const Side partSide = partSideOf(side, region, row, position);
    if (!sets(part.setBorders, partSide)) continue;
    cells.borders[side] = part.borders[partSide];
    cells.setBorders |= static_cast<uint8_t>(1 << side);
  }
  if (part.setsShading) {
    cells.setsShading = true;
    cells.shading = part.shading;
  }
  if (part.setsVerticalAlignment) {
    cells.setsVerticalAlignment = true;
    cells.verticalAlignment = part.verticalAlignment;
  }
  if (part.setsNoWrap) {
    cells.setsNoWrap = true;
    cells.noWrap = part.noWrap;
  }
}

}  // namespace pagerex

#include "flow/table_sprms.h"

#include <algorithm>
#include <cstdlib>

#include "flow/sprm_walk.h"
#include "flow/word_colour.h"

namespace pagerex {
namespace {

constexpr size_t kCellRecordSize = 20;  ///< TC
constexpr uint8_t kNoBorder = 0xFF;
constexpr uint8_t kInTwips = 3;  ///< kind of a width

/// How an operand is applied.
enum class Rule : uint8_t {
  kFlag,        ///< a byte
  kFlagOfWord,  ///< 16 bits
  kByte,
  kWord,
  kJustification,      ///< logical
  kSideJustification,  ///< physical: left and right
  kHeight,
  kLook,
  kFloat,
  kWidth,
  kIndent,
  kTableBorders80,
  kTableBorders,
  kTablePadding,
  kTableSpacing,
  kCellShadings80,  ///< one for each cell
  kCellShadings,    ///< likewise, from the cell on that the row gives
  kRawShadings,     ///< likewise, without what the table style says
  kBorderColours,   ///< of the side that the row gives, one for each cell
  kBorderKinds,     ///< four for each cell
  kRangeBorders80,  ///< cells by the first one and the one behind the last
  kRangeBorders,
  kRangeShading80,
  kRangeShading,
  kRangeShadingOdd,  ///< every second cell
  kRangePadding,
  kRangeWidth,
  kRangeAlignment,
  kRangeTextFlow,
  kRangeFitText,
  kRangeNoWrap,
  kStyleShading,
  kStyleBorder,  ///< of the side that the row gives
  kStyleAlignment,
  kStyleNoWrap,
};

struct Row {
  uint16_t opcode;
  Rule rule;
  uint16_t place;  ///< offset of the property; a side or the first cell where the rule says so
};

#define PROPERTY(name) static_cast<uint16_t>(offsetof(RowDefinition, name))
constexpr Row kRows[] = {
    {0x5400, Rule::kSideJustification, 0},
    {0x9601, Rule::kWord, PROPERTY(left)},
    {0x9602, Rule::kWord, PROPERTY(gapHalf)},
    {0x3403, Rule::kFlag, PROPERTY(row.cantSplit)},
    {0x3404, Rule::kFlag, PROPERTY(row.isHeader)},
    {0xD605, Rule::kTableBorders80, 0},
    {0x9407, Rule::kHeight, 0},
    {0xD609, Rule::kCellShadings80, 0},
    {0x740A, Rule::kLook, 0},
    {0x560B, Rule::kFlagOfWord, PROPERTY(isRightToLeft)},
    {0xD60C, Rule::kCellShadings, 44},
    {0x360D, Rule::kFloat, 0},
    {0x940E, Rule::kFloat, 0},
    {0x940F, Rule::kFloat, 0},
    {0xD612, Rule::kCellShadings, 0},
    {0xD613, Rule::kTableBorders, 0},
    {0xF614, Rule::kWidth, 0},
    {0x3615, Rule::kFlag, PROPERTY(isAutofit)},
    {0xD616, Rule::kCellShadings, 22},
    {0xD61A, Rule::kBorderColours, kTop},
    {0xD61B, Rule::kBorderColours, kStart},
    {0xD61C, Rule::kBorderColours, kBottom},
    {0xD61D, Rule::kBorderColours, kEnd},
    {0xD620, Rule::kRangeBorders80, 0},
    {0x7627, Rule::kRangeShading80, 0},
    {0x7629, Rule::kRangeTextFlow, 0},
    {0xD62C, Rule::kRangeAlignment, 0},
    {0xD62D, Rule::kRangeShading, 0},
    {0xD62E, Rule::kRangeShadingOdd, 0},
    {0xD62F, Rule::kRangeBorders, 0},
    {0xD632, Rule::kRangePadding, 0},
    {0xD633, Rule::kTableSpacing, 0},
    {0xD634, Rule::kTablePadding, 0},
    {0xD635, Rule::kRangeWidth, 0},
    {0xF636, Rule::kRangeFitText, 0},
    {0xD639, Rule::kRangeNoWrap, 0},
    {0x563A, Rule::kWord, PROPERTY(style)},
    {0xD660, Rule::kStyleShading, 0},
    {0xF661, Rule::kIndent, 0},
    {0xD662, Rule::kBorderKinds, 0},
    {0x5664, Rule::kFlagOfWord, PROPERTY(isRightToLeft)},
    {0x3466, Rule::kFlag, PROPERTY(row.cantSplit)},
    {0xD670, Rule::kRawShadings, 0},
    {0xD671, Rule::kRawShadings, 22},
    {0xD672, Rule::kRawShadings, 44},
    {0x347C, Rule::kStyleAlignment, 0},
    {0x347D, Rule::kStyleNoWrap, 0},
    {0xD47F, Rule::kStyleBorder, kTop},
    {0xD680, Rule::kStyleBorder, kBottom},
    {0xD681, Rule::kStyleBorder, kStart},
    {0xD682, Rule::kStyleBorder, kEnd},
    {0xD683, Rule::kStyleBorder, kInsideRows},
    {0xD684, Rule::kStyleBorder, kInsideColumns},
    {0xD687, Rule::kStyleShading, 0},
    {0x3488, Rule::kByte, PROPERTY(rowBandSize)},
    {0x3489, Rule::kByte, PROPERTY(columnBandSize)},
    {0x548A, Rule::kJustification, 0},
};
#undef PROPERTY

constexpr auto kIndex = indexOfRows(kRows);

template <class T>
T& at(RowDefinition& row, const Row& rule) {
  return *reinterpret_cast<T*>(reinterpret_cast<uint8_t*>(&row) + rule.place);
}

Border orNone(const Border& border) {
  return border.kind == kNoBorder ? Border{} : border;
}

Shading shadingAt(ByteView shd, bool& isSet) {
  constexpr uint16_t kNil = 0xFFFF;
  isSet = shd.u16(8) != kNil;
  return shadingOf(shd);
}

/// A border of a cell's record: zero is not set, all ones is no line.
void setRecordBorder(ByteView brc, Side side, CellDefinition& cell) {
  if (brc.u32(0) == 0) return;
  cell.borders[side] = border80Of(brc);
  cell.setBorders |= static_cast<uint8_t>(1 << side);
}

void setFromRecord(ByteView record, CellDefinition& cell) {
  const unsigned flags = record.u16(0);
  cell.textFlow = flags >> 2 & 7;
  cell.verticalAlignment = flags >> 7 & 3;
  cell.widthKind = flags >> 9 & 7;
  cell.fitText = (flags & 0x1000) != 0;
  cell.noWrap = (flags & 0x2000) != 0;
  cell.width = record.i16(2);
  for (size_t side = 0; side < kCellSides; ++side) {
    setRecordBorder(record.part(4 + 4 * side, 4), static_cast<Side>(side), cell);
  }
}

void changeCells(const GridChange& change, ByteView operand, RowDefinition& row) {
  const auto first = row.cells.begin() + static_cast<std::ptrdiff_t>(change.first);
  const auto count = static_cast<std::ptrdiff_t>(change.count);
  if (change.kind == GridChange::kInserted) {
    row.cells.insert(first, change.count, CellDefinition());
  } else if (change.kind == GridChange::kDeleted) {
    row.cells.erase(first, first + count);
  } else if (change.kind == GridChange::kDefined) {
    row.cells.assign(change.count, CellDefinition());
    const ByteView records = cellRecordsOf(operand, change.count);
    for (size_t i = 0; i < change.count; ++i) {
      setFromRecord(records.part(kCellRecordSize * i, kCellRecordSize), row.cells[i]);
    }
  }
}

/// Calls `visit(cell)` for the cells that an operand begins with: the first one and the one behind the last.
template <class Visit>
void forRange(ByteView operand, RowDefinition& row, const Visit& visit, size_t step = 1) {
  const size_t limit = std::min<size_t>(operand.u8(1), row.cells.size());
  for (size_t i = operand.u8(0); i < limit; i += step) visit(row.cells[i]);
}

template <class T, class Visit>
void forSides(uint8_t sides, T& values, const Visit& visit) {
  for (size_t side = 0; side < kCellSides; ++side) {
    if (sides & 1 << side) visit(values[side]);
  }
}

void setTableBorder(Side side, const Border& border, RowDefinition& row) {
  row.borders[side] = orNone(border);
  row.setBorders |= static_cast<uint8_t>(1 << side);
}

void setTableBorders(ByteView operand, size_t size, Border (&read)(ByteView), RowDefinition& row) {
  for (size_t side = 0; side < kTableSides && operand.contains(side * size, size); ++side) {
    setTableBorder(static_cast<Side>(side), read(operand.part(side * size, size)), row);
  }
}

/// Shadings of cells come once for each generation of readers; the latest holds.
void setShadings(ByteView operand, size_t firstCell, Rule rule, RowDefinition& row) {
  const auto generation = static_cast<uint8_t>(rule);
  if (generation < row.shadingGeneration) return;
  row.shadingGeneration = generation;
  const size_t size = rule == Rule::kCellShadings80 ? 2 : 10;
  for (size_t at = 0, i = firstCell; i < row.cells.size() && operand.contains(at, size); ++i, at += size) {
    CellDefinition& cell = row.cells[i];
    const ByteView shd = operand.part(at, size);
    if (rule == Rule::kCellShadings80) {
      cell.shading = shading80Of(shd);
      cell.setsShading = shd.u16(0) != 0xFFFF;
    } else {
      cell.shading = shadingAt(shd, cell.setsShading);
    }
  }
}

void setBorderColours(ByteView operand, Side side, RowDefinition& row) {
  for (size_t i = 0; i < row.cells.size() && operand.contains(4 * i, 4); ++i) {
    row.cells[i].borders[side].colour = colourOf(operand.u32(4 * i));
  }
}

/// Kinds without what the table style says; 0xFF leaves a side to the style.
void setBorderKinds(ByteView operand, RowDefinition& row) {
  const size_t count = std::min(row.cells.size(), operand.size() / kCellSides);
  for (size_t i = 0; i < count * kCellSides; ++i) {
    CellDefinition& cell = row.cells[i / kCellSides];
    const auto bit = static_cast<uint8_t>(1 << i % kCellSides);
    const uint8_t kind = operand.u8(i);
    if (kind == kNoBorder) {
      cell.setBorders &= static_cast<uint8_t>(~bit);
    } else if (cell.setBorders & bit) {
      cell.borders[i % kCellSides].kind = kind;
    }
  }
}

/// The operand: cells, sides, border.
void setRangeBorders(ByteView operand, const Border& border, RowDefinition& row) {
  constexpr uint8_t kSides = 0x0F;
  const uint8_t sides = operand.u8(2) & kSides;
  forRange(operand, row, [&](CellDefinition& cell) {
    forSides(sides, cell.borders, [&border](Border& own) { own = orNone(border); });
    cell.setBorders |= sides;
  });
}

void setRangeShading(ByteView operand, const Shading& shading, bool isSet, size_t step, RowDefinition& row) {
  forRange(
      operand, row,
      [&](CellDefinition& cell) {
        cell.shading = shading;
        cell.setsShading = isSet;
      },
      step);
}

/// The operand: cells, sides, kind of the width, width.
void setPadding(ByteView operand, int16_t (&padding)[kCellSides], uint8_t& set) {
  const uint8_t sides = operand.u8(2) & 0x0F;
  const bool isLength = operand.u8(3) == kInTwips;
  forSides(sides, padding, [&](int16_t& value) { value = isLength ? operand.i16(4) : int16_t{0}; });
  set = static_cast<uint8_t>(isLength ? set | sides : set & ~sides);
}

void applyToRange(Rule rule, ByteView operand, RowDefinition& row) {
  switch (rule) {
    case Rule::kRangeBorders80:
      return setRangeBorders(operand, border80Of(operand.part(3)), row);
    case Rule::kRangeBorders:
      return setRangeBorders(operand, borderOf(operand.part(3)), row);
    case Rule::kRangeShading80:
      return setRangeShading(operand, shading80Of(operand.part(2)), operand.u16(2) != 0xFFFF, 1, row);
    case Rule::kRangeShading:
    case Rule::kRangeShadingOdd: {
      bool isSet = false;
      const Shading shading = shadingAt(operand.part(2), isSet);
      return setRangeShading(operand, shading, isSet, rule == Rule::kRangeShading ? 1 : 2, row);
    }
    case Rule::kRangePadding:
      return forRange(operand, row,
                      [&](CellDefinition& cell) { setPadding(operand, cell.padding, cell.setPadding); });
    case Rule::kRangeWidth:
      return forRange(operand, row, [&](CellDefinition& cell) {
        cell.widthKind = operand.u8(2);
        cell.width = operand.i16(3);
      });
    case Rule::kRangeAlignment:
      return forRange(operand, row,
                      [&](CellDefinition& cell) { cell.verticalAlignment = operand.u8(2) & 3; });
    case Rule::kRangeTextFlow:
      return forRange(operand, row, [&](CellDefinition& cell) { cell.textFlow = operand.u8(2) & 7; });
    case Rule::kRangeFitText:
      return forRange(operand, row, [&](CellDefinition& cell) { cell.fitText = operand.u8(2) != 0; });
    default:
      return forRange(operand, row, [&](CellDefinition& cell) { cell.noWrap = operand.u8(2) != 0; });
  }
}

void applyToStyle(const Row& rule, ByteView operand, StyleCells& cells) {
  if (rule.rule == Rule::kStyleShading) {
    cells.shading = shadingAt(operand, cells.setsShading);
  } else if (rule.rule == Rule::kStyleBorder) {
    cells.borders[rule.place] = orNone(borderOf(operand));
    cells.setBorders |= static_cast<uint8_t>(1 << rule.place);
  } else if (rule.rule == Rule::kStyleAlignment) {
    cells.setsVerticalAlignment = true;
    cells.verticalAlignment = operand.u8(0) & 3;
  } else {
    cells.setsNoWrap = true;
    cells.noWrap = operand.u8(0) != 0;
  }
}

void applyToTable(const Row& rule, ByteView operand, RowDefinition& row) {
  switch (rule.rule) {
    case Rule::kHeight:
      row.row.isExactHeight = operand.i16(0) < 0;
      row.row.height = static_cast<int16_t>(std::min(std::abs(int{operand.i16(0)}), 0x7FFF));
      return;
    case Rule::kLook:
      row.look = operand.u16(2);
      return;
    case Rule::kFloat:
      row.floats |= operand.u8(0) != 0 || operand.u8(1) != 0;
      return;
    case Rule::kWidth:
      row.widthKind = operand.u8(0);
      row.width = operand.i16(1);
      return;
    case Rule::kIndent:
      row.setsIndent = operand.u8(0) == kInTwips;
      row.indent = operand.i16(1);
      return;
    case Rule::kTableBorders80:
      return setTableBorders(operand, 4, border80Of, row);
    case Rule::kTableBorders:
      return setTableBorders(operand, 8, borderOf, row);
    case Rule::kTablePadding:
      return setPadding(operand, row.padding, row.setPadding);
    default:  // kTableSpacing
      row.cellSpacing = operand.u8(3) == kInTwips ? operand.i16(4) : int16_t{0};
      return;
  }
}

void apply(const Row& rule, ByteView operand, RowDefinition& row) {
  switch (rule.rule) {
    case Rule::kFlag:
      at<bool>(row, rule) = operand.u8(0) != 0;
      return;
    case Rule::kFlagOfWord:
      at<bool>(row, rule) = operand.u16(0) != 0;
      return;
    case Rule::kByte:
      at<uint8_t>(row, rule) = operand.u8(0);
      return;
    case Rule::kWord:
      at<uint16_t>(row, rule) = operand.u16(0);
      return;
    case Rule::kCellShadings80:
    case Rule::kCellShadings:
    case Rule::kRawShadings:
      return setShadings(operand, rule.place, rule.rule, row);
    case Rule::kBorderColours:
      return setBorderColours(operand, static_cast<Side>(rule.place), row);
    case Rule::kBorderKinds:
      return setBorderKinds(operand, row);
    default:
      if (rule.rule >= Rule::kStyleShading) return applyToStyle(rule, operand, row.styleCells);
      if (rule.rule >= Rule::kRangeBorders80) return applyToRange(rule.rule, operand, row);
      return applyToTable(rule, operand, row);
  }
}

/// A row's justification may stand in front of what turns it around.
void settleAlignment(uint16_t opcode, uint16_t code, RowDefinition& row) {
  constexpr uint16_t kSideJustification = 0x5400;
  constexpr Alignment kAlignments[] = {Alignment::kStart, Alignment::kCentre, Alignment::kEnd};
  if (code >= std::size(kAlignments)) return;
  const bool isMirrored = opcode == kSideJustification && row.isRightToLeft;
  row.alignment = kAlignments[isMirrored ? 2 - code : code];
}

}  // namespace

void applyTableSprms(ByteView sprms, RowDefinition& row) {
  uint16_t justification = 0, justificationCode = 0;
  forEachSprm(sprms, [&](uint16_t opcode, ByteView operand) {
    const GridChange change = applyToGrid(opcode, operand, row.grid);
    if (change.kind != GridChange::kNone) return changeCells(change, operand, row);
    const Row* const rule = findRow(kRows, kIndex, opcode);
    if (!rule) return;
    if (rule->rule == Rule::kSideJustification || rule->rule == Rule::kJustification) {
      justification = opcode;
      justificationCode = operand.u16(0);
    } else {
      apply(*rule, operand, row);
    }
  });
  if (justification != 0) settleAlignment(justification, justificationCode, row);
}

}  // namespace pagerex

#pragma once

#include <cstdint>
#include <optional>

#include "base/byte_view.h"
#include "story/cell_padding.h"
#include "wordreader/mso_word.h"
#include "wordreader/sprm_list.h"

namespace pagerex {

/// The operand of sprmTDefTable: how a row is cut into cells. A byte count of cells, one edge more than
/// that, in twips from left to right, and a record for each cell, of which the last ones may be missing.
class KRowDefinition {
 public:
  KRowDefinition() = default;
  explicit KRowDefinition(ByteView operand) : operand_(operand) {}

  ByteView bytes() const { return operand_; }
  uint32_t CellCount() const { return operand_.u8(0); }
  /// The edge `i`, 0 to `CellCount()`.
  int16_t Edge(uint32_t i) const { return operand_.i16(1 + size_t{i} * 2); }
  uint32_t CellRecordCount() const;
  /// The record of a cell; null if the row has none for it.
  const mso_word::TC* CellRecord(uint32_t cell) const;

 private:
  size_t CellRecordsOffset() const { return 3 + size_t{CellCount()} * 2; }

  ByteView operand_;
};

/// Six borders of a table, one behind the other in the order of `TableBorder`; absent if the row has none.
using KTableBorders = std::optional<ByteView>;

enum TableBorder : unsigned {
  TABLE_TOP = 0,
  TABLE_LEFT = 1,
  TABLE_BOTTOM = 2,
  TABLE_RIGHT = 3,
  TABLE_INSIDE_HORIZONTAL = 4,
  TABLE_INSIDE_VERTICAL = 5,
};

/// All that one row-end paragraph says of its row. Points into the paragraph's sprms.
struct TABLE_ROW {
  KRowDefinition definition;
  KTableBorders borders;    ///< `BRC`, sprmTTableBorders80
  KTableBorders bordersEx;  ///< `BRCEX`, sprmTTableBorders
  PADDING padding;          ///< sprmTCellPaddingDefault
  ByteView shadings;        ///< `SHD`, sprmTDefTableShd80
  ByteView shadingsEx;      ///< `SHDEX`, sprmTDefTableShd
  uint16_t height = 0;      ///< sprmTDyaRowHeight: twips, a signed value; negative for an exact height

  void Clear();
};

/// What holds for a whole table: the last row that says it decides. Lengths in twips.
struct TableStyle {
  int32_t indent = 0;
  int32_t fromTextLeft = 0;
  int32_t fromTextRight = 0;
  int32_t fromTextTop = 0;
  int32_t fromTextBottom = 0;
  int32_t justification = 0;  ///< 0 left, 1 centre, 2 right
  int32_t cellSpacing = 0;
  KTableBorders bordersEx;  ///< both are those of the last row, which may have none
  KTableBorders borders;

  void Clear() { *this = TableStyle(); }
};

/// The words of `TableStyle`, as bits: which of them a row decided.
enum TableStyleWord : unsigned {
  STYLE_INDENT,
  STYLE_FROM_TEXT_LEFT,
  STYLE_FROM_TEXT_RIGHT,
  STYLE_FROM_TEXT_TOP,
  STYLE_FROM_TEXT_BOTTOM,
  STYLE_JUSTIFICATION,
  STYLE_CELL_SPACING,
  STYLE_BORDERS,
  kStyleWords,
};

/// Reads the row out of a list that holds sprmTDefTable, and lays what it says of the whole table over
/// `style`. `leftMargin` is that of the section, twips. Returns the words of `style` that the row decided, as
/// a set of bits `1 << TableStyleWord`.
unsigned ReadTableRow(const KDWSprmList& sprms, int32_t leftMargin, TABLE_ROW& row, TableStyle& style);

}  // namespace pagerex

#pragma once

#include <cstdint>
#include <unordered_map>

#include "flow/table_cells.h"
#include "flow/table_sprms.h"
#include "wordreader/style_table.h"

namespace pagerex {

/// Rows and cells with what their table style says. The style table must stay as long.
class TableStyles {
 public:
  explicit TableStyles(const StyleTable& styles) : styles_(styles) {}

  /// A row by the list at its end and that of its piece; `row` is overwritten. Its `style` is kNoStyle if the
  /// document has no such style.
  void Row(ByteView sprms, ByteView pieceSprms, RowDefinition& row) const;
  /// Whether what a style says depends on the row and the column.
  bool HasConditions(uint16_t istd);
  /// What holds in a cell where these conditions do. columnSpan and rowSpan are left alone.
  void Cell(const RowDefinition& row, const CellPosition& position, uint16_t conditions,
            CellProperties& cell);

 private:
  const StyleCells& ConditionalPart(uint16_t istd, uint16_t condition);

  const StyleTable& styles_;
  std::unordered_map<uint16_t, bool> hasConditions_;  ///< by style
  std::unordered_map<uint32_t, StyleCells> parts_;    ///< by style and condition
};

}  // namespace pagerex

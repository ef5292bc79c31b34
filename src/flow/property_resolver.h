#pragma once

#include <cstdint>
#include <deque>
#include <unordered_map>
#include <vector>

#include "base/byte_view.h"
#include "flow/properties.h"
#include "flow/table_sprms.h"
#include "wordreader/style_table.h"

namespace pagerex {

/// What the resolver asks of the lists.
class ListLevels {
 public:
  ListLevels() = default;
  ListLevels(const ListLevels&) = delete;
  ListLevels& operator=(const ListLevels&) = delete;
  virtual ~ListLevels() = default;

  /// The paragraph sprms of a list's level (0 to 8), overrides included; empty for none. The bytes stay as
  /// long as the resolver. `ilfo` is from 1.
  virtual ByteView ParagraphSprms(uint16_t ilfo, uint8_t level) = 0;
};

/// The table style that a paragraph stands in, and which of its conditional parts hold there.
struct TableStylePlace {
  uint16_t istd = kNoStyle;
  uint16_t conditions = 0;  ///< StyleCondition bits

  friend bool operator==(const TableStylePlace&, const TableStylePlace&) = default;
};

/// Puts properties together: document defaults, table style, paragraph style, list level, character style,
/// and what stands at the paragraph or the run. All lists that it is given must stay as long as the resolver,
/// and so must the style table.
///
/// A result stays until MayForget() is called; equal properties need not have one address, but the same lists
/// in the same place do.
class PropertyResolver {
 public:
  PropertyResolver(const StyleTable& styles, ListLevels* lists);

  /// `istd` and `sprms` as they stand in the paragraph's PAPX (a huge one already exchanged), `pieceSprms`
  /// those of its piece. `style` of the result is the style that holds, which the runs' calls want.
  const ParagraphProperties& Paragraph(uint16_t istd, ByteView sprms, ByteView pieceSprms,
                                       const TableStylePlace& place);
  /// `istd` is the paragraph's style.
  const RunProperties& Run(ByteView sprms, ByteView pieceSprms, uint16_t istd, const TableStylePlace& place);
  /// Text of a paragraph style without anything of its own.
  const RunProperties& ParagraphStyleRun(uint16_t istd) { return Run({}, {}, istd, {}); }
  /// A list item's label: the paragraph mark's properties, and over them those of the list level.
  const RunProperties& Label(ByteView markSprms, ByteView pieceSprms, ByteView levelSprms, uint16_t istd,
                             const TableStylePlace& place);

  /// A row by the list at its end, with what its table style says of all cells; `row` is overwritten.
  void Row(ByteView sprms, ByteView pieceSprms, RowDefinition& row) const;
  /// Lays the conditional parts of the row's table style under what the row says of itself, for one cell.
  void Cell(const RowDefinition& row, const CellPosition& position, uint16_t conditions,
            CellProperties& cell) const;

  /// Between paragraphs outside of tables: nobody holds a result any more. Forgets them all when they are
  /// many.
  void MayForget();

 private:
  struct Key {
    ByteView first, second, third;
    uint16_t istd;
    TableStylePlace place;
  };
};

}  // namespace pagerex

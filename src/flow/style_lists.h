#pragma once

#include <cstdint>

#include "flow/sprm_walk.h"
#include "flow/table_cells.h"
#include "wordreader/style_table.h"

namespace pagerex {

/// Which lists of a style: StyleTable::Papx, Chpx or Tapx.
using StyleGroup = ByteView (StyleTable::*)(uint16_t) const;

/// Bytes that the lists of a style and its bases may have where they are applied anew for each place: far
/// more than those of Word.
constexpr size_t kLongestStyleLists = 8192;

inline bool hasShortLists(const StyleTable& styles, uint16_t istd, StyleGroup group) {
  size_t size = 0;
  styles.ForEachOfChain(istd, [&](uint16_t style) { size += (styles.*group)(style).size(); });
  return size <= kLongestStyleLists;
}

/// In the order in which the conditional parts of a table style override each other.
constexpr uint16_t kConditionsInOrder[] = {
    kOddColumnBand, kEvenColumnBand, kOddRowBand, kEvenRowBand, kFirstRow,   kLastRow,
    kFirstColumn,   kLastColumn,     kTopLeft,    kTopRight,    kBottomLeft, kBottomRight,
};

/// Calls `visit(list)` for what a table style and its bases say under one condition: it stands in the
/// operands of a sprm of its own, behind the condition.
template <class Visit>
void forConditionalLists(const StyleTable& styles, uint16_t istd, StyleGroup group, uint16_t conditionalSprm,
                         uint16_t condition, const Visit& visit) {
  styles.ForEachOfChain(istd, [&](uint16_t style) {
    forEachSprm((styles.*group)(style), [&](uint16_t opcode, ByteView operand) {
      if (opcode == conditionalSprm && operand.u16(0) == condition) visit(operand.part(2));
    });
  });
}

}  // namespace pagerex

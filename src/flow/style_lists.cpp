#include "flow/style_lists.h"

#include "flow/sprm_walk.h"
#include "flow/table_cells.h"

namespace pagerex {

const uint16_t kConditionsInOrder[12] = {
    kOddColumnBand, kEvenColumnBand, kOddRowBand, kEvenRowBand, kFirstRow,   kLastRow,
    kFirstColumn,   kLastColumn,     kTopLeft,    kTopRight,    kBottomLeft, kBottomRight,
};

bool hasShortLists(const StyleTable& styles, uint16_t istd, StyleGroup group) {
  constexpr size_t kMostBytes = 8192;
  size_t size = 0;
  for (const uint16_t style : styles.Chain(istd)) size += (styles.*group)(style).size();
  return size <= kMostBytes;
}

bool hasConditions(const StyleTable& styles, uint16_t istd) {
  bool isFound = false;
  for (const StyleGroup group : {&StyleTable::Papx, &StyleTable::Chpx, &StyleTable::Tapx}) {
    if (!hasShortLists(styles, istd, group)) continue;
    for (const uint16_t style : styles.Chain(istd)) {
      forEachSprm((styles.*group)(style), [&isFound](uint16_t opcode, ByteView) {
        isFound |= opcode == kParagraphCondition || opcode == kRunCondition || opcode == kTableCondition;
      });
    }
  }
  return isFound;
}

void addConditionalLists(const StyleTable& styles, uint16_t istd, StyleGroup group, uint16_t conditionalSprm,
                         uint16_t condition, std::vector<ByteView>& lists) {
  for (const uint16_t style : styles.Chain(istd)) {
    forEachSprm((styles.*group)(style), [&](uint16_t opcode, ByteView operand) {
      if (opcode == conditionalSprm && operand.u16(0) == condition) lists.push_back(operand.part(2));
    });
  }
}

std::vector<ByteView> tableStyleLists(const StyleTable& styles, const TableStylePlace& place,
                                      StyleGroup group, uint16_t conditionalSprm) {
  std::vector<ByteView> lists;
  if (!hasShortLists(styles, place.istd, group)) return lists;
  for (const uint16_t style : styles.Chain(place.istd)) lists.push_back((styles.*group)(style));
  for (const uint16_t condition : kConditionsInOrder) {
    if (place.conditions & condition) {
      addConditionalLists(styles, place.istd, group, conditionalSprm, condition, lists);
    }
  }
  return lists;
}

}  // namespace pagerex

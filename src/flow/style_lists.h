#pragma once

#include <cstdint>
#include <vector>

#include "flow/property_memo.h"
#include "wordreader/style_table.h"

namespace pagerex {

/// Which lists of a style: StyleTable::Papx, Chpx or Tapx.
using StyleGroup = ByteView (StyleTable::*)(uint16_t) const;

/// What a list of a table style says under conditions stands in the operands of one of these.
constexpr uint16_t kParagraphCondition = 0xC666;  ///< sprmPCnf
constexpr uint16_t kRunCondition = 0xCA85;        ///< sprmCCnf
constexpr uint16_t kTableCondition = 0xD66A;      ///< sprmTCnf

/// Whether the lists of a style and its bases are short enough to be applied anew for each place where the
/// style is used. Those of Word are.
bool hasShortLists(const StyleTable& styles, uint16_t istd, StyleGroup group);

/// Whether a table style or one of its bases says anything under conditions, in lists that
/// are short.
bool hasConditions(const StyleTable& styles, uint16_t istd);

/// In the order in which the conditional parts of a table style override each other.
extern const uint16_t kConditionsInOrder[12];

/// What a table style and its bases say under one condition. It stands in the operands of a sprm of its own,
/// behind the condition.
void addConditionalLists(const StyleTable& styles, uint16_t istd, StyleGroup group, uint16_t conditionalSprm,
                         uint16_t condition, std::vector<ByteView>& lists);

/// What a table style says for all its cells, then what it says under the conditions that hold; none for
/// lists that are not short.
std::vector<ByteView> tableStyleLists(const StyleTable& styles, const TableStylePlace& place,
                                      StyleGroup group, uint16_t conditionalSprm);

}  // namespace pagerex

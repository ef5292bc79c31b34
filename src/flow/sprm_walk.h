#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/byte_view.h"
#include "wordreader/sprm_list.h"

namespace pagerex {

/// Calls `visit(opcode, operand)` for each sprm of a list.
template <class Visit>
void forEachSprm(ByteView sprms, const Visit& visit) {
  const KDWSprmList list(sprms);
  KDWSprmList::Enumerator all(list);
  for (KDWSprm sprm; all.Next(&sprm) == Status::kOk;) visit(sprm.GetOpcode(), sprm.GetArgument());
}

constexpr uint8_t kNoRow = 0xFF;

/// The rows of a sprm table by the low byte of their opcodes, which differs for all of them.
template <class Row, size_t N>
constexpr std::array<uint8_t, 256> indexOfRows(const Row (&rows)[N]) {
  static_assert(N < kNoRow);
  std::array<uint8_t, 256> index{};
  index.fill(kNoRow);
  for (size_t i = 0; i < N; ++i) {
    uint8_t& place = index[rows[i].opcode & 0xFF];
    if (place != kNoRow) throw "two sprms share a low byte";
    place = static_cast<uint8_t>(i);
  }
  return index;
}

/// Null if the sprm is not in the table.
template <class Row, size_t N>
const Row* findRow(const Row (&rows)[N], const std::array<uint8_t, 256>& index, uint16_t opcode) {
  const uint8_t place = index[opcode & 0xFF];
  return place != kNoRow && rows[place].opcode == opcode ? &rows[place] : nullptr;
}

}  // namespace pagerex

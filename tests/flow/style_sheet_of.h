#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "support/word_tables.h"
#include "wordreader/style_table.h"

namespace pagerex {

/// A style table with the bytes that it was read from.
struct SheetOfStyles {
  explicit SheetOfStyles(const std::vector<std::optional<support::Style>>& styles,
                         const support::StyleSheetHeader& header = {})
      : bytes(support::styleSheetTable(styles, header)) {
    table.Read(ByteView(bytes.data(), bytes.size()), nullptr);
  }
  SheetOfStyles(const SheetOfStyles&) = delete;
  SheetOfStyles& operator=(const SheetOfStyles&) = delete;

  support::Bytes bytes;
  StyleTable table;
};

/// A part of a table style that holds under a condition: in its tapx 0xD66A, papx 0xC666, chpx 0xCA85.
inline support::Bytes conditional(uint16_t opcode, uint16_t condition, const support::Sprms& sprms) {
  return support::sprm(opcode, support::ByteWriter().u16(condition).bytes(sprms.bytes()).take());
}

}  // namespace pagerex

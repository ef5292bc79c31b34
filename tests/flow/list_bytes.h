#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/byte_view.h"

namespace pagerex {

/// Lists as they lie in the table stream, for tests.
using Bytes = std::vector<uint8_t>;

inline void append(Bytes& bytes, uint64_t value, unsigned size) {
  for (unsigned i = 0; i < size; ++i) bytes.push_back(static_cast<uint8_t>(value >> 8 * i));
}

inline void append(Bytes& bytes, const Bytes& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

struct TestLevel {
  std::u16string_view text;
  uint8_t nfc = 0;
  uint32_t start = 1;
  uint8_t flags = 0;  ///< 1 centre, 4 legal, 8 with `restartLimit`
  uint8_t restartLimit = 0;
  uint8_t follow = 0;
  Bytes chpx = {};
  Bytes papx = {};

  Bytes bytes() const {
    Bytes out;
    append(out, start, 4);
    append(out, nfc, 1);
    append(out, flags, 1);
    std::array<uint8_t, 9> places{};
    for (size_t i = 0, n = 0; i < text.size() && n < places.size(); ++i) {
      if (text[i] < 9) places[n++] = static_cast<uint8_t>(i + 1);
    }
    out.insert(out.end(), places.begin(), places.end());
    append(out, follow, 1);
    append(out, 0, 8);
    append(out, chpx.size(), 1);
    append(out, papx.size(), 1);
    append(out, restartLimit, 1);
    append(out, 0, 1);
    append(out, papx);
    append(out, chpx);
    append(out, text.size(), 2);
    for (const char16_t c : text) append(out, c, 2);
    return out;
  }
};

/// With one level it is a simple list; else levels that are missing have no text.
struct TestList {
  int32_t lsid;
  std::vector<TestLevel> levels;
  std::vector<uint16_t> styles = {};
};

struct TestOverride {
  uint8_t level;
  int32_t start = -1;  ///< none if negative
  std::vector<TestLevel> format = {};
};

struct TestUse {
  int32_t lsid;
  std::vector<TestOverride> overrides = {};
};

struct TestLists {
  Bytes definitions, levels, uses;

  ByteView definitionsView() const { return {definitions.data(), definitions.size()}; }
  ByteView levelsView() const { return {levels.data(), levels.size()}; }
  ByteView usesView() const { return {uses.data(), uses.size()}; }
};

inline void appendList(const TestList& list, TestLists& out) {
  const bool isSimple = list.levels.size() == 1;
  append(out.definitions, static_cast<uint32_t>(list.lsid), 4);
  append(out.definitions, 0, 4);
  for (size_t i = 0; i < 9; ++i) append(out.definitions, i < list.styles.size() ? list.styles[i] : 0xFFF, 2);
  append(out.definitions, isSimple ? 1 : 0, 1);
  append(out.definitions, 0, 1);
  for (size_t i = 0; i < (isSimple ? 1 : 9); ++i) {
    append(out.levels, (i < list.levels.size() ? list.levels[i] : TestLevel{}).bytes());
  }
}

inline void appendOverrides(const TestUse& use, Bytes& out) {
  append(out, 0xFFFFFFFF, 4);
  for (const TestOverride& entry : use.overrides) {
    append(out, entry.start < 0 ? 0 : static_cast<uint32_t>(entry.start), 4);
    append(out, entry.level | (entry.start < 0 ? 0u : 0x10u) | (entry.format.empty() ? 0u : 0x20u), 4);
    for (const TestLevel& level : entry.format) append(out, level.bytes());
  }
}

inline TestLists listBytes(const std::vector<TestList>& lists, const std::vector<TestUse>& uses) {
  TestLists out;
  append(out.definitions, lists.size(), 2);
  for (const TestList& list : lists) appendList(list, out);
  append(out.uses, uses.size(), 4);
  for (const TestUse& use : uses) {
    append(out.uses, static_cast<uint32_t>(use.lsid), 4);
    append(out.uses, 0, 8);
    append(out.uses, use.overrides.size(), 4);
  }
  for (const TestUse& use : uses) appendOverrides(use, out.uses);
  return out;
}

}  // namespace pagerex

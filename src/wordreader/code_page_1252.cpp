#include "wordreader/code_page_1252.h"

#include <array>
#include <cstdint>

namespace {

// The codes 0x80 to 0x9F; all others are their own character.
constexpr std::array<uint16_t, 32> kFrom80 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98
};

constexpr std::array<uint16_t, 256> kCharacters = [] {
  std::array<uint16_t, 256> table = {};
  for (unsigned code = 0; code < table.size(); ++code) table[code] = static_cast<uint16_t>(code);
  for (unsigned i = 0; i < kFrom80.size(); ++i) table[0x80 + i] = kFrom80[i];
  return table;
}();

}  // namespace

void MsoCP1252ToWcs(const unsigned char* text, unsigned int count, unsigned short* out) {
  for (unsigned int i = 0; i < count; ++i) out[i] = kCharacters[text[i]];
}

#include "pictures/grid_number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace pagerex {

void appendWhole(std::string& out, int64_t value) {
  char digits[24];
  out.append(digits, std::to_chars(digits, digits + sizeof(digits), value).ptr);
}

void appendNumber(std::string& out, double value) {
  constexpr double kMost = 1e12;
  constexpr int kDecimals = 4;
  if (!(value > -kMost && value < kMost)) value = 0;
  uint64_t scaled = static_cast<uint64_t>(std::llround(std::fabs(value) * 10000));
  if (value < 0 && scaled != 0) out += '-';
  int decimals = kDecimals;
  while (decimals > 0 && scaled % 10 == 0) {
    scaled /= 10;
    --decimals;
  }
  char digits[24];
  const auto count = static_cast<int>(std::to_chars(digits, digits + sizeof(digits), scaled).ptr - digits);
  const std::string_view all(digits, static_cast<size_t>(count));
  if (decimals == 0) {
    out += all;
    return;
  }
  const auto whole = static_cast<size_t>(std::max(count - decimals, 0));
  out.append(all.substr(0, whole)).append(1, '.');
  if (count < decimals) out.append(static_cast<size_t>(decimals - count), '0');
  out += all.substr(whole);
}

}  // namespace pagerex

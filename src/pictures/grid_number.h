#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

namespace pagerex {

/// A coordinate as a whole number. What is no number is 0; what is far away stays at +-4,000,000, where no
/// browser's arithmetic ends.
inline int32_t wholeNumber(double value) {
  constexpr int32_t kFar = 4'000'000;
  if (value != value) return 0;
  // Above zero, where what is cut off is what rounds down. Halves go up, those below zero too.
  const double raised = std::min(std::max(value + (kFar + 0.5), 0.0), 2.0 * kFar);
  return static_cast<int32_t>(raised) - kFar;
}

/// In decimal digits.
void appendWhole(std::string& out, int64_t value);

/// With up to 4 decimals, none of them a 0 at the end.
void appendNumber(std::string& out, double value);

}  // namespace pagerex

#pragma once

#include <cstdint>
#include <string>

namespace pagerex {

/// A coordinate as a whole number. What is no number is 0; what is far away stays at +-4,000,000, where no
/// browser's arithmetic ends.
inline int32_t wholeNumber(double value) {
  constexpr double kFar = 4e6;
  if (!(value > -kFar)) return value <= -kFar ? static_cast<int32_t>(-kFar) : 0;
  if (value > kFar) return static_cast<int32_t>(kFar);
  // Halves go up, below zero too.
  const double raised = value + 0.5;
  const auto whole = static_cast<int32_t>(raised);
  return whole - (whole > raised ? 1 : 0);
}

/// In decimal digits.
void appendWhole(std::string& out, int64_t value);

/// With up to 4 decimals, none of them a 0 at the end.
void appendNumber(std::string& out, double value);

}  // namespace pagerex

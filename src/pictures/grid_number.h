#pragma once

#include <cstdint>
#include <string>

namespace pagerex {

/// A coordinate as a whole number. What is no number is 0; what is far away stays at +-4,000,000, where no
/// browser's arithmetic ends.
int64_t wholeNumber(double value);

/// In decimal digits.
void appendWhole(std::string& out, int64_t value);

/// With up to 4 decimals, none of them a 0 at the end.
void appendNumber(std::string& out, double value);

}  // namespace pagerex

#pragma once

#include <string>
#include <string_view>

namespace pagerex {

/// An EQ field as one line in the order of reading: fractions as "a/b", roots as "√(x)", what stands above
/// other text (ruby) in parentheses behind it. Brackets nest 32 deep; what lies deeper is taken as text.
std::u16string equationText(std::u16string_view code);

}  // namespace pagerex

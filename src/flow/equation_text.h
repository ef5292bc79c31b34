#pragma once

#include <string>
#include <string_view>

namespace pagerex {

/// An EQ field as one line in the order of reading: fractions as "a/b", roots as "√(x)", what stands above
/// other text (ruby) in parentheses behind it. Brackets nest 32 deep; what lies deeper is taken as text.
std::u16string equationText(std::u16string_view code);

/// What stands above other text, where an EQ field is nothing else: both apart.
struct RubyText {
  std::u16string base, above;
};
/// The same, and `ruby` where it is one. Its parts stay empty for other fields.
std::u16string equationText(std::u16string_view code, RubyText& ruby);

}  // namespace pagerex

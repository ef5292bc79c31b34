#pragma once

#include <cstddef>
#include <string_view>

namespace pagerex {

/// Place of the first character that may end a paragraph: 7, 12 or 13; the size for none.
size_t findParagraphMark(std::u16string_view text);

/// Place of the first control character (below 32); the size for none.
size_t findControl(std::u16string_view text);

}  // namespace pagerex

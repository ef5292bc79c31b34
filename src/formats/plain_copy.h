#pragma once

#include <cstddef>

namespace pagerex {

/// Copies ASCII characters as bytes up to the first one that may mean something in Markdown within a line, or
/// is none, and returns their count, at most `n`. All of `n` bytes may be written to. A "!" counts as plain:
/// it means something only as the last character.
size_t copyPlainMarkdown(const char16_t* text, size_t n, char* out);

/// The same for what means something in HTML.
size_t copyPlainHtml(const char16_t* text, size_t n, char* out);

/// The same for what means something in text or an attribute's double quotes; U+007F is none as well.
size_t copyPlainPage(const char16_t* text, size_t n, char* out);

}  // namespace pagerex

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/byte_view.h"

namespace pagerex {

/// Appends a Unicode character; one that cannot be appends nothing.
inline void appendCharacter(char32_t character, std::u16string& out) {
  if (character < 0x10000) {
    if (character < 0xD800 || character > 0xDFFF) out += static_cast<char16_t>(character);
  } else if (character <= 0x10FFFF) {
    out += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
    out += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
  }
}

/// Text of the file; a last odd byte is left out.
inline std::u16string utf16Of(ByteView bytes) {
  std::u16string text(bytes.size() / 2, u'\0');
  for (size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char16_t>(bytes.u16(2 * i));
  return text;
}

inline char16_t upperAscii(char16_t c) {
  return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 0x20) : c;
}

/// True for the same text in any case of ASCII letters.
inline bool isSameWord(std::u16string_view a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (upperAscii(a[i]) != upperAscii(b[i])) return false;
  }
  return true;
}

}  // namespace pagerex

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace pagerex {

/// What is not passed on where 16-bit text becomes UTF-8.
enum class Utf8Filter {
  kNone,
  kControls,               ///< C0 controls but line feed and tab, noncharacters, byte order marks
  kControlsAndSoftHyphens  ///< these, and U+00AD
};

/// Bytes that `n` units take at most.
constexpr size_t mostUtf8(size_t n) {
  return 3 * n;
}

/// Writes 16-bit text as UTF-8 and returns the count of bytes; all of mostUtf8(n) may be written to. Unpaired
/// surrogates become U+FFFD.
size_t utf8FromUtf16(const char16_t* text, size_t n, char* out, Utf8Filter filter = Utf8Filter::kNone);

/// The same, a character at a time.
size_t utf8FromUtf16ByOnes(const char16_t* text, size_t n, char* out, Utf8Filter filter = Utf8Filter::kNone);

/// Without controls and noncharacters.
void appendUtf8(std::string& out, std::u16string_view text);

/// Whether a text has no controls, halves of characters, or others of the last 10240 numbers of 16 bits,
/// among which are all noncharacters but those of longer numbers.
bool isPlainText(const char16_t* text, size_t n);

/// Whether a text has only letters below U+0590 (Latin, Greek, Cyrillic, Armenian) and signs (U+2000 to
/// U+2E7F): no East Asian ones, none that go from right to left, none of complex scripts.
bool isSimpleText(const char16_t* text, size_t n);

/// The same, a unit at a time.
bool isSimpleTextByOnes(const char16_t* text, size_t n);

/// The character at the beginning of a text that is not empty, and its count of units; U+FFFD for an unpaired
/// surrogate.
struct CharacterAt {
  char32_t code;
  size_t units;
};
inline CharacterAt characterAt(const char16_t* text, size_t n) {
  const char16_t unit = text[0];
  if ((unit & 0xF800) != 0xD800) return {unit, 1};
  if ((unit & 0xFC00) != 0xD800 || n < 2 || (text[1] & 0xFC00) != 0xDC00) return {0xFFFD, 1};
  return {0x10000 + (static_cast<char32_t>(unit & 0x3FF) << 10) + (text[1] & 0x3FFu), 2};
}

/// Whether text for people leaves a character out: C0 controls but line feed and tab, noncharacters, byte
/// order marks.
constexpr bool isNoText(char32_t code) {
  if (code < 0x20) return code != '\n' && code != '\t';
  return (code & 0xFFFE) == 0xFFFE || (code >= 0xFDD0 && code <= 0xFDEF) || code == 0xFEFF;
}

}  // namespace pagerex

#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

/// Copies `size` bytes, which are `length` or more and no more than twice that, as its two ends.
template <size_t length>
void copyEnds(char* out, const char* from, size_t size) {
  std::memcpy(out, from, length);
  std::memcpy(out + size - length, from + size - length, length);
}

constexpr size_t sizeOf(std::string_view text) {
  return text.size();
}
template <size_t sizeAndNul>
constexpr size_t sizeOf(const char (&)[sizeAndNul]) {
  return sizeAndNul - 1;
}

constexpr size_t kShort = 32;

/// Copies a text of less than kShort bytes, such as a name or a number, and returns the place behind it.
[[gnu::always_inline]] inline char* copyShort(char* out, std::string_view text) {
  const char* const from = text.data();
  const size_t size = text.size();
  if (size >= 16) {
    copyEnds<16>(out, from, size);
  } else if (size >= 8) {
    copyEnds<8>(out, from, size);
  } else if (size >= 4) {
    copyEnds<4>(out, from, size);
  } else if (size > 0) {
    out[0] = from[0];
    out[size / 2] = from[size / 2];
    out[size - 1] = from[size - 1];
  }
  return out + size;
}

/// The same for a literal.
template <size_t sizeAndNul>
[[gnu::always_inline]] inline char* copyShort(char* out, const char (&text)[sizeAndNul]) {
  std::memcpy(out, text, sizeAndNul - 1);
  return out + sizeAndNul - 1;
}

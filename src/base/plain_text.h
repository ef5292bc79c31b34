#pragma once

#include <cstddef>
#include <cstdint>

/// Whether a character of document text stands for itself in HTML, and is one byte there: ASCII but for the
/// controls, "&", "<", ">" and a space behind a space.
constexpr bool isPlainText(uint16_t unit, uint8_t previous) {
  return unit >= ' ' && unit < 128 && unit != '&' && unit != '<' && unit != '>' &&
         (unit != ' ' || previous != ' ');
}

/// Copies characters as bytes up to the first one that is not plain, and returns their count. `previous` is
/// the byte in front of the text. All `length` bytes of `out` may be written to.
size_t copyPlainText(const uint16_t* text, size_t length, uint8_t previous, char* out);

/// The same, a character at a time.
size_t copyPlainTextByOnes(const uint16_t* text, size_t length, uint8_t previous, char* out);

#pragma once

#include <cstdint>
#include <string>

namespace pagerex {

constexpr uint8_t kArabicNumbers = 0;
constexpr uint8_t kLeadingZeroNumbers = 22;
constexpr uint8_t kBulletNumbers = 23;  ///< no number, but a sign
constexpr uint8_t kNoNumbers = 255;

/// Appends a number as the format `nfc` of lists, pages and notes shows it; nothing for bullets and "none".
/// A format that is not known, or that cannot show the number, gives decimal digits. Words (6, 7) are those
/// of English, ordinals (5) those of some more: in any other `language` (LCID; 0 and 0x0400 are none, and
/// count as English) they are digits. Never more than some hundred characters.
void appendNumber(int32_t number, uint8_t nfc, uint16_t language, std::u16string& out);
inline void appendNumber(int32_t number, uint8_t nfc, std::u16string& out) {
  appendNumber(number, nfc, 0, out);
}

}  // namespace pagerex

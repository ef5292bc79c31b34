#include "base/number_text.h"

#include <charconv>
#include <cmath>

template <size_t N>
FixedText<N>& FixedText<N>::appendInt(long long value) {
  if (value < 0) {
    append('-');
    return appendUnsigned(0ull - static_cast<unsigned long long>(value));
  }
  return appendUnsigned(static_cast<unsigned long long>(value));
}

template <size_t N>
FixedText<N>& FixedText<N>::appendUnsigned(unsigned long long value) {
  char digits[24];
  const auto result = std::to_chars(digits, digits + sizeof digits, value);
  return append(std::string_view(digits, static_cast<size_t>(result.ptr - digits)));
}

template <size_t N>
FixedText<N>& FixedText<N>::appendFixed(double value, int decimals) {
  if (!std::isfinite(value)) value = 0;
  char digits[400];
  const auto result =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
  if (result.ec != std::errc()) return *this;
  return append(std::string_view(digits, static_cast<size_t>(result.ptr - digits)));
}

template <size_t N>
FixedText<N>& FixedText<N>::appendHexByte(unsigned value) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  return append(kDigits[value >> 4 & 15]).append(kDigits[value & 15]);
}

template class FixedText<32>;
template class FixedText<64>;
template class FixedText<65>;
template class FixedText<260>;
template class FixedText<340>;

NumberText points(int twips) {
  // A twentieth has two decimals at most, so that the exact digits need no floating point.
  const unsigned magnitude = twips < 0 ? 0u - static_cast<unsigned>(twips) : static_cast<unsigned>(twips);
  const unsigned hundredths = magnitude % 20 * 5;
  NumberText text;
  if (twips < 0) text.append('-');
  text.appendUnsigned(magnitude / 20).append('.');
  text.append(static_cast<char>('0' + hundredths / 10)).append(static_cast<char>('0' + hundredths % 10));
  return text.append("0000pt");
}

NumberText pointsOf(double length) {
  return NumberText().appendFixed(length).append("pt");
}

NumberText wordColour(unsigned colour) {
  NumberText text;
  return text.append('#').appendHexByte(colour).appendHexByte(colour >> 8).appendHexByte(colour >> 16);
}

NumberText number(int value) {
  return NumberText().appendInt(value);
}

NumberText numbered(std::string_view prefix, int value) {
  return NumberText().append(prefix).appendInt(value);
}

LongNumberText fixedNumber(double value) {
  if (std::isfinite(value)) return LongNumberText().appendFixed(value);
  const char* const word = std::isnan(value) ? "nan" : "inf";
  return LongNumberText().append(std::signbit(value) ? "-" : "").append(word);
}

NumberText generalNumber(double value) {
  char digits[64];
  const auto result = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 18);
  return NumberText().append(std::string_view(digits, static_cast<size_t>(result.ptr - digits)));
}

#include "base/number_text.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace {

constexpr int kMostQuickDecimals = 6;
constexpr uint32_t kPowersOfTen[kMostQuickDecimals + 1] = {1, 10, 100, 1000, 10000, 100000, 1000000};

/// A number without its sign, rounded to some decimals.
struct Decimal {
  uint64_t whole;
  uint32_t decimals;
};

/// Whether `Rounded` knows how: what lies behind the point must fit 64 bits, so that no digit is lost.
bool isQuick(double magnitude, int decimals) {
  constexpr double kSmallest = 0x1p-11;
  constexpr double kLargest = 0x1p32;
  return decimals >= 0 && decimals <= kMostQuickDecimals && magnitude < kLargest &&
         (magnitude >= kSmallest || magnitude == 0);
}

/// To nearest, ties to even, as printf rounds. The tables that the C++ library has for all numbers would be
/// an eighth of the whole library.
Decimal Rounded(double magnitude, int decimals) {
  const uint32_t scale = kPowersOfTen[decimals];
  const auto whole = static_cast<uint64_t>(magnitude);
  const auto fraction = static_cast<uint64_t>((magnitude - static_cast<double>(whole)) * 0x1p64);
  const uint64_t low = (fraction & UINT32_MAX) * scale;
  const uint64_t high = (fraction >> 32) * scale + (low >> 32);
  Decimal rounded = {whole, static_cast<uint32_t>(high >> 32)};
  const uint64_t rest = high << 32 | (low & UINT32_MAX);
  constexpr uint64_t kHalf = uint64_t{1} << 63;
  const bool isOdd = ((decimals > 0 ? rounded.decimals : rounded.whole) & 1) != 0;
  if (rest > kHalf || (rest == kHalf && isOdd)) ++rounded.decimals;
  if (rounded.decimals == scale) rounded = {whole + 1, 0};
  return rounded;
}

/// "00", "01" and so on to "99".
constexpr auto kPairs = [] {
  std::array<char, 200> pairs = {};
  for (size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

size_t countDigits(unsigned long long value) {
  size_t count = 1;
  for (; value >= 10000; value /= 10000) count += 4;
  return count + (value >= 10) + (value >= 100) + (value >= 1000);
}

/// Writes all digits of a number in front of `end`.
void writeDigits(unsigned long long value, char* end) {
  for (; value >= 100; value /= 100) std::memcpy(end -= 2, &kPairs[value % 100 * 2], 2);
  if (value >= 10) {
    std::memcpy(end - 2, &kPairs[value * 2], 2);
  } else {
    end[-1] = static_cast<char>('0' + value);
  }
}

/// As snprintf, but in the C locale.
template <class... Arguments>
std::string_view Printed(char* buffer, size_t size, const char* format, Arguments... arguments) {
  const int length = std::snprintf(buffer, size, format, arguments...);
  if (length < 0 || static_cast<size_t>(length) >= size) return {};
  char* out = buffer;
  for (const char* in = buffer; *in; ++in) {
    constexpr std::string_view kOthers = "0123456789+-einfa";
    const bool isPoint = kOthers.find(*in) == std::string_view::npos;
    if (!isPoint) *out++ = *in;
    if (isPoint && out[-1] != '.') *out++ = '.';  // which may take several bytes
  }
  return {buffer, static_cast<size_t>(out - buffer)};
}

}  // namespace

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
  if (value < 10) return append(static_cast<char>('0' + value));
  const size_t count = countDigits(value);
  if (count > N - 1 - size_) {
    char digits[20];
    writeDigits(value, digits + count);
    return append(std::string_view(digits, count));
  }
  size_ += count;
  writeDigits(value, text_ + size_);
  text_[size_] = '\0';
  return *this;
}

template <size_t N>
FixedText<N>& FixedText<N>::appendFixed(double value, int decimals) {
  if (!std::isfinite(value)) value = 0;
  const double magnitude = std::fabs(value);
  if (!isQuick(magnitude, decimals)) {
    char digits[400];
    return append(Printed(digits, sizeof digits, "%.*f", decimals, value));
  }
  const Decimal rounded = Rounded(magnitude, decimals);
  if (std::signbit(value)) append('-');
  appendUnsigned(rounded.whole);
  if (decimals == 0) return *this;
  // A one in front keeps the zeros behind the point; its place is the point's.
  char digits[1 + kMostQuickDecimals];
  const auto count = 1 + static_cast<size_t>(decimals);
  writeDigits(kPowersOfTen[decimals] + rounded.decimals, digits + count);
  digits[0] = '.';
  return append(std::string_view(digits, count));
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
  char decimals[] = ".??0000pt";
  std::memcpy(decimals + 1, &kPairs[size_t{hundredths} * 2], 2);
  NumberText text;
  if (twips < 0) text.append('-');
  text.appendUnsigned(magnitude / 20).append(std::string_view(decimals, sizeof decimals - 1));
  return text;
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
  return NumberText().append(Printed(digits, sizeof digits, "%.18g", value));
}

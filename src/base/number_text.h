#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

/// A short text in a buffer of its own, NUL-terminated: a formatted number, a class name, a colour.
template <size_t N>
class FixedText {
 public:
  FixedText() { text_[0] = '\0'; }

  const char* c_str() const { return text_; }
  size_t size() const { return size_; }
  // NOLINTNEXTLINE(google-explicit-constructor): stands for its text everywhere
  operator std::string_view() const { return {text_, size_}; }

  /// Appends; what does not fit is cut.
  FixedText& append(std::string_view text) {
    const size_t left = N - 1 - size_;
    const size_t count = text.size() < left ? text.size() : left;
    if (count > 0) std::memcpy(text_ + size_, text.data(), count);
    size_ += count;
    text_[size_] = '\0';
    return *this;
  }
  FixedText& append(char c) {
    if (size_ < N - 1) {
      text_[size_++] = c;
      text_[size_] = '\0';
    }
    return *this;
  }
  FixedText& appendInt(long long value);
  FixedText& appendUnsigned(unsigned long long value);
  /// As "%.*f" in the C locale. NaN and infinity are written as 0.
  FixedText& appendFixed(double value, int decimals = 6);
  /// As "%02X" of the low byte.
  FixedText& appendHexByte(unsigned value);

 private:
  char text_[N];  ///< not cleared: only the NUL behind the text counts
  size_t size_ = 0;
};

/// Room for every number that a CSS value or an attribute takes.
using NumberText = FixedText<65>;

/// Room for every double as "%lf".
using LongNumberText = FixedText<340>;

/// "%lfpt" of `twips` / 20.0: a length from the Word file as a CSS length.
NumberText points(int twips);
/// "%lfpt" of a length in points.
NumberText pointsOf(double length);
/// "#%02X%02X%02X" of a Word colour, which has red in the low byte.
NumberText wordColour(unsigned colour);
/// "%d" and "prefix%d".
NumberText number(int value);
NumberText numbered(std::string_view prefix, int value);
/// "%lf" in the C locale, NaN and infinity included.
LongNumberText fixedNumber(double value);
/// "%.18g" in the C locale.
NumberText generalNumber(double value);

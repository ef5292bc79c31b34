#include "numformat/double_to_text.h"

#include <langinfo.h>

#include <algorithm>
#include <bit>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cwchar>
#include <memory>
#include <new>
#include <numeric>
#include <string_view>

#include "base/status.h"
#include "pagerex/numformat.h"

namespace {

constexpr int kSignificantDigits = 15;
constexpr int64_t kLongestText = 1 << 20;

/// Half a unit of the last digit, by the count of digits.
constexpr double rounding[16] = {5.0,  0.5,  0.05,  5e-3,  5e-4,  5e-5,  5e-6,  5e-7,
                                 5e-8, 5e-9, 5e-10, 5e-11, 5e-12, 5e-13, 5e-14, 5e-15};

/// What lifts a tail of nines over the last digit; entry 15 - i belongs to the digit i.
constexpr double lastDigit[16] = {0.0,  0.9,  0.09,  9e-3,  9e-4,  9e-5,  9e-6,  9e-7,
                                  9e-8, 9e-9, 9e-10, 9e-11, 9e-12, 9e-13, 9e-14, 9e-15};

/// A number not below zero: `mantissa` x 10^`exponent`, the mantissa in [1, 10), or 0 for zero.
struct Decimal {
  double mantissa = 0;
  int exponent = 0;
};

/// How a number is laid out; counts are wide since a precision can be any int.
struct Layout {
  bool exponentForm = false;
  bool trim = false;
  int64_t decimals = 0;
  int64_t digits = 0;  ///< digits taken from the mantissa; 0 or less: nothing but zeros is left of it
};

/// Text in the making: 256 characters on the stack, more on the heap.
class WorkText {
 public:
  /// False if there shall be no text of that length.
  bool reserve(int64_t length) {
    if (length > kLongestText) return false;
    if (length <= capacity_) return true;
    heap_.reset(new (std::nothrow) wchar_t[static_cast<size_t>(length)]);
    if (!heap_) return false;
    text_ = heap_.get();
    capacity_ = length;
    return true;
  }

  void append(wchar_t c) {
    if (size_ < capacity_) text_[size_++] = c;
  }
  void append(wchar_t c, int64_t count) {
    for (; count > 0; --count) append(c);
  }
  void insert(int64_t at, wchar_t c) {
    append(c);
    std::rotate(text_ + at, text_ + size_ - 1, text_ + size_);
  }
  void dropLast() { --size_; }

  int64_t size() const { return size_; }
  wchar_t& operator[](int64_t at) { return text_[at]; }
  std::wstring_view view() const { return {text_, static_cast<size_t>(size_)}; }

 private:
  wchar_t stack_[256];
  std::unique_ptr<wchar_t[]> heap_;
  wchar_t* text_ = stack_;
  int64_t capacity_ = std::ssize(stack_);
  int64_t size_ = 0;
};

/// Writes the digits of one number.
class DigitWriter {
 public:
  DigitWriter(WorkText& text, const Decimal& number, const Layout& layout, wchar_t point)
      : text_(text), number_(number), layout_(layout), point_(point), first_(text.size()) {}

  void writeNumber() {
    startDigits();
    writeDigits();
    if (layout_.trim && pointWritten_) trim();
  }
  void writeExponent(unsigned flags);

 private:
  void startDigits();
  void writeDigits();
  void writeDigit(int64_t place);
  int nextDigit(int64_t place) const;
  void carry();
  bool raiseWrittenDigits();
  void writePoint();
  void trim();

  WorkText& text_;
  Decimal number_;
  Layout layout_;
  wchar_t point_;
  int64_t first_;  ///< where the first digit stands
  int64_t integerLeft_ = 0;
  bool pointWritten_ = false;
};

Decimal split(double value);
Layout chooseLayout(FLOATTOTEXTFORMAT format, int precision, bool trim, int exponent);
void roundNumber(Decimal& number, Layout& layout);
int64_t longestText(const Layout& layout);
void writeNonFinite(double value, bool plus, wchar_t* buffer, int size);
void copyCut(std::wstring_view text, wchar_t* buffer, int size);

}  // namespace

int __dbltostr(double value, int precision, wchar_t* buffer, int size, bool plus, FLOATTOTEXTFORMAT format,
               bool trim, unsigned exponentFlags, bool localePoint) {
  if (!buffer || size < 1) return -1;
  buffer[0] = 0;
  if (!std::isfinite(value)) {
    writeNonFinite(value, plus, buffer, size);
    return -1;
  }
  if (size == 1) return 0;

  Decimal number = split(std::fabs(value));
  Layout layout = chooseLayout(format, precision, trim, number.exponent);
  roundNumber(number, layout);
  WorkText text;
  if (!text.reserve(longestText(layout))) return -1;

  if (value < 0) {  // not so for a negative zero
    text.append(L'-');
  } else if (plus) {
    text.append(L'+');
  }
  DigitWriter writer(text, number, layout, GetDecimalPoint(localePoint));
  writer.writeNumber();
  if (layout.exponentForm) writer.writeExponent(exponentFlags);
  copyCut(text.view(), buffer, size);
  return static_cast<int>(text.size());
}

namespace {

void writeNonFinite(double value, bool plus, wchar_t* buffer, int size) {
  constexpr uint64_t kQuietBit = uint64_t{1} << 51;
  WorkText text;
  if (std::signbit(value)) {
    text.append(L'-');
  } else if (plus) {
    text.append(L'+');
  }
  const bool quiet = (std::bit_cast<uint64_t>(value) & kQuietBit) != 0;
  for (const wchar_t* name = std::isinf(value) ? L"1.#INF" : quiet ? L"1.#QNAN" : L"1.#SNAN"; *name; ++name) {
    text.append(*name);
  }
  copyCut(text.view(), buffer, size);
}

Decimal split(double value) {
  Decimal number{value, 0};
  if (value == 0) return number;
  if (value >= 1e-8 && value <= 1e8) {
    for (; number.mantissa >= 10; ++number.exponent) number.mantissa /= 10;
    for (; number.mantissa < 1; --number.exponent) number.mantissa *= 10;
    return number;
  }
  number.exponent = static_cast<int>(std::floor(std::log10(value)));
  const double power = std::pow(10.0, number.exponent);
  // The two smallest doubles lie below the smallest power of ten that a double holds.
  number.mantissa = power > 0 ? value / power : value * 1e300 / std::pow(10.0, number.exponent + 300);
  if (number.mantissa >= 10) {
    number.mantissa /= 10;
    ++number.exponent;
  } else if (number.mantissa < 1) {
    number.mantissa *= 10;
    --number.exponent;
  }
  return number;
}

Layout chooseLayout(FLOATTOTEXTFORMAT format, int precision, bool trim, int exponent) {
  const int64_t wanted = precision >= 0 ? precision : format == kGeneralForm ? 6 : 0;
  if (format != kGeneralForm) {
    const bool exponentForm = format == kExponentForm;
    return {exponentForm, trim, wanted, wanted + 1 + (exponentForm ? 0 : exponent)};
  }
  if (wanted <= exponent || exponent < -4) {
    const int64_t decimals = std::max<int64_t>(wanted - 1, 0);
    return {true, true, decimals, decimals + 1};
  }
  return {false, true, wanted - exponent - 1, wanted};
}

/// Adds half a unit of the last digit; the digits are then cut.
void roundNumber(Decimal& number, Layout& layout) {
  if (layout.digits < 0) return;
  number.mantissa += rounding[std::min<int64_t>(layout.digits, kSignificantDigits)];
  if (number.mantissa < 10) return;
  number.mantissa = 1;
  ++number.exponent;
  if (!layout.exponentForm) ++layout.digits;
}

int64_t longestText(const Layout& layout) {
  return layout.decimals + (layout.digits < 1 ? 11 : layout.digits + 10);
}

void DigitWriter::startDigits() {
  if (layout_.exponentForm) {
    integerLeft_ = 1;
  } else if (number_.exponent >= 0) {
    integerLeft_ = number_.exponent + 1;
  } else {
    text_.append(L'0');
    if (layout_.decimals < 1) return;
    writePoint();
    text_.append(L'0', layout_.digits > 0 ? -number_.exponent - 1 : layout_.decimals);
  }
}

void DigitWriter::writeDigits() {
  for (int64_t place = 0; layout_.digits > 0; ++place) {
    writeDigit(place);
    --layout_.digits;
    if (integerLeft_ > 0 && --integerLeft_ == 0 && layout_.digits > 0) writePoint();
  }
}

void DigitWriter::writeDigit(int64_t place) {
  if (place >= kSignificantDigits) {
    text_.append(L'0');
    return;
  }
  const int digit = nextDigit(place);
  if (digit > 9) {
    carry();
    return;
  }
  text_.append(static_cast<wchar_t>(L'0' + digit));
  number_.mantissa = (number_.mantissa - digit) * 10;
}

int DigitWriter::nextDigit(int64_t place) const {
  const bool last = layout_.digits == 1 && place >= 1 && place != kSignificantDigits - 1;
  const double digit = last ? std::floor(number_.mantissa + lastDigit[kSignificantDigits - place])
                            : std::trunc(number_.mantissa + 1e-15);
  return std::clamp(static_cast<int>(digit), 0, 10);
}

/// The digit came out as ten: it becomes 0, and one is added to the number that the digits before it form.
void DigitWriter::carry() {
  number_.mantissa = 0;
  const bool hadDigits = text_.size() > first_;
  if (!raiseWrittenDigits()) {
    if (!layout_.exponentForm) {
      text_.insert(first_, L'1');
    } else {
      ++number_.exponent;
      if (hadDigits) {
        text_[first_] = L'1';
      } else {
        text_.append(L'1');
        return;
      }
    }
  }
  text_.append(L'0');
}

/// False if all digits were nines, or there was none.
bool DigitWriter::raiseWrittenDigits() {
  for (int64_t at = text_.size() - 1; at >= first_; --at) {
    wchar_t& digit = text_[at];
    if (digit == point_) continue;
    if (digit != L'9') {
      ++digit;
      return true;
    }
    digit = L'0';
  }
  return false;
}

void DigitWriter::writePoint() {
  text_.append(point_);
  pointWritten_ = true;
}

void DigitWriter::trim() {
  while (text_.view().back() == L'0') text_.dropLast();
  if (text_.view().back() == point_) text_.dropLast();
}

void DigitWriter::writeExponent(unsigned flags) {
  text_.append(flags & kExponentUpperCase ? L'E' : L'e');
  if (number_.exponent < 0) {
    text_.append(L'-');
  } else if (!(flags & kExponentNoPlus)) {
    text_.append(L'+');
  }
  const int exponent = std::abs(number_.exponent);
  const unsigned width = flags & (kExponentThird | kExponentTwoDigits);
  const bool three = exponent >= 100 || width == (kExponentThird | kExponentTwoDigits);
  if (three) text_.append(static_cast<wchar_t>(L'0' + exponent / 100));
  if (three || exponent >= 10 || width == kExponentTwoDigits) {
    text_.append(static_cast<wchar_t>(L'0' + exponent / 10 % 10));
  }
  text_.append(static_cast<wchar_t>(L'0' + exponent % 10));
}

void copyCut(std::wstring_view text, wchar_t* buffer, int size) {
  const size_t length = text.copy(buffer, static_cast<size_t>(size) - 1);
  buffer[length] = 0;
}

/// By nl_langinfo, since what localeconv returns is shared by all threads.
wchar_t readLocalePoint() {
  const char* const point = nl_langinfo(RADIXCHAR);
  if (point[0] == '.' && point[1] == 0) return L'.';
  wchar_t text[4];
  return std::mbstowcs(text, point, std::size(text)) == 1 ? text[0] : L' ';
}

int clampSize(long size) {
  return static_cast<int>(std::clamp<long>(size, 0, INT_MAX));
}

}  // namespace

wchar_t GetDecimalPoint(bool locale) {
  return locale ? readLocalePoint() : L'.';
}

int _ConvertDecimal_Gen(double value, int, wchar_t* buffer, long size) {
  return __dbltostr(value, 11, buffer, clampSize(size), false, kGeneralForm, true,
                    kExponentUpperCase | kExponentTwoDigits, true);
}

namespace {

/// Whether two doubles are at most 4 units in the last place apart.
bool nearlyEqual(double a, double b) {
  if (!std::isfinite(a) || !std::isfinite(b) || std::signbit(a) != std::signbit(b)) return a == b;
  const int64_t distance = std::bit_cast<int64_t>(a) - std::bit_cast<int64_t>(b);
  return distance >= -4 && distance <= 4;
}

}  // namespace

double _GetDoulbeInt(double value) {
  if (value < 0) return -_GetDoulbeInt(-value);
  if (std::fpclassify(value) == FP_SUBNORMAL) return 0;
  const double below = std::floor(value);
  return nearlyEqual(below + 1, value) ? below + 1 : below;
}

long _GreatestCommonDivisor(long a, long b) {
  const auto magnitude = [](long n) {
    return n < 0 ? 0ul - static_cast<unsigned long>(n) : static_cast<unsigned long>(n);
  };
  return static_cast<long>(std::gcd(magnitude(a), magnitude(b)));
}

namespace {

uint32_t convert(FLOATTOTEXTFORMAT format, double value, int precision, wchar_t* buffer, int size, bool plus,
                 bool trim, unsigned exponentFlags, int* length) {
  const int result = __dbltostr(value, precision, buffer, size, plus, format, trim, exponentFlags, true);
  if (length) *length = result;
  return static_cast<uint32_t>(result < 0 ? Status::kFailure : Status::kOk);
}

}  // namespace

uint32_t _ftog(double value, int precision, wchar_t* buffer, int size, bool plus, bool trim,
               unsigned exponentFlags, int* length) {
  return convert(kGeneralForm, value, precision, buffer, size, plus, trim, exponentFlags, length);
}

uint32_t _ftot(double value, int precision, wchar_t* buffer, int size, bool plus, bool trim,
               unsigned exponentFlags, int* length) {
  return convert(kFixedForm, value, precision, buffer, size, plus, trim, exponentFlags, length);
}

uint32_t _ftoe(double value, int precision, wchar_t* buffer, int size, bool plus, bool trim,
               unsigned exponentFlags, int* length) {
  return convert(kExponentForm, value, precision, buffer, size, plus, trim, exponentFlags, length);
}

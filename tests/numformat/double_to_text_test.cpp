#include "numformat/double_to_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "pagerex/numformat.h"
#include "support/temp_folder.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kDenormal = std::numeric_limits<double>::denorm_min();

struct Options {
  bool plus = false;
  bool trim = false;
  unsigned flags = 0;
};

/// The text that a buffer of exactly the needed size receives.
std::wstring convert(double value, int precision, FLOATTOTEXTFORMAT format, Options options = {}) {
  wchar_t measure[2];
  const int length =
      __dbltostr(value, precision, measure, 2, options.plus, format, options.trim, options.flags, false);
  if (length < 0) return L"-1";
  std::vector<wchar_t> buffer(static_cast<size_t>(length) + 1, L'#');
  __dbltostr(value, precision, buffer.data(), length + 1, options.plus, format, options.trim, options.flags,
             false);
  EXPECT_EQ(buffer.back(), 0);
  return buffer.data();
}

std::wstring fixed(double value, int precision, Options options = {}) {
  return convert(value, precision, kFixedForm, options);
}
std::wstring exponent(double value, int precision, Options options = {}) {
  return convert(value, precision, kExponentForm, options);
}
std::wstring general(double value, int precision, Options options = {}) {
  return convert(value, precision, kGeneralForm, options);
}

/// The text written for a value that has no digits.
std::wstring nonFinite(double value, bool plus = false, int size = 32) {
  std::vector<wchar_t> buffer(static_cast<size_t>(size), L'#');
  EXPECT_EQ(__dbltostr(value, 2, buffer.data(), size, plus, kFixedForm, false, 0, false), -1);
  return buffer.data();
}

double fromBits(uint64_t bits) {
  return std::bit_cast<double>(bits);
}

}  // namespace

TEST(DoubleToText, WritesZeroInExponentForm) {
  EXPECT_EQ(exponent(0, 2), L"0.00e+0");
  EXPECT_EQ(exponent(0, 0), L"0e+0");
  EXPECT_EQ(exponent(0, 17), L"0.00000000000000000e+0");
}

TEST(DoubleToText, WritesZeroInFixedForm) {
  EXPECT_EQ(fixed(0, 0), L"0");
  EXPECT_EQ(fixed(0, 3), L"0.000");
  EXPECT_EQ(fixed(0, 3, {.trim = true}), L"0");
  EXPECT_EQ(general(0, 11), L"0");
}

TEST(DoubleToText, RoundsUpIntoANewIntegerDigit) {
  EXPECT_EQ(fixed(9.9999, 2), L"10.00");
  EXPECT_EQ(fixed(99.5, 0), L"100");
  EXPECT_EQ(fixed(0.9999, 2), L"1.00");
  EXPECT_EQ(fixed(0.0999, 2), L"0.10");
  EXPECT_EQ(exponent(9.9999, 2), L"1.00e+1");
  EXPECT_EQ(exponent(0.99999, 2), L"1.00e+0");
}

TEST(DoubleToText, Shows15DigitsAndThenZeros) {
  EXPECT_EQ(fixed(123456789012345678.0, 0), L"123456789012346000");
  EXPECT_EQ(fixed(123456789012345678.0, 2), L"123456789012346000.00");
  EXPECT_EQ(fixed(0.1, 20), L"0.10000000000000000000");
  EXPECT_EQ(exponent(1.0 / 3, 17), L"3.33333333333333000e-1");
}

TEST(DoubleToText, WritesThreeExponentDigitsFrom100) {
  EXPECT_EQ(exponent(1e100, 0, {.flags = kExponentTwoDigits}), L"1e+100");
  EXPECT_EQ(exponent(1e100, 0), L"1e+100");
  EXPECT_EQ(exponent(1e-100, 0), L"1e-100");
  EXPECT_EQ(exponent(1e308, 0), L"1e+308");
}

TEST(DoubleToText, WritesNegativeZeroWithoutASign) {
  EXPECT_EQ(fixed(-0.0, 2), L"0.00");
  EXPECT_EQ(fixed(-0.0, 2, {.plus = true}), L"+0.00");
}

TEST(DoubleToText, KeepsTheSignOfWhatRoundsToZero) {
  EXPECT_EQ(fixed(-0.001, 2), L"-0.00");
  EXPECT_EQ(fixed(-0.001, 2, {.trim = true}), L"-0");
}

TEST(DoubleToText, NamesInfinities) {
  EXPECT_EQ(nonFinite(kInfinity), L"1.#INF");
  EXPECT_EQ(nonFinite(kInfinity, true), L"+1.#INF");
  EXPECT_EQ(nonFinite(-kInfinity), L"-1.#INF");
  EXPECT_EQ(nonFinite(-kInfinity, true), L"-1.#INF");
}

TEST(DoubleToText, NamesQuietAndSignallingNaNs) {
  EXPECT_EQ(nonFinite(fromBits(0x7FF8000000000000)), L"1.#QNAN");
  EXPECT_EQ(nonFinite(fromBits(0xFFF8000000000000)), L"-1.#QNAN");
  EXPECT_EQ(nonFinite(fromBits(0x7FF0000000000001)), L"1.#SNAN");
  EXPECT_EQ(nonFinite(fromBits(0xFFF4000000000000)), L"-1.#SNAN");
}

TEST(DoubleToText, CutsTheNameOfANonFiniteValue) {
  EXPECT_EQ(nonFinite(-kInfinity, false, 5), L"-1.#");
  EXPECT_EQ(nonFinite(kInfinity, false, 1), L"");
}

TEST(DoubleToText, PicksTheGeneralFormByTheExponent) {
  EXPECT_EQ(general(100000000000, 11, {.flags = 5}), L"1E+11");
  EXPECT_EQ(general(10000000000, 11, {.flags = 5}), L"10000000000");
  EXPECT_EQ(general(0.0001, 11), L"0.0001");
  EXPECT_EQ(general(0.00001, 11), L"1e-5");
}

TEST(DoubleToText, PicksTheGeneralFormBeforeItRounds) {
  EXPECT_EQ(general(99999999999.9, 11), L"100000000000");
  EXPECT_EQ(general(0.0000999999999999, 11), L"1e-4");
}

TEST(DoubleToText, AlwaysTrimsTheGeneralForm) {
  EXPECT_EQ(general(1.5, 11), L"1.5");
  EXPECT_EQ(general(-120, 11), L"-120");
  EXPECT_EQ(general(1.5e20, 11), L"1.5e+20");
}

TEST(DoubleToText, TakesOneDigitInTheGeneralFormWithPrecisionZero) {
  EXPECT_EQ(general(5, 0), L"5e+0");
  EXPECT_EQ(general(0.05, 0), L"0.1");
  EXPECT_EQ(general(0.03, 0), L"0");
}

TEST(DoubleToText, ReplacesANegativePrecision) {
  EXPECT_EQ(general(1.23456789, -1), L"1.23457");
  EXPECT_EQ(fixed(1.6, -1), L"2");
  EXPECT_EQ(exponent(1.6, INT_MIN), L"2e+0");
}

TEST(DoubleToText, WritesSmallValuesWithLeadingZeros) {
  EXPECT_EQ(fixed(0.05, 2), L"0.05");
  EXPECT_EQ(fixed(0.00123, 5), L"0.00123");
  EXPECT_EQ(fixed(0.00123, 2), L"0.00");
  EXPECT_EQ(fixed(1e-300, 3), L"0.000");
}

TEST(DoubleToText, RoundsHalfAwayFromZero) {
  EXPECT_EQ(fixed(0.5, 0), L"1");
  EXPECT_EQ(fixed(2.5, 0), L"3");
  EXPECT_EQ(fixed(-2.5, 0), L"-3");
  EXPECT_EQ(fixed(0.49, 0), L"0");
  EXPECT_EQ(fixed(0.005, 2), L"0.01");
}

TEST(DoubleToText, RoundsUpATailOfNines) {
  EXPECT_EQ(fixed(1.005, 2), L"1.01");  // 1.00499999999999989...
  EXPECT_EQ(fixed(1.255, 2), L"1.26");  // 1.25499999999999989...
  EXPECT_EQ(fixed(8.345, 2), L"8.35");  // 8.3450000000000006...
  EXPECT_EQ(fixed(0.1 + 0.2, 15), L"0.300000000000000");
}

TEST(DoubleToText, CarriesByHand) {
  EXPECT_EQ(exponent(9.999999999999993, 17), L"1.00000000000000000e+1");
  EXPECT_EQ(fixed(9.999999999999993, 17), L"10.00000000000000000");
  EXPECT_EQ(fixed(0.09999999999999993, 19), L"0.1000000000000000000");
  EXPECT_EQ(fixed(0.9999999999999993, 17), L"1.00000000000000000");
}

TEST(DoubleToText, CarriesThroughNinesUpToTheFront) {
  const double justBelow = 9.9995 - 4e-15;
  EXPECT_EQ(exponent(justBelow, 3), L"1.000e+1");
  EXPECT_EQ(fixed(justBelow, 3), L"10.000");
  EXPECT_EQ(fixed(-justBelow, 3), L"-10.000");
  EXPECT_EQ(fixed(0.12995 - 4e-17, 4), L"0.1300");
}

TEST(DoubleToText, WritesTheSignsAskedFor) {
  EXPECT_EQ(fixed(1, 1, {.plus = true}), L"+1.0");
  EXPECT_EQ(fixed(-1, 1, {.plus = true}), L"-1.0");
  EXPECT_EQ(fixed(-1, 1), L"-1.0");
}

TEST(DoubleToText, TrimsZerosAndABarePoint) {
  EXPECT_EQ(fixed(1.5, 4, {.trim = true}), L"1.5");
  EXPECT_EQ(fixed(100, 4, {.trim = true}), L"100");
  EXPECT_EQ(fixed(100, 0, {.trim = true}), L"100");
  EXPECT_EQ(exponent(100, 4, {.trim = true}), L"1e+2");
}

TEST(DoubleToText, ShapesTheExponentByItsFlags) {
  const struct {
    unsigned flags;
    const wchar_t* small;
    const wchar_t* middle;
    const wchar_t* negative;
  } rows[] = {
      {0, L"1e+5", L"1e+15", L"1e-5"},     {1, L"1E+5", L"1E+15", L"1E-5"},
      {2, L"1e+5", L"1e+15", L"1e-5"},     {4, L"1e+05", L"1e+15", L"1e-05"},
      {5, L"1E+05", L"1E+15", L"1E-05"},   {6, L"1e+005", L"1e+015", L"1e-005"},
      {8, L"1e5", L"1e15", L"1e-5"},       {13, L"1E05", L"1E15", L"1E-05"},
      {15, L"1E005", L"1E015", L"1E-005"}, {0xFFFFFFF0, L"1e+5", L"1e+15", L"1e-5"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(exponent(1e5, 0, {.flags = row.flags}), row.small) << row.flags;
    EXPECT_EQ(exponent(1e15, 0, {.flags = row.flags}), row.middle) << row.flags;
    EXPECT_EQ(exponent(1e-5, 0, {.flags = row.flags}), row.negative) << row.flags;
  }
}

TEST(DoubleToText, FindsTheExponentBesidePowersOfTen) {
  for (int power : {-300, -9, -8, -7, 0, 7, 8, 9, 15, 22, 300}) {
    const double value = std::stod("1e" + std::to_string(power));
    const std::wstring expected = (power < 0 ? L"1e-" : L"1e+") + std::to_wstring(std::abs(power));
    EXPECT_EQ(exponent(value, 14, {.trim = true}), expected);
    EXPECT_EQ(exponent(std::nextafter(value, 0), 14, {.trim = true}), expected);
    EXPECT_EQ(exponent(std::nextafter(value, kInfinity), 14, {.trim = true}), expected);
  }
}

TEST(DoubleToText, CutsToTheBufferAndReturnsTheWholeLength) {
  wchar_t text[4];
  EXPECT_EQ(__dbltostr(-12345.5, 1, text, 4, false, kFixedForm, false, 0, false), 8);
  EXPECT_STREQ(text, L"-12");
}

TEST(DoubleToText, WritesOnlyTheTerminatorIntoOneCharacter) {
  wchar_t text[1] = {L'#'};
  EXPECT_EQ(__dbltostr(12345, 0, text, 1, false, kFixedForm, false, 0, false), 0);
  EXPECT_EQ(text[0], 0);
}

TEST(DoubleToText, RefusesAMissingBuffer) {
  wchar_t text[4] = {L'#'};
  EXPECT_EQ(__dbltostr(1, 0, nullptr, 4, false, kFixedForm, false, 0, false), -1);
  EXPECT_EQ(__dbltostr(1, 0, text, 0, false, kFixedForm, false, 0, false), -1);
  EXPECT_EQ(__dbltostr(1, 0, text, -5, false, kFixedForm, false, 0, false), -1);
  EXPECT_EQ(text[0], L'#');
}

TEST(DoubleToText, WritesTheLargestAndSmallestValues) {
  EXPECT_EQ(exponent(DBL_MAX, 14), L"1.79769313486232e+308");
  EXPECT_EQ(exponent(DBL_MIN, 14), L"2.22507385850720e-308");
  EXPECT_EQ(exponent(kDenormal, 3), L"4.941e-324");
  EXPECT_EQ(exponent(2 * kDenormal, 3), L"9.881e-324");
  EXPECT_EQ(fixed(kDenormal, 2), L"0.00");
  EXPECT_EQ(fixed(1e308, 0), L"1" + std::wstring(308, L'0'));
}

TEST(DoubleToText, WritesLongTextsFromTheHeap) {
  EXPECT_EQ(fixed(1.5, 1000), L"1.5" + std::wstring(999, L'0'));
  EXPECT_EQ(fixed(0.5, 1000), L"0.5" + std::wstring(999, L'0'));
  EXPECT_EQ(fixed(1e-300, 1000), L"0." + std::wstring(299, L'0') + L"1" + std::wstring(700, L'0'));
  EXPECT_EQ(exponent(1.5, 1000), L"1.5" + std::wstring(999, L'0') + L"e+0");
}

TEST(DoubleToText, RefusesAnAbsurdPrecision) {
  for (double value : {0.0, 1.5, 1e-300, 1e308, 1e-5}) {
    for (FLOATTOTEXTFORMAT format : {kExponentForm, kFixedForm, kGeneralForm}) {
      wchar_t text[8] = L"before";
      EXPECT_EQ(__dbltostr(value, INT_MAX, text, 8, true, format, true, 0, false), -1);
      EXPECT_STREQ(text, L"");
    }
  }
}

// Exact reference: the decimal digits of the double, rounded half up as a text.

namespace {

struct ExactDecimal {
  std::string digits;  ///< enough of them to be exact where it matters
  int exponent = 0;
};

ExactDecimal exactly(double value) {
  char text[128];
  const int length = std::snprintf(text, sizeof text, "%.60e", value);
  const std::string all(text, static_cast<size_t>(length));
  const size_t mark = all.find('e');
  ExactDecimal result;
  result.digits = all[0] + all.substr(2, mark - 2);
  result.exponent = std::atoi(all.c_str() + mark + 1);
  return result;
}

/// How far the digits behind the first `count` are from one half, as a part of the last digit kept.
double distanceFromTie(const ExactDecimal& number, size_t count) {
  return std::fabs(std::stod("0." + number.digits.substr(count)) - 0.5);
}

std::wstring roundedExponentForm(ExactDecimal number, size_t count) {
  const bool up = number.digits[count] >= '5';
  std::string digits = number.digits.substr(0, count);
  size_t at = count;
  while (up && at > 0 && digits[at - 1] == '9') digits[--at] = '0';
  if (up && at > 0) {
    ++digits[at - 1];
  } else if (up) {
    digits[0] = '1';
    ++number.exponent;
  }
  std::string text = digits.substr(0, 1);
  if (count > 1) text += "." + digits.substr(1);
  text += number.exponent < 0 ? "e-" : "e+";
  text += std::to_string(std::abs(number.exponent));
  return {text.begin(), text.end()};
}

/// What the conversion may be away from plain rounding: the errors of the arithmetic, and the lift for nines.
double tolerance(size_t count) {
  return count == 15 ? 0.45 : 1.5 * std::pow(10.0, static_cast<double>(count) - 15);
}

void expectPlainRounding(double value, size_t count) {
  const ExactDecimal number = exactly(value);
  if (distanceFromTie(number, count) <= tolerance(count)) return;
  EXPECT_EQ(exponent(value, static_cast<int>(count) - 1), roundedExponentForm(number, count)) << value;
}

}  // namespace

TEST(DoubleToText, RoundsRandomValuesAsExactArithmeticDoes) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> magnitude(-12, 18);
  for (int i = 0; i < 20000; ++i) {
    const double value = std::pow(10.0, magnitude(random));
    expectPlainRounding(value, 1 + random() % 15);
  }
}

TEST(DoubleToText, RoundsRandomBitPatternsAsExactArithmeticDoes) {
  std::mt19937_64 random(2);
  for (int i = 0; i < 20000; ++i) {
    const double value = std::fabs(fromBits(random()));
    if (std::isnormal(value)) expectPlainRounding(value, 1 + random() % 14);
  }
}

TEST(DoubleToText, WritesEveryHundredthAsItIsWritten) {
  for (int hundredths = 0; hundredths < 200000; hundredths += 7) {
    wchar_t expected[32];
    std::swprintf(expected, 32, L"%d.%02d", hundredths / 100, hundredths % 100);
    ASSERT_EQ(fixed(hundredths / 100.0, 2), expected);
  }
}

TEST(DoubleToText, RoundsEveryHalfOfAHundredthUp) {
  for (int hundredths = 0; hundredths < 200000; hundredths += 7) {
    wchar_t expected[32];
    std::swprintf(expected, 32, L"%d.%02d", (hundredths + 1) / 100, (hundredths + 1) % 100);
    ASSERT_EQ(fixed((hundredths * 10 + 5) / 1000.0, 2), expected) << hundredths;
  }
}

TEST(DoubleToText, WritesIntegersOf15DigitsExactly) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 20000; ++i) {
    const long long value = static_cast<long long>(random() % 1000000000000000) >> random() % 50;
    ASSERT_EQ(fixed(static_cast<double>(value), 0), std::to_wstring(value));
    ASSERT_EQ(fixed(static_cast<double>(-value - 1), 0), std::to_wstring(-value - 1));
  }
}

TEST(DoubleToText, StaysWithinTheBufferWhateverTheBits) {
  std::mt19937_64 random(4);
  for (int i = 0; i < 50000; ++i) {
    const double value = fromBits(random());
    const int precision = static_cast<int>(random() % 400) - 10;
    const auto format = static_cast<FLOATTOTEXTFORMAT>(random() % 3);
    const Options options{random() % 2 == 0, random() % 2 == 0, static_cast<unsigned>(random() % 16)};
    const int size = 1 + static_cast<int>(random() % 60);
    const std::unique_ptr<wchar_t[]> small(new wchar_t[static_cast<size_t>(size)]);
    const int length = __dbltostr(value, precision, small.get(), size, options.plus, format, options.trim,
                                  options.flags, false);
    const std::wstring whole = convert(value, precision, format, options);
    if (!std::isfinite(value)) continue;
    const int expected = size == 1 ? 0 : static_cast<int>(whole.size());
    ASSERT_EQ(length, expected);
    ASSERT_EQ(std::wstring(small.get()), whole.substr(0, static_cast<size_t>(size) - 1));
  }
}

TEST(DoubleToText, WritesNothingButANumberWhateverTheBits) {
  std::mt19937_64 random(5);
  for (int i = 0; i < 20000; ++i) {
    const double value = fromBits(random());
    if (!std::isfinite(value)) continue;
    const std::wstring text = exponent(value, static_cast<int>(random() % 20));
    const double read = std::wcstod(text.c_str(), nullptr);
    if (std::isnormal(value)) {
      ASSERT_NEAR(read / value, 1, 0.5) << text.size();
    }
    ASSERT_EQ(text.find_first_not_of(L"-0123456789.e+"), std::wstring::npos);
  }
}

TEST(DecimalPoint, IsThePointOfTheLocaleOnDemand) {
  const std::string point = std::localeconv()->decimal_point;
  EXPECT_EQ(GetDecimalPoint(false), L'.');
  EXPECT_EQ(GetDecimalPoint(true), point.size() == 1 ? static_cast<wchar_t>(point[0]) : L' ');
}

TEST(DecimalPoint, IsThatOfTheLocaleWhichIsSetJustThen) {
  const support::TempFolder folder;
  const std::string locale = folder.path("de_DE.UTF-8");
  if (std::system(("localedef -i de_DE -f UTF-8 " + locale + " >/dev/null 2>&1").c_str()) != 0)
    GTEST_SKIP() << "localedef does not make a locale";
  wchar_t before[16], inGerman[16], withoutLocale[16], after[16];
  _ftot(0.5, 1, before, 16, false, false, 0, nullptr);
  setenv("LOCPATH", folder.path().c_str(), 1);
  const bool isSet = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
  _ftot(0.5, 1, inGerman, 16, false, false, 0, nullptr);
  __dbltostr(0.5, 1, withoutLocale, 16, false, kFixedForm, false, 0, false);
  std::setlocale(LC_NUMERIC, "C");
  unsetenv("LOCPATH");
  _ftot(0.5, 1, after, 16, false, false, 0, nullptr);
  if (!isSet) GTEST_SKIP() << "the locale cannot be set";
  EXPECT_STREQ(before, L"0.5");
  EXPECT_STREQ(inGerman, L"0,5");
  EXPECT_STREQ(withoutLocale, L"0.5");
  EXPECT_STREQ(after, L"0.5");
}

TEST(ConvertDecimal, WritesAPlainNumber) {
  wchar_t text[50];
  _ConvertDecimal_Gen(1234567890000000, 2, text, 50);
  EXPECT_STREQ(text, L"1.23456789E+15");
  EXPECT_EQ(_ConvertDecimal_Gen(-0.25, 0, text, 50), 5);
  EXPECT_STREQ(text, L"-0.25");
}

TEST(ConvertDecimal, RefusesANegativeSize) {
  wchar_t text[2] = {L'#'};
  EXPECT_EQ(_ConvertDecimal_Gen(1, 0, text, LONG_MIN), -1);
  EXPECT_EQ(text[0], L'#');
}

TEST(IntegerPart, SnapsToTheNextIntegerWithin4Units) {
  double value = 3;
  for (int units = 1; units <= 4; ++units) {
    value = std::nextafter(value, 0);
    EXPECT_EQ(_GetDoulbeInt(value), 3);
    EXPECT_EQ(_GetDoulbeInt(-value), -3);
  }
  EXPECT_EQ(_GetDoulbeInt(std::nextafter(value, 0)), 2);
}

TEST(IntegerPart, CutsOtherwise) {
  EXPECT_EQ(_GetDoulbeInt(2.75), 2);
  EXPECT_EQ(_GetDoulbeInt(-2.75), -2);
  EXPECT_EQ(_GetDoulbeInt(0), 0);
  EXPECT_EQ(_GetDoulbeInt(0.99999), 0);
}

TEST(IntegerPart, IsZeroForDenormals) {
  EXPECT_EQ(_GetDoulbeInt(kDenormal), 0);
  EXPECT_EQ(_GetDoulbeInt(-kDenormal), 0);
}

TEST(IntegerPart, TakesTheNextIntegerWhereAllIntegersAreNear) {
  EXPECT_EQ(_GetDoulbeInt(0x1p49), 0x1p49);
  EXPECT_EQ(_GetDoulbeInt(0x1p50), 0x1p50 + 1);
}

TEST(IntegerPart, KeepsWhatIsNotFinite) {
  EXPECT_EQ(_GetDoulbeInt(kInfinity), kInfinity);
  EXPECT_EQ(_GetDoulbeInt(-kInfinity), -kInfinity);
  EXPECT_TRUE(std::isnan(_GetDoulbeInt(std::nan(""))));
}

TEST(GreatestCommonDivisor, FindsIt) {
  EXPECT_EQ(_GreatestCommonDivisor(12, 18), 6);
  EXPECT_EQ(_GreatestCommonDivisor(18, 12), 6);
  EXPECT_EQ(_GreatestCommonDivisor(7, 5), 1);
  EXPECT_EQ(_GreatestCommonDivisor(0, 5), 5);
}

TEST(GreatestCommonDivisor, SurvivesAnyPair) {
  EXPECT_EQ(_GreatestCommonDivisor(0, 0), 0);
  EXPECT_EQ(_GreatestCommonDivisor(-12, 18), 6);
  EXPECT_EQ(_GreatestCommonDivisor(LONG_MIN, -1), 1);
  EXPECT_EQ(_GreatestCommonDivisor(LONG_MIN, 0), LONG_MIN);
}

TEST(ExportedConversion, WritesItsForm) {
  wchar_t text[32];
  int length = 0;
  EXPECT_EQ(_ftog(1500, 6, text, 32, true, false, 0, &length), 0u);
  EXPECT_STREQ(text, L"+1500");
  EXPECT_EQ(length, 5);
  EXPECT_EQ(_ftot(1500, 1, text, 32, false, false, 0, nullptr), 0u);
  EXPECT_STREQ(text, L"1500.0");
  EXPECT_EQ(_ftoe(1500, 3, text, 32, false, true, 5, nullptr), 0u);
  EXPECT_STREQ(text, L"1.5E+03");
}

TEST(ExportedConversion, ReportsFailure) {
  wchar_t text[32];
  int length = 0;
  EXPECT_EQ(_ftog(kInfinity, 6, text, 32, false, false, 0, &length), 0x80000008u);
  EXPECT_EQ(length, -1);
  EXPECT_EQ(_ftot(1, INT_MAX, text, 32, false, false, 0, nullptr), 0x80000008u);
  EXPECT_EQ(_ftoe(1, 2, nullptr, 32, false, false, 0, nullptr), 0x80000008u);
}

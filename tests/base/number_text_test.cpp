#include "base/number_text.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "support/temp_folder.h"

namespace {

std::string printed(const char* form, double value) {
  char text[400];
  std::snprintf(text, sizeof text, form, value);
  return text;
}

const double kOddDoubles[] = {0.0,    -0.0,          0.5,     -0.5,     1e-7,     5e-7,      1.5e-6,  2.5e-6,
                              1e15,   -1e22,         1e100,   1e300,    0.1,      0.05,      1.0 / 3, 2e-308,
                              5e-324, 99999.9999995, DBL_MAX, -DBL_MAX, INFINITY, -INFINITY, NAN,     -NAN};

/// Numbers of all magnitudes, and every bit pattern alike.
template <class Check>
void forManyDoubles(Check check) {
  for (double value : kOddDoubles) check(value);
  std::mt19937_64 random(7);
  for (int i = 0; i < 100000; ++i) {
    const uint64_t bits = random();
    double value;
    std::memcpy(&value, &bits, sizeof value);
    check(value);
    check(static_cast<double>(static_cast<int64_t>(bits) >> 40) / 1000);
  }
}

}  // namespace

TEST(NumberText, EveryTwipComesOutAsPrintfWritesIt) {
  for (int twips = -65536; twips <= 65536; ++twips)
    ASSERT_EQ(points(twips).c_str(), printed("%lfpt", twips / 20.0)) << twips;
}

TEST(NumberText, TheLargestTwipsComeOutToo) {
  for (int twips : {INT_MIN, INT_MIN + 1, INT_MAX, 1234567891})
    EXPECT_EQ(points(twips).c_str(), printed("%lfpt", twips / 20.0));
}

TEST(NumberText, FixedNumbersAreThoseOfPrintf) {
  forManyDoubles([](double value) { ASSERT_EQ(fixedNumber(value).c_str(), printed("%lf", value)); });
}

TEST(NumberText, GeneralNumbersAreThoseOfPrintf) {
  forManyDoubles([](double value) { ASSERT_EQ(generalNumber(value).c_str(), printed("%.18g", value)); });
}

TEST(NumberText, PointsOfALengthAreThoseOfPrintf) {
  forManyDoubles([](double value) {
    if (!(std::fabs(value) < 1e50)) return;
    ASSERT_EQ(pointsOf(value).c_str(), printed("%lfpt", value));
  });
}

TEST(NumberText, FixedDecimalsAreThoseOfPrintf) {
  for (int decimals = 0; decimals <= 9; ++decimals) {
    const std::string form = "%." + std::to_string(decimals) + "f";
    for (double value : {0.5, 1.5, 2.675, -0.04, 1e9 / 7})
      EXPECT_EQ(NumberText().appendFixed(value, decimals).c_str(), printed(form.c_str(), value));
  }
}

TEST(NumberText, DecimalsHalfwayAreRoundedToEven) {
  for (int decimals = 0; decimals <= 7; ++decimals) {
    const std::string form = "%." + std::to_string(decimals) + "f";
    for (int i = -5000; i <= 5000; ++i) {
      for (const double parts : {2.0, 8.0, 64.0, 128.0, 16384.0, 1048576.0}) {
        const double value = i / parts;
        ASSERT_EQ(NumberText().appendFixed(value, decimals).c_str(), printed(form.c_str(), value));
      }
    }
  }
}

TEST(NumberText, DecimalsBesideAHalfAreNotTakenForOne) {
  for (int decimals = 0; decimals <= 6; ++decimals) {
    const std::string form = "%." + std::to_string(decimals) + "f";
    for (const double half :
         {0.5, 0.125, 2.5, 1e6 + 0.5, 4294967295.5, 4294967296.5, 0.000488281250, 99.995}) {
      for (const double value : {std::nextafter(half, 0), half, std::nextafter(half, 1e10)})
        ASSERT_EQ(NumberText().appendFixed(-value, decimals).c_str(), printed(form.c_str(), -value));
    }
  }
}

TEST(NumberText, HasAPointInLocalesWithAComma) {
  const support::TempFolder folder;
  const std::string locale = folder.path("de_DE.UTF-8");
  if (std::system(("localedef -i de_DE -f UTF-8 " + locale + " >/dev/null 2>&1").c_str()) != 0)
    GTEST_SKIP() << "localedef does not make a locale";
  setenv("LOCPATH", folder.path().c_str(), 1);
  const std::string before = std::setlocale(LC_NUMERIC, nullptr);
  const bool isSet = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") && printed("%.1f", 0.5) == "0,5";
  const std::string texts = std::string(NumberText().appendFixed(1e10, 1).c_str()) + ' ' +
                            fixedNumber(0.00001).c_str() + ' ' + generalNumber(0.5).c_str();
  std::setlocale(LC_NUMERIC, before.c_str());
  unsetenv("LOCPATH");
  if (!isSet) GTEST_SKIP() << "the locale cannot be set";
  EXPECT_EQ(texts, "10000000000.0 0.000010 0.5");
}

TEST(NumberText, IntegersReachTheirLimits) {
  EXPECT_STREQ(number(INT_MIN).c_str(), "-2147483648");
  EXPECT_STREQ(NumberText().appendInt(INT64_MIN).c_str(), "-9223372036854775808");
  EXPECT_STREQ(NumberText().appendUnsigned(UINT64_MAX).c_str(), "18446744073709551615");
  EXPECT_STREQ(numbered("std", 12).c_str(), "std12");
}

TEST(NumberText, IntegersOfEveryLengthComeOut) {
  for (unsigned long long value = 1; value < UINT64_MAX / 10; value = value * 10 + value % 7) {
    for (unsigned long long each : {value - 1, value, value * 10 - 1})
      EXPECT_EQ(NumberText().appendUnsigned(each).c_str(), std::to_string(each));
  }
}

TEST(NumberText, ANumberThatDoesNotFitIsCut) {
  FixedText<32> text;
  text.append("01234567890123456789012345").appendUnsigned(987654);
  EXPECT_STREQ(text.c_str(), "0123456789012345678901234598765");
  EXPECT_STREQ(text.appendUnsigned(1).c_str(), "0123456789012345678901234598765");
}

TEST(NumberText, ANumberThatJustFitsIsWhole) {
  FixedText<32> text;
  text.append("0123456789012345678901234").appendUnsigned(987654);
  EXPECT_STREQ(text.c_str(), "0123456789012345678901234987654");
}

TEST(NumberText, AWordColourHasRedInTheLowByte) {
  EXPECT_STREQ(wordColour(0xFF0AB1C2).c_str(), "#C2B10A");
}

TEST(NumberText, WhatDoesNotFitIsCut) {
  FixedText<32> text;
  text.append("0123456789012345678901234567890123456789");
  EXPECT_EQ(text.size(), 31u);
  EXPECT_STREQ(text.append('x').c_str(), "0123456789012345678901234567890");
}

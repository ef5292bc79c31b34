#include "story/list_number.h"

#include <gtest/gtest.h>

#include <string>

#include "numformat/number_format_service.h"

namespace pagerex {
namespace {

/// As the service spells it under the format string of the level's number format.
std::wstring byFormatString(NumberFormatService& formats, unsigned int number, unsigned int nfc) {
  tagVARIANT value{};
  value.vt = NF_VT_UI4;
  value.ulVal = number;
  std::wstring text;
  formats.Format(value, g_Nfc2FormatString(g_MsoNfc2VtxNfc(nfc)), text);
  return text;
}

std::wstring spelled(NumberFormatService& formats, unsigned int number, unsigned int nfc) {
  std::wstring text = L"before";
  EXPECT_EQ(TxFormatNum(formats, number, nfc, &text), Status::kOk);
  return text;
}

TEST(DecimalListNumbers, AreSpelledAsTheirFormatStringSays) {
  NumberFormatService formats;
  for (unsigned int number = 0; number < 20'000; ++number) {
    ASSERT_EQ(spelled(formats, number, kDecimalNfc), byFormatString(formats, number, kDecimalNfc)) << number;
  }
  for (unsigned int number = 1; number != 0; number *= 2) {
    for (const unsigned int near : {number - 1, number, number + 1, 0u - number}) {
      ASSERT_EQ(spelled(formats, near, kDecimalNfc), byFormatString(formats, near, kDecimalNfc)) << near;
    }
  }
}

TEST(ListNumbers, OfOtherFormatsAreSpelledAsTheirFormatStringSays) {
  NumberFormatService formats;
  for (const unsigned int nfc : {1u, 2u, 3u, 4u, 5u, 22u}) {
    for (const unsigned int number : {0u, 1u, 4u, 9u, 27u, 1999u}) {
      EXPECT_EQ(spelled(formats, number, nfc), byFormatString(formats, number, nfc)) << nfc << ' ' << number;
    }
  }
}

}  // namespace
}  // namespace pagerex

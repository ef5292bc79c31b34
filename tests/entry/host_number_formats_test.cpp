#include <gtest/gtest.h>

#include <memory>

#include "entry/conversion.h"
#include "pagerex/numformat.h"

namespace {

/// The text of 1 under "0.00"; "(none)" if there is none.
std::wstring shown() {
  tagVARIANT one = {};
  one.vt = NF_VT_R8;
  one.dblVal = 1;
  wchar_t* text = nullptr;
  _XNFFormat(&one, L"0.00", &text, nullptr, nullptr);
  const std::unique_ptr<wchar_t[]> owner(text);
  return text ? text : L"(none)";
}

}  // namespace

TEST(NumberFormatsOfTheHost, AreKeptOverAConversion) {
  _XNFInit();
  KNumericalFormat *before = nullptr, *after = nullptr;
  _XNFCompile(L"0.00", &before, nullptr);
  EXPECT_EQ(Conversion(documentOf({"text"})).run(), PAGEREX_OK);
  _XNFCompile(L"0.00", &after, nullptr);
  EXPECT_EQ(before, after);
  EXPECT_EQ(shown(), L"1.00");
  for (KNumericalFormat* format : {before, after}) _XNFRelease(format);
  _XNF_ClearNFTableCache();
  _XNFUnInit();
}

TEST(NumberFormatsOfTheHost, AreNotStartedByAConversion) {
  _XNFUnInit();
  EXPECT_EQ(Conversion(documentOf({"text"})).run(), PAGEREX_OK);
  EXPECT_EQ(shown(), L"(none)");
}

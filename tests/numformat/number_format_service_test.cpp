#include "numformat/number_format_service.h"

#include <gtest/gtest.h>

#include "formats.h"
#include "numformat/sectioned_format.h"

namespace {

/// The text under a format that was compiled just for it; "(failed)" if it does not compile.
std::wstring under(const wchar_t* format, const tagVARIANT& value) {
  NumberFormatService formats;
  std::wstring text = L"left over";
  return failed(formats.Format(value, format, text)) ? L"(failed)" + text : text;
}

}  // namespace

TEST(NumberFormatService, FormatsWhetherOrNotTheHostHasStartedItsOwn) {
  _XNFUnInit();
  EXPECT_EQ(under(L"#,##0.00", number(1234.5)), L"1,234.50");
  _XNFInit();
  EXPECT_EQ(under(L"[dbnum4]#", serial(14)), L"XIV");
}

TEST(NumberFormatService, EmptiesTheTextWhereThereIsNone) {
  EXPECT_EQ(under(L"0;;", number(-1)), L"");
  EXPECT_EQ(under(L"\\", number(1)), L"(failed)");
}

TEST(NumberFormatService, TellsThatAFormatIsMalformed) {
  NumberFormatService formats;
  std::wstring text;
  KNFSect* compiled = nullptr;
  EXPECT_EQ(formats.Format(number(1), L"0;0;0;0;0", text), Status::kInvalidArgument);
  EXPECT_EQ(formats.Compile(L"0;0;0;0;0", nullptr, &compiled), Status::kInvalidArgument);
  EXPECT_EQ(compiled, nullptr);
  EXPECT_EQ(formats.Find(L"0;0;0;0;0"), nullptr);
}

TEST(NumberFormatService, CompilesAFormatOnce) {
  NumberFormatService formats;
  KNFSect *first = nullptr, *second = nullptr;
  formats.Compile(L"0.0", nullptr, &first);
  formats.Compile(L"0.0", nullptr, &second);
  EXPECT_EQ(first, second);
  EXPECT_EQ(formats.Find(L"0.0"), first);
  EXPECT_EQ(first->References(), 1);
}

TEST(NumberFormatService, SharesNoFormatWithAnother) {
  NumberFormatService one, other;
  KNFSect *first = nullptr, *second = nullptr;
  one.Compile(L"0.0", nullptr, &first);
  EXPECT_EQ(other.Find(L"0.0"), nullptr);
  other.Compile(L"0.0", nullptr, &second);
  EXPECT_NE(first, second);
}

TEST(NumberFormatService, SharesNoFormatWithTheHosts) {
  _XNFInit();
  NumberFormatService formats;
  std::wstring text;
  formats.Format(number(1), L"0.000", text);
  KNumericalFormat* ofHost = nullptr;
  _XNFCompile(L"0.000", &ofHost, nullptr);
  EXPECT_NE(static_cast<KNumericalFormat*>(formats.Find(L"0.000")), ofHost);
  _XNFRelease(ofHost);
  _XNF_ClearNFTableCache();
  EXPECT_NE(formats.Find(L"0.000"), nullptr);
}

TEST(NumberFormatService, AsksForTheStringOfAKeyOnce) {
  NumberFormatService formats;
  int asked = 0;
  const auto stringOf = [&asked](unsigned key) { return ++asked, std::wstring(key, L'0'); };
  std::wstring text;
  EXPECT_EQ(formats.FormatByKey(serial(7), 3, stringOf, text), Status::kOk);
  EXPECT_EQ(text, L"007");
  formats.FormatByKey(number(8), 3, stringOf, text);
  EXPECT_EQ(text, L"008");
  formats.FormatByKey(number(9), 2, stringOf, text);
  EXPECT_EQ(text, L"09");
  EXPECT_EQ(asked, 2);
}

TEST(NumberFormatService, FindsNoFormatForTheKeyOfAMalformedOne) {
  NumberFormatService formats;
  const auto malformed = [](unsigned) { return std::wstring(L"\""); };
  std::wstring text = L"left over";
  EXPECT_EQ(formats.FormatByKey(serial(1), 0, malformed, text), Status::kInvalidArgument);
  EXPECT_EQ(formats.FormatByKey(serial(1), 0, malformed, text), Status::kInvalidArgument);
  EXPECT_EQ(text, L"");
}

TEST(NumberFormatService, ReportsAValueThatTheFormatCannotShow) {
  NumberFormatService formats;
  std::wstring text = L"left over";
  EXPECT_EQ(formats.Format(tagged(12), L"0", text), Status::kFailure);
  EXPECT_EQ(text, L"");
}

#include "base/encoding.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <thread>
#include <vector>

#include "base/status.h"

namespace {

const unsigned short* units(const char16_t* text) {
  return reinterpret_cast<const unsigned short*>(text);
}

}  // namespace

TEST(Encoding, WideTextBecomesUtf8) {
  EXPECT_EQ(KEncoding::WCharToString(65001, L"a\u00e9\u4e2d\U0001F600"), "a\u00e9\u4e2d\U0001F600");
}

TEST(Encoding, NeedsNoLocale) {
  std::setlocale(LC_ALL, "C");
  EXPECT_EQ(KEncoding::WCHAR2BitToString(65001, units(u"\u4e2d")), "\u4e2d");
}

TEST(Encoding, GivesTheBytesOfTheCLibrary) {
  ASSERT_NE(KEncoding::SetLocale("zh_CN.UTF-8"), nullptr);
  for (wchar_t c = 1; c < 0x110000; c += c < 0x3000 ? 1 : 61) {
    const wchar_t text[2] = {c, 0};
    char bytes[16] = {};
    const size_t size = std::wcstombs(bytes, text, sizeof bytes);
    const std::string expected = size == static_cast<size_t>(-1) ? "" : bytes;
    ASSERT_EQ(KEncoding::WCharToString(65001, text), expected) << static_cast<int>(c);
  }
}

TEST(Encoding, ALengthCutsTheTextAndSoDoesANul) {
  EXPECT_EQ(KEncoding::WCharToString(65001, L"abc", 2), "ab");
  EXPECT_EQ(KEncoding::WCHAR2BitToString(65001, units(u"a\0c"), 3), "a");
}

TEST(Encoding, SurrogatePairsAreJoinedAndHalvesLeftOut) {
  EXPECT_EQ(KEncoding::WCHAR2BitToString(65001, units(u"a\xD83D\xDE00\xDE00\xD83D"
                                                      u"b")),
            "a\U0001F600b");
}

TEST(Encoding, TheBufferHoldsTheCountOfBytesAndANul) {
  char* out = nullptr;
  EXPECT_EQ(KEncoding::WCharToMByteT(65001, L"\u4e2d", -1, &out), 3);
  EXPECT_STREQ(out, "\u4e2d");
  delete[] out;
  EXPECT_EQ(KEncoding::WCHAR2BitToMByteT(65001, units(u""), -1, &out), 0);
  EXPECT_STREQ(out, "");
  delete[] out;
}

TEST(Encoding, NullTextsHaveTheirOwnResults) {
  char* out = nullptr;
  EXPECT_EQ(KEncoding::WCharToMByteT(65001, nullptr, -1, &out), 0);
  EXPECT_EQ(KEncoding::WCHAR2BitToMByteT(65001, nullptr, -1, &out), static_cast<int>(0x80000003));
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(KEncoding::WCharToString(65001, nullptr), "");
  EXPECT_EQ(KEncoding::WCHAR2BitToString(65001, nullptr), "");
}

TEST(Encoding, AWideCharacterWithoutUtf8FormFailsTheText) {
  char* out = nullptr;
  const wchar_t half[] = {'a', 0xD83D, 0};
  EXPECT_EQ(KEncoding::WCharToMByteT(65001, half, -1, &out), -1);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(KEncoding::WCharToString(65001, half), "");
}

TEST(Encoding, CodePageNamesAreCP936AndUtf8WithAMinusSign) {
  EXPECT_STREQ(KEncoding::GetCodePageName(936), "CP936");
  EXPECT_STREQ(KEncoding::GetCodePageName(65001),
               "UTF\xE2\x88\x92"
               "8");
}

TEST(Encoding, AnotherCodePageIsReachedThroughIconv) {
  EXPECT_EQ(KEncoding::WCharToString(936, L"\u4e2d"), "\xD6\xD0");
  EXPECT_EQ(KEncoding::WCHAR2BitToString(936, units(u"a\u4e2d")), "a\xD6\xD0");
}

TEST(Encoding, WhatTheCodePageCannotHoldStaysUtf8) {
  EXPECT_EQ(KEncoding::WCharToString(936, L"\U0001F600"), "\U0001F600");
}

TEST(Encoding, TheLocaleIsSetFromSeveralThreadsAtOnce) {
  std::setlocale(LC_ALL, "C");
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) threads.emplace_back([] { KEncoding::SetLocale("C.UTF-8"); });
  for (std::thread& thread : threads) thread.join();
  EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C.UTF-8");
}

TEST(Encoding, ALocaleThatIsSetAlreadyStaysUntouched) {
  const char* const set = KEncoding::SetLocale("C.UTF-8");
  EXPECT_EQ(KEncoding::SetLocale("C.UTF-8"), set);
  EXPECT_STREQ(set, "C.UTF-8");
}

TEST(Encoding, ALocaleThatIsSetInPartIsSetWhole) {
  std::setlocale(LC_ALL, "C.UTF-8");
  std::setlocale(LC_NUMERIC, "C");
  KEncoding::SetLocale("C.UTF-8");
  EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C.UTF-8");
}

TEST(Encoding, AnUnknownLocaleFallsBackToOneThatConverts) {
  ASSERT_NE(KEncoding::SetLocale("no_WHERE.UTF-8"), nullptr);
  EXPECT_EQ(MB_CUR_MAX, 6u);
}

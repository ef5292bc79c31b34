#include <gtest/gtest.h>

#include <latch>
#include <random>
#include <thread>
#include <vector>

#include "formats.h"

// All functions from many threads at once. ThreadSanitizer sees more here than the comparisons do.

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 200;

constexpr const wchar_t* kFormats[] = {
    L"#,##0.00",    L"0.0E+00", L"# ?/?",          L"yyyy-mm-dd hh:mm",       L"[DBNum2][$RMB]General",
    L"General",     L"<@>",     L"[Red]0;[Blue]-", L"[DBNum1]#,##0",          L"0.00%;\"minus\"0%;;@",
    L"[$-411]ggge", L"[h]:mm",  L"[dbnum4]#",      L"[DBNum1][$-411]General",
};

tagVARIANT valueOf(std::mt19937& random) {
  switch (random() % 4) {
    case 0:
      return serial(static_cast<uint32_t>(random() % 3000));
    case 1:
      return string(L"words");
    default:
      return number((static_cast<double>(random() % 2000000) - 100000) / 128);
  }
}

/// Everything that one round tells, on a format that others use too.
std::wstring roundOf(std::mt19937& random) {
  const wchar_t* const text = kFormats[random() % std::size(kFormats)];
  constexpr decltype(&_XNFCompile) kCompilers[] = {_XNFCompile, _XNFCompile, _XNFCompileForExcel,
                                                   _XNFCompileForWord};
  KNumericalFormat* format = nullptr;
  std::wstring told = std::to_wstring(kCompilers[random() % std::size(kCompilers)](text, &format, nullptr));
  _XNFAddRef(format);
  const tagVARIANT value = valueOf(random);
  NFSTYLE style = {};
  wchar_t* shown = nullptr;
  told += L' ' + std::to_wstring(_XNFFormatEx(&value, format, &shown, &style, nullptr));
  told += take(shown).value_or(L"(none)") + L' ' + std::to_wstring(style.codePage);
  _XNFRelease(format);
  if (random() % 8 == 0) _XNF_ClearNFTableCache();
  wchar_t* written = nullptr;
  _XNFUnCompile(format, &written, nullptr);
  told += take(written).value_or(L"(none)");
  wchar_t* again = nullptr;
  _XNFFormat(&value, text, &again, nullptr, nullptr);
  told += take(again).value_or(L"(none)");
  double rounded = 1.2345;
  told += std::to_wstring(_XNFFormatPrecision(format, &rounded)) + std::to_wstring(rounded);
  NF_SECTS_INFO info = {};
  _XNF_GetSectsInfo(format, &info);
  _XNFRelease(format);
  return told + std::to_wstring(info.count);
}

std::vector<std::wstring> roundsOf(unsigned seed) {
  std::mt19937 random(seed);
  std::vector<std::wstring> rounds;
  for (int i = 0; i < kRounds; ++i) rounds.push_back(roundOf(random));
  return rounds;
}

/// What each thread's rounds tell when all run at once.
std::vector<std::vector<std::wstring>> allAtOnce() {
  std::vector<std::vector<std::wstring>> told(kThreads);
  std::latch start(kThreads);
  std::vector<std::thread> threads;
  for (unsigned i = 0; i < kThreads; ++i) {
    threads.emplace_back([i, &told, &start] {
      start.arrive_and_wait();
      _XNFInit();
      told[i] = roundsOf(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
  return told;
}

}  // namespace

TEST(NumberFormatThreads, GetWhatOneThreadGets) {
  const auto told = allAtOnce();
  for (unsigned i = 0; i < kThreads; ++i) EXPECT_EQ(told[i], roundsOf(i)) << "thread " << i;
  _XNF_ClearNFTableCache();
}

TEST(NumberFormatThreads, ShareOneFormatOfAString) {
  _XNFInit();
  std::vector<KNumericalFormat*> formats(kThreads);
  std::latch start(kThreads);
  std::vector<std::thread> threads;
  for (unsigned i = 0; i < kThreads; ++i) {
    threads.emplace_back([i, &formats, &start] {
      start.arrive_and_wait();
      _XNFCompile(L"0.000", &formats[i], nullptr);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(std::vector<KNumericalFormat*>(kThreads, formats[0]), formats);
  _XNF_ClearNFTableCache();
  double value = 1.26;
  EXPECT_EQ(_XNFFormatPrecision(formats[0], &value), NF_OK);
  for (KNumericalFormat* format : formats) _XNFRelease(format);
}

TEST(NumberFormatThreads, FormatUnderOneFormatAtOnce) {
  const Format format(L"[DBNum2][$RMB]General;\"minus\"0.0E+0;0.0;<@>");
  std::latch start(kThreads);
  std::vector<std::thread> threads;
  std::vector<int> wrong(kThreads);
  for (unsigned i = 0; i < kThreads; ++i) {
    threads.emplace_back([i, &format, &start, &wrong] {
      const tagVARIANT value = i % 2 == 0 ? string(L"words") : number(-1500);
      const std::wstring expected = i % 2 == 0 ? L"<words>" : L"minus1.5E+3";
      start.arrive_and_wait();
      for (int round = 0; round < kRounds; ++round) wrong[i] += format.text(value) != expected;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, std::vector<int>(kThreads));
}

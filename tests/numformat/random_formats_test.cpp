#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "formats.h"

namespace {

/// Pieces of the format language, whole and broken, and what is none of it.
constexpr const wchar_t* kPieces[] = {
    L"0",        L"#",          L"?",         L"x",          L".",      L",",       L"%",       L"/",
    L"E",        L"e",          L"E+",        L"e-",         L"+",      L"-",       L"@",       L"_",
    L"*",        L"!",          L"\\",        L"\"",         L"'",      L";",       L"[",       L"]",
    L"[]",       L" ",          L"General",   L"G/通用格式", L"yyyy",   L"y",       L"ggg",     L"g",
    L"ee",       L"EE",         L"mmmmm",     L"mmm",        L"mm",     L"m",       L"MM",      L"M",
    L"MMM",      L"dddd",       L"DDD",       L"d",          L"www",    L"w",       L"aaaa",    L"aaa",
    L"a",        L"A",          L"O",         L"HH",         L"hh",     L"h",       L"ss",      L"s",
    L"AM/PM",    L"a/p",        L"上午/下午", L"午前/午後",  L"b1",     L"b",       L"1",       L"7",
    L"k",        L"[h]",        L"[mm]",      L"[sss]",      L"[d]",    L"[Red]",   L"[黑色]",  L"[DBNum1]",
    L"[DBNum2]", L"[DBNum4]",   L"[DBNum8]",  L"[DBNum20]",  L"[$RMB]", L"[$-411]", L"[$-804]", L"[$-42A]",
    L"[$€-407]", L"[$]",        L"[abc]",     L"\"text\"",   L"'text'", L"\\-",     L"!/",      L"_x",
    L"**",       L"\"\x00A5\"", L"\x00E9",    L"\U0001F600"};

constexpr double kValues[] = {0,
                              -0.0,
                              1,
                              -1,
                              0.5,
                              -0.04,
                              1.005,
                              1234567.891,
                              -9999.995,
                              45000.75,
                              2958465.9,
                              1e15,
                              1e20,
                              -1e308,
                              5e-324,
                              1e-300,
                              2958465,
                              1.0 / 3,
                              std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()};
constexpr Language kLanguages[] = {kEnglish, kJapanese, kChinese, kVietnamese};

/// The same formats in every run.
class RandomFormats {
 public:
  std::wstring next() {
    std::wstring format;
    for (unsigned count = 1 + pick(pick(20) == 0 ? 90 : 12); count > 0; --count) {
      format += pick(10) == 0 ? std::wstring(1, static_cast<wchar_t>(1 + pick(0x2FF)))
                              : kPieces[pick(std::size(kPieces))];
    }
    return format;
  }
  template <class Item, size_t N>
  const Item& of(const Item (&items)[N]) {
    return items[pick(N)];
  }

 private:
  unsigned pick(size_t count) { return static_cast<unsigned>(random_() % count); }
  std::mt19937 random_{20};
};

/// The texts of all values, in the order of kValues.
std::wstring allTexts(const Format& format, const NF_FORMAT_PARAM& param) {
  std::wstring texts;
  for (double value : kValues) texts += format.text(value, &param) + L'\n';
  texts += format.text(string(L"text"), &param) + L'\n';
  texts += format.text(serial(1234), &param) + L'\n';
  return texts + format.text(tagged(NF_VT_EMPTY), &param);
}

constexpr Dialect kWithWriter[] = {Dialect::kOQ, Dialect::kExcel, Dialect::kWord};
constexpr size_t kLongestFormat = 255;

/// Whether `text` compiles. What it is written back as then has to show the same, unless that is too long.
bool comesBackTheSame(const std::wstring& text, Dialect dialect, const NF_FORMAT_PARAM& param) {
  const Format first(text, dialect, param);
  if (first.result() != NF_OK) return false;
  const std::wstring back = writtenBack(first, dialect, &param);
  if (back.size() > kLongestFormat) return true;
  const Format second(back, dialect, param);
  EXPECT_EQ(second.result(), NF_OK) << testing::PrintToString(text) << " -> " << testing::PrintToString(back);
  if (second.result() != NF_OK) return true;
  EXPECT_EQ(allTexts(second, param), allTexts(first, param))
      << testing::PrintToString(text) << " -> " << testing::PrintToString(back);
  return true;
}

}  // namespace

TEST(RandomFormats, ComeBackTheSameAfterDecompiling) {
  RandomFormats random;
  int compiled = 0;
  for (int i = 0; i < 10000 && !testing::Test::HasFailure(); ++i) {
    const std::wstring text = random.next();
    const Dialect dialect = random.of(kWithWriter);
    compiled += comesBackTheSame(text, dialect, in(random.of(kLanguages)));
  }
  EXPECT_GT(compiled, 1000);
}

TEST(RandomFormats, OfTwoPiecesComeBackTheSameAfterDecompiling) {
  int compiled = 0;
  for (Dialect dialect : kWithWriter) {
    for (const wchar_t* first : kPieces) {
      for (const wchar_t* second : kPieces) {
        compiled += comesBackTheSame(std::wstring(first) + second, dialect, in(kEnglish));
      }
    }
  }
  EXPECT_GT(compiled, 8000);
}

TEST(RandomFormats, DoNoHarmWithAnyParameter) {
  RandomFormats random;
  for (int i = 0; i < 10000; ++i) {
    const std::wstring text = random.next();
    const Dialect dialect = random.of(kDialects);
    const NF_FORMAT_PARAM param = {i % 20 - 1, static_cast<uint32_t>(i) & 0xF, random.of(kLanguages)};
    const Format format(text, dialect, param);
    if (format.result() != NF_OK) {
      ASSERT_EQ(format.get(), nullptr);
      continue;
    }
    allTexts(format, param);
    for (double value : kValues) _XNFFormatPrecision(format.get(), &value);
  }
}

TEST(RandomFormats, OfAnyCharactersDoNoHarm) {
  std::mt19937 random(21);
  for (int i = 0; i < 20000; ++i) {
    std::wstring text(random() % 40, L' ');
    for (wchar_t& c : text) c = static_cast<wchar_t>(1 + random() % (i % 2 ? 0x7F : 0x7FFFFFFF));
    const Format format(text, kDialects[i % 4]);
    if (format.result() == NF_OK) allTexts(format, in(kEnglish));
  }
}

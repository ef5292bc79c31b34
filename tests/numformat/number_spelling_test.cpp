#include "numformat/number_spelling.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

const KNFCodePage& pages = KNFCodePageInstance;

constexpr unsigned long kLastCounted = 1200;

std::wstring serial(int page, unsigned long n) {
  std::wstring out = L"before";
  EXPECT_EQ(pages.SerialNumber(static_cast<NF_CODEPAGE>(page), n, out), Status::kOk);
  return out;
}

std::wstring serialJapanese(int page, unsigned long n) {
  std::wstring out = L"before";
  EXPECT_EQ(pages.SerialNumber_JP(page, n, out), Status::kOk);
  return out;
}

void expectCount(int page, const std::function<std::wstring(unsigned long)>& expected) {
  for (unsigned long n = 0; n <= kLastCounted; ++n)
    ASSERT_EQ(serial(page, n), expected(n)) << page << " " << n;
}

/// A page whose characters stand for 1 and up, decimal above them and "0" for zero.
void expectCharacters(int page, const std::wstring& characters) {
  expectCount(page, [&](unsigned long n) {
    return n > 0 && n <= characters.size() ? std::wstring(1, characters[n - 1]) : std::to_wstring(n);
  });
}

std::wstring range(wchar_t first, wchar_t last) {
  std::wstring all;
  for (wchar_t c = first; c <= last; ++c) all += c;
  return all;
}

/// Katakana for a text in hiragana.
std::wstring katakana(std::wstring hiragana) {
  for (wchar_t& c : hiragana) c += 0x60;
  return hiragana;
}

std::wstring roman(unsigned long n, bool upper) {
  const std::pair<unsigned long, const wchar_t*> steps[] = {
      {1000, L"m"}, {900, L"cm"}, {500, L"d"}, {400, L"cd"}, {100, L"c"}, {90, L"xc"}, {50, L"l"},
      {40, L"xl"},  {10, L"x"},   {9, L"ix"},  {5, L"v"},    {4, L"iv"},  {1, L"i"}};
  std::wstring text;
  for (const auto& [value, letters] : steps) {
    for (; n >= value; n -= value) text += letters;
  }
  for (wchar_t& c : text) c = upper ? static_cast<wchar_t>(c - L'a' + L'A') : c;
  return text;
}

/// Counts in letters by adding one to the text before.
std::wstring nextLetters(std::wstring text, wchar_t first) {
  const wchar_t last = first + 25;
  size_t at = text.size();
  while (at > 0 && text[at - 1] == last) text[--at] = first;
  if (at == 0) return first + text;
  ++text[at - 1];
  return text;
}

/// Chinese numerals below ten thousand, spelled from the highest word down.
struct Chinese {
  std::wstring digits, ten, hundred, thousand;

  std::wstring spell(unsigned long n) const { return n == 0 ? digits.substr(0, 1) : below10000(n); }
  std::wstring below10000(unsigned long n) const {
    const std::pair<unsigned long, std::wstring> words[] = {{1000, thousand}, {100, hundred}, {10, ten}};
    for (const auto& [value, word] : words) {
      if (n < value) continue;
      const unsigned long rest = n % value;
      std::wstring text = digits[n / value] + word;
      if (rest == 0) return text;
      if (rest < value / 10) text += digits[0];
      return text + below10000(rest);
    }
    return digits.substr(n, 1);
  }
};

const Chinese kPlain{L"\u25CB一二三四五六七八九", L"十", L"百", L"千"};
const Chinese kMoney{L"零壹贰叁肆伍陆柒捌玖", L"拾", L"佰", L"仟"};

std::wstring withoutLeadingOne(std::wstring text, unsigned long n) {
  return n >= 10 && n < 20 ? text.substr(1) : text;
}

/// Japanese numerals below ten thousand: no zeros, and ones before words as `keepOne` says.
std::wstring japaneseWords(unsigned long n, const std::wstring& table, bool keepOne) {
  if (n == 0) return table.substr(0, 1);
  std::wstring text;
  unsigned long value = 1000;
  for (int word = 12; value > 0; --word, value /= 10) {
    const unsigned long digit = n / value % 10;
    if (digit == 0) continue;
    if (digit > 1 || keepOne || value == 1) text += table[digit];
    if (value > 1) text += table[static_cast<size_t>(word)];
  }
  return text;
}

/// English words by a table of all numbers below one hundred.
std::vector<std::wstring> wordsBelow100() {
  std::vector<std::wstring> words = {L"zero",    L"one",     L"two",       L"three",     L"four",
                                     L"five",    L"six",     L"seven",     L"eight",     L"nine",
                                     L"ten",     L"eleven",  L"twelve",    L"thirteen",  L"fourteen",
                                     L"fifteen", L"sixteen", L"seventeen", L"eightteen", L"nineteen"};
  for (const wchar_t* tens :
       {L"twenty", L"thirty", L"forty", L"fifty", L"sixty", L"seventy", L"eighty", L"ninety"}) {
    words.push_back(tens);
    for (int unit = 1; unit < 10; ++unit) words.push_back(std::wstring(tens) + L"-" + words[unit]);
  }
  return words;
}

std::wstring cardinal(unsigned long n) {
  static const std::vector<std::wstring> words = wordsBelow100();
  if (n < 100) return words[n];
  const unsigned long unit = n < 1000 ? 100 : 1000;
  const std::wstring rest = n % unit ? L" " + cardinal(n % unit) : L"";
  return cardinal(n / unit) + (unit == 100 ? L" hundred" : L" thousand") + rest;
}

std::wstring ordinal(unsigned long n) {
  static const std::map<std::wstring, std::wstring> irregular = {
      {L"one", L"first"},          {L"two", L"second"},       {L"three", L"third"},
      {L"five", L"fifth"},         {L"eight", L"eighth"},     {L"nine", L"ninth"},
      {L"twelve", L"twelfth"},     {L"twenty", L"twentieth"}, {L"thirty", L"thirtieth"},
      {L"forty", L"fortieth"},     {L"fifty", L"fiftieth"},   {L"sixty", L"sixtieth"},
      {L"seventy", L"seventieth"}, {L"eighty", L"eightieth"}, {L"ninety", L"ninetieth"}};
  const std::wstring text = cardinal(n);
  const size_t start = text.find_last_of(L" -") + 1;
  const auto found = irregular.find(text.substr(start));
  return text.substr(0, start) + (found != irregular.end() ? found->second : text.substr(start) + L"th");
}

std::wstring capitalised(std::wstring text) {
  text[0] = static_cast<wchar_t>(text[0] - L'a' + L'A');
  return text;
}

}  // namespace

TEST(SerialNumber, CountsInDecimal) {
  expectCount(DBNum0, [](unsigned long n) { return std::to_wstring(n); });
}

TEST(SerialNumber, CountsInChinese) {
  expectCount(DBNum1, [](unsigned long n) { return withoutLeadingOne(kPlain.spell(n), n); });
}

TEST(SerialNumber, CountsInChineseMoneyNumerals) {
  expectCount(DBNum2, [](unsigned long n) { return kMoney.spell(n); });
  expectCount(DBNum20, [](unsigned long n) { return withoutLeadingOne(kMoney.spell(n), n); });
}

TEST(SerialNumber, CountsInWideDigits) {
  expectCount(DBNum3, [](unsigned long n) {
    std::wstring text = std::to_wstring(n);
    for (wchar_t& c : text) c += 0xFF10 - L'0';
    return text;
  });
}

TEST(SerialNumber, CountsInRomanNumeralsUpTo1000) {
  for (bool upper : {true, false}) {
    expectCount(upper ? DBNum4 : DBNum5,
                [&](unsigned long n) { return n > 1000 ? std::to_wstring(n) : roman(n, upper); });
  }
}

TEST(SerialNumber, CountsInLetters) {
  for (int page : {DBNum6, DBNum7}) {
    const wchar_t first = page == DBNum6 ? L'A' : L'a';
    std::wstring expected(1, first);
    EXPECT_EQ(serial(page, 0), expected);
    for (unsigned long n = 1; n <= 20000; ++n, expected = nextLetters(expected, first)) {
      ASSERT_EQ(serial(page, n), expected);
    }
  }
}

TEST(SerialNumber, CountsInNumeralsWithEndings) {
  expectCount(DBNum8, [](unsigned long n) {
    const std::wstring text = std::to_wstring(n);
    const bool teen = text.size() > 1 && text[text.size() - 2] == L'1';
    const wchar_t* ending = teen                  ? L"th"
                            : text.back() == L'1' ? L"st"
                            : text.back() == L'2' ? L"nd"
                            : text.back() == L'3' ? L"rd"
                                                  : L"th";
    return text + ending;
  });
}

TEST(SerialNumber, CountsInEnglishWords) {
  expectCount(DBNum9, [](unsigned long n) { return capitalised(cardinal(n)); });
}

TEST(SerialNumber, CountsInEnglishOrdinals) {
  expectCount(DBNum10, [](unsigned long n) { return capitalised(ordinal(n)); });
}

TEST(SerialNumber, CountsInHexadecimal) {
  expectCount(DBNum11, [](unsigned long n) {
    wchar_t text[16];
    std::swprintf(text, 16, L"%lX", n);
    return std::wstring(text);
  });
}

TEST(SerialNumber, CountsInStemsAndBranches) {
  expectCharacters(DBNum12, L"甲乙丙丁戊己庚辛壬癸");
  expectCharacters(DBNum13, L"子丑寅卯辰巳午未申酉戌亥");
}

TEST(SerialNumber, CountsInEnclosedNumbers) {
  expectCharacters(DBNum14, range(0x2488, 0x249B));
  expectCharacters(DBNum15, range(0x2474, 0x2487));
  expectCharacters(DBNum16, range(0x2460, 0x2469));
  expectCharacters(DBNum17, range(0x3220, 0x3229));
}

TEST(SerialNumber, CountsInGreekLettersWithoutTheFinalSigma) {
  expectCharacters(DBNum18, range(0x391, 0x3A1) + range(0x3A3, 0x3A9));
  expectCharacters(DBNum19, range(0x3B1, 0x3C1) + range(0x3C3, 0x3C9));
}

TEST(SerialNumber, CountsInKatakana) {
  expectCharacters(
      DBNum21,
      katakana(
          L"あいうえおかきくけこさしすせそたちつてとなにぬねのはひふへほまみむめもやゆよらりるれろわをん"));
  expectCharacters(DBNum22, katakana(L"いろはにほへとちりぬるをわかよたれそつねならむうゐのおくやまけふこえて"
                                     L"あさきゆめみしゑひもせすん"));
}

TEST(SerialNumber, RefusesAnUnknownPage) {
  for (int page : {23, 255, INT_MAX, -1, INT_MIN}) {
    std::wstring out = L"before";
    EXPECT_EQ(pages.SerialNumber(static_cast<NF_CODEPAGE>(page), 1, out), Status::kInvalidArgument);
    EXPECT_EQ(out, L"before");
  }
}

TEST(SerialNumber, SpellsTheLargestNumberOnEveryPage) {
  for (int page = 0; page <= 22; ++page) {
    const bool words = page == DBNum9 || page == DBNum10;
    EXPECT_EQ(serial(page, ULONG_MAX).empty(), words) << page;
  }
}

TEST(Tongue, SpellsTen) {
  EXPECT_EQ(serial(DBNum1, 10), L"十");
  EXPECT_EQ(serial(DBNum2, 10), L"壹拾");
  EXPECT_EQ(serial(DBNum20, 10), L"拾");
}

TEST(Tongue, SpellsRoundNumbersAndZerosBetween) {
  EXPECT_EQ(serial(DBNum1, 100), L"一百");
  EXPECT_EQ(serial(DBNum1, 1001), L"一千\u25CB一");
  EXPECT_EQ(serial(DBNum1, 10000), L"一万");
  EXPECT_EQ(serial(DBNum1, 100000000), L"一亿");
  EXPECT_EQ(serial(DBNum1, 0), L"\u25CB");
  EXPECT_EQ(serial(DBNum2, 1001), L"壹仟零壹");
}

TEST(Tongue, WritesTheWordOfABlockOnlyIfItHoldsSomething) {
  EXPECT_EQ(serial(DBNum1, 100000), L"十万");
  EXPECT_EQ(serial(DBNum1, 120003), L"十二万\u25CB三");
  EXPECT_EQ(serial(DBNum1, 1000000001), L"十亿\u25CB一");
  EXPECT_EQ(serial(DBNum2, 4294967295), L"肆拾贰亿玖仟肆佰玖拾陆万柒仟贰佰玖拾伍");
}

TEST(Tongue, RefusesOtherPages) {
  for (int page : {0, 3, 6, 8, 12, 19, 21, 22, 23, -1}) {
    std::wstring out = L"before";
    EXPECT_EQ(pages.Tongue(static_cast<NF_CODEPAGE>(page), 1, out), Status::kInvalidArgument);
    EXPECT_EQ(out, L"before");
  }
}

TEST(Tongue, SpellsRomanNumeralsToo) {
  std::wstring out;
  EXPECT_EQ(pages.Tongue(DBNum5, 14, out), Status::kOk);
  EXPECT_EQ(out, L"xiv");
}

TEST(TongueRoma, StopsAtAThousand) {
  EXPECT_EQ(serial(DBNum4, 4), L"IV");
  EXPECT_EQ(serial(DBNum4, 1000), L"M");
  EXPECT_EQ(serial(DBNum4, 1001), L"1001");
  EXPECT_EQ(serial(DBNum4, 0), L"");
}

TEST(TongueRoma, RefusesOtherPages) {
  std::wstring out;
  EXPECT_EQ(pages.Tongue_Roma(DBNum1, 4, out), Status::kInvalidArgument);
}

TEST(ConvertNum, IsDecimalAboveTheLimit) {
  EXPECT_EQ(serial(DBNum14, 20), L"\u249B");
  EXPECT_EQ(serial(DBNum14, 21), L"21");
}

TEST(ConvertNum, WritesZeroAsADigitOnEveryPage) {
  for (int page = 12; page <= 22; ++page) {
    std::wstring out;
    EXPECT_EQ(pages.ConvertNum(static_cast<NF_CODEPAGE>(page), 0, out), Status::kOk);
    EXPECT_EQ(out, L"0");
  }
}

TEST(ConvertSeries, CountsLettersLikeColumns) {
  EXPECT_EQ(serial(DBNum6, 26), L"Z");
  EXPECT_EQ(serial(DBNum6, 27), L"AA");
  EXPECT_EQ(serial(DBNum6, 702), L"ZZ");
  EXPECT_EQ(serial(DBNum6, 703), L"AAA");
}

TEST(ConvertSeries, IsPositionalInHexadecimal) {
  EXPECT_EQ(serial(DBNum11, 255), L"FF");
  EXPECT_EQ(serial(DBNum11, 256), L"100");
}

TEST(ConvertSeries, RefusesPagesWithoutABase) {
  for (int page : {4, 5, 8, 9, 10, 23, -1}) {
    std::wstring out = L"before";
    EXPECT_EQ(pages.ConvertSeries(static_cast<NF_CODEPAGE>(page), 5, out), Status::kInvalidArgument);
    EXPECT_EQ(out, L"before");
  }
}

TEST(SerialNumberJapanese, CountsOnItsFourPages) {
  const struct {
    int page;
    std::wstring table;
    bool keepOne;
  } rows[] = {{1, L"〇一二三四五六七八九十百千", false},
              {2, L"〇壱弐参四伍六七八九拾百阡", true},
              {3, L"０１２３４５６７８９十百千", false},
              {4, L"〇壱弐参四伍六七八九拾百阡", false}};
  for (const auto& row : rows) {
    for (unsigned long n = 0; n <= 9999; ++n) {
      ASSERT_EQ(serialJapanese(row.page, n), japaneseWords(n, row.table, row.keepOne)) << row.page;
    }
  }
}

TEST(SerialNumberJapanese, LeavesOutZerosAndOnes) {
  EXPECT_EQ(serialJapanese(1, 105), L"百五");
  EXPECT_EQ(serialJapanese(1, 10000), L"一万");
  EXPECT_EQ(serialJapanese(1, 100010000), L"一億一万");
  EXPECT_EQ(serialJapanese(2, 1111), L"壱阡壱百壱拾壱");
}

TEST(SerialNumberJapanese, IsDecimalOnOtherPages) {
  for (int page : {INT_MIN, -1, 0, 5, 6, 12, 22, 300}) EXPECT_EQ(serialJapanese(page, 27), L"27");
}

TEST(EnglishNumbers, TakeTheHyphenAndTheCapital) {
  std::wstring out;
  pages.SerialNumber_En_One(21, true, out);
  EXPECT_EQ(out, L"Twenty-one");
  pages.SerialNumber_En_One(21, false, out);
  EXPECT_EQ(out, L"twenty-one");
}

TEST(EnglishNumbers, SpellOrdinals) {
  EXPECT_EQ(serial(DBNum10, 12), L"Twelfth");
  EXPECT_EQ(serial(DBNum10, 2), L"Second");
  EXPECT_EQ(serial(DBNum10, 18), L"Eightteenth");
  EXPECT_EQ(serial(DBNum10, 0), L"Zeroth");
  EXPECT_EQ(serial(DBNum10, 100), L"One hundredth");
}

TEST(EnglishNumbers, NeverSayAnd) {
  EXPECT_EQ(serial(DBNum9, 999999), L"Nine hundred ninety-nine thousand nine hundred ninety-nine");
  EXPECT_EQ(serial(DBNum9, 100001), L"One hundred thousand one");
  EXPECT_EQ(serial(DBNum9, 18018), L"Eightteen thousand eightteen");
}

TEST(EnglishNumbers, AreEmptyAboveTheLastOne) {
  EXPECT_EQ(serial(DBNum9, 1000000), L"");
  EXPECT_EQ(serial(DBNum10, 1000000), L"");
  EXPECT_EQ(serial(DBNum8, 1000001), L"1000001st");
}

TEST(EnglishNumbers, SpellAllNumbersAsComposedFromTheirParts) {
  std::mt19937 random(1);
  for (int i = 0; i < 20000; ++i) {
    const unsigned long n = random() % 1000000;
    ASSERT_EQ(serial(DBNum9, n), capitalised(cardinal(n)));
    ASSERT_EQ(serial(DBNum10, n), capitalised(ordinal(n)));
  }
}

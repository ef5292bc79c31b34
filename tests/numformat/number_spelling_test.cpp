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

std::wstring chinese(std::wstring text, int point, NF_CODEPAGE page, bool keepSign = false,
                     bool dropOne = false) {
  EXPECT_EQ(pages._TransTongue_chinese(text, point, page, keepSign, dropOne), Status::kOk);
  return text;
}

std::wstring japanese(std::wstring text, int point, int table, bool keepOne = false, bool keepSign = true) {
  EXPECT_EQ(pages._TransTongue_japanese(text, point, table, keepOne, keepSign), Status::kOk);
  return text;
}

std::wstring money(std::wstring text, NF_CODEPAGE page = DBNum2) {
  EXPECT_EQ(pages._TransCurrency(text, page), Status::kOk);
  return text;
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

/// Reads numerals back: digits times words, gathered into blocks of four and groups of twelve.
unsigned long long readNumerals(const std::wstring& text, const wchar_t* table) {
  const std::wstring characters(table, 16);
  const unsigned long long tenThousands[] = {10000ull, 100000000ull, 1000000000000ull};
  unsigned long long total = 0, group = 0, block = 0, digit = 0;
  for (wchar_t c : text) {
    const size_t index = characters.find(c);
    if (index < 10) {
      digit = index;
    } else if (index < 13) {
      unsigned long long value = 10;
      for (size_t i = 10; i < index; ++i) value *= 10;
      block += (digit ? digit : 1) * value;
      digit = 0;
    } else if (index < 15) {
      group += (block + digit) * tenThousands[index - 13];
      block = digit = 0;
    } else {
      total = (total + group + block + digit) * tenThousands[2];
      group = block = digit = 0;
    }
  }
  return total + group + block + digit;
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

TEST(ChineseWalk, ReadsBackAsTheSameNumber) {
  std::mt19937_64 random(2);
  for (int i = 0; i < 20000; ++i) {
    const unsigned long long n = random() >> (random() % 64);
    const std::wstring text = chinese(std::to_wstring(n), -1, DBNum1, false, i % 2 == 0);
    ASSERT_EQ(readNumerals(text, pages.GetPage(DBNum1)), n);
    ASSERT_EQ(text.find(L"\u25CB\u25CB"), std::wstring::npos);
  }
}

TEST(JapaneseWalk, ReadsBackAsTheSameNumber) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 20000; ++i) {
    const unsigned long long n = random() >> (random() % 64);
    const int table = i % 3;
    const std::wstring text = japanese(std::to_wstring(n), -1, table, i % 2 == 0);
    ASSERT_EQ(readNumerals(text, KNFCStingsInstance.GetJPCodePageInfo(table)), n);
  }
}

TEST(ChineseWalk, WritesTheTrillionWordBetweenGroupsOf12) {
  EXPECT_EQ(chinese(L"1000000000000", -1, DBNum1), L"一兆");
  EXPECT_EQ(chinese(L"20000000000003", -1, DBNum1), L"二十兆\u25CB三");
  EXPECT_EQ(chinese(L"1000000000000000000000000", -1, DBNum1), L"一兆兆");
}

TEST(ChineseWalk, WritesEachDigitBehindThePoint) {
  EXPECT_EQ(chinese(L"12.05", 2, DBNum1), L"一十二点\u25CB五");
  EXPECT_EQ(chinese(L"0.5", 1, DBNum2), L"零点伍");
  EXPECT_EQ(chinese(L".5", 0, DBNum1), L"\u25CB点五");
}

TEST(ChineseWalk, DropsOrKeepsTheSign) {
  EXPECT_EQ(chinese(L"-12.5", 3, DBNum1, false), L"一十二点五");
  EXPECT_EQ(chinese(L"-12.5", 3, DBNum1, true), L"负一十二点五");
  EXPECT_EQ(chinese(L"+12.5", 3, DBNum1, true), L"一十二点五");
  EXPECT_EQ(chinese(L"-0", -1, DBNum1, true), L"负\u25CB");
}

TEST(ChineseWalk, DropsTheLeadingOneBehindASignToo) {
  EXPECT_EQ(chinese(L"12", -1, DBNum1, false, true), L"十二");
  EXPECT_EQ(chinese(L"-12", -1, DBNum1, true, true), L"负十二");
  EXPECT_EQ(chinese(L"112", -1, DBNum1, false, true), L"一百一十二");
  EXPECT_EQ(chinese(L"1", -1, DBNum1, false, true), L"一");
}

TEST(ChineseWalk, ShortensTenByThePage) {
  std::wstring plain = L"12", formal = L"12", other = L"12";
  pages._TransTongue(plain, -1, DBNum1, false);
  pages._TransTongue(formal, -1, DBNum2, false);
  pages._TransTongue(other, -1, DBNum20, false);
  EXPECT_EQ(plain + L" " + formal + L" " + other, L"十二 壹拾贰 拾贰");
}

TEST(ChineseWalk, RefusesPagesWithoutWords) {
  for (int page : {0, 3, 4, 8, 21, 23, -1}) {
    std::wstring text = L"12";
    EXPECT_EQ(pages._TransTongue(text, -1, static_cast<NF_CODEPAGE>(page), true), Status::kInvalidArgument);
    EXPECT_EQ(text, L"12");
  }
}

TEST(ChineseWalk, SurvivesAnyText) {
  EXPECT_EQ(chinese(L"", -1, DBNum1), L"\u25CB");
  EXPECT_EQ(chinese(L"-", -1, DBNum1, true, true), L"负\u25CB");
  EXPECT_EQ(chinese(L"-", 0, DBNum1, true), L"负\u25CB");
  EXPECT_EQ(chinese(L"5", INT_MAX, DBNum1), L"五");
  EXPECT_EQ(chinese(L"5", INT_MIN, DBNum1), L"五");
  EXPECT_EQ(chinese(L"x", -1, DBNum1), L"x");
}

TEST(JapaneseWalk, WritesSignAndPointInEveryTable) {
  EXPECT_EQ(japanese(L"-12.05", 3, 0), L"-十二.〇五");
  EXPECT_EQ(japanese(L"-12.05", 3, 1, true), L"-壱拾弐.〇伍");
  EXPECT_EQ(japanese(L"-12.05", 3, 2), L"-十２.０５");
  EXPECT_EQ(japanese(L"-12.05", 3, 0, false, false), L"十二.〇五");
}

TEST(JapaneseWalk, KeepsOnesByThePage) {
  std::wstring plain = L"-110", formal = L"-110";
  EXPECT_EQ(pages._TransTongue_japanese(plain, -1, 1), Status::kOk);
  EXPECT_EQ(pages._TransTongue_japanese(formal, -1, 2), Status::kOk);
  EXPECT_EQ(plain + L" " + formal, L"-百十 -壱百壱拾");
}

TEST(JapaneseWalk, RefusesUnknownTablesAndPages) {
  std::wstring text = L"12";
  for (int table : {-1, 3, INT_MAX}) {
    EXPECT_EQ(pages._TransTongue_japanese(text, -1, table, true, true), Status::kInvalidArgument);
  }
  for (int page : {0, 5, INT_MIN})
    EXPECT_EQ(pages._TransTongue_japanese(text, -1, page), Status::kInvalidArgument);
  EXPECT_EQ(text, L"12");
}

TEST(Currency, WritesYuanJiaoAndFen) {
  EXPECT_EQ(money(L"1.50"), L"壹元伍角整");
  EXPECT_EQ(money(L"1.05"), L"壹元零伍分");
  EXPECT_EQ(money(L"1.25"), L"壹元贰角伍分");
  EXPECT_EQ(money(L"100.00"), L"壹佰元整");
  EXPECT_EQ(money(L"10200.03"), L"壹万零贰佰元零叁分");
}

TEST(Currency, WritesZeroYuanOnlyForNothing) {
  EXPECT_EQ(money(L"0.00"), L"零元整");
  EXPECT_EQ(money(L"0.50"), L"伍角整");
  EXPECT_EQ(money(L"0.05"), L"伍分");
  EXPECT_EQ(money(L".00"), L"零元整");
}

TEST(Currency, WritesTheCharactersOfThePage) {
  EXPECT_EQ(money(L"12.05", DBNum1), L"一十二元\u25CB五分");
}

TEST(Currency, RefusesATextThatIsTooShort) {
  for (const wchar_t* given : {L"", L"1", L"50", L"-50"}) {
    std::wstring text = given;
    EXPECT_EQ(pages._TransCurrency(text, DBNum2), Status::kInvalidArgument);
    EXPECT_EQ(text, given);
  }
}

TEST(Currency, RefusesPagesWithoutWords) {
  std::wstring text = L"1.50";
  EXPECT_EQ(pages._TransCurrency(text, DBNum0), Status::kInvalidArgument);
  EXPECT_EQ(text, L"1.50");
}

TEST(CodePage, GivesNamesTablesAndCharacters) {
  for (int page = 0; page <= 22; ++page) {
    EXPECT_EQ(pages.GetName(static_cast<NF_CODEPAGE>(page)), L"DBNum" + std::to_wstring(page));
  }
  EXPECT_EQ(pages.GetPage(DBNum13), std::wstring(L"子丑寅卯辰巳午未申酉戌亥"));
  EXPECT_EQ(pages.GetChar(DBNum1, 10), L'十');
  EXPECT_EQ(pages.GetChar(DBNum2, 18), L'点');
}

TEST(CodePage, HasNoCharactersForEnglish) {
  for (NF_CODEPAGE page : {DBNum8, DBNum9, DBNum10}) EXPECT_EQ(pages.GetPage(page), std::wstring());
}

TEST(CodePage, IsEmptyOutOfRange) {
  for (int page : {-1, 23, INT_MAX}) {
    EXPECT_EQ(pages.GetName(static_cast<NF_CODEPAGE>(page)), std::wstring());
    EXPECT_EQ(pages.GetPage(static_cast<NF_CODEPAGE>(page)), std::wstring());
  }
  EXPECT_EQ(pages.GetChar(DBNum0, 10), 0);
  EXPECT_EQ(pages.GetChar(DBNum8, 0), 0);
}

TEST(CodePage, MapsDigitsByPageAndArea) {
  EXPECT_EQ(pages._GetCodePageNumbe(L'5', 1, AREA_ENGLISH), L'五');
  EXPECT_EQ(pages._GetCodePageNumbe(L'0', 1, AREA_CHINESE), L'\u25CB');
  EXPECT_EQ(pages._GetCodePageNumbe(L'0', 1, AREA_JAPANESE), L'〇');
  EXPECT_EQ(pages._GetCodePageNumbe(L'2', 2, AREA_JAPANESE), L'弐');
  EXPECT_EQ(pages._GetCodePageNumbe(L'2', 3, AREA_JAPANESE), L'２');
  EXPECT_EQ(pages._GetCodePageNumbe(L'2', 4, AREA_JAPANESE), L'弐');
  EXPECT_EQ(pages._GetCodePageNumbe(L'2', 4, AREA_ENGLISH), L'Ⅲ');
  EXPECT_EQ(pages._GetCodePageNumbe(L'2', 20, AREA_JAPANESE), L'贰');
}

TEST(CodePage, ReturnsWhatHasNoCharacterAsItIs) {
  EXPECT_EQ(pages._GetCodePageNumbe(L'-', 1, AREA_ENGLISH), L'-');
  EXPECT_EQ(pages._GetCodePageNumbe(L'x', 1, AREA_JAPANESE), L'x');
  EXPECT_EQ(pages._GetCodePageNumbe(L'7', 8, AREA_ENGLISH), L'7');
  EXPECT_EQ(pages._GetCodePageNumbe(L'7', 300, AREA_ENGLISH), L'7');
  EXPECT_EQ(pages._GetCodePageNumbe2(L'7', L"abc"), L'7');
  EXPECT_EQ(pages._GetCodePageNumbe2(L'1', L"abc"), L'b');
  EXPECT_EQ(pages._GetCodePageNumbe2(L'1', nullptr), L'1');
}

TEST(CodePage, IsMarkedReadyOnce) {
  KNFCodePage fresh;
  EXPECT_FALSE(fresh.IsInitialised());
  fresh.InitCodePage();
  fresh.InitCodePage();
  EXPECT_TRUE(fresh.IsInitialised());
}

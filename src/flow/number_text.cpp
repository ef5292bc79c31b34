#include "flow/number_text.h"

#include <cstddef>
#include <iterator>
#include <string_view>

#include "flow/number_words.h"

namespace pagerex {
namespace {

using Text = std::u16string_view;

/// How a format makes a number's text of its signs.
enum class Way : uint8_t {
  kDecimal,
  kUpperRoman,
  kLowerRoman,
  kRepeated,  ///< one of the signs; behind the last the first again, twice
  kCycled,    ///< one of the signs; behind the last the first again
  kOnce,      ///< one of the signs; numbers behind the last are decimal
  kDigits,    ///< the signs are the digits from 0
  kPairs,     ///< of a sign of ten and one of twelve
  kOrdinal,
  kCardinalWords,
  kOrdinalWords,
  kHex,
  kLeadingZero,
  kDashes,
  kCounting,           ///< digit and unit: see CountingSigns
  kShortCounting,      ///< so up to 99, digits above
  kLastSignAndOthers,  ///< the last sign for each round that is over, then one of the signs
  kHebrew,
  kWords,
  kNothing,
};

/// Digits and units of Chinese, Japanese and Korean.
struct CountingSigns {
  Text digits;    ///< 0 to 9
  Text units;     ///< 10, 100, 1000, 10 000
  char16_t zero;  ///< stands for units left out between others; 0 for none
  enum class One : uint8_t { kAlways, kNotIfTenLeads, kNever } one;  ///< before a unit
};

using AppendWords = void (*)(uint32_t number, std::u16string& out);

struct Format {
  Way way;
  Text signs = {};
  const CountingSigns* counting = nullptr;
  AppendWords words = nullptr;
  uint32_t most = 999999;  ///< numbers above it are decimal
};

using One = CountingSigns::One;
constexpr Text kChineseUnits = u"十百千万", kFormalUnits = u"拾佰仟萬";
constexpr CountingSigns kJapanese{u"〇一二三四五六七八九", u"十百千万", 0, One::kNever};
constexpr CountingSigns kJapaneseLegal{u"零壱弐参四伍六七八九", u"拾百阡萬", 0, One::kAlways};
constexpr CountingSigns kTaiwanese{u"○一二三四五六七八九", u"十百千萬", u'零', One::kNotIfTenLeads};
constexpr CountingSigns kChinese{u"○一二三四五六七八九", kChineseUnits, u'零', One::kNotIfTenLeads};
constexpr CountingSigns kTraditionalLegal{u"零壹貳參肆伍陸柒捌玖", kFormalUnits, u'零', One::kAlways};
constexpr CountingSigns kSimplifiedLegal{u"零壹贰叁肆伍陆柒捌玖", kFormalUnits, u'零', One::kAlways};
constexpr CountingSigns kKorean{u"영일이삼사오육칠팔구", u"십백천만", 0, One::kNever};

constexpr Text kStems = u"甲乙丙丁戊己庚辛壬癸", kBranches = u"子丑寅卯辰巳午未申酉戌亥";
constexpr Text kCircled = u"①②③④⑤⑥⑦⑧⑨⑩⑪⑫⑬⑭⑮⑯⑰⑱⑲⑳", kFullWidthDigits = u"０１２３４５６７８９";

/// By nfc.
constexpr Format kFormats[] = {
    {Way::kDecimal},                                                        // 0
    {Way::kUpperRoman, {}, nullptr, nullptr, 32767},                        // 1
    {Way::kLowerRoman, {}, nullptr, nullptr, 32767},                        // 2
    {Way::kRepeated, u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"},                        // 3
    {Way::kRepeated, u"abcdefghijklmnopqrstuvwxyz"},                        // 4
    {Way::kOrdinal},                                                        // 5
    {Way::kCardinalWords},                                                  // 6
    {Way::kOrdinalWords},                                                   // 7
    {Way::kHex},                                                            // 8
    {Way::kRepeated, u"*†‡§"},                                              // 9
    {Way::kDigits, u"〇一二三四五六七八九"},                                // 10
    {Way::kCounting, {}, &kJapanese},                                       // 11
    {Way::kCycled, u"ｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾅﾆﾇﾈﾉﾊﾋﾌﾍﾎﾏﾐﾑﾒﾓﾔﾕﾖﾗﾘﾙﾚﾛﾜｦﾝ"},      // 12
    {Way::kCycled, u"ｲﾛﾊﾆﾎﾍﾄﾁﾘﾇﾙｦﾜｶﾖﾀﾚｿﾂﾈﾅﾗﾑｳヰﾉｵｸﾔﾏｹﾌｺｴﾃｱｻｷﾕﾒﾐｼヱﾋﾓｾｽﾝ"},  // 13
    {Way::kDigits, kFullWidthDigits},                                       // 14
    {Way::kDecimal},                                                        // 15
    {Way::kCounting, {}, &kJapaneseLegal},                                  // 16
    {Way::kDigits, u"〇一二三四五六七八九"},                                // 17
    {Way::kOnce, kCircled},                                                 // 18
    {Way::kDigits, kFullWidthDigits},                                       // 19
    {Way::kCycled,
     u"アイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワヲ"
     u"ン"},  // 20
    {Way::kCycled,
     u"イロハニホヘトチリヌルヲワカヨタレソツネナラムウヰノオクヤマケフコエテアサキユメミシヱヒモセス"
     u"ン"},                                                         // 21
    {Way::kLeadingZero},                                             // 22
    {Way::kNothing},                                                 // 23
    {Way::kCycled, u"가나다라마바사아자차카타파하"},                 // 24
    {Way::kCycled, u"ㄱㄴㄷㄹㅁㅂㅅㅇㅈㅊㅋㅌㅍㅎ"},                 // 25
    {Way::kOnce, u"⒈⒉⒊⒋⒌⒍⒎⒏⒐⒑⒒⒓⒔⒕⒖⒗⒘⒙⒚⒛"},                           // 26
    {Way::kOnce, u"⑴⑵⑶⑷⑸⑹⑺⑻⑼⑽⑾⑿⒀⒁⒂⒃⒄⒅⒆⒇"},                           // 27
    {Way::kOnce, kCircled},                                          // 28
    {Way::kOnce, u"㈠㈡㈢㈣㈤㈥㈦㈧㈨㈩"},                           // 29
    {Way::kOnce, kStems},                                            // 30
    {Way::kOnce, kBranches},                                         // 31
    {Way::kPairs},                                                   // 32
    {Way::kShortCounting, {}, &kTaiwanese},                          // 33
    {Way::kCounting, {}, &kTraditionalLegal},                        // 34
    {Way::kCounting, {}, &kTaiwanese},                               // 35
    {Way::kDigits, u"○一二三四五六七八九"},                          // 36
    {Way::kShortCounting, {}, &kChinese},                            // 37
    {Way::kCounting, {}, &kSimplifiedLegal},                         // 38
    {Way::kCounting, {}, &kChinese},                                 // 39
    {Way::kDecimal},                                                 // 40
    {Way::kDigits, u"영일이삼사오육칠팔구"},                         // 41
    {Way::kCounting, {}, &kKorean},                                  // 42
    {Way::kWords, {}, nullptr, appendKoreanWords, 99},               // 43
    {Way::kDigits, u"零一二三四五六七八九"},                         // 44
    {Way::kHebrew, {}, nullptr, nullptr, 999},                       // 45
    {Way::kRepeated, u"أبتثجحخدذرزسشصضطظعغفقكلمنهوي"},               // 46
    {Way::kLastSignAndOthers, u"אבגדהוזחטיכלמנסעפצקרשת"},            // 47
    {Way::kRepeated, u"أبجدهوزحطيكلمنسعفصقرشتثخذضظغ"},               // 48
    {Way::kRepeated, u"कखगघङचछजझञटठडढणतथदधनऩपफबभमयरऱलळऴवशषसह"},      // 49
    {Way::kRepeated, u"अआइईउऊऋऌऍऎएऐऑऒओऔ"},                           // 50
    {Way::kDigits, u"०१२३४५६७८९"},                                   // 51
    {Way::kWords, {}, nullptr, appendHindiWords},                    // 52
    {Way::kRepeated, u"กขคงจฉชซฌญฎฏฐฑฒณดตถทธนบปผฝพฟภมยรลวศษสหฬอฮ"},  // 53
    {Way::kDigits, u"๐๑๒๓๔๕๖๗๘๙"},                                   // 54
    {Way::kWords, {}, nullptr, appendThaiWords},                     // 55
    {Way::kWords, {}, nullptr, appendVietnameseWords},               // 56
    {Way::kDashes},                                                  // 57
    {Way::kRepeated, u"абвгдежзиклмнопрстуфхцчшщыэюя"},              // 58
    {Way::kRepeated, u"АБВГДЕЖЗИКЛМНОПРСТУФХЦЧШЩЫЭЮЯ"},              // 59
};

/// Signs are repeated up to so many times, then it begins with one of them again.
constexpr uint32_t kMostRepeated = 30;

/// Least digit last.
void appendDigits(uint32_t number, Text digits, std::u16string& out) {
  char16_t text[32];
  size_t begin = std::size(text);
  const auto base = static_cast<uint32_t>(digits.size());
  do {
    text[--begin] = digits[number % base];
    number /= base;
  } while (number != 0);
  out.append(text + begin, std::size(text) - begin);
}

void appendDecimal(int32_t number, std::u16string& out) {
  const auto bits = static_cast<uint32_t>(number);
  if (number < 0) out += u'-';
  appendDigits(number < 0 ? 0 - bits : bits, u"0123456789", out);
}

void appendRoman(uint32_t number, bool isUpper, std::u16string& out) {
  struct Row {
    uint32_t value;
    Text upper, lower;
  };
  constexpr Row kRows[] = {
      {1000, u"M", u"m"}, {900, u"CM", u"cm"}, {500, u"D", u"d"},  {400, u"CD", u"cd"}, {100, u"C", u"c"},
      {90, u"XC", u"xc"}, {50, u"L", u"l"},    {40, u"XL", u"xl"}, {10, u"X", u"x"},    {9, u"IX", u"ix"},
      {5, u"V", u"v"},    {4, u"IV", u"iv"},   {1, u"I", u"i"},
  };
  for (const Row& row : kRows) {
    for (; number >= row.value; number -= row.value) out += isUpper ? row.upper : row.lower;
  }
}

/// Below 10 000. `isFirst`: nothing of the number stands before it.
void appendCountingGroup(uint32_t number, const CountingSigns& signs, bool isFirst, std::u16string& out) {
  bool isZeroDue = !isFirst && number < 1000;
  const uint32_t digits[] = {number % 10, number / 10 % 10, number / 100 % 10, number / 1000};
  size_t last = 0;  // the last that is not 0
  while (last < 4 && digits[last] == 0) ++last;
  for (size_t unit = 4; unit-- > last;) {
    const uint32_t digit = digits[unit];
    if (digit == 0) {
      isZeroDue = !isFirst;
      continue;
    }
    if (isZeroDue && signs.zero != 0) out += signs.zero;
    const bool isOneLeft =
        digit == 1 && unit > 0 &&
        (signs.one == One::kNever || (signs.one == One::kNotIfTenLeads && unit == 1 && isFirst));
    if (!isOneLeft) out += signs.digits[digit];
    if (unit > 0) out += signs.units[unit - 1];
    isFirst = isZeroDue = false;
  }
}

void appendCounting(uint32_t number, const CountingSigns& signs, std::u16string& out) {
  constexpr uint32_t kGroup = 10000;
  if (number >= kGroup) {
    appendCountingGroup(number / kGroup, signs, true, out);
    out += signs.units[3];
  }
  appendCountingGroup(number % kGroup, signs, number < kGroup, out);
}

void appendHebrew(uint32_t number, std::u16string& out) {
  constexpr Text kHundreds = u"קרשת", kTens = u"יכלמנסעפצ", kOnes = u"אבגדהוזחט";
  for (; number >= 500; number -= 400) out += kHundreds[3];
  if (number >= 100) out += kHundreds[number / 100 - 1];
  number %= 100;
  if (number == 15 || number == 16) {  // not the name of God
    out += kOnes[8];
    out += kOnes[number - 10];
    return;
  }
  if (number >= 10) out += kTens[number / 10 - 1];
  if (number % 10 != 0) out += kOnes[number % 10 - 1];
}

/// `number` is from 1 to what the format can show.
void appendSigns(uint32_t number, const Format& format, std::u16string& out) {
  const auto count = static_cast<uint32_t>(format.signs.size());
  const uint32_t sign = (number - 1) % count, round = (number - 1) / count;
  switch (format.way) {
    case Way::kRepeated:
      out.append(round % kMostRepeated + 1, format.signs[sign]);
      return;
    case Way::kLastSignAndOthers:
      out.append(round % kMostRepeated, format.signs.back());
      out += format.signs[sign];
      return;
    case Way::kOnce:
      if (round > 0) return appendDecimal(static_cast<int32_t>(number), out);
      [[fallthrough]];
    default:
      out += format.signs[sign];
      return;
  }
}

void appendWordsOf(uint32_t number, Way way, uint16_t language, std::u16string& out) {
  if (way != Way::kOrdinal && isEnglish(language)) {
    return way == Way::kCardinalWords ? appendEnglishCardinal(number, out)
                                      : appendEnglishOrdinal(number, out);
  }
  appendDecimal(static_cast<int32_t>(number), out);
  if (way != Way::kCardinalWords) out += ordinalSuffix(number, language);
}

void appendAs(const Format& format, uint32_t number, uint16_t language, std::u16string& out) {
  switch (format.way) {
    case Way::kUpperRoman:
    case Way::kLowerRoman:
      return appendRoman(number, format.way == Way::kUpperRoman, out);
    case Way::kDigits:
      return appendDigits(number, format.signs, out);
    case Way::kPairs:
      out += kStems[(number - 1) % kStems.size()];
      out += kBranches[(number - 1) % kBranches.size()];
      return;
    case Way::kOrdinal:
    case Way::kCardinalWords:
    case Way::kOrdinalWords:
      return appendWordsOf(number, format.way, language, out);
    case Way::kHex:
      return appendDigits(number, u"0123456789ABCDEF", out);
    case Way::kLeadingZero:
      if (number < 10) out += u'0';
      return appendDecimal(static_cast<int32_t>(number), out);
    case Way::kShortCounting:
      if (number > 99) return appendDigits(number, format.counting->digits, out);
      [[fallthrough]];
    case Way::kCounting:
      return appendCounting(number, *format.counting, out);
    case Way::kHebrew:
      return appendHebrew(number, out);
    case Way::kWords:
      return format.words(number, out);
    default:
      return appendSigns(number, format, out);
  }
}

}  // namespace

void appendNumber(int32_t number, uint8_t nfc, uint16_t language, std::u16string& out) {
  constexpr Format kDecimalFormat{Way::kDecimal};
  if (nfc == kNoNumbers) return;
  const Format& format = nfc < std::size(kFormats) ? kFormats[nfc] : kDecimalFormat;
  if (format.way == Way::kNothing) return;
  if (format.way == Way::kDashes) {
    out += u"- ";
    appendDecimal(number, out);
    out += u" -";
  } else if (format.way == Way::kDecimal || number < 1 || static_cast<uint32_t>(number) > format.most) {
    appendDecimal(number, out);
  } else {
    appendAs(format, static_cast<uint32_t>(number), language, out);
  }
}

}  // namespace pagerex

#include "flow/number_words.h"

#include <cstddef>

namespace pagerex {
namespace {

using Text = std::u16string_view;

constexpr Text kEnglish[] = {
    u"zero",     u"one",     u"two",     u"three",     u"four",     u"five",     u"six",
    u"seven",    u"eight",   u"nine",    u"ten",       u"eleven",   u"twelve",   u"thirteen",
    u"fourteen", u"fifteen", u"sixteen", u"seventeen", u"eighteen", u"nineteen",
};
constexpr Text kEnglishTens[] = {u"",      u"ten",   u"twenty",  u"thirty", u"forty",
                                 u"fifty", u"sixty", u"seventy", u"eighty", u"ninety"};

/// How the last word of a number becomes that of an ordinal; words that are not here take "th".
struct OrdinalWord {
  Text cardinal, ordinal;
};
constexpr OrdinalWord kOrdinalWords[] = {
    {u"one", u"first"},          {u"two", u"second"},       {u"three", u"third"},
    {u"five", u"fifth"},         {u"eight", u"eighth"},     {u"nine", u"ninth"},
    {u"twelve", u"twelfth"},     {u"twenty", u"twentieth"}, {u"thirty", u"thirtieth"},
    {u"forty", u"fortieth"},     {u"fifty", u"fiftieth"},   {u"sixty", u"sixtieth"},
    {u"seventy", u"seventieth"}, {u"eighty", u"eightieth"}, {u"ninety", u"ninetieth"},
};

/// From 0 to 99.
constexpr Text kHindi =
    u"शून्य एक दो तीन चार पाँच छह सात आठ नौ "
    u"दस ग्यारह बारह तेरह चौदह पन्द्रह सोलह सत्रह अठारह उन्नीस "
    u"बीस इक्कीस बाईस तेईस चौबीस पच्चीस छब्बीस सत्ताईस अट्ठाईस उनतीस "
    u"तीस इकतीस बत्तीस तैंतीस चौंतीस पैंतीस छत्तीस सैंतीस अड़तीस उनतालीस "
    u"चालीस इकतालीस बयालीस तैंतालीस चौवालीस पैंतालीस छियालीस सैंतालीस अड़तालीस उनचास "
    u"पचास इक्यावन बावन तिरेपन चौवन पचपन छप्पन सत्तावन अट्ठावन उनसठ "
    u"साठ इकसठ बासठ तिरेसठ चौंसठ पैंसठ छियासठ सड़सठ अड़सठ उनहत्तर "
    u"सत्तर इकहत्तर बहत्तर तिहत्तर चौहत्तर पचहत्तर छिहत्तर सतहत्तर अठहत्तर उनासी "
    u"अस्सी इक्यासी बयासी तिरासी चौरासी पचासी छियासी सत्तासी अट्ठासी नवासी "
    u"नब्बे इक्यानबे बानबे तिरानबे चौरानबे पंचानबे छियानबे सत्तानबे अट्ठानबे निन्यानबे";

constexpr Text kThai[] = {u"", u"หนึ่ง", u"สอง", u"สาม", u"สี่", u"ห้า", u"หก", u"เจ็ด", u"แปด", u"เก้า"};
constexpr Text kThaiUnits[] = {u"", u"สิบ", u"ร้อย", u"พัน", u"หมื่น", u"แสน"};

constexpr Text kVietnamese[] = {u"không", u"một", u"hai", u"ba",  u"bốn",
                                u"năm",   u"sáu", u"bảy", u"tám", u"chín"};

constexpr Text kKorean[] = {u"", u"하나", u"둘", u"셋", u"넷", u"다섯", u"여섯", u"일곱", u"여덟", u"아홉"};
constexpr Text kKoreanTens[] = {u"",   u"열",   u"스물", u"서른", u"마흔",
                                u"쉰", u"예순", u"일흔", u"여든", u"아흔"};

void appendEnglish(uint32_t number, std::u16string& out) {
  if (number >= 1000) {
    appendEnglish(number / 1000, out);
    out += u" thousand";
    if (number % 1000 == 0) return;
    out += u' ';
    number %= 1000;
  }
  if (number >= 100) {
    out += kEnglish[number / 100];
    out += u" hundred";
    if (number % 100 == 0) return;
    out += u' ';
    number %= 100;
  }
  if (number < 20) {
    out += kEnglish[number];
    return;
  }
  out += kEnglishTens[number / 10];
  if (number % 10 == 0) return;
  out += u'-';
  out += kEnglish[number % 10];
}

void capitalize(std::u16string& text, size_t at) {
  if (at < text.size() && text[at] >= u'a' && text[at] <= u'z') {
    text[at] = static_cast<char16_t>(text[at] - u'a' + u'A');
  }
}

Text hindiWord(uint32_t number) {
  Text words = kHindi;
  for (; number > 0; --number) words.remove_prefix(words.find(u' ') + 1);
  return words.substr(0, words.find(u' '));
}

void appendVietnameseTens(uint32_t number, bool isBehindHundreds, std::u16string& out) {
  const uint32_t tens = number / 10, ones = number % 10;
  if (tens == 0) {
    if (isBehindHundreds) out += u"lẻ ";
    out += kVietnamese[ones];
    return;
  }
  if (tens > 1) (out += kVietnamese[tens]) += u' ';
  out += tens == 1 ? u"mười" : u"mươi";
  if (ones == 0) return;
  out += u' ';
  out += ones == 1 && tens > 1 ? u"mốt" : ones == 5 ? u"lăm" : kVietnamese[ones];
}

}  // namespace

void appendEnglishCardinal(uint32_t number, std::u16string& out) {
  const size_t begin = out.size();
  appendEnglish(number, out);
  capitalize(out, begin);
}

void appendEnglishOrdinal(uint32_t number, std::u16string& out) {
  const size_t begin = out.size();
  appendEnglish(number, out);
  size_t last = out.find_last_of(u" -");
  last = last == std::u16string::npos || last < begin ? begin : last + 1;
  bool isReplaced = false;
  for (const OrdinalWord& word : kOrdinalWords) {
    if (Text(out).substr(last) != word.cardinal) continue;
    out.replace(last, std::u16string::npos, word.ordinal);
    isReplaced = true;
    break;
  }
  if (!isReplaced) out += u"th";
  capitalize(out, begin);
}

void appendHindiWords(uint32_t number, std::u16string& out) {
  struct Unit {
    uint32_t size;
    Text word;
  };
  constexpr Unit kUnits[] = {{100000, u"लाख"}, {1000, u"हज़ार"}, {100, u"सौ"}};
  for (const Unit& unit : kUnits) {
    if (number < unit.size) continue;
    ((out += hindiWord(number / unit.size)) += u' ') += unit.word;
    number %= unit.size;
    if (number == 0) return;
    out += u' ';
  }
  out += hindiWord(number);
}

void appendThaiWords(uint32_t number, std::u16string& out) {
  uint32_t size = 100000;
  for (size_t unit = std::size(kThaiUnits); unit-- > 0; size /= 10) {
    const uint32_t digit = number / size % 10;
    if (digit == 0) continue;
    if (unit == 0 && digit == 1 && number > 10) {
      out += u"เอ็ด";
    } else if (unit == 1 && digit <= 2) {
      if (digit == 2) out += u"ยี่";
    } else {
      out += kThai[digit];
    }
    out += kThaiUnits[unit];
  }
}

void appendVietnameseWords(uint32_t number, std::u16string& out) {
  bool isBehindHundreds = false;
  if (number >= 1000) {
    appendVietnameseWords(number / 1000, out);
    out += u" nghìn";
    number %= 1000;
    if (number == 0) return;
    out += u' ';
    if (number < 100) out += u"không trăm ";
    isBehindHundreds = true;
  }
  if (number >= 100) {
    (out += kVietnamese[number / 100]) += u" trăm";
    number %= 100;
    if (number == 0) return;
    out += u' ';
    isBehindHundreds = true;
  }
  appendVietnameseTens(number, isBehindHundreds, out);
}

void appendKoreanWords(uint32_t number, std::u16string& out) {
  (out += kKoreanTens[number / 10 % 10]) += kKorean[number % 10];
}

bool isEnglish(uint16_t language) {
  return (language & 0x3FF) == 0x09 || language == 0 || language == 0x0400;
}

std::u16string_view ordinalSuffix(uint32_t number, uint16_t language) {
  struct Suffix {
    uint8_t language;  ///< low ten bits of the LCID
    Text first, others;
  };
  constexpr Suffix kSuffixes[] = {
      {0x03, u".", u"."},    // Catalan
      {0x05, u".", u"."},    // Czech
      {0x06, u".", u"."},    // Danish
      {0x07, u".", u"."},    // German
      {0x08, u"ο", u"ο"},    // Greek
      {0x0A, u"º", u"º"},    // Spanish
      {0x0B, u".", u"."},    // Finnish
      {0x0C, u"er", u"e"},   // French
      {0x0E, u".", u"."},    // Hungarian
      {0x0F, u".", u"."},    // Icelandic
      {0x10, u"º", u"º"},    // Italian
      {0x13, u"e", u"e"},    // Dutch
      {0x14, u".", u"."},    // Norwegian
      {0x15, u".", u"."},    // Polish
      {0x16, u"º", u"º"},    // Portuguese
      {0x19, u"-й", u"-й"},  // Russian
      {0x1A, u".", u"."},    // Croatian, Serbian
      {0x1B, u".", u"."},    // Slovak
      {0x1D, u":a", u":e"},  // Swedish
      {0x1F, u".", u"."},    // Turkish
      {0x24, u".", u"."},    // Slovenian
  };
  if (isEnglish(language)) {
    if (number / 10 % 10 == 1) return u"th";
    constexpr Text kEnglishSuffixes[] = {u"th", u"st", u"nd", u"rd"};
    return number % 10 < 4 ? kEnglishSuffixes[number % 10] : Text(u"th");
  }
  for (const Suffix& row : kSuffixes) {
    if (row.language == (language & 0x3FF)) return number == 1 ? row.first : row.others;
  }
  return {};
}

}  // namespace pagerex

#include "flow/field_numbers.h"

#include <algorithm>
#include <iterator>

#include "base/utf16.h"
#include "flow/number_text.h"

namespace pagerex {
namespace {

using Text = std::u16string_view;

/// How a level looks; nfc and what stands around it.
struct Form {
  Text before;
  uint8_t nfc;
  Text behind;
};

constexpr Form kNumbered[] = {{u"", 0, u")"},  {u"", 4, u")"},  {u"", 2, u")"},
                              {u"(", 0, u")"}, {u"(", 4, u")"}, {u"(", 2, u")"},
                              {u"", 0, u"."},  {u"", 4, u"."},  {u"", 2, u"."}};
constexpr Form kOutlined[] = {{u"", 1, u"."},  {u"", 3, u"."},  {u"", 0, u"."},
                              {u"", 4, u")"},  {u"(", 0, u")"}, {u"(", 4, u")"},
                              {u"(", 2, u")"}, {u"(", 4, u")"}, {u"(", 2, u")"}};

/// `\* Name`. Some names tell by their letters whether the number has great ones.
struct FormatName {
  Text name;
  uint8_t nfc, small;
};
constexpr FormatName kFormatNames[] = {
    {u"ARABIC", 0, 0},   {u"ALPHABETIC", 3, 4}, {u"ROMAN", 1, 2}, {u"ORDINAL", 5, 5},
    {u"CARDTEXT", 6, 6}, {u"ORDTEXT", 7, 7},    {u"HEX", 8, 8},   {u"CHICAGO", 9, 9},
};

/// What the code of such a field says.
struct NumberCode {
  std::u16string list;
  std::u16string separator = u".";
  int32_t level = -1, start = -1;
  uint8_t nfc = kArabicNumbers;
  bool hasSeparator = true;
};

/// Of a few digits; -1 for other text.
int32_t smallNumber(Text text) {
  if (text.empty() || text.size() > 5) return -1;
  int32_t number = 0;
  for (const char16_t c : text) {
    if (c < u'0' || c > u'9') return -1;
    number = number * 10 + (c - u'0');
  }
  return number;
}

uint8_t formatNamed(Text name) {
  for (const FormatName& row : kFormatNames) {
    if (isSameWord(row.name, name)) return name[0] >= u'a' ? row.small : row.nfc;
  }
  return kArabicNumbers;
}

NumberCode readNumberCode(Text code) {
  NumberCode read;
  FieldWords words(code);
  FieldWord word;
  words.Next(word);
  for (char16_t lastSwitch = 0; words.Next(word); lastSwitch = word.switchLetter) {
    if (word.switchLetter == u'e') read.hasSeparator = false;
    if (word.switchLetter != 0) continue;
    switch (lastSwitch) {
      case u'*':
        read.nfc = formatNamed(word.text);
        break;
      case u'l':
        read.level = smallNumber(word.text);
        break;
      case u's':
        read.start = smallNumber(word.text);
        read.separator = word.text.substr(0, 1);
        break;
      default:
        read.list = word.text;
        break;
    }
  }
  return read;
}

void appendForm(const Form& form, int32_t number, uint16_t language, std::u16string& out) {
  out += form.before;
  appendNumber(number, form.nfc, language, out);
  out += form.behind;
}

/// The numbers down to a level, as "1.2.1"; levels that had none are left out if `skips`, else 1.
void appendAll(const int32_t* numbers, unsigned level, bool skips, std::u16string& out) {
  for (unsigned above = 0; above < level; ++above) {
    if (skips && numbers[above] == 0) continue;
    appendNumber(std::max(numbers[above], 1), kArabicNumbers, out);
    out += u'.';
  }
  appendNumber(numbers[level], kArabicNumbers, out);
}

}  // namespace

void FieldNumbers::Counts::Step(unsigned levelToStep, int32_t start) {
  level = static_cast<uint8_t>(levelToStep);
  numbers[level] = start >= 0 ? start : numbers[level] + 1;
  std::fill(numbers.begin() + level + 1, numbers.end(), 0);
}

void FieldNumbers::AppendAutoNumber(FieldType type, std::u16string_view code, uint8_t headingLevel,
                                    uint16_t language, std::u16string& out) {
  const bool isLegal = type == FieldType::kAutoNumLgl, isOutline = type == FieldType::kAutoNumOut;
  Counts& counts = autoNumbers_[isLegal ? 1 : isOutline ? 2 : 0];
  if (headingLevel > 0) counts.heading = std::min<uint8_t>(headingLevel, kLevels - 1);
  const unsigned level = headingLevel > 0 ? counts.heading - 1u : counts.heading;
  counts.Step(level, -1);
  if (isOutline) {
    return appendForm(kOutlined[std::min<size_t>(level, std::size(kOutlined) - 1)], counts.numbers[level],
                      language, out);
  }
  const NumberCode read = readNumberCode(code);
  if (isLegal) {
    appendAll(counts.numbers.data(), level, true, out);
  } else {
    appendNumber(counts.numbers[level], read.nfc, language, out);
  }
  if (read.hasSeparator) out += read.separator;
}

void FieldNumbers::AppendListNumber(std::u16string_view code, uint16_t language, std::u16string& out) {
  constexpr unsigned kListLevels = std::size(kNumbered);
  const NumberCode read = readNumberCode(code);
  const bool isLegal = isSameWord(read.list, u"LegalDefault"),
             isOutline = isSameWord(read.list, u"OutlineDefault");
  const bool isDefault = read.list.empty() || isSameWord(read.list, u"NumberDefault");
  Counts& counts = lists_[isLegal ? 1 : isOutline ? 2 : isDefault ? 0 : 3];
  const bool hasLevel = read.level >= 1 && static_cast<unsigned>(read.level) <= kListLevels;
  const unsigned level = hasLevel ? static_cast<unsigned>(read.level) - 1 : counts.level;
  counts.Step(level, read.start);
  if (!isLegal)
    return appendForm((isOutline ? kOutlined : kNumbered)[level], counts.numbers[level], language, out);
  appendAll(counts.numbers.data(), level, false, out);
  out += u'.';
}

}  // namespace pagerex

#include "numformat/number_spelling.h"

#include <algorithm>
#include <climits>
#include <cwchar>
#include <iterator>
#include <string_view>

#include "numformat/code_page_data.h"
#include "numformat/decimal_text.h"
#include "numformat/double_to_text.h"

constexpr KNFCodePage KNFCodePageInstance;

namespace {

/// The page's row; null if there is no such page.
const KNFCodePage::_CodePage* findPage(int page) {
  return page >= 0 && static_cast<size_t>(page) < std::size(kCodePages) ? &kCodePages[page] : nullptr;
}

bool isChinese(NF_CODEPAGE page) {
  return page == DBNum1 || page == DBNum2 || page == DBNum20;
}

bool isRoman(NF_CODEPAGE page) {
  return page == DBNum4 || page == DBNum5;
}

/// How numerals with words for ten, hundred and so on are put together.
struct NumeralRule {
  const wchar_t* table;
  wchar_t minus;
  wchar_t point;
  bool keepZero;  ///< zeros within a block of four are written as one zero digit
  bool keepOne;   ///< a digit 1 before ten, hundred and thousand is written
};

NumeralRule chineseRule(NF_CODEPAGE page) {
  const wchar_t* table = kCodePages[page].table;
  return {table, table[kChineseMinus], table[kChinesePoint], true, true};
}

void spellNumber(std::wstring& text, int pointPosition, const NumeralRule& rule, bool keepSign, bool dropOne);
void spellInteger(std::wstring_view digits, const NumeralRule& rule, std::wstring& out);
wchar_t digitIn(const wchar_t* table, wchar_t digit);

}  // namespace

const wchar_t* KNFCodePage::GetName(NF_CODEPAGE page) const {
  const _CodePage* row = findPage(page);
  return row ? row->name : L"";
}

const wchar_t* KNFCodePage::GetPage(NF_CODEPAGE page) const {
  const _CodePage* row = findPage(page);
  return row ? row->table : L"";
}

wchar_t KNFCodePage::GetChar(NF_CODEPAGE page, unsigned short index) const {
  const wchar_t* table = GetPage(page);
  return index < std::wcslen(table) ? table[index] : 0;
}

Status KNFCodePage::SerialNumber(NF_CODEPAGE page, unsigned long n, std::wstring& out) const {
  switch (page) {
    case DBNum0:
    case DBNum3:
    case DBNum6:
    case DBNum7:
    case DBNum11:
      return ConvertSeries(page, n, out);
    case DBNum1:
    case DBNum2:
    case DBNum20:
      return Tongue(page, n, out);
    case DBNum4:
    case DBNum5:
      return Tongue_Roma(page, n, out);
    case DBNum8:
      return SerialNumber_En_th(n, out);
    case DBNum9:
      return SerialNumber_En_One(n, true, out);
    case DBNum10:
      return SerialNumber_En_First(n, out);
    default:
      return ConvertNum(page, n, out);
  }
}

Status KNFCodePage::SerialNumber_JP(int page, unsigned long n, std::wstring& out) const {
  std::wstring text = decimalText(n);
  if (failed(_TransTongue_japanese(text, -1, page))) return SerialNumber(DBNum0, n, out);
  out = std::move(text);
  return Status::kOk;
}

Status KNFCodePage::Tongue(NF_CODEPAGE page, unsigned long n, std::wstring& out) const {
  if (isRoman(page)) return Tongue_Roma(page, n, out);
  if (!isChinese(page)) return Status::kInvalidArgument;
  out = decimalText(n);
  return _TransTongue(out, -1, page, false);
}

Status KNFCodePage::Tongue_Roma(NF_CODEPAGE page, unsigned long n, std::wstring& out) const {
  if (!isRoman(page)) return Status::kInvalidArgument;
  if (n > 1000) {
    out = decimalText(n);
    return Status::kOk;
  }
  const auto& roman = page == DBNum4 ? kRomanUpper : kRomanLower;
  const auto appendDigit = [&](unsigned long digit, int first) {
    if (digit > 0) out += roman[first + digit - 1];
  };
  out.clear();
  appendDigit(n / 1000, kRomanThousand);
  appendDigit(n / 100 % 10, kRomanHundreds);
  appendDigit(n / 10 % 10, kRomanTens);
  appendDigit(n % 10, 0);
  return Status::kOk;
}

Status KNFCodePage::ConvertNum(NF_CODEPAGE page, unsigned long n, std::wstring& out) const {
  const _CodePage* row = findPage(page);
  if (!row) return Status::kInvalidArgument;
  if (n > 0 && n <= row->limit) {
    out.assign(1, row->table[n - 1]);
  } else {
    wchar_t decimal[32];
    __dbltostr(static_cast<double>(n), 0, decimal, std::size(decimal), false, kFixedForm, true, 0, false);
    out = decimal;
  }
  return Status::kOk;
}

Status KNFCodePage::ConvertSeries(NF_CODEPAGE page, unsigned long n, std::wstring& out) const {
  const _CodePage* row = findPage(page);
  if (!row || row->limit < 2) return Status::kInvalidArgument;
  const bool positional = page == DBNum0 || page == DBNum3 || page == DBNum11;
  wchar_t digits[sizeof(n) * CHAR_BIT];
  wchar_t* const end = std::end(digits);
  wchar_t* first = end;
  do {
    if (!positional && n > 0) --n;
    *--first = row->table[n % row->limit];
    n /= row->limit;
  } while (n > 0);
  out.assign(first, end);
  return Status::kOk;
}

Status KNFCodePage::_TransTongue(std::wstring& text, int pointPosition, NF_CODEPAGE page,
                                 bool keepSign) const {
  return _TransTongue_chinese(text, pointPosition, page, keepSign, page != DBNum2);
}

Status KNFCodePage::_TransTongue_chinese(std::wstring& text, int pointPosition, NF_CODEPAGE page,
                                         bool keepSign, bool dropOne) const {
  if (!isChinese(page)) return Status::kInvalidArgument;
  spellNumber(text, pointPosition, chineseRule(page), keepSign, dropOne);
  return Status::kOk;
}

Status KNFCodePage::_TransTongue_japanese(std::wstring& text, int pointPosition, int table, bool keepOne,
                                          bool keepSign) const {
  const wchar_t* numerals = KNFCStingsInstance.GetJPCodePageInfo(table);
  if (!*numerals) return Status::kInvalidArgument;
  // The signs are the same in all three tables, the last of which does not hold them.
  spellNumber(text, pointPosition, {numerals, L'-', L'.', false, keepOne}, keepSign, false);
  return Status::kOk;
}

Status KNFCodePage::_TransTongue_japanese(std::wstring& text, int pointPosition, int page) const {
  if (page < DBNum1 || page > DBNum4) return Status::kInvalidArgument;
  const JapanesePage& rule = kJapanesePages[page - DBNum1];
  return _TransTongue_japanese(text, pointPosition, rule.table, rule.keepOne, true);
}

namespace {

void spellNumber(std::wstring& text, int pointPosition, const NumeralRule& rule, bool keepSign,
                 bool dropOne) {
  std::wstring_view number = text;
  std::wstring out;
  if (!number.empty() && (number[0] == L'+' || number[0] == L'-')) {
    if (number[0] == L'-' && keepSign) out += rule.minus;
    number.remove_prefix(1);
    if (pointPosition > 0) --pointPosition;
  }
  const size_t start = out.size();
  const size_t point = pointPosition >= 0 ? static_cast<size_t>(pointPosition) : number.size();
  spellInteger(number.substr(0, point), rule, out);
  if (out.size() == start) out += rule.table[0];
  if (dropOne && out.size() > start + 1 && out[start] == rule.table[1] &&
      out[start + 1] == rule.table[kTen]) {
    out.erase(start, 1);
  }
  if (point < number.size()) {
    out += rule.point;
    for (wchar_t digit : number.substr(point + 1)) out += digitIn(rule.table, digit);
  }
  text = std::move(out);
}

/// Positions count from 12 down to 1 in groups, each of three blocks of four: thousands, hundreds, tens and
/// the units, which carry the word of the block. Appends nothing for zeros alone.
void spellInteger(std::wstring_view digits, const NumeralRule& rule, std::wstring& out) {
  bool blockHasDigits = false;
  for (size_t i = 0; i < digits.size(); ++i) {
    const size_t left = digits.size() - i;
    const size_t inGroup = (left - 1) % 12;
    const size_t inBlock = inGroup % 4;
    const bool zero = digits[i] == L'0';
    const bool silentOne = inBlock > 0 && digits[i] == L'1' && !rule.keepOne;
    if (!zero && !silentOne) out += digitIn(rule.table, digits[i]);
    blockHasDigits |= !zero;

    if (inBlock > 0) {
      if (!zero) {
        out += rule.table[kTen + inBlock - 1];
      } else if (rule.keepZero && digits[i + 1] != L'0') {
        out += rule.table[0];
      }
      continue;
    }
    if (inGroup > 0 && blockHasDigits) out += rule.table[kTenThousand + inGroup / 4 - 1];
    if (inGroup == 0 && left > 12) out += rule.table[kTrillion];
    blockHasDigits = false;
  }
}

wchar_t digitIn(const wchar_t* table, wchar_t digit) {
  const bool known = digit >= L'0' && digit <= L'9' && static_cast<size_t>(digit - L'0') < std::wcslen(table);
  return known ? table[digit - L'0'] : digit;
}

}  // namespace

Status KNFCodePage::_TransCurrency(std::wstring& text, NF_CODEPAGE page) const {
  constexpr size_t kPointAndDecimals = 3;
  if (!isChinese(page) || text.size() < kPointAndDecimals) return Status::kInvalidArgument;
  const wchar_t* words = KNFCStingsInstance.GetChineseCurrencyPage();
  const wchar_t yuan = words[0], jiao = words[1], fen = words[2], exactly = words[3];
  const NumeralRule rule = chineseRule(page);
  std::wstring_view number = text;
  if (number[0] == L'+' || number[0] == L'-') number.remove_prefix(1);
  if (number.size() < kPointAndDecimals) return Status::kInvalidArgument;
  const wchar_t tenths = number[number.size() - 2], hundredths = number.back();

  std::wstring out;
  spellInteger(number.substr(0, number.size() - kPointAndDecimals), rule, out);
  if (!out.empty()) out += yuan;
  if (tenths != L'0') {
    out += digitIn(rule.table, tenths);
    out += jiao;
  } else if (!out.empty() && hundredths != L'0') {
    out += rule.table[0];
  }
  if (hundredths != L'0') {
    out += digitIn(rule.table, hundredths);
    out += fen;
  }
  if (out.empty()) {
    out += rule.table[0];
    out += yuan;
  }
  if (out.back() != fen) out += exactly;
  text = std::move(out);
  return Status::kOk;
}

wchar_t KNFCodePage::_GetCodePageNumbe(wchar_t digit, int page, AREA_CODE_INDEX area) const {
  if (area == AREA_JAPANESE && page >= DBNum1 && page <= DBNum4) {
    return digitIn(KNFCStingsInstance.GetJPCodePageInfo(kJapanesePages[page - DBNum1].table), digit);
  }
  return digitIn(GetPage(static_cast<NF_CODEPAGE>(page)), digit);
}

wchar_t KNFCodePage::_GetCodePageNumbe2(wchar_t digit, const wchar_t* table) const {
  return table ? digitIn(table, digit) : digit;
}

#include "numformat/placeholder.h"

#include <algorithm>

#include "numformat/format_section.h"

using PlaceholderEnv = KPlaceholder::PlaceholderEnv;

const PlaceholderRecord& PlaceholderEnv::record() const {
  return base->placeholders[index];
}

namespace {

/// Tells the caller that the section wrote something besides digits.
void write(PlaceholderEnv& env, std::wstring_view text, std::wstring& out) {
  if (text.empty()) return;
  env.shown->style.codePage |= NF_STYLE_MORE_THAN_DIGITS;
  out += text;
}

void write(PlaceholderEnv& env, wchar_t c, std::wstring& out) {
  write(env, std::wstring_view(&c, 1), out);
}

/// What stands for a digit that the number does not have; 0 for nothing.
constexpr wchar_t kNothing = 0, kZero = L'0', kBlank = L' ';

/// The digit at `position`, followed by the group separator where one belongs.
void writeDigit(PlaceholderEnv& env, int position, wchar_t missing, std::wstring& out) {
  const std::wstring& digits = position > 0 ? env.shown->integerDigits : env.shown->decimalDigits;
  const int length = static_cast<int>(digits.size());
  const int index = position > 0 ? length - position : -position - 1;
  const bool exists = index >= 0 && index < length;
  const wchar_t digit = exists ? digits[static_cast<size_t>(index)] : missing;
  if (digit != kNothing) out += digit;
  const bool grouped = (env.shown->style.codePage & NF_STYLE_THOUSANDS) && position > 3 && position % 3 == 1;
  if (grouped && (exists || missing == kZero)) out += KNFCStingsInstance.GetGroup(env.locale);
}

template <wchar_t missing>
void formatDigit(PlaceholderEnv& env, std::wstring& out) {
  writeDigit(env, env.record().position, missing, out);
}

/// The leftmost digit takes all digits to its left along.
template <wchar_t missing>
void formatLeftmostDigit(PlaceholderEnv& env, std::wstring& out) {
  const int position = env.record().position;
  const int length = static_cast<int>(env.shown->integerDigits.size());
  for (int at = std::max(position, length); at >= position; --at) writeDigit(env, at, missing, out);
}

template <wchar_t c>
void formatCharacter(PlaceholderEnv& env, std::wstring& out) {
  write(env, c, out);
}

void formatNothing(PlaceholderEnv&, std::wstring&) {}

void formatText(PlaceholderEnv& env, std::wstring& out) {
  write(env, env.record().text, out);
}

void formatPoint(PlaceholderEnv& env, std::wstring& out) {
  write(env, KNFCStingsInstance.GetPoint(env.locale), out);
}

void formatGroup(PlaceholderEnv& env, std::wstring& out) {
  write(env, KNFCStingsInstance.GetGroup(env.locale), out);
}

void formatCurrencySymbol(PlaceholderEnv& env, std::wstring& out) {
  constexpr size_t kSymbolOffset = 2;  // behind "[$"
  const PlaceholderRecord& record = env.record();
  if (record.text.size() < kSymbolOffset) return;
  write(env, std::wstring_view(record.text).substr(kSymbolOffset, static_cast<size_t>(record.position)), out);
}

void formatSign(PlaceholderEnv& env, std::wstring& out) {
  if (env.value < 0) write(env, L'-', out);
}

void formatString(PlaceholderEnv& env, std::wstring& out) {
  write(env, env.shown->integerDigits, out);
}

/// Not a character of any encoding that a reader of the text could know.
constexpr wchar_t kPerMille = 0xA1EB;

}  // namespace

const KPlaceholder KPlaceholder_ShapeH = {kIdShapeH, formatLeftmostDigit<kNothing>};
const KPlaceholder KPlaceholder_Shape = {kIdShape, formatDigit<kNothing>};
const KPlaceholder KPlaceholder_ZeroH = {kIdZeroH, formatLeftmostDigit<kZero>};
const KPlaceholder KPlaceholder_Zero = {kIdZero, formatDigit<kZero>};
const KPlaceholder KPlaceholder_QusmkH = {kIdQusmkH, formatLeftmostDigit<kBlank>};
const KPlaceholder KPlaceholder_Qusmk = {kIdQusmk, formatDigit<kBlank>};
const KPlaceholder KPlaceholder_XCode = {kIdXCode, formatDigit<kNothing>};

const KPlaceholder KPlaceholder_Point = {kIdPoint, formatPoint};
const KPlaceholder KPlaceholder_Group = {kIdGroup, formatGroup};
const KPlaceholder KPlaceholder_GroupLast = {kIdGroupLast, formatNothing};
const KPlaceholder KPlaceholder_Percent = {kIdPercent, formatCharacter<L'%'>};
const KPlaceholder KPlaceholder_Thousandth = {kIdThousandth, formatCharacter<kPerMille>};
const KPlaceholder KPlaceholder_Franction = {kIdFranction, formatCharacter<L'/'>};
const KPlaceholder KPlaceholder_Exponent = {kIdExponent, formatNothing};
const KPlaceholder KPlaceholder_Plus = {kIdPlus, formatCharacter<L'+'>};
const KPlaceholder KPlaceholder_Sub = {kIdSub, formatCharacter<L'-'>};
const KPlaceholder KPlaceholder_Blank = {kIdBlank, formatCharacter<L' '>};
const KPlaceholder KPlaceholder_FillChar = {kIdFillChar, formatNothing};
const KPlaceholder KPlaceholder_CharString = {kIdCharString, formatText};
const KPlaceholder KPlaceholder_UnknownChar = {kIdUnknownChar, formatText};
const KPlaceholder KPlaceholder_CurrencySymbol = {kIdCurrencySymbol, formatCurrencySymbol};
const KPlaceholder KPlaceholder_SignNegative = {kIdSignNegative, formatSign};
const KPlaceholder KPlaceholder_String = {kIdString, formatString};
const KPlaceholder KPlaceholder_General = {kIdGeneral, formatNothing};
const KPlaceholder KPlaceholder_FactionPL = {kIdFactionPL, formatText};
const KPlaceholder KPlaceholder_MarkFraction = {kIdMarkFraction, formatNothing};
const KPlaceholder KPlaceholder_Ohter = {kIdOhter, formatNothing};

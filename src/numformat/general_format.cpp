#include "numformat/general_format.h"

#include <cmath>
#include <cstdlib>

#include "numformat/decimal_text.h"
#include "numformat/double_to_text.h"
#include "numformat/normal_format.h"
#include "numformat/variant_value.h"

namespace {

/// As the C locale writes it, with 11 digits.
std::wstring generalText(double value) {
  wchar_t text[50];
  _ConvertDecimal_Gen(value, 0, text, std::size(text));
  return text;
}

}  // namespace

Status KNFGeneral::FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, ShownValue& shown,
                              std::wstring& out) const {
  const bool fitted = param.width > 0 && isPure();
  if (value.vt == NF_VT_UI4 && !fitted) return FormatSerialNumber(value.ulVal, param, shown, out);
  if (fitted) shown.style.kind = NF_KIND_PURE_GENERAL;
  Status status;
  double number;
  if (!readNumber(value, param, number, shown, out, status)) return status;
  if (fitted) {
    out = FormatNum_OQ(number, param.width);
    return Status::kOk;
  }
  KPlaceholder::PlaceholderEnv env = environment(param, shown);
  shown.integerDigits = spell(number, env.locale, area == AREA_JAPANESE || areaOf(&param) == AREA_JAPANESE);
  // The number brings its own sign.
  runPlaceholders(env, HasAutoMinus() ? 1 : 0, placeholders.size(), out);
  return Status::kOk;
}

bool KNFGeneral::isPure() const {
  return style.kind == NF_KIND_PURE_GENERAL || (codePage() == DBNum0 && placeholders.size() == 1);
}

namespace {

/// A number in plain digits, without an exponent.
struct PlainNumber {
  explicit PlainNumber(double value);

  std::wstring text;
  int pointPosition = -1;  ///< in the text; -1 if there is no point
};

PlainNumber::PlainNumber(double value) : text(value < 0 ? L"-" : L"") {
  if (value == 0) {
    text = L"0";
    return;
  }
  const DecimalDigits digits(value, 17);
  const std::wstring_view mantissa = digits.mantissa();
  const size_t integers = digits.exponent() >= 0 ? static_cast<size_t>(digits.exponent()) + 1 : 0;
  text += integers > 0 ? mantissa.substr(0, integers) : L"0";
  if (mantissa.size() <= integers) {
    text.append(integers - mantissa.size(), L'0');
    return;
  }
  pointPosition = static_cast<int>(text.size());
  text += L'.';
  if (integers == 0) text.append(static_cast<size_t>(-digits.exponent() - 1), L'0');
  text += mantissa.substr(integers);
}

/// The number with two decimals, without its sign: as under "0.00;0.00".
std::wstring withTwoDecimals(double value) {
  constexpr int kDecimals = 2;
  std::wstring text, decimals;
  splitAtPoint(value, kDecimals, text, decimals);
  if (text.empty()) text = L"0";
  decimals.resize(kDecimals, L'0');
  return text + L'.' + decimals;
}

}  // namespace

std::wstring KNFGeneral::spell(double value, AREA_CODE_INDEX locale, bool japanese) const {
  const NF_CODEPAGE page = codePage();
  if (japanese && page >= DBNum1 && page <= DBNum4) {
    PlainNumber number(value);
    KNFCodePageInstance._TransTongue_japanese(number.text, number.pointPosition, page);
    return number.text;
  }
  if (style.flags & NF_STYLE_CHINESE_MONEY) return spellMoney(value);
  if (page == DBNum1 || page == DBNum2 || page == DBNum20) {
    PlainNumber number(value);
    KNFCodePageInstance._TransTongue(number.text, number.pointPosition, page, true);
    return number.text;
  }
  std::wstring text = generalText(value);
  KNFCStingsInstance.TransPoint2Group(text, locale);
  return text;
}

std::wstring KNFGeneral::spellMoney(double value) const {
  if (codePage() == DBNum2) {
    std::wstring text = withTwoDecimals(value);
    KNFCodePageInstance._TransCurrency(text, DBNum2);
    return text;
  }
  if (codePage() != DBNum1) return generalText(value);
  PlainNumber number(value);
  KNFCodePageInstance._TransTongue(number.text, number.pointPosition, DBNum1, true);
  return number.text;
}

Status KNFString::FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, ShownValue& shown,
                             std::wstring& out) const {
  if (value.vt == NF_VT_EMPTY) return Status::kNothing;
  if (!isText(value) && !isNumber(value)) return Status::kFailure;
  shown.integerDigits = isText(value) ? std::wstring(textOf(value)) : generalText(numberOf(value));
  KPlaceholder::PlaceholderEnv env = environment(param, shown);
  runPlaceholders(env, 0, placeholders.size(), out);
  return Status::kOk;
}

namespace {

constexpr unsigned kCellExponent = kExponentUpperCase | kExponentTwoDigits;

std::wstring numberText(double value, int precision, FLOATTOTEXTFORMAT format, bool trim) {
  wchar_t text[64];
  __dbltostr(value, precision, text, std::size(text), true, format, trim, kCellExponent, true);
  return text[0] == L'+' ? text + 1 : text;
}

/// Whether a small number has so many digits that only the exponent form shows them.
bool prefersExponent(double value) {
  constexpr double kSmall = 0.0001;
  constexpr int kMostPlaces = 11;
  if (std::fabs(value) >= kSmall) return false;
  const std::wstring number = numberText(std::fabs(value), 20, kExponentForm, true);
  const std::wstring_view text = number;
  const size_t mark = text.find(L'E');
  const int digits = static_cast<int>(mark > 1 ? mark - 1 : mark);  // the point is none
  return digits - signedNumber(text.substr(mark + 1)) >= kMostPlaces;
}

}  // namespace

std::wstring FormatNum_OQ(double value, long width) {
  constexpr int kWidestNumber = 11;
  if (value == 0) return L"0";
  const bool negative = value < 0;
  const int room = width > kWidestNumber ? kWidestNumber : static_cast<int>(width) - (negative ? 1 : 0);
  const int exponent = static_cast<int>(std::log10(std::fabs(value)));
  const int integers = exponent < 1 ? 1 : exponent + 1;
  bool vanished = false;
  if (room >= integers && !prefersExponent(value)) {
    std::wstring text = numberText(value, room - integers - 1, kFixedForm, true);
    vanished = text == L"0" || text == L"-0";
    if (!vanished) return text;
  }
  const bool longExponent = std::abs(exponent) >= 100;
  if (room > (longExponent ? 5 : 4)) {
    return numberText(value, room - (longExponent ? 7 : 6), kExponentForm, false);
  }
  if (vanished && !(negative && room < 2)) return numberText(value, 0, kFixedForm, false);
  return std::wstring(static_cast<size_t>(width), L'#');
}

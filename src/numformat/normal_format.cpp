#include "numformat/normal_format.h"

#include <cmath>
#include <cstdlib>

#include "numformat/double_to_text.h"

Status KNFNormal::FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, std::wstring& out) {
  if (value.vt == NF_VT_UI4) return FormatSerialNumber(value.ulVal, param, out);
  Status status;
  double number;
  if (!readNumber(value, param, number, out, status)) return status;
  number *= factor();
  if (std::isfinite(number)) {
    Format(number, 0.5, param, out);
  } else {
    out = kNotANumber;
  }
  return Status::kOk;
}

void KNFNormal::Format(double value, double half, const NF_FORMAT_PARAM& param, std::wstring& out) {
  value /= std::pow(1000.0, scale);
  TransForm(value);
  KPlaceholder::PlaceholderEnv env = environment(param);
  writeSign(env, value, std::pow(10.0, -precision) * half <= std::fabs(value), out);
  runPlaceholders(env, HasAutoMinus() ? 1 : 0, placeholders.size(), out);
  if (codePage() < DBNum1 || codePage() > DBNum3) return;
  for (wchar_t& c : out) c = KNFCodePageInstance._GetCodePageNumbe(c, codePage(), env.locale);
}

void KNFNormal::writeSign(KPlaceholder::PlaceholderEnv& env, double value, bool shown,
                          std::wstring& out) const {
  env.value = value < 0 ? -1 : 1;
  if (HasAutoMinus() && shown) runPlaceholders(env, 0, 1, out);
}

void KNFNormal::TransForm(double value) {
  integerDigits.clear();
  decimalDigits.clear();
  if (value == 0) return;
  const double magnitude = std::fabs(value);
  const int exponent = static_cast<int>(std::log10(magnitude));
  int decimals = exponent + precision;
  if (magnitude < 1 || (exponent == 0 && precision == 0)) --decimals;
  // A number below the last decimal still rounds to one unit of it or to none.
  const double unit = std::pow(10.0, -precision);
  const DecimalDigits digits(magnitude < unit ? magnitude + 0.45 * unit : magnitude, decimals);

  const std::wstring_view mantissa = digits.mantissa();
  size_t used = 0;
  if (digits.exponent() >= 0) {
    const size_t length = static_cast<size_t>(digits.exponent()) + 1;
    integerDigits = mantissa.substr(0, length);
    used = integerDigits.size();
    integerDigits.resize(length, L'0');
  } else {
    decimalDigits.assign(static_cast<size_t>(-digits.exponent() - 1), L'0');
  }
  decimalDigits += mantissa.substr(used);
}

Status KNFExponent::FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, std::wstring& out) {
  Status status;
  double number;
  if (!readNumber(value, param, number, out, status)) return status;
  TransForm(number);
  KPlaceholder::PlaceholderEnv env = environment(param);
  writeSign(env, number, true, out);
  const size_t mark = findPlaceholder(kIdExponent);
  runPlaceholders(env, HasAutoMinus() ? 1 : 0, mark, out);

  out += form >= kUpper ? L'E' : L'e';
  if (exponent_ < 0) {
    out += L'-';
  } else if (writesPlus()) {
    out += L'+';
  }
  TransFormInt(std::abs(exponent_));
  const uint32_t thousands = style.codePage & NF_STYLE_THOUSANDS;
  style.codePage &= ~NF_STYLE_THOUSANDS;
  runPlaceholders(env, mark + 1, placeholders.size(), out);
  style.codePage |= thousands;
  return Status::kOk;
}

/// The mantissa has as many digits before the point as the format.
void KNFExponent::TransForm(double value) {
  integerDigits.clear();
  decimalDigits.clear();
  exponent_ = 0;
  if (value == 0) return;
  const DecimalDigits digits(value, precision + mantissaDigits - 1);
  const size_t length = static_cast<size_t>(mantissaDigits);
  integerDigits = digits.mantissa().substr(0, length);
  decimalDigits = digits.mantissa().substr(integerDigits.size());
  integerDigits.resize(length, L'0');
  exponent_ = digits.exponent() - mantissaDigits + 1;
}

void KNFExponent::TransFormInt(int number) {
  wchar_t text[16];
  _ConvertDecimal(static_cast<long>(number), text, std::size(text));
  integerDigits = text + 1;  // without the sign
  decimalDigits.clear();
}

double KNFExponent::GetDecimalPrecision(double value) const {
  if (value == 0) return precision;
  return mantissaDigits - (static_cast<int>(std::log10(std::fabs(value))) + 1.0) + precision;
}

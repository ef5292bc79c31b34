#include "numformat/normal_format.h"

#include <cmath>
#include <cstdlib>

#include "numformat/decimal_text.h"

Status KNFNormal::FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, ShownValue& shown,
                             std::wstring& out) const {
  if (value.vt == NF_VT_UI4) return FormatSerialNumber(value.ulVal, param, shown, out);
  Status status;
  double number;
  if (!readNumber(value, param, number, shown, out, status)) return status;
  number *= factor();
  if (std::isfinite(number)) {
    Format(number, 0.5, param, shown, out);
  } else {
    out = kNotANumber;
  }
  return Status::kOk;
}

void KNFNormal::Format(double value, double half, const NF_FORMAT_PARAM& param, ShownValue& shown,
                       std::wstring& out) const {
  value /= std::pow(1000.0, scale);
  splitAtPoint(value, precision, shown.integerDigits, shown.decimalDigits);
  KPlaceholder::PlaceholderEnv env = environment(param, shown);
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

void splitAtPoint(double value, int precision, std::wstring& integers, std::wstring& decimals) {
  if (value == 0) return;
  const double magnitude = std::fabs(value);
  const int exponent = static_cast<int>(std::log10(magnitude));
  int significant = exponent + precision;
  if (magnitude < 1 || (exponent == 0 && precision == 0)) --significant;
  // A number below the last decimal still rounds to one unit of it or to none.
  const double unit = std::pow(10.0, -precision);
  const DecimalDigits digits(magnitude < unit ? magnitude + 0.45 * unit : magnitude, significant);

  const std::wstring_view mantissa = digits.mantissa();
  size_t used = 0;
  if (digits.exponent() >= 0) {
    const size_t length = static_cast<size_t>(digits.exponent()) + 1;
    integers = mantissa.substr(0, length);
    used = integers.size();
    integers.resize(length, L'0');
  } else {
    decimals.assign(static_cast<size_t>(-digits.exponent() - 1), L'0');
  }
  decimals += mantissa.substr(used);
}

Status KNFExponent::FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, ShownValue& shown,
                               std::wstring& out) const {
  Status status;
  double number;
  if (!readNumber(value, param, number, shown, out, status)) return status;
  const int exponent = TransForm(number, shown);
  KPlaceholder::PlaceholderEnv env = environment(param, shown);
  writeSign(env, number, true, out);
  const size_t mark = findPlaceholder(kIdExponent);
  runPlaceholders(env, HasAutoMinus() ? 1 : 0, mark, out);

  out += form >= kUpper ? L'E' : L'e';
  if (exponent < 0) {
    out += L'-';
  } else if (writesPlus()) {
    out += L'+';
  }
  shown.integerDigits = decimalText(static_cast<unsigned>(std::abs(exponent)));
  shown.decimalDigits.clear();
  const uint32_t thousands = shown.style.codePage & NF_STYLE_THOUSANDS;
  shown.style.codePage &= ~NF_STYLE_THOUSANDS;
  runPlaceholders(env, mark + 1, placeholders.size(), out);
  shown.style.codePage |= thousands;
  return Status::kOk;
}

/// The mantissa has as many digits before the point as the format.
int KNFExponent::TransForm(double value, ShownValue& shown) const {
  if (value == 0) return 0;
  const DecimalDigits digits(value, precision + mantissaDigits - 1);
  const size_t length = static_cast<size_t>(mantissaDigits);
  shown.integerDigits = digits.mantissa().substr(0, length);
  shown.decimalDigits = digits.mantissa().substr(shown.integerDigits.size());
  shown.integerDigits.resize(length, L'0');
  return digits.exponent() - mantissaDigits + 1;
}

double KNFExponent::GetDecimalPrecision(double value) const {
  if (value == 0) return precision;
  return mantissaDigits - (static_cast<int>(std::log10(std::fabs(value))) + 1.0) + precision;
}

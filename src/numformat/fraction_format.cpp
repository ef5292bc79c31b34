#include "numformat/fraction_format.h"

#include <cmath>
#include <utility>

#include "numformat/double_to_text.h"
#include "numformat/placeholder_piece.h"

Status KNFFraction::FormatText(const tagVARIANT& value, const NF_FORMAT_PARAM& param, ShownValue& shown,
                               std::wstring& out) const {
  Status status;
  double number;
  if (!readNumber(value, param, number, shown, out, status)) return status;
  const Parts parts = split(std::fabs(number));
  if (!std::isfinite(parts.numerator)) {
    out = kNotANumber;
    return Status::kOk;
  }
  const size_t start = HasAutoMinus() ? 1 : 0, end = placeholders.size();
  const size_t numerator = findPlaceholder(kIdMarkFraction), slash = findPlaceholder(kIdFranction);
  const bool noWhole = parts.whole == 0;
  const bool noFraction = parts.numerator == 0 && hasWhole();
  KPlaceholder::PlaceholderEnv env = environment(param, shown);
  writeSign(env, number, !noWhole || parts.numerator != 0, out);
  writePart(env, parts.whole, noWhole, start, numerator, out);
  writePart(env, parts.numerator, noFraction, numerator, slash, out);
  writePart(env, parts.denominator, noFraction, slash, end, out);
  return Status::kOk;
}

/// Blanks keep the columns of several fractions in line: one for each digit, and for each character of a
/// given denominator.
void KNFFraction::writePart(KPlaceholder::PlaceholderEnv& env, double number, bool blank, size_t first,
                            size_t last, std::wstring& out) const {
  wchar_t digits[320];
  __dbltostr(number, 0, digits, std::size(digits), false, kFixedForm, false, 0, false);
  env.shown->integerDigits = digits;
  for (size_t at = first; at < last; ++at) {
    const PlaceholderRecord& record = placeholders[at];
    const int id = record.piece->placeholder->id;
    const bool isDigit = record.position != 0 && id != kIdCurrencySymbol;
    if (blank && isDigit) {
      out += L' ';
    } else if (blank && (id == kIdFactionPL || id == kIdFranction)) {
      out.append(record.text.size(), L' ');
    } else {
      runPlaceholders(env, at, at + 1, out);
    }
  }
}

KNFFraction::Parts KNFFraction::split(double magnitude) const {
  Parts parts;
  parts.whole = _GetDoulbeInt(magnitude);
  const double rest = std::fabs(magnitude - parts.whole);
  if (isFixed()) {
    Double2Fraction_2(rest, parts);
  } else {
    Double2Fraction(rest, parts);
  }
  if (parts.numerator == parts.denominator) {
    ++parts.whole;
    parts.numerator = 0;
  }
  if (!hasWhole()) {
    parts.numerator += parts.whole * parts.denominator;
    parts.whole = 0;
  }
  return parts;
}

void KNFFraction::Double2Fraction_2(double rest, Parts& parts) const {
  parts.denominator = fixedDenominator;
  const double exact = rest * fixedDenominator;
  parts.numerator = _GetDoulbeInt(exact);
  if (exact - parts.numerator >= 0.5) ++parts.numerator;
}

/// The fraction nearest to `rest` whose denominator has no more digits than the format; the smaller
/// denominator if two are as near. Walks the continued fraction of `rest`: the best one is its last
/// convergent that fits, or the widest fraction between that and the one before.
void KNFFraction::Double2Fraction(double rest, Parts& parts) const {
  const double limit = std::pow(10.0, denominatorDigits) - 1;
  double n0 = 1, d0 = 0;  // the convergent before
  double n1 = 0, d1 = 1;
  double left = rest;
  while (left > 0) {
    const double inverse = 1 / left;
    const double step = std::floor(inverse);
    if (step * d1 + d0 > limit) {
      const double fitting = std::floor((limit - d0) / d1);
      const double n = fitting * n1 + n0, d = fitting * d1 + d0;
      if (d > 0 && std::fabs(rest - n / d) < std::fabs(rest - n1 / d1)) {
        n1 = n;
        d1 = d;
      }
      break;
    }
    n0 = std::exchange(n1, step * n1 + n0);
    d0 = std::exchange(d1, step * d1 + d0);
    left = inverse - step;
  }
  parts.numerator = n1;
  parts.denominator = d1;
}

double KNFFraction::GetFormatPrecisionDouble(double value) const {
  const Parts parts = split(std::fabs(value));
  if (!std::isfinite(parts.numerator)) return value;
  return std::copysign(parts.whole + parts.numerator / parts.denominator, value);
}

/// The value that is shown has been taken already: nothing more is cut.
double KNFFraction::GetDecimalPrecision(double) const {
  return 308;
}

#include "numformat/format_section.h"

#include <algorithm>
#include <cmath>

#include "numformat/decimal_text.h"
#include "numformat/double_to_text.h"
#include "numformat/placeholder_piece.h"
#include "numformat/variant_value.h"

const wchar_t kNotANumber[] = L"#NUM!";

Status KNFBase::FormatNum(const tagVARIANT& value, const NF_FORMAT_PARAM& param,
                          std::optional<std::wstring>& out, NFSTYLE& outStyle) const {
  ShownValue shown = {style, {}, {}};
  std::wstring text;
  const Status status = FormatText(value, param, shown, text);
  outStyle = shown.style;
  if (status == Status::kOk) out = std::move(text);
  return failed(status) ? status : Status::kOk;
}

KPlaceholder::PlaceholderEnv KNFBase::environment(const NF_FORMAT_PARAM& param, ShownValue& shown) const {
  return {.base = this, .shown = &shown, .locale = area != AREA_NONE ? area : areaOf(&param), .area = area};
}

void KNFBase::runPlaceholders(KPlaceholder::PlaceholderEnv& env, size_t first, size_t last,
                              std::wstring& out) const {
  for (env.index = first; env.index < last; ++env.index) {
    const KPlaceholder& placeholder = *placeholders[env.index].piece->placeholder;
    if (placeholder.id == kIdGeneral) {
      out += env.shown->integerDigits;
    } else {
      placeholder.Format(env, out);
    }
  }
}

size_t KNFBase::findPlaceholder(int id) const {
  const auto found =
      std::find_if(placeholders.begin(), placeholders.end(),
                   [id](const PlaceholderRecord& record) { return record.piece->placeholder->id == id; });
  return static_cast<size_t>(found - placeholders.begin());
}

void KNFBase::InsertAutoMinus() {
  placeholders.insert(placeholders.begin(), {0, {}, &s_PLResouce[kPieceAutoMinus]});
}

bool KNFBase::HasAutoMinus() const {
  return !placeholders.empty() && placeholders[0].piece->placeholder->id == kIdSignNegative;
}

Status KNFBase::FormatSerialNumber(uint32_t number, const NF_FORMAT_PARAM& param, ShownValue& shown,
                                   std::wstring& out) const {
  KPlaceholder::PlaceholderEnv env = environment(param, shown);
  const Status status = env.locale == AREA_JAPANESE
                            ? KNFCodePageInstance.SerialNumber_JP(codePage(), number, shown.integerDigits)
                            : KNFCodePageInstance.SerialNumber(codePage(), number, shown.integerDigits);
  if (failed(status)) return status;
  runPlaceholders(env, HasAutoMinus() ? 1 : 0, placeholders.size(), out);
  return Status::kOk;
}

bool KNFBase::readNumber(const tagVARIANT& value, const NF_FORMAT_PARAM& param, double& number,
                         ShownValue& shown, std::wstring& out, Status& status) {
  status = Status::kOk;
  number = numberOf(value);
  if (isNumber(value)) {
    if (std::isfinite(number)) return true;
    out = kNotANumber;
  } else if (value.vt == NF_VT_EMPTY) {
    if (param.flags & NF_EMPTY_AS_ZERO) return true;
    status = Status::kNothing;
  } else if (value.vt == NF_VT_BSTR) {
    out = textOf(value);
    shown.style.codePage |= NF_STYLE_TEXT;
  } else {
    status = Status::kFailure;
  }
  return false;
}

namespace {

bool isNear(double a, double b) {
  constexpr double kTolerance = 3.8897769753748434e-16;
  return std::fabs(a - b) <= kTolerance * std::fabs(b);
}

/// Half away from zero, where a number just short of the half counts as one.
double roundDecimals(double magnitude, double decimals) {
  constexpr double kLargestPower = 308;  // of ten that a double holds
  const double power = std::pow(10.0, std::min(decimals, kLargestPower));
  const double rest = std::pow(10.0, std::max(decimals - kLargestPower, 0.0));
  const double raised = magnitude * power * rest + 0.5;
  const double below = std::floor(raised);
  return (isNear(below + 1, raised) ? below + 1 : below) / rest / power;
}

int exponentOf(double magnitude) {
  const int exponent = static_cast<int>(std::floor(std::log10(magnitude)));
  return magnitude / std::pow(10.0, exponent) > 10 ? exponent + 1 : exponent;
}

}  // namespace

Status KNFBase::FormatPrecision(double& value) const {
  constexpr double kLeastDecimals = -308, kMostDecimals = 324;
  constexpr double kLargestWithDecimals = 1e16;
  constexpr int kSignificantDigits = 15;
  if (!NeedFormatPrecision()) return Status::kNothing;
  value = GetFormatPrecisionDouble(value);
  const double decimals = GetDecimalPrecision(value);
  const double magnitude = std::fabs(value);
  if (decimals < kLeastDecimals || value == 0) {
    value = 0;
    return Status::kOk;
  }
  if (decimals >= kMostDecimals || (decimals >= 0 && magnitude > kLargestWithDecimals)) return Status::kOk;

  const int exponent = exponentOf(magnitude);
  const bool nothingLeft = exponent < 0 ? decimals < 0 : -decimals > exponent + 1;
  const int allowed =
      exponent < 0 ? kSignificantDigits - exponent : std::max(kSignificantDigits - exponent, 0);
  if (nothingLeft) {
    value = 0;
  } else if (decimals <= allowed) {
    value = std::copysign(roundDecimals(magnitude, decimals), value);
  }
  return Status::kOk;
}

DecimalDigits::DecimalDigits(double number, int decimals) {
  constexpr int kMostDecimals = 17;
  constexpr int kSize = sizeof mantissa_ / sizeof *mantissa_;
  const int written = __dbltostr(number, std::min(decimals, kMostDecimals), mantissa_, kSize, true,
                                 kExponentForm, false, 0, false);
  const std::wstring_view text(mantissa_, written > 0 ? static_cast<size_t>(written) : 0);
  const size_t mark = text.find(L'e');
  if (mark == std::wstring_view::npos || mark < 2) return;
  exponent_ = signedNumber(text.substr(mark + 1));
  // Behind the sign stand the first digit, the point and the decimals.
  mantissa_[length_++] = mantissa_[1];
  for (size_t at = 3; at < mark; ++at) mantissa_[length_++] = mantissa_[at];
  while (length_ > 1 && mantissa_[length_ - 1] == L'0') --length_;
}

#include "numformat/sectioned_format.h"

#include <cmath>

#include "numformat/variant_value.h"

namespace {

/// Tells a section that it serves negative numbers only since there is no other.
constexpr uint32_t kNegativeInOnlySection = 0x1000;

}  // namespace

Status KNFSect::FormatNum(const tagVARIANT& value, const NF_FORMAT_PARAM* param, wchar_t** out,
                          NFSTYLE* style) {
  NF_FORMAT_PARAM copy = param ? *param : kDefaultParam;
  KNFBase* section = GetNF(value, copy);
  if (section && !section->placeholders.empty()) {
    section->style.codePage =
        (section->style.codePage & 0xFFFF0000u & ~NF_STYLE_MORE_THAN_DIGITS) | kStyleLowHalf;
    return section->FormatNum(value, &copy, out, style);
  }
  if (style) *style = kDefaultStyle;
  const bool shownAsItIs = value.vt == NF_VT_BSTR && count_ < kMaxSections;
  if (out) *out = shownAsItIs ? newText(textOf(value)) : nullptr;
  return Status::kOk;
}

KNFBase* KNFSect::GetNF(const tagVARIANT& value, NF_FORMAT_PARAM& param) const {
  if (param.width == 0) return nullptr;
  if (value.vt == NF_VT_EMPTY) {
    return (param.flags & NF_EMPTY_AS_ZERO) && count_ > 2 ? slots_[kZero] : nullptr;
  }
  if (!isNumber(value) || std::isnan(numberOf(value))) return slots_[kText];
  if (numberOf(value) < 0 && count_ == 1) param.flags |= kNegativeInOnlySection;
  return sectionOf(numberOf(value));
}

KNFBase* KNFSect::sectionOf(double number) const {
  return slots_[number > 0 ? kPositive : number < 0 ? kNegative : kZero];
}

Status KNFSect::FormatPrecision(double& value) {
  if (!std::isfinite(value)) return Status::kNothing;
  KNFBase* section = sectionOf(value);
  return section ? section->FormatPrecision(value) : Status::kNothing;
}

int KNFSect::Release() {
  const int left = --references_;
  if (left == 0) Destory();
  return left;
}

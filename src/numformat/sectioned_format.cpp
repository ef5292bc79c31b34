#include "numformat/sectioned_format.h"

#include <cmath>

#include "numformat/variant_value.h"

Status KNFSect::FormatNum(const tagVARIANT& value, const NF_FORMAT_PARAM& param,
                          std::optional<std::wstring>& out, NFSTYLE& style) const {
  const KNFBase* section = GetNF(value, param);
  if (section && !section->placeholders.empty()) return section->FormatNum(value, param, out, style);
  style = kDefaultStyle;
  const bool shownAsItIs = value.vt == NF_VT_BSTR && count_ < kMaxSections;
  if (shownAsItIs) out = textOf(value);
  return Status::kOk;
}

const KNFBase* KNFSect::GetNF(const tagVARIANT& value, const NF_FORMAT_PARAM& param) const {
  if (param.width == 0) return nullptr;
  if (value.vt == NF_VT_EMPTY) {
    return (param.flags & NF_EMPTY_AS_ZERO) && count_ > 2 ? slots_[kZero] : nullptr;
  }
  if (!isNumber(value) || std::isnan(numberOf(value))) return slots_[kText];
  return sectionOf(numberOf(value));
}

KNFBase* KNFSect::sectionOf(double number) const {
  return slots_[number > 0 ? kPositive : number < 0 ? kNegative : kZero];
}

Status KNFSect::FormatPrecision(double& value) const {
  if (!std::isfinite(value)) return Status::kNothing;
  const KNFBase* section = sectionOf(value);
  return section ? section->FormatPrecision(value) : Status::kNothing;
}

int KNFSect::Release() {
  const int left = --references_;
  if (left == 0) Destory();
  return left;
}

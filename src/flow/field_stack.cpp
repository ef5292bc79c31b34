#include "flow/field_stack.h"

#include <algorithm>

namespace pagerex {

bool FieldStack::Begin(uint8_t flt) {
  if (fields_.size() >= kDeepest) {
    ++tooDeep_;
    return false;
  }
  fields_.emplace_back().flt = flt;
  Changed();
  return true;
}

void FieldStack::End() {
  if (tooDeep_ > 0) {
    --tooDeep_;
    return;
  }
  if (!fields_.empty()) fields_.pop_back();
  Changed();
}

void FieldStack::Changed() {
  const auto hides = [](const OpenField& field) { return !field.isInResult || field.hidesResult; };
  hiding_ = static_cast<size_t>(std::count_if(fields_.begin(), fields_.end(), hides));
}

void FieldStack::AddToCode(std::u16string_view text) {
  for (size_t i = fields_.size(); i > 0; --i) {
    OpenField& field = fields_[i - 1];
    if (field.isInResult && field.hidesResult) return;
    if (field.isInResult) continue;
    field.code.append(text.substr(0, kLongestCode - std::min(field.code.size(), kLongestCode)));
    return;
  }
}

const OpenField* FieldStack::Link() const {
  const auto found = std::find_if(fields_.begin(), fields_.end(),
                                  [](const OpenField& field) { return field.isLink && field.isInResult; });
  return found != fields_.end() ? &*found : nullptr;
}

}  // namespace pagerex

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "flow/field_code.h"
#include "flow/form_field_data.h"

namespace pagerex {

/// A field that has begun and not ended.
struct OpenField {
  std::u16string code;
  uint8_t flt = 0;
  bool isInResult = false;
  bool hidesResult = false;
  bool isLink = false;
  bool hasData = false;  ///< `data` was read
  FieldDisplay display = FieldDisplay::kResult;
  FieldLink link;
  FormFieldData data;
};

/// The fields around a place in the text. Text in the code of a field is not shown; it belongs to the
/// innermost field whose code is being read.
class FieldStack {
 public:
  void Clear() { fields_.clear(); }
  bool empty() const { return fields_.empty(); }

  /// False for one that lies too deep: its text counts to the field around it.
  bool Begin(uint8_t flt);
  /// The innermost one; null for none.
  OpenField* top() { return fields_.empty() ? nullptr : &fields_.back(); }
  void End();

  /// Whether text here is not shown.
  bool HidesText() const { return hiding_ != 0; }
  /// To be called when the top one goes over into its result.
  void Changed();
  /// Adds text to the code that is being read; none if that is not so.
  void AddToCode(std::u16string_view text);
  /// The outermost field that is a link; null for none.
  const OpenField* Link() const;

 private:
  static constexpr size_t kDeepest = 64;
  static constexpr size_t kLongestCode = 1 << 16;

  std::vector<OpenField> fields_;
  size_t hiding_ = 0;  ///< fields that hide what is in them
  size_t tooDeep_ = 0;
};

}  // namespace pagerex

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/byte_view.h"

namespace pagerex {

/// What the stream "Data" tells of a form field (FFData).
struct FormFieldData {
  enum class Kind : uint8_t { kText = 0, kCheckBox = 1, kDropDown = 2 };
  Kind kind = Kind::kText;
  uint8_t textKind = 0;  ///< of a text field: 0 any, 1 number, 2 date, 3 today, 4 now, 5 calculated
  bool isProtected = false;
  bool isChecked = false;
  std::u16string name;
  std::u16string defaultText;
  std::u16string format;
  std::vector<std::u16string> choices;
  uint32_t choice = 0;  ///< index in `choices`, unless it is empty

  /// The choice that was made; empty for none.
  std::u16string_view Choice() const {
    return choice < choices.size() ? std::u16string_view(choices[choice]) : std::u16string_view();
  }
};

/// Reads the record at `offset` of the stream "Data" (`data` from there on). False if there is none.
bool readFormFieldData(ByteView data, FormFieldData& out);

}  // namespace pagerex

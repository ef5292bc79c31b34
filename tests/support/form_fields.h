#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "support/word_document_writer.h"

namespace support {

/// A field of a form.
struct FormField {
  enum class Kind : uint8_t { kText = 0, kCheckBox = 1, kDropDown = 2 };
  Kind kind = Kind::kText;
  Text name = {};
  Text value = {};                         ///< of a text field
  bool checked = false;                    ///< of a check box
  std::vector<Text> choices = {};          ///< of a list
  uint8_t chosen = 0;                      ///< of them
  std::optional<uint16_t> byDefault = {};  ///< nobody filled it in: this holds
  Sprms sprms = {};                        ///< of its runs

  /// As it lies in "Data".
  Bytes bytes() const;
};

/// Adds the field as Word does: marks, code, the mark of its data, result, and a bookmark of its name.
Paragraph& addFormField(WordDocument& document, Paragraph& paragraph, const FormField& field);

inline Paragraph& formText(WordDocument& document, Paragraph& paragraph, const Text& name,
                           const Text& value) {
  return addFormField(document, paragraph, {.name = name, .value = value});
}
inline Paragraph& formCheckBox(WordDocument& document, Paragraph& paragraph, const Text& name, bool checked) {
  return addFormField(document, paragraph,
                      {.kind = FormField::Kind::kCheckBox, .name = name, .checked = checked});
}
inline Paragraph& formDropDown(WordDocument& document, Paragraph& paragraph, const Text& name,
                               const std::vector<Text>& choices, uint8_t chosen) {
  return addFormField(
      document, paragraph,
      {.kind = FormField::Kind::kDropDown, .name = name, .choices = choices, .chosen = chosen});
}

}  // namespace support

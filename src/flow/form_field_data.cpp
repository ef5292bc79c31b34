#include "flow/form_field_data.h"

#include <algorithm>

#include "base/utf16.h"

namespace pagerex {
namespace {

constexpr size_t kLeastHeader = 0x44;
constexpr uint32_t kVersion = 0xFFFFFFFF;
constexpr uint16_t kDefaultResult = 25;  // iRes: what the definition says

/// Reads one thing behind the other; behind the end all is zero and empty.
class Cursor {
 public:
  explicit Cursor(ByteView left) : left_(left) {}

  uint16_t Word() { return Take(2).u16(0); }
  std::u16string Text() { return utf16Of(Take(size_t{Word()} * 2)); }
  /// With a zero behind it.
  std::u16string TerminatedText() {
    std::u16string text = Text();
    Word();
    return text;
  }
  void Skip(size_t size) { Take(size); }
  bool AtEnd() const { return left_.empty(); }

 private:
  ByteView Take(size_t size) {
    const ByteView taken = left_.part(0, size);
    left_ = left_.part(std::min(size, left_.size()));
    return taken;
  }

  ByteView left_;
};

/// A string table, of which each string may have extra bytes.
std::vector<std::u16string> readChoices(Cursor& data) {
  std::vector<std::u16string> choices;
  if (data.Word() != 0xFFFF) return choices;
  const size_t count = data.Word();
  const size_t extraSize = data.Word();
  while (choices.size() < count && !data.AtEnd()) {
    choices.push_back(data.Text());
    data.Skip(extraSize);
  }
  return choices;
}

void readFields(Cursor data, FormFieldData& out) {
  const uint16_t bits = data.Word();
  data.Skip(4);  // the longest text, the size of a check box
  out.kind = static_cast<FormFieldData::Kind>(bits & 3);
  out.isProtected = (bits >> 9 & 1) != 0;
  out.textKind = static_cast<uint8_t>(bits >> 11 & 7);
  out.name = data.TerminatedText();
  uint16_t result = bits >> 2 & 0x1F;
  if (out.kind == FormFieldData::Kind::kText) {
    out.defaultText = data.TerminatedText();
  } else {
    const uint16_t byDefault = data.Word();
    if (result == kDefaultResult) result = byDefault;
  }
  out.isChecked = out.kind == FormFieldData::Kind::kCheckBox && result != 0;
  out.format = data.TerminatedText();
  for (int i = 0; i < 4; ++i) data.TerminatedText();  // help, status bar, macros
  if (out.kind != FormFieldData::Kind::kDropDown) return;
  out.choices = readChoices(data);
  out.choice = result;
}

}  // namespace

bool readFormFieldData(ByteView data, FormFieldData& out) {
  constexpr uint16_t kKinds = 3;
  out = {};
  const size_t size = data.u32(0), headerSize = data.u16(4);
  if (headerSize < kLeastHeader || size <= headerSize) return false;
  const ByteView fields = data.part(0, size).part(headerSize);
  if (fields.size() < 6 || fields.u32(0) != kVersion || (fields.u16(4) & 3) >= kKinds) return false;
  readFields(Cursor(fields.part(4)), out);
  return true;
}

}  // namespace pagerex

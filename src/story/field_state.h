#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "wordreader/text_marks.h"

namespace pagerex {

/// The field type whose anchors become hyperlinks.
constexpr uint32_t kHyperlinkField = 88;

/// Follows the nesting of fields: which are open, what their code says, and whether text at this place shows.
class KFieldState {
 public:
  /// A begin mark. `known`: the field table has an entry of type `type` for it.
  void begin(bool known, uint32_t type);
  void separator() { fieldState_ = text_mark::kFieldSeparator; }
  void end();

  /// Takes a run's text as code where code stands here.
  void collect(const uint16_t* text, uint32_t length);
  /// Code is never shown, nor is the result of a formula within a formula.
  bool hidesText() const;

  /// The innermost open field is a HYPERLINK.
  bool inHyperlink() const { return !fieldTypes_.empty() && fieldTypes_.back() == kHyperlinkField; }
  /// Code of the innermost open field, which is cleared.
  std::wstring takeCode();

 private:
  struct Code {
    std::wstring text;
    bool formula = false;  ///< contains a "="
  };

  Code fieldCode_;
  std::vector<uint32_t> fieldTypes_;
  std::vector<Code> savedFieldCodes_;
  uint16_t fieldState_ = 0;  ///< the last mark seen
};

/// Reads the code of a HYPERLINK field: the keyword, a quoted target, and switches \l for a location and \o
/// for a tip. `url` and `title` are added to.
void ParseHyperlinkFieldCode(const std::wstring& code, std::wstring& url, std::wstring& title);

}  // namespace pagerex

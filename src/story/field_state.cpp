#include "story/field_state.h"

#include <utility>

#include "base/character_class.h"

namespace pagerex {
namespace {

/// Codes that are kept of the fields around the innermost one. Word nests twenty.
constexpr size_t kMostSavedCodes = 1000;

}  // namespace

void KFieldState::begin(bool known, uint32_t type) {
  fieldState_ = text_mark::kFieldBegin;
  if (known) fieldTypes_.push_back(type);
  if (fieldTypes_.size() < 2) return;
  Code outer = std::exchange(fieldCode_, Code());
  if (savedFieldCodes_.size() < kMostSavedCodes) savedFieldCodes_.push_back(std::move(outer));
}

/// After a nested field the result of the outer one goes on, even if the nested one stood in its code.
void KFieldState::end() {
  fieldCode_ = Code();
  fieldState_ = text_mark::kFieldEnd;
  if (fieldTypes_.empty()) return;
  fieldTypes_.pop_back();
  if (fieldTypes_.empty()) return;
  if (!savedFieldCodes_.empty()) {
    fieldCode_ = std::move(savedFieldCodes_.back());
    savedFieldCodes_.pop_back();
  }
  fieldState_ = text_mark::kFieldSeparator;
}

void KFieldState::collect(const uint16_t* text, uint32_t length) {
  if (fieldState_ != text_mark::kFieldBegin) return;
  for (uint32_t i = 0; i < length && text[i] != 0; ++i) {
    fieldCode_.text.push_back(text[i]);
    fieldCode_.formula = fieldCode_.formula || text[i] == L'=';
  }
}

bool KFieldState::hidesText() const {
  if (fieldTypes_.empty()) return false;
  if (fieldState_ != text_mark::kFieldSeparator) return true;
  return fieldTypes_.size() >= 2 && fieldCode_.formula && !savedFieldCodes_.empty() &&
         savedFieldCodes_.back().formula;
}

std::wstring KFieldState::takeCode() {
  return std::exchange(fieldCode_, Code()).text;
}

namespace {

/// The state of one reading of a HYPERLINK code.
class HyperlinkCodeReader {
 public:
  HyperlinkCodeReader(std::wstring& url, std::wstring& title) : url_(url), title_(title) {}

  void read(const std::wstring& code) {
    for (size_t i = 0; i < code.size(); ++i) {
      if (code[i] == L'"') {
        quoteState_ = (quoteState_ + 1) % 3;
      } else if (code[i] == L'\\') {
        i = readBackslash(code, i + 1);
      } else if (quoteState_ == kInside) {
        value_ += code[i];
      } else if (option_.starts_with(L'l')) {
        if (url_.empty()) url_ = L"#";
        url_ += code[i];
      }
      if (quoteState_ == kClosed) finishString();
    }
  }

 private:
  enum { kOutside = 0, kInside = 1, kClosed = 2 };

  /// Reads what stands behind a backslash, from `at`. Returns the place of the last character that was used.
  size_t readBackslash(const std::wstring& code, size_t at) {
    const bool inside = quoteState_ == kInside;
    if (at < code.size() && code[at] == L'\\') {
      if (inside) value_ += L'\\';
      return at;
    }
    if (inside) {
      value_ += L'\\';
      if (at < code.size()) value_ += code[at];
      return at;
    }
    option_.clear();
    while (at < code.size() && isLetterOrDigit(static_cast<uint16_t>(code[at]))) option_ += code[at++];
    const bool endsInSpace = at < code.size() && isSpace(static_cast<uint16_t>(code[at]));
    return endsInSpace ? at : at - 1;
  }

  void finishString() {
    if (option_.empty()) {
      url_ += value_;
    } else if (option_.starts_with(L'l')) {
      url_ = L"#" + value_;
    } else if (option_.starts_with(L'o')) {
      title_ += value_;
    }
    quoteState_ = kOutside;
    option_.clear();
    value_.clear();
  }

  std::wstring& url_;
  std::wstring& title_;
  std::wstring value_;   ///< text of the current quoted string
  std::wstring option_;  ///< the current switch word
  int quoteState_ = kOutside;
};

}  // namespace

void ParseHyperlinkFieldCode(const std::wstring& code, std::wstring& url, std::wstring& title) {
  HyperlinkCodeReader(url, title).read(code);
}

}  // namespace pagerex

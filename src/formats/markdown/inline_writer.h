#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "formats/markdown/escape.h"
#include "formats/markdown/inline_text.h"

namespace pagerex {

/// Where the text of a paragraph goes.
struct InlineForm {
  enum Kind : uint8_t { kParagraph, kHeading, kCell /**< of a pipe table */, kHtml };
  Kind kind = kParagraph;
  bool isAtLineStart = true;  ///< nothing but what begins a list item or a note stands in front
  size_t indent = 0;          ///< of the lines behind the first
  bool hasStrikes = true;     ///< "~~"
};

/// Spells the text of a paragraph in Markdown or HTML.
class InlineWriter {
 public:
  /// `text` is arranged; what it becomes is appended to `out`. Neither is owned.
  InlineWriter(const InlineText& text, const InlineForm& form, std::string& out);

  void Write();

 private:
  struct Look;
  static const Look kLooks[];

  void WriteRange(size_t begin, size_t end, uint16_t looks, uint32_t link, Flank behind);
  void WriteLink(size_t begin, size_t end, uint16_t looks);
  void WriteLook(const Look& look, size_t begin, size_t end, uint16_t looks, uint32_t link, Flank behind);
  void WritePiece(size_t index);
  void WriteText(std::u16string_view text, bool isLast);
  void WriteCode(std::u16string_view code);
  void WriteBreaks();
  void BeginSpan();

  size_t EndOfLook(size_t begin, size_t end, uint16_t look, uint32_t link) const;
  size_t EndOfLink(size_t begin, size_t end) const;
  Flank FlankAt(size_t index, size_t end, uint16_t looks, uint32_t link, Flank behind) const;
  bool IsHtml() const { return form_.kind == InlineForm::kHtml; }

  const InlineText& text_;
  const InlineForm& form_;
  std::string& out_;
  const size_t begin_;                          ///< of what is written
  Flank last_ = Flank::kSpace;                  ///< of the last character that was written
  size_t delimiterEnd_ = 0;                     ///< behind the last "*" or "~" that closes
  size_t starBegin_ = static_cast<size_t>(-1);  ///< of the innermost emphasis by "*" around that
  uint32_t depth_ = 0;                          ///< spans around the piece that is written
  uint32_t breaks_ = 0;                         ///< that are owed
  bool isInLink_ = false;
  bool isAtLineStart_;
  bool isFirstLine_ = true;
  bool isBehindReference_ = false;
};

}  // namespace pagerex

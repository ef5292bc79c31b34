#include "formats/text/text_writer.h"

#include <algorithm>

#include "base/number_text.h"
#include "formats/text/wrapped_text.h"

namespace pagerex {
namespace {

constexpr int kLevelIndent = 2;

std::u16string commentLabel(const CommentFacts& comment) {
  std::u16string label(comment.initials);
  const std::string digits(number(static_cast<int>(comment.index) + 1));
  return label.append(digits.begin(), digits.end());
}

}  // namespace

TextWriter::TextWriter(Utf8Output& out, const TextOptions& options) : out_(out), options_(options) {
  if (options.width > 0)
    wrapped_ = std::make_unique<WrappedText>(out, std::max(options.width, kLeastTextWidth));
}

TextWriter::~TextWriter() = default;

// What reaches the file.

inline void TextWriter::Put(std::u16string_view text) {
  if (text.empty() || muted_) return;
  if (owesSpace_) PutSpace();
  hasText_ = true;
  if (wrapped_) {
    wrapped_->Put(text);
  } else {
    out_.Put(text, Utf8Filter::kControlsAndSoftHyphens);
  }
}

/// In the place of a paragraph's end or a line break within a cell.
void TextWriter::PutSpace() {
  owesSpace_ = false;
  Put(wrapped_ ? u"\n" : u" ");
}

void TextWriter::PutBracketed(std::u16string_view text) {
  Put(u"[");
  Put(text);
  Put(u"]");
}

void TextWriter::CloseLine() {
  if (muted_) return;
  hasText_ = false;
  if (wrapped_) {
    wrapped_->EndParagraph();
  } else {
    out_.Put('\n');
  }
}

// Paragraphs.

void TextWriter::BeginHeader(const HeaderFacts&) {
  muted_ += !options_.headers;
}

void TextWriter::EndHeader() {
  muted_ -= !options_.headers;
}

void TextWriter::BeginParagraph(const ParagraphFacts& facts) {
  if (tables_ > 0) {
    owesSpace_ = hasText_;
  } else if (wrapped_ && facts.isListItem && !beginsPart_) {
    wrapped_->Indent(kLevelIndent * facts.properties.listLevel);
  }
  if (facts.label.empty()) return;
  Put(facts.label);
  if (facts.labelFollow == ParagraphFacts::Follow::kNothing) return;
  const bool isTab = facts.labelFollow == ParagraphFacts::Follow::kTab && tables_ == 0 && !wrapped_;
  Put(isTab ? u"\t" : u" ");
  if (wrapped_ && tables_ == 0 && !muted_) wrapped_->Hang();
}

void TextWriter::EndParagraph() {
  if (tables_ == 0) CloseLine();
}

void TextWriter::Text(std::u16string_view text, const RunProperties&) {
  if (muted_) return;
  if (beginsPart_) [[unlikely]] {
    // The blank between a note's mark and its text stands already.
    if (!text.empty() && (text[0] == ' ' || text[0] == '\t')) text.remove_prefix(1);
    beginsPart_ = false;
  }
  Put(text);
}

void TextWriter::MarkHere(Mark mark, const RunProperties&) {
  if (muted_) return;
  if (beginsPart_ && mark == Mark::kTab) return;
  if (mark == Mark::kRule) return Put(u"---");
  if (mark == Mark::kTab && tables_ == 0) return Put(wrapped_ ? u" " : u"\t");
  if (tables_ > 0) {
    owesSpace_ = hasText_;
    return;
  }
  const bool isPage = mark == Mark::kPageBreak && hasText_;
  Put(isPage ? u"\n\n" : u"\n");
  hasText_ = false;
}

void TextWriter::FormField(const FormFieldFacts& field, const RunProperties&) {
  if (field.kind == FormFieldFacts::Kind::kCheckBox) return Put(field.isChecked ? u"\u2612" : u"\u2610");
  Put(field.value);
}

void TextWriter::Picture(const PictureFacts& picture) {
  if (options_.pictures && !picture.description.empty()) PutBracketed(picture.description);
}

// Tables. One within another is part of its cell.

void TextWriter::BeginTable(const TableProperties&) {
  if (tables_++ == 0 && wrapped_ && !muted_) wrapped_->BeginTable();
}

void TextWriter::EndTable() {
  if (--tables_ == 0 && wrapped_ && !muted_) wrapped_->EndTable();
}

void TextWriter::BeginRow(const RowProperties&) {
  isFirstCell_ = true;
}

void TextWriter::EndRow() {
  if (tables_ > 1 || muted_) return;
  hasText_ = owesSpace_ = false;
  if (wrapped_) {
    wrapped_->EndRow();
  } else {
    out_.Put('\n');
  }
}

void TextWriter::BeginCell(const CellProperties& cell) {
  if (muted_) return;
  if (tables_ > 1) {
    owesSpace_ = hasText_;
    return;
  }
  if (wrapped_) {
    wrapped_->BeginCell(cell.columnSpan);
  } else if (!isFirstCell_) {
    out_.Put('\t');
  }
  isFirstCell_ = hasText_ = owesSpace_ = false;
}

// Notes and comments.

void TextWriter::NoteReference(const NoteFacts& note, const RunProperties&) {
  PutBracketed(note.label);
}

void TextWriter::NoteMark(const NoteFacts& note, const RunProperties&) {
  if (!beginsPart_) PutBracketed(note.label);
}

void TextWriter::CommentReference(const CommentFacts& comment) {
  if (options_.comments) PutBracketed(commentLabel(comment));
}

void TextWriter::BeginNote(const NoteFacts& note) {
  BeginPart(note.label);
}

void TextWriter::EndNote() {
  EndPart();
}

void TextWriter::BeginComment(const CommentFacts& comment) {
  muted_ += !options_.comments;
  if (muted_) return;
  BeginPart(commentLabel(comment));
  if (comment.author.empty()) return;
  Put(comment.author);
  Put(u": ");
}

void TextWriter::EndComment() {
  EndPart();
  muted_ -= !options_.comments;
}

void TextWriter::BeginPart(std::u16string_view label) {
  if (muted_) return;
  if (!hasParts_) CloseLine();
  hasParts_ = beginsPart_ = true;
  PutBracketed(label);
  Put(u" ");
  if (wrapped_) wrapped_->Hang();
}

/// One without a paragraph has its label.
void TextWriter::EndPart() {
  beginsPart_ = false;
  if (hasText_) CloseLine();
}

}  // namespace pagerex

#include "formats/markdown/markdown_writer.h"

#include <algorithm>

#include "base/encoding.h"
#include "base/number_text.h"
#include "flow/bookmark_names.h"
#include "formats/markdown/escape.h"
#include "formats/markdown/front_matter.h"

namespace pagerex {
namespace {

constexpr uint8_t kDeepestHeading = 6;
constexpr uint16_t kLabelLooks = kBoldLook | kItalicLook;

/// The number of a label like "12." or "3)", as Markdown would show it; -1 for others.
int32_t plainNumberIn(std::u16string_view label) {
  if (label.size() < 2 || label.size() > 10 || (label.back() != '.' && label.back() != ')')) return -1;
  label.remove_suffix(1);
  if (label.size() > 1 && label[0] == '0') return -1;
  int32_t number = 0;
  for (const char16_t digit : label) {
    if (digit < '0' || digit > '9') return -1;
    number = number * 10 + (digit - '0');
  }
  return number;
}

std::string noteId(NoteKind kind, uint32_t index) {
  return std::string(kind == NoteKind::kEndnote ? "e" : "") + std::to_string(index + 1);
}

std::string commentId(uint32_t index) {
  return "c" + std::to_string(index + 1);
}

std::u16string commentLabel(const CommentFacts& comment) {
  const std::string digits = std::to_string(comment.index + 1);
  return std::u16string(comment.initials).append(digits.begin(), digits.end());
}

bool beginsPage(const SectionProperties& section) {
  using Start = SectionProperties::Start;
  return section.start == Start::kNewPage || section.start == Start::kEvenPage ||
         section.start == Start::kOddPage;
}

/// At the end of a heading, behind a blank, they would be part of the markup.
void keepLastNumberSigns(std::string& heading) {
  const size_t behind = heading.find_last_not_of('#') + 1;
  if (behind < heading.size() && (behind == 0 || heading[behind - 1] == ' ')) heading.insert(behind, 1, '\\');
}

std::string utf8Of(std::u16string_view text) {
  std::string bytes;
  appendUtf8(bytes, text);
  return bytes;
}

}  // namespace

MarkdownWriter::MarkdownWriter(Utf8Output& out, const MarkdownOptions& options, PictureOutput* pictures,
                               Warnings* warnings)
    : options_(options), pictures_(pictures), warnings_(warnings), blocks_(out) {}

void MarkdownWriter::BeginDocument(const DocumentFacts& facts) {
  codeStyles_.Begin(facts.styles);
  if (!options_.frontMatter) return;
  const std::string matter = frontMatter(facts.summary);
  if (!matter.empty()) PutBlock(matter);
}

/// Places that no text came behind have a line of their own.
void MarkdownWriter::EndDocument() {
  EndCode();
  if (!anchors_.empty()) PutBlock(anchors_ + "\n");
}

void MarkdownWriter::BeginSection(const SectionFacts& facts) {
  if (facts.index > 0 && beginsPage(facts.properties)) PutPageBreak();
}

// Paragraphs.

void MarkdownWriter::BeginParagraph(const ParagraphFacts& facts) {
  if (muted_) return;
  inline_.Clear();
  lastProperties_ = nullptr;  // others may have taken their place
  openLinks_ = 0;
  shape_ = place_ == Place::kBody ? ShapeOf(facts) : Shape::kPlain;
  if (place_ == Place::kPipeTable) {
    pipeTable_.Align(facts.properties.alignment, facts.properties.isRightToLeft);
  }
  if (place_ == Place::kBody && facts.properties.pageBreakBefore) ++pageBreaksBefore_;
  beginsPart_ = !partLabel_.empty();
  if (beginsPart_) inline_.Add(partLabel_ + u" ", 0);
  if (!partAuthor_.empty()) inline_.Add(partAuthor_, kBoldLook);
  if (!partTime_.empty()) inline_.Add(partTime_, 0);
  partLabel_.clear();
  partAuthor_.clear();
  partTime_.clear();
  if (shape_ != Shape::kItem && !facts.label.empty()) {
    const uint16_t look = facts.labelProperties ? LookOf(*facts.labelProperties) & kLabelLooks : 0;
    inline_.Add(facts.label, look);
    if (facts.labelFollow != ParagraphFacts::Follow::kNothing) inline_.Add(u" ", look);
  }
}

MarkdownWriter::Shape MarkdownWriter::ShapeOf(const ParagraphFacts& facts) {
  headingLevel_ = std::min(facts.headingLevel, kDeepestHeading);
  if (headingLevel_ > 0) return Shape::kHeading;
  if (facts.label.empty()) {
    return codeStyles_.IsParagraphStyle(facts.properties.style, facts.styleName) ? Shape::kCode
                                                                                 : Shape::kPlain;
  }
  listLevel_ = facts.properties.listLevel;
  const int32_t number = plainNumberIn(facts.label);
  if (!facts.isBullet && number < 0) return Shape::kInItem;
  item_ = {facts.listId, listLevel_, facts.isBullet ? '-' : static_cast<char>(facts.label.back()), number};
  return Shape::kItem;
}

void MarkdownWriter::EndParagraph() {
  if (muted_) return;
  for (const std::string& picture : floating_) {
    inline_.Add(u" ", 0);
    inline_.AddMarkup(picture);
  }
  floating_.clear();
  if (place_ != Place::kBody) return WriteInCell();
  PutDue(rulesBefore_, pageBreaksBefore_);
  if (shape_ == Shape::kCode) {
    AddCodeLine();
  } else if (!inline_.IsEmpty() || shape_ == Shape::kItem) {
    WriteParagraph();
  }
  PutDue(rulesBehind_, pageBreaksBehind_);
}

void MarkdownWriter::WriteParagraph() {
  EndCode();
  InlineForm form;
  switch (shape_) {
    case Shape::kHeading:
      return WriteHeading();
    case Shape::kItem:
      form.indent = blocks_.BeginItem(item_, inline_.IsEmpty());
      break;
    case Shape::kInItem:
      form.indent = blocks_.BeginInItem(listLevel_);
      break;
    default:
      form.indent = blocks_.Begin();
  }
  if (!inline_.IsEmpty()) PutInline(form, 0);
  blocks_.End();
}

/// What all of a heading's text has is the look of its style.
void MarkdownWriter::WriteHeading() {
  blocks_.Begin();
  blocks_.Put(std::string_view("###### ").substr(kDeepestHeading - headingLevel_));
  InlineForm form;
  form.kind = InlineForm::kHeading;
  PutInline(form, inline_.CommonLook() & (kBoldLook | kItalicLook));
  blocks_.End();
}

void MarkdownWriter::PutInline(const InlineForm& form, uint16_t ignoredLooks) {
  spelled_.clear();
  Spell(form, ignoredLooks, spelled_);
  if (form.kind == InlineForm::kHeading) keepLastNumberSigns(spelled_);
  blocks_.Put(spelled_);
}

/// Appends the paragraph's text to `out`.
void MarkdownWriter::Spell(const InlineForm& form, uint16_t ignoredLooks, std::string& out) {
  InlineForm whole = form;
  whole.hasStrikes = !options_.commonMarkOnly;
  whole.isAtLineStart = anchors_.empty();
  if (!anchors_.empty()) {
    out += anchors_;
    anchors_.clear();
  }
  inline_.Arrange(ignoredLooks);
  InlineWriter(inline_, whole, out).Write();
}

void MarkdownWriter::WriteInCell() {
  if (inline_.IsEmpty()) return;
  InlineForm form;
  if (place_ == Place::kHtmlTable) {
    form.kind = InlineForm::kHtml;
    Spell(form, 0, htmlTable_.BeginParagraph());
    htmlTable_.EndParagraph();
  } else {
    form.kind = InlineForm::kCell;
    spelled_.clear();
    Spell(form, 0, spelled_);
    pipeTable_.Add(spelled_);
  }
}

void MarkdownWriter::AddCodeLine() {
  hasCode_ = true;
  for (const InlineText::Piece& piece : inline_.pieces()) {
    if (piece.kind == InlineText::Piece::kText) appendUtf8(code_, inline_.TextOf(piece));
    if (piece.kind == InlineText::Piece::kBreak) code_ += '\n';
    if (piece.kind > InlineText::Piece::kBreak) codeReferences_ += inline_.MarkupOf(piece);
  }
  code_ += '\n';
}

/// The fence is longer than all rows of backticks in the code.
void MarkdownWriter::EndCode() {
  if (!hasCode_) return;
  hasCode_ = false;
  const size_t end = code_.find_last_not_of(" \t\n");
  const size_t begin = code_.find_first_not_of('\n');
  if (end != std::string::npos) {
    size_t longest = 2, count = 0;
    for (const char c : code_) longest = std::max(longest, count = c == '`' ? count + 1 : 0);
    const std::string fence(longest + 1, '`');
    blocks_.PutLines(fence + "\n" + code_.substr(begin, end + 1 - begin) + "\n" + fence + "\n");
  }
  code_.clear();
  if (codeReferences_.empty()) return;
  PutBlock(codeReferences_ + "\n");
  codeReferences_.clear();
}

void MarkdownWriter::PutBlock(std::string_view text) {
  EndCode();
  blocks_.PutLines(text);
}

void MarkdownWriter::PutDue(uint32_t& rules, uint32_t& pageBreaks) {
  for (; pageBreaks > 0; --pageBreaks) PutPageBreak();
  for (; rules > 0; --rules) PutRule();
}

void MarkdownWriter::PutPageBreak() {
  if (options_.pageBreaks && !muted_) PutBlock("<!-- page break -->\n");
}

/// A first line of hyphens would begin the front matter.
void MarkdownWriter::PutRule() {
  PutBlock(blocks_.isAtBegin() ? "***\n" : "---\n");
}

// What stands in a paragraph.

void MarkdownWriter::Text(std::u16string_view text, const RunProperties& properties) {
  if (muted_) return;
  // The blank between a note's mark and its text stands already.
  if (beginsPart_ && !text.empty() && text[0] == ' ') text.remove_prefix(1);
  beginsPart_ = false;
  inline_.Add(text, LookOf(properties));
}

uint16_t MarkdownWriter::LookOf(const RunProperties& properties) {
  if (&properties != lastProperties_) {
    lastProperties_ = &properties;
    unsigned look = 0;
    if (properties.strike || properties.doubleStrike) look |= kStrikeLook;
    if (properties.bold) look |= kBoldLook;
    if (properties.italic) look |= kItalicLook;
    if (properties.underline != 0) look |= kUnderlineLook;
    if (sideOfLine(properties) > 0) look |= kSuperscriptLook;
    if (sideOfLine(properties) < 0) look |= kSubscriptLook;
    if (codeStyles_.IsCharacterStyle(properties.characterStyle)) look |= kCodeLook;
    lastLook_ = static_cast<uint16_t>(look);
  }
  uint16_t look = lastLook_;
  for (const uint16_t revision : revisions_) look |= revision;
  return look;
}

void MarkdownWriter::MarkHere(Mark mark, const RunProperties& properties) {
  if (muted_) return;
  const bool isInBody = place_ == Place::kBody;
  const bool isBehind = !inline_.IsEmpty();
  switch (mark) {
    case Mark::kTab:
      return inline_.Add(u"\t", LookOf(properties));
    case Mark::kPageBreak:
      if (isInBody) ++(isBehind ? pageBreaksBehind_ : pageBreaksBefore_);
      break;
    case Mark::kRule:
      if (isInBody) ++(isBehind ? rulesBehind_ : rulesBefore_);
      if (place_ == Place::kHtmlTable) return inline_.AddMarkup("<hr>");
      break;
    default:
      break;
  }
  // Behind its number a heading may begin a page: it is one line all the same.
  const bool endsPage = mark == Mark::kPageBreak || mark == Mark::kColumnBreak;
  if (endsPage && shape_ == Shape::kHeading) return inline_.Add(u" ", 0);
  inline_.AddBreak();
}

/// A link within another is part of that.
void MarkdownWriter::BeginLink(const LinkFacts& link) {
  if (muted_ || openLinks_++ > 0) return;
  std::u16string address(link.address);
  if (!link.bookmark.empty()) address.append(u"#").append(link.bookmark);
  const std::string judged = utf8Of(address);
  if (judged.empty()) return;
  if (!link.address.empty() && !keepsAddress(options_.links, judged)) {
    warn(warnings_, WarningCode::kLinkRemoved, schemeOf(judged));
    return;
  }
  InlineLink kept;
  appendAddress(kept.address, address);
  kept.title = onOneLine(link.title);
  if (!kept.address.empty()) inline_.BeginLink(std::move(kept));
}

void MarkdownWriter::EndLink() {
  if (muted_ || openLinks_ == 0 || --openLinks_ > 0) return;
  inline_.EndLink();
}

/// Word's own places for what was edited last mean nothing to a reader.
void MarkdownWriter::BookmarkStart(std::u16string_view name) {
  if (muted_ || isOfWordItself(name)) return;
  std::string address;
  appendAddress(address, name);
  anchors_ += "<a id=\"";
  appendHtml(anchors_, std::string_view(address));
  anchors_ += "\"></a>";
}

void MarkdownWriter::BeginRevision(const RevisionFacts& revision) {
  const bool isGone = revision.kind == Revision::kDeleted || revision.kind == Revision::kMovedAway;
  revisions_.push_back(isGone ? kDeletedLook : kInsertedLook);
}

void MarkdownWriter::EndRevision() {
  if (!revisions_.empty()) revisions_.pop_back();
}

void MarkdownWriter::FormField(const FormFieldFacts& field, const RunProperties& properties) {
  if (field.kind == FormFieldFacts::Kind::kCheckBox)
    return Text(field.isChecked ? u"\u2612" : u"\u2610", properties);
  Text(field.value, properties);
}

void MarkdownWriter::Picture(const PictureFacts& picture) {
  if (muted_) return;
  const std::u16string description = onOneLine(picture.description);
  const std::string_view address = pictures_ ? pictures_->AddressOf(picture).uri : std::string_view();
  if (address.empty()) return inline_.Add(description, 0);
  std::string markup;
  if (place_ == Place::kHtmlTable) {
    markup = "<img src=\"";
    appendHtml(markup, address);
    markup += "\" alt=\"";
    appendHtml(markup, description);
    markup += "\">";
  } else {
    MarkdownPlace place;
    place.isInBrackets = true;
    place.isInCell = place_ == Place::kPipeTable;
    markup = "![";
    if (!description.empty()) appendEscaped(markup, description, place);
    markup += "](";
    appendDestination(markup, address);
    markup += ')';
  }
  PutPicture(markup, picture.isInline);
}

/// Text that flows around a picture is not cut by it: that stands in front or behind.
void MarkdownWriter::PutPicture(const std::string& markup, bool isInline) {
  if (!isInline && !inline_.IsEmpty()) {
    floating_.push_back(markup);
    return;
  }
  inline_.AddMarkup(markup);
  if (!isInline) inline_.Add(u" ", 0);
}

// Tables.

void MarkdownWriter::BeginTable(const TableProperties& table) {
  if (muted_) return;
  if (tables_++ == 0) {
    EndCode();
    const bool isSimple = table.isRegular && !table.hasMergedCells && table.hasSingleParagraphs;
    const bool isPipeTable = !options_.commonMarkOnly && (isSimple || !options_.htmlTables);
    place_ = isPipeTable ? Place::kPipeTable : Place::kHtmlTable;
    if (isPipeTable) pipeTable_.Begin(isSimple ? 0 : table.columnWidths.size());
  }
  if (place_ == Place::kHtmlTable) htmlTable_.BeginTable();
}

void MarkdownWriter::EndTable() {
  if (muted_) return;
  if (place_ == Place::kHtmlTable) htmlTable_.EndTable();
  if (--tables_ > 0) return;
  const std::string& lines = place_ == Place::kHtmlTable ? htmlTable_.text() : pipeTable_.End();
  place_ = Place::kBody;
  if (!lines.empty()) PutBlock(lines);
  htmlTable_.Clear();
}

void MarkdownWriter::BeginRow(const RowProperties& row) {
  if (muted_) return;
  if (place_ == Place::kHtmlTable) {
    htmlTable_.BeginRow(row);
  } else if (tables_ == 1) {
    pipeTable_.BeginRow(row.columnsBefore);
  }
}

void MarkdownWriter::EndRow() {
  if (muted_) return;
  if (place_ == Place::kHtmlTable) {
    htmlTable_.EndRow();
  } else if (tables_ == 1) {
    pipeTable_.EndRow();
  }
}

void MarkdownWriter::BeginCell(const CellProperties& cell) {
  const bool isSkipped = place_ == Place::kHtmlTable && cell.rowSpan == 0;
  isCellSkipped_.push_back(isSkipped);
  muted_ += isSkipped;
  if (muted_) return;
  if (place_ == Place::kHtmlTable) {
    htmlTable_.BeginCell(cell);
  } else if (tables_ == 1) {
    pipeTable_.BeginCell(cell.columnSpan);
  }
}

void MarkdownWriter::EndCell() {
  if (!muted_ && place_ == Place::kHtmlTable) htmlTable_.EndCell();
  muted_ -= isCellSkipped_.back();
  isCellSkipped_.pop_back();
}

// Notes and comments.

void MarkdownWriter::NoteReference(const NoteFacts& note, const RunProperties&) {
  if (!muted_) AddReference(noteId(note.kind, note.index), note.label);
}

void MarkdownWriter::CommentReference(const CommentFacts& comment) {
  if (!muted_ && options_.comments) AddReference(commentId(comment.index), commentLabel(comment));
}

/// Markdown has no marks of notes in HTML.
void MarkdownWriter::AddReference(const std::string& id, std::u16string_view label) {
  std::string markup;
  if (place_ != Place::kHtmlTable && !options_.commonMarkOnly) {
    referenced_.insert(id);
    markup = "[^" + id + "]";
  } else if (place_ == Place::kHtmlTable) {
    markup = "<sup><a href=\"#note-" + id + "\">";
    appendHtml(markup, label);
    markup += "</a></sup>";
  } else {
    MarkdownPlace place;
    place.isInBrackets = true;
    markup = "<sup>[";
    const std::u16string line = onOneLine(label);
    if (!line.empty()) appendEscaped(markup, line, place);
    markup += "](#note-" + id + ")</sup>";
  }
  inline_.AddReference(markup);
}

void MarkdownWriter::BeginNote(const NoteFacts& note) {
  BeginPart(noteId(note.kind, note.index), note.label);
}

void MarkdownWriter::EndNote() {
  EndPart();
}

void MarkdownWriter::BeginComment(const CommentFacts& comment) {
  muted_ += !options_.comments;
  if (muted_) return;
  BeginPart(commentId(comment.index), commentLabel(comment));
  partAuthor_ = onOneLine(comment.author);
  const std::string time = dttmText(comment.dttm);
  if (!time.empty()) partTime_.append(partAuthor_.empty() ? u"" : u", ").append(time.begin(), time.end());
  if (!partAuthor_.empty() || !time.empty()) partTime_ += u": ";
}

void MarkdownWriter::EndComment() {
  if (!muted_) EndPart();
  muted_ -= !options_.comments;
}

void MarkdownWriter::BeginPart(const std::string& id, std::u16string_view label) {
  EndCode();
  if (referenced_.contains(id)) return blocks_.BeginNote("[^" + id + "]: ");
  anchors_ += "<a id=\"note-" + id + "\"></a>";
  partLabel_ = std::u16string(u"[").append(onOneLine(label)).append(u"]");
}

void MarkdownWriter::EndPart() {
  EndCode();
  blocks_.EndNote();
  partLabel_.clear();
  partAuthor_.clear();
  partTime_.clear();
}

}  // namespace pagerex

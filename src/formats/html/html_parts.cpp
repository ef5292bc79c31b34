// What stands in paragraphs beside text, and what stands beside paragraphs.

#include <algorithm>
#include <cctype>

#include "base/file_time.h"
#include "base/utf8.h"
#include "flow/bookmark_names.h"
#include "formats/html/html_writer.h"

namespace pagerex {
namespace {

/// An address as it may stand in an attribute: blanks and what no address may have are escaped.
void appendAddress(std::string& out, std::string_view address) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  constexpr std::string_view kEscaped = " \"<>\\^`{|}[]";
  std::string escaped;
  for (size_t i = 0; i < address.size(); ++i) {
    const char byte = address[i];
    const bool isPercent = byte == '%' && !(i + 2 < address.size() &&
                                            std::isxdigit(static_cast<unsigned char>(address[i + 1])) &&
                                            std::isxdigit(static_cast<unsigned char>(address[i + 2])));
    if (isPercent || static_cast<unsigned char>(byte) < 0x20 ||
        kEscaped.find(byte) != std::string_view::npos) {
      escaped += {'%', kDigits[static_cast<unsigned char>(byte) >> 4], kDigits[byte & 15]};
    } else {
      escaped += byte;
    }
  }
  appendAttribute(out, escaped);
}

/// As UTF-8, in which "_" stands for what no page may have.
std::string soundUtf8(std::u16string_view text) {
  std::u16string sound(text);
  std::replace_if(
      sound.begin(), sound.end(),
      [](char16_t unit) {
        return (unit >= 0x7F && unit < 0xA0) || (unit >= 0xFDD0 && unit < 0xFDF0) || unit >= 0xFFFE;
      },
      u'_');
  std::string bytes;
  appendUtf8(bytes, sound);
  return bytes;
}

/// A bookmark's name as an id: no blanks, and none of the signs that other ids have.
std::string idOf(std::u16string_view name) {
  constexpr size_t kLongest = 120;
  std::string bytes = soundUtf8(name.substr(0, kLongest));
  for (char& byte : bytes) {
    const bool isPlain = (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') ||
                         (byte >= 'A' && byte <= 'Z') || static_cast<signed char>(byte) < 0;
    if (!isPlain) byte = '_';
  }
  return bytes;
}

std::string noteId(const NoteFacts& note) {
  return (note.kind == NoteKind::kEndnote ? "endnote-" : "footnote-") + std::to_string(note.index + 1);
}

std::string referenceId(const NoteFacts& note) {
  return (note.kind == NoteKind::kEndnote ? "endnote-ref-" : "footnote-ref-") +
         std::to_string(note.index + 1);
}

std::string textOf(std::u16string_view text) {
  PageText page;
  page.PutText(text);
  return std::string(page.view());
}

}  // namespace

// Text in other forms

void HtmlWriter::Ruby(std::u16string_view base, std::u16string_view above, std::u16string_view,
                      const RunProperties& properties) {
  if (muted_ || !isInParagraph_) return;
  PutInRun("<ruby>" + textOf(base) + "<rp>(</rp><rt>" + textOf(above) + "</rt><rp>)</rp></ruby>", properties);
}

void HtmlWriter::BeginDropCap(const ParagraphProperties& properties) {
  if (muted_ || !isInParagraph_) return;
  if (!isOpen_) {
    // The paragraph looks as its text does, which is smaller than the letter.
    hasText_ = true;
    Open(markLook_);
  }
  std::string css;
  ParagraphProperties letter = properties;
  letter.spaceBefore = letter.spaceAfter = 0;
  letter.indentStart = letter.indentFirstLine = 0;
  appendParagraphCss(css, letter, ParagraphProperties());
  css += "text-indent:0;margin-inline-end:.08em;";
  std::string open = "<span class=";
  appendValue(open, sheet_.ClassOf('d', css));
  open += '>';
  BeginElement(std::move(open), "</span>");
}

void HtmlWriter::EndDropCap() {
  if (!muted_ && isInParagraph_) EndElement();
}

// Links and places

/// A link within another is part of that.
void HtmlWriter::BeginLink(const LinkFacts& link) {
  if (muted_ || !isInParagraph_) return;
  linksWritten_.push_back(false);
  if (openLinks_ > 0) return;
  const std::string address = soundUtf8(link.address);
  if (!address.empty() && !keepsAddress(options_.links, address)) {
    warn(warnings_, WarningCode::kLinkRemoved, schemeOf(address));
    return;
  }
  std::string open = "<a href=\"";
  appendAddress(open, address);
  if (!link.bookmark.empty()) {
    open += '#';
    if (address.empty()) {
      appendAddress(open, idOf(link.bookmark));
    } else {
      appendAddress(open, soundUtf8(link.bookmark));
    }
  }
  if (open.ends_with('"')) return;
  open += '"';
  if (!link.title.empty()) {
    PageText title;
    title.PutAttribute(link.title);
    open.append(" title=\"").append(title.view()).append("\"");
  }
  open += '>';
  linksWritten_.back() = true;
  ++openLinks_;
  BeginElement(std::move(open), "</a>");
}

void HtmlWriter::EndLink() {
  if (muted_ || linksWritten_.empty()) return;
  const bool isWritten = linksWritten_.back();
  linksWritten_.pop_back();
  if (!isWritten) return;
  --openLinks_;
  EndElement();
}

/// Word's own places for what was edited last mean nothing to a reader.
void HtmlWriter::BookmarkStart(std::u16string_view name) {
  if (muted_ || !isInParagraph_ || isOfWordItself(name)) return;
  const std::string id = idOf(name);
  if (id.empty() || !IsNewId(id)) return;
  if (!isOpen_ && id_.empty()) {
    id_ = id;
    return;
  }
  std::string place = "<span id=";
  appendValue(place, id);
  place += "></span>";
  PutInline(place, false);
}

// Notes and comments

void HtmlWriter::NoteReference(const NoteFacts& note, const RunProperties& properties) {
  if (muted_ || !isInParagraph_) return;
  const std::string id = referenceId(note);
  std::string markup = "<a role=doc-noteref";
  if (IsNewId(id)) markup += " id=" + id;
  markup += " href=#" + noteId(note) + ">" + textOf(note.label) + "</a>";
  PutReference(markup, &properties);
}

void HtmlWriter::NoteMark(const NoteFacts& note, const RunProperties& properties) {
  if (muted_ || !isInParagraph_ || note.label.empty()) return;
  if (!isMarkDue_) return Text(note.label, properties);
  isMarkDue_ = false;
  PutReference(backLink_ + textOf(note.label) + "</a>", &properties);
}

void HtmlWriter::BeginNote(const NoteFacts& note) {
  if (part_ == "notes" && note.kind != noteKind_) {
    EndLast();
    out_.Put("</section>\n");
    part_ = {};
  }
  noteKind_ = note.kind;
  const bool isEndnote = note.kind == NoteKind::kEndnote;
  BeginPart("notes", isEndnote ? " role=doc-endnotes" : "");
  const std::string id = noteId(note);
  IsNewId(id);
  out_.Put(isEndnote ? "<div id=" : "<aside role=doc-footnote id=");
  out_.Put(id + ">\n");
  isMarkDue_ = true;
  backLink_ = "<a role=doc-backlink href=#" + referenceId(note) + ">";
  BeginFlow({});
}

void HtmlWriter::EndNote() {
  EndFlow();
  if (isMarkDue_) out_.Put("<p>" + backLink_ + "\u21A9</a></p>\n");
  isMarkDue_ = false;
  out_.Put(noteKind_ == NoteKind::kEndnote ? "</div>\n" : "</aside>\n");
}

void HtmlWriter::BeginPart(std::string_view kind, std::string_view role) {
  if (part_ == kind) return;
  EndLast();
  if (!part_.empty()) out_.Put("</section>\n");
  EndLists(0);
  EndFrame();
  EndContents();
  part_ = kind;
  out_.Put("<section class=");
  out_.Put(kind);
  out_.Put(role);
  out_.Put(">\n");
}

void HtmlWriter::CommentReference(const CommentFacts& comment) {
  if (muted_ || !isInParagraph_ || !options_.comments) return;
  const std::string number = std::to_string(comment.index + 1);
  std::string markup = "<a class=cr";
  const std::string id = "comment-ref-" + number;
  if (IsNewId(id)) markup += " id=" + id;
  markup += " href=#comment-" + number + ">[" + textOf(comment.initials) + number + "]</a>";
  PutReference(markup, nullptr);
}

/// In a link, a reference stands between the parts of it: links do not nest.
void HtmlWriter::PutReference(const std::string& markup, const RunProperties* properties) {
  hasText_ |= properties != nullptr;
  waitingMakesLine_ = true;
  if (!isOpen_ && properties) Open(looks_->LookOf(*properties));
  if (isOpen_) return paragraph_->PutLink(markup, properties);
  waiting_.push_back({Waiting::kLink, markup, {}});
}

void HtmlWriter::BeginComment(const CommentFacts& comment) {
  muted_ += !options_.comments;
  if (muted_) return;
  BeginPart("comments", "");
  const std::string number = std::to_string(comment.index + 1);
  IsNewId("comment-" + number);
  out_.Put("<aside class=comment id=comment-" + number +
           ">\n<p class=ch><a role=doc-backlink href=#comment-ref-" + number + ">[" +
           textOf(comment.initials) + number + "]</a>");
  if (!comment.author.empty()) out_.Put(" <b>" + textOf(comment.author) + "</b>");
  const std::string time = iso8601OfDttm(comment.dttm);
  if (!time.empty()) {
    std::string shown = time.substr(0, 16);
    std::replace(shown.begin(), shown.end(), 'T', ' ');
    out_.Put(" <time datetime=\"" + time + "\">" + shown + "</time>");
  }
  out_.Put("</p>\n");
  BeginFlow({});
}

void HtmlWriter::EndComment() {
  if (!muted_) {
    EndFlow();
    out_.Put("</aside>\n");
  }
  muted_ -= !options_.comments;
}

void HtmlWriter::BeginRevision(const RevisionFacts& revision) {
  if (muted_ || !isInParagraph_) return;
  const bool isGone = revision.kind == Revision::kDeleted || revision.kind == Revision::kMovedAway;
  std::string open = isGone ? "<del" : "<ins";
  // A time of day may not stand there without its zone, which nobody knows.
  constexpr size_t kDay = 10;
  const std::string time = iso8601OfDttm(revision.dttm);
  if (!time.empty()) open += " datetime=\"" + time.substr(0, kDay) + "\"";
  if (!revision.author.empty()) {
    PageText author;
    author.PutAttribute(revision.author);
    open.append(" title=\"").append(author.view()).append("\"");
  }
  BeginElement(open + ">", isGone ? "</del>" : "</ins>");
}

void HtmlWriter::EndRevision() {
  if (!muted_ && isInParagraph_) EndElement();
}

void HtmlWriter::FormField(const FormFieldFacts& field, const RunProperties& properties) {
  if (field.kind == FormFieldFacts::Kind::kCheckBox)
    return Text(field.isChecked ? u"\u2612" : u"\u2610", properties);
  if (!field.value.empty()) Text(field.value, properties);
}

// Tables

void HtmlWriter::BeginTable(const TableProperties& table) {
  if (muted_) return;
  BeginBlock(nullptr);
  EndFigure();
  Flow& here = flow();
  const bool isInElement = !here.lists.empty() || here.frame.isThere || here.isContents;
  EndLists(0);
  EndFrame();
  EndContents();
  if (here.last == Flow::Last::kCaption && flowCount_ == 1 && !isInElement) {
    // Its caption stands above it.
    out_.Insert(here.lastStart, "<figure><figcaption>");
    out_.Put("</figcaption>");
    here.isFigure = true;
  }
  tables_->BeginTable(table);
}

void HtmlWriter::EndTable() {
  if (muted_) return;
  tables_->EndTable();
  EndFigure();
  flow().hasLast = false;
  flow().last = Flow::Last::kOther;
}

void HtmlWriter::BeginRow(const RowProperties& row) {
  if (muted_) return;
  tables_->BeginRow(row);
}

void HtmlWriter::EndRow() {
  if (muted_) return;
  tables_->EndRow();
}

void HtmlWriter::BeginCell(const CellProperties& cell) {
  if (muted_ || cell.rowSpan == 0) {
    ++muted_;
    return;
  }
  tables_->BeginCell(cell);
  const bool hasGround = cell.shading.isThere && !cell.shading.fill.isAutomatic;
  const Colour ground = hasGround ? cell.shading.fill : flow().ground;
  BeginFlow(ground);
}

void HtmlWriter::EndCell() {
  if (muted_) {
    --muted_;
    return;
  }
  EndFlow();
  tables_->EndCell();
}

}  // namespace pagerex

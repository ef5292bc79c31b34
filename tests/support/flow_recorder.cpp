#include "support/flow_recorder.h"

#include "base/encoding.h"
#include "base/utf8.h"
#include "formats/markdown/escape.h"
#include "formats/markdown/front_matter.h"
#include "formats/markdown/inline_text.h"

namespace support {

using namespace pagerex;

namespace {

bool isAsciiBlank(char32_t code) {
  return code == ' ' || code == '\t' || code == '\n' || code == '\r' || code == '\v';
}

bool isPlainNumber(std::u16string_view label) {
  if (label.size() < 2 || label.size() > 10 || (label.back() != '.' && label.back() != ')')) return false;
  if (label.size() > 2 && label[0] == '0') return false;
  for (const char16_t digit : label.substr(0, label.size() - 1)) {
    if (digit < '0' || digit > '9') return false;
  }
  return true;
}

}  // namespace

void addShown(ShownText& shown, char32_t code, uint16_t look) {
  if (isAsciiBlank(code)) {
    if (!shown.text.empty() && shown.text.back() != ' ') shown.text += ' ';
    return;
  }
  if (isNoText(code)) return;
  ::appendUtf8(shown.text, code);
  if (flankOf(code) != Flank::kSpace) shown.looks += static_cast<char16_t>(look);
}

ShownText trimmed(ShownText shown) {
  while (!shown.text.empty() && shown.text.back() == ' ') shown.text.pop_back();
  return shown;
}

void FlowRecorder::Add(std::u16string_view text, uint16_t look) {
  if (muted_) return;
  for (size_t i = 0; i < text.size();) {
    const CharacterAt next = characterAt(text.data() + i, text.size() - i);
    addShown(shown_, next.code, isCode_ ? 0 : look);
    i += next.units;
  }
}

void FlowRecorder::BeginParagraph(const ParagraphFacts& facts) {
  openLinks_ = 0;
  isLinkKept_ = false;
  isHeading_ = facts.headingLevel > 0 && tables_ == 0;
  isCode_ = tables_ == 0 && !isHeading_ && facts.label.empty() &&
            styles_.IsParagraphStyle(facts.properties.style, facts.styleName);
  if (tables_ == 0) shown_ = {};
  addShown(shown_, ' ', 0);
  Add(author_, kBoldLook);
  Add(time_, 0);
  author_.clear();
  time_.clear();
  const bool isItem = tables_ == 0 && !isHeading_ && (facts.isBullet || isPlainNumber(facts.label));
  if (facts.label.empty()) return;
  if (isItem) {
    shown_.label = facts.isBullet ? "-" : std::string(facts.label.begin(), facts.label.end());
    return;
  }
  Add(facts.label, 0);
  if (facts.labelFollow != ParagraphFacts::Follow::kNothing) Add(u" ", 0);
}

void FlowRecorder::EndParagraph() {
  if (tables_ == 0) {
    Keep();
  } else {
    addShown(shown_, ' ', 0);
  }
}

void FlowRecorder::Keep() {
  ShownText shown = trimmed(std::move(shown_));
  shown_ = {};
  if (muted_ || (shown.text.empty() && shown.label.empty())) return;
  if (isHeading_ && tables_ == 0) {
    uint16_t common = kBoldLook | kItalicLook;
    for (const char16_t look : shown.looks) common &= look;
    for (char16_t& look : shown.looks) look = static_cast<char16_t>(look & ~common);
  }
  (isInNotes_ ? notes : body).push_back(std::move(shown));
}

void FlowRecorder::Text(std::u16string_view text, const RunProperties& properties) {
  unsigned look = 0;
  for (const uint16_t revision : revisions_) look |= revision;
  if (properties.strike || properties.doubleStrike) look |= kStrikeLook;
  if (properties.bold) look |= kBoldLook;
  if (properties.italic) look |= kItalicLook;
  if (properties.underline && !isLinkKept_) look |= kUnderlineLook;
  if (sideOfLine(properties) > 0) look |= kSuperscriptLook;
  if (sideOfLine(properties) < 0) look |= kSubscriptLook;
  if (styles_.IsCharacterStyle(properties.characterStyle)) look |= kCodeLook;
  Add(text, static_cast<uint16_t>(look));
}

void FlowRecorder::MarkHere(Mark mark, const RunProperties&) {
  const bool endsLine = isCode_ && mark != Mark::kTab;
  if (endsLine) {
    Keep();
  } else {
    addShown(shown_, ' ', 0);
  }
}

void FlowRecorder::BeginLink(const LinkFacts& link) {
  if (openLinks_++ > 0) return;
  std::u16string address(link.address);
  if (!link.bookmark.empty()) address.append(u"#").append(link.bookmark);
  std::string judged;
  pagerex::appendUtf8(judged, address);
  isLinkKept_ = !judged.empty() && (link.address.empty() || keepsAddress(LinkPolicy::kSafe, judged));
}

void FlowRecorder::EndLink() {
  if (openLinks_ > 0 && --openLinks_ == 0) isLinkKept_ = false;
}

void FlowRecorder::BeginRevision(const RevisionFacts& revision) {
  const bool isGone = revision.kind == Revision::kDeleted || revision.kind == Revision::kMovedAway;
  revisions_.push_back(isGone ? kStrikeLook : kInsertedLook);  // they are read alike
}

void FlowRecorder::FormField(const FormFieldFacts& field, const RunProperties& properties) {
  const bool isCheckBox = field.kind == FormFieldFacts::Kind::kCheckBox;
  Text(isCheckBox ? field.isChecked ? u"\u2612" : u"\u2610" : field.value, properties);
}

void FlowRecorder::Picture(const PictureFacts& picture) {
  Add(picture.description, 0);
}

void FlowRecorder::BeginCell(const CellProperties& cell) {
  isCellMuted_.push_back(cell.rowSpan == 0);
  muted_ += cell.rowSpan == 0;
  if (tables_ == 1) shown_ = {};
}

void FlowRecorder::EndCell() {
  if (tables_ == 1) Keep();
  muted_ -= isCellMuted_.back();
  isCellMuted_.pop_back();
}

void FlowRecorder::BeginComment(const CommentFacts& comment) {
  isInNotes_ = true;
  author_ = comment.author;
  const std::string time = dttmText(comment.dttm);
  if (!time.empty()) time_.append(author_.empty() ? u"" : u", ").append(time.begin(), time.end());
  if (!author_.empty() || !time.empty()) time_ += u": ";
}

void FlowRecorder::EndComment() {
  isInNotes_ = false;
  author_.clear();
  time_.clear();
}

}  // namespace support

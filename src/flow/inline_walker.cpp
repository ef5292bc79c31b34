#include "flow/inline_walker.h"

#include <algorithm>

#include "flow/number_text.h"
#include "flow/text_scan.h"
#include "wordreader/text_marks.h"

namespace pagerex {
namespace {

constexpr char16_t kTab = 9, kLineFeed = 10, kLineBreak = 11, kColumnBreak = 14, kNonBreakingHyphen = 30,
                   kOptionalHyphen = 31;

bool isHighSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xD800;
}

bool isLowSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xDC00;
}

}  // namespace

void InlineWalker::BeginStory(const StoryPlace& story) {
  EndStory();
  story_ = story;
  nextBookmark_ = document_.bookmarks.From(story.start);
  if (story.type == mso_word::SUBDOC_MAIN) {
    nextComment_ = document_.comments.ranges().From(story.start);
    for (unsigned kind = 0; kind < 2; ++kind) nextNote_[kind] = document_.notes[kind].FirstFrom(story.start);
  }
  FindNextEvent();
}

void InlineWalker::EndStory() {
  fields_.Clear();
  waitingBookmarks_.clear();
}

void InlineWalker::SetParagraph(ParagraphBeginner& beginner, uint16_t istd, const TableStylePlace& place) {
  // One that goes on from the paragraph before has begun already.
  beginner_ = &beginner;
  istd_ = istd;
  place_ = place;
}

void InlineWalker::Tell(uint32_t start, uint32_t end) {
  for (uint32_t at = start; at < end;) {
    const TextRun& run = document_.RunAt(at, istd_, place_);
    const uint32_t stop = std::min(run.end, end);
    while (at < stop) {
      if (at >= nextEvent_) TellEvents(at);
      const std::u16string_view text =
          document_.text.At(at, nextEvent_ > at ? std::min(stop, nextEvent_) : stop);
      if (text.empty()) {
        at = document_.text.NextText(at, stop);
        continue;
      }
      // What follows a mark may begin with the next event.
      const bool isReference = NextNotePosition() == at;
      size_t told = isReference ? TellNoteReference(text, at, run) : 0;
      if (at == story_.start && story_.note && story_.note->isCustom) told = TellOwnMark(text, run);
      if (!isReference && told == 0) {
        TellStretch(text, at, run);
        told = text.size();
      }
      at += static_cast<uint32_t>(told);
    }
  }
}

void InlineWalker::EndParagraph(uint32_t position, bool mustEnd) {
  if (position >= nextEvent_) TellEvents(position);
  if (!mustEnd && fields_.HidesText()) {
    fields_.AddToCode(u" ");
    return;
  }
  Begin();
  DeliverHeld();
  if (document_.options.revisions == RevisionView::kAll) EndRevision();
  EndLink();
  isOpen_ = false;
  handler_.EndParagraph();
}

// Text

void InlineWalker::TellStretch(std::u16string_view text, uint32_t position, const TextRun& run) {
  while (!text.empty()) {
    const size_t plain = findControl(text);
    if (plain > 0) Put(text.substr(0, plain), run);
    if (plain == text.size()) return;
    position += static_cast<uint32_t>(plain);
    TellControl(text[plain], position++, run);
    text.remove_prefix(plain + 1);
  }
}

void InlineWalker::TellControl(char16_t unit, uint32_t position, const TextRun& run) {
  switch (unit) {
    case text_mark::kFieldBegin:
      return BeginField(position);
    case text_mark::kFieldSeparator:
      return SeparateField(run);
    case text_mark::kFieldEnd:
      return EndField(run);
    case kTab:
      return PutMark(Mark::kTab, run);
    case kLineFeed:
    case kLineBreak:
      return PutMark(Mark::kLineBreak, run);
    case text_mark::kPageBreak:
      return PutMark(Mark::kPageBreak, run);
    case kColumnBreak:
      return PutMark(Mark::kColumnBreak, run);
    case kNonBreakingHyphen:
      return Put(u"\u2011", run);
    case kOptionalHyphen:
      return Put(u"\u00AD", run);
    default:
      if (run.specials.isSpecial) TellSpecial(unit, position, run);
  }
}

void InlineWalker::TellSpecial(char16_t unit, uint32_t position, const TextRun& run) {
  switch (unit) {
    case text_mark::kPicture:
      if (run.specials.isFieldData) return ReadFormField(run);
      return TellInlinePicture(run);
    case text_mark::kNoteReference:
      if (story_.note && IsShown(run)) {
        Prepare(run);
        handler_.NoteMark(*story_.note, *run.properties);
      }
      return;
    case text_mark::kAnnotation:
      return TellCommentReference(position, run);
    case text_mark::kDrawnObject:
      return TellAnchoredShapes(position, run);
    default:
      return;
  }
}

void InlineWalker::Put(std::u16string_view text, const TextRun& run) {
  if (fields_.HidesText()) return fields_.AddToCode(text);
  if (!run.isShown) return;
  if (run.specials.symbol.isThere || run.hasSymbols) return PutSymbols(text, run);
  Deliver(text, run);
}

void InlineWalker::PutSymbols(std::u16string_view text, const TextRun& run) {
  constexpr char16_t kFirstOther = 0x80, kFirstPrivate = 0xF000, kLastPrivate = 0xF0FF;
  converted_.clear();
  for (const char16_t unit : text) {
    if (run.specials.symbol.isThere) {
      appendSymbol(run.asciiSymbols, run.specials.symbol.character, converted_);
      continue;
    }
    const bool isPrivate = unit >= kFirstPrivate && unit <= kLastPrivate;
    const bool isOther = isPrivate ? run.asciiSymbols == SymbolFont::kNone : unit >= kFirstOther;
    appendSymbol(isOther ? run.otherSymbols : run.asciiSymbols, unit, converted_);
  }
  Deliver(converted_, run);
}

/// Keeps the halves of a character together.
void InlineWalker::Deliver(std::u16string_view text, const TextRun& run) {
  if (text.empty()) return;
  Prepare(run);
  if (held_ != 0) {
    if (isLowSurrogate(text.front())) {
      const char16_t whole[] = {held_, text.front()};
      handler_.Text({whole, 2}, *run.properties);
      text.remove_prefix(1);
      held_ = 0;
    } else {
      DeliverHeld();
    }
    if (text.empty()) return;
  }
  if (isHighSurrogate(text.back())) {
    held_ = text.back();
    heldProperties_ = run.properties;
    text.remove_suffix(1);
  }
  if (!text.empty()) handler_.Text(text, *run.properties);
}

/// One that stays alone.
void InlineWalker::DeliverHeld() {
  if (held_ == 0) return;
  const char16_t half = held_;
  held_ = 0;
  handler_.Text({&half, 1}, *heldProperties_);
}

void InlineWalker::PutMark(Mark mark, const TextRun& run) {
  if (fields_.HidesText()) return fields_.AddToCode(u" ");
  if (!run.isShown) return;
  Prepare(run);
  DeliverHeld();
  handler_.MarkHere(mark, *run.properties);
}

// What begins and ends

/// Before anything is told of a run.
void InlineWalker::Prepare(const TextRun& run) {
  Begin();
  if (!isLinkOpen_ && !fields_.empty()) BeginLinkIfAny();
  if (document_.options.revisions == RevisionView::kAll) BeginRevisionOf(run);
}

void InlineWalker::Begin() {
  if (isOpen_) return;
  isOpen_ = true;
  beginner_->Begin();
  for (const WaitingBookmark& bookmark : waitingBookmarks_) TellBookmark(bookmark);
  waitingBookmarks_.clear();
}

void InlineWalker::BeginDropCap(const ParagraphProperties& properties) {
  Begin();
  handler_.BeginDropCap(properties);
}

void InlineWalker::EndDropCap() {
  DeliverHeld();
  EndLink();
  EndRevision();
  handler_.EndDropCap();
}

void InlineWalker::BeginLinkIfAny() {
  const OpenField* const field = fields_.Link();
  if (!field) return;
  EndRevision();
  isLinkOpen_ = true;
  handler_.BeginLink({field->link.address, field->link.bookmark, field->link.title, field->link.target});
}

void InlineWalker::EndLink() {
  if (!isLinkOpen_) return;
  isLinkOpen_ = false;
  DeliverHeld();
  EndRevision();
  handler_.EndLink();
}

void InlineWalker::BeginRevisionOf(const TextRun& run) {
  const Revision& insertion = run.properties->revision;
  const Revision& deletion = run.properties->deletion;
  if (insertion == openInsertion_ && deletion == openDeletion_) return;
  EndRevision();
  for (const Revision* revision : {&insertion, &deletion}) {
    if (revision->kind == Revision::kNone) continue;
    handler_.BeginRevision({revision->kind, document_.AuthorOf(*revision), revision->dttm});
  }
  openInsertion_ = insertion;
  openDeletion_ = deletion;
}

void InlineWalker::EndRevision() {
  for (Revision* revision : {&openDeletion_, &openInsertion_}) {
    if (revision->kind == Revision::kNone) continue;
    DeliverHeld();
    handler_.EndRevision();
    *revision = {};
  }
}

// Fields

void InlineWalker::BeginField(uint32_t position) {
  uint8_t flt = 0;
  if (fieldMarks_.Begins(position - story_.base, flt)) fields_.Begin(flt);
}

void InlineWalker::SeparateField(const TextRun& run) {
  OpenField* const field = fields_.top();
  if (!field || field->isInResult) return;
  field->isInResult = true;
  field->display = fieldDisplay(field->flt, field->code);
  field->hidesResult = field->display == FieldDisplay::kNothing ||
                       field->display == FieldDisplay::kFormCheckBox ||
                       field->display == FieldDisplay::kFormDropDown;
  field->isLink = linkOf(field->code, field->flt, field->link);
  fields_.Changed();
  if (field->display == FieldDisplay::kFormText && IsShown(run)) TellFormField(*field, run);
}

void InlineWalker::EndField(const TextRun& run) {
  if (!fields_.top()) return;
  OpenField field = std::move(*fields_.top());
  fields_.End();
  if (isLinkOpen_ && !fields_.Link()) EndLink();
  if (!field.isInResult) {
    field.display = fieldDisplay(field.flt, field.code);
    TellFieldWithoutResult(field, run);
  } else if (field.display == FieldDisplay::kFormCheckBox || field.display == FieldDisplay::kFormDropDown) {
    TellFormField(field, run);
  }
}

void InlineWalker::TellFieldWithoutResult(OpenField& field, const TextRun& run) {
  if (fields_.HidesText() || !run.isShown) return;
  std::u16string text;
  switch (field.display) {
    case FieldDisplay::kEquation: {
      RubyText ruby;
      text = equationText(field.code, ruby);
      if (ruby.above.empty()) break;
      Prepare(run);
      DeliverHeld();
      return handler_.Ruby(ruby.base, ruby.above, text, *run.properties);
    }
    case FieldDisplay::kSymbol:
      text = symbolFieldText(field.code, run.asciiSymbols);
      break;
    case FieldDisplay::kButtonText:
      text = field.code.substr(buttonTextStart(field.code));
      break;
    case FieldDisplay::kAutoNumber:
      Prepare(run);
      counters_.fields.AppendAutoNumber(fieldTypeOf(field.code, field.flt), field.code, headingLevel_,
                                        run.properties->language, text);
      break;
    case FieldDisplay::kListNumber:
      counters_.fields.AppendListNumber(field.code, run.properties->language, text);
      break;
    case FieldDisplay::kFormText:
    case FieldDisplay::kFormCheckBox:
    case FieldDisplay::kFormDropDown:
      return TellFormField(field, run);
    case FieldDisplay::kResult:
    case FieldDisplay::kNothing:
      return;
  }
  Deliver(text, run);
}

void InlineWalker::TellFormField(const OpenField& field, const TextRun& run) {
  constexpr size_t kLongestChoice = 255;  // Word has 50 characters; many fields may share one
  if (!IsShown(run)) return;
  Prepare(run);
  DeliverHeld();
  const auto kind = field.display == FieldDisplay::kFormText       ? FormFieldFacts::Kind::kText
                    : field.display == FieldDisplay::kFormCheckBox ? FormFieldFacts::Kind::kCheckBox
                                                                   : FormFieldFacts::Kind::kDropDown;
  handler_.FormField(
      {kind, field.data.name, field.data.isChecked, field.data.Choice().substr(0, kLongestChoice)},
      *run.properties);
}

void InlineWalker::ReadFormField(const TextRun& run) {
  constexpr uint32_t kMostBytes = 1 << 15;
  OpenField* const field = fields_.top();
  if (!field || field->hasData) return;
  if (!data_.good()) document_.file.ReadData(data_, kMostBytes);
  if (data_.good())
    field->hasData = readFormFieldData(data_.At(run.specials.pictureOffset, kMostBytes), field->data);
}

// What other tables tell of places in the text

uint32_t InlineWalker::NextNotePosition() const {
  if (story_.type != mso_word::SUBDOC_MAIN) return UINT32_MAX;
  return std::min(document_.notes[0].Position(nextNote_[0]), document_.notes[1].Position(nextNote_[1]));
}

void InlineWalker::FindNextEvent() {
  nextEvent_ = std::min({NextNotePosition(), nextBookmark_.next.position, nextComment_.next.position});
}

/// All but a note, which needs the text.
void InlineWalker::TellEvents(uint32_t position) {
  for (; nextBookmark_.next.position <= position; document_.bookmarks.Advance(nextBookmark_)) {
    const WaitingBookmark bookmark{nextBookmark_.next.range, nextBookmark_.next.isEnd};
    if (isOpen_) {
      TellBookmark(bookmark);
    } else {
      waitingBookmarks_.push_back(bookmark);
    }
  }
  TellCommentRanges(position);
  for (unsigned kind = 0; kind < 2; ++kind) {
    while (document_.notes[kind].Position(nextNote_[kind]) < position) ++nextNote_[kind];
  }
  FindNextEvent();
}

void InlineWalker::TellBookmark(const WaitingBookmark& bookmark) {
  if (bookmark.number >= document_.bookmarkNames.size()) return;
  DeliverHeld();
  const std::u16string& name = document_.bookmarkNames[bookmark.number];
  bookmark.isEnd ? handler_.BookmarkEnd(name) : handler_.BookmarkStart(name);
}

void InlineWalker::TellCommentRanges(uint32_t position) {
  for (; nextComment_.next.position <= position; document_.comments.ranges().Advance(nextComment_)) {
    const uint32_t comment = document_.comments.CommentOfRange(nextComment_.next.range);
    if (comment >= document_.comments.Count()) continue;
    Begin();
    DeliverHeld();
    nextComment_.next.isEnd ? handler_.CommentEnd(comment) : handler_.CommentStart(comment);
  }
}

void InlineWalker::TellCommentReference(uint32_t position, const TextRun& run) {
  const uint32_t comment = document_.comments.At(position);
  if (comment >= document_.comments.Count()) return;
  if (!IsShown(run)) return document_.comments.Hide(comment);
  Prepare(run);
  handler_.CommentReference(document_.comments.Facts(comment));
}

/// The count of characters that are its mark.
size_t InlineWalker::TellNoteReference(std::u16string_view text, uint32_t position, const TextRun& run) {
  constexpr size_t kLongestMark = 10;
  const unsigned kind = document_.notes[0].Position(nextNote_[0]) == position ? 0 : 1;
  NoteTable& notes = document_.notes[kind];
  const uint32_t index = nextNote_[kind]++;
  FindNextEvent();
  const bool isNumbered = notes.IsNumbered(index);
  size_t length = isNumbered && text.front() == text_mark::kNoteReference ? 1 : 0;
  if (!isNumbered) {
    const size_t most = std::min<size_t>({text.size(), kLongestMark, nextEvent_ - position});
    while (length < most && text[length] > u' ') ++length;
  }
  if (!IsShown(run)) {
    notes.SetState(index, NoteTable::State::kHidden);
    return length;
  }
  notes.SetState(index, NoteTable::State::kTold);
  if (isNumbered) {
    notes.Label(index) = NextNoteLabel(kind);
  } else {
    converted_.clear();
    for (const char16_t unit : text.substr(0, length)) {
      if (run.specials.symbol.isThere) {
        appendSymbol(run.asciiSymbols, run.specials.symbol.character, converted_);
      } else {
        appendSymbol(run.asciiSymbols, unit, converted_);
      }
    }
    notes.Label(index) = converted_;
  }
  Prepare(run);
  DeliverHeld();
  handler_.NoteReference({static_cast<NoteKind>(kind), index, notes.Label(index), !isNumbered},
                         *run.properties);
  return length;
}

std::u16string InlineWalker::NextNoteLabel(unsigned kind) {
  std::u16string label;
  appendNumber(static_cast<int32_t>(counters_.next[kind]++), counters_.numbering[kind].format, label);
  return label;
}

/// In the text of a note with a mark of its own, which stands there as text.
size_t InlineWalker::TellOwnMark(std::u16string_view text, const TextRun& run) {
  const std::u16string_view label = story_.note->label;
  if (label.empty() || !text.starts_with(label) || !IsShown(run)) return 0;
  Prepare(run);
  handler_.NoteMark(*story_.note, *run.properties);
  return label.size();
}

// Pictures and shapes

void InlineWalker::TellInlinePicture(const TextRun& run) {
  if (!run.specials.hasPicture || !IsShown(run)) return;
  FoundShape shape;
  const uint32_t place = run.specials.pictureOffset;
  // Of an object it may be the number.
  const bool isThere = document_.drawings.Inline(place, shape) ||
                       (run.specials.isOle && document_.drawings.Object(place, shape));
  if (!isThere) {
    if (!run.specials.isOle) warn(document_.file.warnings(), WarningCode::kPicture);
    return;
  }
  Prepare(run);
  DeliverHeld();
  if (shape.isRule) {
    handler_.MarkHere(Mark::kRule, *run.properties);
  } else {
    handler_.Picture(shape.Facts());
  }
  if (shape.box >= 0 || !shape.artText.empty()) boxes.push_back(std::move(shape));
}

void InlineWalker::TellAnchoredShapes(uint32_t position, const TextRun& run) {
  const bool isInHeaders = story_.type == mso_word::SUBDOC_HEADER;
  if ((!isInHeaders && story_.type != mso_word::SUBDOC_MAIN) || !IsShown(run)) return;
  for (FoundShape& shape : document_.drawings.At(isInHeaders, position - story_.base)) {
    const bool hasText = shape.box >= 0 || !shape.artText.empty();
    if (!hasText || shape.source) {
      Prepare(run);
      DeliverHeld();
      handler_.Picture(shape.Facts());
    }
    if (hasText) boxes.push_back(std::move(shape));
  }
}

}  // namespace pagerex

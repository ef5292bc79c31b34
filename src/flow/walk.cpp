#include "flow/walk.h"

#include <algorithm>

#include "flow/section_list.h"
#include "flow/story_walker.h"
#include "wordreader/text_marks.h"

namespace pagerex {
namespace {

using mso_word::SUBDOC_TYPE;

class NamesOfStyles final : public StyleNames {
 public:
  NamesOfStyles(const StyleTable& styles, PropertyResolver& resolver)
      : styles_(styles), resolver_(resolver) {}
  std::u16string_view NameOf(uint16_t istd) const override { return styles_.EnglishName(istd); }
  const ParagraphProperties& ParagraphOf(uint16_t istd) const override {
    return resolver_.ParagraphStyle(istd);
  }
  const RunProperties& RunOf(uint16_t istd) const override { return resolver_.ParagraphStyleRun(istd); }

 private:
  const StyleTable& styles_;
  PropertyResolver& resolver_;
};

class NamesOfFonts final : public ToldFonts {
 public:
  explicit NamesOfFonts(const FontNames& fonts) : fonts_(fonts) {}
  std::u16string_view NameOf(uint16_t ftc) const override { return fonts_.Name(ftc); }
  FontFacts FactsOf(uint16_t ftc) const override {
    return {fonts_.Name(ftc),  fonts_.AlternateName(ftc), fonts_.Family(ftc),
            fonts_.Pitch(ftc), fonts_.CharacterSet(ftc),  fonts_.Panose(ftc)};
  }

 private:
  const FontNames& fonts_;
};

/// The parts of a document in the order in which they are told.
class Walk {
 public:
  Walk(WordFile& file, const WalkOptions& options, RunControl& control, ProgressListener* progress,
       FlowHandler& handler)
      : document_(file, options, control, progress, handler), handler_(handler) {}

  WrittenCounts Run();

 private:
  void TellSections();
  void BeginNumbering(const SectionProperties& properties, bool isFirst);
  void TellHeaders(uint32_t section);
  void TellNotes(NoteKind kind);
  void TellComments();
  /// A part of a story: [start, end) of it, without the mark behind its last paragraph.
  void TellPart(SUBDOC_TYPE type, uint32_t start, uint32_t end, const NoteFacts* note = nullptr);
  /// Without the mark that guards the end of a part of a story.
  uint32_t WithoutGuard(uint32_t start, uint32_t end);
  uint32_t StoryStart(SUBDOC_TYPE type) const { return document_.file.storyStarts()[type]; }
  uint32_t StoryEnd(SUBDOC_TYPE type) const {
    return std::min(document_.file.storyStarts()[type + 1], document_.pieces.end());
  }

  WalkDocument document_;
  FlowHandler& handler_;
  SectionList sections_;
  NoteCounters counters_;
};

WrittenCounts Walk::Run() {
  WordFile& file = document_.file;
  const NamesOfStyles styles(document_.styles, *document_.resolver);
  const NamesOfFonts fonts(document_.fonts);
  const DocumentSettings& settings = document_.settings;
  sections_.Read(file);
  handler_.BeginDocument({file.Summary(), document_.resolver->ParagraphStyleRun(0).language,
                          settings.defaultTabStop, settings.hasOddAndEvenHeaders, settings.pageCount, &styles,
                          &fonts, document_.drawings.Background()});
  TellSections();
  TellNotes(NoteKind::kFootnote);
  TellNotes(NoteKind::kEndnote);
  TellComments();
  handler_.EndDocument();
  document_.WarnOfDamage();
  return document_.written;
}

void Walk::TellSections() {
  const uint32_t textEnd = StoryEnd(mso_word::SUBDOC_MAIN);
  StoryWalker walker(document_, counters_, *document_.labels, document_.FieldsOf(mso_word::SUBDOC_MAIN));
  for (uint32_t i = 0; i < sections_.Count() && !document_.control.MustStop(); ++i) {
    const uint32_t start = std::min(sections_.Start(i), textEnd);
    const uint32_t end = i + 1 < sections_.Count() ? std::min(sections_.Start(i + 1), textEnd) : textEnd;
    if (start >= end && i > 0) continue;
    const SectionProperties properties = sections_.Properties(i);
    SectionFacts facts{properties, i, {}};
    sections_.FindHeaders(i, document_.settings.hasOddAndEvenHeaders, facts);
    BeginNumbering(properties, i == 0);
    handler_.BeginSection(facts);
    TellHeaders(i);
    walker.Tell({mso_word::SUBDOC_MAIN, 0, start, nullptr}, end);
    handler_.EndSection();
  }
}

void Walk::BeginNumbering(const SectionProperties& properties, bool isFirst) {
  constexpr uint8_t kInEachSection = 1;
  const DocumentSettings::Numbering ofDocument[2] = {document_.settings.footnotes,
                                                     document_.settings.endnotes};
  const NoteNumbering ofSection[2] = {properties.footnotes, properties.endnotes};
  for (unsigned kind = 0; kind < 2; ++kind) {
    DocumentSettings::Numbering numbering = ofDocument[kind];
    if (ofSection[kind].setsRestart) numbering.restart = ofSection[kind].restart;
    if (ofSection[kind].setsStart) numbering.start = std::max<uint16_t>(ofSection[kind].start, 1);
    if (ofSection[kind].setsFormat) numbering.format = static_cast<uint8_t>(ofSection[kind].format);
    counters_.numbering[kind] = numbering;
    if (isFirst || numbering.restart == kInEachSection) counters_.next[kind] = numbering.start;
  }
}

void Walk::TellHeaders(uint32_t section) {
  for (unsigned slot = 0; slot < SectionList::kSlots; ++slot) {
    const KDWRange range = sections_.NewHeader(section, slot);
    if (range.start >= range.end) continue;
    handler_.BeginHeader(SectionList::FactsOf(slot));
    TellPart(mso_word::SUBDOC_HEADER, range.start, range.end);
    handler_.EndHeader();
  }
}

uint32_t Walk::WithoutGuard(uint32_t start, uint32_t end) {
  if (end - start < 2) return end;
  const std::u16string_view last = document_.text.At(end - 1, end);
  const bool endsWithMark = !last.empty() && last[0] == text_mark::kParagraphEnd;
  const std::u16string_view before = document_.text.At(end - 2, end - 1);
  return endsWithMark && !before.empty() && before[0] == text_mark::kParagraphEnd ? end - 1 : end;
}

void Walk::TellPart(SUBDOC_TYPE type, uint32_t start, uint32_t end, const NoteFacts* note) {
  const uint32_t base = StoryStart(type);
  const uint32_t storyEnd = StoryEnd(type);
  if (base >= storyEnd || start >= storyEnd - base) return;
  const uint32_t partEnd = WithoutGuard(base + start, base + std::min(end, storyEnd - base));
  StoryWalker walker(document_, counters_, document_.OtherLabels(), document_.FieldsOf(type));
  walker.Tell({type, base, base + start, note}, partEnd);
}

void Walk::TellNotes(NoteKind kind) {
  NoteTable& notes = document_.notes[static_cast<size_t>(kind)];
  const auto type = kind == NoteKind::kFootnote ? mso_word::SUBDOC_FOOTNOTE : mso_word::SUBDOC_ENDNOTE;
  for (uint32_t i = 0; i < notes.Count() && !document_.control.MustStop(); ++i) {
    if (notes.StateOf(i) == NoteTable::State::kHidden) continue;
    const NoteFacts facts{kind, i, notes.Label(i), !notes.IsNumbered(i)};
    handler_.BeginNote(facts);
    TellPart(type, notes.TextStart(i), notes.TextEnd(i), &facts);
    handler_.EndNote();
  }
}

void Walk::TellComments() {
  const CommentTable& comments = document_.comments;
  for (uint32_t i = 0; i < comments.Count() && !document_.control.MustStop(); ++i) {
    if (comments.IsHidden(i)) continue;
    handler_.BeginComment(comments.Facts(i));
    TellPart(mso_word::SUBDOC_ANNOTATION, comments.TextStart(i), comments.TextEnd(i));
    handler_.EndComment();
  }
}

}  // namespace

WrittenCounts walk(WordFile& file, const WalkOptions& options, RunControl& control,
                   ProgressListener* progress, FlowHandler& handler) {
  return Walk(file, options, control, progress, handler).Run();
}

}  // namespace pagerex

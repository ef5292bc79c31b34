#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "flow/equation_text.h"
#include "flow/field_numbers.h"
#include "flow/field_stack.h"
#include "flow/walk_document.h"

namespace pagerex {

/// What a story is told as: where its text lies, and which of its marks mean what.
struct StoryPlace {
  mso_word::SUBDOC_TYPE type = mso_word::SUBDOC_MAIN;
  uint32_t base = 0;                ///< position of its beginning in the document
  uint32_t start = 0;               ///< position where the part of it begins that is told
  const NoteFacts* note = nullptr;  ///< whose text it is
};

/// The numbering of notes and of fields that count, which goes on from story to story of the main text.
struct NoteCounters {
  DocumentSettings::Numbering numbering[2];  ///< as the section has it
  uint32_t next[2] = {1, 1};
  FieldNumbers fields;
};

/// Tells a paragraph's text: runs, marks, fields, links, notes, comments, bookmarks, pictures. Begins the
/// paragraph when there is something to tell of it, so that one whose text is part of a field's code is left
/// out.
class InlineWalker {
 public:
  InlineWalker(WalkDocument& document, NoteCounters& counters, FieldMarks& fields)
      : document_(document), handler_(document.handler), counters_(counters), fieldMarks_(fields) {}

  void BeginStory(const StoryPlace& story);
  /// What has begun must end: a field's code does not reach into another cell or story.
  void EndStory();

  /// The paragraph that is told next. `facts` must stay until it has ended; its label is made by the caller.
  class ParagraphBeginner {
   public:
    ParagraphBeginner() = default;
    ParagraphBeginner(const ParagraphBeginner&) = delete;
    ParagraphBeginner& operator=(const ParagraphBeginner&) = delete;
    virtual ~ParagraphBeginner() = default;
    /// Calls BeginParagraph.
    virtual void Begin() = 0;
  };
  void SetHeadingLevel(uint8_t level) { headingLevel_ = level; }
  void SetParagraph(ParagraphBeginner& beginner, uint16_t istd, const TableStylePlace& place);
  /// Tells the characters [start, end).
  void Tell(uint32_t start, uint32_t end);
  /// Ends the paragraph, unless its mark is part of a field's code and `mustEnd` is not set.
  void EndParagraph(uint32_t position, bool mustEnd);
  /// Around the text of a drop cap.
  void BeginDropCap(const ParagraphProperties& properties);
  void EndDropCap();
  bool isOpen() const { return isOpen_; }

  /// Boxes that are anchored in what was told, which the caller tells and takes away.
  std::vector<FoundShape> boxes;

 private:
  struct WaitingBookmark {
    uint32_t number;
    bool isEnd;
  };

  void TellStretch(std::u16string_view text, uint32_t position, const TextRun& run);
  void TellControl(char16_t unit, uint32_t position, const TextRun& run);
  void TellSpecial(char16_t unit, uint32_t position, const TextRun& run);
  void PutSymbols(std::u16string_view text, const TextRun& run);
  void Put(std::u16string_view text, const TextRun& run);
  void Deliver(std::u16string_view text, const TextRun& run);
  void DeliverHeld();
  void PutMark(Mark mark, const TextRun& run);
  void Prepare(const TextRun& run);
  bool IsShown(const TextRun& run) const { return run.isShown && !fields_.HidesText(); }

  void BeginField(uint32_t position);
  void SeparateField(const TextRun& run);
  void EndField(const TextRun& run);
  void TellFieldWithoutResult(OpenField& field, const TextRun& run);
  void TellFormField(const OpenField& field, const TextRun& run);
  void ReadFormField(const TextRun& run);

  void FindNextEvent();
  void TellEvents(uint32_t position);
  size_t TellNoteReference(std::u16string_view text, uint32_t position, const TextRun& run);
  void TellBookmark(const WaitingBookmark& bookmark);
  uint32_t NextNotePosition() const;
  std::u16string NextNoteLabel(unsigned kind);
  size_t TellOwnMark(std::u16string_view text, const TextRun& run);
  void TellCommentRanges(uint32_t position);
  void TellCommentReference(uint32_t position, const TextRun& run);
  void TellInlinePicture(const TextRun& run);
  void TellAnchoredShapes(uint32_t position, const TextRun& run);

  void Begin();
  void BeginLinkIfAny();
  void BeginRevisionOf(const TextRun& run);
  void EndRevision();
  void EndLink();

  WalkDocument& document_;
  FlowHandler& handler_;
  NoteCounters& counters_;
  FieldMarks& fieldMarks_;
  StoryPlace story_;
  FieldStack fields_;
  ParagraphBeginner* beginner_ = nullptr;
  uint16_t istd_ = 0;
  uint8_t headingLevel_ = 0;
  TableStylePlace place_;
  bool isOpen_ = false;
  bool isLinkOpen_ = false;
  Revision openInsertion_, openDeletion_;
  char16_t held_ = 0;  ///< first half of a character
  const RunProperties* heldProperties_ = nullptr;
  uint32_t nextEvent_ = 0;
  uint32_t nextNote_[2] = {0, 0};
  RangeMarks::Cursor nextBookmark_, nextComment_;
  std::vector<WaitingBookmark> waitingBookmarks_;  ///< for a paragraph to begin
  std::u16string converted_;
  StreamReader data_;
};

}  // namespace pagerex

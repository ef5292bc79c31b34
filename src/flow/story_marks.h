#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "flow/handler.h"
#include "wordreader/position_table.h"
#include "wordreader/word_file.h"

namespace pagerex {

/// A table of strings (STTB) of 16 bits, in place.
class StringTable {
 public:
  void Read(ByteView table);
  uint32_t Count() const { return static_cast<uint32_t>(strings_.size()); }
  /// Empty outside.
  std::u16string Text(uint32_t i) const;
  ByteView Extra(uint32_t i) const { return i < Count() ? strings_[i].extra : ByteView(); }

 private:
  struct String {
    ByteView text, extra;
  };
  std::vector<String> strings_;
};

/// Begin marks of the fields of one story that have an end, by position in the story.
class FieldMarks {
 public:
  void Read(ByteView plcfld);
  /// Whether a field begins at `position` that ends as well. Cheap for positions that rise.
  bool Begins(uint32_t position, uint8_t& flt);

 private:
  PositionTable table_;
  std::vector<bool> hasEnd_;
  uint32_t next_ = 0;
};

/// Bookmarks and the ranges of comments: both are pairs of position tables. Positions are those of the whole
/// document.
class RangeMarks {
 public:
  /// `starts` has records of `startBytes` that begin with the number of the end.
  void Read(ByteView starts, uint32_t startBytes, ByteView ends);
  uint32_t Count() const { return starts_.Count(); }

  struct Event {
    uint32_t position = UINT32_MAX;
    uint32_t range = 0;  ///< its number
    bool isEnd = false;
  };
  /// What comes next, ends before starts at one place; a position of UINT32_MAX for nothing more.
  const Event& next() const { return next_; }
  void Advance();
  /// To the first that lies at `position` or behind it: each story begins so.
  void MoveTo(uint32_t position);

 private:
  void FindNext();

  PositionTable starts_, ends_;
  std::vector<uint32_t> startOfEnd_;
  uint32_t nextStart_ = 0, nextEnd_ = 0;
  Event next_;
};

/// The notes of one kind: where they are referred to, where their texts lie, and what labels they have.
class NoteTable {
 public:
  enum class State : uint8_t { kUnseen, kTold, kHidden };

  void Read(WordFile& file, NoteKind kind);
  uint32_t Count() const { return refs_.Count(); }
  uint32_t Position(uint32_t i) const { return refs_.Position(i); }
  /// Without a mark of its own.
  bool IsNumbered(uint32_t i) const { return refs_.Record(i).u16(0) != 0; }
  /// Where its text begins and ends in its story.
  uint32_t TextStart(uint32_t i) const { return texts_.Position(i); }
  uint32_t TextEnd(uint32_t i) const { return texts_.Position(i + 1); }
  bool HasText(uint32_t i) const { return i + 1 < texts_.Count() + 1 && TextStart(i) < TextEnd(i); }

  State StateOf(uint32_t i) const { return notes_[i].state; }
  void SetState(uint32_t i, State state) { notes_[i].state = state; }
  std::u16string& Label(uint32_t i) { return notes_[i].label; }

 private:
  struct Note {
    State state = State::kUnseen;
    std::u16string label;
  };
  PositionTable refs_, texts_;
  std::vector<Note> notes_;
};

/// The comments: as the notes, with their authors.
class CommentTable {
 public:
  void Read(WordFile& file);
  uint32_t Count() const { return refs_.Count(); }
  uint32_t Position(uint32_t i) const { return refs_.Position(i); }
  uint32_t TextStart(uint32_t i) const { return texts_.Position(i); }
  uint32_t TextEnd(uint32_t i) const { return texts_.Position(i + 1); }
  CommentFacts Facts(uint32_t i) const;
  RangeMarks& ranges() { return ranges_; }
  /// The comment that speaks of a range; `Count()` for none.
  uint32_t CommentOfRange(uint32_t range) const {
    return range < ofRange_.size() ? ofRange_[range] : Count();
  }
  bool IsHidden(uint32_t i) const { return hidden_[i]; }
  void Hide(uint32_t i) { hidden_[i] = true; }

 private:
  void ReadAuthors(ByteView names);
  void MatchRanges(ByteView names);

  PositionTable refs_, texts_;
  ByteView dates_;
  std::vector<std::u16string> authors_, initials_;
  RangeMarks ranges_;
  std::vector<uint32_t> ofRange_;
  std::vector<bool> hidden_;
};

}  // namespace pagerex

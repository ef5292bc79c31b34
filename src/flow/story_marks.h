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

  uint32_t StartOf(uint32_t range) const { return starts_.Position(range); }
  uint32_t EndOf(uint32_t range) const { return ends_.Position(starts_.Record(range).u16(0)); }

  struct Event {
    uint32_t position = UINT32_MAX;
    uint32_t range = 0;  ///< its number
    bool isEnd = false;
  };
  /// A place in the order of all starts and ends.
  struct Cursor {
    uint32_t nextStart = 0, nextEnd = 0;
    Event next;  ///< a position of UINT32_MAX for nothing more
  };
  /// At the first that lies at `position` or behind it.
  Cursor From(uint32_t position) const;
  void Advance(Cursor& cursor) const;

 private:
  void FindNext(Cursor& cursor) const;

  PositionTable starts_, ends_;
  std::vector<uint32_t> startOfEnd_;
};

/// The notes of one kind: where they are referred to, where their texts lie, and what labels they have.
class NoteTable {
 public:
  enum class State : uint8_t { kUnseen, kTold, kHidden };

  void Read(WordFile& file, NoteKind kind);
  uint32_t Count() const { return refs_.Count(); }
  uint32_t Position(uint32_t i) const { return i < Count() ? refs_.Position(i) : UINT32_MAX; }
  /// The first that is referred to at `position` or behind it.
  uint32_t FirstFrom(uint32_t position) const { return position == 0 ? 0 : refs_.UpperBound(position - 1); }
  /// Without a mark of its own.
  bool IsNumbered(uint32_t i) const { return refs_.Record(i).u16(0) != 0; }
  /// Where its text begins and ends in its story.
  uint32_t TextStart(uint32_t i) const { return texts_.Position(i); }
  uint32_t TextEnd(uint32_t i) const { return texts_.Position(i + 1); }

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
  const RangeMarks& ranges() const { return ranges_; }
  /// The comment whose reference stands at `position`; `Count()` for none.
  uint32_t At(uint32_t position) const;
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

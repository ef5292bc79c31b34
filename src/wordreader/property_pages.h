#pragma once

#include <cstdint>
#include <cstring>

#include "base/byte_view.h"
#include "wordreader/position_table.h"
#include "wordreader/word_file.h"

namespace pagerex {

/// The properties of one kind by the place of the text in "WordDocument": a bin table and the formatted disk
/// pages (FKP) that it names, which are read one at a time.
class PropertyPages {
 public:
  enum class Kind : uint8_t { kRuns, kParagraphs };

  /// What holds for [start, end) of the stream.
  struct Entry {
    uint32_t start = 0;
    uint32_t end = 0;
    bool isThere = false;  ///< a page tells of this place
    ByteView properties;   ///< of a run the list; of a paragraph its istd and the list. Valid until the next
                           ///< call.
  };

  void Read(WordFile& file, Kind kind);
  /// What holds at `offset`, until the next call. Cheap for offsets that rise.
  const Entry& At(uint32_t offset) {
    if (offset < entry_.start || offset >= entry_.end) Find(offset);
    return entry_;
  }
  /// Whether text lay where no page tells of it.
  bool missed() const { return missed_; }

 private:
  void Find(uint32_t offset);
  bool IsInPage(uint32_t offset) const {
    return count_ > 0 && offset >= PageStart(0) && offset < PageStart(count_);
  }
  bool LoadPageOf(uint32_t offset);
  bool LoadPage(uint32_t index);
  uint32_t EntryOf(uint32_t offset) const;
  ByteView PropertiesOf(uint32_t entry) const;
  Entry Missing(uint32_t offset);
  /// Where entry `i` begins, up to the count of entries, which keeps this in the page.
  uint32_t PageStart(uint32_t i) const {
    uint32_t start = 0;
    std::memcpy(&start, page_.data() + size_t{i} * 4, sizeof(start));
    return start;
  }

  Kind kind_ = Kind::kRuns;
  StreamReader reader_;
  PositionTable bins_;
  bool rises_ = true;
  uint32_t pageNumber_ = UINT32_MAX;  ///< in the bin table
  ByteView page_;
  uint32_t count_ = 0;    ///< entries of the page
  uint32_t current_ = 0;  ///< the entry found last
  Entry entry_;           ///< that was found last
  bool missed_ = false;
};

}  // namespace pagerex

#pragma once

#include <cstdint>
#include <unordered_map>

#include "base/byte_view.h"
#include "flow/paragraph_sprms.h"
#include "flow/recent_lists.h"
#include "wordreader/property_pages.h"
#include "wordreader/text_reader.h"

namespace pagerex {

/// A paragraph of the text, by its character positions in the whole document.
struct FoundParagraph {
  uint32_t start = 0;
  uint32_t textEnd = 0;  ///< without the mark
  uint32_t end = 0;
  char16_t mark = 0;  ///< 0 where the text ends without one
  uint16_t istd = 0;
  ByteView sprms;       ///< its own list; until the next paragraph is looked for
  ByteView pieceSprms;  ///< what the piece adds
  uint16_t prm = 0;     ///< the piece's modifier, which says that
  TablePlace place;
  uint32_t kind = 0;  ///< paragraphs of one kind have equal lists and styles, and no modifier; 0 for none

  /// Ends a cell of a table of that depth.
  bool EndsCell(unsigned depth) const {
    return depth == place.depth && (depth > 1 ? place.isInnerCellEnd : mark == 7 && !place.isRowEnd);
  }
  bool EndsRow(unsigned depth) const {
    return depth == place.depth && (depth > 1 ? place.isInnerRowEnd : place.isRowEnd);
  }
};

/// Finds paragraphs in the text: where they end is what the text says, and what they look like what the pages
/// say of the place of their mark.
class ParagraphFinder {
 public:
  /// Deeper tables count as being this deep.
  static constexpr uint8_t kDeepest = 24;

  void Read(WordFile& file, PieceList& pieces, TextReader& text);

  /// Where a paragraph that begins at `start` ends, without what the pages say of it.
  FoundParagraph TextAt(uint32_t start, uint32_t limit);
  /// The paragraph that begins at `start`, which is below `limit`, where a section or another part ends.
  /// Until the next one is looked for.
  const FoundParagraph& At(uint32_t start, uint32_t limit) {
    if (start != last_.start || limit != lastLimit_ || last_.end <= start) Find(start, limit);
    return last_;
  }
  bool missed() const { return pages_.missed(); }

 private:
  void Find(uint32_t start, uint32_t limit);
  void FindEnd(FoundParagraph& paragraph, uint32_t limit);
  bool EndsWithPageBreak(uint32_t position);
  void FindProperties(FoundParagraph& paragraph);
  struct Kind {
    ParagraphOutline outline;
    uint32_t number = 0;
  };
  Kind KindOf(ByteView sprms, uint16_t istd);
  ByteView Huge(uint32_t offset);

  PieceList* pieces_ = nullptr;
  TextReader* text_ = nullptr;
  PropertyPages pages_;
  StreamReader data_;
  std::unordered_map<uint32_t, ByteView> huge_;  ///< lists in "Data" by their offset
  uint64_t hugeBytesLeft_ = 0;
  FoundParagraph last_;
  RecentLists<Kind, 504> recentKinds_;
  uint32_t kinds_ = 0;  ///< that were told apart so far
  uint32_t lastLimit_ = 0;
};

}  // namespace pagerex

#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "base/byte_view.h"
#include "wordreader/span_prop.h"
#include "wordreader/sprm_list.h"

// Most paragraphs, runs and cells of a document share a few property lists, and the document keeps each list
// once: the address of a list stands for what it says. So what was decoded of a list, and how it was spelled,
// is kept by that address. All of it belongs to a conversion and is small, whatever the document.

namespace pagerex {

/// What was kept for lists, by address. A list may have to give way to another.
template <class Entry, unsigned kSlots>
class ByAddress {
 public:
  /// The slot of a list. Its entry is that of the list, or of another one that gives way.
  Entry& SlotOf(const void* list) {
    static_assert((kSlots & (kSlots - 1)) == 0);
    if (!entries_) entries_ = std::make_unique<std::array<Entry, kSlots>>();
    const auto address = reinterpret_cast<uintptr_t>(list);
    return (*entries_)[(address ^ address >> 7) & (kSlots - 1)];
  }

 private:
  std::unique_ptr<std::array<Entry, kSlots>> entries_;  ///< made when first needed
};

/// A run's own properties, and the attributes of its element.
struct SpelledRun {
  bool isDecoded = false;
  ByteView list;
  KDRSpanProp properties;
  uint16_t istd = mso_word::kNoCharacterStyle;

  // What the attributes depend on beside the list.
  int32_t lineSpacing = 0;
  float baseFontSize = 0;
  std::string attributes;  ///< empty: not spelled yet
};

/// A paragraph's own properties, as far as they play a part beside the attributes of its element.
struct SpelledParagraph {
  ByteView list;  ///< with the style index in front
  bool isListItem = false;
  uint16_t ilfo = 0;  ///< of a list item
  uint8_t ilvl = 0;
  bool setsLineSpacing = false;
  int32_t lineSpacing = 0;
  std::string attributes;  ///< empty: there is no entry
};

/// The attributes of a cell.
struct SpelledCell {
  const uint8_t* row = nullptr;  ///< the list of the row
  uint32_t cell = 0;             ///< index in the row
  uint32_t position = 0;         ///< CellPosition
  uint32_t rowSpan = 0;
  uint32_t colSpan = 0;
  int32_t cellSpacing = 0;
  std::string attributes;  ///< empty: there is no entry

  bool IsFor(const SpelledCell& other) const {
    return row == other.row && cell == other.cell && position == other.position && rowSpan == other.rowSpan &&
           colSpan == other.colSpan && cellSpacing == other.cellSpacing;
  }
};

/// What a conversion has spelled.
class KSpelledProperties {
 public:
  /// The properties of a run. The reference is good until another run is asked for.
  SpelledRun& Run(ByteView list);
  /// The slot of a paragraph's list, which holds its entry or that of another list.
  SpelledParagraph& Paragraph(ByteView list) { return paragraphs_.SlotOf(list.data()); }
  /// The slot of a cell.
  SpelledCell& Cell(const uint8_t* row, uint32_t cell) { return cells_.SlotOf(row + cell); }

 private:
  ByAddress<SpelledRun, 64> runs_;
  ByAddress<SpelledParagraph, 64> paragraphs_;
  ByAddress<SpelledCell, 128> cells_;
};

}  // namespace pagerex

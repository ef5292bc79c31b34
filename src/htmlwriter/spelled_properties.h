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

/// What was kept for lists, by address, in sets of a few entries. Where a set is full, one has to give way.
template <class Entry, unsigned kSets>
class ByAddress {
 public:
  /// The entry of a list for which `matches` is true; else a fresh one.
  template <class Matches>
  Entry& Find(const void* list, const Matches& matches) {
    Set& set = sets_[SetOf(list)];
    for (std::unique_ptr<Entry>& entry : set.entries) {
      if (!entry) {
        entry = std::make_unique<Entry>();
        return *entry;
      }
      if (matches(*entry)) return *entry;
    }
    Entry& entry = *set.entries[set.next++ % kWays];
    entry = Entry();
    return entry;
  }

 private:
  static constexpr unsigned kWays = 4;
  struct Set {
    std::array<std::unique_ptr<Entry>, kWays> entries;
    unsigned next = 0;  ///< the way that gives way
  };

  /// The lists stand one beside the other, unaligned.
  static unsigned SetOf(const void* list) {
    const auto address = reinterpret_cast<uintptr_t>(list);
    return static_cast<unsigned>((address * 0x9E3779B1u >> 16) % kSets);
  }

  std::array<Set, kSets> sets_;
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

  bool IsFor(ByteView other) const {
    return isDecoded && list.data() == other.data() && list.size() == other.size();
  }
};

/// A paragraph's own properties, as far as they play a part beside the attributes of its element.
struct SpelledParagraph {
  ByteView list;  ///< with the style index in front
  bool isListItem = false;
  uint16_t ilfo = 0;  ///< of a list item
  uint8_t ilvl = 0;
  bool setsLineSpacing = false;
  int32_t lineSpacing = 0;
  std::string attributes;  ///< empty: not spelled yet

  bool IsFor(ByteView other) const { return list.data() == other.data() && list.size() == other.size(); }
};

/// The attributes of a cell.
struct SpelledCell {
  const uint8_t* row = nullptr;  ///< the list of the row
  uint32_t cell = 0;             ///< index in the row
  uint32_t position = 0;         ///< CellPosition
  uint32_t rowSpan = 0;
  uint32_t colSpan = 0;
  int32_t cellSpacing = 0;
  std::string attributes;  ///< empty: not spelled yet

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
  /// The entry of a paragraph's list, which may be fresh.
  SpelledParagraph& Paragraph(ByteView list) {
    return paragraphs_.Find(list.data(), [list](const SpelledParagraph& known) { return known.IsFor(list); });
  }
  /// The entry of a cell like `wanted`, which may be fresh.
  SpelledCell& Cell(const SpelledCell& wanted) {
    return cells_.Find(wanted.row + wanted.cell,
                       [&wanted](const SpelledCell& known) { return known.IsFor(wanted); });
  }

 private:
  ByAddress<SpelledRun, 16> runs_;
  ByAddress<SpelledParagraph, 16> paragraphs_;
  ByAddress<SpelledCell, 32> cells_;
};

}  // namespace pagerex

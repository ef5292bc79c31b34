#pragma once

#include <cstdint>

#include "flow/handler.h"
#include "wordreader/position_table.h"
#include "wordreader/word_file.h"

namespace pagerex {

/// The sections of a document, and the headers and footers that they have of their own. A document without a
/// table of them has one.
class SectionList {
 public:
  static constexpr unsigned kSlots = 6;  ///< headers and footers of even, odd and first pages

  void Read(WordFile& file);
  uint32_t Count() const { return sections_.Count() > 0 ? sections_.Count() : 1; }
  uint32_t Start(uint32_t section) const { return sections_.Position(section); }
  SectionProperties Properties(uint32_t section);

  /// Fills in which headers are shown; to be asked of one section after the other. One that no page of its
  /// own section shows, but one of a later section that is linked to it, counts as that section's.
  void FindHeaders(uint32_t section, bool hasEvenPages, SectionFacts& facts);
  /// Where a header lies in the story of headers that `section` is the first to show; empty for none. To be
  /// asked behind `FindHeaders`.
  KDWRange NewHeader(uint32_t section, unsigned slot) const;
  static HeaderFacts FactsOf(unsigned slot);

 private:
  struct Current {
    KDWRange range;
    int32_t section = -1;  ///< the first that showed it
    bool isShown = false;
  };

  KDWRange OwnHeader(uint32_t section, unsigned slot) const;

  PositionTable sections_, headers_;
  StreamReader text_;
  Current current_[kSlots];
};

}  // namespace pagerex

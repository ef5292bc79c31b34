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

  /// Where a header of the section's own lies in the story of headers; empty for one that is linked to the
  /// section before.
  KDWRange Header(uint32_t section, unsigned slot) const;
  static HeaderFacts FactsOf(unsigned slot);
  /// Fills in which headers are shown; to be asked of one section after the other.
  void FindHeaders(uint32_t section, SectionFacts& facts);

 private:
  PositionTable sections_, headers_;
  StreamReader text_;
  int32_t shown_[2][3] = {{-1, -1, -1}, {-1, -1, -1}};
};

}  // namespace pagerex

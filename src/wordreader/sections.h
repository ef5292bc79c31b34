#pragma once

#include <cstdint>
#include <map>

#include "wordreader/plcf.h"

/// The section table: the range of each section in the main text and the property list of each.
class KDRPlcfsed : public KDRPlcf<mso_word::SED, mso_word::FCLCB_SECTIONS> {
 public:
  struct ItemType {
    KDWRange range;
    ByteView sprms;  ///< empty if the section has no properties
  };
  /// The property list is read on the first call for a section and stays. Empty outside the table.
  ItemType Item(uint32_t i, const KDRDocument& document) const;

 private:
  ByteView PropertyList(uint32_t fcSepx, const KDRDocument& document) const;

  mutable std::map<uint32_t, ByteView> listByOffset_;
  mutable uint64_t listBytes_ = 0;  ///< of all lists read
};

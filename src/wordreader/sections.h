#pragma once

#include <cstdint>

#include "wordreader/plcf.h"

/// The section table: the range of each section in the main text and the property list of each.
class KDRPlcfsed : public KDRPlcf<mso_word::SED, mso_word::FCLCB_SECTIONS> {
 public:
  struct ItemType {
    KDWRange range;
    ByteView sprms;  ///< empty if the section has no properties
  };
  /// Reads and allocates anew at each call: ask once for each section.
  ItemType Item(uint32_t i, const KDRDocument& document) const;
};

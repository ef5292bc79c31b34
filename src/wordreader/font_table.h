#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "base/chain_allocator.h"
#include "base/status.h"

class KDRDocument;

/// A font as decoded from the font table; points into the table.
struct KFontX {
  const unsigned short* name = nullptr;           ///< NUL-terminated
  const unsigned short* alternateName = nullptr;  ///< null if there is none
  uint8_t family = 0;
  uint8_t characterSet = 0;
  uint8_t trueType = 0;
  uint8_t panose[10] = {};
  uint8_t signature[24] = {};
};

/// The font records (FFN) of a document.
class KDRSttbfffn {
 public:
  /// kMalformed for a count of 0 or 0xFFFF.
  Status Read(const KDRDocument& document);
  /// `bytes`, which must stay, are the whole table. A count that exceeds the records is cut.
  Status ReadRecord(ByteView bytes, ChainAllocator& allocator);
  uint32_t Count() const { return static_cast<uint32_t>(records_.size()); }

 protected:
  std::vector<ByteView> records_;
};

/// Fonts by index.
class KDRFontTable : public KDRSttbfffn {
 public:
  /// kFailure if `index` is out of range; `*out` is cleared then.
  Status Item(unsigned int index, KFontX* out) const;
};

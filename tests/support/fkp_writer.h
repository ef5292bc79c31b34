#pragma once

#include <cstdint>
#include <vector>

#include "support/bytes.h"

namespace support {

constexpr size_t kFkpBytes = 512;

/// One run or paragraph of a formatted disk page: stream offsets [start, end) and its property data as it
/// lies in the page, the size in front. Empty data: no properties, offset 0.
struct FkpEntry {
  uint32_t start;
  uint32_t end;
  Bytes data;
};

/// Formatted disk pages in the order of their stream offsets.
struct FkpPages {
  std::vector<uint32_t> starts;  ///< first offset of each page, and the end of the last
  std::vector<Bytes> pages;      ///< 512 bytes each
};

/// The property data of a run: a size byte and the list.
Bytes chpxData(const Bytes& grpprl);
/// The property data of a paragraph: its length, its style and the list. An even count of bytes is told with
/// a 0 in front, as Word does.
Bytes papxData(uint16_t istd, const Bytes& grpprl);
/// How many bytes a paragraph's data may have; longer ones must go to the "Data" stream.
constexpr size_t kMaxPapxData = 488;

/// Packs entries, whose ranges follow each other, into pages with `recordBytes` for each entry (1 for runs,
/// 13 for paragraphs). A page takes as many as fit, but no more than `maxEntries`. Equal data is kept once.
FkpPages packFkp(const std::vector<FkpEntry>& entries, size_t recordBytes, size_t maxEntries);

}  // namespace support

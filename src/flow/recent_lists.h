#pragma once

#include <array>
#include <cstdint>
#include <cstring>

#include "base/byte_view.h"
#include "flow/property_memo.h"

namespace pagerex {

/// What came of the last few lists of a page, found again by their bytes. Neighbours in a text, and still
/// more the cells of a table, are often alike.
template <class Result>
class RecentLists {
 public:
  /// Null for lists that were not kept.
  const Result* Find(ByteView sprms, uint16_t prm, uint16_t istd, const TableStylePlace& place) const {
    const Entry& entry = entries_[SlotOf(sprms, istd)];
    const bool isSame = entry.isThere && entry.size == sprms.size() && entry.prm == prm &&
                        entry.istd == istd && entry.place == place &&
                        (sprms.empty() || std::memcmp(entry.bytes, sprms.data(), sprms.size()) == 0);
    return isSame ? &entry.result : nullptr;
  }

  /// Long lists are not kept.
  void Keep(ByteView sprms, uint16_t prm, uint16_t istd, const TableStylePlace& place, const Result& result) {
    if (sprms.size() > kLongest) return;
    Entry& entry = entries_[SlotOf(sprms, istd)];
    if (!sprms.empty()) std::memcpy(entry.bytes, sprms.data(), sprms.size());
    entry.size = static_cast<uint8_t>(sprms.size());
    entry.prm = prm;
    entry.istd = istd;
    entry.place = place;
    entry.result = result;
    entry.isThere = true;
  }

  void Clear() {
    for (Entry& entry : entries_) entry.isThere = false;
  }

 private:
  static constexpr size_t kSlots = 32;
  static constexpr size_t kLongest = 120;

  struct Entry {
    bool isThere = false;
    uint8_t size = 0;
    uint16_t prm = 0;
    uint16_t istd = 0;
    TableStylePlace place;
    Result result{};
    uint8_t bytes[kLongest];
  };

  /// By the last bytes, which differ most, and the length.
  static size_t SlotOf(ByteView sprms, uint16_t istd) {
    uint64_t last = 0;
    if (sprms.size() >= sizeof(last))
      std::memcpy(&last, sprms.data() + sprms.size() - sizeof(last), sizeof(last));
    last = (last + sprms.size() + istd) * 0x9E3779B97F4A7C15;
    return static_cast<size_t>(last >> 59);
  }

  std::array<Entry, kSlots> entries_;
};

}  // namespace pagerex

#pragma once

#include <array>
#include <cstdint>
#include <cstring>

#include "base/byte_view.h"
#include "flow/property_memo.h"

namespace pagerex {

/// What came of the last few lists of a page, found again by their bytes. Neighbours in a text, and still
/// more the cells of a table, are often alike.
template <class Result, size_t kLongest = 120>
class RecentLists {
 public:
  /// Null for lists that were not kept.
  const Result* Find(ByteView sprms, uint16_t prm, uint16_t istd, const TableStylePlace& place) const {
    const Entry* const slot = &entries_[SlotOf(sprms, istd)];
    for (size_t way = 0; way < kWays; ++way) {
      const Entry& entry = slot[way];
      if (entry.isThere && entry.size == sprms.size() && entry.prm == prm && entry.istd == istd &&
          entry.place == place &&
          (sprms.empty() || std::memcmp(entry.bytes, sprms.data(), sprms.size()) == 0)) {
        return &entry.result;
      }
    }
    return nullptr;
  }

  /// Long lists are not kept.
  void Keep(ByteView sprms, uint16_t prm, uint16_t istd, const TableStylePlace& place, const Result& result) {
    if (sprms.size() > kLongest) return;
    Entry& entry = entries_[SlotOf(sprms, istd) + next_++ % kWays];
    if (!sprms.empty()) std::memcpy(entry.bytes, sprms.data(), sprms.size());
    entry.size = static_cast<uint16_t>(sprms.size());
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
  static constexpr size_t kSlots = 16, kWays = 4;

  struct Entry {
    bool isThere = false;
    uint16_t size = 0;
    uint16_t prm = 0;
    uint16_t istd = 0;
    TableStylePlace place;
    Result result{};
    uint8_t bytes[kLongest];
  };

  /// By the last bytes, which differ most, and the length.
  static size_t SlotOf(ByteView sprms, uint16_t istd) {
    uint64_t last = 0;
    const size_t n = sprms.size() < sizeof(last) ? sprms.size() : sizeof(last);
    if (n > 0) std::memcpy(&last, sprms.data() + sprms.size() - n, n);
    last = (last + sprms.size() + istd) * 0x9E3779B97F4A7C15;
    return static_cast<size_t>(last >> 60) * kWays;
  }

  std::array<Entry, kSlots * kWays> entries_;
  size_t next_ = 0;
};

}  // namespace pagerex

#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "wordreader/chunked_list.h"
#include "wordreader/plcf.h"

/// The property lists that apply to one paragraph or run, undecoded: the list of the FKP and that of the
/// piece, which the document's allocator holds. A paragraph's FKP list begins with its 16-bit style index.
struct KDRMergePropx {
  uint16_t fkpSize = 0;    ///< bytes, 0 if none
  uint16_t pieceSize = 0;  ///< bytes; filled and read by nobody
  const uint8_t* fkpData = nullptr;
  const uint8_t* pieceData = nullptr;

  ByteView fkp() const { return ByteView(fkpData, fkpSize); }
};

/// The position table that the scanner fills: n records and n + 1 positions, the last of which is the end of
/// the sub-document once finalised.
template <class T>
class KDWPlcfNormal {
 public:
  KDWPlcfNormal() { positions_.push_back(0xFFFFFFFF); }

  void NewItem(uint32_t position, const T& item) {
    sorted_ =
        sorted_ && position <= INT32_MAX && (records_.empty() || position >= positions_[records_.size() - 1]);
    positions_.back() = position;
    positions_.push_back(position);
    records_.push_back(item);
  }
  void Finalize(uint32_t position) {
    sorted_ = sorted_ && (records_.empty() || position >= positions_[records_.size() - 1]);
    positions_.back() = position;
  }

  uint32_t Count() const { return static_cast<uint32_t>(records_.size()); }
  /// Both ends of entry i if a further position exists, else the start and 0; zeros outside the table.
  KDWRange Range(uint32_t i) const {
    if (i + 1 < positions_.size()) return {positions_[i], positions_[i + 1]};
    return {i < positions_.size() ? positions_[i] : 0, 0};
  }
  /// The record of entry i; null outside the table.
  const T* Data(uint32_t i) const { return i < records_.size() ? &records_[i] : nullptr; }
  struct ItemType {
    KDWRange range;
    T data;
  };
  ItemType Item(uint32_t i) const { return {Range(i), i < records_.size() ? records_[i] : T{}}; }

  /// The starts ascend and are character positions of less than 2 GiB, as in every sound document.
  bool ascends() const { return sorted_; }
  /// Index of the first entry that starts at or behind `position`; `Count()` if there is none.
  uint32_t FirstFrom(uint32_t position) const;
  /// Index of the first entry from `from` on that ends at or behind `position`, in a table that ascends.
  uint32_t FirstEndingFrom(uint32_t position, uint32_t from) const;
  /// Where entries are counted from now on; null for nowhere. Not owned.
  void SetBudget(MemoryBudget* budget) {
    positions_.SetBudget(budget);
    records_.SetBudget(budget);
  }

 private:
  /// The start of entry i, or the highest start up to there in a damaged table, where only these ascend.
  uint32_t HighestStart(uint32_t i) const { return sorted_ ? positions_[i] : highestStarts_[i]; }

  ChunkedList<uint32_t> positions_;
  ChunkedList<T> records_;
  mutable std::vector<uint32_t> highestStarts_;  ///< of a damaged table, made when first needed
  bool sorted_ = true;
};

using KPropxTable = KDWPlcfNormal<KDRMergePropx>;

template <class T>
uint32_t KDWPlcfNormal<T>::FirstFrom(uint32_t position) const {
  // The first start that does not lie in front of `position` is where the highest one so far no longer does.
  if (!sorted_ && highestStarts_.size() != records_.size()) {
    highestStarts_.resize(records_.size());
    uint32_t highest = 0;
    for (size_t i = 0; i < records_.size(); ++i) {
      highestStarts_[i] = highest = std::max(highest, positions_[i]);
    }
  }
  uint32_t low = 0;
  uint32_t high = Count();
  while (low < high) {
    const uint32_t middle = low + (high - low) / 2;
    if (HighestStart(middle) < position) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

template <class T>
uint32_t KDWPlcfNormal<T>::FirstEndingFrom(uint32_t position, uint32_t from) const {
  uint32_t low = from;
  uint32_t high = Count();
  // The next entry is nearly always at hand: paragraphs come in order.
  for (unsigned near = 0; near < 4 && low < high; ++near, ++low) {
    if (positions_[low + 1] >= position) return low;
  }
  while (low < high) {
    const uint32_t middle = low + (high - low) / 2;
    if (positions_[middle + 1] < position) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

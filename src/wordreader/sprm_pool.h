#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "base/chain_allocator.h"

/// Keeps property lists when the pages that they were read from go. Most paragraphs and runs of a document
/// share a few lists, so that a list which was met lately is kept once; the copies live in the allocator.
class KSprmPool {
 public:
  /// Keeps no more than `capacity` bytes in all.
  KSprmPool(ChainAllocator& allocator, uint64_t capacity);

  /// Replaces `*sprms` by a list of equal bytes that stays. False if there is no room left.
  bool Keep(ByteView* sprms);

 private:
  struct Slot {
    const uint8_t* data = nullptr;
    uint32_t hash = 0;
    uint32_t size = 0;
  };
  static constexpr uint32_t kSlots = 4096;
  static constexpr uint32_t kWays = 4;  ///< slots in which a list may stand

  /// Copies the list to a slot, whose own gives way. False if there is no room left.
  bool Enter(Slot& slot, uint32_t hash, ByteView* sprms);

  ChainAllocator& allocator_;
  uint64_t capacity_;  ///< bytes left
  ByteView last_;      ///< what was kept or found last
  std::vector<Slot> slots_;
};

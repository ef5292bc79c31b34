#include "wordreader/sprm_pool.h"

#include <cstring>
#include <functional>
#include <string_view>

KSprmPool::KSprmPool(ChainAllocator& allocator, uint64_t capacity)
    : allocator_(allocator), capacity_(capacity), slots_(kSlots) {}

bool KSprmPool::Keep(ByteView* sprms) {
  if (sprms->empty()) return true;
  const std::string_view bytes(reinterpret_cast<const char*>(sprms->data()), sprms->size());
  const auto hash = static_cast<uint32_t>(std::hash<std::string_view>()(bytes));
  Slot& slot = SlotFor(*sprms, hash);
  if (!slot.Holds(*sprms, hash)) {
    if (sprms->size() > capacity_) return false;
    capacity_ -= sprms->size();
    void* copy = allocator_.Alloc(sprms->size());
    std::memcpy(copy, sprms->data(), sprms->size());
    slot = {static_cast<const uint8_t*>(copy), hash, static_cast<uint32_t>(sprms->size())};
  }
  *sprms = ByteView(slot.data, slot.size);
  return true;
}

KSprmPool::Slot& KSprmPool::SlotFor(ByteView sprms, uint32_t hash) {
  for (uint32_t way = 0; way < kWays; ++way) {
    Slot& slot = slots_[(hash + way) % kSlots];
    if (!slot.data || slot.Holds(sprms, hash)) return slot;
  }
  return slots_[hash % kSlots];
}

bool KSprmPool::Slot::Holds(ByteView sprms, uint32_t sprmsHash) const {
  return hash == sprmsHash && size == sprms.size() && data && std::memcmp(data, sprms.data(), size) == 0;
}

#include "wordreader/sprm_pool.h"

#include <cstring>

namespace {

/// Eight bytes at a time, the last ones together with some before them. It need not be better than it is: a
/// list looks at a few slots only, wherever it falls.
uint32_t hashOf(ByteView bytes) {
  constexpr uint64_t kOdd = 0x9E3779B97F4A7C15;
  const auto mix = [](uint64_t hash, uint64_t more) {
    hash = (hash ^ more) * kOdd;
    return hash ^ hash >> 32;
  };
  const auto load = [](const uint8_t* from) {
    uint64_t word;
    std::memcpy(&word, from, sizeof word);
    return word;
  };
  uint64_t hash = bytes.size();
  if (bytes.size() < 8) return static_cast<uint32_t>(mix(hash, bytes.copyOf<uint64_t>(0)));
  const uint8_t* const last = bytes.data() + bytes.size() - 8;
  for (const uint8_t* from = bytes.data(); from < last; from += 8) hash = mix(hash, load(from));
  return static_cast<uint32_t>(mix(hash, load(last)));
}

bool isEqual(ByteView a, ByteView b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size()) == 0;
}

}  // namespace

KSprmPool::KSprmPool(ChainAllocator& allocator, uint64_t capacity)
    : allocator_(allocator), capacity_(capacity), slots_(kSlots) {}

bool KSprmPool::Keep(ByteView* sprms) {
  if (sprms->empty()) return true;
  // Neighbours often have the same.
  if (isEqual(*sprms, last_)) {
    *sprms = last_;
    return true;
  }
  const uint32_t hash = hashOf(*sprms);
  Slot* free = nullptr;
  for (uint32_t way = 0; way < kWays && !free; ++way) {
    Slot& slot = slots_[(hash + way) % kSlots];
    if (!slot.data) free = &slot;
    if (slot.hash == hash && isEqual(*sprms, ByteView(slot.data, slot.size))) {
      *sprms = last_ = ByteView(slot.data, slot.size);
      return true;
    }
  }
  return Enter(free ? *free : slots_[hash % kSlots], hash, sprms);
}

bool KSprmPool::Enter(Slot& slot, uint32_t hash, ByteView* sprms) {
  if (sprms->size() > capacity_) return false;
  capacity_ -= sprms->size();
  void* copy = allocator_.Alloc(sprms->size());
  std::memcpy(copy, sprms->data(), sprms->size());
  slot = {static_cast<const uint8_t*>(copy), hash, static_cast<uint32_t>(sprms->size())};
  *sprms = last_ = ByteView(slot.data, slot.size);
  return true;
}

#include "limits/memory_count.h"

#include <malloc.h>

#include <algorithm>

namespace {

int64_t heldBytes = 0;
int64_t mostBytes = 0;
int64_t takenBlocks = 0;

}  // namespace

extern "C" {

void* __real_malloc(size_t size);
void __real_free(void* memory);

void* __wrap_malloc(size_t size) {
  void* memory = __real_malloc(size);
  if (!memory) return nullptr;
  heldBytes += static_cast<int64_t>(malloc_usable_size(memory));
  mostBytes = std::max(mostBytes, heldBytes);
  ++takenBlocks;
  return memory;
}

void __wrap_free(void* memory) {
  if (memory) heldBytes -= static_cast<int64_t>(malloc_usable_size(memory));
  __real_free(memory);
}

}  // extern "C"

MemoryCount::MemoryCount() : startBytes_(heldBytes), startBlocks_(takenBlocks) {
  mostBytes = heldBytes;
}

int64_t MemoryCount::peakBytes() const {
  return mostBytes - startBytes_;
}

int64_t MemoryCount::blocks() const {
  return takenBlocks - startBlocks_;
}

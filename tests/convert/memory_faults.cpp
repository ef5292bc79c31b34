#include "convert/memory_faults.h"

#include <zlib.h>

#include <cerrno>
#include <cstdlib>

namespace {

struct State {
  bool armed;
  int paused;
  int64_t requests, failing;
  MemoryFaults::Way way;
};
thread_local State state;

bool fails() {
  if (!state.armed || state.paused > 0) return false;
  ++state.requests;
  const bool isPast = state.failing > 0 && state.requests >= state.failing;
  return isPast && (state.way == MemoryFaults::Way::kFromThenOn || state.requests == state.failing);
}

}  // namespace

extern "C" {

void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* memory, size_t size);
int __real_inflateInit_(z_streamp stream, const char* version, int size);

void* __wrap_malloc(size_t size) {
  if (!fails()) return __real_malloc(size);
  errno = ENOMEM;
  return nullptr;
}

void* __wrap_calloc(size_t count, size_t size) {
  if (!fails()) return __real_calloc(count, size);
  errno = ENOMEM;
  return nullptr;
}

void* __wrap_realloc(void* memory, size_t size) {
  if (!fails()) return __real_realloc(memory, size);
  errno = ENOMEM;
  return nullptr;
}

int __wrap_inflateInit_(z_streamp stream, const char* version, int size) {
  stream->zalloc = [](voidpf, uInt items, uInt each) { return __wrap_malloc(size_t{items} * each); };
  stream->zfree = [](voidpf, voidpf memory) { std::free(memory); };
  return __real_inflateInit_(stream, version, size);
}

}  // extern "C"

MemoryFaults::MemoryFaults(int64_t failing, Way way) {
  state = {true, 0, 0, failing, way};
}

MemoryFaults::~MemoryFaults() {
  state.armed = false;
}

int64_t MemoryFaults::requests() const {
  return state.requests;
}

bool MemoryFaults::haveFailed() const {
  return state.failing > 0 && state.requests >= state.failing;
}

MemoryFaults::Pause::Pause() {
  ++state.paused;
}

MemoryFaults::Pause::~Pause() {
  --state.paused;
}

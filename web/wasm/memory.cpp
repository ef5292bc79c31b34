// What the C library does with blocks of memory, 16 bytes at a time: its own is small, and goes by ones.
// Built without knowledge of what functions of these names do, so that none is made a call of itself.

#include <wasm_simd128.h>

#include <cstddef>
#include <cstdint>

namespace {

constexpr size_t kBlock = sizeof(v128_t);
constexpr uint32_t kAll = 0xFFFF;  // a bit for each byte of a block

template <class Number>
struct [[gnu::packed, gnu::may_alias]] Anywhere {
  Number number;
};

template <class Number>
Number load(const uint8_t* at) {
  return reinterpret_cast<const Anywhere<Number>*>(at)->number;
}

/// Copies `size` bytes, of which a number has half or more, as its two ends.
template <class Number>
void copyEnds(uint8_t* out, const uint8_t* from, size_t size) {
  const size_t last = size - sizeof(Number);
  const Number front = load<Number>(from), back = load<Number>(from + last);
  reinterpret_cast<Anywhere<Number>*>(out)->number = front;
  reinterpret_cast<Anywhere<Number>*>(out + last)->number = back;
}

void copyShort(uint8_t* out, const uint8_t* from, size_t size) {
  if (size >= 8) return copyEnds<uint64_t>(out, from, size);
  if (size >= 4) return copyEnds<uint32_t>(out, from, size);
  if (size >= 2) return copyEnds<uint16_t>(out, from, size);
  if (size == 1) *out = *from;
}

uint32_t equalIn(v128_t block, v128_t other) {
  return wasm_i8x16_bitmask(wasm_i8x16_eq(block, other));
}

}  // namespace

extern "C" {

void* memcpy(void* target, const void* source, size_t size) {
  auto* out = static_cast<uint8_t*>(target);
  const auto* from = static_cast<const uint8_t*>(source);
  if (size < kBlock) {
    copyShort(out, from, size);
    return target;
  }
  const v128_t last = wasm_v128_load(from + size - kBlock);
  uint8_t* const end = out + size - kBlock;
  for (; static_cast<size_t>(end - out) > 4 * kBlock; out += 4 * kBlock, from += 4 * kBlock) {
    for (size_t i = 0; i < 4; ++i) wasm_v128_store(out + i * kBlock, wasm_v128_load(from + i * kBlock));
  }
  for (; out < end; out += kBlock, from += kBlock) wasm_v128_store(out, wasm_v128_load(from));
  wasm_v128_store(end, last);
  return target;
}

void* memset(void* target, int byte, size_t size) {
  auto* out = static_cast<uint8_t*>(target);
  if (size < kBlock) {
    for (size_t i = 0; i < size; ++i) out[i] = static_cast<uint8_t>(byte);
    return target;
  }
  const v128_t block = wasm_i8x16_splat(static_cast<int8_t>(byte));
  uint8_t* const end = out + size - kBlock;
  for (; out < end; out += kBlock) wasm_v128_store(out, block);
  wasm_v128_store(end, block);
  return target;
}

int memcmp(const void* left, const void* right, size_t size) {
  const auto* one = static_cast<const uint8_t*>(left);
  const auto* other = static_cast<const uint8_t*>(right);
  size_t at = 0;
  for (; size - at >= kBlock; at += kBlock) {
    const uint32_t equal = equalIn(wasm_v128_load(one + at), wasm_v128_load(other + at));
    if (equal == kAll) continue;
    at += static_cast<size_t>(__builtin_ctz(~equal));
    return one[at] - other[at];
  }
  if (size - at >= 8 && load<uint64_t>(one + at) == load<uint64_t>(other + at)) at += 8;
  for (; at < size; ++at) {
    if (one[at] != other[at]) return one[at] - other[at];
  }
  return 0;
}

void* memchr(const void* bytes, int byte, size_t size) {
  const auto* at = static_cast<const uint8_t*>(bytes);
  const uint8_t* const end = at + size;
  const v128_t wanted = wasm_i8x16_splat(static_cast<int8_t>(byte));
  for (; static_cast<size_t>(end - at) >= kBlock; at += kBlock) {
    const uint32_t found = equalIn(wasm_v128_load(at), wanted);
    if (found != 0) return const_cast<uint8_t*>(at + __builtin_ctz(found));
  }
  for (; at < end; ++at) {
    if (*at == static_cast<uint8_t>(byte)) return const_cast<uint8_t*>(at);
  }
  return nullptr;
}

/// Memory ends with a whole block: what lies around a text within its blocks can be read.
size_t strlen(const char* text) {
  const auto place = reinterpret_cast<uintptr_t>(text);
  const size_t before = place % kBlock;
  const auto* block = reinterpret_cast<const uint8_t*>(place - before);
  const v128_t zero = wasm_i8x16_const_splat(0);
  uint32_t found = equalIn(wasm_v128_load(block), zero) >> before << before;
  while (found == 0) {
    block += kBlock;
    found = equalIn(wasm_v128_load(block), zero);
  }
  return reinterpret_cast<uintptr_t>(block) + static_cast<size_t>(__builtin_ctz(found)) - place;
}

}  // extern "C"

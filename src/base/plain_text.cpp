#include "base/plain_text.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__ARM_NEON)
#include <arm_neon.h>
#endif

#include <bit>

namespace {

template <size_t count>
struct Units {};

#if defined(__SSE2__)

/// A place for each of 16 bytes, counted from the lowest bit.
unsigned bitsOf(__m128i mask) {
  return static_cast<unsigned>(_mm_movemask_epi8(mask));
}

/// Index of the first byte that is not plain, 16 if all are. What is no ASCII has come out of the narrowing
/// as 0 or as 255, which as a signed number is below the space like the controls.
[[gnu::always_inline]] inline size_t firstNotPlain(__m128i bytes, bool behindSpace) {
  const __m128i angles = _mm_cmpeq_epi8(_mm_or_si128(bytes, _mm_set1_epi8('<' ^ '>')), _mm_set1_epi8('>'));
  const __m128i ampersands = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('&'));
  // The highest bit tells; the difference stays in range.
  const __m128i others = _mm_subs_epi8(bytes, _mm_set1_epi8(' '));
  const unsigned stops = bitsOf(_mm_or_si128(_mm_or_si128(angles, ampersands), others));
  const unsigned spaces = bitsOf(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(' ')));
  constexpr unsigned kEnd = 1u << 16;
  return static_cast<size_t>(std::countr_zero(stops | (spaces & (spaces << 1 | behindSpace)) | kEnd));
}

__m128i load(const uint16_t* text) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
}

size_t copyBlock(Units<16>, const uint16_t* text, uint8_t previous, char* out) {
  const __m128i bytes = _mm_packus_epi16(load(text), load(text + 8));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
  return firstNotPlain(bytes, previous == ' ');
}

/// The upper half of what is looked at repeats the lower one.
size_t copyBlock(Units<8>, const uint16_t* text, uint8_t previous, char* out) {
  const __m128i units = load(text);
  const __m128i bytes = _mm_packus_epi16(units, units);
  _mm_storel_epi64(reinterpret_cast<__m128i*>(out), bytes);
  const size_t first = firstNotPlain(bytes, previous == ' ');
  return first < 8 ? first : 8;
}

#elif defined(__ARM_NEON)

/// Index of the first byte that is not plain, 16 if all are. What is no ASCII is 128 or more also when it was
/// narrowed, which as a signed number is below the space like the controls.
[[gnu::always_inline]] inline size_t firstNotPlain(uint8x16_t bytes, bool behindSpace) {
  const uint8x16_t space = vdupq_n_u8(' ');
  const uint8x16_t angles = vceqq_u8(vorrq_u8(bytes, vdupq_n_u8('<' ^ '>')), vdupq_n_u8('>'));
  const uint8x16_t ampersands = vceqq_u8(bytes, vdupq_n_u8('&'));
  const uint8x16_t others = vcltq_s8(vreinterpretq_s8_u8(bytes), vreinterpretq_s8_u8(space));
  const uint8x16_t spaces = vceqq_u8(bytes, space);
  const uint8x16_t before = vextq_u8(vdupq_n_u8(behindSpace ? 0xFF : 0), spaces, 15);
  const uint8x16_t stops = vorrq_u8(vorrq_u8(angles, ampersands), vorrq_u8(others, vandq_u8(spaces, before)));
  // Four bits for each byte.
  const uint8x8_t nibbles = vshrn_n_u16(vreinterpretq_u16_u8(stops), 4);
  return static_cast<size_t>(std::countr_zero(vget_lane_u64(vreinterpret_u64_u8(nibbles), 0))) / 4;
}

size_t copyBlock(Units<16>, const uint16_t* text, uint8_t previous, char* out) {
  const uint8x16_t bytes = vcombine_u8(vqmovn_u16(vld1q_u16(text)), vqmovn_u16(vld1q_u16(text + 8)));
  vst1q_u8(reinterpret_cast<uint8_t*>(out), bytes);
  return firstNotPlain(bytes, previous == ' ');
}

/// The upper half of what is looked at repeats the lower one.
size_t copyBlock(Units<8>, const uint16_t* text, uint8_t previous, char* out) {
  const uint8x8_t bytes = vqmovn_u16(vld1q_u16(text));
  vst1_u8(reinterpret_cast<uint8_t*>(out), bytes);
  const size_t first = firstNotPlain(vcombine_u8(bytes, bytes), previous == ' ');
  return first < 8 ? first : 8;
}

#endif

#if defined(__SSE2__) || defined(__ARM_NEON)

/// Copies a text of `block` characters or more.
template <size_t block>
size_t copyBlocks(const uint16_t* text, size_t length, uint8_t previous, char* out) {
  for (size_t done = 0;;) {
    const size_t count = copyBlock(Units<block>(), text + done, previous, out + done);
    done += count;
    if (count < block || done == length) return done;
    // The last block takes some of what was copied once more.
    if (length - done < block) done = length - block;
    previous = static_cast<uint8_t>(out[done - 1]);
  }
}

#endif

}  // namespace

size_t copyPlainTextByOnes(const uint16_t* text, size_t length, uint8_t previous, char* out) {
  size_t done = 0;
  for (; done < length && isPlainText(text[done], previous); ++done) {
    previous = static_cast<uint8_t>(text[done]);
    out[done] = static_cast<char>(previous);
  }
  return done;
}

#if defined(__SSE2__) || defined(__ARM_NEON)

size_t copyPlainText(const uint16_t* text, size_t length, uint8_t previous, char* out) {
  if (length < 8) return copyPlainTextByOnes(text, length, previous, out);
  return length < 16 ? copyBlocks<8>(text, length, previous, out)
                     : copyBlocks<16>(text, length, previous, out);
}

#else

size_t copyPlainText(const uint16_t* text, size_t length, uint8_t previous, char* out) {
  return copyPlainTextByOnes(text, length, previous, out);
}

#endif

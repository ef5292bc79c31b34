#include "base/code_page_1252.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__ARM_NEON)
#include <arm_neon.h>
#endif

#include <array>
#include <cstdint>

namespace {

// The codes 0x80 to 0x9F; all others are their own character.
constexpr std::array<uint16_t, 32> kFrom80 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98
};

constexpr std::array<uint16_t, 256> kCharacters = [] {
  std::array<uint16_t, 256> table = {};
  for (unsigned code = 0; code < table.size(); ++code) table[code] = static_cast<uint16_t>(code);
  for (unsigned i = 0; i < kFrom80.size(); ++i) table[0x80 + i] = kFrom80[i];
  return table;
}();

#if defined(__SSE2__)

/// Widens a block of bytes; false if one of them is no character of its own.
bool widenBlock(const unsigned char* text, unsigned short* out) {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
  // 0x80 to 0x9F are the lowest signed numbers.
  const __m128i others = _mm_cmpgt_epi8(_mm_set1_epi8(static_cast<char>(0xA0)), bytes);
  if (_mm_movemask_epi8(others) != 0) return false;
  const __m128i zero = _mm_setzero_si128();
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(bytes, zero));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8), _mm_unpackhi_epi8(bytes, zero));
  return true;
}

#elif defined(__ARM_NEON)

/// Widens a block of bytes; false if one of them is no character of its own.
bool widenBlock(const unsigned char* text, unsigned short* out) {
  const uint8x16_t bytes = vld1q_u8(text);
  // 0x80 to 0x9F are the lowest signed numbers.
  const uint8x16_t others = vcltq_s8(vreinterpretq_s8_u8(bytes), vdupq_n_s8(static_cast<int8_t>(0xA0)));
  const uint8x8_t nibbles = vshrn_n_u16(vreinterpretq_u16_u8(others), 4);
  if (vget_lane_u64(vreinterpret_u64_u8(nibbles), 0) != 0) return false;
  vst1q_u16(out, vmovl_u8(vget_low_u8(bytes)));
  vst1q_u16(out + 8, vmovl_u8(vget_high_u8(bytes)));
  return true;
}

#else

bool widenBlock(const unsigned char*, unsigned short*) {
  return false;
}

#endif

}  // namespace

void MsoCP1252ToWcs(const unsigned char* text, unsigned int count, unsigned short* out) {
  constexpr unsigned int kBlock = 16;
  unsigned int i = 0;
  for (; count - i >= kBlock; i += kBlock) {
    if (!widenBlock(text + i, out + i)) MsoCP1252ToWcsByOnes(text + i, kBlock, out + i);
  }
  MsoCP1252ToWcsByOnes(text + i, count - i, out + i);
}

void MsoCP1252ToWcsByOnes(const unsigned char* text, unsigned int count, unsigned short* out) {
  for (unsigned int i = 0; i < count; ++i) out[i] = kCharacters[text[i]];
}

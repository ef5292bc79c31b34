#include "formats/plain_copy.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__ARM_NEON)
#include <arm_neon.h>
#endif

#include <bit>
#include <string_view>

namespace pagerex {
namespace {

/// ASCII characters but for controls and these.
struct Plain {
  bool is[128] = {};
  constexpr explicit Plain(std::string_view others) {
    for (unsigned c = 0x20; c < 0x80; ++c)
      is[c] = others.find(static_cast<char>(c)) == std::string_view::npos;
  }
};

#if defined(__SSE2__)

__m128i load(const char16_t* text) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
}

__m128i equal(__m128i bytes, char c) {
  return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c));
}

__m128i with(__m128i bytes, char bits) {
  return _mm_or_si128(bytes, _mm_set1_epi8(bits));
}

/// What is no ASCII has come out of the narrowing as 0 or as 128 or more, which as a signed number is below
/// the space like the controls.
__m128i notPlainIn(__m128i bytes) {
  return _mm_cmplt_epi8(bytes, _mm_set1_epi8(' '));
}

#endif

struct Markdown {
  static constexpr Plain kPlain{"\\`*_~[]<&|:."};

  /// A full stop only ends "www", and is looked at where it may.
  static bool IsPlain(const char16_t* text, size_t i) {
    const char16_t unit = text[i];
    return unit < 0x80 && (kPlain.is[unit] || (unit == '.' && i > 0 && text[i - 1] != 'w'));
  }
#if defined(__SSE2__)
  static __m128i OthersIn(__m128i bytes) {
    const __m128i firstByte = _mm_cvtsi32_si128(0xFF);
    const __m128i behindW = _mm_or_si128(_mm_slli_si128(equal(bytes, 'w'), 1), firstByte);
    const __m128i stops = _mm_and_si128(equal(bytes, '.'), behindW);
    // The brackets, "\", "_", "|" and "~", and with them "^", "{" and "}".
    const __m128i high = _mm_cmpgt_epi8(with(bytes, 0x20), _mm_set1_epi8('z'));
    const __m128i starsAndColons = equal(with(bytes, 0x10), ':');
    const __m128i tags = _mm_or_si128(equal(bytes, '<'), equal(bytes, '&'));
    const __m128i others = _mm_or_si128(_mm_or_si128(high, starsAndColons),
                                        _mm_or_si128(tags, _mm_or_si128(stops, equal(bytes, '`'))));
    return _mm_or_si128(others, notPlainIn(bytes));
  }
#endif
};

struct Html {
  static constexpr Plain kPlain{"&<>\""};

  static bool IsPlain(const char16_t* text, size_t i) { return text[i] < 0x80 && kPlain.is[text[i]]; }
#if defined(__SSE2__)
  static __m128i OthersIn(__m128i bytes) {
    // In pairs that differ in one bit.
    const __m128i others = _mm_or_si128(equal(with(bytes, 2), '>'), equal(with(bytes, 4), '&'));
    return _mm_or_si128(others, notPlainIn(bytes));
  }
#endif
};

struct Page {
  static constexpr Plain kPlain{"&<\"\x7F"};

  static bool IsPlain(const char16_t* text, size_t i) { return text[i] < 0x80 && kPlain.is[text[i]]; }
#if defined(__SSE2__)
  static __m128i OthersIn(__m128i bytes) {
    const __m128i others = _mm_or_si128(equal(bytes, '<'), equal(with(bytes, 4), '&'));
    return _mm_or_si128(_mm_or_si128(others, equal(bytes, 0x7F)), notPlainIn(bytes));
  }
#elif defined(__ARM_NEON)
  /// What is no ASCII is 128 or more also when it was narrowed, which as a signed number is below the space.
  static uint8x8_t OthersIn(uint8x8_t bytes) {
    const uint8x8_t tags = vceq_u8(bytes, vdup_n_u8('<'));
    const uint8x8_t others = vceq_u8(vorr_u8(bytes, vdup_n_u8(4)), vdup_n_u8('&'));
    const uint8x8_t controls = vclt_s8(vreinterpret_s8_u8(bytes), vdup_n_s8(' '));
    return vorr_u8(vorr_u8(tags, others), vorr_u8(controls, vceq_u8(bytes, vdup_n_u8(0x7F))));
  }
#endif
};

template <class Rules>
size_t copyByOnes(const char16_t* text, size_t n, char* out) {
  size_t done = 0;
  for (; done < n && Rules::IsPlain(text, done); ++done) out[done] = static_cast<char>(text[done]);
  return done;
}

#if defined(__SSE2__)

template <class Rules>
unsigned maskOf(__m128i bytes) {
  return static_cast<unsigned>(_mm_movemask_epi8(Rules::OthersIn(bytes)));
}

/// Copies 8 characters; a bit for each that may not be plain.
template <class Rules>
unsigned copy8(const char16_t* text, char* out) {
  const __m128i units = load(text);
  const __m128i bytes = _mm_packus_epi16(units, units);
  _mm_storel_epi64(reinterpret_cast<__m128i*>(out), bytes);
  return maskOf<Rules>(bytes) & 0xFF;
}

size_t firstBit(unsigned mask) {
  return static_cast<size_t>(std::countr_zero(mask));
}

/// The last block takes some of what was copied once more.
template <class Rules>
size_t copyPlain(const char16_t* text, size_t n, char* out) {
  if (n < 8) return copyByOnes<Rules>(text, n, out);
  size_t done = 0;
  for (; n - done >= 16; done += 16) {
    const __m128i bytes = _mm_packus_epi16(load(text + done), load(text + done + 8));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + done), bytes);
    const unsigned mask = maskOf<Rules>(bytes);
    if (mask != 0) return done + firstBit(mask);
  }
  if (n - done >= 8) {
    const unsigned mask = copy8<Rules>(text + done, out + done);
    if (mask != 0) return done + firstBit(mask);
    done += 8;
  }
  const size_t left = n - done;
  return done + firstBit(copy8<Rules>(text + n - 8, out + n - 8) >> (8 - left) | 1u << left);
}

#else

template <class Rules>
size_t copyPlain(const char16_t* text, size_t n, char* out) {
  return copyByOnes<Rules>(text, n, out);
}

#if defined(__ARM_NEON)

/// Copies 8 characters; the count of plain ones in front.
template <class Rules>
size_t copy8(const char16_t* text, char* out) {
  const uint8x8_t bytes = vqmovn_u16(vld1q_u16(reinterpret_cast<const uint16_t*>(text)));
  vst1_u8(reinterpret_cast<uint8_t*>(out), bytes);
  const uint64_t others = vget_lane_u64(vreinterpret_u64_u8(Rules::OthersIn(bytes)), 0);
  return static_cast<size_t>(std::countr_zero(others)) / 8;
}

/// The last block takes some of what was copied once more.
template <>
size_t copyPlain<Page>(const char16_t* text, size_t n, char* out) {
  if (n < 8) return copyByOnes<Page>(text, n, out);
  for (size_t done = 0;;) {
    const size_t count = copy8<Page>(text + done, out + done);
    done += count;
    if (count < 8 || done == n) return done;
    if (n - done < 8) done = n - 8;
  }
}

#endif

#endif

}  // namespace

size_t copyPlainMarkdown(const char16_t* text, size_t n, char* out) {
  return copyPlain<Markdown>(text, n, out);
}

size_t copyPlainHtml(const char16_t* text, size_t n, char* out) {
  return copyPlain<Html>(text, n, out);
}

size_t copyPlainPage(const char16_t* text, size_t n, char* out) {
  return copyPlain<Page>(text, n, out);
}

}  // namespace pagerex

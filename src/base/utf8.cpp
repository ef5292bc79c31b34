#include "base/utf8.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__ARM_NEON)
#include <arm_neon.h>
#endif

#include <bit>

#include "base/encoding.h"

namespace pagerex {
namespace {

bool isPlain(char16_t unit) {
  return unit >= 0x20 && unit < 0x80;
}

bool standsInPlainText(char16_t unit) {
  return unit >= 0x20 && unit < 0xD800;
}

bool standsInSimpleText(char16_t unit) {
  return unit < 0x0590 || (unit >= 0x2000 && unit < 0x2E80);
}

template <bool (*stands)(char16_t)>
bool allStandByOnes(const char16_t* text, size_t n) {
  for (size_t i = 0; i < n; ++i) {
    if (!stands(text[i])) return false;
  }
  return true;
}

bool isLeftOut(char32_t code, Utf8Filter filter) {
  if (filter == Utf8Filter::kNone) return false;
  return isNoText(code) || (code == 0xAD && filter == Utf8Filter::kControlsAndSoftHyphens);
}

/// Copies plain characters as bytes up to the first other one, and returns their count.
size_t copyByOnes(const char16_t* text, size_t n, char* out) {
  size_t done = 0;
  for (; done < n && isPlain(text[done]); ++done) out[done] = static_cast<char>(text[done]);
  return done;
}

#if defined(__SSE2__)

__m128i load(const char16_t* text) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
}

/// What is no ASCII has come out of the narrowing as 0 or as 128 or more, which as a signed number is below
/// the space like the controls.
unsigned othersIn(__m128i bytes) {
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmplt_epi8(bytes, _mm_set1_epi8(' '))));
}

/// Copies 16 characters; the count of plain ones in front.
size_t copy16(const char16_t* text, char* out) {
  const __m128i bytes = _mm_packus_epi16(load(text), load(text + 8));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
  return static_cast<size_t>(std::countr_zero(othersIn(bytes) | 1u << 16));
}

size_t copy8(const char16_t* text, char* out) {
  const __m128i units = load(text);
  const __m128i bytes = _mm_packus_epi16(units, units);
  _mm_storel_epi64(reinterpret_cast<__m128i*>(out), bytes);
  return static_cast<size_t>(std::countr_zero(othersIn(bytes) | 1u << 8));
}

/// Ones for what does not stand in plain text. No unsigned comparison of 16 bits: with the highest bit turned
/// a signed one tells the same.
__m128i notPlainTextIn(__m128i units) {
  constexpr int kFirst = 0x20, kLast = 0xD7FF, kHighest = 0x8000;
  const __m128i turned = _mm_xor_si128(units, _mm_set1_epi16(static_cast<short>(kHighest)));
  return _mm_or_si128(_mm_cmplt_epi16(turned, _mm_set1_epi16(static_cast<short>(kFirst ^ kHighest))),
                      _mm_cmpgt_epi16(turned, _mm_set1_epi16(static_cast<short>(kLast ^ kHighest))));
}

/// The same for simple text: from 0x590 on, but for what lies between 0x2000 and 0x2E80.
__m128i notSimpleTextIn(__m128i units) {
  constexpr int kLast = 0x058F, kBefore = 0x1FFF, kBehind = 0x2E80, kHighest = 0x8000;
  const __m128i turned = _mm_xor_si128(units, _mm_set1_epi16(static_cast<short>(kHighest)));
  const __m128i signs =
      _mm_and_si128(_mm_cmpgt_epi16(turned, _mm_set1_epi16(static_cast<short>(kBefore ^ kHighest))),
                    _mm_cmplt_epi16(turned, _mm_set1_epi16(static_cast<short>(kBehind ^ kHighest))));
  return _mm_andnot_si128(signs,
                          _mm_cmpgt_epi16(turned, _mm_set1_epi16(static_cast<short>(kLast ^ kHighest))));
}

template <bool (*stands)(char16_t), __m128i (*othersAmong)(__m128i)>
bool allStand(const char16_t* text, size_t n) {
  constexpr size_t kUnits = 8;
  if (n < kUnits) return allStandByOnes<stands>(text, n);
  // The last block looks at some of it once more.
  __m128i others = othersAmong(load(text + n - kUnits));
  size_t i = 0;
  for (; n - i > 4 * kUnits; i += 4 * kUnits) {
    const char16_t* const block = text + i;
    const __m128i first = _mm_or_si128(othersAmong(load(block)), othersAmong(load(block + kUnits)));
    const __m128i last =
        _mm_or_si128(othersAmong(load(block + 2 * kUnits)), othersAmong(load(block + 3 * kUnits)));
    others = _mm_or_si128(others, _mm_or_si128(first, last));
  }
  for (; n - i > kUnits; i += kUnits) others = _mm_or_si128(others, othersAmong(load(text + i)));
  return _mm_movemask_epi8(others) == 0;
}

#elif defined(__ARM_NEON)

/// What is no ASCII is 128 or more also when it was narrowed.
size_t plainIn(uint8x8_t bytes) {
  const uint8x8_t others = vclt_s8(vreinterpret_s8_u8(bytes), vdup_n_s8(' '));
  return static_cast<size_t>(std::countr_zero(vget_lane_u64(vreinterpret_u64_u8(others), 0))) / 8;
}

size_t copy8(const char16_t* text, char* out) {
  const uint8x8_t bytes = vqmovn_u16(vld1q_u16(reinterpret_cast<const uint16_t*>(text)));
  vst1_u8(reinterpret_cast<uint8_t*>(out), bytes);
  return plainIn(bytes);
}

size_t copy16(const char16_t* text, char* out) {
  const size_t first = copy8(text, out);
  return first < 8 ? first : 8 + copy8(text + 8, out + 8);
}

#endif

#if defined(__SSE2__) || defined(__ARM_NEON)

/// The last block takes some of what was copied once more.
size_t copyPlain(const char16_t* text, size_t n, char* out) {
  if (n < 8) return copyByOnes(text, n, out);
  size_t done = 0;
  for (; n - done >= 16; done += 16) {
    const size_t count = copy16(text + done, out + done);
    if (count < 16) return done + count;
  }
  for (; done < n; done += 8) {
    if (n - done < 8) done = n - 8;
    const size_t count = copy8(text + done, out + done);
    if (count < 8) return done + count;
  }
  return n;
}

#else

size_t copyPlain(const char16_t* text, size_t n, char* out) {
  return copyByOnes(text, n, out);
}

#endif

template <size_t (*copy)(const char16_t*, size_t, char*)>
size_t convert(const char16_t* text, size_t n, char* out, Utf8Filter filter) {
  char* const begin = out;
  while (n > 0) {
    const size_t plain = copy(text, n, out);
    text += plain;
    out += plain;
    n -= plain;
    while (n > 0 && !isPlain(*text)) {
      const CharacterAt next = characterAt(text, n);
      if (!isLeftOut(next.code, filter)) out += encodeUtf8(next.code, out);
      text += next.units;
      n -= next.units;
    }
  }
  return static_cast<size_t>(out - begin);
}

}  // namespace

bool isPlainText(const char16_t* text, size_t n) {
#if defined(__SSE2__)
  return allStand<standsInPlainText, notPlainTextIn>(text, n);
#else
  return allStandByOnes<standsInPlainText>(text, n);
#endif
}

bool isSimpleText(const char16_t* text, size_t n) {
#if defined(__SSE2__)
  return allStand<standsInSimpleText, notSimpleTextIn>(text, n);
#else
  return allStandByOnes<standsInSimpleText>(text, n);
#endif
}

bool isSimpleTextByOnes(const char16_t* text, size_t n) {
  return allStandByOnes<standsInSimpleText>(text, n);
}

size_t utf8FromUtf16(const char16_t* text, size_t n, char* out, Utf8Filter filter) {
  return convert<copyPlain>(text, n, out, filter);
}

size_t utf8FromUtf16ByOnes(const char16_t* text, size_t n, char* out, Utf8Filter filter) {
  return convert<copyByOnes>(text, n, out, filter);
}

void appendUtf8(std::string& out, std::u16string_view text) {
  constexpr size_t kStretch = 256;
  char bytes[mostUtf8(kStretch)];
  while (!text.empty()) {
    size_t count = std::min(text.size(), kStretch);
    // The two halves of a character stay together.
    if (count < text.size() && (text[count - 1] & 0xFC00) == 0xD800) --count;
    out.append(bytes, utf8FromUtf16(text.data(), count, bytes, Utf8Filter::kControls));
    text.remove_prefix(count);
  }
}

}  // namespace pagerex

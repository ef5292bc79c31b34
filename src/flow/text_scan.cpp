#include "flow/text_scan.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace pagerex {
namespace {

#if defined(__SSE2__)
constexpr size_t kUnits = 8;

__m128i load(const char16_t* units) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
}

/// Passes over blocks of eight units in which `matches` finds nothing.
template <class Matches>
size_t skipBlocks(std::u16string_view text, const Matches& matches) {
  size_t at = 0;
  for (; at + kUnits <= text.size(); at += kUnits) {
    const int mask = _mm_movemask_epi8(matches(load(text.data() + at)));
    if (mask != 0) return at + static_cast<size_t>(__builtin_ctz(static_cast<unsigned>(mask))) / 2;
  }
  return at;
}
#endif

bool isParagraphMark(char16_t unit) {
  return unit == 13 || unit == 7 || unit == 12;
}

}  // namespace

size_t findParagraphMark(std::u16string_view text) {
  size_t at = 0;
#if defined(__SSE2__)
  const __m128i cell = _mm_set1_epi16(7), page = _mm_set1_epi16(12), end = _mm_set1_epi16(13);
  at = skipBlocks(text, [&](__m128i units) {
    return _mm_or_si128(_mm_cmpeq_epi16(units, end),
                        _mm_or_si128(_mm_cmpeq_epi16(units, cell), _mm_cmpeq_epi16(units, page)));
  });
#endif
  while (at < text.size() && !isParagraphMark(text[at])) ++at;
  return at;
}

size_t findControl(std::u16string_view text) {
  size_t at = 0;
#if defined(__SSE2__)
  // No unsigned comparison of 16 bits: what is left after taking 31 away, stopping at 0, is 0 for these.
  const __m128i last = _mm_set1_epi16(31), zero = _mm_setzero_si128();
  at = skipBlocks(text, [&](__m128i units) { return _mm_cmpeq_epi16(_mm_subs_epu16(units, last), zero); });
#endif
  while (at < text.size() && text[at] >= 32) ++at;
  return at;
}

}  // namespace pagerex

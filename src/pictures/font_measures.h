#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace pagerex {

/// Of a font's em square: how far it reaches above and below the base line, and a mean character's width.
struct FontMeasures {
  float ascent, descent, mean;
  bool isFixed;  ///< all characters are as wide
};

/// By its name, UTF-8; those of an ordinary font for one that is not known.
const FontMeasures& measuresOf(std::string_view family);

/// About how wide a text is, in em squares, for where no one says so.
double estimatedWidth(std::u16string_view text, const FontMeasures& measures);

}  // namespace pagerex

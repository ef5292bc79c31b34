#pragma once

#include <cstdint>
#include <string_view>

#include "flow/properties.h"

namespace pagerex {

/// A tab stop that a tab goes to.
struct FoundStop {
  int32_t position = 0;   ///< from the paragraph's margin
  uint8_t alignment = 0;  ///< 0 left, 1 centre, 2 right, 3 decimal
  uint8_t leader = 0;
  bool isDefault = false;  ///< one of those that every paragraph has
};

/// Where a tab at `position` (twips from the margin) leads: to a stop of the paragraph, to its hanging
/// indent, or to the next multiple of `distance`.
FoundStop nextStop(const ParagraphProperties& paragraph, int32_t position, int32_t distance);

/// Whether tabs of the paragraph go to stops of its own.
bool hasOwnStops(const ParagraphProperties& paragraph);

/// About how wide markup's text is at a size: browsers know better, but tell nobody.
int32_t aboutWidth(std::string_view markup, int32_t sizeHalfPoints);

}  // namespace pagerex

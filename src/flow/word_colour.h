#pragma once

#include "base/byte_view.h"
#include "flow/properties.h"

namespace pagerex {

/// A COLORREF: red in the low byte; 0xFF in the high one is automatic.
Colour colourOf(uint32_t colorRef);
/// A colour of Word 97 by its number, 0 to 16; 0 and others are automatic.
Colour colourOfIndex(uint8_t ico);

/// Borders and shadings as they lie in operands: of Word 2000 and later, and of Word 97. Bytes that are
/// missing are zero.
Border borderOf(ByteView brc);
Border border80Of(ByteView brc);
Shading shadingOf(ByteView shd);
Shading shading80Of(ByteView shd);

}  // namespace pagerex

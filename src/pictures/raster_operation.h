#pragma once

#include <cstdint>

#include "pictures/paint.h"

namespace pagerex {

/// A raster operation as blending can say it: result = what is there, maybe inverted, blended with a function
/// of what is drawn. Bitwise and, or and exclusive or are multiplication, screen and difference, which are
/// the same for black and white.
struct RasterStep {
  bool changesNothing = false;
  bool invertsFirst = false;  ///< what is there
  Blend blend = Blend::kNormal;
  uint8_t function = 0;  ///< bit i: the result where what is drawn is i
};

/// Of two functions of what is drawn, in `all` bits: the results where the bit that is there is 0, and 1.
RasterStep rasterStep(uint8_t whereZero, uint8_t whereOne, uint8_t all);

/// R2_BLACK 1 to R2_WHITE 16. The function has two bits: of the pen's or brush's 0 and 1.
RasterStep binaryStep(uint32_t rop2);

/// The third byte of a ternary operation: 0xCC for SRCCOPY. The function has four bits, of 2 P + S.
RasterStep ternaryStep(uint8_t rop3);

/// Whether it needs a source, or a pattern.
inline bool needsSource(uint8_t rop3) {
  return ((rop3 >> 2 ^ rop3) & 0x33) != 0;
}
inline bool needsPattern(uint8_t rop3) {
  return ((rop3 >> 4 ^ rop3) & 0x0F) != 0;
}

/// A colour through a function of two bits.
inline uint32_t applied(uint8_t function, uint32_t rgb) {
  const uint32_t same = function & 2 ? rgb : 0, opposite = function & 1 ? ~rgb : 0;
  return (same | opposite) & 0xFFFFFF;
}

}  // namespace pagerex

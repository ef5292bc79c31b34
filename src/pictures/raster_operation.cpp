#include "pictures/raster_operation.h"

namespace pagerex {
namespace {

/// Every `step`th bit of `bits`, from `first` on.
uint8_t everyOther(uint8_t bits, int first, int count) {
  uint8_t result = 0;
  for (int i = 0; i < count; ++i) result = static_cast<uint8_t>(result | (bits >> (first + 2 * i) & 1) << i);
  return result;
}

}  // namespace

RasterStep rasterStep(uint8_t whereZero, uint8_t whereOne, uint8_t all) {
  const auto opposite = static_cast<uint8_t>(~whereOne & all);
  if (whereZero == whereOne) return {false, false, Blend::kNormal, whereZero};
  if (whereZero == 0) return {whereOne == all, false, Blend::kMultiply, whereOne};
  if (whereOne == all) return {false, false, Blend::kScreen, whereZero};
  if (whereZero == opposite) return {false, false, Blend::kDifference, whereZero};
  if (whereOne == 0) return {false, true, Blend::kMultiply, whereZero};
  if (whereZero == all) return {false, true, Blend::kScreen, whereOne};
  // Neither of these: of what is drawn alone, as near as it goes.
  return {false, false, Blend::kNormal, static_cast<uint8_t>(whereZero | whereOne)};
}

RasterStep binaryStep(uint32_t rop2) {
  if (rop2 < 1 || rop2 > 16) rop2 = 13;
  const auto bits = static_cast<uint8_t>(rop2 - 1);
  return rasterStep(everyOther(bits, 0, 2), everyOther(bits, 1, 2), 0b11);
}

RasterStep ternaryStep(uint8_t rop3) {
  return rasterStep(everyOther(rop3, 0, 4), everyOther(rop3, 1, 4), 0b1111);
}

}  // namespace pagerex

#include "story/cell_padding.h"

namespace pagerex {
namespace {

enum PaddingSide : uint8_t { SIDE_TOP = 1, SIDE_LEFT = 2, SIDE_BOTTOM = 4, SIDE_RIGHT = 8 };

}  // namespace

Status MergedPadding(PADDING& padding, const KDWSprm& sprm) {
  const ByteView operand = sprm.GetArgument();
  const uint8_t sides = operand.u8(2);
  const uint8_t unit = operand.u8(3);
  const int32_t value = operand.i16(4);
  const auto replace = [&](PaddingSide side, uint8_t& sideUnit, int32_t& sideValue) {
    if (!(sides & side)) return;
    sideUnit = unit;
    sideValue = value;
  };
  replace(SIDE_TOP, padding.unitTop, padding.top);
  replace(SIDE_LEFT, padding.unitLeft, padding.left);
  replace(SIDE_BOTTOM, padding.unitBottom, padding.bottom);
  replace(SIDE_RIGHT, padding.unitRight, padding.right);
  return Status::kOk;
}

}  // namespace pagerex

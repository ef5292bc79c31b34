#pragma once

#include <cstdint>

#include "base/status.h"
#include "wordreader/sprm_list.h"

namespace pagerex {

/// Width unit of a table measure in the file.
enum TableUnit : uint8_t { UNIT_AUTO = 1, UNIT_PERCENT = 2, UNIT_TWIPS = 3 };

/// Cell padding. The values are in the unit of their side: twips, or percents counted in fiftieths.
struct PADDING {
  uint8_t unitTop = UNIT_TWIPS;
  uint8_t unitLeft = UNIT_TWIPS;
  uint8_t unitBottom = UNIT_TWIPS;
  uint8_t unitRight = UNIT_TWIPS;
  int32_t top = 0;
  int32_t left = 0;
  int32_t bottom = 0;
  int32_t right = 0;
};

/// Lays one sprmTCellPaddingDefault over `padding`, side by side. Always kOk.
Status MergedPadding(PADDING& padding, const KDWSprm& sprm);

}  // namespace pagerex

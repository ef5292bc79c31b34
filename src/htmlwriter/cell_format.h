#pragma once

#include <cstdint>

#include "base/status.h"
#include "base/write_archive.h"
#include "wordreader/mso_word.h"
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

/// Writes the padding as CSS: one "padding", or a property for each side when one of them is automatic.
/// kInvalidArgument without an archive.
Status WritePadding(const PADDING& padding, IWriteArchive* archive);

/// A border type of the file.
using BRCTYPE = uint8_t;

/// The CSS word of a border type. Coarser than that of paragraph borders: only 3, 26 and 27 are not "solid".
const char* GetBorderType(BRCTYPE type);

/// Writes "width style colour" of a border into `buffer`, NUL-terminated and cut to `size` bytes. kFailure
/// for a null argument, and for a border of Word 97 that says "none".
Status GetBorderStr(const mso_word::BRC* brc, char* buffer, unsigned int size);
Status GetBorderStr(const mso_word::BRCEX* brc, char* buffer, unsigned int size);

/// The background of a shading with its pattern laid over it, red in the low byte.
uint32_t GetBGColor(const mso_word::SHDEX* shd);

/// Room for a border's text.
constexpr unsigned kBorderTextSize = 48;

}  // namespace pagerex

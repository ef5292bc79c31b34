#pragma once

#include <cstdint>

#include "base/number_text.h"

namespace object {

/// An Escher colour as text: "#RRGGBB", a system colour's words, or empty for what has none. `text` may be
/// null. Returns the colour of a direct or palette colour with red in the low byte, else 0; no writer uses
/// it.
uint32_t GetColorFormat(uint32_t color, NumberText* text);

}  // namespace object

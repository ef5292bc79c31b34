#pragma once

#include <cstdint>
#include <optional>

#include "drawing_text.h"

namespace fuzz {

/// Shapes of each kind and pictures, as the drawing fuzzer takes them: all of them, or the one shape with
/// this number.
DrawingInput seedDrawing(std::optional<uint32_t> only = {});

}  // namespace fuzz

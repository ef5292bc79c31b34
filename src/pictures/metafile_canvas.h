#pragma once

#include <cstdint>

#include "pictures/svg_canvas.h"

namespace pagerex {

/// Begins the canvas for what a device shows in a box of its pixels, at a size in points. Returns the way
/// from the device to the canvas: a power of ten, so that most of its whole numbers stay short.
Matrix beginCanvas(SvgCanvas& canvas, const Box& device, double widthPoints, double heightPoints);

/// What may be written for so many bytes: a picture's parts may be far longer as text, but not without end.
inline uint64_t mostOutput(size_t bytes) {
  return (uint64_t{16} << 20) + uint64_t{64} * bytes;
}

}  // namespace pagerex

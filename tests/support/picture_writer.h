#pragma once

#include <cstdint>
#include <functional>

#include "support/bytes.h"

/// Makes picture files that any program can show.
namespace support {

struct Colour {
  uint8_t red = 0;
  uint8_t green = 0;
  uint8_t blue = 0;
  uint8_t alpha = 255;
};

/// Tells the colour of a point, counted from the left top corner.
using Paint = std::function<Colour(double x, double y)>;

/// A PNG file in true colour with alpha. Points count in pixels; several in each are asked for, which smooths
/// edges.
Bytes png(int width, int height, const Paint& colourAt);

/// A baseline JPEG file: a mosaic of tiles, 8 pixels wide and high, of one colour each. Points count in
/// tiles. Alpha is left out.
Bytes jpeg(int columns, int rows, const Paint& colourAt);

}  // namespace support

#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "support/bytes.h"

/// Reads PNG files as a browser does, and keeps what a sink is given.
namespace support {

struct Png {
  int width = 0, height = 0, depth = 0, kind = 0;  ///< kind: 0 grey, 2 colours, 3 palette, 6 with alpha
  std::vector<uint32_t> pixels;                    ///< 0xAARRGGBB from the top left corner

  uint32_t at(int x, int y) const { return pixels.at(static_cast<size_t>(y) * width + x); }
};

/// Throws std::runtime_error for what is not whole, down to checksums and the bytes behind its end.
Png readPng(const Bytes& file);

}  // namespace support

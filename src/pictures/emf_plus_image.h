#pragma once

#include <cstdint>
#include <string_view>

#include "pictures/bitmap.h"

namespace pagerex {

/// An image object of EMF+, as it lies in the file.
struct PlusImage {
  bool hasPixels = false;
  ByteView bytes;                 ///< pixels, or a file
  int32_t width = 0, height = 0;  ///< 0 for not known
  int32_t rows = 0;               ///< of pixels, that are there
  size_t stride = 0;
  uint32_t format = 0;
  ByteView palette;
  std::string_view mediaType;  ///< that Write writes; empty for none

  explicit PlusImage(ByteView object);

  bool isMetafile() const { return mediaType == "image/svg+xml"; }
  /// What it takes to write, in bytes that are read: a pixel is several.
  size_t work() const { return static_cast<size_t>(width) * static_cast<size_t>(rows) * 4; }

  /// Writes it for browsers.
  bool Write(PictureSink& sink) const;
};

}  // namespace pagerex

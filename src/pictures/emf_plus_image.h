#pragma once

#include <string_view>

#include "pictures/bitmap.h"
#include "pictures/picture_sink.h"

namespace pagerex {

/// An image object of EMF+, as it lies in the file.
struct PlusImage {
  bool hasPixels = false;
  ByteView bytes;                 ///< pixels, or a file
  int32_t width = 0, height = 0;  ///< 0 for not known
  int32_t rows = 0;               ///< that are there
  size_t stride = 0;
  uint32_t format = 0;
  ByteView palette;
  std::string_view mediaType;  ///< that Write writes; empty for none

  explicit PlusImage(ByteView object);

  bool isMetafile() const { return mediaType == "image/svg+xml"; }

  /// Writes it for browsers. Of pixels only the part from `left`, `top` on, so wide and so high.
  bool Write(int32_t left, int32_t top, int32_t partWidth, int32_t partHeight, PictureSink& sink) const;
  bool WriteAll(PictureSink& sink) const { return Write(0, 0, width, rows, sink); }
};

}  // namespace pagerex

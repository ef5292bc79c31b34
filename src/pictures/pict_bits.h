#pragma once

#include <cstdint>
#include <vector>

#include "pictures/pict_bytes.h"
#include "pictures/picture_sink.h"

namespace pagerex {

/// A bitmap or pixmap in a PICT.
class PictBits {
 public:
  /// What stands in front of the pixels; colours are 0xRRGGBB for bits 1 and 0.
  void ReadHeader(PictBytes& in, bool isDirect, uint32_t ink, uint32_t ground);
  /// Goes over the pixels. False when some are not there.
  bool FindRows(PictBytes& in, bool isPacked);

  bool isPixmap() const { return isPixmap_; }
  const Box& bounds() const { return bounds_; }
  /// Pixels of this colour are not seen; of bits those that are 0.
  void MakeClear(uint32_t rgb);
  /// Cuts a box to what is there.
  void Cut(Box& part) const;
  /// As PNG what lies in a box that is not empty, and was cut. False when the sink ended it.
  bool Write(const Box& part, PictureSink& sink) const;

 private:
  enum Packing : uint16_t { kByDefault, kNone, kWithoutPad, kWords, kParts };

  bool NextRow(PictBytes& in, uint8_t* row) const;
  void PutRow(const uint8_t* row, uint32_t first, uint32_t count, uint8_t* pixels) const;

  Box bounds_;
  bool isPixmap_ = false, isPacked_ = false;
  uint16_t packing_ = kByDefault, depth_ = 1, parts_ = 1;
  uint32_t stride_ = 0;    ///< bytes of a row
  uint32_t rowBytes_ = 0;  ///< when it is unpacked
  uint32_t width_ = 0, rows_ = 0;
  uint32_t palette_[256] = {};
  PictBytes data_{ByteView()};
};

}  // namespace pagerex

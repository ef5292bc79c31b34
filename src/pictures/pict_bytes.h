#pragma once

#include <cstdint>

#include "base/byte_view.h"
#include "pictures/geometry.h"

namespace pagerex {

/// Reads numbers one behind the other, the upper byte first. Behind the end they are 0.
class PictBytes {
 public:
  explicit PictBytes(ByteView bytes, size_t at = 0) : bytes_(bytes), at_(at) {}

  uint8_t U8() { return bytes_.u8(at_++); }
  uint16_t U16();
  int16_t I16() { return static_cast<int16_t>(U16()); }
  uint32_t U32();
  /// With 16 bits behind the point.
  double Fixed() { return static_cast<int32_t>(U32()) / 65536.0; }
  Point ReadPoint();
  Box ReadBox();
  /// The upper byte of each of three numbers.
  uint32_t ReadColour();
  ByteView Take(size_t size);
  /// Its size stands in its first two bytes, which count.
  ByteView TakeSized();
  void Skip(size_t size);

  size_t at() const { return at_; }
  /// Something was asked for that is not there.
  bool isBeyond() const { return at_ > bytes_.size(); }
  bool atEnd() const { return at_ >= bytes_.size(); }

 private:
  ByteView bytes_;
  size_t at_;
};

}  // namespace pagerex

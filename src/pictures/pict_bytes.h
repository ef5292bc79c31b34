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
  uint16_t U16() {
    const unsigned upper = U8();
    return static_cast<uint16_t>(upper << 8 | U8());
  }
  int16_t I16() { return static_cast<int16_t>(U16()); }
  uint32_t U32() {
    const uint32_t upper = U16();
    return upper << 16 | U16();
  }
  /// With 16 bits behind the point.
  double Fixed() { return static_cast<int32_t>(U32()) / 65536.0; }
  Point ReadPoint() {
    const int16_t y = I16();
    return {static_cast<double>(I16()), static_cast<double>(y)};
  }
  Box ReadBox() {
    const Point start = ReadPoint(), end = ReadPoint();
    return {start.x, start.y, end.x, end.y};
  }
  /// The upper byte of each of three numbers.
  uint32_t ReadColour() {
    uint32_t rgb = 0;
    for (int i = 0; i < 3; ++i) rgb = rgb << 8 | U16() >> 8;
    return rgb;
  }
  ByteView Take(size_t size) {
    const ByteView part = bytes_.part(at_, size);
    Skip(size);
    return part;
  }
  void Skip(size_t size) { at_ = bytes_.contains(at_, size) ? at_ + size : bytes_.size() + 1; }

  size_t at() const { return at_; }
  /// Something was asked for that is not there.
  bool isBeyond() const { return at_ > bytes_.size(); }
  bool atEnd() const { return at_ >= bytes_.size(); }

 private:
  ByteView bytes_;
  size_t at_;
};

}  // namespace pagerex

#include "pictures/pict_bytes.h"

namespace pagerex {

uint16_t PictBytes::U16() {
  const unsigned upper = U8();
  return static_cast<uint16_t>(upper << 8 | U8());
}

uint32_t PictBytes::U32() {
  const uint32_t upper = U16();
  return upper << 16 | U16();
}

Point PictBytes::ReadPoint() {
  const int16_t y = I16();
  return {static_cast<double>(I16()), static_cast<double>(y)};
}

Box PictBytes::ReadBox() {
  const Point start = ReadPoint(), end = ReadPoint();
  return {start.x, start.y, end.x, end.y};
}

uint32_t PictBytes::ReadColour() {
  uint32_t rgb = 0;
  for (int i = 0; i < 3; ++i) rgb = rgb << 8 | U16() >> 8;
  return rgb;
}

ByteView PictBytes::Take(size_t size) {
  const ByteView part = bytes_.part(at_, size);
  Skip(size);
  return part;
}

ByteView PictBytes::TakeSized() {
  const size_t size = PictBytes(*this).U16();
  return Take(size < 2 ? 2 : size);
}

void PictBytes::Skip(size_t size) {
  at_ = bytes_.contains(at_, size) ? at_ + size : bytes_.size() + 1;
}

}  // namespace pagerex

#include <algorithm>

#include "pictures/emf_plus_outline.h"

namespace pagerex {

ByteView PlusReader::Take(size_t size) {
  const ByteView taken = rest_.part(0, size);
  rest_ = rest_.part(taken.size());
  return taken;
}

uint16_t PlusReader::U16() {
  return Take(2).u16(0);
}

uint32_t PlusReader::U32() {
  return Take(4).u32(0);
}

double PlusReader::Real() {
  const auto value = static_cast<double>(Take(4).copyOf<float>(0));
  return std::fabs(value) < 1e12 ? value : 0;
}

Point PlusReader::RealPoint() {
  const double x = Real();
  return {x, Real()};
}

Matrix PlusReader::RealMatrix() {
  double n[6];
  for (double& each : n) each = Real();
  return {n[0], n[1], n[2], n[3], n[4], n[5]};
}

Box PlusReader::Rectangle(uint32_t flags) {
  double n[4];
  for (double& each : n) each = flags & kPlusCompressed ? static_cast<int16_t>(U16()) : Real();
  return {n[0], n[1], n[0] + n[2], n[1] + n[3]};
}

ByteView PlusReader::TakeCounted() {
  return Take(U32());
}

uint32_t PlusReader::Count(size_t size) {
  return static_cast<uint32_t>(std::min<size_t>(U32(), left() / size));
}

/// 7 bits with a sign in a byte, or 15 in two, which have the highest bit set and the high byte first.
int32_t PlusReader::RelativeNumber() {
  const int32_t first = Take(1).u8(0);
  if ((first & 0x80) == 0) return (first ^ 0x40) - 0x40;
  return (((first & 0x7F) << 8 | Take(1).u8(0)) ^ 0x4000) - 0x4000;
}

void PlusReader::Points(uint32_t count, uint32_t flags, PlusOutline& out, uint8_t type) {
  Point at;
  uint8_t next = PlusOutline::kStart;
  for (; count > 0 && left() > 0; --count) {
    if (flags & kPlusRelative) {
      at.x += RelativeNumber();
      at.y += RelativeNumber();
    } else if (flags & kPlusCompressed) {
      at.x = static_cast<int16_t>(U16());
      at.y = static_cast<int16_t>(U16());
    } else {
      at = RealPoint();
    }
    out.Add(at, next);
    next = type;
  }
}

}  // namespace pagerex

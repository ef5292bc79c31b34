#include "pictures/emf_plus_reader.h"

#include <algorithm>

namespace pagerex {

ByteView PlusReader::Take(size_t size) {
  const ByteView taken = rest_.part(0, size);
  rest_ = rest_.part(taken.size());
  return taken;
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

Box PlusReader::Rectangle(bool isCompressed) {
  double n[4];
  for (double& each : n) each = isCompressed ? static_cast<int16_t>(U16()) : Real();
  return {n[0], n[1], n[0] + n[2], n[1] + n[3]};
}

uint32_t PlusReader::Count(size_t size) {
  return static_cast<uint32_t>(std::min<size_t>(U32(), left() / size));
}

/// 7 bits with a sign in a byte, or 15 in two, which have the highest bit set and the high byte first.
int32_t PlusReader::RelativeNumber() {
  const int32_t first = U8();
  if ((first & 0x80) == 0) return (first ^ 0x40) - 0x40;
  return (((first & 0x7F) << 8 | U8()) ^ 0x4000) - 0x4000;
}

void PlusReader::Points(uint32_t count, PointForm form, std::vector<Point>& out) {
  constexpr uint8_t kLeast[] = {8, 4, 2};
  const size_t there = std::min<size_t>(count, left() / kLeast[static_cast<size_t>(form)]);
  out.reserve(out.size() + there);
  Point at;
  for (size_t i = 0; i < there; ++i) {
    switch (form) {
      case PointForm::kReal:
        at = RealPoint();
        break;
      case PointForm::kCompressed:
        at.x = static_cast<int16_t>(U16());
        at.y = static_cast<int16_t>(U16());
        break;
      case PointForm::kRelative:
        at.x += RelativeNumber();
        at.y += RelativeNumber();
        break;
    }
    out.push_back(at);
  }
}

}  // namespace pagerex

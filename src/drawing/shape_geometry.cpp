#include "drawing/shape_geometry.h"

void GPoint4ToPoint(ByteView source, tagPOINT* points, unsigned int n) {
  for (unsigned int i = 0; i < n; ++i) points[i] = {source.u16(size_t{i} * 4), source.u16(size_t{i} * 4 + 2)};
}

void GPoint8ToPoint(ByteView source, tagPOINT* points, unsigned int n) {
  for (unsigned int i = 0; i < n; ++i) points[i] = {source.i32(size_t{i} * 8), source.i32(size_t{i} * 8 + 4)};
}

namespace object {

int DIBNumColors(const tagBITMAPINFOHEADER* header) {
  if (header->biClrUsed != 0) return static_cast<int>(header->biClrUsed);
  return header->biBitCount < 10 ? (1 << header->biBitCount) & 0x1FF : 0;
}

/// The ranges differ by a degree, so that an angle and its negative answer alike.
bool IsChangeRect(int angle) {
  const int shift = angle < 0 ? 1 : 0;
  const int turned = (angle % 360 + 360) % 360;
  return (turned >= 45 + shift && turned <= 134 + shift) || (turned >= 225 + shift && turned <= 314 + shift);
}

void GetShapeBoundRect(int angle, FRECT& rect) {
  if (!IsChangeRect(angle)) return;
  const float centreX = (2 * rect.left + rect.width) / 2;
  const float centreY = (2 * rect.top + rect.height) / 2;
  rect = {centreX - rect.height / 2, centreY - rect.width / 2, rect.height, rect.width};
}

}  // namespace object

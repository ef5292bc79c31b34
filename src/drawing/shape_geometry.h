#pragma once

#include <cstdint>
#include <cstring>

#include "base/byte_view.h"

/// A box: position and size.
struct FRECT {
  float left = 0;
  float top = 0;
  float width = 0;
  float height = 0;
};

struct tagRECT {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;
};

struct tagPOINT {
  int32_t x = 0;
  int32_t y = 0;
};

#pragma pack(push, 1)
/// Header of a device independent bitmap.
struct tagBITMAPINFOHEADER {
  uint32_t biSize;
  int32_t biWidth;
  int32_t biHeight;
  uint16_t biPlanes;
  uint16_t biBitCount;
  uint32_t biCompression;
  uint32_t biSizeImage;
  int32_t biXPelsPerMeter;
  int32_t biYPelsPerMeter;
  uint32_t biClrUsed;
  uint32_t biClrImportant;
};
#pragma pack(pop)
static_assert(sizeof(tagBITMAPINFOHEADER) == 40);

/// Reads n points of two 16-bit values each, without sign extension; what is missing is zero.
void GPoint4ToPoint(ByteView source, tagPOINT* points, unsigned int n);
/// Reads n points of two 32-bit values each; what is missing is zero.
void GPoint8ToPoint(ByteView source, tagPOINT* points, unsigned int n);

/// A value at an address of any alignment.
template <class T>
T GetValue(const void* source) {
  T value;
  std::memcpy(&value, source, sizeof(T));
  return value;
}

namespace object {

/// Colours in a bitmap's palette.
int DIBNumColors(const tagBITMAPINFOHEADER* header);

/// Whether a rotation by whole degrees swaps width and height of a shape's box.
bool IsChangeRect(int angle);
/// The box that a shape takes when it is rotated: its own, or turned on its side about its centre.
void GetShapeBoundRect(int angle, FRECT& rect);

}  // namespace object

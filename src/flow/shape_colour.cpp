#include <algorithm>
#include <iterator>

#include "drawing/colour_format.h"
#include "flow/shape_reader.h"

namespace pagerex {
namespace {

constexpr unsigned kDeepest = 3;  // a colour made of a colour made of a colour

/// Colours of the system's parts, by their numbers in Windows.
constexpr uint32_t kSystemColours[] = {
    0xC8C8C8, 0x000000, 0x99B4D1, 0xBFCDDB, 0xF0F0F0, 0xFFFFFF, 0x646464, 0x000000, 0x000000,
    0x000000, 0xB4B4B4, 0xF4F7FC, 0xABABAB, 0x3399FF, 0xFFFFFF, 0xF0F0F0, 0xA0A0A0, 0x6D6D6D,
    0x000000, 0x000000, 0xFFFFFF, 0x696969, 0xE3E3E3, 0x000000, 0xFFFFE1,
};

/// Colours of the shape, by what stands in the low byte.
struct OwnColour {
  uint8_t number;
  PID id;
  uint32_t otherwise;
};
constexpr OwnColour kOwnColours[] = {
    {0xF0, 0x0181, 0xFFFFFF},  // fill
    {0xF1, 0x01C0, 0x000000},  // line, or fill
    {0xF2, 0x01C0, 0x000000},  // line
    {0xF3, 0x0201, 0x808080},  // shadow
    {0xF5, 0x0183, 0xFFFFFF},  // second colour of the fill
    {0xF6, 0x01C2, 0xFFFFFF},  // of the line
    {0xF7, 0x0181, 0xFFFFFF},  // fill, or line
};

constexpr uint32_t redHigh(uint32_t value) {
  return (value & 0xFF) << 16 | (value & 0xFF00) | (value >> 16 & 0xFF);
}

int changedPart(int part, unsigned change, int by) {
  switch (change) {
    case 1:
      return part * by / 255;  // darker
    case 2:
      return 255 - (255 - part) * by / 255;  // lighter
    case 3:
      return part + by;
    case 4:
      return part - by;
    case 5:
      return by - part;
    case 6:
      return part < by ? 0 : 255;
    default:
      return part;
  }
}

uint32_t changed(uint32_t rgb, uint32_t value) {
  constexpr uint32_t kInvert = 0x2000, kInvertHigh = 0x4000, kGrey = 0x8000;
  const unsigned change = value >> 8 & 0x0F;
  const int by = static_cast<int>(value >> 16 & 0xFF);
  if (value & kGrey) {
    const uint32_t grey = ((rgb >> 16) * 77 + (rgb >> 8 & 0xFF) * 151 + (rgb & 0xFF) * 28) >> 8;
    rgb = grey * 0x010101;
  }
  uint32_t result = 0;
  for (unsigned shift = 0; shift < 24; shift += 8) {
    int part = std::clamp(changedPart(static_cast<int>(rgb >> shift & 0xFF), change, by), 0, 255);
    if (value & kInvert) part = 255 - part;
    if (value & kInvertHigh) part ^= 0x80;
    result |= static_cast<uint32_t>(part) << shift;
  }
  return result;
}

uint32_t resolved(const ShapeProperties& properties, PID id, uint32_t otherwise, unsigned depth);

uint32_t systemColour(const ShapeProperties& properties, PID id, uint32_t value, uint32_t otherwise,
                      unsigned depth) {
  const uint32_t number = value & 0xFF;
  uint32_t rgb = otherwise;
  if (number < std::size(kSystemColours)) rgb = kSystemColours[number];
  for (const OwnColour& each : kOwnColours) {
    if (each.number == number && each.id != id)
      rgb = resolved(properties, each.id, each.otherwise, depth + 1);
  }
  return changed(rgb, value);
}

/// Colours behind the palette: those of a window.
uint32_t ofScheme(uint32_t index, uint32_t otherwise) {
  constexpr uint32_t kPaletteSize = 64, kWindow = 65, kHint = 80;
  if (index < kPaletteSize) return redHigh(object::GetColorFormat(0x08000000 | index, nullptr));
  if (index == kPaletteSize) return 0x000000;
  if (index == kWindow) return 0xFFFFFF;
  return index == kHint ? 0xFFFFE1 : otherwise;
}

uint32_t resolved(const ShapeProperties& properties, PID id, uint32_t otherwise, unsigned depth) {
  const ShapeProperties::Property* const property = properties.Find(id);
  if (!property || depth > kDeepest) return otherwise;
  constexpr uint8_t kUnset = 0xFF, kSchemeIndex = 0x08, kSystemIndex = 0x10;
  const uint32_t value = property->operand & 0xFFFFFF;
  const auto flags = static_cast<uint8_t>(property->operand >> 24);
  if (flags == kUnset) return otherwise;
  if (flags & kSystemIndex) return systemColour(properties, id, value, otherwise, depth);
  return flags & kSchemeIndex ? ofScheme(value, otherwise) : redHigh(value);
}

}  // namespace

uint32_t shapeColour(const ShapeProperties& properties, PID id, uint32_t otherwise) {
  return resolved(properties, id, otherwise, 0);
}

}  // namespace pagerex

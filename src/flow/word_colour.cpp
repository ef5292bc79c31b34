#include "flow/word_colour.h"

#include <algorithm>
#include <iterator>

namespace pagerex {
namespace {

constexpr uint32_t kPalette[] = {0,        0x000000, 0x0000FF, 0x00FFFF, 0x00FF00, 0xFF00FF,
                                 0xFF0000, 0xFFFF00, 0xFFFFFF, 0x000080, 0x008080, 0x008000,
                                 0x800080, 0x800000, 0x808000, 0x808080, 0xC0C0C0};

/// Share of the foreground in a pattern (ipat), in thousandths; hatches and stripes as what they come to from
/// afar.
constexpr uint16_t kPatterns[] = {
    0,   1000, 50,  100, 200, 250, 300, 400, 500, 600, 700, 750, 800, 900,  // 0: percentages
    333, 333,  333, 333, 333, 333, 250, 250, 250, 250, 250, 250,  // 14: dark and light stripes and hatches
    0,   0,    0,   0,   0,   0,   0,   0,   0,                   // 26: not used
    25,  75,   125, 150, 175, 225, 275, 325, 350, 375, 425, 450, 475, 525,  // 35: percentages
    550, 575,  625, 650, 675, 725, 775, 825, 850, 875, 925, 950, 975, 970,  // 49
};

uint32_t mixed(uint32_t front, uint32_t back, uint32_t thousandths) {
  uint32_t result = 0;
  for (unsigned shift = 0; shift < 24; shift += 8) {
    const uint32_t f = front >> shift & 0xFF, b = back >> shift & 0xFF;
    result |= (f * thousandths + b * (1000 - thousandths) + 500) / 1000 << shift;
  }
  return result;
}

/// Of a pattern over a background. Neither pattern nor background is none at all.
Shading shading(const Colour& front, const Colour& back, uint16_t pattern) {
  constexpr uint16_t kNil = 0xFFFF;
  if (pattern == kNil || (pattern == 0 && back.isAutomatic)) return {};
  const uint32_t share = pattern < std::size(kPatterns) ? kPatterns[pattern] : 0;
  const uint32_t frontRgb = front.isAutomatic ? 0x000000 : front.rgb;
  const uint32_t backRgb = back.isAutomatic ? 0xFFFFFF : back.rgb;
  return {true, {mixed(frontRgb, backRgb, share), false}};
}

}  // namespace

Colour colourOf(uint32_t colorRef) {
  if (colorRef >> 24 == 0xFF) return {};
  return {(colorRef & 0xFF) << 16 | (colorRef & 0xFF00) | (colorRef >> 16 & 0xFF), false};
}

Colour colourOfIndex(uint8_t ico) {
  if (ico == 0 || ico >= std::size(kPalette)) return {};
  return {kPalette[ico], false};
}

Border borderOf(ByteView brc) {
  Border border;
  border.colour = colourOf(brc.u32(0));
  border.widthEighths = brc.u8(4);
  border.kind = brc.u8(5);
  border.spacePoints = brc.u8(6) & 0x1F;
  border.hasShadow = (brc.u8(6) & 0x20) != 0;
  return border;
}

Border border80Of(ByteView brc) {
  Border border;
  if (brc.u32(0) == 0xFFFFFFFF) return border;
  border.widthEighths = brc.u8(0);
  border.kind = brc.u8(1);
  border.colour = colourOfIndex(brc.u8(2));
  border.spacePoints = brc.u8(3) & 0x1F;
  border.hasShadow = (brc.u8(3) & 0x20) != 0;
  return border;
}

Shading shadingOf(ByteView shd) {
  return shading(colourOf(shd.u32(0)), colourOf(shd.u32(4)), shd.u16(8));
}

Shading shading80Of(ByteView shd) {
  const uint16_t value = shd.u16(0);
  if (value == 0xFFFF) return {};
  return shading(colourOfIndex(value & 0x1F), colourOfIndex(value >> 5 & 0x1F), value >> 10);
}

}  // namespace pagerex

#include "story/colour.h"

#include <iterator>

namespace pagerex {
namespace {

constexpr uint32_t kBlack = 0x000000;
constexpr uint32_t kWhite = 0xFFFFFF;
constexpr uint32_t kGrey = 0x7F7F7F;

/// Red in the low byte.
constexpr uint32_t kHighlightPalette[] = {
    mso_word::kAutomaticColour,
    0x000000,  // black
    0xFF0000,  // blue
    0xFFFF00,  // cyan
    0x00FF00,  // green
    0xFF00FF,  // magenta
    0x0000FF,  // red
    0x00FFFF,  // yellow
    0xFFFFFF,  // white
    0x800000,  // dark blue
    0x808000,  // dark cyan
    0x008000,  // dark green
    0x800080,  // dark magenta
    0x000080,  // dark red
    0x008080,  // dark yellow
    0x808080,  // dark grey
    0xC0C0C0,  // light grey
};

}  // namespace

uint32_t Ico2RGB(unsigned int ico) {
  return ico < std::size(kHighlightPalette) ? kHighlightPalette[ico] : 0xFFFFFFFF;
}

uint32_t MixColor(uint32_t first, uint32_t second) {
  uint32_t mixed = 0;
  for (unsigned shift = 0; shift < 24; shift += 8) {
    const uint32_t sum = (first >> shift & 0xFF) + (second >> shift & 0xFF);
    mixed |= sum / 2 << shift;
  }
  return mixed;
}

uint32_t MixColor(const mso_word::SHDEX& shd) {
  if (shd.pattern == 0) return shd.background;
  if (shd.pattern == 1) return shd.foreground;
  if (shd.pattern > 62) return kGrey;
  return MixColor(shd.foreground == mso_word::kAutomaticColour ? kBlack : shd.foreground,
                  shd.background == mso_word::kAutomaticColour ? kWhite : shd.background);
}

namespace {

/// Share of the foreground by shading pattern, in thousandths.
constexpr uint16_t pattern[] = {
    0,   1000, 50,  100, 200, 250, 300, 400, 500, 600, 700, 750, 800, 900,  // 0: percentages
    500, 500,  500, 500, 500, 500, 500, 500, 500, 500, 500,                 // 14: hatches, stripes
    500, 500,  500, 500, 500, 500, 500, 500, 500, 500,                      // 25
    20,  70,   125, 150, 170, 220, 270, 320, 350, 375, 420, 450, 470, 520,  // 35: percentages
    550, 570,  625, 650, 670, 720, 770, 820, 850, 875, 920, 950,            // 49
};
static_assert(sizeof pattern / sizeof pattern[0] == 61);

}  // namespace

uint32_t GetBGColor(const mso_word::SHDEX* shd) {
  if (!shd) return mso_word::kAutomaticColour;
  const uint16_t index = shd->pattern;
  if (index == 0 || index >= sizeof pattern / sizeof pattern[0]) return shd->background;
  const uint32_t share = pattern[index];
  uint32_t colour = 0;
  for (unsigned shift = 0; shift < 24; shift += 8) {
    const uint32_t foreground = shd->foreground >> shift & 0xFF;
    const uint32_t background = shd->background >> shift & 0xFF;
    colour |= (share * foreground + (1000 - share) * background) / 1000 << shift;
  }
  return colour;
}

}  // namespace pagerex

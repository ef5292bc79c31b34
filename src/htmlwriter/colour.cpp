#include <iterator>

#include "htmlwriter/css_props.h"

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

}  // namespace pagerex

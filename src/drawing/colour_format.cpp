#include "drawing/colour_format.h"

namespace object {
namespace {

/// RRGGBB, by index.
constexpr uint32_t kPalette[64] = {
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF,  //
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF,  //
    0x800000, 0x008000, 0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080,  //
    0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF, 0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF,  //
    0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000, 0x008080, 0x0000FF,  //
    0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,  //
    0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696,  //
    0x003366, 0x339966, 0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333,
};

struct SystemColour {
  uint32_t index;
  const char* word;
};
constexpr SystemColour kSystemColours[] = {{64, "windowText"}, {65, "window"}, {80, "infoBackground"}};

constexpr uint32_t redLow(uint32_t rgb) {
  return rgb >> 16 | (rgb & 0xFF00) | (rgb & 0xFF) << 16;
}

uint32_t indexed(uint32_t index, NumberText& out) {
  if (index < 64) {
    out = wordColour(redLow(kPalette[index]));
    return redLow(kPalette[index]);
  }
  for (const SystemColour& each : kSystemColours) {
    if (each.index == index) out.append(each.word).append(" [").appendUnsigned(index).append(']');
  }
  return 0;
}

}  // namespace

uint32_t GetColorFormat(uint32_t color, NumberText* text) {
  NumberText made;
  uint32_t value = 0;
  switch (color >> 24) {
    case 0x00:
    case 0xFE:
      value = color & 0xFFFFFF;
      made = wordColour(value);
      break;
    case 0x08:
      value = indexed(color & 0xFFFFFF, made);
      break;
    case 0x10:
      made.append("shadow add(").appendUnsigned(color >> 16 & 0xFF).append(')');
      break;
    default:
      break;
  }
  if (text) *text = made;
  return value;
}

}  // namespace object

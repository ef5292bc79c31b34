#include "formats/html/css_values.h"

#include <algorithm>
#include <iterator>

namespace pagerex {
namespace {

constexpr int64_t kMostTwips = 31680;      // 22 inches
constexpr int64_t kMostHalfPoints = 3276;  // of text

/// How a kind of line (BRC type) is drawn.
struct LineKind {
  const char* style;
  uint8_t parts;  ///< lines and gaps that the width is that of one of
};

constexpr LineKind kLineKinds[] = {
    {"none", 0},   {"solid", 1},  // 1: single
    {"solid", 2},                 // 2: thick
    {"double", 3},                // 3: double
    {"solid", 1},                 // 4
    {"solid", 1},                 // 5: hairline
    {"dotted", 1},                // 6: dotted
    {"dashed", 1},                // 7: dashes, large gaps
    {"dashed", 1},                // 8: dot, dash
    {"dashed", 1},                // 9: dot, dot, dash
    {"double", 5},                // 10: triple
    {"double", 2},                // 11: thin and thick, small gap
    {"double", 2},                // 12: thick and thin
    {"double", 3},                // 13: thin, thick, thin
    {"double", 2},                // 14: thin and thick, medium gap
    {"double", 2},                // 15: thick and thin
    {"double", 3},                // 16: thin, thick, thin
    {"double", 3},                // 17: thin and thick, large gap
    {"double", 3},                // 18: thick and thin
    {"double", 4},                // 19: thin, thick, thin
    {"solid", 1},                 // 20: wave
    {"double", 3},                // 21: double wave
    {"dashed", 1},                // 22: dashes, small gaps
    {"dashed", 1},                // 23: dashes and dots, stroked
    {"ridge", 1},                 // 24: emboss
    {"groove", 1},                // 25: engrave
    {"outset", 1},                // 26
    {"inset", 1},                 // 27
};

/// Art around a page has its own numbers, and its width in points.
constexpr uint8_t kFirstArt = 0x40;

LineKind lineKindOf(const Border& border) {
  if (!border.isThere()) return kLineKinds[0];
  return border.kind < std::size(kLineKinds) ? kLineKinds[border.kind] : kLineKinds[1];
}

/// In hundredths of a point. Less than half a point does not show everywhere; two lines need some more.
int64_t borderWidth(const Border& border) {
  const LineKind kind = lineKindOf(border);
  if (kind.parts == 0) return 0;
  const bool isDouble = std::string_view(kind.style) == "double";
  const int64_t eighths = int64_t{border.widthEighths} * (border.kind >= kFirstArt ? 8 : kind.parts);
  return std::clamp<int64_t>((eighths * 100 + 4) / 8, isDouble ? 225 : 50, 3100);
}

void appendHex(std::string& out, uint32_t digit) {
  out += "0123456789abcdef"[digit & 0xF];
}

}  // namespace

void appendColour(std::string& out, uint32_t rgb) {
  out += '#';
  const bool isShort = (rgb >> 4 & 0x0F0F0F) == (rgb & 0x0F0F0F);
  for (int shift = 20; shift >= 0; shift -= isShort ? 8 : 4) appendHex(out, rgb >> shift);
}

void appendHundredths(std::string& out, int64_t hundredths, std::string_view unit) {
  if (hundredths == 0) {
    out += '0';
    return;
  }
  if (hundredths < 0) out += '-';
  const auto value = static_cast<uint64_t>(hundredths < 0 ? -hundredths : hundredths);
  if (value >= 100) out += std::to_string(value / 100);
  if (const uint64_t rest = value % 100; rest != 0) {
    out += '.';
    appendHex(out, static_cast<uint32_t>(rest / 10));
    if (rest % 10 != 0) appendHex(out, static_cast<uint32_t>(rest % 10));
  }
  out += unit;
}

void appendPoints(std::string& out, int64_t twips) {
  appendHundredths(out, std::clamp(twips, -kMostTwips, kMostTwips) * 5, "pt");
}

void appendIndent(std::string& out, int64_t twips) {
  if (twips == 0) return;
  out += "calc(";
  appendPoints(out, twips);
  out += twips < 0 ? "*var(--n))" : "*var(--i))";
}

void appendHalfPoints(std::string& out, int64_t halfPoints) {
  appendHundredths(out, std::clamp(halfPoints, -kMostHalfPoints, kMostHalfPoints) * 50, "pt");
}

bool isDark(uint32_t rgb) {
  constexpr uint32_t kLeastLuminance = 62;
  const uint32_t thousandths = 299 * (rgb >> 16 & 0xFF) + 587 * (rgb >> 8 & 0xFF) + 114 * (rgb & 0xFF);
  return thousandths < kLeastLuminance * 1000;
}

uint32_t automaticColourOn(const Colour& ground) {
  return !ground.isAutomatic && isDark(ground.rgb) ? 0xFFFFFF : 0x000000;
}

void appendBorder(std::string& out, const Border& border) {
  if (!border.isThere()) {
    out += '0';
    return;
  }
  appendHundredths(out, borderWidth(border), "pt ");
  out += lineKindOf(border).style;
  if (border.colour.isAutomatic) return;
  out += ' ';
  appendColour(out, border.colour.rgb);
}

int32_t borderWidthTwips(const Border& border) {
  return static_cast<int32_t>((borderWidth(border) + 2) / 5);
}

std::string_view writingModeOf(uint16_t textFlow) {
  constexpr uint16_t kIsVertical = 1, kIsUpwards = 2;
  if ((textFlow & kIsVertical) == 0) return {};
  return (textFlow & kIsUpwards) != 0 ? "sideways-lr" : "vertical-rl";
}

void appendDeclaration(std::string& out, std::string_view name, std::string_view value) {
  out += name;
  out += ':';
  out += value;
  out += ';';
}

void appendDifferences(std::string& out, std::span<const CssProperty> properties,
                       std::span<const std::string> values, std::span<const std::string> base) {
  constexpr size_t kSides = 4;
  for (size_t i = 0; i < properties.size(); ++i) {
    const std::string_view value = values[i].empty() ? std::string_view(properties[i].initial) : values[i];
    if (properties[i].ofAllSides[0] != '\0') {
      const auto sides = values.subspan(i, kSides), baseSides = base.subspan(i, kSides);
      size_t differing = 0;
      for (size_t side = 0; side < kSides; ++side) differing += sides[side] != baseSides[side];
      if (differing > 1 && std::equal(sides.begin() + 1, sides.end(), sides.begin())) {
        appendDeclaration(out, properties[i].ofAllSides, value);
        i += kSides - 1;
        continue;
      }
    }
    if (values[i] != base[i]) appendDeclaration(out, properties[i].name, value);
  }
}

}  // namespace pagerex

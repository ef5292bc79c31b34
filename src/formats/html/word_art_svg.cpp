#include "formats/html/word_art_svg.h"

#include <algorithm>
#include <string_view>

#include "formats/html/svg_text.h"

namespace pagerex {
namespace {

constexpr std::u16string_view kLineEnds = u"\r\n\v";

/// How far the characters of a line reach above and below its base, in parts of the font's size.
struct Reach {
  double above, below;
};

Reach reachOf(std::u16string_view line) {
  constexpr std::u16string_view kLow = u"acegmnopqrsuvwxyz ", kDeep = u"gjpqyQ,;()[]{}";
  constexpr double kCapital = 0.72, kSmall = 0.52, kDepth = 0.21;
  const bool isLow = line.find_first_not_of(kLow) == std::u16string_view::npos;
  const bool isDeep = line.find_first_of(kDeep) != std::u16string_view::npos;
  return {isLow ? kSmall : kCapital, isDeep ? kDepth : 0};
}

/// A name that would end its quotes is none.
void appendFont(std::string& out, std::u16string_view font) {
  out += "<g";
  if (font.empty() || font.find_first_of(u"'\\") != std::u16string_view::npos) return;
  out += " font-family=\"'";
  appendEscaped(out, font);
  out += "',sans-serif\"";
}

void appendLine(std::string& out, std::u16string_view line, double top, double width, double height) {
  const Reach reach = reachOf(line);
  const double size = height / (reach.above + reach.below);
  out += "<text";
  appendLengthAttribute(out, "y", top + size * reach.above);
  appendLengthAttribute(out, "font-size", size);
  appendLengthAttribute(out, "textLength", width);
  out += " lengthAdjust=\"spacingAndGlyphs\">";
  appendEscaped(out, line);
  out += "</text>";
}

}  // namespace

bool isWordArt(const ShapeFacts& shape) {
  const uint16_t type = shape.geometry.type;
  constexpr uint16_t kFirstPlain = 24, kLastPlain = 31, kFirst = 136, kLast = 175;
  return !shape.art.text.empty() &&
         ((type >= kFirstPlain && type <= kLastPlain) || (type >= kFirst && type <= kLast));
}

void appendWordArt(std::string& out, const ShapeArt& art, double width, double height) {
  constexpr double kGap = 0.2;  // between lines, of a line's height
  std::u16string_view text = art.text;
  const size_t last = text.find_last_not_of(kLineEnds);
  text = text.substr(0, last == std::u16string_view::npos ? 0 : last + 1);
  const auto ends = std::count_if(text.begin(), text.end(),
                                  [](char16_t c) { return kLineEnds.find(c) != std::u16string_view::npos; });
  const double pitch = height / (static_cast<double>(ends) * (1 + kGap) + 1);
  appendFont(out, art.font);
  if (art.isBold) out += " font-weight=\"700\"";
  if (art.isItalic) out += " font-style=\"italic\"";
  out += '>';
  double top = 0;
  while (!text.empty()) {
    const size_t end = std::min(text.find_first_of(kLineEnds), text.size());
    if (end > 0) appendLine(out, text.substr(0, end), top, width, pitch);
    top += pitch * (1 + kGap);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  out += "</g>";
}

}  // namespace pagerex

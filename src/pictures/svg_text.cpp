// Text on a canvas.

#include <algorithm>
#include <cmath>

#include "base/encoding.h"
#include "pictures/grid_number.h"
#include "pictures/svg_canvas.h"

namespace pagerex {
namespace {

/// Parts of names of fonts, and what stands for them where they are not there.
struct FamilyRow {
  std::string_view part, generic;
};
constexpr FamilyRow kFamilies[] = {
    {"courier", "monospace"}, {"mono", "monospace"},  {"consol", "monospace"}, {"terminal", "monospace"},
    {"fixed", "monospace"},   {"sans", "sans-serif"}, {"times", "serif"},      {"roman", "serif"},
    {"serif", "serif"},       {"georgia", "serif"},   {"garamond", "serif"},   {"cambria", "serif"},
    {"book", "serif"},        {"palatino", "serif"},  {"century", "serif"},    {"song", "serif"},
    {"mincho", "serif"},      {"symbol", "serif"},    {"ming", "serif"},
};

std::string_view genericOf(std::string_view family) {
  std::string name(family);
  for (char& c : name) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  const auto* row = std::find_if(std::begin(kFamilies), std::end(kFamilies), [&](const FamilyRow& each) {
    return name.find(each.part) != std::string::npos;
  });
  return row == std::end(kFamilies) ? "sans-serif" : row->generic;
}

/// A font's name between quotes of a value: what could end it, or is no part of a name, is left out.
void appendFamily(std::string& out, std::string_view family) {
  const auto isPart = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z';
  };
  const bool isWord = std::all_of(family.begin(), family.end(), isPart);
  if (!isWord) out += '\'';
  for (size_t i = 0; i < family.size(); ++i) {
    const char c = family[i];
    const auto byte = static_cast<unsigned char>(c);
    // U+FFFE and U+FFFF, which no XML has.
    if (family.substr(i, 2) == "\xEF\xBF" && i + 2 < family.size() && (family[i + 2] & 0xFE) == 0xBE) {
      i += 2;
      continue;
    }
    const bool isOther =
        (byte >= '0' && byte <= '9') || byte == ' ' || byte == '-' || byte == '_' || byte >= 0x80;
    if (isPart(c) || isOther) out += c;
  }
  if (!isWord) out += '\'';
}

bool isForXml(char32_t c) {
  return c >= 0x20 && (c < 0x7F || c > 0x9F) && (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF;
}

void appendText(std::string& out, std::u16string_view text) {
  Utf16Joiner joiner;
  for (const char16_t unit : text) {
    const char32_t c = joiner.Join(unit);
    if (!isForXml(c)) {
      if (c == '\t') out += ' ';
      continue;
    }
    if (c == '<') {
      out += "&lt;";
    } else if (c == '&') {
      out += "&amp;";
    } else if (c == '>') {
      out += "&gt;";
    } else {
      appendUtf8(out, c);
    }
  }
}

double sumOf(std::span<const double> advances) {
  double sum = 0;
  for (const double advance : advances) sum += advance;
  return sum;
}

constexpr std::string_view kAnchors[] = {"", " text-anchor=\"middle\"", " text-anchor=\"end\""};

}  // namespace

void SvgCanvas::PutFont(const TextLook& look, double size) {
  out_ += " font-family=\"";
  if (!look.family.empty()) {
    appendFamily(out_, look.family);
    out_ += ',';
  }
  out_.append(genericOf(look.family)).append(1, '"');
  PutAttribute("font-size", size);
  if (look.weight != 400 && look.weight > 0) PutAttribute("font-weight", std::clamp(look.weight, 100, 900));
  if (look.isItalic) out_ += " font-style=\"italic\"";
  if (look.isUnderlined || look.isStruckOut) {
    out_.append(" text-decoration=\"")
        .append(!look.isStruckOut   ? "underline\""
                : look.isUnderlined ? "underline line-through\""
                                    : "line-through\"");
  }
}

/// Each word at its place and as long as it is: fonts of other widths then leave the line as it was.
void SvgCanvas::PutWords(std::u16string_view text, std::span<const double> advances, double left,
                         double scale, double size) {
  size_t at = 0;
  while (at < text.size()) {
    size_t end = at;
    while (end < text.size() && text[end] != ' ') ++end;
    double length = sumOf(advances.subspan(at, end - at)) * scale;
    // What is set far apart is set letter by letter, each at its own distance.
    if (length > static_cast<double>(end - at) * size * 1.1) {
      end = at + (end - at > 1 && (text[at] & 0xFC00) == 0xD800 ? 2 : 1);
      length = sumOf(advances.subspan(at, end - at)) * scale;
    }
    if (end > at) {
      out_ += "<tspan";
      PutAttribute("x", std::round(left));
      if (end - at > 1 && length > 0) {
        PutAttribute("textLength", std::round(length));
        // What is set wide has its letters apart, not broad.
        const bool isSpaced = length > static_cast<double>(end - at) * size * 0.85;
        if (!isSpaced) out_ += " lengthAdjust=\"spacingAndGlyphs\"";
      }
      out_ += '>';
      appendText(out_, text.substr(at, end - at));
      out_ += "</tspan>";
    }
    left += length;
    while (end < text.size() && text[end] == ' ') {
      left += advances[end] * scale;
      out_ += ' ';
      ++end;
    }
    at = end;
  }
}

void SvgCanvas::Text(const TextLook& look, const TextPlace& place, std::u16string_view text, Blend blend) {
  const Matrix& matrix = place.matrix;
  const double scale = std::hypot(matrix.c, matrix.d);
  const double size = look.size * scale;
  const Point at = matrix(place.at);
  if (!(size > 0.01) || !(size < 1e6) || text.empty()) return;
  const bool hasAdvances = place.advances.size() >= text.size();
  const double across = hasAdvances ? sumOf(place.advances.first(text.size()))
                                    : look.size * 0.5 * static_cast<double>(text.size());
  double left = place.anchor == TextPlace::Anchor::kStart    ? 0
                : place.anchor == TextPlace::Anchor::kMiddle ? -across / 2
                                                             : -across;
  for (const double x : {left, left + across}) {
    for (const double y : {-look.size, look.size / 4}) {
      const Point p = matrix(place.at.x + x, place.at.y + y);
      Cover({p.x, p.y, p.x, p.y});
    }
  }
  if (!goesOn_ || !sink_) return;
  OpenClip();
  out_ += "<text";
  const bool isPlain = matrix.isUpright() && matrix.d > 0 && std::fabs(matrix.a - matrix.d) < 1e-4 * matrix.d;
  left *= scale;
  if (isPlain) {
    left += at.x;
    PutAttribute("y", std::round(at.y));
  } else {
    PutMatrix("transform",
              {matrix.a / scale, matrix.b / scale, matrix.c / scale, matrix.d / scale, at.x, at.y});
  }
  const bool isWhole = look.isUnderlined || look.isStruckOut || place.isRightToLeft;
  if (!hasAdvances) {
    PutAttribute("x", std::round(isPlain ? at.x : 0));
    // What runs from the right begins at its right end.
    const auto anchor = static_cast<size_t>(place.anchor);
    out_ += kAnchors[place.isRightToLeft ? 2 - anchor : anchor];
  } else if (isWhole) {
    PutAttribute("x", std::round(left));
    if (text.size() > 1 && across > 0) {
      PutAttribute("textLength", std::round(across * scale));
      out_ += " lengthAdjust=\"spacingAndGlyphs\"";
    }
    if (place.isRightToLeft) out_ += kAnchors[2];
  }
  if (place.isRightToLeft) out_ += " direction=\"rtl\"";
  PutFont(look, size);
  PutPaint("fill", look.paint);
  PutBlend(blend);
  out_ += '>';
  if (hasAdvances && !isWhole) {
    PutWords(text, place.advances, left, scale, size);
  } else {
    appendText(out_, text);
  }
  out_ += "</text>\n";
  if (out_.size() > kPart) Flush();
}

}  // namespace pagerex

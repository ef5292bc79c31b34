#include "formats/html/svg_fill.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "formats/html/page_text.h"
#include "formats/html/svg_text.h"

namespace pagerex {
namespace {

constexpr double kPixel = 15;  // twips

bool isEmpty(const std::array<uint8_t, 8>& pattern) {
  return std::all_of(pattern.begin(), pattern.end(), [](uint8_t row) { return row == 0; });
}

/// The colour that one takes a fill for from afar.
uint32_t plainRgb(const ShapeFill& fill) {
  constexpr double kHalf = 0.5;
  const bool isMixed = fill.kind == ShapeFill::Kind::kPattern || fill.kind >= ShapeFill::Kind::kLinear;
  return isMixed ? mixedRgb(fill.rgb, fill.backRgb, kHalf) : fill.rgb;
}

}  // namespace

SvgFill::SvgFill(std::string& out, const ShapeFill& fill, double width, double height, SvgIds& ids,
                 std::string_view address)
    : out_(out), fill_(fill), width_(width), height_(height), ids_(ids) {
  switch (fill.kind) {
    case ShapeFill::Kind::kLinear:
      DefineLinear();
      return;
    case ShapeFill::Kind::kRadial:
    case ShapeFill::Kind::kShape:
      DefineRadial();
      return;
    case ShapeFill::Kind::kPattern:
      if (!isEmpty(fill.pattern)) DefinePattern();
      return;
    case ShapeFill::Kind::kTexture:
    case ShapeFill::Kind::kPicture:
      if (!address.empty()) DefinePicture(address);
      return;
    default:
      return;
  }
}

void SvgFill::Begin(std::string_view element) {
  id_ = ids_.Take();
  out_.append("<").append(element).append(" id=\"g-").append(std::to_string(id_)).append("\"");
}

/// From where the colours count on to the other side; an angle of 0 has them below each other.
void SvgFill::DefineLinear() {
  const double angle = fill_.angle * std::numbers::pi / 180;
  const double x = std::sin(angle), y = std::cos(angle);
  const double half = (std::abs(width_ * x) + std::abs(height_ * y)) / 2;
  Begin("linearGradient");
  out_ += " gradientUnits=\"userSpaceOnUse\"";
  appendLengthAttribute(out_, "x1", width_ / 2 - x * half);
  appendLengthAttribute(out_, "y1", height_ / 2 - y * half);
  appendLengthAttribute(out_, "x2", width_ / 2 + x * half);
  appendLengthAttribute(out_, "y2", height_ / 2 + y * half);
  out_ += '>';
  AddStops();
  out_ += "</linearGradient>";
}

void SvgFill::DefineRadial() {
  const bool isShape = fill_.kind == ShapeFill::Kind::kShape;
  const double x = isShape ? 0.5 : (fill_.toLeft + fill_.toRight) / 2;
  const double y = isShape ? 0.5 : (fill_.toTop + fill_.toBottom) / 2;
  const double radius = std::hypot(std::max(x, 1 - x), std::max(y, 1 - y));
  Begin("radialGradient");
  for (const auto& [name, part] : {std::pair("cx", x), std::pair("cy", y), std::pair("r", radius)}) {
    out_.append(" ").append(name).append("=\"");
    appendLength(out_, part * 100);
    out_ += "%\"";
  }
  out_ += '>';
  AddStops();
  out_ += "</radialGradient>";
}

void SvgFill::AddStop(const ShapeFill::Stop& stop, double place) {
  out_ += "<stop offset=\"";
  appendPart(out_, place);
  out_ += '"';
  appendRgbAttribute(out_, "stop-color", stop.rgb);
  const double opacity = fill_.opacity + (fill_.backOpacity - fill_.opacity) * double{stop.place};
  appendOpacity(out_, "stop-opacity", opacity);
  out_ += "/>";
}

/// The last colour stands at the focus, the first at the sides; below 0 it is the other way round.
void SvgFill::AddStops() {
  const bool isTurned = fill_.focus < 0;
  const double focus = std::abs(fill_.focus) / 100.0;
  const ShapeFill::Stop two[] = {{fill_.rgb, 0}, {fill_.backRgb, 1}};
  const bool hasOwn = fill_.stops.size() >= 2;
  const ShapeFill::Stop* const stops = hasOwn ? fill_.stops.data() : two;
  const size_t count = hasOwn ? fill_.stops.size() : std::size(two);
  const auto add = [&](size_t i, bool isBehind) {
    const ShapeFill::Stop& stop = stops[(isTurned != isBehind) ? count - 1 - i : i];
    const double part = isTurned ? 1 - double{stop.place} : stop.place;
    AddStop(stop, isBehind ? 1 - part * (1 - focus) : part * focus);
  };
  for (size_t i = 0; focus > 0 && i < count; ++i) add(i, false);
  for (size_t i = 0; focus < 1 && i < count; ++i) add(i, true);
}

void SvgFill::DefinePattern() {
  constexpr unsigned kRow = 8;
  Begin("pattern");
  out_ += " patternUnits=\"userSpaceOnUse\" width=\"120\" height=\"120\"><path";
  appendRgbAttribute(out_, "fill", fill_.backRgb);
  out_ += " d=\"M0 0H120V120H0Z\"/><path";
  appendRgbAttribute(out_, "fill", fill_.rgb);
  out_ += " d=\"";
  for (unsigned y = 0; y < kRow; ++y) {
    for (unsigned x = 0; x < kRow; ++x) {
      if ((fill_.pattern[y] << x & 0x80) == 0) continue;
      out_ += 'M';
      appendPoint(out_, {x * kPixel, y * kPixel});
      out_ += "h15v15h-15Z";
    }
  }
  out_ += "\"/></pattern>";
}

/// A texture repeats; how large its picture is meant to be is not told.
void SvgFill::DefinePicture(std::string_view address) {
  constexpr double kTexture = 128 * kPixel;
  const bool isTexture = fill_.kind == ShapeFill::Kind::kTexture;
  const double width = isTexture ? kTexture : width_, height = isTexture ? kTexture : height_;
  Begin("pattern");
  out_ += " patternUnits=\"userSpaceOnUse\"";
  appendLengthAttribute(out_, "width", width);
  appendLengthAttribute(out_, "height", height);
  out_ += "><image href=\"";
  appendAttribute(out_, address);
  out_ += '"';
  appendLengthAttribute(out_, "width", width);
  appendLengthAttribute(out_, "height", height);
  out_ += isTexture ? " preserveAspectRatio=\"xMidYMid slice\"/></pattern>"
                    : " preserveAspectRatio=\"none\"/></pattern>";
}

void SvgFill::Append(std::string& out, int shade) const {
  constexpr double kLighter = 0.4, kDarker = 0.2;
  if (fill_.kind == ShapeFill::Kind::kNone) {
    out += " fill=\"none\"";
    return;
  }
  if (id_ != 0 && shade == 0) {
    out.append(" fill=\"url(#g-").append(std::to_string(id_)).append(")\"");
    if (fill_.isPictured()) appendOpacity(out, "fill-opacity", fill_.opacity);
    return;
  }
  uint32_t rgb = plainRgb(fill_);
  if (shade > 0) rgb = mixedRgb(rgb, 0xFFFFFF, kLighter);
  if (shade < 0) rgb = mixedRgb(rgb, 0x000000, kDarker);
  appendRgbAttribute(out, "fill", rgb);
  appendOpacity(out, "fill-opacity", fill_.opacity);
}

}  // namespace pagerex

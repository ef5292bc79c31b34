#include "formats/html/shape_svg.h"

#include <algorithm>
#include <cmath>

#include "formats/html/arrowheads.h"
#include "formats/html/shape_outlines.h"
#include "formats/html/svg_fill.h"
#include "formats/html/svg_text.h"
#include "formats/html/word_art_svg.h"

namespace pagerex {
namespace {

constexpr double kEmuPerTwip = 635, kMostTwips = 1 << 20;

/// Strokes and gaps in widths of the line, by MSOLINEDASHING.
constexpr const char kDashes[][7] = {"",   "31", "11",   "3111", "311111", "13",
                                     "43", "83", "4313", "8313", "831313"};

/// Lines of several strokes: what is taken out of one, how far from its middle, and what stands in there
/// again, as parts of its width.
struct StrokeGap {
  double out, inwards, in;
};
constexpr StrokeGap kGaps[] = {{0, 0, 0}, {0.34, 0, 0}, {0.2, 0.2, 0}, {0.2, -0.2, 0}, {0.66, 0, 0.2}};

/// Writes one shape: `svg`, the shadow, and what is turned.
class ShapeSvg {
 public:
  ShapeSvg(std::string& out, const ShapeFacts& shape, double width, double height, SvgIds& ids)
      : out_(out), shape_(shape), width_(width), height_(height), ids_(ids) {}

  bool Write(std::string_view fillAddress);

 private:
  bool isSeen() const { return shape_.fill.kind != ShapeFill::Kind::kNone || shape_.line.isThere; }
  double LineWidth() const;
  void BeginSvg();
  /// The group of what is flipped and turned, with lines of this colour.
  void BeginTurned(uint32_t rgb);
  void AppendStroke(uint32_t rgb);
  void AppendDashes();
  void WriteShadow();
  void WriteParts(const SvgFill& fill);
  void WritePart(const ShapePath::Part& part, const SvgFill* fill);
  void WriteSteps(const ShapePath::Part& part);
  void WriteStrokes(const StrokeGap& gap);
  void WriteMasking(double width, double inwards, const char* colour);
  ShapePath::Part Beside(const ShapePath::Part& part, double inwards) const;
  void WriteArt(const SvgFill& fill);

  std::string& out_;
  const ShapeFacts& shape_;
  double width_, height_;
  SvgIds& ids_;
  ShapePath path_;
  bool isArt_ = false;
};

bool ShapeSvg::Write(std::string_view fillAddress) {
  isArt_ = isWordArt(shape_);
  if (!isArt_ && !shapeOutline(shape_.geometry, width_, height_, path_)) return false;
  if (!isSeen()) return true;
  BeginSvg();
  const SvgFill fill(out_, shape_.fill, width_, height_, ids_, fillAddress);
  if (shape_.shadow.isThere) WriteShadow();
  BeginTurned(shape_.line.rgb);
  isArt_ ? WriteArt(fill) : WriteParts(fill);
  out_ += "</g></svg>";
  return true;
}

double ShapeSvg::LineWidth() const {
  constexpr double kHairline = 8;
  return std::max(shape_.line.width / kEmuPerTwip, kHairline);
}

void ShapeSvg::BeginSvg() {
  constexpr double kTwipsPerPixel = 15;
  const double width = std::max(width_, kTwipsPerPixel), height = std::max(height_, kTwipsPerPixel);
  out_ += "<svg class=\"g\"";
  appendLengthAttribute(out_, "width", width / kTwipsPerPixel);
  appendLengthAttribute(out_, "height", height / kTwipsPerPixel);
  out_ += " viewBox=\"0 0 ";
  appendPoint(out_, {width, height});
  out_ += "\" overflow=\"visible\" aria-hidden=\"true\">";
}

/// Flipped first, then turned about the middle.
void ShapeSvg::BeginTurned(uint32_t rgb) {
  const ShapeGeometry& geometry = shape_.geometry;
  const double turn = geometry.rotation;
  out_ += "<g";
  if (turn != 0 || geometry.flipsX || geometry.flipsY) {
    out_ += " transform=\"";
    if (turn != 0) {
      out_ += "rotate(";
      appendDecimal(out_, turn);
      out_ += ' ';
      appendPoint(out_, {width_ / 2, height_ / 2});
      out_ += ')';
    }
    if (geometry.flipsX || geometry.flipsY) {
      out_ += "translate(";
      appendPoint(out_, {geometry.flipsX ? width_ : 0, geometry.flipsY ? height_ : 0});
      out_.append(")scale(").append(geometry.flipsX ? "-1" : "1").append(geometry.flipsY ? " -1)" : " 1)");
    }
    out_ += '"';
  }
  if (!geometry.vertices.empty()) out_ += " fill-rule=\"evenodd\"";
  if (shape_.line.isThere) AppendStroke(rgb);
  out_ += '>';
}

void ShapeSvg::AppendStroke(uint32_t rgb) {
  constexpr const char* kJoins[] = {" stroke-linejoin=\"bevel\"", "", " stroke-linejoin=\"round\""};
  constexpr const char* kCaps[] = {" stroke-linecap=\"round\"", " stroke-linecap=\"square\"", ""};
  const ShapeLine& line = shape_.line;
  appendRgbAttribute(out_, "stroke", rgb);
  appendLengthAttribute(out_, "stroke-width", LineWidth());
  appendOpacity(out_, "stroke-opacity", line.opacity);
  out_ += kJoins[static_cast<size_t>(line.join)];
  out_ += kCaps[static_cast<size_t>(line.cap)];
  AppendDashes();
}

void ShapeSvg::AppendDashes() {
  const std::string_view dashes = kDashes[std::min<size_t>(shape_.line.dash, std::size(kDashes) - 1)];
  if (dashes.empty()) return;
  out_ += " stroke-dasharray=\"";
  for (size_t i = 0; i < dashes.size(); ++i) {
    if (i > 0) out_ += ' ';
    appendLength(out_, (dashes[i] - '0') * LineWidth());
  }
  out_ += '"';
}

/// The whole shape in one colour, beside it.
void ShapeSvg::WriteShadow() {
  const ShapeShadow& shadow = shape_.shadow;
  out_ += "<g transform=\"translate(";
  appendPoint(out_, {shadow.x / kEmuPerTwip, shadow.y / kEmuPerTwip});
  out_ += ")\"";
  appendOpacity(out_, "opacity", shadow.opacity);
  if (shape_.fill.kind != ShapeFill::Kind::kNone) {
    appendRgbAttribute(out_, "fill", shadow.rgb);
  } else {
    out_ += " fill=\"none\"";
  }
  out_ += '>';
  BeginTurned(shadow.rgb);
  if (isArt_) {
    appendWordArt(out_, shape_.art, width_, height_);
  } else {
    for (const ShapePath::Part& part : path_.Parts()) WritePart(part, nullptr);
  }
  out_ += "</g></g>";
}

void ShapeSvg::WriteArt(const SvgFill& fill) {
  out_ += "<g";
  fill.Append(out_, 0);
  out_ += '>';
  appendWordArt(out_, shape_.art, width_, height_);
  out_ += "</g>";
}

void ShapeSvg::WriteParts(const SvgFill& fill) {
  std::string heads;
  if (shape_.line.isThere) appendArrowheads(heads, shape_.line, LineWidth(), path_);
  const StrokeGap gap = kGaps[static_cast<size_t>(shape_.line.style)];
  const bool hasGap = shape_.line.isThere && gap.out > 0;
  if (hasGap) out_ += "<g stroke=\"none\">";
  for (const ShapePath::Part& part : path_.Parts()) WritePart(part, &fill);
  if (hasGap) {
    out_ += "</g>";
    WriteStrokes(gap);
  }
  out_ += heads;
}

/// Without a fill the colour is that of what is around it.
void ShapeSvg::WritePart(const ShapePath::Part& part, const SvgFill* fill) {
  if (part.steps.empty()) return;
  const bool isFilled = part.isFilled && shape_.fill.kind != ShapeFill::Kind::kNone;
  if (!isFilled && !(part.isStroked && shape_.line.isThere)) return;
  out_ += "<path";
  if (!isFilled) {
    out_ += " fill=\"none\"";
  } else if (fill) {
    fill->Append(out_, part.shade);
  }
  if (!part.isStroked) out_ += " stroke=\"none\"";
  WriteSteps(part);
}

void ShapeSvg::WriteSteps(const ShapePath::Part& part) {
  out_ += " d=\"";
  appendSteps(out_, part);
  out_ += "\"/>";
}

/// The strokes behind a mask that takes gaps out of them.
void ShapeSvg::WriteStrokes(const StrokeGap& gap) {
  const double width = LineWidth(), reach = width * 4;
  const std::string id = std::to_string(ids_.Take());
  out_.append("<mask id=\"g-").append(id).append("\" maskUnits=\"userSpaceOnUse\"");
  appendLengthAttribute(out_, "x", -reach);
  appendLengthAttribute(out_, "y", -reach);
  appendLengthAttribute(out_, "width", width_ + 2 * reach);
  appendLengthAttribute(out_, "height", height_ + 2 * reach);
  out_ += " fill=\"none\">";
  WriteMasking(width, 0, "#fff");
  WriteMasking(width * gap.out, width * gap.inwards, "#000");
  if (gap.in > 0) WriteMasking(width * gap.in, 0, "#fff");
  out_.append("</mask><g fill=\"none\" mask=\"url(#g-").append(id).append(")\">");
  for (const ShapePath::Part& part : path_.Parts()) {
    if (!part.isStroked || part.steps.empty()) continue;
    out_ += "<path";
    WriteSteps(part);
  }
  out_ += "</g>";
}

void ShapeSvg::WriteMasking(double width, double inwards, const char* colour) {
  out_.append("<g stroke-opacity=\"1\" stroke=\"").append(colour).append("\"");
  appendLengthAttribute(out_, "stroke-width", width);
  out_ += '>';
  for (const ShapePath::Part& part : path_.Parts()) {
    if (!part.isStroked || part.steps.empty()) continue;
    out_ += "<path";
    WriteSteps(inwards != 0 ? Beside(part, inwards) : part);
  }
  out_ += "</g>";
}

/// A closed part nearer to the middle, or an open one to the right of its way.
ShapePath::Part ShapeSvg::Beside(const ShapePath::Part& part, double inwards) const {
  using Step = ShapePath::Step;
  ShapePath::Part moved = part;
  const bool isClosed = std::any_of(part.steps.begin(), part.steps.end(),
                                    [](const Step& step) { return step.kind == Step::Kind::kClose; });
  const PathPoint from = part.steps.front().end, to = part.steps.back().end;
  const double length = std::max(std::hypot(to.x - from.x, to.y - from.y), 1.0);
  const auto move = [&](PathPoint& point) {
    if (isClosed) {
      point.x += inwards * (1 - 2 * point.x / std::max(width_, 1.0));
      point.y += inwards * (1 - 2 * point.y / std::max(height_, 1.0));
    } else {
      point.x -= inwards * (to.y - from.y) / length;
      point.y += inwards * (to.x - from.x) / length;
    }
  };
  for (Step& step : moved.steps) {
    for (PathPoint* const point : {&step.first, &step.second, &step.end}) move(*point);
  }
  return moved;
}

}  // namespace

bool appendShapeSvg(std::string& out, const ShapeFacts& shape, int32_t widthTwips, int32_t heightTwips,
                    SvgIds& ids, std::string_view fillAddress) {
  const auto bounded = [](int32_t length) { return std::clamp<double>(length, 0, kMostTwips); };
  return ShapeSvg(out, shape, bounded(widthTwips), bounded(heightTwips), ids).Write(fillAddress);
}

/// Text does not stand in a mirror; where it stands does.
ShapeTextBox textRectangle(const ShapeFacts& shape, int32_t widthTwips, int32_t heightTwips) {
  ShapeBox box = shapeTextBox(shape.geometry, widthTwips, heightTwips);
  if (shape.geometry.flipsX) box.left = widthTwips - box.left - box.width;
  if (shape.geometry.flipsY) box.top = heightTwips - box.top - box.height;
  return box;
}

}  // namespace pagerex

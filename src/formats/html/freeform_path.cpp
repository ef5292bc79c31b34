#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "formats/html/shape_outlines.h"

namespace pagerex {
namespace {

/// What the formulas of a freeform come to. Each may use those before it.
class GuideValues {
 public:
  explicit GuideValues(const ShapeGeometry& shape);

  /// Of a coordinate: itself, or a guide.
  double Of(int32_t coordinate) const;

 private:
  double Compute(const ShapeGuide& guide) const;
  double Parameter(const ShapeGuide& guide, unsigned i) const;

  const ShapeGeometry& shape_;
  std::vector<double> values_;
};

constexpr size_t kMostGuides = 128;
constexpr double kMostValue = 1e9;

GuideValues::GuideValues(const ShapeGeometry& shape) : shape_(shape) {
  const size_t count = std::min(shape.guides.size(), kMostGuides);
  values_.reserve(count);
  for (size_t i = 0; i < count; ++i) {
    const double value = Compute(shape.guides[i]);
    values_.push_back(std::isfinite(value) ? std::clamp(value, -kMostValue, kMostValue) : 0);
  }
}

double GuideValues::Of(int32_t coordinate) const {
  constexpr uint32_t kGuide = 0x80000000;
  const uint32_t index = static_cast<uint32_t>(coordinate) - kGuide;
  return index < values_.size() ? values_[index] : coordinate;
}

double GuideValues::Parameter(const ShapeGuide& guide, unsigned i) const {
  constexpr int kLeft = 0x0140, kFirstAdjustment = 0x0147, kFirstGuide = 0x0400;
  const int value = guide.values[i];
  if (!guide.isReference[i]) return value;
  const int32_t sides[] = {shape_.left, shape_.top, shape_.right, shape_.bottom};
  if (value >= kLeft && value < kLeft + 4) return sides[value - kLeft];
  if (value >= kFirstGuide && static_cast<size_t>(value - kFirstGuide) < values_.size())
    return values_[static_cast<size_t>(value - kFirstGuide)];
  const int adjustment = value - kFirstAdjustment;
  if (adjustment < 0 || adjustment >= static_cast<int>(shape_.adjustments.size())) return 0;
  return shape_.adjustments[static_cast<size_t>(adjustment)].value_or(0);
}

double GuideValues::Compute(const ShapeGuide& guide) const {
  constexpr double kAngle = 65536 * 180 / std::numbers::pi;  // angles are 16.16 degrees
  const double a = Parameter(guide, 0), b = Parameter(guide, 1), c = Parameter(guide, 2);
  switch (guide.kind) {
    case 0:
      return a + b - c;
    case 1:
      return c != 0 ? a * b / c : 0;
    case 2:
      return (a + b) / 2;
    case 3:
      return std::abs(a);
    case 4:
      return std::min(a, b);
    case 5:
      return std::max(a, b);
    case 6:
      return a > 0 ? b : c;
    case 7:
      return std::sqrt(a * a + b * b + c * c);
    case 8:
      return std::atan2(b, a) * kAngle;
    case 9:
      return a * std::sin(b / kAngle);
    case 10:
      return a * std::cos(b / kAngle);
    case 11:
      return a * std::cos(std::atan2(c, b));
    case 12:
      return a * std::sin(std::atan2(c, b));
    case 13:
      return std::sqrt(std::max(a, 0.0));
    case 14:
      return a + b * 65536 - c * 65536;
    case 15:
      return b != 0 ? c * std::sqrt(std::max(1 - (a / b) * (a / b), 0.0)) : 0;
    case 16:
      return a * std::tan(b / kAngle);
    default:
      return 0;
  }
}

/// Draws the segments (MSOPATHINFO) of a freeform. Each point is taken once.
class FreeformDrawer {
 public:
  FreeformDrawer(const ShapeGeometry& shape, double width, double height, ShapePath& out)
      : shape_(shape), guides_(shape), width_(width), height_(height), out_(out) {}

  void DrawSegments();
  /// Without segments: all points in one manner.
  void DrawPoints();

 private:
  size_t Left() const { return shape_.vertices.size() - at_; }
  /// Values of a vertex, which need not be a place.
  PathPoint Raw();
  PathPoint Placed(PathPoint raw) const;
  PathPoint Next() { return Placed(Raw()); }
  void DrawSegment(uint16_t segment);
  void Escape(unsigned kind, size_t points);
  void EllipseByAngles(bool isNew);
  void EllipseByPoints(bool isNew, bool isClockwise);
  void Quadratics(size_t points);

  const ShapeGeometry& shape_;
  GuideValues guides_;
  double width_, height_;
  ShapePath& out_;
  size_t at_ = 0;
};

PathPoint FreeformDrawer::Raw() {
  if (at_ >= shape_.vertices.size()) return {};
  const ShapePoint& point = shape_.vertices[at_++];
  return {guides_.Of(point.x), guides_.Of(point.y)};
}

PathPoint FreeformDrawer::Placed(PathPoint raw) const {
  const double spaceX = double{1} * shape_.right - shape_.left,
               spaceY = double{1} * shape_.bottom - shape_.top;
  return {spaceX > 0 ? (raw.x - shape_.left) * width_ / spaceX : 0,
          spaceY > 0 ? (raw.y - shape_.top) * height_ / spaceY : 0};
}

void FreeformDrawer::DrawSegments() {
  for (const uint16_t segment : shape_.segments) DrawSegment(segment);
}

void FreeformDrawer::DrawSegment(uint16_t segment) {
  enum : unsigned { kLine, kCurve, kMove, kClose, kEnd, kEscape };
  constexpr unsigned kCount = 0x1FFF, kEscapeKind = 0x1F, kEscapePoints = 0xFF;
  const size_t count = segment & kCount;
  switch (segment >> 13) {
    case kLine:
      for (size_t i = 0; i < count && Left() >= 1; ++i) out_.Line(Next());
      break;
    case kCurve:
      for (size_t i = 0; i < count && Left() >= 3; ++i) {
        const PathPoint first = Next(), second = Next();
        out_.Curve(first, second, Next());
      }
      break;
    case kMove:
      if (Left() >= 1) out_.Move(Next());
      break;
    case kClose:
      out_.Close();
      break;
    case kEnd:
      out_.NextPart();
      break;
    case kEscape:
      Escape(segment >> 8 & kEscapeKind, segment & kEscapePoints);
      break;
    default:
      break;
  }
}

void FreeformDrawer::Escape(unsigned kind, size_t points) {
  enum : unsigned {
    kAngleEllipseTo = 1,
    kAngleEllipse,
    kArcTo,
    kArc,
    kClockwiseArcTo,
    kClockwiseArc,
    kQuadrantX,
    kQuadrantY,
    kQuadratic,
    kNoFill,
    kNoLine
  };
  switch (kind) {
    case kAngleEllipseTo:
    case kAngleEllipse:
      for (size_t i = 0; i + 3 <= points && Left() >= 3; i += 3) EllipseByAngles(kind == kAngleEllipse);
      break;
    case kArcTo:
    case kArc:
    case kClockwiseArcTo:
    case kClockwiseArc:
      for (size_t i = 0; i + 4 <= points && Left() >= 4; i += 4) {
        EllipseByPoints(kind == kArc || kind == kClockwiseArc, kind >= kClockwiseArcTo);
      }
      break;
    case kQuadrantX:
    case kQuadrantY:
      for (size_t i = 0; i < points && Left() >= 1; ++i) {
        out_.Quadrant(Next(), (kind == kQuadrantX) == (i % 2 == 0));
      }
      break;
    case kQuadratic:
      Quadratics(points);
      break;
    case kNoFill:
      out_.Current().isFilled = false;
      break;
    case kNoLine:
      out_.Current().isStroked = false;
      break;
    default:
      break;  // how an editor treats the points
  }
}

/// Middle, radii, and angles: where it begins, and how far it goes.
void FreeformDrawer::EllipseByAngles(bool isNew) {
  constexpr double kOne = 65536;
  const PathPoint middle = Raw(), radii = Raw(), angles = Raw();
  const PathPoint low = Placed({middle.x - radii.x, middle.y - radii.y});
  const PathPoint high = Placed({middle.x + radii.x, middle.y + radii.y});
  const double start = angles.x / kOne;
  if (isNew) {
    const double angle = start * std::numbers::pi / 180;
    out_.Move(Placed({middle.x + radii.x * std::cos(angle), middle.y + radii.y * std::sin(angle)}));
  }
  out_.Arc(low, high, start, angles.y / kOne);
}

/// The corners of its box, and two points in whose directions it begins and ends.
void FreeformDrawer::EllipseByPoints(bool isNew, bool isClockwise) {
  const PathPoint low = Next(), high = Next(), from = Next(), to = Next();
  const double radiusX = (high.x - low.x) / 2, radiusY = (high.y - low.y) / 2;
  if (radiusX == 0 || radiusY == 0) return;
  const PathPoint middle{(low.x + high.x) / 2, (low.y + high.y) / 2};
  const auto angleOf = [&](PathPoint point) {
    return std::atan2((point.y - middle.y) / radiusY, (point.x - middle.x) / radiusX) * 180 /
           std::numbers::pi;
  };
  const double start = angleOf(from);
  double sweep = angleOf(to) - start;
  if (isClockwise && sweep <= 0) sweep += 360;
  if (!isClockwise && sweep >= 0) sweep -= 360;
  if (isNew) {
    const double angle = start * std::numbers::pi / 180;
    out_.Move({middle.x + radiusX * std::cos(angle), middle.y + radiusY * std::sin(angle)});
  }
  out_.Arc(low, high, start, sweep);
}

void FreeformDrawer::Quadratics(size_t points) {
  for (size_t i = 0; i + 2 <= points && Left() >= 2; i += 2) {
    const PathPoint middle = Next();
    out_.Quadratic(middle, Next());
  }
}

void FreeformDrawer::DrawPoints() {
  constexpr uint8_t kLinesClosed = 1, kCurves = 2, kCurvesClosed = 3;
  out_.Move(Next());
  if (shape_.pathKind == kCurves || shape_.pathKind == kCurvesClosed) {
    while (Left() >= 3) {
      const PathPoint first = Next(), second = Next();
      out_.Curve(first, second, Next());
    }
  } else {
    while (Left() >= 1) out_.Line(Next());
  }
  if (shape_.pathKind == kLinesClosed || shape_.pathKind == kCurvesClosed) out_.Close();
}

}  // namespace

bool freeformOutline(const ShapeGeometry& shape, double width, double height, ShapePath& out) {
  FreeformDrawer drawer(shape, width, height, out);
  if (shape.segments.empty()) {
    drawer.DrawPoints();
  } else {
    drawer.DrawSegments();
  }
  return !out.isEmpty();
}

}  // namespace pagerex

#include "formats/html/shape_path.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pagerex {

void ShapePath::Add(Step::Kind kind, PathPoint first, PathPoint second, PathPoint end) {
  Current().steps.push_back({kind, first, second, end});
  here_ = end;
}

void ShapePath::Move(PathPoint to) {
  Add(Step::Kind::kMove, {}, {}, to);
  start_ = to;
  isOpen_ = true;
}

void ShapePath::Line(PathPoint to) {
  if (!isOpen_) Move(here_);
  Add(Step::Kind::kLine, {}, {}, to);
}

void ShapePath::Curve(PathPoint first, PathPoint second, PathPoint to) {
  if (!isOpen_) Move(here_);
  Add(Step::Kind::kCurve, first, second, to);
}

void ShapePath::Quadratic(PathPoint middle, PathPoint to) {
  const auto between = [middle](PathPoint end) {
    return PathPoint{end.x + (middle.x - end.x) * 2 / 3, end.y + (middle.y - end.y) * 2 / 3};
  };
  Curve(between(here_), between(to), to);
}

void ShapePath::Quadrant(PathPoint to, bool isFirstAlongX) {
  constexpr double kQuarter = 0.5523;  // how far the points that a curve is drawn to stand along a quarter
  const PathPoint corner = isFirstAlongX ? PathPoint{to.x, here_.y} : PathPoint{here_.x, to.y};
  const auto towards = [corner](PathPoint end) {
    return PathPoint{end.x + (corner.x - end.x) * kQuarter, end.y + (corner.y - end.y) * kQuarter};
  };
  Curve(towards(here_), towards(to), to);
}

void ShapePath::Arc(PathPoint low, PathPoint high, double start, double sweep) {
  constexpr double kRadians = std::numbers::pi / 180;
  const PathPoint centre{(low.x + high.x) / 2, (low.y + high.y) / 2};
  const double radiusX = (high.x - low.x) / 2, radiusY = (high.y - low.y) / 2;
  sweep = std::clamp(sweep, -360.0, 360.0);
  const int pieces = std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / 90 - 1e-6)));
  const double piece = sweep / pieces * kRadians;
  const double reach = std::tan(piece / 4) * 4 / 3;
  double angle = std::fmod(start, 360.0) * kRadians;
  const auto at = [&](double turn) {
    return PathPoint{centre.x + radiusX * std::cos(turn), centre.y + radiusY * std::sin(turn)};
  };
  const PathPoint begin = at(angle);
  if (!isOpen_) {
    Move(begin);
  } else if (std::abs(begin.x - here_.x) > 0.5 || std::abs(begin.y - here_.y) > 0.5) {
    Line(begin);
  }
  for (int i = 0; i < pieces; ++i, angle += piece) {
    const PathPoint from = at(angle), to = at(angle + piece);
    Curve(
        {from.x - radiusX * std::sin(angle) * reach, from.y + radiusY * std::cos(angle) * reach},
        {to.x + radiusX * std::sin(angle + piece) * reach, to.y - radiusY * std::cos(angle + piece) * reach},
        to);
  }
}

void ShapePath::Close() {
  if (!isOpen_) return;
  Add(Step::Kind::kClose, {}, {}, start_);
  isOpen_ = false;
}

void ShapePath::NextPart() {
  if (!Current().steps.empty()) parts_.emplace_back();
  Current().isFilled = Current().isStroked = true;
  Current().shade = 0;
  isOpen_ = false;
}

bool ShapePath::isEmpty() const {
  return std::all_of(parts_.begin(), parts_.end(), [](const Part& part) { return part.steps.empty(); });
}

}  // namespace pagerex

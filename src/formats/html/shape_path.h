#pragma once

#include <cstdint>
#include <vector>

namespace pagerex {

struct PathPoint {
  double x = 0, y = 0;
};

/// The lines of a shape, in parts that are painted one behind the other. Arcs and quadratic curves are taken
/// as cubic ones.
class ShapePath {
 public:
  struct Step {
    enum class Kind : uint8_t { kMove, kLine, kCurve, kClose };
    Kind kind;
    PathPoint first, second;  ///< of a curve: what it is drawn to
    PathPoint end;
  };
  struct Part {
    bool isFilled = true, isStroked = true;
    int8_t shade = 0;  ///< 1 lighter than the fill, -1 darker
    std::vector<Step> steps;
  };

  ShapePath() : parts_(1) {}

  void Move(PathPoint to);
  void Line(PathPoint to);
  void Curve(PathPoint first, PathPoint second, PathPoint to);
  void Quadratic(PathPoint middle, PathPoint to);
  /// A quarter of an ellipse, which begins along one axis and ends along the other.
  void Quadrant(PathPoint to, bool isFirstAlongX);
  /// Of the ellipse in a box, from an angle on: degrees clockwise, 0 is to the right, as if it were a circle.
  /// A line leads to where it begins, unless nothing has been drawn.
  void Arc(PathPoint low, PathPoint high, double start, double sweep);
  void Close();
  void NextPart();

  Part& Current() { return parts_.back(); }
  std::vector<Part>& Parts() { return parts_; }
  PathPoint Here() const { return here_; }
  bool isEmpty() const;

 private:
  void Add(Step::Kind kind, PathPoint first, PathPoint second, PathPoint end);

  std::vector<Part> parts_;
  PathPoint here_, start_;
  bool isOpen_ = false;
};

}  // namespace pagerex

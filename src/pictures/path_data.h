#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "pictures/geometry.h"

namespace pagerex {

/// An outline as SVG spells it, built step by step. Points are in units of the canvas and go to whole ones,
/// as a difference to the one before, so that errors don't add up. Numbers that are none, and those far off
/// the canvas, come out at its bounds.
class PathData {
 public:
  void MoveTo(Point to);
  void LineTo(Point to);
  /// Lines from each to the next.
  void LinesTo(const Point* points, size_t count);
  void CurveTo(Point control1, Point control2, Point to);
  /// A part of an ellipse up to `to`, whose axes lie along those of the canvas before it is turned by
  /// `degrees`.
  void ArcTo(double radiusX, double radiusY, double degrees, bool isLarge, bool isClockwise, Point to);
  void Close();

  void AddBox(const Box& box);
  void AddEllipse(const Box& bounds);
  /// Corners with these radii.
  void AddRoundBox(const Box& box, double radiusX, double radiusY);

  bool empty() const { return data_.empty(); }
  /// The value of the attribute "d".
  std::string_view view() const { return data_; }
  void clear();
  /// Takes all that other one has, as it stands.
  void Append(const PathData& other);

  /// Of all points and controls, in units; right below left for nothing.
  Box bounds() const { return {double(left_), double(top_), double(right_), double(bottom_)}; }

 private:
  void Begin(char command);
  void PutPoint(Point p, bool isLast);
  char* SpellPoint(char* at, Point p, bool isLast);
  void Cover(int32_t x, int32_t y) {
    left_ = std::min(left_, x);
    top_ = std::min(top_, y);
    right_ = std::max(right_, x);
    bottom_ = std::max(bottom_, y);
  }

  static constexpr int32_t kNowhere = 1 << 30;

  std::string data_;
  int32_t x_ = 0, y_ = 0;            ///< where it stands
  int32_t startX_ = 0, startY_ = 0;  ///< of the figure
  int32_t left_ = kNowhere, top_ = kNowhere, right_ = -kNowhere, bottom_ = -kNowhere;
  char last_ = 0;  ///< command, which need not be repeated
  bool needsSpace_ = false;
};

}  // namespace pagerex

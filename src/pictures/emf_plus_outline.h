#pragma once

#include <span>
#include <vector>

#include "pictures/emf_plus_reader.h"
#include "pictures/paint.h"
#include "pictures/path_data.h"

namespace pagerex {

/// Figures of lines and Bezier curves: what EMF+ fills and draws.
struct PlusOutline {
  // What a point is, as a path in the file has it.
  static constexpr uint8_t kStart = 0, kLine = 1, kCurve = 3, kKind = 7, kClose = 0x80;

  std::vector<Point> points;
  std::vector<uint8_t> types;  ///< as many
  FillRule rule = FillRule::kEvenOdd;

  void clear();
  void Add(Point p, uint8_t type);
  /// The last figure ends where it began.
  void Close();

  void AddLines(std::span<const Point> through, bool isClosed);
  void AddBeziers(std::span<const Point> all);
  /// A cardinal spline through all points; `count` of its pieces from the `first` one on are there.
  void AddCurve(std::span<const Point> through, double tension, bool isClosed, size_t first = 0,
                size_t count = SIZE_MAX);
  void AddBox(const Box& box);
  void AddEllipse(const Box& box);
  /// Degrees, clockwise; a pie has its centre as a corner.
  void AddArc(const Box& box, double start, double sweep, bool isPie);
  /// The object in the file.
  void AddPath(ByteView path);

  void Move(const Matrix& matrix);
  PathData Data() const;
};

}  // namespace pagerex

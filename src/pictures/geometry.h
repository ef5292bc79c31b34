#pragma once

#include <cmath>

namespace pagerex {

struct Point {
  double x = 0, y = 0;
};

/// Edges; right and bottom are not part of it.
struct Box {
  double left = 0, top = 0, right = 0, bottom = 0;

  double width() const { return right - left; }
  double height() const { return bottom - top; }
};

/// x' = a x + c y + e, y' = b x + d y + f, as SVG spells it: matrix(a b c d e f).
struct Matrix {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

  Point operator()(Point p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
  Point operator()(double x, double y) const { return (*this)(Point{x, y}); }
  /// Of a direction: without what it moves.
  Point Turn(double x, double y) const { return {a * x + c * y, b * x + d * y}; }
  /// What a length becomes, as a mean of all directions.
  double Scale() const { return std::sqrt(std::fabs(a * d - b * c)); }
  bool isUpright() const { return b == 0 && c == 0; }
  bool operator==(const Matrix&) const = default;
};

/// Applies `first`, then `second`.
inline Matrix operator*(const Matrix& first, const Matrix& second) {
  return {second.a * first.a + second.c * first.b,
          second.b * first.a + second.d * first.b,
          second.a * first.c + second.c * first.d,
          second.b * first.c + second.d * first.d,
          second.a * first.e + second.c * first.f + second.e,
          second.b * first.e + second.d * first.f + second.f};
}

}  // namespace pagerex

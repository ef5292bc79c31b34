// Points of lines, of which pictures have by far the most.

#include "pictures/gdi.h"

namespace pagerex {

void Gdi::AddLines(PathData& path, const PointList& points, size_t first) {
  constexpr size_t kAtOnce = 64;
  const Matrix to = map();
  Point mapped[kAtOnce];
  for (size_t i = first; i < points.count();) {
    const size_t now = std::min(points.count() - i, kAtOnce);
    for (size_t j = 0; j < now; ++j) mapped[j] = to(points[i + j]);
    path.LinesTo(mapped, now);
    i += now;
  }
}

void Gdi::AddPoints(PathData& path, const PointList& points) {
  if (points.count() == 0) return;
  path.MoveTo(map()(points[0]));
  AddLines(path, points, 1);
}

}  // namespace pagerex

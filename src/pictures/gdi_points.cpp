// Points of lines, of which pictures have by far the most.

#include "pictures/gdi.h"

namespace pagerex {

void Gdi::AddLines(PathData& path, const PointList& points, size_t first) {
  const Matrix to = map();
  for (size_t i = first; i < points.count(); ++i) path.LineTo(to(points[i]));
}

void Gdi::AddPoints(PathData& path, const PointList& points) {
  if (points.count() == 0) return;
  path.MoveTo(map()(points[0]));
  AddLines(path, points, 1);
}

}  // namespace pagerex

#include "pictures/emf_plus_outline.h"

#include <algorithm>
#include <cmath>

namespace pagerex {
namespace {

constexpr double kPi = 3.14159265358979323846;

}  // namespace

void PlusOutline::clear() {
  points.clear();
  types.clear();
  rule = FillRule::kEvenOdd;
}

void PlusOutline::Add(Point p, uint8_t type) {
  points.push_back(p);
  types.push_back(type);
}

void PlusOutline::Close() {
  if (!types.empty()) types.back() |= kClose;
}

void PlusOutline::AddLines(std::span<const Point> through, bool isClosed) {
  for (size_t i = 0; i < through.size(); ++i) Add(through[i], i == 0 ? kStart : kLine);
  if (isClosed) Close();
}

void PlusOutline::AddBeziers(std::span<const Point> all) {
  for (size_t i = 0; i < all.size(); ++i) Add(all[i], i == 0 ? kStart : kCurve);
}

void PlusOutline::AddCurve(std::span<const Point> through, double tension, bool isClosed, size_t first,
                           size_t count) {
  const size_t n = through.size();
  if (n < 2 || first >= n - 1) return;
  const size_t pieces = isClosed ? n : n - 1;
  count = std::min(count, pieces - first);
  // A third of the way that the curve has at a point.
  const auto slope = [&](size_t i) {
    const Point before = i > 0 ? through[i - 1] : isClosed ? through[n - 1] : through[0];
    const Point behind = i + 1 < n ? through[i + 1] : isClosed ? through[0] : through[n - 1];
    return Point{(behind.x - before.x) * tension / 3, (behind.y - before.y) * tension / 3};
  };
  Add(through[first], kStart);
  for (size_t i = first; i < first + count; ++i) {
    const size_t next = (i + 1) % n;
    const Point from = through[i], to = through[next], out = slope(i), in = slope(next);
    Add({from.x + out.x, from.y + out.y}, kCurve);
    Add({to.x - in.x, to.y - in.y}, kCurve);
    Add(to, kCurve);
  }
  if (isClosed) Close();
}

void PlusOutline::AddBox(const Box& box) {
  if (box.right < box.left || box.bottom < box.top) return;
  const Point corners[] = {
      {box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}, {box.left, box.bottom}};
  AddLines(corners, true);
}

void PlusOutline::AddEllipse(const Box& box) {
  AddArc(box, 0, 360, false);
  Close();
}

void PlusOutline::AddArc(const Box& box, double start, double sweep, bool isPie) {
  const double x = (box.left + box.right) / 2, y = (box.top + box.bottom) / 2;
  const double radiusX = box.width() / 2, radiusY = box.height() / 2;
  if (!(radiusX > 0) || !(radiusY > 0)) return;
  // Angles are those of a ray from the centre, not those of the circle that the ellipse is made of.
  const auto turned = [&](double degrees) {
    const double angle = degrees * kPi / 180;
    const double on = std::atan2(std::sin(angle) * radiusX, std::cos(angle) * radiusY);
    return on + 2 * kPi * std::round((angle - on) / (2 * kPi));
  };
  start = std::fmod(start, 360);
  sweep = std::clamp(sweep, -360.0, 360.0);
  const double from = turned(start), all = turned(start + sweep) - from;
  const int parts = std::max(static_cast<int>(std::ceil(std::fabs(all) / (kPi / 2) - 1e-6)), 1);
  const double step = all / parts, reach = 4.0 / 3 * std::tan(step / 4);
  const auto on = [&](double angle, double along) {
    const double cosine = std::cos(angle), sine = std::sin(angle);
    return Point{x + radiusX * (cosine - along * sine), y + radiusY * (sine + along * cosine)};
  };
  if (isPie) Add({x, y}, kStart);
  Add(on(from, 0), isPie ? kLine : kStart);
  for (int i = 0; i < parts; ++i) {
    const double angle = from + step * i;
    Add(on(angle, reach), kCurve);
    Add(on(angle + step, -reach), kCurve);
    Add(on(angle + step, 0), kCurve);
  }
  if (isPie) Close();
}

void PlusOutline::AddPath(ByteView path) {
  PlusReader reader(path);
  reader.U32();  // version
  const uint32_t count = reader.U32(), flags = reader.U32();
  const size_t before = points.size();
  reader.Points(count, pointForm(flags), points);
  const size_t end = points.size();
  if (flags & kPlusOption) rule = FillRule::kNonZero;
  // Types in runs have a bit that no type has.
  const bool isInRuns = (flags & 0x1000) || ((flags & kPlusRelative) && (reader.rest().u8(0) & 0x40));
  types.reserve(end);
  while (types.size() < end && reader.left() > 0) {
    size_t run = 1;
    if (isInRuns) run = reader.U8() & 0x3F;
    const uint8_t type = reader.U8();
    types.insert(types.end(), std::min(run, end - types.size()), type);
  }
  types.resize(end, kLine);
  if (end > before) types[before] &= static_cast<uint8_t>(~kKind);
}

void PlusOutline::Move(const Matrix& matrix) {
  for (Point& p : points) p = matrix(p);
}

PathData PlusOutline::Data() const {
  PathData data;
  const size_t n = points.size();
  for (size_t i = 0; i < n; ++i) {
    const uint8_t kind = types[i] & kKind;
    if (kind == kStart) {
      // A figure of a point alone shows nothing.
      if (i + 1 < n && (types[i + 1] & kKind) != kStart) data.MoveTo(points[i]);
      continue;
    }
    if (kind == kCurve && i + 2 < n && (types[i + 1] & kKind) == kCurve && (types[i + 2] & kKind) == kCurve) {
      data.CurveTo(points[i], points[i + 1], points[i + 2]);
      i += 2;
    } else {
      data.LineTo(points[i]);
    }
    // Closed, and not followed by a start, it goes on from where it began.
    if (types[i] & kClose) data.Close();
  }
  return data;
}

}  // namespace pagerex

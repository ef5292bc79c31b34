#include "pictures/emf_plus_outline.h"

#include <algorithm>
#include <cmath>

namespace pagerex {
namespace {

constexpr double kPi = 3.14159265358979323846;

/// The angle on the circle that an ellipse is made of, from that of a ray through its centre.
double angleOn(double degrees, double radiusX, double radiusY) {
  const double angle = degrees * kPi / 180;
  const double on = std::atan2(std::sin(angle) * radiusX, std::cos(angle) * radiusY);
  return on + 2 * kPi * std::round((angle - on) / (2 * kPi));
}

}  // namespace

void PlusOutline::clear() {
  points.clear();
  rule = FillRule::kEvenOdd;
}

void PlusOutline::Add(Point at, uint8_t type) {
  points.push_back({at, type});
}

void PlusOutline::Close() {
  if (!points.empty()) points.back().type |= kClose;
}

void PlusOutline::AddCurve(const PlusOutline& through, double tension, bool isClosed, size_t first,
                           size_t count) {
  const size_t n = through.points.size();
  if (n < 2 || first >= n - 1) return;
  // Those beyond the ends are the ends, or those of the other end.
  const auto point = [&](size_t i) {
    if (i >= n) i = isClosed ? (i + n) % n : i == n ? n - 1 : 0;
    return through.points[i].at;
  };
  const auto add = [&](size_t i, double part, uint8_t type) {
    const Point at = point(i), before = point(i - 1), behind = point(i + 1);
    part *= tension / 3;
    Add({at.x + (behind.x - before.x) * part, at.y + (behind.y - before.y) * part}, type);
  };
  const size_t end = first + std::min(count, (isClosed ? n : n - 1) - first);
  add(first, 0, kStart);
  for (size_t i = first; i < end; ++i) {
    add(i, 1, kCurve);
    add(i + 1 == n ? 0 : i + 1, -1, kCurve);
    add(i + 1 == n ? 0 : i + 1, 0, kCurve);
  }
  if (isClosed) Close();
}

void PlusOutline::AddBox(const Box& box) {
  if (box.right < box.left || box.bottom < box.top) return;
  Add({box.left, box.top}, kStart);
  Add({box.right, box.top}, kLine);
  Add({box.right, box.bottom}, kLine);
  Add({box.left, box.bottom}, kLine | kClose);
}

void PlusOutline::AddEllipse(const Box& box) {
  AddArc(box, 0, 360, false);
  Close();
}

void PlusOutline::AddArc(const Box& box, double start, double sweep, bool isPie) {
  const double x = (box.left + box.right) / 2, y = (box.top + box.bottom) / 2;
  const double radiusX = box.width() / 2, radiusY = box.height() / 2;
  if (!(radiusX > 0) || !(radiusY > 0)) return;
  start = std::fmod(start, 360);
  sweep = std::clamp(sweep, -360.0, 360.0);
  double angle = angleOn(start, radiusX, radiusY);
  const double all = angleOn(start + sweep, radiusX, radiusY) - angle;
  const double parts = std::max(std::ceil(std::fabs(all) / (kPi / 2) - 1e-6), 1.0);
  const double step = all / parts, reach = 4.0 / 3 * std::tan(step / 4);
  const auto add = [&](double along, uint8_t type) {
    const double cosine = std::cos(angle), sine = std::sin(angle);
    Add({x + radiusX * (cosine - along * sine), y + radiusY * (sine + along * cosine)}, type);
  };
  if (isPie) Add({x, y}, kStart);
  add(0, isPie ? kLine : kStart);
  for (int left = static_cast<int>(parts); left > 0; --left) {
    add(reach, kCurve);
    angle += step;
    add(-reach, kCurve);
    add(0, kCurve);
  }
  if (isPie) Close();
}

void PlusOutline::AddPath(ByteView path) {
  PlusReader reader(path);
  reader.U32();  // version
  const uint32_t count = reader.U32(), flags = reader.U32();
  if (flags & kPlusOption) rule = FillRule::kNonZero;
  size_t at = points.size();
  reader.Points(count, flags, *this, kLine);
  // Types in runs have a bit that no type has.
  const bool isInRuns = (flags & 0x1000) || ((flags & kPlusRelative) && (reader.rest().u8(0) & 0x40));
  for (bool isFirst = true; at < points.size() && reader.left() > 0;) {
    unsigned run = isInRuns ? reader.Take(1).u8(0) & 0x3F : 1;
    const uint8_t type = reader.Take(1).u8(0);
    for (; run > 0 && at < points.size(); --run, isFirst = false) points[at++].type = isFirst ? kStart : type;
  }
}

void PlusOutline::Move(const Matrix& matrix, size_t from) {
  for (; from < points.size(); ++from) points[from].at = matrix(points[from].at);
}

void PlusOutline::Put(PathData& data) const {
  const Corner* const end = points.data() + points.size();
  for (const Corner* p = points.data(); p < end; ++p) {
    if (p->kind() == kStart) {
      // A figure of a point alone shows nothing.
      if (p + 1 < end && p[1].kind() != kStart) data.MoveTo(p->at);
      continue;
    }
    if (p->kind() == kCurve && end - p > 2 && p[1].kind() == kCurve && p[2].kind() == kCurve) {
      data.CurveTo(p->at, p[1].at, p[2].at);
      p += 2;
    } else {
      data.LineTo(p->at);
    }
    if (p->type & kClose) data.Close();
  }
}

}  // namespace pagerex

// Lines and areas.

#include <numbers>

#include "pictures/gdi.h"

namespace pagerex {
namespace {

constexpr double kDegree = std::numbers::pi / 180;

}  // namespace

void Gdi::Draw(const PathData& path, const Paint& fill, FillRule rule, const Stroke& stroke) {
  Draw(path, fill, rule, stroke, binaryStep(state_.rop2));
}

void Gdi::Draw(const PathData& path, const Paint& fill, FillRule rule, const Stroke& stroke,
               const RasterStep& step) {
  if (step.changesNothing) return;
  ApplyClip();
  if (step.invertsFirst) {
    const Paint white = Paint::Colour(0xFFFFFF);
    Stroke inverse = stroke;
    if (stroke.paint.kind != Paint::Kind::kNone) inverse.paint = white;
    canvas_.Draw(path, fill.kind == Paint::Kind::kNone ? fill : white, rule, inverse, Blend::kDifference);
  }
  canvas_.Draw(path, fill, rule, stroke, step.blend);
}

/// Shows an outline, or takes it into the path.
void Gdi::Show(PathData& figure, bool isFilled, bool isStroked) {
  if (isInPath_) {
    path_.Append(figure);
    return;
  }
  FlushLines();
  Draw(figure, isFilled ? FillNow() : Paint{}, state_.fillRule, isStroked ? StrokeNow() : Stroke{});
}

void Gdi::ShowLines() {
  PathData lines = std::move(lines_);
  lines_.clear();
  Draw(lines, {}, FillRule::kNonZero, StrokeNow());
}

/// The path, or the figure, goes on from the current point.
void Gdi::GoFromCurrent(PathData& path) {
  if (&path == &path_ && isFigureOpen_) return;
  path.MoveTo(map()(state_.current));
  if (&path == &path_) isFigureOpen_ = true;
}

void Gdi::MoveTo(Point to) {
  state_.current = to;
  isFigureOpen_ = false;
}

void Gdi::LineTo(Point to) {
  constexpr size_t kLongest = 0x2000;
  if (isInPath_) {
    GoFromCurrent(path_);
    path_.LineTo(map()(to));
  } else {
    const bool goesOn = !lines_.empty() && linesEnd_.x == state_.current.x && linesEnd_.y == state_.current.y;
    if (lines_.view().size() > kLongest) FlushLines();
    if (!goesOn || lines_.empty()) lines_.MoveTo(map()(state_.current));
    lines_.LineTo(map()(to));
    linesEnd_ = to;
  }
  state_.current = to;
}

void Gdi::Polyline(const PointList& points, bool isFromCurrent) {
  if (points.count() == 0) return;
  figure_.clear();
  if (isFromCurrent) {
    PathData& path = isInPath_ ? path_ : figure_;
    GoFromCurrent(path);
    AddLines(path, points, 0);
    state_.current = points[points.count() - 1];
    if (isInPath_) return;
  } else {
    AddPoints(figure_, points);
  }
  Show(figure_, false, true);
}

void Gdi::Bezier(const PointList& points, bool isFromCurrent) {
  figure_.clear();
  PathData& path = isInPath_ && isFromCurrent ? path_ : figure_;
  const Matrix& to = map();
  size_t i = isFromCurrent ? 0 : 1;
  if (points.count() < i + 3) return;
  if (isFromCurrent) {
    GoFromCurrent(path);
  } else {
    path.MoveTo(to(points[0]));
  }
  for (; i + 3 <= points.count(); i += 3) path.CurveTo(to(points[i]), to(points[i + 1]), to(points[i + 2]));
  if (isFromCurrent) {
    state_.current = points[i - 1];
    if (isInPath_) return;
  }
  Show(figure_, false, true);
}

void Gdi::PolyDraw(const PointList& points, ByteView types) {
  enum Type : uint8_t { kClose = 1, kLineTo = 2, kCurveTo = 4, kMoveTo = 6, kTypes = 6 };
  const Matrix& to = map();
  figure_.clear();
  PathData& path = isInPath_ ? path_ : figure_;
  GoFromCurrent(path);
  for (size_t i = 0; i < points.count(); ++i) {
    const uint8_t type = types.u8(i) & kTypes;
    if (type == kMoveTo) {
      path.MoveTo(to(points[i]));
    } else if (type == kLineTo) {
      path.LineTo(to(points[i]));
    } else if (type == kCurveTo) {
      if (i + 2 >= points.count()) break;
      path.CurveTo(to(points[i]), to(points[i + 1]), to(points[i + 2]));
      i += 2;
    }
    if (types.u8(i) & kClose) path.Close();
  }
  if (points.count() > 0) state_.current = points[points.count() - 1];
  if (!isInPath_) Show(figure_, false, true);
}

void Gdi::Polygon(const PointList& points) {
  if (points.count() < 2) return;
  figure_.clear();
  AddPoints(figure_, points);
  figure_.Close();
  Show(figure_, true, true);
}

void Gdi::PolyPolygon(const PointList& points, ByteView counts, size_t figures, bool isShortCount) {
  figure_.clear();
  size_t first = 0;
  for (size_t i = 0; i < figures && first < points.count(); ++i) {
    const size_t count = isShortCount ? counts.u16(i * 2) : counts.u32(i * 4);
    if (count > 1) {
      AddPoints(figure_, points.from(first, count));
      figure_.Close();
    }
    first += count;
  }
  Show(figure_, true, true);
}

void Gdi::PolyPolyline(const PointList& points, ByteView counts, size_t figures) {
  figure_.clear();
  size_t first = 0;
  for (size_t i = 0; i < figures && first < points.count(); ++i) {
    AddPoints(figure_, points.from(first, counts.u32(i * 4)));
    first += counts.u32(i * 4);
  }
  Show(figure_, false, true);
}

/// Where the pen's middle goes: a pen that stays inside the frame stays away from it by half its width.
Box Gdi::Outline(const Box& box) const {
  Box sorted{std::min(box.left, box.right), std::min(box.top, box.bottom), std::max(box.left, box.right),
             std::max(box.top, box.bottom)};
  if ((state_.pen.style & kPenStyles) != kPenInsideFrame || state_.pen.isCosmetic) return sorted;
  const double half = std::min({std::fabs(state_.pen.width), sorted.width(), sorted.height()}) / 2;
  return {sorted.left + half, sorted.top + half, sorted.right - half, sorted.bottom - half};
}

void Gdi::AddBox(PathData& path, const Box& box) {
  const Matrix& to = map();
  if (to.isUpright()) {
    const Point a = to(box.left, box.top), b = to(box.right, box.bottom);
    return path.AddBox({a.x, a.y, b.x, b.y});
  }
  path.MoveTo(to(box.left, box.top));
  path.LineTo(to(box.right, box.top));
  path.LineTo(to(box.right, box.bottom));
  path.LineTo(to(box.left, box.bottom));
  path.Close();
}

void Gdi::Rectangle(const Box& box) {
  figure_.clear();
  AddBox(figure_, Outline(box));
  Show(figure_, true, true);
}

void Gdi::RoundRectangle(const Box& box, double width, double height) {
  const Box outline = Outline(box);
  const double x = std::min(std::fabs(width), outline.width()) / 2;
  const double y = std::min(std::fabs(height), outline.height()) / 2;
  if (x == 0 || y == 0) return Rectangle(box);
  figure_.clear();
  const Point centres[] = {{outline.right - x, outline.bottom - y},
                           {outline.left + x, outline.bottom - y},
                           {outline.left + x, outline.top + y},
                           {outline.right - x, outline.top + y}};
  for (int i = 0; i < 4; ++i) AddArc(figure_, centres[i], x, y, 90.0 * i, 90);
  figure_.Close();
  Show(figure_, true, true);
}

void Gdi::Ellipse(const Box& box) {
  const Box outline = Outline(box);
  figure_.clear();
  AddArc(figure_, {(outline.left + outline.right) / 2, (outline.top + outline.bottom) / 2},
         outline.width() / 2, outline.height() / 2, 0, 360);
  figure_.Close();
  Show(figure_, true, true);
}

/// Degrees from the x axis towards the y axis. Begins the path, or goes on with a line.
void Gdi::AddArc(PathData& path, Point centre, double radiusX, double radiusY, double start, double sweep) {
  const Matrix& to = map();
  const auto at = [&](double angle) {
    return Point{centre.x + radiusX * std::cos(angle), centre.y + radiusY * std::sin(angle)};
  };
  const int pieces = std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / 90 - 1e-9)));
  const double step = sweep / pieces * kDegree, reach = 4.0 / 3 * std::tan(step / 4);
  double angle = start * kDegree;
  if (path.empty()) {
    path.MoveTo(to(at(angle)));
  } else {
    path.LineTo(to(at(angle)));
  }
  for (int i = 0; i < pieces; ++i, angle += step) {
    const Point from = at(angle), end = at(angle + step);
    const Point out{-radiusX * std::sin(angle) * reach, radiusY * std::cos(angle) * reach};
    const Point in{radiusX * std::sin(angle + step) * reach, -radiusY * std::cos(angle + step) * reach};
    path.CurveTo(to(from.x + out.x, from.y + out.y), to(end.x + in.x, end.y + in.y), to(end));
  }
}

void Gdi::Arc(const Box& box, Point start, Point end, ArcKind kind) {
  const bool isOutline = kind == ArcKind::kArc || kind == ArcKind::kArcTo;
  const Box outline = isOutline ? Box{std::min(box.left, box.right), std::min(box.top, box.bottom),
                                      std::max(box.left, box.right), std::max(box.top, box.bottom)}
                                : Outline(box);
  const Point centre{(outline.left + outline.right) / 2, (outline.top + outline.bottom) / 2};
  const double x = outline.width() / 2, y = outline.height() / 2;
  if (!(x > 0) || !(y > 0)) return;
  const auto degreesOf = [&](Point p) {
    return std::atan2((p.y - centre.y) / y, (p.x - centre.x) / x) / kDegree;
  };
  const double first = degreesOf(start);
  double sweep = degreesOf(end) - first;
  const Matrix& to = map();
  // Clockwise is as one sees it before the world turns it over, but after the page does.
  const auto isTurnedOver = [](const Matrix& m) { return m.a * m.d - m.b * m.c < 0; };
  const bool isRising = state_.isArcClockwise != (isTurnedOver(to) != isTurnedOver(state_.world));
  while (sweep <= 0) sweep += 360;
  if (!isRising) sweep -= 360;
  if (sweep == 0) sweep = -360;

  figure_.clear();
  if (kind == ArcKind::kArcTo) {
    PathData& path = isInPath_ ? path_ : figure_;
    GoFromCurrent(path);
    AddArc(path, centre, x, y, first, sweep);
    const double last = (first + sweep) * kDegree;
    state_.current = {centre.x + x * std::cos(last), centre.y + y * std::sin(last)};
    if (!isInPath_) Show(figure_, false, true);
    return;
  }
  if (kind == ArcKind::kPie) figure_.MoveTo(to(centre));
  AddArc(figure_, centre, x, y, first, sweep);
  if (!isOutline) figure_.Close();
  Show(figure_, !isOutline, true);
}

void Gdi::AngleArc(Point centre, double radius, double startDegrees, double sweepDegrees) {
  if (!std::isfinite(startDegrees) || !std::isfinite(sweepDegrees)) return;
  figure_.clear();
  PathData& path = isInPath_ ? path_ : figure_;
  GoFromCurrent(path);
  const double sweep = std::clamp(sweepDegrees, -720.0, 720.0);
  // Angles count anticlockwise, and y points down.
  AddArc(path, centre, radius, radius, -startDegrees, -sweep);
  const double last = -(startDegrees + sweep) * kDegree;
  state_.current = {centre.x + radius * std::cos(last), centre.y + radius * std::sin(last)};
  if (!isInPath_) Show(figure_, false, true);
}

void Gdi::Pixel(Point at, uint32_t rgb) {
  const Point p = map()(at);
  const Point size = device_.Turn(1, 1);
  figure_.clear();
  figure_.AddBox({p.x, p.y, p.x + std::max(size.x, 1.0), p.y + std::max(size.y, 1.0)});
  FlushLines();
  Draw(figure_, Paint::Colour(rgb), FillRule::kNonZero, {});
}

void Gdi::PaintRegion(const Region& region, const Brush& brush) {
  FlushLines();
  Draw(region.Outline(), FillOf(brush, binaryStep(state_.rop2).function), FillRule::kNonZero, {});
}

void Gdi::FrameRegion(const Region& region, const Brush& brush, double width, double height) {
  FlushLines();
  // Lines that are there are seen.
  const auto seen = [this](Point line, bool isThere) {
    return isThere ? std::max(std::hypot(line.x, line.y), canvas_.pixel()) : 0;
  };
  const PathData frame =
      region.Frame(seen(map().Turn(width, 0), width != 0), seen(map().Turn(0, height), height != 0));
  const ClipArea before = state_.clip;
  constexpr uint32_t kAnd = 1;
  ClipRegion(region.Outline(), FillRule::kNonZero, kAnd);
  Draw(frame, FillOf(brush, binaryStep(state_.rop2).function), FillRule::kNonZero, {});
  state_.clip = before;
}

void Gdi::InvertRegion(const Region& region) {
  constexpr uint32_t kNot = 6;
  FlushLines();
  Draw(region.Outline(), Paint::Colour(0xFFFFFF), FillRule::kNonZero, {}, binaryStep(kNot));
}

void Gdi::Pattern(const Box& box, uint8_t rop3) {
  // As a binary operation with the brush: the bits where the source is 0.
  const uint8_t bits = static_cast<uint8_t>((rop3 & 3) | (rop3 >> 4 & 3) << 2);
  const RasterStep step = binaryStep(bits + 1U);
  const bool usesBrush = (step.function & 1) != (step.function >> 1 & 1);
  const Paint fill =
      usesBrush ? FillOf(state_.brush, step.function) : Paint::Colour(applied(step.function, 0));
  FlushLines();
  figure_.clear();
  AddBox(figure_, box);
  Draw(figure_, fill, FillRule::kNonZero, {}, step);
}

void Gdi::GradientBox(const Box& box, uint32_t first, uint32_t second, bool isVertical) {
  FlushLines();
  ApplyClip();
  const GradientStop stops[] = {{0, first, 255}, {1, second, 255}};
  const Point end = isVertical ? Point{box.left, box.bottom} : Point{box.right, box.top};
  const Point from = map()(box.left, box.top), to = map()(end);
  figure_.clear();
  AddBox(figure_, box);
  canvas_.Fill(figure_, Paint::Server(canvas_.AddLinearGradient({}, from, to, stops, Spread::kPad)));
}

void Gdi::GradientTriangle(const Point (&corners)[3], const uint32_t (&colours)[3]) {
  FlushLines();
  ApplyClip();
  Point mapped[3];
  for (int i = 0; i < 3; ++i) mapped[i] = map()(corners[i]);
  const bool isPlain = colours[0] == colours[1] && colours[1] == colours[2];
  GradientPiece(mapped, colours, isPlain ? 0 : 3);
}

/// Quarters of a triangle until they are small enough to have one colour.
void Gdi::GradientPiece(const Point* corners, const uint32_t* colours, int depth) {
  const auto between = [](uint32_t a, uint32_t b) { return ((a ^ b) >> 1 & 0x7F7F7F) + (a & b); };
  if (depth == 0) {
    figure_.clear();
    for (int i = 0; i < 3; ++i) i == 0 ? figure_.MoveTo(corners[i]) : figure_.LineTo(corners[i]);
    figure_.Close();
    uint32_t mean = 0;
    for (int shift = 0; shift < 24; shift += 8) {
      uint32_t sum = 0;
      for (int i = 0; i < 3; ++i) sum += colours[i] >> shift & 0xFF;
      mean |= sum / 3 << shift;
    }
    // The line closes the seams.
    Stroke stroke;
    stroke.paint = Paint::Colour(mean);
    stroke.width = canvas_.pixel() / 2;
    stroke.join = Stroke::Join::kRound;
    canvas_.Draw(figure_, stroke.paint, FillRule::kNonZero, stroke);
    return;
  }
  Point middles[3];
  uint32_t mixed[3];
  for (int i = 0; i < 3; ++i) {
    const int next = (i + 1) % 3;
    middles[i] = {(corners[i].x + corners[next].x) / 2, (corners[i].y + corners[next].y) / 2};
    mixed[i] = between(colours[i], colours[next]);
  }
  for (int i = 0; i < 3; ++i) {
    const int before = (i + 2) % 3;
    const Point piece[] = {corners[i], middles[i], middles[before]};
    const uint32_t inks[] = {colours[i], mixed[i], mixed[before]};
    GradientPiece(piece, inks, depth - 1);
  }
  GradientPiece(middles, mixed, depth - 1);
}

}  // namespace pagerex

// Pens of EMF+, and what stands at the ends of their lines.

#include <algorithm>
#include <cmath>
#include <iterator>

#include "pictures/emf_plus_state.h"

namespace pagerex {
namespace {

// Which fields a pen has.
constexpr uint32_t kHasMatrix = 1, kHasStartCap = 2, kHasEndCap = 4, kHasJoin = 8, kHasMiterLimit = 0x10,
                   kHasStyle = 0x20, kHasDashCap = 0x40, kHasDashOffset = 0x80, kHasDashes = 0x100,
                   kHasAlignment = 0x200, kHasCompound = 0x400, kHasCustomStart = 0x800,
                   kHasCustomEnd = 0x1000;

// Caps.
constexpr uint32_t kSquare = 1, kRound = 2, kTriangle = 3, kSquareAnchor = 0x11, kRoundAnchor = 0x12,
                   kArrowAnchor = 0x14;

/// Dashes and gaps in widths of the line, by style; 0 ends them.
constexpr uint8_t kDashes[][7] = {
    {}, {3, 1}, {1, 1}, {3, 1, 1, 1}, {3, 1, 1, 1, 1, 1},
};

constexpr Stroke::Join kJoins[] = {Stroke::Join::kMiter, Stroke::Join::kBevel, Stroke::Join::kRound,
                                   Stroke::Join::kMiter};

Stroke::Cap capOf(uint32_t cap) {
  if (cap == kSquare) return Stroke::Cap::kSquare;
  return cap == kRound || cap == kTriangle ? Stroke::Cap::kRound : Stroke::Cap::kButt;
}

/// Shapes at the ends of lines, whose x goes out of the line: from a square on. A width of the line is 1.
struct Anchor {
  uint8_t count;
  float x[4], y[4];
};
constexpr Anchor kAnchors[] = {
    {4, {-0.75F, 0.75F, 0.75F, -0.75F}, {-0.75F, -0.75F, 0.75F, 0.75F}},
    {0, {}, {}},  // round
    {4, {-1, 0, 1, 0}, {0, -1, 0, 1}},
    {3, {-1.732F, 0, -1.732F}, {-1, 0, 1}},
};

/// The shape of a cap that is an object. True for one that is filled; `inset` becomes what the line is
/// shorter by.
bool addCustom(ByteView custom, PlusOutline& shape, double& inset) {
  constexpr uint32_t kFillPath = 1, kLinePath = 2, kArrow = 1;
  PlusReader reader(custom.part(8));
  if (custom.u32(4) == kArrow) {
    const double width = reader.Real(), height = reader.Real(), notch = reader.Real() - height;
    const bool isFilled = reader.U32() != 0;
    shape.Add({-height, -width / 2}, PlusOutline::kStart);
    shape.Add({}, PlusOutline::kLine);
    shape.Add({-height, width / 2}, PlusOutline::kLine);
    if (!isFilled) return false;
    shape.Add({notch, 0}, PlusOutline::kLine | PlusOutline::kClose);
    if (width > 0) inset = std::min(height / width, -notch);
    return true;
  }
  const uint32_t flags = reader.U32();
  reader.U32();  // cap below it
  inset = reader.Real();
  reader.Take(16);  // caps and joins
  const double told = reader.Real(), scale = told > 0 ? told : 1;
  inset *= scale;
  reader.Take(16);  // where it is hot
  const size_t before = shape.points.size();
  if (flags & (kFillPath | kLinePath)) shape.AddPath(reader.TakeCounted());
  // It has y out of the line.
  shape.Move({0, scale, scale, 0, 0, 0}, before);
  return flags & kFillPath;
}

}  // namespace

bool PlusState::MakePen(uint32_t id, PlusPen& pen) {
  const ByteView bytes = Find(id, PlusType::kPen);
  if (bytes.empty()) return false;
  PlusReader reader(bytes);
  reader.Take(8);  // version, kind
  const uint32_t flags = reader.U32(), unit = reader.U32();
  Stroke& stroke = pen.stroke;
  const Matrix pixels = graphics_.container * device_;
  const double scale = unit == 0 ? WorldToCanvas().Scale() : pixels.Scale() * PixelsOf(unit);
  double width = reader.Real() * scale;
  const auto field = [&](uint32_t flag) { return flags & flag ? reader.U32() : 0; };
  if (flags & kHasMatrix) width *= reader.RealMatrix().Scale();
  // What is thinner than a pixel is a pixel wide.
  stroke.width = width = std::max(width, canvas_.pixel());
  pen.ends[0].cap = field(kHasStartCap);
  pen.ends[1].cap = field(kHasEndCap);
  stroke.join = kJoins[std::min<size_t>(field(kHasJoin), std::size(kJoins) - 1)];
  if (flags & kHasMiterLimit) stroke.miterLimit = static_cast<float>(reader.Real());
  const uint32_t style = field(kHasStyle), dashCap = field(kHasDashCap);
  if (flags & kHasDashOffset) stroke.dashOffset = static_cast<float>(reader.Real() * width);
  const auto addDash = [&](double length) {
    if (stroke.dashCount < stroke.dashes.size())
      stroke.dashes[stroke.dashCount++] = static_cast<float>(length * width);
  };
  if (style < std::size(kDashes))
    for (const uint8_t* dash = kDashes[style]; *dash != 0; ++dash) addDash(*dash);
  if (flags & kHasDashes) {
    stroke.dashCount = 0;
    for (uint32_t left = reader.Count(4); left > 0; --left) addDash(reader.Real());
  }
  field(kHasAlignment);
  if (flags & kHasCompound) reader.Take(reader.Count(4) * size_t{4});
  if (flags & kHasCustomStart) pen.ends[0].custom = reader.TakeCounted();
  if (flags & kHasCustomEnd) pen.ends[1].custom = reader.TakeCounted();
  stroke.cap = capOf(stroke.dashCount > 0 ? dashCap : pen.ends[0].cap);
  if (stroke.dashCount == 0 && stroke.cap == Stroke::Cap::kButt) stroke.cap = capOf(pen.ends[1].cap);
  stroke.paint = KeptPaint(id, reader.rest());
  return true;
}

/// Draws the outline, and shapes at the ends of its open figures.
void PlusState::DrawOutline(uint32_t penId) {
  PlusPen pen;
  if (!MakePen(penId, pen)) return;
  outline_.Move(WorldToCanvas());
  other_.clear();
  bool isFilled = false;
  const auto& points = outline_.points;
  const bool hasShapes = pen.ends[0].isShape() || pen.ends[1].isShape();
  for (size_t begin = 0, end = 0; hasShapes && begin < points.size(); begin = end) {
    bool isOpen = true;
    for (end = begin + 1; end < points.size() && points[end].kind() != PlusOutline::kStart; ++end)
      isOpen &= (points[end].type & PlusOutline::kClose) == 0;
    if (!isOpen) continue;
    isFilled |= PutEnd(pen, 0, begin, end - 1);
    isFilled |= PutEnd(pen, 1, end - 1, begin);
  }
  canvas_.Draw(CanvasPath(), {}, FillRule::kNonZero, pen.stroke);
  if (other_.points.empty()) return;
  path_.clear();
  other_.Put(path_);
  pen.stroke.dashCount = 0;
  if (isFilled) return canvas_.Fill(path_, pen.stroke.paint);
  canvas_.Draw(path_, {}, FillRule::kNonZero, pen.stroke);
}

/// What stands where a figure begins or ends. True for what is filled.
bool PlusState::PutEnd(const PlusPen& pen, size_t which, size_t at, size_t other) {
  const PlusPen::End& cap = pen.ends[which];
  Point& end = outline_.points[at].at;
  // The line's way at its end is that from the nearest point which is elsewhere.
  Point way;
  for (size_t i = at; i != other && way.x == 0 && way.y == 0;) {
    i += at < other ? 1 : SIZE_MAX;
    way = {end.x - outline_.points[i].at.x, end.y - outline_.points[i].at.y};
  }
  const double length = std::hypot(way.x, way.y);
  if (!cap.isShape() || !(length > 0) || !Afford(cap.custom.size())) return false;
  const size_t before = other_.points.size(), number = cap.cap - kSquareAnchor;
  double inset = 0;
  bool isFilled = true;
  if (!cap.custom.empty()) {
    isFilled = addCustom(cap.custom, other_, inset);
  } else if (cap.cap == kRoundAnchor) {
    other_.AddEllipse({-1, -1, 1, 1});
  } else if (number < std::size(kAnchors)) {
    const Anchor& anchor = kAnchors[number];
    for (size_t i = 0; i < anchor.count; ++i)
      other_.Add({anchor.x[i], anchor.y[i]}, i == 0 ? PlusOutline::kStart : PlusOutline::kLine);
    if (cap.cap == kArrowAnchor) inset = 1;
  }
  const double width = pen.stroke.width, x = way.x / length, y = way.y / length;
  other_.Move({x * width, y * width, -y * width, x * width, end.x, end.y}, before);
  inset *= width;
  if (inset < length) end = {end.x - x * inset, end.y - y * inset};
  return isFilled;
}

}  // namespace pagerex

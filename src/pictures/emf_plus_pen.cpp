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
                   kDiamondAnchor = 0x13, kArrowAnchor = 0x14;

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

bool isAnchor(const PlusPen::End& end) {
  return (end.cap >= kSquareAnchor && end.cap <= kArrowAnchor) || !end.custom.empty();
}

/// A shape at the end of a line, as wide as its points tell in widths of the line: x goes out of the line.
struct Anchor {
  PlusOutline shape;
  bool isFilled = true;
  double inset = 0;  ///< how much the line is shorter
};

/// An arrow whose size is set.
void makeArrow(PlusReader& reader, Anchor& anchor) {
  const double width = reader.Real(), height = reader.Real(), inset = reader.Real();
  anchor.isFilled = reader.U32() != 0;
  reader.Take(16);  // caps and joins of its own
  const double scale = reader.Real();
  const double size = scale > 0 ? scale : 1;
  const Point corners[] = {{-height * size, -width / 2 * size},
                           {0, 0},
                           {-height * size, width / 2 * size},
                           {(inset - height) * size, 0}};
  anchor.shape.AddLines(std::span(corners, anchor.isFilled ? 4 : 3), anchor.isFilled);
  if (anchor.isFilled && width > 0) anchor.inset = std::min(height / width, (height - inset) * size);
}

/// A path of the file's own, which has y out of the line.
void makeCustom(PlusReader& reader, Anchor& anchor) {
  constexpr uint32_t kHasFill = 1, kHasLine = 2;
  const uint32_t flags = reader.U32();
  reader.U32();  // cap below it
  anchor.inset = reader.Real();
  reader.Take(16);  // caps and joins of its own
  const double scale = reader.Real(), size = scale > 0 ? scale : 1;
  reader.Take(16);  // where it is hot
  anchor.isFilled = flags & kHasFill;
  anchor.inset *= size;
  if (flags & (kHasFill | kHasLine)) anchor.shape.AddPath(reader.Take(reader.Count(1)));
  anchor.shape.Move({0, size, size, 0, 0, 0});
}

Anchor makeAnchor(const PlusPen::End& end) {
  Anchor anchor;
  PlusOutline& shape = anchor.shape;
  constexpr double kSide = 0.75, kReach = 1, kArrow = 1.732;
  if (!end.custom.empty()) {
    PlusReader reader(end.custom);
    reader.U32();  // version
    reader.U32() == 1 ? makeArrow(reader, anchor) : makeCustom(reader, anchor);
  } else if (end.cap == kSquareAnchor) {
    shape.AddBox({-kSide, -kSide, kSide, kSide});
  } else if (end.cap == kRoundAnchor) {
    shape.AddEllipse({-kReach, -kReach, kReach, kReach});
  } else if (end.cap == kDiamondAnchor) {
    const Point corners[] = {{-kReach, 0}, {0, -kReach}, {kReach, 0}, {0, kReach}};
    shape.AddLines(corners, true);
  } else {
    const Point corners[] = {{-kArrow, -kReach}, {0, 0}, {-kArrow, kReach}};
    shape.AddLines(corners, true);
    anchor.inset = kArrow / 2;
  }
  return anchor;
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
  pen.start.cap = field(kHasStartCap);
  pen.end.cap = field(kHasEndCap);
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
  if (flags & kHasCustomStart) pen.start.custom = reader.Take(reader.Count(1));
  if (flags & kHasCustomEnd) pen.end.custom = reader.Take(reader.Count(1));
  stroke.cap = capOf(stroke.dashCount > 0 ? dashCap : pen.start.cap);
  if (stroke.dashCount == 0 && stroke.cap == Stroke::Cap::kButt) stroke.cap = capOf(pen.end.cap);
  stroke.paint = KeptPaint(objects_[id], reader.rest());
  return true;
}

/// Draws the outline, and shapes at the ends of its open figures.
void PlusState::DrawWithEnds(const PlusPen& pen) {
  if (!isAnchor(pen.start) && !isAnchor(pen.end)) {
    canvas_.Draw(outline_.Data(), {}, FillRule::kNonZero, pen.stroke);
    return;
  }
  const Anchor anchors[] = {makeAnchor(pen.start), makeAnchor(pen.end)};
  const bool isThere[] = {isAnchor(pen.start), isAnchor(pen.end)};
  PathData shapes[2];  // drawn and filled ones
  auto& points = outline_.points;
  const auto put = [&](size_t which, size_t at, size_t towards, size_t last) {
    // The line's way at its end is that from the nearest point which is elsewhere.
    const Point end = points[at];
    const size_t step = towards > at ? 1 : SIZE_MAX;
    while (towards != last && points[towards].x == end.x && points[towards].y == end.y) towards += step;
    const double x = end.x - points[towards].x, y = end.y - points[towards].y, length = std::hypot(x, y);
    if (!isThere[which] || !(length > 0)) return;
    const double width = pen.stroke.width, alongX = x / length, alongY = y / length;
    const Anchor& anchor = anchors[which];
    PlusOutline shape = anchor.shape;
    shape.Move({alongX * width, alongY * width, -alongY * width, alongX * width, end.x, end.y});
    shapes[anchor.isFilled].Append(shape.Data());
    const double inset = anchor.inset * width;
    if (inset < length) points[at] = {end.x - alongX * inset, end.y - alongY * inset};
  };
  const auto& types = outline_.types;
  for (size_t begin = 0; begin < points.size();) {
    size_t end = begin + 1;
    bool isClosed = false;
    while (end < points.size() && (types[end] & PlusOutline::kKind) != PlusOutline::kStart) {
      isClosed |= (types[end++] & PlusOutline::kClose) != 0;
    }
    if (!isClosed && end - begin > 1) {
      put(0, begin, begin + 1, end - 1);
      put(1, end - 1, end - 2, begin);
    }
    begin = end;
  }
  canvas_.Draw(outline_.Data(), {}, FillRule::kNonZero, pen.stroke);
  Stroke line = pen.stroke;
  line.dashCount = 0;
  canvas_.Draw(shapes[0], {}, FillRule::kNonZero, line);
  canvas_.Fill(shapes[1], pen.stroke.paint);
}

}  // namespace pagerex

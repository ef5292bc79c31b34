// What each record of an enhanced metafile sets, makes or draws.

#include "pictures/emf_records.h"

namespace pagerex {

using namespace emf;
namespace {

Matrix matrixAt(ByteView record, size_t at) {
  return {realAt(record, at),      realAt(record, at + 4),  realAt(record, at + 8),
          realAt(record, at + 12), realAt(record, at + 16), realAt(record, at + 20)};
}

}  // namespace

// Lines

void EmfPlayer::Points(ByteView record, int form) {
  const PointList points(record.part(28), record.u32(24), (form & kShort) != 0);
  switch (form & ~kShort) {
    case kPolyline:
      return gdi_.Polyline(points);
    case kPolylineTo:
      return gdi_.Polyline(points, true);
    case kPolygon:
      return gdi_.Polygon(points);
    default:
      return gdi_.Bezier(points, (form & ~kShort) == kBezierTo);
  }
}

void EmfPlayer::Polys(ByteView record, int form) {
  const size_t figures = std::min<size_t>(record.u32(24), record.size() / 4);
  const ByteView counts = record.part(32, figures * 4);
  const PointList points(record.part(32 + figures * 4), record.u32(28), (form & kShort) != 0);
  if ((form & ~kShort) == kPolyPolygon) {
    gdi_.PolyPolygon(points, counts, figures, false);
  } else {
    gdi_.PolyPolyline(points, counts, figures);
  }
}

void EmfPlayer::PolyDraw(ByteView record, int form) {
  const PointList points(record.part(28), record.u32(24), (form & kShort) != 0);
  gdi_.PolyDraw(points, record.part(28 + points.count() * (form & kShort ? 4 : 8)));
}

void EmfPlayer::Line(ByteView record, int form) {
  const Point at = pointAt(record, 8);
  if (form == kMove) return gdi_.MoveTo(at);
  if (form == kLine) return gdi_.LineTo(at);
  gdi_.Pixel(at, gdi_.rgbOf(record.u32(16)));
}

void EmfPlayer::Shape(ByteView record, int form) {
  const Box box = boxAt(record, 8);
  const Point first = pointAt(record, 24), second = pointAt(record, 32);
  switch (form) {
    case kEllipse:
      return gdi_.Ellipse(box);
    case kRectangle:
      return gdi_.Rectangle(box);
    case kRoundRectangle:
      return gdi_.RoundRectangle(box, first.x, first.y);
    case kChord:
      return gdi_.Arc(box, first, second, Gdi::ArcKind::kChord);
    case kPie:
      return gdi_.Arc(box, first, second, Gdi::ArcKind::kPie);
    default:
      return gdi_.Arc(box, first, second, form == kArc ? Gdi::ArcKind::kArc : Gdi::ArcKind::kArcTo);
  }
}

void EmfPlayer::AngleArc(ByteView record, int) {
  gdi_.AngleArc(pointAt(record, 8), record.u32(16), realAt(record, 20), realAt(record, 24));
}

void EmfPlayer::Path(ByteView record, int form) {
  switch (form) {
    case kBegin:
      return gdi_.BeginPath();
    case kEnd:
      return gdi_.EndPath();
    case kClose:
      return gdi_.CloseFigure();
    case kWiden:
      return gdi_.WidenPath();
    case kSelectClip:
      return gdi_.ClipPath(record.u32(8));
    case kAbort:
      return gdi_.AbortPath();
    default:
      return gdi_.ShowPath(form != kStroke, form != kFill);
  }
}

void EmfPlayer::Gradient(ByteView record, int) {
  constexpr uint32_t kTriangles = 2;
  constexpr size_t kVertexes = 36, kVertex = 16;
  const size_t count = record.u32(24), figures = record.u32(28);
  const uint32_t mode = record.u32(32);
  const auto vertexAt = [&](size_t at) {
    return record.part(kVertexes + record.u32(at) % std::max<size_t>(count, 1) * kVertex);
  };
  const auto colourOf = [](ByteView vertex) {
    return (vertex.u16(8) & 0xFF00U) << 8 | (vertex.u16(10) & 0xFF00U) | vertex.u16(12) >> 8;
  };
  if (count > record.size() / kVertex) return;
  size_t at = kVertexes + count * kVertex;
  const size_t corners = mode == kTriangles ? 3 : 2;
  for (size_t i = 0; i < figures && record.contains(at, corners * 4); ++i, at += corners * 4) {
    const ByteView a = vertexAt(at), b = vertexAt(at + 4);
    if (mode == kTriangles) {
      const ByteView c = vertexAt(at + 8);
      gdi_.GradientTriangle({pointAt(a, 0), pointAt(b, 0), pointAt(c, 0)},
                            {colourOf(a), colourOf(b), colourOf(c)});
    } else {
      const Point from = pointAt(a, 0), to = pointAt(b, 0);
      gdi_.GradientBox({from.x, from.y, to.x, to.y}, colourOf(a), colourOf(b), mode == 1);
    }
  }
}

// The map and the state

void EmfPlayer::Map(ByteView record, int form) {
  const Point to = pointAt(record, 8);
  if (form == kWindowExtent) return gdi_.SetWindowExtent(to.x, to.y);
  if (form == kViewportExtent) return gdi_.SetViewportExtent(to.x, to.y);
  if (form == kWindowOrigin) gdi_.changeMap().windowOrigin = to;
  if (form == kViewportOrigin) gdi_.changeMap().viewportOrigin = to;
  if (form == kBrushOrigin) gdi_.change().brushOrigin = to;
}

void EmfPlayer::Scale(ByteView record, int form) {
  const Point extent = form == kWindowExtent ? gdi_.state().windowExtent : gdi_.state().viewportExtent;
  if (record.i32(12) == 0 || record.i32(20) == 0) return;
  const double x = extent.x * record.i32(8) / record.i32(12), y = extent.y * record.i32(16) / record.i32(20);
  if (form == kWindowExtent) return gdi_.SetWindowExtent(x, y);
  gdi_.SetViewportExtent(x, y);
}

void EmfPlayer::World(ByteView record, int form) {
  enum Mode : uint32_t { kIdentity = 1, kLeft = 2, kRight = 3, kSet = 4 };
  const Matrix matrix = matrixAt(record, 8), world = gdi_.state().world;
  const uint32_t mode = form == 0 ? uint32_t{kSet} : record.u32(32);
  if (mode == kIdentity) gdi_.SetWorld({});
  if (mode == kLeft) gdi_.SetWorld(matrix * world);
  if (mode == kRight) gdi_.SetWorld(world * matrix);
  if (mode == kSet) gdi_.SetWorld(matrix);
}

void EmfPlayer::Value(ByteView record, int form) {
  const uint32_t value = record.u32(8);
  if (form == kMapMode) return gdi_.SetMapMode(value);
  GdiState& state = gdi_.change();
  switch (form) {
    case kGroundMode:
      state.isOpaque = value != 1;
      break;
    case kFillMode:
      state.fillRule = value == 2 ? FillRule::kNonZero : FillRule::kEvenOdd;
      break;
    case kRop2:
      state.rop2 = value;
      break;
    case kTextAlign:
      state.textAlign = value;
      break;
    case kTextColour:
      state.textColour = gdi_.rgbOf(value);
      break;
    case kGroundColour:
      state.groundColour = gdi_.rgbOf(value);
      break;
    case kArcDirection:
      state.isArcClockwise = value == 2;
      break;
    case kMiterLimit: {
      // Written as a whole number by some, as a real one by most.
      const float real = realAt(record, 8);
      state.miterLimit = real >= 1 && real < 1e6F ? real : static_cast<float>(std::clamp(value, 1U, 1000U));
      break;
    }
    case kJustification:
      state.breakExtra = record.i32(12) == 0 ? 0 : double(record.i32(8)) / record.i32(12);
      break;
    default:
      break;
  }
}

void EmfPlayer::SaveOrRestore(ByteView record, int form) {
  if (form == 0) return gdi_.Save();
  gdi_.Restore(record.i32(8));
}

// Clips and regions

void EmfPlayer::Clip(ByteView record, int form) {
  if (form == kMeta) return gdi_.SetMetaRegion();
  if (form == kOffset) return gdi_.MoveClip(record.i32(8), record.i32(12));
  const Box box = boxAt(record, 8);
  if (form == kExclude) return gdi_.ClipOutBox(box);
  gdi_.ClipBox(box);
}

/// Boxes in pixels of the device.
Region EmfPlayer::RegionData(ByteView data) {
  constexpr size_t kHeader = 32, kBox = 16;
  const size_t count = std::min<size_t>(data.u32(8), data.size() / kBox);
  Region region;
  for (size_t i = 0; i < count && data.contains(kHeader + i * kBox, kBox); ++i) {
    const Box box = boxAt(data, kHeader + i * kBox);
    region.Add(device_(box.left, box.top), device_(box.right, box.bottom));
  }
  return region;
}

void EmfPlayer::SelectRegion(ByteView record, int) {
  constexpr uint32_t kAnd = 1, kCopy = 5;
  const uint32_t mode = record.u32(12);
  if (record.u32(8) == 0) {
    if (mode == kCopy) gdi_.ResetClip();
    return;
  }
  const Region region = RegionData(record.part(16, record.u32(8)));
  if (region.boxes().size() == 1 && (mode == kAnd || mode == kCopy)) {
    return gdi_.ClipCanvasBox(region.boxes()[0], mode == kCopy);
  }
  gdi_.ClipRegion(region.Outline(), FillRule::kNonZero, mode);
}

void EmfPlayer::DrawRegion(ByteView record, int form) {
  constexpr size_t kData[] = {32, 40, 28, 28};
  const Region region = RegionData(record.part(kData[form], record.u32(24)));
  if (form == kInvertRegion) return gdi_.InvertRegion(region);
  if (form == kPaintRegion) return gdi_.PaintRegion(region, gdi_.state().brush);
  const GdiObject* const object = gdi_.ObjectAt(record.u32(28));
  const Brush brush = object && object->kind == GdiObject::Kind::kBrush ? object->brush : gdi_.state().brush;
  if (form == kFillRegion) return gdi_.PaintRegion(region, brush);
  gdi_.FrameRegion(region, brush, record.i32(32), record.i32(36));
}

}  // namespace pagerex

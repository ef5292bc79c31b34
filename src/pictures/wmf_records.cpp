// What each record of a Windows metafile sets, makes or draws.

#include "pictures/wmf_records.h"

#include <iterator>

namespace pagerex {
using namespace wmf;

void WmfPlayer::Value(ByteView record, int form) {
  const uint16_t value = record.u16(6);
  if (form == kMapMode) return gdi_.SetMapMode(value);
  GdiState& state = gdi_.change();
  switch (form) {
    case kGroundMode:
      state.isOpaque = value != 1;
      break;
    case kRop2:
      state.rop2 = value;
      break;
    case kFillMode:
      state.fillRule = value == 2 ? FillRule::kNonZero : FillRule::kEvenOdd;
      break;
    case kExtra:
      state.characterExtra = record.i16(6);
      break;
    case kTextAlign:
      state.textAlign = value;
      break;
    case kGroundColour:
      state.groundColour = gdi_.rgbOf(record.u32(6));
      break;
    case kTextColour:
      state.textColour = gdi_.rgbOf(record.u32(6));
      break;
    default:
      state.breakExtra = value == 0 ? 0 : double(record.i16(8)) / value;
      break;
  }
}

void WmfPlayer::Map(ByteView record, int form) {
  const Point to = pointAt(record, 6);
  const GdiState& now = gdi_.state();
  const auto scaled = [&](Point extent) {
    const auto part = [&](size_t at) {
      return record.i16(at) == 0 ? 1 : double(record.i16(at + 2)) / record.i16(at);
    };
    return Point{extent.x * part(10), extent.y * part(6)};
  };
  switch (form) {
    case kWindowExtent:
      return gdi_.SetWindowExtent(to.x, to.y);
    case kViewportExtent:
      return gdi_.SetViewportExtent(to.x, to.y);
    case kScaleWindow: {
      const Point extent = scaled(now.windowExtent);
      return gdi_.SetWindowExtent(extent.x, extent.y);
    }
    case kScaleViewport: {
      const Point extent = scaled(now.viewportExtent);
      return gdi_.SetViewportExtent(extent.x, extent.y);
    }
    default:
      break;
  }
  GdiState& state = gdi_.changeMap();
  if (form == kWindowOrigin) state.windowOrigin = to;
  if (form == kViewportOrigin) state.viewportOrigin = to;
  if (form == kMoveWindow) state.windowOrigin = {state.windowOrigin.x + to.x, state.windowOrigin.y + to.y};
  if (form == kMoveViewport)
    state.viewportOrigin = {state.viewportOrigin.x + to.x, state.viewportOrigin.y + to.y};
}

void WmfPlayer::Clip(ByteView record, int form) {
  if (form == kOffset) {
    const Point way = pointAt(record, 6);
    return gdi_.MoveClip(way.x, way.y);
  }
  if (form == kExclude) return gdi_.ClipOutBox(boxAt(record, 6));
  if (form == kIntersect) return gdi_.ClipBox(boxAt(record, 6));
  constexpr uint32_t kCopy = 5;
  if (const Region* const region = RegionAt(record.u16(6))) {
    gdi_.ClipRegion(region->Outline(), FillRule::kNonZero, kCopy);
  } else {
    gdi_.ResetClip();
  }
}

void WmfPlayer::SaveOrRestore(ByteView record, int form) {
  if (form == 0) return gdi_.Save();
  gdi_.Restore(record.i16(6));
}

// Lines and areas

void WmfPlayer::Line(ByteView record, int form) {
  if (form == kPixel) return gdi_.Pixel(pointAt(record, 10), gdi_.rgbOf(record.u32(6)));
  const Point to = pointAt(record, 6);
  if (form == kMove) return gdi_.MoveTo(to);
  gdi_.LineTo(to);
}

void WmfPlayer::Points(ByteView record, int form) {
  const size_t count = record.u16(6);
  if (form == kPolygon) return gdi_.Polygon(PointList(record.part(8), count, true));
  if (form == kPolyline) return gdi_.Polyline(PointList(record.part(8), count, true));
  const ByteView counts = record.part(8, count * 2);
  gdi_.PolyPolygon(PointList(record.part(8 + count * 2), SIZE_MAX, true), counts, count, true);
}

void WmfPlayer::Shape(ByteView record, int form) {
  if (form == kEllipse) return gdi_.Ellipse(boxAt(record, 6));
  if (form == kRectangle) return gdi_.Rectangle(boxAt(record, 6));
  if (form == kRoundRectangle) {
    const Point corner = pointAt(record, 6);
    return gdi_.RoundRectangle(boxAt(record, 10), corner.x, corner.y);
  }
  constexpr Gdi::ArcKind kKinds[] = {Gdi::ArcKind::kArc, Gdi::ArcKind::kPie, Gdi::ArcKind::kChord};
  gdi_.Arc(boxAt(record, 14), pointAt(record, 10), pointAt(record, 6), kKinds[form - kArc]);
}

const Region* WmfPlayer::RegionAt(uint32_t handle) const {
  const GdiObject* const object = gdi_.ObjectAt(handle);
  return object && object->kind == GdiObject::Kind::kRegion ? &object->region : nullptr;
}

void WmfPlayer::DrawRegion(ByteView record, int form) {
  const Region* const region = RegionAt(record.u16(6));
  if (!region) return;
  if (form == kInvertRegion) return gdi_.InvertRegion(*region);
  if (form == kPaintRegion) return gdi_.PaintRegion(*region, gdi_.state().brush);
  const GdiObject* const object = gdi_.ObjectAt(record.u16(8));
  const Brush brush = object && object->kind == GdiObject::Kind::kBrush ? object->brush : gdi_.state().brush;
  if (form == kFillRegion) return gdi_.PaintRegion(*region, brush);
  gdi_.FrameRegion(*region, brush, record.i16(12), record.i16(10));
}

namespace {

using Player = WmfPlayer;

}  // namespace

/// A friend, for the sake of the table.
struct WmfRecords {
  static constexpr WmfRow kRows[] = {
      {0x001E, &Player::SaveOrRestore, 0, false},
      {0x0037, &Player::PaletteEntries, 0, false},
      {0x00F7, &Player::CreatePalette, 0, false},
      {0x00F8, &Player::CreateOther, 0, false},  // brush of another time
      {0x0102, &Player::Value, kGroundMode, false},
      {0x0103, &Player::Value, kMapMode, false},
      {0x0104, &Player::Value, kRop2, false},
      {0x0106, &Player::Value, kFillMode, false},
      {0x0108, &Player::Value, kExtra, false},
      {0x0127, &Player::SaveOrRestore, 1, false},
      {0x012A, &Player::DrawRegion, kInvertRegion, true},
      {0x012B, &Player::DrawRegion, kPaintRegion, true},
      {0x012C, &Player::Clip, kSelectRegion, false},
      {0x012D, &Player::Object, kSelect, false},
      {0x012E, &Player::Value, kTextAlign, false},
      {0x0142, &Player::CreatePattern, kDibPattern, false},
      {0x01F0, &Player::Object, kDelete, false},
      {0x01F9, &Player::CreatePattern, kDevicePattern, false},
      {0x0201, &Player::Value, kGroundColour, false},
      {0x0209, &Player::Value, kTextColour, false},
      {0x020A, &Player::Value, kJustification, false},
      {0x020B, &Player::Map, kWindowOrigin, false},
      {0x020C, &Player::Map, kWindowExtent, false},
      {0x020D, &Player::Map, kViewportOrigin, false},
      {0x020E, &Player::Map, kViewportExtent, false},
      {0x020F, &Player::Map, kMoveWindow, false},
      {0x0211, &Player::Map, kMoveViewport, false},
      {0x0213, &Player::Line, kLine, true},
      {0x0214, &Player::Line, kMove, false},
      {0x0220, &Player::Clip, kOffset, false},
      {0x0228, &Player::DrawRegion, kFillRegion, true},
      {0x0234, &Player::Object, kSelect, false},  // palette
      {0x02FA, &Player::CreatePen, 0, false},
      {0x02FB, &Player::CreateFont, 0, false},
      {0x02FC, &Player::CreateBrush, 0, false},
      {0x02FD, &Player::CreateOther, 0, false},  // bitmaps of another time
      {0x0324, &Player::Points, kPolygon, true},
      {0x0325, &Player::Points, kPolyline, true},
      {0x0410, &Player::Map, kScaleWindow, false},
      {0x0412, &Player::Map, kScaleViewport, false},
      {0x0415, &Player::Clip, kExclude, false},
      {0x0416, &Player::Clip, kIntersect, false},
      {0x0418, &Player::Shape, kEllipse, true},
      {0x041B, &Player::Shape, kRectangle, true},
      {0x041F, &Player::Line, kPixel, true},
      {0x0429, &Player::DrawRegion, kFrameRegion, true},
      {0x0436, &Player::PaletteEntries, 0, false},  // shown at once
      {0x0521, &Player::Text, 0, true},
      {0x0538, &Player::Points, kPolyPolygon, true},
      {0x061C, &Player::Shape, kRoundRectangle, true},
      {0x061D, &Player::PatternBlt, 0, true},
      {0x06FE, &Player::CreateOther, 0, false},
      {0x06FF, &Player::CreateRegion, 0, false},
      {0x0817, &Player::Shape, kArc, true},
      {0x081A, &Player::Shape, kPie, true},
      {0x0830, &Player::Shape, kChord, true},
      {0x0922, &Player::Blt, kBit, true},
      {0x0940, &Player::Blt, kDibBit, true},
      {0x0A32, &Player::ExtendedText, 0, true},
      {0x0B23, &Player::Blt, kStretch, true},
      {0x0B41, &Player::Blt, kDibStretch, true},
      {0x0D33, &Player::DibToDevice, 0, true},
      {0x0F43, &Player::Blt, kStretchDib, true},
  };
};

const WmfRow* wmfRowOf(uint16_t function) {
  const auto* row =
      std::lower_bound(std::begin(WmfRecords::kRows), std::end(WmfRecords::kRows), function,
                       [](const WmfRow& each, uint16_t wanted) { return each.function < wanted; });
  return row != std::end(WmfRecords::kRows) && row->function == function ? row : nullptr;
}

}  // namespace pagerex

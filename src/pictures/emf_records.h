#pragma once

#include <bit>

#include "pictures/emf_player.h"

namespace pagerex {

inline float realAt(ByteView record, size_t at) {
  return std::bit_cast<float>(record.u32(at));
}
inline Point pointAt(ByteView record, size_t at) {
  return {double(record.i32(at)), double(record.i32(at + 4))};
}
inline Box boxAt(ByteView record, size_t at) {
  const Point a = pointAt(record, at), b = pointAt(record, at + 8);
  return {a.x, a.y, b.x, b.y};
}

namespace emf {

// Forms of records with points: what is drawn of them, and whether their points are short.
enum PointForm : int { kPolyline, kPolylineTo, kPolygon, kBezier, kBezierTo };
constexpr int kShort = 16;
enum PolyForm : int { kPolyPolyline, kPolyPolygon };
enum MapForm : int {
  kWindowExtent,
  kWindowOrigin,
  kViewportExtent,
  kViewportOrigin,
  kBrushOrigin,
};
enum ValueForm : int {
  kMapMode,
  kGroundMode,
  kFillMode,
  kRop2,
  kTextAlign,
  kTextColour,
  kGroundColour,
  kArcDirection,
  kMiterLimit,
  kJustification,

};
enum ClipForm : int { kOffset, kMeta, kExclude, kIntersect };
enum ShapeForm : int { kEllipse, kRectangle, kRoundRectangle, kArc, kArcTo, kChord, kPie };
enum LineForm : int { kMove, kLine, kPixel };
enum PathForm : int { kBegin, kEnd, kClose, kFill, kStrokeAndFill, kStroke, kWiden, kSelectClip, kAbort };
enum RegionForm : int { kFillRegion, kFrameRegion, kInvertRegion, kPaintRegion };
enum ObjectForm : int { kSelect, kDelete };
enum TextForm : int { kAnsi, kWide, kPolyAnsi, kPolyWide };
enum BltForm : int { kBit, kStretch, kAlpha, kTransparent };
enum DibForm : int { kToDevice, kStretchDib };

}  // namespace emf

/// What is done with a record of a type.
struct EmfRow {
  void (EmfPlayer::*play)(ByteView record, int form);
  int form;
  bool draws;  ///< and does not only set or make something
};

/// Null for one that neither draws nor sets anything.
const EmfRow* emfRowOf(uint32_t type);

}  // namespace pagerex

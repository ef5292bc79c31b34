#pragma once

#include "pictures/wmf_player.h"

namespace pagerex {

namespace wmf {

/// A point stands with its y in front.
inline Point pointAt(ByteView record, size_t at) {
  return {double(record.i16(at + 2)), double(record.i16(at))};
}
/// Bottom, right, top, left.
inline Box boxAt(ByteView record, size_t at) {
  const Point end = pointAt(record, at), begin = pointAt(record, at + 4);
  return {begin.x, begin.y, end.x, end.y};
}
/// Height, width, y, x.
inline Box placeAt(ByteView record, size_t at) {
  const Point size = pointAt(record, at), begin = pointAt(record, at + 4);
  return {begin.x, begin.y, begin.x + size.x, begin.y + size.y};
}

enum ValueForm : int {
  kGroundMode,
  kMapMode,
  kRop2,
  kFillMode,
  kExtra,
  kTextAlign,
  kGroundColour,
  kTextColour,
  kJustification,
};
enum MapForm : int {
  kWindowOrigin,
  kWindowExtent,
  kViewportOrigin,
  kViewportExtent,
  kMoveWindow,
  kMoveViewport,
  kScaleWindow,
  kScaleViewport,
};
enum ClipForm : int { kOffset, kExclude, kIntersect, kSelectRegion };
enum ObjectForm : int { kSelect, kDelete };
enum LineForm : int { kMove, kLine, kPixel };
enum PointForm : int { kPolygon, kPolyline, kPolyPolygon };
enum ShapeForm : int { kEllipse, kRectangle, kRoundRectangle, kArc, kPie, kChord };
enum RegionForm : int { kFillRegion, kFrameRegion, kInvertRegion, kPaintRegion };
enum PatternForm : int { kDibPattern, kDevicePattern, kBitmapPattern };
enum BltForm : int { kBit, kStretch, kDibBit, kDibStretch, kStretchDib };

}  // namespace wmf

/// What is done with a record of a function.
struct WmfRow {
  uint16_t function;
  void (WmfPlayer::*play)(ByteView record, int form);
  int form;
  bool draws;  ///< and does not only set or make something
};

/// Null for one that neither draws nor sets anything.
const WmfRow* wmfRowOf(uint16_t function);

}  // namespace pagerex

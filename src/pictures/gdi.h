#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <deque>
#include <span>
#include <string_view>
#include <vector>

#include "pictures/font_measures.h"
#include "pictures/gdi_objects.h"
#include "pictures/raster_operation.h"
#include "pictures/svg_canvas.h"

namespace pagerex {

/// Points as they lie in a record: pairs of 16- or 32-bit integers. Those outside its bytes are not there.
class PointList {
 public:
  PointList(ByteView bytes, size_t count, bool isShort)
      : bytes_(bytes), isShort_(isShort), count_(std::min(count, bytes.size() / size())) {}

  size_t count() const { return count_; }
  /// `i` is below the count.
  Point operator[](size_t i) const {
    const uint8_t* const at = bytes_.data() + i * size();
    if (isShort_) return pointOf<int16_t>(at);
    return pointOf<int32_t>(at);
  }
  PointList from(size_t first, size_t count) const {
    return {bytes_.part(std::min(first, count_) * size()), count, isShort_};
  }

 private:
  size_t size() const { return isShort_ ? 4 : 8; }
  template <class Integer>
  static Point pointOf(const uint8_t* at) {
    Integer pair[2];
    std::memcpy(pair, at, sizeof(pair));
    return {double(pair[0]), double(pair[1])};
  }

  ByteView bytes_;
  bool isShort_;
  size_t count_;
};

/// What is drawn through: a box, or what the canvas was told of, or both.
struct ClipArea {
  uint32_t shape = 0;
  bool hasBox = false;
  Box box;  ///< in units of the canvas
};

/// All that SaveDC saves.
struct GdiState {
  uint32_t mapMode = 1;
  Point windowOrigin, windowExtent{1, 1}, viewportOrigin, viewportExtent{1, 1};
  Matrix world;
  Pen pen;
  Brush brush;
  Font font;
  uint32_t textColour = 0, groundColour = 0xFFFFFF;  // 0xRRGGBB
  bool isOpaque = true;
  FillRule fillRule = FillRule::kEvenOdd;
  uint32_t rop2 = 13;
  uint32_t textAlign = 0;
  bool isArcClockwise = false;
  float miterLimit = 10;
  double characterExtra = 0, breakExtra = 0;
  Point current;
  Point brushOrigin;
  ByteView palette;
  ClipArea clip, metaClip;
};

/// A string of a record, where it stands and how.
struct TextRecord {
  std::u16string_view text;
  Point at;
  bool isOpaque = false, isClipped = false, isRightToLeft = false;
  bool hasBox = false;
  Box box;                           ///< in logical units
  std::span<const double> advances;  ///< in logical units; empty for none
};

/// A bitmap of a record: from where to where, and how.
struct BitmapRecord {
  Dib dib;
  PixelChange change;             ///< its part is that of the source
  Box to;                         ///< in logical units; may be turned over
  const Matrix* place = nullptr;  ///< of a parallelogram, from the unit square to logical units
  uint8_t rop3 = 0xCC;
  uint8_t alpha = 255;
};

/// The drawing device that both kinds of metafiles talk to: holds what they set, and draws on a canvas. All
/// coordinates are logical ones unless told.
class Gdi {
 public:
  /// `device` takes pixels of the device to the canvas, which is not owned. `pixelsPerInch` is of the device.
  /// Handles of objects are below `handles`.
  Gdi(SvgCanvas& canvas, const Matrix& device, double pixelsPerInchX, double pixelsPerInchY, size_t handles);
  Gdi(const Gdi&) = delete;
  Gdi& operator=(const Gdi&) = delete;

  SvgCanvas& canvas() { return canvas_; }
  const GdiState& state() const { return state_; }
  /// 0xRRGGBB of a file's colour, which may be an entry of the palette.
  uint32_t rgbOf(uint32_t colourRef) const {
    const bool isIndex = colourRef >> 24 == 1;
    return pagerex::rgbOf(isIndex ? state_.palette.u32(size_t{colourRef & 0xFFFF} * 4) : colourRef);
  }
  /// To set what neither moves nor clips.
  GdiState& change() {
    FlushLines();
    isStrokeKnown_ = false;
    isFillKnown_ = false;
    return state_;
  }
  /// To set what moves.
  GdiState& changeMap() {
    isMapKnown_ = false;
    return change();
  }
  void Save();
  /// -1 for the last one saved, or its number from 1 on.
  void Restore(int32_t which);

  // Objects

  /// Of 4 bytes an entry, which may change later.
  void CreatePalette(uint32_t handle, ByteView entries);
  /// Those from `first` on, as far as the palette has them.
  static void SetEntries(ByteView palette, size_t first, ByteView entries);
  void Create(uint32_t handle, GdiObject object);
  /// The lowest handle that is free.
  uint32_t FreeHandle();
  void Delete(uint32_t handle);
  void Select(uint32_t handle);
  void SelectStock(uint32_t number);
  const GdiObject* ObjectAt(uint32_t handle) const;
  void SelectObject(const GdiObject& object);

  // The map

  const Matrix& map();
  const Matrix& device() const { return device_; }
  void SetMapMode(uint32_t mode);
  void SetWorld(const Matrix& matrix) { changeMap().world = matrix; }
  void SetWindowExtent(double x, double y);
  void SetViewportExtent(double x, double y);

  // Clips

  void ClipBox(const Box& box);
  /// The same in units of the canvas; with `isAnew` in place of what was clipped before.
  void ClipCanvasBox(const Box& box, bool isAnew);
  void ClipOutBox(const Box& box);
  void MoveClip(double x, double y);
  /// RGN_AND 1, OR 2, XOR 3, DIFF 4, COPY 5; `region` in units of the canvas.
  void ClipRegion(const PathData& region, FillRule rule, uint32_t mode);
  void ResetClip();
  void SetMetaRegion();
  void ClipPath(uint32_t mode);
  uint32_t ClipNow();

  // Paths

  void BeginPath();
  void EndPath() { isInPath_ = false; }
  void AbortPath();
  void WidenPath() { isWidened_ = true; }
  void CloseFigure();
  void ShowPath(bool isFilled, bool isStroked);
  bool isInPath() const { return isInPath_; }

  // Lines and areas

  void MoveTo(Point to);
  void LineTo(Point to);
  /// Shows what waits for more of its kind; at the end.
  void Finish();
  void Polyline(const PointList& points, bool isFromCurrent = false);
  void Bezier(const PointList& points, bool isFromCurrent);
  /// PT_... of each point.
  void PolyDraw(const PointList& points, ByteView types);
  void Polygon(const PointList& points);
  /// Of several figures, each of so many points.
  void PolyPolygon(const PointList& points, ByteView counts, size_t figures, bool isShortCount);
  void PolyPolyline(const PointList& points, ByteView counts, size_t figures);
  void Rectangle(const Box& box);
  void RoundRectangle(const Box& box, double width, double height);
  void Ellipse(const Box& box);
  enum class ArcKind : uint8_t { kArc, kArcTo, kChord, kPie };
  void Arc(const Box& box, Point start, Point end, ArcKind kind);
  void AngleArc(Point centre, double radius, double startDegrees, double sweepDegrees);
  void Pixel(Point at, uint32_t rgb);
  void PaintRegion(const Region& region, const Brush& brush);
  /// `width` and `height` of the frame, as they are told.
  void FrameRegion(const Region& region, const Brush& brush, double width, double height);
  void InvertRegion(const Region& region);
  void GradientBox(const Box& box, uint32_t first, uint32_t second, bool isVertical);
  void GradientTriangle(const Point (&corners)[3], const uint32_t (&colours)[3]);

  // Text and bitmaps

  void Text(const TextRecord& record);
  void Bitmap(const BitmapRecord& record);
  /// An operation of the brush alone.
  void Pattern(const Box& box, uint8_t rop3);

 private:
  struct Tile {
    const uint8_t* bytes;
    Matrix matrix;
    uint32_t look[5];
    uint32_t server;
  };

  /// What a text's own coordinates are made of: units of the canvas for a logical one down the page, how much
  /// shorter those across are, and the em square.
  struct TextScale {
    double down = 1, squeeze = 1, em = 1;
  };
  double EmOf(const FontMeasures& measures);
  std::vector<double> AdvancesOf(const TextRecord& record, std::u16string_view shown, const TextScale& scale,
                                 double& across, double& widen);
  Matrix TextMatrix(const TextScale& scale, double widen);
  void ShowGround(const TextRecord& record, const TextPlace& place, double em, double across);

  // What waits for more of its kind is shown before anything else is.
  void FlushLines() {
    if (!lines_.empty()) ShowLines();
  }
  void FlushMask() {
    if (hasMask_) ShowMask();
  }
  void ShowLines();
  void ShowMask();
  void ShowBitmap(const BitmapRecord& record, const Matrix& place);
  Matrix PlaceOf(const BitmapRecord& record);

  void ApplyClip();
  void SetClipShape(uint32_t shape);
  void Show(PathData& figure, bool isFilled, bool isStroked);
  void Draw(const PathData& path, const Paint& fill, FillRule rule, const Stroke& stroke);
  void Draw(const PathData& path, const Paint& fill, FillRule rule, const Stroke& stroke,
            const RasterStep& step);
  void AddLines(PathData& path, const PointList& points, size_t first);
  void AddPoints(PathData& path, const PointList& points);
  void AddArc(PathData& path, Point centre, double radiusX, double radiusY, double start, double sweep);
  void AddBox(PathData& path, const Box& box);
  void GoFromCurrent(PathData& path);
  Box Outline(const Box& box) const;
  Paint FillOf(const Brush& brush, uint8_t function);
  const Stroke& StrokeNow();
  const Paint& FillNow();
  void SetDashes(double wide);
  uint32_t TileOf(const Brush& brush);
  void GradientPiece(const Point* corners, const uint32_t* colours, int depth);

  SvgCanvas& canvas_;
  const Matrix device_;
  const double pixelsPerInchX_, pixelsPerInchY_;
  const size_t handles_;
  GdiState state_;
  std::vector<GdiState> saved_;
  std::vector<GdiObject> objects_;
  uint32_t firstFree_ = 0;

  bool isMapKnown_ = false, isStrokeKnown_ = false, isFillKnown_ = false;
  Matrix map_;
  Stroke stroke_;
  Paint fill_;
  std::deque<std::vector<uint8_t>> palettes_;  ///< all there were: patterns go on referring to them
  std::vector<Tile> tiles_;                    ///< the last ones
  size_t nextTile_ = 0;
  uint64_t tilePixelsLeft_;  ///< that may still be written as patterns

  Box clipBox_;  ///< that the canvas was told of last, what it lies in, and its number
  uint32_t clipWithin_ = 0, clip_ = 0;

  bool isInPath_ = false, isWidened_ = false;
  bool isFigureOpen_ = false;  ///< in the path: the next line goes on from where it stands
  PathData path_;
  PathData figure_;  ///< that is drawn now
  PathData lines_;
  Point linesEnd_;
  bool hasMask_ = false;
  BitmapRecord mask_;  ///< a bitmap that cuts out, until it is known whether another is put into the hole
  Matrix maskPlace_;
  uint32_t maskClip_ = 0;
};

}  // namespace pagerex

#include "pictures/gdi.h"

namespace pagerex {
namespace {

constexpr size_t kMostObjects = 0x10000, kDeepestSave = 256;
constexpr uint64_t kFreePixels = 32 << 20, kPixelsOfHandle = 512;  // of patterns

/// Units of an inch in the map modes from 2 on, whose y points up.
constexpr double kUnitsPerInch[] = {254, 2540, 100, 1000, 1440};
constexpr uint32_t kCopyRegion = 5;
constexpr uint32_t kLowMetric = 2, kTwips = 6, kIsotropic = 7;

struct StockRow {
  GdiObject::Kind kind;
  uint32_t rgb;
  bool isNull;
};
/// WHITE_BRUSH 0 to NULL_PEN 8, fonts from 10 on.
constexpr StockRow kStock[] = {
    {GdiObject::Kind::kBrush, 0xFFFFFF, false}, {GdiObject::Kind::kBrush, 0xC0C0C0, false},
    {GdiObject::Kind::kBrush, 0x808080, false}, {GdiObject::Kind::kBrush, 0x404040, false},
    {GdiObject::Kind::kBrush, 0x000000, false}, {GdiObject::Kind::kBrush, 0, true},
    {GdiObject::Kind::kPen, 0xFFFFFF, false},   {GdiObject::Kind::kPen, 0x000000, false},
    {GdiObject::Kind::kPen, 0, true},
};

Box intersection(const Box& a, const Box& b) {
  Box box{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
  box.right = std::max(box.left, box.right);
  box.bottom = std::max(box.top, box.bottom);
  return box;
}

Box sorted(Point a, Point b) {
  return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

}  // namespace

Gdi::Gdi(SvgCanvas& canvas, const Matrix& device, double pixelsPerInchX, double pixelsPerInchY,
         size_t handles)
    : canvas_(canvas),
      device_(device),
      pixelsPerInchX_(pixelsPerInchX),
      pixelsPerInchY_(pixelsPerInchY),
      handles_(std::min(handles, kMostObjects)),
      tilePixelsLeft_(kFreePixels + kPixelsOfHandle * handles) {}

void Gdi::CreatePalette(uint32_t handle, ByteView entries) {
  palettes_.emplace_back(entries.data(), entries.data() + entries.size());
  GdiObject object;
  object.kind = GdiObject::Kind::kPalette;
  object.bytes = ByteView(palettes_.back().data(), palettes_.back().size());
  Create(handle, std::move(object));
}

void Gdi::SetEntries(ByteView palette, size_t first, ByteView entries) {
  if (!palette.contains(first * 4, 4)) return;
  // All palettes are those of `palettes_`.
  const size_t size = std::min(entries.size(), palette.size() - first * 4);
  std::copy_n(entries.data(), size, const_cast<uint8_t*>(palette.data()) + first * 4);
}

void Gdi::Finish() {
  FlushLines();
  FlushMask();
}

void Gdi::Save() {
  if (saved_.size() < kDeepestSave) saved_.push_back(state_);
}

void Gdi::Restore(int32_t which) {
  const auto count = static_cast<int64_t>(saved_.size());
  const int64_t at = which < 0 ? count + which : int64_t{which} - 1;
  if (at < 0 || at >= count) return;
  changeMap() = std::move(saved_[static_cast<size_t>(at)]);
  saved_.resize(static_cast<size_t>(at));
}

// Objects

void Gdi::Create(uint32_t handle, GdiObject object) {
  if (handle >= handles_) return;
  if (handle >= objects_.size()) objects_.resize(handle + 1);
  objects_[handle] = std::move(object);
}

uint32_t Gdi::FreeHandle() {
  while (firstFree_ < objects_.size() && objects_[firstFree_].kind != GdiObject::Kind::kNone) ++firstFree_;
  return firstFree_;
}

void Gdi::Delete(uint32_t handle) {
  if (handle >= objects_.size()) return;
  objects_[handle] = {};
  firstFree_ = std::min(firstFree_, handle);
}

const GdiObject* Gdi::ObjectAt(uint32_t handle) const {
  return handle < objects_.size() ? &objects_[handle] : nullptr;
}

void Gdi::Select(uint32_t handle) {
  if (const GdiObject* const object = ObjectAt(handle)) SelectObject(*object);
}

void Gdi::SelectObject(const GdiObject& object) {
  GdiState& state = change();
  if (object.kind == GdiObject::Kind::kPen) state.pen = object.pen;
  if (object.kind == GdiObject::Kind::kBrush) state.brush = object.brush;
  if (object.kind == GdiObject::Kind::kFont) state.font = object.font;
  if (object.kind == GdiObject::Kind::kPalette) state.palette = object.bytes;
  if (object.kind == GdiObject::Kind::kRegion)
    ClipRegion(object.region.Outline(), FillRule::kNonZero, kCopyRegion);
}

void Gdi::SelectStock(uint32_t number) {
  constexpr uint32_t kFirstFont = 10, kLastFont = 17, kFixedFont = 16, kOemFont = 10;
  GdiObject object;
  if (number < std::size(kStock)) {
    const StockRow& row = kStock[number];
    object.kind = row.kind;
    object.brush.rgb = object.pen.brush.rgb = row.rgb;
    if (row.isNull) {
      object.brush.kind = Brush::Kind::kNull;
      object.pen.style = kPenNull;
    }
  } else if (number >= kFirstFont && number <= kLastFont) {
    object.kind = GdiObject::Kind::kFont;
    if (number == kFixedFont || number <= kOemFont + 1) object.font.family = "Courier New";
  }
  SelectObject(object);
}

// The map

const Matrix& Gdi::map() {
  if (isMapKnown_) return map_;
  const auto ratio = [](double to, double from) { return from == 0 ? 1 : to / from; };
  double x = ratio(state_.viewportExtent.x, state_.windowExtent.x);
  double y = ratio(state_.viewportExtent.y, state_.windowExtent.y);
  if (state_.mapMode >= kLowMetric && state_.mapMode <= kTwips) {
    x = pixelsPerInchX_ / kUnitsPerInch[state_.mapMode - kLowMetric];
    y = -pixelsPerInchY_ / kUnitsPerInch[state_.mapMode - kLowMetric];
  } else if (state_.mapMode < kLowMetric || state_.mapMode > kIsotropic + 1) {
    x = y = 1;
  } else if (state_.mapMode == kIsotropic) {
    const double least = std::min(std::fabs(x), std::fabs(y));
    x = std::copysign(least, x);
    y = std::copysign(least, y);
  }
  const Matrix page{x,
                    0,
                    0,
                    y,
                    state_.viewportOrigin.x - state_.windowOrigin.x * x,
                    state_.viewportOrigin.y - state_.windowOrigin.y * y};
  map_ = state_.world * page * device_;
  isMapKnown_ = true;
  return map_;
}

void Gdi::SetMapMode(uint32_t mode) {
  changeMap().mapMode = mode;
}

void Gdi::SetWindowExtent(double x, double y) {
  if (x != 0 && y != 0) changeMap().windowExtent = {x, y};
}

void Gdi::SetViewportExtent(double x, double y) {
  if (x != 0 && y != 0) changeMap().viewportExtent = {x, y};
}

// Clips

void Gdi::ApplyClip() {
  FlushMask();
  canvas_.SetClip(ClipNow());
}

uint32_t Gdi::ClipNow() {
  const ClipArea& clip = state_.clip;
  if (!clip.hasBox) return clip.shape;
  const Box& box = clip.box;
  const bool isAll =
      box.left <= 0 && box.top <= 0 && box.right >= canvas_.width() && box.bottom >= canvas_.height();
  if (isAll) return clip.shape;
  const bool isSame = clip_ != 0 && clipWithin_ == clip.shape && clipBox_.left == box.left &&
                      clipBox_.top == box.top && clipBox_.right == box.right && clipBox_.bottom == box.bottom;
  if (isSame) return clip_;
  PathData path;
  path.AddBox(box);
  clip_ = canvas_.AddClip(path.view(), FillRule::kNonZero, clip.shape);
  clipWithin_ = clip.shape;
  clipBox_ = box;
  return clip_;
}

void Gdi::SetClipShape(uint32_t shape) {
  state_.clip.shape = shape;
  state_.clip.hasBox = false;
}

void Gdi::ClipBox(const Box& box) {
  const Matrix& to = map();
  if (to.isUpright()) return ClipCanvasBox(sorted(to(box.left, box.top), to(box.right, box.bottom)), false);
  PathData path;
  AddBox(path, box);
  ClipRegion(path, FillRule::kNonZero, 1);
}

void Gdi::ClipCanvasBox(const Box& box, bool isAnew) {
  Finish();
  if (isAnew) state_.clip = state_.metaClip;
  ClipArea& clip = state_.clip;
  clip.box = clip.hasBox ? intersection(clip.box, box) : box;
  clip.hasBox = true;
}

void Gdi::ClipOutBox(const Box& box) {
  PathData path;
  AddBox(path, box);
  ClipRegion(path, FillRule::kNonZero, 4);
}

void Gdi::MoveClip(double x, double y) {
  ClipArea& clip = state_.clip;
  if (!clip.hasBox && clip.shape == 0) return;
  Finish();
  const Point way = map().Turn(x, y);
  if (clip.shape != 0) clip.shape = canvas_.AddMoved(clip.shape, way);
  if (!clip.hasBox) return;
  Box& box = clip.box;
  box = {box.left + way.x, box.top + way.y, box.right + way.x, box.bottom + way.y};
}

void Gdi::ClipRegion(const PathData& region, FillRule rule, uint32_t mode) {
  enum Mode : uint32_t { kAnd = 1, kOr = 2, kXor = 3, kDifference = 4, kCopy = 5 };
  Finish();
  if (mode == kCopy) state_.clip = state_.metaClip;
  const ClipArea clip = state_.clip;
  const bool hasClip = clip.hasBox || clip.shape != 0;
  if (mode == kOr) {
    if (hasClip) SetClipShape(canvas_.AddUnion(region.view(), rule, ClipNow()));
  } else if (mode == kXor && clip.hasBox && clip.shape == 0) {
    PathData both;
    both.AddBox(clip.box);
    both.Append(region);
    SetClipShape(canvas_.AddClip(both.view(), FillRule::kEvenOdd, 0));
  } else if (mode == kXor && hasClip) {
    SetClipShape(canvas_.AddUnion(region.view(), rule, ClipNow()));
  } else {
    SetClipShape(canvas_.AddClip(region.view(), rule, ClipNow(), mode == kDifference || mode == kXor));
  }
}

void Gdi::ResetClip() {
  Finish();
  state_.clip = state_.metaClip;
}

void Gdi::SetMetaRegion() {
  state_.metaClip = state_.clip;
}

void Gdi::ClipPath(uint32_t mode) {
  ClipRegion(path_, state_.fillRule, mode);
  path_.clear();
}

// Paths

void Gdi::BeginPath() {
  Finish();
  AbortPath();
  isInPath_ = true;
}

void Gdi::AbortPath() {
  path_.clear();
  isInPath_ = isFigureOpen_ = isWidened_ = false;
}

void Gdi::CloseFigure() {
  if (!isInPath_) return;
  path_.Close();
  isFigureOpen_ = false;
}

void Gdi::ShowPath(bool isFilled, bool isStroked) {
  isInPath_ = false;
  if (isWidened_ && isFilled) {
    Stroke stroke = StrokeNow();
    stroke.paint = FillNow();
    Draw(path_, {}, state_.fillRule, stroke);
  } else {
    Show(path_, isFilled, isStroked);
  }
  AbortPath();
}

}  // namespace pagerex

// Bitmaps.

#include "pictures/gdi.h"

namespace pagerex {
namespace {

constexpr uint8_t kCopy = 0xCC, kAnd = 0x88, kOr = 0xEE, kXor = 0x66;

}  // namespace

Matrix Gdi::PlaceOf(const BitmapRecord& record) {
  if (record.place) return *record.place * map();
  const Box& to = record.to;
  return Matrix{to.width(), 0, 0, to.height(), to.left, to.top} * map();
}

void Gdi::Bitmap(const BitmapRecord& record) {
  FlushLines();
  if (!needsSource(record.rop3) && !record.change.mask) {
    FlushMask();
    return Pattern(record.to, record.rop3);
  }
  const Matrix place = PlaceOf(record);
  const uint32_t clip = ClipNow();
  if (hasMask_ && (record.rop3 == kOr || record.rop3 == kXor) && clip == maskClip_ && place == maskPlace_) {
    // One that cuts a hole, and one that is put into it: what lies around it stays.
    hasMask_ = false;
    BitmapRecord whole = record;
    whole.rop3 = kCopy;
    whole.change.mask = &mask_.dib;
    whole.change.maskLeft = mask_.change.left;
    whole.change.maskTop = mask_.change.top;
    whole.change.isMaskInverse = true;
    canvas_.SetClip(clip);
    return ShowBitmap(whole, place);
  }
  FlushMask();
  if (record.rop3 == kAnd && sizeOf(record.dib).depth == 1) {
    hasMask_ = true;
    mask_ = record;
    mask_.place = nullptr;
    maskPlace_ = place;
    maskClip_ = clip;
    return;
  }
  canvas_.SetClip(clip);
  ShowBitmap(record, place);
}

void Gdi::ShowMask() {
  hasMask_ = false;
  canvas_.SetClip(maskClip_);
  ShowBitmap(mask_, maskPlace_);
}

void Gdi::ShowBitmap(const BitmapRecord& record, const Matrix& place) {
  const RasterStep step = ternaryStep(record.rop3);
  if (step.changesNothing) return;
  if (step.invertsFirst) {
    PathData corners;
    corners.MoveTo(place(0, 0));
    corners.LineTo(place(1, 0));
    corners.LineTo(place(1, 1));
    corners.LineTo(place(0, 1));
    corners.Close();
    canvas_.Fill(corners, Paint::Colour(0xFFFFFF), FillRule::kNonZero, Blend::kDifference);
  }
  PixelChange change = record.change;
  change.operation = step.function;
  change.pattern = state_.brush.rgb;
  const BitmapSize size = sizeOf(record.dib);
  const double width = change.width > 0 ? change.width : size.width;
  // Few pixels on much room are squares, not a mist.
  constexpr double kLarge = 8;
  const bool isSharp = width > 0 && std::hypot(place.a, place.b) > kLarge * width * canvas_.pixel();
  // One that is packed as another kind of image goes on as it is.
  const ByteView packed = compressedImage(record.dib);
  const auto write = [&](PictureSink& sink) {
    return packed.empty() ? writePng(record.dib, change, sink) : sink.Put(packed);
  };
  canvas_.Image(place, packed.u8(0) == 0xFF ? "image/jpeg" : "image/png", write, step.blend, record.alpha,
                isSharp);
}

}  // namespace pagerex

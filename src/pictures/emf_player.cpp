#include "pictures/emf_player.h"

#include "pictures/emf_records.h"
#include "pictures/metafile.h"
#include "pictures/metafile_canvas.h"

namespace pagerex {
namespace {

constexpr size_t kSmallest = 8;  // bytes of a record
constexpr uint32_t kHeader = 1, kEnd = 14;

/// What the header says of the device and of the picture's frame.
struct EmfFrame {
  double pixelsPerInchX = 96, pixelsPerInchY = 96;
  Box device;  ///< of the frame, in pixels
  double widthPoints = 0, heightPoints = 0;
};

EmfFrame frameOf(ByteView file) {
  constexpr double kMillimetresPerInch = 25.4, kPointsPerInch = 72;
  EmfFrame frame;
  const double pixels[] = {double(file.i32(72)), double(file.i32(76))};
  double millimetres[] = {double(file.i32(80)), double(file.i32(84))};
  // Longer headers tell it in micrometres.
  constexpr uint32_t kWithMicrometres = 108;
  if (file.u32(4) >= kWithMicrometres && file.i32(100) > 0 && file.i32(104) > 0) {
    millimetres[0] = file.i32(100) / 1000.0;
    millimetres[1] = file.i32(104) / 1000.0;
  }
  if (pixels[0] > 0 && millimetres[0] > 0)
    frame.pixelsPerInchX = pixels[0] / millimetres[0] * kMillimetresPerInch;
  if (pixels[1] > 0 && millimetres[1] > 0)
    frame.pixelsPerInchY = pixels[1] / millimetres[1] * kMillimetresPerInch;
  const double x = frame.pixelsPerInchX / kMillimetresPerInch / 100;
  const double y = frame.pixelsPerInchY / kMillimetresPerInch / 100;
  const Box hundredths = boxAt(file, 24), bounds = boxAt(file, 8);
  frame.device = {hundredths.left * x, hundredths.top * y, hundredths.right * x, hundredths.bottom * y};
  if (!(frame.device.width() >= 1) || !(frame.device.height() >= 1))
    frame.device = {bounds.left, bounds.top, std::max(bounds.right, bounds.left) + 1,
                    std::max(bounds.bottom, bounds.top) + 1};
  frame.widthPoints = frame.device.width() / frame.pixelsPerInchX * kPointsPerInch;
  frame.heightPoints = frame.device.height() / frame.pixelsPerInchY * kPointsPerInch;
  return frame;
}

}  // namespace

PictureResult playEmf(ByteView bytes, const PictureFrame& frame, PictureSink& sink) {
  constexpr uint32_t kSignature = 0x464D4520;
  if (bytes.u32(0) != kHeader || bytes.u32(40) != kSignature) return PictureResult::kNothing;
  const EmfFrame own = frameOf(bytes);
  SvgCanvas canvas(&sink, mostOutput(bytes.size()));
  const bool isTold = frame.widthPoints > 0 && frame.heightPoints > 0;
  const Matrix device = beginCanvas(canvas, own.device, isTold ? frame.widthPoints : own.widthPoints,
                                    isTold ? frame.heightPoints : own.heightPoints);
  EmfPlayer player(bytes, canvas, device, own.pixelsPerInchX, own.pixelsPerInchY, frame.isNested);
  const bool isWhole = player.Play();
  if (!canvas.End()) return canvas.isRefused() ? PictureResult::kRefused : PictureResult::kInPart;
  return isWhole ? PictureResult::kWhole : PictureResult::kInPart;
}

EmfPlayer::EmfPlayer(ByteView file, SvgCanvas& canvas, const Matrix& device, double pixelsPerInchX,
                     double pixelsPerInchY, bool isNested)
    : file_(file),
      gdi_(canvas, device, pixelsPerInchX, pixelsPerInchY, file.size() / kSmallest),
      device_(device),
      pixelsPerInch_((pixelsPerInchX + pixelsPerInchY) / 2),
      isNested_(isNested) {}

bool EmfPlayer::Play() {
  size_t at = 0;
  bool isEnded = false;
  while (!isEnded && file_.contains(at, kSmallest) && gdi_.canvas().goesOn()) {
    const uint32_t type = file_.u32(at);
    const size_t size = file_.u32(at + 4) & ~size_t{3};
    if (size < kSmallest) break;
    const ByteView record = file_.part(at, size);
    isWhole_ &= record.size() == size;
    isEnded = type == kEnd;
    PlayOne(type, record);
    at += record.size();
  }
  gdi_.Finish();
  return isEnded && isWhole_;
}

void EmfPlayer::PlayOne(uint32_t type, ByteView record) {
  const EmfRow* const row = emfRowOf(type);
  if (!row) return;
  // What stands beside records of EMF+ alone draws only where these lend it the device.
  if (plus_ && row->draws && !plus_->isDeviceLent()) return;
  (this->*row->play)(record, row->form);
}

void EmfPlayer::Comment(ByteView record, int) {
  constexpr uint32_t kEmfPlus = 0x2B464D45;
  if (record.u32(12) != kEmfPlus || record.u32(8) < 4) return;
  const ByteView records = record.part(16, record.u32(8) - 4);
  if (!isPlusKnown_ && !EmfPlusPlayer::isDual(records)) {
    gdi_.Finish();
    plus_ = std::make_unique<EmfPlusPlayer>(gdi_.canvas(), device_, pixelsPerInch_, isNested_);
  }
  isPlusKnown_ = true;
  if (!plus_) return;
  gdi_.Finish();
  isWhole_ &= plus_->Play(records);
}

}  // namespace pagerex

#include "pictures/wmf_player.h"

#include "pictures/metafile.h"
#include "pictures/metafile_canvas.h"
#include "pictures/wmf_records.h"

namespace pagerex {
namespace {

constexpr size_t kPlaceable = 22, kHeader = 18, kRecord = 6;
constexpr uint16_t kSetWindowOrigin = 0x020B, kSetWindowExtent = 0x020C;
constexpr double kPointsPerInch = 72;

/// What a metafile's headers, or its first records, say of its frame.
struct WmfFrame {
  Box device;
  double widthPoints = 0, heightPoints = 0;
  double unitsPerInch = 96;
  bool isTold = false;  ///< what the records set as their window fills it
};

size_t recordSize(ByteView records, size_t at) {
  return size_t{records.u32(at)} * 2;
}

/// A bare metafile's window, where it sets one before it draws.
bool findWindow(ByteView records, Box& window) {
  Point origin, extent;
  for (size_t at = 0; records.contains(at, kRecord);) {
    const size_t size = recordSize(records, at);
    const uint16_t function = records.u16(at + 4);
    if (size < kRecord || function == 0) break;
    if (function == kSetWindowOrigin) origin = {double(records.i16(at + 8)), double(records.i16(at + 6))};
    if (function == kSetWindowExtent) extent = {double(records.i16(at + 8)), double(records.i16(at + 6))};
    const WmfRow* const row = wmfRowOf(function);
    if (row && row->draws && extent.x != 0) break;
    at += size;
  }
  if (extent.x == 0 || extent.y == 0) return false;
  window = {origin.x, origin.y, origin.x + std::fabs(extent.x), origin.y + std::fabs(extent.y)};
  return true;
}

/// What is drawn, where nothing says what the frame is.
bool findDrawn(ByteView records, Box& drawn) {
  SvgCanvas canvas(nullptr);
  canvas.Begin(1e6, 1e6, 1e6, 1e6);
  WmfPlayer(records, canvas, {}, 96).Play();
  drawn = canvas.drawn();
  drawn.right += 1;
  drawn.bottom += 1;
  return drawn.right > drawn.left && drawn.bottom > drawn.top;
}

/// Many headers are of another picture, or of none: the window that the records set knows better what the
/// sides are to each other.
WmfFrame frameOf(const Box& placed, uint16_t placedUnits, ByteView records) {
  constexpr double kOff = 1.05, kUnitsPerInch = 1440;
  WmfFrame frame;
  Box window;
  const bool hasWindow = findWindow(records, window);
  frame.isTold = placed.width() >= 1 && placed.height() >= 1;
  if (frame.isTold) {
    frame.device = placed;
    frame.unitsPerInch = placedUnits ? placedUnits : kUnitsPerInch;
    const double ratio =
        hasWindow ? placed.width() * window.height() / (placed.height() * window.width()) : 1;
    if (ratio > kOff || ratio * kOff < 1) {
      frame.unitsPerInch *=
          std::max(window.width(), window.height()) / std::max(placed.width(), placed.height());
      frame.device = window;
    }
  } else if (hasWindow) {
    frame = {window, 0, 0, kUnitsPerInch, true};
  } else if (!findDrawn(records, frame.device)) {
    frame.device = {0, 0, 1, 1};
  }
  frame.widthPoints = frame.device.width() / frame.unitsPerInch * kPointsPerInch;
  frame.heightPoints = frame.device.height() / frame.unitsPerInch * kPointsPerInch;
  return frame;
}

}  // namespace

PictureResult playWmf(ByteView bytes, const PictureFrame& frame, PictureSink& sink) {
  constexpr uint32_t kPlaceableKey = 0x9AC6CDD7;
  Box placed;
  ByteView rest = bytes;
  if (bytes.u32(0) == kPlaceableKey) {
    const double x[] = {double(bytes.i16(6)), double(bytes.i16(10))};
    const double y[] = {double(bytes.i16(8)), double(bytes.i16(12))};
    placed = {std::min(x[0], x[1]), std::min(y[0], y[1]), std::max(x[0], x[1]), std::max(y[0], y[1])};
    rest = bytes.part(kPlaceable);
  }
  const uint16_t type = rest.u16(0);
  if ((type != 1 && type != 2) || rest.u16(2) != kHeader / 2) return PictureResult::kNothing;
  const ByteView records = rest.part(kHeader);
  const WmfFrame own = frameOf(placed, bytes.u16(14), records);
  const bool isGiven = frame.widthPoints > 0 && frame.heightPoints > 0;
  SvgCanvas canvas(&sink, mostOutput(bytes.size()));
  const Matrix device = beginCanvas(canvas, own.device, isGiven ? frame.widthPoints : own.widthPoints,
                                    isGiven ? frame.heightPoints : own.heightPoints);
  WmfPlayer player(records, canvas, device, own.unitsPerInch);
  if (own.isTold) {
    constexpr uint32_t kAnisotropic = 8;
    GdiState& state = player.gdi().changeMap();
    state.mapMode = kAnisotropic;
    state.windowOrigin = state.viewportOrigin = {own.device.left, own.device.top};
    state.windowExtent = state.viewportExtent = {own.device.width(), own.device.height()};
  }
  const bool isWhole = player.Play();
  if (!canvas.End()) return canvas.isRefused() ? PictureResult::kRefused : PictureResult::kInPart;
  return isWhole ? PictureResult::kWhole : PictureResult::kInPart;
}

WmfPlayer::WmfPlayer(ByteView records, SvgCanvas& canvas, const Matrix& device, double unitsPerInch)
    : records_(records), gdi_(canvas, device, unitsPerInch, unitsPerInch, records.size() / kRecord) {}

bool WmfPlayer::Play() {
  size_t at = 0;
  bool isEnded = false;
  while (records_.contains(at, kRecord) && gdi_.canvas().goesOn()) {
    const size_t size = recordSize(records_, at);
    const uint16_t function = records_.u16(at + 4);
    isEnded = function == 0;
    if (isEnded || size < kRecord) break;
    const ByteView record = records_.part(at, size);
    const WmfRow* const row = wmfRowOf(function);
    if (row) (this->*row->play)(record, row->form);
    at += record.size();
  }
  gdi_.Finish();
  return isEnded;
}

}  // namespace pagerex

#include "pictures/web_picture.h"

#include <cstring>

#include "pictures/bitmap.h"
#include "pictures/metafile.h"

namespace pagerex {
namespace {

constexpr size_t kBmpHeader = 14, kPictHeader = 512;

constexpr WebKind kSvg{PictureKind::kUnknown, "svg", "image/svg+xml"};
constexpr WebKind kPngFile{PictureKind::kPng, "png", "image/png"};

/// In the order of PictureKind.
constexpr WebKind kWebKinds[] = {
    {PictureKind::kUnknown, "", ""},
    kSvg,
    kSvg,
    kSvg,
    kPngFile,
    kPngFile,
    kPngFile,
    kPngFile,
    {PictureKind::kJpeg, "jpg", "image/jpeg"},
    {PictureKind::kGif, "gif", "image/gif"},
};

struct Signature {
  PictureKind kind;
  uint8_t at;
  std::string_view bytes;
};
using namespace std::string_view_literals;
constexpr Signature kSignatures[] = {
    {PictureKind::kPng, 0, "\x89PNG\r\n\x1A\n"sv},
    {PictureKind::kJpeg, 0, "\xFF\xD8\xFF"sv},
    {PictureKind::kGif, 0, "GIF8"sv},
    {PictureKind::kTiff, 0, "II*\0"sv},
    {PictureKind::kTiff, 0, "MM\0*"sv},
    {PictureKind::kWmf, 0, "\xD7\xCD\xC6\x9A"sv},
    {PictureKind::kEmf, 40, " EMF"sv},
};

bool has(ByteView bytes, const Signature& row) {
  const ByteView part = bytes.part(row.at, row.bytes.size());
  return part.size() == row.bytes.size() && std::memcmp(part.data(), row.bytes.data(), part.size()) == 0;
}

bool isBareWmf(ByteView bytes) {
  const uint16_t where = bytes.u16(0), version = bytes.u16(4);
  return (where == 1 || where == 2) && bytes.u16(2) == 9 && (version == 0x0100 || version == 0x0300);
}

bool isDib(ByteView bytes) {
  constexpr uint32_t kCore = 12, kShortest = 16, kLongest = 124;
  const uint32_t size = bytes.u32(0);
  if (size != kCore && (size < kShortest || size > kLongest)) return false;
  const size_t planes = size == kCore ? 8 : 12;
  const uint16_t depth = bytes.u16(planes + 2);
  return bytes.u16(planes) == 1 && depth <= 32 && (depth == 0 || depth == 1 || depth % 4 == 0);
}

/// From the size on: a frame that is one, and behind it the version.
bool isPict(ByteView bytes) {
  constexpr size_t kVersion = 10;
  const auto side = [&bytes](size_t at) {
    return static_cast<int16_t>(bytes.u8(at) << 8 | bytes.u8(at + 1));
  };
  if (side(2) >= side(6) || side(4) >= side(8)) return false;
  const uint32_t version = bytes.u32(kVersion);
  return (version & 0xFFFF) == 0x0111 || version == 0xFF021100;
}

/// Whether it has a size, and pixels that begin.
bool isShownJpeg(ByteView bytes) {
  constexpr uint8_t kScan = 0xDA, kFirstFrame = 0xC0, kLastFrame = 0xCF;
  bool hasFrame = false;
  for (size_t at = 2; at + 4 <= bytes.size();) {
    const uint8_t mark = bytes.u8(at + 1);
    if (bytes.u8(at) != 0xFF || mark == 0xFF) {  // what fills the room between segments
      ++at;
      continue;
    }
    if (mark == kScan) return hasFrame;
    const bool isTable = mark == 0xC4 || mark == 0xC8 || mark == 0xCC;
    hasFrame = hasFrame || (mark >= kFirstFrame && mark <= kLastFrame && !isTable);
    const bool isAlone = mark <= 0x01 || (mark >= 0xD0 && mark <= 0xD8);
    at += isAlone ? 2 : 2 + size_t{bytes.u8(at + 2)} * 256 + bytes.u8(at + 3);
  }
  return false;
}

/// Whether browsers will show anything of what they read themselves.
bool isShown(PictureKind kind, ByteView bytes) {
  constexpr size_t kPngStart = 33, kGifStart = 14;
  if (kind == PictureKind::kJpeg) return isShownJpeg(bytes);
  return bytes.size() > (kind == PictureKind::kPng ? kPngStart : kGifStart);
}

/// Hands on, and knows what came of it.
class WatchedSink final : public PictureSink {
 public:
  explicit WatchedSink(PictureSink& sink) : sink_(sink) {}

  bool Put(ByteView bytes) override {
    hasPut_ = true;
    return sink_.Put(bytes);
  }
  bool hasPut() const { return hasPut_; }

 private:
  PictureSink& sink_;
  bool hasPut_ = false;
};

PictureResult writeDib(const Dib& dib, PictureSink& sink) {
  WatchedSink watched(sink);
  PixelChange change;
  if (hasAlphaMask(dib)) change.alpha = PixelChange::Alpha::kStraight;
  if (writePng(dib, change, watched)) return PictureResult::kWhole;
  return watched.hasPut() ? PictureResult::kRefused : PictureResult::kNothing;
}

}  // namespace

PictureKind kindOfPicture(ByteView bytes) {
  for (const Signature& row : kSignatures) {
    if (has(bytes, row) && (row.kind != PictureKind::kEmf || bytes.u32(0) == 1)) return row.kind;
  }
  if (bytes.u16(0) == 0x4D42 && isDib(bytes.part(kBmpHeader))) return PictureKind::kBmp;
  if (isBareWmf(bytes)) return PictureKind::kWmf;
  if (isDib(bytes)) return PictureKind::kDib;
  return isPict(bytes) || isPict(bytes.part(kPictHeader)) ? PictureKind::kPict : PictureKind::kUnknown;
}

WebKind webKindOf(PictureKind kind) {
  return kWebKinds[static_cast<size_t>(kind)];
}

PictureResult writeWebPicture(ByteView bytes, const PictureFrame& frame, PictureSink& sink) {
  const PictureKind kind = kindOfPicture(bytes);
  switch (kind) {
    case PictureKind::kUnknown:
      return PictureResult::kNothing;
    case PictureKind::kEmf:
      return playEmf(bytes, frame, sink);
    case PictureKind::kWmf:
      return playWmf(bytes, frame, sink);
    case PictureKind::kPict:
      return playPict(bytes, frame, sink);
    case PictureKind::kTiff:
      return writeTiffAsPng(bytes, sink);
    case PictureKind::kDib:
      return writeDib(packedDib(bytes), sink);
    case PictureKind::kBmp:
      return writeDib(dibOfFile(bytes), sink);
    default:
      break;
  }
  if (!isShown(kind, bytes)) return PictureResult::kNothing;
  return sink.Put(bytes) ? PictureResult::kWhole : PictureResult::kRefused;
}

}  // namespace pagerex

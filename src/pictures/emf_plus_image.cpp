#include "pictures/emf_plus_image.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "pictures/emf_plus_state.h"
#include "pictures/web_picture.h"

namespace pagerex {
namespace {

// A form of pixels is a count, above it the bits of a pixel, above these flags.
constexpr uint32_t kHasAlpha = 0x40000, kIsPremultiplied = 0x80000;

/// Where red, green, blue and alpha begin in a pixel, and how many bits each has.
struct Channels {
  uint8_t begins[4], bits[4];
};
constexpr Channels kGrey16 = {{0, 0, 0, 0}, {16, 16, 16, 0}};
constexpr Channels kRgb555 = {{10, 5, 0, 15}, {5, 5, 5, 1}};
constexpr Channels kRgb565 = {{11, 5, 0, 0}, {5, 6, 5, 0}};
constexpr Channels kRgb8 = {{16, 8, 0, 24}, {8, 8, 8, 8}};
constexpr Channels kRgb16 = {{32, 16, 0, 48}, {16, 16, 16, 16}};

uint32_t depthOf(uint32_t format) {
  return format >> 8 & 0xFF;
}

const Channels& channelsOf(uint32_t format) {
  if (depthOf(format) == 16) return (format & 0xFF) == 4 ? kGrey16 : (format & 0xFF) == 6 ? kRgb565 : kRgb555;
  return depthOf(format) > 32 ? kRgb16 : kRgb8;
}

class PlusRows final : public PixelRows {
 public:
  explicit PlusRows(const PlusImage& image)
      : image_(image), depth_(depthOf(image.format)), channels_(channelsOf(image.format)) {}

  bool Next(uint8_t* rgba) override {
    if (row_ >= image_.rows) return false;
    row_bytes_ = image_.bytes.part(static_cast<size_t>(row_++) * image_.stride, image_.stride);
    for (size_t x = 0; x < static_cast<size_t>(image_.width); ++x, rgba += 4) PutPixel(PixelAt(x), rgba);
    return true;
  }

 private:
  uint64_t PixelAt(size_t x) const {
    const size_t at = x * depth_ / 8;
    if (depth_ > 8) return row_bytes_.copyOf<uint64_t>(at);
    const auto shift = static_cast<uint32_t>(8 - depth_ - x * depth_ % 8);
    return image_.palette.u32((row_bytes_.u8(at) >> shift & ((1U << depth_) - 1)) * size_t{4});
  }

  void PutPixel(uint64_t pixel, uint8_t* rgba) const {
    const bool hasAlpha = (image_.format & kHasAlpha) || depth_ <= 8;
    rgba[3] = 255;
    for (size_t i = 0; i < (hasAlpha ? 4 : 3); ++i) {
      const uint32_t most = (1U << channels_.bits[i]) - 1;
      const uint32_t value = pixel >> channels_.begins[i] & most;
      rgba[i] = static_cast<uint8_t>((value * 255 + most / 2) / most);
      // Three or four channels of 16 bits are light, not what is seen of it, and 2^13 is all of it.
      if (depth_ < 48) continue;
      const double light = std::min(value / 8192.0, 1.0);
      rgba[i] = static_cast<uint8_t>(std::lround(255 * (i == 3 ? light : std::pow(light, 1 / 2.2))));
    }
    if ((image_.format & kIsPremultiplied) == 0 || rgba[3] == 0) return;
    for (size_t i = 0; i < 3; ++i) rgba[i] = static_cast<uint8_t>(std::min(rgba[i] * 255 / rgba[3], 255));
  }

  const PlusImage& image_;
  const uint32_t depth_;
  const Channels& channels_;
  ByteView row_bytes_;
  int32_t row_ = 0;
};

bool isOpaque(const PlusImage& image) {
  if (image.format & kHasAlpha) return false;
  for (size_t i = 3; i < image.palette.size(); i += 4)
    if (image.palette.u8(i) != 255) return false;
  return true;
}

uint32_t highFirst(ByteView bytes, size_t at) {
  return bytes.u8(at) << 8 | bytes.u8(at + 1);
}

/// The size of a picture that browsers read, from its header.
void findSize(PictureKind kind, ByteView file, int32_t& width, int32_t& height) {
  uint32_t x = 0, y = 0;
  if (kind == PictureKind::kPng) {
    x = highFirst(file, 16) << 16 | highFirst(file, 18);
    y = highFirst(file, 20) << 16 | highFirst(file, 22);
  } else if (kind == PictureKind::kGif) {
    x = file.u16(6);
    y = file.u16(8);
  } else if (kind == PictureKind::kBmp) {
    x = file.u32(18);
    y = static_cast<uint32_t>(std::abs(static_cast<int64_t>(file.i32(22))));
  } else if (kind == PictureKind::kJpeg) {
    // Segments, up to the one that begins a frame: C0 to CF but tables.
    for (size_t at = 2; file.u8(at) == 0xFF; at += 2 + std::max(highFirst(file, at + 2), 2U)) {
      const uint8_t marker = file.u8(at + 1);
      if ((marker & 0xF0) != 0xC0 || marker == 0xC4 || marker == 0xC8 || marker == 0xCC) continue;
      y = highFirst(file, at + 5);
      x = highFirst(file, at + 7);
      break;
    }
  }
  if (x == 0 || y == 0 || x > 0xFFFFF || y > 0xFFFFF) return;
  width = static_cast<int32_t>(x);
  height = static_cast<int32_t>(y);
}

}  // namespace

PlusImage::PlusImage(ByteView object) {
  constexpr uint32_t kBitmap = 1, kMetafileImage = 2;
  const uint32_t type = object.u32(4);
  const bool isBitmap = type == kBitmap;
  if (!isBitmap && type != kMetafileImage) return;
  if (!isBitmap || object.u32(24) != 0) {
    bytes = object.part(isBitmap ? 28 : 16);
    const PictureKind found = kindOfPicture(bytes);
    mediaType = webKindOf(found).mediaType;
    findSize(found, bytes, width, height);
    return;
  }
  stride = object.u32(16);
  format = object.u32(20);
  const uint32_t depth = depthOf(format);
  PlusReader reader(object.part(28));
  if (depth <= 8) {
    reader.U32();  // what its colours are
    palette = reader.Take(reader.Count(4) * size_t{4});
  }
  bytes = reader.rest();
  const uint32_t told = object.u32(8), high = object.u32(12);
  constexpr uint64_t kDepths = 1 << 1 | 1 << 4 | 1 << 8 | 1 << 16 | 1 << 24 | uint64_t{1} << 32;
  if ((depth > 32 ? depth != 48 && depth != 64 : (kDepths >> depth & 1) == 0) || stride == 0) return;
  if (told == 0 || told > 0xFFFFF || high == 0 || high > 0xFFFFF) return;
  if (stride < (static_cast<uint64_t>(told) * depth + 7) / 8 || stride > bytes.size()) return;
  hasPixels = true;
  mediaType = "image/png";
  width = static_cast<int32_t>(told);
  height = static_cast<int32_t>(high);
  rows = static_cast<int32_t>(std::min<size_t>(high, bytes.size() / stride));
}

bool PlusImage::Write(PictureSink& sink) const {
  if (hasPixels) {
    PlusRows pixels(*this);
    return writePng(pixels, width, rows, isOpaque(*this), sink);
  }
  return writeWebPicture(bytes, {0, 0, true}, sink) <= PictureResult::kInPart;
}

/// At a box, or at a parallelogram of which there are three corners.
void PlusState::DrawImage(Record& record) {
  constexpr uint16_t kAtBox = 0x401A;
  PlusReader& data = record.data;
  data.Take(8);  // attributes, unit of the source
  const Box source = data.Rectangle();
  if (record.type == kAtBox) {
    const Box box = data.Rectangle(record.flags);
    outline_.Add({box.left, box.top}, PlusOutline::kStart);
    outline_.Add({box.right, box.top}, PlusOutline::kLine);
    outline_.Add({box.left, box.bottom}, PlusOutline::kLine);
  } else {
    data.Points(data.U32(), record.flags, outline_, PlusOutline::kLine);
    if (record.hasOption()) isWhole_ = false;  // an effect
  }
  const PlusImage image(Find(record.id(), PlusType::kImage));
  const bool isBad = image.mediaType.empty() || (image.isMetafile() && isNested_);
  if (isBad || outline_.points.size() < 3 || !Afford(image.work())) return Miss(record);

  outline_.Move(WorldToCanvas());
  outline_.points.resize(3);
  const Point corner = outline_.points[0].at, right = outline_.points[1].at, below = outline_.points[2].at;
  Matrix place{right.x - corner.x, right.y - corner.y, below.x - corner.x,
               below.y - corner.y, corner.x,           corner.y};
  CanvasPath();  // sets the clip
  const double width = image.width, height = image.height;
  // What differs by less than a pixel is a matter of where in it its point is.
  const auto differs = [](double a, double b) { return std::fabs(a - b) >= 1; };
  if (width > 0 && source.width() > 0 && source.height() > 0 &&
      (differs(source.left, 0) || differs(source.top, 0) || differs(source.right, width) ||
       differs(source.bottom, height))) {
    outline_.points.insert(outline_.points.begin() + 2,
                           {{right.x + place.c, right.y + place.d}, PlusOutline::kLine});
    outline_.Close();
    canvas_.SetClip(canvas_.AddClip(CanvasPath().view(), FillRule::kNonZero, graphics_.clip));
    const double x = source.width(), y = source.height();
    place = Matrix{width / x, 0, 0, height / y, -source.left / x, -source.top / y} * place;
  }
  if (image.hasPixels && image.rows < image.height) {
    isWhole_ = false;
    place = Matrix{1, 0, 0, image.rows / height, 0, 0} * place;
  }
  const auto write = [&image](PictureSink& sink) { return image.Write(sink); };
  if (!canvas_.Image(place, image.mediaType, write, Blend::kNormal, 255, graphics_.isSharp)) isWhole_ = false;
}

}  // namespace pagerex

#include "pictures/emf_plus_image.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "pictures/emf_plus_state.h"
#include "pictures/web_picture.h"

namespace pagerex {
namespace {

constexpr uint32_t kHasAlpha = 0x40000, kIsPremultiplied = 0x80000;

/// Numbers of forms of pixels are made of flags, the bits of a pixel, and a count.
uint32_t bitsOf(uint32_t format) {
  return format >> 8 & 0xFF;
}

uint8_t widened(uint32_t value, unsigned bits) {
  const uint32_t most = (1U << bits) - 1;
  return static_cast<uint8_t>(((value & most) * 255 + most / 2) / most);
}

/// Channels of 16 bits are light, not what is seen of it, and 2^13 is all of it.
uint8_t seenOf(uint16_t light, bool isAlpha) {
  const double part = std::min(light / 8192.0, 1.0);
  return static_cast<uint8_t>(255 * (isAlpha ? part : std::pow(part, 1 / 2.2)) + 0.5);
}

void putArgb(uint32_t argb, uint8_t* rgba) {
  rgba[0] = static_cast<uint8_t>(argb >> 16);
  rgba[1] = static_cast<uint8_t>(argb >> 8);
  rgba[2] = static_cast<uint8_t>(argb);
  rgba[3] = static_cast<uint8_t>(argb >> 24);
}

/// A pixel as straight red, green, blue, alpha.
void readPixel(const PlusImage& image, ByteView row, size_t x, uint8_t* rgba) {
  const uint32_t bits = bitsOf(image.format);
  rgba[3] = 255;
  if (bits <= 8) {
    const size_t at = x * bits;
    const uint32_t index = row.u8(at / 8) >> (8 - bits - at % 8) & ((1U << bits) - 1);
    return putArgb(image.palette.u32(index * 4), rgba);
  }
  const size_t at = x * bits / 8;
  if (bits == 16) {
    const uint16_t value = row.u16(at);
    switch (image.format & 0xFF) {
      case 4:  // grey
        rgba[0] = rgba[1] = rgba[2] = static_cast<uint8_t>(value >> 8);
        return;
      case 6:
        rgba[0] = widened(value >> 11, 5);
        rgba[1] = widened(value >> 5, 6);
        break;
      default:
        rgba[0] = widened(value >> 10, 5);
        rgba[1] = widened(value >> 5, 5);
        if ((image.format & kHasAlpha) && value < 0x8000) rgba[3] = 0;
    }
    rgba[2] = widened(value, 5);
    return;
  }
  for (size_t i = 0; i < 3; ++i)
    rgba[i] = bits >= 48 ? seenOf(row.u16(at + 4 - 2 * i), false) : row.u8(at + 2 - i);
  if ((image.format & kHasAlpha) == 0) return;
  rgba[3] = bits >= 48 ? seenOf(row.u16(at + 6), true) : row.u8(at + 3);
  if ((image.format & kIsPremultiplied) == 0 || rgba[3] == 0) return;
  for (size_t i = 0; i < 3; ++i)
    rgba[i] = static_cast<uint8_t>(std::min((rgba[i] * 255 + rgba[3] / 2) / rgba[3], 255));
}

class PlusRows final : public PixelRows {
 public:
  PlusRows(const PlusImage& image, int32_t left, int32_t top, int32_t width)
      : image_(image), left_(left), row_(top), width_(width) {}

  bool Next(uint8_t* rgba) override {
    if (row_ >= image_.rows) return false;
    const ByteView row = image_.bytes.part(static_cast<size_t>(row_++) * image_.stride, image_.stride);
    for (int32_t x = 0; x < width_; ++x, rgba += 4)
      readPixel(image_, row, static_cast<size_t>(left_ + x), rgba);
    return true;
  }

 private:
  const PlusImage& image_;
  const int32_t left_;
  int32_t row_;
  const int32_t width_;
};

bool isOpaque(const PlusImage& image) {
  if (image.format & kHasAlpha) return false;
  for (size_t i = 3; i < image.palette.size(); i += 4)
    if (image.palette.u8(i) != 255) return false;
  return true;
}

uint32_t highFirst(ByteView bytes, size_t at, size_t count) {
  uint32_t value = 0;
  for (size_t i = 0; i < count; ++i) value = value << 8 | bytes.u8(at + i);
  return value;
}

/// The size of a picture that browsers read, from its header.
void findSize(PictureKind kind, ByteView file, int32_t& width, int32_t& height) {
  uint32_t x = 0, y = 0;
  if (kind == PictureKind::kPng) {
    x = highFirst(file, 16, 4);
    y = highFirst(file, 20, 4);
  } else if (kind == PictureKind::kGif) {
    x = file.u16(6);
    y = file.u16(8);
  } else if (kind == PictureKind::kBmp) {
    const BitmapSize size = sizeOf(packedDib(file.part(14)));
    x = static_cast<uint32_t>(size.width);
    y = static_cast<uint32_t>(std::abs(size.height));
  } else if (kind == PictureKind::kJpeg) {
    // Segments, up to the one that begins a frame: C0 to CF but tables.
    for (size_t at = 2; file.u8(at) == 0xFF; at += 2 + std::max(highFirst(file, at + 2, 2), 2U)) {
      const uint8_t marker = file.u8(at + 1);
      if ((marker & 0xF0) != 0xC0 || marker == 0xC4 || marker == 0xC8 || marker == 0xCC) continue;
      y = highFirst(file, at + 5, 2);
      x = highFirst(file, at + 7, 2);
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
  PlusReader reader(object);
  reader.U32();  // version
  const uint32_t type = reader.U32();
  bool isFile = type == kMetafileImage;
  int32_t toldWidth = 0, toldHeight = 0;
  if (isFile) {
    reader.Take(8);  // kind and size of the metafile
  } else if (type == kBitmap) {
    toldWidth = static_cast<int32_t>(reader.U32());
    toldHeight = static_cast<int32_t>(reader.U32());
    stride = reader.U32();
    format = reader.U32();
    isFile = reader.U32() != 0;
  }
  if (isFile) {
    bytes = reader.rest();
    const PictureKind found = kindOfPicture(bytes);
    mediaType = webKindOf(found).mediaType;
    findSize(found, bytes, width, height);
    return;
  }
  const uint32_t bits = bitsOf(format);
  if (bits <= 8) {
    reader.U32();  // what its colours are
    palette = reader.Take(reader.Count(4) * size_t{4});
  }
  bytes = reader.rest();
  if (bits == 0 || bits > 64 || toldWidth <= 0 || toldHeight <= 0 || stride > bytes.size()) return;
  if (stride < (static_cast<uint64_t>(toldWidth) * bits + 7) / 8) return;
  hasPixels = true;
  mediaType = "image/png";
  width = toldWidth;
  height = toldHeight;
  rows = static_cast<int32_t>(std::min<size_t>(static_cast<size_t>(height), bytes.size() / stride));
}

bool PlusImage::Write(int32_t left, int32_t top, int32_t partWidth, int32_t partHeight,
                      PictureSink& sink) const {
  if (hasPixels) {
    PlusRows pixels(*this, left, top, partWidth);
    return writePng(pixels, partWidth, partHeight, isOpaque(*this), sink);
  }
  const PictureResult result = writeWebPicture(bytes, {0, 0, true}, sink);
  return result == PictureResult::kWhole || result == PictureResult::kInPart;
}

// Records

void PlusState::DrawImage(Record& record) {
  record.data.Take(8);  // attributes, unit of the source
  const Box source = record.data.Rectangle(false);
  const Box to = record.data.Rectangle(record.isCompressed());
  PutImage(record.id(), source, {to.width(), 0, 0, to.height(), to.left, to.top});
}

void PlusState::DrawImagePoints(Record& record) {
  if (record.flags & kPlusOption) isWhole_ = false;  // an effect
  record.data.Take(8);
  const Box source = record.data.Rectangle(false);
  Read(record, record.data.U32());
  if (points_.size() < 3) return;
  const Point corner = points_[0], right = points_[1], below = points_[2];
  PutImage(
      record.id(), source,
      {right.x - corner.x, right.y - corner.y, below.x - corner.x, below.y - corner.y, corner.x, corner.y});
}

/// The part `source` of an image at a parallelogram, of whose side one is the unit.
void PlusState::PutImage(uint32_t id, const Box& source, const Matrix& place) {
  const PlusImage image(Find(id, PlusType::kImage));
  const bool isMetafile = image.isMetafile();
  const size_t pixels = static_cast<size_t>(image.width) * static_cast<size_t>(image.rows);
  if (image.mediaType.empty() || (isMetafile && isNested_) || !Afford(pixels)) {
    isWhole_ = false;
    return;
  }
  Matrix whole = place * WorldToCanvas();
  uint32_t clip = graphics_.clip;
  Box part{0, 0, static_cast<double>(image.width), static_cast<double>(image.height)};
  // What differs by less than a pixel is a matter of where in it its point is.
  const bool isWhole =
      isMetafile || image.width == 0 || source.width() <= 0 || source.height() <= 0 ||
      (std::fabs(source.left) < 1 && std::fabs(source.top) < 1 && std::fabs(source.right - part.right) < 1 &&
       std::fabs(source.bottom - part.bottom) < 1);
  if (!isWhole) {
    const Point corners[] = {whole(0, 0), whole(1, 0), whole(1, 1), whole(0, 1)};
    PlusOutline bounds;
    bounds.AddLines(corners, true);
    clip = canvas_.AddClip(bounds.Data().view(), FillRule::kNonZero, clip);
    if (image.hasPixels) {
      part = {std::max(std::floor(source.left), 0.0), std::max(std::floor(source.top), 0.0),
              std::min(std::ceil(source.right), part.right), std::min(std::ceil(source.bottom), part.bottom)};
    }
    // From the part's unit to the source's.
    whole = Matrix{part.width() / source.width(),
                   0,
                   0,
                   part.height() / source.height(),
                   (part.left - source.left) / source.width(),
                   (part.top - source.top) / source.height()} *
            whole;
  }
  if (image.hasPixels && image.rows < image.height) {
    isWhole_ = false;
    const double there = std::min(part.bottom, static_cast<double>(image.rows));
    whole = Matrix{1, 0, 0, (there - part.top) / part.height(), 0, 0} * whole;
    part.bottom = there;
  }
  if (!isMetafile && image.width > 0 && (part.right <= part.left || part.bottom <= part.top)) return;
  canvas_.SetClip(clip);
  const auto write = [&](PictureSink& sink) {
    return image.Write(static_cast<int32_t>(part.left), static_cast<int32_t>(part.top),
                       static_cast<int32_t>(part.width()), static_cast<int32_t>(part.height()), sink);
  };
  if (!canvas_.Image(whole, image.mediaType, write, Blend::kNormal, 255, graphics_.isSharp)) isWhole_ = false;
}

}  // namespace pagerex

#include "pictures/bitmap.h"

#include <algorithm>
#include <memory>

#include "pictures/dib_rows.h"
#include "pictures/png_writer.h"

namespace pagerex {
namespace {

constexpr uint32_t kOpaque = 0xFF000000u;

struct Range {
  int32_t first = 0, end = 0;
};

/// What of a part lies in a range.
Range partOf(Range all, int32_t first, int32_t length) {
  const int64_t end = int64_t{first} + length;
  return {std::max(first, all.first), static_cast<int32_t>(std::min<int64_t>(end, all.end))};
}

/// Makes of colours what is wanted of them.
class PixelChanger {
 public:
  PixelChanger(const PixelChange& change, bool hasAlpha)
      : change_(change), alpha_(hasAlpha ? change.alpha : PixelChange::Alpha::kNone) {
    for (uint32_t i = 0; i < 4; ++i) bits_[i] = change.operation >> i & 1 ? ~0u : 0;
  }

  /// 0xAARRGGBB.
  uint32_t operator()(uint32_t colour) const {
    if (alpha_ == PixelChange::Alpha::kNone) colour |= kOpaque;
    if (change_.hasKey && (colour & ~kOpaque) == (change_.key & ~kOpaque)) return 0;
    const uint32_t alpha = colour & kOpaque;
    if (alpha == 0) return 0;
    if (alpha_ == PixelChange::Alpha::kPremultiplied && alpha != kOpaque)
      colour = Divided(colour, alpha >> 24);
    const uint32_t from[] = {~colour, colour}, pattern[] = {~change_.pattern, change_.pattern};
    uint32_t result = 0;
    for (uint32_t i = 0; i < 4; ++i) result |= pattern[i >> 1] & from[i & 1] & bits_[i];
    return alpha | (result & ~kOpaque);
  }

  void ChangeRow(uint8_t* pixels, int32_t count) const {
    const uint8_t* const end = pixels + size_t{4} * static_cast<uint32_t>(count);
    for (; pixels < end; pixels += 4) {
      Put(pixels, (*this)(static_cast<uint32_t>(pixels[3]) << 24 | static_cast<uint32_t>(pixels[0]) << 16 |
                          static_cast<uint32_t>(pixels[1]) << 8 | pixels[2]));
    }
  }

  static void Put(uint8_t* pixel, uint32_t colour) {
    pixel[0] = static_cast<uint8_t>(colour >> 16);
    pixel[1] = static_cast<uint8_t>(colour >> 8);
    pixel[2] = static_cast<uint8_t>(colour);
    pixel[3] = static_cast<uint8_t>(colour >> 24);
  }

 private:
  static uint32_t Divided(uint32_t colour, uint32_t alpha) {
    uint32_t result = 0;
    for (int shift = 0; shift < 24; shift += 8) {
      result |= std::min(((colour >> shift & 255) * 255 + alpha / 2) / alpha, 255u) << shift;
    }
    return result;
  }

  const PixelChange& change_;
  const PixelChange::Alpha alpha_;
  uint32_t bits_[4];
};

/// Writes the rows of a part of a bitmap.
class DibWriter {
 public:
  DibWriter(const Dib& dib, const PixelChange& change, PictureSink& sink)
      : change_(change),
        sink_(sink),
        rows_(dib),
        mask_(change.mask ? *change.mask : Dib()),
        changed_(change, !rows_.isIndexed()) {
    columns_ = {0, rows_.width()};
    lines_ = {rows_.firstRow(), rows_.endRow()};
    if (change.width != 0) {
      columns_ = partOf(columns_, change.left, change.width);
      lines_ = partOf(lines_, change.top, change.height);
    }
  }

  bool Write(const Dib& dib);

 private:
  void ReadColours(const Dib& dib);
  void ReadIndexes(int32_t y);
  void ExpandIndexes();
  void Mask(int32_t y);

  const PixelChange& change_;
  PictureSink& sink_;
  DibRows rows_, mask_;
  const PixelChanger changed_;
  Range columns_, lines_;
  uint32_t colours_ = 0;
  uint32_t palette_[256] = {};
  std::unique_ptr<uint8_t[]> indexes_, pixels_;
};

void DibWriter::ReadColours(const Dib& dib) {
  colours_ = rows_.ReadPalette(dib, palette_);
  if (change_.hasInks && colours_ == 2 && rows_.hasNoColours(dib)) std::copy_n(change_.inks, 2, palette_);
  for (uint32_t i = 0; i < colours_; ++i) palette_[i] = changed_(palette_[i]);
}

bool DibWriter::Write(const Dib& dib) {
  if (columns_.first >= columns_.end || lines_.first >= lines_.end) return false;
  if (rows_.isIndexed()) ReadColours(dib);
  const int32_t width = columns_.end - columns_.first;
  const bool hasMask = change_.mask && mask_.firstRow() < mask_.endRow() && mask_.isIndexed();
  const bool isIndexed = rows_.isIndexed() && !hasMask;
  PngForm form{.width = width, .height = lines_.end - lines_.first};
  form.hasAlpha =
      hasMask || change_.hasKey || (!rows_.isIndexed() && change_.alpha != PixelChange::Alpha::kNone);
  if (isIndexed) {
    form.palette = palette_;
    form.colours = colours_;
  }
  PngWriter png(sink_, form);
  if (!png.goesOn()) return false;
  indexes_ = std::make_unique<uint8_t[]>(static_cast<uint32_t>(width));
  pixels_ = std::make_unique<uint8_t[]>(isIndexed ? 0 : size_t{4} * static_cast<uint32_t>(width));
  for (int32_t y = lines_.first; y < lines_.end; ++y) {
    if (rows_.isIndexed()) {
      ReadIndexes(y);
      if (hasMask) ExpandIndexes();
    } else {
      rows_.Read(y, columns_.first, width, pixels_.get());
      changed_.ChangeRow(pixels_.get(), width);
    }
    if (hasMask) Mask(y);
    if (!png.PutRow(isIndexed ? indexes_.get() : pixels_.get())) return false;
  }
  return png.End();
}

void DibWriter::ReadIndexes(int32_t y) {
  rows_.Read(y, columns_.first, columns_.end - columns_.first, indexes_.get());
  for (int32_t i = 0; i < columns_.end - columns_.first; ++i) {
    if (indexes_[static_cast<uint32_t>(i)] >= colours_) indexes_[static_cast<uint32_t>(i)] = 0;
  }
}

void DibWriter::ExpandIndexes() {
  for (int32_t i = 0; i < columns_.end - columns_.first; ++i) {
    PixelChanger::Put(pixels_.get() + ptrdiff_t{4} * i, palette_[indexes_[static_cast<uint32_t>(i)]]);
  }
}

/// What lies outside the mask is shown.
void DibWriter::Mask(int32_t y) {
  const int64_t line = int64_t{y} - change_.top + change_.maskTop;
  if (line < mask_.firstRow() || line >= mask_.endRow()) return;
  const int64_t shift = int64_t{change_.maskLeft} - change_.left;
  const auto first = static_cast<int32_t>(std::clamp<int64_t>(columns_.first + shift, 0, mask_.width()));
  const auto end = static_cast<int32_t>(std::clamp<int64_t>(columns_.end + shift, first, mask_.width()));
  mask_.Read(static_cast<int32_t>(line), first, end - first, indexes_.get());
  uint8_t* pixel = pixels_.get() + 4 * (first - shift - columns_.first);
  for (int32_t x = 0; x < end - first; ++x, pixel += 4) {
    if ((indexes_[static_cast<uint32_t>(x)] != 0) == change_.isMaskInverse) PixelChanger::Put(pixel, 0);
  }
}

}  // namespace

Dib packedDib(ByteView bytes, bool hasPaletteIndexes) {
  Dib dib{bytes, {}, hasPaletteIndexes, {}};
  const DibHeader header(dib);
  // Too many colours are there only if the pixels are behind them.
  const uint64_t told = header.coloursAt + uint64_t{header.coloursUsed} * header.colourBytes;
  const uint64_t least = header.coloursAt + uint64_t{header.colourCount()} * header.colourBytes;
  const uint64_t pixels = header.compression == DibHeader::kNone || header.compression == DibHeader::kMasks
                              ? header.rowBytes() * static_cast<uint32_t>(header.height)
                              : 1;
  const bool areAllThere = told >= least && told <= bytes.size() && bytes.size() - told >= pixels;
  const auto end = static_cast<size_t>(std::min<uint64_t>(areAllThere ? told : least, bytes.size()));
  dib.header = bytes.part(0, end);
  dib.bits = bytes.part(end);
  return dib;
}

Dib dibOfFile(ByteView bytes) {
  constexpr size_t kFileHeader = 14, kBitsAt = 10;
  const uint32_t bitsAt = bytes.u32(kBitsAt);
  Dib dib = packedDib(bytes.part(kFileHeader));
  if (bitsAt > kFileHeader && bitsAt < bytes.size()) {
    dib.header = bytes.part(kFileHeader, bitsAt - kFileHeader);
    dib.bits = bytes.part(bitsAt);
  }
  return dib;
}

BitmapSize sizeOf(const Dib& dib) {
  const DibHeader header(dib);
  return {header.width, header.height, header.depth};
}

ByteView compressedImage(const Dib& dib) {
  const DibHeader header(dib);
  if (header.compression != DibHeader::kJpeg && header.compression != DibHeader::kPng) return {};
  return dib.bits.part(0, header.bitsSize ? header.bitsSize : SIZE_MAX);
}

bool hasAlphaMask(const Dib& dib) {
  return DibHeader(dib).masks[3] != 0;
}

bool writePng(const Dib& dib, const PixelChange& change, PictureSink& sink) {
  return DibWriter(dib, change, sink).Write(dib);
}

}  // namespace pagerex

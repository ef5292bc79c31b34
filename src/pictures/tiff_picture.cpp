#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <vector>

#include "pictures/metafile.h"
#include "pictures/png_writer.h"
#include "pictures/tiff_segment.h"

namespace pagerex {
namespace {

/// Fields of a directory that count, by their tags in order.
enum Name : uint8_t {
  kWidth,
  kHeight,
  kSampleBits,
  kCompression,
  kMeaning,
  kBitOrder,
  kStripOffsets,
  kOrientation,
  kSamples,
  kStripRows,
  kStripSizes,
  kPlanes,
  kFaxOptions,
  kPredictor,
  kColours,
  kTileWidth,
  kTileHeight,
  kTileOffsets,
  kTileSizes,
  kExtraSamples,
  kSampleFormat,
  kNames
};
struct Tag {
  uint16_t number;
  uint16_t otherwise;  ///< where there is none
};
constexpr Tag kTags[kNames] = {
    {256, 0}, {257, 0}, {258, 1}, {259, 1}, {262, 1}, {266, 1}, {273, 0},
    {274, 1}, {277, 1}, {278, 0}, {279, 0}, {284, 1}, {292, 0}, {317, 1},
    {320, 0}, {322, 0}, {323, 0}, {324, 0}, {325, 0}, {338, 0}, {339, 1},
};

enum Meaning : uint32_t { kWhiteIsZero, kBlackIsZero, kRgb, kPalette, kMaskOnly, kCmyk };

/// Samples of a pixel without its alpha, by meaning.
constexpr uint8_t kColourSamples[] = {1, 1, 3, 1, 1, 4};

constexpr uint8_t kMostPlanes = 5;
constexpr uint64_t kMostTurned = 64u << 20;  ///< bytes of an image that is turned, and so is kept

/// A TIFF's first image.
class TiffImage {
 public:
  explicit TiffImage(ByteView bytes) : bytes_(bytes), isBig_(bytes.u8(0) == 'M') {
    for (size_t i = 0; i < kNames; ++i) first_[i] = kTags[i].otherwise;
  }

  bool Open();
  PictureResult Write(PictureSink& sink);

 private:
  struct Field {
    uint32_t count = 0;
    uint8_t width = 0;  ///< bytes of a number
    size_t at = 0;
  };

  uint32_t Number(size_t at, unsigned width) const;
  void ReadField(size_t entry);
  uint32_t Value(Name name, uint32_t index) const;
  bool IsUnderstood() const;
  bool MeasureRows();
  void ReadPalette();

  void WriteTurned(PngWriter& png);
  void ReadRow(uint32_t y);
  void PutRow(uint8_t* pixels) const;
  void OpenSegment(TiffSegment& segment, uint32_t index);
  void ReadSegments(uint32_t y);
  void AddUp(uint8_t* row) const;
  uint8_t Sample(uint32_t x, uint32_t sample) const;
  void PutPixel(uint32_t x, uint8_t* pixel) const;

  const ByteView bytes_;
  const bool isBig_;
  Field fields_[kNames];
  uint32_t first_[kNames];  ///< numbers of the fields
  uint32_t width_ = 0, height_ = 0, meaning_ = 0, samples_ = 1, bits_ = 1, planes_ = 1;
  uint32_t alpha_ = 0;  ///< 1 when colours are multiplied by it, 2 when not
  bool isTiled_ = false, isWhole_ = true, isIndexed_ = false;
  uint32_t segmentWidth_ = 0, segmentRows_ = 0;
  uint32_t across_ = 1, down_ = 1;  ///< segments
  size_t rowBytes_ = 0;             ///< of all segments beside each other, in a plane
  size_t segmentRowBytes_ = 0;
  uint64_t budget_ = 0;    ///< bytes of segments that may still be read: some lie on each other
  uint32_t bandRows_ = 1;  ///< that are read at once
  std::unique_ptr<TiffSegment> segments_[kMostPlanes];
  std::unique_ptr<uint8_t[]> band_;          ///< rows of a plane, then of the next one
  const uint8_t* planeRows_[kMostPlanes]{};  ///< the row that is read, of each plane
  uint32_t palette_[256] = {};
};

uint32_t TiffImage::Number(size_t at, unsigned width) const {
  uint32_t number = 0;
  for (unsigned i = 0; i < width; ++i) {
    number |= static_cast<uint32_t>(bytes_.u8(at + i)) << 8 * (isBig_ ? width - 1 - i : i);
  }
  return number;
}

bool TiffImage::Open() {
  const uint16_t order = bytes_.u16(0);
  if ((order != 0x4949 && order != 0x4D4D) || Number(2, 2) != 42) return false;
  const size_t directory = Number(4, 4);
  constexpr size_t kEntryBytes = 12;
  const uint32_t count = Number(directory, 2);
  for (uint32_t i = 0; i < count && bytes_.contains(directory + 2 + i * kEntryBytes, kEntryBytes); ++i) {
    ReadField(directory + 2 + i * kEntryBytes);
  }
  width_ = first_[kWidth];
  height_ = first_[kHeight];
  meaning_ = first_[kMeaning];
  samples_ = first_[kSamples];
  bits_ = first_[kSampleBits];
  if (!IsUnderstood()) return false;
  if (samples_ > kColourSamples[meaning_]) alpha_ = first_[kExtraSamples];
  if (alpha_ > 2) alpha_ = 0;
  planes_ =
      first_[kPlanes] == 2 ? std::min<uint32_t>(samples_, kColourSamples[meaning_] + (alpha_ ? 1u : 0u)) : 1;
  isIndexed_ = kColourSamples[meaning_] == 1 && alpha_ == 0;
  if (!MeasureRows()) return false;
  if (kColourSamples[meaning_] == 1) ReadPalette();
  return true;
}

void TiffImage::ReadField(size_t entry) {
  constexpr uint32_t kByte = 1, kShort = 3, kLong = 4;
  const uint32_t number = Number(entry, 2);
  size_t name = 0;
  while (name < kNames && kTags[name].number != number) ++name;
  const uint32_t type = Number(entry + 2, 2);
  if (name == kNames || (type != kByte && type != kShort && type != kLong)) return;
  Field& field = fields_[name];
  field.count = Number(entry + 4, 4);
  field.width = static_cast<uint8_t>(type == kByte ? 1 : type == kShort ? 2 : 4);
  field.at = uint64_t{field.count} * field.width <= 4 ? entry + 8 : Number(entry + 8, 4);
  if (field.count > 0) first_[name] = Value(static_cast<Name>(name), 0);
}

/// 0 for one that is not there.
uint32_t TiffImage::Value(Name name, uint32_t index) const {
  const Field& field = fields_[name];
  const uint64_t from = field.at + uint64_t{index} * field.width;
  return index < field.count && from < bytes_.size() ? Number(static_cast<size_t>(from), field.width) : 0;
}

bool TiffImage::IsUnderstood() const {
  const uint32_t compression = first_[kCompression];
  const bool isFax = compression >= TiffSegment::kFaxRuns && compression <= TiffSegment::kFaxGroup4;
  const bool isBitCount = bits_ == 1 || bits_ == 2 || bits_ == 4 || bits_ == 8 || bits_ == 16 || bits_ == 32;
  return width_ > 0 && height_ > 0 && width_ <= PngWriter::kLongestSide && height_ <= INT32_MAX &&
         meaning_ < std::size(kColourSamples) && samples_ >= kColourSamples[meaning_] && samples_ < 256 &&
         isBitCount && (meaning_ != kPalette || bits_ <= 8) && first_[kSampleFormat] == 1 &&
         compression <= UINT16_MAX && TiffSegment::isKnown(static_cast<uint16_t>(compression)) &&
         (!isFax || (bits_ == 1 && samples_ == 1));
}

/// How much may come of the bytes depends on how they are packed: rows of facsimile that are as the one
/// before take a bit each, and nothing else grows more than a thousandfold.
bool TiffImage::MeasureRows() {
  constexpr uint64_t kMostOfByte = 8800, kMostOfFaxByte = 65536, kMostOfFax = 1u << 26, kLeast = 65536;
  constexpr uint64_t kMostAtOnce = 16u << 20;
  isTiled_ = fields_[kTileOffsets].count > 0;
  segmentWidth_ = isTiled_ ? first_[kTileWidth] : width_;
  segmentRows_ = isTiled_ ? first_[kTileHeight] : std::min(first_[kStripRows] - 1, height_ - 1) + 1;
  if (segmentWidth_ == 0 || segmentRows_ == 0 || (isTiled_ && segmentWidth_ % 8 != 0)) return false;
  if (isTiled_) bandRows_ = segmentRows_;
  const uint64_t most =
      bytes_.size() * kMostOfByte + kLeast + std::min(bytes_.size() * kMostOfFaxByte, kMostOfFax);
  across_ = (width_ - 1) / segmentWidth_ + 1;
  const uint64_t pixelBits = uint64_t{bits_} * (planes_ > 1 ? 1 : samples_);
  const uint64_t rowBits = uint64_t{segmentWidth_} * across_ * pixelBits;
  const uint64_t rows = most / (rowBits * planes_);
  // Tiles are read a row of them at a time.
  const uint64_t mostAtOnce = std::min(most, 8 * (kMostAtOnce + 4 * uint64_t{bytes_.size()}));
  if (mostAtOnce / (rowBits * planes_) < bandRows_) return false;
  isWhole_ = height_ <= rows;
  height_ = static_cast<uint32_t>(std::min<uint64_t>(height_, rows));
  down_ = (first_[kHeight] - 1) / segmentRows_ + 1;
  segmentRowBytes_ = static_cast<size_t>((segmentWidth_ * pixelBits + 7) / 8);
  rowBytes_ = segmentRowBytes_ * across_;
  budget_ = uint64_t{bytes_.size()} * 2;
  return true;
}

void TiffImage::ReadPalette() {
  const uint32_t count = 1u << std::min(bits_, 8u);
  bool isOfBytes = true;
  for (uint32_t i = 0; i < 3 * count; ++i) isOfBytes = isOfBytes && Value(kColours, i) < 256;
  for (uint32_t i = 0; i < count; ++i) {
    uint32_t rgb = i * 255 / (count - 1) * 0x010101;
    if (meaning_ == kWhiteIsZero) rgb ^= 0xFFFFFF;
    if (meaning_ == kPalette) {
      rgb = 0;
      for (uint32_t part = 0; part < 3; ++part) {
        rgb = rgb << 8 | (Value(kColours, part * count + i) >> (isOfBytes ? 0 : 8) & 0xFF);
      }
    }
    palette_[i] = 0xFF000000u | rgb;
  }
}

PictureResult TiffImage::Write(PictureSink& sink) {
  const auto compression = static_cast<uint16_t>(first_[kCompression]);
  for (uint32_t plane = 0; plane < planes_; ++plane) {
    segments_[plane] = std::make_unique<TiffSegment>(compression, first_[kFaxOptions] & 1,
                                                     first_[kBitOrder] == 2, segmentWidth_);
  }
  band_ = std::make_unique<uint8_t[]>(rowBytes_ * planes_ * bandRows_);
  PngForm form{.width = static_cast<int32_t>(width_), .height = static_cast<int32_t>(height_)};
  if (isIndexed_) {
    form.palette = palette_;
    form.colours = 1u << std::min(bits_, 8u);
  }
  form.hasAlpha = alpha_ != 0;
  const uint32_t orientation = first_[kOrientation];
  const uint64_t pixels = uint64_t{width_} * height_;
  bool isTurned = orientation > 1 && orientation <= 8;
  if (isTurned && (pixels * (isIndexed_ ? 1 : 4) > kMostTurned || height_ > PngWriter::kLongestSide))
    isTurned = isWhole_ = false;
  if (isTurned && orientation > 4) std::swap(form.width, form.height);
  PngWriter png(sink, form);
  if (!png.goesOn()) return PictureResult::kRefused;
  if (isTurned) {
    WriteTurned(png);
  } else {
    const bool isAsInFile = isIndexed_ && samples_ == 1 && bits_ <= 8;
    const auto row = std::make_unique<uint8_t[]>(isAsInFile ? 0 : size_t{width_} * 4);
    for (uint32_t y = 0; y < height_; ++y) {
      ReadRow(y);
      if (!isAsInFile) PutRow(row.get());
      if (isAsInFile ? !png.PutPackedRow(planeRows_[0]) : !png.PutRow(row.get())) break;
    }
  }
  if (!png.End()) return PictureResult::kRefused;
  return isWhole_ ? PictureResult::kWhole : PictureResult::kInPart;
}

/// Rows 1 to 4 go on as the image's, 5 to 8 are its columns.
void TiffImage::WriteTurned(PngWriter& png) {
  enum : uint8_t { kFromRight = 1, kFromBelow = 2, kColumns = 4 };
  constexpr uint8_t kWays[] = {0,
                               kFromRight,
                               kFromRight | kFromBelow,
                               kFromBelow,
                               kColumns,
                               kColumns | kFromBelow,
                               kColumns | kFromRight | kFromBelow,
                               kColumns | kFromRight};
  const uint8_t way = kWays[first_[kOrientation] - 1];
  const bool areColumns = way & kColumns;
  const auto pixelBytes = static_cast<ptrdiff_t>(isIndexed_ ? 1 : 4);
  ptrdiff_t right = pixelBytes, down = pixelBytes * width_;
  const auto all = std::make_unique<uint8_t[]>(static_cast<size_t>(down) * height_);
  uint8_t* from = all.get();
  for (uint32_t y = 0; y < height_; ++y, from += down) {
    ReadRow(y);
    PutRow(from);
  }
  from = all.get();
  if (way & kFromRight) {
    from += right * (width_ - 1);
    right = -right;
  }
  if (way & kFromBelow) {
    from += down * (height_ - 1);
    down = -down;
  }
  if (areColumns) std::swap(right, down);
  const ptrdiff_t lines = areColumns ? width_ : height_, length = areColumns ? height_ : width_;
  const auto line = std::make_unique<uint8_t[]>(static_cast<size_t>(length * pixelBytes));
  for (ptrdiff_t i = 0; i < lines; ++i) {
    for (ptrdiff_t j = 0; j < length; ++j) {
      std::memcpy(line.get() + j * pixelBytes, from + i * down + j * right, static_cast<size_t>(pixelBytes));
    }
    if (!png.PutRow(line.get())) return;
  }
}

void TiffImage::ReadRow(uint32_t y) {
  const uint32_t line = y % bandRows_;
  if (line == 0) ReadSegments(y);
  for (uint32_t plane = 0; plane < planes_; ++plane) {
    planeRows_[plane] = band_.get() + (plane * bandRows_ + line) * rowBytes_;
  }
}

void TiffImage::PutRow(uint8_t* pixels) const {
  for (uint32_t x = 0; x < width_; ++x) {
    if (isIndexed_) {
      *pixels++ = Sample(x, 0);
    } else {
      PutPixel(x, pixels);
      pixels += 4;
    }
  }
}

void TiffImage::OpenSegment(TiffSegment& segment, uint32_t index) {
  const Name offsets = isTiled_ ? kTileOffsets : kStripOffsets, sizes = isTiled_ ? kTileSizes : kStripSizes;
  const uint32_t told = Value(sizes, index);
  ByteView bytes = bytes_.part(Value(offsets, index), told ? told : SIZE_MAX);
  if (first_[kCompression] == TiffSegment::kNone) bytes = bytes.part(0, segmentRowBytes_ * segmentRows_);
  if (bytes.size() > budget_) bytes = {};
  budget_ -= bytes.size();
  segment.Open(bytes);
}

/// Strips a row at a time, tiles as many as they have.
void TiffImage::ReadSegments(uint32_t y) {
  for (uint32_t plane = 0; plane < planes_; ++plane) {
    TiffSegment& segment = *segments_[plane];
    for (uint32_t tile = 0; tile < across_; ++tile) {
      if (y % segmentRows_ == 0) OpenSegment(segment, (plane * down_ + y / segmentRows_) * across_ + tile);
      uint8_t* row = band_.get() + size_t{plane} * bandRows_ * rowBytes_ + size_t{tile} * segmentRowBytes_;
      for (uint32_t i = 0; i < bandRows_; ++i, row += rowBytes_) {
        if (!segment.Read(row, segmentRowBytes_)) isWhole_ = false;
        AddUp(row);
      }
    }
  }
}

/// Samples may be told as differences to those of the pixel before.
void TiffImage::AddUp(uint8_t* row) const {
  if (first_[kPredictor] != 2 || (bits_ != 8 && bits_ != 16)) return;
  const size_t step = planes_ > 1 ? 1 : samples_, count = segmentWidth_ * step;
  if (bits_ == 8) {
    for (size_t i = step; i < count; ++i) row[i] = static_cast<uint8_t>(row[i] + row[i - step]);
    return;
  }
  const size_t high = isBig_ ? 0 : 1, low = 1 - high;
  for (size_t i = step; i < count; ++i) {
    uint8_t* const to = row + 2 * i;
    const uint8_t* const from = to - 2 * step;
    const unsigned sum = (to[high] + from[high]) * 256u + to[low] + from[low];
    to[high] = static_cast<uint8_t>(sum >> 8);
    to[low] = static_cast<uint8_t>(sum);
  }
}

/// As it stands, of those with more than eight bits the upper ones.
uint8_t TiffImage::Sample(uint32_t x, uint32_t sample) const {
  const uint8_t* const row = planeRows_[planes_ > 1 ? sample : 0];
  const size_t number = planes_ > 1 ? x : size_t{x} * samples_ + sample;
  if (bits_ == 8) return row[number];
  if (bits_ > 8) return row[number * (bits_ / 8) + (isBig_ ? 0 : bits_ / 8 - 1)];
  const size_t perByte = 8 / bits_;
  return static_cast<uint8_t>(row[number / perByte] >> (8 - bits_ - number % perByte * bits_) &
                              ((1u << bits_) - 1));
}

void TiffImage::PutPixel(uint32_t x, uint8_t* pixel) const {
  const uint32_t colours = kColourSamples[meaning_];
  const uint32_t scale = bits_ < 8 ? 255 / ((1u << bits_) - 1) : 1;
  uint32_t values[kMostPlanes] = {};
  const uint32_t count = colours + (alpha_ ? 1 : 0);
  for (uint32_t i = 0; i < count; ++i) values[i] = Sample(x, i) * (colours == 1 && i == 0 ? 1 : scale);
  const uint32_t alpha = alpha_ ? values[colours] : 255;
  if (colours == 1) {
    const uint32_t colour = palette_[values[0]];
    for (uint32_t i = 0; i < 3; ++i) values[i] = colour >> (16 - 8 * i) & 0xFF;
  }
  for (uint32_t i = 0; i < 3; ++i) {
    uint32_t value = values[i];
    if (meaning_ == kCmyk) value = (255 - value) * (255 - values[3]) / 255;
    if (alpha_ == 1 && alpha > 0) value = std::min((value * 255 + alpha / 2) / alpha, 255u);
    *pixel++ = static_cast<uint8_t>(value);
  }
  *pixel = static_cast<uint8_t>(alpha);
}

}  // namespace

PictureResult writeTiffAsPng(ByteView bytes, PictureSink& sink) {
  TiffImage image(bytes);
  return image.Open() ? image.Write(sink) : PictureResult::kNothing;
}

}  // namespace pagerex

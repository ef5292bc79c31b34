#include "pictures/pict_bits.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "pictures/png_writer.h"

namespace pagerex {
namespace {

constexpr uint32_t kOpaque = 0xFF000000u;
constexpr uint32_t kLeastPacked = 8;  ///< rows that are shorter are not packed

/// Runs of units of one or two bytes. What does not fit is left out.
void unpack(ByteView packed, size_t unit, uint8_t* to, size_t size) {
  size_t at = 0;
  for (size_t i = 0; i < packed.size() && at < size;) {
    const uint8_t code = packed.u8(i++);
    if (code == 128) continue;
    const bool isRun = code > 128;
    const size_t units = isRun ? 257u - code : code + 1u;
    for (size_t byte = 0; byte < units * unit && at < size; ++byte) {
      to[at++] = packed.u8(i + (isRun ? byte % unit : byte));
    }
    i += isRun ? unit : units * unit;
  }
  std::memset(to + at, 0, size - at);
}

}  // namespace

void PictBits::ReadHeader(PictBytes& in, bool isDirect, uint32_t ink, uint32_t ground) {
  if (isDirect) in.Skip(4);
  const uint16_t stride = in.U16();
  stride_ = stride & 0x7FFF;
  isPixmap_ = isDirect || (stride & 0x8000);
  bounds_ = in.ReadBox();
  palette_[0] = kOpaque | ground;
  palette_[1] = kOpaque | ink;
  if (isPixmap_) {
    in.Skip(2);
    packing_ = in.U16();
    in.Skip(14);
    depth_ = in.U16();
    parts_ = in.U16();
    in.Skip(14);
  }
  if (isPixmap_ && !isDirect) {
    in.Skip(4);
    const bool isInOrder = in.U16() & 0x8000;
    const uint32_t last = in.U16();
    std::fill(std::begin(palette_), std::end(palette_), kOpaque);
    for (uint32_t i = 0; i <= last && !in.isBeyond(); ++i) {
      const uint16_t index = in.U16();
      palette_[(isInOrder ? i : index) & 0xFF] = kOpaque | in.ReadColour();
    }
  }
}

bool PictBits::FindRows(PictBytes& in, bool isPacked) {
  if (packing_ == kByDefault && depth_ >= 16) packing_ = depth_ == 16 ? kWords : kParts;
  isPacked_ = isPacked && stride_ >= kLeastPacked && packing_ != kNone && packing_ != kWithoutPad;
  const double width = bounds_.width(), height = bounds_.height();
  const bool isDepth =
      depth_ == 1 || depth_ == 2 || depth_ == 4 || depth_ == 8 || depth_ == 16 || depth_ == 32;
  if (!isDepth || width <= 0 || height <= 0) return false;
  width_ = std::min(static_cast<uint32_t>(width), stride_ * 8 / depth_);
  rowBytes_ = stride_;
  if (depth_ == 32 && packing_ == kWithoutPad) rowBytes_ = stride_ / 4 * 3;
  if (depth_ == 32 && isPacked_) rowBytes_ = width_ * (parts_ == 4 ? 4 : 3);
  data_ = in;
  const auto told = static_cast<uint32_t>(height);
  while (rows_ < told && NextRow(in, nullptr)) ++rows_;
  return rows_ == told;
}

/// False when it is not there, or too short to be packed.
bool PictBits::NextRow(PictBytes& in, uint8_t* row) const {
  constexpr uint32_t kLongStride = 250, kMostOfByte = 128;
  const uint32_t size = !isPacked_ ? rowBytes_ : stride_ > kLongStride ? in.U16() : in.U8();
  const ByteView bytes = in.Take(size);
  if (in.isBeyond() || (size + 1) * kMostOfByte < rowBytes_) return false;
  if (!row) return true;
  if (isPacked_) {
    unpack(bytes, depth_ == 16 ? 2 : 1, row, rowBytes_);
  } else if (size > 0) {
    std::memcpy(row, bytes.data(), size);
  }
  return true;
}

void PictBits::MakeClear(uint32_t rgb) {
  if (!isPixmap_) palette_[0] = 0;
  for (uint32_t& colour : palette_) {
    if (isPixmap_ && colour == (kOpaque | rgb)) colour = 0;
  }
}

void PictBits::Cut(Box& part) const {
  part.left = std::max(part.left, bounds_.left);
  part.top = std::max(part.top, bounds_.top);
  part.right = std::min(part.right, bounds_.left + width_);
  part.bottom = std::min(part.bottom, bounds_.top + rows_);
}

bool PictBits::Write(const Box& part, PictureSink& sink) const {
  const auto first = static_cast<uint32_t>(part.left - bounds_.left);
  const auto top = static_cast<uint32_t>(part.top - bounds_.top);
  const auto width = static_cast<uint32_t>(part.width()), height = static_cast<uint32_t>(part.height());
  PngForm form{.width = static_cast<int32_t>(width), .height = static_cast<int32_t>(height)};
  if (depth_ <= 8) {
    form.palette = palette_;
    form.colours = 1u << depth_;
  }
  PngWriter png(sink, form);
  const auto row = std::make_unique<uint8_t[]>(rowBytes_),
             pixels = std::make_unique<uint8_t[]>(size_t{4} * width);
  PictBytes in = data_;
  for (uint32_t y = 0; y < top + height; ++y) {
    NextRow(in, y < top ? nullptr : row.get());
    if (y < top) continue;
    PutRow(row.get(), first, width, pixels.get());
    if (!png.PutRow(pixels.get())) return false;
  }
  return png.End();
}

void PictBits::PutRow(const uint8_t* row, uint32_t first, uint32_t count, uint8_t* pixels) const {
  const bool areParts = isPacked_ && depth_ == 32;
  const uint32_t pixelBytes = areParts ? 1 : packing_ == kWithoutPad ? 3 : 4;
  // From the first of three bytes to the next.
  const uint32_t step = areParts ? width_ : 1;
  for (uint32_t x = first; x < first + count; ++x) {
    if (depth_ <= 8) {
      const uint32_t bit = x * depth_;
      *pixels++ = static_cast<uint8_t>(row[bit / 8] >> (8 - depth_ - bit % 8) & ((1u << depth_) - 1));
      continue;
    }
    if (depth_ == 16) {
      const uint8_t* const pair = row + size_t{2} * x;
      const unsigned value = pair[0] * 256u + pair[1];
      for (int shift = 10; shift >= 0; shift -= 5) {
        *pixels++ = static_cast<uint8_t>((value >> shift & 31) * 255 / 31);
      }
    } else {
      const uint32_t front = areParts ? (parts_ == 4 ? width_ : 0) : pixelBytes - 3;
      for (uint32_t i = 0; i < 3; ++i) *pixels++ = row[x * pixelBytes + front + i * step];
    }
    *pixels++ = 255;
  }
}

}  // namespace pagerex

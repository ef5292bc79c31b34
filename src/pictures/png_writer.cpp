#include "pictures/png_writer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "pictures/bitmap.h"

namespace pagerex {
namespace {

constexpr uint32_t kPartBytes = 16384;
constexpr size_t kChunkFront = 8, kChunkEnd = 4;
constexpr size_t kMargin = 4;  ///< clear bytes in front of each row, for the filter
constexpr uint8_t kSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

void putBig32(uint8_t* to, uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) *to++ = static_cast<uint8_t>(value >> shift);
}

bool isGreyRamp(const PngForm& form) {
  if (form.colours != 256) return false;
  for (uint32_t i = 0; i < 256; ++i) {
    if (form.palette[i] != 0xFF000000u + i * 0x010101u) return false;
  }
  return true;
}

uint8_t depthOf(uint32_t colours) {
  return colours <= 2 ? 1 : colours <= 4 ? 2 : colours <= 16 ? 4 : 8;
}

}  // namespace

PngWriter::PngWriter(PictureSink& sink, const PngForm& form)
    : sink_(sink),
      goesOn_(form.width > 0 && form.height > 0 && form.width <= kLongestSide),
      width_(static_cast<uint32_t>(form.width)),
      rowsLeft_(static_cast<uint32_t>(form.height)) {
  if (!goesOn_) return;
  isGrey_ = form.palette && isGreyRamp(form);
  isIndexed_ = form.palette && !isGrey_;
  if (isIndexed_) depth_ = depthOf(form.colours);
  if (!form.palette) pixelBytes_ = form.hasAlpha ? 4 : 3;
  rowBytes_ = (size_t{width_} * pixelBytes_ * depth_ + 7) / 8;
  rows_ = std::make_unique<uint8_t[]>(3 * (kMargin + rowBytes_));
  OpenStream();
  PutHeader(form);
}

/// What small pictures never look back to needs no memory.
void PngWriter::OpenStream() {
  const uint64_t all = uint64_t{rowBytes_ + 1} * rowsLeft_;
  int windowBits = 15;
  while (windowBits > 9 && all + 262 <= uint64_t{1} << (windowBits - 1)) --windowBits;
  partBytes_ = std::max(1024u, kPartBytes >> (15 - windowBits));
  chunk_ = std::make_unique<uint8_t[]>(kChunkFront + partBytes_ + kChunkEnd);
  if (deflateInit2(&stream_, 6, Z_DEFLATED, windowBits, windowBits - 7, Z_DEFAULT_STRATEGY) != Z_OK)
    throw std::bad_alloc();
}

void PngWriter::PutHeader(const PngForm& form) {
  goesOn_ = sink_.Put({kSignature, sizeof kSignature});
  uint8_t* const content = chunk_.get() + kChunkFront;
  putBig32(content, width_);
  putBig32(content + 4, rowsLeft_);
  constexpr uint8_t kGrey = 0, kColours = 2, kPalette = 3, kColoursAndAlpha = 6;
  const uint8_t kind = isIndexed_ ? kPalette : isGrey_ ? kGrey : form.hasAlpha ? kColoursAndAlpha : kColours;
  const uint8_t last[] = {depth_, kind, 0, 0, 0};
  std::memcpy(content + 8, last, sizeof last);
  PutChunk("IHDR", 13);
  if (!isIndexed_) return;
  size_t notOpaque = 0;
  for (uint32_t i = 0; i < form.colours; ++i) {
    for (int part = 0; part < 3; ++part)
      content[3 * i + part] = static_cast<uint8_t>(form.palette[i] >> (16 - 8 * part));
    if (form.palette[i] >> 24 != 255) notOpaque = i + 1;
  }
  PutChunk("PLTE", size_t{3} * form.colours);
  if (notOpaque == 0) return;
  for (size_t i = 0; i < notOpaque; ++i) content[i] = static_cast<uint8_t>(form.palette[i] >> 24);
  PutChunk("tRNS", notOpaque);
}

/// Its content stands there already.
void PngWriter::PutChunk(const char* type, size_t size) {
  if (!goesOn_) return;
  uint8_t* const chunk = chunk_.get();
  putBig32(chunk, static_cast<uint32_t>(size));
  std::memcpy(chunk + 4, type, 4);
  const uLong sum = crc32(0, chunk + 4, static_cast<uInt>(4 + size));
  putBig32(chunk + kChunkFront + size, static_cast<uint32_t>(sum));
  goesOn_ = sink_.Put({chunk, kChunkFront + size + kChunkEnd});
}

bool PngWriter::PutRow(const uint8_t* pixels) {
  if (!goesOn_ || rowsLeft_ == 0) return false;
  --rowsLeft_;
  Pack(pixels);
  Deflate(Filter(), rowBytes_ + 1, Z_NO_FLUSH);
  return goesOn_;
}

bool PngWriter::PutPackedRow(const uint8_t* bits) {
  if (!goesOn_ || rowsLeft_ == 0) return false;
  --rowsLeft_;
  uint8_t* const row = rows_.get() + 2 * kMargin + rowBytes_;
  std::memcpy(row, bits, rowBytes_);
  const size_t spareBits = rowBytes_ * 8 - size_t{width_} * depth_;
  row[rowBytes_ - 1] = static_cast<uint8_t>(row[rowBytes_ - 1] >> spareBits << spareBits);
  Deflate(Filter(), rowBytes_ + 1, Z_NO_FLUSH);
  return goesOn_;
}

void PngWriter::Pack(const uint8_t* pixels) {
  uint8_t* row = rows_.get() + 2 * kMargin + rowBytes_;
  if (pixelBytes_ == 3) {
    for (uint32_t i = 0; i < width_; ++i, row += 3, pixels += 4) {
      row[0] = pixels[0];
      row[1] = pixels[1];
      row[2] = pixels[2];
    }
  } else if (depth_ == 8) {
    std::memcpy(row, pixels, rowBytes_);
  } else {
    const uint32_t perByte = 8u / depth_;
    for (uint32_t x = 0; x < width_; x += perByte) {
      unsigned byte = 0;
      for (uint32_t i = 0; i < perByte; ++i) byte = byte << depth_ | (x + i < width_ ? *pixels++ : 0u);
      *row++ = static_cast<uint8_t>(byte);
    }
  }
}

/// The row in front of which stands the filter's number: the one of none, left and above that leaves least.
/// This row is the one before for the next.
const uint8_t* PngWriter::Filter() {
  uint8_t* const above = rows_.get() + kMargin;
  uint8_t* const row = above + kMargin + rowBytes_;
  uint8_t* const filtered = row + kMargin + rowBytes_;
  enum : uint8_t { kNone, kLeft, kAbove };
  uint8_t filter = kNone;
  const uint8_t* from = nullptr;
  if (!isIndexed_) {
    uint64_t plain = 0, left = 0, up = 0;
    const uint8_t* const before = row - pixelBytes_;
    const auto weight = [](int difference) {
      return static_cast<unsigned>(std::abs(static_cast<int8_t>(difference)));
    };
    for (size_t i = 0; i < rowBytes_; ++i) {
      plain += weight(row[i]);
      left += weight(row[i] - before[i]);
      up += weight(row[i] - above[i]);
    }
    if (up < plain && up <= left) {
      filter = kAbove;
      from = above;
    } else if (left < plain) {
      filter = kLeft;
      from = before;
    }
  }
  filtered[-1] = filter;
  if (from) {
    for (size_t i = 0; i < rowBytes_; ++i) filtered[i] = static_cast<uint8_t>(row[i] - from[i]);
  } else {
    std::memcpy(filtered, row, rowBytes_);
  }
  std::memcpy(above, row, rowBytes_);
  return filtered - 1;
}

void PngWriter::Deflate(const uint8_t* bytes, size_t size, int flush) {
  stream_.next_in = const_cast<uint8_t*>(bytes);
  stream_.avail_in = static_cast<uInt>(size);
  int state = Z_OK;
  while (goesOn_ && (stream_.avail_in > 0 || (flush == Z_FINISH && state != Z_STREAM_END))) {
    if (!stream_.next_out) {
      stream_.next_out = chunk_.get() + kChunkFront;
      stream_.avail_out = partBytes_;
    }
    state = deflate(&stream_, flush);
    if (stream_.avail_out > 0 && state != Z_STREAM_END) continue;
    PutChunk("IDAT", partBytes_ - stream_.avail_out);
    stream_.next_out = nullptr;
  }
}

bool PngWriter::End() {
  if (rowsLeft_ > 0 && goesOn_) {
    const auto blank = std::make_unique<uint8_t[]>(size_t{width_} * 4);
    if (pixelBytes_ == 3) std::memset(blank.get(), 255, size_t{width_} * 4);
    while (PutRow(blank.get())) continue;
  }
  Deflate(nullptr, 0, Z_FINISH);
  PutChunk("IEND", 0);
  return goesOn_;
}

bool writePng(PixelRows& rows, int32_t width, int32_t height, bool isOpaque, PictureSink& sink) {
  PngWriter png(sink, {.width = width, .height = height, .hasAlpha = !isOpaque});
  if (!png.goesOn()) return false;
  const auto row = std::make_unique<uint8_t[]>(size_t{static_cast<uint32_t>(width)} * 4);
  while (rows.Next(row.get()) && png.PutRow(row.get())) continue;
  return png.End();
}

}  // namespace pagerex

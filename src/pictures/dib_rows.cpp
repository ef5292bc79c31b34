#include "pictures/dib_rows.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace pagerex {
namespace {

constexpr uint32_t kCoreHeader = 12, kInfoHeader = 40;
constexpr uint32_t kShortestHeader = 16, kLongestHeader = 1024;
constexpr uint32_t kMasksAt = 40, kAlphaMaskAt = 52;  ///< whether they are of the header or behind it

/// A bit for each depth that a compression goes with.
struct CompressionDepths {
  uint32_t compression;
  uint64_t depths;
};
constexpr uint64_t bitsOf(std::initializer_list<int> depths) {
  uint64_t bits = 0;
  for (const int depth : depths) bits |= uint64_t{1} << depth;
  return bits;
}
constexpr CompressionDepths kCompressions[] = {
    {DibHeader::kNone, bitsOf({1, 2, 4, 8, 16, 24, 32})},
    {DibHeader::kRuns8, bitsOf({8})},
    {DibHeader::kRuns4, bitsOf({4})},
    {DibHeader::kMasks, bitsOf({16, 32})},
    {DibHeader::kMasksAndAlpha, bitsOf({16, 32})},
};

bool isKnown(uint32_t compression, uint16_t depth) {
  return std::any_of(std::begin(kCompressions), std::end(kCompressions), [=](const CompressionDepths& row) {
    return row.compression == compression && depth < 64 && (row.depths >> depth & 1);
  });
}

}  // namespace

DibHeader::DibHeader(const Dib& dib) {
  const ByteView bytes = dib.header;
  const uint32_t size = bytes.u32(0);
  const ByteView fields = bytes.part(0, size);
  if (size == kCoreHeader) {
    width = fields.u16(4);
    height = fields.u16(6);
    depth = fields.u16(10);
    colourBytes = 3;
  } else if (size >= kShortestHeader && size <= kLongestHeader) {
    width = fields.i32(4);
    height = fields.i32(8);
    depth = fields.u16(14);
    compression = fields.u32(16);
    bitsSize = fields.u32(20);
    coloursUsed = fields.u32(32);
  }
  if (dib.hasPaletteIndexes) colourBytes = 2;
  if (width <= 0 || height == 0 || height == INT32_MIN) {
    width = height = 0;
    return;
  }
  isTopDown = height < 0;
  height = std::abs(height);
  coloursAt = size;
  if (compression != kMasks && compression != kMasksAndAlpha) {
    masks = depth == 16 ? std::array<uint32_t, 4>{0x7C00, 0x3E0, 0x1F, 0}
                        : std::array<uint32_t, 4>{0xFF0000, 0xFF00, 0xFF, 0};
    return;
  }
  for (size_t i = 0; i < 3; ++i) masks[i] = bytes.u32(kMasksAt + 4 * i);
  if (size > kAlphaMaskAt || compression == kMasksAndAlpha) masks[3] = bytes.u32(kAlphaMaskAt);
  if (size == kInfoHeader) coloursAt = compression == kMasks ? kAlphaMaskAt : kAlphaMaskAt + 4;
}

uint32_t DibHeader::colourCount() const {
  if (depth == 0 || depth > 8) return 0;
  const uint32_t all = 1u << depth;
  return coloursUsed > 0 && coloursUsed < all ? coloursUsed : all;
}

DibRows::DibRows(const Dib& dib) : header_(dib), bits_(dib.bits) {
  if (header_.width == 0 || !isKnown(header_.compression, header_.depth)) return;
  if (header_.compression == DibHeader::kRuns8 || header_.compression == DibHeader::kRuns4) {
    FindRuns();
    return;
  }
  // The last row need not be filled up.
  const uint64_t stride = header_.rowBytes();
  const uint64_t least = (uint64_t{static_cast<uint32_t>(header_.width)} * header_.depth + 7) / 8;
  if (bits_.size() < least) return;
  rows_ = static_cast<int32_t>(
      std::min<uint64_t>((bits_.size() - least) / stride + 1, static_cast<uint32_t>(header_.height)));
  if (!isIndexed()) PrepareColours();
}

/// What the bits of a channel stand for, of which the upper eight count.
void DibRows::PrepareColours() {
  std::array<uint32_t, 4> masks = header_.masks;
  // The fourth byte, where no mask takes it.
  if (header_.depth == 32 && masks[3] == 0) masks[3] = 0xFF000000u & ~(masks[0] | masks[1] | masks[2]);
  channels_ = std::make_unique<Channel[]>(masks.size());
  for (size_t i = 0; i < masks.size(); ++i) {
    Channel& channel = channels_[i];
    const int end = std::bit_width(masks[i]);
    const int bits = std::min(end ? end - std::countr_zero(masks[i]) : 0, 8);
    channel.shift = static_cast<uint8_t>(end - bits);
    channel.mask = static_cast<uint8_t>(bits ? masks[i] >> channel.shift : 0);
    const uint32_t most = (1u << bits) - 1;
    for (uint32_t value = 0; value <= most; ++value) {
      channel.values[value] = static_cast<uint8_t>(most ? (value * 255 + most / 2) / most : i == 3 ? 255 : 0);
    }
  }
}

uint32_t DibRows::ReadPalette(const Dib& dib, uint32_t (&colours)[256]) const {
  const uint32_t count = header_.colourCount();
  const bool isRamp = hasNoColours(dib) || (dib.hasPaletteIndexes && dib.palette.empty());
  for (uint32_t i = 0; i < count; ++i) {
    const size_t at = header_.coloursAt + size_t{i} * header_.colourBytes;
    uint32_t rgb = dib.header.u32(at) & 0xFFFFFF;
    if (dib.hasPaletteIndexes) {
      const uint32_t entry = dib.palette.u32(size_t{4} * dib.header.u16(at));
      rgb = (entry & 0xFF) << 16 | (entry & 0xFF00) | (entry >> 16 & 0xFF);
    }
    if (isRamp) rgb = i * 255 / ((1u << header_.depth) - 1) * 0x010101;
    colours[i] = 0xFF000000u | rgb;
  }
  return count;
}

bool DibRows::hasNoColours(const Dib& dib) const {
  return dib.header.size() <= header_.coloursAt;
}

/// Goes over all runs once to learn where rows begin.
void DibRows::FindRuns() {
  constexpr uint64_t kPixelsOfByte = 256, kLeastPixels = 65536;
  const auto width = static_cast<uint32_t>(header_.width);
  const uint64_t most = (kPixelsOfByte * bits_.size() + kLeastPixels) / width;
  const auto height = static_cast<uint32_t>(std::min<uint64_t>(most, static_cast<uint32_t>(header_.height)));
  bits_ = bits_.part(0, INT32_MAX);
  RunPlace place;
  bool goesOn = true;
  while (goesOn && place.row < height && bits_.contains(place.at, 2)) {
    runs_.push_back(place);
    goesOn = ReadRuns(place, nullptr);
  }
  // One that was not ended has no more than what was told of it.
  const uint32_t reached = goesOn ? place.row + (place.x > 0 ? 1 : 0) : height;
  rows_ = static_cast<int32_t>(std::min(reached, height));
  if (rows_ > 0) line_.resize(width);
}

/// The runs of one row; goes on to the place where the next one begins. False at the end of the bitmap.
bool DibRows::ReadRuns(RunPlace& place, uint8_t* pixels) const {
  enum : uint8_t { kEndOfRow, kEndOfBitmap, kMove };
  const bool isFour = header_.depth == 4;
  const auto width = static_cast<uint32_t>(header_.width);
  while (bits_.contains(place.at, 2)) {
    const uint8_t first = bits_.u8(place.at), second = bits_.u8(place.at + 1);
    place.at += 2;
    uint32_t count = first, told = 0;
    if (first == 0) {
      if (second == kEndOfBitmap) return false;
      if (second == kEndOfRow || second == kMove) {
        const uint8_t down = second == kMove ? bits_.u8(place.at + 1) : 1;
        place.x = second == kMove ? std::min(width, place.x + bits_.u8(place.at)) : 0;
        if (second == kMove) place.at += 2;
        place.row += down;
        if (down > 0) return true;
        continue;
      }
      count = second;
      told = isFour ? (count + 1) / 2 : count;
    }
    const uint32_t fits = std::min(count, width - place.x);
    for (uint32_t i = 0; pixels && i < fits; ++i) {
      const uint8_t byte = told ? bits_.u8(place.at + (isFour ? i / 2 : i)) : second;
      pixels[place.x + i] = !isFour ? byte : i % 2 ? byte & 15 : byte >> 4;
    }
    place.x += fits;
    place.at += told + told % 2;
  }
  return true;
}

void DibRows::Read(int32_t y, int32_t left, int32_t count, uint8_t* pixels) {
  const auto row = static_cast<uint32_t>(header_.isTopDown ? y : header_.height - 1 - y);
  const auto from = static_cast<uint32_t>(left), width = static_cast<uint32_t>(count);
  if (!line_.empty()) {
    std::fill(line_.begin(), line_.end(), 0);
    const auto isBefore = [](const RunPlace& place, uint32_t sought) { return place.row < sought; };
    auto found = std::lower_bound(runs_.begin(), runs_.end(), row, isBefore);
    if (found != runs_.end() && found->row == row) {
      RunPlace place = *found;
      ReadRuns(place, line_.data());
    }
    std::memcpy(pixels, line_.data() + from, width);
  } else {
    const uint8_t* const bytes = bits_.data() + row * header_.rowBytes();
    if (isIndexed()) return ReadIndexes(bytes, from, width, pixels);
    ReadColours(bytes + size_t{from} * (header_.depth / 8), width, pixels);
  }
}

void DibRows::ReadIndexes(const uint8_t* row, uint32_t left, uint32_t count, uint8_t* pixels) const {
  const unsigned depth = header_.depth, perByte = 8 / depth, mask = (1u << depth) - 1;
  for (uint32_t x = left; x < left + count; ++x) {
    *pixels++ = static_cast<uint8_t>(row[x / perByte] >> (8 - depth - x % perByte * depth) & mask);
  }
}

void DibRows::ReadColours(const uint8_t* row, uint32_t count, uint8_t* pixels) const {
  const size_t bytes = header_.depth / 8;
  for (uint32_t i = 0; i < count; ++i, row += bytes) {
    uint32_t pixel = row[0] | static_cast<uint32_t>(row[1]) << 8;
    if (bytes > 2) pixel |= static_cast<uint32_t>(row[2]) << 16;
    if (bytes > 3) pixel |= static_cast<uint32_t>(row[3]) << 24;
    for (size_t part = 0; part < 4; ++part) {
      const Channel& channel = channels_[part];
      *pixels++ = channel.values[pixel >> channel.shift & channel.mask];
    }
  }
}

}  // namespace pagerex

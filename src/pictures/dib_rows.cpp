#include "pictures/dib_rows.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>

namespace pagerex {
namespace {

constexpr uint32_t kCoreHeader = 12, kInfoHeader = 40;
constexpr uint32_t kShortestHeader = 16, kLongestHeader = 1024;

#pragma pack(push, 1)

struct InfoHeader {
  uint32_t size;
  int32_t width, height;
  uint16_t planes, depth;
  uint32_t compression, bitsSize;
  int32_t resolution[2];
  uint32_t coloursUsed, coloursNeeded;
  uint32_t masks[4];  ///< of the header, or behind it
};
static_assert(sizeof(InfoHeader) == 56);

#pragma pack(pop)

constexpr uint32_t kAlphaMaskAt = 52;

constexpr uint64_t bitsOf(std::initializer_list<int> depths) {
  uint64_t bits = 0;
  for (const int depth : depths) bits |= uint64_t{1} << depth;
  return bits;
}
/// By compression, a bit for each depth that it goes with.
constexpr uint64_t kDepths[] = {
    bitsOf({1, 2, 4, 8, 16, 24, 32}), bitsOf({8}), bitsOf({4}), bitsOf({16, 32}), 0, 0, bitsOf({16, 32}),
};

bool isKnown(uint32_t compression, uint16_t depth) {
  return compression < std::size(kDepths) && depth < 64 && (kDepths[compression] >> depth & 1);
}

}  // namespace

DibHeader::DibHeader(const Dib& dib) {
  const auto all = dib.header.copyOf<InfoHeader>(0);
  const uint32_t size = all.size;
  const auto fields = dib.header.part(0, size).copyOf<InfoHeader>(0);
  if (size == kCoreHeader) {
    const ByteView core = dib.header;
    width = core.u16(4);
    height = core.u16(6);
    depth = core.u16(10);
    colourBytes = 3;
  } else if (size >= kShortestHeader && size <= kLongestHeader) {
    width = fields.width;
    height = fields.height;
    depth = fields.depth;
    compression = fields.compression;
    bitsSize = fields.bitsSize;
    coloursUsed = fields.coloursUsed;
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
    const unsigned bits = depth == 16 ? 5 : 8;
    for (unsigned i = 0; i < 3; ++i) masks[i] = ((1u << bits) - 1) << (2 - i) * bits;
    return;
  }
  std::copy_n(all.masks, 4, masks.begin());
  if (size <= kAlphaMaskAt && compression != kMasksAndAlpha) masks[3] = 0;
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
    const auto end = static_cast<int>(std::bit_width(masks[i]));
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
  const auto width = static_cast<uint32_t>(header_.width);
  const uint64_t most = mostPixels(bits_.size()) / width;
  const auto height = static_cast<uint32_t>(std::min<uint64_t>(most, static_cast<uint32_t>(header_.height)));
  bits_ = bits_.part(0, INT32_MAX);
  RunPlace place;
  bool goesOn = true;
  while (goesOn && place.row < height && bits_.contains(place.at, 2)) {
    for (const uint32_t& number : {place.row, place.x, place.at}) runs_.push_back(number);
    goesOn = ReadRuns(place, nullptr);
  }
  // One that was not ended has no more than what was told of it.
  const uint32_t reached = goesOn ? place.row + (place.x > 0 ? 1 : 0) : height;
  rows_ = static_cast<int32_t>(std::min(reached, height));
  if (rows_ > 0) line_ = std::make_unique<uint8_t[]>(width);
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
  if (line_) {
    std::memset(line_.get(), 0, static_cast<uint32_t>(header_.width));
    size_t found = 0;
    for (size_t end = runs_.size() / 3; found < end;) {
      const size_t middle = (found + end) / 2;
      if (runs_[3 * middle] < row) {
        found = middle + 1;
      } else {
        end = middle;
      }
    }
    if (3 * found < runs_.size() && runs_[3 * found] == row) {
      RunPlace place{row, runs_[3 * found + 1], runs_[3 * found + 2]};
      ReadRuns(place, line_.get());
    }
    std::memcpy(pixels, line_.get() + from, width);
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

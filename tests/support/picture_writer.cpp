#include "support/picture_writer.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <string_view>

namespace support {
namespace {

/// Both formats are big-endian.
ByteWriter& big16(ByteWriter& out, size_t value) {
  return out.u8(static_cast<uint8_t>(value >> 8)).u8(static_cast<uint8_t>(value));
}
ByteWriter& big32(ByteWriter& out, size_t value) {
  return big16(big16(out, value >> 16), value);
}

// --- PNG ---

void addChunk(ByteWriter& file, std::string_view type, const Bytes& content) {
  const Bytes checked = ByteWriter().text8(type).bytes(content).take();
  big32(file, content.size()).bytes(checked);
  big32(file, crc32(0, checked.data(), static_cast<uInt>(checked.size())));
}

Bytes deflated(const Bytes& content) {
  uLongf size = compressBound(content.size());
  Bytes packed(size);
  if (compress2(packed.data(), &size, content.data(), content.size(), 9) != Z_OK)
    throw std::runtime_error("cannot deflate");
  packed.resize(size);
  return packed;
}

/// The mean of nine points. What is clear has no say in the colour.
Colour pixelAt(int x, int y, const Paint& colourAt) {
  constexpr int kPoints = 3;
  int red = 0, green = 0, blue = 0, alpha = 0;
  for (int i = 0; i < kPoints * kPoints; ++i) {
    const Colour c = colourAt(x + (i % kPoints + 0.5) / kPoints, y + (i / kPoints + 0.5) / kPoints);
    red += c.red * c.alpha;
    green += c.green * c.alpha;
    blue += c.blue * c.alpha;
    alpha += c.alpha;
  }
  if (alpha == 0) return {0, 0, 0, 0};
  const auto mean = [](int sum, int count) { return static_cast<uint8_t>(sum / count); };
  return {mean(red, alpha), mean(green, alpha), mean(blue, alpha), mean(alpha, kPoints * kPoints)};
}

// --- JPEG ---
//
// A tile of one colour has one coefficient in each component, the mean, told as the difference from the last
// tile: a code for the count of its bits, then the bits. A code that says "no more coefficients" follows.

constexpr int kSizeSymbols = 12;  // of the means' codes: each 4 bits long, and so its own symbol
constexpr int kSizeBits = 4;
constexpr uint8_t kQuantum = 8;  // times the coefficient gives eight times the mean

class TileBits {
 public:
  void addMean(int difference) {
    int size = 0;
    for (int rest = std::abs(difference); rest; rest >>= 1) ++size;
    add(size, kSizeBits);
    add(difference < 0 ? difference - 1 : difference, size);
    add(0, 1);
  }

  Bytes take() {
    add(0x7F, 7);
    return out_.take();
  }

 private:
  void add(int bits, int count) {
    for (int i = count - 1; i >= 0; --i) {
      pending_ = pending_ << 1 | (bits >> i & 1);
      if (++pendingBits_ % 8) continue;
      out_.u8(static_cast<uint8_t>(pending_));
      if (pending_ == 0xFF) out_.u8(0);  // so that it is no marker
      pending_ = 0;
    }
  }

  ByteWriter out_;
  int pending_ = 0;
  int pendingBits_ = 0;
};

/// Brightness and two differences of colour, from -128 to 127.
std::array<int, 3> componentsOf(const Colour& c) {
  const auto sum = [&c](double red, double green, double blue) {
    return static_cast<int>(std::lround(red * c.red + green * c.green + blue * c.blue));
  };
  return {sum(0.299, 0.587, 0.114) - 128, std::min(sum(-0.1687, -0.3313, 0.5), 127),
          std::min(sum(0.5, -0.4187, -0.0813), 127)};
}

void addSegment(ByteWriter& file, uint8_t marker, const Bytes& content) {
  big16(file.u8(0xFF).u8(marker), content.size() + 2).bytes(content);
}

/// All symbols have codes of one length.
Bytes huffmanTable(uint8_t id, int bits, const Bytes& symbols) {
  Bytes counts(16);
  counts[static_cast<size_t>(bits) - 1] = static_cast<uint8_t>(symbols.size());
  return ByteWriter().u8(id).bytes(counts).bytes(symbols).take();
}

Bytes frame(int width, int height) {
  ByteWriter content;
  big16(big16(content.u8(8), static_cast<size_t>(height)), static_cast<size_t>(width)).u8(3);
  for (uint8_t id = 1; id <= 3; ++id) content.u8(id).u8(0x11).u8(0);
  return content.take();
}

}  // namespace

Bytes png(int width, int height, const Paint& colourAt) {
  ByteWriter rows, header, file;
  for (int y = 0; y < height; ++y) {
    rows.u8(0);  // not filtered
    for (int x = 0; x < width; ++x) {
      const Colour pixel = pixelAt(x, y, colourAt);
      rows.u8(pixel.red).u8(pixel.green).u8(pixel.blue).u8(pixel.alpha);
    }
  }
  big32(big32(header, static_cast<size_t>(width)), static_cast<size_t>(height)).u8(8).u8(6).zeros(3);
  file.u8(0x89).text8("PNG\r\n\x1A\n");
  addChunk(file, "IHDR", header.take());
  addChunk(file, "IDAT", deflated(rows.take()));
  addChunk(file, "IEND", {});
  return file.take();
}

Bytes jpeg(int columns, int rows, const Paint& colourAt) {
  TileBits tiles;
  std::array<int, 3> last = {};
  for (int y = 0; y < rows; ++y) {
    for (int x = 0; x < columns; ++x) {
      const auto components = componentsOf(colourAt(x + 0.5, y + 0.5));
      for (size_t i = 0; i < components.size(); ++i) tiles.addMean(components[i] - last[i]);
      last = components;
    }
  }
  Bytes sizes;
  for (uint8_t size = 0; size < kSizeSymbols; ++size) sizes.push_back(size);
  ByteWriter file;
  file.u8(0xFF).u8(0xD8);
  addSegment(file, 0xE0, {'J', 'F', 'I', 'F', 0, 1, 1, 0, 0, 1, 0, 1, 0, 0});
  addSegment(file, 0xDB, ByteWriter().u8(0).fill(64, kQuantum).take());
  addSegment(file, 0xC0, frame(columns * 8, rows * 8));
  addSegment(file, 0xC4, huffmanTable(0x00, kSizeBits, sizes));
  addSegment(file, 0xC4, huffmanTable(0x10, 1, {0}));
  addSegment(file, 0xDA, {3, 1, 0, 2, 0, 3, 0, 0, 63, 0});
  return file.bytes(tiles.take()).u8(0xFF).u8(0xD9).take();
}

}  // namespace support

#include "support/png_reader.h"

#include <zlib.h>

#include <cstdlib>
#include <stdexcept>

namespace support {
namespace {

void require(bool isRight, const char* what) {
  if (!isRight) throw std::runtime_error(what);
}

uint32_t big32(const Bytes& bytes, size_t at) {
  require(at + 4 <= bytes.size(), "PNG ends early");
  return static_cast<uint32_t>(bytes[at]) << 24 | static_cast<uint32_t>(bytes[at + 1]) << 16 |
         static_cast<uint32_t>(bytes[at + 2]) << 8 | bytes[at + 3];
}

struct Chunks {
  Bytes header, palette, alphas, packed;
};

Chunks chunksOf(const Bytes& file) {
  const Bytes signature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  require(file.size() > 8 && Bytes(file.begin(), file.begin() + 8) == signature, "no PNG");
  Chunks chunks;
  for (size_t at = 8;;) {
    const size_t size = big32(file, at);
    require(size < file.size() && at + 12 + size <= file.size(), "chunk ends early");
    const uint8_t* const type = file.data() + at + 4;
    require(crc32(0, type, static_cast<uInt>(size + 4)) == big32(file, at + 8 + size), "checksum");
    const std::string_view name(reinterpret_cast<const char*>(type), 4);
    at += 12 + size;
    if (name == "IEND") {
      require(at == file.size(), "bytes behind the end");
      return chunks;
    }
    Bytes* const target = name == "IHDR"   ? &chunks.header
                          : name == "PLTE" ? &chunks.palette
                          : name == "tRNS" ? &chunks.alphas
                          : name == "IDAT" ? &chunks.packed
                                           : nullptr;
    require(target != nullptr, "unknown chunk");
    target->insert(target->end(), type + 4, type + 4 + size);
  }
}

Bytes inflated(const Bytes& packed, size_t size) {
  Bytes bytes(size + 1);
  uLongf there = bytes.size();
  require(uncompress(bytes.data(), &there, packed.data(), packed.size()) == Z_OK && there == size, "IDAT");
  bytes.pop_back();
  return bytes;
}

int paeth(int left, int above, int corner) {
  const int guess = left + above - corner;
  const int a = std::abs(guess - left), b = std::abs(guess - above), c = std::abs(guess - corner);
  return a <= b && a <= c ? left : b <= c ? above : corner;
}

void unfilter(Bytes& rows, size_t rowBytes, size_t pixelBytes) {
  for (size_t row = 0; row < rows.size(); row += rowBytes + 1) {
    for (size_t i = 1; i <= rowBytes; ++i) {
      const int left = i > pixelBytes ? rows[row + i - pixelBytes] : 0;
      const int above = row > 0 ? rows[row - rowBytes - 1 + i] : 0;
      const int corner = row > 0 && i > pixelBytes ? rows[row - rowBytes - 1 + i - pixelBytes] : 0;
      const int guesses[] = {0, left, above, (left + above) / 2, paeth(left, above, corner)};
      require(rows[row] < 5, "filter");
      rows[row + i] = static_cast<uint8_t>(rows[row + i] + guesses[rows[row]]);
    }
  }
}

}  // namespace

Png readPng(const Bytes& file) {
  const Chunks chunks = chunksOf(file);
  require(chunks.header.size() == 13, "header");
  Png png;
  png.width = static_cast<int>(big32(chunks.header, 0));
  png.height = static_cast<int>(big32(chunks.header, 4));
  png.depth = chunks.header[8];
  png.kind = chunks.header[9];
  const size_t samples = png.kind == 6 ? 4 : png.kind == 2 ? 3 : 1;
  const size_t pixelBits = samples * static_cast<size_t>(png.depth);
  const size_t rowBytes = (static_cast<size_t>(png.width) * pixelBits + 7) / 8;
  Bytes rows = inflated(chunks.packed, (rowBytes + 1) * static_cast<size_t>(png.height));
  unfilter(rows, rowBytes, (pixelBits + 7) / 8);
  for (int y = 0; y < png.height; ++y) {
    const uint8_t* const row = rows.data() + static_cast<size_t>(y) * (rowBytes + 1) + 1;
    for (size_t x = 0; x < static_cast<size_t>(png.width); ++x) {
      if (samples > 1) {
        const uint8_t* const pixel = row + x * samples;
        png.pixels.push_back((samples == 4 ? pixel[3] : 255u) << 24 | static_cast<uint32_t>(pixel[0]) << 16 |
                             static_cast<uint32_t>(pixel[1]) << 8 | pixel[2]);
        continue;
      }
      const size_t bit = x * pixelBits;
      const uint32_t value = row[bit / 8] >> (8 - pixelBits - bit % 8) & ((1u << pixelBits) - 1);
      if (png.kind == 0) {
        png.pixels.push_back(0xFF000000u | value * 255 / ((1u << pixelBits) - 1) * 0x010101u);
        continue;
      }
      require(value * 3 + 2 < chunks.palette.size(), "index beyond the palette");
      const uint32_t alpha = value < chunks.alphas.size() ? chunks.alphas[value] : 255u;
      const uint8_t* const colour = chunks.palette.data() + value * 3;
      png.pixels.push_back(alpha << 24 | static_cast<uint32_t>(colour[0]) << 16 |
                           static_cast<uint32_t>(colour[1]) << 8 | colour[2]);
    }
  }
  return png;
}

}  // namespace support

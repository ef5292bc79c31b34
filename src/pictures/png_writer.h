#pragma once

#include <zlib.h>

#include <cstdint>
#include <memory>
#include <string_view>

#include "pictures/picture_sink.h"

namespace pagerex {

struct PngForm {
  int32_t width = 0, height = 0;
  /// 0xAARRGGBB, up to 256; not owned, and used by the constructor only. Null for rows of colours.
  const uint32_t* palette = nullptr;
  uint32_t colours = 0;   ///< in the palette
  bool hasAlpha = false;  ///< of rows of colours
};

/// Writes a PNG row by row. Keeps three rows and a part of what was packed.
class PngWriter {
 public:
  static constexpr int32_t kLongestSide = 1 << 24;  ///< of width; more than anything shows

  PngWriter(PictureSink& sink, const PngForm& form);
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;
  ~PngWriter() = default;

  /// False when the sink ended it, or its size is none that it writes.
  bool goesOn() const { return goesOn_; }
  /// A byte a pixel, below the number of colours, with a palette; otherwise red, green, blue, alpha. False
  /// when there is no use for more.
  bool PutRow(const uint8_t* pixels);
  /// With a palette: as many bits a pixel as the file has, 1, 2, 4 or 8 by the number of colours; the first
  /// in the upper bits.
  bool PutPackedRow(const uint8_t* bits);
  /// Rows that are wanting are added: of the first colour, or clear, or white. False when the sink ended it.
  bool End();

 private:
  struct Deflater : z_stream {
    Deflater() : z_stream{} {}
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;
    ~Deflater() { deflateEnd(this); }
  };

  void OpenStream();
  void PutHeader(const PngForm& form);
  void PutChunk(const char* type, size_t size);
  void Pack(const uint8_t* pixels);
  const uint8_t* Filter();
  void Deflate(const uint8_t* bytes, size_t size, int flush);

  PictureSink& sink_;
  bool goesOn_;
  bool isIndexed_ = false, isGrey_ = false;
  uint8_t depth_ = 8, pixelBytes_ = 1;
  uint32_t width_, rowsLeft_;
  size_t rowBytes_ = 0;
  uint32_t partBytes_ = 0;  ///< of packed bytes that go out at once
  Deflater stream_;
  std::unique_ptr<uint8_t[]> rows_;   ///< the one before, this one, this one as filtered
  std::unique_ptr<uint8_t[]> chunk_;  ///< length, type, content, checksum
};

}  // namespace pagerex

#pragma once

#include <cstdint>

#include "base/byte_view.h"
#include "pictures/picture_sink.h"

namespace pagerex {

/// A device-independent bitmap as it lies in a file, not owned: BITMAPCOREHEADER, BITMAPINFOHEADER or a
/// longer one, colours, pixels. All depths and compressions, both orders of rows. What lies outside its bytes
/// is not there: it is as high as its rows reach.
struct Dib {
  ByteView header;  ///< with masks and colours behind it
  ByteView bits;
  bool hasPaletteIndexes = false;  ///< DIB_PAL_COLORS: colours are 16-bit indexes, taken from `palette`
  ByteView palette;  ///< of the device context: PALETTEENTRY, 4 bytes each (red, green, blue, flags)
};

/// A packed one: pixels behind the colours.
Dib packedDib(ByteView bytes, bool hasPaletteIndexes = false);

/// That of a file, which begins with "BM".
Dib dibOfFile(ByteView bytes);

/// As told, not as there.
struct BitmapSize {
  int32_t width = 0, height = 0;  ///< 0 for no bitmap
  uint16_t depth = 0;             ///< bits of a pixel
};
BitmapSize sizeOf(const Dib& dib);

/// The JPEG or PNG that stands for the pixels; empty for none. Such a bitmap is passed, not written.
ByteView compressedImage(const Dib& dib);

/// Whether the header names bits of alpha, as those of longer kinds do.
bool hasAlphaMask(const Dib& dib);

/// What is made of a bitmap's pixels on the way.
struct PixelChange {
  /// Of the bitmap as it is seen, from the top left corner; a width of 0 for all of it.
  int32_t left = 0, top = 0, width = 0, height = 0;

  enum class Alpha : uint8_t { kNone, kStraight, kPremultiplied };
  Alpha alpha = Alpha::kNone;  ///< what the fourth byte of 32-bit pixels, or the mask of alpha, is

  bool hasKey = false;
  uint32_t key = 0;  ///< 0xRRGGBB: pixels of this colour are transparent

  /// The bits of a pixel from those of the pattern colour (P) and of the source (S): result = bit (2 P + S).
  /// 0b1010 is the source as it is, 0b0101 its opposite.
  uint8_t operation = 0b1010;
  uint32_t pattern = 0;  ///< 0xRRGGBB

  /// Of a bitmap with one bit a pixel and no colours: 0xRRGGBB for 0 and 1.
  bool hasInks = false;
  uint32_t inks[2] = {0x000000, 0xFFFFFF};

  /// One bit a pixel, of which 1 is shown; from `maskLeft`, `maskTop` on, and of the size of the part. Null
  /// for none.
  const Dib* mask = nullptr;
  int32_t maskLeft = 0, maskTop = 0;
  bool isMaskInverse = false;  ///< 0 is shown
};

/// That are made of so many bytes, whatever runs say.
constexpr uint64_t mostPixels(size_t bytes) {
  return uint64_t{bytes} * 256 + 65536;
}

/// Writes a bitmap as PNG, row by row. False when there is nothing of it, or the sink ended it.
/// Time and output go with the bytes that are there, memory with those of a row: of runs no more than 256
/// pixels a byte, and 65,536, are made, and rows beyond are not there.
bool writePng(const Dib& dib, const PixelChange& change, PictureSink& sink);

/// Rows of 8-bit colours from the top, as any source of pixels tells them.
class PixelRows {
 public:
  PixelRows() = default;
  PixelRows(const PixelRows&) = delete;
  PixelRows& operator=(const PixelRows&) = delete;
  virtual ~PixelRows() = default;

  /// `width` times red, green, blue, alpha (straight); false when there is no further row.
  virtual bool Next(uint8_t* rgba) = 0;
};

/// The same of other sources. With `isOpaque` alpha is left out. Rows that are wanting are clear, or white.
bool writePng(PixelRows& rows, int32_t width, int32_t height, bool isOpaque, PictureSink& sink);

}  // namespace pagerex

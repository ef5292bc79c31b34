#pragma once

#include <initializer_list>

#include "pictures/bitmap.h"
#include "support/bytes.h"
#include "support/picture_memory.h"
#include "support/png_reader.h"

namespace support {

struct InfoFields {
  int32_t width = 0, height = 0;
  uint16_t depth = 0;
  uint32_t compression = 0;
  uint32_t coloursUsed = 0;
  uint32_t headerSize = 40;
};

/// A BITMAPINFOHEADER, or the fields of a longer header that are in one; the caller goes on with the rest.
inline ByteWriter infoHeader(const InfoFields& fields) {
  ByteWriter out;
  out.u32(fields.headerSize)
      .u32(static_cast<uint32_t>(fields.width))
      .u32(static_cast<uint32_t>(fields.height));
  out.u16(1).u16(fields.depth).u32(fields.compression).u32(0).zeros(8).u32(fields.coloursUsed).u32(0);
  return out;
}

/// 0xRRGGBB as four bytes.
inline ByteWriter& addColours(ByteWriter& out, std::initializer_list<uint32_t> colours) {
  for (const uint32_t colour : colours) out.u32(colour);
  return out;
}

inline ByteView viewOf(const Bytes& bytes) {
  return {bytes.data(), bytes.size()};
}

/// The PNG of a bitmap; without pixels when none was written.
inline Png pngOf(const pagerex::Dib& dib, const pagerex::PixelChange& change = {}) {
  PictureMemory sink;
  return pagerex::writePng(dib, change, sink) ? readPng(sink.bytes) : Png();
}

inline Png pngOfPacked(const Bytes& bytes, const pagerex::PixelChange& change = {}) {
  return pngOf(pagerex::packedDib(viewOf(bytes)), change);
}

}  // namespace support

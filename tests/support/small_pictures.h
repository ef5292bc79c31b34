#pragma once

#include <string_view>

#include "support/bytes.h"
#include "support/picture_writer.h"

/// Pictures of few bytes, one of each kind, that are sound.
namespace support {

/// Red boxes, one over the other, as an enhanced metafile of 100 by 50 pixels of an inch's ninety-sixth.
inline Bytes smallEmf(uint32_t boxes = 1) {
  constexpr uint32_t kHeader = 1, kSelect = 37, kBrush = 39, kRectangle = 43, kEnd = 14;
  ByteWriter emf;
  emf.u32(kHeader).u32(88);
  for (const uint32_t bound : {0, 0, 99, 49}) emf.u32(bound);
  for (const uint32_t frame : {0, 0, 2646, 1323}) emf.u32(frame);
  emf.text8(" EMF").u32(0x10000).u32(88 + 24 + 12 + 24 * boxes + 20).u32(4 + boxes).u16(2).u16(0).zeros(12);
  emf.u32(1920).u32(1080).u32(508).u32(286);
  emf.u32(kBrush).u32(24).u32(1).u32(0).u32(0x0000FF).u32(0);
  emf.u32(kSelect).u32(12).u32(1);
  for (uint32_t i = 0; i < boxes; ++i) {
    emf.u32(kRectangle).u32(24);
    for (const uint32_t corner : {10, 10, 90, 40}) emf.u32(corner + i % 7);
  }
  emf.u32(kEnd).u32(20).u32(0).u32(0).u32(20);
  return emf.take();
}

/// A box as a bare Windows metafile, 1000 by 500 units.
inline Bytes bareWmf() {
  ByteWriter wmf;
  wmf.u16(1).u16(9).u16(0x300).u32(9 + 5 + 5 + 7 + 3).u16(0).u32(7).u16(0);
  wmf.u32(5).u16(0x020B).u16(0).u16(0);
  wmf.u32(5).u16(0x020C).u16(500).u16(1000);
  wmf.u32(7).u16(0x041B).u16(400).u16(900).u16(100).u16(100);
  wmf.u32(3).u16(0);
  return wmf.take();
}

inline Bytes placeableWmf() {
  ByteWriter wmf;
  wmf.u32(0x9AC6CDD7).u16(0).u16(0).u16(0).u16(1000).u16(500).u16(1000).u32(0);
  Bytes header = wmf.take();
  uint16_t sum = 0;
  for (size_t i = 0; i < header.size(); i += 2)
    sum = static_cast<uint16_t>(sum ^ (header[i] | header[i + 1] << 8));
  return ByteWriter().bytes(header).u16(sum).bytes(bareWmf()).take();
}

/// A frame of 20 by 10, and a box in it.
inline Bytes pict() {
  ByteWriter pict;
  const auto word = [&pict](uint32_t value) { pict.u8(value >> 8).u8(value); };
  word(0);
  for (const uint32_t side : {0, 0, 10, 20}) word(side);
  pict.u8(0x11).u8(0x01).u8(0x31);
  for (const uint32_t side : {2, 2, 8, 18}) word(side);
  return pict.u8(0xFF).take();
}

/// Two by two pixels.
inline Bytes dib() {
  ByteWriter dib;
  dib.u32(40).u32(2).u32(2).u16(1).u16(24).zeros(24);
  for (const uint32_t colour : {0x0000FF, 0x00FF00}) {
    for (int i = 0; i < 2; ++i) dib.u8(colour).u8(colour >> 8).u8(colour >> 16);
    dib.u16(0);
  }
  return dib.take();
}

inline Bytes bmp() {
  return ByteWriter().text8("BM").u32(14 + 56).u32(0).u32(54).bytes(dib()).take();
}

/// Two by two grey pixels.
inline Bytes tiff() {
  ByteWriter tiff;
  tiff.text8("II*").u8(0).u32(12).u8(0).u8(255).u8(255).u8(0).u16(8);
  const auto entry = [&tiff](uint32_t tag, uint32_t type, uint32_t value) {
    tiff.u16(tag).u16(type).u32(1).u32(value);
  };
  entry(256, 3, 2);
  entry(257, 3, 2);
  entry(258, 3, 8);
  entry(259, 3, 1);
  entry(262, 3, 1);
  entry(273, 4, 8);
  entry(278, 3, 2);
  entry(279, 4, 4);
  return tiff.u32(0).take();
}

inline Bytes smallPng() {
  return png(2, 2, [](double, double) { return Colour{255, 0, 0, 255}; });
}

inline Bytes smallJpeg() {
  return jpeg(1, 1, [](double, double) { return Colour{255, 0, 0, 255}; });
}

/// One pixel.
inline Bytes gif() {
  return ByteWriter()
      .text8("GIF89a")
      .u16(1)
      .u16(1)
      .u8(0x80)
      .u16(0)
      .bytes({255, 0, 0, 255, 255, 255})
      .u8(0x2C)
      .zeros(4)
      .u16(1)
      .u16(1)
      .u8(0)
      .bytes({2, 2, 0x44, 1, 0, 0x3B})
      .take();
}

}  // namespace support

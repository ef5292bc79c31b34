#pragma once

#include <string_view>

#include "support/bytes.h"
#include "support/picture_writer.h"

/// Pictures of few bytes, one of each kind, that are sound.
namespace support {

/// An enhanced metafile of 100 by 50 pixels of an inch's ninety-sixth, with this between its header and its
/// end.
inline Bytes emfOf(const Bytes& records, uint32_t count) {
  constexpr uint32_t kHeader = 1, kEnd = 14, kHeaderSize = 88, kEndSize = 20;
  const auto size = static_cast<uint32_t>(kHeaderSize + records.size() + kEndSize);
  ByteWriter emf;
  emf.u32(kHeader).u32(kHeaderSize);
  for (const uint32_t bound : {0, 0, 99, 49}) emf.u32(bound);
  for (const uint32_t frame : {0, 0, 2646, 1323}) emf.u32(frame);
  emf.text8(" EMF").u32(0x10000).u32(size).u32(count + 2).u16(3).u16(0).zeros(12);
  emf.u32(1920).u32(1080).u32(508).u32(286).bytes(records);
  return emf.u32(kEnd).u32(kEndSize).u32(0).u32(0).u32(kEndSize).take();
}

/// A brush, by its number, and its choice.
inline Bytes emfBrush(uint32_t number, uint32_t colour) {
  constexpr uint32_t kSelect = 37, kBrush = 39;
  return ByteWriter()
      .u32(kBrush)
      .u32(24)
      .u32(number)
      .u32(0)
      .u32(colour)
      .u32(0)
      .u32(kSelect)
      .u32(12)
      .u32(number)
      .take();
}

inline Bytes emfBox(uint32_t left, uint32_t top, uint32_t right, uint32_t bottom) {
  constexpr uint32_t kRectangle = 43;
  return ByteWriter().u32(kRectangle).u32(24).u32(left).u32(top).u32(right).u32(bottom).take();
}

/// Red boxes, one over the other.
inline Bytes smallEmf(uint32_t boxes = 1) {
  ByteWriter records;
  records.bytes(emfBrush(1, 0x0000FF));
  for (uint32_t i = 0; i < boxes; ++i) records.bytes(emfBox(10 + i % 7, 10 + i % 7, 90 + i % 7, 40 + i % 7));
  return emfOf(records.take(), 2 + boxes);
}

/// Red on the left half, blue on the right one.
inline Bytes emfOfHalves() {
  return emfOf(ByteWriter()
                   .bytes(emfBrush(1, 0x0000FF))
                   .bytes(emfBox(0, 0, 50, 50))
                   .bytes(emfBrush(2, 0xFF0000))
                   .bytes(emfBox(50, 0, 100, 50))
                   .take(),
               6);
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

// Bitmaps of each depth and compression, and pictures of the kinds that have one record or a few.

#include "seed_pictures.h"

namespace fuzz {

using support::Bytes;
using support::ByteWriter;

namespace {

/// Eight pixels square.
Bytes dib(uint32_t depth, uint32_t compression, uint32_t colours, const Bytes& bits, uint32_t headerSize = 40,
          uint32_t height = 8) {
  ByteWriter out;
  out.u32(headerSize)
      .u32(8)
      .u32(height)
      .u16(1)
      .u16(depth)
      .u32(compression)
      .u32(static_cast<uint32_t>(bits.size()));
  out.u32(2835).u32(2835).u32(colours).u32(0);
  if (headerSize > 40) out.u32(0xFF0000).u32(0xFF00).u32(0xFF).u32(0xFF000000).zeros(headerSize - 56);
  if (compression == 3 && headerSize == 40) out.u32(0xF800).u32(0x7E0).u32(0x1F);
  for (uint32_t i = 0; i < colours; ++i) out.u32(i * 0x123456 & 0xFFFFFF);
  return out.bytes(bits).take();
}

Bytes pattern(size_t size) {
  Bytes bytes(size);
  for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<uint8_t>(i * 37);
  return bytes;
}

Bytes coreDib() {
  return ByteWriter()
      .u32(12)
      .u16(8)
      .u16(8)
      .u16(1)
      .u16(1)
      .bytes({0, 0, 0, 255, 128, 0})
      .bytes(pattern(32))
      .take();
}

struct TiffField {
  uint16_t tag, type;
  uint32_t count, value;
};

/// Of one strip of bytes, behind the fields.
Bytes tiff(std::vector<TiffField> fields, const Bytes& strip, const Bytes& more = {}) {
  const auto places = static_cast<uint32_t>(10 + 12 * (fields.size() + 2) + 4);
  fields.push_back({273, 4, 1, static_cast<uint32_t>(places + more.size())});
  fields.push_back({279, 4, 1, static_cast<uint32_t>(strip.size())});
  ByteWriter out;
  out.text8("II").u16(42).u32(8).u16(static_cast<uint32_t>(fields.size()));
  for (const TiffField& field : fields) {
    const uint32_t value = field.value == UINT32_MAX ? places : field.value;
    out.u16(field.tag).u16(field.type).u32(field.count).u32(value);
  }
  return out.u32(0).bytes(more).bytes(strip).take();
}

std::vector<TiffField> tiffFields(uint32_t bits, uint32_t compression, uint32_t photometric,
                                  uint32_t samples = 1) {
  return {{256, 3, 1, 8},           {257, 3, 1, 8},       {258, 3, 1, bits}, {259, 3, 1, compression},
          {262, 3, 1, photometric}, {277, 3, 1, samples}, {278, 3, 1, 8},    {284, 3, 1, 1}};
}

/// Version 2, with these opcodes between the frame and the end.
Bytes pict(const std::vector<Bytes>& codes) {
  ByteWriter out;
  out.zeros(512).u16(0).bytes({0, 0, 0, 0, 0, 192, 0, 192});
  out.bytes({0x00, 0x11, 0x02, 0xFF, 0x0C, 0x00, 0xFF, 0xFE, 0, 0, 0,   0x48, 0,
             0,    0,    0x48, 0,    0,    0,    0,    0,    0, 0, 192, 0,    192})
      .zeros(4);
  for (const Bytes& code : codes) out.bytes(code).align(2);
  return out.bytes({0x00, 0xFF}).take();
}

const Bytes kBox = {0, 20, 0, 20, 0, 90, 0, 120};

Bytes boxCode(uint8_t code, const Bytes& more = {}) {
  return ByteWriter().u8(0).u8(code).bytes(kBox).bytes(more).take();
}

}  // namespace

std::vector<SeedPicture> seedDibs() {
  return {
      {"Depth1", dib(1, 0, 2, pattern(32))},
      {"Depth4", dib(4, 0, 16, pattern(32))},
      {"Depth8", dib(8, 0, 256, pattern(64))},
      {"Depth16", dib(16, 0, 0, pattern(128))},
      {"Depth24", dib(24, 0, 0, pattern(192))},
      {"Depth32", dib(32, 0, 0, pattern(256))},
      {"TopDown", dib(24, 0, 0, pattern(192), 40, static_cast<uint32_t>(-8))},
      {"RunLength8", dib(8, 1, 16, {8, 1, 0, 0, 3, 2, 0, 3, 4, 5, 6, 0, 2, 7, 0, 0, 0, 2, 3, 1, 4, 9, 0, 1})},
      {"RunLength4", dib(4, 2, 16, {8, 0x12, 0, 0, 0, 4, 0x34, 0x56, 4, 0x77, 0, 2, 1, 1, 6, 0x9A, 0, 1})},
      {"Fields565", dib(16, 3, 0, pattern(128))},
      {"Version4", dib(32, 3, 0, pattern(256), 108)},
      {"Version5", dib(8, 0, 16, pattern(64), 124)},
      {"Core", coreDib()}};
}

std::vector<SeedPicture> seedTiffs() {
  std::vector<TiffField> palette = tiffFields(8, 1, 3);
  palette.push_back({320, 3, 768, UINT32_MAX});
  return {{"Gray", tiff(tiffFields(8, 1, 1), pattern(64))},
          {"Lines", tiff(tiffFields(1, 1, 0), pattern(8))},
          {"Colours", tiff(tiffFields(8, 1, 2, 3), pattern(192))},
          {"Palette", tiff(palette, pattern(64), pattern(1536))},
          {"PackBits", tiff(tiffFields(8, 32773, 1), {0xF9, 1, 7, 1, 2, 3, 4, 5, 6, 7, 8, 0xD1, 9})},
          {"Lzw", tiff(tiffFields(8, 5, 1), {0x80, 0x00, 0x40, 0x50, 0x28, 0x0C, 0x0E, 0x08, 0x08})},
          {"Deflated",
           tiff(tiffFields(8, 8, 1), {0x78, 0x9C, 0x63, 0x60, 0xA0, 0x3D, 0x00, 0x00, 0x40, 0x00, 0x01})},
          {"Fax3", tiff(tiffFields(1, 3, 0), {0x00, 0x1A, 0x9A, 0x80, 0x10, 0x01})},
          {"Fax4", tiff(tiffFields(1, 4, 0), {0x26, 0xA1, 0xFF, 0x80, 0x08, 0x00, 0x80})}};
}

std::vector<SeedPicture> seedPicts() {
  std::vector<Bytes> shapes;
  for (const uint8_t kind : {0x30, 0x40, 0x50}) {
    for (uint8_t verb = 0; verb < 5; ++verb) shapes.push_back(boxCode(static_cast<uint8_t>(kind + verb)));
  }
  const Bytes angles = {0, 45, 0, 90};
  for (uint8_t verb = 0; verb < 5; ++verb)
    shapes.push_back(boxCode(static_cast<uint8_t>(0x60 + verb), angles));
  return {{"Shapes", pict(shapes)},
          {"Lines", pict({{0, 0x07, 0, 3, 0, 3},
                          {0, 0x20, 0, 9, 0, 9, 0, 90, 0, 60},
                          {0, 0x21, 0, 90, 0, 9},
                          {0, 0x22, 0, 20, 0, 30, 10, 20},
                          {0, 0x23, 5, 10}})},
          {"State", pict({boxCode(0x01),
                          {0, 0x02, 1, 2, 3, 4, 5, 6, 7, 8},
                          {0, 0x09, 170, 85, 170, 85, 170, 85, 170, 85},
                          {0, 0x0B, 0, 20, 0, 20},
                          {0, 0x1A, 255, 255, 0, 0, 0, 0},
                          {0, 0x1B, 0, 0, 255, 255, 0, 0},
                          boxCode(0x41)})},
          {"Polygon", pict({ByteWriter()
                                .u8(0)
                                .u8(0x71)
                                .u8(0)
                                .u8(26)
                                .bytes(kBox)
                                .bytes({0, 0, 0, 0, 0, 90, 0, 90, 0, 90, 0, 9, 0, 9, 0, 9})
                                .take()})},
          {"Text", pict({{0, 0x03, 0, 22},
                         {0, 0x04, 1},
                         {0, 0x0D, 0, 20},
                         {0, 0x28, 0, 50, 0, 20, 4, 't', 'e', 'x', 't'},
                         {0, 0x29, 30, 2, 'a', 'b'},
                         {0, 0x2B, 10, 10, 2, 'c', 'd'}})},
          {"Bits", pict({ByteWriter()
                             .bytes({0, 0x90, 0, 2, 0, 0, 0, 0, 0, 8, 0, 8, 0, 0, 0, 0, 0, 8, 0, 8})
                             .bytes(kBox)
                             .bytes({0, 0})
                             .bytes(pattern(16))
                             .take()})},
          {"OldVersion",
           ByteWriter()
               .zeros(512)
               .u16(0)
               .bytes({0, 0, 0, 0, 0, 192, 0, 192, 0x11, 0x01, 0x01, 0, 10, 0, 0, 0, 0, 0, 192, 0, 192, 0x31})
               .bytes(kBox)
               .u8(0xFF)
               .take()},
          {"Deep", pict({ByteWriter()
                             .bytes({0, 0x9A, 0, 0, 0, 0,  0x80, 32, 0, 0,  0, 0, 0, 8,  0, 8,  0, 0, 0, 1,
                                     0, 0,    0, 0, 0, 72, 0,    0,  0, 72, 0, 0, 0, 16, 0, 32, 0, 3, 0, 8,
                                     0, 0,    0, 0, 0, 0,  0,    0,  0, 0,  0, 0, 0, 0,  0, 0,  0, 8, 0, 8})
                             .bytes(kBox)
                             .bytes({0, 0})
                             .bytes(pattern(256))
                             .take()})}};
}

}  // namespace fuzz

#include "seed_drawings.h"

#include <zlib.h>

#include <iterator>
#include <vector>

#include "support/drawing_writer.h"

namespace fuzz {

using namespace support;
using namespace support::drawing;

namespace {

enum ShapeType : uint16_t {
  kFreeform = 0,
  kRectangle = 1,
  kEllipse = 3,
  kLine = 20,
  kPicture = 75,
  kWordArt = 136,
  kTextBox = 202
};

Bytes words16(std::initializer_list<uint16_t> words) {
  ByteWriter bytes;
  for (const uint16_t word : words) bytes.u16(word);
  return bytes.take();
}

Bytes hyperlink() {
  return ByteWriter().zeros(16).u32(2).u32(0x08).u32(6).text16(u"place").u16(0).take();
}

Bytes deflated(const Bytes& raw) {
  Bytes packed(compressBound(raw.size()));
  uLongf size = packed.size();
  compress(packed.data(), &size, raw.data(), raw.size());
  packed.resize(size);
  return packed;
}

/// A palette of two colours, and one line of eight pixels.
Bytes bitmap() {
  return ByteWriter().u32(40).u32(8).u32(1).u16(1).u16(1).zeros(24).u32(0).u32(0xFFFFFF).u32(0x55).take();
}

Shape filled(uint32_t id) {
  return Shape(kRectangle, id)
      .props(Props()
                 .number(0x0180, 7)
                 .number(0x0181, 0x0000FF)
                 .number(0x0183, 0x00FF00)
                 .fixed(0x0182, 0.5)
                 .array(0x0197, 2, 8, ByteWriter().u32(255).u32(0).u32(0xFF00).u32(65536).take())
                 .flag(0x01BF, true)
                 .number(0x0201, 0x808080)
                 .flag(0x023F, true)
                 .fixed(0x0004, 30));
}

Shape lined(uint32_t id) {
  return Shape(kLine, id)
      .flip(true, false)
      .props(Props()
                 .number(0x01C0, 0xFF)
                 .number(0x01CB, 25400)
                 .number(0x01CE, 2)
                 .number(0x01D0, 1)
                 .number(0x01D1, 4)
                 .flag(0x01FF, true));
}

Shape freeform(uint32_t id) {
  return Shape(kFreeform, id)
      .props(Props()
                 .number(0x0142, 100)
                 .number(0x0143, 100)
                 .array(0x0145, 4, 4, words16({0, 0, 100, 0, 100, 100, 50, 50}))
                 .array(0x0146, 4, 2, words16({0x4000, 0x0002, 0x2001, 0x8000})));
}

Shape wordArt(uint32_t id) {
  return Shape(kWordArt, id)
      .props(Props()
                 .text(0x00C0, u"Art")
                 .text(0x00C5, u"Impact")
                 .fixed(0x00C3, 36)
                 .number(0x00C2, 1)
                 .flag(0x00FF, true));
}

Shape textBox(uint32_t id) {
  return Shape(kTextBox, id)
      .textBox(1)
      .props(Props()
                 .number(0x0080, 65536)
                 .number(0x0081, 91440)
                 .complex(0x0382, hyperlink())
                 .text(0x0380, u"name"));
}

/// Shadow in perspective, and extrusion with lights: every number of both groups.
Shape effects(uint32_t id) {
  Props props;
  props.number(0x0200, 2).flag(0x023E, true).flag(0x02BC, true).flag(0x02FD, false);
  for (uint16_t number = 0x0201; number <= 0x0211; ++number) props.fixed(number, number % 7 / 2.0);
  for (uint16_t number = 0x0280; number <= 0x0287; ++number) props.number(number, 1000u * number);
  for (uint16_t number = 0x02C0; number <= 0x02DA; ++number) props.fixed(number, number % 5 - 2.0);
  return Shape(kRectangle, id).props(props);
}

/// Pictures in all places that may have one: the text, a fill, a line.
Shape pictured(uint32_t id) {
  return Shape(kPicture, id)
      .props(Props()
                 .number(0x4104, 3)
                 .fixed(0x0100, 0.1)
                 .fixed(0x010A, 0.5)
                 .flag(0x013D, true)
                 .number(0x0180, 3)
                 .number(0x4186, 4)
                 .text(0x0187, u"fill")
                 .flag(0x01BB, true)
                 .number(0x41C5, 1)
                 .number(0x01C4, 2))
      .userProps(Props().flag(0x01BA, true));
}

Shape group(uint32_t id) {
  return Shape(kFreeform, id)
      .group({0, 0, 1000, 1000}, {Shape(kEllipse, id + 100).at({0, 0, 500, 500}),
                                  Shape(kPicture, id + 101)
                                      .props(Props().number(0x4104, 1).fixed(0x0100, 0.1))
                                      .at({500, 500, 1000, 1000})});
}

}  // namespace

DrawingInput seedDrawing(std::optional<uint32_t> only) {
  constexpr Shape (*kMakers[])(uint32_t) = {filled,  lined, freeform, wordArt,
                                            textBox, group, effects,  pictured};
  static_assert(std::size(kMakers) == kShapeCount);
  WordDocument doc;
  Drawing drawing;
  for (uint32_t i = 0; i < kShapeCount; ++i) {
    if (!only || *only == i) drawing.shape(kMakers[i](kFirstShapeId + i));
  }
  drawing.blip({.data = Bytes(40, 7)});
  drawing.blip({.type = 2, .data = Bytes(30, 1), .uid = 0x22, .rawSize = 30});
  drawing.blip({.type = 3, .data = deflated(Bytes(500, 7)), .uid = 0x23, .rawSize = 500, .compression = 0});
  drawing.blip({.type = 7, .data = bitmap(), .uid = 0x24});

  DrawingInput input;
  input.table = drawing.table(doc);
  const Inline picture = {.shape = Shape(kPicture).props(Props().number(0x4104, 1)),
                          .blips = {{.uid = 0x33}}};
  input.data = picture.bytes();
  input.data.resize(200);
  const Bytes metafile = Inline{.blips = {{.type = 3, .uid = 0x44, .rawSize = 9}}, .mm = 102}.bytes();
  input.data.insert(input.data.end(), metafile.begin(), metafile.end());
  return input;
}

}  // namespace fuzz

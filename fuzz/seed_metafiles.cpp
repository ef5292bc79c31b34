// Windows metafiles and enhanced ones, with a record of every kind. Where the values of parameters matter
// little they are what the pictures that are made everywhere have.

#include <initializer_list>

#include "seed_pictures.h"

namespace fuzz {

using support::Bytes;
using support::ByteWriter;

namespace {

constexpr uint32_t kCopy = 0x00CC0020;

Bytes joined(const std::vector<Bytes>& parts) {
  ByteWriter out;
  for (const Bytes& part : parts) out.bytes(part);
  return out.take();
}

const Bytes& bitmap() {
  static const Bytes kBitmap = seedDibs()[4].bytes;
  return kBitmap;
}
constexpr uint32_t kBitmapHead = 40;

// Windows metafiles

using Words = std::initializer_list<int>;

Bytes wmfRecord(uint32_t function, Words words, const Bytes& tail = {}) {
  ByteWriter out;
  out.u32(static_cast<uint32_t>(3 + words.size() + (tail.size() + 1) / 2)).u16(function);
  for (const int word : words) out.u16(static_cast<uint32_t>(word));
  return out.bytes(tail).align(2).take();
}

Bytes dwordThen(uint32_t value, Words words, const Bytes& tail = {}) {
  ByteWriter out;
  out.u32(value);
  for (const int word : words) out.u16(static_cast<uint32_t>(word));
  return out.bytes(tail).take();
}

Bytes wmf(const std::vector<Bytes>& records) {
  const Bytes body = joined(records);
  return ByteWriter()
      .u16(1)
      .u16(9)
      .u16(0x300)
      .u32(static_cast<uint32_t>(9 + 3 + body.size() / 2))
      .u16(16)
      .u32(200)
      .u16(0)
      .bytes(body)
      .u32(3)
      .u16(0)
      .take();
}

Bytes placeable(const Bytes& bare) {
  ByteWriter out;
  out.u32(0x9AC6CDD7).u16(0).u16(0).u16(0).u16(192).u16(192).u16(96).u32(0).u16(0x5711 ^ 96);
  return out.bytes(bare).take();
}

std::vector<Bytes> begun(std::vector<Bytes> records) {
  std::vector<Bytes> all = {wmfRecord(0x103, {8}),
                            wmfRecord(0x20B, {0, 0}),
                            wmfRecord(0x20C, {192, 192}),
                            wmfRecord(0x2FA, {0, 3, 0, 0xFF, 0}),
                            wmfRecord(0x2FC, {0, -1, 0, 0}),
                            wmfRecord(0x12D, {0}),
                            wmfRecord(0x12D, {1})};
  all.insert(all.end(), records.begin(), records.end());
  return all;
}

std::vector<Bytes> wmfShapes() {
  return {wmfRecord(0x214, {20, 20}),
          wmfRecord(0x213, {90, 120}),
          wmfRecord(0x325, {3, 10, 10, 90, 10, 90, 90}),
          wmfRecord(0x324, {3, 10, 10, 90, 10, 90, 90}),
          wmfRecord(0x538, {2, 3, 3, 0, 0, 9, 0, 9, 9, 20, 20, 90, 20, 90, 90}),
          wmfRecord(0x41B, {90, 90, 20, 20}),
          wmfRecord(0x418, {90, 90, 20, 20}),
          wmfRecord(0x61C, {20, 20, 90, 90, 20, 20}),
          wmfRecord(0x817, {20, 90, 90, 20, 90, 90, 20, 20}),
          wmfRecord(0x81A, {20, 90, 90, 20, 90, 90, 20, 20}),
          wmfRecord(0x830, {20, 90, 90, 20, 90, 90, 20, 20}),
          wmfRecord(0x41F, {0xFF, 0, 30, 30}),
          wmfRecord(0x419, {0xFF, 0, 30, 30}),
          wmfRecord(0x548, {1, 0xFF, 0, 30, 30})};
}

std::vector<Bytes> wmfState() {
  std::vector<Bytes> all = {wmfRecord(0x1E, {}),
                            wmfRecord(0x102, {2}),
                            wmfRecord(0x104, {7}),
                            wmfRecord(0x106, {2}),
                            wmfRecord(0x107, {3}),
                            wmfRecord(0x201, {0xFFFF, 0}),
                            wmfRecord(0x20D, {5, 5}),
                            wmfRecord(0x20E, {192, 192}),
                            wmfRecord(0x20F, {-5, 5}),
                            wmfRecord(0x211, {5, -5}),
                            wmfRecord(0x410, {2, 1, 2, 1}),
                            wmfRecord(0x412, {1, 2, 1, 2}),
                            wmfRecord(0x231, {1, 0}),
                            wmfRecord(0x149, {0, 0}),
                            wmfRecord(0x626, {15, 4, 1, 2}),
                            wmfRecord(0x220, {3, 3}),
                            wmfRecord(0x415, {60, 60, 40, 40}),
                            wmfRecord(0x416, {150, 150, 10, 10}),
                            wmfRecord(0x6FF, {0, 6, 0, 0, 42, 1, 2, 20, 20, 90, 90, 2, 20, 90, 20, 90, 2}),
                            wmfRecord(0x12C, {2}),
                            wmfRecord(0x228, {2, 1}),
                            wmfRecord(0x429, {2, 1, 3, 3}),
                            wmfRecord(0x12A, {2}),
                            wmfRecord(0x12B, {2}),
                            wmfRecord(0xF7, {0x300, 2, 0xFF, 0, 0, 0xFF}),
                            wmfRecord(0x234, {3}),
                            wmfRecord(0x35, {}),
                            wmfRecord(0x37, {0, 1, 0xFF00, 0}),
                            wmfRecord(0x436, {0, 1, 0xFF00, 0}),
                            wmfRecord(0x139, {4})};
  for (const Bytes& shape : wmfShapes()) all.push_back(shape);
  all.push_back(wmfRecord(0x127, {-1}));
  all.push_back(wmfRecord(0x1F0, {1}));
  return all;
}

std::vector<Bytes> wmfTexts() {
  const Bytes font = ByteWriter().bytes({1, 0, 1, 204, 0, 0, 0, 0}).text8("Arial").u8(0).take();
  const Bytes text = {'t', 'e', 'x', 't'};
  return {wmfRecord(0x2FB, {-40, 0, 300, 300, 700}, font),
          wmfRecord(0x12D, {2}),
          wmfRecord(0x209, {0xFF, 0}),
          wmfRecord(0x12E, {24}),
          wmfRecord(0x108, {2}),
          wmfRecord(0x20A, {1, 5}),
          wmfRecord(0x521, {4}, ByteWriter().bytes(text).u16(50).u16(20).take()),
          wmfRecord(0xA32, {90, 20, 4, 6, 10, 10, 150, 150},
                    ByteWriter().bytes(text).u16(20).u16(20).u16(20).u16(20).take())};
}

std::vector<Bytes> wmfBitmaps() {
  const Bytes old = ByteWriter().u16(0).u16(8).u16(8).u16(2).u8(1).u8(1).bytes(Bytes(16, 0xA5)).take();
  return {wmfRecord(0x61D, {}, dwordThen(0x005A0049, {90, 90, 10, 10})),
          wmfRecord(0x922, {}, dwordThen(kCopy, {0, 0, 8, 8, 20, 20}, old)),
          wmfRecord(0xB23, {}, dwordThen(kCopy, {8, 8, 0, 0, 80, 80, 20, 20}, old)),
          wmfRecord(0x940, {}, dwordThen(kCopy, {0, 0, 8, 8, 20, 20}, bitmap())),
          wmfRecord(0xB41, {}, dwordThen(0x008800C6, {8, 8, 0, 0, 80, 80, 20, 20}, bitmap())),
          wmfRecord(0xF43, {}, dwordThen(kCopy, {0, 8, 8, 0, 0, 80, 80, 20, 20}, bitmap())),
          wmfRecord(0xD33, {0, 8, 0, 0, 0, 8, 8, 20, 20}, bitmap()),
          wmfRecord(0x142, {5, 0}, bitmap()),
          wmfRecord(0x1F9, {0, 8, 8, 2, 0x101}, ByteWriter().zeros(22).bytes(Bytes(16, 0x5A)).take()),
          wmfRecord(0x12D, {2}),
          wmfRecord(0x41B, {90, 90, 20, 20}),
          wmfRecord(0x12D, {3}),
          wmfRecord(0x41B, {190, 190, 90, 90})};
}

// Enhanced metafiles

Bytes emfRecord(uint32_t type, const Bytes& body) {
  ByteWriter out;
  const auto size = static_cast<uint32_t>(8 + (body.size() + 3) / 4 * 4);
  return out.u32(type).u32(size).bytes(body).align(4).take();
}

Bytes dwords(std::initializer_list<int64_t> values) {
  ByteWriter out;
  for (const int64_t value : values) out.u32(static_cast<uint32_t>(value));
  return out.take();
}

Bytes words(std::initializer_list<int> values) {
  ByteWriter out;
  for (const int value : values) out.u16(static_cast<uint32_t>(value));
  return out.take();
}

Bytes bounded(std::initializer_list<int64_t> values, const Bytes& tail = {}) {
  return joined({dwords({0, 0, 191, 191}), dwords(values), tail});
}

Bytes emf(uint32_t type, std::initializer_list<int64_t> values, const Bytes& tail = {}) {
  return emfRecord(type, joined({dwords(values), tail}));
}

constexpr int64_t kOne = 0x3F800000;  // 1.0
const Bytes& identity() {
  static const Bytes kIdentity = dwords({kOne, 0, 0, kOne, 0, 0});
  return kIdentity;
}

std::vector<Bytes> emfLines() {
  const Bytes four = dwords({20, 90, 20, 20, 90, 20, 90, 90}),
              shortFour = words({20, 90, 20, 20, 90, 20, 90, 90});
  std::vector<Bytes> all;
  for (const uint32_t type : {2, 3, 4, 5, 6}) all.push_back(emfRecord(type, bounded({4}, four)));
  for (const uint32_t type : {85, 86, 87, 88, 89}) all.push_back(emfRecord(type, bounded({4}, shortFour)));
  for (const uint32_t type : {7, 8}) all.push_back(emfRecord(type, bounded({2, 4, 2, 2}, four)));
  for (const uint32_t type : {90, 91}) all.push_back(emfRecord(type, bounded({2, 4, 2, 2}, shortFour)));
  all.push_back(emfRecord(56, bounded({4}, joined({four, {6, 2, 2, 3}}))));
  all.push_back(emfRecord(92, bounded({4}, joined({shortFour, {6, 4, 4, 5}}))));
  for (const Bytes& each :
       {emf(15, {30, 30, 0xFF}), emf(27, {20, 20}), emf(54, {90, 30}), emf(41, {90, 90, 40, 0, 0x42B40000}),
        emf(42, {20, 20, 90, 90}), emf(43, {20, 20, 90, 90}), emf(44, {20, 20, 90, 90, 20, 20}), emf(57, {2}),
        emf(45, {20, 20, 90, 90, 90, 50, 50, 20}), emf(46, {20, 20, 90, 90, 90, 50, 50, 20}),
        emf(47, {20, 20, 90, 90, 90, 50, 50, 20}), emf(55, {20, 20, 90, 90, 90, 50, 50, 20}),
        emf(53, {50, 50, 0xFF, 1})})
    all.push_back(each);
  return all;
}

std::vector<Bytes> emfPaths() {
  std::vector<Bytes> all = {emf(59, {})};
  for (const Bytes& line : emfLines()) all.push_back(line);
  for (const Bytes& each : {emf(61, {}), emf(60, {}), emf(65, {}), emf(66, {}), emfRecord(63, bounded({})),
                            emf(59, {}), emf(43, {20, 20, 90, 90}), emf(60, {}), emf(67, {1}),
                            emfRecord(62, bounded({})), emfRecord(64, bounded({})), emf(68, {})})
    all.push_back(each);
  return all;
}

std::vector<Bytes> emfObjects() {
  const auto bits = static_cast<int64_t>(bitmap().size() - kBitmapHead);
  std::vector<Bytes> all = {emf(38, {1, 1, 1, 0, 0xFF}),
                            emf(37, {1}),
                            emf(39, {2, 2, 0xFF00, 4}),
                            emf(37, {2}),
                            emf(18, {2}),
                            emf(25, {0xFFFF}),
                            emf(13, {3, 3}),
                            emf(94, {3, 0, 32, kBitmapHead, 32 + kBitmapHead, bits}, bitmap()),
                            emf(37, {3}),
                            emf(43, {9, 9, 90, 90}),
                            emf(93, {4, 0, 32, kBitmapHead, 32 + kBitmapHead, bits}, bitmap()),
                            emf(37, {4}),
                            emf(42, {90, 90, 190, 190}),
                            emf(95, {5, 0, 0, 0, 0, 0x10207, 9, 0, 0xFF0000, 0, 2, 20, 10}),
                            emf(37, {5}),
                            emf(58, {2}),
                            emf(54, {100, 100}),
                            emf(49, {6}, joined({words({0x300, 2}), dwords({0xFF, 0xFF00})})),
                            emf(48, {6}),
                            emf(50, {6, 0, 1, 0xFF0000}),
                            emf(51, {6, 4}),
                            emf(52, {}),
                            emf(40, {1}),
                            emf(37, {0x80000004}),
                            emf(20, {7}),
                            emf(43, {20, 20, 60, 60})};
  return all;
}

std::vector<Bytes> emfState() {
  const Bytes region = dwords({32, 1, 2, 32, 20, 20, 150, 150, 20, 20, 60, 60, 90, 90, 150, 150});
  return {emf(33, {}),
          emf(17, {8}),
          emf(9, {192, 192}),
          emf(11, {192, 192}),
          emf(10, {-5, 5}),
          emf(12, {5, 5}),
          emf(19, {2}),
          emf(21, {3}),
          emf(31, {1, 2, 1, 2}),
          emf(32, {1, 2, 1, 2}),
          emfRecord(35, identity()),
          emfRecord(36, joined({identity(), dwords({2})})),
          emf(26, {3, 3}),
          emf(29, {40, 40, 60, 60}),
          emf(30, {10, 10, 150, 150}),
          emf(75, {64, 2}, region),
          emf(28, {}),
          emfRecord(71, bounded({64, 0x80000001}, region)),
          emfRecord(72, bounded({64, 0x80000001, 3, 3}, region)),
          emfRecord(73, bounded({64}, region)),
          emfRecord(74, bounded({64}, region)),
          emf(16, {1}),
          emf(98, {1}),
          emf(115, {0}),
          emf(34, {-1}),
          emf(70, {4, 0x12345678}),
          emf(105, {1, 4, 0}),
          emf(43, {20, 20, 60, 60})};
}

std::vector<Bytes> emfTexts() {
  const Bytes font =
      ByteWriter().u8(1).u8(1).u8(1).u8(204).zeros(4).text16(u"Arial").zeros(64 - 10).zeros(228).take();
  const Bytes wide = ByteWriter().text16(u"text").take(), narrow = ByteWriter().text8("text").take();
  const Bytes dx = dwords({20, 20, 20, 20});
  const auto text = [&](uint32_t type, const Bytes& string, int64_t before, const Bytes& count) {
    return emfRecord(type, joined({bounded({1, kOne, kOne}), count,
                                   dwords({20, 60, 4, before, 6, 10, 10, 150, 150,
                                           before + static_cast<int64_t>(string.size())}),
                                   string, dx}));
  };
  return {emf(82, {1, -40, 0, 300, 300, 700}, font),
          emf(37, {1}),
          emf(24, {0xFF}),
          emf(22, {24}),
          emf(120, {5, 1}),
          text(84, wide, 76, {}),
          text(83, narrow, 76, {}),
          text(97, wide, 80, dwords({1})),
          text(96, narrow, 80, dwords({1})),
          emf(108, {20, 90, 4, 0x100, 1, kOne, kOne}, wide),
          emf(108, {20, 90, 4, 0x200, 1, kOne, kOne, 0, 0, 90, 90}, narrow)};
}

/// Header and bits behind `before` bytes.
Bytes placesOf(int64_t before) {
  return dwords(
      {before, kBitmapHead, before + kBitmapHead, static_cast<int64_t>(bitmap().size() - kBitmapHead)});
}

std::vector<Bytes> emfBitmaps() {
  const Bytes ground = dwords({0xFFFFFF, 0});
  const auto blt = [&](uint32_t type, int64_t operation, bool isStretched) {
    return emfRecord(
        type, joined({bounded({20, 20, 80, 80, operation, 0, 0}), identity(), ground,
                      placesOf(isStretched ? 108 : 100), isStretched ? dwords({8, 8}) : Bytes{}, bitmap()}));
  };
  const auto both = static_cast<int64_t>(bitmap().size());
  return {
      blt(76, kCopy, false),
      blt(77, 0x00660046, true),
      blt(114, 0x01800000, true),
      blt(116, 0x0000FF, true),
      emfRecord(
          76, joined({bounded({20, 20, 80, 80, 0x00550009, 0, 0}), identity(), dwords({0, 0, 0, 0, 0, 0})})),
      emfRecord(78, joined({bounded({20, 20, 8, 8, 0xAACC0020, 0, 0}), identity(), ground, placesOf(128),
                            dwords({0, 0, 0}), placesOf(128 + both), bitmap(), bitmap()})),
      emfRecord(79, joined({bounded({20, 20, 90, 30, 30, 90, 0, 0, 8, 8}), identity(), ground, placesOf(140),
                            dwords({0, 0, 0}), placesOf(140 + both), bitmap(), bitmap()})),
      emfRecord(80, joined({bounded({20, 20, 0, 0, 8, 8}), placesOf(76), dwords({0, 0, 8}), bitmap()})),
      emfRecord(81,
                joined({bounded({20, 20, 0, 0, 8, 8}), placesOf(80), dwords({0, kCopy, 80, 80}), bitmap()})),
      emfRecord(118,
                bounded({3, 1, 2, 20, 20, 0xFF00, 0, 90, 20, 0xFF000000, 0, 20, 90, 0, 0xFF00, 0, 1, 2})),
      emfRecord(118, bounded({2, 1, 0, 20, 20, 0xFF00, 0, 90, 90, 0xFF000000, 0, 0, 1, 0}))};
}

}  // namespace

Bytes emfWith(const std::vector<Bytes>& records) {
  const Bytes body = joined(records);
  ByteWriter out;
  out.bytes(dwords({1, 108, 0, 0, 191, 191, 0, 0, 5080, 5080, 0x464D4520, 0x10000}));
  out.u32(static_cast<uint32_t>(128 + body.size()))
      .u32(static_cast<uint32_t>(records.size() + 2))
      .u16(16)
      .u16(0);
  out.bytes(dwords({0, 0, 0, 1920, 1920, 508, 508, 0, 0, 0, 508000, 508000}));
  return out.bytes(body).bytes(emf(14, {0, 0, 20})).take();
}

Bytes emfPlusComment(const Bytes& records) {
  return emf(70, {static_cast<int64_t>(records.size() + 4), 0x2B464D45}, records);
}

std::vector<SeedPicture> seedWmfs() {
  return {{"Shapes", placeable(wmf(begun(wmfShapes())))},
          {"State", placeable(wmf(begun(wmfState())))},
          {"Texts", placeable(wmf(begun(wmfTexts())))},
          {"Bitmaps", placeable(wmf(begun(wmfBitmaps())))},
          {"Bare", wmf(begun(wmfShapes()))},
          {"Nothing", placeable(wmf({}))}};
}

std::vector<SeedPicture> seedEmfs() {
  std::vector<SeedPicture> all = {{"Lines", emfWith(emfLines())},     {"Paths", emfWith(emfPaths())},
                                  {"Objects", emfWith(emfObjects())}, {"State", emfWith(emfState())},
                                  {"Texts", emfWith(emfTexts())},     {"Bitmaps", emfWith(emfBitmaps())}};
  for (const SeedPicture& plus : seedEmfPluses())
    all.push_back({"Plus" + plus.name, emfWith({emfPlusComment(plus.bytes)})});
  return all;
}

}  // namespace fuzz

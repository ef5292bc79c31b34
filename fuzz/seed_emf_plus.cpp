// Records of EMF+, of every kind, and objects of every kind.

#include <bit>
#include <initializer_list>

#include "seed_pictures.h"

namespace fuzz {

using support::Bytes;
using support::ByteWriter;

namespace {

constexpr uint32_t kVersion = 0xDBC01002;

/// Whole numbers stand for themselves, others for floats.
struct Value {
  Value(int value) : bits(static_cast<uint32_t>(value)) {}
  Value(uint32_t value) : bits(value) {}
  Value(double value) : bits(std::bit_cast<uint32_t>(static_cast<float>(value))) {}
  uint32_t bits;
};
using Values = std::initializer_list<Value>;

Bytes packed(Values values, const Bytes& tail = {}) {
  ByteWriter out;
  for (const Value value : values) out.u32(value.bits);
  return out.bytes(tail).align(4).take();
}

Bytes record(uint32_t type, uint32_t flags, const Bytes& data) {
  const auto size = static_cast<uint32_t>(data.size());
  return ByteWriter().u16(type).u16(flags).u32(size + 12).u32(size).bytes(data).take();
}

Bytes record(uint32_t type, uint32_t flags, Values values) {
  return record(type, flags, packed(values));
}

Bytes object(uint32_t kind, uint32_t number, const Bytes& data) {
  return record(0x4008, kind << 8 | number, data);
}

Bytes all(const std::vector<Bytes>& records) {
  ByteWriter out;
  out.bytes(record(0x4001, 0, {kVersion, 0, 96, 96}));
  for (const Bytes& each : records) out.bytes(each);
  return out.bytes(record(0x4002, 0, Bytes{})).take();
}

constexpr uint32_t kRed = 0xFFFF0000, kBlue = 0x800000FF;
const Values kBox = {20.0, 20.0, 90.0, 60.0};

Bytes solid() {
  return packed({kVersion, 0, kRed});
}

Bytes pathData() {
  return packed({kVersion, 4, 0, 20.0, 90.0, 20.0, 20.0, 90.0, 20.0, 90.0, 90.0}, {0, 3, 3, 0x83});
}

Bytes image() {
  return packed({kVersion, 1, 2, 2, 8, 0x26200A, 0, kRed, kBlue, 0xFF00FF00U, 0x40000000});
}

std::vector<Bytes> pens() {
  return {object(2, 0, packed({kVersion, 0, 0, 0, 4.0}, solid())),
          object(2, 1,
                 packed({kVersion, 0, 0x1FFE, 0,   4.0, 2,  0x14,     2, 5.0, 5,  2,        1.0, 2, 3.0,
                         1.0,      1, 2,      0.0, 1.0, 12, kVersion, 1, 0,   12, kVersion, 1,   0},
                        solid())),
          object(9, 2, packed({kVersion, 1, 3.0, 3.0, 0.0, 1, 0, 0, 0, 10.0, 1.0, 0.0, 0.0, 0.0, 0.0}))};
}

std::vector<Bytes> shapes() {
  std::vector<Bytes> list = pens();
  const Values four = {4, 20.0, 90.0, 20.0, 20.0, 90.0, 20.0, 90.0, 90.0};
  for (const Bytes& each : {record(0x4009, 0, {kBlue}),
                            record(0x400A, 0x8000, {kRed, 1, 20.0, 20.0, 90.0, 60.0}),
                            record(0x400B, 0, {1, 20.0, 20.0, 90.0, 60.0}),
                            record(0x400C, 0x8000, {kRed, 3, 20.0, 20.0, 90.0, 20.0, 20.0, 90.0}),
                            record(0x400D, 1, four),
                            record(0x400D, 0x4000, {2, 0x00140014, 0x005A005A}),
                            record(0x400D, 0x0800, {2, 0x0A0A1414}),
                            record(0x400E, 0x8000, {kRed, 20.0, 20.0, 90.0, 60.0}),
                            record(0x400F, 0, kBox),
                            record(0x4010, 0x8000, {kRed, 0.0, 90.0, 20.0, 20.0, 90.0, 60.0}),
                            record(0x4011, 0, {0.0, 90.0, 20.0, 20.0, 90.0, 60.0}),
                            record(0x4012, 0, {0.0, 90.0, 20.0, 20.0, 90.0, 60.0}),
                            object(3, 2, pathData()),
                            record(0x4014, 0x8002, {kRed}),
                            record(0x4015, 2, {0}),
                            record(0x4016, 0x8000, {kRed, 0.5, 3, 20.0, 20.0, 90.0, 20.0, 20.0, 90.0}),
                            record(0x4017, 0, {0.5, 3, 20.0, 20.0, 90.0, 20.0, 20.0, 90.0}),
                            record(0x4018, 0, {0.5, 0, 2, 3, 20.0, 20.0, 90.0, 20.0, 20.0, 90.0}),
                            record(0x4019, 0, four),
                            record(0x4037, 2, {0, 0})})
    list.push_back(each);
  return list;
}

std::vector<Bytes> brushes() {
  std::vector<Bytes> list = {
      object(1, 0, solid()),
      object(1, 1, packed({kVersion, 1, 20, kRed, kBlue})),
      object(1, 2, packed({kVersion, 2, 2, 1, 2.0, 0.0, 0.0, 2.0, 0.0, 0.0}, image())),
      object(1, 3,
             packed({kVersion, 3, 0, 0, kRed, 50.0, 50.0, 1, kBlue, 3, 20.0, 20.0, 90.0, 20.0, 20.0, 90.0})),
      object(1, 4,
             packed({kVersion, 3, 0x4B, 0, kRed, 50.0, 50.0, 1, kBlue, static_cast<int>(pathData().size())},
                    packed({},
                           [] {
                             Bytes data = pathData();
                             const Bytes more =
                                 packed({1.0, 0.0, 0.0, 1.0, 0.0, 0.0, 2, 0.0, 1.0, 0.0, 1.0, 2, 0.5, 0.5});
                             data.insert(data.end(), more.begin(), more.end());
                             return data;
                           }()))),
      object(1, 5, packed({kVersion, 4,   0xE, 1,   20.0, 20.0, 60.0, 60.0, kRed, kBlue, 0,    0,
                           1.0,      0.0, 0.0, 1.0, 0.0,  0.0,  2,    0.0,  1.0,  kRed,  kBlue})),
      object(1, 6,
             packed({kVersion, 4, 8, 1, 20.0, 20.0, 60.0, 60.0, kRed, kBlue, 0, 0, 2, 0.0, 1.0, 0.0, 1.0}))};
  for (int brush = 0; brush < 7; ++brush)
    list.push_back(record(0x400A, 0, {brush, 1, 20.0, 20.0, 90.0, 60.0}));
  return list;
}

std::vector<Bytes> state() {
  const Values matrix = {1.0, 0.0, 0.0, 1.0, 5.0, 5.0};
  return {record(0x4025, 0, {0}),
          record(0x402A, 0, matrix),
          record(0x402C, 0x2000, matrix),
          record(0x402D, 0, {5.0, 5.0}),
          record(0x402E, 0, {2.0, 2.0}),
          record(0x402F, 0x2000, {45.0}),
          record(0x402B, 0, Bytes{}),
          record(0x4030, 3, {1.0}),
          record(0x4032, 0x100, kBox),
          object(3, 1, pathData()),
          record(0x4033, 0x201, Bytes{}),
          object(4, 2,
                 packed({kVersion, 2, 2, 0x10000000, 20.0, 20.0, 60.0, 60.0, 0x10000001,
                         static_cast<int>(pathData().size())},
                        pathData())),
          record(0x4034, 0x302, Bytes{}),
          record(0x4013, 0x8002, {kRed}),
          record(0x4035, 0, {5.0, 5.0}),
          record(0x4031, 0, Bytes{}),
          record(0x4027, 2, {0.0, 0.0, 90.0, 90.0, 0.0, 0.0, 45.0, 45.0, 1}),
          record(0x400A, 0x8000, {kRed, 1, 20.0, 20.0, 90.0, 60.0}),
          record(0x4029, 0, {1}),
          record(0x4028, 0, {2}),
          record(0x4029, 0, {2}),
          record(0x4026, 0, {0}),
          record(0x401D, 0, {1, 1}),
          record(0x401E, 11, Bytes{}),
          record(0x4023, 1, Bytes{}),
          record(0x4003, 0, {1}),
          record(0x4039, 0, Bytes(36, 0)),
          record(0x403A, 1, {0, 0}),
          record(0x4004, 0, Bytes{})};
}

std::vector<Bytes> imagesAndTexts() {
  const Bytes text = ByteWriter().text16(u"text").take();
  const Bytes font = packed({kVersion, 40.0, 0, 3, 0, 5}, ByteWriter().text16(u"Arial").take());
  return {object(5, 0, image()),
          object(8, 1, packed({kVersion, 0, 0, kRed, 0, 0})),
          record(0x401A, 0, {1, 2, 0.0, 0.0, 2.0, 2.0, 20.0, 20.0, 90.0, 60.0}),
          record(0x401B, 0, {1, 2, 0.0, 0.0, 2.0, 2.0, 3, 20.0, 20.0, 90.0, 30.0, 30.0, 90.0}),
          record(0x4008, 0x8502, packed({44}, image())),
          object(5, 3, packed({kVersion, 2, 3, 128}, emfWith({}))),
          record(0x401A, 3, {1, 2, 0.0, 0.0, 2.0, 2.0, 20.0, 20.0, 90.0, 60.0}),
          object(6, 4, font),
          object(7, 5, packed({kVersion, 0, 0, 1, 1, 0, 0, 0.0, 0.0, 0.0, 0.0, 0, 1.0, 0, 0, 0})),
          record(0x401C, 0x8004, packed({kRed, 5, 4, 20.0, 20.0, 120.0, 60.0}, text)),
          record(0x4036, 0x8004, packed({kRed, 1, 1, 4}, packed({}, [&] {
                                          Bytes data = text;
                                          const Bytes places =
                                              packed({20.0, 20.0, 40.0, 20.0, 60.0, 20.0, 80.0, 20.0, 1.0,
                                                      0.0, 0.0, 1.0, 0.0, 0.0});
                                          data.insert(data.end(), places.begin(), places.end());
                                          return data;
                                        }())))};
}

}  // namespace

std::vector<SeedPicture> seedEmfPluses() {
  return {{"Shapes", all(shapes())},
          {"Brushes", all(brushes())},
          {"State", all(state())},
          {"ImagesAndTexts", all(imagesAndTexts())}};
}

}  // namespace fuzz

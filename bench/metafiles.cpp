#include "metafiles.h"

#include <initializer_list>

namespace bench {

using support::Bytes;
using support::ByteWriter;

namespace {

constexpr uint32_t kSide = 1920;  // pixels of the picture

/// Places that look like those of a drawing: a step from the last one, now and then far away.
class Places {
 public:
  int x() { return Next(x_); }
  int y() { return Next(y_); }

 private:
  int Next(int& at) {
    seed_ = seed_ * 1103515245 + 12345;
    const auto step = static_cast<int>(seed_ >> 16 & 63) - 32;
    at = (at + (step == 0 ? 400 : step) + static_cast<int>(kSide)) % static_cast<int>(kSide);
    return at;
  }

  uint32_t seed_ = 1;
  int x_ = 900, y_ = 900;
};

void emfRecord(ByteWriter& out, uint32_t type, std::initializer_list<uint32_t> values) {
  out.u32(type).u32(static_cast<uint32_t>(8 + values.size() * 4));
  for (const uint32_t value : values) out.u32(value);
}

/// EMR_POLYLINE16 or EMR_POLYGON16.
void emfPoints(ByteWriter& out, uint32_t type, uint32_t count, Places& places) {
  out.u32(type).u32(28 + count * 4).u32(0).u32(0).u32(kSide).u32(kSide).u32(count);
  for (uint32_t i = 0; i < count; ++i) {
    out.u16(static_cast<uint32_t>(places.x()));
    out.u16(static_cast<uint32_t>(places.y()));
  }
}

void emfDrawing(ByteWriter& out, Lines lines, Places& places) {
  constexpr uint32_t kPolyline = 87, kPolygon = 86, kMoveTo = 27, kLineTo = 54;
  switch (lines) {
    case Lines::kPolylines:
      return emfPoints(out, kPolyline, 100, places);
    case Lines::kSteps: {
      emfRecord(out, kMoveTo, {static_cast<uint32_t>(places.x()), static_cast<uint32_t>(places.y())});
      for (int i = 0; i < 9; ++i)
        emfRecord(out, kLineTo, {static_cast<uint32_t>(places.x()), static_cast<uint32_t>(places.y())});
      return;
    }
    case Lines::kPolygons: {
      const auto rgb = static_cast<uint32_t>(places.x() * 4321) & 0xFFFFFF;
      emfRecord(out, 38, {1, 0, 1, 0, rgb});
      emfRecord(out, 39, {2, 0, rgb ^ 0xFFFFFF, 0});
      for (const uint32_t object : {1, 2}) emfRecord(out, 37, {object});
      emfPoints(out, kPolygon, 6, places);
      for (const uint32_t object : {0x80000007, 0x80000000}) emfRecord(out, 37, {object});
      for (const uint32_t object : {1, 2}) emfRecord(out, 40, {object});
    }
  }
}

void wmfRecord(ByteWriter& out, uint32_t function, std::initializer_list<int> words) {
  out.u32(static_cast<uint32_t>(3 + words.size())).u16(function);
  for (const int word : words) out.u16(static_cast<uint32_t>(word));
}

void wmfPoints(ByteWriter& out, uint32_t function, uint32_t count, Places& places) {
  out.u32(4 + count * 2).u16(function).u16(count);
  for (uint32_t i = 0; i < count; ++i) {
    out.u16(static_cast<uint32_t>(places.x()));
    out.u16(static_cast<uint32_t>(places.y()));
  }
}

void wmfDrawing(ByteWriter& out, Lines lines, Places& places) {
  constexpr uint32_t kPolyline = 0x325, kPolygon = 0x324, kMoveTo = 0x214, kLineTo = 0x213;
  switch (lines) {
    case Lines::kPolylines:
      return wmfPoints(out, kPolyline, 100, places);
    case Lines::kSteps:
      wmfRecord(out, kMoveTo, {places.y(), places.x()});
      for (int i = 0; i < 9; ++i) wmfRecord(out, kLineTo, {places.y(), places.x()});
      return;
    case Lines::kPolygons: {
      const int rgb = places.x() * 31;
      wmfRecord(out, 0x2FA, {0, 1, 0, rgb, 0});
      wmfRecord(out, 0x2FC, {0, rgb ^ 0xFFFF, 0, 0});
      for (const int object : {0, 1}) wmfRecord(out, 0x12D, {object});
      wmfPoints(out, kPolygon, 6, places);
      for (const int object : {0, 1}) wmfRecord(out, 0x1F0, {object});
    }
  }
}

}  // namespace

Bytes emfOf(Lines lines, size_t bytes) {
  ByteWriter body;
  Places places;
  uint32_t records = 2;
  for (; body.size() < bytes; ++records) emfDrawing(body, lines, places);
  ByteWriter out;
  out.u32(1).u32(108).u32(0).u32(0).u32(kSide - 1).u32(kSide - 1).u32(0).u32(0).u32(50800).u32(50800);
  out.u32(0x464D4520).u32(0x10000).u32(static_cast<uint32_t>(128 + body.size())).u32(records).u16(4).u16(0);
  for (const uint32_t value : {0U, 0U, 0U, kSide, kSide, 508U, 508U, 0U, 0U, 0U, 508000U, 508000U})
    out.u32(value);
  return out.bytes(body.take()).u32(14).u32(20).u32(0).u32(0).u32(20).take();
}

Bytes wmfOf(Lines lines, size_t bytes) {
  ByteWriter body;
  Places places;
  wmfRecord(body, 0x103, {8});
  wmfRecord(body, 0x20B, {0, 0});
  wmfRecord(body, 0x20C, {int{kSide}, int{kSide}});
  while (body.size() < bytes) wmfDrawing(body, lines, places);
  wmfRecord(body, 0, {});
  ByteWriter out;
  out.u32(0x9AC6CDD7).u16(0).u16(0).u16(0).u16(kSide).u16(kSide).u16(96).u32(0);
  out.u16(0x5711 ^ 96);
  out.u16(1).u16(9).u16(0x300).u32(static_cast<uint32_t>(9 + body.size() / 2)).u16(4).u32(204).u16(0);
  return out.bytes(body.take()).take();
}

}  // namespace bench

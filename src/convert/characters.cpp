#include "convert/characters.h"

namespace pagerex {

namespace {

struct TextStart {
  uint8_t bytes[3];
  uint8_t length;
  uint8_t markLength;
  bool wide;
  bool bigEndian;
};
constexpr TextStart kTextStarts[] = {
    {{0xEF, 0xBB, 0xBF}, 3, 3, false, false},
    {{0xFF, 0xFE}, 2, 2, true, false},
    {{0xFE, 0xFF}, 2, 2, true, true},
    {{'<', 0}, 2, 0, true, false},
    {{0, '<'}, 2, 0, true, true},
};

bool beginsWith(ByteView file, const TextStart& start) {
  for (size_t i = 0; i < start.length; ++i) {
    if (file.u8(i) != start.bytes[i]) return false;
  }
  return file.size() >= start.length;
}

}  // namespace

Characters::Characters(ByteView file) : text_(file) {
  for (const TextStart& start : kTextStarts) {
    if (!beginsWith(file, start)) continue;
    text_ = file.part(start.markLength);
    wide_ = start.wide;
    bigEndian_ = start.bigEndian;
    return;
  }
}

uint16_t Characters::at(size_t index) const {
  if (!wide_) return text_.u8(index);
  if (index >= size()) return 0;
  const uint8_t first = text_.u8(2 * index), second = text_.u8(2 * index + 1);
  return static_cast<uint16_t>(bigEndian_ ? first << 8 | second : second << 8 | first);
}

}  // namespace pagerex

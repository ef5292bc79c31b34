#pragma once

#include <cstdint>

#include "support/sprms.h"

/// Names for sprms that documents use often. Lengths are in twips.
namespace support {

inline Bytes bold(int on = 1) {
  return sprm(0x0835, on);
}
inline Bytes italic() {
  return sprm(0x0836, 1);
}
inline Bytes fontSize(int halfPoints) {
  return sprm(0x4A43, halfPoints);
}
inline Bytes colour(uint32_t value) {
  return sprm(0x6870, value);
}
inline Bytes highlight(int ico) {
  return sprm(0x2A0C, ico);
}
inline Bytes underline(int kind) {
  return sprm(0x2A3E, kind);
}
inline Bytes letterSpacing(int twips) {
  return sprm(0x8840, twips);
}
inline Bytes characterStyle(uint16_t istd) {
  return sprm(0x4A30, istd);
}

inline Bytes align(int jc) {
  return sprm(0x2461, jc);
}
inline Bytes leftIndent(int twips) {
  return sprm(0x845E, twips);
}
inline Bytes rightIndent(int twips) {
  return sprm(0x845D, twips);
}
inline Bytes firstLine(int twips) {
  return sprm(0x8460, twips);
}
inline Bytes spaceBefore(int twips) {
  return sprm(0xA413, twips);
}
inline Bytes spaceAfter(int twips) {
  return sprm(0xA414, twips);
}
inline Bytes outlineLevel(int level) {
  return sprm(0x2640, level);
}
/// Line spacing: in 240ths of a line if `multiple`, else in twips, negative for exactly.
inline Bytes lineSpacing(int16_t value, bool multiple) {
  return sprm(0x6412, static_cast<uint16_t>(value) | static_cast<uint32_t>(multiple) << 16);
}
inline Bytes listItem(uint16_t ilfo, int level) {
  return Sprms{sprm(0x260A, level), sprm(0x460B, ilfo)}.bytes();
}

}  // namespace support

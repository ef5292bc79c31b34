#include "support/sprms.h"

#include <algorithm>
#include <stdexcept>

namespace support {

namespace {

constexpr uint16_t kChangeTabs = 0xC615;
constexpr uint16_t kDefTable10 = 0xD606;
constexpr uint16_t kDefTable = 0xD608;

/// Bytes of the operand by the top three bits of the opcode; 0 stands for a length in front of it.
constexpr uint8_t kOperandBytes[] = {1, 1, 2, 4, 2, 2, 0, 3};

Bytes fixedSprm(uint16_t opcode, int64_t operand, size_t operandBytes) {
  ByteWriter out;
  out.u16(opcode);
  for (size_t i = 0; i < operandBytes; ++i) out.u8(static_cast<uint32_t>(operand >> (8 * i)));
  return out.take();
}

}  // namespace

Bytes sprm(uint16_t opcode, int64_t operand) {
  const uint8_t operandBytes = kOperandBytes[opcode >> 13];
  if (operandBytes == 0) throw std::invalid_argument("this sprm has an operand of variable length");
  return fixedSprm(opcode, operand, operandBytes);
}

Bytes sprm(uint16_t opcode, const Bytes& operand) {
  ByteWriter out;
  out.u16(opcode);
  if (opcode == kDefTable || opcode == kDefTable10) {
    out.u16(operand.size() + 1);
  } else if (kOperandBytes[opcode >> 13] == 0) {
    if (operand.size() > 255 && opcode != kChangeTabs) throw std::invalid_argument("operand too long");
    out.u8(std::min<size_t>(operand.size(), 255));
  }
  return out.bytes(operand).take();
}

Bytes sprm8(uint16_t opcode, int64_t operand) {
  return fixedSprm(opcode, operand, 1);
}
Bytes sprm16(uint16_t opcode, int64_t operand) {
  return fixedSprm(opcode, operand, 2);
}
Bytes sprm32(uint16_t opcode, int64_t operand) {
  return fixedSprm(opcode, operand, 4);
}

Bytes Border::bytes() const {
  return ByteWriter().u32(colour).u8(width).u8(type).u8(space).u8(0).take();
}
Bytes Border80::bytes() const {
  return {width, type, ico, space};
}
Bytes Shading::bytes() const {
  return ByteWriter().u32(foreground).u32(background).u16(pattern).take();
}

Bytes tabsSprm(const std::vector<TabStop>& add, const std::vector<int16_t>& remove) {
  ByteWriter operand;
  operand.u8(remove.size());
  for (int16_t position : remove) operand.u16(position);
  operand.u8(add.size());
  for (const TabStop& tab : add) operand.u16(tab.position);
  for (const TabStop& tab : add) operand.u8(tab.alignment | tab.leader << 3);
  return sprm(0xC60D, operand.take());
}

Bytes TableCell::bytes() const {
  const uint32_t word = flags | horizontalMerge | verticalMerge << 5 | verticalAlign << 7;
  ByteWriter out;
  out.u16(word).u16(width);
  for (const auto& border : {top, left, bottom, right}) out.bytes(border.value_or(Border80{0, 0}).bytes());
  return out.take();
}

Bytes defTableSprm(const std::vector<int16_t>& edges, const std::vector<TableCell>& cells) {
  ByteWriter operand;
  operand.u8(edges.empty() ? 0 : edges.size() - 1);
  for (int16_t edge : edges) operand.u16(edge);
  for (const TableCell& cell : cells) operand.bytes(cell.bytes());
  return sprm(kDefTable, operand.take());
}

namespace {
template <class T>
Bytes arraySprm(uint16_t opcode, const std::vector<T>& items) {
  ByteWriter operand;
  for (const T& item : items) operand.bytes(item.bytes());
  return sprm(opcode, operand.take());
}
}  // namespace

Bytes tableBordersSprm(const std::vector<Border>& borders) {
  return arraySprm(0xD613, borders);
}
Bytes tableBorders80Sprm(const std::vector<Border80>& borders) {
  return arraySprm(0xD605, borders);
}
Bytes tableShadingSprm(const std::vector<Shading>& shadings) {
  return arraySprm(0xD612, shadings);
}

Bytes cellDistanceSprm(uint16_t opcode, uint8_t first, uint8_t limit, uint8_t sides, uint8_t unit,
                       int16_t width) {
  return sprm(opcode, ByteWriter().u8(first).u8(limit).u8(sides).u8(unit).u16(width).take());
}

Bytes partSprm(uint16_t opcode, uint16_t parts, const Sprms& sprms) {
  return sprm(opcode, ByteWriter().u16(parts).bytes(sprms.bytes()).take());
}

Bytes tableLookSprm(uint16_t parts) {
  return sprm(0x740A, int64_t{parts} << 16);
}

uint32_t dttm(int year, int month, int day, int hour, int minute, int weekday) {
  return static_cast<uint32_t>(minute) | static_cast<uint32_t>(hour) << 6 | static_cast<uint32_t>(day) << 11 |
         static_cast<uint32_t>(month) << 16 | static_cast<uint32_t>(year - 1900) << 20 |
         static_cast<uint32_t>(weekday) << 29;
}

}  // namespace support

#include "escher_writer.h"

namespace escher {

namespace {

constexpr uint8_t kIdentityByte = 0xA1;

Bytes rectangle(int32_t left, int32_t top, int32_t right, int32_t bottom) {
  ByteWriter body;
  for (const int32_t each : {left, top, right, bottom}) body.u32(static_cast<uint32_t>(each));
  return body.take();
}

Bytes blip(uint16_t kind, bool twoIdentities, const Bytes& rest) {
  ByteWriter body;
  body.fill(twoIdentities ? 32 : 16, kIdentityByte).bytes(rest);
  return atom(static_cast<uint16_t>(0xF018 + kind), twoIdentities ? 1 : 0, body.take());
}

}  // namespace

Bytes joined(std::initializer_list<Bytes> parts) {
  ByteWriter all;
  for (const Bytes& part : parts) all.bytes(part);
  return all.take();
}

Bytes atom(uint16_t type, uint16_t instance, const Bytes& body) {
  const auto length = static_cast<uint32_t>(body.size());
  return ByteWriter().u16(uint32_t{instance} << 4).u16(type).u32(length).bytes(body).take();
}

Bytes container(uint16_t type, std::initializer_list<Bytes> records) {
  Bytes bytes = atom(type, 0, joined(records));
  bytes[0] |= 0x0F;
  return bytes;
}

Bytes fsp(uint16_t type, uint32_t id, uint32_t flags) {
  return atom(0xF00A, type, ByteWriter().u32(id).u32(flags).take());
}

Bytes shape(std::initializer_list<Bytes> records) {
  return container(0xF004, records);
}

Bytes plainShape(uint32_t id) {
  return shape({fsp(75, id)});
}

Bytes group(uint32_t id, std::initializer_list<Bytes> children) {
  const Bytes self = shape({groupBounds(0, 0, 1000, 2000), fsp(0, id, 0x201)});
  return container(0xF003, {self, joined(children)});
}

Bytes groupBounds(int32_t left, int32_t top, int32_t right, int32_t bottom) {
  return atom(0xF009, 0, rectangle(left, top, right, bottom));
}

Bytes childAnchor(int32_t left, int32_t top, int32_t right, int32_t bottom) {
  return atom(0xF00F, 0, rectangle(left, top, right, bottom));
}

Bytes clientTextBox(uint32_t reference) {
  return atom(0xF00D, 0, ByteWriter().u32(reference).take());
}

ShapeProperty complexProperty(uint16_t id, const Bytes& data) {
  return {static_cast<uint16_t>(id | 0x8000), static_cast<uint32_t>(data.size()), data};
}

ShapeProperty textProperty(uint16_t id, std::u16string_view text) {
  return complexProperty(id, ByteWriter().text16(text).u16(0).take());
}

ShapeProperty arrayProperty(uint16_t id, uint16_t count, uint16_t elementSize, const Bytes& elements) {
  return complexProperty(id, ByteWriter().u16(count).u16(count).u16(elementSize).bytes(elements).take());
}

Bytes propertyTable(const std::vector<ShapeProperty>& properties, uint16_t type) {
  ByteWriter body;
  for (const ShapeProperty& each : properties) body.u16(each.word).u32(each.operand);
  for (const ShapeProperty& each : properties) body.bytes(each.data);
  return atom(type, static_cast<uint16_t>(properties.size()), body.take());
}

Bytes bitmapBlip(uint16_t kind, const Bytes& image, bool twoIdentities) {
  return blip(kind, twoIdentities, ByteWriter().u8(0xFF).bytes(image).take());
}

Bytes metafileBlip(uint16_t kind, const Bytes& image, bool twoIdentities) {
  const auto size = static_cast<uint32_t>(image.size());
  ByteWriter rest;
  rest.u32(size).zeros(24).u32(size).u8(0xFE).u8(0xFE).bytes(image);
  return blip(kind, twoIdentities, rest.take());
}

Bytes fbse(const BlipEntry& entry) {
  ByteWriter body;
  body.u8(entry.kind).u8(entry.kind).fill(16, kIdentityByte).u16(0xFF);
  body.u32(static_cast<uint32_t>(entry.blip.size()) + entry.sizeAdded);
  body.u32(entry.references).u32(entry.delayOffset);
  body.u8(0).u8(entry.nameBytes).u16(0).bytes(entry.blip);
  return atom(0xF007, entry.kind, body.take());
}

Bytes drawingGroup(std::initializer_list<Bytes> entries) {
  const Bytes fdgg = atom(0xF006, 0, ByteWriter().u32(1024).u32(1).u32(1).u32(1).take());
  return container(0xF000, {fdgg, container(0xF001, entries)});
}

Bytes drawing(uint8_t label, std::initializer_list<Bytes> records) {
  return joined({Bytes{label}, container(0xF002, records)});
}

Bytes inlinePicture(const Bytes& shapeContainer, const Bytes& blips, int16_t kind, std::string_view name) {
  constexpr uint16_t kPicfSize = 68;
  ByteWriter rest;
  if (kind == 102) rest.u8(static_cast<uint32_t>(name.size())).text8(name);
  rest.bytes(shapeContainer).bytes(blips);
  ByteWriter picture;
  picture.u32(static_cast<uint32_t>(kPicfSize + rest.size())).u16(kPicfSize).u16(static_cast<uint16_t>(kind));
  picture.zeros(20).u16(1440).u16(720).u16(1000).u16(1000);
  return picture.zeros(kPicfSize - picture.size()).bytes(rest.take()).take();
}

}  // namespace escher

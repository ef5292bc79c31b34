#include "support/emf_plus_writer.h"

#include <cstring>
#include <stdexcept>

#include "pictures/emf_plus.h"
#include "support/picture_memory.h"

namespace support::emf_plus {

Fields& Fields::u8(uint32_t value) {
  bytes_.push_back(static_cast<uint8_t>(value));
  return *this;
}

Fields& Fields::u16(int32_t value) {
  return u8(static_cast<uint32_t>(value)).u8(static_cast<uint32_t>(value) >> 8);
}

Fields& Fields::u32(uint32_t value) {
  return u16(static_cast<int32_t>(value & 0xFFFF)).u16(static_cast<int32_t>(value >> 16));
}

Fields& Fields::reals(std::initializer_list<float> values) {
  for (const float value : values) {
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof(bits));
    u32(bits);
  }
  return *this;
}

Fields& Fields::shorts(std::initializer_list<int> values) {
  for (const int value : values) u16(value);
  return *this;
}

Fields& Fields::text(std::u16string_view value) {
  for (const char16_t unit : value) u16(unit);
  return *this;
}

Fields& Fields::bytes(const Bytes& value) {
  bytes_.insert(bytes_.end(), value.begin(), value.end());
  return *this;
}

Fields& Fields::counted(const Bytes& value) {
  return u32(static_cast<uint32_t>(value.size())).bytes(value);
}

Records& Records::add(uint16_t type, uint16_t flags, const Bytes& data) {
  Bytes padded = data;
  padded.resize((data.size() + 3) / 4 * 4);
  const auto size = static_cast<uint32_t>(padded.size());
  const Bytes record = Fields().u16(type).u16(flags).u32(12 + size).u32(size).bytes(padded);
  bytes.insert(bytes.end(), record.begin(), record.end());
  return *this;
}

Records& Records::object(ObjectType type, uint8_t id, const Bytes& data) {
  return add(0x4008, static_cast<uint16_t>(type << 8 | id), data);
}

Bytes solidBrush(uint32_t argb) {
  return Fields().u32(kVersion).u32(0).u32(argb);
}

Bytes pen(float width, uint32_t argb, uint32_t flags, const Bytes& fields) {
  return Fields().u32(kVersion).u32(0).u32(flags).u32(0).reals({width}).bytes(fields).bytes(solidBrush(argb));
}

Bytes path(std::initializer_list<float> coordinates, std::initializer_list<int> types) {
  Fields fields;
  fields.u32(kVersion).u32(static_cast<uint32_t>(types.size())).u32(0).reals(coordinates);
  for (const int type : types) fields.u8(static_cast<uint32_t>(type));
  return fields;
}

Bytes font(float size, std::u16string_view family, uint32_t style) {
  const auto length = static_cast<uint32_t>(family.size());
  return Fields().u32(kVersion).reals({size}).u32(0).u32(style).u32(0).u32(length).text(family);
}

Bytes stringFormat(uint32_t flags, uint32_t align, uint32_t lineAlign, uint32_t hotkeys) {
  return Fields()
      .u32(kVersion)
      .u32(flags)
      .u32(0)
      .u32(align)
      .u32(lineAlign)
      .u32(0)
      .u32(0)
      .u32(0)
      .u32(hotkeys)
      .reals({0, 0, 1})
      .u32(0)
      .u32(0)
      .u32(0);
}

Bytes pixelImage(int width, int height, int stride, uint32_t format, const Bytes& data) {
  return Fields()
      .u32(kVersion)
      .u32(1)
      .u32(static_cast<uint32_t>(width))
      .u32(static_cast<uint32_t>(height))
      .u32(static_cast<uint32_t>(stride))
      .u32(format)
      .u32(0)
      .bytes(data);
}

std::string Element::operator[](const std::string& attribute) const {
  const auto at = attributes.find(attribute);
  return at == attributes.end() ? "" : at->second;
}

const Element& Drawn::element(std::string_view name, size_t number) const {
  for (const Element& each : elements)
    if (each.name == name && number-- == 0) return each;
  throw std::out_of_range("no " + std::string(name) + " in " + svg);
}

size_t Drawn::count(std::string_view name) const {
  size_t count = 0;
  for (const Element& each : elements) count += each.name == name;
  return count;
}

namespace {

/// Attributes of a tag, from behind its name on.
std::map<std::string, std::string> attributesOf(const std::string& tag) {
  std::map<std::string, std::string> attributes;
  for (size_t at = tag.find(' '); at != std::string::npos && tag.find("=\"", at) != std::string::npos;) {
    const size_t sign = tag.find("=\"", at), end = tag.find('"', sign + 2);
    if (end == std::string::npos) throw std::runtime_error("an attribute without an end: " + tag);
    const std::string name = tag.substr(at + 1, sign - at - 1);
    if (!attributes.emplace(name, tag.substr(sign + 2, end - sign - 2)).second)
      throw std::runtime_error("an attribute twice: " + tag);
    at = end + 1;
  }
  return attributes;
}

std::vector<Element> elementsOf(const std::string& svg) {
  std::vector<Element> all, open;
  for (size_t at = svg.find('<'); at != std::string::npos; at = svg.find('<', at)) {
    const size_t end = svg.find('>', at);
    if (end == std::string::npos) throw std::runtime_error("a tag without an end");
    const std::string tag = svg.substr(at + 1, end - at - 1);
    at = end;
    if (tag[0] == '/') {
      if (open.empty() || open.back().name != tag.substr(1)) throw std::runtime_error("unexpected " + tag);
      open.pop_back();
      continue;
    }
    Element element;
    element.name = tag.substr(0, tag.find_first_of(" /"));
    element.attributes = attributesOf(tag);
    element.text = svg.substr(end + 1, svg.find('<', end) - end - 1);
    if (!open.empty()) {
      element.parentName = open.back().name;
      element.parent = open.back().attributes;
      all.push_back(element);
    }
    if (tag.back() != '/') open.push_back(element);
  }
  if (!open.empty()) throw std::runtime_error("no end of " + open.back().name);
  return all;
}

}  // namespace

Drawn draw(const std::vector<Bytes>& comments, bool isNested, size_t mostBytes) {
  PictureMemory memory;
  pagerex::SvgCanvas canvas(&memory, mostBytes);
  canvas.Begin(100, 100, 75, 75);
  pagerex::EmfPlusPlayer player(canvas, {}, 96, isNested);
  Drawn drawn;
  for (const Bytes& comment : comments) {
    // Bytes of their own, so that checkers of memory see a step beyond them.
    const auto copy = std::make_unique<uint8_t[]>(comment.size());
    std::copy(comment.begin(), comment.end(), copy.get());
    drawn.isWhole &= player.Play(ByteView(copy.get(), comment.size()));
  }
  drawn.isDeviceLent = player.isDeviceLent();
  canvas.End();
  drawn.svg.assign(memory.bytes.begin(), memory.bytes.end());
  drawn.elements = elementsOf(drawn.svg);
  return drawn;
}

Drawn draw(const Bytes& comment) {
  return draw(std::vector<Bytes>{comment});
}

Drawn draw(const Records& records) {
  return draw(records.bytes);
}

}  // namespace support::emf_plus

#include "objectwriter/hyperlink.h"

#include <algorithm>
#include <cstring>

#include "base/encoding.h"

namespace hyperLink {
namespace {

constexpr size_t kClassIdSize = 16;
using ClassId = uint8_t[kClassIdSize];
constexpr ClassId kUrlMoniker = {0xE0, 0xC9, 0xEA, 0x79, 0xF9, 0xBA, 0xCE, 0x11,
                                 0x8C, 0x82, 0x00, 0xAA, 0x00, 0x4B, 0xA9, 0x0B};
constexpr ClassId kFileMoniker = {0x03, 0x03, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                                  0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46};

bool isClass(ByteView bytes, const ClassId& id) {
  return bytes.size() == kClassIdSize && std::memcmp(bytes.data(), id, kClassIdSize) == 0;
}

/// 16-bit text up to the first zero.
std::string textOf(ByteView bytes) {
  std::string text;
  Utf16Joiner joiner;
  for (size_t i = 0; i + 2 <= bytes.size() && bytes.u16(i) != 0; i += 2) {
    appendUtf8(text, joiner.Join(bytes.u16(i)));
  }
  return text;
}

}  // namespace

namespace _PRV::hl_hlp {

void read_hl_addr(Cursor& cursor, std::string& out, bool lengthInBytes) {
  size_t characters = cursor.ReadAndProceed<uint32_t>();
  if (lengthInBytes) characters /= 2;
  out = textOf(cursor.take(characters > SIZE_MAX / 2 ? SIZE_MAX : characters * 2));
}

void read_hl_addr_ex(Cursor& cursor, std::string& out) {
  constexpr size_t kUnused = 24;
  cursor.take(2);
  const ByteView narrow = cursor.take(cursor.ReadAndProceed<uint32_t>());
  out.assign(narrow.data(), std::find(narrow.data(), narrow.data() + narrow.size(), 0));
  cursor.take(kUnused);
  if (cursor.ReadAndProceed<uint32_t>() == 0) return;
  const uint32_t bytes = cursor.ReadAndProceed<uint32_t>();
  cursor.take(2);
  out = textOf(cursor.take(bytes & ~1u));
}

}  // namespace _PRV::hl_hlp

void ReadHyLinkStr(Cursor& cursor, std::string& out, bool lengthInBytes) {
  _PRV::hl_hlp::read_hl_addr(cursor, out, lengthInBytes);
}

namespace {

/// An address behind a class identity. kNothing for an absolute one of unknown kind.
Status readMoniker(bool absolute, Cursor& cursor, HLinkType& type, std::string& address) {
  const ByteView id = cursor.take(kClassIdSize);
  if (isClass(id, kFileMoniker)) {
    type = absolute ? HLinkType::kFile : HLinkType::kRelative;
    _PRV::hl_hlp::read_hl_addr_ex(cursor, address);
    return Status::kOk;
  }
  if (absolute && !isClass(id, kUrlMoniker)) return Status::kNothing;
  type = absolute ? HLinkType::kUrl : HLinkType::kRelative;
  _PRV::hl_hlp::read_hl_addr(cursor, address, true);
  return Status::kOk;
}

}  // namespace

Status DecodeHyperlink(uint32_t flags, Cursor& cursor, HLinkType& type, std::string& address,
                       std::string& location) {
  type = HLinkType::kNone;
  if ((flags & HLINK_MONIKER) == 0) {
    type = HLinkType::kLocation;
  } else if ((flags & HLINK_MONIKER_STRING) != 0) {
    type = HLinkType::kString;
    _PRV::hl_hlp::read_hl_addr(cursor, address, false);
  } else if (readMoniker((flags & HLINK_ABSOLUTE) != 0, cursor, type, address) != Status::kOk) {
    return Status::kNothing;
  }
  if (type == HLinkType::kRelative) address.insert(0, "../");
  if ((flags & HLINK_LOCATION) != 0 && !cursor.atEnd()) _PRV::hl_hlp::read_hl_addr(cursor, location, false);
  return Status::kOk;
}

HYPERLINK ReadHyperlink(ByteView property) {
  HYPERLINK link;
  const uint32_t flags = property.u32(kHlinkFlags);
  Cursor cursor(property.part(kHlinkSize));
  std::string frame;
  if ((flags & HLINK_DISPLAY) != 0) ReadHyLinkStr(cursor, link.display, false);
  if ((flags & HLINK_FRAME) != 0) ReadHyLinkStr(cursor, frame, false);
  DecodeHyperlink(flags, cursor, link.type, link.address, link.location);
  return link;
}

}  // namespace hyperLink

#include "support/property_sets.h"

#include <bit>
#include <chrono>

namespace support {
namespace {

constexpr uint16_t kUtf16 = 1200, kUtf8 = 65001;
enum Type : uint16_t { kI2 = 2, kI4 = 3, kR8 = 5, kBool = 11, kString = 30, kWideString = 31, kTime = 64 };

const Bytes kIdentities[] = {
    {0xE0, 0x85, 0x9F, 0xF2, 0xF9, 0x4F, 0x68, 0x10, 0xAB, 0x91, 0x08, 0x00, 0x2B, 0x27, 0xB3, 0xD9},
    {0x02, 0xD5, 0xCD, 0xD5, 0x9C, 0x2E, 0x1B, 0x10, 0x93, 0x97, 0x08, 0x00, 0x2B, 0x2C, 0xF9, 0xAE},
    {0x05, 0xD5, 0xCD, 0xD5, 0x9C, 0x2E, 0x1B, 0x10, 0x93, 0x97, 0x08, 0x00, 0x2B, 0x2C, 0xF9, 0xAE},
};

/// Of the first plane.
void addUtf8(ByteWriter& out, char16_t unit) {
  if (unit < 0x80) {
    out.u8(unit);
  } else if (unit < 0x800) {
    out.u8(0xC0u | unit >> 6).u8(0x80u | (unit & 63u));
  } else {
    out.u8(0xE0u | unit >> 12).u8(0x80u | (unit >> 6 & 63u)).u8(0x80u | (unit & 63u));
  }
}

Bytes eightBytes(uint64_t value) {
  return ByteWriter().u32(static_cast<uint32_t>(value)).u32(static_cast<uint32_t>(value >> 32)).take();
}

}  // namespace

uint64_t fileTime(int year, int month, int day, int hour, int minute, int second) {
  namespace time = std::chrono;
  constexpr time::sys_days kFirst = time::year{1601} / 1 / 1;
  const time::sys_days date = time::year{year} / month / day;
  const time::seconds since =
      time::seconds(date - kFirst) + time::hours(hour) + time::minutes(minute) + time::seconds(second);
  return static_cast<uint64_t>(since.count()) * 10'000'000;
}

// --- One section ---

PropertySection::PropertySection(uint16_t codePage) : codePage_(codePage) {
  value(1, kI2, ByteWriter().u16(codePage).take());
}

/// With a zero at the end.
Bytes PropertySection::encoded(const Text& text) const {
  ByteWriter out;
  for (const char16_t unit : text.units() + u'\0') {
    if (codePage_ == kUtf16) {
      out.u16(unit);
    } else if (codePage_ == kUtf8) {
      addUtf8(out, unit);
    } else {
      out.u8(toCp1252(unit).value());
    }
  }
  return out.take();
}

PropertySection& PropertySection::text(uint32_t id, const Text& text) {
  const Bytes bytes = encoded(text);
  return value(id, kString, ByteWriter().u32(static_cast<uint32_t>(bytes.size())).bytes(bytes).take());
}

PropertySection& PropertySection::wideText(uint32_t id, const Text& text) {
  const auto length = static_cast<uint32_t>(text.units().size() + 1);
  return value(id, kWideString, ByteWriter().u32(length).text16(text.units()).u16(0).take());
}

PropertySection& PropertySection::number(uint32_t id, int32_t number) {
  return value(id, kI4, ByteWriter().u32(static_cast<uint32_t>(number)).take());
}

PropertySection& PropertySection::real(uint32_t id, double real) {
  return value(id, kR8, eightBytes(std::bit_cast<uint64_t>(real)));
}

PropertySection& PropertySection::boolean(uint32_t id, bool isTrue) {
  return value(id, kBool, ByteWriter().u16(isTrue ? 0xFFFF : 0).take());
}

PropertySection& PropertySection::time(uint32_t id, uint64_t fileTime) {
  return value(id, kTime, eightBytes(fileTime));
}

PropertySection& PropertySection::value(uint32_t id, uint16_t type, const Bytes& bytes) {
  return raw(id, ByteWriter().u16(type).u16(0).bytes(bytes).align(4).take());
}

PropertySection& PropertySection::names(const std::vector<std::pair<uint32_t, Text>>& names) {
  ByteWriter out;
  out.u32(static_cast<uint32_t>(names.size()));
  for (const auto& [id, name] : names) {
    const Bytes bytes = encoded(name);
    const size_t length = codePage_ == kUtf16 ? bytes.size() / 2 : bytes.size();
    out.u32(id).u32(static_cast<uint32_t>(length)).bytes(bytes);
    if (codePage_ == kUtf16) out.align(4);
  }
  return raw(0, out.align(4).take());
}

PropertySection& PropertySection::raw(uint32_t id, const Bytes& bytes) {
  properties_.emplace_back(id, bytes);
  return *this;
}

Bytes PropertySection::bytes() const {
  ByteWriter ids, values;
  const size_t start = 8 + properties_.size() * 8;
  for (const auto& [id, bytes] : properties_) {
    ids.u32(id).u32(static_cast<uint32_t>(start + values.size()));
    values.bytes(bytes);
  }
  ByteWriter out;
  out.u32(static_cast<uint32_t>(start + values.size())).u32(static_cast<uint32_t>(properties_.size()));
  return out.bytes(ids.take()).bytes(values.take()).take();
}

Bytes propertySetStream(const std::vector<std::pair<PropertySetKind, PropertySection>>& sections) {
  ByteWriter head, body;
  head.u16(0xFFFE).u16(0).u32(0x00020005).zeros(16).u32(static_cast<uint32_t>(sections.size()));
  const size_t start = 28 + sections.size() * 20;
  for (const auto& [kind, section] : sections) {
    head.bytes(kIdentities[static_cast<size_t>(kind)]).u32(static_cast<uint32_t>(start + body.size()));
    body.bytes(section.bytes());
  }
  return head.bytes(body.take()).take();
}

// --- The summary of a document ---

namespace {

void addTexts(PropertySection& section, const std::vector<std::pair<uint32_t, const Text*>>& texts) {
  for (const auto& [id, text] : texts) {
    if (!text->empty()) section.text(id, *text);
  }
}
void addTimes(PropertySection& section, const std::vector<std::pair<uint32_t, uint64_t>>& times) {
  for (const auto& [id, time] : times) {
    if (time) section.time(id, time);
  }
}
void addNumbers(PropertySection& section, const std::vector<std::pair<uint32_t, int32_t>>& numbers) {
  for (const auto& [id, number] : numbers) {
    if (number) section.number(id, number);
  }
}

/// Adds a value by its type.
struct AddValue {
  PropertySection& section;
  uint32_t id;
  void operator()(const Text& text) { section.text(id, text); }
  void operator()(int32_t number) { section.number(id, number); }
  void operator()(double real) { section.real(id, real); }
  void operator()(bool isTrue) { section.boolean(id, isTrue); }
  void operator()(NamedProperty::Time time) { section.time(id, time.fileTime); }
};

PropertySection customSection(uint16_t codePage, const std::vector<NamedProperty>& properties) {
  constexpr uint32_t kFirst = 2;
  PropertySection section(codePage);
  std::vector<std::pair<uint32_t, Text>> names;
  for (uint32_t i = 0; i < properties.size(); ++i) names.emplace_back(kFirst + i, properties[i].name);
  section.names(names);
  for (uint32_t i = 0; i < properties.size(); ++i)
    std::visit(AddValue{section, kFirst + i}, properties[i].value);
  return section;
}

}  // namespace

Bytes Summary::summaryStream() const {
  PropertySection section(codePage);
  addTexts(section, {{2, &title},
                     {3, &subject},
                     {4, &author},
                     {5, &keywords},
                     {6, &comments},
                     {7, &templateName},
                     {8, &lastAuthor},
                     {9, &revisionNumber},
                     {18, &application}});
  addTimes(section, {{10, editingTime}, {11, printed}, {12, created}, {13, saved}});
  addNumbers(section, {{14, pages}, {15, words}, {16, characters}, {19, security}});
  return propertySetStream({{PropertySetKind::kSummary, section}});
}

Bytes Summary::documentSummaryStream() const {
  PropertySection section(codePage);
  addTexts(section, {{2, &category}, {14, &manager}, {15, &company}, {27, &contentStatus}, {28, &language}});
  addNumbers(section, {{5, lines}, {6, paragraphs}, {17, charactersWithSpaces}});
  if (custom.empty()) return propertySetStream({{PropertySetKind::kDocumentSummary, section}});
  return propertySetStream({{PropertySetKind::kDocumentSummary, section},
                            {PropertySetKind::kCustom, customSection(codePage, custom)}});
}

}  // namespace support

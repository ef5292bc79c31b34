#include "support/word_tables.h"

#include <algorithm>

namespace support {

// --- Styles ---

Style& Style::name(const Text& name) {
  name_ = name.units();
  return *this;
}

Style& Style::kind(StyleKind kind) {
  kind_ = kind;
  return *this;
}

Style& Style::basedOn(uint16_t istd) {
  base_ = istd;
  return *this;
}

Style& Style::next(uint16_t istd) {
  next_ = istd;
  return *this;
}

Style& Style::sti(uint16_t sti) {
  sti_ = sti;
  return *this;
}

Style& Style::papx(const Sprms& sprms) {
  papx_ = sprms;
  return *this;
}

Style& Style::chpx(const Sprms& sprms) {
  chpx_ = sprms;
  return *this;
}

Style& Style::tapx(const Sprms& sprms) {
  tapx_ = sprms;
  return *this;
}

Style& Style::groupCount(uint8_t count) {
  groupCount_ = count;
  return *this;
}

Style& Style::rawRecord(Bytes record, std::optional<uint16_t> size) {
  rawRecord_ = std::move(record);
  rawSize_ = size;
  return *this;
}

Bytes Style::record(uint16_t istd, uint16_t baseBytes) const {
  const std::vector<Bytes> propertyGroups = groups(istd);
  ByteWriter out;
  out.u16(sti_).u16(static_cast<uint32_t>(kind_) | base_ << 4);
  out.u16(propertyGroups.size() | next_.value_or(istd) << 4);
  const size_t sizeAt = out.size();
  out.u16(0).u16(0).zeros(baseBytes > 10 ? baseBytes - 10 : 0);
  out.u16(name_.size()).text16(name_).u16(0);
  for (const Bytes& group : propertyGroups) out.u16(group.size()).bytes(group).align(2);
  Bytes record = out.take();
  patchInteger(record, sizeAt, static_cast<uint16_t>(record.size()));
  return record;
}

std::vector<Bytes> Style::groups(uint16_t istd) const {
  const Bytes papx = ByteWriter().u16(istd).bytes(papx_.bytes()).take();
  std::vector<Bytes> groups;
  switch (kind_) {
    case StyleKind::kParagraph:
      groups = {papx, chpx_.bytes()};
      break;
    case StyleKind::kCharacter:
      groups = {chpx_.bytes()};
      break;
    case StyleKind::kTable:
      groups = {tapx_.bytes(), papx, chpx_.bytes()};
      break;
    case StyleKind::kNumbering:
      groups = {papx};
      break;
  }
  groups.resize(groupCount_.value_or(groups.size()));
  return groups;
}

Bytes styleSheetTable(const std::vector<std::optional<Style>>& styles, const StyleSheetHeader& header) {
  ByteWriter out;
  out.u16(20).u16(header.count.value_or(styles.size())).u16(header.baseBytes).u16(1);
  out.u16(0x005B).u16(0x000F).u16(0);
  out.u16(header.defaultFontAscii).u16(header.defaultFontFarEast).u16(header.defaultFontComplex).u16(0);
  for (size_t istd = 0; istd < styles.size(); ++istd) {
    const auto& style = styles[istd];
    if (!style) {
      out.u16(0);
      continue;
    }
    const Bytes record =
        style->rawRecord_.value_or(style->record(static_cast<uint16_t>(istd), header.baseBytes));
    out.u16(style->rawSize_.value_or(record.size())).bytes(record);
  }
  return out.take();
}

// --- Fonts ---

Bytes fontTable(const std::vector<Font>& fonts) {
  ByteWriter out;
  out.u16(fonts.size()).u16(0);
  for (const Font& font : fonts) {
    const std::u16string& name = font.name.units();
    const std::u16string& alternate = font.alternateName.units();
    ByteWriter record;
    record.u8(font.pitch | font.trueType << 2 | font.family << 4).u16(font.weight).u8(font.charset);
    record.u8(alternate.empty() ? 0 : name.size() + 1);
    record.bytes({font.panose.begin(), font.panose.end()});
    record.bytes({font.signature.begin(), font.signature.end()});
    record.text16(name).u16(0);
    if (!alternate.empty()) record.text16(alternate).u16(0);
    out.u8(record.size()).bytes(record.take());
  }
  return out.take();
}

// --- Lists ---

namespace {

constexpr size_t kLevelsOfList = 9;

/// The number text with each "%n" replaced by the one character n - 1, and where those stand, from 1.
struct NumberText {
  std::u16string units;
  std::array<uint8_t, 9> places = {};
};

NumberText numberText(const std::u16string& text) {
  NumberText result;
  size_t found = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool isNumber =
        text[i] == u'%' && i + 1 < text.size() && text[i + 1] >= u'1' && text[i + 1] <= u'9';
    result.units += isNumber ? static_cast<char16_t>(text[++i] - u'1') : text[i];
    if (isNumber && found < result.places.size()) {
      result.places[found++] = static_cast<uint8_t>(result.units.size());
    }
  }
  return result;
}

}  // namespace

Bytes ListLevel::bytes() const {
  const NumberText number = numberText(text.units());
  ByteWriter out;
  out.u32(startAt).u8(numberFormat).u8(alignment).bytes({number.places.begin(), number.places.end()});
  out.u8(follow).zeros(8).u8(chpx.size()).u8(papx.size()).u8(0).u8(0);
  out.bytes(papx.bytes()).bytes(chpx.bytes());
  return out.u16(number.units.size()).text16(number.units).take();
}

ListLevel bulletLevel(char16_t bullet, uint16_t font, const Sprms& papx) {
  return {.numberFormat = 23,
          .text = std::u16string(1, bullet),
          .papx = papx,
          .chpx = {sprm(0x4A4F, font), sprm(0x4A51, font)}};
}

TableWithTail listDefinitionTable(const std::vector<List>& lists) {
  ByteWriter table, levels;
  table.u16(lists.size());
  for (const List& list : lists) {
    table.u32(list.lsid).u32(list.lsid);
    for (size_t i = 0; i < kLevelsOfList; ++i) table.u16(kNoStyle);
    table.u8(list.simple).u8(0);
    for (size_t i = 0; i < (list.simple ? 1 : kLevelsOfList); ++i) {
      levels.bytes((i < list.levels.size() ? list.levels[i] : ListLevel{}).bytes());
    }
  }
  return {table.take(), levels.take()};
}

Bytes listOverrideTable(const std::vector<ListOverride>& overrides) {
  ByteWriter table, data;
  table.u32(overrides.size());
  for (const ListOverride& entry : overrides) {
    table.u32(entry.lsid).zeros(8).u8(entry.levels.size()).zeros(3);
    data.u32(0xFFFFFFFF);
    for (const LevelOverride& level : entry.levels) {
      const uint32_t flags = level.startAt.has_value() << 4 | level.format.has_value() << 5;
      data.u32(level.startAt.value_or(0)).u32(level.level | flags);
      if (level.format) data.bytes(level.format->bytes());
    }
  }
  return table.bytes(data.take()).take();
}

// --- String and position tables ---

Bytes stringTable(const std::vector<std::u16string>& strings, uint16_t extraBytes,
                  const std::vector<Bytes>& extras) {
  ByteWriter out;
  out.u16(0xFFFF).u16(strings.size()).u16(extraBytes);
  for (size_t i = 0; i < strings.size(); ++i) {
    out.u16(strings[i].size()).text16(strings[i]);
    if (i < extras.size()) out.bytes(extras[i]);
  }
  return out.take();
}

Bytes positionTable(const std::vector<uint32_t>& positions, const std::vector<Bytes>& records) {
  ByteWriter out;
  for (uint32_t position : positions) out.u32(position);
  for (const Bytes& record : records) out.bytes(record);
  return out.take();
}

}  // namespace support

#include "flow/font_names.h"

#include <algorithm>

#include "base/utf16.h"

namespace pagerex {
namespace {

// The font record (FFN).
constexpr size_t kFlags = 1;
constexpr size_t kCharacterSet = 4;
constexpr size_t kAlternateName = 5;  // its start in characters behind kNames, 0 for none
constexpr size_t kPanose = 6;
constexpr size_t kNames = 40;

/// Text up to its zero, or the end of the record.
std::u16string nameAt(ByteView ffn, size_t offset) {
  std::u16string name = utf16Of(ffn.part(offset));
  name.resize(std::min(name.size(), name.find(u'\0')));
  return name;
}

}  // namespace

void FontNames::Read(ByteView table) {
  fonts_.clear();
  names_.clear();
  size_t count = table.u16(0);
  size_t extraAt = 2, at = 4;
  if (count == 0xFFFF) {
    count = table.u16(2);
    extraAt = 4;
    at = 6;
  }
  const size_t extraSize = table.u16(extraAt);
  while (fonts_.size() < count && at < table.size()) {
    const size_t size = table.u8(at) + size_t{1};
    ReadFont(table.part(at, size));
    at += size + extraSize;
  }
}

void FontNames::ReadFont(ByteView ffn) {
  Font& font = fonts_.emplace_back();
  font.flags = ffn.u8(kFlags);
  font.characterSet = ffn.u8(kCharacterSet);
  font.panose = ffn.copyOf<std::array<uint8_t, 10>>(kPanose);
  const std::u16string name = nameAt(ffn, kNames);
  font.name = static_cast<uint32_t>(names_.size());
  font.nameLength = static_cast<uint8_t>(name.size());
  names_ += name;
  font.symbols = symbolFontNamed(name);
  const size_t alternate = ffn.u8(kAlternateName);
  if (alternate == 0) return;
  const std::u16string alternateName = nameAt(ffn, kNames + 2 * alternate);
  font.alternateName = static_cast<uint32_t>(names_.size());
  font.alternateNameLength = static_cast<uint8_t>(alternateName.size());
  names_ += alternateName;
  if (font.symbols == SymbolFont::kNone) font.symbols = symbolFontNamed(alternateName);
}

std::u16string_view FontNames::Name(uint16_t ftc) const {
  if (ftc >= fonts_.size()) return {};
  return std::u16string_view(names_).substr(fonts_[ftc].name, fonts_[ftc].nameLength);
}

std::u16string_view FontNames::AlternateName(uint16_t ftc) const {
  if (ftc >= fonts_.size()) return {};
  return std::u16string_view(names_).substr(fonts_[ftc].alternateName, fonts_[ftc].alternateNameLength);
}

uint8_t FontNames::CharacterSet(uint16_t ftc) const {
  return ftc < fonts_.size() ? fonts_[ftc].characterSet : uint8_t{0};
}

uint8_t FontNames::Family(uint16_t ftc) const {
  return ftc < fonts_.size() ? static_cast<uint8_t>(fonts_[ftc].flags >> 4 & 7) : uint8_t{0};
}

uint8_t FontNames::Pitch(uint16_t ftc) const {
  return ftc < fonts_.size() ? static_cast<uint8_t>(fonts_[ftc].flags & 3) : uint8_t{0};
}

std::array<uint8_t, 10> FontNames::Panose(uint16_t ftc) const {
  return ftc < fonts_.size() ? fonts_[ftc].panose : std::array<uint8_t, 10>{};
}

}  // namespace pagerex

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace pagerex {

/// Fonts whose codes stand for signs, not letters.
enum class SymbolFont : uint8_t {
  kNone,
  kSymbol,
  kWingdings,
  kWingdings2,
  kWingdings3,
  kWebdings,
  kZapfDingbats
};

/// In any case of letters; kNone for a font of letters.
SymbolFont symbolFontNamed(std::u16string_view name);

/// The Unicode character that shows what the font has at a code, 0x20 to 0xFF or 0xF020 to 0xF0FF; 0 for a
/// code that it does not have.
char32_t symbolCharacter(SymbolFont font, char16_t code);

/// Appends what a font shows for a code; what it does not have stays as it is.
void appendSymbol(SymbolFont font, char16_t code, std::u16string& out);

}  // namespace pagerex

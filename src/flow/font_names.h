#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/byte_view.h"
#include "base/symbol_characters.h"

namespace pagerex {

/// The fonts of a document (SttbfFfn) by their index in it (ftc).
class FontNames {
 public:
  /// `table` is the whole table, and need not stay.
  void Read(ByteView table);

  uint32_t Count() const { return static_cast<uint32_t>(fonts_.size()); }
  /// Empty for a font that is not there.
  std::u16string_view Name(uint16_t ftc) const;
  std::u16string_view AlternateName(uint16_t ftc) const;
  uint8_t CharacterSet(uint16_t ftc) const;  ///< 0 ANSI, 2 symbols, 128 Shift-JIS, ...
  uint8_t Family(uint16_t ftc) const;        ///< 1 roman, 2 swiss, 3 monospaced, 4 script, 5 decorative
  uint8_t Pitch(uint16_t ftc) const;         ///< 1 fixed, 2 variable
  bool IsFixedPitch(uint16_t ftc) const { return Pitch(ftc) == 1; }
  std::array<uint8_t, 10> Panose(uint16_t ftc) const;  ///< all 0 where the file says nothing
  /// By its name, else by the alternate one. Signs of a font that neither tells stay as they are.
  SymbolFont Symbols(uint16_t ftc) const {
    return ftc < fonts_.size() ? fonts_[ftc].symbols : SymbolFont::kNone;
  }

 private:
  struct Font {
    uint32_t name = 0;  ///< in `names_`
    uint32_t alternateName = 0;
    uint8_t nameLength = 0;
    uint8_t alternateNameLength = 0;
    uint8_t characterSet = 0;
    uint8_t flags = 0;
    std::array<uint8_t, 10> panose{};
    SymbolFont symbols = SymbolFont::kNone;
  };

  void ReadFont(ByteView ffn);

  std::vector<Font> fonts_;
  std::u16string names_;
};

}  // namespace pagerex

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/byte_view.h"
#include "base/warnings.h"

namespace pagerex {

enum class StyleKind : uint8_t { kNone = 0, kParagraph = 1, kCharacter = 2, kTable = 3, kNumbering = 4 };

/// Marks "no style" where a style index (istd) stands.
constexpr uint16_t kNoStyle = 0x0FFF;

/// A style with the styles that it is based on.
class StyleChain {
 public:
  const uint16_t* begin() const { return istds_ + first_; }
  const uint16_t* end() const { return istds_ + kLongest; }

 private:
  friend class StyleTable;
  /// Word itself goes no deeper than 11.
  static constexpr size_t kLongest = 64;

  uint16_t istds_[kLongest];
  size_t first_ = kLongest;
};

/// The style sheet (STSH): its styles by their index, with their property lists in place. The bytes that it
/// was read from must stay. An index without a style is answered as an empty style of kind kNone; bases never
/// lead in a circle.
class StyleTable {
 public:
  /// A damaged sheet keeps the styles in front of the damage.
  void Read(ByteView sheet, Warnings* warnings);

  size_t Count() const { return styles_.size(); }
  StyleKind Kind(uint16_t istd) const { return at(istd).kind; }
  /// What built-in style it is: 0 "Normal", 1 to 9 headings, ...; 0x0FFE for one of the user's.
  uint16_t Sti(uint16_t istd) const { return at(istd).sti; }
  /// The style that it is based on, of the same kind; kNoStyle for none.
  uint16_t Base(uint16_t istd) const { return at(istd).base; }
  uint16_t Next(uint16_t istd) const { return at(istd).next; }
  /// As the file spells it, without aliases.
  std::u16string_view StyleName(uint16_t istd) const { return at(istd).name; }
  /// The English name of a built-in style, the file's name of others.
  std::u16string_view EnglishName(uint16_t istd) const { return at(istd).englishName; }
  /// 1 to 9: of a built-in heading, or by the outline level that the style or the ones it is based on set;
  /// 0 for none.
  uint8_t HeadingLevel(uint16_t istd) const { return at(istd).headingLevel; }

  /// Lists of sprms, without what the base has; that of paragraphs without the style index in front.
  ByteView Papx(uint16_t istd) const { return at(istd).papx; }
  ByteView Chpx(uint16_t istd) const { return at(istd).chpx; }
  ByteView Tapx(uint16_t istd) const { return at(istd).tapx; }

  /// Fonts of text that names none: indexes in the font table.
  uint16_t AsciiFont() const { return fonts_[0]; }
  uint16_t EastAsianFont() const { return fonts_[1]; }
  uint16_t OtherFont() const { return fonts_[2]; }
  uint16_t ComplexFont() const { return fonts_[3]; }

  /// The style's most distant base first, and the style last.
  StyleChain Chain(uint16_t istd) const;

 private:
  struct Style {
    StyleKind kind = StyleKind::kNone;
    uint8_t headingLevel = 0;
    uint16_t sti = 0x0FFE;
    uint16_t base = kNoStyle;
    uint16_t next = kNoStyle;
    std::u16string name;
    std::u16string englishName;
    ByteView papx, chpx, tapx;
  };

  const Style& at(uint16_t istd) const { return istd < styles_.size() ? styles_[istd] : none_; }
  static Style ReadStyle(ByteView record, size_t baseSize);
  void CutBases();
  uint8_t FindHeadingLevel(uint16_t istd) const;

  std::vector<Style> styles_;
  Style none_;
  uint16_t fonts_[4] = {};
};

}  // namespace pagerex

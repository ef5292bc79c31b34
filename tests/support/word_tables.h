#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/bytes.h"
#include "support/sprms.h"
#include "support/word_text.h"

/// What a test states of styles, fonts and lists, and the bytes of their tables. The free functions make
/// whole tables; `WordDocument` calls them with what was added to it.
namespace support {

// --- Styles ---

enum class StyleKind : uint8_t { kParagraph = 1, kCharacter = 2, kTable = 3, kNumbering = 4 };
constexpr uint16_t kNoStyle = 0x0FFF;

/// One style: `Style().name("Title").basedOn(0).chpx({sprm(0x4A43, 48)})`. A style has the property groups of
/// its kind, also when they are empty: paragraph styles papx and chpx, character styles chpx, table styles
/// tapx, papx and chpx, numbering styles papx.
class Style {
 public:
  Style& name(const Text& name);
  Style& kind(StyleKind kind);
  /// A kind outside the four.
  Style& kind(uint8_t kind) { return this->kind(static_cast<StyleKind>(kind)); }
  Style& basedOn(uint16_t istd);
  Style& next(uint16_t istd);  ///< style of the paragraph behind; itself by default
  /// The number of a built-in style; 0x0FFE, of the user's own, by default.
  Style& sti(uint16_t sti);
  Style& papx(const Sprms& sprms);
  Style& chpx(const Sprms& sprms);
  Style& tapx(const Sprms& sprms);
  /// Fewer groups than the kind has (or more than it has, empty ones).
  Style& groupCount(uint8_t count);
  /// These bytes instead of the whole record, behind the size word, which is theirs too if not given.
  Style& rawRecord(Bytes record, std::optional<uint16_t> size = {});

 private:
  friend Bytes styleSheetTable(const std::vector<std::optional<Style>>& styles,
                               const struct StyleSheetHeader&);
  Bytes record(uint16_t istd, uint16_t baseBytes) const;
  std::vector<Bytes> groups(uint16_t istd) const;

  std::u16string name_;
  StyleKind kind_ = StyleKind::kParagraph;
  uint16_t base_ = kNoStyle;
  std::optional<uint16_t> next_;
  uint16_t sti_ = 0x0FFE;
  Sprms papx_, chpx_, tapx_;
  std::optional<uint8_t> groupCount_;
  std::optional<Bytes> rawRecord_;
  std::optional<uint16_t> rawSize_;
};

/// What stands in front of the styles.
struct StyleSheetHeader {
  std::optional<uint16_t> count = {};  ///< of styles, if the header shall not tell the truth
  uint16_t baseBytes = 18;             ///< of a style record: 10 in Word 97, 18 from Word 2002 on
  uint16_t defaultFontAscii = 0;
  uint16_t defaultFontFarEast = 0;
  uint16_t defaultFontComplex = 0;
};

/// The style sheet (table 1); a slot without a style is empty.
Bytes styleSheetTable(const std::vector<std::optional<Style>>& styles, const StyleSheetHeader& header);

// --- Fonts ---

struct Font {
  Text name = {};
  Text alternateName = {};
  uint8_t family = 1;  ///< 0 unknown, 1 roman, 2 swiss, 3 modern, 4 script, 5 decorative
  uint8_t pitch = 2;   ///< 1 fixed, 2 variable
  bool trueType = true;
  uint8_t charset = 0;  ///< 0 ANSI, 2 symbol, 128 Japanese, 134 Chinese, 161 Greek, 204 Cyrillic
  uint16_t weight = 400;
  std::array<uint8_t, 10> panose = {};
  std::array<uint8_t, 24> signature = {};
};

/// The font table (15).
Bytes fontTable(const std::vector<Font>& fonts);

// --- Lists ---

/// One level of a list.
struct ListLevel {
  uint16_t startAt = 1;
  uint8_t numberFormat =
      0;                  ///< nfc: 0 arabic, 1 upper and 2 lower roman, 3 upper and 4 lower letter, 23 bullet
  Text text = u"%1.";     ///< "%1" to "%9" stand for the number of that level
  uint8_t follow = 0;     ///< behind the number: 0 tab, 1 space, 2 nothing
  uint8_t alignment = 0;  ///< 0 left, 1 centre, 2 right
  Sprms papx = {};
  Sprms chpx = {};
  Bytes bytes() const;
};

/// A bullet: the character of a font, by its index.
ListLevel bulletLevel(char16_t bullet, uint16_t font, const Sprms& papx = {});

/// A list definition. It has 9 levels, or 1 if it is simple; levels that are not given are `ListLevel{}`.
struct List {
  int32_t lsid = 1;
  std::vector<ListLevel> levels = {};
  bool simple = false;
};

/// The override of one level: a start value, or a whole level, or both.
struct LevelOverride {
  uint8_t level = 0;
  std::optional<uint16_t> startAt = {};
  std::optional<ListLevel> format = {};
};

/// A list override: what a paragraph's sprmPIlfo names, counted from 1.
struct ListOverride {
  int32_t lsid = 1;
  std::vector<LevelOverride> levels = {};
};

/// A table and what follows it in the table stream, outside the range that the FIB gives.
struct TableWithTail {
  Bytes table;
  Bytes tail;
};

/// The list definitions (73), with their levels behind them.
TableWithTail listDefinitionTable(const std::vector<List>& lists);
/// The list overrides (74), with their data behind them. Its range covers it all, as Word's does.
Bytes listOverrideTable(const std::vector<ListOverride>& overrides);

// --- String and position tables ---

/// A string table of 16-bit strings; `extras` are as long as `extraBytes`, one a string (or none at all).
Bytes stringTable(const std::vector<std::u16string>& strings, uint16_t extraBytes = 0,
                  const std::vector<Bytes>& extras = {});

/// A position table: positions, one more than records, then the records.
Bytes positionTable(const std::vector<uint32_t>& positions, const std::vector<Bytes>& records = {});

}  // namespace support

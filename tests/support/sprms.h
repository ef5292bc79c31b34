#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

#include "support/bytes.h"

namespace support {

/// A list of sprms (grpprl), as runs, paragraphs, sections and styles take it. Made of sprms in braces:
/// `{sprm(0x0835, 1), sprm(0x4A43, 24)}`; any bytes will do as a sprm.
class Sprms {
 public:
  Sprms() = default;
  Sprms(std::initializer_list<Bytes> sprms) {
    for (const Bytes& sprm : sprms) add(sprm);
  }
  Sprms(Bytes sprms) : bytes_(std::move(sprms)) {}
  Sprms& add(const Bytes& sprm) {
    bytes_.insert(bytes_.end(), sprm.begin(), sprm.end());
    return *this;
  }
  Sprms& add(const Sprms& more) { return add(more.bytes_); }
  const Bytes& bytes() const { return bytes_; }
  size_t size() const { return bytes_.size(); }
  bool empty() const { return bytes_.empty(); }

 private:
  Bytes bytes_;
};

/// A sprm with an operand as wide as its opcode says; throws for an opcode whose operand has no fixed width.
Bytes sprm(uint16_t opcode, int64_t operand);
/// A sprm with any operand: one of variable width gets its length in front, 2 bytes of it for 0xD606 and
/// 0xD608; the 0xC615 length is 255 if the operand has 255 bytes or more.
Bytes sprm(uint16_t opcode, const Bytes& operand);

/// A sprm with an operand of the given width, whatever its opcode says.
Bytes sprm8(uint16_t opcode, int64_t operand);
Bytes sprm16(uint16_t opcode, int64_t operand);
Bytes sprm32(uint16_t opcode, int64_t operand);

constexpr uint32_t kAutoColour = 0xFF000000;

/// A colour word, red in the low byte.
constexpr uint32_t rgb(uint32_t red, uint32_t green, uint32_t blue) {
  return red | green << 8 | blue << 16;
}

/// Border of Word 2000 and later, 8 bytes: `{.colour = rgb(255, 0, 0), .width = 8, .type = 1}`.
struct Border {
  uint32_t colour = kAutoColour;
  uint8_t width = 4;  ///< eighths of a point
  uint8_t type = 1;   ///< 0 none, 1 single, 3 double, ...
  uint8_t space = 0;  ///< points to the text in the low five bits; 0x20 shadow, 0x40 frame
  Bytes bytes() const;
};

/// Border of Word 97, 4 bytes.
struct Border80 {
  uint8_t width = 4;  ///< eighths of a point
  uint8_t type = 1;
  uint8_t ico = 0;    ///< colour index, 0 automatic
  uint8_t space = 0;  ///< as in `Border`
  Bytes bytes() const;
};

/// Shading of Word 2000 and later, 10 bytes.
struct Shading {
  uint32_t foreground = kAutoColour;
  uint32_t background = kAutoColour;
  uint16_t pattern = 0;  ///< 0 clear: only the background shows
  Bytes bytes() const;
};

/// A paragraph or section border, e.g. `borderSprm(0xC64E, {.width = 8})`.
inline Bytes borderSprm(uint16_t opcode, const Border& border) {
  return sprm(opcode, border.bytes());
}
/// A character or paragraph shading, e.g. `shadingSprm(0xC64D, {.background = rgb(255, 255, 0)})`.
inline Bytes shadingSprm(uint16_t opcode, const Shading& shading) {
  return sprm(opcode, shading.bytes());
}

/// A tab stop of sprmPChgTabsPapx.
struct TabStop {
  int16_t position = 0;   ///< twips
  uint8_t alignment = 0;  ///< 0 left, 1 centre, 2 right, 3 decimal, 4 bar
  uint8_t leader = 0;     ///< 0 none, 1 dots, 2 hyphens, 3 underscore
};
/// sprmPChgTabsPapx (0xC60D): positions to delete, stops to add.
Bytes tabsSprm(const std::vector<TabStop>& add, const std::vector<int16_t>& remove = {});

// --- Table rows: for the sprms of a row-end paragraph. ---

/// One cell's 20-byte TC record in sprmTDefTable.
struct TableCell {
  uint8_t horizontalMerge = 0;  ///< 1 merged with the cell before, 2 first of merged cells
  uint8_t verticalMerge = 0;    ///< 1 merged with the cell above, 3 first of merged cells
  uint8_t verticalAlign = 0;    ///< 0 top, 1 centre, 2 bottom
  uint16_t flags = 0;           ///< further bits of the first word
  uint16_t width = 0;           ///< preferred width, twips
  std::optional<Border80> top = {};
  std::optional<Border80> left = {};
  std::optional<Border80> bottom = {};
  std::optional<Border80> right = {};
  Bytes bytes() const;
};

/// sprmTDefTable (0xD608): the row's edges in twips, one more than its cells, and their TC records. Fewer
/// records than cells are allowed, also none.
Bytes defTableSprm(const std::vector<int16_t>& edges, const std::vector<TableCell>& cells = {});
/// Six borders: top, left, bottom, right, inside horizontal, inside vertical (sprmTTableBorders, 0xD613).
Bytes tableBordersSprm(const std::vector<Border>& borders);
/// The same of Word 97 (sprmTTableBorders80, 0xD605).
Bytes tableBorders80Sprm(const std::vector<Border80>& borders);
/// One shading a cell (sprmTDefTableShd, 0xD612).
Bytes tableShadingSprm(const std::vector<Shading>& shadings);
/// Cell spacing or padding (0xD633, 0xD634): cells [first, limit), sides (1 top, 2 left, 4 bottom, 8 right),
/// the unit of the width (3 twips) and the width.
Bytes cellDistanceSprm(uint16_t opcode, uint8_t first, uint8_t limit, uint8_t sides, uint8_t unit,
                       int16_t width);

// --- Table styles: for their property groups. ---

/// The parts of a table that a table style can format, as bits.
enum TablePart : uint16_t {
  kFirstRow = 0x0001,
  kLastRow = 0x0002,
  kFirstColumn = 0x0004,
  kLastColumn = 0x0008,
  kOddColumns = 0x0010,
  kEvenColumns = 0x0020,
  kOddRows = 0x0040,
  kEvenRows = 0x0080,
  kTopRightCell = 0x0100,
  kTopLeftCell = 0x0200,
  kBottomRightCell = 0x0400,
  kBottomLeftCell = 0x0800,
};
/// Properties of these parts only: of characters (0xCA85 in chpx), paragraphs (0xC666 in papx) and of the
/// table (0xD688 in tapx).
Bytes partSprm(uint16_t opcode, uint16_t parts, const Sprms& sprms);
constexpr uint16_t kPartOfRun = 0xCA85, kPartOfParagraph = 0xC666, kPartOfTable = 0xD688;
/// What a row takes of its table style, as sprmTTlp has it: 0x20 first row, 0x40 last row, 0x80 first column,
/// 0x100 last column, 0x200 no bands of rows, 0x400 no bands of columns.
Bytes tableLookSprm(uint16_t parts);

/// Date and time as the format packs it; `weekday` 0 is Sunday.
uint32_t dttm(int year, int month, int day, int hour, int minute, int weekday = 0);

}  // namespace support

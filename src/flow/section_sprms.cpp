#include "flow/section_sprms.h"

#include <algorithm>

#include "flow/sprm_walk.h"
#include "flow/word_colour.h"

namespace pagerex {
namespace {

/// How an operand goes into its property.
enum class Rule : uint8_t {
  kFlag,
  kByte,
  kWord,
  kBorder,
  kBorder80,
  kStart,
  kOrientation,
  kColumnCount,
  kColumnWidth,
  kColumnSpace,
  kEvenColumns,
  kFirstPageNumber,  ///< 32 bits
  kNoteRestart,
  kNoteStart,
  kNoteFormat,
};

struct Row {
  uint16_t opcode;
  Rule rule;
  uint16_t offset;  ///< of the property
};

#define PROPERTY(name) static_cast<uint16_t>(offsetof(SectionProperties, name))
constexpr Row kRows[] = {
    {0xF203, Rule::kColumnWidth, 0},
    {0xF204, Rule::kColumnSpace, 0},
    {0x3005, Rule::kEvenColumns, 0},
    {0x3009, Rule::kStart, 0},
    {0x300A, Rule::kFlag, PROPERTY(hasTitlePage)},
    {0x500B, Rule::kColumnCount, 0},
    {0x900C, Rule::kWord, PROPERTY(columnSpace)},
    {0x300E, Rule::kByte, PROPERTY(pageNumberFormat)},
    {0x3011, Rule::kFlag, PROPERTY(restartsPageNumbers)},
    {0xB017, Rule::kWord, PROPERTY(headerDistance)},
    {0xB018, Rule::kWord, PROPERTY(footerDistance)},
    {0x3019, Rule::kFlag, PROPERTY(hasLineBetweenColumns)},
    {0x301A, Rule::kByte, PROPERTY(verticalAlignment)},
    {0x501C, Rule::kWord, PROPERTY(firstPageNumber)},
    {0x301D, Rule::kOrientation, 0},
    {0xB01F, Rule::kWord, PROPERTY(pageWidth)},
    {0xB020, Rule::kWord, PROPERTY(pageHeight)},
    {0xB021, Rule::kWord, PROPERTY(marginLeft)},
    {0xB022, Rule::kWord, PROPERTY(marginRight)},
    {0x9023, Rule::kWord, PROPERTY(marginTop)},
    {0x9024, Rule::kWord, PROPERTY(marginBottom)},
    {0xB025, Rule::kWord, PROPERTY(gutter)},
    {0x3228, Rule::kFlag, PROPERTY(isRightToLeft)},
    {0x702B, Rule::kBorder80, PROPERTY(pageTop)},
    {0x702C, Rule::kBorder80, PROPERTY(pageLeft)},
    {0x702D, Rule::kBorder80, PROPERTY(pageBottom)},
    {0x702E, Rule::kBorder80, PROPERTY(pageRight)},
    {0x5033, Rule::kWord, PROPERTY(textFlow)},
    {0xD234, Rule::kBorder, PROPERTY(pageTop)},
    {0xD235, Rule::kBorder, PROPERTY(pageLeft)},
    {0xD236, Rule::kBorder, PROPERTY(pageBottom)},
    {0xD237, Rule::kBorder, PROPERTY(pageRight)},
    {0x303C, Rule::kNoteRestart, PROPERTY(footnotes)},
    {0x303E, Rule::kNoteRestart, PROPERTY(endnotes)},
    {0x503F, Rule::kNoteStart, PROPERTY(footnotes)},
    {0x5040, Rule::kNoteFormat, PROPERTY(footnotes)},
    {0x5041, Rule::kNoteStart, PROPERTY(endnotes)},
    {0x5042, Rule::kNoteFormat, PROPERTY(endnotes)},
    {0x7044, Rule::kFirstPageNumber, 0},
};
#undef PROPERTY

constexpr auto kIndex = indexOfRows(kRows);

constexpr uint16_t kMostColumns = 44;

template <class T>
T& at(SectionProperties& properties, const Row& row) {
  return *reinterpret_cast<T*>(reinterpret_cast<uint8_t*>(&properties) + row.offset);
}

/// The operand: the column's number, then a length.
void setColumn(Rule rule, ByteView operand, SectionProperties& properties) {
  const size_t number = operand.u8(0);
  if (number >= kMostColumns) return;
  if (number >= properties.columns.size()) properties.columns.resize(number + 1);
  auto& [width, space] = properties.columns[number];
  (rule == Rule::kColumnWidth ? width : space) = operand.u16(1);
}

void setNotes(Rule rule, ByteView operand, NoteNumbering& notes) {
  if (rule == Rule::kNoteRestart) {
    notes.setsRestart = true;
    notes.restart = operand.u8(0);
  } else if (rule == Rule::kNoteStart) {
    notes.setsStart = true;
    notes.start = operand.u16(0);
  } else {
    notes.setsFormat = true;
    notes.format = operand.u16(0);
  }
}

void apply(const Row& row, ByteView operand, SectionProperties& properties, bool& hasEvenColumns) {
  constexpr uint8_t kLandscape = 2;
  switch (row.rule) {
    case Rule::kFlag:
      at<bool>(properties, row) = operand.u8(0) != 0;
      break;
    case Rule::kByte:
      at<uint8_t>(properties, row) = operand.u8(0);
      break;
    case Rule::kWord:
      at<uint16_t>(properties, row) = operand.u16(0);
      break;
    case Rule::kBorder:
      at<Border>(properties, row) = borderOf(operand);
      break;
    case Rule::kBorder80:
      at<Border>(properties, row) = border80Of(operand);
      break;
    case Rule::kStart:
      properties.start = static_cast<SectionProperties::Start>(std::min<uint8_t>(operand.u8(0), 4));
      break;
    case Rule::kOrientation:
      properties.isLandscape = operand.u8(0) == kLandscape;
      break;
    case Rule::kColumnCount:
      properties.columnCount = static_cast<uint16_t>(std::min<uint32_t>(operand.u16(0) + 1u, kMostColumns));
      break;
    case Rule::kEvenColumns:
      hasEvenColumns = operand.u8(0) != 0;
      break;
    case Rule::kFirstPageNumber:
      properties.firstPageNumber = static_cast<uint16_t>(std::min<uint32_t>(operand.u32(0), 0xFFFF));
      break;
    case Rule::kColumnWidth:
    case Rule::kColumnSpace:
      setColumn(row.rule, operand, properties);
      break;
    default:
      setNotes(row.rule, operand, at<NoteNumbering>(properties, row));
      break;
  }
}

}  // namespace

void applySectionSprms(ByteView sprms, SectionProperties& properties) {
  bool hasEvenColumns = properties.columns.empty();
  forEachSprm(sprms, [&](uint16_t opcode, ByteView operand) {
    if (const Row* const row = findRow(kRows, kIndex, opcode)) {
      apply(*row, operand, properties, hasEvenColumns);
    }
  });
  properties.columns.resize(hasEvenColumns ? 0 : properties.columnCount);
}

}  // namespace pagerex

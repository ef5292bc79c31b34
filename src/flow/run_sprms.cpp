#include "flow/run_sprms.h"

#include <cstddef>

#include "flow/sprm_walk.h"
#include "flow/word_colour.h"

namespace pagerex {
namespace {

/// How an operand goes into its property.
enum class Rule : uint8_t {
  kToggle,  ///< 0, 1, 128 the style's, 129 its opposite
  kByte,
  kWord,
  kColour,       ///< COLORREF
  kColourIndex,  ///< ico
  kBorder,
  kBorder80,
  kShading,
  kShading80,
  kInserted,
  kDeleted,
  kInsertedAuthor,
  kDeletedAuthor,
  kInsertedDate,
  kDeletedDate,
};

struct Row {
  uint16_t opcode;
  Rule rule;
  uint16_t offset;  ///< of the property
};

#define PROPERTY(name) static_cast<uint16_t>(offsetof(RunProperties, name))
constexpr Row kRows[] = {
    {0x0835, Rule::kToggle, PROPERTY(bold)},
    {0x0836, Rule::kToggle, PROPERTY(italic)},
    {0x0837, Rule::kToggle, PROPERTY(strike)},
    {0x0838, Rule::kToggle, PROPERTY(outline)},
    {0x0839, Rule::kToggle, PROPERTY(shadow)},
    {0x083A, Rule::kToggle, PROPERTY(smallCaps)},
    {0x083B, Rule::kToggle, PROPERTY(caps)},
    {0x083C, Rule::kToggle, PROPERTY(hidden)},
    {0x0854, Rule::kToggle, PROPERTY(imprint)},
    {0x0858, Rule::kToggle, PROPERTY(emboss)},
    {0x2A53, Rule::kToggle, PROPERTY(doubleStrike)},
    {0x085A, Rule::kToggle, PROPERTY(isRightToLeft)},
    {0x0882, Rule::kToggle, PROPERTY(isComplexScript)},
    {0x0875, Rule::kToggle, PROPERTY(noProof)},
    {0x2A3E, Rule::kByte, PROPERTY(underline)},
    {0x2A0C, Rule::kByte, PROPERTY(highlight)},
    {0x2A48, Rule::kByte, PROPERTY(verticalAlignment)},
    {0x2A34, Rule::kByte, PROPERTY(emphasisMark)},
    {0x4A43, Rule::kWord, PROPERTY(sizeHalfPoints)},
    {0x4A61, Rule::kWord, PROPERTY(complexSizeHalfPoints)},
    {0x8840, Rule::kWord, PROPERTY(spacing)},
    {0x4852, Rule::kWord, PROPERTY(scalePercent)},
    {0x4845, Rule::kWord, PROPERTY(raisedHalfPoints)},
    {0x484B, Rule::kWord, PROPERTY(kerningHalfPoints)},
    {0x4A4F, Rule::kWord, PROPERTY(fonts.ascii)},
    {0x4A50, Rule::kWord, PROPERTY(fonts.eastAsian)},
    {0x4A51, Rule::kWord, PROPERTY(fonts.other)},
    {0x4A5E, Rule::kWord, PROPERTY(fonts.complex)},
    {0x486D, Rule::kWord, PROPERTY(language)},
    {0x4873, Rule::kWord, PROPERTY(language)},
    {0x486E, Rule::kWord, PROPERTY(eastAsianLanguage)},
    {0x4874, Rule::kWord, PROPERTY(eastAsianLanguage)},
    {0x485F, Rule::kWord, PROPERTY(complexLanguage)},
    {0x4A30, Rule::kWord, PROPERTY(characterStyle)},
    {0x2A42, Rule::kColourIndex, PROPERTY(colour)},
    {0x6870, Rule::kColour, PROPERTY(colour)},
    {0x6877, Rule::kColour, PROPERTY(underlineColour)},
    {0x6865, Rule::kBorder80, PROPERTY(border)},
    {0xCA72, Rule::kBorder, PROPERTY(border)},
    {0x4866, Rule::kShading80, PROPERTY(shading)},
    {0xCA71, Rule::kShading, PROPERTY(shading)},
    {0x0801, Rule::kInserted, 0},
    {0x0800, Rule::kDeleted, 0},
    {0x4804, Rule::kInsertedAuthor, 0},
    {0x4863, Rule::kDeletedAuthor, 0},
    {0x6805, Rule::kInsertedDate, 0},
    {0x6864, Rule::kDeletedDate, 0},
};
#undef PROPERTY

constexpr auto kIndex = indexOfRows(kRows);

template <class T>
T& at(RunProperties& properties, const Row& row) {
  return *reinterpret_cast<T*>(reinterpret_cast<uint8_t*>(&properties) + row.offset);
}

void toggle(bool& property, uint8_t value, bool styleHas) {
  property = value == 128 ? styleHas : value == 129 ? !styleHas : value != 0;
}

/// A date or an author without a change says nothing.
void applyRevision(const Row& row, ByteView operand, RunProperties& properties) {
  switch (row.rule) {
    case Rule::kInserted:
      properties.revision.kind = operand.u8(0) ? Revision::kInserted : Revision::kNone;
      break;
    case Rule::kDeleted:
      properties.deletion.kind = operand.u8(0) ? Revision::kDeleted : Revision::kNone;
      break;
    case Rule::kInsertedAuthor:
      properties.revision.author = operand.u16(0);
      break;
    case Rule::kDeletedAuthor:
      properties.deletion.author = operand.u16(0);
      break;
    case Rule::kInsertedDate:
      properties.revision.dttm = operand.u32(0);
      break;
    default:
      properties.deletion.dttm = operand.u32(0);
      break;
  }
}

void apply(const Row& row, ByteView operand, RunProperties& properties, const RunProperties& style) {
  switch (row.rule) {
    case Rule::kToggle:
      return toggle(at<bool>(properties, row), operand.u8(0),
                    at<bool>(const_cast<RunProperties&>(style), row));
    case Rule::kByte:
      at<uint8_t>(properties, row) = operand.u8(0);
      return;
    case Rule::kWord:
      at<uint16_t>(properties, row) = operand.u16(0);
      return;
    case Rule::kColour:
      at<Colour>(properties, row) = colourOf(operand.u32(0));
      return;
    case Rule::kColourIndex:
      at<Colour>(properties, row) = colourOfIndex(operand.u8(0));
      return;
    case Rule::kBorder:
      at<Border>(properties, row) = borderOf(operand);
      return;
    case Rule::kBorder80:
      at<Border>(properties, row) = border80Of(operand);
      return;
    case Rule::kShading:
      at<Shading>(properties, row) = shadingOf(operand);
      return;
    case Rule::kShading80:
      at<Shading>(properties, row) = shading80Of(operand);
      return;
    default:
      return applyRevision(row, operand, properties);
  }
}

}  // namespace

void applyRunSprms(ByteView sprms, RunProperties& properties, const RunProperties& style) {
  forEachSprm(sprms, [&](uint16_t opcode, ByteView operand) {
    if (const Row* const row = findRow(kRows, kIndex, opcode)) apply(*row, operand, properties, style);
  });
}

uint16_t characterStyleOf(ByteView sprms, uint16_t style) {
  forEachSprm(sprms, [&](uint16_t opcode, ByteView operand) {
    if (opcode == 0x4A30) style = operand.u16(0);
  });
  return style;
}

RunSpecials specialsOf(ByteView sprms) {
  RunSpecials specials;
  forEachSprm(sprms, [&](uint16_t opcode, ByteView operand) {
    switch (opcode) {
      case 0x0855:  // sprmCFSpec
        specials.isSpecial = operand.u8(0) != 0;
        break;
      case 0x0806:  // sprmCFData
        specials.isFieldData = operand.u8(0) != 0;
        break;
      case 0x080A:  // sprmCFOle2
        specials.isOle = operand.u8(0) != 0;
        break;
      case 0x6A03:  // sprmCPicLocation
        specials.hasPicture = true;
        specials.pictureOffset = operand.u32(0);
        specials.isSpecial = true;
        break;
      case 0x6A09:  // sprmCSymbol
        specials.symbol = {true, operand.u16(0), static_cast<char16_t>(operand.u16(2))};
        specials.isSpecial = true;
        break;
      default:
        break;
    }
  });
  return specials;
}

}  // namespace pagerex

#include "flow/paragraph_sprms.h"

#include <algorithm>
#include <cstdlib>

#include "flow/sprm_walk.h"
#include "flow/word_colour.h"

namespace pagerex {
namespace {

/// How an operand goes into its property.
enum class Rule : uint8_t {
  kFlag,
  kByte,
  kWord,
  kLength,  ///< 16 bits with a sign, into 32
  kBorder,
  kBorder80,
  kShading,
  kShading80,
  kAlignment,      ///< logical
  kSideAlignment,  ///< physical: left and right
  kStart,          ///< indents that follow the direction of the paragraph
  kEnd,
  kLeft,  ///< indents of Word 97, which do not
  kRight,
  kNest,  ///< more indent at the left
  kNestStart,
  kCharactersLeft,  ///< hundredths of a character
  kCharactersRight,
  kCharactersFirst,
  kFirstLine,
  kLineSpacing,
  kTabs,         ///< of paragraphs and styles
  kTabsDeleted,  ///< with a distance for each one that is deleted
  kListNumber,
  kListLevel,
  kOutlineLevel,
  kFrameAnchors,
  kFrameHeight,
  kDropCap,
};

struct Row {
  uint16_t opcode;
  Rule rule;
  uint16_t offset;  ///< of the property
};

#define PROPERTY(name) static_cast<uint16_t>(offsetof(ParagraphProperties, name))
constexpr Row kRows[] = {
    {0x2403, Rule::kSideAlignment, 0},
    {0x2405, Rule::kFlag, PROPERTY(keepLines)},
    {0x2406, Rule::kFlag, PROPERTY(keepWithNext)},
    {0x2407, Rule::kFlag, PROPERTY(pageBreakBefore)},
    {0x260A, Rule::kListLevel, 0},
    {0x460B, Rule::kListNumber, 0},
    {0x240C, Rule::kFlag, PROPERTY(noLineNumbers)},
    {0xC60D, Rule::kTabs, 0},
    {0x840E, Rule::kRight, 0},
    {0x840F, Rule::kLeft, 0},
    {0x4610, Rule::kNest, 0},
    {0x8411, Rule::kFirstLine, 0},
    {0x6412, Rule::kLineSpacing, 0},
    {0xA413, Rule::kWord, PROPERTY(spaceBefore)},
    {0xA414, Rule::kWord, PROPERTY(spaceAfter)},
    {0xC615, Rule::kTabsDeleted, 0},
    {0x8418, Rule::kWord, PROPERTY(frame.left)},
    {0x8419, Rule::kWord, PROPERTY(frame.top)},
    {0x841A, Rule::kWord, PROPERTY(frame.width)},
    {0x261B, Rule::kFrameAnchors, 0},
    {0x2423, Rule::kByte, PROPERTY(frame.wrap)},
    {0x6424, Rule::kBorder80, PROPERTY(top)},
    {0x6425, Rule::kBorder80, PROPERTY(start)},
    {0x6426, Rule::kBorder80, PROPERTY(bottom)},
    {0x6427, Rule::kBorder80, PROPERTY(end)},
    {0x6428, Rule::kBorder80, PROPERTY(between)},
    {0x6629, Rule::kBorder80, PROPERTY(bar)},
    {0x242A, Rule::kFlag, PROPERTY(noHyphens)},
    {0x442B, Rule::kFrameHeight, 0},
    {0x442C, Rule::kDropCap, 0},
    {0x442D, Rule::kShading80, PROPERTY(shading)},
    {0x2431, Rule::kFlag, PROPERTY(widowControl)},
    {0x443A, Rule::kWord, PROPERTY(textFlow)},
    {0x2640, Rule::kOutlineLevel, 0},
    {0x2441, Rule::kFlag, PROPERTY(isRightToLeft)},
    {0xC64D, Rule::kShading, PROPERTY(shading)},
    {0xC64E, Rule::kBorder, PROPERTY(top)},
    {0xC64F, Rule::kBorder, PROPERTY(start)},
    {0xC650, Rule::kBorder, PROPERTY(bottom)},
    {0xC651, Rule::kBorder, PROPERTY(end)},
    {0xC652, Rule::kBorder, PROPERTY(between)},
    {0xC653, Rule::kBorder, PROPERTY(bar)},
    {0x4455, Rule::kCharactersRight, 0},
    {0x4456, Rule::kCharactersLeft, 0},
    {0x4457, Rule::kCharactersFirst, 0},
    {0x245B, Rule::kFlag, PROPERTY(autoSpaceBefore)},
    {0x245C, Rule::kFlag, PROPERTY(autoSpaceAfter)},
    {0x845D, Rule::kEnd, 0},
    {0x845E, Rule::kStart, 0},
    {0x465F, Rule::kNestStart, 0},
    {0x8460, Rule::kFirstLine, 0},
    {0x2461, Rule::kAlignment, 0},
    {0x246D, Rule::kFlag, PROPERTY(spacesOnlyBetweenStyles)},
};
#undef PROPERTY

constexpr auto kIndex = indexOfRows(kRows);

template <class T>
T& at(ParagraphProperties& properties, const Row& row) {
  return *reinterpret_cast<T*>(reinterpret_cast<uint8_t*>(&properties) + row.offset);
}

/// By the code of a justification; the kinds of East Asian, Arabic and Thai justified text are all justified.
Alignment alignmentOf(uint8_t code) {
  constexpr Alignment kAlignments[] = {Alignment::kStart,   Alignment::kCentre,     Alignment::kEnd,
                                       Alignment::kJustify, Alignment::kDistribute, Alignment::kJustify,
                                       Alignment::kStart,   Alignment::kJustify,    Alignment::kJustify,
                                       Alignment::kJustify};
  return code < std::size(kAlignments) ? kAlignments[code] : Alignment::kStart;
}

/// What a list says that can be told only at its end: sides by the direction of the paragraph, and widths of
/// characters where there are no lengths.
class Pending {
 public:
  explicit Pending(ParagraphProperties& properties) : properties_(properties) {}

  void SetAlignment(uint8_t code) {
    sideAlignment_.isThere = false;
    properties_.alignment = alignmentOf(code);
  }
  void SetSideAlignment(uint8_t code) { sideAlignment_ = {true, code}; }
  void SetStart(int32_t indent) {
    hasStart_ = true;
    properties_.indentStart = indent;
  }
  void SetEnd(int32_t indent) {
    hasEnd_ = true;
    properties_.indentEnd = indent;
  }
  void SetFirstLine(int32_t indent) {
    hasFirstLine_ = true;
    properties_.indentFirstLine = indent;
  }
  void NestStart(int32_t more) { SetStart(std::max(properties_.indentStart + more, 0)); }
  void SetLeft(int32_t indent) { left_ = {true, indent}; }
  void SetRight(int32_t indent) { right_ = {true, indent}; }
  void NestLeft(int32_t more) {
    const int32_t left = properties_.isRightToLeft ? properties_.indentEnd : properties_.indentStart;
    left_ = {true, std::max((left_.isThere ? left_.value : left) + more, 0)};
  }
  void SetCharactersLeft(int32_t hundredths) { charactersLeft_ = {true, hundredths}; }
  void SetCharactersRight(int32_t hundredths) { charactersRight_ = {true, hundredths}; }
  void SetCharactersFirst(int32_t hundredths) { charactersFirst_ = {true, hundredths}; }

  void Settle() {
    const bool rightToLeft = properties_.isRightToLeft;
    const Value& start = rightToLeft ? right_ : left_;
    const Value& end = rightToLeft ? left_ : right_;
    put(start.isThere ? start : inTwips(charactersLeft_), hasStart_, properties_.indentStart);
    put(end.isThere ? end : inTwips(charactersRight_), hasEnd_, properties_.indentEnd);
    put(inTwips(charactersFirst_), hasFirstLine_, properties_.indentFirstLine);
    if (!sideAlignment_.isThere) return;
    properties_.alignment = alignmentOf(static_cast<uint8_t>(sideAlignment_.value));
    if (rightToLeft) properties_.alignment = mirrored(properties_.alignment);
  }

 private:
  struct Value {
    bool isThere = false;
    int32_t value = 0;
  };

  static void put(const Value& value, bool isSet, int32_t& indent) {
    if (value.isThere && !isSet) indent = value.value;
  }
  /// A character is as wide as East Asian text of 10.5 points.
  static Value inTwips(const Value& hundredths) {
    return {hundredths.isThere && hundredths.value != 0, hundredths.value * 210 / 100};
  }
  static Alignment mirrored(Alignment alignment) {
    if (alignment == Alignment::kStart) return Alignment::kEnd;
    return alignment == Alignment::kEnd ? Alignment::kStart : alignment;
  }

  ParagraphProperties& properties_;
  Value sideAlignment_, left_, right_, charactersLeft_, charactersRight_, charactersFirst_;
  bool hasStart_ = false, hasEnd_ = false, hasFirstLine_ = false;
};

bool before(const TabStop& tab, int position) {
  return tab.position < position;
}

void removeTabs(std::vector<TabStop>& tabs, int position, int distance) {
  const auto from = std::lower_bound(tabs.begin(), tabs.end(), position - distance, before);
  const auto to = std::lower_bound(from, tabs.end(), position + distance + 1, before);
  tabs.erase(from, to);
}

void addTab(std::vector<TabStop>& tabs, TabStop tab) {
  constexpr size_t kMostTabs = 64;
  const auto place = std::lower_bound(tabs.begin(), tabs.end(), tab.position, before);
  if (place != tabs.end() && place->position == tab.position) {
    *place = tab;
  } else if (tabs.size() < kMostTabs) {
    tabs.insert(place, tab);
  }
}

/// The tabs that are deleted, with a distance for each if there are distances, then those that are added.
void changeTabs(ByteView operand, bool hasDistances, std::vector<TabStop>& tabs) {
  constexpr int kLeastDistance = 25;
  const size_t deleted = operand.u8(0);
  for (size_t i = 0; i < deleted && operand.contains(1 + 2 * i, 2); ++i) {
    const int distance = hasDistances ? operand.i16(1 + 2 * (deleted + i)) : 0;
    removeTabs(tabs, operand.i16(1 + 2 * i), std::max(distance, kLeastDistance));
  }
  const ByteView rest = operand.part(1 + deleted * (hasDistances ? 4 : 2));
  const size_t added = rest.u8(0);
  for (size_t i = 0; i < added && rest.contains(1 + 2 * added + i, 1); ++i) {
    const uint8_t kind = rest.u8(1 + 2 * added + i);
    addTab(tabs, {rest.i16(1 + 2 * i), static_cast<uint8_t>(kind & 7), static_cast<uint8_t>(kind >> 3 & 7)});
  }
}

void setLineSpacing(ByteView operand, ParagraphProperties& properties) {
  using Spacing = ParagraphProperties::LineSpacing;
  const int height = operand.i16(0);
  const bool isMultiple = operand.u16(2) != 0;
  properties.lineSpacing = isMultiple || height == 0 ? Spacing::kMultiple
                           : height > 0              ? Spacing::kAtLeast
                                                     : Spacing::kExactly;
  properties.lineHeight = height == 0 ? 240 : static_cast<uint16_t>(std::abs(height));
}

/// Negative numbers are those of lists whose indents do not count.
void setListNumber(int16_t ilfo, ParagraphProperties& properties) {
  constexpr int kMostLists = 0x7FE;
  const int number = std::abs(int{ilfo});
  properties.listNumber = number <= kMostLists ? static_cast<uint16_t>(number) : 0;
}

void setAnchors(uint8_t code, Frame& frame) {
  constexpr uint8_t kUnchanged = 3;
  const uint8_t vertical = code >> 4 & 3, horizontal = code >> 6;
  if (vertical != kUnchanged) frame.verticalAnchor = vertical;
  if (horizontal != kUnchanged) frame.horizontalAnchor = horizontal;
}

bool isFrame(const Frame& frame) {
  return frame.left || frame.top || frame.width || frame.height || frame.wrap || frame.horizontalAnchor ||
         frame.verticalAnchor || frame.dropCapLines;
}

void applyFrame(Rule rule, ByteView operand, Frame& frame) {
  const uint16_t value = operand.u16(0);
  if (rule == Rule::kFrameAnchors) {
    setAnchors(operand.u8(0), frame);
  } else if (rule == Rule::kFrameHeight) {
    frame.height = value & 0x7FFF;
    frame.isLeastHeight = (value & 0x8000) != 0;
  } else {
    const bool isThere = (value & 7) != 0;
    frame.dropCapLines = isThere ? value >> 3 & 0x1F : 0;
    frame.isDropCapInMargin = (value & 7) == 2;
  }
}

void applyIndent(Rule rule, int32_t value, Pending& pending) {
  switch (rule) {
    case Rule::kStart:
      return pending.SetStart(value);
    case Rule::kEnd:
      return pending.SetEnd(value);
    case Rule::kLeft:
      return pending.SetLeft(value);
    case Rule::kRight:
      return pending.SetRight(value);
    case Rule::kNest:
      return pending.NestLeft(value);
    case Rule::kNestStart:
      return pending.NestStart(value);
    case Rule::kCharactersLeft:
      return pending.SetCharactersLeft(value);
    case Rule::kCharactersRight:
      return pending.SetCharactersRight(value);
    case Rule::kCharactersFirst:
      return pending.SetCharactersFirst(value);
    default:
      return pending.SetFirstLine(value);
  }
}

void apply(const Row& row, ByteView operand, ParagraphProperties& properties, Pending& pending) {
  switch (row.rule) {
    case Rule::kFlag:
      at<bool>(properties, row) = operand.u8(0) != 0;
      return;
    case Rule::kByte:
      at<uint8_t>(properties, row) = operand.u8(0);
      return;
    case Rule::kWord:
      at<uint16_t>(properties, row) = operand.u16(0);
      return;
    case Rule::kBorder:
      at<Border>(properties, row) = borderOf(operand);
      return;
    case Rule::kBorder80:
      at<Border>(properties, row) = border80Of(operand);
      return;
    case Rule::kShading:
      properties.shading = shadingOf(operand);
      return;
    case Rule::kShading80:
      properties.shading = shading80Of(operand);
      return;
    case Rule::kAlignment:
      return pending.SetAlignment(operand.u8(0));
    case Rule::kSideAlignment:
      return pending.SetSideAlignment(operand.u8(0));
    case Rule::kLineSpacing:
      return setLineSpacing(operand, properties);
    case Rule::kTabs:
    case Rule::kTabsDeleted:
      return changeTabs(operand, row.rule == Rule::kTabsDeleted, properties.tabs);
    case Rule::kListNumber:
      return setListNumber(operand.i16(0), properties);
    case Rule::kListLevel:
      properties.listLevel = std::min<uint8_t>(operand.u8(0), 8);
      return;
    case Rule::kOutlineLevel:
      properties.outlineLevel = std::min<uint8_t>(operand.u8(0), 9);
      return;
    case Rule::kFrameAnchors:
    case Rule::kFrameHeight:
    case Rule::kDropCap:
      return applyFrame(row.rule, operand, properties.frame);
    default:
      return applyIndent(row.rule, operand.i16(0), pending);
  }
}

constexpr int kDeepest = 255;  ///< of tables in tables

/// The operand of a permutation of styles: behind two flags the first and the last one that it changes, and
/// then what each of them becomes.
uint16_t permuted(uint16_t style, ByteView operand) {
  const uint16_t first = operand.u16(2), last = operand.u16(4);
  const size_t place = size_t{6} + 2 * (size_t{style} - first);
  return style >= first && style <= last && operand.contains(place, 2) ? operand.u16(place) : style;
}

/// Headings that go up or down by some levels.
uint16_t levelled(uint16_t style, int levels) {
  constexpr int kLastHeading = 9;
  if (style < 1 || style > kLastHeading) return style;
  return static_cast<uint16_t>(std::clamp(style + levels, 1, kLastHeading));
}

bool isOutlineSprm(uint16_t opcode) {
  const unsigned low = opcode & 0xFF;
  return low == 0x16 || low == 0x17 || (low >= 0x45 && low <= 0x4C);
}

void applyOutlineSprm(uint16_t opcode, ByteView operand, ParagraphOutline& outline) {
  TablePlace& place = outline.place;
  switch (opcode) {
    case 0x2416:  // sprmPFInTable
      place.depth = operand.u8(0) == 0 ? uint8_t{0} : std::max<uint8_t>(place.depth, 1);
      break;
    case 0x2417:  // sprmPFTtp
      place.isRowEnd = operand.u8(0) != 0;
      break;
    case 0x244B:  // sprmPFInnerTableCell
      place.isInnerCellEnd = operand.u8(0) != 0;
      break;
    case 0x244C:  // sprmPFInnerTtp
      place.isInnerRowEnd = operand.u8(0) != 0;
      break;
    case 0x6649:  // sprmPItap
      place.depth = static_cast<uint8_t>(std::clamp(operand.i32(0), 0, kDeepest));
      break;
    case 0x664A:  // sprmPDtap
      place.depth = static_cast<uint8_t>(
          std::clamp(place.depth + std::clamp(operand.i32(0), -kDeepest, kDeepest), 0, kDeepest));
      break;
    case 0x6645:  // sprmPHugePapx
    case 0x6646:
      outline.isHuge = true;
      outline.hugeOffset = operand.u32(0);
      break;
    default:
      break;
  }
}

}  // namespace

void applyParagraphSprms(ByteView sprms, ParagraphProperties& properties) {
  if (sprms.empty()) return;
  Pending pending(properties);
  forEachSprm(sprms, [&](uint16_t opcode, ByteView operand) {
    if (const Row* const row = findRow(kRows, kIndex, opcode)) apply(*row, operand, properties, pending);
  });
  pending.Settle();
  properties.frame.isThere = isFrame(properties.frame);
}

ParagraphOutline outlineOf(ByteView sprms, TablePlace place) {
  ParagraphOutline outline;
  outline.place = place;
  // Most sprms are none of these: they are passed over by their length alone.
  constexpr uint8_t kOperandBytes[8] = {1, 1, 2, 4, 2, 2, 0, 3};
  const uint8_t* at = sprms.data();
  const uint8_t* const end = at + sprms.size();
  while (end - at >= 2) {
    const auto opcode = static_cast<uint16_t>(at[0] | at[1] << 8);
    const ByteView left(at, static_cast<size_t>(end - at));
    size_t bytes = 2 + size_t{kOperandBytes[opcode >> 13]};
    if (bytes == 2 || opcode == 0) bytes = PlaceOfOperand(left).end();
    if (bytes >= left.size()) bytes = left.size();
    if (isOutlineSprm(opcode)) applyOutlineSprm(opcode, left.part(2), outline);
    at += bytes;
  }
  return outline;
}

TablePlace tablePlaceOf(ByteView sprms, TablePlace place) {
  return outlineOf(sprms, place).place;
}

bool hugeOffset(ByteView sprms, uint32_t& offset) {
  const ParagraphOutline outline = outlineOf(sprms);
  if (outline.isHuge) offset = outline.hugeOffset;
  return outline.isHuge;
}

void readParagraphNames(ByteView sprms, ParagraphNames& names) {
  forEachSprm(sprms, [&names](uint16_t opcode, ByteView operand) {
    switch (opcode) {
      case 0x4600:  // sprmPIstd
        names.style = operand.u16(0);
        names.setsStyle = true;
        break;
      case 0xC601:  // sprmPIstdPermute
        names.style = permuted(names.style, operand);
        break;
      case 0x2602:  // sprmPIncLvl
        names.style = levelled(names.style, static_cast<int8_t>(operand.u8(0)));
        break;
      case 0x260A:  // sprmPIlvl
        names.listLevel = std::min<uint8_t>(operand.u8(0), 8);
        names.setsList = true;
        break;
      case 0x460B:  // sprmPIlfo
        names.listNumber = operand.i16(0);
        names.setsList = true;
        break;
      default:
        break;
    }
  });
}

}  // namespace pagerex

#include "wordreader/style_table.h"

#include <algorithm>

#include "wordreader/sprm_list.h"
#include "wordreader/style_names.h"

namespace pagerex {
namespace {

constexpr uint16_t kOutlineLevel = 0x2640;  ///< sprmPOutLvl
constexpr uint16_t kMostStyles = 0x0FFE;
constexpr size_t kNamedFonts = 3;

size_t even(size_t size) {
  return size + size % 2;
}

/// The name in front of the first comma: behind it are aliases.
std::u16string nameOf(ByteView characters) {
  std::u16string name(characters.size() / 2, u'\0');
  for (size_t i = 0; i < name.size(); ++i) name[i] = static_cast<char16_t>(characters.u16(2 * i));
  return name.substr(0, name.find(u','));
}

/// What the property groups of a style are, by its kind and their order.
enum class Group : uint8_t { kNone, kPapx, kChpx, kTapx };
constexpr Group kGroups[5][3] = {
    {Group::kNone, Group::kNone, Group::kNone},  // no kind
    {Group::kPapx, Group::kChpx, Group::kNone},  // paragraph
    {Group::kChpx, Group::kNone, Group::kNone},  // character
    {Group::kTapx, Group::kPapx, Group::kChpx},  // table
    {Group::kPapx, Group::kNone, Group::kNone},  // numbering
};

}  // namespace

void StyleTable::Read(ByteView sheet, Warnings* warnings) {
  styles_.clear();
  const size_t headerSize = sheet.u16(0);
  const ByteView header = sheet.part(2, headerSize);
  const uint16_t count = std::min(header.u16(0), kMostStyles);
  const uint16_t baseSize = header.u16(2);
  for (size_t i = 0; i < kNamedFonts; ++i) fonts_[i] = header.u16(12 + 2 * i);
  fonts_[kNamedFonts] = header.u16(18);

  ByteView left = sheet.part(2 + headerSize);
  while (styles_.size() < count && left.size() >= 2) {
    const size_t size = left.u16(0);
    styles_.push_back(ReadStyle(left.part(2, size), baseSize));
    left = left.part(even(2 + size));
  }
  if (styles_.size() < count) warn(warnings, WarningCode::kTableDamaged, "styles");
  CutBases();
  for (size_t i = 0; i < styles_.size(); ++i) {
    styles_[i].headingLevel = FindHeadingLevel(static_cast<uint16_t>(i));
  }
}

/// Of an empty record, a style without a kind.
StyleTable::Style StyleTable::ReadStyle(ByteView record, size_t baseSize) {
  constexpr size_t kLeastBase = 8;  // what is read of the fixed part
  Style style;
  if (record.size() < std::max(baseSize, kLeastBase)) return style;
  style.sti = record.u16(0) & 0x0FFF;
  const uint8_t kind = record.u8(2) & 0xF;
  if (kind < std::size(kGroups)) style.kind = static_cast<StyleKind>(kind);
  style.base = record.u16(2) >> 4;
  style.next = record.u16(4) >> 4;

  size_t at = baseSize;
  const size_t nameBytes = size_t{record.u16(at)} * 2;
  style.name = nameOf(record.part(at + 2, nameBytes));
  style.englishName = builtInStyleName(style.sti);
  if (style.englishName.empty()) style.englishName = style.name;
  at += 2 + nameBytes + 2;  // the name ends with a zero that its length does not count

  for (const Group group : kGroups[static_cast<size_t>(style.kind)]) {
    const ByteView bytes = record.part(at + 2, record.u16(at));
    if (group == Group::kPapx) style.papx = bytes.part(2);  // behind the style's own index
    if (group == Group::kChpx) style.chpx = bytes;
    if (group == Group::kTapx) style.tapx = bytes;
    at += even(2 + size_t{record.u16(at)});
  }
  return style;
}

StyleChain StyleTable::Chain(uint16_t istd) const {
  StyleChain chain;
  for (; istd != kNoStyle && chain.first_ > 0; istd = at(istd).base) chain.istds_[--chain.first_] = istd;
  return chain;
}

/// A base must be there and of the same kind, and the chain of bases must end.
void StyleTable::CutBases() {
  for (Style& style : styles_) {
    if (style.base >= styles_.size() || at(style.base).kind != style.kind) style.base = kNoStyle;
  }
  enum : uint8_t { kUnknown, kOnTheWay, kEnds };
  std::vector<uint8_t> states(styles_.size(), kUnknown);
  std::vector<uint16_t> way;
  for (size_t i = 0; i < styles_.size(); ++i) {
    uint16_t istd = static_cast<uint16_t>(i);
    for (; istd != kNoStyle && states[istd] == kUnknown; istd = styles_[istd].base) {
      states[istd] = kOnTheWay;
      way.push_back(istd);
    }
    if (istd != kNoStyle && states[istd] == kOnTheWay) styles_[way.back()].base = kNoStyle;
    for (const uint16_t passed : way) states[passed] = kEnds;
    way.clear();
  }
}

uint8_t StyleTable::FindHeadingLevel(uint16_t istd) const {
  uint8_t level = 0;
  for (const uint16_t each : Chain(istd)) {
    const Style& style = at(each);
    if (style.kind != StyleKind::kParagraph) return 0;
    KDWSprm sprm;
    if (style.sti >= 1 && style.sti <= 9) {
      level = static_cast<uint8_t>(style.sti);
    } else if (KDWSprmList(style.papx).FindSprm(kOutlineLevel, &sprm) == Status::kOk) {
      const uint8_t outlineLevel = sprm.GetArgument().u8(0);
      level = outlineLevel < 9 ? outlineLevel + 1 : 0;
    }
  }
  return level;
}

}  // namespace pagerex

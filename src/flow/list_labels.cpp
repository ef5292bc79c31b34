#include "flow/list_labels.h"

#include <algorithm>

#include "flow/number_text.h"
#include "wordreader/sprm_list.h"

namespace pagerex {
namespace {

constexpr uint8_t kSymbolCharacterSet = 2;

/// What the sprms of a label say of it.
struct LabelLook {
  uint16_t font = ListLabels::kNoFont;
  int32_t picture = 0;
  bool isPicture = false;
};

LabelLook lookOf(ByteView chpx) {
  LabelLook look;
  const KDWSprmList list(chpx);
  KDWSprmList::Enumerator all(list);
  for (KDWSprm sprm; all.Next(&sprm) == Status::kOk;) {
    const ByteView operand = sprm.GetArgument();
    switch (sprm.GetOpcode()) {
      case 0x4A4F:  // sprmCRgFtc0
        look.font = operand.u16(0);
        break;
      case 0x4A51:  // sprmCRgFtc2
        if (look.font == ListLabels::kNoFont) look.font = operand.u16(0);
        break;
      case 0x6887:  // sprmCPbiIBullet
        look.picture = operand.i32(0);
        break;
      case 0x4888:  // sprmCPbiGrf
        look.isPicture = (operand.u16(0) & 1) != 0;
        break;
      default:
        break;
    }
  }
  return look;
}

constexpr uint16_t bitOf(unsigned level) {
  return static_cast<uint16_t>(1u << level);
}

}  // namespace

ListLabels::ListLabels(const ListDefinitions& lists, const FontNames& fonts)
    : lists_(lists), fonts_(fonts), counts_(lists.DefinitionCount()), startsTaken_(lists.UseCount()) {}

void ListLabels::Reset() {
  for (const uint16_t ilfo : seen_) {
    counts_[static_cast<size_t>(lists_.DefinitionOf(ilfo))].started = 0;
    startsTaken_[ilfo - 1u] = 0;
  }
  seen_.clear();
}

bool ListLabels::Next(uint16_t ilfo, uint8_t level, LabelFacts& out, uint16_t language, uint16_t markFont) {
  const UsedLevel used = lists_.Level(ilfo, level);
  if (!used.level) return false;
  const LabelLook look = lookOf(used.level->chpx);
  const uint16_t font = look.font != kNoFont ? look.font : markFont;
  out.number = Count(ilfo, used);
  MakeText(ilfo, used, font, language);
  out.text = text_;
  out.level = used.level;
  out.listId = lists_.Lsid(lists_.DefinitionOf(ilfo));
  out.nfc = used.level->nfc;
  out.isBullet = out.nfc == kBulletNumbers;
  out.pictureBullet = look.isPicture && look.picture >= 0 ? look.picture : -1;
  out.symbols = fonts_.Symbols(font);
  return true;
}

/// All uses of a definition count together; one that has a start of its own takes it when it first comes.
int32_t ListLabels::Count(uint16_t ilfo, const UsedLevel& used) {
  const unsigned level = used.number;
  Counts& counts = counts_[static_cast<size_t>(lists_.DefinitionOf(ilfo))];
  uint16_t& startsTaken = startsTaken_[ilfo - 1u];
  const uint16_t bit = bitOf(level);
  const bool isStarted = (counts.started & bit) != 0;
  const bool takesStart = used.hasOwnStart && (startsTaken & bit) == 0;
  if (counts.started == 0 || takesStart) seen_.push_back(ilfo);
  if (takesStart) startsTaken |= bit;
  counts.started |= bit;
  int32_t& number = counts.numbers[level];
  number = !isStarted || takesStart ? used.start : static_cast<int32_t>(static_cast<uint32_t>(number) + 1);
  if (counts.started >> (level + 1) != 0) EndDeeperLevels(ilfo, level, counts);
  return number;
}

void ListLabels::EndDeeperLevels(uint16_t ilfo, unsigned level, Counts& counts) const {
  for (unsigned deeper = level + 1; deeper < kLevelsOfList; ++deeper) {
    if ((counts.started & bitOf(deeper)) == 0) continue;
    const UsedLevel used = lists_.Level(ilfo, deeper);
    if (!used.level || level < used.level->restartLimit) {
      counts.started &= static_cast<uint16_t>(~bitOf(deeper));
    }
  }
}

/// Characters 0 to 8 of a level's text stand for the number of that level. Levels below do not show.
void ListLabels::MakeText(uint16_t ilfo, const UsedLevel& used, uint16_t font, uint16_t language) {
  // Word itself has no more than 31; each paragraph of the level writes them.
  constexpr size_t kMostCharacters = 255;
  text_.clear();
  const ListLevel& level = *used.level;
  const size_t length = std::min(level.text.size() / 2, kMostCharacters);
  for (size_t i = 0; i < length && text_.size() < kMostCharacters; ++i) {
    const auto c = static_cast<char16_t>(level.text.u16(2 * i));
    if (c < kLevelsOfList) {
      if (c <= used.number) AppendNumberOf(ilfo, c, level, language);
    } else {
      AppendSign(c, level.nfc == kBulletNumbers, font);
    }
  }
}

/// A level that had no paragraph yet shows its start.
void ListLabels::AppendNumberOf(uint16_t ilfo, unsigned level, const ListLevel& shownIn, uint16_t language) {
  const UsedLevel used = lists_.Level(ilfo, level);
  if (!used.level) return;
  const Counts& counts = counts_[static_cast<size_t>(lists_.DefinitionOf(ilfo))];
  const int32_t number = (counts.started & bitOf(level)) != 0 ? counts.numbers[level] : used.start;
  uint8_t nfc = used.level->nfc;
  const bool isNumber = nfc != kBulletNumbers && nfc != kNoNumbers;
  if (shownIn.isLegal && isNumber && nfc != kLeadingZeroNumbers) nfc = kArabicNumbers;
  appendNumber(number, nfc, language, text_);
}

void ListLabels::AppendSign(char16_t sign, bool isBullet, uint16_t font) {
  const bool isPrivate = sign >= 0xF020 && sign <= 0xF0FF;
  if (!isPrivate && !isBullet) {
    text_ += sign;
    return;
  }
  SymbolFont symbols = fonts_.Symbols(font);
  // Signs that no font of signs is told for are those of Symbol.
  if (isPrivate && symbols == SymbolFont::kNone && fonts_.CharacterSet(font) != kSymbolCharacterSet) {
    symbols = SymbolFont::kSymbol;
  }
  appendSymbol(symbols, sign, text_);
}

}  // namespace pagerex

#include "wordreader/list_definitions.h"

#include <algorithm>

namespace pagerex {
namespace {

constexpr size_t kListSize = 28;   // LSTF
constexpr size_t kLevelSize = 28;  // LVLF
constexpr size_t kUseSize = 16;    // LFO
constexpr size_t kOverrideSize = 8;

/// Cuts `size` bytes off the front; empty, with nothing left, if they are not all there.
ByteView take(ByteView& left, size_t size) {
  if (!left.contains(0, size)) {
    left = {};
    return {};
  }
  const ByteView taken = left.part(0, size);
  left = left.part(size);
  return taken;
}

/// The number of LVLF.iStartAt and LFOLVL.iStartAt, which is below 32768.
int32_t startOf(ByteView bytes) {
  const int32_t start = bytes.i32(0);
  return start >= 0 && start <= 0x7FFF ? start : bytes.u16(0) & 0x7FFF;
}

}  // namespace

void ListDefinitions::Read(ByteView plfLst, ByteView behindLst, ByteView plfLfo, Warnings* warnings) {
  *this = {};
  const bool listsAreWhole = ReadLists(plfLst, behindLst);
  std::stable_sort(listsById_.begin(), listsById_.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  const bool usesAreWhole = ReadUses(plfLfo);
  if (!listsAreWhole) warn(warnings, WarningCode::kTableDamaged, "list definitions");
  if (!usesAreWhole) warn(warnings, WarningCode::kTableDamaged, "list overrides");
}

/// The levels of all lists lie behind the records, in the order of these. Some writers count them to the
/// table.
bool ListDefinitions::ReadLists(ByteView plfLst, ByteView behindLst) {
  if (plfLst.empty()) return true;
  const size_t count = plfLst.u16(0);
  const ByteView behindRecords = plfLst.part(2 + count * kListSize);
  if (behindRecords.size() >= kLevelSize) behindLst = behindRecords;
  ByteView records = plfLst.part(2);
  for (size_t i = 0; i < count; ++i) {
    const ByteView record = take(records, kListSize);
    if (record.empty()) return false;
    const bool isSimple = (record.u8(26) & 1) != 0;
    const auto first = static_cast<uint32_t>(levels_.size());
    const unsigned levelCount = isSimple ? 1 : kLevelsOfList;
    bool isWhole = true;
    for (unsigned level = 0; level < levelCount && isWhole; ++level) isWhole = ReadLevel(behindLst);
    const List list{record.i32(0), first, static_cast<uint8_t>(levels_.size() - first), isSimple,
                    record.part(8, size_t{2} * kLevelsOfList)};
    listsById_.emplace_back(list.lsid, static_cast<uint32_t>(lists_.size()));
    lists_.push_back(list);
    if (!isWhole) return false;
  }
  return true;
}

bool ListDefinitions::ReadLevel(ByteView& left) {
  const ByteView record = take(left, kLevelSize);
  if (record.empty()) return false;
  ListLevel level;
  level.start = startOf(record);
  level.nfc = record.u8(4);
  const uint8_t flags = record.u8(5);
  level.alignment = flags & 3;
  level.isLegal = (flags & 4) != 0;
  const bool hasRestartLimit = (flags & 8) != 0;
  level.restartLimit = hasRestartLimit ? record.u8(26) : uint8_t{kLevelsOfList};
  level.placeholders = record.part(6, kLevelsOfList);
  level.follow = record.u8(15);
  level.papx = take(left, record.u8(25));
  level.chpx = take(left, record.u8(24));
  if (left.size() < 2) return false;
  const size_t characters = left.u16(0);
  left = left.part(2);
  if (!left.contains(0, 2 * characters)) return false;
  level.text = take(left, 2 * characters);
  levels_.push_back(level);
  return true;
}

bool ListDefinitions::ReadUses(ByteView plfLfo) {
  if (plfLfo.empty()) return true;
  const size_t told = plfLfo.u32(0);
  const size_t fits = (plfLfo.size() - std::min<size_t>(plfLfo.size(), 4)) / kUseSize;
  const size_t count = std::min({told, fits, size_t{0xFFFF}});
  const ByteView records = plfLfo.part(4, count * kUseSize);
  ByteView overrides = plfLfo.part(4 + records.size());
  uses_.reserve(count);
  bool isWhole = count == told;
  for (size_t i = 0; i < count; ++i) {
    const ByteView record = records.part(i * kUseSize, kUseSize);
    Use use{ListWithId(record.i32(0)), static_cast<uint32_t>(overrides_.size()), 0};
    isWhole = isWhole && ReadOverrides(overrides, record.u8(12), use);
    uses_.push_back(use);
  }
  return isWhole;
}

/// Of two overrides of one level the first counts.
bool ListDefinitions::ReadOverrides(ByteView& left, unsigned count, Use& use) {
  take(left, 4);
  unsigned seen = 0;
  for (unsigned i = 0; i < count; ++i) {
    const ByteView record = take(left, kOverrideSize);
    if (record.empty()) return false;
    const uint8_t flags = record.u8(4);
    Override entry{static_cast<uint8_t>(flags & 0x0F), (flags & 0x10) != 0, startOf(record), kNone};
    if ((flags & 0x20) != 0) {
      if (!ReadLevel(left)) return false;
      entry.format = static_cast<uint32_t>(levels_.size() - 1);
      entry.start = levels_.back().start;
    }
    if (entry.level >= kLevelsOfList || (seen >> entry.level & 1) != 0) continue;
    seen |= 1u << entry.level;
    overrides_.push_back(entry);
    ++use.overrideCount;
  }
  return true;
}

int32_t ListDefinitions::ListWithId(int32_t lsid) const {
  const auto found = std::lower_bound(listsById_.begin(), listsById_.end(), lsid,
                                      [](const auto& entry, int32_t id) { return entry.first < id; });
  return found != listsById_.end() && found->first == lsid ? static_cast<int32_t>(found->second) : -1;
}

UsedLevel ListDefinitions::Level(uint16_t ilfo, unsigned level) const {
  const int32_t index = DefinitionOf(ilfo);
  if (index < 0 || level >= kLevelsOfList) return {};
  const List& list = lists_[static_cast<size_t>(index)];
  const unsigned own = list.isSimple ? 0 : level;
  if (own >= list.levelCount) return {};
  const ListLevel* const defined = &levels_[list.firstLevel + own];
  const Use& use = uses_[ilfo - 1u];
  UsedLevel used{defined, defined->start, false, static_cast<uint8_t>(own)};
  for (uint32_t i = 0; i < use.overrideCount; ++i) {
    const Override& entry = overrides_[use.firstOverride + i];
    if (entry.level != own) continue;
    if (entry.format != kNone) used.level = &levels_[entry.format];
    used.hasOwnStart = entry.hasStart;
    if (entry.hasStart) used.start = entry.start;
    break;
  }
  return used;
}

uint16_t ListDefinitions::StyleOfLevel(uint16_t ilfo, unsigned level) const {
  const int32_t index = DefinitionOf(ilfo);
  if (index < 0 || level >= kLevelsOfList) return kNoStyle;
  return lists_[static_cast<size_t>(index)].styles.u16(size_t{2} * level) & kNoStyle;
}

int ListDefinitions::LevelOfStyle(uint16_t ilfo, uint16_t istd) const {
  if (istd == kNoStyle) return -1;
  for (unsigned level = 0; level < kLevelsOfList; ++level) {
    if (StyleOfLevel(ilfo, level) == istd) return static_cast<int>(level);
  }
  return -1;
}

}  // namespace pagerex

#include "flow/section_list.h"

#include <cstring>

#include "flow/section_sprms.h"

namespace pagerex {
namespace {

/// In front of the headers of the sections stand the lines above notes.
constexpr uint32_t kFirstSlot = 6;

}  // namespace

void SectionList::Read(WordFile& file) {
  constexpr uint32_t kWindow = 1 << 16;
  file.ReadText(text_, kWindow);
  sections_ = PositionTable(file.Table(mso_word::FCLCB_SECTIONS), sizeof(mso_word::SED));
  headers_ = PositionTable(file.Table(mso_word::FCLCB_HEADER_TEXT), 0);
}

SectionProperties SectionList::Properties(uint32_t section) {
  constexpr size_t kPlace = 2;
  SectionProperties properties;
  const uint32_t offset = sections_.Record(section).u32(kPlace);
  if (section >= sections_.Count() || offset == UINT32_MAX) return properties;
  const uint16_t length = text_.At(offset, sizeof(uint16_t)).u16(0);
  const ByteView sprms = length > 0 ? text_.At(offset, length + uint32_t{sizeof(uint16_t)}) : ByteView();
  applySectionSprms(sprms.part(sizeof(uint16_t)), properties);
  return properties;
}

KDWRange SectionList::Header(uint32_t section, unsigned slot) const {
  const uint64_t index = kFirstSlot + uint64_t{section} * kSlots + slot;
  return index < headers_.Count() ? headers_.Range(static_cast<uint32_t>(index)) : KDWRange{};
}

HeaderFacts SectionList::FactsOf(unsigned slot) {
  static constexpr HeaderFacts kFacts[kSlots] = {
      {HeaderKind::kEven, false}, {HeaderKind::kOdd, false},   {HeaderKind::kEven, true},
      {HeaderKind::kOdd, true},   {HeaderKind::kFirst, false}, {HeaderKind::kFirst, true},
  };
  return kFacts[slot];
}

void SectionList::FindHeaders(uint32_t section, SectionFacts& facts) {
  for (unsigned slot = 0; slot < kSlots; ++slot) {
    const KDWRange range = Header(section, slot);
    const HeaderFacts header = FactsOf(slot);
    if (range.start < range.end)
      shown_[header.isFooter][static_cast<size_t>(header.kind)] = static_cast<int32_t>(section);
  }
  std::memcpy(facts.headerSections, shown_, sizeof(shown_));
}

}  // namespace pagerex

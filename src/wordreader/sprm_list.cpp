#include "wordreader/sprm_list.h"

namespace {

/// The tab operand whose length byte says 255 or more is measured by its own two counts: n deleted stops of
/// four bytes each, then m added ones of three.
uint32_t MeasureTabs(ByteView operand) {
  const uint32_t deleted = operand.u8(0);
  const uint32_t added = operand.u8(4 * deleted + 1);
  return 4 * deleted + 3 * added + 2;
}

}  // namespace

KDWOperandPlace PlaceOfOddOperand(ByteView sprm) {
  const uint16_t opcode = sprm.u16(0);
  if (opcode == 0) return {2, 0};
  if (opcode == sprm_opcode::kTDefTable10 || opcode == sprm_opcode::kTDefTable) {
    const uint32_t sizeAndOne = sprm.u16(2);
    return {4, sizeAndOne > 0 ? sizeAndOne - 1 : 0};
  }
  const uint32_t size = sprm.u8(2);
  if (opcode == sprm_opcode::kPChgTabs && size == 255) return {3, MeasureTabs(sprm.part(3))};
  return {3, size};
}

ByteView GetSprmArgument(ByteView sprm, uint32_t* declaredSize) {
  const KDWOperandPlace place = PlaceOfOperand(sprm);
  *declaredSize = place.size;
  return sprm.part(place.offset, place.size);
}

Status KDWSprmList::FindSprm(uint16_t opcode, KDWSprm* sprm) const {
  Enumerator sprms(*this);
  KDWSprm candidate;
  while (sprms.Next(&candidate) == Status::kOk) {
    if (candidate.GetOpcode() != opcode) continue;
    if (sprm) *sprm = candidate;
    return Status::kOk;
  }
  return Status::kFailure;
}

uint16_t KDWSprmList::GetCharIstd() const {
  KDWSprm sprm;
  return FindSprm(sprm_opcode::kCIstd, &sprm) == Status::kOk ? sprm.GetArgument().u16(0)
                                                             : mso_word::kNoCharacterStyle;
}

Status KEnumSprmList::Next(KSprm& sprm) {
  if (left_.size() < 2) return Status::kNothing;
  const KDWOperandPlace place = PlaceOfOperand(left_);
  const bool whole = left_.contains(place.offset, place.size);
  sprm = {left_.u16(0), static_cast<uint16_t>(place.size), left_.part(place.offset, place.size)};
  left_ = left_.part(place.end());
  return whole ? Status::kOk : Status::kMalformed;
}

uint32_t KSprm::GetFixOprand() const {
  switch (operandSize) {
    case 1:
      return operand.u8(0);
    case 2:
      return operand.u16(0);
    case 4:
      return operand.u32(0);
    default:
      return operand.u16(0) | uint32_t{operand.u8(2)} << 16;
  }
}

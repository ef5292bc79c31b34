#include "wordreader/sprm_list.h"

namespace {

constexpr uint16_t kSprmCIstd = 0x4A30;
constexpr uint16_t kSprmPChgTabs = 0xC615;
constexpr uint16_t kSprmTDefTable10 = 0xD606;
constexpr uint16_t kSprmTDefTable = 0xD608;

/// Where the operand of a sprm stands, as the sprm declares it.
struct OperandPlace {
  uint32_t offset;  ///< bytes from the start of the sprm
  uint32_t size;

  uint32_t end() const { return offset + size; }
};

/// The tab operand whose length byte says 255 or more is measured by its own two counts: n deleted stops of
/// four bytes each, then m added ones of three.
uint32_t MeasureTabs(ByteView operand) {
  const uint32_t deleted = operand.u8(0);
  const uint32_t added = operand.u8(4 * deleted + 1);
  return 4 * deleted + 3 * added + 2;
}

OperandPlace PlaceOfOperand(ByteView sprm) {
  static constexpr uint8_t kVariable = 0;
  static constexpr uint8_t OpLen[8] = {1, 1, 2, 4, 2, 2, kVariable, 3};

  const uint16_t opcode = sprm.u16(0);
  const uint8_t fixed = OpLen[opcode >> 13];
  if (opcode == 0) return {2, 0};
  if (fixed != kVariable) return {2, fixed};
  if (opcode == kSprmTDefTable10 || opcode == kSprmTDefTable) {
    const uint32_t sizeAndOne = sprm.u16(2);
    return {4, sizeAndOne > 0 ? sizeAndOne - 1 : 0};
  }
  const uint32_t size = sprm.u8(2);
  if (opcode == kSprmPChgTabs && size == 255) return {3, MeasureTabs(sprm.part(3))};
  return {3, size};
}

}  // namespace

ByteView GetSprmArgument(ByteView sprm, uint32_t* declaredSize) {
  const OperandPlace place = PlaceOfOperand(sprm);
  *declaredSize = place.size;
  return sprm.part(place.offset, place.size);
}

Status KDWSprmList::Enumerator::Next(KDWSprm* sprm) {
  if (left_.size() < 2) return Status::kFailure;
  const OperandPlace place = PlaceOfOperand(left_);
  *sprm = KDWSprm(left_.u16(0), left_.part(place.offset, place.size), place.end());
  left_ = left_.part(place.end());
  return Status::kOk;
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
  return FindSprm(kSprmCIstd, &sprm) == Status::kOk ? sprm.GetArgument().u16(0) : mso_word::kNoCharacterStyle;
}

Status KEnumSprmList::Next(KSprm& sprm) {
  if (left_.size() < 2) return Status::kNothing;
  const OperandPlace place = PlaceOfOperand(left_);
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

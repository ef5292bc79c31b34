#pragma once

#include <cstdint>
#include <cstring>

#include "base/byte_view.h"
#include "base/status.h"
#include "wordreader/mso_word.h"
#include "wordreader/sprm_opcodes.h"

/// Where the operand of a sprm stands, as the sprm declares it: it may run past the bytes.
struct KDWOperandPlace {
  uint32_t offset;  ///< bytes from the start of the sprm
  uint32_t size;

  uint32_t end() const { return offset + size; }
};

/// The place for an opcode of 0, and for those of variable length that are measured in a way of their own.
KDWOperandPlace PlaceOfOddOperand(ByteView sprm);

/// The place by the top three bits of the opcode, for most sprms; the length of others stands in front of the
/// operand.
inline KDWOperandPlace PlaceOfOperand(ByteView sprm) {
  constexpr uint8_t kVariable = 0;
  constexpr uint8_t OpLen[8] = {1, 1, 2, 4, 2, 2, kVariable, 3};
  const uint16_t opcode = sprm.u16(0);
  const uint8_t fixed = OpLen[opcode >> 13];
  if (fixed != kVariable && opcode != 0) return {2, fixed};
  const bool isOdd = opcode == 0 || opcode == sprm_opcode::kPChgTabs || opcode == sprm_opcode::kTDefTable10 ||
                     opcode == sprm_opcode::kTDefTable;
  return isOdd ? PlaceOfOddOperand(sprm) : KDWOperandPlace{3, sprm.u8(2)};
}

/// Size of the operand of the sprm at the start of `sprm`, and where it begins. The operand may run past the
/// bytes: what is returned is cut to them.
ByteView GetSprmArgument(ByteView sprm, uint32_t* declaredSize);

/// One sprm of a list: its opcode and operand, in place. The operand is cut to the bytes of the list.
class KDWSprm {
 public:
  KDWSprm() = default;
  KDWSprm(uint16_t opcode, ByteView operand, uint32_t size)
      : operand_(operand), size_(size), opcode_(opcode) {}

  uint16_t GetOpcode() const { return opcode_; }
  /// Bytes of the whole sprm as it declares itself.
  uint32_t GetSize() const { return size_; }
  ByteView GetArgument() const { return operand_; }
  /// Copies the operand over `*value`, as many bytes as both have; the rest stays.
  template <class T>
  void GetSprmValue(T* value) const {
    const size_t size = operand_.size() < sizeof(T) ? operand_.size() : sizeof(T);
    if (size > 0) std::memcpy(value, operand_.data(), size);
  }

 private:
  ByteView operand_;
  uint32_t size_ = 0;
  uint16_t opcode_ = 0;
};

/// A list of sprms (grpprl), not owned, with the style index that stands in front of a paragraph's list.
class KDWSprmList {
 public:
  KDWSprmList() = default;
  explicit KDWSprmList(ByteView sprms) : sprms_(sprms) {}

  void Assign(ByteView sprms) { *this = KDWSprmList(sprms); }
  /// A run's properties: the bare list.
  void AssignChpx(ByteView chpx) { Assign(chpx); }
  /// A paragraph's properties: a 16-bit style index, then the list.
  void AssignPapx(ByteView papx) {
    sprms_ = papx.part(2);
    istd_ = papx.u16(0);
  }

  ByteView bytes() const { return sprms_; }
  /// Value of the first sprmCIstd, or 4095.
  uint16_t GetCharIstd() const;
  /// The style index in front of a paragraph's list.
  uint16_t GetParaIstd() const { return istd_; }
  /// kOk and the first sprm with that opcode, else kFailure. `sprm` may be null.
  Status FindSprm(uint16_t opcode, KDWSprm* sprm) const;

  /// Walks the list. A sprm that runs past the end is still delivered, with its operand cut.
  class Enumerator {
   public:
    explicit Enumerator(const KDWSprmList& list) : left_(list.bytes()) {}
    /// kFailure when fewer than two bytes are left.
    Status Next(KDWSprm* sprm) {
      if (left_.size() < 2) return Status::kFailure;
      const KDWOperandPlace place = PlaceOfOperand(left_);
      const uint8_t* const bytes = left_.data();
      if (place.end() <= left_.size()) {
        *sprm = KDWSprm(left_.u16(0), ByteView(bytes + place.offset, place.size), place.end());
        left_ = ByteView(bytes + place.end(), left_.size() - place.end());
      } else {
        *sprm = KDWSprm(left_.u16(0), left_.part(place.offset), place.end());
        left_ = {};
      }
      return Status::kOk;
    }

   private:
    ByteView left_;
  };

 private:
  ByteView sprms_;
  uint16_t istd_ = mso_word::kNoCharacterStyle;
};

/// A sprm as `KEnumSprmList` delivers it.
struct KSprm {
  uint16_t opcode = 0;
  uint16_t operandSize = 0;  ///< as declared
  ByteView operand;          ///< cut to the list

  /// True unless the operand's length stands in front of it.
  bool IsFixSprm() const { return opcode >> 13 != 6; }
  uint32_t GetSprmLen() const { return operandSize + (IsFixSprm() ? 2u : 3u); }
  /// The operand of 1, 2 or 4 bytes; any other length gives its first three.
  uint32_t GetFixOprand() const;
};

/// The other walk over a sprm list, which tells a list that ends inside a sprm.
class KEnumSprmList {
 public:
  void Assign(ByteView sprms) { left_ = sprms; }
  /// kNothing when fewer than two bytes are left; kMalformed if the sprm runs past the end, with `sprm`
  /// filled.
  Status Next(KSprm& sprm);

 private:
  ByteView left_;
};

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "base/byte_view.h"
#include "wordreader/prop_values.h"
#include "wordreader/sprm_list.h"

/// How the operand of a sprm goes into its field.
enum class SprmRule : uint8_t {
  kToggle,    ///< a byte by the toggle rule
  kByte,      ///< the operand's first byte
  kWord,      ///< 16 bits
  kLong,      ///< 32 bits, or two adjacent fields of 16
  kBorder,    ///< BRCEX
  kBorder80,  ///< BRC
  kShading,   ///< SHDEX
  kSpecial,   ///< by a rule of its own, which the decoder knows by the opcode
};

/// A sprm, the field of a decoded record that it sets, and the field's presence bit.
struct SprmRow {
  uint16_t opcode;
  uint16_t offset;  ///< of the field in the record
  uint16_t size;    ///< of the field
  SprmRule rule;
  PropMask presence;
};

/// Offset and size of a field, for a row of a sprm table.
#define SPRM_FIELD(record, field) offsetof(record, field), sizeof(record::field)

/// Offset and size of adjacent fields that one operand fills.
#define SPRM_FIELDS(record, first, last) \
  offsetof(record, first), offsetof(record, last) + sizeof(record::last) - offsetof(record, first)

/// The part of a decoded record that the sprms fill, as bytes.
template <class Data, class Record>
auto* RecordBytes(Record* record) {
  static_assert(std::is_standard_layout_v<Data>);
  if constexpr (std::is_const_v<Record>) {
    return reinterpret_cast<const uint8_t*>(static_cast<const Data*>(record));
  } else {
    return reinterpret_cast<uint8_t*>(static_cast<Data*>(record));
  }
}

/// The sprms that a decoder knows, found by the low byte of their opcodes, which differs for all of them.
template <size_t N>
class SprmTable {
 public:
  /// Does not compile if two opcodes share a low byte or a rule does not fill its field.
  explicit consteval SprmTable(const SprmRow (&rows)[N]) {
    static_assert(N < kNone);
    indexOf_.fill(kNone);
    for (size_t i = 0; i < N; ++i) {
      uint8_t& index = indexOf_[rows[i].opcode & 0xFF];
      if (index != kNone) throw "two sprms share a low byte";
      if (SizeOf(rows[i].rule) != rows[i].size && rows[i].rule != SprmRule::kSpecial) {
        throw "a rule does not fill its field";
      }
      index = static_cast<uint8_t>(i);
      rows_[i] = rows[i];
    }
  }

  /// Null if the sprm is not in the table.
  const SprmRow* Find(uint16_t opcode) const {
    const uint8_t index = indexOf_[opcode & 0xFF];
    return index != kNone && rows_[index].opcode == opcode ? &rows_[index] : nullptr;
  }
  const SprmRow* begin() const { return rows_.data(); }
  const SprmRow* end() const { return rows_.data() + N; }

 private:
  static constexpr uint8_t kNone = 0xFF;

  static constexpr size_t SizeOf(SprmRule rule) {
    switch (rule) {
      case SprmRule::kToggle:
      case SprmRule::kByte:
        return 1;
      case SprmRule::kWord:
        return 2;
      case SprmRule::kLong:
      case SprmRule::kBorder80:
        return 4;
      case SprmRule::kBorder:
        return sizeof(mso_word::BRCEX);
      case SprmRule::kShading:
        return sizeof(mso_word::SHDEX);
      case SprmRule::kSpecial:
        break;
    }
    return 0;
  }

  std::array<SprmRow, N> rows_{};
  std::array<uint8_t, 256> indexOf_{};
};

/// Puts an operand into the field of a row whose rule is not special. `record` and `base` are the records as
/// bytes; bytes that are missing from the operand count as zeros.
inline void ApplySprm(const SprmRow& row, ByteView operand, uint8_t* record, const uint8_t* base) {
  uint8_t* field = record + row.offset;
  const auto put = [field](const auto& value) { std::memcpy(field, &value, sizeof(value)); };
  switch (row.rule) {
    case SprmRule::kToggle:
      return AssignBoolEx(*field, operand.u8(0), base[row.offset]);
    case SprmRule::kByte:
      return put(operand.u8(0));
    case SprmRule::kWord:
      return put(operand.u16(0));
    case SprmRule::kLong:
      return put(operand.u32(0));
    case SprmRule::kBorder:
      return AssignBrcEx(*reinterpret_cast<mso_word::BRCEX*>(field), operand);
    case SprmRule::kBorder80:
      return AssignBrc(*reinterpret_cast<mso_word::BRC*>(field), operand);
    case SprmRule::kShading:
      return AssignShdex(*reinterpret_cast<mso_word::SHDEX*>(field), operand);
    case SprmRule::kSpecial:
      return;
  }
}

/// Decodes a list over a record whose fields are those of Data. `special` applies the sprms whose rule is
/// special, and tells whether the row's presence bit is to be set.
template <class Data, size_t N, class Record, class Special>
void DecodeSprms(const SprmTable<N>& table, const KDWSprmList& sprms, Record* out, const Record* base,
                 const Special& special) {
  uint8_t* const record = RecordBytes<Data>(out);
  const uint8_t* const baseRecord = RecordBytes<Data>(base);
  KDWSprmList::Enumerator enumerator(sprms);
  for (KDWSprm sprm; enumerator.Next(&sprm) == Status::kOk;) {
    const SprmRow* row = table.Find(sprm.GetOpcode());
    if (!row) continue;
    if (row->rule != SprmRule::kSpecial) {
      ApplySprm(*row, sprm.GetArgument(), record, baseRecord);
    } else if (!special(row->opcode, sprm.GetArgument())) {
      continue;
    }
    out->setPresent(row->presence);
  }
}

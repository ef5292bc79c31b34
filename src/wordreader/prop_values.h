#pragma once

#include <cstdint>

#include "base/byte_view.h"
#include "wordreader/mso_word.h"

/// Place of a presence bit in a decoded record's mask: a byte and a bit value.
struct PropMask {
  uint8_t byte;
  uint8_t bit;
};

/// A border, and what no border is.
struct KDRBrc : mso_word::BRCEX {
  static constexpr mso_word::BRCEX Nil() { return {mso_word::kAutomaticColour, 0, 0, 0, 0}; }
  void put_Nil() { static_cast<mso_word::BRCEX&>(*this) = Nil(); }
};

/// A shading, and what no shading is.
struct KDRShd : mso_word::SHDEX {
  static constexpr mso_word::SHDEX Normal() {
    return {mso_word::kAutomaticColour, mso_word::kAutomaticColour, 0};
  }
  void put_Normal() { static_cast<mso_word::SHDEX&>(*this) = Normal(); }
};

/// Copies a border, a shading or an East Asian layout from a sprm's operand; bytes that are missing are zero.
void AssignBrcEx(mso_word::BRCEX& out, ByteView operand);
void AssignBrc(mso_word::BRC& out, ByteView operand);
void AssignShdex(mso_word::SHDEX& out, ByteView operand);
void AssignAsianLayout(mso_word::ASIANLAYOUT& out, ByteView operand);

/// The toggle rule: 128 takes the base's value, 129 its negation, any other value stands as it is.
inline void AssignBoolEx(uint8_t& field, uint8_t value, uint8_t baseField) {
  field = value == 128 ? baseField : value == 129 ? static_cast<uint8_t>(baseField == 0) : value;
}

#include "wordreader/prop_values.h"

void AssignBrcEx(mso_word::BRCEX& out, ByteView operand) {
  out = operand.copyOf<mso_word::BRCEX>(0);
}

void AssignBrc(mso_word::BRC& out, ByteView operand) {
  out = operand.copyOf<mso_word::BRC>(0);
}

void AssignShdex(mso_word::SHDEX& out, ByteView operand) {
  out = operand.copyOf<mso_word::SHDEX>(0);
}

void AssignAsianLayout(mso_word::ASIANLAYOUT& out, ByteView operand) {
  out = {operand.u8(0), operand.u8(1), {}};
}

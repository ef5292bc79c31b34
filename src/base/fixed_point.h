#pragma once

/// A 16.16 fixed-point value of a drawing property as a float. The fraction is divided by 65535, not 65536,
/// so that 0x8000 gives 0.50000763: the output has always been made so.
constexpr float FixNumConv(int value) {
  return static_cast<float>(static_cast<float>(value >> 16) + static_cast<float>(value & 0xFFFF) / 65535.0);
}

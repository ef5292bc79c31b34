#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/byte_view.h"

namespace pagerex {

/// Bytes as Base64, which come in parts.
class Base64 {
 public:
  /// Appends the digits of whole groups; what is left waits for the next part.
  void Append(ByteView part, std::string& out) {
    for (size_t i = 0; i < part.size(); ++i) {
      bits_ = bits_ << 8 | part.data()[i];
      if (++count_ == 3) PutGroup(out, 4);
    }
  }
  void Finish(std::string& out) {
    const size_t digits = count_ + 1;
    if (count_ == 0) return;
    for (; count_ < 3; ++count_) bits_ <<= 8;
    PutGroup(out, digits);
    out.append(4 - digits, '=');
  }

 private:
  void PutGroup(std::string& out, size_t digits) {
    constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (size_t i = 0; i < digits; ++i) out += kDigits[bits_ >> (18 - 6 * i) & 63];
    bits_ = count_ = 0;
  }

  uint32_t bits_ = 0;
  size_t count_ = 0;  ///< bytes in them
};

}  // namespace pagerex

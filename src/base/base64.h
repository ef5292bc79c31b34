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
  void Append(ByteView part, std::string& out);
  /// The digits of what waits.
  void Finish(std::string& out);

 private:
  uint8_t waiting_[3] = {};
  size_t count_ = 0;  ///< bytes that wait: fewer than a group
};

}  // namespace pagerex

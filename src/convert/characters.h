#pragma once

#include "base/byte_view.h"

namespace pagerex {

/// The characters of a text file behind its byte order mark, in place: bytes, or the 16-bit units of UTF-16,
/// which is also known without a mark where it begins with "<". Outside the text all characters are 0.
class Characters {
 public:
  explicit Characters(ByteView file);

  bool isWide() const { return wide_; }
  size_t size() const { return wide_ ? text_.size() / 2 : text_.size(); }
  uint16_t at(size_t index) const;

 private:
  ByteView text_;
  bool wide_ = false;
  bool bigEndian_ = false;
};

}  // namespace pagerex

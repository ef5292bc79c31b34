#pragma once

#include <cstdint>
#include <string>

#include "base/byte_view.h"

namespace pagerex {

/// Reads text of one code page, by its number as Windows counts them. One that is not known is read as 1252.
class CodePageText {
 public:
  static constexpr uint16_t kUtf16 = 1200;

  explicit CodePageText(uint16_t codePage);
  CodePageText(const CodePageText&) = delete;
  CodePageText& operator=(const CodePageText&) = delete;
  ~CodePageText();

  bool isUtf16() const { return isUtf16_; }
  /// Up to the first zero. Bytes that stand for no character are U+FFFD.
  std::u16string Read(ByteView bytes);

 private:
  bool OpenConverter();
  std::u16string Convert(ByteView bytes);

  uint16_t codePage_;
  bool isUtf16_;
  const char16_t* upper_ = nullptr;  ///< of a code page with a byte a character
  bool wasOpened_ = false;
  void* converter_ = nullptr;  ///< of the C library; null for what needs none
};

/// Little-endian units up to the first zero.
std::u16string utf16Text(ByteView bytes);

}  // namespace pagerex

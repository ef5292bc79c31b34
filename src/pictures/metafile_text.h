#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/byte_view.h"
#include "base/code_page_text.h"

namespace pagerex {

/// Reads 8-bit text of records by the font's charset.
class MetafileText {
 public:
  /// Where a character took several bytes, their advances become one; `advances` is of each byte, or empty.
  std::u16string Read(ByteView bytes, uint8_t charset, std::vector<double>& advances);

 private:
  std::unique_ptr<CodePageText> reader_;  ///< of the charset before
  uint8_t charset_ = 0;
};

/// UTF-8 of a font's name, up to its NUL.
std::string fontFamily(std::u16string_view name);

}  // namespace pagerex

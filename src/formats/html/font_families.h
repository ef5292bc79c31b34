#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "flow/handler.h"

namespace pagerex {

/// Values of CSS font-family, by the fonts of a document (ftc): the name in the document, its alternate name,
/// fonts of the same measures that other machines have, and a generic family. Each is made once.
class FontFamilies {
 public:
  /// `fonts` may be null, and must stay.
  explicit FontFamilies(const ToldFonts* fonts) : fonts_(fonts) {}

  /// Valid as long as this. The generic "serif" for a font that is not there.
  std::string_view Of(uint16_t ftc);

 private:
  const ToldFonts* fonts_;
  std::map<uint16_t, std::string> families_;
};

/// UTF-8 as a quoted CSS string that nothing gets out of: neither of the quotes nor of a style element.
void appendCssString(std::string& out, std::string_view text);

}  // namespace pagerex

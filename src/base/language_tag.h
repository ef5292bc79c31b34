#pragma once

#include <cstdint>
#include <string_view>

namespace pagerex {

/// The BCP 47 tag of a language by its LCID: "de-DE" for 0x0407. Of a region that is not known, the language
/// alone; empty for 0x0400, which is none, and for languages that are not known. A constant.
std::string_view languageTag(uint16_t lcid);

}  // namespace pagerex

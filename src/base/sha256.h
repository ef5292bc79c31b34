#pragma once

#include <string>
#include <string_view>

namespace pagerex {

/// The SHA-256 of bytes (FIPS 180-4) in Base64, as content security policies name a style sheet.
std::string base64OfSha256(std::string_view bytes);

}  // namespace pagerex

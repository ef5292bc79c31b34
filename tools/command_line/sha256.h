#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace cli {

using Sha256 = std::array<uint8_t, 32>;

Sha256 sha256Of(const std::string& content);
/// Of a file from where it stands to its end; false if reading fails, with errno set.
bool sha256OfFile(int file, Sha256& hash);

/// As hexadecimal digits.
std::string spelled(const Sha256& hash);

}  // namespace cli

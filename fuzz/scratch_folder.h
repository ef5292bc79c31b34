#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

/// A folder in memory, one for the process, for the files that a conversion reads and writes.
const std::string& scratchFolder();

/// Writes the bytes to a file of that folder; the result is its path. Ends the process if that fails, since
/// nothing would be tested then.
std::string writeScratchFile(const char* name, const uint8_t* data, size_t size);

}  // namespace fuzz

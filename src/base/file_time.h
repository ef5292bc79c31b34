#pragma once

#include <cstdint>
#include <string>

namespace pagerex {

/// A point in time as FILETIME: 100 nanoseconds since 1601, UTC; 0 for none.
using FileTime = uint64_t;

/// "2004-03-01T12:00:00Z"; empty for none, and beyond the year 9999.
std::string iso8601(FileTime time);

/// Date and time as Word packs them, local and without a zone: "2004-03-01T12:00"; empty for none, and for
/// what is no date.
std::string iso8601OfDttm(uint32_t dttm);

}  // namespace pagerex

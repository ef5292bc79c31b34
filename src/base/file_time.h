#pragma once

#include <cstdint>
#include <string>

namespace pagerex {

/// A point in time as FILETIME: 100 nanoseconds since 1601, UTC; 0 for none.
using FileTime = uint64_t;

/// "2004-03-01T12:00:00Z"; empty for none, and beyond the year 9999.
std::string iso8601(FileTime time);

/// Date and time, local and without a zone; the year is 0 for none.
struct LocalTime {
  uint16_t year = 0;
  uint8_t month = 0, day = 0, hour = 0, minute = 0;
};

/// As Word packs them; none for what is no date.
LocalTime localTimeOfDttm(uint32_t dttm);

/// The same: "2004-03-01T12:00"; empty for none.
std::string iso8601OfDttm(uint32_t dttm);

}  // namespace pagerex

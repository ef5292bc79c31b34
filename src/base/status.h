#pragma once

#include <cstdint>

/// Result of an operation inside the library: a 32-bit value whose top bit marks a failure.
/// The public functions reduce these to the small results of pagerex.h.
enum class Status : uint32_t {
  kOk = 0,
  kNothing = 1,  ///< nothing done, absent, or stop quietly; not a failure
  kNotImplemented = 0x80000001,
  kOutOfMemory = 0x80000002,
  kInvalidArgument = 0x80000003,  ///< also: a writer that was never initialised
  kNoProperty = 0x80000004,       ///< key not in a property map
  kStopped = 0x80000007,          ///< stopped by the host; from the table writer: skip this paragraph
  kFailure = 0x80000008,          ///< failure or bad data
  kMalformed = 0x8000FFFF,        ///< malformed data in a file
  kStreamNotFound = 0x80030002,
  kReadFault = 0x8003001E,  ///< fewer bytes arrived than were asked for
  kCorruptCompoundFile = 0x80030109,
  kCannotCreate = 0x80092003,  ///< a file or folder could not be created
  kEncrypted = 0x8009100A,     ///< the document is encrypted
};

constexpr bool failed(Status status) {
  return (static_cast<uint32_t>(status) & 0x80000000u) != 0;
}

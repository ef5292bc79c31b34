#pragma once

#include <cstdint>

/// Requests for memory of this program, and of the library in it, that fail. The linker leads their calls of
/// malloc here, and those of zlib; operator new goes the same way. On this thread alone.
class MemoryFaults {
 public:
  enum class Way { kOne, kFromThenOn };

  /// Counts the requests from now on and lets the n-th one fail, from 1; 0 for none. One at a time.
  explicit MemoryFaults(int64_t failing = 0, Way way = Way::kOne);
  MemoryFaults(const MemoryFaults&) = delete;
  MemoryFaults& operator=(const MemoryFaults&) = delete;
  ~MemoryFaults();

  int64_t requests() const;
  bool haveFailed() const;

  /// Nothing counts or fails for as long as it stands, as in the functions of the test itself.
  class Pause {
   public:
    Pause();
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;
    ~Pause();
  };
};

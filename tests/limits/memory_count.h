#pragma once

#include <cstddef>
#include <cstdint>

/// What this program and the library in it take from the heap. The linker leads all their calls of malloc and
/// free here; operator new goes the same way.
class MemoryCount {
 public:
  /// Counts from now on. One at a time.
  MemoryCount();
  /// The most bytes that were held at one time, beyond those held at the start.
  int64_t peakBytes() const;
  /// Blocks taken since the start.
  int64_t blocks() const;

 private:
  int64_t startBytes_;
  int64_t startBlocks_;
};

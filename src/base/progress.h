#pragma once

#include <cstdint>

namespace pagerex {

/// What a conversion has written so far.
struct WrittenCounts {
  uint64_t characters = 0;  ///< of the main text, in the paragraphs that were begun
  uint64_t paragraphs = 0;  ///< the same
  uint64_t tables = 0;      ///< of the main text, those in others not counted
  uint64_t pictures = 0;    ///< files
  uint64_t pages = 0;
};

/// Hears how far the main text has come.
class ProgressListener {
 public:
  ProgressListener() = default;
  ProgressListener(const ProgressListener&) = delete;
  ProgressListener& operator=(const ProgressListener&) = delete;
  virtual ~ProgressListener() = default;

  /// The paragraph at this character position begins.
  virtual void Reached(uint32_t position) = 0;
};

}  // namespace pagerex

#pragma once

#include <chrono>
#include <string>

#include "batch.h"

namespace cli {

/// How far a run is: a line that moves, on a terminal, and the sum at its end.
class Progress {
 public:
  explicit Progress(size_t total);

  void count(Status status, bool isLeftOut);
  /// Draws the line, if it is time to.
  void show();
  /// Takes the line away, so that something else can be printed.
  void clear();

  bool anyFailed() const;
  /// "3 files in 0.01 s, 300 a second: 2 ok, 1 not_word".
  std::string summary() const;

 private:
  using Clock = std::chrono::steady_clock;

  double seconds() const { return std::chrono::duration<double>(Clock::now() - start_).count(); }
  /// Of those that were not left out.
  double perSecond() const;

  const size_t total_;
  const bool isTerminal_;
  const Clock::time_point start_ = Clock::now();
  Clock::time_point shown_;
  bool isDrawn_ = false;
  size_t ended_ = 0;
  size_t leftOut_ = 0;
  size_t counts_[kStatusCount] = {};
};

}  // namespace cli

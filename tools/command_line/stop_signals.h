#pragma once

#include <csignal>

namespace cli {

/// While it lives, SIGINT and SIGTERM are noted, and come only while a call waits with `maskOutside`.
class StopSignals {
 public:
  StopSignals();
  ~StopSignals();
  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;

  /// The first one; 0 for none.
  static int received();
  /// The signals that are held back elsewhere.
  static const sigset_t* maskOutside();
};

/// Ends the process as the signal does that it has received.
[[noreturn]] void endBy(int signal);

}  // namespace cli

#pragma once

#include <string>

#include "pagerex/convert.h"
#include "request.h"

namespace cli {

/// What one call of the library needs that reads one file and writes one.

constexpr char kStandardStream[] = "-";

/// What a path names: a file, or standard input, whose content goes to `content`. False if that cannot be
/// read, with errno set.
bool prepareInput(const std::string& path, std::string& content, pagerex_input& input);

/// Standard output as a sink of the library: one file, in pieces that are worth a call.
class StandardOutput {
 public:
  pagerex_output output();
  /// A value of errno; 0 for none.
  int error() const { return error_; }

 private:
  void* begin();
  bool write(const char* data, size_t length);
  bool flush();

  std::string buffer_;
  bool isBegun_ = false;
  int error_ = 0;
};

/// SIGINT and SIGTERM set the flag from now on: what a stop removes is removed by the library, which is to
/// end by itself for that.
void stopOnSignals();
const int* cancelFlag();
/// Ends the process if such a signal came; else `exitCode`.
int endedBySignals(int exitCode);

/// Says why a call failed; `outputError` is that of standard output. Returns the exit code.
int explain(const Request& request, const pagerex_result& result, int outputError);

}  // namespace cli

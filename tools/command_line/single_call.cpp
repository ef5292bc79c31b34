#include "single_call.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

#include "files.h"
#include "messages.h"
#include "sized.h"
#include "stop_signals.h"

namespace cli {

namespace {

int stopFlag = 0;
volatile sig_atomic_t stoppedBy = 0;

void stop(int signal) {
  stoppedBy = signal;
  pagerex_cancel(&stopFlag);
}

}  // namespace

bool prepareInput(const std::string& path, std::string& content, pagerex_input& input) {
  if (path != kStandardStream) {
    input.path = path.c_str();
    return true;
  }
  if (!readAll(STDIN_FILENO, content)) return false;
  input.data = content.data();
  input.length = content.size();
  return true;
}

pagerex_output StandardOutput::output() {
  auto functions = sized<pagerex_output>();
  functions.begin = [](void* user, const char*, const char*) {
    return static_cast<StandardOutput*>(user)->begin();
  };
  functions.write = [](void* user, void*, const void* data, size_t length) {
    return static_cast<StandardOutput*>(user)->write(static_cast<const char*>(data), length) ? 0 : 1;
  };
  functions.end = [](void* user, void*, int) { return static_cast<StandardOutput*>(user)->flush() ? 0 : 1; };
  functions.user = this;
  return functions;
}

void* StandardOutput::begin() {
  if (isBegun_) return nullptr;  // a single file was asked for
  isBegun_ = true;
  return this;
}

bool StandardOutput::write(const char* data, size_t length) {
  constexpr size_t kPiece = size_t{64} << 10;
  buffer_.append(data, length);
  return buffer_.size() < kPiece || flush();
}

bool StandardOutput::flush() {
  if (error_ == 0 && !writeAll(STDOUT_FILENO, buffer_.data(), buffer_.size())) error_ = errno;
  buffer_.clear();
  return error_ == 0;
}

void stopOnSignals() {
  for (const int signal : {SIGINT, SIGTERM}) {
    if (std::signal(signal, stop) == SIG_IGN) std::signal(signal, SIG_IGN);
  }
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

const int* cancelFlag() {
  return &stopFlag;
}

int endedBySignals(int exitCode) {
  if (stoppedBy) endBy(stoppedBy);
  return exitCode;
}

int explain(const Request& request, const pagerex_result& result, int outputError) {
  if (outputError == EPIPE) return kSomeFailed;  // whoever reads has had enough
  if (outputError) return fail(kSomeFailed, std::string("standard output: ") + std::strerror(outputError));
  const std::string& path =
      result.code == PAGEREX_RESULT_CANNOT_WRITE || result.code == PAGEREX_RESULT_REFUSED ? request.output
                                                                                          : request.files[0];
  const bool isUsage =
      result.code == PAGEREX_RESULT_INVALID_ARGUMENT || result.code == PAGEREX_RESULT_REFUSED;
  return fail(isUsage ? kUsageError : kSomeFailed, shown(path) + ": " + result.sentence);
}

}  // namespace cli

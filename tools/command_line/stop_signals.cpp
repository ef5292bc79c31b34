#include "stop_signals.h"

#include <unistd.h>

namespace cli {

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM};

volatile sig_atomic_t first = 0;
sigset_t outside;

void note(int signal) {
  if (first == 0) first = signal;
}

}  // namespace

StopSignals::StopSignals() {
  sigset_t held;
  sigemptyset(&held);
  for (const int signal : kSignals) {
    struct sigaction action = {}, before;
    sigaction(signal, nullptr, &before);
    if (before.sa_handler == SIG_IGN) continue;  // as a shell does for what runs in the background
    action.sa_handler = note;
    sigaction(signal, &action, nullptr);
    sigaddset(&held, signal);
  }
  sigprocmask(SIG_BLOCK, &held, &outside);
}

StopSignals::~StopSignals() {
  sigprocmask(SIG_SETMASK, &outside, nullptr);
}

int StopSignals::received() {
  return first;
}

const sigset_t* StopSignals::maskOutside() {
  return &outside;
}

void endBy(int signal) {
  std::signal(signal, SIG_DFL);
  raise(signal);
  _exit(128 + signal);
}

}  // namespace cli

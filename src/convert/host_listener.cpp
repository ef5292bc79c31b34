#include "convert/host_listener.h"

#include <algorithm>
#include <thread>

namespace pagerex {

HostListener::HostListener(const pagerex_options& options, RunControl& control, uint64_t length)
    : options_(options), control_(control), length_(std::max<uint64_t>(length, 1)) {
  if (!IsWanted(options)) told_ = kSteps;
}

/// The last step is told when all is written.
void HostListener::Reached(uint32_t position) {
  if (position < nextPosition_ || told_ == kSteps) return;
  Tell(static_cast<int>(std::min<uint64_t>(position * uint64_t{kSteps} / length_, kSteps - 1)));
}

void HostListener::Done() {
  if (control_.cause() == StopCause::kNone) Tell(kSteps);
}

/// Steps that have been told, or are behind what has been told, as in notes that stand elsewhere, are not.
void HostListener::Tell(int step) {
  if (step <= told_) return;
  told_ = step;
  nextPosition_ = (static_cast<uint64_t>(step + 1) * length_ + kSteps - 1) / kSteps;
  if (options_.progress) Call([&] { options_.progress(options_.user, step / double{kSteps}); });
  MayGoOn();
}

Status HostListener::PageFinished(int page, const char* name) {
  if (options_.page_finished) Call([&] { options_.page_finished(options_.user, page, name); });
  return MayGoOn() ? Status::kOk : Status::kStopped;
}

bool HostListener::MayGoOn() {
  constexpr std::chrono::milliseconds kPause(20);
  while (options_.may_go_on && control_.cause() == StopCause::kNone) {
    int answer = PAGEREX_STOP;
    Call([&] { answer = options_.may_go_on(options_.user); });
    if (answer == PAGEREX_GO_ON) break;
    if (answer != PAGEREX_WAIT) control_.Stop(StopCause::kCanceled);
    if (control_.MustStop()) break;
    std::this_thread::sleep_for(kPause);
    control_.LookAtClock();
  }
  return control_.cause() == StopCause::kNone;
}

/// A function that throws ends the conversion.
template <class Function>
void HostListener::Call(const Function& function) {
  if (control_.cause() != StopCause::kNone) return;
  try {
    function();
  } catch (...) {
    control_.Stop(StopCause::kCanceled);
  }
  control_.LookAtClock();
}

}  // namespace pagerex

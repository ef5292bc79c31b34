#pragma once

#include <chrono>
#include <cstdint>

namespace pagerex {

/// What ends a conversion before its end; the first cause stays.
enum class StopCause : uint8_t {
  kNone,
  kCanceled,  ///< by the host
  kDeadline,
  kOutOfMemory,  ///< the machine has no more
  kMemoryLimit,
  kOutputLimit,
  kCannotWrite,  ///< the output refused
  kUnreadable,   ///< the input failed
  kDamaged,      ///< the document is damaged beyond reading
};

/// Asked again and again while a document is read and written whether that is to go on. Belongs to one call
/// of the host; one thread.
class RunControl {
 public:
  using Clock = std::chrono::steady_clock;

  /// `cancel` may be null, and is set by another thread.
  void WatchFlag(const int* cancel) { cancel_ = cancel; }
  void EndAt(Clock::time_point deadline) {
    deadline_ = deadline;
    hasDeadline_ = true;
  }

  void Stop(StopCause cause) {
    if (cause_ == StopCause::kNone) cause_ = cause;
  }
  StopCause cause() const { return cause_; }

  /// Whether there is a cause. Looks at the flag each time and at the clock once in a while.
  bool MustStop() {
    if (cause_ != StopCause::kNone) return true;
    if (cancel_ && __atomic_load_n(cancel_, __ATOMIC_RELAXED) != 0) Stop(StopCause::kCanceled);
    if (hasDeadline_ && (++asked_ & kClockMask) == 0) LookAtClock();
    return cause_ != StopCause::kNone;
  }
  /// For what takes long by itself.
  void LookAtClock() {
    if (hasDeadline_ && Clock::now() >= deadline_) Stop(StopCause::kDeadline);
  }

 private:
  static constexpr uint32_t kClockMask = 0x3F;

  const int* cancel_ = nullptr;
  Clock::time_point deadline_;
  bool hasDeadline_ = false;
  uint32_t asked_ = 0;
  StopCause cause_ = StopCause::kNone;
};

}  // namespace pagerex

#pragma once

#include <chrono>

#include "python.h"

namespace pagerex::python {

/// One call into the library, made without the interpreter's lock. What is called back from it takes the lock
/// for as long as it needs it; the first exception that arises there is kept, ends the call, and is raised
/// behind it.
class Call {
 public:
  Call() = default;
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;
  ~Call();

  /// Lets go of the lock for the time of `function`.
  template <class Function>
  auto Run(const Function& function) {
    Begin();
    const auto result = function();
    End();
    return result;
  }

  /// On the thread of the call: runs `function`, which returns false with an exception set, with the lock
  /// held. False too where the call is at its end anyway.
  template <class Function>
  bool Locked(const Function& function) {
    if (!Take()) return false;
    const bool isDone = function();
    if (!isDone) Keep();
    Leave();
    return isDone;
  }

  /// Whether nothing has arisen so far. On the main thread, signals are looked at as often as a person would
  /// notice.
  bool MayGoOn();

  /// For a callback that found no memory.
  void KeepNoMemory() { isOutOfMemory_ = true; }

  /// Raises what was kept, behind the call. False if there is nothing.
  bool Raise();

 private:
  using Clock = std::chrono::steady_clock;

  void Begin();
  void End();
  bool Take();
  void Leave();
  void Keep();
  bool HasFailed() const { return type_ || isOutOfMemory_; }

  PyThreadState* thread_ = nullptr;
  PyObject* type_ = nullptr;
  PyObject* value_ = nullptr;
  PyObject* traceback_ = nullptr;
  bool isOutOfMemory_ = false;
  bool looksAtSignals_ = false;
  Clock::time_point nextLook_{};
};

/// Finds out, in the main interpreter, which thread gets the signals. False with an exception set.
bool findMainThread();

/// From now on no other thread than the main one takes the lock for a callback: the interpreter ends. Waits
/// for those that have it.
void endThreads();

}  // namespace pagerex::python

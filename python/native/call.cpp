#include "call.h"

#include <unistd.h>

#include <atomic>
#include <thread>

namespace pagerex::python {
namespace {

constexpr std::chrono::milliseconds kBetweenLooks{50};

// Of the process, as its threads and signals are.
std::atomic<unsigned long> mainThread{0};
std::atomic<bool> isEnding{false};
/// Threads, but for the main one, that have the lock in a callback or wait for it.
std::atomic<int> withLock{0};
constexpr std::chrono::seconds kMostWait{5};

bool isMainThread() {
  return PyThread_get_thread_ident() == mainThread;
}

/// Before the lock is taken. False at the end of the interpreter, where taking it would end the thread in the
/// midst of the library.
bool mayTake() {
  if (isMainThread()) return true;
  ++withLock;
  if (!isEnding) return true;
  --withLock;
  return false;
}

void hasDone() {
  if (!isMainThread()) --withLock;
}

}  // namespace

Call::~Call() {
  Py_XDECREF(type_);
  Py_XDECREF(value_);
  Py_XDECREF(traceback_);
}

void Call::Begin() {
  looksAtSignals_ = isMainThread();
  nextLook_ = Clock::now() + kBetweenLooks;
  thread_ = PyEval_SaveThread();
}

void Call::End() {
  while (!mayTake()) pause();
  PyEval_RestoreThread(thread_);
  hasDone();
}

bool Call::Take() {
  if (HasFailed() || !mayTake()) return false;
  PyEval_RestoreThread(thread_);
  return true;
}

void Call::Leave() {
  thread_ = PyEval_SaveThread();
  hasDone();
}

void Call::Keep() {
  PyErr_Fetch(&type_, &value_, &traceback_);
}

bool Call::MayGoOn() {
  if (HasFailed()) return false;
  if (!looksAtSignals_ || Clock::now() < nextLook_) return true;
  nextLook_ = Clock::now() + kBetweenLooks;
  return Locked([] { return PyErr_CheckSignals() == 0; });
}

bool Call::Raise() {
  if (type_) {
    PyErr_Restore(std::exchange(type_, nullptr), std::exchange(value_, nullptr),
                  std::exchange(traceback_, nullptr));
    return true;
  }
  if (isOutOfMemory_) PyErr_NoMemory();
  return isOutOfMemory_;
}

bool findMainThread() {
  const Ref threading(PyImport_ImportModule("threading"));
  const Ref main(threading ? PyObject_CallMethod(threading.get(), "main_thread", nullptr) : nullptr);
  const Ref ident(main ? PyObject_GetAttrString(main.get(), "ident") : nullptr);
  if (!ident) return false;
  const unsigned long number = PyLong_AsUnsignedLong(ident.get());
  if (PyErr_Occurred()) return false;
  mainThread = number;
  return true;
}

void endThreads() {
  isEnding = true;
  PyThreadState* const thread = PyEval_SaveThread();
  const auto last = std::chrono::steady_clock::now() + kMostWait;
  while (withLock > 0 && std::chrono::steady_clock::now() < last)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  PyEval_RestoreThread(thread);
}

}  // namespace pagerex::python

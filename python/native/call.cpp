#include "call.h"

#include <unistd.h>

#include <atomic>

namespace pagerex::python {
namespace {

constexpr std::chrono::milliseconds kBetweenLooks{50};

// Of the process, as its threads and signals are.
std::atomic<unsigned long> mainThread{0};
std::atomic<bool> isEnding{false};

bool isMainThread() {
  return PyThread_get_thread_ident() == mainThread;
}

/// Taking the lock would end the thread in the midst of the library.
bool mustNotTake() {
  return isEnding && !isMainThread();
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
  while (mustNotTake()) pause();
  PyEval_RestoreThread(thread_);
}

bool Call::Take() {
  if (HasFailed() || mustNotTake()) return false;
  PyEval_RestoreThread(thread_);
  return true;
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
    PyErr_Restore(std::exchange(type_, nullptr), std::exchange(value_, nullptr), std::exchange(traceback_, nullptr));
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
  unsigned long none = 0;
  mainThread.compare_exchange_strong(none, number);
  return true;
}

void endThreads() {
  isEnding = true;
}

}  // namespace pagerex::python

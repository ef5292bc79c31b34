#pragma once

// Python's C interface as every Python from 3.9 on has it, and the little that makes it safe to use.

#include <Python.h>

#include <new>
#include <utility>

#if defined(Py_LIMITED_API) && Py_LIMITED_API + 0 < 0x030b0000
// Buffers are promised from 3.11 on. 3.9 and 3.10 have the same structure and functions, and will not change
// any more.
extern "C" {
typedef struct {
  void* buf;
  PyObject* obj;
  Py_ssize_t len;
  Py_ssize_t itemsize;
  int readonly;
  int ndim;
  char* format;
  Py_ssize_t* shape;
  Py_ssize_t* strides;
  Py_ssize_t* suboffsets;
  void* internal;
} Py_buffer;
PyAPI_FUNC(int) PyObject_GetBuffer(PyObject* object, Py_buffer* view, int flags);
PyAPI_FUNC(void) PyBuffer_Release(Py_buffer* view);
}
#define PyBUF_SIMPLE 0
#endif

namespace pagerex::python {

/// Owns one reference, or none.
class Ref {
 public:
  Ref() = default;
  explicit Ref(PyObject* owned) : object_(owned) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ref& operator=(Ref&& other) noexcept {
    PyObject* const old = std::exchange(object_, std::exchange(other.object_, nullptr));
    Py_XDECREF(old);
    return *this;
  }
  Ref(const Ref&) = delete;
  Ref& operator=(const Ref&) = delete;
  ~Ref() { Py_XDECREF(object_); }

  static Ref To(PyObject* borrowed) {
    Py_XINCREF(borrowed);
    return Ref(borrowed);
  }

  PyObject* get() const { return object_; }
  PyObject* Release() { return std::exchange(object_, nullptr); }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  PyObject* object_ = nullptr;
};

/// A function's address in the slots of a type or module.
template <class Function>
void* slot(Function* function) {
  return reinterpret_cast<void*>(function);
}

/// Runs what may throw std::bad_alloc; that becomes MemoryError, and a null.
template <class Function>
PyObject* guarded(const Function& function) {
  try {
    return function();
  } catch (const std::bad_alloc&) {
    return PyErr_NoMemory();
  }
}

}  // namespace pagerex::python

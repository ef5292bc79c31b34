#include "input.h"

#include <cerrno>
#include <cstring>

namespace pagerex::python {

Input::~Input() {
  if (view_.obj) PyBuffer_Release(&view_);
}

bool Input::Take(PyObject* source) {
  input_.size = sizeof input_;
  if (PyUnicode_Check(source)) return TakePath(source);
  if (PyObject_HasAttrString(source, "read_at")) return TakeReader(source);
  if (PyObject_GetBuffer(source, &view_, PyBUF_SIMPLE) != 0) return false;
  input_.data = view_.buf ? view_.buf : "";
  input_.length = static_cast<size_t>(view_.len);
  return true;
}

bool Input::TakePath(PyObject* source) {
  PyObject* bytes = nullptr;
  if (!PyUnicode_FSConverter(source, &bytes)) return false;
  pathOrReader_ = Ref(bytes);
  input_.path = PyBytes_AsString(bytes);
  return input_.path != nullptr;
}

bool Input::TakeReader(PyObject* source) {
  pathOrReader_ = Ref::To(source);
  input_.byte_count = byteCount;
  input_.read_at = readAt;
  input_.user = this;
  return true;
}

int64_t Input::byteCount(void* user) {
  const Input& self = *static_cast<Input*>(user);
  int64_t count = -1;
  const bool isDone = self.call_ && self.call_->Locked([&] {
    const Ref result(PyObject_CallMethod(self.pathOrReader_.get(), "byte_count", nullptr));
    if (result) count = PyLong_AsLongLong(result.get());
    return !PyErr_Occurred();
  });
  errno = EIO;
  return isDone ? count : -1;
}

int64_t Input::readAt(void* user, uint64_t offset, void* buffer, size_t length) {
  const Input& self = *static_cast<Input*>(user);
  int64_t count = -1;
  const bool isDone = self.call_ && self.call_->Locked([&] {
    const Ref result(PyObject_CallMethod(self.pathOrReader_.get(), "read_at", "Kn",
                                         static_cast<unsigned long long>(offset),
                                         static_cast<Py_ssize_t>(length)));
    char* bytes = nullptr;
    Py_ssize_t size = 0;
    if (!result || PyBytes_AsStringAndSize(result.get(), &bytes, &size) != 0) return false;
    count = size < static_cast<Py_ssize_t>(length) ? size : static_cast<Py_ssize_t>(length);
    std::memcpy(buffer, bytes, static_cast<size_t>(count));
    return true;
  });
  errno = EIO;
  return isDone ? count : -1;
}

}  // namespace pagerex::python

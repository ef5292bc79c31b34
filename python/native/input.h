#pragma once

#include <string>

#include "call.h"
#include "pagerex/convert.h"

namespace pagerex::python {

/// What a document is read from: bytes in place, a path, or an object with byte_count() and read_at(offset,
/// length).
class Input {
 public:
  Input() = default;
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;
  ~Input();

  /// False with an exception set.
  bool Take(PyObject* source);

  /// For a call, during which the source may be asked.
  const pagerex_input* For(Call& call) {
    call_ = &call;
    return &input_;
  }
  void SetCall(Call* call) { call_ = call; }

 private:
  bool TakePath(PyObject* source);
  bool TakeReader(PyObject* source);
  static int64_t byteCount(void* user);
  static int64_t readAt(void* user, uint64_t offset, void* buffer, size_t length);

  pagerex_input input_{};
  Py_buffer view_{};
  Ref pathOrReader_;
  Call* call_ = nullptr;
};

}  // namespace pagerex::python

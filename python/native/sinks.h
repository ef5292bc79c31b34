#pragma once

#include <memory>
#include <string>
#include <vector>

#include "call.h"
#include "pagerex/convert.h"

namespace pagerex::python {

/// Where the files of a conversion go: the output that the library is handed, and what is told of it to
/// Python.
class Sink {
 public:
  virtual ~Sink() = default;
  /// The files, as a list of (name, media_type, content, complete). Null with an exception set.
  virtual PyObject* Files() = 0;
  virtual void PageFinished(int, const char*) {}
  const pagerex_output* output() const { return &output_; }

 protected:
  Sink() { output_.size = sizeof output_; }
  pagerex_output output_{};
};

/// By the kind of `target`: None or True for memory, bytes for a path, a pair of functions (file, page) that
/// are called with (name, media_type, content, complete) for each file that ends and with (number, name) for
/// each page that does. The file of `mainName` is a text, but with True; the others are bytes. Null with an
/// exception set.
std::unique_ptr<Sink> makeSink(Call& call, PyObject* target, const char* mainName);

}  // namespace pagerex::python

#pragma once

#include "call.h"
#include "pagerex/convert.h"

namespace pagerex::python {

/// A flag that ends a call; the Python type Cancel.
struct CancelObject {
  PyObject_HEAD int flag;
};

extern PyType_Spec cancelSpec;

/// How a call is to be made, from the tuple that pagerex/_options.py makes. Refers to the tuple.
class Settings {
 public:
  explicit Settings(Call& call) : call_(call) {}

  /// False with an exception set.
  bool Take(PyObject* tuple);

  const pagerex_options* options() const { return &options_; }
  const pagerex_limits* limits() const { return &limits_; }
  void SetPageFinished(void (*function)(void*, int, const char*), void* user);

 private:
  static int mayGoOn(void* user);
  static void progress(void* user, double done);
  static void pageFinished(void* user, int page, const char* name);

  Call& call_;
  PyObject* progress_ = nullptr;  ///< borrowed; null for none
  void (*pageFinished_)(void*, int, const char*) = nullptr;
  void* pageFinishedUser_ = nullptr;
  pagerex_options options_{};
  pagerex_limits limits_{};
};

}  // namespace pagerex::python

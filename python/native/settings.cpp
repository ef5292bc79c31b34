#include "settings.h"

#include "module.h"

namespace pagerex::python {
namespace {

PyObject* cancel(PyObject* self, PyObject*) {
  pagerex_cancel(&reinterpret_cast<CancelObject*>(self)->flag);
  Py_RETURN_NONE;
}

PyObject* isCanceled(PyObject* self, void*) {
  return PyBool_FromLong(__atomic_load_n(&reinterpret_cast<CancelObject*>(self)->flag, __ATOMIC_RELAXED));
}

PyMethodDef cancelMethods[] = {
    {"cancel", cancel, METH_NOARGS, "Ends the calls that were given this; from any thread."}, {}};
PyGetSetDef cancelAttributes[] = {{"canceled", isCanceled, nullptr, "Whether cancel() was called.", nullptr},
                                  {}};
PyType_Slot cancelSlots[] = {
    {Py_tp_doc, const_cast<char*>("Ends conversions that were given it as the option ``cancel``.")},
    {Py_tp_methods, cancelMethods},
    {Py_tp_getset, cancelAttributes},
    {Py_tp_dealloc, slot(freeObject)},
    {0, nullptr}};

}  // namespace

PyType_Spec cancelSpec = {"pagerex.Cancel", sizeof(CancelObject), 0, Py_TPFLAGS_DEFAULT, cancelSlots};

bool Settings::Take(PyObject* tuple) {
  options_.size = sizeof options_;
  limits_.size = sizeof limits_;
  long long pageSize = 0;
  unsigned long long memory = 0, inputBytes = 0, outputBytes = 0, deadline = 0;
  PyObject *cancelFlag = Py_None, *progressFunction = Py_None;
  if (!PyArg_ParseTuple(tuple, "sLiiiiiiiiiiiKKKKOO", &options_.format, &pageSize, &options_.links,
                        &options_.pictures, &options_.revisions, &options_.hidden_text, &options_.no_comments,
                        &options_.headers, &options_.front_matter, &options_.page_breaks,
                        &options_.common_mark, &options_.width, &options_.dark_scheme, &memory, &inputBytes,
                        &outputBytes, &deadline, &cancelFlag, &progressFunction))
    return false;
  options_.page_size = pageSize;
  limits_.memory = memory;
  limits_.input_bytes = inputBytes;
  limits_.output_bytes = outputBytes;
  limits_.deadline_ms = deadline;
  if (cancelFlag != Py_None) limits_.cancel = &reinterpret_cast<CancelObject*>(cancelFlag)->flag;
  if (progressFunction != Py_None) progress_ = progressFunction;
  options_.limits = &limits_;
  options_.user = this;
  options_.may_go_on = mayGoOn;
  options_.progress = progress;
  return true;
}

void Settings::SetPageFinished(void (*function)(void*, int, const char*), void* user) {
  pageFinished_ = function;
  pageFinishedUser_ = user;
  options_.page_finished = pageFinished;
}

int Settings::mayGoOn(void* user) {
  return static_cast<Settings*>(user)->call_.MayGoOn() ? PAGEREX_GO_ON : PAGEREX_STOP;
}

void Settings::progress(void* user, double done) {
  const Settings& self = *static_cast<Settings*>(user);
  if (!self.progress_) return;
  self.call_.Locked([&] {
    const Ref result(PyObject_CallFunction(self.progress_, "d", done));
    return static_cast<bool>(result);
  });
}

void Settings::pageFinished(void* user, int page, const char* name) {
  const Settings& self = *static_cast<Settings*>(user);
  self.pageFinished_(self.pageFinishedUser_, page, name);
}

}  // namespace pagerex::python

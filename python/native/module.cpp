// The module pagerex._native: the C interface as the Python part of the package takes it.

#include "module.h"

#include <cstdlib>

#include "call.h"
#include "pagerex/convert.h"

namespace pagerex::python {
namespace {

PyObject* detect(PyObject*, PyObject* source) {
  Py_buffer view{};
  if (PyObject_GetBuffer(source, &view, PyBUF_SIMPLE) != 0) return nullptr;
  PyThreadState* const thread = PyEval_SaveThread();
  const int kind = pagerex_detect(view.buf, static_cast<size_t>(view.len));
  PyEval_RestoreThread(thread);
  PyBuffer_Release(&view);
  return PyLong_FromLong(kind);
}

/// (name, sentence)
PyObject* kindTexts(PyObject*, PyObject* number) {
  const int kind = static_cast<int>(PyLong_AsLong(number));
  if (PyErr_Occurred()) return nullptr;
  return Py_BuildValue("ss", pagerex_kind_name(kind), pagerex_kind_sentence(kind));
}

PyObject* resultName(PyObject*, PyObject* number) {
  const int code = static_cast<int>(PyLong_AsLong(number));
  if (PyErr_Occurred()) return nullptr;
  return PyUnicode_FromString(pagerex_result_name(code));
}

/// (name, extension, media_type, sentence, has_page_size) of each.
PyObject* formats(PyObject*, PyObject*) {
  Ref list(PyList_New(0));
  for (int i = 0; list; ++i) {
    const pagerex_format* const format = pagerex_format_at(i);
    if (!format) break;
    const Ref entry(Py_BuildValue("ssssi", format->name, format->extension, format->media_type,
                                  format->sentence, format->has_page_size));
    if (!entry || PyList_Append(list.get(), entry.get()) != 0) return nullptr;
  }
  return list.Release();
}

PyObject* version(PyObject*, PyObject*) {
  return PyUnicode_FromString(pagerex_version());
}

/// The one that gets the signals, and whose end is that of the process.
bool isMainInterpreter() {
  return PyInterpreterState_GetID(PyInterpreterState_Get()) == 0;
}

PyObject* end(PyObject*, PyObject*) {
  if (isMainInterpreter()) endThreads();
  Py_RETURN_NONE;
}

PyMethodDef functions[] = {
    {"detect", detect, METH_O, "The number of what bytes are."},
    {"kind_texts", kindTexts, METH_O, "The name and the sentence of such a number."},
    {"result_name", resultName, METH_O, "The name of what came of a call."},
    {"formats", formats, METH_NOARGS, "What documents can be written in."},
    {"version", version, METH_NOARGS, "Of the library."},
    {"end", end, METH_NOARGS, "The main interpreter comes to its end."},
    {"open", openDocument, METH_VARARGS, "open(source, settings): (outcome, document)"},
    {"convert", convertDocument, METH_VARARGS,
     "convert(source, target, main_name, settings): (outcome, files)"},
    {"convert_picture", convertPicture, METH_VARARGS, "convert_picture(source, width, height, settings)"},
    {}};

bool makeType(PyObject* module, PyType_Spec spec, PyObject*& type, const char* shownAs = nullptr) {
  type = PyType_FromSpec(&spec);
  if (!type || !shownAs) return type;
  Py_INCREF(type);
  if (PyModule_AddObject(module, shownAs, type) == 0) return true;
  Py_DECREF(type);
  return false;
}

int fill(PyObject* module) {
  ModuleState& state = stateOf(module);
  if (!makeType(module, cancelSpec, state.cancelType, "Cancel") ||
      !makeType(module, documentSpec, state.documentType, "Document") ||
      !makeType(module, treeSpec, state.treeType, "Tree"))
    return -1;
  for (int i = 0; i < kFactsTypeCount; ++i)
    if (!makeType(module, factsSpec(static_cast<FactsType>(i)), state.factsTypes[i])) return -1;
  return !isMainInterpreter() || findMainThread() ? 0 : -1;
}

/// Does something to each type of the module.
template <class Visit>
int eachType(PyObject* module, const Visit& visit) {
  ModuleState* const state = static_cast<ModuleState*>(PyModule_GetState(module));
  if (!state) return 0;
  for (PyObject** type : {&state->cancelType, &state->documentType, &state->treeType})
    if (const int stop = visit(*type)) return stop;
  for (PyObject*& type : state->factsTypes)
    if (const int stop = visit(type)) return stop;
  return 0;
}

int traverse(PyObject* module, visitproc visit, void* argument) {
  return eachType(module, [&](PyObject* type) { return type ? visit(type, argument) : 0; });
}

int clear(PyObject* module) {
  return eachType(module, [](PyObject*& type) {
    Py_CLEAR(type);
    return 0;
  });
}

void release(void* module) {
  clear(static_cast<PyObject*>(module));
}

// An older Python refuses the slot.
constexpr int kInterpretersSlot = 3;
constexpr int kInterpretersSince = 12;

PyModuleDef_Slot plainSlots[] = {{Py_mod_exec, slot(fill)}, {0, nullptr}};
PyModuleDef_Slot slotsOfInterpreters[] = {
    {Py_mod_exec, slot(fill)},
    {kInterpretersSlot, reinterpret_cast<void*>(2)},  // each with a lock of its own
    {0, nullptr}};

PyModuleDef definition = {PyModuleDef_HEAD_INIT,
                          "_native",
                          "The library pagerex.",
                          sizeof(ModuleState),
                          functions,
                          plainSlots,
                          traverse,
                          clear,
                          release};

/// The 13 of "3.13.1 (main, ...)".
int minorVersion() {
  return std::atoi(Py_GetVersion() + 2);
}

}  // namespace

PyObject* refuseNew(PyTypeObject*, PyObject*, PyObject*) {
  PyErr_SetString(PyExc_TypeError, "only the module makes these");
  return nullptr;
}

PyObject* makeObject(PyObject* type) {
  return PyType_GenericAlloc(reinterpret_cast<PyTypeObject*>(type), 0);
}

void freeObject(PyObject* self) {
  PyTypeObject* const type = Py_TYPE(self);
  PyObject_Free(self);
  Py_DECREF(type);
}

}  // namespace pagerex::python

PyMODINIT_FUNC PyInit__native() {
  using namespace pagerex::python;
  if (minorVersion() >= kInterpretersSince) definition.m_slots = slotsOfInterpreters;
  return PyModuleDef_Init(&definition);
}

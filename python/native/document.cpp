// Calls on documents: opened ones, and conversions in one go.

#include <memory>

#include "input.h"
#include "module.h"
#include "outcome.h"
#include "settings.h"
#include "sinks.h"
#include "tree_builder.h"

namespace pagerex::python {
namespace {

struct DocumentObject {
  PyObject_HEAD PyObject* module;
  Input* input;
  pagerex_document* document;  ///< null where it could not be opened, and once it is closed
  bool isBusy;
};

DocumentObject& documentOf(PyObject* self) {
  return *reinterpret_cast<DocumentObject*>(self);
}

/// Has a document for one call. A second one, from another thread or from a callback, is refused.
class Use {
 public:
  Use(DocumentObject& object, Call& call) : object_(object) {
    if (!object.document) {
      PyErr_SetString(PyExc_ValueError, "the document is closed");
    } else if (__atomic_test_and_set(&object.isBusy, __ATOMIC_ACQUIRE)) {
      PyErr_SetString(PyExc_RuntimeError, "the document is being read by another call");
    } else {
      isUsable_ = true;
      object.input->SetCall(&call);
    }
  }
  Use(const Use&) = delete;
  Use& operator=(const Use&) = delete;
  ~Use() {
    if (!isUsable_) return;
    object_.input->SetCall(nullptr);
    __atomic_clear(&object_.isBusy, __ATOMIC_RELEASE);
  }
  explicit operator bool() const { return isUsable_; }

 private:
  DocumentObject& object_;
  bool isUsable_ = false;
};

pagerex_result emptyResult() {
  pagerex_result result;
  result.size = sizeof result;
  return result;
}

/// (outcome, second), unless something was raised on the way.
PyObject* answer(Call& call, const pagerex_result& result, Ref second) {
  if (call.Raise() || !second) return nullptr;
  PyObject* const outcome = outcomeOf(result);
  if (!outcome) return nullptr;
  return Py_BuildValue("NN", outcome, second.Release());
}

/// Writes by `write(options, output, result)`.
template <class Write>
PyObject* writeTo(Call& call, Settings& settings, PyObject* target, const char* mainName,
                  const Write& write) {
  const std::unique_ptr<Sink> sink = makeSink(call, target, mainName);
  if (!sink) return nullptr;
  if (PyTuple_Check(target)) {
    settings.SetPageFinished(
        [](void* user, int page, const char* name) { static_cast<Sink*>(user)->PageFinished(page, name); },
        sink.get());
  }
  pagerex_result result = emptyResult();
  call.Run([&] { return write(settings.options(), sink->output(), &result); });
  if (call.Raise()) return nullptr;
  return answer(call, result, Ref(sink->Files()));
}

PyObject* write(PyObject* self, PyObject* arguments) {
  return guarded([&]() -> PyObject* {
    PyObject *target = nullptr, *tuple = nullptr;
    const char* mainName = nullptr;
    Call call;
    Settings settings(call);
    if (!PyArg_ParseTuple(arguments, "OsO", &target, &mainName, &tuple) || !settings.Take(tuple))
      return nullptr;
    const Use use(documentOf(self), call);
    if (!use) return nullptr;
    return writeTo(call, settings, target, mainName,
                   [&](const auto* options, const auto* output, auto* result) {
                     return pagerex_write(documentOf(self).document, options, output, result);
                   });
  });
}

PyObject* info(PyObject* self, PyObject*) {
  Call call;
  const Use use(documentOf(self), call);
  if (!use) return nullptr;
  pagerex_document_info info{};
  info.size = sizeof info;
  const int code = call.Run([&] { return pagerex_info(documentOf(self).document, &info); });
  if (call.Raise()) return nullptr;
  PyObject* const counts = countsOf(info.counts);
  if (!counts) return nullptr;
  PyObject* const summary = summaryOf(info.summary);
  if (!summary) {
    Py_DECREF(counts);
    return nullptr;
  }
  return Py_BuildValue("iiKNN", code, static_cast<int>(info.kind),
                       static_cast<unsigned long long>(info.input_bytes), counts, summary);
}

pagerex_walk_options walkOptions(const Settings& settings) {
  pagerex_walk_options options{};
  options.size = sizeof options;
  options.revisions = settings.options()->revisions;
  options.hidden_text = settings.options()->hidden_text;
  options.limits = settings.limits();
  return options;
}

PyObject* walk(PyObject* self, PyObject* tuple) {
  return guarded([&]() -> PyObject* {
    Call call;
    Settings settings(call);
    if (!settings.Take(tuple)) return nullptr;
    const Use use(documentOf(self), call);
    if (!use) return nullptr;
    auto tree = std::make_unique<Tree>();
    TreeBuilder builder(*tree, call);
    const pagerex_walk_options options = walkOptions(settings);
    const pagerex_handler handler = TreeBuilder::handler();
    pagerex_result result = emptyResult();
    call.Run([&] { return pagerex_walk(documentOf(self).document, &options, &handler, &builder, &result); });
    if (call.Raise()) return nullptr;
    builder.Finish();
    return answer(call, result, Ref(makeTree(documentOf(self).module, std::move(tree))));
  });
}

/// Pictures from one on, as many as do not make up too much.
struct PictureReader {
  struct Read {
    uint32_t order;
    int32_t type, isDeflated;
    std::string bytes;
  };
  Call& call;
  uint32_t first;
  size_t most;
  uint32_t order = 0;
  size_t total = 0;
  std::vector<Read> pictures{};

  /// Other than 0 when enough have been read.
  int Take(const pagerex_picture& picture) {
    const uint32_t own = order++;
    if (own < first) return call.MayGoOn() ? 0 : 1;
    pagerex_picture_data data{};
    data.size = sizeof data;
    if (!picture.source || pagerex_picture_read(&picture, &data) != PAGEREX_RESULT_OK) data.length = 0;
    try {
      pictures.push_back(
          {own, data.type, data.is_deflated, {static_cast<const char*>(data.data), data.length}});
    } catch (const std::bad_alloc&) {
      call.KeepNoMemory();
    }
    total += data.length;
    return total < most && call.MayGoOn() ? 0 : 1;
  }

  static int picture(void* user, const pagerex_picture* picture) {
    return static_cast<PictureReader*>(user)->Take(*picture);
  }
  static int beginParagraph(void* user, const pagerex_paragraph* paragraph) {
    if (paragraph->label_picture) ++static_cast<PictureReader*>(user)->order;
    return 0;
  }

  PyObject* List() const {
    Ref list(PyList_New(0));
    for (size_t i = 0; list && i < pictures.size(); ++i) {
      const Read& p = pictures[i];
      const Ref entry(
          Py_BuildValue("IiiN", p.order, p.type, p.isDeflated,
                        PyBytes_FromStringAndSize(p.bytes.data(), static_cast<Py_ssize_t>(p.bytes.size()))));
      if (!entry || PyList_Append(list.get(), entry.get()) != 0) return nullptr;
    }
    return list.Release();
  }
};

PyObject* pictures(PyObject* self, PyObject* arguments) {
  return guarded([&]() -> PyObject* {
    PyObject* tuple = nullptr;
    unsigned first = 0;
    Py_ssize_t most = 0;
    Call call;
    Settings settings(call);
    if (!PyArg_ParseTuple(arguments, "InO", &first, &most, &tuple) || !settings.Take(tuple)) return nullptr;
    const Use use(documentOf(self), call);
    if (!use) return nullptr;
    PictureReader reader{call, first, static_cast<size_t>(most)};
    const pagerex_walk_options options = walkOptions(settings);
    pagerex_handler handler{};
    handler.size = sizeof handler;
    handler.begin_paragraph = PictureReader::beginParagraph;
    handler.picture = PictureReader::picture;
    pagerex_result result = emptyResult();
    call.Run([&] { return pagerex_walk(documentOf(self).document, &options, &handler, &reader, &result); });
    if (call.Raise()) return nullptr;
    return answer(call, result, Ref(reader.List()));
  });
}

void closeDocument(DocumentObject& object) {
  pagerex_close(std::exchange(object.document, nullptr));
  delete std::exchange(object.input, nullptr);
}

PyObject* close(PyObject* self, PyObject*) {
  if (__atomic_load_n(&documentOf(self).isBusy, __ATOMIC_ACQUIRE)) {
    PyErr_SetString(PyExc_RuntimeError, "the document is being read by another call");
    return nullptr;
  }
  closeDocument(documentOf(self));
  Py_RETURN_NONE;
}

void freeDocument(PyObject* self) {
  closeDocument(documentOf(self));
  Py_XDECREF(documentOf(self).module);
  freeObject(self);
}

PyMethodDef methods[] = {
    {"write", write, METH_VARARGS, "write(target, main_name, settings)"},
    {"info", info, METH_NOARGS, "(code, kind, input_bytes, counts, summary)"},
    {"walk", walk, METH_O, "walk(settings): (outcome, tree)"},
    {"pictures", pictures, METH_VARARGS, "pictures(first, most_bytes, settings)"},
    {"close", close, METH_NOARGS, "Lets go of the document and of what it is read from."},
    {}};
PyType_Slot slots[] = {{Py_tp_methods, methods},
                       {Py_tp_new, slot(refuseNew)},
                       {Py_tp_dealloc, slot(freeDocument)},
                       {0, nullptr}};

}  // namespace

PyType_Spec documentSpec = {"pagerex._native.Document", sizeof(DocumentObject), 0, Py_TPFLAGS_DEFAULT, slots};

PyObject* openDocument(PyObject* module, PyObject* arguments) {
  return guarded([&]() -> PyObject* {
    PyObject *source = nullptr, *tuple = nullptr;
    Call call;
    Settings settings(call);
    if (!PyArg_ParseTuple(arguments, "OO", &source, &tuple) || !settings.Take(tuple)) return nullptr;
    auto input = std::make_unique<Input>();
    if (!input->Take(source)) return nullptr;
    Ref made(makeObject(stateOf(module).documentType));
    if (!made) return nullptr;
    DocumentObject& object = documentOf(made.get());
    Py_INCREF(module);
    object.module = module;
    object.input = input.release();
    pagerex_result result = emptyResult();
    call.Run(
        [&] { return pagerex_open(object.input->For(call), settings.limits(), &object.document, &result); });
    object.input->SetCall(nullptr);
    return answer(call, result, std::move(made));
  });
}

PyObject* convertDocument(PyObject*, PyObject* arguments) {
  return guarded([&]() -> PyObject* {
    PyObject *source = nullptr, *target = nullptr, *tuple = nullptr;
    const char* mainName = nullptr;
    Call call;
    Settings settings(call);
    Input input;
    if (!PyArg_ParseTuple(arguments, "OOsO", &source, &target, &mainName, &tuple) || !settings.Take(tuple) ||
        !input.Take(source))
      return nullptr;
    return writeTo(call, settings, target, mainName,
                   [&](const auto* options, const auto* output, auto* result) {
                     return pagerex_convert(input.For(call), settings.limits(), options, output, result);
                   });
  });
}

PyObject* convertPicture(PyObject*, PyObject* arguments) {
  return guarded([&]() -> PyObject* {
    PyObject *source = nullptr, *tuple = nullptr;
    pagerex_picture_options options{};
    options.size = sizeof options;
    Call call;
    Settings settings(call);
    Input input;
    if (!PyArg_ParseTuple(arguments, "OddO", &source, &options.width, &options.height, &tuple) ||
        !settings.Take(tuple) || !input.Take(source))
      return nullptr;
    return writeTo(call, settings, Py_None, "picture", [&](const auto*, const auto* output, auto* result) {
      pagerex_output unnamed = *output;
      unnamed.main_name = nullptr;
      return pagerex_convert_picture(input.For(call), settings.limits(), &options, &unnamed, result);
    });
  });
}

}  // namespace pagerex::python

#include "sinks.h"

#include "outcome.h"

namespace pagerex::python {
namespace {

struct File {
  std::string name;
  std::string mediaType;
  std::string content;
  bool isComplete = false;
};

/// Collects files in memory, without the interpreter.
class MemorySink : public Sink {
 public:
  MemorySink(Call& call, const char* mainName, bool isOfBytes = false)
      : call_(call), mainName_(mainName), isOfBytes_(isOfBytes) {
    output_.main_name = mainName;
    output_.begin = begin;
    output_.write = write;
    output_.end = end;
    output_.user = this;
  }

  PyObject* Files() override {
    Ref list(PyList_New(0));
    if (!list) return nullptr;
    for (const auto& file : files_) {
      const Ref entry(Describe(*file));
      if (!entry || PyList_Append(list.get(), entry.get()) != 0) return nullptr;
    }
    return list.Release();
  }

 protected:
  virtual bool Ended(File&) { return true; }

  PyObject* Describe(const File& file) const {
    const char* const data = file.content.data();
    const size_t length = file.content.size();
    PyObject* const content = file.name == mainName_ && !isOfBytes_
                                  ? textOf(data, length)
                                  : PyBytes_FromStringAndSize(data, static_cast<Py_ssize_t>(length));
    return Py_BuildValue("NNNN", textOf(file.name.data(), file.name.size()),
                         textOf(file.mediaType.data(), file.mediaType.size()), content,
                         PyBool_FromLong(file.isComplete));
  }

  Call& call_;
  std::vector<std::unique_ptr<File>> files_;

 private:
  static void* begin(void* user, const char* name, const char* mediaType) {
    MemorySink& self = *static_cast<MemorySink*>(user);
    try {
      auto file = std::make_unique<File>();
      file->name = name;
      file->mediaType = mediaType;
      self.files_.push_back(std::move(file));
    } catch (const std::bad_alloc&) {
      self.call_.KeepNoMemory();
      return nullptr;
    }
    return self.files_.back().get();
  }

  static int write(void* user, void* file, const void* data, size_t length) {
    try {
      static_cast<File*>(file)->content.append(static_cast<const char*>(data), length);
    } catch (const std::bad_alloc&) {
      static_cast<MemorySink*>(user)->call_.KeepNoMemory();
      return 1;
    }
    return 0;
  }

  static int end(void* user, void* file, int complete) {
    File& ended = *static_cast<File*>(file);
    ended.isComplete = complete != 0;
    return static_cast<MemorySink*>(user)->Ended(ended) ? 0 : 1;
  }

  const std::string mainName_;
  const bool isOfBytes_;
};

/// Hands each file on as it ends.
class CallingSink final : public MemorySink {
 public:
  CallingSink(Call& call, PyObject* file, PyObject* page, const char* mainName)
      : MemorySink(call, mainName), file_(Ref::To(file)), page_(Ref::To(page)) {}

  void PageFinished(int page, const char* name) override {
    call_.Locked([&] {
      const Ref result(PyObject_CallFunction(page_.get(), "is", page, name));
      return static_cast<bool>(result);
    });
  }

 private:
  bool Ended(File& file) override {
    const bool isTaken = call_.Locked([&] {
      const Ref entry(Describe(file));
      const Ref result(entry ? PyObject_CallObject(file_.get(), entry.get()) : nullptr);
      return static_cast<bool>(result);
    });
    std::erase_if(files_, [&](const auto& held) { return held.get() == &file; });
    return isTaken;
  }

  const Ref file_;
  const Ref page_;
};

class PathSink final : public Sink {
 public:
  explicit PathSink(const char* path) : path_(path) { output_.path = path_.c_str(); }
  PyObject* Files() override { return PyList_New(0); }

 private:
  const std::string path_;
};

}  // namespace

std::unique_ptr<Sink> makeSink(Call& call, PyObject* target, const char* mainName) {
  if (target == Py_None) return std::make_unique<MemorySink>(call, mainName);
  if (target == Py_True) return std::make_unique<MemorySink>(call, mainName, true);
  if (PyBytes_Check(target)) return std::make_unique<PathSink>(PyBytes_AsString(target));
  PyObject *file = nullptr, *page = nullptr;
  if (!PyArg_ParseTuple(target, "OO", &file, &page)) return nullptr;
  return std::make_unique<CallingSink>(call, file, page, mainName);
}

}  // namespace pagerex::python

#include "convert/result_sink.h"

#include <exception>
#include <new>
#include <string_view>

namespace pagerex {
namespace {

struct MediaType {
  std::string_view extension;
  const char* type;
};
constexpr MediaType kMediaTypes[] = {
    {".htm", "text/html; charset=utf-8"},
    {".html", "text/html; charset=utf-8"},
    {".css", "text/css; charset=utf-8"},
    {".js", "text/javascript; charset=utf-8"},
    {".png", "image/png"},
    {".jpg", "image/jpeg"},
    {".gif", "image/gif"},
    {".bmp", "image/bmp"},
    {".dib", "image/bmp"},
    {".tif", "image/tiff"},
    {".svg", "image/svg+xml"},
    {".wmf", "image/wmf"},
    {".emf", "image/emf"},
    {".pct", "image/x-pict"},
    {".pict", "image/x-pict"},
};

}  // namespace

/// Begins when the first byte comes.
class ResultSink::File final : public SinkFile {
 public:
  File(ResultSink& sink, std::string name) : sink_(sink), name_(std::move(name)) {}
  ~File() override {
    if (file_) sink_.End(file_);
  }

  void Put(const char* data, size_t n) override {
    if (n == 0 || sink_.control_.MustStop()) return;
    if (!file_) file_ = sink_.Begin(name_);
    if (file_) sink_.Put(file_, data, n);
  }

 private:
  ResultSink& sink_;
  const std::string name_;
  void* file_ = nullptr;
};

ResultSink::ResultSink(OutputTarget& target, RunControl& control, uint64_t mostBytes,
                       const std::string& mainName, const char* mainType)
    : target_(target), control_(control), mostBytes_(mostBytes), mainName_(mainName), mainType_(mainType) {}

std::unique_ptr<SinkFile> ResultSink::Open(const char* name) {
  const auto [file, isNew] = begun_.try_emplace(name, false);
  if (file->second || control_.MustStop()) return nullptr;
  return std::make_unique<File>(*this, name);
}

void ResultSink::Finish() {
  for (const auto& [name, begun] : begun_) {
    if (begun || control_.MustStop()) continue;
    if (void* const file = Begin(name)) End(file);
  }
}

void* ResultSink::Begin(const std::string& name) {
  begun_[name] = true;
  void* file = nullptr;
  try {
    file = target_.Begin(name.c_str(), MediaTypeOf(name));
  } catch (const std::bad_alloc&) {  // files are written out by destructors too
    control_.Stop(StopCause::kOutOfMemory);
  }
  if (!file) control_.Stop(StopCause::kCannotWrite);
  if (file) ++files_;
  return file;
}

bool ResultSink::Put(void* file, const char* data, size_t n) {
  if (n > mostBytes_ - bytes_) {
    control_.Stop(StopCause::kOutputLimit);
    return false;
  }
  if (!target_.Write(file, data, n)) {
    control_.Stop(StopCause::kCannotWrite);
    return false;
  }
  bytes_ += n;
  return true;
}

/// What an exception ends is not whole, though nobody may have caught it yet.
void ResultSink::End(void* file) {
  const bool complete = control_.cause() == StopCause::kNone && std::uncaught_exceptions() == exceptions_;
  if (!target_.End(file, complete)) control_.Stop(StopCause::kCannotWrite);
}

const char* ResultSink::MediaTypeOf(const std::string& name) const {
  if (name == mainName_) return mainType_;
  for (const MediaType& row : kMediaTypes) {
    if (name.ends_with(row.extension)) return row.type;
  }
  return "application/octet-stream";
}

}  // namespace pagerex

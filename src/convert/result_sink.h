#pragma once

#include <cstdint>
#include <exception>
#include <map>
#include <memory>
#include <string>

#include "base/output_sink.h"
#include "base/run_control.h"
#include "convert/output_target.h"

namespace pagerex {

/// Hands the files of a format on to a target, and counts and bounds them. A file begins for the target with
/// its first byte, so that each name comes once; one that stays empty begins in the end. After a failure, or
/// once the conversion is to end, nothing more is handed on, and the control knows why.
class ResultSink final : public OutputSink {
 public:
  /// None is owned. `mostBytes` of all files together; `mainType` is the media type of `mainName`.
  ResultSink(OutputTarget& target, RunControl& control, uint64_t mostBytes, const std::string& mainName,
             const char* mainType);

  std::unique_ptr<SinkFile> Open(const char* name) override;
  /// Begins and ends what stayed empty. When all files are closed.
  void Finish();

  uint64_t bytes() const { return bytes_; }
  uint32_t files() const { return files_; }

 private:
  class File;

  /// Null for a failure.
  void* Begin(const std::string& name);
  bool Put(void* file, const char* data, size_t n);
  void End(void* file);
  const char* MediaTypeOf(const std::string& name) const;

  OutputTarget& target_;
  RunControl& control_;
  const uint64_t mostBytes_;
  const std::string& mainName_;
  const char* const mainType_;
  const int exceptions_ = std::uncaught_exceptions();  ///< of a host that calls in the midst of one
  std::map<std::string, bool> begun_;                  ///< by name, each that was opened
  uint64_t bytes_ = 0;
  uint32_t files_ = 0;
};

}  // namespace pagerex

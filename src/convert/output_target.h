#pragma once

#include <memory>
#include <string>

#include "base/run_control.h"
#include "convert/inputs.h"
#include "pagerex/convert.h"

namespace pagerex {

/// Where the files of a result go: a host's sink, or a path.
class OutputTarget {
 public:
  OutputTarget() = default;
  OutputTarget(const OutputTarget&) = delete;
  OutputTarget& operator=(const OutputTarget&) = delete;
  virtual ~OutputTarget() = default;

  /// A file that is handed to the two below; null for a failure.
  virtual void* Begin(const char* name, const char* mediaType) = 0;
  /// Both false for a failure. A file ends once, `complete` or not.
  virtual bool Write(void* file, const void* data, size_t length) = 0;
  virtual bool End(void* file, bool complete) = 0;
  /// Makes the result appear, when all its files have ended. False for a failure. Without it there is none at
  /// a path.
  virtual bool Commit() { return true; }
  /// A value of errno for the first failure; 0 where nobody tells.
  virtual int error() const { return 0; }
};

/// A host's functions, which have been checked. One that throws stops the conversion.
std::unique_ptr<OutputTarget> makeHostTarget(const pagerex_output& output, RunControl& control);

/// What keeps a path from being written to: kOk, or PAGEREX_RESULT_..., and a value of errno.
struct TargetRefusal {
  int code = PAGEREX_RESULT_OK;
  int error = 0;
};

/// A path in two parts. The name may be empty, which is no file.
struct TargetPath {
  std::string folder, name;
  bool isPicture = false;  ///< that is to be written there, and not a document
};
/// A link is followed: what it leads to is written to, not replaced.
TargetPath splitTargetPath(const std::string& path);

/// The main file at `path`, and the folder `folderName` beside it (empty for none). Null, and `refusal`, when
/// they must not or cannot be made.
std::unique_ptr<OutputTarget> makePathTarget(const TargetPath& path, const std::string& folderName,
                                             const InputSource& input, TargetRefusal& refusal);

}  // namespace pagerex

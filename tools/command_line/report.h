#pragma once

#include <string>

#include "batch.h"
#include "files.h"

namespace cli {

/// What is told of one file.
struct Outcome {
  Status status = Status::kUnreadable;
  std::string sentence;
  int kind = PAGEREX_KIND_UNKNOWN;
  uint64_t bytes = 0;  ///< of the file
  bool hasHash = false;
  Sha256 hash = {};
  double milliseconds = 0;
  const pagerex_result* result = nullptr;  ///< for what was written and for warnings; may be null
};

/// A line of JSON, its newline with it.
std::string reportLine(const Batch& batch, const Item& item, const Outcome& outcome);

/// A file that grows by whole lines.
class Report {
 public:
  /// Without a path, nothing is kept. Returns what is wrong, or nothing.
  std::string open(const std::string& path);
  bool append(const std::string& line);
  /// Whether everything has arrived.
  bool isWhole() const { return isWhole_; }

 private:
  Descriptor file_;
  bool isWhole_ = true;
};

/// Tells each item what the report at `path` holds of it, made under the same version and options.
void readEarlier(const std::string& path, Batch& batch);

}  // namespace cli

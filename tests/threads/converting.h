#pragma once

#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace threads_test {

/// One way to ask for a conversion: PageRex with options, or pageRex with a size of pages.
struct Way {
  const char* name;
  std::vector<std::string> options = {};
  int pageSize = 0;  ///< for pageRex
};
extern const std::vector<Way> kWays;

/// What a caller gets of a conversion, beside its files.
struct Outcome {
  int result = -2;
  int outputError = -2;            ///< of PageRexOutputError
  std::vector<std::string> pages;  ///< the file names that FinishPage was told
  int ends = 0;                    ///< how often EndTransform was called

  bool operator==(const Outcome&) const = default;
};
void PrintTo(const Outcome& outcome, std::ostream* out);

/// Converts on this thread; `onPage` is called for each page that pageRex finishes, and may convert too.
Outcome convert(const Way& way, const std::string& source, const std::string& target,
                const std::function<void(int page)>& onPage = {});

/// The sample and documents of the tests' writer: files that any number of threads read at once.
class Sources {
 public:
  Sources();
  /// And the documents of the corpus that are not large, if there is one.
  void addCorpus();
  const std::vector<std::string>& paths() const { return paths_; }

 private:
  void copy(const std::filesystem::path& original, const std::string& name);
  std::string add(const std::string& name);

  support::TempFolder folder_;
  std::vector<std::string> paths_;
};

/// A process writes each function of the script of the shapes once; only what is converted after that can be
/// compared.
void convertEachOnce(const Sources& sources);

}  // namespace threads_test

#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "support/temp_folder.h"
#include "support/word_document_writer.h"

using Arguments = std::vector<std::string>;

struct Finished {
  int exitCode = -1;
  int signal = 0;  ///< that ended it
  std::string output;
  std::string errors;
};

/// A program that runs in a folder of its own choice, by its arguments as they are, with files for its
/// streams, in a process group of its own.
class Program {
 public:
  Program(const std::string& path, const Arguments& arguments, const std::string& folder = ".",
          const std::string& input = "");

  pid_t process() const { return process_; }
  /// What it has said so far.
  std::string errors() const { return streams_.exists("err") ? streams_.read("err") : ""; }
  Finished finish();

 private:
  support::TempFolder streams_;
  pid_t process_;
};

/// The command line.
Finished pagerex(const Arguments& arguments, const std::string& folder = ".", const std::string& input = "");
/// The same, with a library that fails at files that say so: see faulty/convert_with_faults.cpp.
Finished faultyPagerex(const Arguments& arguments, const std::string& folder);

std::string documentOf(const std::string& text);

/// Lines of a report, or of --info. A line that is no JSON, or has no such field, is "?".
std::vector<std::string> linesOf(const std::string& text);
std::string field(const std::string& line, const char* name);
/// "a.doc: ok", of each line, sorted.
std::vector<std::string> statusesIn(const support::TempFolder& folder, const std::string& report = "report");

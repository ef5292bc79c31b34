#pragma once

#include <functional>
#include <string>
#include <vector>

#include "pagerex/pagerex.h"
#include "support/snapshot.h"
#include "support/temp_folder.h"
#include "support/word_document_writer.h"

using support::differences;
using support::Snapshot;
using support::snapshotOf;

/// What a caller gets of one conversion.
struct Outcome {
  int result = -2;
  int error = -2;        ///< of PageRexOutputError
  int killedBy = 0;      ///< signal that ended the child process
  bool whole = false;    ///< for tests that compare in the child
  bool skipped = false;  ///< the child could not be set up

  bool operator==(const Outcome&) const = default;
};
void PrintTo(const Outcome& outcome, std::ostream* out);

inline Outcome outcome(int result, int error = 0) {
  return {.result = result, .error = error};
}

/// PageRex.
Outcome convert(const std::string& source, const std::string& target,
                const std::vector<std::string>& options = {});
/// pageRex; `onPage` is called for each finished page.
Outcome convertPages(const std::string& source, const std::string& target, int pageSize,
                     const std::function<void(int page)>& onPage);

/// Runs `work` in a child process: limits, users and mounts that it sets end with it.
Outcome inChild(const std::function<Outcome()>& work);
/// These two are for a child, for good, and false where that is not allowed. Root becomes a user whom the
/// modes of files bind; others are that already.
bool becomeUser();
/// Seen by the child alone. Takes root, or a user namespace.
bool mountTmpfs(const std::string& folder, const std::string& options, unsigned long flags = 0);

struct Finished {
  int exitCode = -1;
  std::string output;  ///< of both streams
};
/// Runs a command of the shell.
Finished runShell(const std::string& command);

/// What a conversion to "out.htm" may make.
inline const std::vector<std::string> kOutput = {"out.htm", "out.files"};

size_t openDescriptors();

/// `count` paragraphs, each a page of 20 characters and more.
support::WordDocument longDocument(int count);
/// A heading, a note, a picture and an ellipse: every kind of file is written.
support::WordDocument richDocument();

/// A folder with a document, some files that are none of the conversion's business, and the place of its
/// output.
class Place {
 public:
  explicit Place(const support::WordDocument& document = richDocument());

  std::string path(const std::string& name = "") const { return folder_.path(name); }
  std::string source() const { return path("in.doc"); }
  std::string target() const { return path("out.htm"); }
  std::string files(const std::string& name = "") const { return path("out.files/" + name); }
  const support::TempFolder& folder() const { return folder_; }

  /// Whether all but the output is as it was when the object was made; what lies below `except` does not
  /// count.
  bool untouched(std::vector<std::string> except = {}) const;
  /// Takes what the test itself has changed for given.
  void settle() { before_ = snapshotOf(path(), kOutput); }

 private:
  support::TempFolder folder_;
  Snapshot before_;
};

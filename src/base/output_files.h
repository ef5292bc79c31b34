#pragma once

#include <cstdio>
#include <string>

#include "base/output_sink.h"

/// A folder of the output, held open: files are made through it, so that nothing that others put in the place
/// of the folder or of a file in it leads out of it.
class FilesFolder {
 public:
  FilesFolder() = default;
  FilesFolder(const FilesFolder&) = delete;
  FilesFolder& operator=(const FilesFolder&) = delete;
  ~FilesFolder() { Leave(); }

  /// Holds the folder `path`, in place of the one held so far. False, with errno set, when it cannot be
  /// opened as a folder, or is a symbolic link.
  bool Enter(const std::string& path);
  void Leave();

  /// The name in the folder that `path` tells, or null when it lies elsewhere or no folder is held.
  const char* NameOf(const char* path) const;
  /// Makes the file `name` anew. Whatever had the name before loses it and stays as it is: another name of
  /// the same file, or what a symbolic link points at.
  FILE* Create(const char* name) const;

 private:
  int folder_ = -1;
  std::string prefix_;  ///< of the paths in the folder, with the slash
};

/// The files that a conversion writes: where they may go, and the first of them that failed. Owned by the
/// conversion; each of its files holds a reference.
class OutputFiles {
 public:
  OutputFiles() = default;
  /// All files go into `sink`, which is not owned, by the names that their paths are. There are no folders
  /// then.
  explicit OutputFiles(OutputSink& sink) : sink_(&sink) {}

  /// Null where the files lie on disk.
  OutputSink* sink() const { return sink_; }

  /// Paths in `path` are reached through that folder from now on. False, with errno set, as
  /// FilesFolder::Enter.
  bool EnterFolder(const std::string& path) { return folder_.Enter(path); }

  /// Creates or truncates a file on disk (mode "wb+"). One in the folder is made anew. Null, and the failure
  /// is noted, for a null path or when it cannot be opened.
  FILE* Open(const char* path);

  /// Notes what the C library's errno says of a file that could not be opened, written to its end or closed;
  /// only the first failure is kept.
  void NoteError(int error);
  /// The failure kept: a value of errno, 0 for none.
  int FirstError() const { return firstError_; }

 private:
  OutputSink* sink_ = nullptr;
  FilesFolder folder_;
  int firstError_ = 0;
};

#include "base/output_files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

/// Only what is new: a link, or anything else of that name, is not opened.
int makeFile(int folder, const char* name) {
  return openat(folder, name, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

/// A path that did not fit its buffer is empty.
int errorOf(const char* path) {
  if (!path) return EINVAL;
  return *path ? errno : ENAMETOOLONG;
}

}  // namespace

bool FilesFolder::Enter(const std::string& path) {
  Leave();
  folder_ = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (folder_ < 0) return false;
  prefix_ = path + '/';
  return true;
}

void FilesFolder::Leave() {
  if (folder_ >= 0) close(folder_);
  folder_ = -1;
}

const char* FilesFolder::NameOf(const char* path) const {
  if (folder_ < 0 || std::strncmp(path, prefix_.c_str(), prefix_.size()) != 0) return nullptr;
  const char* const name = path + prefix_.size();
  return *name && !std::strchr(name, '/') ? name : nullptr;
}

FILE* FilesFolder::Create(const char* name) const {
  int made = makeFile(folder_, name);
  if (made < 0 && errno == EEXIST && unlinkat(folder_, name, 0) == 0) made = makeFile(folder_, name);
  if (made < 0) return nullptr;
  FILE* const file = fdopen(made, "wb+");
  if (!file) close(made);
  return file;
}

FILE* OutputFiles::Open(const char* path) {
  const char* const name = path ? folder_.NameOf(path) : nullptr;
  FILE* const file = name ? folder_.Create(name) : path ? std::fopen(path, "wb+") : nullptr;
  if (!file) NoteError(errorOf(path));
  return file;
}

void OutputFiles::NoteError(int error) {
  if (firstError_ == 0) firstError_ = error ? error : EIO;
}

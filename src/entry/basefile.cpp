#include "entry/basefile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "base/stdio_archive.h"

namespace {

struct DirCloser {
  void operator()(DIR* dir) const { closedir(dir); }
};
using Dir = std::unique_ptr<DIR, DirCloser>;

/// Opens a folder by its name within another, which is AT_FDCWD for a path. Null for anything else, symbolic
/// links included.
Dir openFolder(int parent, const char* name) {
  const int folder = openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (folder < 0) return nullptr;
  Dir dir(fdopendir(folder));
  if (!dir) close(folder);
  return dir;
}

bool isSelfOrParent(const char* name) {
  return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

bool isSymbolicLink(const char* path) {
  struct stat info;
  return lstat(path, &info) == 0 && S_ISLNK(info.st_mode);
}

bool removeFolder(int parent, const char* name);

/// Each nested folder holds a descriptor while it is emptied, so that the depth is bounded by their limit.
bool emptyFolder(DIR* dir) {
  const int folder = dirfd(dir);
  while (const dirent* entry = readdir(dir)) {
    if (isSelfOrParent(entry->d_name)) continue;
    struct stat info;
    if (fstatat(folder, entry->d_name, &info, AT_SYMLINK_NOFOLLOW) != 0) return false;
    const bool removed =
        S_ISDIR(info.st_mode) ? removeFolder(folder, entry->d_name) : unlinkat(folder, entry->d_name, 0) == 0;
    if (!removed) return false;
  }
  return true;
}

bool removeFolder(int parent, const char* name) {
  const Dir dir = openFolder(parent, name);
  return dir && emptyFolder(dir.get()) && unlinkat(parent, name, AT_REMOVEDIR) == 0;
}

/// A slash at the end would have a symbolic link followed.
std::string withoutSlashAtEnd(const char* path) {
  std::string result = path ? path : "";
  while (result.size() > 1 && result.back() == '/') result.pop_back();
  return result;
}

}  // namespace

void basefile::MakeSureDirIsRight(std::string& dir) {
  if (dir.empty() || (dir.back() != '/' && dir.back() != '\\')) dir += '/';
}

bool basefile::CreateFile(OutputFiles& files, const char* path) {
  return DsWriteArchive(files, path).good();
}

bool basefile::CreateDir(const char* path) {
  if (!path) return false;
  std::string whole = path;
  MakeSureDirIsRight(whole);
  std::string prefix;
  for (char c : whole) {
    if (c == '/' && !prefix.empty()) {
      const Dir exists(opendir(prefix.c_str()));
      const int error = errno;
      if (!exists && mkdir(prefix.c_str(), 0777) != 0) {
        if (errno == EEXIST) errno = error;  // what keeps it from being used tells more
        return false;
      }
    }
    prefix += c;
  }
  return true;
}

bool basefile::DelFilesInDir(const char* path) {
  const std::string folder = withoutSlashAtEnd(path);
  const Dir dir = openFolder(AT_FDCWD, folder.c_str());
  if (!dir && isSymbolicLink(folder.c_str())) unlink(folder.c_str());
  return dir && emptyFolder(dir.get());
}

bool basefile::DelDir(const char* path) {
  const std::string folder = withoutSlashAtEnd(path);
  if (isSymbolicLink(folder.c_str())) return unlink(folder.c_str()) == 0;
  return removeFolder(AT_FDCWD, folder.c_str());
}

int basefile::splitpath(const char* path, std::string& dir, std::string& name, std::string& ext) {
  dir.clear();
  name.clear();
  ext.clear();
  if (!path) return 1;
  const std::string whole = path;
  const size_t dot = whole.rfind('.');
  if (dot == 0) return 1;
  if (dot == std::string::npos) {
    name = ext = whole;
    return 0;
  }
  ext = whole.substr(dot + 1);
  const size_t separator = whole.find_last_of("/\\", dot);
  const size_t nameStart = separator == std::string::npos ? 0 : separator + 1;
  dir = whole.substr(0, nameStart);
  name = whole.substr(nameStart, dot - nameStart);
  return 0;
}

// A result on disk. It is made under names that begin with a dot, and takes its own in the end.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "convert/older_result.h"
#include "convert/output_target.h"
#include "convert/unique_fd.h"

namespace pagerex {
namespace {

constexpr int kMostTries = 1000;

/// ".NAME.PROCESS-NUMBER.part"; a name that is too long is shortened, since the number tells enough.
std::string temporaryName(const std::string& name, int number) {
  constexpr size_t kLongestName = 200;
  return "." + name.substr(0, kLongestName) + "." + std::to_string(getpid()) + "-" + std::to_string(number) +
         ".part";
}

/// Calls `make` with temporary names until one is new; its name, or an empty one with errno set.
template <class Make>
std::string makeTemporary(const std::string& name, const Make& make) {
  for (int number = 0; number < kMostTries; ++number) {
    std::string temporary = temporaryName(name, number);
    if (make(temporary.c_str())) return temporary;
    if (errno != EEXIST) break;
  }
  return {};
}

class PathTarget final : public OutputTarget {
 public:
  PathTarget(UniqueFd parent, const std::string& mainName, const std::string& folderName)
      : parentFolder_(std::move(parent)),
        parent_(parentFolder_.get()),
        mainName_(mainName),
        folderName_(folderName) {}
  ~PathTarget() override {
    if (!mainTemporary_.empty()) unlinkat(parent_, mainTemporary_.c_str(), 0);
    if (!folderTemporary_.empty()) removeFlatFolder(parent_, folderTemporary_.c_str());
  }

  void* Begin(const char* name, const char* mediaType) override;
  bool Write(void* file, const void* data, size_t length) override;
  bool End(void* file, bool complete) override;
  bool Commit() override;
  int error() const override { return error_; }

 private:
  /// Descriptors as the pointers that a target hands out; 0 is none.
  static void* pointerTo(int file) { return reinterpret_cast<void*>(static_cast<intptr_t>(file) + 1); }
  static int fileOf(void* pointer) { return static_cast<int>(reinterpret_cast<intptr_t>(pointer) - 1); }

  int BeginMain();
  int BeginInFolder(const char* name);
  bool MakeFolder();
  bool PutFolderInPlace();
  void TakeFolderBack();
  bool Fail() {
    if (error_ == 0) error_ = errno ? errno : EIO;
    return false;
  }

  const UniqueFd parentFolder_;  ///< the folder of the main file
  const int parent_;
  const std::string mainName_, folderName_;
  std::string mainTemporary_, folderTemporary_;
  UniqueFd folder_;
  int error_ = 0;
};

void* PathTarget::Begin(const char* name, const char*) {
  const char* const slash = std::strrchr(name, '/');
  const int file = slash ? BeginInFolder(slash + 1) : BeginMain();
  if (file >= 0) return pointerTo(file);
  Fail();
  return nullptr;
}

int PathTarget::BeginMain() {
  int file = -1;
  mainTemporary_ = makeTemporary(mainName_, [&](const char* temporary) {
    file = openat(parent_, temporary, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    return file >= 0;
  });
  return file;
}

int PathTarget::BeginInFolder(const char* name) {
  if (!folder_ && !MakeFolder()) return -1;
  return openat(folder_.get(), name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

bool PathTarget::MakeFolder() {
  folderTemporary_ = makeTemporary(
      folderName_, [&](const char* temporary) { return mkdirat(parent_, temporary, 0777) == 0; });
  if (folderTemporary_.empty()) return false;
  folder_ =
      UniqueFd(openat(parent_, folderTemporary_.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  return static_cast<bool>(folder_);
}

bool PathTarget::Write(void* file, const void* data, size_t length) {
  const char* bytes = static_cast<const char*>(data);
  while (length > 0) {
    const ssize_t count = write(fileOf(file), bytes, length);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return Fail();
    bytes += count;
    length -= static_cast<size_t>(count);
  }
  return true;
}

bool PathTarget::End(void* file, bool) {
  return close(fileOf(file)) == 0 || Fail();
}

bool PathTarget::Commit() {
  if (!folderTemporary_.empty() && !PutFolderInPlace()) return Fail();
  if (!mainTemporary_.empty() && renameat(parent_, mainTemporary_.c_str(), parent_, mainName_.c_str()) != 0) {
    Fail();
    TakeFolderBack();
    return false;
  }
  mainTemporary_.clear();
  return true;
}

/// An older folder changes places with the new one, and goes with this object.
bool PathTarget::PutFolderInPlace() {
  const char* const made = folderTemporary_.c_str();
  const char* const name = folderName_.c_str();
  if (renameat2(parent_, made, parent_, name, RENAME_NOREPLACE) == 0) {
    folderTemporary_.clear();
    return true;
  }
  if (errno == EEXIST && !mayReplaceFolder(parent_, name)) return false;
  if (errno == EEXIST && renameat2(parent_, made, parent_, name, RENAME_EXCHANGE) == 0) return true;
  // A file system without these: the old one goes first.
  if (errno != EINVAL && errno != ENOSYS && errno != EEXIST) return false;
  if (!mayReplaceFolder(parent_, name)) return false;
  removeFlatFolder(parent_, name);
  if (renameat(parent_, made, parent_, name) != 0) return false;
  folderTemporary_.clear();
  return true;
}

/// The older main file stays, so that its files come back. Where there were none, there are none.
void PathTarget::TakeFolderBack() {
  if (!folderTemporary_.empty()) {
    renameat2(parent_, folderTemporary_.c_str(), parent_, folderName_.c_str(), RENAME_EXCHANGE);
  } else if (folder_) {
    removeFlatFolder(parent_, folderName_.c_str());
  }
}

}  // namespace

TargetPath splitTargetPath(const std::string& path) {
  struct stat info;
  const bool isLink = lstat(path.c_str(), &info) == 0 && S_ISLNK(info.st_mode);
  const std::unique_ptr<char, decltype(&std::free)> real(isLink ? realpath(path.c_str(), nullptr) : nullptr,
                                                         std::free);
  if (isLink && !real && errno == ENOMEM) throw std::bad_alloc();
  const std::string place = real ? real.get() : path;
  const size_t name = place.rfind('/') + 1;
  return {name == 0 ? "." : place.substr(0, name), place.substr(name), false};
}

std::unique_ptr<OutputTarget> makePathTarget(const TargetPath& path, const std::string& folderName,
                                             const InputSource& input, TargetRefusal& refusal) {
  UniqueFd parent(open(path.folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!parent) {
    refusal = {PAGEREX_RESULT_CANNOT_WRITE, errno};
    return nullptr;
  }
  struct stat info;
  const char* const name = path.name.c_str();
  const bool isThere = fstatat(parent.get(), name, &info, 0) == 0;
  if (isThere && S_ISDIR(info.st_mode)) {
    refusal = {PAGEREX_RESULT_CANNOT_WRITE, EISDIR};
    return nullptr;
  }
  if ((isThere && input.IsFile(info.st_dev, info.st_ino)) ||
      !mayReplaceFile(parent.get(), name, path.isPicture) ||
      (!folderName.empty() && !mayReplaceFolder(parent.get(), folderName.c_str()))) {
    refusal = {PAGEREX_RESULT_REFUSED, EEXIST};
    return nullptr;
  }
  return std::make_unique<PathTarget>(std::move(parent), path.name, folderName);
}

}  // namespace pagerex

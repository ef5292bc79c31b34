#include "unfinished.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <memory>
#include <string_view>
#include <vector>

namespace cli {

namespace {

using Folder = std::unique_ptr<DIR, int (*)(DIR*)>;

Folder openAt(int parent, const char* name) {
  const int file = openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  DIR* const folder = file >= 0 ? fdopendir(file) : nullptr;
  if (!folder && file >= 0) close(file);
  return {folder, closedir};
}

std::vector<std::string> namesIn(const Folder& folder) {
  std::vector<std::string> names;
  while (const dirent* entry = folder ? readdir(folder.get()) : nullptr) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  return names;
}

/// ".NAME.PROCESS-NUMBER.part" of the process.
bool isMadeBy(const std::string& process, std::string_view name) {
  constexpr std::string_view kEnd = ".part";
  if (!name.starts_with('.') || !name.ends_with(kEnd)) return false;
  name.remove_suffix(kEnd.size());
  const size_t dash = name.rfind('-');
  if (dash == std::string_view::npos) return false;
  const bool isNumber =
      dash + 1 < name.size() && name.find_first_not_of("0123456789", dash + 1) == std::string_view::npos;
  return isNumber && name.substr(0, dash).ends_with("." + process);
}

}  // namespace

void removeUnfinished(const std::string& output, pid_t process) {
  const Folder parent = openAt(AT_FDCWD, output.substr(0, output.rfind('/') + 1).c_str());
  for (const std::string& name : namesIn(parent)) {
    if (!isMadeBy(std::to_string(process), name)) continue;
    if (unlinkat(dirfd(parent.get()), name.c_str(), 0) == 0) continue;
    const Folder folder = openAt(dirfd(parent.get()), name.c_str());
    for (const std::string& file : namesIn(folder)) unlinkat(dirfd(folder.get()), file.c_str(), 0);
    unlinkat(dirfd(parent.get()), name.c_str(), AT_REMOVEDIR);
  }
}

}  // namespace cli

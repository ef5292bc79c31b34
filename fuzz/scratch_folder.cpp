#include "scratch_folder.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace fuzz {

namespace {

[[noreturn]] void giveUp(const char* what) {
  std::perror(what);
  std::exit(1);
}

struct Folder {
  std::string path;

  Folder() {
    char name[] = "/dev/shm/pagerex-fuzz-XXXXXX";
    if (!mkdtemp(name)) giveUp(name);
    path = name;
  }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
};

}  // namespace

const std::string& scratchFolder() {
  static const Folder folder;
  return folder.path;
}

std::string writeScratchFile(const char* name, const uint8_t* data, size_t size) {
  std::string path = scratchFolder() + "/" + name;
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (!file || std::fwrite(data, 1, size, file) != size || std::fclose(file) != 0) giveUp(path.c_str());
  return path;
}

}  // namespace fuzz

#include "support/corpus.h"

#include <algorithm>
#include <cstdlib>

namespace fs = std::filesystem;

namespace support {

namespace {

fs::path corpusFolder() {
  if (const char* folder = std::getenv("PAGEREX_CORPUS")) return folder;
  for (fs::path up = fs::current_path(); up != up.parent_path(); up = up.parent_path()) {
    if (fs::is_directory(up / "shared" / "corpus")) return up / "shared" / "corpus";
  }
  return {};
}

}  // namespace

std::vector<fs::path> corpusFiles() {
  std::vector<fs::path> paths;
  const fs::path folder = corpusFolder();
  if (folder.empty()) return paths;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::vector<fs::path> corpusDocuments() {
  std::vector<fs::path> paths = corpusFiles();
  std::erase_if(paths, [](const fs::path& path) { return path.extension() != ".doc"; });
  return paths;
}

WritableCopy::WritableCopy(const fs::path& original) {
  fs::copy_file(original, path());
  fs::permissions(path(), fs::perms::owner_all);
}

}  // namespace support

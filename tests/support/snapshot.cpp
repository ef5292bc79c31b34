#include "support/snapshot.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace support {

namespace {

std::string contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string describe(const fs::directory_entry& entry) {
  if (entry.is_symlink()) return "link to " + fs::read_symlink(entry.path()).string();
  if (entry.is_directory()) return "folder";
  if (!entry.is_regular_file()) return "special";
  return "file " + std::to_string(entry.file_size()) + ": " + contentOf(entry.path());
}

}  // namespace

Snapshot snapshotOf(const std::string& folder, const std::vector<std::string>& except) {
  Snapshot snapshot;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const std::string name = entry.path().lexically_relative(folder).string();
    const auto leftOut = [&](const std::string& each) {
      return name == each || name.starts_with(each + '/');
    };
    if (std::none_of(except.begin(), except.end(), leftOut)) snapshot[name] = describe(entry);
  }
  return snapshot;
}

std::string differences(const Snapshot& got, const Snapshot& wanted) {
  std::string names;
  for (const auto& [name, what] : got) {
    const auto found = wanted.find(name);
    if (found == wanted.end()) names += "+" + name + " ";
    if (found != wanted.end() && found->second != what) names += "*" + name + " ";
  }
  for (const auto& [name, what] : wanted) {
    if (!got.contains(name)) names += "-" + name + " ";
  }
  return names;
}

}  // namespace support

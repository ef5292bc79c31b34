#pragma once

#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "support/bytes.h"

namespace support {

/// A new empty folder, removed with all it holds when the object goes.
class TempFolder {
 public:
  TempFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "pagerex-test-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
    folder_ = name;
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  std::string path() const { return folder_.string(); }
  /// The path of a file in the folder, by its name relative to it ("out.files/1.htm").
  std::string path(const std::string& name) const { return (folder_ / name).string(); }
  bool exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

  /// Writes a file, with the folders that it needs, and returns its path.
  std::string write(const std::string& name, const Bytes& content) const {
    return write(name, std::string(content.begin(), content.end()));
  }
  std::string write(const std::string& name, const std::string& content) const {
    std::filesystem::create_directories((folder_ / name).parent_path());
    std::ofstream file(folder_ / name, std::ios::binary);
    file << content;
    if (!file.flush()) throw std::runtime_error("cannot write " + name);
    return path(name);
  }

  /// The content of a file; throws if there is none, since a test would go wrong quietly on "".
  std::string read(const std::string& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + name);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  /// The names of all files in the folder and below it, relative to it, sorted.
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_)) {
      if (entry.is_regular_file()) {
        names.push_back(std::filesystem::relative(entry.path(), folder_).string());
      }
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace support

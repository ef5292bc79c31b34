#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <vector>

#include "support/temp_folder.h"
#include "walk_document.h"

namespace {

namespace fs = std::filesystem;

/// Real documents, which are no part of the project: the folder that PAGEREX_CORPUS names, or shared/corpus
/// in a folder above the one in which the tests run.
fs::path corpusFolder() {
  if (const char* named = std::getenv("PAGEREX_CORPUS")) return named;
  fs::path folder = fs::current_path();
  while (!fs::is_directory(folder / "shared/corpus") && folder.has_relative_path()) {
    folder = folder.parent_path();
  }
  return folder / "shared/corpus";
}

std::vector<fs::path> documents(const fs::path& folder) {
  std::vector<fs::path> paths;
  if (!fs::is_directory(folder)) return paths;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() == ".doc") paths.push_back(entry.path());
  }
  return paths;
}

/// True if the document could be opened and all of it could be read. A copy is opened, since the original may
/// be write-protected, and such a file does not open.
bool readsWhole(const fs::path& path) {
  const support::TempFolder folder;
  const std::string copy = folder.path("copy.doc");
  fs::copy_file(path, copy);
  fs::permissions(copy, fs::perms::owner_all);
  KDRDocument document;
  try {
    if (failed(document.OpenDocument(copy.c_str(), 0))) return false;
    DocumentWalk walk(document);
    walk.walk();
    return walk.characters() > 0;
  } catch (int) {
    return false;
  }
}

}  // namespace

TEST(Corpus, IsReadWithoutHarm) {
  const std::vector<fs::path> paths = documents(corpusFolder());
  if (paths.empty()) GTEST_SKIP() << "no corpus";
  size_t whole = 0;
  for (const fs::path& path : paths) {
    SCOPED_TRACE(path.string());
    if (readsWhole(path)) {
      ++whole;
    } else {
      std::printf("refused: %s\n", path.filename().c_str());
    }
  }
  // Most are sound documents; a few are damaged, encrypted or of another format.
  EXPECT_GT(whole * 10, paths.size() * 7);
}

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "read_everything.h"
#include "support/temp_folder.h"

using namespace drawing_test;
namespace fs = std::filesystem;

namespace {

/// A folder of real documents, where PAGEREX_CORPUS says or in "shared/corpus" beside a folder that the tests
/// run in; empty if there is none.
fs::path corpus() {
  if (const char* folder = std::getenv("PAGEREX_CORPUS")) return folder;
  for (fs::path up = fs::current_path(); up != up.parent_path(); up = up.parent_path()) {
    if (fs::is_directory(up / "shared" / "corpus")) return up / "shared" / "corpus";
  }
  return {};
}

TEST(Corpus, EveryDrawingAndPictureIsReadSafely) {
  if (corpus().empty()) GTEST_SKIP() << "no corpus";
  ReadEverything all;
  int documents = 0;
  for (const auto& entry : fs::recursive_directory_iterator(corpus())) {
    if (!entry.is_regular_file()) continue;
    // A copy, since a file without write permission does not open.
    const support::TempFolder folder;
    const fs::path copy = folder.path("copy");
    fs::copy_file(entry.path(), copy);
    fs::permissions(copy, fs::perms::owner_all);
    try {
      KDRDocument document;
      if (document.OpenDocument(copy.c_str(), 0) != Status::kOk) continue;
      ++documents;
      all.document(document);
    } catch (int) {
      // A seek outside a stream or a loop in a chain, in what is read before the drawings.
    }
  }
  RecordProperty("documents", documents);
  RecordProperty("shapes", static_cast<int>(all.shapes));
  RecordProperty("pictures", static_cast<int>(all.pictures));
  RecordProperty("blips", static_cast<int>(all.blips));
  EXPECT_GT(all.shapes, 0u);
  EXPECT_GT(all.pictures, 0u);
  EXPECT_GT(all.blips, 0u);
}

}  // namespace

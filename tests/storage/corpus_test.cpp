#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "opened_file.h"

using namespace storage_test;
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

/// Opens a copy, since a file without write permission does not open.
class OpenedCopy {
 public:
  explicit OpenedCopy(const fs::path& path) {
    const fs::path copy = folder_.path("copy");
    fs::copy_file(path, copy);
    fs::permissions(copy, fs::perms::owner_all);
    status = FreeOleOpenStorage(copy.c_str(), root.out());
  }

 private:
  support::TempFolder folder_;

 public:
  Status status = Status::kFailure;
  Storage root;
};

/// Documents whose names say that they were damaged on purpose.
bool isDamaged(const fs::path& path) {
  return path.filename().string().starts_with("clusterfuzz");
}

}  // namespace

TEST(Corpus, EveryDocumentsMainStreamReadsToItsFullSize) {
  if (corpus().empty()) GTEST_SKIP() << "no corpus";
  for (const auto& entry : fs::recursive_directory_iterator(corpus())) {
    if (entry.path().extension() != ".doc" || isDamaged(entry.path())) continue;
    OpenedCopy file(entry.path());
    ASSERT_EQ(file.status, Status::kOk) << entry.path();
    const Stream word = openStream(file.root, L"WordDocument");
    ASSERT_TRUE(word) << entry.path();
    EXPECT_EQ(read(word, word->BytesLeft()).size(), sizeOf(word)) << entry.path();
  }
}

TEST(Corpus, DamagedDocumentsAreReadSafely) {
  if (corpus().empty()) GTEST_SKIP() << "no corpus";
  for (const auto& entry : fs::recursive_directory_iterator(corpus())) {
    if (!entry.is_regular_file()) continue;
    try {
      OpenedCopy file(entry.path());
      const Stream word = file.root ? openStream(file.root, L"WordDocument") : Stream();
      if (!word) continue;
      EXPECT_LE(read(word, word->BytesLeft()).size(), entry.file_size());
    } catch (int) {
      // A loop in a chain.
    }
  }
}

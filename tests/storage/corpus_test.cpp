#include "support/corpus.h"

#include <gtest/gtest.h>

#include "opened_file.h"

using namespace storage_test;

namespace {

class OpenedCopy {
 public:
  explicit OpenedCopy(const std::filesystem::path& original) : copy_(original) {
    status = FreeOleOpenStorage(copy_.path().c_str(), root.out());
  }

 private:
  support::WritableCopy copy_;

 public:
  Status status = Status::kFailure;
  Storage root;
};

/// Documents whose names say that they were damaged on purpose.
bool isDamaged(const std::filesystem::path& path) {
  return path.filename().string().starts_with("clusterfuzz");
}

}  // namespace

TEST(Corpus, EveryDocumentsMainStreamReadsToItsFullSize) {
  const auto documents = support::corpusDocuments();
  if (documents.empty()) GTEST_SKIP() << "no corpus";
  for (const auto& path : documents) {
    if (isDamaged(path)) continue;
    OpenedCopy file(path);
    ASSERT_EQ(file.status, Status::kOk) << path;
    const Stream word = openStream(file.root, L"WordDocument");
    ASSERT_TRUE(word) << path;
    EXPECT_EQ(read(word, word->BytesLeft()).size(), sizeOf(word)) << path;
  }
}

TEST(Corpus, DamagedDocumentsAreReadSafely) {
  const auto files = support::corpusFiles();
  if (files.empty()) GTEST_SKIP() << "no corpus";
  for (const auto& path : files) {
    try {
      OpenedCopy file(path);
      const Stream word = file.root ? openStream(file.root, L"WordDocument") : Stream();
      if (!word) continue;
      EXPECT_LE(read(word, word->BytesLeft()).size(), std::filesystem::file_size(path)) << path;
    } catch (int) {
      // A loop in a chain.
    }
  }
}

#include "support/corpus.h"

#include <gtest/gtest.h>

#include "walk_document.h"

namespace {

/// True if the document could be opened and all of it could be read.
bool readsWhole(const std::filesystem::path& path) {
  const support::WritableCopy copy(path);
  KDRDocument document;
  try {
    if (failed(document.OpenDocument(copy.path().c_str(), 0))) return false;
    DocumentWalk walk(document);
    walk.walk();
    return walk.characters() > 0;
  } catch (int) {
    return false;
  }
}

}  // namespace

TEST(Corpus, IsReadWithoutHarm) {
  const auto documents = support::corpusDocuments();
  if (documents.empty()) GTEST_SKIP() << "no corpus";
  size_t whole = 0;
  for (const auto& path : documents) {
    SCOPED_TRACE(path.string());
    if (readsWhole(path)) {
      ++whole;
    } else {
      std::printf("refused: %s\n", path.filename().c_str());
    }
  }
  // Most are sound documents; a few are damaged, encrypted or of another format.
  EXPECT_GT(whole * 10, documents.size() * 7);
}

#include <gtest/gtest.h>

#include "read_everything.h"
#include "support/corpus.h"

using namespace drawing_test;

TEST(Corpus, EveryDrawingAndPictureIsReadSafely) {
  const auto files = support::corpusFiles();
  if (files.empty()) GTEST_SKIP() << "no corpus";
  ReadEverything all;
  int documents = 0;
  for (const auto& file : files) {
    const support::WritableCopy copy(file);
    try {
      KDRDocument document;
      if (document.OpenDocument(copy.path().c_str(), 0) != Status::kOk) continue;
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

// What real documents are, where there are some: what is converted is a Word 97-2003 document, and what is
// not opened is told as something else.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "pagerex/convert.h"
#include "support/corpus.h"

namespace {

int kindOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return pagerex_detect(bytes.data(), bytes.size());
}

}  // namespace

TEST(CorpusKinds, AreThoseThatAreConverted) {
  const auto documents = support::corpusDocuments();
  if (documents.empty()) GTEST_SKIP() << "no corpus";
  const support::TempFolder folder;
  char view[] = "view=preview", size[] = "pagesize=1";
  char* options[] = {view, size};
  for (const auto& document : documents) {
    const support::WritableCopy copy(document);
    const bool opened =
        PageRex(copy.path().c_str(), folder.path("out.html").c_str(), 2, options) != PAGEREX_CANNOT_OPEN;
    EXPECT_EQ(opened, kindOf(copy.path()) == PAGEREX_KIND_WORD97) << document;
  }
}

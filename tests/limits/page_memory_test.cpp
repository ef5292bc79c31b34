// What a page of the format "html" takes of memory: the same for any length, in one piece and in many.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "limits/memory_count.h"
#include "pagerex/convert.h"
#include "support/corpus.h"
#include "support/word_document_writer.h"

namespace {

constexpr int64_t kMost = 4 << 20;

/// The bytes that were written; -1 for a failure.
int64_t convert(const support::Bytes& document, int64_t pageSize) {
  pagerex_input input = {};
  input.size = sizeof(input);
  input.data = document.data();
  input.length = document.size();
  pagerex_options options = {};
  options.size = sizeof(options);
  options.format = "html";
  options.page_size = pageSize;
  int64_t written = 0;
  pagerex_output output = {};
  output.size = sizeof(output);
  output.user = &written;
  output.begin = [](void* user, const char*, const char*) { return user; };
  output.write = [](void* user, void*, const void*, size_t length) {
    *static_cast<int64_t*>(user) += static_cast<int64_t>(length);
    return 0;
  };
  return pagerex_convert(&input, nullptr, &options, &output, nullptr) == PAGEREX_RESULT_OK ? written : -1;
}

void expectLittleMemory(const support::Bytes& document, const std::string& name) {
  for (const int64_t pageSize : {0, 2000, 100000}) {
    const MemoryCount memory;
    EXPECT_GT(convert(document, pageSize), 0) << name;
    EXPECT_LE(memory.peakBytes(), kMost) << name << " in pieces of " << pageSize;
  }
}

TEST(PageMemory, IsBoundedWhateverTheLength) {
  support::WordDocument document;
  for (int i = 0; i < 20000; ++i) {
    document.paragraph("Some words of a paragraph that is as long as many are, number " + std::to_string(i));
    if (i % 50 == 0)
      document.paragraph().run("large", {support::sprm(0x4A43, static_cast<uint16_t>(20 + i % 40))});
    if (i % 100 == 0) document.row({"a", "b"}, {support::defTableSprm({0, 1000, 2000})});
  }
  expectLittleMemory(document.build(), "long");
}

TEST(PageMemory, IsBoundedForLargeRealDocuments) {
  auto documents = support::corpusDocuments();
  std::erase_if(documents, [](const auto& path) { return !path.filename().string().starts_with("big_"); });
  if (documents.empty()) GTEST_SKIP() << "no corpus";
  for (const auto& path : documents) {
    std::ifstream file(path, std::ios::binary);
    const support::Bytes document{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    expectLittleMemory(document, path.filename().string());
  }
}

}  // namespace

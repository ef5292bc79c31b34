#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>

#include "limits/hostile_documents.h"
#include "limits/memory_count.h"
#include "pagerex/pagerex.h"
#include "support/temp_folder.h"

// What a conversion may take, whatever the document: docs/limits.md.

namespace {

constexpr uint32_t kScale = 60;
constexpr uint64_t kMebi = 1 << 20;

constexpr uint64_t mostMarkup(uint64_t fileBytes, uint64_t pages) {
  return 256 * fileBytes + 16 * kMebi + 8192 * pages;
}
constexpr uint64_t mostPictures(uint64_t fileBytes) {
  return 32 * fileBytes + 64 * kMebi;
}
constexpr int64_t mostMemory(uint64_t fileBytes) {
  return static_cast<int64_t>(64 * fileBytes + 8 * kMebi);
}

struct Case {
  HostileDocument document;
  const char* view;
};

void PrintTo(const Case& each, std::ostream* out) {
  *out << each.document.name << ", " << each.view;
}

/// One conversion and what it took.
struct Outcome {
  int result = -1;
  uint64_t fileBytes = 0;
  uint64_t markup = 0;
  uint64_t pictures = 0;
  uint64_t pages = 0;
  int64_t memory = 0;  ///< at its most
  int64_t blocks = 0;
  uint64_t mainFileBytes = 0;
  uint64_t cutPages = 0;  ///< that do not end as pages do, nor as the list of them does
  bool reachedTheEnd = false;
};

bool isWhole(const std::string& page) {
  return page.ends_with("</html>") || page.ends_with("</html>\r\n") || page.ends_with("</file>");
}

void addFile(const std::filesystem::path& path, const support::TempFolder& folder, Outcome& outcome) {
  const std::string name = path.filename().string();
  const uint64_t size = std::filesystem::file_size(path);
  if (name.starts_with("image")) {
    outcome.pictures += size;
    return;
  }
  outcome.markup += size;
  if (!name.ends_with(".htm")) return;
  ++outcome.pages;
  const std::string text = folder.read(std::filesystem::relative(path, folder.path()).string());
  if (!isWhole(text)) ++outcome.cutPages;
  if (name == "x.htm") outcome.mainFileBytes = size;
  outcome.reachedTheEnd = outcome.reachedTheEnd || text.find(kTheEnd) != std::string::npos;
}

Outcome convert(const support::Bytes& file, const char* view) {
  support::TempFolder folder;
  const std::string source = folder.write("source.doc", file);
  const std::string target = folder.path("x.htm");
  std::string options[] = {std::string("view=") + view, "pagesize=500"};
  char* argv[] = {options[0].data(), options[1].data()};
  Outcome outcome;
  const MemoryCount memory;
  outcome.result = PageRex(source.c_str(), target.c_str(), 2, argv);
  outcome.memory = memory.peakBytes();
  outcome.blocks = memory.blocks();
  outcome.fileBytes = file.size();
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
    if (entry.is_regular_file() && entry.path() != source) addFile(entry.path(), folder, outcome);
  }
  return outcome;
}

/// For a table of them: file, markup, pictures, memory, blocks.
std::string numbersOf(const Outcome& outcome) {
  std::string text;
  for (const uint64_t each : {outcome.fileBytes, outcome.markup, outcome.pictures,
                              static_cast<uint64_t>(outcome.memory), static_cast<uint64_t>(outcome.blocks)}) {
    text += std::to_string(each) + " ";
  }
  return text;
}

class Hostile : public testing::TestWithParam<Case> {};

TEST_P(Hostile, KeepsWithinTheBoundsAndComesOut) {
  const Case& each = GetParam();
  const Outcome outcome = convert(each.document.make(kScale), each.view);
  RecordProperty("numbers", numbersOf(outcome));
  EXPECT_LE(outcome.markup, mostMarkup(outcome.fileBytes, outcome.pages));
  EXPECT_LE(outcome.pictures, mostPictures(outcome.fileBytes));
  EXPECT_LE(outcome.memory, mostMemory(outcome.fileBytes));
  EXPECT_GT(outcome.mainFileBytes, 0u);
  const bool isPreview = each.view == std::string("preview");
  EXPECT_EQ(outcome.result, isPreview && !each.document.hasPreview ? PAGEREX_FAILED : PAGEREX_OK);
  // A preview is the first characters as they are.
  if (isPreview) return;
  EXPECT_EQ(outcome.cutPages, 0u);
  EXPECT_EQ(outcome.reachedTheEnd, each.document.comesToItsEnd);
}

std::vector<Case> casesOf(std::initializer_list<const char*> views) {
  std::vector<Case> cases;
  for (const HostileDocument& document : hostileDocuments()) {
    for (const char* view : views) cases.push_back({document, view});
  }
  return cases;
}

std::string nameOf(const testing::TestParamInfo<Case>& info) {
  return info.param.document.name + std::string("_") + info.param.view;
}

INSTANTIATE_TEST_SUITE_P(Documents, Hostile,
                         testing::ValuesIn(casesOf({"normal", "phone", "preview", "mulpages"})), nameOf);

TEST(MemoryCounted, IsTheMostThatWasHeld) {
  std::vector<char> taken;
  const MemoryCount memory;
  std::vector<char>(1000).swap(taken);
  std::vector<char>().swap(taken);
  EXPECT_GE(memory.peakBytes(), 1000);
  EXPECT_LT(memory.peakBytes(), 2000);
  EXPECT_EQ(memory.blocks(), 1);
}

}  // namespace

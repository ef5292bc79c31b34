#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "mutation/mutations.h"
#include "mutation/rich_documents.h"
#include "pagerex/pagerex.h"
#include "support/temp_folder.h"
#include "support/walked_ways.h"

// Thousands of documents that are sound but for a few bytes, the same ones in each run. What comes out of
// them is not the matter here: that the conversion ends, with a result that it tells, with moderate output,
// and under the sanitizers without a finding.

namespace {

using mutation::changed;
using mutation::fileOf;
using support::Bytes;
using support::WordStreams;

/// A conversion in the view that the parameter names.
class MutatedDocument : public testing::TestWithParam<const char*> {
 protected:
  void convert(const Bytes& file, const std::string& what) {
    const std::string source = folder_.write("in.doc", file), target = folder_.path("out.htm");
    std::string view = std::string("view=") + GetParam(), pageSize = "pagesize=200";
    char* options[] = {view.data(), pageSize.data()};
    const int result = PageRex(source.c_str(), target.c_str(), 2, options);
    EXPECT_TRUE(result == PAGEREX_OK || result == PAGEREX_FAILED || result == PAGEREX_CANNOT_OPEN)
        << result << ": " << what;
    EXPECT_LT(outputBytes(), kMostOutput) << what;
    ++(result == PAGEREX_OK ? converted_ : refused_);
  }

  mutation::Random random_;
  int converted_ = 0;
  int refused_ = 0;

 private:
  static constexpr uintmax_t kMostOutput = 16 << 20;

  uintmax_t outputBytes() const {
    uintmax_t bytes = 0;
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder_.path())) {
      if (file.is_regular_file()) bytes += file.file_size();
    }
    return bytes;
  }

  support::TempFolder folder_;
};

TEST_P(MutatedDocument, EndsInModerationWhateverItsStreamsHold) {
  constexpr int kRounds = 100;
  for (const mutation::NamedDocument& rich : mutation::richDocuments()) {
    const WordStreams sound = rich.document.streams();
    for (int round = 0; round < kRounds; ++round)
      convert(fileOf(changed(sound, random_)), rich.name + (" " + std::to_string(round)));
  }
  // Most changes go deeper than what a document is refused for.
  EXPECT_GT(converted_, refused_);
}

TEST_P(MutatedDocument, EndsInModerationWhateverItsContainerHolds) {
  constexpr int kRounds = 30;
  for (const mutation::NamedDocument& rich : mutation::richDocuments()) {
    const Bytes sound = rich.document.build();
    for (int round = 0; round < kRounds; ++round) {
      Bytes file = sound;
      // The header, then the tables of pages, and the directory.
      for (const size_t end : {size_t{512}, size_t{2048}}) mutation::change({&file, 0, end}, random_);
      convert(file, rich.name + (" " + std::to_string(round)));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Views, MutatedDocument, testing::Values("normal", "phone", "mulpages", "preview"),
                         [](const auto& chosen) { return std::string(chosen.param); });

/// The same in the ways in which the formats of the walk are asked for.
class MutatedWalk : public testing::TestWithParam<support::WalkedWay> {
 protected:
  void write(const Bytes& file, const std::string& what) {
    const pagerex_result result = support::writeWalked(file, GetParam()).told;
    EXPECT_TRUE(result.code == PAGEREX_RESULT_OK || result.code == PAGEREX_RESULT_DAMAGED ||
                result.code == PAGEREX_RESULT_NOT_WORD || result.code == PAGEREX_RESULT_ENCRYPTED)
        << result.code << ": " << what;
    EXPECT_LT(result.output_bytes, uint64_t{16} << 20) << what;
    ++(result.code == PAGEREX_RESULT_OK ? converted_ : refused_);
  }

  mutation::Random random_;
  int converted_ = 0;
  int refused_ = 0;
};

TEST_P(MutatedWalk, EndsInModerationWhateverTheStreamsHold) {
  constexpr int kRounds = 100;
  for (const mutation::NamedDocument& rich : mutation::richDocuments()) {
    const WordStreams sound = rich.document.streams();
    for (int round = 0; round < kRounds; ++round)
      write(fileOf(changed(sound, random_)), rich.name + (" " + std::to_string(round)));
  }
  EXPECT_GT(converted_, refused_);
}

INSTANTIATE_TEST_SUITE_P(Ways, MutatedWalk, testing::ValuesIn(support::kWalkedWays),
                         [](const auto& chosen) { return std::string(chosen.param.name); });

/// Without this the others would show little: changes are made to what does come out.
TEST(RichDocuments, AreConvertedWhole) {
  for (const mutation::NamedDocument& rich : mutation::richDocuments()) {
    const support::TempFolder folder;
    const std::string source = folder.write("in.doc", rich.document.build());
    EXPECT_EQ(PageRex(source.c_str(), folder.path("out.htm").c_str(), 0, nullptr), PAGEREX_OK) << rich.name;
    EXPECT_TRUE(folder.exists("out.files/1.htm")) << rich.name;
  }
}

}  // namespace

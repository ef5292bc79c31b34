// Thousands of documents that are sound but for a few bytes, the same ones in each run. What comes of each is
// one of few things, and is told; and nothing that is lost is passed over.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "convert/host.h"
#include "mutation/mutations.h"
#include "mutation/rich_documents.h"

using namespace convert_test;
using support::Bytes;
using support::WordStreams;

namespace {

class DamagedCopies : public testing::TestWithParam<std::string> {
 protected:
  void convertCopy(const Bytes& file, const std::string& what) {
    const std::set<int> mayCome = {PAGEREX_RESULT_OK, PAGEREX_RESULT_DAMAGED, PAGEREX_RESULT_NOT_WORD,
                                   PAGEREX_RESULT_ENCRYPTED};
    Host host(file);
    const Result result = convert(host.memory(), host.sink(), host.options(GetParam().c_str()));
    EXPECT_EQ(mayCome.count(result.code), 1u) << what << ": " << result.code;
    EXPECT_TRUE(result.isOne()) << what << ": " << result.sentence;
    EXPECT_EQ(host.complaints(), "") << what;
    if (result.code == PAGEREX_RESULT_OK) {
      EXPECT_EQ(host.completeFiles(), host.files()) << what;
    }
    ++copies_;
    whole_ += result.complete;
    partial_ += result.code == PAGEREX_RESULT_OK && !result.complete;
    refused_ += result.code != PAGEREX_RESULT_OK;
  }

  /// Without this the test would show little.
  void expectSomeOfEach() const {
    EXPECT_GT(whole_, copies_ / 200);
    EXPECT_GT(partial_, copies_ / 200);
    EXPECT_GT(refused_, copies_ / 1000);  // the walk reads nearly all
  }

  mutation::Random random_;

 private:
  int copies_ = 0, whole_ = 0, partial_ = 0, refused_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Formats, DamagedCopies, testing::ValuesIn(formats()),
                         [](const auto& chosen) { return chosen.param; });

TEST_P(DamagedCopies, AreToldForWhatTheyAreWhateverTheirStreamsHold) {
  constexpr int kRounds = 300;
  for (const mutation::NamedDocument& rich : mutation::richDocuments()) {
    const WordStreams sound = rich.document.streams();
    for (int round = 0; round < kRounds; ++round) {
      const WordStreams copy = mutation::changed(sound, random_);
      convertCopy(mutation::fileOf(copy), rich.name + (" " + std::to_string(round)));
    }
  }
  expectSomeOfEach();
}

TEST_P(DamagedCopies, AreToldForWhatTheyAreWhateverTheirContainerHolds) {
  constexpr int kRounds = 150;
  for (const mutation::NamedDocument& rich : mutation::richDocuments()) {
    const Bytes sound = rich.document.build();
    for (int round = 0; round < kRounds; ++round) {
      Bytes copy = sound;
      // The header, then the tables of pages, and the directory.
      for (const size_t end : {size_t{512}, size_t{2048}}) mutation::change({&copy, 0, end}, random_);
      convertCopy(copy, rich.name + (" " + std::to_string(round)));
    }
  }
}

/// No cut goes unnoticed, but of what no document refers to.
TEST_P(DamagedCopies, AreNeverWholeWithoutHalfOfTheFile) {
  for (const mutation::NamedDocument& rich : mutation::richDocuments()) {
    Bytes copy = rich.document.build();
    copy.resize(copy.size() / 2);
    convertCopy(copy, rich.name);
    Host host(copy);
    const Result result = convert(host.memory(), host.sink(), Host::quiet(GetParam().c_str()));
    EXPECT_EQ(result.complete, 0) << rich.name;
  }
}

}  // namespace

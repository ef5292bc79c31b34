// Pages of documents that are sound but for a few bytes.

#include <gtest/gtest.h>

#include "mutation/flow_documents.h"
#include "mutation/mutations.h"
#include "safety/one_page.h"
#include "safety/one_page_rules.h"

namespace {

constexpr int kRounds = 60;

void expectSoundMutations(const std::vector<mutation::NamedDocument>& documents) {
  mutation::Random random;
  constexpr int32_t kRevisions[] = {PAGEREX_REVISIONS_FINAL, PAGEREX_REVISIONS_ALL};
  constexpr int64_t kSizes[] = {0, 0, 40};
  int written = 0, refused = 0;
  for (const mutation::NamedDocument& each : documents) {
    const support::WordStreams sound = each.document.streams();
    for (int round = 0; round < kRounds; ++round) {
      pagerex_options options = {};
      options.revisions = random.of(kRevisions);
      options.page_size = random.of(kSizes);
      const support::Bytes file = mutation::fileOf(mutation::changed(sound, random));
      const safety::OnePage page = safety::onePageOf(file, options);
      ++(page.result == PAGEREX_RESULT_OK ? written : refused);
      if (page.result != PAGEREX_RESULT_OK) continue;
      ASSERT_EQ(safety::faultOfOnePage(page.text), "") << each.name << " " << round;
    }
  }
  EXPECT_GT(written, refused);
}

}  // namespace

TEST(MutatedPage, OfWhatTheViewsReadTooIsSound) {
  expectSoundMutations(mutation::richDocuments());
}

TEST(MutatedPage, OfWhatOnlyTheWalkReadsIsSound) {
  expectSoundMutations(mutation::flowDocuments());
}

#include <gtest/gtest.h>

#include "limits/hostile_documents.h"
#include "limits/memory_count.h"
#include "support/walked_ways.h"

// What the formats of the walk may take, whatever the document: docs/limits.md.

namespace {

constexpr uint32_t kScale = 60;
constexpr uint64_t kMebi = 1 << 20;

using Case = std::tuple<HostileDocument, support::WalkedWay>;

class HostileWalk : public testing::TestWithParam<Case> {};

TEST_P(HostileWalk, KeepsWithinTheBoundsAndComesOut) {
  const auto& [document, way] = GetParam();
  const support::Bytes file = document.make(kScale);
  const MemoryCount memory;
  const support::WalkedResult result = support::writeWalked(file, way, kTheEnd);
  const uint64_t written = result.told.output_bytes;
  RecordProperty("numbers", std::to_string(file.size()) + " " + std::to_string(written) + " " +
                                std::to_string(memory.peakBytes()) + " " + std::to_string(memory.blocks()));
  EXPECT_EQ(result.told.code, PAGEREX_RESULT_OK);
  EXPECT_LE(result.mainBytes, 256 * file.size() + 16 * kMebi);
  EXPECT_LE(written - result.mainBytes, 32 * file.size() + 64 * kMebi);
  EXPECT_LE(memory.peakBytes(), static_cast<int64_t>(64 * file.size() + 8 * kMebi));
  if (document.comesToItsEnd) {
    EXPECT_TRUE(result.hasWanted);
  }
}

INSTANTIATE_TEST_SUITE_P(Documents, HostileWalk,
                         testing::Combine(testing::ValuesIn(hostileDocuments()),
                                          testing::ValuesIn(support::kWalkedWays)),
                         [](const auto& chosen) {
                           return std::get<0>(chosen.param).name + std::string("_") +
                                  std::get<1>(chosen.param).name;
                         });

}  // namespace

#include "storage/sot_fat.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "storage/sot_trunk.h"

using testing::ElementsAre;

namespace {

/// A trunk over these bytes.
class BytesTrunk : public SotRoTrunk {
 public:
  BytesTrunk(const void* bytes, size_t size)
      : bytes_(static_cast<const char*>(bytes)), size_(static_cast<unsigned int>(size)) {}
  unsigned int size() const override { return size_; }
  unsigned int tell() const override { return 0; }
  bool seek(unsigned long, int) override { return false; }
  unsigned int read(char* buffer, unsigned int n) override {
    if (n) std::memcpy(buffer, bytes_, std::min(n, size_));
    return std::min(n, size_);
  }
  const uint8_t* view(unsigned int) override { return nullptr; }
  unsigned int bytesLeft() const override { return size_; }
  unsigned int bytesHeld() const override { return size_; }

 private:
  const char* bytes_;
  unsigned int size_;
};

SotRoFAT fatOf(const std::vector<int>& table) {
  BytesTrunk trunk(table.data(), table.size() * sizeof(int));
  return SotRoFAT(trunk);
}

}  // namespace

TEST(Fat, FollowsAChainToItsEndMark) {
  SotRoFAT fat = fatOf({3, -2, 1, 2});
  EXPECT_THAT(fat.pageLst(0), ElementsAre(0, 3, 2, 1, -2));
}

TEST(Fat, EndsAChainAtAnyNegativeNumber) {
  SotRoFAT fat = fatOf({1, -4});
  EXPECT_THAT(fat.pageLst(0), ElementsAre(0, 1, -4));
}

TEST(Fat, GivesAnEmptyChainForAStartThatIsAnEndMark) {
  SotRoFAT fat = fatOf({1, -2});
  EXPECT_THAT(fat.pageLst(-2), ElementsAre(-2));
  EXPECT_THAT(fat.pageLst(-7), ElementsAre(-7));
}

TEST(Fat, GivesAnEmptyChainForAStartPastTheTable) {
  SotRoFAT fat = fatOf({1, -2});
  EXPECT_THAT(fat.pageLst(2), ElementsAre(-2));
  EXPECT_THAT(fat.pageLst(INT32_MAX), ElementsAre(-2));
}

TEST(Fat, EndsAChainAtAPageThatPointsAtItself) {
  SotRoFAT fat = fatOf({1, 1});
  EXPECT_THAT(fat.pageLst(0), ElementsAre(0, 1, 1));
  EXPECT_THAT(fat.pageLst(1), ElementsAre(1, 1));
}

TEST(Fat, EndsAChainAtANumberPastTheTable) {
  SotRoFAT fat = fatOf({1, 77});
  EXPECT_THAT(fat.pageLst(0), ElementsAre(0, 1, 77));
}

TEST(Fat, ThrowsTheCountOfStepsForALoop) {
  SotRoFAT fat = fatOf({1, 2, 0});
  try {
    fat.pageLst(0);
    FAIL() << "the loop went unnoticed";
  } catch (int steps) {
    EXPECT_EQ(steps, 4);
  }
}

TEST(Fat, ThrowsForALoopEachTime) {
  SotRoFAT fat = fatOf({1, 2, 1});
  EXPECT_THROW(fat.pageLst(0), int);
  EXPECT_THROW(fat.pageLst(0), int);
}

TEST(Fat, FollowsAChainThroughTheWholeTable) {
  std::vector<int> table(1000);
  for (int i = 0; i < 1000; ++i) table[static_cast<size_t>(i)] = i + 1;
  table.back() = -2;
  EXPECT_EQ(fatOf(table).pageLst(0).size(), 1001u);
}

TEST(Fat, KeepsTheListItMade) {
  SotRoFAT fat = fatOf({1, -2, 3, -2});
  const auto first = fat.pageLst(0);
  fat.pageLst(2);
  EXPECT_EQ(fat.pageLst(0).data(), first.data());
}

TEST(Fat, IgnoresBytesThatAreNotAWholeValue) {
  const std::vector<int> table = {1, -2};
  BytesTrunk trunk(table.data(), 7);
  SotRoFAT fat(trunk);
  EXPECT_THAT(fat.pageLst(0), ElementsAre(0, 1));
  EXPECT_THAT(fat.pageLst(1), ElementsAre(-2));
}

TEST(Fat, IsEmptyOverAnEmptyTrunk) {
  SotRoFAT fat = fatOf({});
  EXPECT_THAT(fat.pageLst(0), ElementsAre(-2));
}

TEST(Fat, BoundsWhatChainsThatShareTheirPagesTake) {
  // Each page of the first half leads into the second half, which is one long chain.
  constexpr int kHalf = 50000;
  std::vector<int> table(2 * kHalf, kHalf);
  for (int i = kHalf; i < 2 * kHalf; ++i) table[static_cast<size_t>(i)] = i + 1;
  table.back() = -2;
  SotRoFAT fat = fatOf(table);
  size_t listed = 0;
  for (int start = 0; start < kHalf; ++start) listed += fat.pageLst(start).size();
  EXPECT_EQ(fat.pageLst(0).size(), size_t{kHalf} + 2);
  EXPECT_LT(listed, size_t{kHalf} * 40) << "all of them would be 2.5 billion";
}

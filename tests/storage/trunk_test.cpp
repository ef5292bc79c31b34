#include "storage/sot_trunk.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/bytes.h"

using support::Bytes;

namespace {

/// Pages of four bytes; page 0 holds "0aA.", page 1 "1bB." and so on.
class FourBytePages {
 public:
  explicit FourBytePages(int count) : count_(count) {}
  uint32_t pageSize() const { return 4; }
  uint64_t fileSize() const { return 512; }
  bool holds(int page) const { return page >= 0 && page < count_; }
  unsigned int read(int page, uint32_t offset, char* buffer, unsigned int n) {
    ++reads;
    for (unsigned int i = 0; i < n; ++i) {
      const int from = page + static_cast<int>((offset + i) / 4);
      buffer[i] = "0aA."[(offset + i) % 4];
      if (buffer[i] != '.') buffer[i] = static_cast<char>(buffer[i] + from);
    }
    return n;
  }
  const uint8_t* view(int page, uint32_t offset, unsigned int) const {
    return kBytes + static_cast<size_t>(page) * 4 + offset;
  }
  int reads = 0;
  static constexpr uint8_t kBytes[512] = {};  ///< where views point into

 private:
  int count_;
};

using Trunk = SotRoTrunkImpl<FourBytePages>;

struct TrunkOf {
  explicit TrunkOf(std::vector<int> list) : numbers(std::move(list)), trunk(pages, numbers) {}
  std::string read(unsigned int n) {
    std::string text(n, '#');
    text.resize(trunk.read(text.data(), n));
    return text;
  }
  FourBytePages pages{8};
  std::vector<int> numbers;
  Trunk trunk;
};

}  // namespace

TEST(TrunkView, BeginsAtThePositionAndMovesBehindWhatIsSeen) {
  TrunkOf of({3, 4, 5});
  of.trunk.seek(2, SEEK_SET);
  EXPECT_EQ(of.trunk.view(7), FourBytePages::kBytes + 3 * 4 + 2);
  EXPECT_EQ(of.trunk.tell(), 9u);
}

TEST(TrunkView, NeedsPagesThatAreNeighbours) {
  TrunkOf of({3, 5});
  EXPECT_EQ(of.trunk.view(5), nullptr);
  EXPECT_EQ(of.trunk.tell(), 0u);
  EXPECT_NE(of.trunk.view(4), nullptr);
}

TEST(TrunkView, EndsWithTheTrunk) {
  TrunkOf of({3, 4});
  EXPECT_EQ(of.trunk.view(9), nullptr);
  EXPECT_EQ(of.trunk.view(0), nullptr);
  EXPECT_NE(of.trunk.view(8), nullptr);
  EXPECT_EQ(of.trunk.view(1), nullptr);
}

TEST(Trunk, ReadsItsPagesInTheOrderOfTheList) {
  TrunkOf of({2, 0, 5, -2});
  EXPECT_EQ(of.read(100), "2cC.0aA.5fF.");
}

TEST(Trunk, EndsAtTheFirstNegativeNumber) {
  TrunkOf of({1, -1, 2, -2});
  EXPECT_EQ(of.trunk.size(), 4u);
  EXPECT_EQ(of.read(100), "1bB.");
}

TEST(Trunk, EndsWithTheListThatHasNoEndMark) {
  TrunkOf of({1, 3});
  EXPECT_EQ(of.trunk.size(), 8u);
  EXPECT_EQ(of.read(100), "1bB.3dD.");
}

TEST(Trunk, IsEmptyWithoutPages) {
  TrunkOf of({-2});
  EXPECT_EQ(of.trunk.size(), 0u);
  EXPECT_EQ(of.read(1), "");
  EXPECT_EQ(of.trunk.bytesLeft(), 0u);
  EXPECT_FALSE(of.trunk.seek(0, 0));
}

TEST(Trunk, GoesOnWhereTheLastReadEnded) {
  TrunkOf of({2, 0, 5, -2});
  EXPECT_EQ(of.read(3), "2cC");
  EXPECT_EQ(of.read(3), ".0a");
  EXPECT_EQ(of.trunk.tell(), 6u);
}

TEST(Trunk, ReadsNeighbouringPagesAtOneGo) {
  TrunkOf of({2, 3, 4, 0, 1, -2});
  EXPECT_EQ(of.read(20), "2cC.3dD.4eE.0aA.1bB.");
  EXPECT_EQ(of.pages.reads, 2);
}

TEST(Trunk, StopsAtAPageThatTheFileDoesNotHold) {
  TrunkOf of({1, 99, 2, -2});
  EXPECT_EQ(of.trunk.size(), 12u);
  EXPECT_EQ(of.read(12), "1bB.");
  EXPECT_EQ(of.trunk.tell(), 4u);
  EXPECT_EQ(of.read(12), "");
}

TEST(Trunk, ReadsBehindAPageThatTheFileDoesNotHold) {
  TrunkOf of({1, 99, 98, 2, 97, -2});
  EXPECT_TRUE(of.trunk.seek(13, 0));
  EXPECT_EQ(of.trunk.bytesLeft(), 3u);
  EXPECT_EQ(of.read(12), "cC.");
}

TEST(Trunk, TellsTheBytesThatAReadCanBring) {
  TrunkOf of({1, 2, 99, 3, -2});
  EXPECT_EQ(of.trunk.bytesLeft(), 8u);
  of.read(3);
  EXPECT_EQ(of.trunk.bytesLeft(), 5u);
  EXPECT_TRUE(of.trunk.seek(8, 0));
  EXPECT_EQ(of.trunk.bytesLeft(), 0u) << "inside the page that is not there";
}

TEST(Trunk, NeverClaimsMoreBytesThanTheFileIsLong) {
  TrunkOf of(std::vector<int>(1000, 7));
  EXPECT_EQ(of.trunk.size(), 4000u);
  EXPECT_EQ(of.trunk.bytesLeft(), 512u);
}

TEST(Trunk, HoldsTheBytesOfItsChainWhereverItStands) {
  TrunkOf of({1, 2, 99, 3, -2});
  EXPECT_EQ(of.trunk.bytesHeld(), 16u);
  of.read(8);
  EXPECT_EQ(of.trunk.bytesHeld(), 16u);
  EXPECT_EQ(TrunkOf({-2}).trunk.bytesHeld(), 0u);
}

TEST(Trunk, HoldsNoMoreBytesThanTheFileHas) {
  EXPECT_EQ(TrunkOf(std::vector<int>(128, 7)).trunk.bytesHeld(), 512u);
  EXPECT_EQ(TrunkOf(std::vector<int>(129, 7)).trunk.bytesHeld(), 512u);
  EXPECT_EQ(TrunkOf(std::vector<int>(127, 99)).trunk.bytesHeld(), 508u);
}

TEST(Trunk, KnowsWhetherItHoldsARange) {
  TrunkOf of({1, 2, 99, 3, -2});
  EXPECT_TRUE(of.trunk.holds(2, 6));
  EXPECT_FALSE(of.trunk.holds(2, 7));
  EXPECT_TRUE(of.trunk.holds(12, 4));
  EXPECT_FALSE(of.trunk.holds(12, 5));
  EXPECT_FALSE(of.trunk.holds(uint64_t{1} << 40, 1));
}

TEST(Trunk, DoesNotTakeTheLargestPageNumberForANeighbourOfTheSmallest) {
  TrunkOf of({INT32_MAX, INT32_MIN, 0});
  EXPECT_EQ(of.trunk.size(), 4u);
  EXPECT_EQ(of.read(4), "");
}

TEST(TrunkSeek, MovesFromTheStart) {
  TrunkOf of({2, 0, 5, -2});
  EXPECT_TRUE(of.trunk.seek(11, 0));
  EXPECT_EQ(of.read(5), ".");
}

TEST(TrunkSeek, RefusesSeekToExactlyTheEnd) {
  TrunkOf of({2, 0, 5, -2});
  of.read(5);
  EXPECT_FALSE(of.trunk.seek(12, 0));
  EXPECT_EQ(of.trunk.tell(), 5u);
}

TEST(TrunkSeek, MovesRelativeToThePosition) {
  TrunkOf of({2, 0, 5, -2});
  of.read(5);
  EXPECT_TRUE(of.trunk.seek(6, 1));
  EXPECT_EQ(of.trunk.tell(), 11u);
  EXPECT_FALSE(of.trunk.seek(1, 1));
  EXPECT_EQ(of.trunk.tell(), 11u);
}

TEST(TrunkSeek, LetsANegativeRelativeMoveThroughByWrapping) {
  TrunkOf of({2, 0, 5, -2});
  of.read(5);
  EXPECT_TRUE(of.trunk.seek(static_cast<unsigned long>(-3), 1));
  EXPECT_EQ(of.trunk.tell(), 2u);
  EXPECT_FALSE(of.trunk.seek(static_cast<unsigned long>(-3), 1));
}

TEST(TrunkSeek, MovesBackwardFromTheEnd) {
  TrunkOf of({2, 0, 5, -2});
  EXPECT_TRUE(of.trunk.seek(3, 2));
  EXPECT_EQ(of.trunk.tell(), 9u);
  EXPECT_TRUE(of.trunk.seek(0, 2));
  EXPECT_EQ(of.trunk.tell(), 12u);
  EXPECT_TRUE(of.trunk.seek(12, 2));
  EXPECT_FALSE(of.trunk.seek(13, 2));
  EXPECT_EQ(of.trunk.tell(), 0u);
}

TEST(TrunkSeek, AcceptsAnyOtherOriginAndStays) {
  TrunkOf of({2, 0, 5, -2});
  of.read(5);
  EXPECT_TRUE(of.trunk.seek(1000, 3));
  EXPECT_TRUE(of.trunk.seek(0, -1));
  EXPECT_EQ(of.trunk.tell(), 5u);
}

TEST(TrunkSeek, CannotReadAtTheEnd) {
  TrunkOf of({2, 0, 5, -2});
  EXPECT_TRUE(of.trunk.seek(0, 2));
  EXPECT_EQ(of.read(1), "");
}

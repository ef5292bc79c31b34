#include "wordreader/text_pool.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

/// A pool of the characters 0, 1, 2 and so on.
KTextPool countingPool(uint32_t size) {
  std::vector<unsigned short> text(size);
  std::iota(text.begin(), text.end(), static_cast<unsigned short>(0));
  KTextPool pool;
  pool.append(text.data(), size);
  return pool;
}

}  // namespace

TEST(TextPool, ReadsAcrossPagesInOrder) {
  const KTextPool pool = countingPool(1000);
  unsigned short out[300];
  ASSERT_EQ(pool.read(200, out, 300), 300u);
  for (unsigned i = 0; i < 300; ++i) ASSERT_EQ(out[i], 200 + i);
}

TEST(TextPool, ClipsAReadToTheEnd) {
  const KTextPool pool = countingPool(260);
  unsigned short out[100];
  EXPECT_EQ(pool.read(250, out, 100), 10u);
  EXPECT_EQ(out[9], 259);
}

TEST(TextPool, ReadsNothingFromTheEndOn) {
  const KTextPool pool = countingPool(256);
  unsigned short out[1];
  EXPECT_EQ(pool.read(256, out, 1), 0u);
  EXPECT_EQ(pool.read(0xFFFFFFFF, out, 1), 0u);
}

TEST(TextPool, CountsPagesOf256Characters) {
  EXPECT_EQ(KTextPool().page_count(), 0u);
  EXPECT_EQ(countingPool(256).page_count(), 1u);
  EXPECT_EQ(countingPool(257).page_count(), 2u);
}

TEST(TextPool, AppendsSingleCharactersAcrossPages) {
  KTextPool pool = countingPool(255);
  for (unsigned short character : {7001, 7002, 7003}) pool.append(character);
  EXPECT_EQ(pool.size(), 258u);
  EXPECT_EQ(pool[254], 254);
  EXPECT_EQ(pool[255], 7001);
  EXPECT_EQ(pool[257], 7003);
}

TEST(TextPool, GoesOnInThePageBeforeWhenTheLastOneEmpties) {
  KTextPool pool = countingPool(257);
  pool.pop_back();
  EXPECT_EQ(pool.page_count(), 1u);
  pool.pop_back();
  pool.append(static_cast<unsigned short>(9));
  EXPECT_EQ(pool.size(), 256u);
  EXPECT_EQ(pool[255], 9);
}

TEST(TextPool, HoldsTextOfManyPages) {
  const KTextPool pool = countingPool(256 * 100 + 7);
  for (uint32_t i = 0; i < pool.size(); ++i) ASSERT_EQ(pool[i], i);
}

TEST(TextPool, StaysEmptyWhenAnEmptyOneIsPopped) {
  KTextPool pool;
  pool.pop_back();
  EXPECT_EQ(pool.size(), 0u);
}

TEST(TextPool, CanBeFilledAgainAfterClear) {
  KTextPool pool = countingPool(600);
  pool.clear();
  EXPECT_EQ(pool.size(), 0u);
  pool.append(static_cast<unsigned short>(5));
  EXPECT_EQ(pool[0], 5);
}

TEST(TextPool, DoesNotMoveWhatItHolds) {
  KTextPool pool = countingPool(10);
  uint32_t n = 0;
  const unsigned short* before = pool.run(3, &n);
  for (int i = 0; i < 5000; ++i) pool.append(static_cast<unsigned short>(i));
  EXPECT_EQ(pool.run(3, &n), before);
}

TEST(TextPool, GivesRunsUpToTheEndOfTheirPage) {
  const KTextPool pool = countingPool(300);
  uint32_t n = 0;
  EXPECT_EQ(*pool.run(250, &n), 250);
  EXPECT_EQ(n, 6u);
  EXPECT_EQ(*pool.run(256, &n), 256);
  EXPECT_EQ(n, 44u);
  EXPECT_EQ(pool.run(300, &n), nullptr);
  EXPECT_EQ(n, 0u);
}

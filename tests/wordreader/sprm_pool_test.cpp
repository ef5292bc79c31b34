#include "wordreader/sprm_pool.h"

#include <gtest/gtest.h>

#include "support/bytes.h"

using support::Bytes;

namespace {

/// What the pool gives for a list whose own bytes go away.
ByteView keep(KSprmPool& pool, Bytes list) {
  ByteView view(list.data(), list.size());
  EXPECT_TRUE(pool.Keep(&view));
  return view;
}

Bytes bytesOf(ByteView view) {
  return Bytes(view.data(), view.data() + view.size());
}

}  // namespace

TEST(SprmPool, KeepsABytewiseCopy) {
  ChainAllocator allocator;
  KSprmPool pool(allocator, 100);
  EXPECT_EQ(bytesOf(keep(pool, {1, 2, 3})), (Bytes{1, 2, 3}));
}

TEST(SprmPool, KeepsEqualListsOnce) {
  ChainAllocator allocator;
  KSprmPool pool(allocator, 3);
  const ByteView first = keep(pool, {1, 2, 3});
  EXPECT_EQ(keep(pool, {1, 2, 3}).data(), first.data());
}

TEST(SprmPool, KeepsListsApartThatBeginAlike) {
  ChainAllocator allocator;
  KSprmPool pool(allocator, 100);
  const ByteView longer = keep(pool, {1, 2, 3});
  EXPECT_EQ(bytesOf(keep(pool, {1, 2})), (Bytes{1, 2}));
  EXPECT_EQ(bytesOf(keep(pool, {1, 2, 4})), (Bytes{1, 2, 4}));
  EXPECT_EQ(bytesOf(longer), (Bytes{1, 2, 3}));
}

TEST(SprmPool, KeepsNothingForAnEmptyList) {
  ChainAllocator allocator;
  KSprmPool pool(allocator, 0);
  ByteView nothing;
  EXPECT_TRUE(pool.Keep(&nothing));
  EXPECT_TRUE(nothing.empty());
}

TEST(SprmPool, RefusesWhatPassesItsCapacity) {
  ChainAllocator allocator;
  KSprmPool pool(allocator, 5);
  keep(pool, {1, 2, 3});
  const Bytes more = {4, 5, 6};
  ByteView view(more.data(), more.size());
  EXPECT_FALSE(pool.Keep(&view));
}

TEST(SprmPool, KeepsMoreListsThanItRemembers) {
  ChainAllocator allocator;
  KSprmPool pool(allocator, 1 << 20);
  std::vector<ByteView> views;
  const auto list = [](uint32_t i) { return support::ByteWriter().u32(i).u16(7).take(); };
  for (uint32_t i = 0; i < 20000; ++i) views.push_back(keep(pool, list(i)));
  for (uint32_t i = 0; i < 20000; ++i) ASSERT_EQ(bytesOf(views[i]), list(i));
}

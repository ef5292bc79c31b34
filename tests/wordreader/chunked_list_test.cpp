#include "wordreader/chunked_list.h"

#include <gtest/gtest.h>

TEST(ChunkedList, HoldsItsElementsInOrder) {
  ChunkedList<int> list;
  EXPECT_TRUE(list.empty());
  for (int i = 0; i < 1000; ++i) {
    list.push_back(i);
    ASSERT_EQ(list.size(), static_cast<size_t>(i) + 1);
    ASSERT_EQ(list.back(), i);
  }
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(list[static_cast<size_t>(i)], i);
}

TEST(ChunkedList, ItsLastElementCanBeChanged) {
  ChunkedList<int> list;
  for (int i = 0; i < 256; ++i) list.push_back(i);
  list.back() = -1;
  EXPECT_EQ(list[255], -1);
}

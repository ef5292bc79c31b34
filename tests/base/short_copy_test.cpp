#include "base/short_copy.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

TEST(ShortCopy, CopiesEverySizeAndNoMore) {
  for (size_t size = 0; size < kShort; ++size) {
    std::vector<char> text(size);
    std::iota(text.begin(), text.end(), 'A');
    std::vector<char> out(size + 1, '#');
    EXPECT_EQ(copyShort(out.data(), std::string_view(text.data(), size)), out.data() + size);
    text.push_back('#');
    EXPECT_EQ(out, text);
  }
}

TEST(ShortCopy, LeavesTheNulOfALiteral) {
  char out[] = "....";
  EXPECT_EQ(copyShort(out, "abc"), out + 3);
  EXPECT_STREQ(out, "abc.");
}

#include "base/fixed_point.h"

#include <gtest/gtest.h>

TEST(FixedPoint, DividesTheFractionBy65535) {
  EXPECT_FLOAT_EQ(FixNumConv(0x8000), 0.50000763f);
  EXPECT_EQ(FixNumConv(0xFFFF), 1.0f);
}

TEST(FixedPoint, TakesTheSignFromTheHighHalf) {
  EXPECT_EQ(FixNumConv(static_cast<int>(0xFFFF0000)), -1.0f);
  EXPECT_EQ(FixNumConv(static_cast<int>(0xFFFFFFFF)), 0.0f);
  EXPECT_EQ(FixNumConv(0x00020000), 2.0f);
}

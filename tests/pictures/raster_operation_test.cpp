#include "pictures/raster_operation.h"

#include <gtest/gtest.h>

namespace pagerex {
namespace {

/// What a step makes of bits, where blending is a bitwise operation.
bool blended(const RasterStep& step, unsigned drawn, bool there) {
  if (step.changesNothing) return there;
  const bool before = step.invertsFirst ? !there : there, value = (step.function >> drawn & 1) != 0;
  switch (step.blend) {
    case Blend::kMultiply:
      return before && value;
    case Blend::kScreen:
      return before || value;
    case Blend::kDifference:
      return before != value;
    default:
      return value;
  }
}

TEST(RasterOperation, EveryBinaryOneIsSaidByBlending) {
  for (uint32_t rop2 = 1; rop2 <= 16; ++rop2) {
    for (unsigned pen = 0; pen < 2; ++pen) {
      for (const bool there : {false, true}) {
        const bool wanted = ((rop2 - 1) >> (2 * pen + (there ? 1 : 0)) & 1) != 0;
        EXPECT_EQ(blended(binaryStep(rop2), pen, there), wanted) << rop2 << ' ' << pen << ' ' << there;
      }
    }
  }
}

TEST(RasterOperation, NumbersThatAreNoneDrawPlainly) {
  for (const uint32_t rop2 : {0U, 17U, 0xFFFFFFFFU}) {
    EXPECT_EQ(binaryStep(rop2).blend, Blend::kNormal);
    EXPECT_EQ(applied(binaryStep(rop2).function, 0x123456), 0x123456U);
  }
}

TEST(RasterOperation, TheTernaryOnesThatOccurAreSaidByBlending) {
  constexpr uint8_t kOccurring[] = {0xCC, 0xEE, 0x88, 0x66, 0x44, 0x33, 0x11, 0xC0,
                                    0xBB, 0xF0, 0x5A, 0x55, 0x00, 0xFF, 0xAA};
  for (const uint8_t rop3 : kOccurring) {
    for (unsigned drawn = 0; drawn < 4; ++drawn) {
      for (const bool there : {false, true}) {
        const bool wanted = (rop3 >> (2 * drawn + (there ? 1 : 0)) & 1) != 0;
        EXPECT_EQ(blended(ternaryStep(rop3), drawn, there), wanted) << std::hex << int{rop3} << ' ' << drawn;
      }
    }
  }
}

TEST(RasterOperation, KnowsWhatItNeeds) {
  EXPECT_TRUE(needsSource(0xCC));
  EXPECT_FALSE(needsPattern(0xCC));
  EXPECT_FALSE(needsSource(0xF0));
  EXPECT_TRUE(needsPattern(0xF0));
  EXPECT_FALSE(needsSource(0x55));
  EXPECT_FALSE(needsPattern(0x00));
  EXPECT_TRUE(needsSource(0xC0));
  EXPECT_TRUE(needsPattern(0xC0));
}

TEST(RasterOperation, AppliesFunctionsToColours) {
  EXPECT_EQ(applied(0b10, 0x123456), 0x123456U);
  EXPECT_EQ(applied(0b01, 0x123456), 0xEDCBA9U);
  EXPECT_EQ(applied(0b00, 0x123456), 0x000000U);
  EXPECT_EQ(applied(0b11, 0x123456), 0xFFFFFFU);
}

}  // namespace
}  // namespace pagerex

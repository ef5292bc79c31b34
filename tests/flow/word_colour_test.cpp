#include "flow/word_colour.h"

#include <gtest/gtest.h>

#include "support/sprms.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::rgb;

ByteView viewOf(const Bytes& bytes) {
  return ByteView(bytes.data(), bytes.size());
}

TEST(WordColour, TurnsAColourWordAround) {
  EXPECT_EQ(colourOf(rgb(0x12, 0x34, 0x56)), (Colour{0x123456, false}));
}

TEST(WordColour, IsAutomaticByItsHighByte) {
  EXPECT_TRUE(colourOf(support::kAutoColour).isAutomatic);
  EXPECT_TRUE(colourOf(0xFFFFFFFF).isAutomatic);
}

TEST(WordColour, HasThePaletteOfWord97) {
  constexpr uint32_t kExpected[] = {0x000000, 0x0000FF, 0x00FFFF, 0x00FF00, 0xFF00FF, 0xFF0000,
                                    0xFFFF00, 0xFFFFFF, 0x000080, 0x008080, 0x008000, 0x800080,
                                    0x800000, 0x808000, 0x808080, 0xC0C0C0};
  for (uint8_t i = 0; i < 16; ++i) EXPECT_EQ(colourOfIndex(i + 1), (Colour{kExpected[i], false})) << int{i};
  EXPECT_TRUE(colourOfIndex(0).isAutomatic);
  EXPECT_TRUE(colourOfIndex(17).isAutomatic);
}

TEST(WordBorder, OfWord2000HasAllItsParts) {
  const Bytes brc = support::Border{rgb(255, 0, 0), 12, 3, 0x20 | 4}.bytes();
  const Border border = borderOf(viewOf(brc));
  EXPECT_EQ(border.kind, 3);
  EXPECT_EQ(border.widthEighths, 12);
  EXPECT_EQ(border.spacePoints, 4);
  EXPECT_TRUE(border.hasShadow);
  EXPECT_EQ(border.colour, (Colour{0xFF0000, false}));
}

TEST(WordBorder, OfWord97HasAllItsParts) {
  const Bytes brc = support::Border80{6, 1, 2, 0x20 | 1}.bytes();
  const Border border = border80Of(viewOf(brc));
  EXPECT_EQ(border.kind, 1);
  EXPECT_EQ(border.widthEighths, 6);
  EXPECT_EQ(border.spacePoints, 1);
  EXPECT_TRUE(border.hasShadow);
  EXPECT_EQ(border.colour, (Colour{0x0000FF, false}));
}

TEST(WordBorder, IsNotThereIfAllBitsAreSet) {
  const Bytes nil(8, 0xFF);
  EXPECT_FALSE(borderOf(viewOf(nil)).isThere());
  EXPECT_FALSE(border80Of(viewOf(nil)).isThere());
  EXPECT_FALSE(borderOf({}).isThere());
  EXPECT_FALSE(border80Of({}).isThere());
}

Shading shadingOfPattern(uint32_t front, uint32_t back, uint16_t pattern) {
  return shadingOf(viewOf(support::Shading{front, back, pattern}.bytes()));
}

TEST(WordShading, IsTheBackgroundWithoutAPattern) {
  EXPECT_EQ(shadingOfPattern(support::kAutoColour, rgb(1, 2, 3), 0), (Shading{true, {0x010203, false}}));
}

TEST(WordShading, IsNotThereWithoutPatternAndBackground) {
  EXPECT_FALSE(shadingOfPattern(support::kAutoColour, support::kAutoColour, 0).isThere);
  EXPECT_FALSE(shadingOfPattern(rgb(1, 2, 3), rgb(4, 5, 6), 0xFFFF).isThere);
}

TEST(WordShading, IsTheForegroundIfSolid) {
  EXPECT_EQ(shadingOfPattern(rgb(9, 8, 7), rgb(1, 1, 1), 1), (Shading{true, {0x090807, false}}));
}

TEST(WordShading, MixesThePatternIn) {
  EXPECT_EQ(shadingOfPattern(support::kAutoColour, support::kAutoColour, 8),
            (Shading{true, {0x808080, false}}))
      << "half of it black";
  EXPECT_EQ(shadingOfPattern(support::kAutoColour, support::kAutoColour, 5),
            (Shading{true, {0xBFBFBF, false}}))
      << "a quarter of it black";
  EXPECT_EQ(shadingOfPattern(rgb(0, 0, 0), rgb(100, 100, 100), 62), (Shading{true, {0x030303, false}}))
      << "97 percent of it black";
}

TEST(WordShading, OfWord97TakesColoursByIndex) {
  const auto shd80 = [](unsigned front, unsigned back, unsigned pattern) {
    const unsigned value = front | back << 5 | pattern << 10;
    return shading80Of(viewOf({static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8)}));
  };
  EXPECT_EQ(shd80(0, 7, 0), (Shading{true, {0xFFFF00, false}}));
  EXPECT_EQ(shd80(6, 7, 1), (Shading{true, {0xFF0000, false}}));
  EXPECT_FALSE(shd80(0, 0, 0).isThere);
  EXPECT_FALSE(shading80Of(viewOf({0xFF, 0xFF})).isThere);
}

}  // namespace
}  // namespace pagerex

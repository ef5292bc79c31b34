#include <gmock/gmock.h>

#include "pictures/dib_maker.h"

namespace {

using pagerex::Dib;
using pagerex::PixelChange;
using support::addColours;
using support::Bytes;
using support::ByteWriter;
using support::infoHeader;
using support::Png;
using support::pngOfPacked;
using support::viewOf;
using testing::ElementsAre;

constexpr uint32_t kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF, kWhite = 0xFFFFFFFF;

/// Two rows from the top: red, green; blue, white.
Bytes indexed() {
  ByteWriter out = infoHeader({2, -2, 8, 0, 4});
  return addColours(out, {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF}).bytes({0, 1, 0, 0, 2, 3, 0, 0}).take();
}

Bytes coloured() {
  ByteWriter out = infoHeader({2, -2, 32});
  return addColours(out, {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF}).take();
}

class PixelChanges : public testing::TestWithParam<bool> {
 protected:
  Png Changed(const PixelChange& change) const {
    return pngOfPacked(GetParam() ? indexed() : coloured(), change);
  }
};
INSTANTIATE_TEST_SUITE_P(IndexedAndNot, PixelChanges, testing::Bool());

TEST_P(PixelChanges, TakeAPart) {
  PixelChange change;
  change.left = 1;
  change.width = 1;
  change.height = 2;
  EXPECT_THAT(Changed(change).pixels, ElementsAre(kGreen, kWhite));
}

TEST_P(PixelChanges, TakeOfAPartWhatIsThere) {
  PixelChange change;
  change.left = -7;
  change.top = 1;
  change.width = 8;
  change.height = INT32_MAX;
  EXPECT_THAT(Changed(change).pixels, ElementsAre(kBlue));
}

TEST_P(PixelChanges, OfAPartThatIsNotThereMakeNothing) {
  for (const int32_t off : {2, INT32_MAX, INT32_MIN, -2}) {
    PixelChange change;
    change.top = off;
    change.width = change.height = 2;
    EXPECT_TRUE(Changed(change).pixels.empty());
  }
}

TEST_P(PixelChanges, MakeAColourClear) {
  PixelChange change;
  change.hasKey = true;
  change.key = 0x0000FF;
  EXPECT_THAT(Changed(change).pixels, ElementsAre(kRed, kGreen, 0, kWhite));
}

TEST_P(PixelChanges, CombineWithAPattern) {
  PixelChange change;
  change.operation = 0b0101;
  EXPECT_THAT(Changed(change).pixels, ElementsAre(0xFF00FFFF, 0xFFFF00FF, 0xFFFFFF00, 0xFF000000));
  change.operation = 0b1000;  // both
  change.pattern = 0xFF8000;
  EXPECT_THAT(Changed(change).pixels, ElementsAre(kRed, 0xFF008000, 0xFF000000, 0xFFFF8000));
  change.operation = 0b0110;  // one of them
  EXPECT_THAT(Changed(change).pixels, ElementsAre(0xFF008000, 0xFFFF7F00, 0xFFFF80FF, 0xFF007FFF));
  change.operation = 0b1100;  // the pattern
  EXPECT_THAT(Changed(change).pixels, ElementsAre(0xFFFF8000, 0xFFFF8000, 0xFFFF8000, 0xFFFF8000));
}

TEST_P(PixelChanges, ShowWhatAMaskShows) {
  const Bytes bytes = infoHeader({3, -3, 1}).zeros(8).u32(0).u32(0b00100000).u32(0b01000000).take();
  const Dib mask = pagerex::packedDib(viewOf(bytes));
  PixelChange change;
  change.mask = &mask;
  change.maskLeft = change.maskTop = 1;
  EXPECT_THAT(Changed(change).pixels, ElementsAre(0, kGreen, kBlue, 0));
  change.isMaskInverse = true;
  EXPECT_THAT(Changed(change).pixels, ElementsAre(kRed, 0, 0, kWhite));
}

TEST_P(PixelChanges, ShowAllOutsideAMask) {
  const Bytes bytes = infoHeader({1, 1, 1}).zeros(8).u32(0).take();
  const Dib mask = pagerex::packedDib(viewOf(bytes));
  PixelChange change;
  change.mask = &mask;
  EXPECT_THAT(Changed(change).pixels, ElementsAre(0, kGreen, kBlue, kWhite));
  change.maskLeft = INT32_MIN;
  EXPECT_THAT(Changed(change).pixels, ElementsAre(kRed, kGreen, kBlue, kWhite));
}

TEST_P(PixelChanges, DoWithoutAMaskThatIsNotThere) {
  const Dib mask;
  PixelChange change;
  change.mask = &mask;
  EXPECT_THAT(Changed(change).pixels, ElementsAre(kRed, kGreen, kBlue, kWhite));
}

TEST_P(PixelChanges, MaskMovesWithThePart) {
  const Bytes bytes = infoHeader({1, -1, 1}).zeros(8).u32(0).take();
  const Dib mask = pagerex::packedDib(viewOf(bytes));
  PixelChange change;
  change.left = change.top = 1;
  change.width = change.height = 1;
  change.mask = &mask;
  EXPECT_THAT(Changed(change).pixels, ElementsAre(0));
}

/// Tells fewer rows than it should.
class TwoRows final : public pagerex::PixelRows {
 public:
  bool Next(uint8_t* rgba) override {
    if (rows_++ == 2) return false;
    for (int i = 0; i < 4; ++i) *rgba++ = static_cast<uint8_t>(rows_ * 10 + i);
    return true;
  }

 private:
  int rows_ = 0;
};

TEST(PixelRowsPng, HasAlphaOrNot) {
  for (const bool isOpaque : {false, true}) {
    TwoRows rows;
    support::PictureMemory sink;
    ASSERT_TRUE(pagerex::writePng(rows, 1, 3, isOpaque, sink));
    const Png png = support::readPng(sink.bytes);
    const uint32_t first = isOpaque ? 0xFF0A0B0C : 0x0D0A0B0C, second = isOpaque ? 0xFF141516 : 0x17141516;
    EXPECT_THAT(png.pixels, ElementsAre(first, second, isOpaque ? kWhite : 0));
  }
}

TEST(PixelRowsPng, OfNoSizeIsNone) {
  TwoRows rows;
  support::PictureMemory sink;
  EXPECT_FALSE(pagerex::writePng(rows, 0, 3, true, sink));
  EXPECT_FALSE(pagerex::writePng(rows, -1, 3, true, sink));
  EXPECT_FALSE(pagerex::writePng(rows, INT32_MAX, 3, true, sink));
  EXPECT_FALSE(pagerex::writePng(rows, 3, 0, true, sink));
  EXPECT_TRUE(sink.bytes.empty());
}

/// Large enough for several parts, with rows that each filter is best for.
TEST(PngRows, OfAnyKindComeBack) {
  constexpr int32_t kWidth = 300, kHeight = 400;
  ByteWriter out = infoHeader({kWidth, -kHeight, 32});
  std::vector<uint32_t> expected;
  uint32_t noise = 1;
  for (uint32_t y = 0; y < kHeight; ++y) {
    for (uint32_t x = 0; x < kWidth; ++x) {
      noise = noise * 1664525 + 1013904223;
      const uint32_t kinds[] = {x * 0x010203, noise >> 8, (x * x) % 251 * 0x10101, 0x102030};
      expected.push_back(0xFF000000 | (kinds[y / 100] & 0xFFFFFF));
      out.u32(expected.back());
    }
  }
  EXPECT_EQ(pngOfPacked(out.take()).pixels, expected);
}

}  // namespace

#include "pictures/bitmap.h"

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
using support::pngOf;
using support::pngOfPacked;
using support::viewOf;
using testing::ElementsAre;

constexpr uint32_t kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF, kWhite = 0xFFFFFFFF,
                   kBlack = 0xFF000000;

/// One row of red, green, blue, white; four colours.
Bytes fourColours(int32_t width, int32_t height, uint16_t depth, const Bytes& bits,
                  uint32_t compression = 0) {
  ByteWriter out = infoHeader({width, height, depth, compression, 4});
  addColours(out, {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF}).bytes(bits);
  return out.take();
}

TEST(Bitmap, OfOneBitBecomesAPaletteOfTwo) {
  ByteWriter out = infoHeader({3, 1, 1});
  const Png png = pngOfPacked(addColours(out, {0x000000, 0xFF0000}).u32(0b01000000).take());
  EXPECT_EQ(png.kind, 3);
  EXPECT_EQ(png.depth, 1);
  EXPECT_THAT(png.pixels, ElementsAre(kBlack, kRed, kBlack));
}

TEST(Bitmap, OfTwoBitsIsRead) {
  const Png png = pngOfPacked(fourColours(4, 1, 2, {0b00011011, 0, 0, 0}));
  EXPECT_EQ(png.depth, 2);
  EXPECT_THAT(png.pixels, ElementsAre(kRed, kGreen, kBlue, kWhite));
}

TEST(Bitmap, OfFourBitsTakesAsFewBitsAsItsColoursNeed) {
  const Png png = pngOfPacked(fourColours(3, 1, 4, {0x12, 0x30, 0, 0}));
  EXPECT_EQ(png.depth, 2);
  EXPECT_THAT(png.pixels, ElementsAre(kGreen, kBlue, kWhite));
}

TEST(Bitmap, OfEightBitsStandsOnItsHead) {
  const Png png = pngOfPacked(fourColours(2, 2, 8, {0, 1, 9, 9, 2, 3, 9, 9}));
  EXPECT_THAT(png.pixels, ElementsAre(kBlue, kWhite, kRed, kGreen));
}

TEST(Bitmap, OfNegativeHeightStandsUpright) {
  const Png png = pngOfPacked(fourColours(2, -2, 8, {0, 1, 9, 9, 2, 3, 9, 9}));
  EXPECT_THAT(png.pixels, ElementsAre(kRed, kGreen, kBlue, kWhite));
}

TEST(Bitmap, IndexBeyondTheColoursIsTheFirst) {
  EXPECT_THAT(pngOfPacked(fourColours(2, 1, 8, {200, 1, 0, 0})).pixels, ElementsAre(kRed, kGreen));
}

TEST(Bitmap, OfGreysNeedsNoPalette) {
  ByteWriter out = infoHeader({2, 1, 8});
  for (uint32_t i = 0; i < 256; ++i) out.u32(i * 0x010101);
  const Png png = pngOfPacked(out.u32(0x8010).take());
  EXPECT_EQ(png.kind, 0);
  EXPECT_THAT(png.pixels, ElementsAre(0xFF101010, 0xFF808080));
}

TEST(Bitmap, OfSixteenBitsHasFiveOfEach) {
  const Png png = pngOfPacked(infoHeader({4, 1, 16}).u16(0x7C00).u16(0x03E0).u16(0x001F).u16(0x4210).take());
  EXPECT_EQ(png.kind, 2);
  EXPECT_THAT(png.pixels, ElementsAre(kRed, kGreen, kBlue, 0xFF848484));
}

TEST(Bitmap, OfSixteenBitsWithMasks) {
  ByteWriter out = infoHeader({3, 1, 16, 3});
  out.u32(0xF800).u32(0x07E0).u32(0x001F).u16(0xF800).u16(0x07E0).u16(0x8410).u16(0);
  EXPECT_THAT(pngOfPacked(out.take()).pixels, ElementsAre(kRed, kGreen, 0xFF848284));
}

TEST(Bitmap, OfThirtyTwoBitsWithMasksOfTenBits) {
  ByteWriter out = infoHeader({2, 1, 32, 3});
  out.u32(0x3FF00000).u32(0x000FFC00).u32(0x3FF).u32(0x3FF00000).u32(0x3FF | 0x200 << 10);
  EXPECT_THAT(pngOfPacked(out.take()).pixels, ElementsAre(kRed, 0xFF0080FF));
}

TEST(Bitmap, OfTwentyFourBitsIsBlueFirst) {
  const Bytes bits = {0, 0, 255, 0, 255, 0, 0, 0};
  EXPECT_THAT(pngOfPacked(infoHeader({2, 1, 24}).bytes(bits).take()).pixels, ElementsAre(kRed, kGreen));
}

TEST(Bitmap, OfThirtyTwoBitsIsOpaqueUnlessAlphaIsWanted) {
  const Bytes bytes = infoHeader({2, 1, 32}).u32(0x80FF0000).u32(0x000000FF).take();
  const Png opaque = pngOfPacked(bytes);
  EXPECT_EQ(opaque.kind, 2);
  EXPECT_THAT(opaque.pixels, ElementsAre(kRed, kBlue));
  PixelChange change;
  change.alpha = PixelChange::Alpha::kStraight;
  const Png clear = pngOfPacked(bytes, change);
  EXPECT_EQ(clear.kind, 6);
  EXPECT_THAT(clear.pixels, ElementsAre(0x80FF0000, 0));
}

TEST(Bitmap, PremultipliedColoursAreDivided) {
  PixelChange change;
  change.alpha = PixelChange::Alpha::kPremultiplied;
  const Bytes bytes = infoHeader({2, 1, 32}).u32(0x80804000).u32(0x10FF0000).take();
  EXPECT_THAT(pngOfPacked(bytes, change).pixels, ElementsAre(0x80FF8000, 0x10FF0000));
}

TEST(Bitmap, LongHeaderBringsAMaskOfAlpha) {
  ByteWriter out = infoHeader({2, 1, 32, 3, 0, 108});
  out.u32(0xFF).u32(0xFF00).u32(0xFF0000).u32(0xFF000000).zeros(108 - 56).u32(0x400000FF).u32(0xFF00FF00);
  const Bytes bytes = out.take();
  const Dib dib = pagerex::packedDib(viewOf(bytes));
  EXPECT_TRUE(pagerex::hasAlphaMask(dib));
  PixelChange change;
  change.alpha = PixelChange::Alpha::kStraight;
  EXPECT_THAT(pngOf(dib, change).pixels, ElementsAre(0x40FF0000, kGreen));
  EXPECT_THAT(pngOf(dib).pixels, ElementsAre(kRed, kGreen));
}

TEST(Bitmap, PlainHeaderBringsNoMaskOfAlpha) {
  const Bytes bytes = infoHeader({1, 1, 32}).u32(0).take();
  EXPECT_FALSE(pagerex::hasAlphaMask(pagerex::packedDib(viewOf(bytes))));
}

TEST(Bitmap, OfACoreHeaderHasColoursOfThreeBytes) {
  ByteWriter out;
  out.u32(12).u16(2).u16(1).u16(1).u16(1).bytes({0, 0, 255, 0, 255, 0}).u32(0b01000000);
  const Bytes bytes = out.take();
  EXPECT_THAT(pngOfPacked(bytes).pixels, ElementsAre(kRed, kGreen));
  const pagerex::BitmapSize size = pagerex::sizeOf(pagerex::packedDib(viewOf(bytes)));
  EXPECT_EQ(size.width, 2);
  EXPECT_EQ(size.height, 1);
  EXPECT_EQ(size.depth, 1);
}

TEST(Bitmap, ColoursAreIndexesOfAPalette) {
  const Bytes palette = {255, 0, 0, 0, 0, 255, 0, 0, 0, 0, 255, 0};
  const Bytes bytes = infoHeader({2, 1, 1}).u16(2).u16(1).u32(0b01000000).take();
  Dib dib = pagerex::packedDib(viewOf(bytes), true);
  dib.palette = viewOf(palette);
  EXPECT_THAT(pngOf(dib).pixels, ElementsAre(kBlue, kGreen));
}

TEST(Bitmap, WithoutColoursIsGreyOrOfInks) {
  const Bytes header = infoHeader({2, 1, 1}).take(), bits = {0b01000000, 0, 0, 0};
  const Dib dib{viewOf(header), viewOf(bits), false, {}};
  EXPECT_THAT(pngOf(dib).pixels, ElementsAre(kBlack, kWhite));
  PixelChange change;
  change.hasInks = true;
  change.inks[0] = 0xFF0000;
  change.inks[1] = 0x0000FF;
  EXPECT_THAT(pngOf(dib, change).pixels, ElementsAre(kRed, kBlue));
}

TEST(Bitmap, WithColoursTakesNoInks) {
  ByteWriter out = infoHeader({2, 1, 1});
  PixelChange change;
  change.hasInks = true;
  const Bytes bytes = addColours(out, {0xFF0000, 0x0000FF}).u32(0b01000000).take();
  EXPECT_THAT(pngOfPacked(bytes, change).pixels, ElementsAre(kRed, kBlue));
}

TEST(Bitmap, OfAFileLiesWhereTheFileSays) {
  ByteWriter out;
  out.text8("BM").zeros(8).u32(14 + 40 + 8 + 4);
  ByteWriter info = infoHeader({2, 1, 1});
  out.bytes(addColours(info, {0xFF0000, 0x0000FF}).u32(0xFFFFFFFF).u32(0b01000000).take());
  const Bytes bytes = out.take();
  EXPECT_THAT(pngOf(pagerex::dibOfFile(viewOf(bytes))).pixels, ElementsAre(kRed, kBlue));
}

TEST(Bitmap, TooManyColoursAreThereOnlyWithPixelsBehindThem) {
  for (const bool areThere : {true, false}) {
    ByteWriter out = infoHeader({2, 1, 1, 0, 3});
    addColours(out, {0xFF0000, 0x0000FF});
    if (areThere) out.u32(0xFFFFFFFF);
    EXPECT_THAT(pngOfPacked(out.u32(0b01000000).take()).pixels, ElementsAre(kRed, kBlue));
  }
}

TEST(Bitmap, ColoursOfDeepPixelsAreSkipped) {
  const Bytes bytes = infoHeader({1, 1, 32, 0, 2}).u32(1).u32(2).u32(0xFF0000).take();
  EXPECT_THAT(pngOfPacked(bytes).pixels, ElementsAre(kRed));
}

// --- Runs ---

TEST(BitmapRuns, OfEightBits) {
  const Bytes runs = {2, 1, 0, 3, 2, 3, 0, 0, /* absolute, padded */ 0, 0, 5, 2, 0, 1};
  const Png png = pngOfPacked(fourColours(5, 2, 8, runs, 1));
  EXPECT_THAT(png.pixels,
              ElementsAre(kBlue, kBlue, kBlue, kBlue, kBlue, kGreen, kGreen, kBlue, kWhite, kRed));
}

TEST(BitmapRuns, OfFourBits) {
  const Bytes runs = {3, 0x12, 0, 3, 0x31, 0x20, 0, 0, 0, 5, 0x12, 0x31, 0x20, 0, 1, 0x22, 0, 1};
  const Png png = pngOfPacked(fourColours(6, 2, 4, runs, 2));
  EXPECT_THAT(png.pixels, ElementsAre(kGreen, kBlue, kWhite, kGreen, kBlue, kBlue,  //
                                      kGreen, kBlue, kGreen, kWhite, kGreen, kBlue));
}

TEST(BitmapRuns, MoveLeavesTheFirstColour) {
  const Bytes runs = {1, 1, 0, 2, 1, 0, 1, 2, 0, 2, 0, 2, 1, 3, 0, 1};
  const Png png = pngOfPacked(fourColours(4, 3, 8, runs, 1));
  EXPECT_THAT(png.pixels, ElementsAre(kRed, kRed, kRed, kWhite,  //
                                      kRed, kRed, kRed, kRed,    //
                                      kGreen, kRed, kBlue, kRed));
}

TEST(BitmapRuns, WithoutAnEndAreAsHighAsTheyReach) {
  const Png png = pngOfPacked(fourColours(2, 9, 8, {2, 1, 0, 0, 2, 2}, 1));
  EXPECT_THAT(png.pixels, ElementsAre(kBlue, kBlue, kGreen, kGreen));
}

TEST(BitmapRuns, LongerThanARowAreCut) {
  const Png png = pngOfPacked(fourColours(2, 1, 8, {255, 1, 255, 2, 0, 1}, 1));
  EXPECT_THAT(png.pixels, ElementsAre(kGreen, kGreen));
}

TEST(BitmapRuns, OfFewBytesAreCut) {
  const Png tall = pngOfPacked(fourColours(1000, 2'000'000'000, 8, {0, 1}, 1));
  EXPECT_EQ(tall.width, 1000);
  EXPECT_EQ(tall.height, 66);
  EXPECT_TRUE(pngOfPacked(fourColours(65535, 65535, 8, {0, 2, 255, 255, 0, 2, 255, 255, 1, 1}, 1)).height <=
              1);
  EXPECT_TRUE(pngOfPacked(fourColours(INT32_MAX, 1, 8, {0, 1}, 1)).pixels.empty());
}

// --- Sizes ---

TEST(BitmapSizes, RowsThatAreWantingAreNotThere) {
  const Png fromBelow = pngOfPacked(fourColours(2, 9, 8, {0, 1, 9, 9, 2, 3}));
  EXPECT_THAT(fromBelow.pixels, ElementsAre(kBlue, kWhite, kRed, kGreen));
  const Png fromAbove = pngOfPacked(fourColours(2, -9, 8, {0, 1, 9, 9, 2, 3}));
  EXPECT_THAT(fromAbove.pixels, ElementsAre(kRed, kGreen, kBlue, kWhite));
}

TEST(BitmapSizes, ThatCannotBeAreRefused) {
  for (const uint16_t depth : {1, 4, 8, 16, 24, 32}) {
    for (const int32_t width : {0, -5, INT32_MIN, INT32_MAX, 65535}) {
      for (const int32_t height : {0, INT32_MIN, INT32_MAX, 65535, 3, -3}) {
        ByteWriter out = infoHeader({width, height, depth, 0, 1});
        EXPECT_TRUE(pngOfPacked(out.u32(0).u32(0).u32(0).take()).pixels.empty());
      }
    }
  }
}

TEST(BitmapSizes, DepthsAndCompressionsThatAreNoneAreRefused) {
  const Bytes bits(4096, 1);
  for (const uint16_t depth : {0, 3, 7, 15, 33, 64, 65535}) {
    EXPECT_TRUE(pngOfPacked(infoHeader({2, 2, depth}).bytes(bits).take()).pixels.empty()) << depth;
  }
  for (const uint32_t compression : {1u, 2u, 4u, 5u, 7u, 0xFFFFFFFFu}) {
    EXPECT_TRUE(pngOfPacked(infoHeader({2, 2, 24, compression}).bytes(bits).take()).pixels.empty());
  }
}

TEST(BitmapSizes, ShortenedAnywhereHarmsNothing) {
  const Bytes whole = fourColours(5, 2, 8, {2, 1, 0, 3, 2, 3, 0, 0, 0, 0, 0, 2, 1, 0, 1, 2, 0, 1}, 1);
  for (size_t size = 0; size < whole.size(); ++size) {
    const Png png = pngOfPacked(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size)));
    EXPECT_LE(png.height, 2);
  }
}

TEST(BitmapSizes, HeaderTellsThemAsTheyAre) {
  const Bytes bytes = infoHeader({-3, 5, 8}).take();
  EXPECT_EQ(pagerex::sizeOf(pagerex::packedDib(viewOf(bytes))).width, 0);
  EXPECT_EQ(pagerex::sizeOf(Dib()).width, 0);
}

TEST(Bitmap, ThatIsAJpegIsPassed) {
  Bytes bytes = infoHeader({8, 8, 0, 4}).bytes({0xFF, 0xD8, 0xFF, 0xE0, 0}).take();
  EXPECT_EQ(pagerex::compressedImage(pagerex::packedDib(viewOf(bytes))).size(), 5u);
  support::patchInteger(bytes, 20, uint32_t{4});
  const ByteView image = pagerex::compressedImage(pagerex::packedDib(viewOf(bytes)));
  EXPECT_EQ(image.size(), 4u);
  EXPECT_EQ(image.u8(1), 0xD8);
  EXPECT_TRUE(pngOfPacked(bytes).pixels.empty());
}

TEST(Bitmap, OfPixelsHasNoImageInside) {
  const Bytes bytes = fourColours(2, 1, 8, {0, 1, 0, 0});
  EXPECT_TRUE(pagerex::compressedImage(pagerex::packedDib(viewOf(bytes))).empty());
}

TEST(Bitmap, EndsWhenTheSinkDoes) {
  const Bytes bytes = fourColours(2, 1, 8, {0, 1, 0, 0});
  support::PictureMemory whole;
  ASSERT_TRUE(pagerex::writePng(pagerex::packedDib(viewOf(bytes)), {}, whole));
  for (size_t most = 0; most < whole.bytes.size(); ++most) {
    support::PictureMemory sink(most);
    EXPECT_FALSE(pagerex::writePng(pagerex::packedDib(viewOf(bytes)), {}, sink)) << most;
  }
}

}  // namespace

#include <gmock/gmock.h>
#include <zlib.h>

#include "pictures/fax_encoder.h"
#include "pictures/metafile.h"
#include "pictures/tiff_maker.h"
#include "support/picture_memory.h"
#include "support/png_reader.h"

namespace {

using pagerex::PictureResult;
using support::Bytes;
using support::FaxEncoder;
using support::FaxImage;
using support::Png;
using support::TiffMaker;
using testing::ElementsAre;

enum Tag : uint32_t {
  kWidth = 256,
  kHeight = 257,
  kBits = 258,
  kCompression = 259,
  kMeaning = 262,
  kBitOrder = 266,
  kOrientation = 274,
  kSamples = 277,
  kStripRows = 278,
  kPlanes = 284,
  kFaxOptions = 292,
  kPredictor = 317,
  kColours = 320,
  kTileWidth = 322,
  kTileHeight = 323,
  kExtraSamples = 338,
};

constexpr uint32_t kBlack = 0xFF000000, kWhite = 0xFFFFFFFF;

Png pngOf(const Bytes& tiff, PictureResult expected = PictureResult::kWhole) {
  support::PictureMemory sink;
  const PictureResult result = pagerex::writeTiffAsPng({tiff.data(), tiff.size()}, sink);
  EXPECT_EQ(result, expected);
  return sink.bytes.empty() ? Png() : support::readPng(sink.bytes);
}

TiffMaker image(uint32_t width, uint32_t height, uint32_t bits, uint32_t samples, uint32_t meaning,
                uint32_t compression = 1, bool isBig = false) {
  TiffMaker made(isBig);
  made.Short(kWidth, {width}).Long(kHeight, {height}).Short(kBits, std::vector<uint32_t>(samples, bits));
  made.Short(kCompression, {compression}).Short(kMeaning, {meaning}).Short(kSamples, {samples});
  return made;
}

Bytes deflated(const Bytes& bytes) {
  uLongf size = compressBound(bytes.size());
  Bytes packed(size);
  compress(packed.data(), &size, bytes.data(), bytes.size());
  packed.resize(size);
  return packed;
}

/// Every byte as a word of its own, or by the words made so far.
Bytes lzw(const Bytes& bytes) {
  std::vector<Bytes> words;
  FaxEncoder out;
  unsigned width = 9;
  const auto put = [&](size_t code) {
    std::string bits;
    for (unsigned i = width; i-- > 0;) bits += code >> i & 1 ? '1' : '0';
    out.PutBits(bits);
  };
  put(256);
  Bytes word;
  const auto codeOf = [&](const Bytes& sought) -> size_t {
    if (sought.size() == 1) return sought[0];
    const auto found = std::find(words.begin(), words.end(), sought);
    return found == words.end() ? SIZE_MAX : 258 + static_cast<size_t>(found - words.begin());
  };
  for (const uint8_t byte : bytes) {
    Bytes longer = word;
    longer.push_back(byte);
    if (codeOf(longer) != SIZE_MAX) {
      word = longer;
      continue;
    }
    put(codeOf(word));
    words.push_back(longer);
    const size_t next = 258 + words.size();
    if (next == 4095) {
      put(256);
      words.clear();
      width = 9;
    } else if (next >= size_t{1} << width) {
      ++width;
    }
    word = {byte};
  }
  put(codeOf(word));
  put(257);
  return out.Take();
}

TEST(Tiff, OfBothOrdersOfBytesIsRead) {
  for (const bool isBig : {false, true}) {
    const Bytes file =
        image(2, 2, 8, 3, 2, 1, isBig).Segments({{255, 0, 0, 0, 255, 0, 0, 0, 255, 1, 2, 3}}).Make();
    EXPECT_THAT(pngOf(file).pixels, ElementsAre(0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFF010203));
  }
}

TEST(Tiff, OfStripsIsRead) {
  const Bytes file = image(1, 3, 8, 1, 1).Short(kStripRows, {2}).Segments({{1, 2}, {3}}).Make();
  const Png png = pngOf(file);
  EXPECT_EQ(png.kind, 0);
  EXPECT_THAT(png.pixels, ElementsAre(0xFF010101, 0xFF020202, 0xFF030303));
}

TEST(Tiff, OfOneBitIsBlackOnWhiteOrNot) {
  for (const uint32_t meaning : {0u, 1u}) {
    const Png png = pngOf(image(3, 1, 1, 1, meaning).Segments({{0b01000000}}).Make());
    EXPECT_EQ(png.depth, 1);
    const uint32_t zero = meaning ? kBlack : kWhite, one = meaning ? kWhite : kBlack;
    EXPECT_THAT(png.pixels, ElementsAre(zero, one, zero));
  }
}

TEST(Tiff, OfFourBitsHasAPalette) {
  std::vector<uint32_t> colours(48);
  colours[1] = 0xFFFF;
  colours[16 + 2] = 0x8000;
  const Png png = pngOf(image(3, 1, 4, 1, 3).Short(kColours, colours).Segments({{0x12, 0x00}}).Make());
  EXPECT_THAT(png.pixels, ElementsAre(0xFFFF0000, 0xFF008000, kBlack));
}

TEST(Tiff, PaletteOfBytesIsTakenAsSuch) {
  std::vector<uint32_t> colours = {255, 0, 0, 128, 0, 7};
  const Png png = pngOf(image(2, 1, 1, 1, 3).Short(kColours, colours).Segments({{0b01000000}}).Make());
  EXPECT_THAT(png.pixels, ElementsAre(0xFFFF0000, 0xFF008007));
}

TEST(Tiff, OfSixteenBitsKeepsTheUpperOnes) {
  EXPECT_THAT(pngOf(image(1, 1, 16, 3, 2).Segments({{0, 10, 0, 20, 0, 30}}).Make()).pixels,
              ElementsAre(0xFF0A141E));
  EXPECT_THAT(pngOf(image(1, 1, 16, 3, 2, 1, true).Segments({{10, 0, 20, 0, 30, 0}}).Make()).pixels,
              ElementsAre(0xFF0A141E));
}

TEST(Tiff, OfInksBecomesColours) {
  const Bytes file = image(2, 1, 8, 4, 5).Segments({{255, 0, 0, 0, 0, 0, 255, 128}}).Make();
  EXPECT_THAT(pngOf(file).pixels, ElementsAre(0xFF00FFFF, 0xFF7F7F00));
}

TEST(Tiff, AlphaIsStraightOrPremultipliedOrNone) {
  const Bytes pixel = {64, 32, 0, 128};
  const uint32_t expected[] = {0xFF402000, 0x80804000, 0x80402000};
  for (uint32_t kind = 0; kind < 3; ++kind) {
    EXPECT_THAT(pngOf(image(1, 1, 8, 4, 2).Short(kExtraSamples, {kind}).Segments({pixel}).Make()).pixels,
                ElementsAre(expected[kind]));
  }
}

TEST(Tiff, GreyMayHaveAlpha) {
  const Bytes file = image(1, 1, 8, 2, 0).Short(kExtraSamples, {2}).Segments({{55, 99}}).Make();
  EXPECT_THAT(pngOf(file).pixels, ElementsAre(0x63C8C8C8));
}

TEST(Tiff, PlanesLieOneBehindTheOther) {
  const Bytes file = image(2, 2, 8, 3, 2)
                         .Short(kPlanes, {2})
                         .Short(kStripRows, {1})
                         .Segments({{1, 2}, {3, 4}, {5, 6}, {7, 8}, {9, 10}, {11, 12}})
                         .Make();
  EXPECT_THAT(pngOf(file).pixels, ElementsAre(0xFF010509, 0xFF02060A, 0xFF03070B, 0xFF04080C));
}

TEST(Tiff, TilesLieBesideEachOther) {
  std::vector<Bytes> tiles;
  for (uint8_t i = 0; i < 4; ++i) tiles.emplace_back(16 * 16, static_cast<uint8_t>(i * 10));
  const Png png = pngOf(
      image(20, 18, 8, 1, 1).Short(kTileWidth, {16}).Short(kTileHeight, {16}).Segments(tiles, true).Make());
  EXPECT_EQ(png.at(15, 15), kBlack);
  EXPECT_EQ(png.at(16, 15), 0xFF0A0A0A);
  EXPECT_EQ(png.at(15, 16), 0xFF141414);
  EXPECT_EQ(png.at(19, 17), 0xFF1E1E1E);
}

TEST(Tiff, TilesMayHavePlanes) {
  std::vector<Bytes> tiles;
  for (uint8_t i = 0; i < 6; ++i) tiles.emplace_back(16 * 16, static_cast<uint8_t>(i * 10));
  const Png png = pngOf(image(20, 16, 8, 3, 2)
                            .Short(kPlanes, {2})
                            .Short(kTileWidth, {16})
                            .Short(kTileHeight, {16})
                            .Segments(tiles, true)
                            .Make());
  EXPECT_EQ(png.at(0, 0), 0xFF001428);
  EXPECT_EQ(png.at(19, 15), 0xFF0A1E32);
}

TEST(Tiff, DifferencesAreAddedUp) {
  const Bytes file =
      image(3, 1, 8, 3, 2).Short(kPredictor, {2}).Segments({{1, 2, 3, 1, 1, 1, 255, 0, 0}}).Make();
  EXPECT_THAT(pngOf(file).pixels, ElementsAre(0xFF010203, 0xFF020304, 0xFF010304));
  for (const bool isBig : {false, true}) {
    const Bytes numbers = isBig ? Bytes{1, 200, 0, 100} : Bytes{200, 1, 100, 0};
    const Bytes deep = image(2, 1, 16, 1, 1, 1, isBig).Short(kPredictor, {2}).Segments({numbers}).Make();
    EXPECT_THAT(pngOf(deep).pixels, ElementsAre(0xFF010101, 0xFF020202));
  }
}

TEST(Tiff, OrientationTurnsIt) {
  // 1 2
  // 3 4
  const std::vector<std::vector<uint32_t>> expected = {{1, 2, 3, 4}, {2, 1, 4, 3}, {4, 3, 2, 1},
                                                       {3, 4, 1, 2}, {1, 3, 2, 4}, {3, 1, 4, 2},
                                                       {4, 2, 3, 1}, {2, 4, 1, 3}};
  for (uint32_t i = 0; i < 8; ++i) {
    const Png png = pngOf(image(2, 2, 8, 1, 1).Short(kOrientation, {i + 1}).Segments({{1, 2, 3, 4}}).Make());
    std::vector<uint32_t> greys;
    for (const uint32_t pixel : png.pixels) greys.push_back(pixel & 255);
    EXPECT_EQ(greys, expected[i]) << i + 1;
  }
  const Png turned =
      pngOf(image(2, 1, 8, 3, 2).Short(kOrientation, {6}).Segments({{1, 1, 1, 2, 2, 2}}).Make());
  EXPECT_EQ(turned.height, 2);
  EXPECT_THAT(turned.pixels, ElementsAre(0xFF010101, 0xFF020202));
}

TEST(TiffPacked, RunsOfBytes) {
  const Bytes packed = {128, 2, 1, 2, 3, static_cast<uint8_t>(-3), 9, 0, 5};
  const Png png = pngOf(image(4, 2, 8, 1, 1, 32773).Segments({packed}).Make());
  EXPECT_THAT(png.pixels, ElementsAre(0xFF010101, 0xFF020202, 0xFF030303, 0xFF090909,  //
                                      0xFF090909, 0xFF090909, 0xFF090909, 0xFF050505));
}

TEST(TiffPacked, WordsAndDeflated) {
  constexpr uint32_t kSide = 120;
  Bytes pixels;
  uint32_t noise = 1;
  for (uint32_t i = 0; i < kSide * kSide; ++i) {
    noise = noise * 1664525 + 1013904223;
    pixels.push_back(i < 3000 ? 7 : static_cast<uint8_t>(noise >> (i < 9000 ? 30 : 24)));
  }
  for (const uint32_t compression : {5u, 8u, 32946u}) {
    const Bytes packed = compression == 5 ? lzw(pixels) : deflated(pixels);
    const Png png = pngOf(image(kSide, kSide, 8, 1, 1, compression).Segments({packed}).Make());
    ASSERT_EQ(png.pixels.size(), pixels.size());
    for (size_t i = 0; i < pixels.size(); ++i)
      ASSERT_EQ(png.pixels[i] & 255, pixels[i]) << compression << ' ' << i;
  }
}

// --- Facsimile ---

/// Rows alike and rows that differ, short runs and long ones.
FaxImage faxImage(size_t width, size_t height, uint32_t noise) {
  FaxImage rows;
  const auto next = [&noise] { return (noise = noise * 1664525 + 1013904223) >> 16; };
  for (size_t y = 0; y < height; ++y) {
    std::vector<bool> row = rows.empty() || next() % 4 == 0 ? std::vector<bool>(width) : rows.back();
    for (uint32_t i = next() % 9; i > 0; --i) {
      const size_t from = next() % width, length = 1 + next() % (i % 2 ? 6 : 4000);
      for (size_t x = from; x < std::min(width, from + length); ++x) row[x] = i % 3 != 0;
    }
    rows.push_back(row);
  }
  return rows;
}

Bytes encoded(const FaxImage& rows, uint32_t compression, bool areBoth) {
  FaxEncoder out;
  const std::string rowEnd = "000000000001";
  std::vector<bool> before(rows[0].size());
  for (size_t y = 0; y < rows.size(); ++y) {
    const bool isPlain = compression == 2 || (compression == 3 && (!areBoth || y % 4 == 0));
    if (compression == 3) out.PutBits((y % 5 == 0 ? "00000" : "") + rowEnd);
    if (areBoth) out.PutBits(isPlain ? "1" : "0");
    if (isPlain) {
      out.PutPlainRow(rows[y]);
    } else {
      out.PutRowByTheOneBefore(rows[y], before);
    }
    if (compression == 2) out.Align();
    before = rows[y];
  }
  if (compression != 2) out.PutBits(rowEnd + (areBoth ? "1" : "") + rowEnd);
  return out.Take();
}

void expectRows(const Png& png, const FaxImage& rows, size_t count) {
  ASSERT_EQ(png.pixels.size(), rows.size() * rows[0].size());
  for (size_t y = 0; y < count; ++y) {
    for (size_t x = 0; x < rows[y].size(); ++x) {
      ASSERT_EQ(png.at(static_cast<int>(x), static_cast<int>(y)), rows[y][x] ? kBlack : kWhite)
          << x << ' ' << y;
    }
  }
}

struct FaxCase {
  uint32_t compression;
  bool areBoth;
};
class TiffFax : public testing::TestWithParam<FaxCase> {};
INSTANTIATE_TEST_SUITE_P(OfEachKind, TiffFax,
                         testing::Values(FaxCase{2, false}, FaxCase{3, false}, FaxCase{3, true},
                                         FaxCase{4, false}));

TEST_P(TiffFax, IsRead) {
  for (const uint32_t width : {1u, 7u, 64u, 1728u, 6001u}) {
    const FaxImage rows = faxImage(width, 60, width);
    const Bytes packed = encoded(rows, GetParam().compression, GetParam().areBoth);
    const Png png = pngOf(image(width, 60, 1, 1, 0, GetParam().compression)
                              .Long(kFaxOptions, {GetParam().areBoth ? 1u : 0u})
                              .Segments({packed})
                              .Make());
    EXPECT_NO_FATAL_FAILURE(expectRows(png, rows, 60));
  }
}

TEST_P(TiffFax, MayHaveItsBitsReversed) {
  const FaxImage rows = faxImage(50, 9, 3);
  Bytes packed = encoded(rows, GetParam().compression, GetParam().areBoth);
  for (uint8_t& byte : packed) {
    unsigned turned = 0;
    for (int i = 0; i < 8; ++i) turned |= (byte >> i & 1u) << (7 - i);
    byte = static_cast<uint8_t>(turned);
  }
  const Png png = pngOf(image(50, 9, 1, 1, 0, GetParam().compression)
                            .Long(kFaxOptions, {GetParam().areBoth ? 1u : 0u})
                            .Short(kBitOrder, {2})
                            .Segments({packed})
                            .Make());
  EXPECT_NO_FATAL_FAILURE(expectRows(png, rows, 9));
}

TEST_P(TiffFax, ShortenedKeepsItsFirstRows) {
  const FaxImage rows = faxImage(200, 20, 5);
  const Bytes first =
      encoded(FaxImage(rows.begin(), rows.begin() + 8), GetParam().compression, GetParam().areBoth);
  const Png png = pngOf(image(200, 20, 1, 1, 0, GetParam().compression)
                            .Long(kFaxOptions, {GetParam().areBoth ? 1u : 0u})
                            .Segments({first})
                            .Make(),
                        PictureResult::kInPart);
  EXPECT_NO_FATAL_FAILURE(expectRows(png, rows, 8));
  EXPECT_EQ(png.at(0, 19), kWhite);
}

TEST_P(TiffFax, OfNoiseIsSomething) {
  uint32_t noise = 9;
  for (int round = 0; round < 200; ++round) {
    Bytes packed;
    for (int i = 0; i < 300; ++i) {
      noise = noise * 1664525 + 1013904223;
      packed.push_back(static_cast<uint8_t>(noise >> 24 & (round % 2 ? 255u : noise >> 16)));
    }
    support::PictureMemory sink;
    const Bytes file = image(99, 50, 1, 1, 0, GetParam().compression)
                           .Long(kFaxOptions, {GetParam().areBoth ? 1u : 0u})
                           .Segments({packed})
                           .Make();
    EXPECT_LE(pagerex::writeTiffAsPng({file.data(), file.size()}, sink), PictureResult::kInPart);
    EXPECT_EQ(support::readPng(sink.bytes).height, 50);
  }
}

TEST(TiffFaxRows, LostRowIsFollowedByGoodOnes) {
  FaxEncoder out;
  const std::vector<bool> row = {false, true, true, false};
  for (int y = 0; y < 3; ++y) {
    out.PutBits("000000000001");
    y == 1 ? out.PutBits("0000000011") : out.PutPlainRow(row);
  }
  const Png png = pngOf(image(4, 3, 1, 1, 0, 3).Segments({out.Take()}).Make());
  EXPECT_EQ(png.at(1, 0), kBlack);
  EXPECT_EQ(png.at(1, 2), kBlack);
}

// --- Damaged ---

TEST(TiffDamaged, IsNone) {
  const auto nothing = [](const Bytes& file) {
    EXPECT_TRUE(pngOf(file, PictureResult::kNothing).pixels.empty());
  };
  nothing({});
  nothing({'I', 'I', 42, 0});
  nothing({'I', 'M', 42, 0, 8, 0, 0, 0});
  nothing(image(0, 1, 8, 1, 1).Segments({{1}}).Make());
  nothing(image(1, 0, 8, 1, 1).Segments({{1}}).Make());
  nothing(image(1, 1, 8, 1, 6).Segments({{1}}).Make());
  nothing(image(1, 1, 8, 1, 1, 7).Segments({{1}}).Make());
  nothing(image(1, 1, 9, 1, 1).Segments({{1, 1}}).Make());
  nothing(image(1, 1, 8, 2, 2).Segments({{1, 1}}).Make());
  nothing(image(1, 1, 16, 1, 3).Segments({{1, 1}}).Make());
  nothing(image(1, 1, 8, 1, 1, 4).Segments({{1, 1}}).Make());
  nothing(image(1, 1, 8, 1, 1).Short(kTileWidth, {7}).Short(kTileHeight, {8}).Segments({{1}}, true).Make());
  nothing(image(1, 1, 8, 1, 1).Short(kTileWidth, {0}).Short(kTileHeight, {8}).Segments({{1}}, true).Make());
}

TEST(TiffDamaged, ShortStripIsFilledUp) {
  const Png png = pngOf(image(1, 3, 8, 1, 1).Segments({{9, 8}}).Make(), PictureResult::kInPart);
  EXPECT_THAT(png.pixels, ElementsAre(0xFF090909, 0xFF080808, kBlack));
}

TEST(TiffDamaged, HugeSizesCostLittle) {
  for (const uint32_t compression : {1u, 4u, 5u, 8u, 32773u}) {
    const uint32_t bits = compression == 4 ? 1 : 8;
    for (const uint32_t width : {100u, 65535u}) {
      const Png png = pngOf(image(width, 0x7FFFFFFF, bits, 1, 1, compression).Segments({{1, 2, 3}}).Make(),
                            width * bits * 8 > (1u << 26) ? PictureResult::kNothing : PictureResult::kInPart);
      EXPECT_LT(png.pixels.size(), size_t{1} << 26);
    }
  }
  const Bytes tiles = image(65535, 65535, 8, 1, 1)
                          .Long(kTileWidth, {0x7FFFFFF8})
                          .Long(kTileHeight, {0x7FFFFFFF})
                          .Segments({{1}}, true)
                          .Make();
  EXPECT_TRUE(pngOf(tiles, PictureResult::kNothing).pixels.empty());
}

TEST(TiffDamaged, StripsThatLieOnEachOtherAreReadOnlySoOften) {
  // Bytes that stand for nothing, told as each of many strips.
  const Bytes nothing(100'000, 128);
  std::vector<uint32_t> offsets(20'000, 8), sizes(20'000, 100'000);
  const Bytes file = image(1, 20'000, 8, 1, 1, 32773).Segments({nothing}).Long(kStripRows, {1}).Make();
  Bytes many = image(1, 20'000, 8, 1, 1, 32773)
                   .Segments({nothing})
                   .Short(kStripRows, {1})
                   .Long(273, offsets)
                   .Long(279, sizes)
                   .Make();
  EXPECT_EQ(pngOf(many, PictureResult::kInPart).height, 20'000);
  EXPECT_EQ(pngOf(file, PictureResult::kInPart).height, 20'000);
}

TEST(TiffDamaged, ShortenedAnywhereHarmsNothing) {
  const Bytes whole = image(20, 18, 8, 1, 1, 8)
                          .Short(kTileWidth, {16})
                          .Short(kTileHeight, {16})
                          .Segments(std::vector<Bytes>(4, deflated(Bytes(256, 5))), true)
                          .Make();
  for (size_t size = 0; size < whole.size(); ++size) {
    support::PictureMemory sink;
    const PictureResult result = pagerex::writeTiffAsPng({whole.data(), size}, sink);
    EXPECT_EQ(result == PictureResult::kNothing, sink.bytes.empty());
  }
}

TEST(TiffDamaged, SinkMayRefuse) {
  const Bytes file = image(1, 3, 8, 1, 1).Segments({{1, 2, 3}}).Make();
  for (const size_t most : {0u, 20u, 60u}) {
    support::PictureMemory sink(most);
    EXPECT_EQ(pagerex::writeTiffAsPng({file.data(), file.size()}, sink), PictureResult::kRefused);
  }
}

}  // namespace

// Images of EMF+.

#include <gtest/gtest.h>

#include <algorithm>

#include "support/emf_plus_writer.h"
#include "support/png_reader.h"

namespace {

using namespace support::emf_plus;
using support::Bytes;
using support::readPng;

Bytes decoded(const std::string& text) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  Bytes bytes;
  uint32_t bits = 0, count = 0;
  for (const char c : text) {
    if (c == '=') break;
    bits = bits << 6 | static_cast<uint32_t>(kDigits.find(c));
    if ((count += 6) < 8) continue;
    count -= 8;
    bytes.push_back(static_cast<uint8_t>(bits >> count));
  }
  return bytes;
}

std::string typeOf(const Element& image) {
  const std::string href = image["href"];
  return href.substr(5, href.find(';') - 5);
}

Bytes dataOf(const Element& image) {
  const std::string href = image["href"];
  return decoded(href.substr(href.find(',') + 1));
}

/// An image drawn from a part of it to a box.
Drawn drawn(const Bytes& image, std::initializer_list<float> source, std::initializer_list<float> to,
            bool isNested = false) {
  const Records records =
      Records().object(kImage, 3, image).add(0x401A, 3, Fields().u32(0).u32(2).reals(source).reals(to));
  return draw(std::vector<Bytes>{records.bytes}, isNested);
}

/// The pixels that come of pixels in a form.
std::vector<uint32_t> pixelsOf(int width, int height, int stride, uint32_t format, const Bytes& data) {
  const Drawn picture = drawn(pixelImage(width, height, stride, format, data),
                              {0, 0, float(width), float(height)}, {0, 0, 10, 10});
  EXPECT_TRUE(picture.isWhole);
  return readPng(dataOf(picture.element("image"))).pixels;
}

using Pixels = std::vector<uint32_t>;

TEST(EmfPlusPixels, OfPalettes) {
  const Fields palette = Fields().u32(0).u32(2).u32(0xFF102030).u32(0x80FF0000);
  EXPECT_EQ(pixelsOf(3, 2, 4, 0x00030101, Fields(palette).u32(0x40).u32(0xA0)),
            (Pixels{0xFF102030, 0x80FF0000, 0xFF102030, 0x80FF0000, 0xFF102030, 0x80FF0000}));
  EXPECT_EQ(pixelsOf(3, 1, 4, 0x00030402, Fields(palette).u32(0x1001)),
            (Pixels{0xFF102030, 0x80FF0000, 0x80FF0000}));
  EXPECT_EQ(pixelsOf(2, 1, 4, 0x00030803, Fields(palette).u32(0x0001)), (Pixels{0x80FF0000, 0xFF102030}));
}

TEST(EmfPlusPixels, Of16Bits) {
  const auto two = [](int first, int second) { return Fields().u16(first).u16(second); };
  EXPECT_EQ(pixelsOf(2, 1, 4, 0x00101004, two(0x8000, 0xFFFF)), (Pixels{0xFF808080, 0xFFFFFFFF}));
  EXPECT_EQ(pixelsOf(2, 1, 4, 0x00021005, two(0x7C00, 0x001F)), (Pixels{0xFFFF0000, 0xFF0000FF}));
  EXPECT_EQ(pixelsOf(2, 1, 4, 0x00021006, two(0xF800, 0x07E0)), (Pixels{0xFFFF0000, 0xFF00FF00}));
  EXPECT_EQ(pixelsOf(2, 1, 4, 0x00061007, two(0xFC00, 0x001F)), (Pixels{0xFFFF0000, 0x000000FF}));
}

TEST(EmfPlusPixels, OfBytes) {
  EXPECT_EQ(pixelsOf(1, 2, 4, 0x00021808, Fields().u32(0x112233).u32(0x445566)),
            (Pixels{0xFF112233, 0xFF445566}));
  EXPECT_EQ(pixelsOf(1, 1, 4, 0x00022009, Fields().u32(0x00112233)), (Pixels{0xFF112233}));
  EXPECT_EQ(pixelsOf(1, 1, 4, 0x0026200A, Fields().u32(0x80112233)), (Pixels{0x80112233}));
  EXPECT_EQ(pixelsOf(2, 1, 8, 0x000E200B, Fields().u32(0x80404000).u32(0)), (Pixels{0x807F7F00, 0}));
}

TEST(EmfPlusPixels, OfLight) {
  EXPECT_EQ(pixelsOf(1, 1, 8, 0x0010300C, Fields().shorts({0, 0x1000, 0x2000, 0})), (Pixels{0xFFFFBA00}));
  EXPECT_EQ(pixelsOf(1, 1, 8, 0x0034400D, Fields().shorts({0, 0, 0x2000, 0x1000})), (Pixels{0x80FF0000}));
  EXPECT_EQ(pixelsOf(1, 1, 8, 0x001A400E, Fields().shorts({0, 0, 0, 0x2000})), (Pixels{0xFF000000}));
}

TEST(EmfPlusPixels, RowsThatAreNotThereAreNotShown) {
  const Drawn picture =
      drawn(pixelImage(1, 4, 4, 0x00022009, Fields().u32(1).u32(2)), {0, 0, 1, 4}, {0, 0, 10, 40});
  EXPECT_FALSE(picture.isWhole);
  EXPECT_EQ(picture.element("image")["height"], "20");
  EXPECT_EQ(readPng(dataOf(picture.element("image"))).height, 2);
}

TEST(EmfPlusImages, FillTheirBox) {
  const Bytes image = pixelImage(2, 2, 8, 0x00022009, Bytes(16, 9));
  const Element element = drawn(image, {-0.5F, -0.5F, 2, 2}, {5, 6, 20, 30}).element("image");
  EXPECT_EQ(element["x"], "5");
  EXPECT_EQ(element["y"], "6");
  EXPECT_EQ(element["width"], "20");
  EXPECT_EQ(element["height"], "30");
  EXPECT_EQ(element.parentName, "svg");
}

TEST(EmfPlusImages, MayBeShownInPart) {
  const Bytes image = pixelImage(4, 4, 16, 0x00022009, Bytes(64, 9));
  const Drawn picture = drawn(image, {2, 0, 2, 4}, {0, 0, 20, 40});
  EXPECT_EQ(picture.element("image")["x"], "-20");
  EXPECT_EQ(picture.element("image")["width"], "40");
  EXPECT_EQ(picture.element("image")["height"], "40");
  EXPECT_EQ(picture.element("image").parent.at("clip-path"), "url(#c1)");
  EXPECT_EQ(picture.element("path")["d"], "M0 0l20 0 0 40-20 0z");
}

TEST(EmfPlusImages, MayBeSlantedAndMirrored) {
  const Bytes image = pixelImage(2, 2, 8, 0x00022009, Bytes(16, 9));
  const Fields head = Fields().u32(0).u32(2).reals({0, 0, 2, 2}).u32(3);
  const Records before = Records().object(kImage, 3, image);
  const Drawn slanted = draw(Records(before).add(0x401B, 3, Fields(head).reals({10, 0, 30, 0, 0, 20})));
  EXPECT_EQ(slanted.element("image")["transform"], "matrix(.02 0 -.01 .02 10 0)");
  const Drawn mirrored =
      draw(Records(before).add(0x401B, 0x4003, Fields(head).shorts({30, 0, 10, 0, 30, 20})));
  EXPECT_EQ(mirrored.element("image")["transform"], "matrix(-.02 0 0 .02 30 0)");
  EXPECT_FALSE(draw(Records(before).add(0x401B, 0x2003, Fields(head).reals({10, 0, 30, 0, 0, 20}))).isWhole);
  EXPECT_EQ(draw(Records(before).add(0x401B, 3, Fields(head).reals({10, 0, 30, 0}))).count("image"), 0U);
}

TEST(EmfPlusImages, OfTheirPixelsMayBeSeen) {
  const Bytes image = pixelImage(2, 2, 8, 0x00022009, Bytes(16, 9));
  const Fields data = Fields().u32(0).u32(2).reals({0, 0, 2, 2, 0, 0, 10, 10});
  EXPECT_EQ(draw(Records().object(kImage, 3, image).add(0x4021, 5).add(0x401A, 3, data))
                .element("image")["image-rendering"],
            "pixelated");
}

Fields fileImage(const Bytes& file) {
  return Fields().u32(kVersion).u32(1).u32(0).u32(0).u32(0).u32(0).u32(1).bytes(file);
}

TEST(EmfPlusImages, OfFilesPassAsTheyAre) {
  const Bytes jpeg = Fields()
                         .u32(0xE0FFD8FF)
                         .u16(0x0400)
                         .u16(0)
                         .u16(-0x3F01)
                         .u16(0x0B00)
                         .u8(8)
                         .u16(0x0200)
                         .u16(0x0400)
                         .u32(0)
                         .u16(-0x2501)
                         .u16(0x0200);
  const Drawn whole = drawn(fileImage(jpeg), {0, 0, 4, 2}, {0, 0, 40, 20});
  EXPECT_EQ(typeOf(whole.element("image")), "image/jpeg");
  // Records end at a fourth byte.
  const Bytes passed = dataOf(whole.element("image"));
  ASSERT_GE(passed.size(), jpeg.size());
  EXPECT_TRUE(std::equal(jpeg.begin(), jpeg.end(), passed.begin()));
  EXPECT_EQ(whole.count("clipPath"), 0U);
  const Drawn part = drawn(fileImage(jpeg), {0, 0, 2, 2}, {0, 0, 20, 20});
  EXPECT_EQ(part.element("image")["width"], "40");
  EXPECT_EQ(part.count("clipPath"), 1U);
}

TEST(EmfPlusImages, OfBmpFilesBecomePng) {
  Fields bmp;
  bmp.u16(0x4D42).u32(58).u32(0).u32(54).u32(40).u32(1).u32(1).u16(1).u16(24);
  bmp.u32(0).u32(4).u32(0).u32(0).u32(0).u32(0).u32(0x00112233);
  const Drawn picture = drawn(fileImage(bmp), {0, 0, 1, 1}, {0, 0, 10, 10});
  EXPECT_EQ(typeOf(picture.element("image")), "image/png");
  EXPECT_EQ(readPng(dataOf(picture.element("image"))).pixels, Pixels{0xFF112233});
}

/// A placeable Windows metafile with a box.
Bytes windowsMetafile() {
  Fields file;
  file.u32(0x9AC6CDD7).shorts({0, 0, 0, 100, 100, 96, 0, 0, 0});
  file.shorts({1, 9, 0x300}).u32(9 + 5 + 5 + 7 + 3).u16(0).u32(7).u16(0);
  file.u32(5).u16(0x020B).shorts({0, 0}).u32(5).u16(0x020C).shorts({100, 100});
  file.u32(7).u16(0x041B).shorts({50, 50, 10, 10}).u32(3).u16(0);
  return file;
}

Fields metafileImage(const Bytes& file) {
  return Fields().u32(kVersion).u32(2).u32(2).counted(file);
}

TEST(EmfPlusImages, OfMetafilesAreDrawnOneInAnother) {
  const Drawn picture = drawn(metafileImage(windowsMetafile()), {0, 0, 5, 5}, {0, 0, 40, 40});
  EXPECT_TRUE(picture.isWhole);
  EXPECT_EQ(typeOf(picture.element("image")), "image/svg+xml");
  const Bytes inner = dataOf(picture.element("image"));
  EXPECT_EQ(std::string(inner.begin(), inner.begin() + 4), "<svg");
  const Drawn second = drawn(metafileImage(windowsMetafile()), {0, 0, 5, 5}, {0, 0, 40, 40}, true);
  EXPECT_FALSE(second.isWhole);
  EXPECT_EQ(second.count("image"), 0U);
}

TEST(EmfPlusImages, ThatAreNoneAreNotDrawn) {
  const Bytes bad[] = {
      {},
      Fields().u32(kVersion).u32(0),
      fileImage(Bytes(40, 7)),
      pixelImage(0, 2, 8, 0x00022009, Bytes(16)),
      pixelImage(2, -2, 8, 0x00022009, Bytes(16)),
      pixelImage(3, 2, 8, 0x00022009, Bytes(16)),
      pixelImage(2, 2, 0, 0x00022009, Bytes(16)),
      pixelImage(2, 2, -8, 0x00022009, Bytes(16)),
      pixelImage(2, 2, 8, 0x00020009, Bytes(16)),
      pixelImage(2, 2, 8, 0x00020709, Bytes(16)),
      pixelImage(2, 2, 80, 0x0002F009, Bytes(160)),
      pixelImage(2, 2, 8, 0x00022009, Bytes(4)),
  };
  for (const Bytes& image : bad) {
    const Drawn picture = drawn(image, {0, 0, 2, 2}, {0, 0, 10, 10});
    EXPECT_EQ(picture.count("image"), 0U) << &image - bad;
    EXPECT_FALSE(picture.isWhole) << &image - bad;
  }
}

}  // namespace

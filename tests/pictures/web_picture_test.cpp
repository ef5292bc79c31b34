// What pictures are by their bytes, and what browsers are given of them.

#include "pictures/web_picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/small_pictures.h"

namespace pagerex {
namespace {

using support::Bytes;
using support::ByteWriter;
using testing::HasSubstr;
using testing::StartsWith;

ByteView viewOf(const Bytes& bytes) {
  return {bytes.data(), bytes.size()};
}

PictureKind kindOf(const Bytes& bytes) {
  return kindOfPicture(viewOf(bytes));
}

/// Takes a number of bytes, and no more.
class StringSink final : public PictureSink {
 public:
  explicit StringSink(size_t most = SIZE_MAX) : most_(most) {}
  bool Put(ByteView part) override {
    bytes.append(reinterpret_cast<const char*>(part.data()), part.size());
    return bytes.size() <= most_;
  }

  std::string bytes;

 private:
  const size_t most_;
};

struct Written {
  PictureResult result;
  std::string bytes;
};

Written written(const Bytes& picture, size_t most = SIZE_MAX) {
  StringSink sink(most);
  const PictureResult result = writeWebPicture(viewOf(picture), {}, sink);
  return {result, sink.bytes};
}

Bytes cut(const Bytes& bytes, size_t length) {
  return Bytes(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(std::min(length, bytes.size())));
}

constexpr char kPngStart[] = "\x89PNG\r\n\x1A\n";

TEST(KindOfPicture, IsToldByTheBytes) {
  EXPECT_EQ(kindOf(support::smallEmf()), PictureKind::kEmf);
  EXPECT_EQ(kindOf(support::bareWmf()), PictureKind::kWmf);
  EXPECT_EQ(kindOf(support::placeableWmf()), PictureKind::kWmf);
  EXPECT_EQ(kindOf(support::pict()), PictureKind::kPict);
  EXPECT_EQ(kindOf(support::dib()), PictureKind::kDib);
  EXPECT_EQ(kindOf(support::bmp()), PictureKind::kBmp);
  EXPECT_EQ(kindOf(support::tiff()), PictureKind::kTiff);
  EXPECT_EQ(kindOf(support::smallPng()), PictureKind::kPng);
  EXPECT_EQ(kindOf(support::smallJpeg()), PictureKind::kJpeg);
  EXPECT_EQ(kindOf(support::gif()), PictureKind::kGif);
}

TEST(KindOfPicture, IsUnknownForOtherBytes) {
  for (const char* text : {"", "B", "BM", "BM is no bitmap, whatever it says.", "MM", "PICT", "<svg/>"})
    EXPECT_EQ(kindOfPicture(ByteView(text, strlen(text))), PictureKind::kUnknown) << text;
  EXPECT_EQ(kindOf(Bytes(600)), PictureKind::kUnknown);
  EXPECT_EQ(kindOf(Bytes(600, 0xFF)), PictureKind::kUnknown);
}

TEST(KindOfPicture, OfAMetafileNeedsItsFirstRecord) {
  Bytes emf = support::smallEmf();
  emf[0] = 2;
  EXPECT_EQ(kindOf(emf), PictureKind::kUnknown);
  Bytes wmf = support::bareWmf();
  wmf[2] = 8;
  EXPECT_EQ(kindOf(wmf), PictureKind::kUnknown);
}

TEST(KindOfPicture, OfAPictLooksBehindTheRoomInFrontOfIt) {
  EXPECT_EQ(kindOf(ByteWriter().zeros(512).bytes(support::pict()).take()), PictureKind::kPict);
  EXPECT_EQ(kindOf(ByteWriter().zeros(511).bytes(support::pict()).take()), PictureKind::kUnknown);
}

TEST(KindOfPicture, OfABitmapTakesEachLengthOfHeader) {
  for (const uint32_t size : {16, 40, 52, 56, 64, 108, 124})
    EXPECT_EQ(kindOf(ByteWriter().u32(size).u32(1).u32(1).u16(1).u16(8).zeros(size).take()),
              PictureKind::kDib)
        << size;
  EXPECT_EQ(kindOf(ByteWriter().u32(12).u16(1).u16(1).u16(1).u16(4).zeros(9).take()), PictureKind::kDib);
  EXPECT_EQ(kindOf(ByteWriter().u32(40).u32(1).u32(1).u16(1).u16(7).zeros(30).take()), PictureKind::kUnknown);
  EXPECT_EQ(kindOf(ByteWriter().u32(40).u32(1).u32(1).u16(2).u16(8).zeros(30).take()), PictureKind::kUnknown);
}

TEST(WebKind, HasExtensionAndMediaType) {
  EXPECT_EQ(webKindOf(PictureKind::kEmf).extension, "svg");
  EXPECT_EQ(webKindOf(PictureKind::kPict).mediaType, "image/svg+xml");
  EXPECT_EQ(webKindOf(PictureKind::kDib).extension, "png");
  EXPECT_EQ(webKindOf(PictureKind::kTiff).mediaType, "image/png");
  EXPECT_EQ(webKindOf(PictureKind::kJpeg).extension, "jpg");
  EXPECT_EQ(webKindOf(PictureKind::kGif).kind, PictureKind::kGif);
  EXPECT_EQ(webKindOf(PictureKind::kUnknown).extension, "");
}

TEST(WebPicture, OfAMetafileIsSvg) {
  for (const Bytes& picture :
       {support::smallEmf(), support::bareWmf(), support::placeableWmf(), support::pict()}) {
    const Written svg = written(picture);
    EXPECT_EQ(svg.result, PictureResult::kWhole);
    EXPECT_THAT(svg.bytes, StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\""));
    EXPECT_THAT(svg.bytes, HasSubstr("<path"));
    EXPECT_THAT(svg.bytes, HasSubstr("</svg>"));
  }
}

TEST(WebPicture, OfABitmapIsPng) {
  for (const Bytes& picture : {support::dib(), support::bmp(), support::tiff()}) {
    const Written png = written(picture);
    EXPECT_EQ(png.result, PictureResult::kWhole);
    EXPECT_THAT(png.bytes, StartsWith(kPngStart));
  }
  EXPECT_EQ(written(support::dib()).bytes, written(support::bmp()).bytes);
}

TEST(WebPicture, OfWhatBrowsersReadIsTheSame) {
  for (const Bytes& picture : {support::smallPng(), support::smallJpeg(), support::gif()}) {
    const Written same = written(picture);
    EXPECT_EQ(same.result, PictureResult::kWhole);
    EXPECT_EQ(same.bytes, std::string(picture.begin(), picture.end()));
  }
}

TEST(WebPicture, IsNothingOfOtherBytes) {
  const Written nothing = written(Bytes(100, 'x'));
  EXPECT_EQ(nothing.result, PictureResult::kNothing);
  EXPECT_EQ(nothing.bytes, "");
}

TEST(WebPicture, IsNothingOfWhatEndsBeforeItsPixels) {
  for (const Bytes& picture : {support::smallPng(), support::smallJpeg(), support::gif()}) {
    for (const size_t length : {9, 10, 12})
      EXPECT_EQ(written(cut(picture, length)).result, PictureResult::kNothing) << length;
  }
  EXPECT_EQ(written(cut(support::dib(), 40)).result, PictureResult::kNothing);
}

TEST(WebPicture, IsNothingOfAJpegWithoutAFrame) {
  const Bytes start = {0xFF, 0xD8, 0xFF, 0xFF, 0xE0, 0, 4, 1, 2};
  const Bytes frame = {0xFF, 0xC2, 0, 5, 8, 0, 1}, table = {0xFF, 0xC4, 0, 3, 0}, scan = {0xFF, 0xDA, 0, 2};
  const auto jpegOf = [&](const Bytes& middle) {
    return ByteWriter().bytes(start).bytes(middle).bytes(scan).take();
  };
  EXPECT_EQ(written(jpegOf(frame)).result, PictureResult::kWhole);
  EXPECT_EQ(written(jpegOf(table)).result, PictureResult::kNothing);
  EXPECT_EQ(written(jpegOf({})).result, PictureResult::kNothing);
  EXPECT_EQ(written(jpegOf({0xFF, 0xE1, 0xFF, 0xFF})).result, PictureResult::kNothing);
}

TEST(WebPicture, EndsWhereTheSinkRefuses) {
  for (const Bytes& picture : {support::smallEmf(), support::placeableWmf(), support::pict(), support::dib(),
                               support::tiff(), support::smallPng()})
    EXPECT_EQ(written(picture, 10).result, PictureResult::kRefused);
}

}  // namespace
}  // namespace pagerex

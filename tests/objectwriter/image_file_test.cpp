#include "objectwriter/image_file.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include "support/bytes.h"
#include "support/temp_folder.h"

namespace {

using ObjectWriter::StoredImage;
using support::Bytes;
using support::ByteWriter;

Bytes deflated(const Bytes& raw) {
  uLongf size = compressBound(raw.size());
  Bytes out(size);
  compress(out.data(), &size, raw.data(), raw.size());
  out.resize(size);
  return out;
}

StoredImage imageOf(const Bytes& data, unsigned char type) {
  StoredImage image;
  image.data = ByteView(data.data(), data.size());
  image.type = type;
  return image;
}

/// The bytes of the file that comes of an image.
Bytes fileOf(const StoredImage& image) {
  OutputFiles files;
  support::TempFolder folder;
  EXPECT_EQ(ObjectWriter::WriteImageFile(image, files, folder.path("image").c_str()), Status::kOk);
  const std::string content = folder.read("image");
  return Bytes(content.begin(), content.end());
}

const Bytes kPlaceableHeader = {0xD7, 0xCD, 0xC6, 0x9A, 0x00, 0x00, 0x00, 0x00, 0x08, 0x00, 0xFD,
                                0x06, 0x03, 0x06, 0x5E, 0x02, 0x00, 0x00, 0x00, 0x00, 0xB9, 0x55};

TEST(ImageFile, JpegAndPngAreWrittenAsStored) {
  const Bytes data = {0xFF, 0xD8, 1, 2, 3};
  EXPECT_EQ(fileOf(imageOf(data, 5)), data);
  EXPECT_EQ(fileOf(imageOf(data, 6)), data);
}

TEST(ImageFile, WmfGetsAHeaderAndATrailer) {
  const Bytes expected =
      ByteWriter().bytes(kPlaceableHeader).text8("wmf").bytes({0x00, 0x03, 0x04, 0x11, 0, 0, 0, 0}).take();
  EXPECT_EQ(fileOf(imageOf({'w', 'm', 'f'}, 3)), expected);
}

TEST(ImageFile, EmfHasNoHeader) {
  EXPECT_EQ(fileOf(imageOf({'e', 'm', 'f'}, 2)), Bytes({'e', 'm', 'f'}));
}

/// A bitmap's header with these two fields.
Bytes dib(uint16_t bitCount, uint32_t coloursUsed) {
  return ByteWriter()
      .u32(40)
      .u32(1)
      .u32(1)
      .u16(1)
      .u16(bitCount)
      .zeros(16)
      .u32(coloursUsed)
      .u32(0)
      .zeros(4)
      .take();
}

TEST(ImageFile, DibGetsAFileHeader) {
  const Bytes data = dib(24, 0);
  EXPECT_EQ(fileOf(imageOf(data, 7)),
            ByteWriter().text8("BM").u32(44 + 14).u32(0).u32(54).bytes(data).take());
}

TEST(ImageFile, DibPixelsLieBehindThePalette) {
  const auto pixelOffset = [](const Bytes& data) { return fileOf(imageOf(data, 7))[10]; };
  EXPECT_EQ(pixelOffset(dib(4, 0)), 54 + 4 * 16);
  EXPECT_EQ(pixelOffset(dib(24, 3)), 54 + 4 * 3);
}

TEST(ImageFile, ShortDibIsWritten) {
  EXPECT_EQ(fileOf(imageOf({1}, 7)), ByteWriter().text8("BM").u32(15).u32(0).u32(54 + 4).u8(1).take());
}

TEST(ImageFile, CompressedImageIsInflated) {
  const Bytes raw(5000, 0x41);
  const Bytes stored = deflated(raw);
  StoredImage image = imageOf(stored, 2);
  image.compressed = true;
  image.rawSize = 5000;
  EXPECT_EQ(fileOf(image), raw);
}

TEST(ImageFile, CompressedWmfGetsItsHeaderAroundTheRawBytes) {
  const Bytes stored = deflated({'w', 'm', 'f'});
  StoredImage image = imageOf(stored, 3);
  image.compressed = true;
  image.rawSize = 3;
  EXPECT_EQ(fileOf(image).size(), 22u + 3u + 8u);
}

TEST(ImageFile, CorruptStreamIsWrittenAsStored) {
  const Bytes stored = {1, 2, 3, 4, 5};
  StoredImage image = imageOf(stored, 2);
  image.compressed = true;
  image.rawSize = 100;
  EXPECT_EQ(fileOf(image), stored);
}

TEST(ImageFile, WrongRawSizeIsWrittenAsStored) {
  const Bytes stored = deflated(Bytes(5000, 0x41));
  for (const uint32_t size : {0u, 4999u, 5001u, 0x04000001u, 0xFFFFFFFFu}) {
    StoredImage image = imageOf(stored, 2);
    image.compressed = true;
    image.rawSize = size;
    EXPECT_EQ(fileOf(image), stored) << size;
  }
}

TEST(ImageFile, NeedsDataAndAPath) {
  OutputFiles files;
  const Bytes data = {1};
  EXPECT_EQ(ObjectWriter::WriteImageFile(StoredImage(), files, "x"), Status::kNothing);
  EXPECT_EQ(ObjectWriter::WriteImageFile(imageOf(data, 6), files, nullptr), Status::kNothing);
}

TEST(ImageFile, TellsWhenItCannotBeOpened) {
  OutputFiles files;
  const Bytes data = {1};
  support::TempFolder folder;
  EXPECT_EQ(ObjectWriter::WriteImageFile(imageOf(data, 6), files, folder.path("none/image").c_str()),
            Status::kCannotCreate);
  EXPECT_EQ(ObjectWriter::WriteImageFile(imageOf(data, 6), files, ""), Status::kCannotCreate);
}

TEST(Inflate, TellsWhatWentWrong) {
  const Bytes stored = deflated(Bytes(5000, 0x41));
  const ByteView source(stored.data(), stored.size());
  Bytes out;
  const auto inflate = [&](size_t size) {
    out.clear();
    return ObjectWriter::_XZlibDecompressInline(source, static_cast<uint32_t>(size), [&](ByteView part) {
      out.insert(out.end(), part.data(), part.data() + part.size());
    });
  };
  EXPECT_EQ(inflate(5000), Status::kOk);
  EXPECT_EQ(out, Bytes(5000, 0x41));
  EXPECT_EQ(inflate(4999), Status::kFailure);
  EXPECT_EQ(inflate(5001), Status::kFailure);
  EXPECT_EQ(inflate((64u << 20) + 1), Status::kFailure);
  EXPECT_EQ(inflate(stored.size() * 1100 + 1), Status::kFailure);
}

}  // namespace

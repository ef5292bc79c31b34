#include "objectwriter/image_file.h"

#include <zlib.h>

#include <cstring>
#include <new>

#include "base/stdio_archive.h"
#include "drawing/shape_geometry.h"

namespace ObjectWriter {
namespace {

constexpr uint32_t kLargestRaw = 64u << 20;  ///< no picture of a document comes near
constexpr uint32_t kLargestRatio = 1100;     ///< deflate reaches 1032 to 1

constexpr unsigned char kWmf = 3;
constexpr unsigned char kDib = 7;

#pragma pack(push, 1)

/// In front of a device independent bitmap.
struct BitmapFileHeader {
  uint16_t magic = 0x4D42;
  uint32_t fileSize;
  uint16_t reserved[2] = {0, 0};
  uint32_t pixelOffset;
};
static_assert(sizeof(BitmapFileHeader) == 14);

/// In front of a Windows metafile: the same box for each, whatever its size.
struct PlaceableHeader {
  uint32_t key = 0x9AC6CDD7;
  uint16_t handle = 0;
  int16_t left = 0;
  int16_t top = 8;
  int16_t right = 1789;
  int16_t bottom = 1539;
  uint16_t unitsPerInch = 606;
  uint32_t reserved = 0;
  uint16_t checksum = 0;  ///< XOR of the ten words before it
};
static_assert(sizeof(PlaceableHeader) == 22);

#pragma pack(pop)

constexpr uint8_t kWmfTrailer[8] = {0x00, 0x03, 0x04, 0x11};

void putDibHeader(DsWriteArchive& file, ByteView data) {
  constexpr uint32_t kHeaders = sizeof(BitmapFileHeader) + 40;
  BitmapFileHeader header;
  const auto info = data.copyOf<tagBITMAPINFOHEADER>(0);
  header.fileSize = static_cast<uint32_t>(data.size() + sizeof(header));
  header.pixelOffset = kHeaders + 4 * static_cast<uint32_t>(object::DIBNumColors(&info));
  file.put(&header, sizeof(header));
}

void putWmfHeader(DsWriteArchive& file) {
  PlaceableHeader header;
  uint16_t words[sizeof(header) / 2];
  std::memcpy(words, &header, sizeof(header));
  uint16_t checksum = 0;
  for (const uint16_t word : words) checksum = static_cast<uint16_t>(checksum ^ word);
  header.checksum = checksum;
  file.put(&header, sizeof(header));
}

Status writeFile(ByteView data, unsigned char type, const char* path) {
  DsWriteArchive file;
  if (!file.open(path)) return Status::kCannotCreate;
  if (type == kDib) putDibHeader(file, data);
  if (type == kWmf) putWmfHeader(file);
  file.put(data.data(), static_cast<unsigned int>(data.size()));
  if (type == kWmf) file.put(kWmfTrailer, sizeof(kWmfTrailer));
  return Status::kOk;
}

}  // namespace

Status _XZlibDecompressInline(ByteView source, uint32_t rawSize, std::unique_ptr<uint8_t[]>& out) {
  if (rawSize > kLargestRaw || rawSize > source.size() * uint64_t{kLargestRatio}) return Status::kFailure;
  std::unique_ptr<uint8_t[]> raw(new (std::nothrow) uint8_t[rawSize]);
  if (!raw) return Status::kOutOfMemory;
  uLongf length = rawSize;
  const int code = uncompress(raw.get(), &length, source.data(), static_cast<uLong>(source.size()));
  if (length != rawSize) return Status::kFailure;
  if (code == Z_OK) out = std::move(raw);
  return static_cast<Status>(code);
}

Status WriteImageFile(const StoredImage& image, const char* path) {
  if (!image.data.data() || !path) return Status::kNothing;
  std::unique_ptr<uint8_t[]> raw;
  if (image.compressed && _XZlibDecompressInline(image.data, image.rawSize, raw) == Status::kOk) {
    return writeFile(ByteView(raw.get(), image.rawSize), image.type, path);
  }
  return writeFile(image.data, image.type, path);
}

}  // namespace ObjectWriter

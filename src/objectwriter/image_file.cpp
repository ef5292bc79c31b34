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

/// `start` is the beginning of the picture's `size` bytes.
void putDibHeader(DsWriteArchive& file, ByteView start, size_t size) {
  constexpr uint32_t kHeaders = sizeof(BitmapFileHeader) + 40;
  BitmapFileHeader header;
  const auto info = start.copyOf<tagBITMAPINFOHEADER>(0);
  header.fileSize = static_cast<uint32_t>(size + sizeof(header));
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

/// A picture's file, which is written part by part.
class PictureFile {
 public:
  /// `size` counts the bytes of all parts.
  PictureFile(OutputFiles& files, unsigned char type, size_t size) : type_(type), size_(size), file_(files) {}

  bool open(const char* path) { return file_.open(path); }
  void put(ByteView part) {
    if (!begun_) putHeader(part);
    begun_ = true;
    file_.put(part.data(), static_cast<unsigned int>(part.size()));
  }
  void finish() {
    if (!begun_) putHeader({});
    if (type_ == kWmf) file_.put(kWmfTrailer, sizeof(kWmfTrailer));
  }

 private:
  void putHeader(ByteView start) {
    if (type_ == kDib) putDibHeader(file_, start, size_);
    if (type_ == kWmf) putWmfHeader(file_);
  }

  const unsigned char type_;
  const size_t size_;
  bool begun_ = false;
  DsWriteArchive file_;
};

Status writeStored(const StoredImage& image, OutputFiles& files, const char* path) {
  PictureFile file(files, image.type, image.data.size());
  if (!file.open(path)) return Status::kCannotCreate;
  file.put(image.data);
  file.finish();
  return Status::kOk;
}

Status writeInflated(const StoredImage& image, OutputFiles& files, const char* path) {
  PictureFile file(files, image.type, image.rawSize);
  if (!file.open(path)) return Status::kCannotCreate;
  const Status status =
      _XZlibDecompressInline(image.data, image.rawSize, [&file](ByteView part) { file.put(part); });
  if (status == Status::kOk) file.finish();
  return status;
}

/// A deflated stream that is being read.
class Inflater {
 public:
  // cppcheck-suppress uninitMemberVar ; a part is written before it is read
  explicit Inflater(ByteView source) {
    stream_.next_in = const_cast<Bytef*>(source.data());
    stream_.avail_in = static_cast<uInt>(source.size());
    const int code = inflateInit(&stream_);
    if (code == Z_MEM_ERROR) throw std::bad_alloc();
    good_ = code == Z_OK;
  }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;
  ~Inflater() { inflateEnd(&stream_); }

  /// The next part; empty at the end and for damaged data.
  ByteView next() {
    if (!good_ || ended_) return {};
    stream_.next_out = part_;
    stream_.avail_out = sizeof(part_);
    const int code = inflate(&stream_, Z_NO_FLUSH);
    if (code == Z_MEM_ERROR) throw std::bad_alloc();
    ended_ = code == Z_STREAM_END;
    good_ = ended_ || code == Z_OK;
    return good_ ? ByteView(part_, sizeof(part_) - stream_.avail_out) : ByteView();
  }
  bool reachedEnd() const { return ended_; }

 private:
  z_stream stream_{};
  bool good_ = false;
  bool ended_ = false;
  uint8_t part_[1 << 14];
};

bool canInflate(ByteView source, uint32_t rawSize) {
  return rawSize <= kLargestRaw && rawSize <= source.size() * uint64_t{kLargestRatio};
}

bool inflatesWhole(const StoredImage& image) {
  return _XZlibDecompressInline(image.data, image.rawSize, [](ByteView) {}) == Status::kOk;
}

}  // namespace

Status _XZlibDecompressInline(ByteView source, uint32_t rawSize, const TakePart& take) {
  if (!canInflate(source, rawSize)) return Status::kFailure;
  Inflater inflater(source);
  uint64_t length = 0;
  for (ByteView part = inflater.next(); !part.empty(); part = inflater.next()) {
    length += part.size();
    if (length > rawSize) return Status::kFailure;
    take(part);
  }
  return inflater.reachedEnd() && length == rawSize ? Status::kOk : Status::kFailure;
}

uint64_t MostImageBytes(const StoredImage& image) {
  const bool inflates = image.compressed && canInflate(image.data, image.rawSize);
  return image.data.size() + uint64_t{inflates ? image.rawSize : 0};
}

Status WriteImageFile(const StoredImage& image, OutputFiles& files, const char* path) {
  if (!image.data.data() || !path) return Status::kNothing;
  // What a sink has been given it keeps, so that for one a picture is inflated once more beforehand.
  const bool inflates = image.compressed && (!files.sink() || inflatesWhole(image));
  const Status status = inflates ? writeInflated(image, files, path) : Status::kFailure;
  return status == Status::kFailure ? writeStored(image, files, path) : status;
}

}  // namespace ObjectWriter

#include "formats/picture_bytes.h"

#include <zlib.h>

#include <algorithm>
#include <memory>
#include <new>

#include "flow/shape_facts.h"

namespace pagerex {
namespace {

/// Ends the stream also when what takes its parts throws.
struct InflateEnd {
  void operator()(z_stream* stream) const { inflateEnd(stream); }
};

}  // namespace

bool inflatePicture(ByteView deflated, const std::function<bool(ByteView)>& take) {
  z_stream stream{};
  if (inflateInit(&stream) != Z_OK) throw std::bad_alloc();
  const std::unique_ptr<z_stream, InflateEnd> end(&stream);
  stream.next_in = const_cast<Bytef*>(deflated.data());
  stream.avail_in = static_cast<uInt>(deflated.size());
  uint8_t part[0x3000];
  int result = Z_OK;
  bool isTaken = true;
  while (result == Z_OK && isTaken) {
    stream.next_out = part;
    stream.avail_out = sizeof(part);
    result = inflate(&stream, Z_NO_FLUSH);
    const size_t count = sizeof(part) - stream.avail_out;
    if (count == 0 && result != Z_STREAM_END) break;
    isTaken = take(ByteView(part, count));
  }
  if (result == Z_MEM_ERROR) throw std::bad_alloc();
  return result == Z_STREAM_END && isTaken;
}

void appendTo(std::vector<uint8_t>& all, ByteView part) {
  all.insert(all.end(), part.data(), part.data() + part.size());
}

ByteView bytesOf(const PictureData& picture, std::vector<uint8_t>& room, bool& isWhole) {
  // Metafiles become a tenth, where they hold bitmaps of one colour a hundredth.
  constexpr uint64_t kLargestRatio = 64, kSpare = 4 << 20;
  const ByteView bytes = picture.bytes;
  isWhole = true;
  if (bytes.size() > UINT32_MAX / 2) return {};
  if (!picture.isDeflated) return bytes;
  const uint64_t largest = kLargestRatio * bytes.size() + kSpare;
  // What the picture says of its size need not be so.
  const uint64_t most = picture.rawSize ? std::min<uint64_t>(picture.rawSize, largest) : largest;
  if (picture.rawSize) room.reserve(static_cast<size_t>(most));
  isWhole = inflatePicture(bytes, [&](ByteView part) {
    const uint64_t left = most - room.size();
    appendTo(room, part.part(0, static_cast<size_t>(left)));
    return part.size() <= left;
  });
  return ByteView(room.data(), room.size());
}

PictureFrame frameOf(const PictureFacts& picture) {
  constexpr double kTwips = 20, kLeast = 0.01;
  PictureFrame frame{picture.width / kTwips, picture.height / kTwips};
  if (!picture.shape) return frame;
  const ShapeBox& box = picture.shape->box;
  if (box.width > 0 && box.height > 0) frame = {box.width / kTwips, box.height / kTwips};
  const ShapePicture& shown = picture.shape->picture;
  frame.widthPoints /= std::max(kLeast, 1.0 - shown.cropLeft - shown.cropRight);
  frame.heightPoints /= std::max(kLeast, 1.0 - shown.cropTop - shown.cropBottom);
  return frame;
}

}  // namespace pagerex

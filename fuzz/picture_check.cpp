#include "picture_check.h"

#include <zlib.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace fuzz {
namespace {

using pagerex::PictureKind;
using pagerex::PictureResult;

uint32_t bigEndian(std::string_view bytes, size_t at) {
  uint32_t value = 0;
  for (size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<uint8_t>(bytes[at + i]);
  return value;
}

/// How long the rows of all pixels are, each with its filter in front; 0 for a header of no kind that is
/// written.
uint64_t rawSize(std::string_view header) {
  constexpr uint8_t kChannels[] = {1, 0, 3, 1, 2, 0, 4};
  const auto depth = static_cast<uint8_t>(header[8]), colour = static_cast<uint8_t>(header[9]);
  if (colour >= std::size(kChannels)) return 0;
  const uint64_t bits = uint64_t{bigEndian(header, 0)} * depth * kChannels[colour];
  return ((bits + 7) / 8 + 1) * bigEndian(header, 4);
}

/// How much comes out of compressed bytes; UINT64_MAX for bytes that are damaged.
uint64_t inflatedSize(std::string_view data) {
  z_stream stream = {};
  if (inflateInit(&stream) != Z_OK) return UINT64_MAX;
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
  stream.avail_in = static_cast<uInt>(data.size());
  uint8_t out[4096];
  int state = Z_OK;
  uint64_t size = 0;
  while (state == Z_OK) {
    stream.next_out = out;
    stream.avail_out = sizeof(out);
    state = inflate(&stream, Z_NO_FLUSH);
    size += sizeof(out) - stream.avail_out;
  }
  inflateEnd(&stream);
  return state == Z_STREAM_END ? size : UINT64_MAX;
}

bool begins(std::string_view text, std::string_view with) {
  return text.substr(0, with.size()) == with;
}

std::string whatIsWrong(PictureResult result, PictureKind kind, std::string_view made) {
  const bool isThere = result == PictureResult::kWhole || result == PictureResult::kInPart;
  if (result == PictureResult::kRefused) return "refused, by a sink that takes all";
  if (!isThere) return made.empty() ? "" : "there is something of nothing";
  switch (pagerex::webKindOf(kind).kind) {
    case PictureKind::kUnknown:
      return whatIsWrongWithSvg(made);
    case PictureKind::kPng:
      return kind == PictureKind::kPng ? "" : whatIsWrongWithPng(made);
    default:
      return "";
  }
}

}  // namespace

std::string whatIsWrongWithPng(std::string_view png) {
  if (!begins(png, "\x89PNG\r\n\x1A\n")) return "no PNG";
  std::string_view header;
  std::string data;
  for (size_t at = 8; at + 12 <= png.size();) {
    const uint32_t length = bigEndian(png, at);
    if (length > png.size() - at - 12) return "a chunk that is not there";
    const std::string_view kind = png.substr(at + 4, 4), body = png.substr(at + 8, length);
    const auto* first = reinterpret_cast<const Bytef*>(kind.data());
    if (crc32(0, first, length + 4) != bigEndian(png, at + 8 + length)) return "a sum that is wrong";
    if (kind == "IHDR") header = body;
    if (kind == "IDAT") data.append(body);
    at += 12 + length;
    if (kind != "IEND") continue;
    if (at != png.size()) return "bytes behind the end";
    if (header.size() != 13) return "no header";
    const uint64_t size = rawSize(header);
    if (bigEndian(header, 0) == 0 || size == 0) return "a picture of nothing";
    return inflatedSize(data) == size ? "" : "rows that are not there";
  }
  return "no end";
}

void checkPicture(PictureResult result, PictureKind kind, std::string_view made) {
  const std::string wrong = whatIsWrong(result, kind, made);
  if (wrong.empty()) return;
  std::fprintf(stderr, "What came of the picture: %s\n", wrong.c_str());
  std::abort();
}

}  // namespace fuzz

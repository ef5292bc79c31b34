#include "wordreader/text_reader.h"

#include <algorithm>
#include <cstring>

#include "base/code_page_1252.h"

namespace pagerex {
namespace {

constexpr uint32_t kWindow = 64 << 10;  // so much is read past the cache of small pieces

}  // namespace

void TextReader::Read(WordFile& file, PieceList& pieces) {
  pieces_ = &pieces;
  file.ReadText(reader_, kWindow);
}

void TextReader::Load(uint32_t position) {
  // Of a place that is jumped to little may be wanted.
  const uint32_t most = position == start_ + size_ ? kStretch : kShortStretch;
  size_ = 0;
  const TextPiece& piece = pieces_->Find(position);
  if (piece.start == piece.end) return;
  start_ = position;
  const uint32_t wanted = std::min(piece.end - position, most);
  const ByteView bytes = reader_.At(piece.OffsetOf(position), wanted << (piece.isWide ? 1 : 0));
  if (!piece.isWide) {
    static_assert(sizeof(unsigned short) == sizeof(char16_t));
    size_ = static_cast<uint32_t>(bytes.size());
    MsoCP1252ToWcs(bytes.data(), size_, reinterpret_cast<unsigned short*>(copy_));
    units_ = copy_;
  } else {
    size_ = static_cast<uint32_t>(bytes.size() / sizeof(char16_t));
    const bool isAligned = reinterpret_cast<uintptr_t>(bytes.data()) % alignof(char16_t) == 0;
    if (!isAligned) std::memcpy(copy_, bytes.data(), size_ * sizeof(char16_t));
    units_ = isAligned ? reinterpret_cast<const char16_t*>(bytes.data()) : copy_;
  }
  if (size_ == 0) missed_ = true;
}

uint32_t TextReader::NextText(uint32_t position, uint32_t limit) {
  const TextPiece& piece = pieces_->Find(position);
  // What the stream does not have of a piece it does not have of the rest of it.
  const uint32_t next = piece.start != piece.end ? piece.end : pieces_->NextStart(position);
  return std::clamp(next, position + 1, std::max(limit, position + 1));
}

}  // namespace pagerex

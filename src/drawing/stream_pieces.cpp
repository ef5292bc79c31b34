#include "drawing/stream_pieces.h"

#include <algorithm>

#include "wordreader/doc_file.h"

ByteView StreamPieces::Get(uint64_t offset, uint64_t size, bool inPlace) {
  if (!Seek(offset)) return {};
  const uint64_t left = stream_.bytesLeft();
  size = std::min(size, left);
  longest_ = std::max(longest_, left);
  if (size > 2 * longest_ - taken_) return {};
  taken_ += size;
  const auto count = static_cast<unsigned int>(size);
  if (const uint8_t* const bytes = inPlace ? stream_.view(count) : nullptr) return {bytes, count};
  return ReadBytes(stream_, static_cast<uint32_t>(size), allocator_);
}

unsigned int StreamPieces::Peek(uint64_t offset, void* out, unsigned int size) {
  return Seek(offset) ? stream_.get(out, size) : 0;
}

/// False where a seek would throw.
bool StreamPieces::Seek(uint64_t offset) {
  if (offset > UINT32_MAX) return false;
  try {
    stream_.seek(static_cast<int64_t>(offset), 0);
    return true;
  } catch (int) {
    return false;
  }
}

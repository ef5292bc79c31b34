#include "wordreader/stream_reader.h"

#include <algorithm>

#include "storage/com_interfaces.h"

namespace pagerex {

void StreamReader::Attach(IStream* stream, uint32_t window, ChainAllocator& allocator) {
  stream_.attach(stream);
  allocator_ = &allocator;
  windowSize_ = window;
  held_ = stream_.bytesHeld();
  claimed_ = stream_.size();
  window_ = nullptr;
  windowBytes_ = farthest_ = 0;
}

void StreamReader::Close() {
  stream_.close();
  held_ = claimed_ = windowBytes_ = 0;
}

/// Leaves the stream at `offset`, which must lie in it.
ByteView StreamReader::InPlace(uint32_t offset, uint32_t n) {
  stream_.seek(offset, STREAM_SEEK_SET);
  const uint8_t* const bytes = stream_.view(n);
  return bytes ? ByteView(bytes, n) : ByteView();
}

ByteView StreamReader::At(uint32_t offset, uint32_t n) {
  if (offset >= held_ || n == 0) return {};
  n = std::min({n, windowSize_, held_ - offset});
  farthest_ = std::max(farthest_, offset + n);
  if (offset >= windowStart_ && offset - windowStart_ < windowBytes_ &&
      windowBytes_ - (offset - windowStart_) >= n) {
    return {window_ + (offset - windowStart_), n};
  }
  const ByteView inPlace = InPlace(offset, n);
  if (!inPlace.empty()) return inPlace;
  if (!window_) window_ = static_cast<uint8_t*>(allocator_->AllocAligned(windowSize_, 4));
  windowStart_ = offset;
  windowBytes_ = stream_.getHeld(window_, std::min(windowSize_, held_ - offset));
  return ByteView(window_, windowBytes_).part(0, n);
}

ByteView StreamReader::Keep(uint32_t offset, uint32_t n) {
  if (offset >= held_ || n == 0) return {};
  n = std::min(n, held_ - offset);
  farthest_ = std::max(farthest_, offset + n);
  const ByteView inPlace = InPlace(offset, n);
  if (!inPlace.empty()) return inPlace;
  void* const copy = allocator_->AllocAligned(n, 4);
  return {copy, stream_.getHeld(copy, n)};
}

}  // namespace pagerex

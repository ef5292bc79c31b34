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
  windows_[0] = windows_[1] = {};
  farthest_ = 0;
}

void StreamReader::Close() {
  stream_.close();
  held_ = claimed_ = 0;
  windows_[0].size = windows_[1].size = 0;
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
  const ByteView inWindow = InWindow(offset, n);
  if (!inWindow.empty()) return inWindow;
  const ByteView inPlace = InPlace(offset, n);
  if (!inPlace.empty()) return inPlace;
  last_ ^= 1;
  Window& window = windows_[last_];
  if (!window.bytes) window.bytes = static_cast<uint8_t*>(allocator_->AllocAligned(windowSize_, 4));
  window.start = offset;
  window.size = stream_.getHeld(window.bytes, std::min(windowSize_, held_ - offset));
  return ByteView(window.bytes, window.size).part(0, n);
}

ByteView StreamReader::InWindow(uint32_t offset, uint32_t n) {
  for (size_t i = 0; i < 2; ++i) {
    const Window& window = windows_[last_ ^ i];
    if (offset < window.start || offset - window.start >= window.size) continue;
    if (window.size - (offset - window.start) < n) continue;
    last_ ^= i;
    return {window.bytes + (offset - window.start), n};
  }
  return {};
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

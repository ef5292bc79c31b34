#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "base/byte_view.h"
#include "base/chain_allocator.h"
#include "storage/byte_archives.h"

namespace pagerex {

/// Bytes of a stream by their offset, in place where the file stands in memory, through a window elsewhere.
/// What the chain of the stream has counts, even where its entry claims less. Several readers may share a
/// stream: each has a window of its own.
class StreamReader {
 public:
  StreamReader() = default;
  StreamReader(const StreamReader&) = delete;
  StreamReader& operator=(const StreamReader&) = delete;

  /// Takes a reference on the stream. The windows, of `window` bytes each, are taken from `allocator` when
  /// they are first needed.
  void Attach(IStream* stream, uint32_t window, ChainAllocator& allocator);
  void Close();
  bool good() const { return stream_.good(); }

  /// Bytes that there are.
  uint32_t size() const { return held_; }
  /// Bytes that the entry claims, where that is less.
  uint32_t claimed() const { return claimed_; }
  /// Whether anything was read that lies behind what the entry claims.
  bool wentBeyondClaim() const { return farthest_ > claimed_; }

  /// Up to `n` bytes from `offset` on, at most a window; cut where the stream ends. Valid until the next
  /// call.
  ByteView At(uint32_t offset, uint32_t n);
  /// The same of any length, valid as long as the allocator is.
  ByteView Keep(uint32_t offset, uint32_t n);

 private:
  ByteView InPlace(uint32_t offset, uint32_t n);
  ByteView InWindow(uint32_t offset, uint32_t n);

  DsMemReadArchive stream_;
  ChainAllocator* allocator_ = nullptr;
  uint32_t held_ = 0;
  uint32_t claimed_ = 0;
  uint32_t farthest_ = 0;
  uint32_t windowSize_ = 0;
  /// Two, since a text and the boxes or notes in it lie at two places that are read in turns.
  struct Window {
    uint8_t* bytes = nullptr;
    uint32_t start = 0;
    uint32_t size = 0;
  };
  Window windows_[2];
  size_t last_ = 0;  ///< the window that was used last
};

}  // namespace pagerex

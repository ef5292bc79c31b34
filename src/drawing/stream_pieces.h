#pragma once

#include <cstdint>

#include "base/byte_view.h"
#include "base/chain_allocator.h"
#include "storage/byte_archives.h"

/// Pieces of a stream, each read when it is asked for, into the document's allocator unless it may stay where
/// it is. The pieces of a sound file do not overlap, so that together they fit into the stretch of the stream
/// that they come from. In a damaged file, where they may all lie one over the other, those that bring the
/// sum to more than twice of it count as absent.
class StreamPieces {
 public:
  /// Neither is owned.
  StreamPieces(DsMemReadArchive& stream, ChainAllocator& allocator)
      : stream_(stream), allocator_(allocator) {}

  /// Up to `size` bytes at `offset`, as many as the stream holds; they may be changed in place. Empty where
  /// the stream does not reach.
  ByteView Read(uint64_t offset, uint64_t size) { return Get(offset, size, false); }
  /// The same for bytes that nobody changes: they may be those of a host.
  ByteView View(uint64_t offset, uint64_t size) { return Get(offset, size, true); }
  /// The same for a few bytes that are not kept. Returns how many were read.
  unsigned int Peek(uint64_t offset, void* out, unsigned int size);

 private:
  ByteView Get(uint64_t offset, uint64_t size, bool inPlace);
  bool Seek(uint64_t offset);

  DsMemReadArchive& stream_;
  ChainAllocator& allocator_;
  uint64_t longest_ = 0;  ///< stretch from a piece's start to the end of the stream
  uint64_t taken_ = 0;    ///< bytes of all pieces so far
};

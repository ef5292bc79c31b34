#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/chain_allocator.h"
#include "storage/byte_archives.h"
#include "storage/sot_format.h"
#include "storage/sot_trunk.h"

/// The pages of a compound file. Page n lies at 512 + n * pageSize, also where pages are larger than the
/// header. A last page that the file cuts short counts as whole; what is missing of it reads as zeros.
/// Reads of less than a page go through a cache, which lives as long as the pool and is never larger than the
/// file; larger ones go straight to the caller's buffer.
template <class Archive>
class SotRoPagePool : public ChainAllocator {
 public:
  /// Reads the header from `archive`, which is not owned. False for a file of less than 512 bytes, another
  /// signature, or a page size that does not fit 32 bits.
  bool open(Archive& archive);

  const SotHeader& header() const { return header_; }
  /// In bytes.
  uint32_t pageSize() const { return pageSize_; }
  uint64_t fileSize() const { return fileSize_; }
  /// Whether the file has any byte of the page.
  bool holds(int page) const { return page >= 0 && static_cast<uint64_t>(page) < pageCount_; }

  /// The numbers of the FAT's pages, from the header and from the master FAT. Made on first use.
  const std::vector<int>& masterFATPageLst();

  /// Reads `n` bytes from `offset` in `page` on, across the pages behind it in the file. Count of bytes read.
  unsigned int read(int page, uint32_t offset, char* buffer, unsigned int n);
  /// The same bytes in place; null where they do not stand in memory, or the file ends before theirs do.
  const uint8_t* view(int page, uint32_t offset, unsigned int n) const;

 private:
  bool isCached(int page) const { return caches_ && holds(page) && slots_[static_cast<size_t>(page)]; }
  uint64_t address(int page) const { return sizeof(SotHeader) + static_cast<uint64_t>(page) * pageSize_; }
  unsigned int readCached(int page, uint32_t offset, char* buffer, unsigned int n);
  unsigned int readDirect(int page, uint32_t offset, char* buffer, unsigned int n);
  const uint8_t* at(int page);
  uint8_t* newCachedPage(uint32_t size);
  uint32_t bytesInFile(int page) const;
  unsigned int readFile(uint64_t position, void* buffer, unsigned int n);
  void appendMasterPages();

  Archive* archive_ = nullptr;
  uint64_t fileSize_ = 0;
  uint32_t pageSize_ = 0;
  uint64_t pageCount_ = 0;
  bool caches_ = false;
  std::vector<const uint8_t*> slots_;  ///< one for each page of the file, null until it is read
  uint8_t* spare_ = nullptr;           ///< memory for the next cached pages, in the pool's allocator
  uint32_t spareBytes_ = 0;
  std::vector<int> masterFatPages_;
  SotHeader header_{};
};

/// The tiny pages, which lie one behind the other in the root entry's chain. They have no cache of their own:
/// the pages under them are cached. A tiny page that is not there to its end counts as absent.
template <class Pool>
class SotRoTinyPagePool {
 public:
  /// `rootPages` is the root entry's chain in `pool`; neither is owned.
  SotRoTinyPagePool(Pool& pool, std::span<const int> rootPages, uint32_t pageSize);

  uint32_t pageSize() const { return pageSize_; }
  uint64_t fileSize() const { return pool_.fileSize(); }
  bool holds(int page) const;
  /// As the page pool's.
  unsigned int read(int page, uint32_t offset, char* buffer, unsigned int n);
  /// Never: what lies in tiny pages is small.
  const uint8_t* view(int /*page*/, uint32_t /*offset*/, unsigned int /*n*/) const { return nullptr; }

 private:
  uint64_t address(int page) const { return static_cast<uint64_t>(page) * pageSize_; }

  Pool& pool_;
  SotRoTrunkImpl<Pool> trunk_;
  uint32_t pageSize_;
  uint64_t pageCount_;
};

using FilePagePool = SotRoPagePool<SourceArchive>;
using FileTinyPagePool = SotRoTinyPagePool<FilePagePool>;
extern template class SotRoPagePool<SourceArchive>;
extern template class SotRoTinyPagePool<FilePagePool>;

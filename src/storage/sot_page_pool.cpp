#include "storage/sot_page_pool.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr uint8_t kSignature[] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
constexpr int kEndOfList = -2;
/// Smaller pages would cost more in slots than in content; they are read from the file each time.
constexpr uint32_t kSmallestCachedPage = 64;
constexpr uint32_t kSparePiece = 4096;

}  // namespace

template <class Archive>
bool SotRoPagePool<Archive>::open(Archive& archive) {
  archive_ = &archive;
  const int64_t size = archive.size();
  if (size < static_cast<int64_t>(sizeof(header_))) return false;
  fileSize_ = static_cast<uint64_t>(size);
  if (readFile(0, &header_, sizeof(header_)) != sizeof(header_)) return false;
  if (std::memcmp(header_.signature, kSignature, sizeof(kSignature)) != 0) return false;
  pageSize_ = pageSizeOf(header_.pageShift);
  if (pageSize_ == 0) return false;
  pageCount_ = std::min<uint64_t>((fileSize_ - sizeof(header_) + pageSize_ - 1) / pageSize_, INT32_MAX);
  // What stands in memory already is copied from there each time.
  caches_ = pageSize_ >= kSmallestCachedPage && !archive.bytes();
  if (caches_) slots_.resize(static_cast<size_t>(pageCount_));
  return true;
}

template <class Archive>
const std::vector<int>& SotRoPagePool<Archive>::masterFATPageLst() {
  if (masterFatPages_.empty()) {
    masterFatPages_.resize(SotHeader::kFatPageCount);
    std::memcpy(masterFatPages_.data(), header_.fatPages, sizeof(header_.fatPages));
    appendMasterPages();
    if (masterFatPages_.back() != kEndOfList) masterFatPages_.push_back(kEndOfList);
  }
  return masterFatPages_;
}

/// Each page holds FAT page numbers and, last, the number of the next such page. The header's count of them
/// may be anything, and they may form a loop, so the pages of the file bound both their number and the list.
template <class Archive>
void SotRoPagePool<Archive>::appendMasterPages() {
  const auto numbersOnPage = static_cast<size_t>(std::min<uint64_t>(pageSize_, fileSize_) / sizeof(int32_t));
  if (numbersOnPage == 0) return;
  int next = header_.masterFatStart;
  uint64_t pagesLeft = header_.masterFatPages > 0
                           ? std::min<uint64_t>(static_cast<uint32_t>(header_.masterFatPages), pageCount_)
                           : 0;
  while (pagesLeft > 0 && holds(next) && masterFatPages_.size() <= pageCount_) {
    --pagesLeft;
    std::vector<int> numbers(numbersOnPage);
    if (read(next, 0, reinterpret_cast<char*>(numbers.data()),
             static_cast<unsigned int>(numbersOnPage * sizeof(int))) == 0) {
      return;
    }
    next = numbers.back();
    masterFatPages_.insert(masterFatPages_.end(), numbers.begin(), numbers.end() - 1);
  }
}

template <class Archive>
unsigned int SotRoPagePool<Archive>::read(int page, uint32_t offset, char* buffer, unsigned int n) {
  unsigned int done = 0;
  while (done < n && holds(page)) {
    const unsigned int left = n - done;
    const bool throughCache = caches_ && (left < pageSize_ || isCached(page));
    const unsigned int count = throughCache ? readCached(page, offset, buffer + done, left)
                                            : readDirect(page, offset, buffer + done, left);
    if (count == 0) break;
    done += count;
    const uint64_t end = uint64_t{offset} + count;
    page += static_cast<int>(end / pageSize_);
    offset = static_cast<uint32_t>(end % pageSize_);
  }
  return done;
}

template <class Archive>
const uint8_t* SotRoPagePool<Archive>::view(int page, uint32_t offset, unsigned int n) const {
  const uint8_t* const bytes = archive_->bytes();
  const uint64_t position = address(page) + offset;
  return bytes && position <= fileSize_ && n <= fileSize_ - position ? bytes + position : nullptr;
}

/// Reads up to the end of `page` at most.
template <class Archive>
unsigned int SotRoPagePool<Archive>::readCached(int page, uint32_t offset, char* buffer, unsigned int n) {
  const uint8_t* bytes = at(page);
  if (!bytes) return 0;
  n = std::min(n, pageSize_ - offset);
  const ByteView wanted = ByteView(bytes, bytesInFile(page)).part(offset, n);
  if (!wanted.empty()) std::memcpy(buffer, wanted.data(), wanted.size());
  std::memset(buffer + wanted.size(), 0, n - wanted.size());
  return n;
}

/// Reads up to the first page that is in the cache at most.
template <class Archive>
unsigned int SotRoPagePool<Archive>::readDirect(int page, uint32_t offset, char* buffer, unsigned int n) {
  const uint64_t position = address(page) + offset;
  int end = page + 1;
  while (holds(end) && address(end) - position < n && !isCached(end)) ++end;
  n = static_cast<unsigned int>(std::min<uint64_t>(n, address(end) - position));
  const auto inFile =
      position < fileSize_ ? static_cast<unsigned int>(std::min<uint64_t>(n, fileSize_ - position)) : 0;
  const unsigned int count = inFile ? readFile(position, buffer, inFile) : 0;
  if (count < inFile) return count;
  std::memset(buffer + count, 0, n - count);
  return n;
}

/// The bytes of a page that the file has, from the cache; null if none could be read.
template <class Archive>
const uint8_t* SotRoPagePool<Archive>::at(int page) {
  const uint8_t*& slot = slots_[static_cast<size_t>(page)];
  if (!slot) {
    const uint32_t size = bytesInFile(page);
    uint8_t* bytes = newCachedPage(size);
    const unsigned int count = readFile(address(page), bytes, size);
    std::memset(bytes + count, 0, size - count);
    if (count) slot = bytes;
  }
  return slot;
}

/// Memory for a page. Small pages are carved from larger pieces: a shared block of the allocator would hold
/// three pages of 512 bytes and waste the room of a fourth.
template <class Archive>
uint8_t* SotRoPagePool<Archive>::newCachedPage(uint32_t size) {
  if (size >= kSparePiece) return static_cast<uint8_t*>(Alloc(size));
  if (size > spareBytes_) {
    spare_ = static_cast<uint8_t*>(Alloc(kSparePiece));
    spareBytes_ = kSparePiece;
  }
  spareBytes_ -= size;
  return spare_ + spareBytes_;
}

template <class Archive>
uint32_t SotRoPagePool<Archive>::bytesInFile(int page) const {
  return static_cast<uint32_t>(std::min<uint64_t>(pageSize_, fileSize_ - address(page)));
}

template <class Archive>
unsigned int SotRoPagePool<Archive>::readFile(uint64_t position, void* buffer, unsigned int n) {
  return archive_->getAt(position, buffer, n);
}

template <class Pool>
SotRoTinyPagePool<Pool>::SotRoTinyPagePool(Pool& pool, std::span<const int> rootPages, uint32_t pageSize)
    : pool_(pool),
      trunk_(pool, rootPages),
      pageSize_(pageSize),
      pageCount_((uint64_t{trunk_.size()} + pageSize - 1) / pageSize) {}

template <class Pool>
bool SotRoTinyPagePool<Pool>::holds(int page) const {
  return page >= 0 && static_cast<uint64_t>(page) < pageCount_ && trunk_.holds(address(page), pageSize_);
}

template <class Pool>
unsigned int SotRoTinyPagePool<Pool>::read(int page, uint32_t offset, char* buffer, unsigned int n) {
  if (!holds(page) || !trunk_.seek(static_cast<unsigned long>(address(page) + offset), SEEK_SET)) return 0;
  return trunk_.read(buffer, n);
}

template class SotRoPagePool<SourceArchive>;
template class SotRoTinyPagePool<FilePagePool>;

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// A chain of pages read as one sequence of bytes. Positions and sizes are in bytes and count whole pages;
/// arithmetic on them is that of unsigned 32-bit numbers, so that a negative relative move works by wrapping.
class SotRoTrunk {
 public:
  virtual ~SotRoTrunk() = default;

  virtual unsigned int size() const = 0;
  virtual unsigned int tell() const = 0;
  /// `whence` 0: to `offset`; 1: by `offset`; 2: to `offset` before the end; anything else: nowhere.
  /// False, with the position unchanged, for a move to `size` or beyond it (backward from the end, before 0).
  virtual bool seek(unsigned long offset, int whence) = 0;
  /// Count of bytes read; fewer than `n` at the end and at a page that the file does not hold.
  virtual unsigned int read(char* buffer, unsigned int n) = 0;
  /// The next `n` bytes, where the pool has them in memory in one piece, and moves behind them; else null.
  virtual const uint8_t* view(unsigned int n) = 0;
  /// How many bytes a `read` from here could bring, never more than the file is long.
  virtual unsigned int bytesLeft() const = 0;
  /// How many bytes the whole of it could bring, wherever the position is, never more than the file is long.
  virtual unsigned int bytesHeld() const = 0;
};

/// A trunk over the pages of `Pool`, which is not owned. The list of page numbers is not owned either: it
/// stays where it was made, in the table's cache of chains.
template <class Pool>
class SotRoTrunkImpl : public SotRoTrunk {
 public:
  /// The first negative number ends the trunk.
  SotRoTrunkImpl(Pool& pool, std::span<const int> pages);

  unsigned int size() const override { return static_cast<uint32_t>(pages_.size()) * pageSize(); }
  unsigned int tell() const override { return position_; }
  bool seek(unsigned long offset, int whence) override;
  unsigned int read(char* buffer, unsigned int n) override;
  const uint8_t* view(unsigned int n) override;
  unsigned int bytesLeft() const override;
  unsigned int bytesHeld() const override;

  /// Whether all of a range of bytes, not empty, lies in pages that the file holds.
  bool holds(uint64_t offset, uint32_t length) const;

 private:
  uint32_t pageSize() const { return pool_.pageSize(); }
  size_t pageIndex() const { return position_ / pageSize(); }
  uint32_t pageOffset() const { return position_ % pageSize(); }
  size_t pagesHeld(size_t index) const;
  uint64_t bytesReadable() const;
  size_t runLength(size_t index, uint64_t pagesWanted) const;

  Pool& pool_;
  std::span<const int> pages_;
  /// Where the pages change from held by the file (as they begin) to not held, and back. Mostly empty.
  std::vector<uint32_t> changes_;
  uint32_t position_ = 0;
};

template <class Pool>
SotRoTrunkImpl<Pool>::SotRoTrunkImpl(Pool& pool, std::span<const int> pages) : pool_(pool) {
  const auto end = std::find_if(pages.begin(), pages.end(), [](int page) { return page < 0; });
  pages_ = pages.first(static_cast<size_t>(end - pages.begin()));
  bool held = true;
  for (size_t i = 0; i < pages_.size(); ++i) {
    if (pool.holds(pages_[i]) == held) continue;
    changes_.push_back(static_cast<uint32_t>(i));
    held = !held;
  }
}

template <class Pool>
bool SotRoTrunkImpl<Pool>::seek(unsigned long offset, int whence) {
  const auto distance = static_cast<uint32_t>(offset);
  uint32_t target = position_;
  if (whence == 0 || whence == 1) {
    target = whence == 0 ? distance : position_ + distance;
    if (target >= size()) return false;
  } else if (whence == 2) {
    if (distance > size()) return false;
    target = size() - distance;
  }
  position_ = target;
  return true;
}

template <class Pool>
unsigned int SotRoTrunkImpl<Pool>::read(char* buffer, unsigned int n) {
  n = static_cast<unsigned int>(std::min<uint64_t>(n, bytesReadable()));
  size_t index = pageIndex();
  uint32_t offset = pageOffset();
  unsigned int done = 0;
  while (done < n) {
    // Pages that are neighbours in the pool are read at one go.
    const uint64_t end = uint64_t{offset} + (n - done);
    const size_t run = runLength(index, (end + pageSize() - 1) / pageSize());
    const auto wanted = static_cast<unsigned int>(std::min(end, run * uint64_t{pageSize()}) - offset);
    const unsigned int count = pool_.read(pages_[index], offset, buffer + done, wanted);
    done += count;
    position_ += count;
    if (count < wanted) break;
    index += run;
    offset = 0;
  }
  return done;
}

template <class Pool>
const uint8_t* SotRoTrunkImpl<Pool>::view(unsigned int n) {
  if (n == 0 || n > bytesReadable()) return nullptr;
  const uint64_t end = uint64_t{pageOffset()} + n;
  const uint64_t pages = (end + pageSize() - 1) / pageSize();
  if (runLength(pageIndex(), pages) < pages) return nullptr;
  const uint8_t* const bytes = pool_.view(pages_[pageIndex()], pageOffset(), n);
  if (bytes) position_ += n;
  return bytes;
}

template <class Pool>
unsigned int SotRoTrunkImpl<Pool>::bytesLeft() const {
  return static_cast<unsigned int>(std::min<uint64_t>({bytesReadable(), pool_.fileSize(), UINT32_MAX}));
}

template <class Pool>
unsigned int SotRoTrunkImpl<Pool>::bytesHeld() const {
  const uint64_t chainBytes = pages_.size() * uint64_t{pageSize()};
  return static_cast<unsigned int>(std::min<uint64_t>({chainBytes, pool_.fileSize(), UINT32_MAX}));
}

template <class Pool>
bool SotRoTrunkImpl<Pool>::holds(uint64_t offset, uint32_t length) const {
  const uint64_t first = offset / pageSize();
  const uint64_t last = (offset + length - 1) / pageSize();
  return last < pages_.size() && pagesHeld(static_cast<size_t>(first)) > last - first;
}

/// Count of pages from `index` on that the file holds, up to the first that it does not hold.
template <class Pool>
size_t SotRoTrunkImpl<Pool>::pagesHeld(size_t index) const {
  if (index >= pages_.size()) return 0;
  const auto next = std::upper_bound(changes_.begin(), changes_.end(), index);
  if ((next - changes_.begin()) % 2 != 0) return 0;
  return (next == changes_.end() ? pages_.size() : *next) - index;
}

/// Count of bytes from the position on, up to the first page that the file does not hold.
template <class Pool>
uint64_t SotRoTrunkImpl<Pool>::bytesReadable() const {
  const size_t pages = pagesHeld(pageIndex());
  return pages ? pages * uint64_t{pageSize()} - pageOffset() : 0;
}

/// Count of pages from `index` on that lie one behind the other, at most `pagesWanted`.
template <class Pool>
size_t SotRoTrunkImpl<Pool>::runLength(size_t index, uint64_t pagesWanted) const {
  size_t run = 1;
  while (run < pagesWanted && index + run < pages_.size() && pages_[index + run - 1] != INT32_MAX &&
         pages_[index + run] == pages_[index + run - 1] + 1) {
    ++run;
  }
  return run;
}

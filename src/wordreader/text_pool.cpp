#include "wordreader/text_pool.h"

#include <algorithm>
#include <cstring>

template <class Char, unsigned PageBits>
uint32_t VtxTextPool<Char, PageBits>::read(uint32_t at, Char* out, uint32_t n) const {
  if (at >= size_) return 0;
  const uint32_t total = std::min(n, size_ - at);
  for (uint32_t done = 0; done < total;) {
    const uint32_t place = (at + done) & (kPageSize - 1);
    const uint32_t here = std::min(kPageSize - place, total - done);
    std::memcpy(out + done, pages_[(at + done) >> PageBits] + place, here * sizeof(Char));
    done += here;
  }
  return total;
}

template <class Char, unsigned PageBits>
const Char* VtxTextPool<Char, PageBits>::run(uint32_t at, uint32_t* n) const {
  if (at >= size_) {
    *n = 0;
    return nullptr;
  }
  const uint32_t place = at & (kPageSize - 1);
  *n = std::min(kPageSize - place, size_ - at);
  return pages_[at >> PageBits] + place;
}

template <class Char, unsigned PageBits>
void VtxTextPool<Char, PageBits>::append(const Char* text, uint32_t n) {
  while (n > 0) {
    const uint32_t place = size_ & (kPageSize - 1);
    if (size_ >> PageBits == pages_.size()) AddPages();
    const uint32_t here = std::min(n, kPageSize - place);
    std::memcpy(pages_[size_ >> PageBits] + place, text, here * sizeof(Char));
    size_ += here;
    text += here;
    n -= here;
  }
}

template <class Char, unsigned PageBits>
void VtxTextPool<Char, PageBits>::AddPages() {
  constexpr size_t kMostPages = 16;
  const size_t count = std::clamp<size_t>(pages_.size(), 1, kMostPages);
  if (budget_) budget_->Take(count * kPageSize * sizeof(Char));
  allocations_.push_back(std::make_unique_for_overwrite<Char[]>(count * kPageSize));
  Char* const first = allocations_.back().get();
  for (size_t i = 0; i < count; ++i) pages_.push_back(first + i * kPageSize);
}

template <class Char, unsigned PageBits>
void VtxTextPool<Char, PageBits>::pop_back() {
  if (size_ > 0) --size_;
}

template <class Char, unsigned PageBits>
void VtxTextPool<Char, PageBits>::clear() {
  pages_.clear();
  allocations_.clear();
  size_ = 0;
}

template class VtxTextPool<unsigned short, 8>;

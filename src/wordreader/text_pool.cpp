#include "wordreader/text_pool.h"

#include <algorithm>
#include <cstring>

template <class Char, unsigned PageBits>
uint32_t VtxTextPool<Char, PageBits>::read(uint32_t at, Char* out, uint32_t n) const {
  if (at >= size_) return 0;
  const uint32_t total = std::min(n, size_ - at);
  for (uint32_t done = 0; done < total;) {
    uint32_t here = 0;
    const Char* text = run(at + done, &here);
    here = std::min(here, total - done);
    std::memcpy(out + done, text, here * sizeof(Char));
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
  return pages_[at >> PageBits].get() + place;
}

template <class Char, unsigned PageBits>
void VtxTextPool<Char, PageBits>::append(const Char* text, uint32_t n) {
  while (n > 0) {
    const uint32_t place = size_ & (kPageSize - 1);
    if (place == 0) pages_.emplace_back(new Char[kPageSize]);
    const uint32_t here = std::min(n, kPageSize - place);
    std::memcpy(pages_.back().get() + place, text, here * sizeof(Char));
    size_ += here;
    text += here;
    n -= here;
  }
}

template <class Char, unsigned PageBits>
void VtxTextPool<Char, PageBits>::pop_back() {
  if (size_ == 0) return;
  --size_;
  if ((size_ & (kPageSize - 1)) == 0) pages_.pop_back();
}

template <class Char, unsigned PageBits>
void VtxTextPool<Char, PageBits>::clear() {
  pages_.clear();
  size_ = 0;
}

template class VtxTextPool<unsigned short, 8>;

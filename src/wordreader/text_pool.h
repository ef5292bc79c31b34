#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/chain_allocator.h"

/// A growable sequence of characters in pages of `1 << PageBits`; data never moves.
template <class Char, unsigned PageBits>
class VtxTextPool {
 public:
  static constexpr uint32_t kPageSize = 1u << PageBits;

  uint32_t size() const { return size_; }
  uint32_t page_count() const { return (size_ + kPageSize - 1) >> PageBits; }
  /// The character at `i`, which must be below `size()`.
  Char operator[](uint32_t i) const { return pages_[i >> PageBits][i & (kPageSize - 1)]; }
  /// Copies up to `n` characters from `at`, clipped to the end. Returns the count.
  uint32_t read(uint32_t at, Char* out, uint32_t n) const;
  /// The characters from `at` to the end of their page or of the text, in place; the count goes to `*n`.
  const Char* run(uint32_t at, uint32_t* n) const;
  /// Where pages are counted from now on; null for nowhere. Not owned.
  void SetBudget(MemoryBudget* budget) { budget_ = budget; }
  void append(const Char& character) { append(&character, 1); }
  void append(const Char* text, uint32_t n);
  void pop_back();
  void clear();

 private:
  /// Allocates as many pages as there are, up to a limit.
  void AddPages();

  std::vector<std::unique_ptr<Char[]>> allocations_;
  std::vector<Char*> pages_;  ///< in the allocations; the last ones may not be in use yet
  uint32_t size_ = 0;
  MemoryBudget* budget_ = nullptr;
};

extern template class VtxTextPool<unsigned short, 8>;
using KTextPool = VtxTextPool<unsigned short, 8>;

#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "base/chain_allocator.h"

/// A list that grows in chunks: unlike a vector it never holds all its elements twice.
template <class T>
class ChunkedList {
 public:
  size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  /// The element at `i`, which must be below `size()`.
  const T& operator[](size_t i) const { return chunks_[i / kChunk][i % kChunk]; }
  T& back() { return chunks_.back()[(size_ - 1) % kChunk]; }
  /// Where chunks are counted from now on; null for nowhere. Not owned.
  void SetBudget(MemoryBudget* budget) { budget_ = budget; }
  void push_back(const T& element) {
    if (size_ % kChunk == 0) AddChunk();
    chunks_.back()[size_ % kChunk] = element;
    ++size_;
  }

 private:
  static constexpr size_t kChunk = 128;

  void AddChunk() {
    if (budget_) budget_->Take(kChunk * sizeof(T));
    chunks_.push_back(std::make_unique_for_overwrite<T[]>(kChunk));
  }

  std::vector<std::unique_ptr<T[]>> chunks_;
  size_t size_ = 0;
  MemoryBudget* budget_ = nullptr;
};

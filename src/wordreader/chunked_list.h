#pragma once

#include <cstddef>
#include <memory>
#include <vector>

/// A list that grows in chunks: unlike a vector it never holds all its elements twice.
template <class T>
class ChunkedList {
 public:
  size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  /// The element at `i`, which must be below `size()`.
  const T& operator[](size_t i) const { return chunks_[i / kChunk][i % kChunk]; }
  T& back() { return chunks_.back()[(size_ - 1) % kChunk]; }
  void push_back(const T& element) {
    if (size_ % kChunk == 0) chunks_.push_back(std::make_unique_for_overwrite<T[]>(kChunk));
    chunks_.back()[size_ % kChunk] = element;
    ++size_;
  }

 private:
  static constexpr size_t kChunk = 128;

  std::vector<std::unique_ptr<T[]>> chunks_;
  size_t size_ = 0;
};

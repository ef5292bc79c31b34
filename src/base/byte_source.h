#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

/// Bytes that a document is read from: a file, memory, or functions of a host. Failures are remembered: what
/// could not be read looks to the reader as if the source ended there.
class ByteSource {
 public:
  ByteSource() = default;
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;
  virtual ~ByteSource() = default;

  /// Count of bytes; it stays the same.
  virtual uint64_t Size() = 0;
  /// Reads `n` bytes from `offset` on. Count of those read, fewer only at the end and after a failure.
  virtual size_t ReadAt(uint64_t offset, void* buffer, size_t n) = 0;
  /// All bytes, where they stand in memory; else null.
  virtual const uint8_t* Bytes() const { return nullptr; }
};

/// A block of memory, not owned.
class MemorySource final : public ByteSource {
 public:
  MemorySource(const void* data, size_t size) : data_(static_cast<const uint8_t*>(data)), size_(size) {}

  uint64_t Size() override { return size_; }
  size_t ReadAt(uint64_t offset, void* buffer, size_t n) override {
    if (offset >= size_) return 0;
    const size_t count = n < size_ - offset ? n : size_ - static_cast<size_t>(offset);
    std::memcpy(buffer, data_ + offset, count);
    return count;
  }
  const uint8_t* Bytes() const override { return data_; }

 private:
  const uint8_t* data_;
  size_t size_;
};

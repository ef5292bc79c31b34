#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

/// Bytes that were read from a file: a pointer and a length, not owned.
/// Every access is checked. Integers are little-endian; bytes that lie outside read as zero, and a record or
/// a part that does not fit is null or empty, so that damaged data is simply absent.
class ByteView {
 public:
  constexpr ByteView() = default;
  constexpr ByteView(const void* data, size_t size)
      : data_(static_cast<const uint8_t*>(data)), size_(data ? size : 0) {}

  const uint8_t* data() const { return data_; }
  size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }

  bool contains(size_t offset, size_t length) const { return offset <= size_ && length <= size_ - offset; }

  uint8_t u8(size_t offset) const { return offset < size_ ? data_[offset] : 0; }
  uint16_t u16(size_t offset) const { return integer<uint16_t>(offset); }
  int16_t i16(size_t offset) const { return integer<int16_t>(offset); }
  uint32_t u32(size_t offset) const { return integer<uint32_t>(offset); }
  int32_t i32(size_t offset) const { return integer<int32_t>(offset); }

  /// The packed file record at `offset`, in place; null when it does not fit.
  template <class T>
  const T* record(size_t offset) const {
    static_assert(alignof(T) == 1 && std::is_trivially_copyable_v<T>, "file records are packed");
    return contains(offset, sizeof(T)) ? reinterpret_cast<const T*>(data_ + offset) : nullptr;
  }

  /// A copy of the record at `offset`; bytes that lie outside are zero.
  template <class T>
  T copyOf(size_t offset) const {
    static_assert(std::is_trivially_copyable_v<T>);
    T value{};
    if (offset < size_) {
      const size_t left = size_ - offset;
      std::memcpy(&value, data_ + offset, left < sizeof(T) ? left : sizeof(T));
    }
    return value;
  }

  /// The part that begins at `offset`, at most `length` bytes; shortened where the bytes end. At their very
  /// end it is empty but there (`data` is not null), beyond it there is none.
  ByteView part(size_t offset, size_t length = SIZE_MAX) const {
    if (offset > size_) return {};
    const size_t left = size_ - offset;
    return ByteView(data_ + offset, length < left ? length : left);
  }

 private:
  template <class T>
  T integer(size_t offset) const {
    if (contains(offset, sizeof(T))) {
      T value;
      // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker): a view without bytes contains none
      std::memcpy(&value, data_ + offset, sizeof(T));
      return value;
    }
    return copyOf<T>(offset);
  }

  const uint8_t* data_ = nullptr;
  size_t size_ = 0;
};

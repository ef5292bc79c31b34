#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

/// Helpers that make the bytes of test files. Integers are little-endian, as they are on every target.
namespace support {

using Bytes = std::vector<uint8_t>;

/// Makes a record field by field: `ByteWriter().u16(1).u32(0x4030).take()`. Values are cut to the width.
class ByteWriter {
 public:
  ByteWriter& u8(uint32_t value) { return integer(static_cast<uint8_t>(value)); }
  ByteWriter& u16(uint32_t value) { return integer(static_cast<uint16_t>(value)); }
  ByteWriter& u32(uint32_t value) { return integer(value); }
  ByteWriter& zeros(size_t count) { return fill(count, 0); }
  ByteWriter& fill(size_t count, uint8_t value) {
    bytes_.insert(bytes_.end(), count, value);
    return *this;
  }
  ByteWriter& bytes(const Bytes& data) { return raw(data.data(), data.size()); }
  ByteWriter& text8(std::string_view text) { return raw(text.data(), text.size()); }
  ByteWriter& text16(std::u16string_view text) { return raw(text.data(), text.size() * 2); }
  /// Zeros up to the next multiple of `unit`.
  ByteWriter& align(size_t unit) { return zeros((unit - bytes_.size() % unit) % unit); }

  size_t size() const { return bytes_.size(); }
  /// The bytes made so far; the writer is empty afterwards.
  Bytes take() { return std::move(bytes_); }

 private:
  template <class T>
  ByteWriter& integer(T value) {
    return raw(&value, sizeof(value));
  }
  ByteWriter& raw(const void* data, size_t size) {
    const auto* first = static_cast<const uint8_t*>(data);
    if (size) bytes_.insert(bytes_.end(), first, first + size);
    return *this;
  }

  Bytes bytes_;
};

/// Overwrites bytes that are there already: a test that patches past the end is wrong, so that throws.
inline void patchBytes(Bytes& target, size_t offset, const Bytes& data) {
  if (offset > target.size() || data.size() > target.size() - offset) {
    throw std::out_of_range("patch lies outside the bytes");
  }
  if (!data.empty()) std::memcpy(target.data() + offset, data.data(), data.size());
}

/// Overwrites an integer, as wide as its type: `patchInteger(file, 10, uint16_t{0x0200})`.
template <class T>
void patchInteger(Bytes& target, size_t offset, T value) {
  static_assert(std::is_integral_v<T>);
  Bytes data(sizeof(T));
  std::memcpy(data.data(), &value, sizeof(T));
  patchBytes(target, offset, data);
}

}  // namespace support

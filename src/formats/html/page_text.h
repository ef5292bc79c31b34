#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace pagerex {

/// Markup that grows, and in which something can be put in front of what stands already.
class PageText {
 public:
  void Put(char byte) {
    Reserve(1);
    bytes_[size_++] = byte;
  }
  void Put(std::string_view markup) {
    Reserve(markup.size());
    if (!markup.empty()) std::memcpy(bytes_.get() + size_, markup.data(), markup.size());
    size_ += markup.size();
  }
  template <size_t kSize>
  void Put(const char (&literal)[kSize]) {
    Put(std::string_view(literal, kSize - 1));
  }
  /// Text between tags, or in an attribute's double quotes. Characters that no page may have are left out.
  void PutText(std::u16string_view text);
  void PutAttribute(std::u16string_view text);

  void Insert(size_t at, std::string_view markup);
  /// Of the first bytes, which are done.
  void DropFront(size_t count);
  void Cut(size_t size) { size_ = size; }
  void Clear() { size_ = 0; }

  size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  std::string_view view() const { return {bytes_.get(), size_}; }

 private:
  void Reserve(size_t by) {
    if (by > capacity_ - size_) Grow(by);
  }
  void Grow(size_t by);
  template <bool kInAttribute>
  void PutEscaped(std::u16string_view text);
  void PutAscii(char byte, bool isInAttribute);

  std::unique_ptr<char[]> bytes_;
  size_t size_ = 0;
  size_t capacity_ = 0;
};

/// The same for bytes that are UTF-8 already.
void appendAttribute(std::string& out, std::string_view text);
/// The value of an attribute as short as it may be: quoted where it must be.
void appendValue(std::string& out, std::string_view value);

}  // namespace pagerex

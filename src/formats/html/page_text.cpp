#include "formats/html/page_text.h"

#include <algorithm>

#include "base/utf8.h"

namespace pagerex {
namespace {

/// What markup stands for a byte of text: nothing where it stands for itself.
std::string_view escapeOf(char byte, bool isInAttribute) {
  switch (byte) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '"':
      return isInAttribute ? "&quot;" : "";
    default:
      return "";
  }
}

bool isControl(char16_t unit) {
  return unit >= 0x7F && unit <= 0x9F;
}

/// U+007F to U+009F, which no page may have.
bool haveControls(const char* bytes, size_t size) {
  if (std::memchr(bytes, 0x7F, size)) return true;
  const char* const end = bytes + size;
  while (bytes < end) {
    const void* const found = std::memchr(bytes, 0xC2, static_cast<size_t>(end - bytes));
    if (!found) return false;
    bytes = static_cast<const char*>(found) + 1;
    if (static_cast<unsigned char>(*bytes) < 0xA0) return true;
  }
  return false;
}

size_t firstEscape(const char* bytes, size_t size, bool isInAttribute) {
  size_t first = size;
  for (const char each : {'&', '<', '"'}) {
    if (each == '"' && !isInAttribute) continue;
    const void* const found = std::memchr(bytes, each, first);
    if (found) first = static_cast<size_t>(static_cast<const char*>(found) - bytes);
  }
  return first;
}

}  // namespace

void PageText::Grow(size_t by) {
  constexpr size_t kLeast = 0x1000;
  const size_t capacity = std::max({kLeast, capacity_ * 2, size_ + by});
  std::unique_ptr<char[]> bytes(new char[capacity]);
  if (size_ > 0) std::memcpy(bytes.get(), bytes_.get(), size_);
  bytes_ = std::move(bytes);
  capacity_ = capacity;
}

template <bool kInAttribute>
void PageText::PutEscaped(std::u16string_view text) {
  if (text.empty()) return;
  if (mostUtf8(text.size()) > capacity_ - size_) Grow(mostUtf8(text.size()));
  char* const start = bytes_.get() + size_;
  const size_t count = utf8FromUtf16(text.data(), text.size(), start, Utf8Filter::kControls);
  const bool hasControls = haveControls(start, count);
  const size_t plain = firstEscape(start, count, kInAttribute);
  if (plain == count && !hasControls) {
    size_ += count;
    return;
  }
  const std::string rest(start + plain, count - plain);
  size_ += plain;
  if (hasControls) {
    // What stands in front has no escapes, but may have controls.
    std::u16string sound(text);
    std::erase_if(sound, isControl);
    size_ -= plain;
    return PutEscaped<kInAttribute>(sound);
  }
  for (const char byte : rest) {
    const std::string_view escape = escapeOf(byte, kInAttribute);
    escape.empty() ? Put(byte) : Put(escape);
  }
}

void PageText::PutText(std::u16string_view text) {
  PutEscaped<false>(text);
}

void PageText::PutAttribute(std::u16string_view text) {
  PutEscaped<true>(text);
}

void PageText::Insert(size_t at, std::string_view markup) {
  if (markup.empty()) return;
  const std::string kept(markup);  // may be part of this
  if (kept.size() > capacity_ - size_) Grow(kept.size());
  std::memmove(bytes_.get() + at + kept.size(), bytes_.get() + at, size_ - at);
  std::memcpy(bytes_.get() + at, kept.data(), kept.size());
  size_ += kept.size();
}

void PageText::DropFront(size_t count) {
  if (count == 0) return;
  std::memmove(bytes_.get(), bytes_.get() + count, size_ - count);
  size_ -= count;
}

void appendAttribute(std::string& out, std::string_view text) {
  if (text.empty()) return;
  const size_t plain = firstEscape(text.data(), text.size(), true);
  out += text.substr(0, plain);
  text.remove_prefix(plain);
  for (const char byte : text) {
    const std::string_view escape = escapeOf(byte, true);
    escape.empty() ? out.push_back(byte) : static_cast<void>(out.append(escape));
  }
}

void appendValue(std::string& out, std::string_view value) {
  const bool isPlain = !value.empty() && std::all_of(value.begin(), value.end(), [](char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           byte == '-' || byte == '_' || byte == '#' || byte == '.' || static_cast<signed char>(byte) < 0;
  });
  if (isPlain) {
    out += value;
    return;
  }
  out += '"';
  appendAttribute(out, value);
  out += '"';
}

}  // namespace pagerex

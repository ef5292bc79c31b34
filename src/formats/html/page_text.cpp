#include "formats/html/page_text.h"

#include <algorithm>

#include "base/encoding.h"
#include "base/utf8.h"
#include "formats/plain_copy.h"

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

// What no page may have.
constexpr char16_t kFirstControl = 0x7F, kLastControl = 0x9F;

std::u16string withoutControls(std::u16string_view text) {
  std::u16string sound(text);
  std::erase_if(sound, [](char16_t unit) { return unit >= kFirstControl && unit <= kLastControl; });
  return sound;
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
  const size_t start = size_;
  for (std::u16string_view rest = text; !rest.empty();) {
    Reserve(mostUtf8(rest.size()));
    const size_t plain = copyPlainPage(rest.data(), rest.size(), bytes_.get() + size_);
    size_ += plain;
    rest.remove_prefix(plain);
    if (!rest.empty() && rest.front() < kFirstControl) {
      PutAscii(static_cast<char>(rest.front()), kInAttribute);
      rest.remove_prefix(1);
      continue;
    }
    while (!rest.empty() && rest.front() >= kFirstControl) {
      const CharacterAt next = characterAt(rest.data(), rest.size());
      if (next.code <= kLastControl) {
        size_ = start;
        return PutEscaped<kInAttribute>(withoutControls(text));
      }
      if (!isNoText(next.code)) size_ += encodeUtf8(next.code, bytes_.get() + size_);
      rest.remove_prefix(next.units);
    }
  }
}

/// A character that may mean something in markup, or be none.
void PageText::PutAscii(char byte, bool isInAttribute) {
  const std::string_view escape = escapeOf(byte, isInAttribute);
  if (!escape.empty()) {
    Put(escape);
  } else if (!isNoText(static_cast<unsigned char>(byte))) {
    Put(byte);
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
  Reserve(kept.size());
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

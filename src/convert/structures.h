#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "pagerex/convert.h"

namespace pagerex {

/// A structure of a host, as far as its size reaches; all else is 0. False for one that is shorter than
/// `firstSize`, which the first version had.
template <class T>
bool takeStructure(const T& given, size_t firstSize, T& out) {
  out = T{};
  if (given.size < firstSize) return false;
  std::memcpy(static_cast<void*>(&out), &given, std::min(given.size, sizeof(T)));
  out.size = sizeof(T);
  return true;
}

/// The same of one that may be null, which stands for all zeros.
template <class T>
bool takeOptional(const T* given, size_t firstSize, T& out) {
  out = T{};
  return !given || takeStructure(*given, firstSize, out);
}

/// Gives to a host what its structure has room for.
template <class T>
void giveStructure(const T& value, T& out) {
  const size_t size = std::min(out.size, sizeof(T));
  const size_t told = out.size;
  std::memcpy(static_cast<void*>(&out), &value, size);
  if (size >= sizeof(out.size)) out.size = told;
}

/// An input, an output and a main file's name that a host gives.
bool takeInput(const pagerex_input& given, pagerex_input& out);
bool takeOutput(const pagerex_output& given, pagerex_output& out);
/// 0 for a name that a main file can have, or a value of errno.
int errorOfName(const std::string& name);

inline uint64_t orNoLimit(uint64_t limit) {
  return limit ? limit : UINT64_MAX;
}

/// As much of `text` as fits, no character of UTF-8 cut in two.
template <size_t N>
void copyText(std::string_view text, char (&out)[N]) {
  size_t length = std::min(text.size(), N - 1);
  while (length < text.size() && length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
    --length;
  if (!text.empty()) std::memcpy(out, text.data(), length);
  out[length] = '\0';
}

}  // namespace pagerex

#pragma once

#include <cstddef>

namespace ObjectWriter {

/// One row of a table of words.
template <class K, class V>
struct EnumPair {
  K key;
  V value;
};

/// A table of words with a default for what it does not hold. A view: the rows live in a constant array. Of
/// rows with one key the first counts.
template <class K, class V>
class EnumMap {
 public:
  constexpr EnumMap(const EnumPair<K, V>* rows, size_t count, V otherwise)
      : rows_(rows), count_(count), otherwise_(otherwise) {}
  template <size_t N>
  constexpr EnumMap(const EnumPair<K, V> (&rows)[N], V otherwise) : EnumMap(rows, N, otherwise) {}

  /// The value of the first row with `key`, else the default; `found`, which may be null, tells which.
  constexpr V Find(K key, bool* found = nullptr) const {
    const EnumPair<K, V>* row = rows_;
    while (row != rows_ + count_ && row->key != key) ++row;
    const bool known = row != rows_ + count_;
    if (found) *found = known;
    return known ? row->value : otherwise_;
  }

 private:
  const EnumPair<K, V>* rows_;
  size_t count_;
  V otherwise_;
};

}  // namespace ObjectWriter

#pragma once

#include <cstdint>

#include "wordreader/doc_file.h"
#include "wordreader/mso_word.h"

/// Walks the sub-documents in the order in which their texts follow each other, by counting characters off.
/// Sub-documents of length 0 are skipped, but for the first.
class _SubDocIterator {
 public:
  /// `lengths` are in characters and must stay.
  void Init(const KDRFib::SubDocLengths& lengths);

  bool Finished() const { return type_ >= mso_word::kSubDocCount; }
  /// The current sub-document, unless finished.
  mso_word::SUBDOC_TYPE GetType() const { return static_cast<mso_word::SUBDOC_TYPE>(type_); }
  /// Sum of the lengths before it.
  uint32_t GetTotal() const { return total_; }
  /// Its length, and what is left of it; 0 when finished.
  uint32_t GetSubDocLen() const { return Finished() ? 0 : (*lengths_)[type_]; }
  uint32_t GetRemain() const { return remain_; }

  _SubDocIterator& operator++();
  /// Counts off `n` characters, at most `GetRemain()`; the last one leads to the next sub-document.
  void ReduceHandCount(uint32_t n);

 private:
  const KDRFib::SubDocLengths* lengths_ = nullptr;
  uint32_t type_ = mso_word::kSubDocCount;
  uint32_t total_ = 0;
  uint32_t remain_ = 0;
};

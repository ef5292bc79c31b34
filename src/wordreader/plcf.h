#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "base/byte_view.h"
#include "base/status.h"
#include "wordreader/mso_word.h"

class KDRDocument;
struct KDRTableRecord;

/// Character positions [start, end) of a sub-document.
struct KDWRange {
  uint32_t start = 0;
  uint32_t end = 0;
};

/// A position table (PLCF): `Count() + 1` 32-bit positions, then `Count()` data records.
/// A view of bytes that live in the document's allocator. An index out of range reads as zero.
class KDRPlcfBase {
 public:
  uint32_t Count() const { return count_; }
  void Clear() { count_ = 0; }
  /// Entries whose end is there: fewer than `Count()` only if the table's bytes are cut short.
  uint32_t PresentCount() const {
    const size_t positions = bytes_.size() / 4;
    return positions == 0 ? 0 : static_cast<uint32_t>(std::min<size_t>(count_, positions - 1));
  }
  uint32_t Position(uint32_t i) const { return i <= count_ ? bytes_.u32(size_t{i} * 4) : 0; }
  KDWRange Range(uint32_t i) const { return {Position(i), i < count_ ? Position(i + 1) : 0}; }

  /// The first of the `Count() + 1` positions from index `first` on that lies above `value`, by binary
  /// search; `Count() + 1` if there is none.
  uint32_t UpperBound(uint32_t value, uint32_t first = 0) const;

 protected:
  /// Takes `bytes` as a table whose entries have `recordSize` data bytes; what does not divide is lost.
  /// kNothing, and an empty table, if there is no entry.
  Status AssignBytes(ByteView bytes, uint32_t recordSize) {
    return AssignBytes(bytes, recordSize, bytes.size());
  }
  /// The same for a table of `size` bytes of which only `bytes` are there: the rest reads as zero.
  Status AssignBytes(ByteView bytes, uint32_t recordSize, size_t size);
  /// Takes a table that says itself how many entries it has.
  void AssignCounted(ByteView bytes, uint32_t count);
  /// The data of entry i, cut or empty where the bytes end.
  ByteView RecordBytes(uint32_t i, uint32_t recordSize) const {
    if (i >= count_) return {};
    return bytes_.part((size_t{count_} + 1) * 4 + size_t{i} * recordSize, recordSize);
  }

 private:
  ByteView bytes_;
  uint32_t count_ = 0;
};

/// What `KDRPlcf::Item` returns: the entry's positions and a copy of its record.
template <class T>
struct _TypeTraits {
  struct ItemType {
    KDWRange range;
    T data;
  };
};
template <>
struct _TypeTraits<void> {
  struct ItemType {
    KDWRange range;
  };
};

/// The position table `id` of the table stream with records of type T (void: none). An `id` of 0 marks a
/// table that another object reads.
template <class T, uint32_t id>
class KDRPlcf : public KDRPlcfBase {
 public:
  static constexpr uint32_t kRecordSize = [] {
    if constexpr (std::is_void_v<T>) {
      return 0u;
    } else {
      return static_cast<uint32_t>(sizeof(T));
    }
  }();

  /// Reads the table from the document. kNothing if it is absent or empty.
  Status Read(const KDRDocument& document);
  Status ReadRecord(const KDRTableRecord& record);
  Status ReadRecord(ByteView bytes) { return AssignBytes(bytes, kRecordSize); }

  typename _TypeTraits<T>::ItemType Item(uint32_t i) const {
    if constexpr (std::is_void_v<T>) {
      return {Range(i)};
    } else {
      return {Range(i), RecordBytes(i, kRecordSize).template copyOf<T>(0)};
    }
  }
  /// The record of entry i in place, null when it lies outside the table.
  const T* Data(uint32_t i) const requires(!std::is_void_v<T>) {
    const ByteView bytes = RecordBytes(i, kRecordSize);
    return bytes.size() == kRecordSize ? reinterpret_cast<const T*>(bytes.data()) : nullptr;
  }
};

#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "base/byte_source.h"
#include "base/status.h"
#include "base/stdio_archive.h"

struct IStream;

/// An unsigned 64-bit value as two words.
struct KULargeInt {
  uint32_t low = 0;
  uint32_t high = 0;

  KULargeInt() = default;
  /// The high word is 0, whatever the width of `unsigned long`.
  explicit KULargeInt(unsigned long value) : low(static_cast<uint32_t>(value)) {}
};

/// The low word.
inline unsigned int ToUInt(const KULargeInt& value) {
  return value.low;
}

/// Count of 16-bit units before the first zero, which must be there: nothing else bounds it. Exists since
/// wchar_t is wider than the units of text in files.
size_t wcslen_2bit(const unsigned short* text);

/// A stream as a source of bytes; null when closed. Holds a reference on it.
class IStreamAdapter {
 public:
  IStreamAdapter() = default;
  explicit IStreamAdapter(IStream* stream) { attach(stream); }
  IStreamAdapter(const IStreamAdapter&) = delete;
  IStreamAdapter& operator=(const IStreamAdapter&) = delete;
  ~IStreamAdapter() { close(); }

  /// Releases the stream held so far and takes a reference on `stream`, which may be null.
  void attach(IStream* stream);
  void close();
  bool good() const { return stream_ != nullptr; }
  /// Position in bytes, 0 without a stream.
  unsigned int tell() const;
  /// Length in bytes that the file claims for the stream, 0 without one.
  unsigned int size() const;
  /// Bytes that can be read from here on at most; bounds allocations, as `size` cannot.
  unsigned int bytesLeft() const;
  /// Bytes of the whole stream, as far as there are, even if the file claims less.
  unsigned int bytesHeld() const;
  /// Count of bytes that could be read.
  unsigned int get(char* buffer, unsigned int n);
  /// The same, not bounded by the length that the file claims.
  unsigned int getHeld(char* buffer, unsigned int n);
  /// The next `n` bytes where they stand in memory in one piece, behind which the position then is; null, and
  /// the position stays, where they have to be read.
  const uint8_t* view(unsigned int n);
  /// Moves to the low 32 bits of `offset` from the start (0), the position (1) or backward from the end (2).
  /// A refused move throws its status as an int; so does one without a stream.
  void seek(const unsigned long& offset, int whence);
  [[noreturn]] static void ThrowIOError(int code);

 private:
  IStream* stream_ = nullptr;
};

/// Read operations over an adapter. The sized reads give kReadFault when fewer bytes arrived than were asked
/// for; those that did arrive are stored. Values are stored as they stand in the file, little-endian.
template <class Adapter>
class DsReadArchiveDelegate : public DsArchive {
 public:
  bool good() const { return adapter_.good(); }
  /// In bytes.
  auto size() const { return adapter_.size(); }
  auto tell() const { return adapter_.tell(); }
  auto seek(const int64_t& offset, int whence) { return adapter_.seek(offset, whence); }
  /// Count of bytes that could be read.
  unsigned int get(void* buffer, unsigned int n) { return adapter_.get(static_cast<char*>(buffer), n); }
  unsigned int read(void* buffer, unsigned int n) { return get(buffer, n); }
  void close() { adapter_.close(); }

  Status get16u(unsigned short& value) { return getAll(&value, sizeof(value)); }
  /// `count` 16-bit values in one read.
  Status get16(unsigned short* values, unsigned int count) { return getMany(values, count); }
  /// `count` 32-bit values in one read.
  Status get32(unsigned int* values, unsigned int count) { return getMany(values, count); }

  /// One record as it lies in the file.
  template <class T>
  Status get_struct(T& record) {
    static_assert(std::is_trivially_copyable_v<T>);
    return getAll(&record, sizeof(T));
  }
  /// `count` records one at a time; the result is that of the last read.
  template <class T>
  Status get_struct(T* records, unsigned short count) {
    Status status = Status::kOk;
    for (unsigned int i = 0; i < count; ++i) status = get_struct(records[i]);
    return status;
  }

 protected:
  Adapter adapter_;

 private:
  Status getAll(void* buffer, unsigned int n) {
    return get(buffer, n) == n ? Status::kOk : Status::kReadFault;
  }

  template <class T>
  Status getMany(T* values, unsigned int count) {
    if (count > UINT32_MAX / sizeof(T)) return Status::kReadFault;
    return getAll(values, count * static_cast<unsigned int>(sizeof(T)));
  }
};

/// Reads the file named by a path. The mode is "rb+": a file without write permission does not open, which
/// `good` tells, though nothing is ever written; nor does what is no regular file.
class DsReadArchive : public DsReadArchiveDelegate<StdioAdapter> {
 public:
  explicit DsReadArchive(const char* path);
};

/// What the pages of a compound file are read from: a source of bytes, which is not owned.
class SourceArchive : public DsArchive {
 public:
  explicit SourceArchive(ByteSource& source) : source_(source) {}

  /// In bytes.
  int64_t size() const { return static_cast<int64_t>(source_.Size()); }
  /// Count of bytes that could be read.
  unsigned int getAt(uint64_t position, void* buffer, unsigned int n) {
    return static_cast<unsigned int>(source_.ReadAt(position, buffer, n));
  }
  /// All of them, where they stand in memory; else null.
  const uint8_t* bytes() const { return source_.Bytes(); }

 private:
  ByteSource& source_;
};

/// A file that an archive has open, as a source.
class ArchiveSource final : public ByteSource {
 public:
  explicit ArchiveSource(const char* path) : archive_(path) {}

  bool good() const { return archive_.good(); }
  uint64_t Size() override { return static_cast<uint64_t>(archive_.size()); }
  size_t ReadAt(uint64_t offset, void* buffer, size_t n) override;

 private:
  DsReadArchive archive_;
};

/// Reads a stream, on which it holds a reference. Copies nothing into memory, its name notwithstanding.
class DsMemReadArchive : public DsReadArchiveDelegate<IStreamAdapter> {
 public:
  DsMemReadArchive() = default;
  explicit DsMemReadArchive(IStream* stream) { attach(stream); }
  /// Replaces the stream; null is accepted.
  void attach(IStream* stream) { adapter_.attach(stream); }
  /// Bytes that can be read from the position on at most, whatever length the file claims for the stream: no
  /// larger buffer is needed for a read from here. Cheap.
  unsigned int bytesLeft() const { return adapter_.bytesLeft(); }
  /// Bytes of the whole stream, as far as there are, even if the file claims less: what bounds the work on
  /// it.
  unsigned int bytesHeld() const { return adapter_.bytesHeld(); }
  /// As the adapter's.
  const uint8_t* view(unsigned int n) { return adapter_.view(n); }
  /// As `get`, also behind the length that the file claims.
  unsigned int getHeld(void* buffer, unsigned int n) {
    return adapter_.getHeld(static_cast<char*>(buffer), n);
  }
};

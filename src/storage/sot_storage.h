#pragma once

#include <map>
#include <memory>
#include <string>

#include "storage/sot_archive.h"

/// A stream as the adaptors use it. Positions and sizes are in bytes.
class IStreamBase {
 public:
  virtual ~IStreamBase() = default;
  virtual unsigned int size() const = 0;
  virtual unsigned int tell() const = 0;
  /// Count of bytes read.
  virtual unsigned int read(char* buffer, unsigned int n) const = 0;
  /// As SotRoTrunk::seek.
  virtual bool seek(long offset, int whence) = 0;
  /// How many bytes a `read` from here could bring.
  virtual unsigned int bytesLeft() const = 0;
  /// As `read`, whatever the size.
  virtual unsigned int readHeld(char* buffer, unsigned int n) const = 0;
  /// As SotRoTrunk::bytesHeld.
  virtual unsigned int bytesHeld() const = 0;
  /// As SotRoTrunk::view, null also for more than `bytesLeft`.
  virtual const uint8_t* view(unsigned int n) const = 0;
};

/// A stream of a compound file: an entry and the chain of its bytes. The size is the entry's, which may be
/// more or less than the chain has; moves are bounded by the chain. Lives in the archive's allocator, as do
/// the two.
class SotRoStream : public IStreamBase {
 public:
  SotRoStream(const SotEntry& entry, SotRoTrunk& trunk) : entry_(entry), trunk_(trunk) {}

  unsigned int size() const override { return entry_.size; }
  unsigned int tell() const override { return trunk_.tell(); }
  unsigned int read(char* buffer, unsigned int n) const override;
  bool seek(long offset, int whence) override {
    return trunk_.seek(static_cast<unsigned long>(offset), whence);
  }
  unsigned int bytesLeft() const override;
  unsigned int readHeld(char* buffer, unsigned int n) const override { return trunk_.read(buffer, n); }
  unsigned int bytesHeld() const override { return trunk_.bytesHeld(); }
  const uint8_t* view(unsigned int n) const override { return n <= bytesLeft() ? trunk_.view(n) : nullptr; }

 private:
  /// From a position past the size on, the difference wraps: there the chain alone bounds a read.
  unsigned int claimedLeft() const { return size() - tell(); }

  const SotEntry& entry_;
  SotRoTrunk& trunk_;
};

/// A storage: child storages and streams by name. Names are matched exactly, each 16-bit unit widened to a
/// wchar_t. Children live in the archive's allocator, and so as long as the root.
class SotRoStorage {
 public:
  virtual ~SotRoStorage() = default;

  /// The root storage of the compound file at `path`; null for any failure. Throws an int for a loop in a
  /// chain.
  static std::unique_ptr<SotRoStorage> open(const char* path);
  /// The same of a file's bytes. `source` is not owned. `budget` (may be null) is what the pages and the
  /// directory take memory from.
  static std::unique_ptr<SotRoStorage> open(ByteSource& source, MemoryBudget* budget);

  /// The child of that name, or null.
  SotRoStorage* openStorage(const wchar_t* name) const;
  SotRoStream* openStream(const wchar_t* name) const;
  /// The stream of that name, or else one whose name differs in the case of its ASCII letters alone.
  SotRoStream* openStreamOfAnyCase(const wchar_t* name) const;

 private:
  template <class Archive>
  friend class SotRoRootStorageImpl;

  /// A later child takes the place of an earlier one of the same name.
  void add(std::wstring name, SotRoStorage* storage) { storages_[std::move(name)] = storage; }
  void add(std::wstring name, SotRoStream* stream) { streams_[std::move(name)] = stream; }

  std::map<std::wstring, SotRoStorage*, std::less<>> storages_;
  std::map<std::wstring, SotRoStream*, std::less<>> streams_;
};

/// The root storage, which owns the open archive and all that is read from it.
template <class Archive>
class SotRoRootStorageImpl : public SotRoStorage {
 public:
  /// Opens the archive and walks its directory. `source` is not owned.
  bool open(Archive& source);
  /// Where memory comes from, from now on; null for the heap without a bound.
  void SetBudget(MemoryBudget* budget) { archive_.SetBudget(budget); }

 private:
  void walkDirectory();
  SotRoStorage* loadStorage(const SotEntry& entry, SotRoStorage& parent);
  void loadStream(const SotEntry& entry, SotRoStorage& parent);

  SotRoArchive<Archive> archive_;
};

/// The root storage of a source, which is not owned.
class SotRoSourceRootStorageImpl : public SotRoRootStorageImpl<SourceArchive> {
 public:
  SotRoSourceRootStorageImpl(ByteSource& source, MemoryBudget* budget) : source_(source) {
    SetBudget(budget);
  }

  bool open() { return SotRoRootStorageImpl::open(source_); }

 private:
  SourceArchive source_;
};

/// The root storage of a file, which it keeps open.
class SotRoFileRootStorageImpl : public SotRoRootStorageImpl<SourceArchive> {
 public:
  bool open(const char* path);

 private:
  std::unique_ptr<ArchiveSource> file_;
  std::unique_ptr<SourceArchive> archive_;
};

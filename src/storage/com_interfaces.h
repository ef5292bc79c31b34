#pragma once

#include <cstddef>
#include <cstdint>

#include "base/status.h"

/// COM-shaped interfaces between the Word reader and the storage below it, and the plain records that they
/// pass. Objects are reference counted, by plain counters: one thread only. Read-only implementations answer
/// kNotImplemented to whatever would change the file.

/// A signed 64-bit value as two words.
struct _LARGE_INTEGER {
  uint32_t LowPart;
  int32_t HighPart;
};

/// An unsigned 64-bit value as two words.
struct _ULARGE_INTEGER {
  uint32_t LowPart;
  uint32_t HighPart;
};

struct _GUID {
  uint32_t Data1;
  uint16_t Data2;
  uint16_t Data3;
  uint8_t Data4[8];
};
static_assert(sizeof(_GUID) == 16);

/// What `Stat` tells; only the size in bytes is ever filled in.
struct tagSTATSTG {
  uint8_t unused0[8];
  _ULARGE_INTEGER cbSize;  // 8
};
static_assert(offsetof(tagSTATSTG, cbSize) == 8);

/// Origins of `IStream::Seek`.
constexpr unsigned int STREAM_SEEK_SET = 0;  ///< forward from the start
constexpr unsigned int STREAM_SEEK_CUR = 1;  ///< from the current position
constexpr unsigned int STREAM_SEEK_END = 2;  ///< backward from the end

/// Flag of `Stat`: no name wanted.
constexpr unsigned int STATFLAG_NONAME = 1;

struct _FILETIME;
struct IEnumSTATSTG;

struct IUnknown {
  virtual Status QueryInterface(const _GUID& id, void** object) = 0;
  /// Both return the new count; the object destroys itself when it reaches 0.
  virtual unsigned long AddRef() = 0;
  virtual unsigned long Release() = 0;

 protected:
  ~IUnknown() = default;
};

struct ISequentialStream : IUnknown {
  /// Reads up to `size` bytes; `*read` (if given) receives the count. A short read is no error.
  virtual Status Read(void* buffer, unsigned long size, unsigned long* read) = 0;
  virtual Status Write(const void* data, unsigned long size, unsigned long* written) = 0;

 protected:
  ~ISequentialStream() = default;
};

struct IStream : ISequentialStream {
  /// Moves the position by the low 32 bits of `move` from one of the STREAM_SEEK_ origins. `*position` (if
  /// given) receives the position that holds afterwards, in success and failure alike.
  virtual Status Seek(_LARGE_INTEGER move, unsigned int origin, _ULARGE_INTEGER* position) = 0;
  virtual Status SetSize(_ULARGE_INTEGER size) = 0;
  virtual Status CopyTo(IStream* target, _ULARGE_INTEGER size, _ULARGE_INTEGER* read,
                        _ULARGE_INTEGER* written) = 0;
  virtual Status Commit(unsigned int flags) = 0;
  virtual Status Revert() = 0;
  virtual Status LockRegion(_ULARGE_INTEGER offset, _ULARGE_INTEGER size, unsigned int type) = 0;
  virtual Status UnlockRegion(_ULARGE_INTEGER offset, _ULARGE_INTEGER size, unsigned int type) = 0;
  virtual Status Stat(tagSTATSTG* stat, unsigned int flags) = 0;
  virtual Status Clone(IStream** copy) = 0;

  /// Not of the COM slots: how many bytes a `Read` from here could bring at most. Unlike the size that `Stat`
  /// tells, which is what the file claims, it counts only bytes that are there.
  virtual unsigned int BytesLeft() const = 0;
  /// Nor these, for which the length of the chain counts and not the size, which may be less in a damaged
  /// file: reads up to `size` bytes; counts those of the whole stream.
  virtual unsigned int ReadHeld(void* buffer, unsigned int size) = 0;
  virtual unsigned int BytesHeld() const = 0;
  /// Nor this: the next `size` bytes where they stand in memory in one piece, behind which the position then
  /// is; null, and the position stays, where they have to be read.
  virtual const uint8_t* View(unsigned int /*size*/) { return nullptr; }

 protected:
  ~IStream() = default;
};

struct IStorage : IUnknown {
  virtual Status CreateStream(const wchar_t* name, unsigned int mode, unsigned int reserved1,
                              unsigned int reserved2, IStream** stream) = 0;
  /// kInvalidArgument for a null pointer, kStreamNotFound if there is none of exactly that name. The caller
  /// releases `*stream`, before the storage.
  virtual Status OpenStream(const wchar_t* name, void* reserved1, unsigned int mode, unsigned int reserved2,
                            IStream** stream) = 0;
  virtual Status CreateStorage(const wchar_t* name, unsigned int mode, unsigned int reserved1,
                               unsigned int reserved2, IStorage** storage) = 0;
  /// kStreamNotFound if there is none of exactly that name. The caller releases `*storage`, before its
  /// parent.
  virtual Status OpenStorage(const wchar_t* name, IStorage* priority, unsigned int mode, wchar_t** exclude,
                             unsigned int reserved, IStorage** storage) = 0;
  virtual Status CopyTo(unsigned int excludedCount, const _GUID* excludedIds, wchar_t** excludedNames,
                        IStorage* target) = 0;
  virtual Status MoveElementTo(const wchar_t* name, IStorage* target, const wchar_t* newName,
                               unsigned int flags) = 0;
  virtual Status Commit(unsigned int flags) = 0;
  virtual Status Revert() = 0;
  virtual Status EnumElements(unsigned int reserved1, void* reserved2, unsigned int reserved3,
                              IEnumSTATSTG** elements) = 0;
  virtual Status DestroyElement(const wchar_t* name) = 0;
  virtual Status RenameElement(const wchar_t* name, const wchar_t* newName) = 0;
  virtual Status SetElementTimes(const wchar_t* name, const _FILETIME* created, const _FILETIME* accessed,
                                 const _FILETIME* modified) = 0;
  virtual Status SetClass(const _GUID& id) = 0;
  virtual Status SetStateBits(unsigned int bits, unsigned int mask) = 0;
  virtual Status Stat(tagSTATSTG* stat, unsigned int flags) = 0;

  /// Not of the COM slots: as `OpenStream`, but the case of letters in the name does not count.
  virtual Status OpenStreamOfAnyCase(const wchar_t* name, IStream** stream) {
    return OpenStream(name, nullptr, 0, 0, stream);
  }

 protected:
  ~IStorage() = default;
};

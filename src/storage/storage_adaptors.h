#pragma once

#include <memory>

#include "storage/com_interfaces.h"

class IStreamBase;
class SotRoStorage;

/// A stream of a compound file behind the stream interface, read-only. Its reference count begins with 1. The
/// stream is not owned and must outlive it; adaptors over one stream share its position.
class KROStreamAdaptor final : public IStream {
 public:
  explicit KROStreamAdaptor(IStreamBase* stream) : stream_(stream) {}

  Status QueryInterface(const _GUID& id, void** object) override;
  unsigned long AddRef() override;
  unsigned long Release() override;
  Status Read(void* buffer, unsigned long size, unsigned long* read) override;
  Status Write(const void* data, unsigned long size, unsigned long* written) override;
  Status Seek(_LARGE_INTEGER move, unsigned int origin, _ULARGE_INTEGER* position) override;
  Status SetSize(_ULARGE_INTEGER size) override;
  Status CopyTo(IStream* target, _ULARGE_INTEGER size, _ULARGE_INTEGER* read,
                _ULARGE_INTEGER* written) override;
  Status Commit(unsigned int flags) override;
  /// Moves to the start; there is nothing to undo.
  Status Revert() override;
  Status LockRegion(_ULARGE_INTEGER offset, _ULARGE_INTEGER size, unsigned int type) override;
  Status UnlockRegion(_ULARGE_INTEGER offset, _ULARGE_INTEGER size, unsigned int type) override;
  Status Stat(tagSTATSTG* stat, unsigned int flags) override;
  Status Clone(IStream** copy) override;
  unsigned int BytesLeft() const override;
  unsigned int ReadHeld(void* buffer, unsigned int size) override;
  unsigned int BytesHeld() const override;
  const uint8_t* View(unsigned int size) override;

 private:
  ~KROStreamAdaptor() = default;

  unsigned long references_ = 1;
  IStreamBase* stream_;
};

/// A storage of a compound file behind the storage interface, read-only. Its reference count begins with 1.
class KROStorageAdaptor final : public IStorage {
 public:
  /// Takes the root storage, with which all that was opened from it goes.
  explicit KROStorageAdaptor(std::unique_ptr<SotRoStorage> root);
  /// Over a child storage, which its root owns and which must outlive it.
  explicit KROStorageAdaptor(SotRoStorage* storage);

  /// kOk, and nothing is stored.
  Status QueryInterface(const _GUID& id, void** object) override;
  unsigned long AddRef() override;
  unsigned long Release() override;
  Status CreateStream(const wchar_t* name, unsigned int mode, unsigned int reserved1, unsigned int reserved2,
                      IStream** stream) override;
  Status OpenStream(const wchar_t* name, void* reserved1, unsigned int mode, unsigned int reserved2,
                    IStream** stream) override;
  Status CreateStorage(const wchar_t* name, unsigned int mode, unsigned int reserved1, unsigned int reserved2,
                       IStorage** storage) override;
  Status OpenStorage(const wchar_t* name, IStorage* priority, unsigned int mode, wchar_t** exclude,
                     unsigned int reserved, IStorage** storage) override;
  Status CopyTo(unsigned int excludedCount, const _GUID* excludedIds, wchar_t** excludedNames,
                IStorage* target) override;
  Status MoveElementTo(const wchar_t* name, IStorage* target, const wchar_t* newName,
                       unsigned int flags) override;
  Status Commit(unsigned int flags) override;
  Status Revert() override;
  Status EnumElements(unsigned int reserved1, void* reserved2, unsigned int reserved3,
                      IEnumSTATSTG** elements) override;
  Status DestroyElement(const wchar_t* name) override;
  Status RenameElement(const wchar_t* name, const wchar_t* newName) override;
  Status SetElementTimes(const wchar_t* name, const _FILETIME* created, const _FILETIME* accessed,
                         const _FILETIME* modified) override;
  Status SetClass(const _GUID& id) override;
  Status SetStateBits(unsigned int bits, unsigned int mask) override;
  Status Stat(tagSTATSTG* stat, unsigned int flags) override;
  Status OpenStreamOfAnyCase(const wchar_t* name, IStream** stream) override;

 private:
  ~KROStorageAdaptor();

  unsigned long references_ = 1;
  std::unique_ptr<SotRoStorage> owned_;
  SotRoStorage* storage_;
};

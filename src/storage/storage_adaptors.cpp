#include "storage/storage_adaptors.h"

#include <algorithm>
#include <climits>
#include <utility>

#include "storage/compound_file.h"
#include "storage/sot_storage.h"

namespace {

Status adapt(std::unique_ptr<SotRoStorage> root, IStorage** out) {
  if (!root) return Status::kCorruptCompoundFile;
  *out = new KROStorageAdaptor(std::move(root));
  return Status::kOk;
}

}  // namespace

Status FreeOleOpenStorage(const char* path, IStorage** out) {
  if (!path || !out) return Status::kInvalidArgument;
  *out = nullptr;
  return adapt(SotRoStorage::open(path), out);
}

Status OpenCompoundFile(ByteSource& source, MemoryBudget* budget, IStorage** out) {
  if (!out) return Status::kInvalidArgument;
  *out = nullptr;
  return adapt(SotRoStorage::open(source, budget), out);
}

// --- KROStreamAdaptor ---

unsigned long KROStreamAdaptor::AddRef() {
  return ++references_;
}

unsigned long KROStreamAdaptor::Release() {
  const unsigned long left = --references_;
  if (left == 0) delete this;
  return left;
}

Status KROStreamAdaptor::Read(void* buffer, unsigned long size, unsigned long* read) {
  if (read) *read = 0;
  if (!stream_ || !buffer) return Status::kInvalidArgument;
  const auto wanted = static_cast<unsigned int>(std::min<unsigned long>(size, UINT_MAX));
  const unsigned int count = stream_->read(static_cast<char*>(buffer), wanted);
  if (read) *read = count;
  return Status::kOk;
}

Status KROStreamAdaptor::Seek(_LARGE_INTEGER move, unsigned int origin, _ULARGE_INTEGER* position) {
  if (!stream_) return Status::kFailure;
  const bool moved = stream_->seek(static_cast<long>(move.LowPart), static_cast<int>(origin));
  if (position) {
    // Extended with its sign: a position of 2 GiB and more comes out with all high bits set.
    const unsigned int low = stream_->tell();
    *position = {low, low > INT_MAX ? UINT32_MAX : 0};
  }
  return moved ? Status::kOk : Status::kFailure;
}

Status KROStreamAdaptor::Revert() {
  if (stream_) stream_->seek(0, STREAM_SEEK_SET);
  return Status::kOk;
}

Status KROStreamAdaptor::Stat(tagSTATSTG* stat, unsigned int) {
  if (!stat || !stream_) return Status::kInvalidArgument;
  stat->cbSize = {stream_->size(), 0};
  return Status::kOk;
}

unsigned int KROStreamAdaptor::BytesLeft() const {
  return stream_ ? stream_->bytesLeft() : 0;
}

unsigned int KROStreamAdaptor::ReadHeld(void* buffer, unsigned int size) {
  return stream_ && buffer ? stream_->readHeld(static_cast<char*>(buffer), size) : 0;
}

unsigned int KROStreamAdaptor::BytesHeld() const {
  return stream_ ? stream_->bytesHeld() : 0;
}

const uint8_t* KROStreamAdaptor::View(unsigned int size) {
  return stream_ ? stream_->view(size) : nullptr;
}

Status KROStreamAdaptor::QueryInterface(const _GUID&, void**) {
  return Status::kNotImplemented;
}

Status KROStreamAdaptor::Write(const void*, unsigned long, unsigned long*) {
  return Status::kNotImplemented;
}

Status KROStreamAdaptor::SetSize(_ULARGE_INTEGER) {
  return Status::kNotImplemented;
}

Status KROStreamAdaptor::CopyTo(IStream*, _ULARGE_INTEGER, _ULARGE_INTEGER*, _ULARGE_INTEGER*) {
  return Status::kNotImplemented;
}

Status KROStreamAdaptor::Commit(unsigned int) {
  return Status::kNotImplemented;
}

Status KROStreamAdaptor::LockRegion(_ULARGE_INTEGER, _ULARGE_INTEGER, unsigned int) {
  return Status::kNotImplemented;
}

Status KROStreamAdaptor::UnlockRegion(_ULARGE_INTEGER, _ULARGE_INTEGER, unsigned int) {
  return Status::kNotImplemented;
}

Status KROStreamAdaptor::Clone(IStream**) {
  return Status::kNotImplemented;
}

// --- KROStorageAdaptor ---

KROStorageAdaptor::KROStorageAdaptor(std::unique_ptr<SotRoStorage> root)
    : owned_(std::move(root)), storage_(owned_.get()) {}

KROStorageAdaptor::KROStorageAdaptor(SotRoStorage* storage) : storage_(storage) {}

KROStorageAdaptor::~KROStorageAdaptor() = default;

unsigned long KROStorageAdaptor::AddRef() {
  return ++references_;
}

unsigned long KROStorageAdaptor::Release() {
  const unsigned long left = --references_;
  if (left == 0) delete this;
  return left;
}

Status KROStorageAdaptor::OpenStream(const wchar_t* name, void*, unsigned int, unsigned int,
                                     IStream** stream) {
  if (!stream || !name || !storage_) return Status::kInvalidArgument;
  *stream = nullptr;
  SotRoStream* found = storage_->openStream(name);
  if (!found) return Status::kStreamNotFound;
  found->seek(0, STREAM_SEEK_SET);  // all who open it share its position
  *stream = new KROStreamAdaptor(found);
  return Status::kOk;
}

Status KROStorageAdaptor::OpenStreamOfAnyCase(const wchar_t* name, IStream** stream) {
  if (!stream || !name || !storage_) return Status::kInvalidArgument;
  *stream = nullptr;
  SotRoStream* const found = storage_->openStreamOfAnyCase(name);
  if (!found) return Status::kStreamNotFound;
  found->seek(0, STREAM_SEEK_SET);
  *stream = new KROStreamAdaptor(found);
  return Status::kOk;
}

Status KROStorageAdaptor::OpenStorage(const wchar_t* name, IStorage*, unsigned int, wchar_t**, unsigned int,
                                      IStorage** storage) {
  if (!storage) return Status::kInvalidArgument;
  *storage = nullptr;
  if (!storage_) return Status::kFailure;
  SotRoStorage* found = name ? storage_->openStorage(name) : nullptr;
  if (!found) return Status::kStreamNotFound;
  *storage = new KROStorageAdaptor(found);
  return Status::kOk;
}

Status KROStorageAdaptor::QueryInterface(const _GUID&, void**) {
  return Status::kOk;
}

Status KROStorageAdaptor::CreateStream(const wchar_t*, unsigned int, unsigned int, unsigned int, IStream**) {
  return Status::kNotImplemented;
}

Status KROStorageAdaptor::CreateStorage(const wchar_t*, unsigned int, unsigned int, unsigned int,
                                        IStorage**) {
  return Status::kNotImplemented;
}

Status KROStorageAdaptor::CopyTo(unsigned int, const _GUID*, wchar_t**, IStorage*) {
  return Status::kNotImplemented;
}

Status KROStorageAdaptor::MoveElementTo(const wchar_t*, IStorage*, const wchar_t*, unsigned int) {
  return Status::kNotImplemented;
}

Status KROStorageAdaptor::Commit(unsigned int) {
  return Status::kNotImplemented;
}

Status KROStorageAdaptor::Revert() {
  return Status::kNotImplemented;
}

Status KROStorageAdaptor::EnumElements(unsigned int, void*, unsigned int, IEnumSTATSTG**) {
  return Status::kNotImplemented;
}

Status KROStorageAdaptor::DestroyElement(const wchar_t*) {
  return Status::kNotImplemented;
}

Status KROStorageAdaptor::RenameElement(const wchar_t*, const wchar_t*) {
  return Status::kNotImplemented;
}

Status KROStorageAdaptor::SetElementTimes(const wchar_t*, const _FILETIME*, const _FILETIME*,
                                          const _FILETIME*) {
  return Status::kNotImplemented;
}

Status KROStorageAdaptor::SetClass(const _GUID&) {
  return Status::kNotImplemented;
}

Status KROStorageAdaptor::SetStateBits(unsigned int, unsigned int) {
  return Status::kNotImplemented;
}

Status KROStorageAdaptor::Stat(tagSTATSTG*, unsigned int) {
  return Status::kNotImplemented;
}

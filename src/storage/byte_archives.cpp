#include "storage/byte_archives.h"

#include <sys/stat.h>

#include <algorithm>
#include <climits>

#include "storage/com_interfaces.h"

size_t wcslen_2bit(const unsigned short* text) {
  size_t length = 0;
  while (text[length]) ++length;
  return length;
}

void IStreamAdapter::attach(IStream* stream) {
  // The reference comes first, so that attaching the stream that is held keeps it alive.
  if (stream) stream->AddRef();
  close();
  stream_ = stream;
}

void IStreamAdapter::close() {
  if (stream_) stream_->Release();
  stream_ = nullptr;
}

unsigned int IStreamAdapter::tell() const {
  _ULARGE_INTEGER position{};
  if (stream_) stream_->Seek({}, STREAM_SEEK_CUR, &position);
  return position.LowPart;
}

unsigned int IStreamAdapter::size() const {
  tagSTATSTG stat{};
  if (stream_) stream_->Stat(&stat, STATFLAG_NONAME);
  return stat.cbSize.LowPart;
}

unsigned int IStreamAdapter::bytesLeft() const {
  return stream_ ? stream_->BytesLeft() : 0;
}

unsigned int IStreamAdapter::bytesHeld() const {
  return stream_ ? stream_->BytesHeld() : 0;
}

unsigned int IStreamAdapter::get(char* buffer, unsigned int n) {
  unsigned long count = 0;
  if (stream_) stream_->Read(buffer, n, &count);
  return static_cast<unsigned int>(count);
}

unsigned int IStreamAdapter::getHeld(char* buffer, unsigned int n) {
  return stream_ ? stream_->ReadHeld(buffer, n) : 0;
}

const uint8_t* IStreamAdapter::view(unsigned int n) {
  return stream_ ? stream_->View(n) : nullptr;
}

void IStreamAdapter::seek(const unsigned long& offset, int whence) {
  const KULargeInt move(offset);
  const Status status = stream_ ? stream_->Seek({ToUInt(move), 0}, static_cast<unsigned int>(whence), nullptr)
                                : Status::kFailure;
  if (failed(status)) ThrowIOError(static_cast<int>(status));
}

void IStreamAdapter::ThrowIOError(int code) {
  throw code;
}

DsReadArchive::DsReadArchive(const char* path) {
  // A pipe or a device could hold the conversion up for ever, or take being opened for an order.
  struct stat info;
  if (path && stat(path, &info) == 0 && S_ISREG(info.st_mode)) adapter_.attach(std::fopen(path, "rb+"));
}

size_t ArchiveSource::ReadAt(uint64_t offset, void* buffer, size_t n) {
  if (archive_.seek(static_cast<int64_t>(offset), SEEK_SET) != 0) return 0;
  return archive_.get(buffer, static_cast<unsigned int>(std::min<size_t>(n, UINT_MAX)));
}

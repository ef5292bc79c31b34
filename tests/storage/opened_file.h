#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "storage/com_interfaces.h"
#include "storage/compound_file.h"
#include "support/compound_file_writer.h"
#include "support/temp_folder.h"

/// Helpers of the storage tests: open what a writer wrote, and read streams whole.
namespace storage_test {

/// Owns one reference.
template <class Interface>
class Reference {
 public:
  Reference() = default;
  Reference(Reference&& other) noexcept : object_(other.object_) { other.object_ = nullptr; }
  Reference& operator=(Reference&&) = delete;
  ~Reference() {
    if (object_) object_->Release();
  }
  /// Where an open function is to put the object.
  Interface** out() { return &object_; }
  Interface* get() const { return object_; }
  Interface* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  Interface* object_ = nullptr;
};

using Stream = Reference<IStream>;
using Storage = Reference<IStorage>;

/// `size` bytes none of which repeats at a page's distance.
inline support::Bytes pattern(size_t size, uint32_t seed = 1) {
  support::Bytes bytes(size);
  uint32_t state = seed;
  for (uint8_t& byte : bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<uint8_t>(state >> 24);
  }
  return bytes;
}

inline Stream openStream(const Storage& storage, const wchar_t* name) {
  Stream stream;
  storage->OpenStream(name, nullptr, 16, 0, stream.out());
  return stream;
}

inline Storage openStorage(const Storage& parent, const wchar_t* name) {
  Storage storage;
  parent->OpenStorage(name, nullptr, 16, nullptr, 0, storage.out());
  return storage;
}

/// Up to `size` bytes from the stream's position on.
inline support::Bytes read(const Stream& stream, size_t size) {
  support::Bytes bytes(size, 0xCD);
  unsigned long count = 0;
  stream->Read(bytes.data(), size, &count);
  bytes.resize(count);
  return bytes;
}

inline uint32_t sizeOf(const Stream& stream) {
  tagSTATSTG stat{};
  stream->Stat(&stat, STATFLAG_NONAME);
  return stat.cbSize.LowPart;
}

inline Status seek(const Stream& stream, uint32_t move, unsigned int origin = STREAM_SEEK_SET) {
  return stream->Seek({move, 0}, origin, nullptr);
}

inline uint32_t tell(const Stream& stream) {
  _ULARGE_INTEGER position{};
  stream->Seek({0, 0}, STREAM_SEEK_CUR, &position);
  return position.LowPart;
}

/// A file in a folder of its own, opened. `root` is empty if that failed.
class OpenedFile {
 public:
  explicit OpenedFile(const support::Bytes& bytes) {
    status = FreeOleOpenStorage(folder_.write("file", bytes).c_str(), root.out());
  }
  explicit OpenedFile(const support::CompoundFile& file) : OpenedFile(file.bytes()) {}
  explicit OpenedFile(const support::CompoundFileWriter& writer) : OpenedFile(writer.bytes()) {}

  Stream stream(const wchar_t* name) const { return openStream(root, name); }
  /// The whole of a stream of the root, as far as it can be read; throws if there is none.
  support::Bytes content(const wchar_t* name) const {
    const Stream opened = stream(name);
    if (!opened) throw std::runtime_error("no such stream");
    return read(opened, opened->BytesLeft());
  }

 private:
  support::TempFolder folder_;

 public:
  Status status;
  Storage root;
};

}  // namespace storage_test

#pragma once

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "storage/com_interfaces.h"
#include "support/bytes.h"
#include "support/word_document_writer.h"
#include "wordreader/document.h"

/// A storage of streams in memory that counts what is done to it. Lives on the stack: its reference count
/// tells whether all references were given back.
class MemoryStorage final : public IStorage {
 public:
  struct Content {
    support::Bytes bytes;
    unsigned int reads = 0;  ///< calls of `Read` on streams of this name
    int openStreams = 0;
  };

  void add(const std::wstring& name, support::Bytes bytes) { contents_[name].bytes = std::move(bytes); }
  const Content& content(const std::wstring& name) const { return contents_.at(name); }
  unsigned long references() const { return references_; }
  int openStreams() const {
    int count = 0;
    for (const auto& [name, content] : contents_) count += content.openStreams;
    return count;
  }
  /// True if the last reference went while a stream was still open.
  bool outlivedByStream() const { return outlivedByStream_; }

  unsigned long AddRef() override { return ++references_; }
  unsigned long Release() override {
    outlivedByStream_ |= --references_ == 0 && openStreams() > 0;
    return references_;
  }
  Status OpenStream(const wchar_t* name, void*, unsigned int, unsigned int, IStream** stream) override;

  Status QueryInterface(const _GUID&, void**) override { return Status::kNotImplemented; }
  Status CreateStream(const wchar_t*, unsigned int, unsigned int, unsigned int, IStream**) override {
    return Status::kNotImplemented;
  }
  Status CreateStorage(const wchar_t*, unsigned int, unsigned int, unsigned int, IStorage**) override {
    return Status::kNotImplemented;
  }
  Status OpenStorage(const wchar_t*, IStorage*, unsigned int, wchar_t**, unsigned int, IStorage**) override {
    return Status::kNotImplemented;
  }
  Status CopyTo(unsigned int, const _GUID*, wchar_t**, IStorage*) override { return Status::kNotImplemented; }
  Status MoveElementTo(const wchar_t*, IStorage*, const wchar_t*, unsigned int) override {
    return Status::kNotImplemented;
  }
  Status Commit(unsigned int) override { return Status::kNotImplemented; }
  Status Revert() override { return Status::kNotImplemented; }
  Status EnumElements(unsigned int, void*, unsigned int, IEnumSTATSTG**) override {
    return Status::kNotImplemented;
  }
  Status DestroyElement(const wchar_t*) override { return Status::kNotImplemented; }
  Status RenameElement(const wchar_t*, const wchar_t*) override { return Status::kNotImplemented; }
  Status SetElementTimes(const wchar_t*, const _FILETIME*, const _FILETIME*, const _FILETIME*) override {
    return Status::kNotImplemented;
  }
  Status SetClass(const _GUID&) override { return Status::kNotImplemented; }
  Status SetStateBits(unsigned int, unsigned int) override { return Status::kNotImplemented; }
  Status Stat(tagSTATSTG*, unsigned int) override { return Status::kNotImplemented; }

 private:
  std::map<std::wstring, Content> contents_;
  unsigned long references_ = 0;
  bool outlivedByStream_ = false;
};

/// A stream over a content; as in a compound file, a seek to the end is refused.
class MemoryStream final : public IStream {
 public:
  explicit MemoryStream(MemoryStorage::Content& content) : content_(content) { ++content_.openStreams; }
  ~MemoryStream() { --content_.openStreams; }

  unsigned long AddRef() override { return ++references_; }
  unsigned long Release() override {
    const unsigned long left = --references_;
    if (left == 0) delete this;
    return left;
  }
  Status Read(void* buffer, unsigned long size, unsigned long* read) override {
    ++content_.reads;
    const size_t count = std::min<size_t>(size, BytesLeft());
    if (count > 0) std::memcpy(buffer, content_.bytes.data() + position_, count);
    position_ += count;
    if (read) *read = count;
    return Status::kOk;
  }
  Status Seek(_LARGE_INTEGER move, unsigned int origin, _ULARGE_INTEGER* position) override {
    const size_t target = origin == STREAM_SEEK_SET ? move.LowPart : position_ + move.LowPart;
    const bool moves = origin == STREAM_SEEK_SET || move.LowPart != 0;
    const bool refused = moves && target >= content_.bytes.size();
    if (!refused) position_ = target;
    if (position) *position = {static_cast<uint32_t>(position_), 0};
    return refused ? Status::kFailure : Status::kOk;
  }
  Status Stat(tagSTATSTG* stat, unsigned int) override {
    stat->cbSize = {static_cast<uint32_t>(content_.bytes.size()), 0};
    return Status::kOk;
  }
  unsigned int BytesLeft() const override {
    return static_cast<unsigned int>(content_.bytes.size() - position_);
  }
  unsigned int ReadHeld(void* buffer, unsigned int size) override {
    unsigned long read = 0;
    Read(buffer, size, &read);
    return static_cast<unsigned int>(read);
  }
  unsigned int BytesHeld() const override { return static_cast<unsigned int>(content_.bytes.size()); }

  Status QueryInterface(const _GUID&, void**) override { return Status::kNotImplemented; }
  Status Write(const void*, unsigned long, unsigned long*) override { return Status::kNotImplemented; }
  Status SetSize(_ULARGE_INTEGER) override { return Status::kNotImplemented; }
  Status CopyTo(IStream*, _ULARGE_INTEGER, _ULARGE_INTEGER*, _ULARGE_INTEGER*) override {
    return Status::kNotImplemented;
  }
  Status Commit(unsigned int) override { return Status::kNotImplemented; }
  Status Revert() override { return Status::kNotImplemented; }
  Status LockRegion(_ULARGE_INTEGER, _ULARGE_INTEGER, unsigned int) override {
    return Status::kNotImplemented;
  }
  Status UnlockRegion(_ULARGE_INTEGER, _ULARGE_INTEGER, unsigned int) override {
    return Status::kNotImplemented;
  }
  Status Clone(IStream**) override { return Status::kNotImplemented; }

 private:
  MemoryStorage::Content& content_;
  unsigned long references_ = 1;
  size_t position_ = 0;
};

inline Status MemoryStorage::OpenStream(const wchar_t* name, void*, unsigned int, unsigned int,
                                        IStream** stream) {
  const auto found = contents_.find(name);
  *stream = found == contents_.end() ? nullptr : new MemoryStream(found->second);
  return *stream ? Status::kOk : Status::kStreamNotFound;
}

/// A document opened from memory.
struct OpenedDocument {
  explicit OpenedDocument(const support::WordDocument& source, const wchar_t* tableName = L"1Table") {
    support::WordStreams streams = source.streams();
    storage.add(L"WordDocument", std::move(streams.wordDocument));
    storage.add(tableName, std::move(streams.table));
    if (!streams.data.empty()) storage.add(L"Data", std::move(streams.data));
    status = document.OpenDocument(&storage);
  }

  MemoryStorage storage;
  KDRDocument document;
  Status status = Status::kOk;
};

/// The text of a sub-document.
inline std::u16string textOf(const KDRDocument& document, mso_word::SUBDOC_TYPE type) {
  const KTextPool& pool = document.GetTextPool(type);
  std::u16string text;
  for (uint32_t i = 0; i < pool.size(); ++i) text += static_cast<char16_t>(pool[i]);
  return text;
}

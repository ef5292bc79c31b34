#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include "base/stdio_archive.h"
#include "base/utf8.h"

namespace pagerex {

/// One file of an output, as UTF-8, with a buffer of 64 KiB in front of it. Owns the file. What is written
/// while none is open is dropped; errors while writing are noted in the `files`.
class Utf8Output {
 public:
  /// `files` is not owned.
  explicit Utf8Output(OutputFiles& files);
  Utf8Output(const Utf8Output&) = delete;
  Utf8Output& operator=(const Utf8Output&) = delete;
  ~Utf8Output() { Close(); }

  /// False when the file cannot be opened. One that was open is closed first.
  bool Open(const char* name);
  void Close();

  void Put(char byte) {
    if (used_ == kBufferSize) WriteOut();
    buffer_[used_++] = byte;
  }
  void Put(std::string_view bytes) {
    if (bytes.size() > kBufferSize - used_) return PutSlowly(bytes);
    if (!bytes.empty()) std::memcpy(buffer_.get() + used_, bytes.data(), bytes.size());
    used_ += bytes.size();
  }
  void Put(std::u16string_view text, Utf8Filter filter = Utf8Filter::kControls) {
    if (text.size() > (kBufferSize - used_) / 3) return PutSlowly(text, filter);
    used_ += utf8FromUtf16(text.data(), text.size(), buffer_.get() + used_, filter);
  }

  /// Bytes that were put so far.
  uint64_t written() const { return writtenOut_ + used_; }

 private:
  static constexpr size_t kBufferSize = 0x10000;

  void WriteOut();
  void PutSlowly(std::string_view bytes);
  void PutSlowly(std::u16string_view text, Utf8Filter filter);

  DsWriteArchive file_;
  std::unique_ptr<char[]> buffer_;
  size_t used_ = 0;
  uint64_t writtenOut_ = 0;
};

}  // namespace pagerex

#include "base/utf8_output.h"

#include <algorithm>

namespace pagerex {

Utf8Output::Utf8Output(OutputFiles& files)
    : file_(files), buffer_(std::make_unique_for_overwrite<char[]>(kBufferSize)) {}

bool Utf8Output::Open(const char* name) {
  Close();
  return file_.open(name);
}

void Utf8Output::Close() {
  if (!file_.good()) return;
  WriteOut();
  file_.close();
}

void Utf8Output::WriteOut() {
  if (used_ > 0 && file_.good()) file_.put(buffer_.get(), static_cast<unsigned>(used_));
  writtenOut_ += used_;
  used_ = 0;
}

void Utf8Output::PutSlowly(std::string_view bytes) {
  while (!bytes.empty()) {
    if (used_ == kBufferSize) WriteOut();
    const size_t count = std::min(bytes.size(), kBufferSize - used_);
    std::memcpy(buffer_.get() + used_, bytes.data(), count);
    used_ += count;
    bytes.remove_prefix(count);
  }
}

void Utf8Output::PutSlowly(std::u16string_view text, Utf8Filter filter) {
  while (!text.empty()) {
    WriteOut();
    size_t count = std::min(text.size(), kBufferSize / 3);
    // The two halves of a character stay together.
    if (count < text.size() && (text[count - 1] & 0xFC00) == 0xD800) --count;
    used_ = utf8FromUtf16(text.data(), count, buffer_.get(), filter);
    text.remove_prefix(count);
  }
}

}  // namespace pagerex

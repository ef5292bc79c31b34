#include "convert/inputs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace pagerex {
namespace {

class MemoryInput final : public InputSource {
 public:
  MemoryInput(const void* data, size_t size) : memory_(data, size) {}

  uint64_t Size() override { return memory_.Size(); }
  size_t ReadAt(uint64_t offset, void* buffer, size_t n) override {
    return MayRead() ? memory_.ReadAt(offset, buffer, n) : 0;
  }
  const uint8_t* Bytes() const override { return memory_.Bytes(); }

 private:
  MemorySource memory_;
};

/// An input that costs something to ask: small reads are answered from a piece that is fetched at once.
class FetchedInput : public InputSource {
 public:
  uint64_t Size() override { return size_; }

  size_t ReadAt(uint64_t offset, void* buffer, size_t n) override {
    if (offset >= size_) return 0;
    n = static_cast<size_t>(std::min<uint64_t>(n, size_ - offset));
    if (n >= kPiece) return Get(offset, buffer, n);
    if (offset < start_ || offset + n > start_ + held_) Hold(offset);
    const size_t at = static_cast<size_t>(offset - start_);
    const size_t count = at < held_ ? std::min(n, held_ - at) : 0;
    if (count) std::memcpy(buffer, piece_.get() + at, count);
    return count;
  }

 protected:
  void SetSize(uint64_t size) { size_ = size; }
  /// Count of bytes read, at most `n`; negative, and errno set, for a failure.
  virtual int64_t Fetch(uint64_t offset, void* buffer, size_t n) = 0;

 private:
  static constexpr size_t kPiece = 1 << 16;

  void Hold(uint64_t offset) {
    if (!piece_) piece_ = std::make_unique_for_overwrite<uint8_t[]>(kPiece);
    held_ = 0;
    start_ = size_ <= kPiece ? 0 : offset;
    held_ = Get(start_, piece_.get(), static_cast<size_t>(std::min<uint64_t>(kPiece, size_ - start_)));
  }

  /// All of them, unless the input fails. It fails too where it ends before the size that it told: a file
  /// that is cut while it is read is not the document that it was.
  size_t Get(uint64_t offset, void* buffer, size_t n) {
    size_t done = 0;
    while (done < n && MayRead()) {
      const int64_t count = Fetch(offset + done, static_cast<uint8_t*>(buffer) + done, n - done);
      LookAtClock();
      if (count <= 0 || static_cast<uint64_t>(count) > n - done) {
        Fail(count < 0 ? errno : EIO);
        break;
      }
      done += static_cast<size_t>(count);
    }
    return done;
  }

  uint64_t size_ = 0;
  uint64_t start_ = 0;  ///< place of the piece
  size_t held_ = 0;     ///< bytes of it
  std::unique_ptr<uint8_t[]> piece_;
};

class PathInput final : public FetchedInput {
 public:
  PathInput() = default;
  ~PathInput() override {
    if (file_ >= 0) close(file_);
  }

  /// 0, or a value of errno. What is no regular file could hold the call up for ever, or take being opened
  /// for an order.
  int Open(const char* path) {
    struct stat info;
    if (stat(path, &info) != 0) return errno;
    if (S_ISDIR(info.st_mode)) return EISDIR;
    if (!S_ISREG(info.st_mode)) return ENODEV;
    file_ = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file_ < 0 || fstat(file_, &info) != 0) return errno;
    if (!S_ISREG(info.st_mode)) return ENODEV;
    device_ = info.st_dev;
    inode_ = info.st_ino;
    SetSize(static_cast<uint64_t>(info.st_size));
    return 0;
  }

  bool IsFile(dev_t device, ino_t inode) const override { return device == device_ && inode == inode_; }

 private:
  int64_t Fetch(uint64_t offset, void* buffer, size_t n) override {
    ssize_t count;
    do {
      count = pread(file_, buffer, n, static_cast<off_t>(offset));
    } while (count < 0 && errno == EINTR);
    return count;
  }

  int file_ = -1;
  dev_t device_ = 0;
  ino_t inode_ = 0;
};

/// A host's functions may throw, which ends the call.
class HostInput final : public FetchedInput {
 public:
  explicit HostInput(const pagerex_input& input) : input_(input) {}

  int Open() {
    const int64_t size = call([this] { return input_.byte_count(input_.user); });
    LookAtClock();
    if (size < 0) return errno;
    SetSize(static_cast<uint64_t>(size));
    return 0;
  }

 private:
  template <class Function>
  int64_t call(const Function& function) {
    errno = 0;
    int64_t result = -1;
    try {
      result = function();
    } catch (...) {
      Cancel();
    }
    if (errno == 0) errno = EIO;
    return result;
  }

  int64_t Fetch(uint64_t offset, void* buffer, size_t n) override {
    return call([&] { return input_.read_at(input_.user, offset, buffer, n); });
  }

  const pagerex_input input_;
};

}  // namespace

bool InputSource::IsFile(dev_t, ino_t) const {
  return false;
}

bool InputSource::MayRead() {
  return error_ == 0 && !(control_ && control_->MustStop());
}

void InputSource::Fail(int error) {
  if (error_ == 0) error_ = error ? error : EIO;
  if (control_) control_->Stop(StopCause::kUnreadable);
}

void InputSource::Cancel() {
  if (control_) control_->Stop(StopCause::kCanceled);
}

void InputSource::LookAtClock() {
  if (control_) control_->LookAtClock();
}

std::unique_ptr<InputSource> openInput(const pagerex_input& input, RunControl& control, int& error) {
  std::unique_ptr<InputSource> source;
  error = 0;
  if (input.data) {
    source = std::make_unique<MemoryInput>(input.data, input.length);
  } else if (input.path) {
    auto file = std::make_unique<PathInput>();
    error = file->Open(input.path);
    source = std::move(file);
  } else {
    auto functions = std::make_unique<HostInput>(input);
    functions->SetControl(&control);
    error = functions->Open();
    source = std::move(functions);
  }
  if (error != 0) return nullptr;
  source->SetControl(&control);
  return source;
}

}  // namespace pagerex

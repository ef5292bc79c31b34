#include "files.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "pagerex/convert.h"

namespace cli {

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  if (this != &other) {
    reset();
    number_ = other.release();
  }
  return *this;
}

int Descriptor::release() {
  const int number = number_;
  number_ = -1;
  return number;
}

void Descriptor::reset() {
  if (number_ >= 0) close(number_);
  number_ = -1;
}

bool isFolder(const std::string& path) {
  struct stat info;
  return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool isSameFile(const std::string& a, const std::string& b) {
  struct stat first, second;
  return stat(a.c_str(), &first) == 0 && stat(b.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

int detectFile(const std::string& path, const struct stat& info) {
  constexpr off_t kLargestMap = off_t{1} << 30;
  if (info.st_size == 0) return PAGEREX_KIND_EMPTY;
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file) return PAGEREX_KIND_UNKNOWN;
  const auto size = static_cast<size_t>(std::min<off_t>(info.st_size, kLargestMap));
  void* const bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.get(), 0);
  if (bytes == MAP_FAILED) return PAGEREX_KIND_UNKNOWN;
  const int kind = pagerex_detect(bytes, size);
  munmap(bytes, size);
  return kind;
}

bool isWordDocument(const std::string& path) {
  constexpr int kWordKinds[] = {PAGEREX_KIND_WORD97, PAGEREX_KIND_WORD95, PAGEREX_KIND_WORD_EARLY,
                                PAGEREX_KIND_WORD_ENCRYPTED};
  struct stat info;
  if (stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return false;
  const int kind = detectFile(path, info);
  return std::find(std::begin(kWordKinds), std::end(kWordKinds), kind) != std::end(kWordKinds);
}

Descriptor openRegular(const std::string& path, struct stat& info, std::string& error) {
  Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file || fstat(file.get(), &info) != 0) {
    error = std::strerror(errno);
    return Descriptor();
  }
  if (S_ISREG(info.st_mode)) return file;
  error = S_ISDIR(info.st_mode) ? "is a folder" : "is not a regular file";
  return Descriptor();
}

bool readAll(int file, std::string& content) {
  constexpr size_t kStep = size_t{256} << 10;
  for (;;) {
    const size_t length = content.size();
    content.resize(length + kStep);
    const ssize_t count = read(file, content.data() + length, kStep);
    content.resize(length + static_cast<size_t>(std::max<ssize_t>(count, 0)));
    if (count == 0) return true;
    if (count < 0 && errno != EINTR) return false;
  }
}

bool writeAll(int file, const char* data, size_t length) {
  while (length > 0) {
    const ssize_t count = write(file, data, length);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    data += count;
    length -= static_cast<size_t>(count);
  }
  return true;
}

std::string_view endingOf(std::string_view path) {
  const size_t name = path.rfind('/') + 1;
  const size_t dot = path.rfind('.');
  return dot == std::string_view::npos || dot <= name ? std::string_view() : path.substr(dot);
}

bool isSameWord(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char x, char y) { return lower(x) == lower(y); });
}

}  // namespace cli

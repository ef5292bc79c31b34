#include "base/stdio_archive.h"

#include <string>
#include <utility>

#include "base/encoding.h"

int64_t StdioAdapter::size() const {
  if (!file_) return 0;
  const int64_t position = ftello(file_);
  fseeko(file_, 0, SEEK_END);
  const int64_t length = ftello(file_);
  fseeko(file_, position, SEEK_SET);
  return length;
}

unsigned int StdioAdapter::get(char* buffer, unsigned int n) {
  return file_ ? static_cast<unsigned int>(std::fread(buffer, 1, n, file_)) : 0;
}

unsigned int StdioAdapter::put(const char* data, unsigned int n) {
  return file_ ? static_cast<unsigned int>(std::fwrite(data, 1, n, file_)) : 0;
}

bool StdioAdapter::close() {
  FILE* const file = std::exchange(file_, nullptr);
  return !file || std::fclose(file) == 0;
}

bool DsWriteArchive::open(const char* path) {
  close();
  if (OutputSink* const sink = files_.sink()) {
    adapter_.attach(path ? sink->Open(path) : nullptr);
  } else {
    adapter_.attach(files_.Open(path));
  }
  return good();
}

bool DsWriteArchive::open(const wchar_t* path) {
  constexpr unsigned int kUtf8 = 65001;
  const std::string narrow = KEncoding::WCharToString(kUtf8, path);
  const bool isLost = !path || (narrow.empty() && *path != 0);
  return open(isLost ? nullptr : narrow.c_str());
}

#include "base/stdio_archive.h"

#include <cstdlib>
#include <cwchar>
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
  adapter_.attach(files_.Open(path));
  return good();
}

bool DsWriteArchive::open(const wchar_t* path) {
  if (!path || !KEncoding::SetLocale("zh_CN.UTF-8")) return open(static_cast<const char*>(nullptr));
  std::string narrow(4 * std::wcslen(path) + 1, '\0');
  const size_t length = std::wcstombs(narrow.data(), path, narrow.size());
  return open(length == static_cast<size_t>(-1) ? nullptr : narrow.c_str());
}

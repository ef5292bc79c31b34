#pragma once

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <utility>

#include "base/output_files.h"

/// The empty root of all byte archives.
class DsArchive {};

/// One C file, owned; null when closed. Serves reading and writing alike. Positions have 64 bits on every
/// system.
class StdioAdapter {
 public:
  StdioAdapter() = default;
  explicit StdioAdapter(FILE* file) : file_(file) {}
  StdioAdapter(const StdioAdapter&) = delete;
  StdioAdapter& operator=(const StdioAdapter&) = delete;
  ~StdioAdapter() { close(); }

  /// Replaces the file without closing the old one.
  void attach(FILE* file) { file_ = file; }
  bool good() const { return file_ != nullptr; }
  /// As fseek; -1 without a file.
  int seek(const int64_t& offset, int whence) { return file_ ? fseeko(file_, offset, whence) : -1; }
  int64_t tell() const { return file_ ? ftello(file_) : -1; }
  /// Length in bytes; the position stays where it was.
  int64_t size() const;
  /// Count of bytes that could be read or written.
  unsigned int get(char* buffer, unsigned int n);
  unsigned int put(const char* data, unsigned int n);
  /// False, with errno set, when what was written did not all arrive. True without a file.
  bool close();

 private:
  FILE* file_ = nullptr;
};

/// One file of the output, owned: on disk, or in a sink.
class OutputAdapter {
 public:
  void attach(FILE* file) { file_.attach(file); }
  void attach(std::unique_ptr<SinkFile> file) { sinkFile_ = std::move(file); }
  bool good() const { return sinkFile_ || file_.good(); }
  /// Count of bytes that could be written.
  unsigned int put(const char* data, unsigned int n) {
    if (!sinkFile_) return file_.put(data, n);
    sinkFile_->Put(data, n);
    return n;
  }
  /// As the disk's; a sink knows of its failures.
  bool close() {
    sinkFile_.reset();
    return file_.close();
  }

 private:
  StdioAdapter file_;
  std::unique_ptr<SinkFile> sinkFile_;
};

/// Write operations over an adapter, for the output `files`, which outlives it.
template <class Adapter>
class DsWriteArchiveDelegate : public DsArchive {
 public:
  explicit DsWriteArchiveDelegate(OutputFiles& files) : files_(files) {}

  bool good() const { return adapter_.good(); }
  /// Count of bytes that could be written. Fewer than asked for, and a failure of `close`, are noted as
  /// failures of the output.
  unsigned int put(const void* data, unsigned int n) {
    const unsigned int count = adapter_.put(static_cast<const char*>(data), n);
    if (count < n && good()) files_.NoteError(errno);
    return count;
  }
  void close() {
    if (!adapter_.close()) files_.NoteError(errno);
  }

 protected:
  OutputFiles& files_;
  Adapter adapter_;
};

/// Writes the file named by a path, which `OutputFiles` creates or truncates (mode "wb+") or gives to its
/// sink.
class DsWriteArchive : public DsWriteArchiveDelegate<OutputAdapter> {
 public:
  explicit DsWriteArchive(OutputFiles& files) : DsWriteArchiveDelegate(files) {}
  DsWriteArchive(const DsWriteArchive&) = delete;
  DsWriteArchive& operator=(const DsWriteArchive&) = delete;
  ~DsWriteArchive() { close(); }
  DsWriteArchive(OutputFiles& files, const char* path) : DsWriteArchive(files) { open(path); }
  DsWriteArchive(OutputFiles& files, const wchar_t* path) : DsWriteArchive(files) { open(path); }
  /// True if the file is open. A file that was open before is closed first.
  bool open(const char* path);
  /// By its name in UTF-8, whatever the locale.
  bool open(const wchar_t* path);
};

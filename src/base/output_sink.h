#pragma once

#include <cstddef>
#include <memory>

/// One file of an output that is not simply on disk. Goes when it is closed.
class SinkFile {
 public:
  SinkFile() = default;
  SinkFile(const SinkFile&) = delete;
  SinkFile& operator=(const SinkFile&) = delete;
  virtual ~SinkFile() = default;

  /// Takes all bytes. What goes wrong is known to the sink.
  virtual void Put(const char* data, size_t n) = 0;
};

/// Takes the files of a conversion as they are made. Several may be open at a time. A name may be opened
/// again as long as nothing has been put into it.
class OutputSink {
 public:
  OutputSink() = default;
  OutputSink(const OutputSink&) = delete;
  OutputSink& operator=(const OutputSink&) = delete;
  virtual ~OutputSink() = default;

  /// Begins a file; null when it is not wanted, or an earlier one failed.
  virtual std::unique_ptr<SinkFile> Open(const char* name) = 0;
};

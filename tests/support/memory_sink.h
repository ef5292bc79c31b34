#pragma once

#include <map>
#include <memory>
#include <string>

#include "base/output_sink.h"

namespace support {

/// Keeps the files of an output.
class MemorySink final : public OutputSink {
 public:
  std::unique_ptr<SinkFile> Open(const char* name) override { return std::make_unique<File>(files[name]); }

  std::map<std::string, std::string> files;

 private:
  class File final : public SinkFile {
   public:
    explicit File(std::string& bytes) : bytes_(bytes) {}
    void Put(const char* data, size_t n) override { bytes_.append(data, n); }

   private:
    std::string& bytes_;
  };
};

}  // namespace support

#pragma once

#include "pictures/picture_sink.h"
#include "support/bytes.h"

namespace support {

/// Keeps a picture, or ends it where it gets larger than wanted.
class PictureMemory final : public pagerex::PictureSink {
 public:
  explicit PictureMemory(size_t most = SIZE_MAX) : most_(most) {}

  bool Put(ByteView part) override {
    if (part.size() > most_ - bytes.size()) return false;
    bytes.insert(bytes.end(), part.data(), part.data() + part.size());
    return true;
  }

  Bytes bytes;

 private:
  size_t most_;
};

}  // namespace support

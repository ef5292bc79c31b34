#pragma once

#include "base/byte_view.h"

namespace pagerex {

/// Takes the bytes of a picture as they are made.
class PictureSink {
 public:
  PictureSink() = default;
  PictureSink(const PictureSink&) = delete;
  PictureSink& operator=(const PictureSink&) = delete;
  virtual ~PictureSink() = default;

  /// False to end it: there is no use for more.
  virtual bool Put(ByteView bytes) = 0;
};

}  // namespace pagerex

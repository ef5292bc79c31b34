#pragma once

#include <string>

#include "base/byte_view.h"
#include "base/output_files.h"

namespace pagerex {

/// A picture as it lies in a document.
struct DocumentPicture {
  ByteView bytes;
  bool isDeflated = false;
  uint32_t rawSize = 0;                      ///< of what is deflated, as the document says
  double widthPoints = 0, heightPoints = 0;  ///< 0 for not known
};

/// Makes of pictures what browsers read.
class WebPictures {
 public:
  WebPictures() = default;
  WebPictures(const WebPictures&) = delete;
  WebPictures& operator=(const WebPictures&) = delete;
  virtual ~WebPictures() = default;

  /// Writes such a file to `path`, which ends in a dot and gets its extension. False where the picture is
  /// read by browsers as it is, and where nothing can be made of it.
  virtual bool Write(const DocumentPicture& picture, OutputFiles& files, std::string& path) = 0;
};

}  // namespace pagerex

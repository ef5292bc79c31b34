#pragma once

#include <memory>

#include "base/byte_view.h"
#include "base/status.h"

namespace ObjectWriter {

/// A picture's bytes as they are stored in a document.
struct StoredImage {
  ByteView data;
  unsigned char type = 0;   ///< of the blip: 2 EMF, 3 WMF, 7 DIB, ...
  bool compressed = false;  ///< deflated
  uint32_t rawSize = 0;     ///< bytes when inflated; counts only for a compressed picture
};

/// Inflates `source` to exactly `rawSize` bytes. kOutOfMemory; kFailure when another length comes out, and
/// for a size that no data could have; else zlib's code.
Status _XZlibDecompressInline(ByteView source, uint32_t rawSize, std::unique_ptr<uint8_t[]>& out);

/// Writes a picture to the file `path`, inflated if it is compressed; what does not inflate is written as it
/// is stored. Types 3 and 7 get the file header that a document leaves out. kCannotCreate when the file
/// cannot be opened, kNothing without data or path.
Status WriteImageFile(const StoredImage& image, const char* path);

}  // namespace ObjectWriter

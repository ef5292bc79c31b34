#pragma once

#include <functional>

#include "base/byte_view.h"
#include "base/output_files.h"
#include "base/status.h"

namespace ObjectWriter {

/// A picture's bytes as they are stored in a document.
struct StoredImage {
  ByteView data;
  unsigned char type = 0;   ///< of the blip: 2 EMF, 3 WMF, 7 DIB, ...
  bool compressed = false;  ///< deflated
  uint32_t rawSize = 0;     ///< bytes when inflated; counts only for a compressed picture
  ByteView metafileHeader;  ///< empty for a bitmap
};

/// Takes a part of a picture.
using TakePart = std::function<void(ByteView)>;

/// Inflates `source` to exactly `rawSize` bytes, part by part, so that a picture takes no memory of its size.
/// kFailure when another length comes out or the data are damaged, which may show only after some parts, and
/// for a size that no data could have.
Status _XZlibDecompressInline(ByteView source, uint32_t rawSize, const TakePart& take);

/// Bytes that writing the picture's file can take, inflated and as stored.
uint64_t MostImageBytes(const StoredImage& image);

/// Writes a picture to the file `path` of the output, inflated if it is compressed; what does not inflate is
/// written as it is stored. Types 3 and 7 get the file header that a document leaves out. kCannotCreate when
/// the file cannot be opened, kNothing without data or path.
Status WriteImageFile(const StoredImage& image, OutputFiles& files, const char* path);

}  // namespace ObjectWriter

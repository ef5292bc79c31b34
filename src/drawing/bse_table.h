#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "drawing/stream_pieces.h"

/// A picture behind an inline shape. The views are cut where the list ends.
struct KDRBseImage {
  ByteView blipRecord;      ///< from the header of the blip's record on
  ByteView uid;             ///< from its first identity on
  ByteView metafileHeader;  ///< empty for a bitmap
  ByteView data;            ///< the image
};

/// The blip list that trails an inline shape: store entries with their headers, back to back.
class KDRBseTable {
 public:
  /// Takes a list from bytes that stay.
  void Init(ByteView buffer);
  /// Takes a list of `size` bytes from a stream, which is read when something is asked for. `pieces` stays.
  void Init(StreamPieces& pieces, uint64_t offset, uint64_t size);

  unsigned int Count() const { return static_cast<unsigned int>(Images().size()); }
  /// The bytes from record i on; empty outside the table. Records behind the first are looked for further on
  /// than the images are taken from: readers of the output rely on what comes of it.
  ByteView Item(unsigned int i) const;
  /// Image i; null outside the table.
  const KDRBseImage* ImageItem(unsigned int i) const { return i < Count() ? &images_[i] : nullptr; }

 private:
  const std::vector<KDRBseImage>& Images() const;
  void ReadImages() const;

  mutable StreamPieces* pieces_ = nullptr;  ///< until the list is read
  uint64_t offset_ = 0;
  uint64_t size_ = 0;
  mutable ByteView buffer_;
  mutable std::vector<KDRBseImage> images_;
};

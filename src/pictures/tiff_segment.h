#pragma once

#include <zlib.h>

#include <cstdint>
#include <memory>

#include "base/byte_view.h"
#include "pictures/fax_rows.h"

namespace pagerex {

/// Unpacks a strip or a tile of a TIFF, bit by bit.
class TiffSegment {
 public:
  enum Compression : uint16_t {
    kNone = 1,
    kFaxRuns = 2,
    kFaxGroup3 = 3,
    kFaxGroup4 = 4,
    kLzw = 5,
    kDeflate = 8,
    kPackBits = 32773,
    kOldDeflate = 32946,
  };
  static bool isKnown(uint16_t compression);

  /// `faxWidth` is that of a row, in pixels.
  TiffSegment(uint16_t compression, bool isFaxOfBoth, bool hasBitsReversed, uint32_t faxWidth);
  TiffSegment(const TiffSegment&) = delete;
  TiffSegment& operator=(const TiffSegment&) = delete;
  ~TiffSegment() { inflateEnd(&stream_); }

  void Open(ByteView bytes);
  /// Of facsimile a row. What is not there is zero, and false is told.
  bool Read(uint8_t* to, size_t size);

 private:
  static constexpr uint32_t kMostWords = 4096, kFirstWord = 258;
  /// Words of LZW: each is another one and a byte.
  struct Words {
    uint16_t front[kMostWords];
    uint8_t last[kMostWords];
    uint8_t text[kMostWords];  ///< the word that is being read, at the end
    uint32_t textAt, next, previous;
    uint64_t bit;
    unsigned width;
  };

  size_t ReadPackBits(uint8_t* to, size_t size);
  size_t ReadWords(uint8_t* to, size_t size);
  bool NextWord();
  size_t ReadDeflate(uint8_t* to, size_t size);

  const uint16_t compression_;
  const bool hasBitsReversed_;
  ByteView bytes_;
  size_t at_ = 0;
  std::unique_ptr<uint8_t[]> reversed_;
  size_t left_ = 0;  ///< of a run
  bool isRepeated_ = false;
  std::unique_ptr<Words> words_;
  z_stream stream_{};
  std::unique_ptr<FaxRows> fax_;
};

}  // namespace pagerex

#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "pictures/bitmap.h"

namespace pagerex {

/// What the header of a bitmap says. A width of 0 for one that says nothing of use.
struct DibHeader {
  explicit DibHeader(const Dib& dib);

  /// Of the colours: how many, and where those end that stand behind the header.
  uint32_t colourCount() const;
  /// Of rows without runs.
  uint64_t rowBytes() const { return (uint64_t{static_cast<uint32_t>(width)} * depth + 31) / 32 * 4; }

  enum Compression : uint32_t { kNone, kRuns8, kRuns4, kMasks, kJpeg, kPng, kMasksAndAlpha };

  int32_t width = 0, height = 0;
  bool isTopDown = false;
  uint16_t depth = 0;
  uint32_t compression = kNone;
  uint32_t bitsSize = 0;
  uint32_t coloursUsed = 0;
  uint32_t coloursAt = 0;
  uint32_t colourBytes = 4;
  std::array<uint32_t, 4> masks{};  ///< red, green, blue, alpha
};

/// The rows of a bitmap, as far as they are there: pixels as indexes of colours, or as colours.
class DibRows {
 public:
  explicit DibRows(const Dib& dib);

  int32_t width() const { return header_.width; }
  /// From the top: the first row that is there, and the one behind the last.
  int32_t firstRow() const { return header_.isTopDown ? 0 : header_.height - rows_; }
  int32_t endRow() const { return header_.isTopDown ? rows_ : header_.height; }
  bool isIndexed() const { return header_.depth <= 8; }

  /// 0xFFRRGGBB each.
  uint32_t ReadPalette(const Dib& dib, uint32_t (&colours)[256]) const;
  /// No colours stand behind the header.
  bool hasNoColours(const Dib& dib) const;

  /// Pixels of a row that is there: an index each, or red, green, blue, alpha as the bitmap has it.
  void Read(int32_t y, int32_t left, int32_t count, uint8_t* pixels);

 private:
  /// Where the runs of a row begin.
  struct RunPlace {
    uint32_t row = 0, x = 0, at = 0;
  };

  void PrepareColours();
  void FindRuns();
  bool ReadRuns(RunPlace& place, uint8_t* pixels) const;
  void ReadIndexes(const uint8_t* row, uint32_t left, uint32_t count, uint8_t* pixels) const;
  void ReadColours(const uint8_t* row, uint32_t count, uint8_t* pixels) const;

  DibHeader header_;
  ByteView bits_;
  int32_t rows_ = 0;  ///< that are there, as they lie
  std::vector<RunPlace> runs_;
  std::vector<uint8_t> line_;  ///< of runs
  struct Channel {
    uint8_t shift = 0;
    uint8_t values[256] = {};
    uint8_t mask = 0;
  };
  std::unique_ptr<Channel[]> channels_;  ///< red, green, blue, alpha; null with a palette
};

}  // namespace pagerex

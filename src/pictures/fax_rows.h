#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"

namespace pagerex {

/// Rows of black and white as facsimile machines send them.
class FaxRows {
 public:
  enum class Kind : uint8_t { kRuns, kGroup3, kGroup3Both, kGroup4 };

  FaxRows(Kind kind, uint32_t width);

  /// Begins anew.
  void Open(ByteView bytes);
  /// Eight pixels a byte, of which 1 is black. False at the end.
  bool Next(uint8_t* row);

 private:
  uint32_t Peek(unsigned count) const;
  bool atEnd() const { return at_ >= uint64_t{bytes_.size()} * 8; }
  bool SkipRowEnds();
  bool ReadPlainRow();
  bool ReadRowByTheOneBefore();
  int64_t ReadRun(bool isBlack);
  uint32_t Before(size_t change) const { return change < before_.size() ? before_[change] : width_; }

  const Kind kind_;
  const uint32_t width_;
  ByteView bytes_;
  uint64_t at_ = 0;  ///< bit
  bool isEnded_ = true, isLost_ = false, isPlain_ = true;
  uint16_t codes_[2][8192] = {};            ///< by 13 bits: 16 times the run's row in the table, and its bits
  std::vector<uint32_t> before_, changes_;  ///< where colours change, first to black
};

}  // namespace pagerex

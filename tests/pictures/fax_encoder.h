#pragma once

#include <string>
#include <vector>

#include "support/bytes.h"

namespace support {

/// Rows of black (true) and white.
using FaxImage = std::vector<std::vector<bool>>;

/// Packs rows as facsimile machines do, slowly and by the rules.
class FaxEncoder {
 public:
  void PutBits(const std::string& bits) { bits_ += bits; }
  void Align() { bits_.append((8 - bits_.size() % 8) % 8, '0'); }
  void PutPlainRow(const std::vector<bool>& row);
  void PutRowByTheOneBefore(const std::vector<bool>& row, const std::vector<bool>& before);
  Bytes Take();

 private:
  void PutRun(size_t run, bool isBlack);

  std::string bits_;
};

}  // namespace support

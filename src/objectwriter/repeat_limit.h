#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ObjectWriter {

/// Bounds how often one thing of a document is written. A document anchors a shape once and reaches a text
/// box a few times; a damaged one may do so again and again, or in a circle.
class RepeatLimit {
 public:
  static constexpr uint8_t kMostTimes = 64;

  /// True for the first `kMostTimes` calls with `number`, which is the place of a thing in its table.
  bool Enter(uint32_t number) {
    if (number >= times_.size()) times_.resize(size_t{number} + 1);
    if (times_[number] == kMostTimes) return false;
    ++times_[number];
    return true;
  }

 private:
  std::vector<uint8_t> times_;
};

/// The text boxes that are being written, from the outermost in.
class OpenTextBoxes {
 public:
  static constexpr size_t kDeepest = 8;

  /// Enters a text box for as long as it lives, unless it is open already or lies too deep.
  class Entry {
   public:
    Entry(OpenTextBoxes& boxes, uint32_t number) : boxes_(boxes), entered_(boxes.mayEnter(number)) {
      if (entered_) boxes_.open_.push_back(number);
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;
    ~Entry() {
      if (entered_) boxes_.open_.pop_back();
    }
    bool entered() const { return entered_; }

   private:
    OpenTextBoxes& boxes_;
    bool entered_;
  };

 private:
  bool mayEnter(uint32_t number) {
    for (const uint32_t open : open_) {
      if (open == number) return false;
    }
    return open_.size() < kDeepest && written_.Enter(number);
  }

  std::vector<uint32_t> open_;
  RepeatLimit written_;
};

}  // namespace ObjectWriter

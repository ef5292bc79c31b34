#include "pictures/fax_rows.h"

#include <algorithm>
#include <bit>
#include <iterator>

namespace pagerex {
namespace {

constexpr unsigned kMostBits = 13;
constexpr uint32_t kUnits = 64;  ///< runs below have a code each, longer ones those of multiples before

/// Codes of runs of 0 to 63, then of 64, 128 and so on up to 1728. Above the bits of each stands a 1.
constexpr uint16_t kWhite[] = {
    0x135, 0x47,  0x17,  0x18,  0x1B,  0x1C,  0x1E,  0x1F,  0x33,  0x34,  0x27,  0x28,  0x48,
    0x43,  0x74,  0x75,  0x6A,  0x6B,  0xA7,  0x8C,  0x88,  0x97,  0x83,  0x84,  0xA8,  0xAB,
    0x93,  0xA4,  0x98,  0x102, 0x103, 0x11A, 0x11B, 0x112, 0x113, 0x114, 0x115, 0x116, 0x117,
    0x128, 0x129, 0x12A, 0x12B, 0x12C, 0x12D, 0x104, 0x105, 0x10A, 0x10B, 0x152, 0x153, 0x154,
    0x155, 0x124, 0x125, 0x158, 0x159, 0x15A, 0x15B, 0x14A, 0x14B, 0x132, 0x133, 0x134, 0x3B,
    0x32,  0x57,  0xB7,  0x136, 0x137, 0x164, 0x165, 0x168, 0x167, 0x2CC, 0x2CD, 0x2D2, 0x2D3,
    0x2D4, 0x2D5, 0x2D6, 0x2D7, 0x2D8, 0x2D9, 0x2DA, 0x2DB, 0x298, 0x299, 0x29A, 0x58,  0x29B,
};
constexpr uint16_t kBlack[] = {
    0x437,  0xA,    0x7,    0x6,    0xB,    0x13,   0x12,   0x23,   0x45,   0x44,   0x84,   0x85,   0x87,
    0x104,  0x107,  0x218,  0x417,  0x418,  0x408,  0x867,  0x868,  0x86C,  0x837,  0x828,  0x817,  0x818,
    0x10CA, 0x10CB, 0x10CC, 0x10CD, 0x1068, 0x1069, 0x106A, 0x106B, 0x10D2, 0x10D3, 0x10D4, 0x10D5, 0x10D6,
    0x10D7, 0x106C, 0x106D, 0x10DA, 0x10DB, 0x1054, 0x1055, 0x1056, 0x1057, 0x1064, 0x1065, 0x1052, 0x1053,
    0x1024, 0x1037, 0x1038, 0x1027, 0x1028, 0x1058, 0x1059, 0x102B, 0x102C, 0x105A, 0x1066, 0x1067, 0x40F,
    0x10C8, 0x10C9, 0x105B, 0x1033, 0x1034, 0x1035, 0x206C, 0x206D, 0x204A, 0x204B, 0x204C, 0x204D, 0x2072,
    0x2073, 0x2074, 0x2075, 0x2076, 0x2077, 0x2052, 0x2053, 0x2054, 0x2055, 0x205A, 0x205B, 0x2064, 0x2065,
};
/// Those of longer runs, of both colours.
constexpr uint16_t kLong[] = {
    0x808, 0x80C, 0x80D, 0x1012, 0x1013, 0x1014, 0x1015, 0x1016, 0x1017, 0x101C, 0x101D, 0x101E, 0x101F,
};

void fillCodes(uint16_t* codes, uint16_t code, size_t row) {
  const unsigned bits = static_cast<unsigned>(std::bit_width(code)) - 1, open = kMostBits - bits;
  const size_t first = size_t{code} << open & ((1u << kMostBits) - 1);
  for (size_t i = 0; i < size_t{1} << open; ++i) codes[first + i] = static_cast<uint16_t>(row << 4 | bits);
}

/// How a row differs from the one before.
enum class Step : uint8_t { kChange, kPass, kRuns };
struct StepCode {
  uint8_t bits, code;
  Step step;
  int8_t shift;  ///< of a change against the one above
};
constexpr StepCode kSteps[] = {
    {1, 1, Step::kChange, 0},  {3, 3, Step::kChange, 1}, {3, 2, Step::kChange, -1},
    {3, 1, Step::kRuns, 0},    {4, 1, Step::kPass, 0},   {6, 3, Step::kChange, 2},
    {6, 2, Step::kChange, -2}, {7, 3, Step::kChange, 3}, {7, 2, Step::kChange, -3},
};

}  // namespace

FaxRows::FaxRows(Kind kind, uint32_t width) : kind_(kind), width_(width) {
  constexpr size_t kOwn = std::size(kWhite);
  for (size_t i = 0; i < kOwn + std::size(kLong); ++i) {
    fillCodes(codes_[0], i < kOwn ? kWhite[i] : kLong[i - kOwn], i);
    fillCodes(codes_[1], i < kOwn ? kBlack[i] : kLong[i - kOwn], i);
  }
}

void FaxRows::Open(ByteView bytes) {
  bytes_ = bytes;
  at_ = 0;
  isEnded_ = isLost_ = false;
  isPlain_ = kind_ != Kind::kGroup4;
  before_.clear();
}

uint32_t FaxRows::Peek(unsigned count) const {
  const auto byte = static_cast<size_t>(at_ / 8);
  const uint32_t three = static_cast<uint32_t>(bytes_.u8(byte)) << 16 |
                         static_cast<uint32_t>(bytes_.u8(byte + 1)) << 8 | bytes_.u8(byte + 2);
  return three >> (24 - at_ % 8 - count) & ((1u << count) - 1);
}

bool FaxRows::Next(uint8_t* row) {
  if (isEnded_ || !SkipRowEnds()) return false;
  changes_.clear();
  const bool isGood = isPlain_ ? ReadPlainRow() : ReadRowByTheOneBefore();
  if (!isGood) {
    isLost_ = kind_ == Kind::kGroup3 || kind_ == Kind::kGroup3Both;
    isEnded_ = !isLost_;
    if (isEnded_ && changes_.empty()) return false;
  }
  std::fill_n(row, (size_t{width_} + 7) / 8, 0);
  for (size_t i = 0; i < changes_.size(); i += 2) {
    const uint32_t end = i + 1 < changes_.size() ? changes_[i + 1] : isGood ? width_ : changes_[i];
    for (uint32_t x = changes_[i]; x < end;) {
      if (x % 8 == 0 && end - x >= 8) {
        row[x / 8] = 0xFF;
        x += 8;
      } else {
        row[x / 8] = static_cast<uint8_t>(row[x / 8] | 0x80 >> x % 8);
        ++x;
      }
    }
  }
  before_.swap(changes_);
  return true;
}

/// Eleven zeros and a one stand between rows; several, or none for long, at the end.
bool FaxRows::SkipRowEnds() {
  constexpr unsigned kBits = 12;
  if (kind_ == Kind::kGroup4) return !atEnd();
  if (kind_ == Kind::kRuns) {
    at_ = (at_ + 7) / 8 * 8;
    return !atEnd();
  }
  for (unsigned ends = 0; !atEnd();) {
    const uint32_t bits = Peek(kBits);
    if (bits == 1) {
      at_ += kBits;
      isLost_ = false;
      if (kind_ == Kind::kGroup3Both) {
        isPlain_ = Peek(1) == 1;
        ++at_;
      }
      if (++ends > 1) break;
    } else if (bits == 0 || isLost_) {
      ++at_;
    } else {
      return true;
    }
  }
  isEnded_ = true;
  return false;
}

/// The length of a run, or -1.
int64_t FaxRows::ReadRun(bool isBlack) {
  int64_t run = 0;
  for (;;) {
    const uint16_t code = codes_[isBlack][Peek(kMostBits)];
    if (code == 0 || atEnd()) return -1;
    at_ += code & 15;
    const uint32_t row = code >> 4;
    if (row < kUnits) return run + row;
    run = std::min<int64_t>(run + int64_t{row - kUnits + 1} * kUnits, width_);
  }
}

bool FaxRows::ReadPlainRow() {
  int64_t x = 0;
  for (bool isBlack = false; x < width_; isBlack = !isBlack) {
    const int64_t run = ReadRun(isBlack);
    if (run < 0 || changes_.size() > width_) return false;
    x = std::min<int64_t>(x + run, width_);
    changes_.push_back(static_cast<uint32_t>(x));
  }
  return true;
}

bool FaxRows::ReadRowByTheOneBefore() {
  int64_t x = -1;
  bool isBlack = false;
  for (size_t above = 0; x < width_;) {
    // The next change above to the other colour.
    while (above > 0 && Before(above - 1) > x) --above;
    while (above < before_.size() && (before_[above] <= x || (above & 1) != isBlack)) ++above;
    const auto* const step = std::find_if(std::begin(kSteps), std::end(kSteps),
                                          [this](const StepCode& row) { return Peek(row.bits) == row.code; });
    if (step == std::end(kSteps) || atEnd() || changes_.size() > size_t{width_} + 1) return false;
    at_ += step->bits;
    if (step->step == Step::kPass) {
      x = Before(above + 1);
    } else if (step->step == Step::kRuns) {
      x = std::max<int64_t>(x, 0);
      for (const bool isOther : {false, true}) {
        const int64_t run = ReadRun(isBlack != isOther);
        if (run < 0) return false;
        x = std::min<int64_t>(x + run, width_);
        changes_.push_back(static_cast<uint32_t>(x));
      }
    } else {
      const int64_t change = int64_t{Before(above)} + step->shift;
      if (change < x || change < 0) return false;
      x = std::min<int64_t>(change, width_);
      changes_.push_back(static_cast<uint32_t>(x));
      isBlack = !isBlack;
    }
  }
  return true;
}

}  // namespace pagerex

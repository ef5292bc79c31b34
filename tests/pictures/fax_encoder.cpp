#include "pictures/fax_encoder.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace support {
namespace {

/// Runs of 0 to 63, then of 64, 128 and so on.
constexpr char kWhite[] =
    "00110101 000111 0111 1000 1011 1100 1110 1111 10011 10100 00111 01000 001000 000011 "
    "110100 110101 101010 101011 0100111 0001100 0001000 0010111 0000011 0000100 0101000 "
    "0101011 0010011 0100100 0011000 00000010 00000011 00011010 00011011 00010010 00010011 "
    "00010100 00010101 00010110 00010111 00101000 00101001 00101010 00101011 00101100 00101101 "
    "00000100 00000101 00001010 00001011 01010010 01010011 01010100 01010101 00100100 00100101 "
    "01011000 01011001 01011010 01011011 01001010 01001011 00110010 00110011 00110100 11011 "
    "10010 010111 0110111 00110110 00110111 01100100 01100101 01101000 01100111 011001100 "
    "011001101 011010010 011010011 011010100 011010101 011010110 011010111 011011000 011011001 "
    "011011010 011011011 010011000 010011001 010011010 011000 010011011 ";
constexpr char kBlack[] =
    "0000110111 010 11 10 011 0011 0010 00011 000101 000100 0000100 0000101 0000111 00000100 "
    "00000111 000011000 0000010111 0000011000 0000001000 00001100111 00001101000 00001101100 "
    "00000110111 00000101000 00000010111 00000011000 000011001010 000011001011 000011001100 "
    "000011001101 000001101000 000001101001 000001101010 000001101011 000011010010 "
    "000011010011 000011010100 000011010101 000011010110 000011010111 000001101100 "
    "000001101101 000011011010 000011011011 000001010100 000001010101 000001010110 "
    "000001010111 000001100100 000001100101 000001010010 000001010011 000000100100 "
    "000000110111 000000111000 000000100111 000000101000 000001011000 000001011001 "
    "000000101011 000000101100 000001011010 000001100110 000001100111 0000001111 000011001000 "
    "000011001001 000001011011 000000110011 000000110100 000000110101 0000001101100 "
    "0000001101101 0000001001010 0000001001011 0000001001100 0000001001101 0000001110010 "
    "0000001110011 0000001110100 0000001110101 0000001110110 0000001110111 0000001010010 "
    "0000001010011 0000001010100 0000001010101 0000001011010 0000001011011 0000001100100 "
    "0000001100101 ";
constexpr char kLong[] =
    "00000001000 00000001100 00000001101 000000010010 000000010011 000000010100 000000010101 "
    "000000010110 000000010111 000000011100 000000011101 000000011110 000000011111 ";

std::string codeOf(size_t index, bool isBlack) {
  std::istringstream words(std::string(isBlack ? kBlack : kWhite) + kLong);
  std::string word;
  for (size_t i = 0; i <= index; ++i) words >> word;
  return word;
}

/// The first change behind `from` (or at 0, with -1), to `toBlack` or to either.
int changeBehind(const std::vector<bool>& row, int from, int toBlack = -1) {
  const int width = static_cast<int>(row.size());
  for (int x = from + 1; x < width; ++x) {
    const bool isBlack = row[static_cast<size_t>(x)], wasBlack = x > 0 && row[static_cast<size_t>(x - 1)];
    if (isBlack != wasBlack && (toBlack < 0 || isBlack == (toBlack == 1))) return x;
  }
  return width;
}

}  // namespace

void FaxEncoder::PutRun(size_t run, bool isBlack) {
  for (; run >= 2560 + 64; run -= 2560) bits_ += codeOf(63 + 2560 / 64, isBlack);
  if (run >= 64) bits_ += codeOf(63 + run / 64, isBlack);
  bits_ += codeOf(run % 64, isBlack);
}

void FaxEncoder::PutPlainRow(const std::vector<bool>& row) {
  bool isBlack = false;
  for (size_t x = 0; x < row.size(); isBlack = !isBlack) {
    size_t end = x;
    while (end < row.size() && row[end] == isBlack) ++end;
    PutRun(end - x, isBlack);
    x = end;
  }
}

void FaxEncoder::PutRowByTheOneBefore(const std::vector<bool>& row, const std::vector<bool>& before) {
  const int width = static_cast<int>(row.size());
  bool isBlack = false;
  for (int x = -1; x < width;) {
    // A change at the first pixel counts, as in front of it all is white.
    const int change = changeBehind(row, x, isBlack ? 0 : 1);
    const int above = changeBehind(before, x, isBlack ? 0 : 1), next = changeBehind(before, above);
    if (next < change) {
      bits_ += "0001";
      x = next;
    } else if (std::abs(change - above) <= 3) {
      constexpr const char* kShifts[] = {"0000010", "000010", "010", "1", "011", "000011", "0000011"};
      bits_ += kShifts[change - above + 3];
      x = change;
      isBlack = !isBlack;
    } else {
      const int second = changeBehind(row, change);
      bits_ += "001";
      PutRun(static_cast<size_t>(change - std::max(x, 0)), isBlack);
      PutRun(static_cast<size_t>(second - change), !isBlack);
      x = second;
    }
  }
}

Bytes FaxEncoder::Take() {
  Align();
  Bytes bytes;
  for (size_t i = 0; i < bits_.size(); i += 8)
    bytes.push_back(static_cast<uint8_t>(std::stoi(bits_.substr(i, 8), nullptr, 2)));
  bits_.clear();
  return bytes;
}

}  // namespace support

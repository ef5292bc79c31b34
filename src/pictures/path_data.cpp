#include "pictures/path_data.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <utility>

#include "pictures/grid_number.h"

namespace pagerex {
namespace {

/// How far the controls of a quarter of a circle are from its ends, in radii.
constexpr double kQuarter = 0.5522847498;

/// Eight decimal digits of a number below 10^8, the first of them in the lowest byte, each 0 to 9.
inline uint64_t digitsOf(uint32_t value) {
  uint64_t digits = value / 10000 | uint64_t{value % 10000} << 32;
  const uint64_t hundreds = (digits * 10486 >> 20) & 0x7F0000007FULL;
  digits = hundreds | (digits - hundreds * 100) << 16;
  const uint64_t tens = (digits * 103 >> 10) & 0x000F000F000F000FULL;
  return tens | (digits - tens * 10) << 8;
}

/// What putNumber may write to, of which it keeps less.
constexpr size_t kNumberRoom = 9;

/// A number below 10^8, behind a space where it needs one. Without a branch: its length is not to be guessed.
inline char* putNumber(char* at, int32_t value, bool needsSpace) {
  *at = value < 0 ? '-' : ' ';
  at += value < 0 || needsSpace ? 1 : 0;
  const uint64_t digits = digitsOf(static_cast<uint32_t>(value < 0 ? -value : value));
  const int zeros = std::countr_zero(digits | 1ULL << 56) & ~7;
  uint64_t text = (digits | 0x3030303030303030ULL) >> zeros;
  if constexpr (std::endian::native == std::endian::big) text = __builtin_bswap64(text);
  std::memcpy(at, &text, sizeof(text));
  return at + 8 - zeros / 8;
}

}  // namespace

void PathData::clear() {
  std::string room = std::move(data_);
  room.clear();
  *this = {};
  data_ = std::move(room);
}

/// A command that is the same as the one before needs no letter, but something between two numbers.
void PathData::Begin(char command) {
  if (last_ == command) {
    needsSpace_ = true;
    return;
  }
  data_ += command;
  last_ = command;
  needsSpace_ = false;
}

char* PathData::SpellPoint(char* at, Point p, bool isLast) {
  const int32_t x = wholeNumber(p.x), y = wholeNumber(p.y);
  at = putNumber(at, x - x_, needsSpace_);
  at = putNumber(at, y - y_, true);
  needsSpace_ = true;
  Cover(x, y);
  if (isLast) {
    x_ = x;
    y_ = y;
  }
  return at;
}

void PathData::PutPoint(Point p, bool isLast) {
  char text[2 * kNumberRoom];
  const char* const end = SpellPoint(text, p, isLast);
  data_.append(text, static_cast<size_t>(end - text));
}

void PathData::MoveTo(Point to) {
  x_ = y_ = 0;
  last_ = 0;
  Begin('M');
  PutPoint(to, true);
  last_ = 0;
  startX_ = x_;
  startY_ = y_;
}

void PathData::LineTo(Point to) {
  Begin('l');
  PutPoint(to, true);
}

void PathData::LinesTo(const Point* points, size_t count) {
  constexpr size_t kAtOnce = 64;
  char text[kAtOnce * 2 * kNumberRoom];
  while (count > 0) {
    Begin('l');
    char* at = text;
    const size_t now = std::min(count, kAtOnce);
    for (size_t i = 0; i < now; ++i) at = SpellPoint(at, points[i], true);
    data_.append(text, static_cast<size_t>(at - text));
    points += now;
    count -= now;
  }
}

void PathData::CurveTo(Point control1, Point control2, Point to) {
  Begin('c');
  PutPoint(control1, false);
  PutPoint(control2, false);
  PutPoint(to, true);
}

void PathData::ArcTo(double radiusX, double radiusY, double degrees, bool isLarge, bool isClockwise,
                     Point to) {
  const Point from{static_cast<double>(x_), static_cast<double>(y_)};
  const double reach = std::max(radiusX, radiusY);
  Begin('a');
  appendWhole(data_, wholeNumber(radiusX));
  data_ += ' ';
  appendWhole(data_, wholeNumber(radiusY));
  data_ += ' ';
  appendNumber(data_, degrees);
  data_.append(isLarge ? " 1" : " 0").append(isClockwise ? " 1" : " 0");
  needsSpace_ = true;
  PutPoint(to, true);
  for (const Point p : {from, to}) {
    Cover(wholeNumber(p.x - reach), wholeNumber(p.y - reach));
    Cover(wholeNumber(p.x + reach), wholeNumber(p.y + reach));
  }
}

void PathData::Close() {
  if (data_.empty()) return;
  data_ += 'z';
  last_ = 0;
  x_ = startX_;
  y_ = startY_;
}

void PathData::AddBox(const Box& box) {
  MoveTo({box.left, box.top});
  const int32_t left = x_, top = y_, right = wholeNumber(box.right), bottom = wholeNumber(box.bottom);
  Cover(right, bottom);
  data_ += 'h';
  appendWhole(data_, right - left);
  data_ += 'v';
  appendWhole(data_, bottom - top);
  data_ += 'h';
  appendWhole(data_, left - right);
  Close();
}

void PathData::AddEllipse(const Box& bounds) {
  AddRoundBox(bounds, std::fabs(bounds.width()) / 2, std::fabs(bounds.height()) / 2);
}

void PathData::AddRoundBox(const Box& box, double radiusX, double radiusY) {
  const double left = std::min(box.left, box.right), right = std::max(box.left, box.right);
  const double top = std::min(box.top, box.bottom), bottom = std::max(box.top, box.bottom);
  const double x = std::min(std::fabs(radiusX), (right - left) / 2);
  const double y = std::min(std::fabs(radiusY), (bottom - top) / 2);
  const double dx = x * (1 - kQuarter), dy = y * (1 - kQuarter);
  const bool hasSides = right - left > 2 * x + 0.5, hasUprights = bottom - top > 2 * y + 0.5;
  MoveTo({left + x, top});
  if (hasSides) LineTo({right - x, top});
  CurveTo({right - dx, top}, {right, top + dy}, {right, top + y});
  if (hasUprights) LineTo({right, bottom - y});
  CurveTo({right, bottom - dy}, {right - dx, bottom}, {right - x, bottom});
  if (hasSides) LineTo({left + x, bottom});
  CurveTo({left + dx, bottom}, {left, bottom - dy}, {left, bottom - y});
  if (hasUprights) LineTo({left, top + y});
  CurveTo({left, top + dy}, {left + dx, top}, {left + x, top});
  Close();
}

void PathData::Append(const PathData& other) {
  if (other.empty()) return;
  data_ += other.data_;
  x_ = other.x_;
  y_ = other.y_;
  startX_ = other.startX_;
  startY_ = other.startY_;
  last_ = 0;
  Cover(other.left_, other.top_);
  Cover(other.right_, other.bottom_);
}

}  // namespace pagerex

#include "pictures/path_data.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "pictures/grid_number.h"

namespace pagerex {
namespace {

/// How far the controls of a quarter of a circle are from its ends, in radii.
constexpr double kQuarter = 0.5522847498;

constexpr char kPairs[] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";

/// Digits of one from 10,000 on.
int longNumber(uint32_t value) {
  int count = 5;
  for (uint32_t next = 100000; value >= next && count < 9; next *= 10) ++count;
  return count;
}

/// A number, behind a space where it needs one.
inline char* putNumber(char* at, int32_t value, bool needsSpace) {
  auto rest = static_cast<uint32_t>(value);
  if (value < 0) {
    *at++ = '-';
    rest = 0 - rest;
  } else if (needsSpace) {
    *at++ = ' ';
  }
  char* const end = at + (rest < 10      ? 1
                          : rest < 100   ? 2
                          : rest < 1000  ? 3
                          : rest < 10000 ? 4
                                         : longNumber(rest));
  at = end;
  for (; rest >= 100; rest /= 100) {
    at -= 2;
    std::memcpy(at, kPairs + size_t{rest % 100} * 2, 2);
  }
  *--at = kPairs[size_t{rest} * 2 + 1];
  if (rest >= 10) *--at = kPairs[size_t{rest} * 2];
  return end;
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

void PathData::PutPoint(Point p, bool isLast) {
  char text[2 * 12];
  const int32_t x = wholeNumber(p.x), y = wholeNumber(p.y);
  char* at = putNumber(text, x - x_, needsSpace_);
  at = putNumber(at, y - y_, true);
  data_.append(text, static_cast<size_t>(at - text));
  needsSpace_ = true;
  Cover(x, y);
  if (!isLast) return;
  x_ = x;
  y_ = y;
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

#include "pictures/path_data.h"

#include <algorithm>
#include <charconv>

#include "pictures/grid_number.h"

namespace pagerex {
namespace {

/// How far the controls of a quarter of a circle are from its ends, in radii.
constexpr double kQuarter = 0.5522847498;

}  // namespace

void PathData::clear() {
  data_.clear();
  last_ = 0;
  x_ = y_ = startX_ = startY_ = 0;
  bounds_ = {1, 1, 0, 0};
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

void PathData::PutNumber(int64_t value) {
  char digits[24];
  char* at = digits;
  if (needsSpace_ && value >= 0) *at++ = ' ';
  at = std::to_chars(at, digits + sizeof(digits), value).ptr;
  data_.append(digits, at);
  needsSpace_ = true;
}

void PathData::Cover(int64_t x, int64_t y) {
  const auto left = static_cast<double>(x), top = static_cast<double>(y);
  if (bounds_.right < bounds_.left) {
    bounds_ = {left, top, left, top};
    return;
  }
  bounds_.left = std::min(bounds_.left, left);
  bounds_.top = std::min(bounds_.top, top);
  bounds_.right = std::max(bounds_.right, left);
  bounds_.bottom = std::max(bounds_.bottom, top);
}

void PathData::PutPoint(Point p, bool isLast) {
  const int64_t x = wholeNumber(p.x), y = wholeNumber(p.y);
  PutNumber(x - x_);
  PutNumber(y - y_);
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
  PutNumber(wholeNumber(radiusX));
  PutNumber(wholeNumber(radiusY));
  data_ += ' ';
  appendNumber(data_, degrees);
  data_.append(isLarge ? " 1" : " 0").append(isClockwise ? " 1" : " 0");
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
  const int64_t left = x_, top = y_, right = wholeNumber(box.right), bottom = wholeNumber(box.bottom);
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
  if (other.bounds_.right < other.bounds_.left) return;
  Cover(wholeNumber(other.bounds_.left), wholeNumber(other.bounds_.top));
  Cover(wholeNumber(other.bounds_.right), wholeNumber(other.bounds_.bottom));
}

}  // namespace pagerex

#include "pictures/region.h"

#include <algorithm>
#include <cmath>

namespace pagerex {

namespace {

struct Span {
  double from, to;
};

/// Between two of a kind, whichever comes first. None where they touch.
Span between(Span a, Span b) {
  if (b.from >= a.to) return {a.to, b.from};
  return {b.to, a.from};
}

class FrameMaker {
 public:
  FrameMaker(PathData& path, double width, double height) : path_(path), width_(width), height_(height) {}

  void Widen(Span x, Span y) {
    if (!(x.to > x.from) || !(y.to > y.from)) return;
    if (width_ > 0) path_.AddBox({x.from - width_, y.from, x.to + width_, y.to});
    if (height_ > 0) path_.AddBox({x.from, y.from - height_, x.to, y.to + height_});
  }

 private:
  PathData& path_;
  double width_, height_;
};

Span acrossOf(const Box& box) {
  return {box.left, box.right};
}
Span downOf(const Box& box) {
  return {box.top, box.bottom};
}

}  // namespace

void Region::Add(Point corner, Point opposite) {
  const auto [left, right] = std::minmax(corner.x, opposite.x);
  const auto [top, bottom] = std::minmax(corner.y, opposite.y);
  boxes_.push_back({left, top, right, bottom});
}

Box Region::bounds() const {
  if (boxes_.empty()) return {};
  Box all = boxes_[0];
  for (const Box& box : boxes_) {
    all = {std::min(all.left, box.left), std::min(all.top, box.top), std::max(all.right, box.right),
           std::max(all.bottom, box.bottom)};
  }
  return all;
}

PathData Region::Outline() const {
  PathData path;
  for (const Box& box : boxes_) path.AddBox(box);
  return path;
}

PathData Region::Frame(double width, double height) const {
  PathData path;
  FrameMaker maker(path, width, height);
  const Box all = bounds();
  // Outside, as far as it matters.
  const double far = std::max(width, height) + 1;
  const Span before{all.left - far, all.left}, behind{all.right, all.right + far},
      across{before.from, behind.to};
  maker.Widen(across, {all.top - far, all.top});
  maker.Widen(across, {all.bottom, all.bottom + far});
  for (size_t i = 0; i < boxes_.size();) {
    const Span row = downOf(boxes_[i]);
    if (i > 0) maker.Widen(across, between(downOf(boxes_[i - 1]), row));
    double left = boxes_[i].left, right = boxes_[i].right;
    size_t next = i + 1;
    for (; next < boxes_.size() && boxes_[next].top == row.from && boxes_[next].bottom == row.to; ++next) {
      maker.Widen(between(acrossOf(boxes_[next - 1]), acrossOf(boxes_[next])), row);
      left = std::min(left, boxes_[next].left);
      right = std::max(right, boxes_[next].right);
    }
    maker.Widen({before.from, left}, row);
    maker.Widen({right, behind.to}, row);
    i = next;
  }
  return path;
}

}  // namespace pagerex

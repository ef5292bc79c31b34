#pragma once

#include <vector>

#include "pictures/geometry.h"
#include "pictures/path_data.h"

namespace pagerex {

/// An area as metafiles tell it: boxes from row to row and, in a row, from side to side. In units of the
/// canvas.
class Region {
 public:
  void Add(Point corner, Point opposite);
  const std::vector<Box>& boxes() const { return boxes_; }
  Box bounds() const;

  PathData Outline() const;
  /// What lies less than `width` beside the outside, or less than `height` above or below it; within the
  /// region that is its frame.
  PathData Frame(double width, double height) const;

 private:
  std::vector<Box> boxes_;
};

}  // namespace pagerex

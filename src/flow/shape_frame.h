#pragma once

#include "drawing/shape_geometry.h"
#include "flow/shape_facts.h"

namespace pagerex {

/// The turn and the flips of a shape: flipped first, then turned, degrees clockwise.
struct ShapeTurn {
  double rotation = 0;
  bool flipsX = false, flipsY = false;
};

/// Where a shape stands, with the turns and flips of its groups worked in. Twips.
struct ShapeFrame {
  double centreX = 0, centreY = 0;
  double width = 0, height = 0;  ///< before it is turned
  ShapeTurn turn;

  /// Of a shape at the top. The box of an anchor lies on its side where the turn is near a quarter.
  static ShapeFrame OfAnchor(const ShapeBox& anchor, const ShapeTurn& turn);
  /// Of a child of this group, whose children are measured in `space`.
  ShapeFrame Child(const tagRECT& space, const tagRECT& anchor, const ShapeTurn& own) const;
  ShapeBox Box() const;
};

}  // namespace pagerex

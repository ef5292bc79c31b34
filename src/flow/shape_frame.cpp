#include "flow/shape_frame.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace pagerex {
namespace {

/// A length that a damaged group has made may be any number.
int32_t whole(double length) {
  constexpr double kMost = 1 << 30;
  return length > -kMost && length < kMost ? static_cast<int32_t>(std::lround(length)) : 0;
}

double fullTurns(double degrees) {
  const double rest = std::fmod(degrees, 360.0);
  return rest < 0 ? rest + 360 : rest;
}

bool liesOnItsSide(double rotation) {
  const double turned = std::fmod(fullTurns(rotation), 180.0);
  return turned >= 45 && turned < 135;
}

}  // namespace

ShapeFrame ShapeFrame::OfAnchor(const ShapeBox& anchor, const ShapeTurn& turn) {
  const double width = anchor.width, height = anchor.height;
  ShapeFrame frame{anchor.left + width / 2, anchor.top + height / 2, width, height, turn};
  frame.turn.rotation = fullTurns(turn.rotation);
  if (liesOnItsSide(turn.rotation)) std::swap(frame.width, frame.height);
  return frame;
}

ShapeFrame ShapeFrame::Child(const tagRECT& space, const tagRECT& anchor, const ShapeTurn& own) const {
  const double spaceWidth = double{1} * space.right - space.left;
  const double spaceHeight = double{1} * space.bottom - space.top;
  if (spaceWidth <= 0 || spaceHeight <= 0) return *this;
  const double scaleX = width / spaceWidth, scaleY = height / spaceHeight;
  const auto middle = [](int32_t low, int32_t high) { return (double{1} * low + high) / 2; };
  double x = (middle(anchor.left, anchor.right) - middle(space.left, space.right)) * scaleX;
  double y = (middle(anchor.top, anchor.bottom) - middle(space.top, space.bottom)) * scaleY;
  if (turn.flipsX) x = -x;
  if (turn.flipsY) y = -y;
  const double angle = turn.rotation * std::numbers::pi / 180;

  ShapeFrame child;
  child.centreX = centreX + x * std::cos(angle) - y * std::sin(angle);
  child.centreY = centreY + x * std::sin(angle) + y * std::cos(angle);
  child.width = (double{1} * anchor.right - anchor.left) * scaleX;
  child.height = (double{1} * anchor.bottom - anchor.top) * scaleY;
  if (liesOnItsSide(own.rotation)) std::swap(child.width, child.height);
  // Seen in a mirror a turn goes the other way.
  const bool isMirrored = turn.flipsX != turn.flipsY;
  child.turn.rotation = fullTurns(turn.rotation + (isMirrored ? -own.rotation : own.rotation));
  child.turn.flipsX = turn.flipsX != own.flipsX;
  child.turn.flipsY = turn.flipsY != own.flipsY;
  return child;
}

ShapeBox ShapeFrame::Box() const {
  return {whole(centreX - width / 2), whole(centreY - height / 2), whole(width), whole(height)};
}

}  // namespace pagerex

#pragma once

#include <array>
#include <cstdint>

namespace pagerex {

/// What an area or a line is filled with.
struct Paint {
  enum class Kind : uint8_t { kNone, kColour, kServer };

  Kind kind = Kind::kNone;
  uint8_t alpha = 255;  ///< 255 is opaque
  uint32_t rgb = 0;     ///< 0xRRGGBB
  uint32_t server = 0;  ///< of kServer: a number that the canvas gave

  static Paint Colour(uint32_t rgb, uint8_t alpha = 255) { return {Kind::kColour, alpha, rgb, 0}; }
  static Paint Server(uint32_t number, uint8_t alpha = 255) { return {Kind::kServer, alpha, 0, number}; }
};

struct Stroke {
  enum class Cap : uint8_t { kButt, kRound, kSquare };
  enum class Join : uint8_t { kMiter, kRound, kBevel };

  Paint paint;
  double width = 0;  ///< in units of the canvas
  Cap cap = Cap::kButt;
  Join join = Join::kMiter;
  float miterLimit = 10;
  uint8_t dashCount = 0;           ///< 0 for a solid line
  std::array<float, 16> dashes{};  ///< lengths of dashes and gaps, in units of the canvas
  float dashOffset = 0;
};

/// How what is drawn and what is there become one.
enum class Blend : uint8_t { kNormal, kMultiply, kScreen, kDifference, kDarken, kLighten };

enum class FillRule : uint8_t { kNonZero, kEvenOdd };

}  // namespace pagerex

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "flow/properties.h"

namespace pagerex {

class PictureSource;

/// What a shape is, as Word draws it. Lengths are EMU (12700 to a point), angles degrees clockwise, parts of
/// one 0 to 1, colours 0xRRGGBB with schemes and changes worked in, unless the name says otherwise.

struct ShapePoint {
  int32_t x = 0, y = 0;
};

/// A box in twips.
struct ShapeBox {
  int32_t left = 0, top = 0, width = 0, height = 0;
};

/// A formula of a freeform (SG): a kind, and three values, each a number or the number of another value.
struct ShapeGuide {
  uint8_t kind = 0;
  std::array<bool, 3> isReference{};
  std::array<int16_t, 3> values{};
};

struct ShapeGeometry {
  uint16_t type = 0;  ///< MSOSPT
  bool flipsX = false, flipsY = false;
  float rotation = 0;                                   ///< behind the flips, those of its groups included
  std::array<std::optional<int32_t>, 8> adjustments{};  ///< those that are told; others have their default
  // Of a freeform: `vertices` lie in the space from (left, top) to (right, bottom).
  int32_t left = 0, top = 0, right = 21600, bottom = 21600;
  uint8_t pathKind = 1;  ///< of a freeform without segments: 0 lines, 1 a polygon, 2 curves, 3 closed curves
  std::vector<ShapePoint> vertices;
  std::vector<uint16_t> segments;  ///< MSOPATHINFO
  std::vector<ShapeGuide> guides;  ///< a coordinate of 0x80000000 + i is the value of guide i
};

struct ShapeFill {
  enum class Kind : uint8_t { kNone, kSolid, kPattern, kTexture, kPicture, kLinear, kRadial, kShape };
  Kind kind = Kind::kNone;
  bool isPictured() const { return kind >= Kind::kPattern && kind <= Kind::kPicture; }
  uint32_t rgb = 0xFFFFFF, backRgb = 0xFFFFFF;
  float opacity = 1, backOpacity = 1;
  float angle = 0;    ///< of a linear gradient: 0 has its colours above each other, the first on top
  int16_t focus = 0;  ///< percent: where between the sides the second colour stands; negative from the end
  float toLeft = 0, toTop = 0, toRight = 0, toBottom = 0;  ///< of a radial one: where its middle is
  struct Stop {
    uint32_t rgb = 0;
    float place = 0;
  };
  std::vector<Stop> stops;           ///< of a gradient; empty for one between the two colours
  std::array<uint8_t, 8> pattern{};  ///< rows of a pattern, the left pixel in the high bit: set has `rgb`
  PictureSource* picture = nullptr;  ///< of a texture, which repeats, or a picture, which is stretched
  uint32_t pictureIdentity = 0;      ///< as PictureFacts::identity
};

struct Arrowhead {
  enum class Kind : uint8_t { kNone, kTriangle, kStealth, kDiamond, kOval, kOpen };
  Kind kind = Kind::kNone;
  uint8_t width = 1, length = 1;  ///< 0 small, 1 medium, 2 large
};

struct ShapeLine {
  bool isThere = false;
  uint32_t rgb = 0;
  float opacity = 1;
  int32_t width = 9525;
  enum class Style : uint8_t { kSingle, kDouble, kThickThin, kThinThick, kTriple };
  Style style = Style::kSingle;
  uint8_t dash = 0;  ///< MSOLINEDASHING: 0 solid, 1 dashes, 2 dots, ...
  enum class Join : uint8_t { kBevel, kMiter, kRound };
  Join join = Join::kRound;
  enum class Cap : uint8_t { kRound, kSquare, kFlat };
  Cap cap = Cap::kFlat;
  Arrowhead start, end;
};

struct ShapeShadow {
  bool isThere = false;
  uint32_t rgb = 0x808080;
  float opacity = 1;
  int32_t x = 25400, y = 25400;
};

/// How text stands in the shape.
struct ShapeText {
  int32_t left = 91440, top = 45720, right = 91440, bottom = 45720;  ///< space around it
  enum class Anchor : uint8_t { kTop, kMiddle, kBottom };
  Anchor anchor = Anchor::kTop;
  bool isCentred = false;   ///< as a whole, from side to side
  uint8_t flow = 0;         ///< txflTextFlow: 0 horizontal, 1 and 3 downwards, 2 upwards, ...
  bool wraps = true;        ///< lines break at the sides
  bool growsShape = false;  ///< the shape is as high as its text
};

/// Where a floating shape stands, and what text does around it. Shapes of a group have that of the group.
struct ShapePlace {
  enum class Side : uint8_t { kAbsolute, kStart, kCentre, kEnd, kInside, kOutside };
  enum class From : uint8_t { kMargin, kPage, kText /**< column or paragraph */, kCharacter /**< or line */ };
  Side horizontal = Side::kAbsolute, vertical = Side::kAbsolute;
  From fromX = From::kText, fromY = From::kText;
  ShapeBox anchor;  ///< of the whole group; left and top count for kAbsolute
  enum class Wrap : uint8_t { kBoth, kLeft, kRight, kLargest };
  Wrap wrapSide = Wrap::kBoth;
  int32_t distanceLeft = 114300, distanceTop = 0, distanceRight = 114300, distanceBottom = 0;
  uint32_t order = 0;  ///< larger is nearer; those of a group are told from the farthest on
  bool isInGroup = false;
  /// It stands in the line as an inline picture does; one without bytes keeps its room there.
  bool isInLine = false;
  bool isInCell = true;  ///< anchored in a table's cell, it stands in it
};

/// What is done to the picture of a shape.
struct ShapePicture {
  float cropLeft = 0, cropTop = 0, cropRight = 0, cropBottom = 0;  ///< parts of the picture; negative adds
  float contrast = 1;                                              ///< of the usual one
  float brightness = 0;                                            ///< -1 black to 1 white
  bool isGrey = false, isBlackAndWhite = false;
  bool hasClearColour = false;  ///< whose pixels are not seen
  uint32_t clearRgb = 0;
  Border top, left, bottom, right;  ///< of an inline one
};

/// Lettering (WordArt): text that fills the shape.
struct ShapeArt {
  std::u16string text;  ///< empty for none
  std::u16string font;
  bool isBold = false, isItalic = false;
};

struct ShapeFacts {
  ShapeGeometry geometry;
  /// Of the shape before it is turned about its middle, from what its place refers to. The box of its anchor
  /// lies on its side for turns near a quarter.
  ShapeBox box;
  ShapeFill fill;
  ShapeLine line;
  ShapeShadow shadow;
  ShapeText text;
  ShapePlace place;
  ShapePicture picture;
  ShapeArt art;
};

}  // namespace pagerex

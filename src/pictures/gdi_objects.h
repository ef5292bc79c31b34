#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pictures/bitmap.h"
#include "pictures/region.h"

namespace pagerex {

/// 0xBBGGRR of a file as 0xRRGGBB.
inline uint32_t rgbOf(uint32_t colourRef) {
  return (colourRef & 0xFF) << 16 | (colourRef & 0xFF00) | (colourRef >> 16 & 0xFF);
}

/// PS_... of wingdi: what a pen's style says.
enum PenStyle : uint32_t {
  kPenSolid = 0,
  kPenNull = 5,
  kPenInsideFrame = 6,
  kPenUserStyle = 7,
  kPenAlternate = 8,
  kPenStyles = 0xF,
  kCapSquare = 0x100,
  kCapFlat = 0x200,
  kCaps = 0xF00,
  kJoinBevel = 0x1000,
  kJoinMiter = 0x2000,
  kJoins = 0xF000,
  kGeometric = 0x10000,
};

struct Brush {
  enum class Kind : uint8_t { kSolid, kNull, kHatched, kPattern };

  Kind kind = Kind::kSolid;
  uint8_t hatch = 0;     ///< HS_...: 0 horizontal, 1 vertical, 2 falling, 3 rising, 4 cross, 5 diagonal cross
  bool hasInks = false;  ///< the pattern is drawn in the colours of text and ground
  uint32_t rgb = 0xFFFFFF;
  Dib pattern;  ///< lies in the file
};

struct Pen {
  uint32_t style = kPenSolid;
  double width = 0;           ///< in logical units; of a cosmetic one in pixels
  bool isCosmetic = true;     ///< its width does not follow the map
  std::vector<float> dashes;  ///< of its own style
  Brush brush{Brush::Kind::kSolid, 0, false, 0x000000, {}};
};

struct Font {
  double height = 0;      ///< in logical units: above 0 of a line, below 0 of the em square, 0 for any
  double width = 0;       ///< of a mean character; 0 for the font's own
  double escapement = 0;  ///< degrees, anticlockwise
  int weight = 400;
  bool isItalic = false, isUnderlined = false, isStruckOut = false;
  uint8_t charset = 0;
  std::string family = "Arial";  ///< UTF-8
};

/// An entry of a metafile's table of objects.
struct GdiObject {
  enum class Kind : uint8_t { kNone, kPen, kBrush, kFont, kPalette, kRegion, kOther };

  Kind kind = Kind::kNone;
  Pen pen;
  Brush brush;
  Font font;
  ByteView bytes;  ///< of a palette: its entries, 4 bytes each
  Region region;
};

}  // namespace pagerex

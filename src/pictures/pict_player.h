#pragma once

#include <iterator>

#include "base/code_page_text.h"
#include "pictures/pict_bits.h"
#include "pictures/pict_bytes.h"
#include "pictures/svg_canvas.h"

namespace pagerex {

/// Draws the opcodes of a PICT.
class PictPlayer {
 public:
  /// `to` takes the picture's pixels to the canvas, which is not owned. `isWide` tells opcodes of two bytes.
  PictPlayer(SvgCanvas& canvas, const Matrix& to, const Box& frame, bool isWide)
      : canvas_(canvas), to_(to), frame_(frame), isWide_(isWide) {
    penPattern_.bits = fillPattern_.bits = UINT64_MAX;
  }

  /// False when it ends early.
  bool Play(PictBytes in);

 private:
  struct Pattern {
    uint64_t bits = 0;  ///< the first row uppermost
    bool isImage = false, isColour = false;
    uint32_t rgb = 0;     ///< of a colour
    uint32_t server = 0;  ///< of the canvas, for the inks below
    uint32_t ink = 0, ground = 0;
    uint8_t kind = 0;
  };
  struct Drawing {
    Paint paint;
    Blend blend = Blend::kNormal;
  };
  enum Shape : uint8_t { kBox, kRoundBox, kOval, kArc, kPolygon, kRegion, kShapes };
  enum Verb : uint8_t { kFrame, kPaint, kErase, kInvert, kFill };

  bool Do(uint32_t opcode, PictBytes& in);
  void SetState(uint32_t opcode, PictBytes& in);
  void ReadPattern(Pattern& pattern, PictBytes& in);
  void ReadPatternImage(Pattern& pattern, PictBytes& in);

  void DrawLine(uint32_t opcode, PictBytes& in);
  void FlushLines();
  void DrawFrame(const PathData& path, double width);
  void DrawShape(uint32_t opcode, PictBytes& in);
  void AddShape(PathData& path, Shape shape, bool isFrame) const;
  void AddArc(PathData& path, const Box& box, bool isFrame) const;
  void AddPolygon(PathData& path, bool isFrame) const;
  void AddRegion(PathData& path, ByteView region) const;
  Box OnCanvas(const Box& box, double inset = 0) const;
  Drawing DrawingOf(Pattern& pattern, uint16_t mode);

  void DrawText(uint32_t opcode, PictBytes& in);
  void SetClip(ByteView region);
  bool DrawBits(uint32_t opcode, PictBytes& in);
  void DrawQuickTime(ByteView bytes);
  Matrix PlaceOf(const Box& box) const;

  SvgCanvas& canvas_;
  Matrix to_;
  const Box frame_;
  const bool isWide_;
  bool isWhole_ = true;

  uint32_t ink_ = 0x000000, ground_ = 0xFFFFFF;
  Point pen_, penSize_{1, 1}, corner_;
  uint16_t penMode_ = 8;
  Pattern penPattern_, fillPattern_, groundPattern_;
  Box boxes_[kShapes];
  ByteView polygon_, region_;
  int16_t startAngle_ = 0, arcAngle_ = 0;
  PathData lines_;
  double lineWidth_ = 0;
  Point linesEnd_;

  Point textAt_, textScale_{1, 1};
  uint16_t font_ = 0, textSize_ = 12;
  uint8_t face_ = 0;
  struct FontName {
    uint16_t number = 0;
    ByteView name;
  };
  FontName fontNames_[32];  ///< the latest
  uint32_t fonts_ = 0;
  CodePageText macRoman_{10000};
};

}  // namespace pagerex

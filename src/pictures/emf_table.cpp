// Which record of an enhanced metafile is read by what.

#include <iterator>

#include "pictures/emf_records.h"

namespace pagerex {

using namespace emf;

namespace {

using Player = EmfPlayer;

}  // namespace

/// A friend, for the sake of the table.
struct EmfRecords {
  static constexpr EmfRow kRows[] = {
      {nullptr, 0, false},
      {nullptr, 0, false},                          // 1 header
      {&Player::Points, kBezier, true},             // 2
      {&Player::Points, kPolygon, true},            // 3
      {&Player::Points, kPolyline, true},           // 4
      {&Player::Points, kBezierTo, true},           // 5
      {&Player::Points, kPolylineTo, true},         // 6
      {&Player::Polys, kPolyPolyline, true},        // 7
      {&Player::Polys, kPolyPolygon, true},         // 8
      {&Player::Map, kWindowExtent, false},         // 9
      {&Player::Map, kWindowOrigin, false},         // 10
      {&Player::Map, kViewportExtent, false},       // 11
      {&Player::Map, kViewportOrigin, false},       // 12
      {&Player::Map, kBrushOrigin, false},          // 13
      {nullptr, 0, false},                          // 14 end of file
      {&Player::Line, kPixel, true},                // 15
      {nullptr, 0, false},                          // 16 mapper flags
      {&Player::Value, kMapMode, false},            // 17
      {&Player::Value, kGroundMode, false},         // 18
      {&Player::Value, kFillMode, false},           // 19
      {&Player::Value, kRop2, false},               // 20
      {nullptr, 0, false},                          // 21 stretch mode
      {&Player::Value, kTextAlign, false},          // 22
      {nullptr, 0, false},                          // 23 colour adjustment
      {&Player::Value, kTextColour, false},         // 24
      {&Player::Value, kGroundColour, false},       // 25
      {&Player::Clip, kOffset, false},              // 26
      {&Player::Line, kMove, false},                // 27
      {&Player::Clip, kMeta, false},                // 28
      {&Player::Clip, kExclude, false},             // 29
      {&Player::Clip, kIntersect, false},           // 30
      {&Player::Scale, kViewportExtent, false},     // 31
      {&Player::Scale, kWindowExtent, false},       // 32
      {&Player::SaveOrRestore, 0, false},           // 33
      {&Player::SaveOrRestore, 1, false},           // 34
      {&Player::World, 0, false},                   // 35
      {&Player::World, 1, false},                   // 36
      {&Player::Object, kSelect, false},            // 37
      {&Player::CreatePen, 0, false},               // 38
      {&Player::CreateBrush, 0, false},             // 39
      {&Player::Object, kDelete, false},            // 40
      {&Player::AngleArc, 0, true},                 // 41
      {&Player::Shape, kEllipse, true},             // 42
      {&Player::Shape, kRectangle, true},           // 43
      {&Player::Shape, kRoundRectangle, true},      // 44
      {&Player::Shape, kArc, true},                 // 45
      {&Player::Shape, kChord, true},               // 46
      {&Player::Shape, kPie, true},                 // 47
      {&Player::Object, kSelect, false},            // 48 palette
      {&Player::CreatePalette, 0, false},           // 49
      {&Player::PaletteEntries, 0, false},          // 50
      {nullptr, 0, false},                          // 51 palette's size: entries that are not there are black
      {nullptr, 0, false},                          // 52 realize palette
      {nullptr, 0, false},                          // 53 flood fill: needs what is drawn
      {&Player::Line, kLine, true},                 // 54
      {&Player::Shape, kArcTo, true},               // 55
      {&Player::PolyDraw, 0, true},                 // 56
      {&Player::Value, kArcDirection, false},       // 57
      {&Player::Value, kMiterLimit, false},         // 58
      {&Player::Path, kBegin, false},               // 59
      {&Player::Path, kEnd, false},                 // 60
      {&Player::Path, kClose, false},               // 61
      {&Player::Path, kFill, true},                 // 62
      {&Player::Path, kStrokeAndFill, true},        // 63
      {&Player::Path, kStroke, true},               // 64
      {nullptr, 0, false},                          // 65 flatten: curves stay curves
      {&Player::Path, kWiden, false},               // 66
      {&Player::Path, kSelectClip, false},          // 67
      {&Player::Path, kAbort, false},               // 68
      {nullptr, 0, false},                          // 69
      {&Player::Comment, 0, false},                 // 70
      {&Player::DrawRegion, kFillRegion, true},     // 71
      {&Player::DrawRegion, kFrameRegion, true},    // 72
      {&Player::DrawRegion, kInvertRegion, true},   // 73
      {&Player::DrawRegion, kPaintRegion, true},    // 74
      {&Player::SelectRegion, 0, false},            // 75
      {&Player::Blt, kBit, true},                   // 76
      {&Player::Blt, kStretch, true},               // 77
      {&Player::MaskedBlt, 0, true},                // 78
      {&Player::SlantedBlt, 0, true},               // 79
      {&Player::DibBlt, kToDevice, true},           // 80
      {&Player::DibBlt, kStretchDib, true},         // 81
      {&Player::CreateFont, 0, false},              // 82
      {&Player::Text, kAnsi, true},                 // 83
      {&Player::Text, kWide, true},                 // 84
      {&Player::Points, kBezier | kShort, true},    // 85
      {&Player::Points, kPolygon | kShort, true},   // 86
      {&Player::Points, kPolyline | kShort, true},  // 87
      {&Player::Points, kBezierTo | kShort, true},  // 88
      {&Player::Points, kPolylineTo | kShort, true},   // 89
      {&Player::Polys, kPolyPolyline | kShort, true},  // 90
      {&Player::Polys, kPolyPolygon | kShort, true},   // 91
      {&Player::PolyDraw, kShort, true},               // 92
      {&Player::CreatePattern, 1, false},              // 93
      {&Player::CreatePattern, 0, false},              // 94
      {&Player::CreateExtendedPen, 0, false},          // 95
      {&Player::Text, kPolyAnsi, true},                // 96
      {&Player::Text, kPolyWide, true},                // 97
      {nullptr, 0, false},                             // 98 to 107: colour spaces and escapes
      {nullptr, 0, false},
      {nullptr, 0, false},
      {nullptr, 0, false},
      {nullptr, 0, false},
      {nullptr, 0, false},
      {nullptr, 0, false},
      {nullptr, 0, false},
      {nullptr, 0, false},
      {nullptr, 0, false},
      {&Player::SmallText, 0, true},  // 108
      {nullptr, 0, false},            // 109 to 113: fonts, colours
      {nullptr, 0, false},
      {nullptr, 0, false},
      {nullptr, 0, false},
      {nullptr, 0, false},
      {&Player::Blt, kAlpha, true},             // 114
      {nullptr, 0, false},                      // 115 layout
      {&Player::Blt, kTransparent, true},       // 116
      {nullptr, 0, false},                      // 117
      {&Player::Gradient, 0, true},             // 118
      {nullptr, 0, false},                      // 119
      {&Player::Value, kJustification, false},  // 120
  };
};

const EmfRow* emfRowOf(uint32_t type) {
  if (type >= std::size(EmfRecords::kRows) || !EmfRecords::kRows[type].play) return nullptr;
  return &EmfRecords::kRows[type];
}

}  // namespace pagerex

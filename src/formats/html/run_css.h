#pragma once

#include <cstdint>
#include <string>

#include "flow/properties.h"
#include "formats/html/font_families.h"

namespace pagerex {

/// Which of a run's fonts a character takes.
enum class FontScript : uint8_t { kAscii, kEastAsian, kOther, kComplex };

/// Elements around a run, which give their look by themselves: bits. The outermost has the run's class; `u`
/// is the outermost where it is there.
using Tags = uint8_t;
constexpr Tags kTagBold = 1;       ///< b
constexpr Tags kTagItalic = 2;     ///< i
constexpr Tags kTagUnderline = 4;  ///< u
constexpr Tags kTagStrike = 8;     ///< s
constexpr Tags kTagRaised = 16;    ///< sup
constexpr Tags kTagLowered = 32;   ///< sub

/// Size of text in `sup` and `sub`, of that around it; the style sheet says the same.
constexpr int kRaisedPercent = 65;

/// What lies under a run and under the element that it is in: shading of the paragraph, else of the cell,
/// else the paper (automatic). An element with an automatic colour shows what can be read on its ground.
struct Grounds {
  Colour run;
  Colour base;
};

/// "color:#f00;font-size:12pt;": all in which `run` differs from `base`. `base` is what the element around it
/// shows, in its ascii font; see `lookOfBlock`.
void appendRunCss(std::string& out, const RunProperties& run, const RunProperties& base, FontScript script,
                  Tags tags, FontFamilies& fonts, const Grounds& grounds);

/// The part of a look that a block can have for all its text: without lines, grounds and what is raised.
RunProperties lookOfBlock(const RunProperties& run);

/// What a browser shows where no style sheet says anything. Everything differs from it that must be said
/// once.
RunProperties unstyledRun();

/// The same for CSS.
bool looksAlike(const RunProperties& a, const RunProperties& b);

}  // namespace pagerex

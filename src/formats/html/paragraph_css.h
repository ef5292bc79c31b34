#pragma once

#include <string>

#include "flow/properties.h"

namespace pagerex {

/// What the paragraphs above and below make of a paragraph.
struct Neighbours {
  bool joinsAbove = false;  ///< one box with the one above, see `boxesJoin`
  bool joinsBelow = false;
  bool isStyleAbove = false;  ///< the one above has the same style
  bool isStyleBelow = false;
};

/// "text-align:center;margin-bottom:6pt;": all in which `paragraph` differs from `base`. Against
/// ParagraphProperties{} it is all that differs from `p{margin:0}`. Indents are made of points and of the
/// variables --i (those inwards) and --n (those outwards), which are 1 unless lowered for small screens.
void appendParagraphCss(std::string& out, const ParagraphProperties& paragraph,
                        const ParagraphProperties& base, const Neighbours& neighbours = {});

/// Has borders or shading.
bool isBoxed(const ParagraphProperties& paragraph);
/// Word draws one box around both, with the border `between` between them.
bool boxesJoin(const ParagraphProperties& above, const ParagraphProperties& below);

/// "width:144pt;" and height of a frame's box; nothing for those that its text gives.
void appendFrameSizeCss(std::string& out, const Frame& frame);

}  // namespace pagerex

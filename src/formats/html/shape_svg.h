#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "flow/shape_facts.h"

namespace pagerex {

/// Numbers for what an SVG refers to, "g-1" and so on; one for a whole page.
class SvgIds {
 public:
  uint32_t Take() { return ++last_; }

 private:
  uint32_t last_ = 0;
};

/// The drawing of a shape as an `svg` element of class "g", of the shape's size before it is turned; it may
/// reach over its box. `fillAddress` is that of the picture of a texture or picture fill, UTF-8 that is
/// escaped here; without one such a fill is a plain colour. Nothing for a shape without fill and line. False,
/// and nothing written, for a shape whose outline is not known.
bool appendShapeSvg(std::string& out, const ShapeFacts& shape, int32_t widthTwips, int32_t heightTwips,
                    SvgIds& ids, std::string_view fillAddress = {});

/// Where text stands in a shape of this size, without the space around it; twips from its left upper corner.
using ShapeTextBox = ShapeBox;
ShapeTextBox textRectangle(const ShapeFacts& shape, int32_t widthTwips, int32_t heightTwips);

}  // namespace pagerex

#pragma once

#include <cstdint>
#include <string>

#include "flow/handler.h"
#include "flow/shape_facts.h"

namespace pagerex {

/// How a shape stands on a page that has no sheets of paper.
struct PlacedShape {
  enum class Kind : uint8_t {
    kInline,  ///< in the line
    kBeside,  ///< text goes around it
    kBlock,   ///< text stands above and below
    kOver,    ///< it lies over or under the text, at a place of its own
  };
  Kind kind = Kind::kInline;
  bool isFromTop = false;  ///< of kOver: its place counts from the top of the page, else from its paragraph
  std::string css;         ///< of its place, without its size
};

/// Of a shape before it is turned.
ShapeBox boxOf(const PictureFacts& picture);

/// `section` has the paper. `isOnFirstPage`: its paragraph stands on the first sheet, whose places are known.
PlacedShape placeOf(const PictureFacts& picture, const SectionProperties& section, bool isOnFirstPage);

/// Where the box of a frame stands, without its size.
std::string frameCss(const Frame& frame, const SectionProperties& section);

/// "width:72pt;height:36pt;" of a box, and "width:72pt;aspect-ratio:2/1;" of what must not be squeezed.
void appendBoxSize(std::string& css, int32_t width, int32_t height, bool growsWithText);
void appendPictureSize(std::string& css, int32_t width, int32_t height);

}  // namespace pagerex

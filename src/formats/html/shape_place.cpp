#include "formats/html/shape_place.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "formats/html/css_values.h"

namespace pagerex {
namespace {

constexpr int32_t kLongest = 31680;  // the longest side of a page, twips
constexpr uint8_t kTopAndBottom = 1, kNoWrap = 3;

using Side = ShapePlace::Side;
using From = ShapePlace::From;

struct Span {
  int32_t begin, length;
};

int32_t twipsOf(int64_t emu) {
  return static_cast<int32_t>(std::clamp<int64_t>(emu / 635, -kLongest, kLongest));
}

int32_t bounded(int64_t twips) {
  return static_cast<int32_t>(std::clamp<int64_t>(twips, -kLongest, kLongest));
}

int32_t placeIn(const Span& span, Side side, int32_t at, int32_t length) {
  switch (side) {
    case Side::kStart:
    case Side::kInside:
      return span.begin;
    case Side::kCentre:
      return span.begin + (span.length - length) / 2;
    case Side::kEnd:
    case Side::kOutside:
      return span.begin + span.length - length;
    case Side::kAbsolute:
      break;
  }
  return bounded(int64_t{span.begin} + at);
}

void appendPlace(std::string& css, std::string_view name, int32_t twips) {
  css.append(name).append(":");
  appendPoints(css, twips);
  css += ';';
}

}  // namespace

void appendBoxSize(std::string& css, int32_t width, int32_t height, bool growsWithText) {
  appendPlace(css, "width", std::clamp(width, 1, kLongest));
  if (!growsWithText) appendPlace(css, "min-height", std::clamp(height, 1, kLongest));
}

void appendPictureSize(std::string& css, int32_t width, int32_t height) {
  width = std::clamp(width, 1, kLongest);
  height = std::clamp(height, 1, kLongest);
  appendPlace(css, "width", width);
  css += "aspect-ratio:" + std::to_string(width) + "/" + std::to_string(height) + ";";
}

ShapeBox boxOf(const PictureFacts& picture) {
  if (picture.shape && !picture.isInline) return picture.shape->box;
  return {picture.left, picture.top, picture.width, picture.height};
}

PlacedShape placeOf(const PictureFacts& picture, const SectionProperties& section, bool isOnFirstPage) {
  PlacedShape placed;
  if (picture.isInline) return placed;
  const ShapePlace place = picture.shape ? picture.shape->place : ShapePlace();
  const ShapeBox box = boxOf(picture);
  const int32_t width = bounded(box.width), height = bounded(box.height);
  const int32_t textWidth =
      std::max(int32_t{section.pageWidth} - section.marginLeft - section.marginRight, 1440);
  const bool isFromPageX = place.fromX == From::kPage;
  // A group's shapes keep their distance from its corner, wherever that is aligned.
  const ShapeBox& whole = place.anchor;
  const bool isAligned = place.horizontal != Side::kAbsolute && picture.shape;
  const int32_t wholeWidth = place.isInGroup ? bounded(whole.width) : width;
  const int32_t offset = isAligned && place.isInGroup ? bounded(int64_t{box.left} - whole.left) : 0;
  const Span horizontal =
      isFromPageX ? Span{-int32_t{section.marginLeft}, section.pageWidth} : Span{0, textWidth};
  const int32_t left = placeIn(horizontal, place.horizontal, bounded(box.left), wholeWidth) + offset;

  const bool isFromText = place.fromY == From::kText || place.fromY == From::kCharacter;
  const int32_t top = bounded(box.top);
  if (picture.wrap == kNoWrap || place.isInLine) {
    placed.kind = PlacedShape::Kind::kOver;
    placed.isFromTop = !isFromText && isOnFirstPage;
    placed.css = "position:absolute;";
    appendPlace(placed.css, "left", left);
    int32_t y = isFromText ? top : 0;
    if (placed.isFromTop) {
      const int32_t marginTop = std::abs(int32_t{section.marginTop});
      const Span vertical =
          place.fromY == From::kPage
              ? Span{-marginTop, section.pageHeight}
              : Span{0, section.pageHeight - marginTop - std::abs(int32_t{section.marginBottom})};
      const int32_t wholeHeight = place.isInGroup ? bounded(whole.height) : height;
      const int32_t offsetY =
          place.vertical != Side::kAbsolute && place.isInGroup ? bounded(int64_t{box.top} - whole.top) : 0;
      // From the edge of the page's element, which has the margin of the paper inside.
      y = placeIn(vertical, place.vertical, top, wholeHeight) + offsetY + std::min(marginTop, 1440);
    }
    appendPlace(placed.css, "top", y);
    if (picture.isBehindText) placed.css += "z-index:-1;";
    return placed;
  }
  constexpr int32_t kNarrow = 1440;  // no lines beside a shape that leaves less
  const bool isBlock = picture.wrap == kTopAndBottom || textWidth - width < kNarrow;
  const int32_t above = isFromText ? std::max(top, 0) : 0;
  if (isBlock) {
    placed.kind = PlacedShape::Kind::kBlock;
    placed.css = "display:block;";
    appendPlace(placed.css, "margin-left", std::clamp(left, -int32_t{section.marginLeft}, textWidth));
    if (above > 0) appendPlace(placed.css, "margin-top", above);
    return placed;
  }
  placed.kind = PlacedShape::Kind::kBeside;
  const bool isAtStart = left + width / 2 < textWidth / 2;
  placed.css = isAtStart ? "float:left;" : "float:right;";
  const int32_t outer = isAtStart ? left : textWidth - left - width;
  const int32_t inner = twipsOf(isAtStart ? place.distanceRight : place.distanceLeft);
  placed.css += "margin:";
  appendPoints(placed.css, above + twipsOf(place.distanceTop));
  placed.css += ' ';
  appendPoints(placed.css, isAtStart ? inner : outer);
  placed.css += ' ';
  appendPoints(placed.css, twipsOf(place.distanceBottom));
  placed.css += ' ';
  appendPoints(placed.css, isAtStart ? outer : inner);
  placed.css += ';';
  return placed;
}

std::string frameCss(const Frame& frame, const SectionProperties& section) {
  // Values of sprmPDxaAbs that name a side.
  constexpr int16_t kCentre = -4, kRight = -8, kInside = -12, kOutside = -16;
  constexpr uint8_t kColumn = 0, kPage = 2, kNotBeside = 1;
  const int32_t textWidth =
      std::max(int32_t{section.pageWidth} - section.marginLeft - section.marginRight, 1440);
  const int32_t width = std::min<int32_t>(frame.width, textWidth);
  Side side = Side::kAbsolute;
  if (frame.left == 0 || frame.left == kInside) side = Side::kStart;
  if (frame.left == kCentre) side = Side::kCentre;
  if (frame.left == kRight || frame.left == kOutside) side = Side::kEnd;
  if (side == Side::kStart && frame.horizontalAnchor == kColumn) side = Side::kAbsolute;
  const Span line = frame.horizontalAnchor == kPage ? Span{-int32_t{section.marginLeft}, section.pageWidth}
                                                    : Span{0, textWidth};
  const int32_t left = placeIn(line, side, frame.left, width);
  std::string css;
  if (frame.wrap == kNotBeside || width > textWidth * 4 / 5) {
    if (width == 0) css += "width:fit-content;";
    if (side == Side::kCentre) {
      css += "margin-inline:auto;";
    } else if (side == Side::kEnd) {
      css += "margin-inline-start:auto;";
    } else if (left != 0) {
      appendPlace(css, "margin-left", left);
    }
    return css;
  }
  const bool isAtStart = side != Side::kEnd && left + width / 2 < textWidth / 2;
  css += isAtStart ? "float:left;" : "float:right;";
  const int32_t outer = isAtStart ? left : textWidth - left - width;
  css += "margin:0 ";
  appendPoints(css, isAtStart ? 180 : outer);
  css += " 0 ";
  appendPoints(css, isAtStart ? outer : 180);
  css += ';';
  return css;
}

}  // namespace pagerex

#include "objectwriter/object_attr.h"

#include "objectwriter/enum_map.h"

using ObjectWriter::EnumMap;
using ObjectWriter::EnumPair;

namespace {

using Word = EnumPair<int, const char*>;
using Words = EnumMap<int, const char*>;

constexpr Word kTextWraps[] = {{1, "topAndBottom"}, {2, "square"}, {4, "square"}, {5, "square"}};
constexpr Word kShapeNames[] = {{1, "rect"}, {2, "roundrect"}, {3, "oval"}, {20, "line"}};
constexpr Word kConnectorTypes[] = {{0, "straight"}, {1, "elbow"}, {2, "curved"}};
constexpr Word kFillTypes[] = {
    {0, "solid"},          {1, "pattern"},        {2, "tile"},     {3, "frame"}, {4, "gradientradial"},
    {5, "gradientradial"}, {6, "gradientradial"}, {7, "gradient"}, {8, "solid"}, {9, "solid"},
};
constexpr Word kStrokeStyles[] = {
    {0, "single"}, {1, "thinthin"}, {2, "thickthin"}, {3, "thinthick"}, {4, "thickbetweenthin"},
};
constexpr Word kStrokeDashStyles[] = {
    {0, "solid"}, {1, "dash"},     {2, "1 1"},     {3, "dashdot"},     {4, "dashdotdot"},      {5, "1 1"},
    {6, "dash"},  {7, "longdash"}, {8, "dashdot"}, {9, "longdashdot"}, {10, "longdashdotdot"},
};
constexpr Word kLineJoinTypes[] = {{0, "bevel"}, {1, "miter"}, {2, "round"}};
constexpr Word kLineCapTypes[] = {{0, "round"}, {1, "square"}, {2, "flat"}};
constexpr Word kArrowTypes[] = {
    {0, "none"}, {1, "block"}, {2, "classic"}, {3, "diamond"}, {4, "oval"}, {5, "open"},
};
constexpr Word kArrowWidths[] = {{0, "narrow"}, {1, "medium"}, {2, "wide"}};
constexpr Word kArrowLengths[] = {{0, "short"}, {1, "medium"}, {2, "long"}};
constexpr Word kShadowTypes[] = {
    {0, "single"}, {1, "double"}, {2, "perspective"}, {3, "perspective"}, {4, "perspective"}, {5, "emboss"},
};
constexpr Word kRenderModes[] = {{0, "full"}, {1, "wireFrame"}, {2, "bcube"}};
constexpr Word kAnchorTextTypes[] = {
    {0, "top"},
    {1, "middle"},
    {2, "bottom"},
    {3, "top-center"},
    {4, "middle-center"},
    {5, "bottom-center"},
    {6, "top-baseline"},
    {7, "bottom-baseline"},
    {8, "top-center-baseline"},
    {9, "bottom-center-baseline"},
};
constexpr Word kGeoTextAlignTypes[] = {
    {0, "stretch-justify"}, {1, "center"}, {2, "left"}, {3, "right"}, {4, "letter-justify"}, {5, "justify"},
};
constexpr Word kAlignTypesV[] = {{1, "top"}, {2, "center"}, {3, "bottom"}, {4, "justify"}};
constexpr Word kAlignTypesH[] = {{1, "left"}, {2, "center"}, {3, "right"}, {4, "justify"}};
constexpr Word kImageExts[] = {
    {0, nullptr}, {1, nullptr}, {2, "wmf"}, {3, "wmf"}, {4, "jpg"},
    {5, "jpg"},   {6, "png"},   {7, "dib"}, {8, "bmp"},
};
constexpr EnumPair<uint32_t, int> kImageBases[] = {
    {0x0104, 0},  // the picture
    {0x0186, 1},  // the fill
    {0x01C5, 2},  // the line
};

/// A word table is keyed by the value's 32 bits, signed or not.
template <size_t N, class Value>
const char* wordOf(const Word (&rows)[N], Value value, const char* otherwise) {
  return Words(rows, otherwise).Find(static_cast<int>(value));
}

}  // namespace

const char* ObjectWriter::GetTextWrap(unsigned int wrap) {
  return wordOf(kTextWraps, wrap, nullptr);
}

namespace objectAttr {

const char* GetShapeName(unsigned int shapeType) {
  return wordOf(kShapeNames, shapeType, nullptr);
}
const char* GetConnectorType(int value) {
  return wordOf(kConnectorTypes, value, nullptr);
}
const char* GetFillType(unsigned int value) {
  return wordOf(kFillTypes, value, nullptr);
}
const char* GetStrokeStyle(int value) {
  return wordOf(kStrokeStyles, value, "single");
}
const char* GetStrokeDashStyle(int value) {
  return wordOf(kStrokeDashStyles, value, "solid");
}
const char* GetLineJoinType(int value) {
  return wordOf(kLineJoinTypes, value, "bevel");
}
const char* GetLineCapType(int value) {
  return wordOf(kLineCapTypes, value, "round");
}
const char* GetArrowType(int value) {
  return wordOf(kArrowTypes, value, "none");
}
const char* GetArrowWidth(int value) {
  return wordOf(kArrowWidths, value, "medium");
}
const char* GetArrowLength(int value) {
  return wordOf(kArrowLengths, value, "medium");
}
const char* GetShadowType(int value) {
  return wordOf(kShadowTypes, value, "single");
}
const char* GetRenderMode(int value) {
  return wordOf(kRenderModes, value, "full");
}
const char* GetAnchorTextType(int value) {
  return wordOf(kAnchorTextTypes, value, "middle-center");
}
const char* GetGeoTextAlignType(int value) {
  return wordOf(kGeoTextAlignTypes, value, "center");
}
const char* GetAlignTypeV(int value) {
  return wordOf(kAlignTypesV, value, nullptr);
}
const char* GetAlignTypeH(int value) {
  return wordOf(kAlignTypesH, value, nullptr);
}

const char* GetImageExt(unsigned int blipType) {
  return wordOf(kImageExts, blipType, "jpg");
}
int GetImageBase(uint32_t property) {
  return EnumMap<uint32_t, int>(kImageBases, -1).Find(property);
}

}  // namespace objectAttr

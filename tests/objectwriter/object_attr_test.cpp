#include "objectwriter/object_attr.h"

#include <gtest/gtest.h>

#include "objectwriter/enum_map.h"

namespace {

/// Checks the words for `first` and the values that follow it, and the default for what lies outside.
template <class Value>
void expectWords(const char* (*wordOf)(Value), std::initializer_list<const char*> words,
                 const char* otherwise, int first = 0) {
  int value = first;
  for (const char* word : words) {
    EXPECT_STREQ(wordOf(static_cast<Value>(value)), word) << value;
    ++value;
  }
  for (const int outside : {first - 1, value, 255, -2147483647 - 1}) {
    EXPECT_STREQ(wordOf(static_cast<Value>(outside)), otherwise) << outside;
  }
}

TEST(TextWrap, HasWordsForFourModes) {
  expectWords(ObjectWriter::GetTextWrap, {nullptr, "topAndBottom", "square", nullptr, "square", "square"},
              nullptr);
}

TEST(ObjectAttr, NamesFourPresetShapes) {
  expectWords(objectAttr::GetShapeName, {nullptr, "rect", "roundrect", "oval", nullptr}, nullptr);
  EXPECT_STREQ(objectAttr::GetShapeName(20), "line");
}

TEST(ObjectAttr, ConnectorTypes) {
  expectWords(objectAttr::GetConnectorType, {"straight", "elbow", "curved"}, nullptr);
}

TEST(ObjectAttr, FillTypes) {
  expectWords(objectAttr::GetFillType,
              {"solid", "pattern", "tile", "frame", "gradientradial", "gradientradial", "gradientradial",
               "gradient", "solid", "solid"},
              nullptr);
}

TEST(ObjectAttr, StrokeStyles) {
  expectWords(objectAttr::GetStrokeStyle,
              {"single", "thinthin", "thickthin", "thinthick", "thickbetweenthin"}, "single");
}

TEST(ObjectAttr, StrokeDashStyles) {
  expectWords(objectAttr::GetStrokeDashStyle,
              {"solid", "dash", "1 1", "dashdot", "dashdotdot", "1 1", "dash", "longdash", "dashdot",
               "longdashdot", "longdashdotdot"},
              "solid");
}

TEST(ObjectAttr, LineJoinsAndCaps) {
  expectWords(objectAttr::GetLineJoinType, {"bevel", "miter", "round"}, "bevel");
  expectWords(objectAttr::GetLineCapType, {"round", "square", "flat"}, "round");
}

TEST(ObjectAttr, Arrows) {
  expectWords(objectAttr::GetArrowType, {"none", "block", "classic", "diamond", "oval", "open"}, "none");
  expectWords(objectAttr::GetArrowWidth, {"narrow", "medium", "wide"}, "medium");
  expectWords(objectAttr::GetArrowLength, {"short", "medium", "long"}, "medium");
}

TEST(ObjectAttr, ShadowTypes) {
  expectWords(objectAttr::GetShadowType,
              {"single", "double", "perspective", "perspective", "perspective", "emboss"}, "single");
}

TEST(ObjectAttr, RenderModes) {
  expectWords(objectAttr::GetRenderMode, {"full", "wireFrame", "bcube"}, "full");
}

TEST(ObjectAttr, AnchorTextTypes) {
  expectWords(objectAttr::GetAnchorTextType,
              {"top", "middle", "bottom", "top-center", "middle-center", "bottom-center", "top-baseline",
               "bottom-baseline", "top-center-baseline", "bottom-center-baseline"},
              "middle-center");
}

TEST(ObjectAttr, GeoTextAlignTypes) {
  expectWords(objectAttr::GetGeoTextAlignType,
              {"stretch-justify", "center", "left", "right", "letter-justify", "justify"}, "center");
}

TEST(ObjectAttr, AlignTypesCountFromOne) {
  expectWords(objectAttr::GetAlignTypeV, {"top", "center", "bottom", "justify"}, nullptr, 1);
  expectWords(objectAttr::GetAlignTypeH, {"left", "center", "right", "justify"}, nullptr, 1);
}

TEST(ObjectAttr, ImageExtensions) {
  expectWords(objectAttr::GetImageExt, {nullptr, nullptr, "wmf", "wmf", "jpg", "jpg", "png", "dib", "bmp"},
              "jpg");
}

TEST(ObjectAttr, ImagePlaces) {
  EXPECT_EQ(objectAttr::GetImageBase(0x0104), 0);
  EXPECT_EQ(objectAttr::GetImageBase(0x0186), 1);
  EXPECT_EQ(objectAttr::GetImageBase(0x01C5), 2);
  EXPECT_EQ(objectAttr::GetImageBase(0x0105), -1);
}

TEST(EnumMap, FirstRowOfAKeyCountsAndFoundTells) {
  static constexpr ObjectWriter::EnumPair<int, int> kRows[] = {{1, 10}, {1, 11}, {2, 20}};
  constexpr ObjectWriter::EnumMap<int, int> map(kRows, -5);
  bool found = false;
  EXPECT_EQ(map.Find(1, &found), 10);
  EXPECT_TRUE(found);
  EXPECT_EQ(map.Find(3, &found), -5);
  EXPECT_FALSE(found);
  EXPECT_EQ(map.Find(2), 20);
}

}  // namespace

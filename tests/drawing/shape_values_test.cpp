#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/colour_format.h"
#include "drawing/shape_geometry.h"
#include "drawing/unit_switch.h"
#include "read_drawing.h"

using namespace drawing_test;
using object::IsChangeRect;
using testing::ElementsAre;

namespace {

TEST(UnitSwitch, ConvertsLengths) {
  EXPECT_EQ(UnitSwitch::Twip2Pt(30), 1.5);
  EXPECT_EQ(UnitSwitch::EMU2Pt(-19050), -1.5);
  EXPECT_EQ(UnitSwitch::Pt2Pixel(54), 72);
}

// Rotation.

TEST(Rotation, SwapsWidthAndHeightFrom45To134) {
  for (const int angle : {45, 90, 134, 225, 314, 405, 765}) EXPECT_TRUE(IsChangeRect(angle)) << angle;
  for (const int angle : {0, 44, 135, 180, 224, 315, 404}) EXPECT_FALSE(IsChangeRect(angle)) << angle;
}

TEST(Rotation, AnswersForAnAngleAndItsNegativeAlike) {
  for (const int angle : {-45, -134, -225, -314, -405}) EXPECT_TRUE(IsChangeRect(angle)) << angle;
  for (const int angle : {-44, -135, -224, -315, -404}) EXPECT_FALSE(IsChangeRect(angle)) << angle;
  for (int angle = 1; angle < 1000; ++angle) ASSERT_EQ(IsChangeRect(angle), IsChangeRect(-angle)) << angle;
}

TEST(Rotation, TurnsTheBoxAboutItsCentre) {
  FRECT rect{10, 20, 100, 40};
  object::GetShapeBoundRect(90, rect);
  EXPECT_EQ(rect.left, 40);
  EXPECT_EQ(rect.top, -10);
  EXPECT_EQ(rect.width, 40);
  EXPECT_EQ(rect.height, 100);
}

TEST(Rotation, LeavesTheBoxOfAnAngleThatSwapsNothing) {
  FRECT rect{10, 20, 100, 40};
  object::GetShapeBoundRect(180, rect);
  EXPECT_EQ(rect.left, 10);
  EXPECT_EQ(rect.height, 40);
}

TEST(Rotation, TakesEachStepInSinglePrecision) {
  FRECT rect{16777216, 0, 1, 3};
  object::GetShapeBoundRect(90, rect);
  EXPECT_EQ(rect.left, 16777214) << "the half of the sum is lost";
}

// Points.

TEST(Points, Of16BitsAreReadWithoutSign) {
  const Bytes bytes = {1, 0, 0xFF, 0xFF, 2, 0x80, 3, 0};
  tagPOINT points[2];
  GPoint4ToPoint(viewOf(bytes), points, 2);
  EXPECT_EQ(points[0].x, 1);
  EXPECT_EQ(points[0].y, 0xFFFF);
  EXPECT_EQ(points[1].x, 0x8002);
}

TEST(Points, Of32BitsAreSigned) {
  const Bytes bytes = ByteWriter().u32(0xFFFFFFFF).u32(7).take();
  tagPOINT points[1];
  GPoint8ToPoint(viewOf(bytes), points, 1);
  EXPECT_EQ(points[0].x, -1);
  EXPECT_EQ(points[0].y, 7);
}

TEST(Points, ThatAreMissingAreZero) {
  const Bytes bytes = {1, 0, 2};
  tagPOINT points[2] = {{9, 9}, {9, 9}};
  GPoint4ToPoint(viewOf(bytes), points, 2);
  EXPECT_EQ(points[0].y, 2);
  EXPECT_EQ(points[1].x, 0);
}

TEST(Values, AreReadAtAnyAddress) {
  const Bytes bytes = {9, 0x78, 0x56, 0x34, 0x12};
  EXPECT_EQ(GetValue<uint32_t>(bytes.data() + 1), 0x12345678u);
}

// Bitmaps.

int coloursOf(uint16_t bits, uint32_t used) {
  tagBITMAPINFOHEADER header{};
  header.biBitCount = bits;
  header.biClrUsed = used;
  return object::DIBNumColors(&header);
}

TEST(BitmapColours, AreThoseThatTheHeaderCounts) {
  EXPECT_EQ(coloursOf(8, 16), 16);
  EXPECT_EQ(coloursOf(24, 5), 5);
}

TEST(BitmapColours, AreAllOfAPaletteByDefault) {
  EXPECT_EQ(coloursOf(1, 0), 2);
  EXPECT_EQ(coloursOf(4, 0), 16);
  EXPECT_EQ(coloursOf(8, 0), 256);
}

TEST(BitmapColours, AreNoneWithoutAPalette) {
  EXPECT_EQ(coloursOf(24, 0), 0);
  EXPECT_EQ(coloursOf(9, 0), 0);
  EXPECT_EQ(coloursOf(10, 0), 0);
  EXPECT_EQ(coloursOf(0xFFFF, 0), 0);
}

// Colours.

std::string colour(uint32_t value) {
  NumberText text;
  text.append("before");
  object::GetColorFormat(value, &text);
  return text.c_str();
}

TEST(ColourFormat, WritesADirectColour) {
  EXPECT_EQ(colour(0x00112233), "#332211");
  EXPECT_EQ(colour(0xFE112233), "#332211");
  EXPECT_EQ(colour(0x00ABCDEF), "#EFCDAB");
}

TEST(ColourFormat, LooksUpThePalette) {
  EXPECT_EQ(colour(0x08000000), "#000000");
  EXPECT_EQ(colour(0x08000002), "#FF0000");
  EXPECT_EQ(colour(0x0800000A), "#FF0000") << "the first eight come twice";
  EXPECT_EQ(colour(0x08000018), "#9999FF");
  EXPECT_EQ(colour(0x08000027), "#0000FF");
  EXPECT_EQ(colour(0x08000034), "#FF9900");
  EXPECT_EQ(colour(0x0800003F), "#333333");
}

TEST(ColourFormat, NamesThreeSystemColours) {
  EXPECT_EQ(colour(0x08000040), "windowText [64]");
  EXPECT_EQ(colour(0x08000041), "window [65]");
  EXPECT_EQ(colour(0x08000050), "infoBackground [80]");
}

TEST(ColourFormat, HasNoTextForOtherIndexes) {
  EXPECT_EQ(colour(0x08000042), "");
  EXPECT_EQ(colour(0x08FFFFFF), "");
}

TEST(ColourFormat, WritesAShadowsAddition) {
  EXPECT_EQ(colour(0x10FF0102), "shadow add(255)");
  EXPECT_EQ(colour(0x10000000), "shadow add(0)");
}

TEST(ColourFormat, HasNoTextForOtherKinds) {
  for (const uint32_t kind : {0x01, 0x02, 0x04, 0x09, 0x18, 0xFF}) EXPECT_EQ(colour(kind << 24 | 5), "");
}

TEST(ColourFormat, NeedsNoText) {
  EXPECT_EQ(object::GetColorFormat(0x00112233, nullptr), 0x112233u);
}

}  // namespace

#include <gtest/gtest.h>

#include "base/fixed_point.h"
#include "drawing/colour_format.h"
#include "drawing/shape_geometry.h"
#include "drawing/unit_switch.h"

namespace {

std::string colour(uint32_t value) {
  NumberText text;
  object::GetColorFormat(value, &text);
  return text.c_str();
}

}  // namespace

TEST(FixedPoint, DividesTheFractionBy65535) {
  EXPECT_EQ(FixNumConv(static_cast<int>(0xFFFF0000)), -1.0f);
  EXPECT_EQ(FixNumConv(0x8000), 0.50000763f);
  EXPECT_EQ(FixNumConv(0x0001FFFF), 2.0f);
}

TEST(UnitSwitch, ConvertsLengths) {
  EXPECT_EQ(UnitSwitch::Twip2Pt(30), 1.5);
  EXPECT_EQ(UnitSwitch::EMU2Pt(25400), 2);
  EXPECT_EQ(UnitSwitch::Pt2Pixel(72), 96);
}

TEST(ShapeBox, IsTurnedOnItsSideByTheAnglesAround90) {
  for (const int angle : {45, -45, 134, -134, 225, 314, -225, -314, 450}) {
    EXPECT_TRUE(object::IsChangeRect(angle)) << angle;
  }
  for (const int angle : {0, 44, -44, 135, -135, 224, 315, -315, 360}) {
    EXPECT_FALSE(object::IsChangeRect(angle)) << angle;
  }
}

TEST(ShapeBox, IsTurnedAboutItsCentre) {
  FRECT box{10, 20, 100, 40};
  object::GetShapeBoundRect(90, box);
  EXPECT_EQ(box.left, 40);
  EXPECT_EQ(box.top, -10);
  EXPECT_EQ(box.width, 40);
  EXPECT_EQ(box.height, 100);
}

TEST(Points, Of16BitsAreReadWithoutSign) {
  const uint8_t bytes[] = {0xFF, 0xFF, 1, 0, 2, 0, 0, 0x80};
  tagPOINT points[3];
  GPoint4ToPoint(ByteView(bytes, sizeof(bytes)), points, 3);
  EXPECT_EQ(points[0].x, 0xFFFF);
  EXPECT_EQ(points[1].y, 0x8000);
  EXPECT_EQ(points[2].x, 0);
}

TEST(Points, Of32BitsAreReadWithSign) {
  const uint8_t bytes[] = {0xFF, 0xFF, 0xFF, 0xFF, 1, 0, 0, 0};
  tagPOINT point;
  GPoint8ToPoint(ByteView(bytes, sizeof(bytes)), &point, 1);
  EXPECT_EQ(point.x, -1);
  EXPECT_EQ(point.y, 1);
}

TEST(Bitmap, HasThePaletteThatItDeclaresOrThatItsDepthNeeds) {
  tagBITMAPINFOHEADER header{};
  header.biBitCount = 8;
  EXPECT_EQ(object::DIBNumColors(&header), 256);
  header.biBitCount = 9;
  EXPECT_EQ(object::DIBNumColors(&header), 0);
  header.biBitCount = 24;
  EXPECT_EQ(object::DIBNumColors(&header), 0);
  header.biClrUsed = 7;
  EXPECT_EQ(object::DIBNumColors(&header), 7);
}

TEST(ColourFormat, HasRedInTheLowByte) {
  EXPECT_EQ(colour(0x00112233), "#332211");
  EXPECT_EQ(colour(0xFE0000FF), "#FF0000");
}

TEST(ColourFormat, HasThePalette) {
  const char* const expected =
      "000000 FFFFFF FF0000 00FF00 0000FF FFFF00 FF00FF 00FFFF 000000 FFFFFF FF0000 00FF00 0000FF FFFF00 "
      "FF00FF 00FFFF "
      "800000 008000 000080 808000 800080 008080 C0C0C0 808080 9999FF 993366 FFFFCC CCFFFF 660066 FF8080 "
      "0066CC CCCCFF "
      "000080 FF00FF FFFF00 00FFFF 800080 800000 008080 0000FF 00CCFF CCFFFF CCFFCC FFFF99 99CCFF FF99CC "
      "CC99FF FFCC99 "
      "3366FF 33CCCC 99CC00 FFCC00 FF9900 FF6600 666699 969696 003366 339966 003300 333300 993300 993366 "
      "333399 333333 ";
  std::string all;
  for (uint32_t i = 0; i < 64; ++i) all += colour(0x08000000 | i).substr(1) + " ";
  EXPECT_EQ(all, expected);
}

TEST(ColourFormat, NamesSystemColoursAndShadows) {
  EXPECT_EQ(colour(0x08000040), "windowText [64]");
  EXPECT_EQ(colour(0x08000041), "window [65]");
  EXPECT_EQ(colour(0x08000050), "infoBackground [80]");
  EXPECT_EQ(colour(0x10C8FFFF), "shadow add(200)");
}

TEST(ColourFormat, IsEmptyForOthers) {
  for (const uint32_t value : {0x08000042u, 0x08FFFFFFu, 0x01000001u, 0x02112233u, 0xFF000000u}) {
    EXPECT_EQ(colour(value), "");
  }
  EXPECT_EQ(object::GetColorFormat(0x00112233, nullptr), 0x112233u);
}

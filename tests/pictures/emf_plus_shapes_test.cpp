// Shapes that EMF+ fills and draws.

#include <gtest/gtest.h>

#include "support/emf_plus_writer.h"

namespace {

using namespace support::emf_plus;
using support::Bytes;

constexpr uint16_t kColour = 0x8000, kCompressed = 0x4000, kOption = 0x2000, kRelative = 0x0800;
constexpr uint32_t kRed = 0xFFFF0000;

/// A record that fills with red.
Records filled(uint16_t type, uint16_t flags, const Fields& data) {
  return Records().add(type, kColour | flags, Fields().u32(kRed).bytes(data));
}

/// A record that draws with pen 3, which is 2 wide.
Records drawn(uint16_t type, uint16_t flags, const Fields& data) {
  return Records().object(kPen, 3, pen(2)).add(type, flags | 3, data);
}

std::string d(const Records& records) {
  const Drawn picture = draw(records);
  EXPECT_TRUE(picture.isWhole);
  EXPECT_EQ(picture.count("path"), 1U);
  return picture.element("path")["d"];
}

TEST(EmfPlusShapes, FillsBoxesOfRealAndOfShortNumbers) {
  const Drawn real = draw(filled(0x400A, 0, Fields().u32(2).reals({1, 2, 10, 20, 50, 60, 5, 5})));
  EXPECT_EQ(real.element("path")["d"], "M1 2l10 0 0 20-10 0zM50 60l5 0 0 5-5 0z");
  EXPECT_EQ(real.element("path")["fill"], "#f00");
  EXPECT_EQ(real.element("path")["stroke"], "");
  EXPECT_EQ(d(filled(0x400A, kCompressed, Fields().u32(1).shorts({-1, 2, 10, 20}))), "M-1 2l10 0 0 20-10 0z");
}

TEST(EmfPlusShapes, DrawsBoxes) {
  const Drawn picture = draw(drawn(0x400B, 0, Fields().u32(1).reals({1, 2, 10, 20})));
  EXPECT_EQ(picture.element("path")["d"], "M1 2l10 0 0 20-10 0z");
  EXPECT_EQ(picture.element("path")["fill"], "none");
  EXPECT_EQ(picture.element("path")["stroke"], "#000");
  EXPECT_EQ(picture.element("path")["stroke-width"], "2");
}

TEST(EmfPlusShapes, FillsWithABrushOfTheTable) {
  const Drawn picture = draw(Records()
                                 .object(kBrush, 7, solidBrush(0x80123456))
                                 .add(0x400E, 0, Fields().u32(7).reals({0, 0, 10, 10})));
  EXPECT_EQ(picture.element("path")["fill"], "#123456");
  EXPECT_EQ(picture.element("path")["fill-opacity"], ".502");
}

TEST(EmfPlusShapes, FillsPolygonsByTurns) {
  const Drawn picture = draw(filled(0x400C, 0, Fields().u32(3).reals({0, 0, 10, 0, 10, 10})));
  EXPECT_EQ(picture.element("path")["d"], "M0 0l10 0 0 10z");
  EXPECT_EQ(picture.element("path")["fill-rule"], "evenodd");
}

TEST(EmfPlusShapes, ReadsRelativePointsOfAByteAndOfTwo) {
  // 10, 20 then +63, -64 of a byte, and then -200, 300 of two.
  const Fields points = Fields().u32(3).u8(10).u8(20).u8(63).u8(64).u8(0xFF).u8(0x38).u8(0x81).u8(0x2C);
  EXPECT_EQ(d(filled(0x400C, kRelative, points)), "M10 20l63-64-200 300z");
}

TEST(EmfPlusShapes, DrawsLinesOpenAndClosed) {
  const Fields points = Fields().u32(3).shorts({0, 0, 10, 0, 10, 10});
  EXPECT_EQ(d(drawn(0x400D, kCompressed, points)), "M0 0l10 0 0 10");
  EXPECT_EQ(d(drawn(0x400D, kCompressed | kOption, points)), "M0 0l10 0 0 10z");
}

TEST(EmfPlusShapes, EllipsesAreFourCurves) {
  EXPECT_EQ(d(filled(0x400E, 0, Fields().reals({10, 10, 20, 20}))),
            "M30 20c0 6-4 10-10 10-6 0-10-4-10-10 0-6 4-10 10-10 6 0 10 4 10 10z");
  EXPECT_EQ(draw(drawn(0x400F, kCompressed, Fields().shorts({10, 10, 20, 20}))).element("path")["fill"],
            "none");
}

TEST(EmfPlusShapes, PiesHaveACornerInTheirCentreAndArcsNone) {
  const Fields quarter = Fields().reals({0, 90, 0, 0, 20, 20});
  EXPECT_EQ(d(filled(0x4010, 0, quarter)), "M10 10l10 0c0 6-4 10-10 10z");
  EXPECT_EQ(d(drawn(0x4011, 0, quarter)), "M10 10l10 0c0 6-4 10-10 10z");
  EXPECT_EQ(d(drawn(0x4012, 0, quarter)), "M20 10c0 6-4 10-10 10");
}

TEST(EmfPlusShapes, AnglesAreThoseOfRays) {
  // A ray of 45 degrees through a flat ellipse leaves it where x is y.
  EXPECT_EQ(d(drawn(0x4012, 0, Fields().reals({45, 90, -40, -30, 80, 60}))).substr(0, 6), "M24 24");
}

TEST(EmfPlusShapes, CurvesGoThroughTheirPoints) {
  const Fields points = Fields().u32(3).reals({0, 0, 30, 0, 30, 30});
  EXPECT_EQ(d(drawn(0x4018, 0, Fields().reals({0.6F}).u32(0).u32(2).bytes(points))),
            "M0 0c6 0 24-6 30 0 6 6 0 24 0 30");
  EXPECT_EQ(d(drawn(0x4018, 0, Fields().reals({0.6F}).u32(1).u32(1).bytes(points))), "M30 0c6 6 0 24 0 30");
  EXPECT_EQ(d(drawn(0x4017, 0, Fields().reals({0}).bytes(points))),
            "M0 0c0 0 30 0 30 0 0 0 0 30 0 30 0 0-30-30-30-30z");
  const Drawn filledOne = draw(filled(0x4016, kOption, Fields().reals({0}).bytes(points)));
  EXPECT_EQ(filledOne.element("path")["d"], "M0 0c0 0 30 0 30 0 0 0 0 30 0 30 0 0-30-30-30-30z");
  EXPECT_EQ(filledOne.element("path")["fill-rule"], "");
}

TEST(EmfPlusShapes, DrawsBeziers) {
  EXPECT_EQ(d(drawn(0x4019, 0, Fields().u32(4).reals({0, 0, 1, 2, 3, 4, 5, 6}))), "M0 0c1 2 3 4 5 6");
}

TEST(EmfPlusShapes, PathsHaveFiguresOfLinesAndCurves) {
  const Bytes figures = path({0, 0, 10, 0, 10, 10, 20, 20, 25, 20, 30, 25, 30, 30}, {0, 1, 0x81, 0, 3, 3, 3});
  const Records records = Records().object(kPath, 5, figures).object(kPen, 6, pen(1));
  EXPECT_EQ(d(Records(records).add(0x4014, kColour | 5, Fields().u32(kRed))),
            "M0 0l10 0 0 10zM20 20c5 0 10 5 10 10");
  EXPECT_EQ(d(Records(records).add(0x4015, 5, Fields().u32(6))), "M0 0l10 0 0 10zM20 20c5 0 10 5 10 10");
}

TEST(EmfPlusShapes, PathsMayHaveShortPointsAndTypesInRuns) {
  const Bytes plain =
      Fields().u32(kVersion).u32(3).u32(kCompressed).shorts({0, 0, 9, 0, 9, 9}).u8(0).u8(1).u8(1);
  EXPECT_EQ(d(Records().object(kPath, 1, plain).add(0x4014, kColour | 1, Fields().u32(kRed))),
            "M0 0l9 0 0 9");
  const Fields head = Fields().u32(kVersion).u32(3).u32(kRelative);
  const Bytes runs = Fields(head).u8(1).u8(1).u8(9).u8(0).u8(0).u8(9).u8(0x41).u8(0).u8(0x42).u8(1);
  EXPECT_EQ(d(Records().object(kPath, 1, runs).add(0x4014, kColour | 1, Fields().u32(kRed))), "M1 1l9 0 0 9");
}

TEST(EmfPlusShapes, ClearFillsAllThatTheClipLeaves) {
  EXPECT_EQ(d(Records().add(0x4009, 0, Fields().u32(kRed))), "M0 0h100v100h-100z");
  const Drawn clipped =
      draw(Records().add(0x4032, 0, Fields().reals({10, 10, 5, 5})).add(0x4009, 0, Fields().u32(kRed)));
  EXPECT_EQ(clipped.elements.at(2)["clip-path"], "url(#c1)");
}

TEST(EmfPlusShapes, DrawsNothingWithoutItsPenOrBrush) {
  for (const uint16_t type : {0x400B, 0x400D, 0x400F, 0x4011, 0x4012, 0x4017, 0x4018, 0x4019}) {
    const Drawn picture = draw(Records().add(type, 1, Fields().u32(3).reals({0, 0, 9, 9, 5, 9})));
    EXPECT_EQ(picture.elements.size(), 0U) << type;
    EXPECT_FALSE(picture.isWhole) << type;
  }
  const Drawn picture = draw(Records().add(0x400E, 0, Fields().u32(1).reals({0, 0, 9, 9})));
  EXPECT_EQ(picture.elements.size(), 0U);
  EXPECT_FALSE(picture.isWhole);
}

}  // namespace

// Brushes and pens of EMF+.

#include <gtest/gtest.h>

#include "support/emf_plus_writer.h"

namespace {

using namespace support::emf_plus;
using support::Bytes;

constexpr uint32_t kRed = 0xFFFF0000, kBlue = 0xFF0000FF;

/// A box filled with a brush.
Drawn brushed(const Bytes& brush, const Records& before = {}) {
  return draw(Records(before)
                  .object(kBrush, 1, brush)
                  .add(0x400A, 0, Fields().u32(1).u32(1).reals({10, 10, 20, 20})));
}

/// A line drawn with a pen, from 10,50 to 90,50.
Drawn lined(const Bytes& penObject) {
  return draw(Records().object(kPen, 1, penObject).add(0x400D, 1, Fields().u32(2).reals({10, 50, 90, 50})));
}

Fields linear(uint32_t flags, uint32_t wrapMode) {
  return Fields()
      .u32(kVersion)
      .u32(4)
      .u32(flags)
      .u32(wrapMode)
      .reals({10, 10, 20, 20})
      .u32(kRed)
      .u32(kBlue)
      .u32(0)
      .u32(0);
}

Fields pathGradient(uint32_t flags) {
  return Fields().u32(kVersion).u32(3).u32(flags).u32(0).u32(kRed).reals({20, 20}).u32(1).u32(kBlue);
}

TEST(EmfPlusBrushes, HatchesAreTilesOfPixels) {
  const Drawn picture = brushed(Fields().u32(kVersion).u32(1).u32(0).u32(kRed).u32(0x00FFFFFF));
  const Element& tile = picture.element("pattern");
  EXPECT_EQ(tile["width"], "8");
  EXPECT_EQ(tile["height"], "8");
  EXPECT_EQ(picture.element("path", 0)["fill-opacity"], "0");
  EXPECT_EQ(picture.element("path", 1)["d"], "M0 0h8v1h-8z");
  EXPECT_EQ(picture.element("path", 1)["fill"], "#ff0000");
  EXPECT_EQ(picture.element("path", 2)["fill"], "url(#p1)");
}

TEST(EmfPlusBrushes, AllHatchesDiffer) {
  std::map<std::string, uint32_t> seen;
  for (uint32_t style = 0; style < 53; ++style) {
    const Drawn picture = brushed(Fields().u32(kVersion).u32(1).u32(style).u32(kRed).u32(kBlue));
    const std::string path = picture.element("path", 1)["d"];
    EXPECT_TRUE(seen.emplace(path, style).second) << style << " and " << seen[path];
  }
  EXPECT_EQ(brushed(Fields().u32(kVersion).u32(1).u32(53).u32(kRed).u32(kBlue)).element("path")["fill"],
            "#f00");
}

TEST(EmfPlusBrushes, LinearGradientsGoFromLeftToRight) {
  const Drawn picture = brushed(linear(0, 0));
  const Element& gradient = picture.element("linearGradient");
  EXPECT_EQ(gradient["x1"], "10");
  EXPECT_EQ(gradient["y1"], "10");
  EXPECT_EQ(gradient["x2"], "30");
  EXPECT_EQ(gradient["y2"], "10");
  EXPECT_EQ(gradient["spreadMethod"], "repeat");
  EXPECT_EQ(picture.element("stop", 0)["stop-color"], "#f00");
  EXPECT_EQ(picture.element("stop", 1)["stop-color"], "#00f");
  EXPECT_EQ(picture.element("path")["fill"], "url(#p1)");
  EXPECT_EQ(brushed(linear(0, 1)).element("linearGradient")["spreadMethod"], "reflect");
  EXPECT_EQ(brushed(linear(0, 4)).element("linearGradient")["spreadMethod"], "");
}

TEST(EmfPlusBrushes, ATurnedGradientGoesDown) {
  // A quarter of a turn about 20,20.
  const Drawn picture = brushed(linear(2, 0).reals({0, 1, -1, 0, 40, 0}));
  const Element& gradient = picture.element("linearGradient");
  EXPECT_EQ(gradient["x1"], "30");
  EXPECT_EQ(gradient["y1"], "10");
  EXPECT_EQ(gradient["x2"], "30");
  EXPECT_EQ(gradient["y2"], "30");
}

TEST(EmfPlusBrushes, GradientsMayHaveColoursOfTheirOwnOrFactors) {
  const Drawn colours =
      brushed(linear(4, 0).u32(3).reals({0, 0.25F, 1}).u32(kRed).u32(0x8000FF00).u32(kBlue));
  EXPECT_EQ(colours.count("stop"), 3U);
  EXPECT_EQ(colours.element("stop", 1)["offset"], ".25");
  EXPECT_EQ(colours.element("stop", 1)["stop-color"], "#0f0");
  EXPECT_EQ(colours.element("stop", 1)["stop-opacity"], ".502");
  const Drawn factors = brushed(linear(8, 0).u32(3).reals({0, 0.5F, 1}).reals({0, 0.2F, 1}));
  EXPECT_EQ(factors.element("stop", 1)["stop-color"], "#c03");
  const Drawn both = brushed(linear(0x18, 0).u32(2).reals({0, 1, 1, 0}).u32(2).reals({0, 1, 0.2F, 1}));
  EXPECT_EQ(both.element("stop", 0)["stop-color"], "#c03");
}

TEST(EmfPlusBrushes, PathGradientsGoFromTheCentreOutwards) {
  const Drawn picture = brushed(pathGradient(0).u32(4).reals({10, 15, 30, 15, 30, 25, 10, 25}));
  const Element& gradient = picture.element("radialGradient");
  EXPECT_EQ(gradient["r"], "10");
  EXPECT_EQ(gradient["gradientTransform"], "matrix(1 0 0 .5 20 20)");
  EXPECT_EQ(gradient["fx"], "0");
  EXPECT_EQ(picture.element("stop", 0)["stop-color"], "#f00");
  EXPECT_EQ(picture.element("stop", 1)["stop-color"], "#00f");
}

TEST(EmfPlusBrushes, PathGradientsMayHaveAPathAndAFocus) {
  const Bytes outline = path({10, 10, 30, 10, 30, 30, 10, 30}, {0, 1, 1, 0x81});
  const Drawn picture = brushed(pathGradient(0x41).counted(outline).u32(2).reals({0.5F, 0.5F}));
  EXPECT_EQ(picture.element("radialGradient")["r"], "10");
  EXPECT_EQ(picture.element("stop", 0)["offset"], ".5");
  EXPECT_EQ(picture.element("stop", 1)["offset"], "1");
}

TEST(EmfPlusBrushes, TexturesAreTilesWithAnImage) {
  const Bytes pixels = pixelImage(2, 1, 8, 0x0026200A, Fields().u32(kRed).u32(kBlue));
  const Drawn picture =
      brushed(Fields().u32(kVersion).u32(2).u32(2).u32(0).reals({3, 0, 0, 3, 5, 5}).bytes(pixels));
  const Element& tile = picture.element("pattern");
  EXPECT_EQ(tile["patternTransform"], "matrix(3 0 0 3 5 5)");
  EXPECT_EQ(tile["width"], "2");
  EXPECT_EQ(picture.element("image")["href"].substr(0, 32), "data:image/png;base64,iVBORw0KGg");
  EXPECT_TRUE(picture.isWhole);
  const Drawn none = brushed(Fields().u32(kVersion).u32(2).u32(0).u32(0));
  EXPECT_FALSE(none.isWhole);
  EXPECT_EQ(none.elements.size(), 0U);
}

TEST(EmfPlusBrushes, ABrushThatIsUsedAgainIsWrittenOnce) {
  const Records records = Records()
                              .object(kBrush, 1, linear(0, 0))
                              .add(0x400E, 0, Fields().u32(1).reals({10, 10, 5, 5}))
                              .add(0x400E, 0, Fields().u32(1).reals({20, 10, 5, 5}));
  EXPECT_EQ(draw(records).count("linearGradient"), 1U);
  const Records moved = Records(records)
                            .add(0x402D, 0, Fields().reals({5, 5}))
                            .add(0x400E, 0, Fields().u32(1).reals({20, 10, 5, 5}));
  EXPECT_EQ(draw(moved).count("linearGradient"), 2U);
}

TEST(EmfPlusPens, AreAtLeastAPixelWide) {
  EXPECT_EQ(lined(pen(0)).element("path")["stroke-width"], "1");
  EXPECT_EQ(lined(pen(3)).element("path")["stroke-width"], "3");
}

TEST(EmfPlusPens, HaveWidthsInUnits) {
  const Bytes points = Fields().u32(kVersion).u32(0).u32(0).u32(3).reals({6}).bytes(solidBrush(kRed));
  EXPECT_EQ(lined(points).element("path")["stroke-width"], "8");
  EXPECT_EQ(lined(pen(3, kRed, 1, Fields().reals({2, 0, 0, 2, 0, 0}))).element("path")["stroke-width"], "6");
}

TEST(EmfPlusPens, HaveCapsAndJoins) {
  const Drawn flat = lined(pen(2));
  EXPECT_EQ(flat.element("path")["stroke-linecap"], "butt");
  EXPECT_EQ(flat.element("path")["stroke-linejoin"], "miter");
  const Drawn round = lined(pen(2, kRed, 0x0E, Fields().u32(2).u32(2).u32(2)));
  EXPECT_EQ(round.element("path")["stroke-linecap"], "");
  EXPECT_EQ(round.element("path")["stroke-linejoin"], "");
  const Drawn square = lined(pen(2, kRed, 0x1C, Fields().u32(1).u32(0).reals({3})));
  EXPECT_EQ(square.element("path")["stroke-linecap"], "square");
  EXPECT_EQ(square.element("path")["stroke-miterlimit"], "3");
}

TEST(EmfPlusPens, HaveDashesInWidths) {
  EXPECT_EQ(lined(pen(2, kRed, 0x20, Fields().u32(3))).element("path")["stroke-dasharray"], "6 2 2 2");
  const Drawn own = lined(pen(2, kRed, 0x1E0, Fields().u32(5).u32(2).reals({1}).u32(2).reals({4, 5})));
  EXPECT_EQ(own.element("path")["stroke-dasharray"], "8 10");
  EXPECT_EQ(own.element("path")["stroke-dashoffset"], "2");
  EXPECT_EQ(own.element("path")["stroke-linecap"], "");
}

TEST(EmfPlusPens, ReadTheirBrushBehindAllFields) {
  const Fields fields = Fields().u32(0).u32(2).reals({0, 1}).counted({}).counted({});
  EXPECT_EQ(lined(pen(2, kRed, 0x1E00, fields)).element("path")["stroke"], "#f00");
}

TEST(EmfPlusPens, DrawWithGradients) {
  const Bytes gradient = Fields().u32(kVersion).u32(0).u32(0).u32(0).reals({2}).bytes(linear(0, 0));
  EXPECT_EQ(lined(gradient).element("path")["stroke"], "url(#p1)");
}

TEST(EmfPlusPens, ArrowsStandAtTheEnds) {
  const Drawn picture = lined(pen(4, kRed, 4, Fields().u32(0x14)));
  EXPECT_EQ(picture.count("path"), 2U);
  EXPECT_EQ(picture.element("path", 0)["d"], "M10 50l76 0");
  EXPECT_EQ(picture.element("path", 1)["d"], "M83 46l7 4-7 4");
  EXPECT_EQ(picture.element("path", 1)["fill"], "#f00");
}

TEST(EmfPlusPens, OtherShapesStandAtTheBeginnings) {
  EXPECT_EQ(lined(pen(4, kRed, 2, Fields().u32(0x11))).element("path", 1)["d"], "M13 53l-6 0 0-6 6 0");
  EXPECT_EQ(lined(pen(4, kRed, 2, Fields().u32(0x13))).element("path", 1)["d"], "M14 50l-4 4-4-4 4-4");
  EXPECT_EQ(lined(pen(4, kRed, 2, Fields().u32(0x12))).element("path", 1)["d"].substr(0, 6), "M6 50c");
}

TEST(EmfPlusPens, CustomArrowsAreFilledOrOpen) {
  const auto arrow = [](uint32_t isFilled) {
    return Fields().u32(kVersion).u32(1).reals({2, 3, 0}).u32(isFilled).u32(0).u32(0).u32(0).reals(
        {10, 1, 0, 0, 0, 0});
  };
  const Drawn filled = lined(pen(4, kRed, 0x1000, Fields().counted(arrow(1))));
  EXPECT_EQ(filled.element("path", 0)["d"], "M10 50l74 0");
  EXPECT_EQ(filled.element("path", 1)["d"], "M78 46l12 4-12 4 0-4z");
  EXPECT_EQ(filled.element("path", 1)["fill"], "#f00");
  const Drawn open = lined(pen(4, kRed, 0x1000, Fields().counted(arrow(0))));
  EXPECT_EQ(open.element("path", 1)["d"], "M78 46l12 4-12 4");
  EXPECT_EQ(open.element("path", 1)["fill"], "none");
  EXPECT_EQ(open.element("path", 1)["stroke-width"], "4");
}

TEST(EmfPlusPens, CustomPathsStandAtTheEnds) {
  const Bytes triangle = path({-1, 0, 1, 0, 0, 2}, {0, 1, 0x81});
  const Bytes cap = Fields()
                        .u32(kVersion)
                        .u32(0)
                        .u32(1)
                        .u32(0)
                        .reals({0})
                        .u32(0)
                        .u32(0)
                        .u32(0)
                        .reals({10, 2, 0, 0, 0, 0})
                        .counted(triangle);
  const Drawn picture = lined(pen(2, kRed, 0x1000, Fields().counted(cap)));
  EXPECT_EQ(picture.element("path", 1)["d"], "M90 46l0 8 8-4z");
  EXPECT_EQ(picture.element("path", 1)["fill"], "#f00");
}

TEST(EmfPlusPens, ClosedFiguresHaveNoEnds) {
  const Drawn picture = draw(Records()
                                 .object(kPen, 1, pen(4, kRed, 6, Fields().u32(0x14).u32(0x14)))
                                 .add(0x400B, 1, Fields().u32(1).reals({10, 10, 20, 20})));
  EXPECT_EQ(picture.count("path"), 1U);
}

}  // namespace

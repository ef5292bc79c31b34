#include "formats/html/shape_svg.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace pagerex;

namespace {

constexpr int kWidth = 2160, kHeight = 1080;  // a tenth and a twentieth of the space of outlines

ShapeFacts shapeOf(uint16_t type) {
  ShapeFacts shape;
  shape.geometry.type = type;
  shape.fill.kind = ShapeFill::Kind::kSolid;
  shape.fill.rgb = 0x112233;
  shape.line.isThere = true;
  shape.line.width = 12700;
  return shape;
}

std::string svgOf(const ShapeFacts& shape, int width = kWidth, int height = kHeight,
                  std::string_view fillAddress = {}) {
  SvgIds ids;
  std::string svg;
  EXPECT_TRUE(appendShapeSvg(svg, shape, width, height, ids, fillAddress));
  return svg;
}

size_t countOf(const std::string& text, std::string_view part) {
  size_t count = 0;
  for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

/// Each element ends, in the right order.
bool isBalanced(const std::string& svg) {
  std::vector<std::string> open;
  for (size_t at = svg.find('<'); at != std::string::npos; at = svg.find('<', at + 1)) {
    const size_t end = svg.find('>', at);
    if (end == std::string::npos) return false;
    const bool isEnd = svg[at + 1] == '/';
    const size_t start = at + (isEnd ? 2 : 1);
    const std::string name = svg.substr(start, svg.find_first_of(" />", start) - start);
    if (isEnd) {
      if (open.empty() || open.back() != name) return false;
      open.pop_back();
    } else if (svg[end - 1] != '/') {
      open.push_back(name);
    }
  }
  return open.empty();
}

/// The value of `d` of the first path.
std::string pathOf(const ShapeFacts& shape) {
  const std::string svg = svgOf(shape);
  const size_t start = svg.find(" d=\"") + 4;
  return svg.substr(start, svg.find('"', start) - start);
}

std::string freeform(const std::vector<ShapePoint>& vertices, const std::vector<uint16_t>& segments) {
  ShapeFacts shape = shapeOf(0);
  shape.geometry.right = kWidth;
  shape.geometry.bottom = kHeight;
  shape.geometry.vertices = vertices;
  shape.geometry.segments = segments;
  return pathOf(shape);
}

constexpr uint16_t kMove = 0x4000, kLine = 0x0000, kCurve = 0x2000, kClose = 0x6001, kEnd = 0x8000;
constexpr uint16_t escape(unsigned kind, unsigned points) {
  return static_cast<uint16_t>(0xA000 | kind << 8 | points);
}

}  // namespace

// The whole

TEST(ShapeSvg, ARectangleIsAPath) {
  EXPECT_EQ(svgOf(shapeOf(1)),
            "<svg class=\"g\" width=\"144\" height=\"72\" viewBox=\"0 0 2160 1080\" overflow=\"visible\" "
            "aria-hidden=\"true\"><g stroke=\"#000000\" stroke-width=\"20\" stroke-linejoin=\"round\">"
            "<path fill=\"#112233\" d=\"M0 0L2160 0 2160 1080 0 1080Z\"/></g></svg>");
}

TEST(ShapeSvg, UnknownShapesAreNotWritten) {
  SvgIds ids;
  std::string svg = "x";
  for (const uint16_t type : {0, 136, 203, 4095}) {
    EXPECT_FALSE(appendShapeSvg(svg, shapeOf(type), kWidth, kHeight, ids)) << type;
  }
  EXPECT_EQ(svg, "x");
}

TEST(ShapeSvg, AShapeThatIsNotSeenIsNothing) {
  ShapeFacts shape = shapeOf(1);
  shape.fill.kind = ShapeFill::Kind::kNone;
  shape.line.isThere = false;
  EXPECT_EQ(svgOf(shape), "");
}

TEST(ShapeSvg, ALineWithoutHeightHasAViewBox) {
  const std::string svg = svgOf(shapeOf(20), 2160, 0);
  EXPECT_NE(svg.find("viewBox=\"0 0 2160 15\""), std::string::npos) << svg;
  EXPECT_NE(svg.find("d=\"M0 0L2160 0\""), std::string::npos) << svg;
}

TEST(ShapeSvg, EveryKnownTypeIsWellFormedInAnySize) {
  unsigned known = 0;
  for (uint16_t type = 0; type < 210; ++type) {
    for (const int size : {0, 1, 3000, INT32_MAX}) {
      for (const int32_t adjustment : {INT32_MIN, 0, 8000, INT32_MAX}) {
        ShapeFacts shape = shapeOf(type);
        if (adjustment != 8000) shape.geometry.adjustments.fill(adjustment);
        shape.line.style = ShapeLine::Style::kTriple;
        shape.line.end.kind = Arrowhead::Kind::kTriangle;
        shape.shadow.isThere = true;
        SvgIds ids;
        std::string svg;
        if (!appendShapeSvg(svg, shape, size, 700, ids)) continue;
        ++known;
        EXPECT_TRUE(isBalanced(svg)) << type << ": " << svg;
        EXPECT_EQ(svg.find("nan"), std::string::npos) << type;
      }
    }
  }
  EXPECT_GT(known, 150u * 16 - 100);
}

TEST(ShapeSvg, NothingButPlainAttributesIsWritten) {
  ShapeFacts shape = shapeOf(1);
  shape.fill.kind = ShapeFill::Kind::kTexture;
  const std::string svg = svgOf(shape, kWidth, kHeight, "a&b\".png");
  EXPECT_NE(svg.find("<image href=\"a&amp;b&quot;.png\""), std::string::npos) << svg;
  for (const char* const part : {" style=", "<style", "<script", " on"}) {
    EXPECT_EQ(svg.find(part), std::string::npos) << part;
  }
}

// Turns

TEST(ShapeSvg, ShapesAreFlippedAndThenTurned) {
  ShapeFacts shape = shapeOf(1);
  shape.geometry.rotation = 30.25f;
  shape.geometry.flipsX = true;
  EXPECT_NE(svgOf(shape).find("transform=\"rotate(30.25 1080 540)translate(2160 0)scale(-1 1)\""),
            std::string::npos)
      << svgOf(shape);
}

TEST(ShapeSvg, TheShadowIsTurnedWhereItFalls) {
  ShapeFacts shape = shapeOf(1);
  shape.geometry.rotation = 90;
  shape.shadow = {true, 0x445566, 0.5, 12700, -12700};
  EXPECT_NE(svgOf(shape).find("<g transform=\"translate(20 -20)\" opacity=\".5\" fill=\"#445566\">"
                              "<g transform=\"rotate(90 1080 540)\" stroke=\"#445566\""),
            std::string::npos)
      << svgOf(shape);
}

// Lines

TEST(ShapeSvg, DashesAreAsLongAsTheLineIsWide) {
  ShapeFacts shape = shapeOf(1);
  shape.line.dash = 8;
  EXPECT_NE(svgOf(shape).find("stroke-dasharray=\"80 60 20 60\""), std::string::npos);
}

TEST(ShapeSvg, CapsAndCornersAreTheLines) {
  ShapeFacts shape = shapeOf(1);
  shape.line.join = ShapeLine::Join::kMiter;
  shape.line.cap = ShapeLine::Cap::kSquare;
  EXPECT_EQ(svgOf(shape).find("stroke-linejoin"), std::string::npos);
  EXPECT_NE(svgOf(shape).find("stroke-linecap=\"square\""), std::string::npos);
}

TEST(ShapeSvg, DoubleLinesAreMasked) {
  ShapeFacts shape = shapeOf(1);
  shape.line.style = ShapeLine::Style::kDouble;
  shape.line.width = 76200;
  const std::string svg = svgOf(shape);
  EXPECT_NE(svg.find("<mask id=\"g-1\""), std::string::npos) << svg;
  EXPECT_NE(svg.find("stroke=\"#000\" stroke-width=\"41\""), std::string::npos) << svg;
  EXPECT_NE(svg.find("mask=\"url(#g-1)\""), std::string::npos) << svg;
}

TEST(ShapeSvg, TheThickStrokeOfAnUnequalLineIsOutside) {
  ShapeFacts shape = shapeOf(20);
  shape.line.style = ShapeLine::Style::kThickThin;
  shape.line.width = 127000;
  EXPECT_NE(svgOf(shape, 2160, 0).find("stroke=\"#000\" stroke-width=\"40\"><path d=\"M0 40L2160 40\"/>"),
            std::string::npos)
      << svgOf(shape, 2160, 0);
}

TEST(ShapeSvg, ArrowheadsEndTheLineBeforeTheirTips) {
  ShapeFacts shape = shapeOf(20);
  shape.line.width = 25400;  // 40 twips: a head of 120 by 120
  shape.line.end.kind = Arrowhead::Kind::kTriangle;
  const std::string svg = svgOf(shape, 2160, 0);
  EXPECT_NE(svg.find("d=\"M0 0L2052 0\""), std::string::npos) << svg;
  EXPECT_NE(svg.find("<path d=\"M2160 0L2040 -60L2040 60Z\" stroke=\"none\" fill=\"#000000\"/>"),
            std::string::npos)
      << svg;
}

TEST(ShapeSvg, EachKindOfArrowheadIsAtBothEnds) {
  using Kind = Arrowhead::Kind;
  for (const Kind kind : {Kind::kTriangle, Kind::kStealth, Kind::kDiamond, Kind::kOval, Kind::kOpen}) {
    ShapeFacts shape = shapeOf(38);
    const size_t before = countOf(svgOf(shape), "<path") + countOf(svgOf(shape), "<ellipse");
    shape.line.start.kind = shape.line.end.kind = kind;
    EXPECT_EQ(countOf(svgOf(shape), "<path") + countOf(svgOf(shape), "<ellipse"), before + 2);
  }
}

TEST(ShapeSvg, ClosedOutlinesHaveNoArrowheads) {
  ShapeFacts shape = shapeOf(1);
  const std::string before = svgOf(shape);
  shape.line.start.kind = shape.line.end.kind = Arrowhead::Kind::kOval;
  EXPECT_EQ(svgOf(shape), before);
}

// Fills

TEST(ShapeSvg, OpacityIsWrittenWhereThereIsSome) {
  ShapeFacts shape = shapeOf(1);
  shape.fill.opacity = 0.25;
  shape.line.opacity = 0.125;
  EXPECT_NE(svgOf(shape).find("fill-opacity=\".25\""), std::string::npos);
  EXPECT_NE(svgOf(shape).find("stroke-opacity=\".125\""), std::string::npos);
}

TEST(ShapeSvg, GradientsRunFromBottomToTop) {
  ShapeFacts shape = shapeOf(1);
  shape.fill.kind = ShapeFill::Kind::kLinear;
  const std::string svg = svgOf(shape);
  EXPECT_NE(svg.find("<linearGradient id=\"g-1\" gradientUnits=\"userSpaceOnUse\" x1=\"1080\" y1=\"0\" "
                     "x2=\"1080\" y2=\"1080\"><stop offset=\"0\" stop-color=\"#ffffff\"/>"
                     "<stop offset=\"1\" stop-color=\"#112233\"/></linearGradient>"),
            std::string::npos)
      << svg;
  EXPECT_NE(svg.find("fill=\"url(#g-1)\""), std::string::npos) << svg;
}

TEST(ShapeSvg, TheFocusIsWhereTheSecondColourStands) {
  ShapeFacts shape = shapeOf(1);
  shape.fill.kind = ShapeFill::Kind::kLinear;
  shape.fill.focus = 50;
  EXPECT_NE(svgOf(shape).find("<stop offset=\"0\" stop-color=\"#112233\"/><stop offset=\".5\" "
                              "stop-color=\"#ffffff\"/><stop offset=\".5\" stop-color=\"#ffffff\"/>"
                              "<stop offset=\"1\" stop-color=\"#112233\"/>"),
            std::string::npos)
      << svgOf(shape);
  shape.fill.focus = -50;
  EXPECT_NE(svgOf(shape).find("<stop offset=\"0\" stop-color=\"#ffffff\"/><stop offset=\".5\" "
                              "stop-color=\"#112233\"/>"),
            std::string::npos)
      << svgOf(shape);
}

TEST(ShapeSvg, EachGradientHasItsOwnId) {
  ShapeFacts shape = shapeOf(1);
  shape.fill.kind = ShapeFill::Kind::kRadial;
  SvgIds ids;
  std::string svg;
  appendShapeSvg(svg, shape, kWidth, kHeight, ids);
  appendShapeSvg(svg, shape, kWidth, kHeight, ids);
  EXPECT_EQ(countOf(svg, "id=\"g-1\""), 1u);
  EXPECT_EQ(countOf(svg, "id=\"g-2\""), 1u);
  EXPECT_EQ(countOf(svg, "url(#g-2)"), 1u);
}

TEST(ShapeSvg, PatternsAreDrawnByPixels) {
  ShapeFacts shape = shapeOf(1);
  shape.fill.kind = ShapeFill::Kind::kPattern;
  shape.fill.pattern = {0x80, 0, 0, 0, 0, 0, 0, 0x01};
  EXPECT_NE(svgOf(shape).find("d=\"M0 0h15v15h-15ZM105 105h15v15h-15Z\""), std::string::npos) << svgOf(shape);
}

TEST(ShapeSvg, AFillThatCannotBeDrawnIsAColour) {
  ShapeFacts shape = shapeOf(1);
  shape.fill.kind = ShapeFill::Kind::kPicture;
  EXPECT_NE(svgOf(shape).find("fill=\"#112233\""), std::string::npos);
  shape.fill.kind = ShapeFill::Kind::kPattern;
  EXPECT_NE(svgOf(shape).find("fill=\"#889199\""), std::string::npos) << "half of each";
}

TEST(ShapeSvg, SidesOfABodyAreLighterAndDarker) {
  const std::string svg = svgOf(shapeOf(16));
  EXPECT_NE(svg.find("fill=\"#707a85\""), std::string::npos) << svg;
  EXPECT_NE(svg.find("fill=\"#0e1b29\""), std::string::npos) << svg;
}

// Outlines

TEST(ShapeSvg, AdjustmentsMoveTheOutline) {
  ShapeFacts shape = shapeOf(5);
  EXPECT_EQ(pathOf(shape), "M1080 0L2160 1080 0 1080Z");
  shape.geometry.adjustments[0] = 0;
  EXPECT_EQ(pathOf(shape), "M0 0L2160 1080 0 1080Z");
}

TEST(ShapeSvg, RoundCornersAreRoundWhateverTheShape) {
  ShapeFacts shape = shapeOf(2);
  shape.geometry.adjustments[0] = 5400;  // a quarter of the height, which is the lesser
  EXPECT_EQ(pathOf(shape).substr(0, 29), "M0 270C0 121 121 0 270 0L1890");
}

TEST(ShapeSvg, CalloutsPointAtTheirAdjustments) {
  ShapeFacts shape = shapeOf(61);
  EXPECT_NE(pathOf(shape).find(" 135 1296 "), std::string::npos) << pathOf(shape);
  shape.geometry.adjustments[0] = 30000;
  shape.geometry.adjustments[1] = 10800;
  EXPECT_NE(pathOf(shape).find(" 3000 540 "), std::string::npos) << pathOf(shape);
}

TEST(ShapeSvg, ArcsHaveTheirAngles) {
  ShapeFacts shape = shapeOf(19);
  shape.fill.kind = ShapeFill::Kind::kNone;
  EXPECT_EQ(pathOf(shape), "M0 0C1193 0 2160 484 2160 1080");
}

TEST(ShapeSvg, LeaderLinesAreOutsideTheBoxOfACallout) {
  const std::string svg = svgOf(shapeOf(47));
  EXPECT_NE(svg.find("fill=\"none\" d=\"M-180 203L-828 1215\""), std::string::npos) << svg;
}

// Freeforms

TEST(ShapeSvg, FreeformsFollowTheirSegments) {
  EXPECT_EQ(freeform({{0, 0}, {10, 0}, {10, 10}, {1, 2}, {3, 4}, {5, 6}},
                     {kMove, uint16_t{kLine | 2}, uint16_t{kCurve | 1}, kClose, kEnd}),
            "M0 0L10 0 10 10C1 2 3 4 5 6Z");
}

TEST(ShapeSvg, FreeformsHaveQuadrantsAndEllipses) {
  EXPECT_EQ(freeform({{0, 0}, {100, 100}, {200, 0}}, {kMove, escape(7, 2)}),
            "M0 0C55 0 100 45 100 100 100 45 145 0 200 0");
  EXPECT_EQ(freeform({{100, 100}, {100, 50}, {0, 90 << 16}}, {escape(2, 3)}),
            "M200 100C200 128 155 150 100 150");
  EXPECT_EQ(freeform({{0, 0}, {200, 100}, {200, 50}, {100, 100}}, {escape(6, 4)}),
            "M200 50C200 78 155 100 100 100");
  EXPECT_EQ(freeform({{0, 0}, {30, 0}, {30, 30}}, {kMove, escape(9, 2)}), "M0 0C20 0 30 10 30 30");
}

TEST(ShapeSvg, FreeformsWithoutSegmentsAreLinesOrCurves) {
  ShapeFacts shape = shapeOf(0);
  shape.geometry.vertices = {{0, 0}, {21600, 0}, {21600, 21600}, {0, 21600}};
  EXPECT_EQ(pathOf(shape), "M0 0L2160 0 2160 1080 0 1080Z");
  shape.geometry.pathKind = 2;
  EXPECT_EQ(pathOf(shape), "M0 0C2160 0 2160 1080 0 1080");
}

TEST(ShapeSvg, PartsOfAFreeformAreFilledOrNot) {
  ShapeFacts shape = shapeOf(0);
  shape.geometry.vertices = {{0, 0}, {9, 9}, {0, 0}, {9, 9}};
  shape.geometry.segments = {kMove, 1, escape(10, 0), kEnd, kMove, 1, escape(11, 0), kEnd};
  const std::string svg = svgOf(shape);
  EXPECT_EQ(countOf(svg, "<path"), 2u);
  EXPECT_EQ(countOf(svg, "<path fill=\"none\""), 1u);
  EXPECT_EQ(countOf(svg, "<path fill=\"#112233\" stroke=\"none\""), 1u);
}

TEST(ShapeSvg, GuidesOfAFreeformAreComputed) {
  ShapeFacts shape = shapeOf(0);
  shape.geometry.right = kWidth;
  shape.geometry.bottom = kHeight;
  shape.geometry.adjustments[0] = 40;
  shape.geometry.guides = {{0, {true, false, false}, {0x0147, 5, 2}},  // 40 + 5 - 2
                           {1, {true, false, false}, {0x0400, 2, 1}},  // twice that
                           {6, {false, true, true}, {-1, 0x0400, 0x0401}}};
  const auto guide = [](uint32_t i) { return static_cast<int32_t>(0x80000000 + i); };
  shape.geometry.vertices = {{0, 0}, {guide(0), guide(1)}, {guide(2), guide(77)}};
  EXPECT_EQ(pathOf(shape).substr(0, 11), "M0 0L43 86 ");
  EXPECT_EQ(pathOf(shape).substr(11, 3), "86 ");
}

TEST(ShapeSvg, SegmentsWithoutPointsEnd) {
  const std::vector<uint16_t> all = {0x1FFF, 0x3FFF, 0x5FFF, 0xA1FF, 0xA3FF, 0xA7FF, 0xA9FF, 0xC000, 0xE000};
  EXPECT_EQ(freeform({{1, 2}}, all), "M0 0L1 2");
}

// Lettering

TEST(ShapeSvg, LetteringFillsItsShape) {
  ShapeFacts shape = shapeOf(136);
  shape.art.text = u"A<B\rgo";
  shape.art.font = u"Fine \"Font\"";
  shape.art.isBold = true;
  const std::string svg = svgOf(shape, 2000, 1100);
  EXPECT_NE(svg.find("font-family=\"'Fine &quot;Font&quot;',sans-serif\" font-weight=\"700\""),
            std::string::npos)
      << svg;
  EXPECT_NE(svg.find("textLength=\"2000\" lengthAdjust=\"spacingAndGlyphs\">A&lt;B</text>"),
            std::string::npos)
      << svg;
  EXPECT_EQ(countOf(svg, "<text "), 2u);
}

TEST(ShapeSvg, AFontThatWouldLeaveItsQuotesIsNone) {
  ShapeFacts shape = shapeOf(136);
  shape.art.text = u"x";
  shape.art.font = u"a',b";
  EXPECT_EQ(svgOf(shape).find("font-family"), std::string::npos);
}

// Text

TEST(ShapeSvg, TextOfARectangleHasAllOfIt) {
  const ShapeTextBox box = textRectangle(shapeOf(1), kWidth, kHeight);
  EXPECT_EQ(box.left, 0);
  EXPECT_EQ(box.top, 0);
  EXPECT_EQ(box.width, kWidth);
  EXPECT_EQ(box.height, kHeight);
}

TEST(ShapeSvg, TextOfAnEllipseStandsInIt) {
  const ShapeTextBox box = textRectangle(shapeOf(3), kWidth, kHeight);
  EXPECT_EQ(box.left, 316);
  EXPECT_EQ(box.top, 158);
  EXPECT_EQ(box.width, 1527);
  EXPECT_EQ(box.height, 764);
}

TEST(ShapeSvg, TextIsInsideWhateverTheTypeAndSize) {
  for (uint16_t type = 0; type < 210; ++type) {
    for (const int32_t adjustment : {INT32_MIN, 9000, INT32_MAX}) {
      ShapeFacts shape = shapeOf(type);
      shape.geometry.adjustments.fill(adjustment);
      shape.geometry.flipsX = true;
      const ShapeTextBox box = textRectangle(shape, kWidth, kHeight);
      EXPECT_GE(box.left, -1) << type;
      EXPECT_GE(box.width, 0) << type;
      EXPECT_LE(box.left + box.width, kWidth + 1) << type;
      EXPECT_LE(box.top + box.height, kHeight + 1) << type;
    }
  }
}

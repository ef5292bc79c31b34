#include "pictures/svg_canvas.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/picture_memory.h"

namespace pagerex {
namespace {

using support::PictureMemory;
using testing::HasSubstr;
using testing::Not;

/// What is drawn on a canvas of 1000 x 500 units that is 750 points wide, without what stands around it.
template <class DrawOn>
std::string drawn(DrawOn draw) {
  PictureMemory memory;
  SvgCanvas canvas(&memory);
  canvas.Begin(1000, 500, 750, 375);
  draw(canvas);
  EXPECT_TRUE(canvas.End());
  const std::string svg(memory.bytes.begin(), memory.bytes.end());
  const size_t begin = svg.find('>') + 1;
  return svg.substr(begin, svg.rfind("</svg>") - begin);
}

PathData box(double left = 0, double top = 0) {
  PathData path;
  path.AddBox({left, top, left + 10, top + 10});
  return path;
}

TEST(SvgCanvas, BeginsWithItsSizeAndItsUnits) {
  PictureMemory memory;
  SvgCanvas canvas(&memory);
  canvas.Begin(1000, 500, 75.5, 37.25);
  EXPECT_TRUE(canvas.End());
  const std::string svg(memory.bytes.begin(), memory.bytes.end());
  EXPECT_THAT(
      svg, testing::StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"75.5pt\" "
                               "height=\"37.25pt\" viewBox=\"0 0 1000 500\" preserveAspectRatio=\"none\""));
  EXPECT_THAT(svg, testing::EndsWith("></svg>\n"));
}

TEST(SvgCanvas, PaintsAreWrittenWhereTheyAreNotTheUsualOnes) {
  EXPECT_EQ(drawn([](SvgCanvas& c) { c.Fill(box(), Paint::Colour(0)); }), "<path d=\"M0 0h10v10h-10z\"/>\n");
  EXPECT_EQ(drawn([](SvgCanvas& c) { c.Fill(box(), Paint::Colour(0xFF0000)); }),
            "<path d=\"M0 0h10v10h-10z\" fill=\"#f00\"/>\n");
  EXPECT_EQ(drawn([](SvgCanvas& c) { c.Fill(box(), Paint::Colour(0x123456, 51), FillRule::kEvenOdd); }),
            "<path d=\"M0 0h10v10h-10z\" fill=\"#123456\" fill-opacity=\".2\" fill-rule=\"evenodd\"/>\n");
}

TEST(SvgCanvas, WhatHasNeitherFillNorLineIsNotWritten) {
  EXPECT_EQ(drawn([](SvgCanvas& c) { c.Fill(box(), {}); }), "");
  EXPECT_EQ(drawn([](SvgCanvas& c) { c.Fill(PathData(), Paint::Colour(1)); }), "");
}

TEST(SvgCanvas, StrokesHaveWidthsEndsCornersAndDashes) {
  Stroke stroke;
  stroke.paint = Paint::Colour(0x0000FF);
  stroke.width = 2.5;
  stroke.cap = Stroke::Cap::kSquare;
  stroke.join = Stroke::Join::kMiter;
  stroke.miterLimit = 4;
  stroke.dashCount = 2;
  stroke.dashes = {3, 1.5F};
  stroke.dashOffset = 1;
  EXPECT_EQ(drawn([&](SvgCanvas& c) { c.Draw(box(), {}, FillRule::kNonZero, stroke); }),
            "<path d=\"M0 0h10v10h-10z\" fill=\"none\" stroke=\"#00f\" stroke-width=\"2.5\" "
            "stroke-linecap=\"square\" stroke-linejoin=\"miter\" stroke-miterlimit=\"4\" "
            "stroke-dasharray=\"3 1.5\" stroke-dashoffset=\"1\"/>\n");
}

TEST(SvgCanvas, ClipsStandAroundAllThatIsDrawnInThem) {
  const std::string svg = drawn([](SvgCanvas& c) {
    const uint32_t clip = c.AddClip(box().view(), FillRule::kNonZero, 0);
    c.SetClip(clip);
    c.Fill(box(1), Paint::Colour(0));
    c.Fill(box(2), Paint::Colour(0));
    c.SetClip(0);
    c.Fill(box(3), Paint::Colour(0));
  });
  EXPECT_EQ(
      svg,
      "<clipPath id=\"c1\"><path d=\"M0 0h10v10h-10z\"/></clipPath><g clip-path=\"url(#c1)\">"
      "<path d=\"M1 0h10v10h-10z\"/>\n<path d=\"M2 0h10v10h-10z\"/>\n</g><path d=\"M3 0h10v10h-10z\"/>\n");
}

TEST(SvgCanvas, ClipsInClipsEndAtADepthThatBrowsersCanFollow) {
  const std::string svg = drawn([](SvgCanvas& c) {
    uint32_t clip = 0;
    for (int i = 0; i < 100; ++i) clip = c.AddClip(box().view(), FillRule::kNonZero, clip);
  });
  EXPECT_THAT(svg, HasSubstr("<clipPath id=\"c24\" clip-path=\"url(#c23)\">"));
  EXPECT_THAT(svg, HasSubstr("<clipPath id=\"c25\"><path"));
}

TEST(SvgCanvas, AnOutsideIsAllButThePath) {
  EXPECT_THAT(drawn([](SvgCanvas& c) { c.AddClip("M1 1h2v2h-2z", FillRule::kNonZero, 0, true); }),
              HasSubstr("h-8000000zM1 1h2v2h-2z\" clip-rule=\"evenodd\"/>"));
}

TEST(SvgCanvas, AUnionHasBothParts) {
  const std::string svg = drawn([](SvgCanvas& c) {
    const uint32_t first = c.AddClip(box().view(), FillRule::kNonZero, 0);
    EXPECT_EQ(c.AddUnion(box(50).view(), FillRule::kEvenOdd, first), 2U);
    EXPECT_EQ(c.AddUnion(box(50).view(), FillRule::kEvenOdd, 0), 0U);
  });
  EXPECT_THAT(svg, HasSubstr("clip-path=\"url(#c1)\"/><path d=\"M50 0h10v10h-10z\" clip-rule=\"evenodd\"/>"));
}

TEST(SvgCanvas, ImagesAreEmbeddedAndPlaced) {
  const WriteImage image = [](PictureSink& sink) { return sink.Put(ByteView("abcd", 4)); };
  EXPECT_EQ(drawn([&](SvgCanvas& c) {
              c.Image({20, 0, 0, 10, 5, 6}, "image/png", image);
            }),
            "<image x=\"5\" y=\"6\" width=\"20\" height=\"10\" preserveAspectRatio=\"none\" "
            "href=\"data:image/png;base64,YWJjZA==\"/>\n");
  EXPECT_THAT(drawn([&](SvgCanvas& c) {
                c.Image({-20, 0, 0, 10, 5, 6}, "image/png", image, Blend::kMultiply);
              }),
              HasSubstr("transform=\"matrix(-.02 0 0 .01 5 6)\" width=\"1000\" height=\"1000\""));
}

TEST(SvgCanvas, WithoutAnImageNothingStaysBehind) {
  const WriteImage none = [](PictureSink&) { return false; };
  EXPECT_EQ(drawn([&](SvgCanvas& c) {
              EXPECT_FALSE(c.Image({20, 0, 0, 10, 5, 6}, "image/png", none));
              EXPECT_EQ(c.AddImageTile({}, 8, 8, none), 0U);
              c.Fill(box(), Paint::Colour(0));
            }),
            "<path d=\"M0 0h10v10h-10z\"/>\n");
}

TEST(SvgCanvas, GradientsHaveTheirStopsAndNumbers) {
  const GradientStop stops[] = {{0, 0xFF0000, 255}, {1, 0x00FF00, 0}};
  EXPECT_EQ(
      drawn([&](SvgCanvas& c) {
        const uint32_t number = c.AddLinearGradient({}, {0, 0}, {10, 0}, stops, Spread::kReflect);
        c.Fill(box(), Paint::Server(number));
      }),
      "<linearGradient id=\"p1\" gradientUnits=\"userSpaceOnUse\" gradientTransform=\"matrix(1 0 0 1 0 0)\" "
      "x1=\"0\" y1=\"0\" x2=\"10\" y2=\"0\" spreadMethod=\"reflect\"><stop offset=\"0\" "
      "stop-color=\"#f00\"/><stop offset=\"1\" stop-color=\"#0f0\" stop-opacity=\"0\"/></linearGradient>"
      "<path d=\"M0 0h10v10h-10z\" fill=\"url(#p1)\"/>\n");
}

TEST(SvgCanvas, TextIsEscapedAndItsFontIsOnlyAName) {
  TextLook look;
  look.family = "Evil\"/><script>";
  look.size = 12;
  look.paint = Paint::Colour(0);
  TextPlace place;
  place.at = {10, 20};
  const std::string svg = drawn([&](SvgCanvas& c) { c.Text(look, place, u"a<b>&\"\x01\xD800z"); });
  EXPECT_EQ(svg,
            "<text y=\"20\" x=\"10\" font-family=\"'Evilscript',sans-serif\" font-size=\"12\">"
            "a&lt;b&gt;&amp;\"z</text>\n");
}

TEST(SvgCanvas, WordsStandWhereTheyWereAndAreAsLongAsTheyWere) {
  TextLook look;
  look.family = "Times New Roman";
  look.size = 10;
  look.weight = 700;
  look.paint = Paint::Colour(0);
  TextPlace place;
  place.at = {0, 20};
  const double advances[] = {5, 5, 3, 6, 6};
  place.advances = advances;
  EXPECT_EQ(drawn([&](SvgCanvas& c) { c.Text(look, place, u"ab cd"); }),
            "<text y=\"20\" font-family=\"'Times New Roman',serif\" font-size=\"10\" font-weight=\"700\">"
            "<tspan x=\"0\" textLength=\"10\" lengthAdjust=\"spacingAndGlyphs\">ab</tspan> "
            "<tspan x=\"13\" textLength=\"12\" lengthAdjust=\"spacingAndGlyphs\">cd</tspan></text>\n");
}

TEST(SvgCanvas, TurnedTextHasAMatrix) {
  TextLook look;
  look.size = 10;
  TextPlace place;
  place.matrix = {0, -2, 2, 0, 100, 200};
  look.paint = Paint::Colour(0);
  EXPECT_THAT(drawn([&](SvgCanvas& c) { c.Text(look, place, u"a"); }),
              HasSubstr("<text transform=\"matrix(0 -1 1 0 100 200)\" x=\"0\" font-family=\"sans-serif\" "
                        "font-size=\"20\">a</text>"));
}

TEST(SvgCanvas, EndsWhereItsSinkOrItsLimitEndsIt) {
  PictureMemory few(100);
  SvgCanvas refused(&few);
  refused.Begin(1000, 500, 750, 375);
  for (int i = 0; i < 2000; ++i) refused.Fill(box(i), Paint::Colour(0));
  EXPECT_FALSE(refused.goesOn());
  EXPECT_FALSE(refused.End());
  EXPECT_TRUE(refused.isRefused());

  PictureMemory memory;
  SvgCanvas limited(&memory, 50000);
  limited.Begin(1000, 500, 750, 375);
  for (int i = 0; i < 20000; ++i) limited.Fill(box(i), Paint::Colour(0));
  EXPECT_FALSE(limited.End());
  EXPECT_FALSE(limited.isRefused());
  EXPECT_LE(memory.bytes.size(), 50100U);
  const std::string svg(memory.bytes.begin(), memory.bytes.end());
  EXPECT_THAT(svg, testing::EndsWith("</svg>\n")) << "what is there is still a picture";
}

TEST(SvgCanvas, KnowsWhereItWasDrawnOn) {
  SvgCanvas canvas(nullptr);
  canvas.Begin(1000, 500, 750, 375);
  EXPECT_LT(canvas.drawn().right, canvas.drawn().left);
  canvas.Fill(box(30, 40), Paint::Colour(0));
  canvas.Fill(box(-5, 45), Paint::Colour(0));
  EXPECT_EQ(canvas.drawn().left, -5);
  EXPECT_EQ(canvas.drawn().top, 40);
  EXPECT_EQ(canvas.drawn().right, 40);
  EXPECT_EQ(canvas.drawn().bottom, 55);
}

}  // namespace
}  // namespace pagerex

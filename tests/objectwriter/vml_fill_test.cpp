#include <gtest/gtest.h>

#include "objectwriter/object_page.h"

namespace {

using ObjectWriter::KHtmlObjectWriter;
using support::Bytes;
using support::ByteWriter;
using support::drawing::Blip;
using support::drawing::Drawing;
using support::drawing::Props;
using support::drawing::Shape;

std::string fillOf(const Props& props) {
  return writtenFor(props, &KHtmlObjectWriter::WriteFillProp);
}

/// A fill element with these attributes.
std::string fill(const std::string& attributes) {
  return "<v:fill" + attributes + "></v:fill>\r\n";
}

TEST(VmlFill, FilledWithoutColourIsWhite) {
  EXPECT_EQ(fillOf(Props().flag(0x01BB, true)), fill(R"( color="#FFFFFF")"));
}

TEST(VmlFill, ConnectionSitesLeaveTheColourOpen) {
  EXPECT_EQ(fillOf(Props().flag(0x01BB, true).number(0x0301, 1)), fill(""));
}

TEST(VmlFill, IsNotWrittenWithoutFlagAndColour) {
  EXPECT_EQ(fillOf(Props().number(0x0180, 7)), "");
  EXPECT_EQ(fillOf(Props().flag(0x01BB, false)), "");
}

TEST(VmlFill, ColourAloneIsEnough) {
  EXPECT_EQ(fillOf(Props().number(0x0181, 0x00112233)), fill(R"( color="#332211")"));
  EXPECT_EQ(fillOf(Props().number(0x0181, 0).number(0x0301, 1)), fill(R"( color="#000000")"));
}

TEST(VmlFill, SystemColourIsToldInWords) {
  EXPECT_EQ(fillOf(Props().number(0x0181, 0x08000040)), fill(R"( color="windowText [64]")"));
  EXPECT_EQ(fillOf(Props().number(0x0181, 0x08000002)), fill(R"( color="#FF0000")"));
}

TEST(VmlFill, SecondColourDarkensOrLightens) {
  const auto second = [](uint32_t colour) {
    return fillOf(Props().number(0x0181, 0).number(0x0183, colour));
  };
  EXPECT_EQ(second(0x108001F0), fill(R"x( color="#000000" color2="fill darken(128)")x"));
  EXPECT_EQ(second(0x108000F0), fill(R"x( color="#000000" color2="fill lighten(128)")x"));
  EXPECT_EQ(second(0x10FF01F0), fill(R"x( color="#000000" color2="fill darken(255)")x"));
  EXPECT_EQ(second(0x00112233), fill(R"( color="#000000" color2="#332211")"));
}

TEST(VmlFill, TypeIsAWord) {
  EXPECT_EQ(fillOf(Props().number(0x0180, 7).number(0x0181, 0)), fill(R"( type="gradient" color="#000000")"));
}

TEST(VmlFill, UnknownTypeIsEmpty) {
  EXPECT_EQ(fillOf(Props().number(0x0180, 99).number(0x0181, 0)), fill(R"( type="" color="#000000")"));
}

TEST(VmlFill, RotatesByAFlagOfTheUserTable) {
  const auto written = [](bool value) {
    ObjectPage page(Shape(1).props(Props().number(0x0181, 0)).userProps(Props().flag(0x01BA, value)));
    return page.written([&](auto& writer) { writer.WriteFillProp(page.shape()); });
  };
  EXPECT_EQ(written(true), fill(R"( rotate="t" color="#000000")"));
  EXPECT_EQ(written(false), fill(R"( color="#000000")"));
  EXPECT_EQ(fillOf(Props().number(0x0181, 0).flag(0x01BA, true)), fill(R"( color="#000000")"));
}

TEST(VmlFill, OpacitiesAreFractions) {
  EXPECT_EQ(fillOf(Props().number(0x0181, 0).number(0x0182, 32768).number(0x0184, 0xFFFFFFFF)),
            fill(R"( color="#000000" opacity="32768f" o:opacity2="-1f")"));
}

TEST(VmlFill, PictureHasATitleAndASource) {
  Drawing drawing;
  drawing.blip(Blip{});
  drawing.shape(0, Shape(1).props(Props().number(0x0181, 0).number(0x4186, 1).text(0x0187, u"Stars")));
  ObjectPage page(drawing);
  EXPECT_EQ(page.written([&](auto& writer) { writer.WriteFillProp(page.shape()); }),
            fill(R"( color="#000000" src="image001.png" o:title="Stars")"));
}

TEST(VmlFill, AspectIsWrittenForOneValue) {
  EXPECT_EQ(fillOf(Props().number(0x0181, 0).number(0x0195, 8)),
            fill(R"( color="#000000" aspect="atleast")"));
  EXPECT_EQ(fillOf(Props().number(0x0181, 0).number(0x0195, 7)), fill(R"( color="#000000")"));
}

TEST(VmlFill, RadialGradientHasAFocusPlace) {
  const Props props = Props().number(0x0180, 5).number(0x0181, 0).fixed(0x018D, 0.5).fixed(0x018E, 0.25);
  EXPECT_EQ(fillOf(props), fill(R"( type="gradientradial" color="#000000")"
                                R"( focusposition="0.5,0.3" focussize="-0.5,-0.3")"));
}

TEST(VmlFill, OtherFillsHaveNoFocusPlace) {
  EXPECT_EQ(fillOf(Props().number(0x0180, 7).number(0x0181, 0).fixed(0x018D, 0.5)),
            fill(R"( type="gradient" color="#000000")"));
}

TEST(VmlFill, AngleAndFocusOfAGradient) {
  EXPECT_EQ(fillOf(Props().number(0x0180, 7).number(0x0181, 0).fixed(0x018B, -135).number(0x018C, 50)),
            fill(R"( type="gradient" color="#000000" angle="-135" focus="50%")"));
}

TEST(VmlFill, PicturesHaveNoAngleAndFocus) {
  for (const int type : {1, 2, 3}) {
    const Props props = Props()
                            .number(0x0180, static_cast<uint32_t>(type))
                            .number(0x0181, 0)
                            .fixed(0x018B, 45)
                            .number(0x018C, 50);
    EXPECT_EQ(fillOf(props).find("angle"), std::string::npos);
  }
}

/// Stops of a gradient: 6 bytes of the first element are passed over, then a colour and a position each.
TEST(VmlFill, ShadeColoursBeginSixBytesBehindTheFirstElement) {
  const Bytes elements =
      ByteWriter().zeros(6).u32(0x00030201).u32(0).u32(0x00FF8000).u32(65536).zeros(2).take();
  EXPECT_EQ(fillOf(Props().number(0x0181, 0).array(0x0197, 2, 8, elements)),
            fill(R"( color="#000000" colors="0f #010203;65536f #0080FF;")"));
}

TEST(VmlFill, ShadeColoursMayBeEmpty) {
  EXPECT_EQ(fillOf(Props().number(0x0181, 0).array(0x0197, 0, 8, {})), fill(R"( color="#000000" colors="")"));
}

TEST(VmlFill, ShadeColoursNeedData) {
  EXPECT_EQ(fillOf(Props().number(0x0181, 0).complex(0x0197, {})), fill(R"( color="#000000")"));
  EXPECT_EQ(fillOf(Props().number(0x0181, 0).number(0x0197, 20)), fill(R"( color="#000000")"));
}

TEST(VmlFill, ShadeColourCountIsBoundedByTheData) {
  const std::string written = fillOf(Props().number(0x0181, 0).array(0x0197, 0x7FFF, 8, Bytes(16)));
  EXPECT_LT(written.size(), 200u);
}

}  // namespace

#include <gtest/gtest.h>

#include "objectwriter/object_page.h"

namespace {

using ObjectWriter::KHtmlObjectWriter;
using support::drawing::Props;

std::string shadowOf(Props props) {
  return writtenFor(props.flag(0x023E, true), &KHtmlObjectWriter::WriteShadowProp);
}
std::string shadow(const std::string& attributes) {
  return "<v:shadow on=\"t\"" + attributes + "></v:shadow>\r\n";
}

std::string extrusionOf(Props props) {
  return writtenFor(props.flag(0x02BC, true), &KHtmlObjectWriter::Write3DProp);
}
std::string extrusion(const std::string& attributes) {
  return "<v:extrusion on=\"t\"" + attributes + "></v:extrusion>\r\n";
}

TEST(VmlShadow, IsWrittenOnlyWhenItIsOn) {
  EXPECT_EQ(writtenFor(Props().number(0x0201, 0), &KHtmlObjectWriter::WriteShadowProp), "");
  EXPECT_EQ(writtenFor(Props().flag(0x023E, false), &KHtmlObjectWriter::WriteShadowProp), "");
}

TEST(VmlShadow, OffsetIsAlwaysThere) {
  EXPECT_EQ(shadowOf(Props()), shadow(R"( offset="2.00pt,2.00pt")"));
  EXPECT_EQ(shadowOf(Props().number(0x0205, 12700)), shadow(R"( offset="1.00pt,2.00pt")"));
  EXPECT_EQ(shadowOf(Props().number(0x0206, static_cast<uint32_t>(-12700))),
            shadow(R"( offset="2.00pt,-1.00pt")"));
}

TEST(VmlShadow, SecondOffsetIsThereWithOneOfItsValues) {
  EXPECT_EQ(shadowOf(Props().number(0x0208, 25400)),
            shadow(R"( offset="2.00pt,2.00pt" offset2="0.00pt,2.00pt")"));
}

TEST(VmlShadow, ColoursAndOpacity) {
  const Props props = Props()
                          .number(0x0200, 1)
                          .number(0x0201, 0x00808080)
                          .flag(0x023F, true)
                          .number(0x0202, 0x00FFFFFF)
                          .number(0x0204, 0x8000);
  EXPECT_EQ(shadowOf(props), shadow(R"( type="double" color="#808080" obscured="true" color2="#FFFFFF")"
                                    R"( opacity="0.500008" offset="2.00pt,2.00pt")"));
}

TEST(VmlShadow, ObscuredMayBeFalse) {
  EXPECT_EQ(shadowOf(Props().flag(0x023F, false)), shadow(R"( obscured="false" offset="2.00pt,2.00pt")"));
}

TEST(VmlShadow, PerspectiveHasAMatrix) {
  const Props props = Props().number(0x0200, 2).fixed(0x020D, 128).fixed(0x0209, 2).fixed(0x020C, -1);
  EXPECT_EQ(shadowOf(props), shadow(R"( type="perspective" offset="2.00pt,2.00pt")"
                                    R"( matrix="2.00,0.00,0.00,-1.00,0.50,0.00")"));
}

TEST(VmlShadow, MatrixTakesItsValuesInTheOrderOfTheirNumbers) {
  const Props props = Props()
                          .number(0x0200, 4)
                          .fixed(0x0209, 1)
                          .fixed(0x020A, 2)
                          .fixed(0x020B, 3)
                          .fixed(0x020C, 4)
                          .fixed(0x020D, 10)
                          .fixed(0x020E, 12)
                          .number(0x020F, 2);
  EXPECT_EQ(shadowOf(props), shadow(R"( type="perspective" offset="2.00pt,2.00pt")"
                                    R"( matrix="1.00,2.00,3.00,4.00,5.00,6.00")"));
}

TEST(VmlShadow, DivisorOfZeroLeavesTheValues) {
  EXPECT_EQ(shadowOf(Props().number(0x0200, 3).fixed(0x020D, 3).number(0x020F, 0)),
            shadow(R"( type="perspective" offset="2.00pt,2.00pt" matrix="1.00,0.00,0.00,1.00,3.00,0.00")"));
}

TEST(VmlShadow, OriginIsThereWithOneOfItsValues) {
  EXPECT_EQ(shadowOf(Props().number(0x0200, 2).fixed(0x0211, 0.5)),
            shadow(R"( type="perspective" offset="2.00pt,2.00pt" origin="0.00,0.50")"));
}

TEST(VmlShadow, OtherTypesHaveNeitherMatrixNorOrigin) {
  EXPECT_EQ(shadowOf(Props().number(0x0200, 5).fixed(0x020D, 1).fixed(0x0210, 1)),
            shadow(R"( type="emboss" offset="2.00pt,2.00pt")"));
  EXPECT_EQ(shadowOf(Props().fixed(0x020D, 1).fixed(0x0210, 1)), shadow(R"( offset="2.00pt,2.00pt")"));
}

TEST(VmlExtrusion, IsWrittenOnlyWhenItIsOn) {
  EXPECT_EQ(writtenFor(Props().number(0x0280, 1), &KHtmlObjectWriter::Write3DProp), "");
  EXPECT_EQ(extrusionOf(Props()), extrusion(""));
}

TEST(VmlExtrusion, IsPerspectiveOnlyByAFalseFlag) {
  EXPECT_EQ(extrusionOf(Props().flag(0x02FD, true)), extrusion(""));
  EXPECT_EQ(extrusionOf(Props().flag(0x02FD, false)), extrusion(R"( type="perspective")"));
}

TEST(VmlExtrusion, RotationTellsTheLaterNumberFirst) {
  EXPECT_EQ(extrusionOf(Props().fixed(0x02C0, 10)), extrusion(R"( rotationangle="0.00,10.00")"));
  EXPECT_EQ(extrusionOf(Props().fixed(0x02C1, -20)), extrusion(R"( rotationangle="-20.00,0.00")"));
}

TEST(VmlExtrusion, ViewpointsFillUpWithDefaults) {
  EXPECT_EQ(extrusionOf(Props().fixed(0x02CE, 0)), extrusion(R"( viewpointorigin="0.00,-0.50")"));
  EXPECT_EQ(extrusionOf(Props().fixed(0x02CF, 0)), extrusion(R"( viewpointorigin="0.50,0.00")"));
  EXPECT_EQ(extrusionOf(Props().number(0x02CB, 12700)),
            extrusion(R"( viewpoint="1.00pt,-98.43pt,708.66pt")"));
  EXPECT_EQ(extrusionOf(Props().number(0x02CD, 0)), extrusion(R"( viewpoint="98.43pt,-98.43pt,0.00pt")"));
}

TEST(VmlExtrusion, SkewDepthAndLight) {
  const Props props = Props()
                          .fixed(0x02D0, -45)
                          .number(0x02D1, 50)
                          .number(0x0285, 457200)
                          .number(0x0284, 12700)
                          .number(0x02D2, 20000)
                          .number(0x02D6, 38000)
                          .number(0x02DA, 1);
  EXPECT_EQ(extrusionOf(props),
            extrusion(R"( skewangle="-45" skewamt="50" backdepth="36.00pt" foredepth="1.00pt")"
                      R"( brightness="20000f" lightlevel="38000f" lightlevel2="1f")"));
}

TEST(VmlExtrusion, LightPositionsFillUpWithDefaults) {
  EXPECT_EQ(extrusionOf(Props().number(0x02D4, 7)), extrusion(R"( lightposition="50000,7,10000")"));
  EXPECT_EQ(extrusionOf(Props().number(0x02D9, 8)), extrusion(R"( lightposition2="-50000,0,8")"));
}

TEST(VmlExtrusion, Surface) {
  const Props props =
      Props().number(0x02C9, 1).number(0x0280, 80000).number(0x0281, 43712).number(0x0287, 0x000000FF);
  EXPECT_EQ(extrusionOf(props),
            extrusion(R"( render="wireFrame" specularity="80000f" diffusity="43712f" color="#FF0000")"));
}

}  // namespace

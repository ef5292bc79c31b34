#include <gtest/gtest.h>

#include "objectwriter/object_page.h"

namespace {

using ObjectWriter::KHtmlObjectWriter;
using support::Bytes;
using support::ByteWriter;
using support::drawing::Drawing;
using support::drawing::Place;
using support::drawing::Props;
using support::drawing::Rect;
using support::drawing::Shape;

constexpr Rect kBox = {1440, 720, 1440 + 2880, 720 + 1440};  // twips: 72, 36, 144 wide, 72 high in points

/// The whole object that is anchored at position 0.
std::string objectOf(const Shape& shape, const Place& place = {.rect = kBox}) {
  ObjectPage page(shape, place);
  return page.written([](auto& writer) { writer.WriteObject(0, false); });
}

/// The first start tag of a name, from "<" to ">".
std::string tagOf(const std::string& markup, const std::string& name) {
  const size_t begin = markup.find("<" + name);
  if (begin == std::string::npos) return "";
  return markup.substr(begin, markup.find('>', begin) + 1 - begin);
}

std::string startTagOf(const Props& props, uint16_t type = 1) {
  return tagOf(objectOf(Shape(type).props(props)), "v:");
}

TEST(StartTag, NamesFourShapesAndTheTypeOfTheOthers) {
  EXPECT_EQ(tagOf(objectOf(Shape(1)), "v:").substr(0, 18), "<v:rect id=\"1025\" ");
  EXPECT_EQ(tagOf(objectOf(Shape(2)), "v:").substr(0, 12), "<v:roundrect");
  EXPECT_EQ(tagOf(objectOf(Shape(3)), "v:").substr(0, 7), "<v:oval");
  EXPECT_EQ(tagOf(objectOf(Shape(20)), "v:").substr(0, 7), "<v:line");
  EXPECT_EQ(tagOf(objectOf(Shape(75)), "v:").substr(0, 28), "<v:shape o:spt=\"75\" id=\"1025");
}

TEST(StartTag, FloatingShapeHasItsPlace) {
  EXPECT_EQ(tagOf(objectOf(Shape(1)), "v:"),
            "<v:rect id=\"1025\" style=\"position:absolute;left:0;text-align:left;margin-left:72.00pt;"
            "margin-top:36.00pt;width:144.00pt;height:72.00pt;z-index:1;\" coordsize=\"21600,21600\">");
}

TEST(StartTag, InsideATableHasNoLeft) {
  ObjectPage page(Shape(1), {.rect = kBox});
  page.setInTable();
  const std::string markup = page.written([](auto& writer) { writer.WriteObject(0, false); });
  EXPECT_NE(markup.find("style=\"position:absolute;text-align:left;"), std::string::npos);
  EXPECT_EQ(markup.find("left:0"), std::string::npos);
}

TEST(StartTag, LineHasEndsAndNoBox) {
  EXPECT_EQ(tagOf(objectOf(Shape(20)), "v:"),
            "<v:line id=\"1025\" style=\"position:absolute;left:0;text-align:left;z-index:1;\""
            " from=\"72.00pt,36.00pt\" to=\"216.00pt,108.00pt\" coordsize=\"21600,21600\">");
}

TEST(StartTag, QuarterTurnSwapsWidthAndHeight) {
  EXPECT_NE(
      startTagOf(Props().fixed(0x0004, 90))
          .find("margin-left:108.00pt;margin-top:0.00pt;width:72.00pt;height:144.00pt;rotation:90;z-index"),
      std::string::npos);
}

TEST(StartTag, SmallTurnKeepsTheBox) {
  EXPECT_NE(
      startTagOf(Props().fixed(0x0004, -44.5)).find("width:144.00pt;height:72.00pt;rotation:-44;z-index"),
      std::string::npos);
}

TEST(StartTag, BehindTheTextCountsOnlyWithoutWrapping) {
  const Shape behind = Shape(1).props(Props().flag(0x03BA, true));
  EXPECT_NE(objectOf(behind, {.rect = kBox, .wrap = 3}).find("z-index:-1;"), std::string::npos);
  EXPECT_NE(objectOf(behind, {.rect = kBox, .wrap = 2}).find("z-index:1;"), std::string::npos);
  EXPECT_EQ(objectOf(behind, {.rect = kBox, .wrap = 2}).find("z-index:-1;"), std::string::npos);
}

TEST(StartTag, Flips) {
  const auto styleEnd = [](bool x, bool y) {
    const std::string tag = tagOf(objectOf(Shape(1).flip(x, y)), "v:");
    const size_t at = tag.find("z-index:1;");
    return tag.substr(at, tag.find('"', at) - at);
  };
  EXPECT_EQ(styleEnd(true, true), "z-index:1;flip:x y;");
  EXPECT_EQ(styleEnd(true, false), "z-index:1;flip:x;");
  EXPECT_EQ(styleEnd(false, true), "z-index:1;flip:y;");
  EXPECT_EQ(styleEnd(false, false), "z-index:1;");
}

TEST(StartTag, HiddenShape) {
  EXPECT_NE(startTagOf(Props().flag(0x03BE, true)).find("z-index:1;visibility:hidden;\""), std::string::npos);
  EXPECT_EQ(startTagOf(Props().flag(0x03BE, false)).find("visibility"), std::string::npos);
}

TEST(StartTag, HostControlHasNeitherIdNorStyle) {
  EXPECT_EQ(tagOf(objectOf(Shape(201)), "v:"), "<v:shape o:spt=\"201\" coordsize=\"21600,21600\">");
}

TEST(StartTag, AttributesStandInTheirOrder) {
  const Props props = Props()
                          .number(0x0303, 1)
                          .flag(0x01BB, true)
                          .flag(0x01FC, false)
                          .number(0x0142, 100)
                          .number(0x0143, 200)
                          .number(0x0147, 5400);
  const std::string tag = startTagOf(props, 20);
  EXPECT_NE(
      tag.find("z-index:1;\" o:connectortype=\"elbow\" from=\"72.00pt,36.00pt\" to=\"216.00pt,108.00pt\""
               " filled=\"t\" stroked=\"f\" coordsize=\"100,200\" adj=\"5400\">"),
      std::string::npos)
      << tag;
}

TEST(StartTag, UnknownConnectorIsEmpty) {
  EXPECT_NE(startTagOf(Props().number(0x0303, 7)).find(" o:connectortype=\"\""), std::string::npos);
}

// Geometry.

std::string geometryOf(const Props& props) {
  return writtenFor(props, &KHtmlObjectWriter::WriteGeometry);
}

TEST(Geometry, CoordSizeHasADefault) {
  EXPECT_EQ(geometryOf(Props()), " coordsize=\"21600,21600\"");
  EXPECT_EQ(geometryOf(Props().number(0x0140, 5).number(0x0142, 5)), " coordsize=\"21600,21600\"");
}

TEST(Geometry, CoordSizeMayBeFlatOnOneSide) {
  EXPECT_EQ(geometryOf(Props().number(0x0142, 100)), " coordsize=\"100,0\"");
  EXPECT_EQ(geometryOf(Props().number(0x0140, 10).number(0x0141, 20).number(0x0142, 4).number(0x0143, 70)),
            " coordsize=\"-6,50\"");
}

TEST(Geometry, AdjustValuesKeepTheirPlaces) {
  const auto adjust = [](const Props& props) {
    const std::string written = geometryOf(props);
    const size_t at = written.find(" adj=");
    return at == std::string::npos ? "" : written.substr(at);
  };
  EXPECT_EQ(adjust(Props().number(0x0148, 5)), " adj=\",5\"");
  EXPECT_EQ(adjust(Props().number(0x0147, 3).number(0x0149, 7)), " adj=\"3,,7\"");
  EXPECT_EQ(adjust(Props().number(0x0150, 1)), " adj=\",,,,,,,,,1\"");
  EXPECT_EQ(adjust(Props().number(0x0147, 0x80000000)), " adj=\"-21474836\"");
  EXPECT_EQ(adjust(Props().number(0x0147, 0).number(0x0148, 1234567890)), " adj=\"0,123456789\"");
  EXPECT_EQ(adjust(Props().number(0x0151, 1)), "");
}

Bytes segments(std::initializer_list<uint16_t> words) {
  ByteWriter bytes;
  for (const uint16_t word : words) bytes.u16(word);
  return bytes.take();
}

std::string pathOf(const Props& props) {
  const std::string written = geometryOf(props);
  const size_t at = written.find(" path=");
  return at == std::string::npos ? "" : written.substr(at);
}

TEST(Geometry, PathOfWideVertices) {
  const Bytes points = ByteWriter().u32(0).u32(0).u32(10).u32(static_cast<uint32_t>(-20)).take();
  EXPECT_EQ(pathOf(Props()
                       .array(0x0145, 2, 8, points)
                       .array(0x0146, 4, 2, segments({0x4000, 0x0001, 0x6001, 0x8000}))),
            " path=\"M0,0L10,-20e\"");
}

TEST(Geometry, NarrowVerticesHaveNoSign) {
  const Bytes points = ByteWriter().u16(1).u16(0xFFFF).take();
  EXPECT_EQ(pathOf(Props().array(0x0145, 1, 4, points).array(0x0146, 1, 2, segments({0x4000}))),
            " path=\"M1,65535e\"");
}

TEST(Geometry, NegativeElementSizeStandsForAQuarter) {
  const Bytes points = ByteWriter().u16(1).u16(2).u16(3).u16(4).take();
  EXPECT_EQ(pathOf(Props().array(0x0145, 2, 0xFFF0, points).array(0x0146, 1, 2, segments({0x4002}))),
            " path=\"M1,2M3,4e\"");
}

TEST(Geometry, SegmentsLieTwoBytesApartWhateverTheirSize) {
  const Bytes points = ByteWriter().u16(1).u16(2).u16(3).u16(4).take();
  EXPECT_EQ(pathOf(Props().array(0x0145, 2, 4, points).array(0x0146, 2, 4, segments({0x4000, 1, 0, 0}))),
            " path=\"M1,2L3,4e\"");
}

TEST(Geometry, PathNeedsPointsAndSegments) {
  EXPECT_EQ(pathOf(Props().array(0x0145, 1, 8, Bytes(8))), "");
  EXPECT_EQ(pathOf(Props().array(0x0146, 1, 2, segments({0x4000}))), "");
  EXPECT_EQ(pathOf(Props().array(0x0145, 0, 8, {}).array(0x0146, 1, 2, segments({0x4000}))), "");
}

TEST(Geometry, CountBeyondTheDataIsCut) {
  EXPECT_EQ(pathOf(Props().array(0x0146, 1, 2, segments({0x40FF})).array(0x0145, 0x7FFF, 8, Bytes(16))),
            " path=\"M0,0M0,0e\"");
}

// Links.

TEST(ShapeLink, BookmarkHasASharp) {
  const Bytes link = ByteWriter().zeros(20).u32(0x08).u32(4).text16(u"top").u16(0).take();
  EXPECT_NE(startTagOf(Props().complex(0x0382, link)).find(" id=\"1025\" href=\"#top\" style="),
            std::string::npos);
}

TEST(ShapeLink, UrlOpensInTheFrameAround) {
  const Bytes moniker = {0xE0, 0xC9, 0xEA, 0x79, 0xF9, 0xBA, 0xCE, 0x11,
                         0x8C, 0x82, 0x00, 0xAA, 0x00, 0x4B, 0xA9, 0x0B};
  const Bytes link = ByteWriter()
                         .zeros(20)
                         .u32(0x0B)
                         .bytes(moniker)
                         .u32(18)
                         .text16(u"http://x/")
                         .u32(2)
                         .text16(u"at")
                         .take();
  EXPECT_NE(startTagOf(Props().complex(0x0382, link))
                .find(" id=\"1025\" target=\"_parent\" href=\"http://x/\" style="),
            std::string::npos);
}

TEST(ShapeLink, UnknownAbsoluteAddressIsEmpty) {
  const Bytes link =
      ByteWriter().zeros(20).u32(0x0B).fill(16, 7).u32(2).text16(u"a").u32(1).text16(u"b").take();
  EXPECT_NE(startTagOf(Props().complex(0x0382, link)).find(" id=\"1025\" href=\"\" style="),
            std::string::npos);
}

/// Each kind of address, by the attributes that it gives.
TEST(ShapeLink, KindsOfAddresses) {
  const Bytes urlMoniker = {0xE0, 0xC9, 0xEA, 0x79, 0xF9, 0xBA, 0xCE, 0x11,
                            0x8C, 0x82, 0x00, 0xAA, 0x00, 0x4B, 0xA9, 0x0B};
  const Bytes fileMoniker = {0x03, 0x03, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                             0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46};
  const Bytes narrow = ByteWriter().u16(0).u32(8).text8("a/b.doc").u8(0).zeros(24).u32(0).take();
  const Bytes wide =
      ByteWriter().u16(0).u32(2).text8("a").u8(0).zeros(24).u32(8).u32(2).u16(3).text16(u"\u4E2D").take();
  const Bytes measured = ByteWriter().u32(14).text16(u"a/b.doc").take();
  const Bytes counted = ByteWriter().u32(7).text16(u"a/b.doc").take();
  const struct {
    uint32_t flags;
    Bytes moniker, address;
    const char* attributes;
  } rows[] = {
      {0x08, {}, ByteWriter().u32(3).text16(u"top").take(), R"( href="#top")"},
      {0x00, {}, {}, R"( href="#")"},
      {0x01, fileMoniker, narrow, R"( href="../a/b.doc")"},
      {0x01, fileMoniker, wide, " href=\"../\xE4\xB8\xAD\""},
      {0x01, urlMoniker, measured, R"( href="../a/b.doc")"},
      {0x03, fileMoniker, narrow, R"( href="a/b.doc")"},
      {0x03, fileMoniker, wide, " href=\"\xE4\xB8\xAD\""},
      {0x101, {}, counted, R"( href="a/b.doc")"},
      {0x103, {}, counted, R"( href="a/b.doc")"},
      {0x03, urlMoniker, measured, R"( target="_parent" href="a/b.doc")"},
      {0x03, Bytes(16, 7), measured, R"( href="")"},
  };
  for (const auto& row : rows) {
    const Bytes link = ByteWriter().zeros(20).u32(row.flags).bytes(row.moniker).bytes(row.address).take();
    const std::string tag = startTagOf(Props().complex(0x0382, link));
    EXPECT_NE(tag.find(" id=\"1025\"" + std::string(row.attributes) + " style="), std::string::npos)
        << row.flags << tag;
  }
}

TEST(ShapeLink, StandsOnTheGroupToo) {
  const Bytes link = ByteWriter().zeros(20).u32(0x08).u32(1).text16(u"x").take();
  const Shape group = Shape(0).props(Props().complex(0x0382, link)).group({0, 0, 1, 1}, {});
  EXPECT_NE(objectOf(group).find("<v:group id=\"1025\" href=\"#x\" style="), std::string::npos);
}

TEST(ShapeLink, FallbackHasNone) {
  const Bytes link = ByteWriter().zeros(20).u32(0x08).u32(1).text16(u"x").take();
  const std::string object = objectOf(Shape(1).props(Props().complex(0x0382, link)));
  EXPECT_EQ(object.find("href", object.find("<![if !vml]>")), std::string::npos);
}

TEST(ShapeLink, NeedsTheProperty) {
  EXPECT_EQ(startTagOf(Props()).find("href"), std::string::npos);
  EXPECT_EQ(startTagOf(Props().complex(0x0382, {})).find("href"), std::string::npos);
}

}  // namespace

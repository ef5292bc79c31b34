#include <gmock/gmock.h>

#include <string>

#include "pictures/metafile.h"
#include "support/bytes.h"
#include "support/picture_memory.h"
#include "support/png_reader.h"

namespace {

using pagerex::PictureResult;
using support::Bytes;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Numbers with the upper byte first.
class Pict {
 public:
  /// A frame of 100 x 50.
  explicit Pict(bool isWide = true) : isWide_(isWide) {
    Numbers({0, 0, 0, 50, 100});
    isWide ? Numbers({0x0011, 0x02FF, 0x0C00, 0xFFFF, 0xFFFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0})
           : Bytes8({0x11, 1});
  }
  Pict& Op(uint32_t opcode) {
    if (isWide_ && bytes_.size() % 2) bytes_.push_back(0);
    return isWide_ ? Numbers({opcode}) : Bytes8({opcode});
  }
  Pict& Numbers(const std::vector<uint32_t>& values) {
    for (const uint32_t value : values) Bytes8({value >> 8, value});
    return *this;
  }
  Pict& Bytes8(const std::vector<uint32_t>& values) {
    for (const uint32_t value : values) bytes_.push_back(static_cast<uint8_t>(value));
    return *this;
  }
  Pict& Text(std::string_view text) {
    bytes_.push_back(static_cast<uint8_t>(text.size()));
    bytes_.insert(bytes_.end(), text.begin(), text.end());
    return *this;
  }
  Bytes End() { return Op(0xFF).bytes_; }

 private:
  const bool isWide_;
  Bytes bytes_;
};

std::string svgOf(const Bytes& pict, PictureResult expected = PictureResult::kWhole) {
  support::PictureMemory sink;
  EXPECT_EQ(pagerex::playPict({pict.data(), pict.size()}, {}, sink), expected);
  return {sink.bytes.begin(), sink.bytes.end()};
}

/// The file in an address of data.
Bytes fileIn(const std::string& svg, const std::string& mediaType, size_t nth = 0) {
  const std::string front = "data:" + mediaType + ";base64,";
  size_t at = 0;
  for (size_t i = 0; i <= nth; ++i) {
    at = svg.find(front, at);
    EXPECT_NE(at, std::string::npos);
    at += front.size();
  }
  Bytes bytes;
  uint32_t bits = 0;
  int count = 0;
  for (; at < svg.size() && svg[at] != '"' && svg[at] != '='; ++at) {
    const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    bits = bits << 6 | static_cast<uint32_t>(letters.find(svg[at]));
    if ((count += 6) >= 8) bytes.push_back(static_cast<uint8_t>(bits >> (count -= 8)));
  }
  return bytes;
}

TEST(Pict, OfEachVersionIsDrawn) {
  for (const bool isWide : {false, true}) {
    const std::string svg = svgOf(Pict(isWide).Op(0x31).Numbers({10, 20, 30, 60}).End());
    EXPECT_THAT(svg, StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"100pt\" height=\"50pt\""));
    EXPECT_THAT(svg, HasSubstr("viewBox=\"0 0 10000 5000\""));
    EXPECT_THAT(svg, HasSubstr("<path d=\"M2000 1000h4000v2000h-4000z\""));
    EXPECT_THAT(svg, EndsWith("</svg>\n"));
  }
}

TEST(Pict, OfAFileHasBytesInFront) {
  Bytes file(512, 7);
  const Bytes pict = Pict().Op(0x31).Numbers({10, 20, 30, 60}).End();
  file.insert(file.end(), pict.begin(), pict.end());
  EXPECT_EQ(svgOf(file), svgOf(pict));
}

TEST(Pict, ThatKnowsItsResolutionHasThoseCoordinates) {
  Bytes pict = Pict().Op(0x31).Numbers({100, 200, 300, 600}).End();
  support::patchBytes(pict, 16, {0xFF, 0xFE, 0, 0, 1, 44, 0, 0, 1, 44, 0, 0, 0, 0, 0, 0, 1, 0xF4, 3, 0xE8});
  const std::string svg = svgOf(pict);
  EXPECT_THAT(svg, HasSubstr("width=\"100pt\" height=\"50pt\" viewBox=\"0 0 10000 5000\""));
  EXPECT_THAT(svg, HasSubstr("M2000 1000h4000v2000h-4000z"));
}

TEST(Pict, LinesGoOnAsOne) {
  const std::string svg = svgOf(Pict()
                                    .Op(0x20)
                                    .Numbers({10, 10, 10, 30})
                                    .Op(0x21)
                                    .Numbers({20, 30})
                                    .Op(0x23)
                                    .Bytes8({256 - 5, 5})
                                    .End());
  EXPECT_THAT(svg, HasSubstr("d=\"M1050 1050l2000 0 0 1000-500 500\""));
  EXPECT_THAT(svg, HasSubstr("stroke-width=\"100\""));
  EXPECT_THAT(svg, HasSubstr("fill=\"none\""));
}

TEST(Pict, ShortLineGoesFromItsStart) {
  EXPECT_THAT(svgOf(Pict(false).Op(0x22).Numbers({5, 10}).Bytes8({3, 256 - 4}).End()),
              HasSubstr("M1050 550l300-400"));
}

TEST(Pict, ThickPenHangsBelowAndRight) {
  const std::string svg = svgOf(Pict().Op(0x07).Numbers({4, 4}).Op(0x20).Numbers({10, 10, 10, 30}).End());
  EXPECT_THAT(svg, HasSubstr("M1200 1200l2000 0\""));
  EXPECT_THAT(svg, HasSubstr("stroke-width=\"400\""));
}

TEST(Pict, FrameLiesInside) {
  const std::string svg = svgOf(Pict().Op(0x07).Numbers({2, 2}).Op(0x30).Numbers({10, 20, 30, 60}).End());
  EXPECT_THAT(svg, HasSubstr("M2100 1100h3800v1800h-3800z"));
  EXPECT_THAT(svg, HasSubstr("stroke-width=\"200\""));
}

TEST(Pict, SameShapeIsDrawnInOtherWays) {
  const std::string svg = svgOf(Pict()
                                    .Op(0x1A)
                                    .Numbers({0xFFFF, 0x8000, 0})
                                    .Op(0x31)
                                    .Numbers({10, 20, 30, 60})
                                    .Op(0x3A)
                                    .Op(0x3B)
                                    .Op(0x38)
                                    .End());
  EXPECT_THAT(svg, HasSubstr("h4000v2000h-4000z\" fill=\"#ff8000\""));
  EXPECT_THAT(svg, HasSubstr("h4000v2000h-4000z\" fill=\"#fff\" fill-rule=\"evenodd\"/>"));
  EXPECT_THAT(svg, HasSubstr("difference"));
  EXPECT_THAT(svg, HasSubstr("stroke=\"#ff8000\""));
}

TEST(Pict, OldColoursHaveNumbers) {
  const std::string svg = svgOf(Pict(false).Op(0x0E).Numbers({0, 205}).Op(0x31).Numbers({1, 1, 2, 2}).End());
  EXPECT_THAT(svg, HasSubstr("fill=\"#dd0806\""));
}

TEST(Pict, OvalsAndRoundBoxesAreCurved) {
  const std::string svg = svgOf(Pict()
                                    .Op(0x51)
                                    .Numbers({10, 20, 30, 60})
                                    .Op(0x0B)
                                    .Numbers({6, 8})
                                    .Op(0x41)
                                    .Numbers({0, 0, 20, 20})
                                    .End());
  EXPECT_THAT(svg, HasSubstr("M4000 1000c1105 0 2000 448 2000 1000"));
  EXPECT_THAT(svg, HasSubstr("c221 0 400 134 400 300"));
}

TEST(Pict, ArcsArePiecesOrLines) {
  const std::string pie = svgOf(Pict().Op(0x61).Numbers({10, 20, 30, 40, 0, 90}).End());
  EXPECT_THAT(pie, HasSubstr("M3000 2000l0-1000a1000 1000 0 0 1 1000 1000z"));
  const std::string line =
      svgOf(Pict().Op(0x07).Numbers({0, 0}).Op(0x60).Numbers({10, 20, 30, 40, 0, 90}).End());
  EXPECT_THAT(line, Not(HasSubstr("<path")));
  const std::string frame = svgOf(Pict().Op(0x60).Numbers({10, 20, 30, 40, 90, 0x10000 - 90}).End());
  EXPECT_THAT(frame, HasSubstr("M3950 2000a950 950 0 0 0-950-950\""));
  EXPECT_THAT(svgOf(Pict().Op(0x61).Numbers({10, 20, 30, 40, 0, 360}).End()),
              HasSubstr("c552 0 1000 448 1000 1000"));
}

TEST(Pict, PolygonsAreClosedWhenFilled) {
  const std::vector<uint32_t> polygon = {22, 0, 0, 10, 10, 0, 0, 0, 10, 10, 10};
  EXPECT_THAT(svgOf(Pict().Op(0x71).Numbers(polygon).End()), HasSubstr("M0 0l1000 0 0 1000z"));
  EXPECT_THAT(svgOf(Pict().Op(0x70).Numbers(polygon).End()), HasSubstr("M50 50l1000 0 0 1000\""));
}

/// A cross: 10 to 20 across all of it, and all of it from 10 to 20.
const std::vector<uint32_t> kCross = {44, 0,  0,  30,     30, 0, 10, 20, 0x7FFF, 10,     0,
                                      10, 20, 30, 0x7FFF, 20, 0, 10, 20, 30,     0x7FFF, 0x7FFF};

TEST(Pict, RegionsAreBoxesOfWhichOddOnesCount) {
  const std::string svg = svgOf(Pict().Op(0x81).Numbers(kCross).End());
  EXPECT_THAT(svg, HasSubstr("M1000 0h1000v3000h-1000zM0 1000h1000v2000h-1000z"));
  EXPECT_THAT(svg, HasSubstr("fill-rule=\"evenodd\""));
  EXPECT_THAT(svgOf(Pict().Op(0x80).Numbers({10, 0, 0, 10, 10}).End()), HasSubstr("M50 50h900v900h-900z"));
  EXPECT_THAT(svgOf(Pict().Op(0x80).Numbers(kCross).End()), Not(HasSubstr("<path")));
}

TEST(Pict, ClipIsARegion) {
  const std::string svg = svgOf(Pict()
                                    .Op(0x01)
                                    .Numbers({10, 5, 5, 20, 20})
                                    .Op(0x31)
                                    .Numbers({0, 0, 9, 9})
                                    .Op(0x01)
                                    .Numbers({10, 0x8001, 0x8001, 0x7FFF, 0x7FFF})
                                    .Op(0x31)
                                    .Numbers({0, 0, 8, 8})
                                    .End());
  EXPECT_THAT(svg, HasSubstr("<clipPath"));
  EXPECT_THAT(svg, HasSubstr("M500 500h1500v1500h-1500z"));
  EXPECT_LT(svg.find("</g>"), svg.find("h800v800"));
}

TEST(Pict, PatternsAreTiles) {
  const std::string svg = svgOf(Pict()
                                    .Op(0x09)
                                    .Bytes8({0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55})
                                    .Op(0x31)
                                    .Numbers({0, 0, 8, 8})
                                    .Op(0x39)
                                    .End());
  EXPECT_THAT(svg, HasSubstr("fill=\"url(#p1)\""));
  EXPECT_THAT(svg, Not(HasSubstr("url(#p2)")));
  const support::Png tile = support::readPng(fileIn(svg, "image/png"));
  EXPECT_EQ(tile.width, 8);
  EXPECT_EQ(tile.at(0, 0), 0xFF000000);
  EXPECT_EQ(tile.at(1, 0), 0xFFFFFFFF);
  EXPECT_EQ(tile.at(0, 1), 0xFFFFFFFF);
}

TEST(Pict, PatternThatIsAddedLeavesRoom) {
  const std::string svg = svgOf(Pict()
                                    .Op(0x08)
                                    .Numbers({9})
                                    .Op(0x09)
                                    .Bytes8({0x80, 0, 0, 0, 0, 0, 0, 0})
                                    .Op(0x31)
                                    .Numbers({0, 0, 8, 8})
                                    .End());
  const support::Png tile = support::readPng(fileIn(svg, "image/png"));
  EXPECT_EQ(tile.at(0, 0), 0xFF000000);
  EXPECT_EQ(tile.at(1, 0), 0u);
}

TEST(Pict, PenOfOppositesInverts) {
  EXPECT_THAT(svgOf(Pict().Op(0x08).Numbers({10}).Op(0x31).Numbers({0, 0, 8, 8}).End()),
              HasSubstr("difference"));
}

TEST(Pict, PatternMayBeAColour) {
  const std::string svg = svgOf(
      Pict().Op(0x13).Numbers({2, 0, 0, 0, 0, 0x1200, 0x3400, 0x5600}).Op(0x31).Numbers({0, 0, 8, 8}).End());
  EXPECT_THAT(svg, HasSubstr("fill=\"#123456\""));
}

TEST(Pict, TextHasFontSizeFaceAndPlace) {
  const std::string svg = svgOf(Pict()
                                    .Op(0x03)
                                    .Numbers({20})
                                    .Op(0x04)
                                    .Bytes8({3})
                                    .Op(0x0D)
                                    .Numbers({24})
                                    .Op(0x28)
                                    .Numbers({30, 10})
                                    .Text("Caf\x8E")
                                    .Op(0x2B)
                                    .Bytes8({5, 7})
                                    .Text("more")
                                    .End());
  EXPECT_THAT(svg, HasSubstr("<text y=\"3000\" x=\"1000\" font-family=\"Times,"));
  EXPECT_THAT(svg,
              HasSubstr("font-size=\"2400\" font-weight=\"700\" font-style=\"italic\">Caf\xC3\xA9</text>"));
  EXPECT_THAT(svg, HasSubstr("<text y=\"3700\" x=\"1500\""));
}

TEST(Pict, TextMovesAcrossOrDown) {
  const std::string svg = svgOf(Pict(false)
                                    .Op(0x28)
                                    .Numbers({30, 10})
                                    .Text("a")
                                    .Op(0x29)
                                    .Bytes8({5})
                                    .Text("b")
                                    .Op(0x2A)
                                    .Bytes8({6})
                                    .Text("c")
                                    .End());
  EXPECT_THAT(svg, HasSubstr("<text y=\"3000\" x=\"1500\""));
  EXPECT_THAT(svg, HasSubstr("<text y=\"3600\" x=\"1500\""));
}

TEST(Pict, FontsMayHaveNames) {
  const std::string svg = svgOf(Pict()
                                    .Op(0x2C)
                                    .Numbers({3 + 6, 1000})
                                    .Text("Palace")
                                    .Op(0x03)
                                    .Numbers({1000})
                                    .Op(0x28)
                                    .Numbers({30, 10})
                                    .Text("a")
                                    .End());
  EXPECT_THAT(svg, HasSubstr("font-family=\"Palace,"));
}

TEST(Pict, SymbolsBecomeTheirCharacters) {
  const std::string svg = svgOf(Pict().Op(0x03).Numbers({23}).Op(0x28).Numbers({30, 10}).Text("a").End());
  EXPECT_THAT(svg, HasSubstr(">\xCE\xB1</text>"));
}

TEST(Pict, TextMayBeStretched) {
  const std::string svg =
      svgOf(Pict().Op(0x10).Numbers({2, 1, 1, 1}).Op(0x28).Numbers({30, 10}).Text("a").End());
  EXPECT_THAT(svg, HasSubstr("transform=\"matrix(.5 0 0 1 1000 3000)\""));
}

TEST(Pict, OriginMovesWhatFollows) {
  EXPECT_THAT(svgOf(Pict().Op(0x0C).Numbers({10, 5}).Op(0x31).Numbers({5, 10, 6, 12}).End()),
              HasSubstr("M0 0h200v100"));
}

/// All opcodes that draw nothing, with data as long as they have.
TEST(Pict, OpcodesAreSkippedByTheirLength) {
  Pict pict;
  const std::vector<std::pair<uint32_t, size_t>> sizes = {
      {0x00, 0}, {0x05, 2}, {0x06, 4},  {0x15, 2},  {0x16, 2},   {0x17, 0},     {0x1C, 0},   {0x1D, 6},
      {0x1E, 0}, {0x1F, 6}, {0x35, 8},  {0x3F, 0},  {0x47, 8},   {0x66, 12},    {0x6E, 4},   {0xA0, 2},
      {0xB0, 0}, {0xCF, 0}, {0x100, 2}, {0x1FF, 2}, {0xBFF, 22}, {0x7FFF, 254}, {0x8000, 0}, {0x80FF, 0}};
  for (const auto& [opcode, size] : sizes) pict.Op(opcode).Bytes8(std::vector<uint32_t>(size, 0x31));
  for (const uint32_t opcode : {0x24u, 0x2Du, 0x2Fu, 0x92u, 0x9Fu, 0xA2u, 0xAFu})
    pict.Op(opcode).Numbers({3}).Bytes8({0x31, 0x31, 0x31});
  for (const uint32_t opcode : {0xD0u, 0xFEu, 0x8100u, 0xFFFFu})
    pict.Op(opcode).Numbers({0, 3}).Bytes8({0x31, 0x31, 0x31});
  pict.Op(0xA1).Numbers({150, 3}).Bytes8({0x31, 0x31, 0x31});
  const std::string svg = svgOf(pict.Op(0x31).Numbers({0, 0, 1, 1}).End());
  EXPECT_EQ(svg.find("<path"), svg.rfind("<path"));
  EXPECT_THAT(svg, HasSubstr("M0 0h100v100h-100z"));
}

// --- Images ---

support::Png imageIn(const std::string& svg) {
  return support::readPng(fileIn(svg, "image/png"));
}

TEST(PictImage, OfBitsHasInkAndGround) {
  const std::string svg = svgOf(Pict()
                                    .Op(0x90)
                                    .Numbers({2, 0, 0, 2, 10, 0, 0, 2, 10, 10, 20, 14, 40, 0})
                                    .Numbers({0x8000, 0x0040})
                                    .End());
  EXPECT_THAT(svg, HasSubstr("<image x=\"2000\" y=\"1000\" width=\"2000\" height=\"400\""));
  const support::Png png = imageIn(svg);
  EXPECT_EQ(png.width, 10);
  EXPECT_EQ(png.at(0, 0), 0xFF000000);
  EXPECT_EQ(png.at(1, 0), 0xFFFFFFFF);
  EXPECT_EQ(png.at(9, 1), 0xFF000000);
}

TEST(PictImage, OfBitsIsPackedByRows) {
  const std::string svg = svgOf(Pict(false)
                                    .Op(0x98)
                                    .Numbers({8, 0, 0, 2, 64, 0, 0, 2, 64, 0, 0, 2, 64, 1})
                                    .Bytes8({2, 256 - 7, 0xFF})
                                    .Bytes8({9, 7, 0x80, 0, 0, 0, 0, 0, 0, 1})
                                    .Op(0x31)
                                    .Numbers({0, 0, 1, 1})
                                    .End());
  const support::Png png = imageIn(svg);
  EXPECT_EQ(png.at(63, 0), 0xFF000000);
  EXPECT_EQ(png.at(0, 1), 0xFF000000);
  EXPECT_EQ(png.at(1, 1), 0u);  // added: white leaves what is there
  EXPECT_EQ(png.at(63, 1), 0xFF000000);
  EXPECT_THAT(svg, HasSubstr("h100v100"));
}

Pict& pixmapFront(Pict& pict, uint32_t stride, uint32_t packing, uint32_t depth, uint32_t parts,
                  uint32_t width) {
  return pict.Numbers({0x8000 | stride,      0,     0,     1,     width, 0, packing, 0, 0, 72, 0, 72, 0,
                       depth > 8 ? 16u : 0u, depth, parts, depth, 0,     0, 0,       0, 0, 0});
}

TEST(PictImage, OfFourBitsHasColours) {
  Pict pict;
  pixmapFront(pict.Op(0x98), 4, 0, 4, 1, 3);
  pict.Numbers({0, 0, 0, 1, 1, 0xFFFF, 0, 0, 2, 0, 0xFFFF, 0}).Numbers({0, 0, 1, 3, 0, 0, 1, 3, 0});
  const support::Png png = imageIn(svgOf(pict.Numbers({0x1200, 0}).End()));
  EXPECT_THAT(png.pixels, testing::ElementsAre(0xFFFF0000, 0xFF00FF00, 0xFF000000));
}

TEST(PictImage, OfSixteenBitsIsPackedByWords) {
  Pict pict;
  pict.Op(0x9A).Numbers({0, 0xFF});
  pixmapFront(pict, 8, 0, 16, 3, 4).Numbers({0, 0, 1, 4, 0, 0, 1, 4, 0});
  const support::Png png = imageIn(svgOf(pict.Bytes8({6, 256 - 2, 0x7C, 0, 0, 0x03, 0xE0}).End()));
  EXPECT_THAT(png.pixels, testing::ElementsAre(0xFFFF0000, 0xFFFF0000, 0xFFFF0000, 0xFF00FF00));
}

TEST(PictImage, OfThirtyTwoBitsIsPackedByParts) {
  for (const uint32_t parts : {3u, 4u}) {
    Pict pict;
    pict.Op(0x9A).Numbers({0, 0xFF});
    pixmapFront(pict, 8, 4, 32, parts, 2).Numbers({0, 0, 1, 2, 0, 0, 1, 2, 0});
    if (parts == 3) pict.Bytes8({7, 5, 1, 2, 3, 4, 5, 6});
    if (parts == 4) pict.Bytes8({9, 7, 0, 0, 1, 2, 3, 4, 5, 6});
    EXPECT_THAT(imageIn(svgOf(pict.End())).pixels, testing::ElementsAre(0xFF010305, 0xFF020406));
  }
}

TEST(PictImage, OfThirtyTwoBitsMayBeUnpacked) {
  for (const uint32_t packing : {1u, 2u}) {
    Pict pict;
    pict.Op(0x9A).Numbers({0, 0xFF});
    pixmapFront(pict, 8, packing, 32, 3, 2).Numbers({0, 0, 1, 2, 0, 0, 1, 2, 0});
    pict.Bytes8(packing == 1 ? std::vector<uint32_t>{0, 1, 2, 3, 0, 4, 5, 6}
                             : std::vector<uint32_t>{1, 2, 3, 4, 5, 6});
    EXPECT_THAT(imageIn(svgOf(pict.End())).pixels, testing::ElementsAre(0xFF010203, 0xFF040506));
  }
}

TEST(PictImage, PartOfOneIsCut) {
  const std::string svg = svgOf(Pict()
                                    .Op(0x90)
                                    .Numbers({2, 0, 0, 2, 10, 1, 2, 2, 10, 0, 0, 10, 80, 0})
                                    .Numbers({0x8000, 0x0040})
                                    .End());
  const support::Png png = imageIn(svg);
  EXPECT_EQ(png.width, 8);
  EXPECT_EQ(png.height, 1);
  EXPECT_EQ(png.at(7, 0), 0xFF000000);
  EXPECT_THAT(svg, HasSubstr("width=\"8000\" height=\"1000\""));
}

TEST(PictImage, RegionClipsIt) {
  const std::string svg = svgOf(Pict()
                                    .Op(0x91)
                                    .Numbers({2, 0, 0, 1, 10, 0, 0, 1, 10, 0, 0, 1, 10, 0})
                                    .Numbers({10, 0, 0, 1, 5})
                                    .Numbers({0xFFFF})
                                    .End());
  EXPECT_THAT(svg, HasSubstr("<clipPath"));
  EXPECT_THAT(svg, HasSubstr("M0 0h500v100h-500z"));
}

TEST(PictImage, PatternMayBeOne) {
  Pict pict;
  pict.Op(0x13).Numbers({1, 0, 0, 0, 0});
  pixmapFront(pict, 2, 0, 8, 1, 2).Numbers({0, 0, 0, 1, 0, 0, 0, 0, 1, 0xFFFF, 0, 0}).Bytes8({1, 0});
  const std::string svg = svgOf(pict.Op(0x31).Numbers({0, 0, 8, 8}).End());
  EXPECT_THAT(imageIn(svg).pixels, testing::ElementsAre(0xFFFF0000, 0xFF000000));
  EXPECT_THAT(svg, HasSubstr("url(#p1)"));
}

TEST(PictImage, JpegOfQuickTimeIsPassed) {
  Pict pict;
  pict.Op(0x8200).Numbers({0, 68 + 86 + 4});
  pict.Numbers({1, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 10, 0, 20, 0, 0x4000, 0});  // moved by 10, 20
  pict.Numbers({0, 0, 0, 0, 0, 0, 0, 0, 0, 16, 8, 0, 0, 0, 0});
  pict.Numbers({0, 86}).Bytes8({'j', 'p', 'e', 'g'});
  for (int i = 0; i < 18; ++i) pict.Numbers({0});
  pict.Numbers({0, 4});
  for (int i = 0; i < 19; ++i) pict.Numbers({0});
  const std::string svg = svgOf(pict.Bytes8({0xFF, 0xD8, 0xFF, 0xD9}).End());
  EXPECT_THAT(svg, HasSubstr("<image x=\"1000\" y=\"2000\" width=\"800\" height=\"1600\""));
  EXPECT_THAT(fileIn(svg, "image/jpeg"), testing::ElementsAre(0xFF, 0xD8, 0xFF, 0xD9));
}

// --- Damaged ---

TEST(PictDamaged, IsNone) {
  EXPECT_EQ(svgOf({}, PictureResult::kNothing), "");
  EXPECT_EQ(svgOf(Bytes(600, 0), PictureResult::kNothing), "");
  Bytes empty = Pict().End();
  support::patchBytes(empty, 6, {0, 0});
  EXPECT_EQ(svgOf(empty, PictureResult::kNothing), "");
}

TEST(PictDamaged, ShortenedAnywhereIsWholeMarkup) {
  Pict pict;
  pixmapFront(pict.Op(0x98), 4, 0, 4, 1, 3);
  pict.Numbers({0, 0, 0, 1, 1, 0xFFFF, 0, 0, 2, 0, 0xFFFF, 0})
      .Numbers({0, 0, 1, 3, 0, 0, 1, 3, 0, 0x1200, 0});
  pict.Op(0x81).Numbers(kCross).Op(0x71).Numbers({22, 0, 0, 10, 10, 0, 0, 0, 10, 10, 10});
  pict.Op(0x01).Numbers(kCross).Op(0x28).Numbers({30, 10}).Text("text");
  const Bytes whole = pict.End();
  for (size_t size = 0; size < whole.size(); ++size) {
    support::PictureMemory sink;
    pagerex::playPict({whole.data(), size}, {}, sink);
    const std::string svg(sink.bytes.begin(), sink.bytes.end());
    EXPECT_TRUE(svg.empty() || svg.ends_with("</svg>\n")) << size;
  }
}

TEST(PictDamaged, ImagesOfHugeSizeCostLittle) {
  for (const uint32_t opcode : {0x90u, 0x98u}) {
    const std::string svg =
        svgOf(Pict()
                  .Op(opcode)
                  .Numbers({0x7FFE, 0x8000, 0x8000, 0x7FFF, 0x7FFF, 0, 0, 100, 100, 0, 0, 1, 1, 0})
                  .Bytes8(std::vector<uint32_t>(1000, 0))
                  .End(),
              PictureResult::kInPart);
    EXPECT_LT(svg.size(), 1000u);
  }
}

TEST(PictDamaged, ManyTimesTheSameShapeHasALimit) {
  Pict pict;
  pict.Op(0x71).Numbers({60'010, 0, 0, 10, 10});
  for (uint32_t i = 0; i < 15'000; ++i) pict.Numbers({i * 7919 % 30'000, i * 104'729 % 30'000});
  for (int i = 0; i < 2000; ++i) pict.Op(0x79);
  const Bytes bytes = pict.End();
  EXPECT_LT(svgOf(bytes, PictureResult::kInPart).size(), (size_t{16} << 20) + 64 * bytes.size() + 1000);
}

TEST(PictDamaged, SinkMayRefuse) {
  const Bytes pict = Pict().Op(0x31).Numbers({0, 0, 1, 1}).End();
  support::PictureMemory sink(10);
  EXPECT_EQ(pagerex::playPict({pict.data(), pict.size()}, {}, sink), PictureResult::kRefused);
}

}  // namespace

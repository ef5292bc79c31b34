#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "flow/shape_facts.h"
#include "flow/walked_document.h"
#include "support/canvas.h"
#include "support/drawing_writer.h"

using namespace flow_test;
using namespace support;
using namespace support::drawing;
using pagerex::Arrowhead;
using pagerex::ShapeFacts;
using pagerex::ShapeFill;
using pagerex::ShapeLine;
using pagerex::ShapePlace;
using pagerex::ShapeText;

namespace {

/// Keeps what is told of shapes.
class Shapes : public pagerex::FlowHandler {
 public:
  std::vector<ShapeFacts> shapes;
  size_t without = 0;
  pagerex::Shading background;

  void BeginDocument(const pagerex::DocumentFacts& facts) override { background = facts.background; }
  void Text(std::u16string_view, const pagerex::RunProperties&) override {}
  void Picture(const pagerex::PictureFacts& facts) override { Keep(facts); }
  void BeginTextBox(const pagerex::TextBoxFacts& facts) override { Keep(facts.shape); }

 private:
  void Keep(const pagerex::PictureFacts& facts) {
    facts.shape ? shapes.push_back(*facts.shape) : void(++without);
  }
};

std::vector<ShapeFacts> shapesOf(const WordDocument& doc) {
  Shapes told;
  walkInto(doc.build(), told);
  return told.shapes;
}

constexpr Rect kBox = {100, 200, 2100, 1200};

/// A floating shape, as it is told.
ShapeFacts told(const Shape& shape, const Place& place = {.rect = kBox}) {
  WordDocument doc;
  addShape(doc.paragraph("a"), shape, place);
  const std::vector<ShapeFacts> shapes = shapesOf(doc);
  EXPECT_EQ(shapes.size(), 1u);
  return shapes.empty() ? ShapeFacts() : shapes[0];
}

ShapeFacts told(const Props& props, uint16_t type = kRectangle) {
  return told(Shape(type).props(props));
}

/// A shape with an anchor whose flags are these.
ShapeFacts toldWithFlags(uint16_t flags, const Props& userProps = {}) {
  WordDocument doc;
  const Shape shape = Shape(kRectangle).userProps(userProps);
  Bytes place = placeBytes(shape.id(), {.rect = kBox});
  place[20] = static_cast<uint8_t>(flags);
  place[21] = static_cast<uint8_t>(flags >> 8);
  doc.paragraph("a").floating(place, shape.bytes());
  const std::vector<ShapeFacts> shapes = shapesOf(doc);
  EXPECT_EQ(shapes.size(), 1u);
  return shapes.empty() ? ShapeFacts() : shapes[0];
}

void expectBox(const ShapeFacts& shape, int left, int top, int width, int height) {
  EXPECT_EQ(shape.box.left, left);
  EXPECT_EQ(shape.box.top, top);
  EXPECT_EQ(shape.box.width, width);
  EXPECT_EQ(shape.box.height, height);
}

uint32_t fillColour(uint32_t value) {
  return told(Props().number(property::kFillColour, value)).fill.rgb;
}

}  // namespace

// Outlines

TEST(WalkShapes, TypeFlipsTurnAndAdjustmentsAreTold) {
  const ShapeFacts shape =
      told(Shape(kEllipse).flip(true, false).props(Props().fixed(0x0004, -30.5).number(0x0148, 77)));
  EXPECT_EQ(shape.geometry.type, kEllipse);
  EXPECT_TRUE(shape.geometry.flipsX);
  EXPECT_FALSE(shape.geometry.flipsY);
  EXPECT_FLOAT_EQ(shape.geometry.rotation, 329.5f);
  EXPECT_FALSE(shape.geometry.adjustments[0].has_value());
  EXPECT_EQ(shape.geometry.adjustments[1], 77);
  expectBox(shape, 100, 200, 2000, 1000);
}

TEST(WalkShapes, TheBoxOfAShapeThatIsTurnedAQuarterStandsUp) {
  expectBox(told(Props().fixed(0x0004, 90)), 600, -300, 1000, 2000);
  expectBox(told(Props().fixed(0x0004, 44)), 100, 200, 2000, 1000);
  expectBox(told(Props().fixed(0x0004, 300)), 600, -300, 1000, 2000);
}

TEST(WalkShapes, FreeformsHaveTheirPoints) {
  const Props props =
      Props()
          .number(property::kGeometryRight, 500)
          .array(property::kVertices, 2, 8, ByteWriter().u32(10).u32(0xFFFFFFFF).u32(30).u32(40).take())
          .array(property::kSegments, 2, 2, ByteWriter().u16(0x4000).u16(0x0001).take())
          .array(0x0156, 1, 8, ByteWriter().u16(0x4001).u16(7).u16(0x0147).u16(0xFFFF).take());
  const auto geometry = told(props, kFreeform).geometry;
  EXPECT_EQ(geometry.right, 500);
  EXPECT_EQ(geometry.bottom, 21600);
  ASSERT_EQ(geometry.vertices.size(), 2u);
  EXPECT_EQ(geometry.vertices[0].y, -1);
  EXPECT_EQ(geometry.vertices[1].x, 30);
  EXPECT_EQ(geometry.segments, (std::vector<uint16_t>{0x4000, 0x0001}));
  ASSERT_EQ(geometry.guides.size(), 1u);
  EXPECT_EQ(geometry.guides[0].kind, 1);
  EXPECT_TRUE(geometry.guides[0].isReference[1]);
  EXPECT_EQ(geometry.guides[0].values, (std::array<int16_t, 3>{7, 0x0147, -1}));
}

TEST(WalkShapes, PointsOfTwoBytesHaveASign) {
  const Props props = Props().array(property::kVertices, 1, 0xFFF0, ByteWriter().u16(0xFFFF).u16(5).take());
  const auto geometry = told(props, kFreeform).geometry;
  ASSERT_EQ(geometry.vertices.size(), 1u);
  EXPECT_EQ(geometry.vertices[0].x, -1);
  EXPECT_EQ(geometry.vertices[0].y, 5);
}

// Fill, line, shadow

TEST(WalkShapes, ShapesAreWhiteWithABlackLineUnlessTheySayOtherwise) {
  const ShapeFacts shape = told(Props());
  EXPECT_EQ(shape.fill.kind, ShapeFill::Kind::kSolid);
  EXPECT_EQ(shape.fill.rgb, 0xFFFFFFu);
  EXPECT_TRUE(shape.line.isThere);
  EXPECT_EQ(shape.line.rgb, 0u);
  EXPECT_EQ(shape.line.width, 9525);
  EXPECT_FALSE(shape.shadow.isThere);
  EXPECT_EQ(told(Props().flag(property::kIsFilled, false)).fill.kind, ShapeFill::Kind::kNone);
  EXPECT_FALSE(told(Props().flag(property::kHasLine, false)).line.isThere);
}

TEST(WalkShapes, PicturesHaveNeitherFillNorLineUnlessTheySaySo) {
  EXPECT_EQ(told(Props(), kPictureFrame).fill.kind, ShapeFill::Kind::kNone);
  EXPECT_FALSE(told(Props(), kPictureFrame).line.isThere);
  EXPECT_TRUE(told(Props().flag(property::kHasLine, true), kPictureFrame).line.isThere);
}

TEST(WalkShapes, ColoursAreWorkedOut) {
  EXPECT_EQ(fillColour(0x00332211), 0x112233u);
  EXPECT_EQ(fillColour(0x08000002), 0xFF0000u) << "of the palette";
  EXPECT_EQ(fillColour(0x08000041), 0xFFFFFFu) << "of windows";
  EXPECT_EQ(fillColour(0x10000005), 0xFFFFFFu) << "of the system";
  EXPECT_EQ(fillColour(0xFF000000), 0xFFFFFFu) << "the usual one";
}

TEST(WalkShapes, ColoursAreMadeFromOtherColoursOfTheShape) {
  const auto second = [](uint32_t value) {
    const Props props =
        Props().number(property::kFillColour, 0x004080FF).number(property::kFillBackColour, value);
    return told(props).fill.backRgb;
  };
  EXPECT_EQ(second(0x100000F0), 0xFF8040u);
  EXPECT_EQ(second(0x108001F0), 0x804020u) << "darker by half";
  EXPECT_EQ(second(0x108002F0), 0xFFC0A0u) << "lighter by half";
  EXPECT_EQ(second(0x100020F0), 0x007FBFu) << "inverted";
  EXPECT_EQ(second(0x100000F5), 0xFFFFFFu) << "made from itself";
}

TEST(WalkShapes, ColoursThatAreMadeFromEachOtherEnd) {
  const Props props =
      Props().number(property::kFillColour, 0x100000F5).number(property::kFillBackColour, 0x100000F0);
  EXPECT_EQ(told(props).fill.rgb, 0xFFFFFFu);
}

TEST(WalkShapes, GradientsHaveTheirColours) {
  const Props props =
      Props()
          .number(property::kFillType, 7)
          .fixed(property::kFillOpacity, 0.5)
          .fixed(property::kFillAngle, -90)
          .number(property::kFillFocus, 100)
          .array(0x0197, 2, 8, ByteWriter().u32(0x0000FF).u32(0).u32(0xFF0000).u32(0x8000).take());
  const ShapeFill fill = told(props).fill;
  EXPECT_EQ(fill.kind, ShapeFill::Kind::kLinear);
  EXPECT_FLOAT_EQ(fill.opacity, 0.5f);
  EXPECT_FLOAT_EQ(fill.angle, -90);
  EXPECT_EQ(fill.focus, 100);
  ASSERT_EQ(fill.stops.size(), 2u);
  EXPECT_EQ(fill.stops[0].rgb, 0xFF0000u);
  EXPECT_FLOAT_EQ(fill.stops[1].place, 0.5f);
}

TEST(WalkShapes, PatternsHaveTheirRows) {
  ByteWriter dib;
  dib.u32(40).u32(8).u32(8).u16(1).u16(1).zeros(24).u32(0x000000).u32(0xFFFFFF);
  for (unsigned row = 0; row < 8; ++row) dib.u8(static_cast<uint8_t>(~(1 << row))).zeros(3);
  WordDocument doc;
  const uint32_t picture = doc.storePicture(Blip{.type = 7, .data = dib.take()}.entry());
  const Props props = Props().number(property::kFillType, 1).number(property::kFillPicture, picture);
  addShape(doc.paragraph("a"), Shape(kRectangle).props(props));
  const std::vector<ShapeFacts> shapes = shapesOf(doc);
  ASSERT_EQ(shapes.size(), 1u);
  EXPECT_EQ(shapes[0].fill.kind, ShapeFill::Kind::kPattern);
  EXPECT_EQ(shapes[0].fill.pictureIdentity, picture);
  EXPECT_EQ(shapes[0].fill.pattern, (std::array<uint8_t, 8>{128, 64, 32, 16, 8, 4, 2, 1}));
}

TEST(WalkShapes, LinesHaveDashesEndsAndCorners) {
  const ShapeLine line = told(Props()
                                  .number(property::kLineColour, 0x00FF00)
                                  .number(property::kLineWidth, 38100)
                                  .number(property::kLineStyle, 2)
                                  .number(property::kLineDashing, 6)
                                  .number(0x01D0, 5)
                                  .number(property::kLineEndArrow, 1)
                                  .number(0x01D4, 2)
                                  .number(0x01D5, 0)
                                  .number(0x01D6, 1)
                                  .number(0x01D7, 0))
                             .line;
  EXPECT_EQ(line.rgb, 0x00FF00u);
  EXPECT_EQ(line.width, 38100);
  EXPECT_EQ(line.style, ShapeLine::Style::kThickThin);
  EXPECT_EQ(line.dash, 6);
  EXPECT_EQ(line.start.kind, Arrowhead::Kind::kOpen);
  EXPECT_EQ(line.start.width, 1);
  EXPECT_EQ(line.end.kind, Arrowhead::Kind::kTriangle);
  EXPECT_EQ(line.end.width, 2);
  EXPECT_EQ(line.end.length, 0);
  EXPECT_EQ(line.join, ShapeLine::Join::kMiter);
  EXPECT_EQ(line.cap, ShapeLine::Cap::kRound);
}

TEST(WalkShapes, ValuesOutsideTheirRangeAreTheUsualOnes) {
  const ShapeFacts shape = told(Props()
                                    .number(property::kLineStyle, 99)
                                    .number(property::kLineWidth, 0x80000000)
                                    .number(property::kLineDashing, 0xFFFFFFFF)
                                    .number(0x01D0, 77)
                                    .number(property::kFillOpacity, 0x7FFFFFFF)
                                    .number(property::kFillType, 0xFFFFFFFF)
                                    .number(0x0087, 1000));
  EXPECT_EQ(shape.line.style, ShapeLine::Style::kSingle);
  EXPECT_EQ(shape.line.width, 0);
  EXPECT_EQ(shape.line.dash, 0);
  EXPECT_EQ(shape.line.start.kind, Arrowhead::Kind::kNone);
  EXPECT_FLOAT_EQ(shape.fill.opacity, 1);
  EXPECT_EQ(shape.fill.kind, ShapeFill::Kind::kSolid);
  EXPECT_EQ(shape.text.anchor, ShapeText::Anchor::kTop);
}

TEST(WalkShapes, ShadowsHaveColourAndPlace) {
  const auto shadow =
      told(Props().flag(property::kHasShadow, true).number(property::kShadowColour, 0x10).number(0x0206, 5))
          .shadow;
  EXPECT_TRUE(shadow.isThere);
  EXPECT_EQ(shadow.rgb, 0x100000u);
  EXPECT_EQ(shadow.x, 25400);
  EXPECT_EQ(shadow.y, 5);
}

// Text and pictures

TEST(WalkShapes, TextHasItsPlaceInTheShape) {
  const ShapeText text =
      told(
          Props().number(0x0081, 10).number(0x0084, 20).number(0x0087, 4).number(0x0085, 2).number(0x0088, 1))
          .text;
  EXPECT_EQ(text.left, 10);
  EXPECT_EQ(text.top, 45720);
  EXPECT_EQ(text.bottom, 20);
  EXPECT_EQ(text.anchor, ShapeText::Anchor::kMiddle);
  EXPECT_TRUE(text.isCentred);
  EXPECT_FALSE(text.wraps);
  EXPECT_EQ(text.flow, 1);
}

TEST(WalkShapes, LetteringHasItsFont) {
  const auto art = told(Props()
                            .text(property::kWordArtText, u"DRAFT")
                            .text(property::kWordArtFont, u"Arial Black")
                            .flag(property::kWordArtBold, true),
                        kPlainText)
                       .art;
  EXPECT_EQ(art.text, u"DRAFT");
  EXPECT_EQ(art.font, u"Arial Black");
  EXPECT_TRUE(art.isBold);
  EXPECT_FALSE(art.isItalic);
}

TEST(WalkShapes, PicturesAreCroppedAndHaveBorders) {
  WordDocument doc;
  Inline picture{.shape = Shape(kPictureFrame).props(Props().fixed(0x0102, 0.25).fixed(0x0101, -0.5))};
  Bytes data = picture.bytes();
  const Bytes border = {12, 1, 6, 0};  // red, a point and a half
  std::copy(border.begin(), border.end(), data.begin() + 46);
  doc.paragraph().special(1, {sprm(0x6A03, doc.data(data))});
  const std::vector<ShapeFacts> shapes = shapesOf(doc);
  ASSERT_EQ(shapes.size(), 1u);
  EXPECT_FLOAT_EQ(shapes[0].picture.cropLeft, 0.25f);
  EXPECT_FLOAT_EQ(shapes[0].picture.cropBottom, -0.5f);
  EXPECT_EQ(shapes[0].picture.top.widthEighths, 12);
  EXPECT_EQ(shapes[0].picture.top.colour.rgb, 0xFF0000u);
  EXPECT_FALSE(shapes[0].picture.left.isThere());
  EXPECT_EQ(shapes[0].box.width, 1440);
}

// Places

TEST(WalkShapes, AnchorsSayWhatPlacesCountFrom) {
  const ShapePlace place = toldWithFlags(1 << 1 | 0 << 3 | 2 << 5 | 2 << 9).place;
  EXPECT_EQ(place.fromX, ShapePlace::From::kPage);
  EXPECT_EQ(place.fromY, ShapePlace::From::kMargin);
  EXPECT_EQ(place.wrapSide, ShapePlace::Wrap::kRight);
  EXPECT_EQ(place.horizontal, ShapePlace::Side::kAbsolute);
  EXPECT_EQ(place.anchor.width, 2000);
  EXPECT_EQ(place.distanceLeft, 114300);
}

TEST(WalkShapes, ShapesSayBetterWhereTheyStand) {
  const Props props =
      Props().number(0x0384, 1).number(0x038F, 2).number(0x0390, 0).number(0x0391, 3).number(0x0392, 3);
  const ShapePlace place = toldWithFlags(1 << 1 | 1 << 3, props).place;
  EXPECT_EQ(place.horizontal, ShapePlace::Side::kCentre);
  EXPECT_EQ(place.fromX, ShapePlace::From::kMargin);
  EXPECT_EQ(place.vertical, ShapePlace::Side::kEnd);
  EXPECT_EQ(place.fromY, ShapePlace::From::kCharacter);
  EXPECT_EQ(place.distanceLeft, 1);
  EXPECT_FALSE(place.isInLine);
  EXPECT_TRUE(toldWithFlags(0, Props().flag(0x053F, true)).place.isInLine);
}

TEST(WalkShapes, ChildrenStandWhereTheirGroupPutsThem) {
  const Shape child = Shape(kRectangle, 1026).at({0, 0, 100, 50});
  const Shape group = Shape(0, 1025).userProps(Props().number(0x038F, 2)).group({0, 0, 200, 100}, {child});
  const ShapeFacts shape = told(group);
  expectBox(shape, 100, 200, 1000, 500);
  EXPECT_TRUE(shape.place.isInGroup);
  EXPECT_EQ(shape.place.horizontal, ShapePlace::Side::kCentre);
  EXPECT_EQ(shape.place.anchor.width, 2000);
}

TEST(WalkShapes, GroupsFlipAndTurnTheirChildren) {
  const Shape child = Shape(kRectangle, 1026).at({0, 0, 100, 50}).props(Props().fixed(0x0004, 10));
  const ShapeFacts flipped = told(Shape(0, 1025).flip(true, false).group({0, 0, 200, 100}, {child}));
  expectBox(flipped, 1100, 200, 1000, 500);
  EXPECT_TRUE(flipped.geometry.flipsX);
  EXPECT_FLOAT_EQ(flipped.geometry.rotation, 350);

  const ShapeFacts turned =
      told(Shape(0, 1025).props(Props().fixed(0x0004, 180)).group({0, 0, 200, 100}, {child}));
  expectBox(turned, 1100, 700, 1000, 500);
  EXPECT_FLOAT_EQ(turned.geometry.rotation, 190);
}

TEST(WalkShapes, GroupsInGroupsAddUp) {
  const Shape child = Shape(kRectangle, 1027).at({0, 0, 10, 10});
  const Shape inner = Shape(0, 1026).at({100, 0, 200, 100}).group({0, 0, 20, 20}, {child});
  const ShapeFacts shape = told(Shape(0, 1025).flip(false, true).group({0, 0, 200, 100}, {inner}));
  expectBox(shape, 1100, 700, 500, 500);
  EXPECT_TRUE(shape.geometry.flipsY);
}

TEST(WalkShapes, TheOrderIsThatOfTheDrawing) {
  WordDocument doc;
  addShape(addShape(doc.paragraph("a"), Shape(kRectangle, 1025)), Shape(kEllipse, 1026));
  const std::vector<ShapeFacts> shapes = shapesOf(doc);
  ASSERT_EQ(shapes.size(), 2u);
  EXPECT_LT(shapes[0].place.order, shapes[1].place.order);
}

// Where properties come from

TEST(WalkShapes, WhatIsNotToldIsThatOfTheMaster) {
  constexpr uint16_t kMaster = 0x0301;
  WordDocument doc;
  const Props master = Props().number(property::kFillColour, 0x010203).flag(property::kHasLine, false);
  const Props own = Props().number(kMaster, 1025).number(property::kFillBackColour, 0x040506);
  addShape(addShape(doc.paragraph("a"), Shape(kRectangle, 1025).props(master)),
           Shape(kEllipse, 1026).props(own));
  const std::vector<ShapeFacts> shapes = shapesOf(doc);
  ASSERT_EQ(shapes.size(), 2u);
  EXPECT_EQ(shapes[1].fill.rgb, 0x030201u);
  EXPECT_EQ(shapes[1].fill.backRgb, 0x060504u);
  EXPECT_FALSE(shapes[1].line.isThere);
}

TEST(WalkShapes, MastersOfEachOtherEnd) {
  const ShapeFacts shape = told(Props().number(0x0301, 1025).number(property::kFillColour, 0x0A));
  EXPECT_EQ(shape.fill.rgb, 0x0A0000u);
}

TEST(WalkShapes, TheBackgroundOfPagesIsTold) {
  const auto background = [](const Props& props) {
    WordDocument doc;
    doc.paragraph("a");
    const Bytes shape = Shape(kRectangle, 1025).flags(0x400).props(props).bytes();
    const Bytes drawing =
        container(0xF002, {record(0xF008, 1, 0, Bytes(8)),
                           container(0xF003, {Shape(0, 1024).flags(4).group({}, {}).ownContainer()}), shape});
    doc.table(mso_word::FCLCB_DRAWINGS, ByteWriter().bytes(groupContainer({})).u8(0).bytes(drawing).take());
    Shapes shapes;
    walkInto(doc.build(), shapes);
    return shapes.background;
  };
  const pagerex::Shading yellow = background(Props().number(property::kFillColour, 0x00FFFF));
  EXPECT_TRUE(yellow.isThere);
  EXPECT_EQ(yellow.fill.rgb, 0xFFFF00u);
  EXPECT_FALSE(background(Props()).isThere);
  EXPECT_FALSE(background(Props().number(property::kFillColour, 5).flag(property::kIsFilled, false)).isThere);
}

TEST(WalkShapes, PropertiesOfOneShapeAreNotReadWithoutEnd) {
  const Bytes points(8 * 30000);
  WordDocument doc;
  const Sprms picture = pictureRun(
      doc, {.shape = Shape(kFreeform).props(Props().array(property::kVertices, 30000, 8, points))});
  Paragraph& paragraph = doc.paragraph();
  constexpr size_t kPictures = 2000;
  for (size_t i = 0; i < kPictures; ++i) paragraph.special(1, picture);
  Shapes told;
  const pagerex::Warnings warnings = walkInto(doc.build(), told);
  EXPECT_GT(told.shapes.size(), 0u);
  EXPECT_GT(told.without, 0u);
  EXPECT_EQ(told.shapes.size() + told.without, kPictures);
  EXPECT_TRUE(std::any_of(warnings.all().begin(), warnings.all().end(), [](const pagerex::Warning& warning) {
    return warning.code == pagerex::WarningCode::kWorkLimit;
  }));
}

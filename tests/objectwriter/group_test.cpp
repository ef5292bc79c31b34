#include <gtest/gtest.h>

#include "objectwriter/object_page.h"

namespace {

using support::drawing::Drawing;
using support::drawing::Props;
using support::drawing::Rect;
using support::drawing::Shape;

constexpr Rect kBox = {200, 400, 2200, 1400};  // twips: 10, 20, 100 wide, 50 high in points

std::string objectOf(const Shape& shape) {
  ObjectPage page(shape, {.rect = kBox});
  return page.written([](auto& writer) { writer.WriteObject(0, false); });
}

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(Group, WrapsItsChildren) {
  const Shape group = Shape(0, 10).group({100, 200, 1100, 700}, {Shape(201, 11).at({100, 200, 600, 450}),
                                                                 Shape(201, 12).at({600, 450, 1100, 700})});
  const std::string child =
      "\r\n<v:shape o:spt=\"201\" coordsize=\"21600,21600\">\r\n"
      "<v:imagedata></v:imagedata>\r\n</v:shape>";
  EXPECT_EQ(
      objectOf(group),
      "<!--[if gte vml 1]><v:group id=\"10\" style=\"position:absolute;left:0;text-align:left;"
      "margin-left:10.00pt;margin-top:20.00pt;width:100.00pt;height:50.00pt;z-index:1;\""
      " coordorigin=\"100,200\" coordsize=\"1000,500\">" +
          child + child +
          "</v:group><![endif]--><![if !vml]>"
          "<div style=\"position:absolute;left:0;text-align:left;margin-left:10.00pt;margin-top:20.00pt;"
          "width:100.00pt;height:50.00pt;z-index:1;\">\r\n"
          "<div id=\"11\" style=\"position:absolute;left:0;text-align:left;margin-left:0.00pt;"
          "margin-top:0.00pt;width:50.00pt;height:25.00pt;z-index:1;\"></div>\r\n"
          "<div id=\"12\" style=\"position:absolute;left:0;text-align:left;margin-left:50.00pt;"
          "margin-top:25.00pt;width:50.00pt;height:25.00pt;z-index:2;\"></div></div><![endif]>");
}

TEST(Group, ChildHasABoxWithoutUnit) {
  const std::string markup =
      objectOf(Shape(0, 10).group({0, 0, 100, 100}, {Shape(1, 11).at({10, 20, 40, 60})}));
  EXPECT_TRUE(has(markup, "margin-left:10.00;margin-top:20.00;width:30.00;height:40.00;z-index:1;"));
}

TEST(Group, ChildLineHasEndsWithoutUnit) {
  const std::string markup =
      objectOf(Shape(0, 10).group({0, 0, 100, 100}, {Shape(20, 11).at({10, 20, 40, 60})}));
  EXPECT_TRUE(has(markup, " from=\"10.00,20.00\" to=\"40.00,60.00\""));
}

TEST(Group, ScaleComesFromTheOutermostGroup) {
  const Shape inner =
      Shape(0, 11).at({500, 0, 1000, 500}).group({0, 0, 50, 50}, {Shape(201, 12).at({5, 10, 15, 20})});
  const std::string markup = objectOf(Shape(0, 10).group({0, 0, 1000, 500}, {inner}));
  // A tenth of a point a unit, whatever the inner group's own space is.
  EXPECT_TRUE(has(markup, "margin-left:50.00pt;margin-top:0.00pt;width:50.00pt;height:50.00pt;z-index:1;"));
  EXPECT_TRUE(has(markup,
                  "<div id=\"12\" style=\"position:absolute;left:0;text-align:left;margin-left:0.50pt;"
                  "margin-top:1.00pt;width:1.00pt;height:1.00pt;z-index:1;\">"))
      << markup;
}

TEST(Group, OriginComesFromTheGroupAround) {
  const Shape inner = Shape(0, 11)
                          .at({0, 0, 500, 500})
                          .group({100, 100, 150, 150}, {Shape(201, 12).at({105, 110, 115, 120})});
  const std::string markup = objectOf(Shape(0, 10).group({0, 0, 1000, 500}, {inner}));
  EXPECT_TRUE(has(markup,
                  "<div id=\"12\" style=\"position:absolute;left:0;text-align:left;margin-left:0.50pt;"
                  "margin-top:1.00pt;"))
      << markup;
}

TEST(Group, SpaceWithoutSizeHasTheScaleZero) {
  const std::string markup =
      objectOf(Shape(0, 10).group({5, 5, 5, 5}, {Shape(201, 11).at({10, 20, 40, 60})}));
  EXPECT_TRUE(has(markup, "margin-left:0.00pt;margin-top:0.00pt;width:0.00pt;height:0.00pt;z-index:1;"));
  EXPECT_FALSE(has(markup, "nan"));
  EXPECT_FALSE(has(markup, "inf"));
}

TEST(Group, SpaceThatIsFlatOnOneSideKeepsTheOtherScale) {
  const std::string markup =
      objectOf(Shape(0, 10).group({0, 0, 0, 100}, {Shape(201, 11).at({10, 20, 40, 60})}));
  EXPECT_TRUE(has(markup, "margin-left:0.00pt;margin-top:10.00pt;width:0.00pt;height:20.00pt;z-index:1;"));
}

/// The largest numbers that a file holds come out as numbers.
TEST(Group, LargestSpacesAndPlacesAreNumbers) {
  const int32_t least = -2147483647 - 1, most = 2147483647;
  for (const Rect& space :
       {Rect{0, 0, 1, 1}, Rect{least, least, most, most}, Rect{most, most, least, least}}) {
    ObjectPage page(Shape(0, 10).group(space, {Shape(3, 11).at({least, least, most, most}),
                                               Shape(20, 12).at({most, least, least, most})}),
                    {.rect = {least, most, most, least}});
    const std::string markup = page.written([](auto& writer) { writer.WriteObject(0, false); });
    EXPECT_FALSE(has(markup, "nan"));
    EXPECT_FALSE(has(markup, "inf"));
  }
}

TEST(Group, RotatedChildHasItsBoxTurnedInTheSpaceOfTheGroup) {
  const Shape child = Shape(201, 11).at({10, 20, 50, 40}).props(Props().fixed(0x0004, 90));
  const std::string markup = objectOf(Shape(0, 10).group({0, 0, 100, 50}, {child}));
  // 40 by 20 about 30, 30: 20 by 40 at 20, 10.
  EXPECT_TRUE(has(markup, "margin-left:20.00pt;margin-top:10.00pt;width:20.00pt;height:40.00pt;z-index:1;"));
}

TEST(Group, RotatedGroupIsTurnedAndItsChildrenScaleWithIt) {
  const Shape group = Shape(0, 10)
                          .props(Props().fixed(0x0004, 90))
                          .group({0, 0, 50, 100}, {Shape(201, 11).at({0, 0, 50, 100})});
  const std::string markup = objectOf(group);
  // 100 by 50 about 60, 45: 50 by 100 at 35, -5.
  EXPECT_TRUE(
      has(markup, "margin-left:35.00pt;margin-top:-5.00pt;width:50.00pt;height:100.00pt;rotation:90;"));
  EXPECT_TRUE(has(markup, "margin-left:0.00pt;margin-top:0.00pt;width:50.00pt;height:100.00pt;z-index:1;"));
}

TEST(Group, ChildWithoutAnchorHasAnEmptyBox) {
  const std::string markup = objectOf(Shape(0, 10).group({0, 0, 10, 10}, {Shape(1, 11).flags(2)}));
  EXPECT_TRUE(has(markup, "margin-left:0.00;margin-top:0.00;width:0.00;height:0.00;"));
}

TEST(Group, NestedGroupWithoutTheChildBitMovesTheOriginOfItsSiblings) {
  const Shape stray = Shape(0, 11).group({50, 50, 60, 60}, {});
  const std::string markup =
      objectOf(Shape(0, 10).group({0, 0, 1000, 500}, {stray, Shape(201, 12).at({55, 50, 65, 60})}));
  // The space of the stray group, 10 by 10, is 100 by 50 points from now on.
  EXPECT_TRUE(has(markup,
                  "<div id=\"12\" style=\"position:absolute;left:0;text-align:left;margin-left:50.00pt;"
                  "margin-top:0.00pt;width:100.00pt;height:50.00pt;"))
      << markup;
}

TEST(Group, NullChildIsSkipped) {
  // A plain container that claims to be a group is dropped by the reader.
  const std::string markup =
      objectOf(Shape(0, 10).group({0, 0, 10, 10}, {Shape(1, 11).flags(1), Shape(1, 12).at({0, 0, 1, 1})}));
  EXPECT_FALSE(has(markup, "id=\"11\""));
  EXPECT_TRUE(has(markup, "id=\"12\""));
}

TEST(Group, WithoutChildrenIsNothing) {
  ObjectPage page(Shape(0, 10).group({0, 0, 10, 10}, {}), {.rect = kBox});
  page.written([](auto& writer) { EXPECT_EQ(writer.WriteObject(0, false), Status::kNothing); });
}

TEST(Group, TellsItsWrapping) {
  ObjectPage page(Shape(0, 10).group({0, 0, 10, 10}, {}), {.rect = kBox, .wrap = 4});
  const std::string markup = page.written([](auto& writer) { writer.WriteObject(0, false); });
  EXPECT_TRUE(has(markup, "coordsize=\"10,10\"><w:wrap type=\"square\"></w:wrap>\r\n</v:group>"));
}

TEST(Group, NestingDeeperThan64IsDropped) {
  const auto nested = [](int depth) {
    Shape shape = Shape(1, 999).at({0, 0, 1, 1});
    for (int i = depth; i > 0; --i)
      shape = Shape(0, static_cast<uint32_t>(i)).at({0, 0, 1, 1}).group({}, {shape});
    return objectOf(shape);
  };
  EXPECT_TRUE(has(nested(64), "id=\"999\""));
  EXPECT_FALSE(has(nested(65), "id=\"999\""));
  EXPECT_FALSE(has(nested(66), "id=\"999\""));
}

}  // namespace

#include <gtest/gtest.h>

#include "objectwriter/object_page.h"

namespace {

using ObjectWriter::KHtmlObjectWriter;
using support::drawing::Blip;
using support::drawing::Drawing;
using support::drawing::Props;
using support::drawing::Shape;

std::string strokeOf(const Props& props) {
  ObjectPage page(Shape(1).props(props));
  return page.written([&](auto& writer) { writer.WriteLineProp(page.shape(), 0); });
}

std::string stroke(const std::string& attributes) {
  return "<v:stroke" + attributes + "></v:stroke>\r\n";
}

TEST(VmlStroke, IsNotWrittenWithoutALook) {
  EXPECT_EQ(strokeOf(Props()), "");
  EXPECT_EQ(strokeOf(Props().flag(0x01FC, false)), "");
  EXPECT_EQ(strokeOf(Props().number(0x01C0, 0xFF)), "");
  EXPECT_EQ(strokeOf(Props().number(0x01C4, 0xFFFFFFFF)), "");
}

TEST(VmlStroke, WidthCountsEvenWhenTheLineIsOff) {
  EXPECT_EQ(strokeOf(Props().flag(0x01FC, false).number(0x01CB, 12700)),
            stroke(R"( linestyle="single" weight="1.000000")"));
}

TEST(VmlStroke, EachOfItsCausesIsEnough) {
  EXPECT_EQ(strokeOf(Props().flag(0x01FC, true)), stroke(R"( linestyle="single")"));
  EXPECT_EQ(strokeOf(Props().flag(0x01FB, true)), stroke(R"( linestyle="single")"));
  EXPECT_EQ(strokeOf(Props().number(0x01C4, 0)), stroke(R"( linestyle="single")"));
  EXPECT_EQ(strokeOf(Props().number(0x01CD, 2)), stroke(R"( linestyle="thickthin")"));
  EXPECT_EQ(strokeOf(Props().number(0x01CE, 1)), stroke(R"( linestyle="single" dashstyle="dash")"));
}

TEST(VmlStroke, ConnectionSitesLeaveTheStyleOpen) {
  EXPECT_EQ(strokeOf(Props().flag(0x01FC, true).number(0x0301, 1)), stroke(""));
  EXPECT_EQ(strokeOf(Props().flag(0x01FC, true).number(0x0301, 0)), stroke(R"( linestyle="single")"));
  EXPECT_EQ(strokeOf(Props().number(0x01CD, 1).number(0x0301, 3)), stroke(R"( linestyle="thinthin")"));
}

TEST(VmlStroke, ColoursJoinsAndOpacity) {
  const Props props = Props()
                          .flag(0x01FC, true)
                          .number(0x01C0, 0x000000FF)
                          .number(0x01C2, 0x0000FF00)
                          .number(0x01CB, 9525)
                          .number(0x01D6, 1)
                          .number(0x01D7, 2)
                          .number(0x01C1, 32768);
  EXPECT_EQ(strokeOf(props),
            stroke(R"( linestyle="single" color="#FF0000" color2="#00FF00")"
                   R"( weight="0.750000" joinstyle="miter" endcap="flat" opacity="32768f")"));
}

TEST(VmlStroke, Arrows) {
  const Props props = Props()
                          .number(0x01D0, 1)
                          .number(0x01D1, 5)
                          .number(0x01D2, 0)
                          .number(0x01D3, 2)
                          .number(0x01D4, 2)
                          .number(0x01D5, 0);
  EXPECT_EQ(strokeOf(props), stroke(R"( linestyle="single" startarrow="block" startarrowwidth="narrow")"
                                    R"( startarrowlength="long" endarrow="open" endarrowwidth="wide")"
                                    R"( endarrowlength="short")"));
}

TEST(VmlStroke, PictureNeedsALineTypeThatIsNotSolid) {
  const auto written = [](uint32_t type) {
    Drawing drawing;
    drawing.blip(Blip{});
    drawing.shape(0, Shape(1).props(Props().number(0x01C4, type).number(0x41C5, 1).text(0x01C6, u"Dots")));
    ObjectPage page(drawing);
    return page.written([&](auto& writer) { writer.WriteLineProp(page.shape(), 0); });
  };
  EXPECT_EQ(written(1), stroke(R"( linestyle="single" src="image001.png" o:title="Dots")"));
  EXPECT_EQ(written(0), stroke(R"( linestyle="single")"));
}

}  // namespace

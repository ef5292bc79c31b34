#include <gtest/gtest.h>

#include "objectwriter/object_page.h"

// Whole objects of each kind, both forms, byte for byte.

namespace {

using support::Bytes;
using support::ByteWriter;
using support::drawing::Blip;
using support::drawing::Drawing;
using support::drawing::Place;
using support::drawing::Props;
using support::drawing::Rect;
using support::drawing::Shape;

constexpr Rect kBox = {1440, 720, 4320, 2160};  // 72, 36, 144 wide, 72 high in points

const std::string kVml = "<!--[if gte vml 1]>";
const std::string kNoVml = "<![endif]--><![if !vml]>\r\n";
const std::string kEnd = "<![endif]>";
const std::string kVmlPlace =
    "position:absolute;left:0;text-align:left;margin-left:72.00pt;margin-top:36.00pt;width:144.00pt;"
    "height:72.00pt;z-index:1;";
/// The CSS of the plain form reads the same.
const std::string kPlace = kVmlPlace;
const std::string kLinePlace =
    "position:absolute;left:0;text-align:left;margin-left:72.00pt;margin-top:36.00pt;z-index:1;";
const std::string kNoImage = "<v:imagedata></v:imagedata>\r\n";

std::string objectOf(const Drawing& drawing) {
  ObjectPage page(drawing);
  return page.written([](auto& writer) { writer.WriteObject(0, false); });
}
std::string objectOf(const Shape& shape, uint16_t wrap = 3) {
  return objectOf(Drawing().shape(0, shape, {.rect = kBox, .wrap = wrap}));
}

TEST(WholeObject, Rectangle) {
  const Props props = Props()
                          .number(0x0181, 0x00FFFF)
                          .number(0x01C0, 0xFF0000)
                          .number(0x01CB, 28575)
                          .flag(0x01BB, true)
                          .flag(0x01FC, true)
                          .flag(0x023E, true);
  EXPECT_EQ(
      objectOf(Shape(1).props(props), 2),
      kVml + "\r\n<v:rect id=\"1025\" style=\"" + kVmlPlace +
          "\" filled=\"t\" stroked=\"t\" coordsize=\"21600,21600\">\r\n"
          "<v:fill color=\"#FFFF00\"></v:fill>\r\n"
          "<v:stroke linestyle=\"single\" color=\"#0000FF\" weight=\"2.250000\"></v:stroke>\r\n"
          "<v:shadow on=\"t\" offset=\"2.00pt,2.00pt\"></v:shadow>\r\n" +
          kNoImage + "<w:wrap type=\"square\"></w:wrap>\r\n</v:rect>" + kNoVml + "<div id=\"1025\" style=\"" +
          kPlace +
          "background:#FFFF00;border-color:#0000FF;border-style:solid;border-width:2.250000pt;\"></div>" +
          kEnd);
}

TEST(WholeObject, RectangleWithoutProperties) {
  EXPECT_EQ(
      objectOf(Shape(1)),
      kVml + "\r\n<v:rect id=\"1025\" style=\"" + kVmlPlace + "\" coordsize=\"21600,21600\">\r\n" + kNoImage +
          "</v:rect>" + kNoVml + "<div id=\"1025\" style=\"" + kPlace +
          "background:#ffffff;border-color:#000000;border-style:solid;border-width:1.000000pt;\"></div>" +
          kEnd);
}

TEST(WholeObject, Line) {
  EXPECT_EQ(objectOf(Shape(20).flip(false, true).props(Props().number(0x01D1, 1).flag(0x01FC, true))),
            kVml +
                "\r\n<v:line id=\"1025\" style=\"position:absolute;left:0;text-align:left;z-index:1;flip:y;\""
                " from=\"72.00pt,36.00pt\" to=\"216.00pt,108.00pt\" stroked=\"t\""
                " coordsize=\"21600,21600\">\r\n"
                "<v:stroke linestyle=\"single\" endarrow=\"block\"></v:stroke>\r\n" +
                kNoImage + "</v:line>" + kNoVml + "<div id=\"1025\" style=\"" + kLinePlace +
                "\"><script language=\"JavaScript\">drawLine(96.000000,288.000000,144.000000,48.000000,"
                "\"#000000\",1.333333);</script></div>" +
                kEnd);
}

TEST(WholeObject, Ellipse) {
  EXPECT_EQ(
      objectOf(Shape(3).props(Props().number(0x0181, 0x0000FF).number(0x0182, 32768))),
      kVml + "\r\n<v:oval id=\"1025\" style=\"" + kVmlPlace +
          "\" coordsize=\"21600,21600\">\r\n<v:fill color=\"#FF0000\" opacity=\"32768f\"></v:fill>\r\n" +
          kNoImage + "</v:oval>" + kNoVml + "<div id=\"1025\" style=\"" + kPlace +
          "\"><script language=\"JavaScript\">drawEllipse(0,0,144.000000,72.000000,1.000000,"
          "\"#000000\",\"#FF0000\",0.500000);</script></div>" +
          kEnd);
}

TEST(WholeObject, RoundedRectangleWithALink) {
  const Bytes link = ByteWriter().zeros(20).u32(0x08).u32(4).text16(u"top").u16(0).take();
  EXPECT_EQ(objectOf(Shape(2).props(Props().number(0x0147, 3600).complex(0x0382, link))),
            kVml + "\r\n<v:roundrect id=\"1025\" href=\"#top\" style=\"" + kVmlPlace +
                "\" coordsize=\"21600,21600\" adj=\"3600\">\r\n" + kNoImage + "</v:roundrect>" + kNoVml +
                "<div id=\"1025\" style=\"" + kPlace + "\"></div>" + kEnd);
}

TEST(WholeObject, FreeForm) {
  const Bytes points = ByteWriter().u16(0).u16(0).u16(100).u16(0).u16(100).u16(50).take();
  const Bytes segments = ByteWriter().u16(0x4000).u16(0x0002).u16(0x6001).u16(0x8000).take();
  const Props props = Props()
                          .number(0x0142, 100)
                          .number(0x0143, 50)
                          .array(0x0145, 3, 4, points)
                          .array(0x0146, 4, 2, segments);
  EXPECT_EQ(objectOf(Shape(0).props(props)),
            kVml + "\r\n<v:shape o:spt=\"0\" id=\"1025\" style=\"" + kVmlPlace +
                "\" coordsize=\"100,50\" path=\"M0,0L100,0L100,50e\">\r\n" + kNoImage + "</v:shape>" +
                kNoVml + "<div id=\"1025\" style=\"" + kPlace + "\"></div>" + kEnd);
}

TEST(WholeObject, Connector) {
  EXPECT_EQ(objectOf(Shape(32).flip(true, true).props(Props().number(0x0303, 0).number(0x01D1, 2))),
            kVml + "\r\n<v:shape o:spt=\"32\" id=\"1025\" style=\"" + kVmlPlace +
                "flip:x y;\" o:connectortype=\"straight\" coordsize=\"21600,21600\">\r\n"
                "<v:stroke linestyle=\"single\" endarrow=\"classic\"></v:stroke>\r\n" +
                kNoImage + "</v:shape>" + kNoVml + "<div id=\"1025\" style=\"" + kPlace + "\"></div>" + kEnd);
}

TEST(WholeObject, WordArt) {
  const Props props = Props().text(0x00C0, u"Art").text(0x00C5, u"Impact").flag(0x00F5, true);
  EXPECT_EQ(
      objectOf(Shape(136).props(props)),
      kVml + "\r\n<v:shape o:spt=\"136\" id=\"1025\" style=\"" + kVmlPlace +
          "\" coordsize=\"21600,21600\">\r\n"
          "<v:textpath style=\"font-family:'Impact';\" fitshape=\"true\" string=\"Art\"></v:textpath>\r\n" +
          kNoImage + "</v:shape>" + kNoVml + "<div id=\"1025\" style=\"" + kPlace + "\"></div>" + kEnd);
}

TEST(WholeObject, FloatingPicture) {
  Drawing drawing;
  drawing.blip(Blip{});
  const Props props = Props().number(0x0100, 6554).number(0x4104, 1).text(0x0105, u"Cat").flag(0x03BE, true);
  drawing.shape(0, Shape(75).props(props), {.rect = kBox, .wrap = 1});
  EXPECT_EQ(objectOf(drawing),
            kVml + "<o:wrapblock\r\n><v:shape o:spt=\"75\" id=\"1025\" style=\"" + kVmlPlace +
                "visibility:hidden;\" coordsize=\"21600,21600\">\r\n"
                "<v:imagedata src=\"image001.png\" o:title=\"Cat\" croptop=\"6554f\"></v:imagedata>\r\n"
                "<w:wrap type=\"topAndBottom\"></w:wrap>\r\n</v:shape>" +
                kNoVml + "<div id=\"1025\" style=\"" + kPlace +
                "visibility:hidden;\"><img style=\"position:absolute;\" width=\"192px\" height=\"96px\""
                " src=\"image001.png\"></img></div>" +
                kEnd + "</o:wrapblock>");
}

/// The picture of the fill stands before the shape's own, in both forms.
TEST(WholeObject, RectangleFilledWithAPicture) {
  Drawing drawing;
  drawing.blip(Blip{.type = 5, .uid = 1});
  drawing.blip(Blip{.type = 6, .uid = 2});
  const Props props =
      Props().number(0x4104, 2).number(0x0180, 3).number(0x0181, 0).number(0x4186, 1).flag(0x01FC, false);
  drawing.shape(0, Shape(1).props(props), {.rect = kBox});
  EXPECT_EQ(
      objectOf(drawing),
      kVml + "\r\n<v:rect id=\"1025\" style=\"" + kVmlPlace +
          "\" stroked=\"f\" coordsize=\"21600,21600\">\r\n"
          "<v:fill type=\"frame\" color=\"#000000\" src=\"image001.jpg\"></v:fill>\r\n"
          "<v:imagedata src=\"image002.png\"></v:imagedata>\r\n</v:rect>" +
          kNoVml + "<div id=\"1025\" style=\"" + kPlace +
          "background:#000000;\">"
          "<img style=\"position:absolute;\" width=\"192px\" height=\"96px\" src=\"image001.jpg\"></img>"
          "<img style=\"position:absolute;\" width=\"192px\" height=\"96px\" src=\"image002.png\"></img>"
          "</div>" +
          kEnd);
}

TEST(WholeObject, PictureThatIsMissingLeavesItsElements) {
  EXPECT_EQ(objectOf(Shape(75).props(Props().number(0x4104, 1))),
            kVml + "\r\n<v:shape o:spt=\"75\" id=\"1025\" style=\"" + kVmlPlace +
                "\" coordsize=\"21600,21600\">\r\n" + kNoImage + "</v:shape>" + kNoVml +
                "<div id=\"1025\" style=\"" + kPlace +
                "\"><img style=\"position:absolute;\" width=\"192px\" height=\"96px\"></img></div>" + kEnd);
}

TEST(WholeObject, TextBoxWithoutText) {
  EXPECT_EQ(objectOf(Shape(202).textBox(0).props(Props().number(0x0087, 1))),
            kVml + "\r\n<v:shape o:spt=\"202\" id=\"1025\" style=\"" + kVmlPlace +
                "\" coordsize=\"21600,21600\">\r\n"
                "<v:textbox inset=\"7.20pt,3.60pt,7.20pt,3.60pt\" v-text-anchor=\"middle\">\r\n"
                "<div></div>\r\n</v:textbox>\r\n" +
                kNoImage + "</v:shape>" + kNoVml + "<div id=\"1025\" style=\"" + kPlace +
                "background:#ffffff;border-color:#000000;border-style:solid;border-width:1.000000pt;"
                "word-wrap:break-word;overflow:hidden;\">"
                "<div style=\"position:relative;padding:3.60pt 7.20pt 3.60pt 7.20pt;\"><div></div>\r\n"
                "</div></div>" +
                kEnd);
}

/// A group with a line, and a group in it with an ellipse; the link of a group stands as a shape's.
TEST(WholeObject, GroupInAGroup) {
  const Bytes link = ByteWriter().zeros(20).u32(0x08).u32(2).text16(u"x").u16(0).take();
  const Shape inner =
      Shape(0, 30).at({100, 0, 200, 100}).group({0, 0, 50, 50}, {Shape(3, 31).at({10, 10, 30, 30})});
  const Shape group = Shape(0, 10)
                          .props(Props().complex(0x0382, link).fixed(0x0004, 30))
                          .flip(true, false)
                          .group({0, 0, 200, 100}, {Shape(20, 20).at({0, 0, 100, 100}), inner});
  const std::string child = "position:absolute;left:0;text-align:left;";
  EXPECT_EQ(
      objectOf(group),
      kVml +
          "<v:group id=\"10\" href=\"#x\" "
          "style=\"position:absolute;left:0;text-align:left;margin-left:72.00pt;"
          "margin-top:36.00pt;width:144.00pt;height:72.00pt;rotation:30;z-index:1;flip:x;\""
          " coordorigin=\"0,0\" coordsize=\"200,100\">\r\n"
          "<v:line id=\"20\" style=\"" +
          child + "z-index:1;\" from=\"0.00,0.00\" to=\"100.00,100.00\" coordsize=\"21600,21600\">\r\n" +
          kNoImage + "</v:line><v:group id=\"30\" style=\"" + child +
          "margin-left:100.00;margin-top:0.00;width:100.00;height:100.00;z-index:2;\" coordorigin=\"0,0\""
          " coordsize=\"50,50\">\r\n<v:oval id=\"31\" style=\"" +
          child +
          "margin-left:10.00;margin-top:10.00;width:20.00;height:20.00;z-index:1;\""
          " coordsize=\"21600,21600\">\r\n" +
          kNoImage +
          "</v:oval></v:group></v:group><![endif]--><![if !vml]>"
          "<div style=\"" +
          child +
          "margin-left:72.00pt;margin-top:36.00pt;width:144.00pt;height:72.00pt;z-index:1;\">\r\n"
          "<div id=\"20\" style=\"" +
          child +
          "margin-left:0.00pt;margin-top:0.00pt;z-index:1;\"><script language=\"JavaScript\">"
          "drawLine(0.000000,96.000000,0.000000,96.000000,\"#000000\",1.333333);</script></div>"
          "<div style=\"" +
          child +
          "margin-left:72.00pt;margin-top:0.00pt;width:72.00pt;height:72.00pt;z-index:2;\">\r\n"
          "<div id=\"31\" style=\"" +
          child +
          "margin-left:7.20pt;margin-top:7.20pt;width:14.40pt;height:14.40pt;z-index:1;\">"
          "<script "
          "language=\"JavaScript\">drawEllipse(0,0,14.400001,14.400001,1.000000,\"#000000\",\"#ffffff\","
          "1.000000);</script></div></div></div>" +
          kEnd);
}

/// Every attribute of a start tag, in their order.
TEST(WholeObject, StartTagWithAllItsAttributes) {
  const Bytes moniker = {0xE0, 0xC9, 0xEA, 0x79, 0xF9, 0xBA, 0xCE, 0x11,
                         0x8C, 0x82, 0x00, 0xAA, 0x00, 0x4B, 0xA9, 0x0B};
  const Bytes link = ByteWriter().zeros(20).u32(0x03).bytes(moniker).u32(4).text16(u"u:").take();
  const Bytes points = ByteWriter().u16(1).u16(2).take();
  const Bytes segments = ByteWriter().u16(0x4000).take();
  const Props props = Props()
                          .array(0x0145, 1, 4, points)
                          .array(0x0146, 1, 2, segments)
                          .number(0x0147, 5)
                          .flag(0x01FC, true)
                          .flag(0x01BB, false)
                          .number(0x0303, 2)
                          .flag(0x03BE, true)
                          .complex(0x0382, link);
  const std::string object = objectOf(Shape(75).flip(true, true).props(props));
  EXPECT_EQ(object.substr(0, object.find('>', kVml.size()) + 1),
            kVml + "\r\n<v:shape o:spt=\"75\" id=\"1025\" target=\"_parent\" href=\"u:\" style=\"" +
                kVmlPlace +
                "flip:x y;visibility:hidden;\" o:connectortype=\"curved\" filled=\"f\" stroked=\"t\""
                " coordsize=\"21600,21600\" adj=\"5\" path=\"M1,2e\">");
}

/// The children of a shape stand in this order.
TEST(WholeObject, ShapeWithAllItsChildren) {
  const Props props =
      Props().number(0x0181, 0).flag(0x01FC, true).flag(0x023E, true).flag(0x02BC, true).text(0x00C0, u"Art");
  const std::string object = objectOf(Shape(1).props(props).textBox(0), 4);
  size_t at = 0;
  for (const char* child : {"<v:fill ", "<v:stroke ", "<v:shadow ", "<v:extrusion ", "<v:textpath ",
                            "<v:textbox ", "<v:imagedata>", "<w:wrap ", "</v:rect>"}) {
    const size_t found = object.find(child);
    ASSERT_NE(found, std::string::npos) << child;
    EXPECT_GT(found, at) << child;
    at = found;
  }
}

}  // namespace

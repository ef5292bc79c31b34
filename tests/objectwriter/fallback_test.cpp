#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "objectwriter/object_page.h"
#include "objectwriter/shape_script.h"

namespace {

using support::drawing::Place;
using support::drawing::Props;
using support::drawing::Rect;
using support::drawing::Shape;

constexpr Rect kBox = {1440, 720, 1440 + 2880, 720 + 1440};  // 72, 36, 144 wide, 72 high in points

/// What browsers without VML get for a shape, without the conditions around.
std::string plainOf(const Shape& shape, const Place& place = {.rect = kBox}) {
  ObjectPage page(shape, place);
  const std::string markup = page.written([](auto& writer) { writer.WriteObject(0, false); });
  const std::string begin = "<![if !vml]>";
  const size_t at = markup.find(begin) + begin.size();
  return markup.substr(at, markup.find("<![endif]>", at) - at);
}

/// The CSS of the shape's own element, behind the position.
std::string lookOf(const Props& props, uint16_t type) {
  const std::string plain = plainOf(Shape(type).props(props));
  const size_t at = plain.find("z-index:1;") + 10;
  return plain.substr(at, plain.find('"', at) - at);
}

/// The call in a script element; the file's part of a shape that a script draws.
std::string callOf(const Shape& shape) {
  const std::string plain = plainOf(shape);
  const std::string begin = "<script language=\"JavaScript\">";
  const size_t at = plain.find(begin);
  if (at == std::string::npos) return "";
  return plain.substr(at + begin.size(), plain.find("</script></div>") - at - begin.size());
}

const std::string kBorder = "border-color:#000000;border-style:solid;border-width:1.000000pt;";

TEST(FallbackBox, RectangleHasDefaults) {
  EXPECT_EQ(lookOf(Props(), 1), "background:#ffffff;" + kBorder);
  EXPECT_EQ(lookOf(Props(), 202), "background:#ffffff;" + kBorder);
}

TEST(FallbackBox, RectangleMayHaveNoFill) {
  EXPECT_EQ(lookOf(Props().flag(0x01BB, false), 1), kBorder);
}

TEST(FallbackBox, RectangleMayHaveNoLine) {
  EXPECT_EQ(lookOf(Props().flag(0x01FC, false), 1), "background:#ffffff;");
}

TEST(FallbackBox, PictureFrameHasOnlyWhatIsSet) {
  EXPECT_EQ(lookOf(Props(), 75), "");
  EXPECT_EQ(lookOf(Props().number(0x0181, 0x000000FF), 75), "background:#FF0000;");
  EXPECT_EQ(lookOf(Props().flag(0x01BB, true), 75), "background:#FFFFFF;");
  EXPECT_EQ(lookOf(Props().flag(0x01BB, true).number(0x0301, 0), 75), "background:#ffffff;");
  EXPECT_EQ(lookOf(Props().number(0x01CB, 25400), 75),
            "border-color:#000000;border-style:solid;border-width:2.000000pt;");
  EXPECT_EQ(lookOf(Props().flag(0x01FC, true), 75), kBorder);
}

TEST(FallbackBox, OtherTypesHaveNoLook) {
  EXPECT_EQ(lookOf(Props().number(0x0181, 0xFF).flag(0x01FC, true), 2), "");
}

/// What each type shows of its look, its text and by script.
TEST(FallbackBox, TypesHaveALookOfTheirOwn) {
  for (uint16_t type = 0; type <= 202; ++type) {
    const bool isBox = type == 1 || type == 202;
    const Props props = Props().number(0x0181, 0xFF).flag(0x01FC, true);
    const std::string look = isBox || type == 75 ? "background:#FF0000;" + kBorder : "";
    const std::string text =
        isBox ? "<div style=\"position:relative;padding:3.60pt 7.20pt 3.60pt 7.20pt;\"><div></div>\r\n</div>"
              : "";
    const std::string plain = plainOf(Shape(type).props(props).textBox(0));
    EXPECT_NE(plain.find("z-index:1;" + look + "word-wrap:break-word;overflow:hidden;\">"), std::string::npos)
        << type;
    EXPECT_EQ(plain.find("<div style=") != std::string::npos, isBox) << type;
    EXPECT_NE(plain.find(text + "</div>"), std::string::npos) << type;
    EXPECT_EQ(plain.find("drawEllipse(") != std::string::npos, type == 3) << type;
    EXPECT_EQ(plain.find("drawLine(") != std::string::npos, type == 20) << type;
  }
}

/// Every type has its place, its size and its images.
TEST(FallbackBox, TypesHaveTheirImages) {
  for (const uint16_t type : {0, 1, 2, 3, 20, 75, 136, 201, 202}) {
    support::drawing::Drawing drawing;
    drawing.blip(support::drawing::Blip{});
    drawing.shape(0, Shape(type).props(Props().number(0x4104, 1)), {.rect = kBox});
    ObjectPage page(drawing);
    const std::string markup = page.written([](auto& writer) { writer.WriteObject(0, false); });
    EXPECT_NE(markup.find("<img style=\"position:absolute;\" width=\"192px\" height=\"96px\""
                          " src=\"image001.png\"></img>"),
              std::string::npos)
        << type;
  }
}

TEST(FallbackBox, BehindTheTextHasTheOrderMinusOne) {
  const Shape behind = Shape(75).props(Props().flag(0x03BA, true));
  EXPECT_NE(plainOf(behind, {.rect = kBox, .wrap = 3}).find("z-index:-1;"), std::string::npos);
  EXPECT_NE(plainOf(behind, {.rect = kBox, .wrap = 5}).find("z-index:1;"), std::string::npos);
}

TEST(FallbackBox, RotationTurnsTheBoxButIsNotTold) {
  EXPECT_NE(plainOf(Shape(75).props(Props().fixed(0x0004, 90)))
                .find("margin-left:108.00pt;margin-top:0.00pt;width:72.00pt;height:144.00pt;z-index:1;\">"),
            std::string::npos);
}

TEST(FallbackBox, NegativeOpacityIsWritten) {
  EXPECT_EQ(lookOf(Props().number(0x0182, 0xFFFF0000), 1),
            "background:#ffffff;MozOpacity:-1.00;Opacity:-1.00;" + kBorder);
}

TEST(FallbackBox, SystemColoursAreDefaults) {
  EXPECT_EQ(lookOf(Props().number(0x0181, 0x08000040).number(0x01C0, 0x08000041), 1),
            "background:#ffffff;" + kBorder);
  EXPECT_EQ(lookOf(Props().number(0x0181, 0x08000003), 1), "background:#00FF00;" + kBorder);
}

TEST(FallbackBox, OpacityHasTwoNames) {
  EXPECT_EQ(lookOf(Props().number(0x0182, 32768), 1),
            "background:#ffffff;MozOpacity:0.50;Opacity:0.50;" + kBorder);
  EXPECT_EQ(lookOf(Props().number(0x0182, 65536), 1), "background:#ffffff;" + kBorder);
}

TEST(FallbackBox, LineStyles) {
  const auto styleOf = [](const Props& props) {
    const std::string look = lookOf(props, 1);
    const size_t at = look.find("border-style:") + 13;
    return look.substr(at, look.find(';', at) - at);
  };
  EXPECT_EQ(styleOf(Props().number(0x01CD, 1)), "double");
  EXPECT_EQ(styleOf(Props().number(0x01CD, 1).number(0x01CE, 1)), "double");
  EXPECT_EQ(styleOf(Props().number(0x01CE, 1)), "dashed");
  EXPECT_EQ(styleOf(Props().number(0x01CD, 0).number(0x01CE, 0)), "solid");
  EXPECT_EQ(styleOf(Props().number(0x01CD, 0xFFFFFFFF)), "solid");
}

TEST(FallbackBox, Hidden) {
  EXPECT_EQ(lookOf(Props().flag(0x03BE, true), 2), "visibility:hidden;");
}

TEST(FallbackText, HasAPaddedDivInside) {
  EXPECT_EQ(plainOf(Shape(202).textBox(0)),
            "\r\n<div id=\"1025\" style=\"position:absolute;left:0;text-align:left;margin-left:72.00pt;"
            "margin-top:36.00pt;width:144.00pt;height:72.00pt;z-index:1;background:#ffffff;" +
                kBorder +
                "word-wrap:break-word;overflow:hidden;\">"
                "<div style=\"position:relative;padding:3.60pt 7.20pt 3.60pt 7.20pt;\">"
                "<div></div>\r\n</div></div>");
}

TEST(FallbackText, PaddingGoesRoundFromTheTop) {
  const Props props =
      Props().number(0x0081, 12700).number(0x0082, 25400).number(0x0083, 38100).number(0x0084, 50800);
  EXPECT_NE(plainOf(Shape(1).props(props).textBox(0)).find("padding:2.00pt 3.00pt 4.00pt 1.00pt;"),
            std::string::npos);
}

TEST(FallbackText, AutomaticMarginsAreTheDefaults) {
  const Props props = Props().number(0x0081, 12700).flag(0x00BC, true);
  EXPECT_NE(plainOf(Shape(1).props(props).textBox(0)).find("padding:3.60pt 7.20pt 3.60pt 7.20pt;"),
            std::string::npos);
}

TEST(FallbackText, OtherTypesClipButShowNone) {
  const std::string plain = plainOf(Shape(2).textBox(0));
  EXPECT_NE(plain.find("z-index:1;word-wrap:break-word;overflow:hidden;\"></div>"), std::string::npos);
}

TEST(FallbackEllipse, IsACall) {
  EXPECT_EQ(callOf(Shape(3)),
            "drawEllipse(0,0,144.000000,72.000000,1.000000,\"#000000\",\"#ffffff\",1.000000);");
}

TEST(FallbackEllipse, TakesItsLook) {
  const Props props =
      Props().number(0x0181, 0xFF).number(0x0182, 16384).number(0x01C0, 0xFF00).number(0x01CB, 38100);
  EXPECT_EQ(callOf(Shape(3).props(props)),
            "drawEllipse(0,0,144.000000,72.000000,3.000000,\"#00FF00\",\"#FF0000\",0.250000);");
}

TEST(FallbackEllipse, HasAnOutlineOfAPointAtLeast) {
  const auto callWith = [](uint32_t emu) { return callOf(Shape(3).props(Props().number(0x01CB, emu))); };
  const std::string start = "drawEllipse(0,0,144.000000,72.000000,";
  const std::string end = ",\"#000000\",\"#ffffff\",1.000000);";
  EXPECT_EQ(callWith(3175), start + "1.000000" + end);
  EXPECT_EQ(callWith(15875), start + "1.250000" + end);
}

TEST(FallbackEllipse, WithoutFillOrLineHasNoColour) {
  EXPECT_EQ(callOf(Shape(3).props(Props().flag(0x01BB, false).number(0x0182, 1))),
            "drawEllipse(0,0,144.000000,72.000000,1.000000,\"#000000\",\"\",1.000000);");
  EXPECT_EQ(callOf(Shape(3).props(Props().flag(0x01FC, false).number(0x01CB, 38100))),
            "drawEllipse(0,0,144.000000,72.000000,1.000000,\"\",\"#ffffff\",1.000000);");
}

TEST(FallbackLine, IsACallInPixels) {
  EXPECT_EQ(callOf(Shape(20)), "drawLine(96.000000,288.000000,48.000000,144.000000,\"#000000\",1.333333);");
}

TEST(FallbackLine, GoesTheWayItIsFlipped) {
  EXPECT_EQ(callOf(Shape(20).flip(true, false)),
            "drawLine(288.000000,96.000000,48.000000,144.000000,\"#000000\",1.333333);");
  EXPECT_EQ(callOf(Shape(20).flip(false, true)),
            "drawLine(96.000000,288.000000,144.000000,48.000000,\"#000000\",1.333333);");
  EXPECT_EQ(callOf(Shape(20).flip(true, true)),
            "drawLine(288.000000,96.000000,144.000000,48.000000,\"#000000\",1.333333);");
}

TEST(FallbackLine, IsAtLeastAPointWide) {
  const auto sizeOf = [](uint32_t emu) {
    const std::string call = callOf(Shape(20).props(Props().number(0x01CB, emu)));
    return call.substr(call.rfind(',') + 1);
  };
  EXPECT_EQ(sizeOf(3175), "1.333333);");
  EXPECT_EQ(sizeOf(38100), "4.000000);");
}

TEST(FallbackLine, HasNoBox) {
  EXPECT_NE(plainOf(Shape(20)).find("margin-left:72.00pt;margin-top:36.00pt;z-index:1;\">"),
            std::string::npos);
}

// The script file. Its functions are written once in a process, so each of these runs in one of its own.

/// What the script file holds; "none" where it is not written.
std::string scriptOf(std::initializer_list<Shape> shapes, ObjectWriter::ShapeScripts* scripts = nullptr) {
  support::drawing::Drawing drawing;
  uint32_t cp = 0;
  for (const Shape& shape : shapes) drawing.shape(cp++, shape);
  support::TempFolder folder;
  std::string script = "none";
  {
    ObjectPage page(drawing, scripts);
    page.conversion().filesDir = folder.path();
    page.written([&](auto& writer) {
      for (uint32_t i = 0; i < cp; ++i) writer.WriteObject(i, false);
    });
  }
  if (folder.exists("shapejs.js")) script = folder.read("shapejs.js");
  return script;
}

TEST(ShapeScript, HoldsEachFunctionOnce) {
  EXPECT_EQ(scriptOf({Shape(20, 1), Shape(20, 2), Shape(3, 3), Shape(3, 4)}),
            std::string(ObjectWriter::kDrawLineScript) + ObjectWriter::kDrawEllipseScript);
}

TEST(ShapeScript, IsNotWrittenWithoutNeed) {
  EXPECT_EQ(scriptOf({Shape(1)}), "none");
}

TEST(ShapeScript, HoldsAFunctionOnlyInTheFirstOfTheConversionsThatShareTheirScripts) {
  ObjectWriter::ShapeScripts scripts;
  EXPECT_EQ(scriptOf({Shape(3)}, &scripts), ObjectWriter::kDrawEllipseScript);
  EXPECT_EQ(scriptOf({Shape(3)}, &scripts), "none");
  EXPECT_EQ(scriptOf({Shape(20)}, &scripts), ObjectWriter::kDrawLineScript);
}

TEST(ShapeScript, FunctionsTakeTheirArgumentsInThisOrder) {
  EXPECT_EQ(std::string(ObjectWriter::kDrawEllipseScript)
                .find("function drawEllipse(left,top,width,height,bw,bc,fc,opac)"),
            0u);
  EXPECT_EQ(
      std::string(ObjectWriter::kDrawLineScript).find("function drawLine(X0,  X1, Y0, Y1, color, size)"), 0u);
}

/// How often each of these lines stands in the script of the ellipse.
std::vector<int> timesInEllipse(std::initializer_list<const char*> lines) {
  std::vector<int> times;
  for (const char* line : lines) {
    const std::string whole = std::string("\t") + line + "\n", script = ObjectWriter::kDrawEllipseScript;
    times.push_back(0);
    for (size_t at = script.find(whole); at != std::string::npos; at = script.find(whole, at + 1))
      ++times.back();
  }
  return times;
}

TEST(ShapeScript, EllipseLiesAroundTheMiddleOfItsBox) {
  EXPECT_THAT(timesInEllipse({"var cx = left + width / 2;", "var cy = top - height / 2;",
                              "var a = width / 2;", "var b = height / 2;"}),
              testing::Each(1));
}

TEST(ShapeScript, EllipseIsFilledByUprightStripsAPointWide) {
  EXPECT_THAT(
      timesInEllipse(
          {"if (fc != \"\")", "for (x = -a; x <= a; x += 1)", "y = Math.sqrt(b * b * (1 - x * x / (a * a)));",
           "window.document.writeln(\"<div style='position:absolute;left:\" + (x + cx) + \"pt;top:\" + "
           "(-y - cy) +",
           "\"pt;width:1pt;height:\" + (y * 2) + \"pt;border:1pt solid;border-color:\" + fc +",
           "\";MozOpacity:\" + opac + \";Opacity:\" + opac + \"'></div>\");"}),
      testing::Each(1));
}

TEST(ShapeScript, EllipseIsOutlinedHalfAPointApartAlongBothAxes) {
  EXPECT_THAT(timesInEllipse({"for (w = 0; w < bw - 0.5; w += 0.5)", "aa = a - w;", "bb = b - w;"}),
              testing::Each(2));
  EXPECT_THAT(
      timesInEllipse({"for (x = -aa; x <= aa; x += 1)", "y = Math.sqrt(bb * bb * (1 - x * x / (aa * aa)));",
                      "for (y = -bb; y <= bb; y += 1)", "x = Math.sqrt(aa * aa * (1 - y * y / (bb * bb)));"}),
      testing::Each(1));
}

TEST(ShapeScript, DotsOfTheOutlineAreAPointThick) {
  EXPECT_THAT(timesInEllipse(
                  {"function dot(x, y)",
                   "window.document.writeln(\"<div style='position:absolute;left:\" + x + \"pt;top:\" + y +",
                   "\"pt;border:1pt solid;border-color:\" + bc + \"'></div>\");"}),
              testing::Each(1));
}

TEST(ShapeScript, EllipseIsOutlinedByOppositeDots) {
  const std::string script = ObjectWriter::kDrawEllipseScript;
  std::string dots;
  for (size_t at = 0; (at = script.find("dot(", at)) != std::string::npos; ++at) {
    dots += script.substr(at + 4, script.find(')', at) - at - 4) + ";";
  }
  EXPECT_EQ(dots, "x, y;x + cx, y - cy;x + cx, -y - cy;x + cx, y - cy;-x + cx, -y - cy;");
}

}  // namespace

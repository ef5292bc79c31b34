#include <gtest/gtest.h>

#include "objectwriter/object_page.h"

// The attributes of the elements in a shape, by tables: each alone, and all together in their order whatever
// the order of the properties in the file.

namespace {

using ObjectWriter::KHtmlObjectWriter;
using support::Bytes;
using support::ByteWriter;
using support::drawing::Blip;
using support::drawing::Drawing;
using support::drawing::Props;
using support::drawing::Shape;

using SetProperty = void (*)(Props& props);

/// A property, the attribute that it gives, and what stands in its place without it.
struct Row {
  SetProperty set;
  const char* attribute;
  const char* otherwise = "";
};
using Rows = std::vector<Row>;
using Operation = Status (KHtmlObjectWriter::*)(const ObjectWriter::MsoROShape&);

std::string element(const std::string& name, const std::string& attributes) {
  return "<v:" + name + attributes + "></v:" + name + ">\r\n";
}

/// Checks an element whose other attributes are `always`, in front of those of the rows.
void expectRows(const std::string& name, Operation operation, SetProperty base, const std::string& always,
                const Rows& rows) {
  std::string all;
  Props reversed;
  for (size_t set = 0; set < rows.size(); ++set) {
    Props props;
    base(props);
    rows[set].set(props);
    std::string expected;
    for (size_t i = 0; i < rows.size(); ++i) expected += i == set ? rows[i].attribute : rows[i].otherwise;
    EXPECT_EQ(writtenFor(props, operation), element(name, always + expected));
    all += rows[set].attribute;
    rows[rows.size() - 1 - set].set(reversed);
  }
  base(reversed);
  EXPECT_EQ(writtenFor(reversed, operation), element(name, always + all));
}

void nothing(Props&) {}

TEST(VmlTables, Stroke) {
  const Rows rows = {
      {[](Props& p) { p.number(0x01CD, 3); }, R"( linestyle="thinthick")", R"( linestyle="single")"},
      {[](Props& p) { p.number(0x01CE, 7); }, R"( dashstyle="longdash")"},
      {[](Props& p) { p.number(0x01C0, 0x030201); }, R"( color="#010203")"},
      {[](Props& p) { p.number(0x01C2, 0x060504); }, R"( color2="#040506")"},
      {[](Props& p) { p.number(0x01CB, 19050); }, R"( weight="1.500000")"},
      {[](Props& p) { p.number(0x01D6, 2); }, R"( joinstyle="round")"},
      {[](Props& p) { p.number(0x01D7, 1); }, R"( endcap="square")"},
      {[](Props& p) { p.number(0x01C1, 6554); }, R"( opacity="6554f")"},
      {[](Props& p) { p.number(0x01D0, 2); }, R"( startarrow="classic")"},
      {[](Props& p) { p.number(0x01D2, 2); }, R"( startarrowwidth="wide")"},
      {[](Props& p) { p.number(0x01D3, 0); }, R"( startarrowlength="short")"},
      {[](Props& p) { p.number(0x01D1, 4); }, R"( endarrow="oval")"},
      {[](Props& p) { p.number(0x01D4, 0); }, R"( endarrowwidth="narrow")"},
      {[](Props& p) { p.number(0x01D5, 2); }, R"( endarrowlength="long")"},
  };
  const auto write = [](Props& p) { p.flag(0x01FC, true); };
  std::string all;
  Props reversed;
  for (size_t set = 0; set < rows.size(); ++set) {
    ObjectPage page(Shape(1).props([&] {
      Props props;
      write(props);
      rows[set].set(props);
      return props;
    }()));
    const std::string style = set == 0 ? "" : rows[0].otherwise;
    EXPECT_EQ(page.written([&](auto& writer) { writer.WriteLineProp(page.shape(), 0); }),
              element("stroke", style + rows[set].attribute));
    all += rows[set].attribute;
    rows[rows.size() - 1 - set].set(reversed);
  }
  ObjectPage page(Shape(1).props(reversed));
  EXPECT_EQ(page.written([&](auto& writer) { writer.WriteLineProp(page.shape(), 0); }),
            element("stroke", all));
}

TEST(VmlTables, EachArrowPropertyIsALook) {
  for (uint16_t id = 0x01D0; id <= 0x01D5; ++id) {
    ObjectPage page(Shape(1).props(Props().number(id, 0)));
    EXPECT_NE(page.written([&](auto& writer) { writer.WriteLineProp(page.shape(), 0); }), "") << id;
  }
  for (const uint16_t id : {0x01D6, 0x01D7, 0x01C0, 0x01C1, 0x01C2}) {
    ObjectPage page(Shape(1).props(Props().number(static_cast<uint16_t>(id), 1)));
    EXPECT_EQ(page.written([&](auto& writer) { writer.WriteLineProp(page.shape(), 0); }), "") << id;
  }
}

TEST(VmlTables, Shadow) {
  expectRows("shadow", &KHtmlObjectWriter::WriteShadowProp, [](Props& p) { p.flag(0x023E, true); },
             R"( on="t")",
             {
                 {[](Props& p) { p.number(0x0200, 5); }, R"( type="emboss")"},
                 {[](Props& p) { p.number(0x0201, 0x030201); }, R"( color="#010203")"},
                 {[](Props& p) { p.flag(0x023F, true); }, R"( obscured="true")"},
                 {[](Props& p) { p.number(0x0202, 0x060504); }, R"( color2="#040506")"},
                 {[](Props& p) { p.number(0x0204, 65536); }, R"( opacity="1.000000")"},
                 {[](Props& p) { p.number(0x0205, 12700).number(0x0206, 38100); },
                  R"( offset="1.00pt,3.00pt")", R"( offset="2.00pt,2.00pt")"},
                 {[](Props& p) { p.number(0x0207, 12700); }, R"( offset2="1.00pt,0.00pt")"},
             });
}

TEST(VmlTables, EachValueOfTheShadowMatrixAlone) {
  const struct {
    uint16_t id;
    const char* matrix;
  } rows[] = {
      {0x0209, "8.00,0.00,0.00,1.00,0.00,0.00"}, {0x020A, "1.00,8.00,0.00,1.00,0.00,0.00"},
      {0x020B, "1.00,0.00,8.00,1.00,0.00,0.00"}, {0x020C, "1.00,0.00,0.00,8.00,0.00,0.00"},
      {0x020D, "1.00,0.00,0.00,1.00,0.03,0.00"}, {0x020E, "1.00,0.00,0.00,1.00,0.00,0.03"},
  };
  for (const auto& row : rows) {
    for (const uint32_t type : {2, 3, 4}) {
      const Props props = Props().flag(0x023E, true).number(0x0200, type).fixed(row.id, 8);
      EXPECT_EQ(writtenFor(props, &KHtmlObjectWriter::WriteShadowProp),
                element("shadow", R"( on="t" type="perspective" offset="2.00pt,2.00pt" matrix=")" +
                                      std::string(row.matrix) + "\""))
          << row.id;
    }
  }
}

TEST(VmlTables, ShadowMatrixIsNotCausedByItsDivisor) {
  const Props props = Props().flag(0x023E, true).number(0x0200, 2).number(0x020F, 8);
  EXPECT_EQ(writtenFor(props, &KHtmlObjectWriter::WriteShadowProp).find("matrix"), std::string::npos);
}

TEST(VmlTables, Extrusion) {
  expectRows("extrusion", &KHtmlObjectWriter::Write3DProp, [](Props& p) { p.flag(0x02BC, true); },
             R"( on="t")",
             {
                 {[](Props& p) { p.fixed(0x02C0, 1).fixed(0x02C1, 2); }, R"( rotationangle="2.00,1.00")"},
                 {[](Props& p) { p.fixed(0x02CE, 1).fixed(0x02CF, 2); }, R"( viewpointorigin="1.00,2.00")"},
                 {[](Props& p) { p.number(0x02CB, 12700).number(0x02CC, 25400).number(0x02CD, 38100); },
                  R"( viewpoint="1.00pt,2.00pt,3.00pt")"},
                 {[](Props& p) { p.fixed(0x02D0, 30.9); }, R"( skewangle="30")"},
                 {[](Props& p) { p.number(0x02D1, 50); }, R"( skewamt="50")"},
                 {[](Props& p) { p.flag(0x02FD, false); }, R"( type="perspective")"},
                 {[](Props& p) { p.number(0x0285, 12700); }, R"( backdepth="1.00pt")"},
                 {[](Props& p) { p.number(0x0284, 25400); }, R"( foredepth="2.00pt")"},
                 {[](Props& p) { p.number(0x02D2, 1); }, R"( brightness="1f")"},
                 {[](Props& p) { p.number(0x02D6, 2); }, R"( lightlevel="2f")"},
                 {[](Props& p) { p.number(0x02D3, 1).number(0x02D4, 2).number(0x02D5, 3); },
                  R"( lightposition="1,2,3")"},
                 {[](Props& p) { p.number(0x02DA, 3); }, R"( lightlevel2="3f")"},
                 {[](Props& p) { p.number(0x02D7, 4).number(0x02D8, 5).number(0x02D9, 6); },
                  R"( lightposition2="4,5,6")"},
                 {[](Props& p) { p.number(0x02C9, 2); }, R"( render="bcube")"},
                 {[](Props& p) { p.number(0x0280, 4); }, R"( specularity="4f")"},
                 {[](Props& p) { p.number(0x0281, 5); }, R"( diffusity="5f")"},
                 {[](Props& p) { p.number(0x0287, 0x030201); }, R"( color="#010203")"},
             });
}

/// One value of a group that has defaults, and the whole attribute.
TEST(VmlTables, GroupsOfTheExtrusionFillUpWithDefaults) {
  const struct {
    uint16_t id;
    uint32_t value;
    const char* attribute;
  } rows[] = {
      {0x02C0, 1 << 16, R"( rotationangle="0.00,1.00")"},
      {0x02C1, 1 << 16, R"( rotationangle="1.00,0.00")"},
      {0x02CE, 1 << 16, R"( viewpointorigin="1.00,-0.50")"},
      {0x02CF, 1 << 16, R"( viewpointorigin="0.50,1.00")"},
      {0x02CB, 12700, R"( viewpoint="1.00pt,-98.43pt,708.66pt")"},
      {0x02CC, 12700, R"( viewpoint="98.43pt,1.00pt,708.66pt")"},
      {0x02CD, 12700, R"( viewpoint="98.43pt,-98.43pt,1.00pt")"},
      {0x02D3, 7, R"( lightposition="7,0,10000")"},
      {0x02D4, 7, R"( lightposition="50000,7,10000")"},
      {0x02D5, 7, R"( lightposition="50000,0,7")"},
      {0x02D7, 7, R"( lightposition2="7,0,10000")"},
      {0x02D8, 7, R"( lightposition2="-50000,7,10000")"},
      {0x02D9, 7, R"( lightposition2="-50000,0,7")"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(
        writtenFor(Props().flag(0x02BC, true).number(row.id, row.value), &KHtmlObjectWriter::Write3DProp),
        element("extrusion", R"( on="t")" + std::string(row.attribute)));
  }
}

TEST(VmlTables, ImageData) {
  expectRows("imagedata", &KHtmlObjectWriter::WriteShapeImage, nothing, "",
             {
                 {[](Props& p) { p.text(0x0105, u"Title"); }, R"( o:title="Title")"},
                 {[](Props& p) { p.number(0x0100, 1); }, R"( croptop="1f")"},
                 {[](Props& p) { p.number(0x0101, 2); }, R"( cropbottom="2f")"},
                 {[](Props& p) { p.number(0x0102, 3); }, R"( cropleft="3f")"},
                 {[](Props& p) { p.number(0x0103, 4); }, R"( cropright="4f")"},
                 {[](Props& p) { p.number(0x0108, 5); }, R"( gain="5f")"},
                 {[](Props& p) { p.number(0x0109, 6); }, R"( blacklevel="6f")"},
                 {[](Props& p) { p.fixed(0x010A, 2); }, R"( gamma="150f")"},
                 {[](Props& p) { p.flag(0x013D, true); }, R"( grayscale="t")"},
             });
}

TEST(VmlTables, StyleOfTheTextPath) {
  const Rows rows = {
      {[](Props& p) { p.text(0x00C5, u"Arial"); }, "font-family:'Arial';"},
      {[](Props& p) { p.fixed(0x00C3, 36.5); }, "font-size:36pt;"},
      {[](Props& p) { p.number(0x00C2, 3); }, "v-text-align:'right';"},
      {[](Props& p) { p.number(0x00C4, 9); }, "v-text-spacing:9f;"},
      {[](Props& p) { p.flag(0x00F0, true); }, "v-text-reverse:t;"},
      {[](Props& p) { p.flag(0x00F2, false); }, "v-rotate-letters:f;"},
      {[](Props& p) { p.flag(0x00F3, true); }, "v-text-kern:t;"},
      {[](Props& p) { p.flag(0x00F4, false); }, "v-text-spacing-mode:f;"},
      {[](Props& p) { p.flag(0x00F8, true); }, "v-same-letter-heights:t;"},
      {[](Props& p) { p.flag(0x00FA, true); }, "font-weight:bold;"},
      {[](Props& p) { p.flag(0x00FB, true); }, "font-style:italic;"},
      {[](Props& p) { p.flag(0x00FC, true); }, "text-decoration:underline;"},
  };
  const auto styled = [](const std::string& style) {
    return element("textpath", " style=\"" + style + "\" string=\"Art\"");
  };
  std::string all;
  Props reversed;
  for (size_t i = 0; i < rows.size(); ++i) {
    Props props = Props().text(0x00C0, u"Art");
    rows[i].set(props);
    EXPECT_EQ(writtenFor(props, &KHtmlObjectWriter::WriteGeoTextProp), styled(rows[i].attribute));
    all += rows[i].attribute;
    rows[rows.size() - 1 - i].set(reversed);
  }
  EXPECT_EQ(writtenFor(reversed.text(0x00C0, u"Art"), &KHtmlObjectWriter::WriteGeoTextProp), styled(all));
}

TEST(VmlTables, FlagsOfTheTextPathStandBehindItsStyle) {
  const Props props = Props()
                          .text(0x00C0, u"Art")
                          .flag(0x00F9, true)
                          .flag(0x00F6, true)
                          .flag(0x00F5, false)
                          .flag(0x00FA, true);
  EXPECT_EQ(writtenFor(props, &KHtmlObjectWriter::WriteGeoTextProp),
            element("textpath", R"( style="font-weight:bold;" fitshape="false" fitpath="true" xscale="true")"
                                R"( string="Art")"));
}

TEST(VmlTables, FillWithAllItsAttributes) {
  const Bytes stops = ByteWriter().zeros(6).u32(0x030201).u32(9).take();
  // The array is the last with data: what is read of it lies partly behind it.
  const Props props = Props()
                          .number(0x018C, 40)
                          .fixed(0x018B, 45)
                          .fixed(0x0190, 1)
                          .fixed(0x018F, 0.5)
                          .fixed(0x018E, 0.25)
                          .fixed(0x018D, 0.125)
                          .number(0x0195, 8)
                          .text(0x0187, u"Stars")
                          .number(0x4186, 1)
                          .number(0x0184, 2)
                          .number(0x0182, 1)
                          .number(0x0183, 0x060504)
                          .number(0x0181, 0x030201)
                          .number(0x0180, 6)
                          .array(0x0197, 1, 8, stops);
  Drawing drawing;
  drawing.blip(Blip{});
  drawing.shape(0, Shape(1).props(props).userProps(Props().flag(0x01BA, true)));
  ObjectPage page(drawing);
  EXPECT_EQ(page.written([&](auto& writer) { writer.WriteFillProp(page.shape()); }),
            element("fill", R"( type="gradientradial" rotate="t" color="#010203" color2="#040506")"
                            R"( opacity="1f" o:opacity2="2f" src="image001.png" o:title="Stars")"
                            R"( aspect="atleast" focusposition="0.1,0.3" focussize="0.4,0.7")"
                            R"( angle="45" focus="40%" colors="9f #010203;")"));
}

/// Angle and focus stand with every type but the pictures; the place of the focus with three.
TEST(VmlTables, FillTypesHaveTheirOwnAttributes) {
  for (uint32_t type = 0; type <= 9; ++type) {
    const Props props = Props().number(0x0180, type).number(0x0181, 0).fixed(0x018B, 1).number(0x018C, 2);
    const std::string written = writtenFor(props, &KHtmlObjectWriter::WriteFillProp);
    const bool isPictured = type >= 1 && type <= 3;
    const bool isRadial = type >= 4 && type <= 6;
    EXPECT_EQ(written.find(R"( angle="1" focus="2%")") != std::string::npos, !isPictured) << type;
    EXPECT_EQ(written.find(R"( focusposition="0.0,0.0" focussize="0.0,0.0")") != std::string::npos, isRadial)
        << type;
  }
}

TEST(VmlTables, FillWithoutATypeHasAngleAndFocus) {
  EXPECT_EQ(writtenFor(Props().number(0x0181, 0).fixed(0x018B, 1).number(0x018C, 2).fixed(0x018D, 1),
                       &KHtmlObjectWriter::WriteFillProp),
            element("fill", R"( color="#000000" angle="1" focus="2%")"));
}

}  // namespace

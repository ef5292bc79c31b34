#include <gtest/gtest.h>

#include "objectwriter/object_page.h"

namespace {

using ObjectWriter::KHtmlObjectWriter;
using support::drawing::Props;
using support::drawing::Shape;

std::string textPathOf(const Props& props) {
  return writtenFor(props, &KHtmlObjectWriter::WriteGeoTextProp);
}
std::string textPath(const std::string& attributes) {
  return "<v:textpath" + attributes + "></v:textpath>\r\n";
}

TEST(VmlTextPath, NeedsAText) {
  EXPECT_EQ(textPathOf(Props().flag(0x00F5, true)), "");
  EXPECT_EQ(textPathOf(Props().text(0x00C0, u"")), "");
}

TEST(VmlTextPath, TextAloneHasNoStyle) {
  EXPECT_EQ(textPathOf(Props().text(0x00C0, u"Caf\u00E9")), textPath(" string=\"Caf\xC3\xA9\""));
}

TEST(VmlTextPath, StyleCollectsItsPieces) {
  const Props props = Props()
                          .text(0x00C0, u"Art")
                          .number(0x00C2, 2)
                          .fixed(0x00C3, 36)
                          .number(0x00C4, 65536)
                          .text(0x00C5, u"Arial Black");
  EXPECT_EQ(textPathOf(props), textPath(" style=\"font-family:'Arial Black';font-size:36pt;"
                                        "v-text-align:'left';v-text-spacing:65536f;\" string=\"Art\""));
}

TEST(VmlTextPath, FlagsOfTheStyleAreLetters) {
  const Props props = Props()
                          .text(0x00C0, u"Art")
                          .flag(0x00F0, true)
                          .flag(0x00F2, false)
                          .flag(0x00F3, true)
                          .flag(0x00F4, false)
                          .flag(0x00F8, true);
  EXPECT_EQ(textPathOf(props),
            textPath(" style=\"v-text-reverse:t;v-rotate-letters:f;v-text-kern:t;v-text-spacing-mode:f;"
                     "v-same-letter-heights:t;\" string=\"Art\""));
}

TEST(VmlTextPath, FontFlagsCountOnlyWhenTrue) {
  const Props on = Props().text(0x00C0, u"Art").flag(0x00FA, true).flag(0x00FB, true).flag(0x00FC, true);
  EXPECT_EQ(
      textPathOf(on),
      textPath(" style=\"font-weight:bold;font-style:italic;text-decoration:underline;\" string=\"Art\""));
  const Props off = Props().text(0x00C0, u"Art").flag(0x00FA, false).flag(0x00FB, false);
  EXPECT_EQ(textPathOf(off), textPath(" string=\"Art\""));
}

TEST(VmlTextPath, FlagsOfTheElementAreWords) {
  const Props props = Props().text(0x00C0, u"Art").flag(0x00F5, true).flag(0x00F6, false).flag(0x00F9, true);
  EXPECT_EQ(textPathOf(props), textPath(R"( fitshape="true" fitpath="false" xscale="true" string="Art")"));
}

TEST(VmlTextPath, PieceOfTheStyleIsCutAt63Bytes) {
  const Props props = Props().text(0x00C0, u"Art").text(0x00C5, std::u16string(80, u'x'));
  EXPECT_EQ(textPathOf(props),
            textPath(" style=\"font-family:'" + std::string(50, 'x') + "\" string=\"Art\""));
}

// Text boxes. Their text is tested with whole documents; here the box has none.

std::string textBoxOf(const Props& props) {
  ObjectPage page(Shape(202).props(props).textBox(0));
  return page.written([&](auto& writer) { writer.WriteTextBoxProp(page.shape()); });
}
std::string textBox(const std::string& attributes) {
  return "<v:textbox" + attributes + ">\r\n<div></div>\r\n</v:textbox>\r\n";
}

TEST(VmlTextBox, NeedsARecord) {
  EXPECT_EQ(writtenFor(Props().number(0x0087, 1), &KHtmlObjectWriter::WriteTextBoxProp, 202), "");
}

/// Even if it is empty and the last of the shape.
TEST(VmlTextBox, AnyRecordIsATextBox) {
  const Shape shape = Shape(202).extra(support::drawing::record(0xF00D, 0, 0, {}));
  ObjectPage page(shape);
  EXPECT_EQ(page.written([&](auto& writer) { writer.WriteTextBoxProp(page.shape()); }),
            textBox(R"( inset="7.20pt,3.60pt,7.20pt,3.60pt")"));
}

TEST(VmlTextBox, InsetHasDefaults) {
  EXPECT_EQ(textBoxOf(Props()), textBox(R"( inset="7.20pt,3.60pt,7.20pt,3.60pt")"));
}

TEST(VmlTextBox, InsetGoesRoundFromTheLeft) {
  const Props props =
      Props().number(0x0081, 12700).number(0x0082, 25400).number(0x0083, 38100).number(0x0084, 50800);
  EXPECT_EQ(textBoxOf(props), textBox(R"( inset="1.00pt,2.00pt,3.00pt,4.00pt")"));
}

TEST(VmlTextBox, AutomaticMarginsHaveNoInset) {
  EXPECT_EQ(textBoxOf(Props().number(0x0081, 12700).flag(0x00BC, true)), textBox(""));
  EXPECT_EQ(textBoxOf(Props().flag(0x00BC, false)), textBox(R"( inset="7.20pt,3.60pt,7.20pt,3.60pt")"));
}

TEST(VmlTextBox, AnchorAndFlow) {
  EXPECT_EQ(textBoxOf(Props().flag(0x00BC, true).number(0x0087, 1).number(0x0088, 1)),
            textBox(R"( v-text-anchor="middle" layout-flow="vertical")"));
  EXPECT_EQ(textBoxOf(Props().flag(0x00BC, true).number(0x0088, 2)), textBox(""));
}

}  // namespace

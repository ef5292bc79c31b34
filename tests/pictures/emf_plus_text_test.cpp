// Text of EMF+.

#include <gtest/gtest.h>

#include "support/emf_plus_writer.h"

namespace {

using namespace support::emf_plus;
using support::Bytes;

constexpr uint16_t kColour = 0x8000;
constexpr uint32_t kRed = 0xFFFF0000;

Records arial(float size = 10, uint32_t style = 0) {
  return Records().object(kFont, 2, font(size, u"Arial", style));
}

/// Text in a box, with the format that is object 4.
Drawn written(Records records, std::u16string_view text, std::initializer_list<float> box) {
  const auto length = static_cast<uint32_t>(text.size());
  return draw(records.add(0x401C, kColour | 2, Fields().u32(kRed).u32(4).u32(length).reals(box).text(text)));
}

TEST(EmfPlusText, HasAFontAndAColour) {
  const Drawn picture = written(arial(), u"Hello", {10, 20, 0, 0});
  const Element& text = picture.element("text");
  EXPECT_EQ(text.text, "Hello");
  EXPECT_EQ(text["font-family"], "Arial,sans-serif");
  EXPECT_EQ(text["font-size"], "10");
  EXPECT_EQ(text["fill"], "#f00");
  EXPECT_EQ(text["x"], "12");
  EXPECT_EQ(text["y"], "29");
  EXPECT_TRUE(picture.isWhole);
}

TEST(EmfPlusText, MayBeBoldAndUnderlined) {
  const Element text = written(arial(10, 15), u"Hello", {10, 20, 0, 0}).element("text");
  EXPECT_EQ(text["font-weight"], "700");
  EXPECT_EQ(text["font-style"], "italic");
  EXPECT_EQ(text["text-decoration"], "underline line-through");
}

TEST(EmfPlusText, SizesHaveUnits) {
  const Bytes points = Fields().u32(kVersion).reals({12}).u32(3).u32(0).u32(0).u32(1).text(u"A");
  Records records;
  records.object(kFont, 2, points);
  EXPECT_EQ(written(records, u"x", {0, 0, 0, 0}).element("text")["font-size"], "16");
  records.add(0x4030, 2, Fields().reals({2}));
  EXPECT_EQ(written(records, u"x", {0, 0, 0, 0}).element("text")["font-size"], "16");
}

TEST(EmfPlusText, TakesOneColourOfABrush) {
  const auto inkOf = [](const Bytes& brush) {
    Records records = arial().object(kBrush, 1, brush);
    records.add(0x401C, 2, Fields().u32(1).u32(99).u32(1).reals({0, 0, 0, 0}).text(u"x"));
    return draw(records).element("text")["fill"];
  };
  EXPECT_EQ(inkOf(solidBrush(0xFF00FF00)), "#0f0");
  EXPECT_EQ(inkOf(Fields().u32(kVersion).u32(1).u32(3).u32(kRed).u32(0xFFFFFFFF)), "#f00");
  EXPECT_EQ(inkOf(Fields().u32(kVersion).u32(2).u32(0).u32(0)), "");
  EXPECT_EQ(inkOf(Fields().u32(kVersion).u32(3).u32(0).u32(0).u32(kRed)), "#f00");
  EXPECT_EQ(inkOf(Fields().u32(kVersion).u32(4).u32(0).u32(0).reals({0, 0, 1, 1}).u32(kRed)), "#f00");
}

TEST(EmfPlusText, StandsWhereItsFormatSays) {
  const auto place = [](uint32_t align, uint32_t lineAlign) {
    Records records = arial().object(kStringFormat, 4, stringFormat(0x1000, align, lineAlign));
    const Element text = written(records, u"Hello", {10, 20, 60, 40}).element("text");
    return text["x"] + " " + text["y"] + " " + text["text-anchor"];
  };
  EXPECT_EQ(place(0, 0), "10 29 ");
  EXPECT_EQ(place(1, 1), "40 43 middle");
  EXPECT_EQ(place(2, 2), "70 58 end");
}

TEST(EmfPlusText, BreaksIntoLines) {
  const Drawn picture = written(arial(), u"Some words that need more lines", {0, 0, 50, 90});
  ASSERT_EQ(picture.count("text"), 3U);
  EXPECT_EQ(picture.element("text", 0).text, "Some words");
  EXPECT_EQ(picture.element("text", 1).text, "that need");
  EXPECT_EQ(picture.element("text", 2).text, "more lines");
}

TEST(EmfPlusText, BreaksWhereItSays) {
  const Drawn picture = written(arial(), u"one\r\n\ntwo", {0, 0, 0, 0});
  ASSERT_EQ(picture.count("text"), 2U);
  EXPECT_EQ(picture.element("text", 0)["y"], "9");
  EXPECT_EQ(picture.element("text", 1)["y"], "31");
}

TEST(EmfPlusText, BreaksBetweenIdeographs) {
  const Drawn picture = written(arial(), u"\u4E00\u4E8C\u4E09\u56DB\u4E94\u516D", {0, 0, 30, 90});
  EXPECT_EQ(picture.count("text"), 2U);
}

TEST(EmfPlusText, StaysOnItsLineWhereItMay) {
  Records records = arial().object(kStringFormat, 4, stringFormat(0x1000, 0, 0));
  EXPECT_EQ(written(records, u"Some words that need more lines", {0, 0, 50, 90}).count("text"), 1U);
}

TEST(EmfPlusText, LinesBelowTheBoxAreNotSeen) {
  EXPECT_EQ(written(arial(), u"a\nb\nc\nd", {0, 0, 50, 20}).count("text"), 2U);
  Records records = arial().object(kStringFormat, 4, stringFormat(0x4000, 0, 0));
  EXPECT_EQ(written(records, u"a\nb\nc\nd", {0, 0, 50, 20}).count("text"), 4U);
}

TEST(EmfPlusText, AmpersandsMayMarkKeys) {
  Records records = arial().object(kStringFormat, 4, stringFormat(0, 0, 0, 2));
  EXPECT_EQ(written(records, u"&File && &more&", {0, 0, 0, 0}).element("text").text, "File &amp; more");
  EXPECT_EQ(written(arial(), u"A&B", {0, 0, 0, 0}).element("text").text, "A&amp;B");
}

TEST(EmfPlusText, GoesDown) {
  Records records = arial().object(kStringFormat, 4, stringFormat(2, 0, 0));
  const Element text = written(records, u"down", {10, 20, 30, 60}).element("text");
  EXPECT_EQ(text["transform"].substr(0, 18), "matrix(0 1 -1 0 30");
}

TEST(EmfPlusText, GoesFromRightToLeft) {
  Records records = arial().object(kStringFormat, 4, stringFormat(1, 0, 0));
  const Element text = written(records, u"\u05D0\u05D1", {10, 20, 60, 20}).element("text");
  EXPECT_EQ(text["direction"], "rtl");
  EXPECT_EQ(text["x"], "70");
  EXPECT_EQ(text["text-anchor"], "");
}

TEST(EmfPlusText, SignsOfSymbolFontsAreThoseOfUnicode) {
  Records records;
  records.object(kFont, 2, font(10, u"Symbol"));
  EXPECT_EQ(written(records, u"a", {0, 0, 0, 0}).element("text").text, "\u03B1");
}

TEST(EmfPlusText, WithoutItsFontIsNotDrawn) {
  const Drawn picture = written(Records(), u"Hello", {0, 0, 0, 0});
  EXPECT_EQ(picture.count("text"), 0U);
  EXPECT_FALSE(picture.isWhole);
}

/// Glyphs at places.
Drawn placed(uint32_t options, const Fields& glyphs, std::initializer_list<float> places,
             std::initializer_list<float> matrix = {}) {
  const auto count = static_cast<uint32_t>(glyphs.take().size() / 2);
  const Fields head = Fields().u32(kRed).u32(options).u32(matrix.size() > 0).u32(count);
  return draw(arial().add(0x4036, kColour | 2, Fields(head).bytes(glyphs).reals(places).reals(matrix)));
}

TEST(EmfPlusDriverText, HasPlacesOfItsCharacters) {
  const Drawn picture = placed(1, Fields().text(u"abc"), {10, 20, 18, 20, 30, 20});
  const Element& word = picture.element("tspan");
  EXPECT_EQ(word.text, "abc");
  EXPECT_EQ(word["x"], "10");
  EXPECT_EQ(word.parent.at("y"), "20");
  EXPECT_TRUE(picture.isWhole);
}

TEST(EmfPlusDriverText, IsATextForEachLine) {
  const Drawn picture = placed(1, Fields().text(u"abcd"), {10, 20, 18, 20, 10, 40, 5, 40});
  ASSERT_EQ(picture.count("tspan"), 3U);
  EXPECT_EQ(picture.element("tspan", 0).text, "ab");
  EXPECT_EQ(picture.element("tspan", 1).text, "c");
  EXPECT_EQ(picture.element("tspan", 2)["x"], "5");
}

TEST(EmfPlusDriverText, MayHaveAdvancesOfItsFont) {
  const Drawn picture = placed(5, Fields().text(u"abc"), {10, 20});
  EXPECT_EQ(picture.element("text").text, "abc");
  EXPECT_EQ(picture.element("text")["x"], "10");
}

TEST(EmfPlusDriverText, GlyphsOfUsualFontsAreKnown) {
  EXPECT_EQ(placed(0, Fields().shorts({68, 69}), {10, 20, 18, 20}).element("tspan").text, "ab");
  EXPECT_FALSE(placed(0, Fields().shorts({68, 690}), {10, 20, 18, 20}).isWhole);
}

TEST(EmfPlusDriverText, MayBeTurned) {
  const Drawn picture = placed(1, Fields().text(u"ab"), {10, 20, 18, 20}, {0, 1, -1, 0, 0, 0});
  EXPECT_EQ(picture.element("text")["transform"], "matrix(0 1 -1 0 -20 10)");
}

}  // namespace

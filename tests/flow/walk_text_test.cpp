#include <gtest/gtest.h>

#include <array>
#include <string>

#include "flow/walked_document.h"
#include "support/named_sprms.h"

using namespace flow_test;
using namespace support;

namespace {

constexpr uint16_t kVanish = 0x083C, kSymbol = 0x6A09;
constexpr char16_t kSymbolMark = u'(';

/// sprmCSymbol: a character of a font in the place of the run's.
Bytes symbol(uint16_t font, char16_t character) {
  return sprm(kSymbol, static_cast<int64_t>(font) | static_cast<int64_t>(character) << 16);
}

std::u16string charactersOf(const WordDocument& doc, const pagerex::WalkOptions& options = {}) {
  return Walked(doc, 0, options).characters();
}

/// Keeps what is told of one font.
class FontKeeper final : public pagerex::FlowHandler {
 public:
  explicit FontKeeper(uint16_t ftc) : ftc_(ftc) {}
  void BeginDocument(const pagerex::DocumentFacts& facts) override {
    font = facts.fonts->FactsOf(ftc_);
    name = font.name;
    alternateName = font.alternateName;
    EXPECT_EQ(facts.fonts->FactsOf(99).name, u"");
  }
  void Text(std::u16string_view, const pagerex::RunProperties&) override {}

  pagerex::FontFacts font;  ///< its names are gone
  std::u16string name, alternateName;

 private:
  uint16_t ftc_;
};

}  // namespace

TEST(WalkText, TellsParagraphsInOrder) {
  WordDocument doc;
  doc.paragraph("one");
  doc.paragraph();
  doc.paragraph("two");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "one"
paragraph
paragraph
  text "two"
)");
}

TEST(WalkText, TellsTheLookOfRuns) {
  WordDocument doc;
  doc.paragraph("plain ").run("bold", {bold()}).run(" both", {bold(), italic()});
  EXPECT_EQ(transcriptOf(doc, kWithFormats), R"(
paragraph
  text "plain "
  text "bold" bold
  text " both" bold italic
)");
}

TEST(WalkText, TellsWhatTheFontTableSays) {
  const std::array<uint8_t, 10> shapes = {2, 11, 6, 4, 2, 2, 2, 2, 2, 4};
  WordDocument doc;
  doc.font("Times");
  FontKeeper keeper(doc.font({.name = u"Own",
                              .alternateName = u"Arial",
                              .family = 2,
                              .pitch = 1,
                              .charset = 204,
                              .panose = shapes}));
  doc.paragraph("text");
  walkInto(doc.build(), keeper);
  EXPECT_EQ(keeper.name, u"Own");
  EXPECT_EQ(keeper.alternateName, u"Arial");
  EXPECT_EQ(keeper.font.pitch, 1);
  EXPECT_EQ(keeper.font.family, 2);
  EXPECT_EQ(keeper.font.characterSet, 204);
  EXPECT_EQ(keeper.font.panose, shapes);
}

TEST(WalkText, TellsStylesAndHeadings) {
  WordDocument doc;
  doc.style(1, Style().name("heading 1").sti(1).basedOn(0).papx({outlineLevel(0)}).chpx({bold()}));
  doc.style(15, Style().name("Mine").basedOn(0));
  doc.paragraph("a").istd(1);
  doc.paragraph("b").istd(15);
  EXPECT_EQ(transcriptOf(doc, kWithStyles | kWithFormats), R"(
paragraph style="heading 1" heading=1
  text "a" bold
paragraph style="Mine"
  text "b"
)");
}

TEST(WalkText, TextStandsOnBothSidesOfAPageBreak) {
  WordDocument doc;
  doc.paragraph("before\fbehind");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "before"
  pageBreak
  text "behind"
)");
}

TEST(WalkText, TextStandsOnBothSidesOfOtherBreaks) {
  WordDocument doc;
  doc.paragraph(
      "a\x0E"
      "b\vc\td");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "a"
  columnBreak
  text "b"
  lineBreak
  text "c"
  tab
  text "d"
)");
}

TEST(WalkText, TextStandsOnBothSidesOfASectionMark) {
  WordDocument doc;
  doc.paragraph("one");
  doc.section({}).paragraph("two");
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph
  text "one"
paragraph
  text "two"
)");
}

TEST(WalkText, APageBreakBeforeASectionMarkStays) {
  WordDocument doc;
  doc.paragraph("one\f");
  doc.section({}).paragraph("two");
  EXPECT_EQ(charactersOf(doc), u"one\f\ntwo\n");
}

TEST(WalkText, HyphensAndSpacesAreCharacters) {
  WordDocument doc;
  doc.paragraph(
      u"a\x1E"
      u"b\x1F"
      u"c\u00A0d\u2003e");
  EXPECT_EQ(charactersOf(doc), u"a\u2011b\u00ADc\u00A0d\u2003e\n");
}

TEST(WalkText, SpecialMarksWithoutMeaningAreNoText) {
  WordDocument doc;
  doc.paragraph("a").special(0x02).special(0x05).special(0x08).special(0x01).run("b");
  EXPECT_EQ(Walked(doc).characters(), u"ab\n");
}

TEST(WalkText, SymbolsOfARunStandForItsCharacters) {
  WordDocument doc;
  doc.font("Times New Roman");
  const uint16_t symbols = doc.font({.name = "Symbol", .charset = 2});
  doc.paragraph("a").special(kSymbolMark, {symbol(symbols, 0xF061)}).run("b");
  EXPECT_EQ(charactersOf(doc), u"aαb\n");
}

TEST(WalkText, SymbolsOfAFontOfLettersAreThemselves) {
  WordDocument doc;
  doc.font("Times New Roman");
  doc.paragraph().special(kSymbolMark, {symbol(0, 0x20AC)});
  EXPECT_EQ(charactersOf(doc), u"€\n");
}

TEST(WalkText, TextInASymbolFontIsReadByIt) {
  WordDocument doc;
  doc.font("Times New Roman");
  const uint16_t symbols = doc.font({.name = "Symbol", .charset = 2});
  const Sprms font = {sprm(0x4A4F, symbols), sprm(0x4A51, symbols)};
  doc.paragraph("a").run("b", font).run(u"\uF067", font);
  EXPECT_EQ(charactersOf(doc), u"aβγ\n");
}

TEST(WalkText, CharactersOfTwoUnitsAreNotCut) {
  WordDocument doc;
  doc.paragraph(u"a\xD83D")
      .run(
          u"\xDE00"
          u"b",
          {bold()});
  EXPECT_EQ(charactersOf(doc), u"a😀b\n");
}

TEST(WalkText, HiddenTextIsLeftOut) {
  WordDocument doc;
  doc.paragraph("a").run("hidden", {sprm(kVanish, 1)}).run("b");
  EXPECT_EQ(charactersOf(doc), u"ab\n");
}

TEST(WalkText, AHiddenMarkJoinsParagraphsAndTheFirstSaysWhatTheyAreLike) {
  WordDocument doc;
  doc.style(1, Style().name("heading 1").sti(1).chpx({bold()}));
  doc.paragraph().istd(1).run("Head. ").mark({sprm(kVanish, 1)});
  doc.paragraph("Text.");
  EXPECT_EQ(transcriptOf(doc, kWithFormats | kWithStyles), R"(
paragraph style="heading 1" heading=1
  text "Head. " bold
  text "Text."
)");
}

TEST(WalkText, ADropCapBeginsTheNextParagraph) {
  constexpr uint16_t kDropCap = 0x442C, kCentred = 0x2403;
  WordDocument doc;
  doc.paragraph("O").sprms({sprm(kDropCap, 0x19)});
  doc.paragraph("nce").sprms({sprm(kCentred, 1)});
  EXPECT_EQ(transcriptOf(doc, kWithFormats), R"(
paragraph align=1
  text "Once"
)");
}

TEST(WalkText, AHiddenParagraphSaysNothingOfTheNext) {
  WordDocument doc;
  doc.style(15, Style().name("Secret").chpx({sprm(kVanish, 1)}));
  doc.paragraph("hidden").istd(15);
  doc.paragraph("shown");
  EXPECT_EQ(transcriptOf(doc, kWithFormats | kWithStyles), R"(
paragraph
  text "shown"
)");
}

TEST(WalkText, HiddenTextIsToldWhenItIsWanted) {
  WordDocument doc;
  doc.paragraph("a").run("hidden", {sprm(kVanish, 1)});
  EXPECT_EQ(transcriptOf(doc, kWithFormats, {.hiddenText = true}), R"(
paragraph
  text "a"
  text "hidden" hidden
)");
}

TEST(WalkText, PiecesAreReadInTheOrderOfTheText) {
  WordDocument doc;
  doc.paragraph("one ").newPiece({.fileOrder = 2}).run(u"zwei Ω ").newPiece({.fileOrder = 1}).run("three");
  EXPECT_EQ(charactersOf(doc), u"one zwei Ω three\n");
}

TEST(WalkText, WhatAPieceAddsHolds) {
  WordDocument doc;
  const uint32_t group = doc.propertyGroup({bold()});
  doc.paragraph("a").newPiece({.prm = prmOfGroup(group)}).run("b");
  EXPECT_EQ(transcriptOf(doc, kWithFormats), R"(
paragraph
  text "a"
  text "b" bold
)");
}

TEST(WalkText, ParagraphsHaveTheirFormat) {
  WordDocument doc;
  doc.paragraph("x").sprms({align(1), leftIndent(720), firstLine(-360), spaceBefore(120), spaceAfter(240)});
  EXPECT_EQ(transcriptOf(doc, kWithFormats), R"(
paragraph align=1 indent=720 firstLine=-360 before=120 after=240
  text "x"
)");
}

TEST(WalkText, ListItemsHaveLabels) {
  WordDocument doc;
  const uint16_t list =
      doc.list({.lsid = 1, .levels = {ListLevel{}, ListLevel{.numberFormat = 4, .text = "%2."}}});
  doc.paragraph("a").sprms(Sprms(listItem(list, 0)));
  doc.paragraph("b").sprms(Sprms(listItem(list, 1)));
  doc.paragraph("c").sprms(Sprms(listItem(list, 1)));
  doc.paragraph("d").sprms(Sprms(listItem(list, 0)));
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph label="1." number=1
  text "a"
paragraph label="a." level=1 number=1
  text "b"
paragraph label="b." level=1 number=2
  text "c"
paragraph label="2." number=2
  text "d"
)");
}

TEST(WalkText, BulletsAreUnicode) {
  WordDocument doc;
  doc.font("Times New Roman");
  const uint16_t symbols = doc.font({.name = "Symbol", .charset = 2});
  const uint16_t list = doc.list({.lsid = 1, .levels = {bulletLevel(0xF0B7, symbols)}, .simple = true});
  doc.paragraph("a").sprms(Sprms(listItem(list, 0)));
  EXPECT_EQ(transcriptOf(doc), R"(
paragraph label="•" bullet number=1
  text "a"
)");
}

TEST(WalkText, TheDocumentIsToldFirst) {
  WordDocument doc;
  doc.summary({.title = "Title"});
  doc.paragraph("x");
  doc.patchDop(0, uint16_t{1 << 5 | 1}).patchDop(46, uint16_t{3});
  EXPECT_EQ(transcriptOf(doc, kWithDocument), R"(
document title="Title" tab=720 oddAndEven pages=3
paragraph
  text "x"
)");
}

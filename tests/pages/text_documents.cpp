#include <string>

#include "pages/page_documents.h"

namespace pages {

using namespace support;

namespace {

constexpr uint32_t kRed = rgb(255, 0, 0), kGreen = rgb(0, 128, 0), kNight = rgb(0, 0, 64);
constexpr uint32_t kPale = rgb(0xEA, 0xF1, 0xDD);
constexpr uint16_t kStrike = 0x0837, kDoubleStrike = 0x2A53, kHidden = 0x083C, kUnderlineColour = 0x6877;
constexpr uint16_t kRaise = 0x4845, kVerticalKind = 0x2A48, kLanguage = 0x4873;

/// Enough for several lines, beginning with `first`.
std::string longText(const std::string& first) {
  std::string text = first;
  for (int i = 0; i < 12; ++i) text += " and some more words to fill the line with";
  return text + ".";
}

void addFontsAndSizes(WordDocument& doc) {
  doc.paragraph("size of Normal");
  doc.paragraph()
      .run("in Arial", {inFont(kSans)})
      .run(" - ")
      .run("in Courier", {inFont(kMono)})
      .run(" - ")
      .run("in script", {inFont(kScript)})
      .run(" - ")
      .run("in fantasy", {inFont(kFancy)})
      .run(" - ")
      .run("in unknown sans", {inFont(kUnknownSans)})
      .run(" - ")
      .run("in unknown mono", {inFont(kUnknownMono)})
      .run(" - ")
      .run("in an odd name", {inFont(kOddName)});
  doc.paragraph()
      .run("eight points", {fontSize(16)})
      .run(" - ")
      .run("twenty-four points", {fontSize(48)})
      .run(" - ")
      .run("ten and a half", {fontSize(21)});
}

void addLooks(WordDocument& doc) {
  doc.paragraph("plain text, ")
      .run("bold text", {bold()})
      .run(" - ")
      .run("italic text", {italic()})
      .run(" - ")
      .run("struck text", {sprm(kStrike, 1)})
      .run(" - ")
      .run("doubly struck", {sprm(kDoubleStrike, 1)})
      .run(" - ")
      .run("small capitals", {sprm(0x083A, 1)})
      .run(" - ")
      .run("every capital", {sprm(0x083B, 1)})
      .run(" - ")
      .run("spaced text", {letterSpacing(40)})
      .run(" - ")
      .run("strong text", {characterStyle(kStrong)})
      .run(" - ")
      .run("emphasised", {sprm(0x2A34, 1)})
      .run("secret words", {sprm(kHidden, 1)});
  doc.paragraph()
      .run("level text")
      .run("superscript", {sprm(kVerticalKind, 1)})
      .run(" - ")
      .run("subscript", {sprm(kVerticalKind, 2)})
      .run(" - ")
      .run("raised six", {sprm(kRaise, 12)})
      .run(" - ")
      .run("lowered six", {sprm(kRaise, -12)});
  doc.paragraph("Heading with ").istd(kHeading1).run("a light word", {bold(0)});
}

struct Underlined {
  const char* text;
  int kind;
};
constexpr Underlined kUnderlines[] = {
    {"singly underlined", 1},  {"words underlined", 2}, {"doubly underlined", 3}, {"dotted underline", 4},
    {"thickly underlined", 6}, {"dashed underline", 7}, {"wavy underline", 11},
};

void addColours(WordDocument& doc) {
  Paragraph& lines = doc.paragraph();
  for (const Underlined& each : kUnderlines) lines.run(each.text, {underline(each.kind)}).run(" - ");
  lines.run("red underline", {underline(1), sprm(kUnderlineColour, kRed)})
      .run(" - ")
      .run("under and through", {underline(1), sprm(kStrike, 1)});
  doc.paragraph()
      .run("red text", {colour(kRed)})
      .run(" - ")
      .run("highlighted text", {highlight(7)})
      .run(" - ")
      .run("shaded text", {shadingSprm(0xCA71, {.background = kPale})})
      .run(" - ")
      .run("night words", {shadingSprm(0xCA71, {.background = kNight})})
      .run(" - ")
      .run("framed text", {borderSprm(0xCA72, {.colour = kGreen, .width = 8})});
  doc.paragraph("night paragraph ")
      .sprms({shadingSprm(0xC64D, {.background = kNight})})
      .run("marked at night", {highlight(7)})
      .run(" ")
      .run("green at night", {colour(kGreen)});
}

void addLetters(WordDocument& doc) {
  doc.paragraph("a < b & c > \"d\" 'e' &amp; <b>no markup</b>");
  doc.paragraph("narrow gap");
  doc.paragraph("broader     gap");
  doc.paragraph("above the break\vbelow the break");
  doc.paragraph(
      "non\x1E"
      "breaking and op\x1Ftional");
  doc.paragraph(u"Beyond \xD83D\xDE00 and \x4E2D\x6587");
  doc.paragraph("a letter of Symbol: ").special(u'(', {sprm(0x6A09, kSymbol | 0xF061 << 16)}).run(" alpha");
}

}  // namespace

void fillCharacters(WordDocument& doc) {
  doc.section(paper());
  addFontsAndSizes(doc);
  addLooks(doc);
  addColours(doc);
  addLetters(doc);
}

namespace {

void addAlignments(WordDocument& doc) {
  doc.paragraph("to the left").sprms({align(0)});
  doc.paragraph("in the middle").sprms({align(1)});
  doc.paragraph("to the right").sprms({align(2)});
  doc.paragraph(longText("to both sides")).sprms({align(3)});
  doc.paragraph(longText("indented by an inch")).sprms({leftIndent(1440)});
  doc.paragraph(longText("first line further in")).sprms({leftIndent(720), firstLine(360)});
  doc.paragraph(longText("hanging first line")).sprms({leftIndent(720), firstLine(-360)});
  doc.paragraph("right indent of an inch").sprms({align(2), rightIndent(1440)});
}

void addSpaces(WordDocument& doc) {
  doc.paragraph("tight one");
  doc.paragraph("tight two");
  doc.paragraph("space after of ten").sprms({spaceAfter(200)});
  doc.paragraph("space before of twelve").sprms({spaceBefore(240)});
  doc.paragraph("plain below");
  doc.paragraph("list style one").istd(kListParagraph);
  doc.paragraph("list style two").istd(kListParagraph);
  doc.paragraph("below list style");
}

void addLineHeights(WordDocument& doc) {
  doc.paragraph(longText("usual lines"));
  doc.paragraph(longText("exactly thirty points")).sprms({lineSpacing(-600, false)});
  doc.paragraph(longText("at least thirty points")).sprms({lineSpacing(600, false)});
  doc.paragraph(longText("at least one point")).sprms({lineSpacing(20, false)});
  doc.paragraph(longText("double lines")).sprms({lineSpacing(480, true)});
}

Sprms framed(const Border& line) {
  return {borderSprm(0xC64E, line), borderSprm(0xC64F, line), borderSprm(0xC650, line),
          borderSprm(0xC651, line)};
}

void addBoxes(WordDocument& doc) {
  const Border red = {.colour = kRed, .width = 12, .type = 1, .space = 4};
  doc.paragraph("framed alone").sprms(framed(red));
  doc.paragraph("between the boxes");
  doc.paragraph("first in one box").sprms(framed(red));
  doc.paragraph("second in one box").sprms(framed(red));
  doc.paragraph("double rule below").sprms({borderSprm(0xC650, {.width = 6, .type = 3, .space = 1})});
  doc.paragraph("dashed rule above").sprms({borderSprm(0xC64E, {.width = 6, .type = 7, .space = 1})});
  doc.paragraph("pale paragraph").sprms({shadingSprm(0xC64D, {.background = kPale})});
}

void addDropCap(WordDocument& doc) {
  constexpr uint16_t kDropCap = 0x442C, kWrap = 0x2423;
  doc.paragraph("Q", {fontSize(110)})
      .sprms({sprm(kDropCap, 3 << 3 | 1), sprm(kWrap, 2), lineSpacing(-760, false)});
  doc.paragraph(longText("uite a large letter begins this"));
}

}  // namespace

void fillParagraphs(WordDocument& doc) {
  doc.section(paper());
  addAlignments(doc);
  addSpaces(doc);
  addLineHeights(doc);
  addBoxes(doc);
  addDropCap(doc);
  doc.paragraph("on a new page").sprms({sprm(0x2407, 1)});
  doc.paragraph("quoted words").istd(kQuote);
}

void fillTabs(WordDocument& doc) {
  doc.section(paper());
  doc.paragraph("Chapter one\tp12").sprms({tabsSprm({{kTextWidth, 2, 1}})});
  doc.paragraph("Chapter two, whose name is longer\tp345").sprms({tabsSprm({{kTextWidth, 2, 1}})});
  doc.paragraph("left end\tmiddle word\tright end")
      .sprms({tabsSprm({{kTextWidth / 2, 1, 0}, {kTextWidth, 2, 0}})});
  doc.paragraph("from\tleft stop").sprms({tabsSprm({{2880, 0, 0}})});
  doc.paragraph("usual\tnext stop");
  doc.paragraph("two\t\tsecond stop");
  doc.paragraph("decimal\t4711.25 mm").sprms({tabsSprm({{3600, 3, 0}})});
  doc.paragraph("decimal\t8.5 mm").sprms({tabsSprm({{3600, 3, 0}})});
  doc.paragraph("hung\tbehind the tab").sprms({leftIndent(1440), firstLine(-1440)});
  doc.paragraph(longText("1)\tnumbered by hand")).sprms({leftIndent(720), firstLine(-720)});
}

void fillDirections(WordDocument& doc) {
  constexpr uint16_t kRightToLeft = 0x2441, kRightToLeftRun = 0x085A, kComplexLanguage = 0x485F;
  const Sprms hebrew = {sprm(kRightToLeftRun, 1), sprm(kComplexLanguage, 0x040D)};
  doc.section(paper());
  doc.paragraph("from left to right");
  doc.paragraph(u"\x05E9\x05DC\x05D5\x05DD", hebrew).sprms({sprm(kRightToLeft, 1), align(0)});
  doc.paragraph(u"\x05E2\x05D5\x05DC\x05DD", hebrew)
      .sprms({sprm(kRightToLeft, 1), align(0), leftIndent(1440)});
  doc.paragraph(u"\x05D0\x05D7\x05D3\t\x05E9\x05E0\x05D9\x05DD", hebrew)
      .sprms({sprm(kRightToLeft, 1), tabsSprm({{2880, 0, 0}})});
  doc.paragraph("English, then ")
      .run(
          u"une phrase fran\x00E7"
          u"aise",
          {sprm(kLanguage, 0x040C)})
      .run(", and English again.");
  doc.paragraph("Ein deutscher Absatz.", {sprm(kLanguage, 0x0407)}).mark({sprm(kLanguage, 0x0407)});
  doc.row({"column A", "column B"},
          {defTableSprm({0, 3000, 6000}), sprm(0x560B, 1), tableBordersSprm(std::vector<Border>(6))});
  doc.paragraph("end of directions");
}

}  // namespace pages

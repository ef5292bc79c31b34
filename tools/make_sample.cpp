// Writes samples/sample.doc: a short document that shows each thing the converter knows.
//
//     make_sample samples/sample.doc
//
// One function a topic, in the order of the pages; drawings stand in sample_drawings.cpp. Grow it when the
// converter learns something.

#include <cstdio>
#include <exception>

#include "sample_drawings.h"
#include "support/named_sprms.h"
#include "support/word_document_writer.h"

using namespace support;

namespace {

enum FontIndex : uint16_t { kSerif, kSans, kMono, kSymbol, kChinese, kJapanese };

/// A run in a font; the hint says which of the run's fonts counts.
Sprms inFont(FontIndex font) {
  return {sprm(0x4A4F, font), sprm(0x4A51, font), sprm(0x286F, 0)};
}
Sprms inFarEastFont(FontIndex font) {
  return {sprm(0x4A50, font), sprm(0x286F, 1)};
}

constexpr uint32_t kBlue = rgb(0x1F, 0x4E, 0x79);
constexpr uint32_t kGrey = rgb(0xD9, 0xD9, 0xD9);
constexpr uint32_t kPale = rgb(0xEA, 0xF1, 0xDD);

// --- Styles and fonts ---

enum StyleIndex : uint16_t {
  kHeading1 = 1,
  kHeading2 = 2,
  kHeading3 = 3,
  kDefaultParagraphFont = 10,
  kTableNormal = 11,
  kNoList = 12,
  kTitle = 15,
  kQuote = 16,
  kNoteText = 17,
  kNoteReference = 18,
  kStrong = 19,
  kHyperlink = 20,
};

void addFonts(WordDocument& doc) {
  doc.font("Times New Roman");
  doc.font({.name = "Arial", .family = 2});
  doc.font({.name = "Courier New", .family = 3, .pitch = 1});
  doc.font({.name = "Symbol", .charset = 2});
  doc.font({.name = u"宋体", .alternateName = "SimSun", .family = 0, .charset = 134});
  doc.font({.name = u"ＭＳ 明朝", .alternateName = "MS Mincho", .family = 3, .charset = 128});
}

void addHeadingStyle(WordDocument& doc, StyleIndex istd, int halfPoints) {
  const std::string name = "heading " + std::to_string(istd);
  doc.style(istd,
            Style()
                .name(name)
                .sti(istd)
                .basedOn(0)
                .next(0)
                .papx({sprm(0x2406, 1), spaceBefore(240), spaceAfter(120), outlineLevel(istd - 1)})
                .chpx({fontSize(halfPoints), bold(), colour(kBlue), sprm(0x4A4F, kSans), sprm(0x286F, 0)}));
}

void addStyles(WordDocument& doc) {
  doc.style(0, Style().name("Normal").sti(0).papx({spaceAfter(120)}).chpx({fontSize(22)}));
  addHeadingStyle(doc, kHeading1, 32);
  addHeadingStyle(doc, kHeading2, 26);
  addHeadingStyle(doc, kHeading3, 22);
  const auto character = StyleKind::kCharacter;
  doc.style(kDefaultParagraphFont, Style().name("Default Paragraph Font").sti(65).kind(character));
  doc.style(kTableNormal, Style().name("Normal Table").sti(105).kind(StyleKind::kTable));
  doc.style(kNoList, Style().name("No List").sti(107).kind(StyleKind::kNumbering));
  doc.style(kTitle, Style()
                        .name("Title")
                        .sti(62)
                        .basedOn(0)
                        .next(0)
                        .papx({align(1), spaceAfter(240)})
                        .chpx({fontSize(48), bold(), sprm(0x4A4F, kSans)}));
  doc.style(kQuote,
            Style().name("Quote").basedOn(0).papx({leftIndent(720), rightIndent(720)}).chpx({italic()}));
  doc.style(kNoteText, Style().name("footnote text").sti(29).basedOn(0).chpx({fontSize(18)}));
  doc.style(kNoteReference,
            Style().name("footnote reference").sti(38).kind(character).chpx({sprm(0x2A48, 1)}));
  doc.style(kStrong, Style().name("Strong").kind(character).basedOn(kDefaultParagraphFont).chpx({bold()}));
  doc.style(kHyperlink,
            Style().name("Hyperlink").sti(85).kind(character).chpx({colour(rgb(0, 0, 255)), underline(1)}));
}

void heading(WordDocument& doc, StyleIndex istd, const Text& text) {
  doc.paragraph(text).istd(istd);
}

// --- Page 1: characters and paragraphs ---

void addOpening(WordDocument& doc, drawing::Canvas& canvas) {
  sample::addBulletPicture(doc.paragraph("A Sampler").istd(kTitle), canvas);
  doc.paragraph("This document shows, on a few pages, what a word processor document can hold. ")
      .run("Each paragraph is an example of what it says.", {italic()});
}

void addCharacterFormatting(WordDocument& doc) {
  heading(doc, kHeading1, "Characters");
  doc.paragraph()
      .run("Bold", {bold()})
      .run(", ")
      .run("italic", {italic()})
      .run(", ")
      .run("bold italic", {bold(), italic()})
      .run(", ")
      .run("underlined", {underline(1)})
      .run(", ")
      .run("double underlined", {underline(3)})
      .run(", ")
      .run("wavy", {underline(11), sprm(0x6877, rgb(255, 0, 0))})
      .run(", ")
      .run("struck out", {sprm(0x0837, 1)})
      .run(", ")
      .run("doubly struck out", {sprm(0x2A53, 1)})
      .run(".");
  doc.paragraph()
      .run("Red", {colour(rgb(192, 0, 0))})
      .run(", ")
      .run("green", {colour(rgb(0, 128, 0))})
      .run(" and ")
      .run("highlighted", {highlight(7)})
      .run(" text; ")
      .run("shaded", {shadingSprm(0xCA71, {.background = kGrey})})
      .run(" and ")
      .run("framed", {borderSprm(0xCA72, {.width = 4})})
      .run(" words; water is H")
      .run("2", {sprm(0x2A48, 2)})
      .run("O, and E = mc")
      .run("2", {sprm(0x2A48, 1)})
      .run(", ")
      .run("raised", {sprm(0x4845, 6)})
      .run(" and ")
      .run("lowered", {sprm(0x4845, -6)})
      .run(".");
  doc.paragraph()
      .run("Small Capitals", {sprm(0x083A, 1)})
      .run(", ")
      .run("capitals", {sprm(0x083B, 1)})
      .run(", ")
      .run("outline", {sprm(0x0838, 1)})
      .run(", ")
      .run("shadow", {sprm(0x0839, 1)})
      .run(", ")
      .run("embossed", {sprm(0x0858, 1)})
      .run(", ")
      .run("engraved", {sprm(0x0854, 1)})
      .run(", ")
      .run("hidden", {sprm(0x083C, 1)})
      .run(", ")
      .run("emphasised", {sprm(0x2A34, 1)})
      .run(", ")
      .run("a character style", {characterStyle(kStrong)})
      .run(".");
  doc.paragraph()
      .run("Spaced out", {letterSpacing(60)})
      .run(", ")
      .run("drawn together", {letterSpacing(-10)})
      .run(", ")
      .run("eight points", {fontSize(16)})
      .run(", ")
      .run("twenty", {fontSize(40)})
      .run(", ")
      .run("sans serif", inFont(kSans))
      .run(", ")
      .run("typewriter", inFont(kMono))
      .run(", a symbol: ")
      .special(u'(', {sprm(0x6A09, kSymbol | 0xF061 << 16)})
      .run(".");
  doc.paragraph("A colleague ")
      .run("added this", {sprm(0x0801, 1), sprm(0x4804, 1), sprm(0x6805, dttm(2004, 3, 1, 9, 30))})
      .run(" and ")
      .run("removed that", {sprm(0x0800, 1), sprm(0x4863, 1), sprm(0x6864, dttm(2004, 3, 1, 9, 31))})
      .run(".");
}

void addParagraphFormatting(WordDocument& doc) {
  heading(doc, kHeading1, "Paragraphs");
  doc.paragraph("This one keeps to the left,").sprms({align(0)});
  doc.paragraph("this one stands in the middle,").sprms({align(1)});
  doc.paragraph("this one keeps to the right,").sprms({align(2)});
  doc.paragraph(
         "and this one is justified, which only shows when it is long enough to run over the end of a "
         "line, as it does by now.")
      .sprms({align(3)});
  doc.paragraph("An indented paragraph, with a first line that goes in further than the rest of it does.")
      .sprms({leftIndent(720), rightIndent(720), firstLine(360)});
  doc.paragraph("A hanging indent: the first line begins to the left of all the lines that follow it here.")
      .sprms({leftIndent(720), firstLine(-720)});
  doc.paragraph("Twelve points before it, twenty-four behind it.").sprms({spaceBefore(240), spaceAfter(480)});
  doc.paragraph("Lines half as far apart again,").sprms({lineSpacing(360, true)});
  doc.paragraph("lines at least eighteen points apart,").sprms({lineSpacing(360, false)});
  doc.paragraph("and lines exactly fourteen points apart.").sprms({lineSpacing(-280, false)});
  const Border line = {.colour = kBlue, .width = 8, .type = 1, .space = 4};
  doc.paragraph("A paragraph with a border on each side and a shade behind it.")
      .sprms({borderSprm(0xC64E, line), borderSprm(0xC64F, line), borderSprm(0xC650, line),
              borderSprm(0xC651, line), shadingSprm(0xC64D, {.background = kPale})});
  doc.paragraph("Left\tcentre\tright").sprms({tabsSprm({{4500, 1, 0}, {9000, 2, 1}})});
  doc.paragraph("A paragraph in a style of its own, based on another.").istd(kQuote);
  doc.paragraph(
      "A line\vbroken within its paragraph, and a non\x1E"
      "breaking hyphen.");
}

void addScripts(WordDocument& doc) {
  heading(doc, kHeading1, "Scripts");
  doc.paragraph(u"Latin: façade, naïve, smørrebrød, żółć, “quoted” – and €.");
  doc.paragraph(u"Greek: Καλημέρα κόσμε.");
  doc.paragraph(u"Cyrillic: Съешь ещё этих мягких булок.");
  doc.paragraph("Chinese: ").run(u"天地玄黄，宇宙洪荒。", inFarEastFont(kChinese));
  doc.paragraph("Japanese: ").run(u"いろはにほへと、カタカナ。", inFarEastFont(kJapanese));
  doc.paragraph(u"Beyond sixteen bits: 😀 🎻 𝔄.");
  doc.paragraph("Reserved: a < b & c > d, \"quoted\".").ownMark();
}

// --- Page 2, landscape: lists, tables, fields and notes ---

void addLists(WordDocument& doc) {
  heading(doc, kHeading1, "Lists");
  const auto indent = [](int level) { return Sprms{leftIndent(720 * (level + 1)), firstLine(-360)}; };

  const uint16_t numbered = doc.list({.lsid = 1, .levels = {ListLevel{.papx = indent(0)}}, .simple = true});
  doc.paragraph("A numbered list").sprms({listItem(numbered, 0)});
  doc.paragraph("of two items.").sprms({listItem(numbered, 0)});

  const uint16_t outline = doc.list(
      {.lsid = 2,
       .levels = {ListLevel{.text = "%1", .papx = indent(0)}, ListLevel{.text = "%1.%2", .papx = indent(1)},
                  ListLevel{.numberFormat = 4, .text = "%3)", .papx = indent(2)}}});
  doc.paragraph("A list with levels,").sprms({listItem(outline, 0)});
  doc.paragraph("one below the other,").sprms({listItem(outline, 1)});
  doc.paragraph("in letters at the third,").sprms({listItem(outline, 2)});
  doc.paragraph("and back again.").sprms({listItem(outline, 0)});

  const uint16_t bullets =
      doc.list({.lsid = 3, .levels = {bulletLevel(0xF0B7, kSymbol, indent(0))}, .simple = true});
  doc.paragraph("A list of points").sprms({listItem(bullets, 0)});
  doc.paragraph("without numbers.").sprms({listItem(bullets, 0)});
  sample::addPictureBullets(doc);

  const uint16_t restarted = doc.listOverride({.lsid = 1, .levels = {{.level = 0, .startAt = 7}}});
  doc.paragraph("The first list once more, from seven.").sprms({listItem(restarted, 0)});
}

/// The sprms of a row: its edges and cells, and borders all round.
Sprms rowSprms(const std::vector<int16_t>& edges, const std::vector<TableCell>& cells) {
  const Border line = {.width = 4};
  return {sprm(0x548A, 0),
          sprm(0x9601, 0),
          sprm(0x9602, 108),
          defTableSprm(edges, cells),
          tableBordersSprm({line, line, line, line, line, line}),
          cellDistanceSprm(0xD634, 0, 1, 0x0A, 3, 108)};
}

void addTable(WordDocument& doc) {
  heading(doc, kHeading1, "Tables");
  const std::vector<int16_t> thirds = {0, 3000, 6000, 9000};
  const Shading grey = {.background = kGrey};
  const TableCell plain;

  Sprms headRow = rowSprms(thirds, {plain, plain, plain});
  headRow.add(sprm(0x9407, 480)).add(tableShadingSprm({grey, grey, grey}));
  doc.row({"Kind", "Example", "Remark"}, headRow);

  doc.row({"A cell as wide as two", "and a narrow one"}, rowSprms({0, 6000, 9000}, {plain, plain}));

  const TableCell tallTop = {.verticalMerge = 3, .verticalAlign = 1};
  const TableCell tallRest = {.verticalMerge = 1};
  doc.row({"A cell as tall as two", "upper", "1"}, rowSprms(thirds, {tallTop, plain, plain}));
  doc.row({"", "lower", "2"}, rowSprms(thirds, {tallRest, plain, plain}));

  const Border80 thick = {.width = 24, .type = 1, .ico = 6};
  const TableCell framed = {.verticalAlign = 2, .top = thick, .left = thick, .bottom = thick, .right = thick};
  doc.row({"A cell", "with a frame of its own", "in red"}, rowSprms(thirds, {plain, framed, plain}));
  doc.paragraph("A table in a table:");

  doc.paragraph("Outer cell, before the inner table").inTable();
  doc.row({"inner 1", "inner 2"}, rowSprms({0, 1500, 3000}, {plain, plain}), 2);
  doc.row({"inner 3", "inner 4"}, rowSprms({0, 1500, 3000}, {plain, plain}), 2);
  doc.cell("and behind it");
  doc.cell("The outer table's second cell");
  doc.rowEnd(rowSprms({0, 4500, 9000}, {plain, plain}));
  doc.paragraph();
}

void addFields(WordDocument& doc) {
  constexpr uint8_t kPage = 33, kPageCount = 26, kReference = 3, kHyperlinkField = 88;
  const Sprms link = {characterStyle(kHyperlink)};
  heading(doc, kHeading1, "Fields and bookmarks");
  doc.paragraph("Page ")
      .field(kPage, " PAGE ", "2")
      .run(" of ")
      .field(kPageCount, " NUMPAGES ", "3")
      .run("; a link to ")
      .fieldBegin(kHyperlinkField)
      .run(" HYPERLINK \"http://www.example.com/\" \\o \"An example\" ")
      .fieldSeparator()
      .run("an example", link)
      .fieldEnd()
      .run(".");
  doc.paragraph("This sentence holds ")
      .bookmarkStart("Place")
      .run("a bookmarked place")
      .bookmarkEnd("Place")
      .run(".");
  doc.paragraph("It can be reached ")
      .fieldBegin(kHyperlinkField)
      .run(" HYPERLINK \\l \"Place\" ")
      .fieldSeparator()
      .run("from here", link)
      .fieldEnd()
      .run(", and its text is repeated: ")
      .field(kReference, " REF Place \\h ", "a bookmarked place")
      .run(".");
}

void addNotes(WordDocument& doc) {
  heading(doc, kHeading1, "Notes");
  const NoteReference reference = {.sprms = {characterStyle(kNoteReference)}};
  doc.paragraph("A footnote")
      .footnote([](Story& note) { note.paragraph(" The text of the first footnote.").istd(kNoteText); },
                reference)
      .run(", another one")
      .footnote(
          [](Story& note) {
            note.paragraph(" A footnote of two paragraphs,").istd(kNoteText);
            note.paragraph("of which this is the second, ").istd(kNoteText).run("in part bold", {bold()});
          },
          reference)
      .run(", one with a mark of its own")
      .footnote(" Marked by hand.", {.customMark = "*", .sprms = {characterStyle(kNoteReference)}})
      .run(" and an endnote")
      .endnote([](Story& note) { note.paragraph(" The text of the endnote.").istd(kNoteText); }, reference)
      .run(".");
  const Annotation remark = {
      .author = "A. Reader", .initials = "AR", .rangeTag = 1, .dttm = dttm(2004, 3, 1, 10, 15, 1)};
  doc.paragraph("A reader had ")
      .annotationStart(1)
      .run("something to say")
      .annotationEnd(1)
      .annotation("Is this clear enough?", remark)
      .run(" here.")
      .ownMark();
}

// --- Page 4, small and in two columns, behind the drawings ---

void addClosing(WordDocument& doc) {
  heading(doc, kHeading2, "Another page size");
  doc.paragraph("This section stands on a smaller page, in two columns with a line between them.");
  heading(doc, kHeading3, "A heading of the third level");
  doc.paragraph("Here it breaks off").breakRun().run("\x0C").breakRun().run("to go on after a page break.");
  doc.paragraph("The end.").sprms({align(1)}).ownMark();
}

Sprms pageSize(uint16_t width, uint16_t height) {
  return {sprm(0xB01F, width), sprm(0xB020, height)};
}

void fill(WordDocument& doc) {
  drawing::Canvas canvas(doc);
  addFonts(doc);
  addStyles(doc);
  doc.section(pageSize(11906, 16838));
  addOpening(doc, canvas);
  addCharacterFormatting(doc);
  addParagraphFormatting(doc);
  addScripts(doc);

  doc.section(pageSize(16838, 11906).add(Sprms{sprm(0x301D, 2), sprm(0xB021, 1440), sprm(0xB022, 1440)}));
  addLists(doc);
  addTable(doc);
  addFields(doc);
  addNotes(doc);

  doc.section(pageSize(11906, 16838));
  sample::addDrawings(doc, canvas);

  doc.section(pageSize(8391, 11906)
                  .add(Sprms{sprm(0xB021, 720), sprm(0xB022, 720), sprm(0x500B, 1), sprm(0x900C, 360),
                             sprm(0x3019, 1)}));
  addClosing(doc);
  canvas.finish();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FILE.doc\n", argv[0]);
    return 2;
  }
  try {
    WordDocument doc({.styleSheet = {.defaultFontAscii = kSerif, .defaultFontFarEast = kChinese}});
    fill(doc);
    doc.summary({.title = "A Sampler",
                 .subject = "What a document can hold",
                 .author = "The pagerex team",
                 .created = support::fileTime(2026, 11, 22),
                 .saved = support::fileTime(2026, 11, 22)});
    doc.save(argv[1]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
    return 1;
  }
  return 0;
}

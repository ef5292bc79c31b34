// Writes the documents that the browser tests convert and look at, into a folder: make_browser_documents
// FOLDER

#include <cstdio>
#include <exception>
#include <string>

#include "browser/shape_documents.h"
#include "safety/script_documents.h"
#include "support/named_sprms.h"
#include "support/word_document_writer.h"

using namespace support;

namespace {

enum StyleIndex : uint16_t { kHeading1 = 1, kHeading2 = 2, kQuote = 15, kStrong = 16 };

void addStyles(WordDocument& doc) {
  doc.style(0, Style().name("Normal").sti(0).papx({spaceAfter(120)}).chpx({fontSize(22)}));
  doc.style(kHeading1, Style().name("heading 1").sti(1).basedOn(0).chpx({fontSize(32), bold()}));
  doc.style(kHeading2, Style().name("heading 2").sti(2).basedOn(0).chpx({fontSize(26), bold()}));
  doc.style(kQuote, Style()
                        .name("Quote")
                        .basedOn(0)
                        .papx({leftIndent(720), rightIndent(360), align(2)})
                        .chpx({italic(), fontSize(28), colour(rgb(0, 0x80, 0))}));
  doc.style(kStrong,
            Style().name("Strong").kind(StyleKind::kCharacter).chpx({bold(), colour(rgb(0xC0, 0, 0))}));
}

/// Enough to fill more than a window.
void addFiller(WordDocument& doc) {
  for (int i = 1; i <= 60; ++i) doc.paragraph("Filler " + std::to_string(i) + ".");
}

// --- text.doc: formatting, and a tree of headings and a bookmark over a long page ---

void addCharacters(WordDocument& doc) {
  doc.paragraph()
      .run("bold", {bold()})
      .run(" ")
      .run("italic", {italic()})
      .run(" ")
      .run("red", {colour(rgb(255, 0, 0))})
      .run(" ")
      .run("twenty points", {fontSize(40)})
      .run(" ")
      .run("small capitals", {sprm(0x083A, 1)})
      .run(" ")
      .run("highlighted", {highlight(7)})
      .run(" ")
      .run("underlined and struck", {underline(1), sprm(0x0837, 1)})
      .run(" ")
      .run("spaced", {letterSpacing(40)})
      .run(" ")
      .run("hidden", {sprm(0x083C, 1)})
      .run(" ")
      .run("strong", {characterStyle(kStrong)})
      .run(" ")
      .run("plain");
  doc.paragraph()
      .run("raised", {sprm(0x2A48, 1)})
      .run(" ")
      .run("level")
      .run(" ")
      .run("lowered", {sprm(0x2A48, 2)});
  doc.paragraph(u"天地玄黄，宇宙洪荒。");
  doc.paragraph(u"😀 and 🎻");
  doc.paragraph("a < b & c > \"d\"  e");
}

void addParagraphs(WordDocument& doc) {
  doc.paragraph("left").sprms({align(0)});
  doc.paragraph("centred").sprms({align(1)});
  doc.paragraph("right").sprms({align(2)});
  doc.paragraph("justified").sprms({align(3)});
  doc.paragraph("indented").sprms({leftIndent(720), rightIndent(1440), firstLine(360)});
  doc.paragraph("apart").sprms({spaceBefore(240), spaceAfter(480)});
  doc.paragraph("quoted").istd(kQuote);
}

void fillText(WordDocument& doc) {
  constexpr uint8_t kHyperlinkField = 88;
  doc.section({sprm(0xB01F, 11906), sprm(0xB021, 1800), sprm(0xB022, 1800)});
  doc.paragraph("Formatting").istd(kHeading1);
  addCharacters(doc);
  addParagraphs(doc);
  doc.paragraph("Links").istd(kHeading1);
  doc.paragraph()
      .fieldBegin(kHyperlinkField)
      .run(" HYPERLINK \"http://www.example.com/a?b=c\" \\o \"A tip\" ")
      .fieldSeparator()
      .run("a link")
      .fieldEnd()
      .run(" behind it");
  doc.paragraph("A bookmark").istd(kHeading2);
  addFiller(doc);
  doc.paragraph("This is ").bookmarkStart("Place").run("the place").bookmarkEnd("Place").run(".");
  addFiller(doc);
  doc.paragraph("The last one").istd(kHeading1);
  addFiller(doc);
}

// --- notes.doc ---

void fillNotes(WordDocument& doc) {
  doc.paragraph("A footnote")
      .footnote(" The first footnote.")
      .run(", another one")
      .footnote([](Story& note) {
        note.paragraph(" Of two paragraphs,");
        note.paragraph("in part ").run("bold", {bold()});
      })
      .run(", and an endnote")
      .endnote(" The endnote.")
      .run(".");
  const Annotation remark = {.author = "A. Reader", .dttm = dttm(2004, 3, 1, 9, 5, 1)};
  doc.paragraph("A remark").annotation("Is this clear?", remark).run(" on this.");
  doc.paragraph("Nothing here.");
}

// --- tables.doc: columns of 100 points, which is 133 pixels ---

const TableCell kPlain;

void addMergedTable(WordDocument& doc) {
  const std::vector<int16_t> thirds = {0, 2000, 4000, 6000};
  const TableCell tallTop{.verticalMerge = 3}, tallRest{.verticalMerge = 1};
  doc.row({"wide", "c"}, {defTableSprm({0, 4000, 6000}, {kPlain, kPlain})});
  doc.row({"tall", "d", "e"}, {defTableSprm(thirds, {tallTop, kPlain, kPlain})});
  doc.row({"", "f", "g"}, {defTableSprm(thirds, {tallRest, kPlain, kPlain})});
  doc.row({"h", "i", "j"}, {defTableSprm(thirds, {kPlain, kPlain, kPlain}), sprm(0x9407, -1200)});
}

void addNestedTable(WordDocument& doc) {
  const Sprms halves = {defTableSprm({0, 1000, 2000}, {kPlain, kPlain})};
  doc.paragraph("above").inTable();
  doc.row({"p", "q"}, halves, 2);
  doc.row({"r", "s"}, halves, 2);
  doc.cell("below");
  doc.cell("beside");
  doc.rowEnd({defTableSprm({0, 4000, 6000}, {kPlain, kPlain})});
}

void addFramedTable(WordDocument& doc) {
  const std::vector<Border> borders(6, {.colour = rgb(255, 0, 0), .width = 12});
  doc.row({"framed"},
          {defTableSprm({0, 2000}), tableBordersSprm(borders), cellDistanceSprm(0xD634, 0, 1, 2 | 8, 3, 200),
           tableShadingSprm({{.background = rgb(0xD9, 0xE2, 0xF3)}})});
}

void fillTables(WordDocument& doc) {
  addMergedTable(doc);
  doc.paragraph("between");
  addNestedTable(doc);
  doc.paragraph("between");
  addFramedTable(doc);
  doc.paragraph("end");
}

// --- sections.doc: two sizes of paper, and enough text for several pages ---

void fillSections(WordDocument& doc) {
  doc.section(
      {sprm(0xB01F, 11906), sprm(0xB021, 1000), sprm(0xB022, 1000), sprm(0x9023, 1440), sprm(0x9024, 1440)});
  for (int i = 1; i <= 20; ++i) {
    doc.paragraph("Paragraph " + std::to_string(i) + " in the style of a quotation.").istd(kQuote);
  }
  doc.section(
      {sprm(0xB01F, 8000), sprm(0xB021, 500), sprm(0xB022, 1500), sprm(0x9023, 600), sprm(0x9024, 400)});
  for (int i = 21; i <= 30; ++i) {
    doc.paragraph("Paragraph " + std::to_string(i) + ", in another section.").istd(kQuote);
  }
}

void save(const std::string& path, void (*fill)(WordDocument&)) {
  WordDocument doc;
  addStyles(doc);
  fill(doc);
  doc.save(path);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  const std::string folder = argv[1];
  try {
    save(folder + "/text.doc", fillText);
    save(folder + "/notes.doc", fillNotes);
    save(folder + "/tables.doc", fillTables);
    save(folder + "/sections.doc", fillSections);
    save(folder + "/shapes.doc", fillShapes);
    save(folder + "/pictures.doc", fillPictures);
    for (const auto& each : safety::scriptDocuments()) each.document.save(folder + "/" + each.name + ".doc");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
    return 1;
  }
  return 0;
}

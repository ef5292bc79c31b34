#include <string>

#include "pages/page_documents.h"

namespace pages {

using namespace support;

namespace {

const Border kThin = {.width = 4};
const TableCell kPlain;
constexpr uint32_t kBlue = rgb(0x1F, 0x4E, 0x79), kNight = rgb(0, 0, 64), kRed = rgb(255, 0, 0);

Sprms hanging(int level) {
  return {leftIndent(720 * (level + 1)), firstLine(-360)};
}

void items(WordDocument& doc, uint16_t list, int level, std::initializer_list<const char*> texts) {
  for (const char* text : texts) doc.paragraph(text).sprms({listItem(list, level)});
}

}  // namespace

void fillLists(WordDocument& doc) {
  doc.section(paper());
  const uint16_t outline = doc.list(
      {.lsid = 2,
       .levels = {ListLevel{.text = u"%1.", .papx = hanging(0)},
                  ListLevel{.numberFormat = 4, .text = u"%2)", .papx = hanging(1)},
                  ListLevel{.numberFormat = 2, .text = u"(%3)", .papx = hanging(2), .chpx = {bold()}}}});
  items(doc, outline, 0, {"first item", "second item"});
  items(doc, outline, 1, {"item below", "another below"});
  items(doc, outline, 2, {"deep item"});
  items(doc, outline, 0, {"third item"});
  doc.paragraph("no item at all");
  items(doc, outline, 0, {"fourth item"});
  const uint16_t bullets =
      doc.list({.lsid = 3, .levels = {bulletLevel(0xF0B7, kSymbol, hanging(0))}, .simple = true});
  items(doc, bullets, 0, {"a point", "another point"});
  const uint16_t restarted = doc.listOverride({.lsid = 2, .levels = {{.level = 0, .startAt = 7}}});
  items(doc, restarted, 0, {"item seven"});
  const uint16_t legal =
      doc.list({.lsid = 4,
                .levels = {ListLevel{.numberFormat = 1, .text = u"Article %1", .follow = 1},
                           ListLevel{.text = u"%1.%2", .follow = 2}}});
  items(doc, legal, 0, {"of law"});
  items(doc, legal, 1, {"paragraph of law"});
  doc.paragraph("end of lists");
}

namespace {

Sprms rowSprms(const std::vector<int16_t>& edges, const std::vector<TableCell>& cells) {
  return {defTableSprm(edges, cells), tableBordersSprm(std::vector<Border>(6, kThin)),
          cellDistanceSprm(0xD634, 0, static_cast<uint8_t>(cells.size()), 2 | 8, 3, 108)};
}

const std::vector<int16_t> kThirds = {0, 3000, 6000, 9000};

void addGrid(WordDocument& doc) {
  const Shading blue = {.background = kBlue};
  Sprms head = rowSprms(kThirds, {kPlain, kPlain, kPlain});
  doc.row({"Kind", "Count", "Remark"}, head.add(sprm(0x3404, 1)).add(tableShadingSprm({blue, blue, blue})));
  doc.row({"apples", "12", "red ones"}, rowSprms(kThirds, {kPlain, kPlain, kPlain}));
  doc.row({"as wide as two", "single"}, rowSprms({0, 6000, 9000}, {kPlain, kPlain}));
  const TableCell tall{.verticalMerge = 3, .verticalAlign = 1}, rest{.verticalMerge = 1};
  doc.row({"as tall as two", "upper", "u"}, rowSprms(kThirds, {tall, kPlain, kPlain}));
  doc.row({"", "lower", "l"}, rowSprms(kThirds, {rest, kPlain, kPlain}));
  const Border80 thick = {.width = 24, .type = 1, .ico = 6};
  const TableCell framed{.verticalAlign = 2, .top = thick, .left = thick, .bottom = thick, .right = thick};
  const TableCell centred{.verticalAlign = 1};
  Sprms high = rowSprms(kThirds, {kPlain, framed, centred});
  doc.row({"high row", "framed in red", "half way down"}, high.add(sprm(0x9407, 1440)));
  Sprms night = rowSprms(kThirds, {kPlain, kPlain, kPlain});
  doc.row({"day cell", "night cell", "last cell"},
          night.add(tableShadingSprm({{}, {.background = kNight}, {}})));
}

/// From top to bottom, turned to the right.
void addVerticalText(WordDocument& doc) {
  constexpr uint16_t kTextFlow = 0x7629;
  Sprms row = rowSprms({0, 1000, 4000}, {kPlain, kPlain});
  doc.row({"turned letters", "upright letters"},
          row.add(sprm(kTextFlow, 0x00010100)).add(sprm(0x9407, 2000)));
}

void addPlacedTables(WordDocument& doc) {
  Sprms centred = rowSprms({0, 2000, 4000}, {kPlain, kPlain});
  doc.row({"centred table", "c2"}, centred.add(sprm(0x548A, 1)));
  doc.paragraph("between placed tables");
  doc.row({"indented table", "i2"}, rowSprms({1440, 3000, 5000}, {kPlain, kPlain}));
}

void addNested(WordDocument& doc) {
  doc.paragraph("outer cell").inTable();
  doc.row({"inner one", "inner two"}, rowSprms({0, 1200, 2400}, {kPlain, kPlain}), 2);
  doc.cell("behind the inner table");
  doc.cell("beside it");
  doc.rowEnd(rowSprms({0, 4500, 9000}, {kPlain, kPlain}));
}

void addWideTable(WordDocument& doc) {
  std::vector<Text> cells;
  std::vector<int16_t> edges = {0};
  for (int i = 1; i <= 16; ++i) {
    cells.emplace_back("column-" + std::to_string(i));
    edges.push_back(static_cast<int16_t>(i * 1800));
  }
  doc.row(cells, rowSprms(edges, std::vector<TableCell>(16)));
}

}  // namespace

void fillTables(WordDocument& doc) {
  doc.section(paper());
  addGrid(doc);
  doc.paragraph("behind the grid");
  addVerticalText(doc);
  doc.paragraph("behind vertical text");
  addPlacedTables(doc);
  doc.paragraph("behind placed tables");
  addNested(doc);
  doc.paragraph("behind nested tables");
  addWideTable(doc);
  doc.paragraph("end of tables");
}

void fillNotes(WordDocument& doc) {
  const NoteReference reference = {.sprms = {characterStyle(kNoteReference)}};
  doc.section(paper());
  doc.paragraph("Words with a footnote")
      .footnote([](Story& note) { note.paragraph(" Text of the first footnote.").istd(kNoteText); },
                reference)
      .run(", with another one")
      .footnote(
          [](Story& note) {
            note.paragraph(" Text of the second footnote,").istd(kNoteText);
            note.paragraph("which has two paragraphs.").istd(kNoteText);
          },
          reference)
      .run(", with one marked by hand")
      .footnote(" Text of the third footnote.", {.customMark = "*", .sprms = reference.sprms})
      .run(" and an endnote")
      .endnote([](Story& note) { note.paragraph(" Text of the endnote.").istd(kNoteText); }, reference)
      .run(".");
  const Annotation remark = {
      .author = "Ada Reader", .initials = "AR", .rangeTag = 1, .dttm = dttm(2004, 3, 1, 10, 15, 1)};
  doc.paragraph("A reader commented ")
      .annotationStart(1)
      .run("on these words")
      .annotationEnd(1)
      .annotation("Is this clear enough?", remark)
      .run(" here.")
      .ownMark();
}

void fillChanges(WordDocument& doc) {
  const uint16_t author = doc.author("Bea Writer");
  const uint32_t when = dttm(2004, 3, 1, 9, 30, 1);
  doc.section(paper());
  doc.paragraph("These words stayed, ")
      .inserted("these were added", author, when)
      .run(", ")
      .deleted("these were removed", author, when)
      .run(", these stayed too.");
}

namespace {

constexpr uint8_t kToc = 13, kHyperlinkField = 88, kPageReference = 37;

void addContentsEntry(WordDocument& doc, uint16_t style, const std::string& title,
                      const std::string& bookmark, const std::string& page, bool isFirst, bool isLast) {
  Paragraph& entry = doc.paragraph().istd(style);
  if (isFirst) entry.fieldBegin(kToc).run(" TOC \\o \"1-3\" \\h ").fieldSeparator();
  entry.fieldBegin(kHyperlinkField)
      .run(" HYPERLINK \\l \"" + bookmark + "\" ")
      .fieldSeparator()
      .run(title + "\t")
      .fieldBegin(kPageReference)
      .run(" PAGEREF " + bookmark + " \\h ")
      .fieldSeparator()
      .run(page)
      .fieldEnd(0xC0)
      .fieldEnd(0xC0);
  if (isLast) entry.fieldEnd();
}

void addHeading(WordDocument& doc, uint16_t style, const Text& text, const Text& bookmark) {
  doc.paragraph().istd(style).bookmarkStart(bookmark).run(text).bookmarkEnd(bookmark);
}

void addFiller(WordDocument& doc) {
  for (int i = 0; i < 40; ++i) doc.paragraph("Filling words, line " + std::to_string(i) + ".");
}

}  // namespace

void fillContents(WordDocument& doc) {
  doc.summary({.title = "A title of its own", .author = "Ada Writer", .keywords = "pages, tests"});
  doc.section(paper());
  addContentsEntry(doc, kContents1, "The beginning", "_Toc1", "p1", true, false);
  addContentsEntry(doc, kContents2, "A part of it", "_Toc2", "p2", false, false);
  addContentsEntry(doc, kContents1, "The ending", "_Toc3", "p3", false, true);
  addHeading(doc, kHeading1, "The beginning", "_Toc1");
  doc.paragraph()
      .run("Go to ")
      .fieldBegin(kHyperlinkField)
      .run(" HYPERLINK \\l \"Place\" ")
      .fieldSeparator()
      .run("the marked place", {characterStyle(kHyperlink)})
      .fieldEnd()
      .run(", or to ")
      .fieldBegin(kHyperlinkField)
      .run(" HYPERLINK \"http://www.example.com/a?b=c&d=e\" \\o \"A tip\" ")
      .fieldSeparator()
      .run("an example outside", {characterStyle(kHyperlink)})
      .fieldEnd()
      .run(", or to ")
      .fieldBegin(kHyperlinkField)
      .run(" HYPERLINK \"javascript:alert(1)\" ")
      .fieldSeparator()
      .run("a dangerous place", {characterStyle(kHyperlink)})
      .fieldEnd()
      .run(".");
  addFiller(doc);
  addHeading(doc, kHeading2, "A part of it", "_Toc2");
  addFiller(doc);
  doc.paragraph("Here is ").bookmarkStart("Place").run("what was marked").bookmarkEnd("Place").run(".");
  addHeading(doc, kHeading3, "A part of the part", "_Toc4");
  addFiller(doc);
  addHeading(doc, kHeading1, "The ending", "_Toc3");
  addFiller(doc);
}

void fillSections(WordDocument& doc) {
  constexpr uint16_t kColumns = 0x500B, kColumnGap = 0x900C, kLineBetween = 0x3019, kBreak = 0x3009;
  doc.section(paper());
  doc.header(0, HeaderSlot::kOddHeader).paragraph("words of the header").sprms({align(1)});
  doc.header(0, HeaderSlot::kOddFooter).paragraph("words of the footer, page ").field(33, " PAGE ", "1");
  doc.paragraph("in one column");
  doc.paragraph("ends this page").breakRun().run("\x0C").breakRun().run("begins the next page");
  doc.section(
      paper().add(Sprms{sprm(kColumns, 1), sprm(kColumnGap, 720), sprm(kLineBetween, 1), sprm(kBreak, 0)}));
  for (int i = 1; i <= 40; ++i) doc.paragraph("column line " + std::to_string(i) + ".");
  doc.section(paper(kPaperHeight, kPaperWidth).add(Sprms{sprm(0x301D, 2), sprm(kBreak, 2)}));
  doc.paragraph("on a broad page");
  doc.row({"broad cell", "second broad cell"}, rowSprms({0, 6000, 12000}, {kPlain, kPlain}));
  doc.paragraph("end of sections");
}

void fillSmallPaper(WordDocument& doc) {
  doc.section(paper(8391, 11906));
  addHeading(doc, kHeading1, "On small paper", "Small");
  for (int i = 1; i <= 60; ++i) doc.paragraph("small line " + std::to_string(i) + ".");
}

}  // namespace pages

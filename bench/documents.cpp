#include "documents.h"

#include <iterator>
#include <string>

#include "support/drawing_writer.h"
#include "support/named_sprms.h"

namespace bench {

using namespace support;

namespace {

enum StyleIndex : uint16_t {
  kHeading1 = 1,
  kHeading2 = 2,
  kHyperlink = 15,
  kNoteReference = 16,
  kNoteText = 17
};

constexpr uint8_t kPageField = 33;
constexpr uint8_t kHyperlinkField = 88;

/// 60 characters, and the number of the paragraph, so that none are alike.
std::string sentence(int number) {
  return "The quick brown fox jumps over lazy dogs & writes of paragraph " + std::to_string(number) + ". ";
}

Sprms rowSprms(const std::vector<int16_t>& edges) {
  const Border line = {.width = 4};
  return {sprm(0x548A, 0), sprm(0x9602, 108), defTableSprm(edges, std::vector<TableCell>(edges.size() - 1)),
          tableBordersSprm({line, line, line, line, line, line}),
          cellDistanceSprm(0xD634, 0, 1, 2 | 8, 3, 108)};
}

std::vector<int16_t> edgesOf(int columns) {
  std::vector<int16_t> edges;
  for (int i = 0; i <= columns; ++i) edges.push_back(static_cast<int16_t>(i * 9000 / columns));
  return edges;
}

// --- Constructs ---

void plainParagraphs(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i) doc.paragraph(sentence(i));
}

void formattedParagraphs(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i) {
    doc.paragraph(sentence(i))
        .sprms({align(3), leftIndent(360 + i % 7), firstLine(360), spaceBefore(60), spaceAfter(120),
                lineSpacing(300, true), borderSprm(0xC64E, {.width = 4}), sprm(0x2405, 1)});
  }
}

void chineseParagraphs(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i)
    doc.paragraph(u"天地玄黄，宇宙洪荒，日月盈昃，辰宿列张，寒来暑往，秋收冬藏。");
}

void headings(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i)
    doc.paragraph("Heading " + std::to_string(i)).istd(i % 4 ? kHeading2 : kHeading1);
}

void addRuns(Paragraph& paragraph, int count) {
  for (int i = 0; i < count; ++i) {
    paragraph.run("run of text ", {bold(i % 2), fontSize(20 + i % 5), colour(rgb(i % 200, 0, 0))});
  }
}

void runsInParagraphs(WordDocument& doc, int count) {
  for (int i = 0; i < count; i += 10) addRuns(doc.paragraph(), 10);
}

void runsInOneParagraph(WordDocument& doc, int count) {
  addRuns(doc.paragraph(), count);
}

void charactersInOneRun(WordDocument& doc, int count) {
  doc.paragraph(std::string(static_cast<size_t>(count) * 100, 'x'));
}

void pieces(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i) doc.paragraph().newPiece({.fileOrder = -i}).run("A piece.");
}

void rowsOfSixCells(WordDocument& doc, int count) {
  const Sprms row = rowSprms(edgesOf(6));
  for (int i = 0; i < count; ++i) doc.row({"one", "two", "three", "four", "five", "six"}, row);
  doc.paragraph("end");
}

void mergedRows(WordDocument& doc, int count) {
  const TableCell start{.verticalMerge = 3}, merged{.verticalMerge = 1};
  for (int i = 0; i < count; ++i) {
    const TableCell& first = i == 0 ? start : merged;
    doc.row({"one", "two"}, {defTableSprm({0, 3000, 6000}, {first, TableCell{}})});
  }
  doc.paragraph("end");
}

void rowsUnlikeEachOther(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i) {
    const auto middle = static_cast<int16_t>(1000 + i % 500 * 10);
    doc.row({"one", "two"}, rowSprms({0, middle, 9000}));
  }
  doc.paragraph("end");
}

void tables(WordDocument& doc, int count) {
  const Sprms row = rowSprms(edgesOf(3));
  for (int i = 0; i < count; ++i) {
    doc.row({"one", "two", "three"}, row);
    doc.paragraph("between");
  }
}

void nestedTables(WordDocument& doc, int count) {
  const Sprms inner = rowSprms(edgesOf(2)), outer = rowSprms(edgesOf(1));
  for (int i = 0; i < count; ++i) {
    doc.row({"p", "q"}, inner, 2);
    doc.cell("below");
    doc.rowEnd(outer);
  }
  doc.paragraph("end");
}

void listItems(WordDocument& doc, int count) {
  const Sprms indent = {leftIndent(720), firstLine(-360)};
  const uint16_t list =
      doc.list({.levels = {ListLevel{.papx = indent}, ListLevel{.text = "%1.%2", .papx = indent}}});
  for (int i = 0; i < count; ++i) doc.paragraph("An item.").sprms({listItem(list, i % 3 == 0 ? 0 : 1)});
}

void lists(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i) {
    const uint16_t list = doc.list({.lsid = i + 1, .levels = {ListLevel{}}, .simple = true});
    doc.paragraph("The only item.").sprms({listItem(list, 0)});
  }
}

void fields(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i) doc.paragraph("Page ").field(kPageField, " PAGE ", "2").run(".");
}

void links(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i) {
    doc.paragraph("See ")
        .fieldBegin(kHyperlinkField)
        .run(" HYPERLINK \"http://www.example.com/some/page.html\" ")
        .fieldSeparator()
        .run("a page", {characterStyle(kHyperlink)})
        .fieldEnd()
        .run(".");
  }
}

void fieldsInOneAnother(WordDocument& doc, int count) {
  Paragraph& paragraph = doc.paragraph();
  for (int i = 0; i < count; ++i) paragraph.fieldBegin(kPageField).run(" CODE ");
  for (int i = 0; i < count; ++i) paragraph.fieldSeparator().run("x").fieldEnd();
}

void bookmarks(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i) {
    const std::string name = "mark" + std::to_string(i);
    doc.paragraph("Here is ").bookmarkStart(name).run("the place").bookmarkEnd(name).run(".");
  }
}

void bookmarksInOneRun(WordDocument& doc, int count) {
  Paragraph& paragraph = doc.paragraph();
  for (int i = 0; i < count; ++i) {
    const std::string name = "mark" + std::to_string(i);
    paragraph.bookmarkStart(name).run("place ").bookmarkEnd(name);
  }
}

void footnotes(WordDocument& doc, int count) {
  const NoteReference reference = {.sprms = {characterStyle(kNoteReference)}};
  for (int i = 0; i < count; ++i) {
    doc.paragraph("A statement")
        .footnote([i](Story& note) { note.paragraph(" " + sentence(i)).istd(kNoteText); }, reference)
        .run(" with its source.");
  }
}

void endnotes(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i)
    doc.paragraph("A statement").endnote(" " + sentence(i)).run(" with its source.");
}

void annotations(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i) {
    const std::string author = "Reader " + std::to_string(i % 5);
    doc.paragraph("A statement").annotation(sentence(i), {.author = author}).run(" that somebody has read.");
  }
}

void sections(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i) {
    doc.section({sprm(0xB01F, 11906), sprm(0xB020, 16838)});
    doc.paragraph("A section.");
  }
}

// --- Drawings ---

using drawing::Drawing;
using drawing::Inline;
using drawing::Props;
using drawing::Shape;

constexpr drawing::Place kPlace = {.rect = {1440, 720, 4320, 2160}};
constexpr uint32_t kFirstShape = 1025;

/// A paragraph that begins with a drawn object; the result is the position behind it.
uint32_t anchorParagraph(WordDocument& doc, uint32_t cp) {
  const std::string text = "Beside a shape.";
  doc.paragraph().special(8).run(text);
  return cp + 1 + static_cast<uint32_t>(text.size()) + 1;
}

/// Drawn objects, each in a paragraph of its own.
template <class MakeShape>
void addShapes(WordDocument& doc, Drawing& drawing, int count, MakeShape shapeOf) {
  uint32_t cp = 0;
  for (int i = 0; i < count; ++i) {
    drawing.shape(cp, shapeOf(i), kPlace);
    cp = anchorParagraph(doc, cp);
  }
}

uint32_t numberOf(int i) {
  return kFirstShape + static_cast<uint32_t>(i);
}

const Props kLook =
    Props().number(0x0181, 0x00FFFF).number(0x01C0, 0xFF0000).number(0x01CB, 19050).flag(0x01BB, true);

void floatingShapes(WordDocument& doc, int count) {
  Drawing drawing;
  addShapes(doc, drawing, count, [](int i) { return Shape(1, numberOf(i)).props(kLook); });
  drawing.addTo(doc);
}

void lines(WordDocument& doc, int count) {
  Drawing drawing;
  addShapes(doc, drawing, count, [](int i) { return Shape(20, numberOf(i)).props(kLook); });
  drawing.addTo(doc);
}

void shapesInOneGroup(WordDocument& doc, int count) {
  std::vector<Shape> children;
  for (int i = 0; i < count; ++i)
    children.push_back(Shape(1, numberOf(i)).props(kLook).at({i, 0, i + 10, 10}));
  Drawing drawing;
  addShapes(doc, drawing, 1, [&](int) {
    return Shape(0, kFirstShape - 1).group({0, 0, count, 100}, children);
  });
  drawing.addTo(doc);
}

/// Their numbers have 16 bits: 65,535 at most.
void textBoxes(WordDocument& doc, int count) {
  Drawing drawing;
  addShapes(doc, drawing, count,
            [](int i) { return Shape(202, numberOf(i)).props(kLook).textBox(static_cast<uint16_t>(i + 1)); });
  std::vector<uint32_t> lengths;
  for (int i = 0; i < count; ++i) {
    const std::string text = sentence(i);
    doc.story(mso_word::SUBDOC_TEXTBOX).paragraph(text);
    lengths.push_back(static_cast<uint32_t>(text.size()) + 1);
  }
  drawing.addTo(doc, lengths);
}

void floatingPictures(WordDocument& doc, int count) {
  Drawing drawing;
  drawing.blip({.data = Bytes(1000)});
  const Props picture = Props().number(0x4104, 1).text(0x0105, u"A picture");
  addShapes(doc, drawing, count, [&picture](int i) { return Shape(75, numberOf(i)).props(picture); });
  drawing.addTo(doc);
}

/// Each lies in the document by itself; they come out as the same few files.
void inlinePictures(WordDocument& doc, int count) {
  Inline picture;
  picture.shape = Shape(75).props(Props().number(0x4104, 1).text(0x0105, u"A picture"));
  for (int i = 0; i < count; ++i) {
    picture.blips = {{.data = Bytes(100), .uid = static_cast<uint8_t>(i % 10)}};
    doc.paragraph("Before a picture ").special(1, drawing::pictureRun(doc, picture));
  }
}

/// List items whose bullet is a picture.
void pictureBullets(WordDocument& doc, int count) {
  Inline picture;
  picture.shape = Shape(75).props(Props().number(0x4104, 1));
  picture.blips = {{.data = Bytes(100)}};
  ListLevel level = bulletLevel(u'*', 0);
  level.chpx = {sprm(0x6887, 0)};
  const uint16_t list = doc.list({.levels = {level}});
  for (int i = 0; i < count; ++i) doc.paragraph("An item.").sprms({listItem(list, 0)});
  doc.paragraph()
      .bookmarkStart("_PictureBullets")
      .special(1, drawing::pictureRun(doc, picture))
      .bookmarkEnd("_PictureBullets");
}

// --- Whole documents ---

void longText(WordDocument& doc) {
  for (int i = 0; i < 2000; ++i) {
    if (i % 100 == 0) doc.paragraph("Chapter " + std::to_string(i / 100 + 1)).istd(kHeading1);
    Paragraph& paragraph = doc.paragraph();
    for (int part = 0; part < 7; ++part) paragraph.run(sentence(i));
    if (i % 5 == 0) paragraph.run("And so on", {italic()}).run(".");
  }
}

void largeTable(WordDocument& doc) {
  const Sprms row = rowSprms(edgesOf(6));
  for (int i = 0; i < 5000; ++i) {
    const std::string number = std::to_string(i);
    doc.row({number, "Item " + number, "a short remark", "12.50", "yes", "no"}, row);
  }
  doc.paragraph("end");
}

void manyNotes(WordDocument& doc) {
  footnotes(doc, 10'000);
}

void manyDrawings(WordDocument& doc) {
  textBoxes(doc, 4000);
  inlinePictures(doc, 4000);
}

void shortLetter(WordDocument& doc) {
  doc.paragraph("A letter").istd(kHeading1);
  plainParagraphs(doc, 10);
  doc.paragraph("With kind regards").sprms({align(2)}).run(" and a signature", {italic()});
}

}  // namespace

const Construct kConstructs[] = {
    {"PlainParagraphs", plainParagraphs},
    {"FormattedParagraphs", formattedParagraphs},
    {"ChineseParagraphs", chineseParagraphs},
    {"Headings", headings},
    {"RunsInParagraphs", runsInParagraphs},
    {"RunsInOneParagraph", runsInOneParagraph},
    {"HundredCharactersInOneRun", charactersInOneRun},
    {"Pieces", pieces},
    {"RowsOfSixCells", rowsOfSixCells},
    {"MergedRows", mergedRows},
    {"RowsUnlikeEachOther", rowsUnlikeEachOther},
    {"Tables", tables},
    {"NestedTables", nestedTables},
    {"ListItems", listItems},
    {"Lists", lists},
    {"Fields", fields},
    {"Links", links},
    {"FieldsInOneAnother", fieldsInOneAnother},
    {"Bookmarks", bookmarks},
    {"BookmarksInOneRun", bookmarksInOneRun},
    {"Footnotes", footnotes},
    {"Endnotes", endnotes},
    {"Annotations", annotations},
    {"Sections", sections},
    {"FloatingShapes", floatingShapes},
    {"Lines", lines},
    {"ShapesInOneGroup", shapesInOneGroup},
    {"TextBoxes", textBoxes},
    {"FloatingPictures", floatingPictures},
    {"InlinePictures", inlinePictures},
    {"PictureBullets", pictureBullets},
};
const int kConstructCount = static_cast<int>(std::size(kConstructs));

const WholeDocument kWholeDocuments[] = {
    {"letter", shortLetter},   {"long_text", longText},         {"large_table", largeTable},
    {"many_notes", manyNotes}, {"many_drawings", manyDrawings},
};
const int kWholeDocumentCount = static_cast<int>(std::size(kWholeDocuments));

void addStyles(WordDocument& doc) {
  doc.font("Times New Roman");
  doc.style(0, Style().name("Normal").sti(0).papx({spaceAfter(120)}).chpx({fontSize(22)}));
  doc.style(kHeading1, Style().name("heading 1").sti(1).basedOn(0).chpx({fontSize(32), bold()}));
  doc.style(kHeading2, Style().name("heading 2").sti(2).basedOn(0).chpx({fontSize(26), bold()}));
  doc.style(
      kHyperlink,
      Style().name("Hyperlink").kind(StyleKind::kCharacter).chpx({underline(1), colour(rgb(0, 0, 255))}));
  doc.style(kNoteReference,
            Style().name("footnote reference").kind(StyleKind::kCharacter).chpx({sprm(0x2A48, 1)}));
  doc.style(kNoteText, Style().name("footnote text").basedOn(0).chpx({fontSize(18)}));
}

}  // namespace bench

#include "mutation/rich_documents.h"

#include <cstdint>
#include <utility>

#include "support/drawing_writer.h"
#include "support/named_sprms.h"
#include "support/small_pictures.h"

namespace mutation {

using namespace support;

namespace {

constexpr char16_t kShapeMark = 8;
constexpr char16_t kPictureMark = 1;
constexpr uint8_t kPageField = 33;
constexpr uint8_t kHyperlinkField = 88;

const drawing::Rect kBox = {0, 0, 2000, 1000};

void addRevisions(WordDocument& doc) {
  const Bytes time = sprm(0x6805, dttm(2004, 3, 1, 9, 5, 1));
  doc.paragraph("Text ")
      .run("inserted", {sprm(0x0801, 1), sprm(0x4804, 0), time})
      .run(" and ")
      .run("removed", {sprm(0x0800, 1), sprm(0x4863, 0)})
      .run(".");
  doc.paragraph("A paragraph that was changed.").sprms({sprm(0xC63F, Bytes{1, 0, 0, 0, 0, 0, 0})});
}

void addCharacters(WordDocument& doc) {
  doc.font({.name = u"Symbol", .charset = 2});
  doc.paragraph()
      .special(u'(', {sprm(0x6A09, 0xF0E0 << 16 | 1)})
      .run("small", {sprm(0x083A, 1), sprm(0x2A48, 1)})
      .run("hidden", {sprm(0x083C, 1)})
      .run("struck", {sprm(0x0837, 1), sprm(0x2A53, 1), underline(9)})
      .run("wide", {letterSpacing(40), sprm(0x4852, 150), sprm(0x4845, 6)})
      .run(u"中文 ☃ 😀", {sprm(0x486E, 2052), shadingSprm(0xCA71, {.background = 0xFF00})})
      .run("\ttab\x0B line\x1Fhyphen\x1E\xA0");
}

void addPieces(WordDocument& doc) {
  const uint32_t group = doc.propertyGroup({bold(), align(1)});
  doc.paragraph("eight ")
      .newPiece({.width = Piece::Width::k16, .prm = prmOfGroup(group), .fileOrder = 2})
      .run("sixteen ")
      .newPiece({.width = Piece::Width::k8, .prm = prmOfSprm(0x4D, 1), .fileOrder = 1})
      .run("eight");
  doc.paragraph("more").newPiece();
  doc.paragraph("properties elsewhere")
      .sprms({align(2), tabsSprm({{720, 1, 2}, {4000, 2, 1}}, {360})})
      .huge();
  doc.paragraph("none").noPapx();
}

void addTables(WordDocument& doc) {
  const Border line = {.colour = rgb(255, 0, 0), .width = 12, .type = 3};
  const TableCell top{.verticalMerge = 3, .top = Border80{}}, rest{.verticalMerge = 1}, plain;
  const Sprms inner = {defTableSprm({0, 1000, 2000}, {plain, plain})};
  doc.row({"tall", "a"},
          {defTableSprm({0, 2000, 4000}, {top, plain}), sprm(0x3404, 1),
           tableBordersSprm({line, line, line, line, line, line}),
           tableShadingSprm({{.background = 0xFF}, {.background = 0xFF00}}),
           cellDistanceSprm(0xD634, 0, 2, 15, 3, 100), cellDistanceSprm(0xD633, 0, 1, 15, 3, 40)});
  doc.row({"", "b"}, {defTableSprm({0, 2000, 4000}, {rest, plain}), sprm(0x9407, -1200), sprm(0x3403, 1)});
  doc.paragraph("above").inTable();
  doc.row({"p", "q"}, inner, 2);
  doc.cell("deepest", 3);
  doc.rowEnd({defTableSprm({0, 500})}, 3);
  doc.row({"r", "s"}, inner, 2);
  doc.cell("below");
  doc.cell("beside");
  doc.rowEnd(
      {defTableSprm({0, 4000, 6000}, {TableCell{.horizontalMerge = 2}, TableCell{.horizontalMerge = 1}})});
  doc.paragraph("end");
}

void addParagraphs(WordDocument& doc) {
  const Shading shading = {.foreground = rgb(255, 0, 0), .background = rgb(0, 0, 255), .pattern = 20};
  doc.paragraph("Framed").sprms(
      {shadingSprm(0xC64D, shading), borderSprm(0xC64E, {.width = 8}), borderSprm(0xC652, {.type = 3}),
       borderSprm(0xC653, {.space = 0x24}), sprm(0x261B, 0x30), sprm(0x442B, 0x8100), sprm(0x442C, 0x32),
       sprm(0x8418, 500), sprm(0x8419, -20), sprm(0x841A, 3000), sprm(0x2423, 2), sprm(0x842F, 90)});
  doc.paragraph("By characters")
      .sprms({sprm(0x4455, 100), sprm(0x4456, 200), sprm(0x4457, 300), sprm(0x4458, 50), sprm(0x4459, 150),
              sprm(0x4439, 1), sprm(0x443A, 4), sprm(0x2407, 1), lineSpacing(-300, false)});
  doc.paragraph("By itself").sprms({sprm(0x245B, 1), sprm(0x245C, 1), sprm(0x2431, 0), sprm(0x2405, 1)});
}

/// Rows as older and newer programs write them, off their usual place and in patterns.
void addRows(WordDocument& doc) {
  const std::vector<int16_t> halves = {0, 2000, 4000};
  const Border80 old = {.width = 8, .type = 27, .ico = 6};
  const Border line = {.width = 8, .type = 26};
  doc.row({"a", "b"}, {sprm(0x5400, 2), sprm(0x9601, 300), sprm(0x9602, 100), defTableSprm(halves),
                       tableBorders80Sprm({old, old, old, old, old, old}), sprm(0xD609, Bytes{0x45, 4, 0, 0}),
                       sprm(0xD620, Bytes{0, 1, 15, 8, 1, 6, 0})});
  doc.row({"c", "d"},
          {defTableSprm(halves), sprm(0x360D, 0x80), sprm(0x940E, 700), sprm(0x940F, 100), sprm(0x9410, 90),
           sprm(0xD62F, ByteWriter().u8(0).u8(2).u8(15).bytes(line.bytes()).take()),
           tableShadingSprm({{.foreground = 0xFF, .pattern = 14}, {.background = 0xFF00, .pattern = 38}})});
  doc.paragraph("between");
  doc.row({"e", "f"}, {defTableSprm(halves), sprm(0xF661, Bytes{3, 0xC8, 0}), sprm(0x548A, 1),
                       cellDistanceSprm(0xD634, 0, 1, 15, 2, 100), cellDistanceSprm(0xD632, 0, 1, 3, 3, 50)});
  doc.paragraph("end");
}

/// Numbers as each kind of list writes them.
void addNumbers(WordDocument& doc) {
  int32_t lsid = 200;
  for (int format = 0; format <= 60; format += 3) {
    List list = {.lsid = ++lsid};
    for (int level = 0; level < 3; ++level)
      list.levels.push_back(
          {.startAt = 21, .numberFormat = static_cast<uint8_t>(format + level), .text = u"%1-%2-%3"});
    const uint16_t number = doc.list(list);
    for (int level = 0; level < 3; ++level) doc.paragraph("x").sprms({listItem(number, level)});
  }
}

void addNotes(WordDocument& doc) {
  doc.paragraph("Note")
      .footnote(
          [](Story& note) {
            note.paragraph("first ").field(kPageField, " PAGE ", Text("1"));
            note.row({"a", "b"}, {defTableSprm({0, 1000, 2000})});
            note.paragraph("last");
          },
          {.customMark = "*"})
      .endnote("An endnote.")
      .annotationStart(7)
      .run("marked")
      .annotationEnd(7)
      .annotation("A remark.", {.author = "A. Reader", .rangeTag = 7, .dttm = dttm(2004, 3, 1, 9, 5, 1)})
      .annotation("Another.", {.author = "B", .initials = u"B"});
}

void addLinks(WordDocument& doc) {
  doc.paragraph("Go ")
      .fieldBegin(kHyperlinkField)
      .run(" HYPERLINK \"http://x.example/\" \\l \"here\" \\o \"tip\" ")
      .fieldSeparator()
      .run("there ")
      .fieldBegin(kPageField)
      .run(" PAGE ")
      .fieldEnd(0x40)
      .fieldEnd()
      .bookmarkStart("here")
      .run("or here")
      .bookmarkEnd("here");
  doc.paragraph("A heading").istd(1).bookmarkStart("_Toc1").run(" more").bookmarkEnd("_Toc1");
  doc.paragraph("Another heading").sprms({outlineLevel(1)});
}

/// The pictures of bullets stand under the first bookmark.
void addPictureBullets(WordDocument& doc) {
  const Sprms picture =
      drawing::pictureRun(doc, {.shape = drawing::Shape(75).props(drawing::Props().number(0x4104, 1)),
                                .blips = {{.data = smallPng(), .uid = 0x55}}});
  doc.paragraph()
      .bookmarkStart("_PictureBullets")
      .special(kPictureMark, picture)
      .bookmarkEnd("_PictureBullets");
  ListLevel bullet = bulletLevel(0xF0B7, 1, {leftIndent(720)});
  bullet.chpx = {sprm(0x6887, 0), sprm(0x4888, 1)};
  const uint16_t bullets = doc.list({.lsid = 70, .levels = {bullet}});
  for (int i = 0; i < 3; ++i) doc.paragraph("Item").sprms({listItem(bullets, 0)});
}

void addLists(WordDocument& doc) {
  const ListLevel chinese = {.numberFormat = 37, .text = u"%1、"},
                  roman = {.numberFormat = 2, .text = u"%1.%2)"};
  doc.listDefinition({.lsid = 80, .levels = {chinese, roman, ListLevel{.numberFormat = 22}}});
  const uint16_t list = doc.listOverride(
      {.lsid = 80,
       .levels = {{.level = 0, .startAt = uint16_t{5}}, {.level = 1, .format = ListLevel{.follow = 2}}}});
  for (int i = 0; i < 5; ++i) doc.paragraph("Item").sprms({listItem(list, i % 3)});
}

void addTextBoxes(WordDocument& doc) {
  doc.paragraph().special(kShapeMark).special(kShapeMark).run("beside the boxes");
  Story& boxes = doc.story(mso_word::SUBDOC_TEXTBOX);
  boxes.paragraph("In a box");
  boxes.row({"a"}, {defTableSprm({0, 1000})});
  boxes.paragraph("Linked").field(kHyperlinkField, " HYPERLINK \\l \"here\" ", Text("x"));
  drawing::Drawing shapes;
  const drawing::Shape group = drawing::Shape(0, 1030).group(
      {0, 0, 100, 100}, {drawing::Shape(202, 1031).at({0, 0, 50, 50}).textBox(2),
                         drawing::Shape(3, 1032).at({50, 50, 100, 100})});
  shapes.shape(0,
               drawing::Shape(202, 1025).textBox(1).props(
                   drawing::Props().text(0x0380, u"box").number(0x4186, 2).number(0x0180, 2)),
               {.rect = kBox, .wrap = 2});
  shapes.shape(1, group, {.rect = kBox});
  const Bytes emf = smallEmf();
  shapes.blip({.type = 5, .data = smallJpeg()});
  shapes.blip(
      {.type = 2, .data = emf, .uid = 9, .rawSize = static_cast<uint32_t>(emf.size()), .delayed = true});
  shapes.addTo(doc, {13, 20});
}

void addSections(WordDocument& doc) {
  doc.section(
      {sprm(0x3009, 1), sprm(0x500B, 1), sprm(0xF203, Bytes{0, 0xE8, 3}), sprm(0xF204, Bytes{0, 0xE8, 3})});
  doc.paragraph("Two columns\x0E and a break\x0C");
  doc.section({sprm(0x3009, 0), sprm(0x703A, 4), sprm(0x3019, 1), borderSprm(0xD234, {.width = 8})});
  doc.paragraph("The last one.");
}

constexpr struct {
  const char* name;
  void (*add)(WordDocument& doc);
} kParts[] = {
    {"Revisions", addRevisions},
    {"Characters", addCharacters},
    {"PiecesOfBothWidths", addPieces},
    {"TablesInCells", addTables},
    {"NotesWithTables", addNotes},
    {"LinksAndHeadings", addLinks},
    {"PictureBullets", addPictureBullets},
    {"ListOverrides", addLists},
    {"FramedParagraphs", addParagraphs},
    {"OldAndNewRows", addRows},
    {"Numbers", addNumbers},
    {"TextBoxes", addTextBoxes},
    {"SectionsOfAllKinds", addSections},
};

}  // namespace

std::vector<NamedDocument> richDocuments() {
  std::vector<NamedDocument> documents;
  WordDocument all(WordOptions{.maxFkpEntries = 3});
  all.style(1, Style().name("heading 1").sti(1).basedOn(0).chpx({fontSize(32), bold()}));
  addTextBoxes(all);  // its anchors count from the front
  for (const auto& part : kParts) {
    WordDocument doc;
    part.add(doc);
    documents.push_back({part.name, std::move(doc)});
    if (part.add != addTextBoxes) part.add(all);
  }
  documents.push_back({"AllParts", std::move(all)});
  return documents;
}

}  // namespace mutation

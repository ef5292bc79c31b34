#include "mutation/flow_documents.h"

#include "support/canvas.h"
#include "support/form_fields.h"
#include "support/named_sprms.h"

namespace mutation {

using namespace support;
using namespace support::drawing;

namespace {

void fillHeaders(WordDocument& doc) {
  constexpr uint16_t kTitlePage = 0x300A;
  doc.section({sprm(kTitlePage, 1)}).paragraph("first section").footnote("a note");
  doc.section({sprm(0x303C, 1)}).paragraph("second section").footnote("one more").endnote("at the end");
  doc.patchDop(0, uint8_t{1 << 5 | 1});
  for (const HeaderSlot slot : {HeaderSlot::kEvenHeader, HeaderSlot::kOddFooter, HeaderSlot::kFirstHeader})
    doc.header(0, slot).paragraph("head").field(33, " PAGE ", "1");
  doc.header(1, HeaderSlot::kOddHeader).row({"a", "b"}, {defTableSprm({0, 1000, 2000})}).paragraph("c");
  doc.noteSeparator(0).paragraph("separator");
}

void fillTextBoxes(WordDocument& doc) {
  const uint32_t picture = doc.storePicture(Blip{.type = kPng, .data = Bytes(40, 3)}.entry());
  const auto chain = textBoxes(doc, {1025, 1026}, [](Story& story) { story.paragraph("chained"); });
  const Shape one = textBox(doc, 1028, [](Story& story) {
                      story.row({"a", "b"}, {defTableSprm({0, 500, 1000})});
                      story.paragraph("behind");
                    }).at({0, 0, 100, 100});
  const Shape shown = Shape(kPictureFrame, 1029).props(Props().number(property::kPicture, picture));
  addShape(addShape(doc.paragraph("boxes"), chain[0]), chain[1]);
  addShape(doc.paragraph("group"), Shape(0, 1027).group({0, 0, 200, 100}, {one, shown}),
           {.rect = {0, 0, 2000, 1000}});
  addShape(doc.header(0, HeaderSlot::kOddHeader).paragraph("head"),
           textBox(
               doc, 2049, [](Story& story) { story.paragraph("in the header"); }, true));
  doc.paragraph("picture").special(1, Canvas(doc).inlinePicture(kJpeg, Bytes(60, 5), 1000, 500));
}

void fillForms(WordDocument& doc) {
  formText(doc, doc.paragraph("Name: "), "Name", "Ann");
  formCheckBox(doc, doc.paragraph("Yes: "), "Yes", true);
  formDropDown(doc, doc.paragraph("One of: "), "Choice", {"red", "green", "blue"}, 2);
  doc.paragraph().field(88, " HYPERLINK \"http://www.example.com/\" \\l \"a\" \\o \"tip\" ", "link");
  doc.paragraph()
      .field(49, " EQ \\f(1;2) ")
      .field(57, " SYMBOL 97 \\f \"Symbol\" ")
      .field(3, " REF Name \\h ", "x");
}

void fillChanges(WordDocument& doc) {
  const uint16_t ann = doc.author("Ann"), bob = doc.author("Bob");
  doc.paragraph("a").inserted("in", ann, dttm(2004, 3, 1, 12, 0)).deleted("out", bob);
  doc.paragraph("joined ").mark(deletedSprms(bob));
  doc.paragraph("here").annotationStart(1).run("range").annotationEnd(1);
  doc.paragraphs().back()->annotation("remark", {.author = "Ann", .rangeTag = 1, .dttm = 5});
  const Sprms shape = {defTableSprm({0, 1000, 2000}, {{.verticalMerge = 3}, {}})};
  doc.row({"a", "b"}, shape);
  doc.row({"c", "d"}, {defTableSprm({0, 1000, 2000}, {{.verticalMerge = 1}, {}})});
  doc.row({"x", "y"}, {defTableSprm({0, 300, 900})}, 2);
  doc.cell("e").inserted("f", ann);
  doc.rowEnd(shape).mark(insertedSprms(ann));
}

void fillStyles(WordDocument& doc) {
  doc.summary(
      {.title = "Title", .created = fileTime(2004, 3, 1), .custom = {{"Name", Text("Value")}, {"n", 3}}});
  doc.style(1, Style().name("heading 1").sti(1).basedOn(0).papx({outlineLevel(0)}).chpx({bold()}));
  doc.style(20,
            Style().name("Grid").kind(StyleKind::kTable).chpx({partSprm(kPartOfRun, kFirstRow, {bold()})}));
  const uint16_t list =
      doc.list({.lsid = 1, .levels = {ListLevel{}, ListLevel{.numberFormat = 4, .text = "%1.%2"}}});
  doc.paragraph("head").istd(1);
  for (const int level : {0, 1, 1, 0}) doc.paragraph("item").sprms(Sprms(listItem(list, level)));
  doc.row({"a", "b"}, {defTableSprm({0, 1000, 2000}), sprm(0x563A, 20), tableLookSprm(0x20)});
  doc.paragraph("a\fb\vc\td").bookmarkStart("mark").run("e").bookmarkEnd("mark");
}

}  // namespace

std::vector<NamedDocument> flowDocuments() {
  struct {
    const char* name;
    void (*fill)(WordDocument&);
  } constexpr kFillers[] = {{"headers", fillHeaders},
                            {"text boxes", fillTextBoxes},
                            {"forms", fillForms},
                            {"changes", fillChanges},
                            {"styles", fillStyles}};
  std::vector<NamedDocument> documents;
  for (const auto& [name, fill] : kFillers) {
    documents.push_back({name, WordDocument()});
    fill(documents.back().document);
  }
  return documents;
}

}  // namespace mutation

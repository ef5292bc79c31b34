#include "pages/page_documents.h"
#include "support/canvas.h"
#include "support/picture_writer.h"
#include "support/small_pictures.h"

namespace pages {

using namespace support;
using namespace support::drawing;
using namespace support::drawing::property;

namespace {

constexpr char16_t kPictureMark = 1;
constexpr uint32_t kBlue = rgb(0, 0, 255), kDark = rgb(0x20, 0x20, 0x20), kYellow = rgb(255, 255, 0);
constexpr uint8_t kEmf = 2;
constexpr uint16_t kName = 0x0380, kDescription = 0x0381;
constexpr uint16_t kAround = 2, kOver = 3;  // how text stands to what floats

/// A picture file of one colour.
Blip patch(const support::Colour& colour, uint8_t uid) {
  return {.type = kPng, .data = png(30, 20, [colour](double, double) { return colour; }), .uid = uid};
}

Paragraph& addInline(WordDocument& doc, Paragraph& paragraph, const Props& props) {
  const Inline picture = {.shape = Shape(kPictureFrame).props(props),
                          .blips = {patch({0, 160, 0}, 1)},
                          .goalWidth = 1440,
                          .goalHeight = 720};
  return paragraph.special(kPictureMark, pictureRun(doc, picture));
}

void addFiller(WordDocument& doc, int count) {
  for (int i = 0; i < count; ++i) {
    doc.paragraph(
        "Words that stand beside what floats, enough of them to fill a line or two of the page, so that one "
        "sees where they begin and where they end.");
  }
}

}  // namespace

void fillPictures(WordDocument& doc) {
  doc.section(paper());
  addInline(doc, doc.paragraph("in front "), Props().number(kPicture, 1).text(kDescription, u"A green patch"))
      .run(" and behind");
  doc.paragraph("below the inline picture");
  const uint32_t red = doc.storePicture(patch({200, 0, 0}, 2).entry());
  const Props shown = Props().number(kPicture, red).text(kName, u"Patch").text(kDescription, u"A red patch");
  addShape(doc.paragraph("floats at the right"), Shape(kPictureFrame, 1025).props(shown),
           {.rect = box(6000, 0, 2400, 1600), .wrap = kAround});
  addFiller(doc, 4);
  addShape(doc.paragraph("floats at the left"), Shape(kPictureFrame, 1026).props(shown),
           {.rect = box(0, 0, 2400, 1600), .wrap = kAround});
  addFiller(doc, 4);
  doc.paragraph("end of pictures");
}

/// Each in a frame that is no higher than broad, though the metafile is twice as broad as high.
void fillMetafiles(WordDocument& doc) {
  constexpr uint16_t kCropLeft = 0x0102, kClearColour = 0x0107, kGrey = 0x013D;
  doc.section(paper());
  auto add = [&doc, uid = uint8_t{0}](const char16_t* description, const Props& look) mutable {
    Props props = look;
    props.number(kPicture, 1).text(kDescription, description);
    const Inline picture = {.shape = Shape(kPictureFrame).props(props),
                            .blips = {Blip{.type = kEmf, .data = emfOfHalves(), .uid = ++uid}},
                            .goalWidth = 1440,
                            .goalHeight = 1440};
    doc.paragraph().special(kPictureMark, pictureRun(doc, picture));
  };
  add(u"Whole", {});
  add(u"Right half", Props().fixed(kCropLeft, 0.5));
  add(u"Grey", Props().flag(kGrey, true));
  add(u"Without red", Props().number(kClearColour, 0x0000FF));
  add(u"Without any", Props().number(kClearColour, 0xFFFFFFFF));
  doc.paragraph("end of metafiles");
}

void fillShapes(WordDocument& doc) {
  doc.section(paper());
  addShape(doc.paragraph("anchor of the rectangle"),
           Shape(kRectangle, 1025).props(outlined(filled(kBlue), kDark)),
           {.rect = box(1440, 600, 2880, 1440), .wrap = kOver});
  doc.paragraph("room for the rectangle").sprms({spaceBefore(2400)});
  const auto fill = [](Story& story) {
    story.paragraph("words in the box");
    story.paragraph("more in the box");
  };
  addShape(doc.paragraph("anchor of the text box"),
           textBox(doc, 1026, fill).props(outlined(filled(kYellow), kDark).number(kTextId, 1 << 16)),
           {.rect = box(4320, 600, 2880, 1440), .wrap = kOver});
  doc.paragraph("room for the text box").sprms({spaceBefore(2400)});
  addShape(doc.paragraph("anchor of the line"), Shape(kLine, 1027).props(outlined({}, rgb(255, 0, 0), 3)),
           {.rect = box(0, 600, 4000, 0), .wrap = kOver});
  doc.paragraph("room for the line").sprms({spaceBefore(1200)});
  doc.paragraph("end of shapes");
}

}  // namespace pages

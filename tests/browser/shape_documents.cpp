#include "browser/shape_documents.h"

#include "support/canvas.h"
#include "support/named_sprms.h"
#include "support/picture_writer.h"

using namespace support;
using namespace support::drawing;
using namespace support::drawing::property;

namespace {

constexpr uint32_t kRed = rgb(255, 0, 0), kGreen = rgb(0, 0x80, 0), kBlue = rgb(0, 0, 255);
constexpr uint32_t kYellow = rgb(255, 255, 0);
constexpr char16_t kPictureMark = 1;

/// A box in points, from where a browser puts what is anchored: the lower edge of the paragraph's text.
Place at(int left, int top, int width, int height) {
  return {.rect = box(left * 20, top * 20, width * 20, height * 20)};
}

/// A paragraph to anchor shapes in.
void anchorParagraph(WordDocument& doc, const Text& text) {
  doc.paragraph(text).sprms({spaceAfter(0)});
}

/// Text runs through what floats, so an empty paragraph makes room for it.
void leaveRoom(WordDocument& doc, int points) {
  doc.paragraph().sprms({spaceBefore(points * 20)});
}

// --- shapes.doc ---

void addTextBox(WordDocument& doc, Canvas& canvas) {
  const Props props =
      outlined(filled(kYellow), kBlue, 3).complex(kHyperlink, linkToUrl(u"http://www.example.com/a?b=c"));
  anchorParagraph(doc, "text box");
  canvas.anchor(canvas.textBox(kTextBox, props,
                               [](Story& story) {
                                 story.paragraph("in the box").sprms({spaceAfter(0)});
                                 story.paragraph("to the right").sprms({align(2)});
                               }),
                at(30, 20, 150, 60));
  leaveRoom(doc, 100);
}

void addRectangles(WordDocument& doc, Canvas& canvas) {
  anchorParagraph(doc, "rectangles");
  canvas.anchor(canvas.shape(kRectangle, outlined(filled(kRed), kGreen, 3)), at(0, 10, 60, 45))
      .anchor(canvas.shape(kRectangle, outlined(filled(kRed).number(kFillOpacity, 0x8000), kGreen)),
              at(90, 10, 60, 45))
      .anchor(canvas.shape(kRectangle, outlined(Props().flag(kIsFilled, false), kBlue)
                                           .number(kLineDashing, 6)
                                           .complex(kHyperlink, linkToBookmark(u"Place"))),
              at(180, 10, 60, 45));
  leaveRoom(doc, 70);
}

void addEllipses(WordDocument& doc, Canvas& canvas) {
  anchorParagraph(doc, "ellipses");
  canvas.anchor(canvas.shape(kEllipse, outlined(filled(kRed), kBlue, 3)), at(0, 15, 90, 60))
      .anchor(canvas.shape(kEllipse, outlined(Props().flag(kIsFilled, false), kBlue, 3)),
              at(120, 15, 60, 60));
  leaveRoom(doc, 100);
}

/// One line for each pair of flip bits; the first is the one across.
void addLines(WordDocument& doc, Canvas& canvas, const Text& text, int width, int height) {
  anchorParagraph(doc, text);
  for (int i = 0; i < 4; ++i) {
    canvas.anchor(canvas.shape(kLine, outlined({}, kRed, 3)).flip(i & 1, i & 2),
                  at(i * 90, 15, width, height));
  }
  leaveRoom(doc, 90);
}

/// A unit of the group is a fifth of a point.
void addGroup(WordDocument& doc, Canvas& canvas) {
  const auto child = [&canvas](uint32_t colour, const Rect& place) {
    return canvas.shape(kRectangle, filled(colour).flag(kHasLine, false)).at(place);
  };
  const Shape inner = canvas.shape(0)
                          .at(box(500, 100, 400, 300))
                          .group(box(0, 0, 400, 300),
                                 {child(kGreen, box(0, 0, 100, 300)), child(kBlue, box(300, 200, 100, 100))});
  anchorParagraph(doc, "group");
  canvas.anchor(canvas.shape(0).group(box(0, 0, 1000, 500), {child(kYellow, box(0, 0, 1000, 500)),
                                                             child(kRed, box(50, 100, 200, 300)), inner}),
                at(40, 15, 200, 100));
  leaveRoom(doc, 130);
}

// --- pictures.doc ---

constexpr Colour kRedPixel = {255, 0, 0}, kBluePixel = {0, 0, 255};

/// Red on the left, blue on the right: 30 by 20 pixels.
Bytes twoColours() {
  return png(30, 20, [](double x, double) { return x < 15 ? kRedPixel : kBluePixel; });
}

/// The same by two tiles: 16 by 8 pixels.
Bytes twoTiles() {
  return jpeg(2, 1, [](double x, double) { return x < 1 ? kRedPixel : kBluePixel; });
}

void addFloatingPicture(WordDocument& doc, Canvas& canvas) {
  const uint32_t picture = canvas.picture(kPng, twoColours());
  anchorParagraph(doc, "floating");
  canvas.anchor(canvas.shape(kPictureFrame, Props().number(kPicture, picture)), at(30, 15, 90, 60))
      .anchor(canvas.shape(kRectangle, filled(kGreen).number(kFillType, 3).number(kFillPicture, picture)),
              at(150, 15, 60, 60));
  leaveRoom(doc, 100);
}

void addInlinePictures(WordDocument& doc, Canvas& canvas) {
  doc.paragraph("before the PNG")
      .special(kPictureMark, canvas.inlinePicture(kPng, twoColours(), 1800, 1200))
      .run("between them")
      .special(kPictureMark, canvas.inlinePicture(kJpeg, twoTiles(), 1200, 600))
      .run("behind the JPEG");
}

void addPictureBullets(WordDocument& doc, Canvas& canvas) {
  constexpr uint16_t kVanish = 0x083C, kBulletIndex = 0x6887;
  ListLevel level = bulletLevel(u'\u2022', 0);
  level.chpx = {sprm(kBulletIndex, 0)};
  const uint16_t list = doc.list({.lsid = 1, .levels = {level}, .simple = true});
  // A bookmark counts up to where the next one begins.
  doc.paragraph("bullets")
      .bookmarkStart("_PictureBullets")
      .special(kPictureMark, canvas.inlinePicture(kPng, twoColours(), 300, 200).add(sprm(kVanish, 1)))
      .bookmarkEnd("_PictureBullets")
      .bookmarkStart("Behind")
      .run(" behind")
      .bookmarkEnd("Behind");
  for (const char* text : {"first item", "second item"})
    doc.paragraph(text).sprms({sprm(0x460B, list), sprm(0x260A, 0)});
}

}  // namespace

void fillShapes(WordDocument& doc) {
  Canvas canvas(doc);
  addTextBox(doc, canvas);
  addRectangles(doc, canvas);
  addEllipses(doc, canvas);
  addLines(doc, canvas, "flat lines", 60, 45);
  addLines(doc, canvas, "steep lines", 30, 60);
  addGroup(doc, canvas);
  doc.paragraph("end");
  canvas.finish();
}

void fillPictures(WordDocument& doc) {
  Canvas canvas(doc);
  addPictureBullets(doc, canvas);
  addFloatingPicture(doc, canvas);
  addInlinePictures(doc, canvas);
  doc.paragraph("end");
  canvas.finish();
}

#include "sample_drawings.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "support/named_sprms.h"
#include "support/picture_writer.h"

namespace sample {

using namespace support;
using namespace support::drawing;
using namespace support::drawing::property;

namespace {

constexpr uint16_t kHeading1 = 1, kHeading2 = 2;
constexpr char16_t kPictureMark = 1;

constexpr uint32_t kBlue = rgb(0x2E, 0x75, 0xB6);
constexpr uint32_t kGreen = rgb(0x70, 0xAD, 0x47);
constexpr uint32_t kOrange = rgb(0xED, 0x7D, 0x31);
constexpr uint32_t kViolet = rgb(0x7B, 0x4F, 0xA3);
constexpr uint32_t kRed = rgb(0xC0, 0x39, 0x2B);
constexpr uint32_t kYellow = rgb(0xFF, 0xD9, 0x66);
constexpr uint32_t kPale = rgb(0xF3, 0xF6, 0xFA);
constexpr uint32_t kDark = rgb(0x3B, 0x3B, 0x3B);

constexpr int kTop = 14;  // of all that is anchored in a paragraph, points below its top

/// A box in points, from the paragraph's left edge and `kTop`. Text runs through it: `leaveRoom` makes it
/// free.
Place at(int left, int top, int width, int height) {
  return {.rect = box(left * 20, (kTop + top) * 20, width * 20, height * 20)};
}

Props line(uint32_t colour, double points) {
  return outlined({}, colour, points);
}

Props drawn(uint32_t fill, uint32_t line, double points = 1) {
  return outlined(filled(fill), line, points);
}

Props plain(uint32_t fill) {
  return filled(fill).flag(kHasLine, false);
}

void heading(WordDocument& doc, uint16_t istd, const Text& text) {
  doc.paragraph(text).istd(istd);
}

/// An empty paragraph below what is anchored, for drawings of this height in points.
void leaveRoom(WordDocument& doc, int height) {
  doc.paragraph().sprms({spaceBefore(20 * (kTop + height + 4)), spaceAfter(0)});
}

// --- Shapes ---

void addShapes(WordDocument& doc, Canvas& canvas) {
  doc.paragraph("Rectangles and ellipses, in lines and colours of their own:");
  canvas.anchor(canvas.shape(kRectangle, drawn(kBlue, kDark)), at(0, 0, 75, 50))
      .anchor(canvas.shape(kRectangle, drawn(kPale, kRed, 2).number(kLineDashing, 6)), at(95, 0, 75, 50))
      .anchor(canvas.shape(kRectangle, drawn(kYellow, kViolet, 6).number(kLineStyle, 1)), at(190, 0, 65, 40))
      .anchor(canvas.shape(kEllipse, drawn(kGreen, kDark, 1.5)), at(285, 0, 75, 50))
      .anchor(canvas.shape(kEllipse, line(kOrange, 3).flag(kIsFilled, false)), at(380, 0, 50, 50));
  leaveRoom(doc, 50);

  doc.paragraph("Lines in all directions, thick ones and thin ones, with arrows:");
  canvas.anchor(canvas.shape(kLine, line(kBlue, 1)), at(0, 0, 50, 50))
      .anchor(canvas.shape(kLine, line(kOrange, 1)).flip(false, true), at(0, 0, 50, 50))
      .anchor(canvas.shape(kLine, line(kGreen, 3)).flip(true, false), at(75, 0, 80, 50))
      .anchor(canvas.shape(kLine, line(kViolet, 3)).flip(true, true), at(75, 0, 30, 50))
      .anchor(canvas.shape(kLine, line(kDark, 2)), at(180, 25, 80, 0))
      .anchor(canvas.shape(kLine, line(kDark, 2)), at(220, 0, 0, 50))
      .anchor(canvas.shape(kLine, line(kRed, 1.5).number(kLineEndArrow, 1)), at(285, 50, 75, 0))
      .anchor(canvas.shape(kLine, line(kRed, 1.5).number(kLineEndArrow, 2)).flip(false, true),
              at(285, 0, 75, 40))
      .anchor(canvas.shape(kLine, line(kBlue, 1).number(kLineDashing, 6)), at(380, 0, 50, 50));
  leaveRoom(doc, 50);
}

void addFills(WordDocument& doc, Canvas& canvas, uint32_t picture) {
  const Props gradient = drawn(kBlue, kDark)
                             .number(kFillType, 7)
                             .number(kFillBackColour, kPale)
                             .fixed(kFillAngle, -90)
                             .number(kFillFocus, 100);
  doc.paragraph("Fills: a colour, a gradient, a picture, half transparent over a line; a shadow, and depth:");
  canvas.anchor(canvas.shape(kRectangle, plain(kOrange)), at(0, 0, 50, 50))
      .anchor(canvas.shape(kRectangle, gradient), at(75, 0, 50, 50))
      .anchor(
          canvas.shape(kRectangle, drawn(kPale, kDark).number(kFillType, 3).number(kFillPicture, picture)),
          at(150, 0, 50, 50))
      .anchor(canvas.shape(kLine, line(kDark, 4)), at(218, 23, 64, 0))
      .anchor(canvas.shape(kRectangle, drawn(kRed, kDark).number(kFillOpacity, 0x8000)), at(225, 0, 50, 50))
      .anchor(
          canvas.shape(kRectangle, drawn(kYellow, kDark).number(kShadowColour, kDark).flag(kHasShadow, true)),
          at(300, 0, 50, 50))
      .anchor(canvas.shape(
                  kRectangle,
                  drawn(kViolet, kDark).number(kExtrusionDepth, 18 * kEmuPerPoint).flag(kHasExtrusion, true)),
              at(375, 0, 50, 50));
  leaveRoom(doc, 50);
}

// --- What a browser without VML leaves out ---

struct Point {
  uint32_t x, y;
};

/// A freeform in a square of 200 units, by its points and by the file format's words for its segments.
Props freeform(Props props, std::initializer_list<Point> points, std::initializer_list<uint16_t> segments) {
  ByteWriter vertices, words;
  for (const Point& point : points) vertices.u32(point.x).u32(point.y);
  for (const uint16_t segment : segments) words.u16(segment);
  return props.number(kGeometryRight, 200)
      .number(kGeometryBottom, 200)
      .array(kVertices, static_cast<uint16_t>(points.size()), 8, vertices.take())
      .array(kSegments, static_cast<uint16_t>(segments.size()), 2, words.take());
}

Props arrow() {
  constexpr uint16_t kMove = 0x4000, kSixLines = 0x0006, kClose = 0x6001, kEnd = 0x8000;
  return freeform(drawn(kGreen, kDark),
                  {{0, 50}, {120, 50}, {120, 0}, {200, 100}, {120, 200}, {120, 150}, {0, 150}},
                  {kMove, kSixLines, kClose, kEnd});
}

Props wave() {
  constexpr uint16_t kMove = 0x4000, kTwoCurves = 0x2002, kEnd = 0x8000;
  return freeform(line(kBlue, 2.25).flag(kIsFilled, false),
                  {{0, 100}, {60, 0}, {60, 200}, {100, 100}, {140, 0}, {140, 200}, {200, 100}},
                  {kMove, kTwoCurves, kEnd});
}

Props wordArt() {
  return drawn(kBlue, kDark, 0.75)
      .text(kWordArtText, u"Word Art")
      .text(kWordArtFont, u"Arial")
      .fixed(kWordArtSize, 36)
      .flag(kIsWordArt, true)
      .flag(kWordArtBold, true);
}

void addFigures(WordDocument& doc, Canvas& canvas) {
  doc.paragraph("Round corners, freeforms and letters as a figure, which only a browser with VML shows:");
  canvas.anchor(canvas.shape(kRoundRectangle, drawn(kYellow, kOrange, 2)), at(0, 0, 70, 40))
      .anchor(canvas.shape(kFreeform, arrow()), at(95, 0, 70, 40))
      .anchor(canvas.shape(kFreeform, wave()), at(190, 0, 70, 40))
      .anchor(canvas.shape(kPlainText, wordArt()), at(285, 0, 140, 40));
  leaveRoom(doc, 40);
}

// --- Text boxes ---

void fillTextBox(Story& story) {
  story.paragraph("A text box").sprms({align(1), spaceBefore(0)}).istd(kHeading2);
  story.paragraph("It holds ")
      .run("formatted", {bold(), colour(kRed)})
      .run(" text of its own, ")
      .run("in as many", {italic()})
      .run(" paragraphs as it likes,");
  story.paragraph("on the right.").sprms({align(2)});
}

void fillTableBox(Story& story) {
  const Border thin = {.width = 4};
  const Sprms row = {defTableSprm({0, 1200, 2400}), tableBordersSprm({thin, thin, thin, thin, thin, thin})};
  story.paragraph("A rectangle with a table:");
  story.row({"one", "two"}, row);
  story.row({"three", "four"}, row);
  story.paragraph();
}

void addTextBoxes(WordDocument& doc, Canvas& canvas) {
  doc.paragraph("Boxes with text, with a link to an address and with one to a place in the text:");
  canvas
      .anchor(
          canvas.textBox(kTextBox,
                         drawn(kPale, kBlue, 1.5).complex(kHyperlink, linkToUrl(u"http://www.example.com/")),
                         fillTextBox),
          at(0, 0, 230, 90))
      .anchor(
          canvas.textBox(kRectangle, drawn(kYellow, kOrange).complex(kHyperlink, linkToBookmark(u"Place")),
                         fillTableBox),
          at(260, 0, 160, 90));
  leaveRoom(doc, 90);
}

// --- A group: a house, in units of its own ---

Shape house(Canvas& canvas) {
  const auto child = [&canvas](uint16_t type, const Props& props, const Rect& place) {
    return canvas.shape(type, props).at(place);
  };
  const Props pane = drawn(rgb(0xBD, 0xE3, 0xFF), kDark, 0.75);
  const Shape window =
      canvas.shape(0)
          .at(box(420, 420, 120, 120))
          .group(box(0, 0, 120, 120),
                 {child(kRectangle, pane, box(0, 0, 55, 55)), child(kRectangle, pane, box(65, 0, 55, 55)),
                  child(kRectangle, pane, box(0, 65, 55, 55)), child(kRectangle, pane, box(65, 65, 55, 55))});
  return canvas.shape(0).group(
      box(0, 0, 1000, 800), {child(kRectangle, plain(rgb(0xDD, 0xEE, 0xFB)), box(0, 0, 1000, 640)),
                             child(kRectangle, plain(rgb(0xB5, 0xD6, 0x9A)), box(0, 640, 1000, 160)),
                             child(kEllipse, drawn(kYellow, kOrange), box(780, 60, 160, 160)),
                             child(kRectangle, drawn(rgb(0xF6, 0xE3, 0xC5), kDark), box(200, 360, 400, 340)),
                             child(kRectangle, drawn(kRed, kDark), box(270, 480, 100, 220)), window,
                             child(kLine, line(kRed, 4), box(160, 160, 240, 200)).flip(false, true),
                             child(kLine, line(kRed, 4), box(400, 160, 240, 200)),
                             child(kRectangle, plain(rgb(0x7A, 0x5C, 0x3E)), box(810, 500, 40, 200)),
                             child(kEllipse, drawn(kGreen, kDark), box(730, 320, 200, 240))});
}

// --- Pictures ---

constexpr Colour kClear = {255, 255, 255, 0};

/// A star with five tips, one of them at the top, in a disc with a rim: 120 pixels wide and high.
Bytes starPicture() {
  constexpr Colour kGold = {0xF2, 0xB1, 0x34}, kNavy = {0x1F, 0x4E, 0x79};
  const double fifth = 2 * std::acos(-1.0) / 5, tip = 46, corner = 0.382 * tip;
  return png(120, 120, [=](double x, double y) {
    const double radius = std::hypot(x - 60, y - 60);
    if (radius > 58) return kClear;
    double angle = std::fmod(std::atan2(x - 60, 60 - y) + 5 * fifth, fifth);  // from the last tip
    angle = std::min(angle, fifth - angle);
    const double along = radius * std::cos(angle), aside = radius * std::sin(angle);
    const double cornerAlong = corner * std::cos(fifth / 2), cornerAside = corner * std::sin(fifth / 2);
    const bool inStar = (tip - along) * cornerAside >= aside * (tip - cornerAlong);
    return inStar || radius > 52 ? kGold : kNavy;
  });
}

Colour between(const Colour& from, const Colour& to, double share) {
  const auto mixed = [share](uint8_t a, uint8_t b) {
    return static_cast<uint8_t>(std::lround(a + (b - a) * std::clamp(share, 0.0, 1.0)));
  };
  return {mixed(from.red, to.red), mixed(from.green, to.green), mixed(from.blue, to.blue)};
}

/// Hills at sunset, as a mosaic of 60 by 40 tiles.
Bytes sunsetPicture() {
  constexpr Colour kNight = {0x2B, 0x3A, 0x67}, kGlow = {0xF7, 0xA0, 0x72}, kSun = {0xFF, 0xE0, 0x8A};
  constexpr Colour kFar = {0x6D, 0x59, 0x7A}, kNear = {0x22, 0x2B, 0x45};
  return jpeg(60, 40, [=](double x, double y) {
    if (y > 34 + 3 * std::sin(x / 12 + 3)) return kNear;
    if (y > 27 + 4 * std::sin(x / 8)) return kFar;
    const double fromSun = std::hypot(x - 40, y - 19);
    if (fromSun < 5) return kSun;
    return between(between(kNight, kGlow, y / 27), kSun, 0.6 * std::exp(-(fromSun - 5) / 5));
  });
}

void addGroupAndFloatingPicture(WordDocument& doc, Canvas& canvas, uint32_t picture) {
  doc.paragraph("A group of shapes, with a group in it, and beside it a picture that floats:");
  canvas.anchor(house(canvas), at(0, 0, 200, 160))
      .anchor(canvas.shape(kPictureFrame, Props().number(kPicture, picture)), at(260, 20, 120, 120));
  leaveRoom(doc, 160);
}

void addInlinePictures(WordDocument& doc, Canvas& canvas) {
  doc.paragraph("Pictures stand in the text, such as a star ")
      .special(kPictureMark, canvas.inlinePicture(kPng, starPicture(), 900, 900))
      .run(" or a sunset. ")
      .special(kPictureMark, canvas.inlinePicture(kJpeg, sunsetPicture(), 2700, 1800))
      .ownMark();
}

}  // namespace

void addBulletPicture(Paragraph& paragraph, Canvas& canvas) {
  constexpr uint16_t kVanish = 0x083C;
  paragraph.bookmarkStart("_PictureBullets")
      .special(kPictureMark, canvas.inlinePicture(kPng, starPicture(), 240, 240).add(sprm(kVanish, 1)))
      .bookmarkEnd("_PictureBullets")
      .mark({});  // a hidden one would make the paragraph one with the next
}

void addPictureBullets(WordDocument& doc) {
  ListLevel stars = bulletLevel(u'\u2022', 0, {leftIndent(720), firstLine(-360)});
  stars.chpx = {sprm(0x6887, 0), sprm(0x4888, 1)};  // the first picture of the bookmark
  const uint16_t list = doc.list({.lsid = 40, .levels = {stars}, .simple = true});
  doc.paragraph("A list whose points").sprms({listItem(list, 0)});
  doc.paragraph("are little pictures.").sprms({listItem(list, 0)});
}

void addDrawings(WordDocument& doc, Canvas& canvas) {
  const uint32_t star = canvas.picture(kPng, starPicture());
  heading(doc, kHeading1, "Drawings");
  addShapes(doc, canvas);
  addFills(doc, canvas, star);
  addTextBoxes(doc, canvas);
  addFigures(doc, canvas);
  heading(doc, kHeading1, "Groups and pictures");
  addGroupAndFloatingPicture(doc, canvas, star);
  addInlinePictures(doc, canvas);
}

}  // namespace sample

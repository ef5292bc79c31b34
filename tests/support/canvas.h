#pragma once

#include <cstdint>
#include <vector>

#include "support/drawing_writer.h"
#include "support/word_document_writer.h"

namespace support::drawing {

enum ShapeType : uint16_t {
  kFreeform = 0,
  kRectangle = 1,
  kRoundRectangle = 2,
  kEllipse = 3,
  kLine = 20,
  kPictureFrame = 75,
  kPlainText = 136,  // letters as a figure
  kTextBox = 202,
};

/// The properties that the documents of tests use, by the numbers of the file format.
namespace property {
constexpr uint16_t kTextId = 0x0080;
constexpr uint16_t kWordArtText = 0x00C0, kWordArtSize = 0x00C3, kWordArtFont = 0x00C5;
constexpr uint16_t kWordArtBold = 0x00FA, kIsWordArt = 0x00F1;
constexpr uint16_t kPicture = 0x4104;
constexpr uint16_t kGeometryRight = 0x0142, kGeometryBottom = 0x0143;
constexpr uint16_t kVertices = 0x0145, kSegments = 0x0146;
constexpr uint16_t kFillType = 0x0180, kFillColour = 0x0181, kFillOpacity = 0x0182, kFillBackColour = 0x0183;
constexpr uint16_t kFillPicture = 0x4186, kFillAngle = 0x018B, kFillFocus = 0x018C, kIsFilled = 0x01BB;
constexpr uint16_t kLineColour = 0x01C0, kLineWidth = 0x01CB, kLineStyle = 0x01CD, kLineDashing = 0x01CE;
constexpr uint16_t kLineEndArrow = 0x01D1, kHasLine = 0x01FC;
constexpr uint16_t kShadowColour = 0x0201, kHasShadow = 0x023E;
constexpr uint16_t kExtrusionDepth = 0x0285, kHasExtrusion = 0x02BC;
constexpr uint16_t kHyperlink = 0x0382;
}  // namespace property

constexpr int kEmuPerPoint = 12700;

Props filled(uint32_t colour);
Props outlined(const Props& props, uint32_t colour, double points = 1);

/// By twips, or by the units of a group.
constexpr Rect box(int32_t left, int32_t top, int32_t width, int32_t height) {
  return {left, top, left + width, top + height};
}

enum BlipType : uint8_t { kJpeg = 5, kPng = 6 };

/// The bytes of a hyperlink to an address, or to a bookmark of the document.
Bytes linkToUrl(std::u16string_view url);
Bytes linkToBookmark(std::u16string_view name);

/// Draws into a document while its text is written: counts the positions of the anchors, the numbers of the
/// shapes and pictures, and the lengths of the text boxes.
///
///     Canvas canvas(document);
///     document.paragraph("Look: ");
///     canvas.anchor(canvas.shape(1), {.rect = {0, 0, 2000, 1000}});
///     canvas.finish();
class Canvas {
 public:
  explicit Canvas(WordDocument& document) : document_(document) {}

  /// A shape with a number of its own.
  Shape shape(uint16_t type, const Props& props = {}) { return Shape(type, nextId_++).props(props); }
  /// A shape that shows a story of its own.
  Shape textBox(uint16_t type, const Props& props, const FillStory& fill);
  /// Adds a picture file; the result is its index for properties.
  uint32_t picture(BlipType type, const Bytes& file) { return drawing_.blip(blip(type, file)); }
  /// Anchors a shape at the end of the last paragraph of the main text.
  Canvas& anchor(const Shape& shape, const Place& place);

  /// The run properties of an inline picture, for `Paragraph::special(1, ...)`. Lengths in twips.
  Sprms inlinePicture(BlipType type, const Bytes& file, uint16_t width, uint16_t height);

  /// Writes the tables, when all text and all shapes are there.
  void finish() { drawing_.addTo(document_, textBoxLengths_); }

 private:
  Blip blip(BlipType type, const Bytes& file) { return {.type = type, .data = file, .uid = ++lastUid_}; }

  WordDocument& document_;
  Drawing drawing_;
  std::vector<uint32_t> textBoxLengths_;
  uint32_t nextId_ = 1025;
  uint8_t lastUid_ = 0;
};

}  // namespace support::drawing

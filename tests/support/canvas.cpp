#include "support/canvas.h"

#include <stdexcept>

namespace support::drawing {
namespace {

const Bytes kUrlMoniker = {0xE0, 0xC9, 0xEA, 0x79, 0xF9, 0xBA, 0xCE, 0x11,
                           0x8C, 0x82, 0x00, 0xAA, 0x00, 0x4B, 0xA9, 0x0B};
const Bytes kLinkClass = {0xD0, 0xC9, 0xEA, 0x79, 0xF9, 0xBA, 0xCE, 0x11,
                          0x8C, 0x82, 0x00, 0xAA, 0x00, 0x4B, 0xA9, 0x0B};

/// With the marks of all paragraphs.
uint32_t lengthOf(const Story& story) {
  size_t length = 0;
  for (const auto& paragraph : story.paragraphs())
    length += paragraph->length() + (paragraph->markUnit() ? 1 : 0);
  return static_cast<uint32_t>(length);
}

}  // namespace

Props filled(uint32_t colour) {
  return Props().number(property::kFillColour, colour).flag(property::kIsFilled, true);
}

Props outlined(const Props& props, uint32_t colour, double points) {
  return Props(props)
      .number(property::kLineColour, colour)
      .number(property::kLineWidth, static_cast<uint32_t>(points * kEmuPerPoint))
      .flag(property::kHasLine, true);
}

Bytes linkToUrl(std::u16string_view url) {
  return ByteWriter()
      .bytes(kLinkClass)
      .u32(2)
      .u32(0x03)  // a moniker, absolute
      .bytes(kUrlMoniker)
      .u32(static_cast<uint32_t>(url.size() + 1) * 2)
      .text16(url)
      .u16(0)
      .take();
}

Bytes linkToBookmark(std::u16string_view name) {
  return ByteWriter()
      .bytes(kLinkClass)
      .u32(2)
      .u32(0x08)  // a location
      .u32(static_cast<uint32_t>(name.size() + 1))
      .text16(name)
      .u16(0)
      .take();
}

Shape Canvas::textBox(uint16_t type, const Props& props, const FillStory& fill) {
  Story& story = document_.story(mso_word::SUBDOC_TEXTBOX);
  const uint32_t before = lengthOf(story);
  fill(story);
  textBoxLengths_.push_back(lengthOf(story) - before);
  const auto number = static_cast<uint16_t>(textBoxLengths_.size());
  return shape(type, Props(props).number(property::kTextId, uint32_t{number} << 16)).textBox(number);
}

Canvas& Canvas::anchor(const Shape& shape, const Place& place) {
  if (document_.paragraphs().empty()) throw std::logic_error("an anchor needs a paragraph");
  Paragraph& last = *document_.paragraphs().back();
  drawing_.shape(lengthOf(document_) - 1, shape, place);
  last.special(8);
  return *this;
}

Sprms Canvas::inlinePicture(BlipType type, const Bytes& file, uint16_t width, uint16_t height) {
  return pictureRun(document_, {.shape = shape(kPictureFrame, Props().number(property::kPicture, 1)),
                                .blips = {blip(type, file)},
                                .goalWidth = width,
                                .goalHeight = height});
}

}  // namespace support::drawing

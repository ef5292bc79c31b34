#include "support/drawing_writer.h"

#include <iterator>

namespace support::drawing {
namespace {

/// Places count from the column and the paragraph.
constexpr uint32_t kFromParagraph = 2 << 3 | 2 << 1;

/// The instance of a blip record. One more would tell of a second identity.
uint16_t signatureOf(uint8_t type) {
  constexpr uint16_t kSignatures[] = {0, 0, 0x3D4, 0x216, 0x542, 0x46A, 0x6E0, 0x7A8};
  return type < std::size(kSignatures) ? kSignatures[type] : 0;
}

constexpr uint32_t kGroupBit = 1;
constexpr uint32_t kChildBit = 2;

Bytes joined(const std::vector<Bytes>& parts) {
  ByteWriter all;
  for (const Bytes& part : parts) all.bytes(part);
  return all.take();
}

Bytes rectBytes(const Rect& rect) {
  return ByteWriter()
      .u32(static_cast<uint32_t>(rect.left))
      .u32(static_cast<uint32_t>(rect.top))
      .u32(static_cast<uint32_t>(rect.right))
      .u32(static_cast<uint32_t>(rect.bottom))
      .take();
}

}  // namespace

Bytes record(uint16_t type, uint16_t instance, uint8_t version, const Bytes& body) {
  return ByteWriter()
      .u16(static_cast<uint32_t>(instance << 4 | version))
      .u16(type)
      .u32(static_cast<uint32_t>(body.size()))
      .bytes(body)
      .take();
}

Bytes container(uint16_t type, const std::vector<Bytes>& records) {
  return record(type, 0, 0xF, joined(records));
}

// Properties.

Props& Props::flag(uint16_t id, bool value) {
  const auto group = static_cast<uint16_t>((id & ~63) + 63);
  const unsigned bit = ~id & 15u;
  const uint32_t bits = 1u << (bit + 16) | (value ? 1u << bit : 0u);
  for (Entry& entry : entries_) {
    if (entry.id == group) {
      entry.value |= bits;
      return *this;
    }
  }
  return number(group, bits);
}

Props& Props::text(uint16_t id, std::u16string_view text) {
  return complex(id, ByteWriter().text16(text).u16(0).take());
}

Props& Props::array(uint16_t id, uint16_t count, uint16_t elementSize, const Bytes& elements) {
  return complex(id, ByteWriter().u16(count).u16(count).u16(elementSize).bytes(elements).take());
}

Bytes Props::bytes(uint16_t recordType) const {
  ByteWriter body;
  for (const Entry& entry : entries_) body.u16(entry.id).u32(entry.value);
  for (const Entry& entry : entries_) body.bytes(entry.data);
  return record(recordType, static_cast<uint16_t>(entries_.size()), 3, body.take());
}

// Shapes.

Shape& Shape::at(const Rect& rect) {
  grf_ |= kChildBit;
  return extra(record(0xF00F, 0, 0, rectBytes(rect)));
}

Shape& Shape::textBox(uint16_t number, uint16_t place) {
  return extra(record(0xF00D, 0, 0, ByteWriter().u16(place).u16(number).take()));
}

Shape& Shape::group(const Rect& bounds, const std::vector<Shape>& children) {
  isGroup_ = true;
  grf_ |= kGroupBit;
  bounds_ = bounds;
  children_ = children;
  return *this;
}

Bytes Shape::ownContainer() const {
  std::vector<Bytes> records;
  if (isGroup_) records.push_back(record(0xF009, 0, 1, rectBytes(bounds_)));
  records.push_back(record(0xF00A, type_, 2, ByteWriter().u32(id_).u32(grf_).take()));
  if (!props_.empty()) records.push_back(props_.bytes(0xF00B));
  if (!userProps_.empty()) records.push_back(userProps_.bytes(0xF122));
  records.insert(records.end(), extra_.begin(), extra_.end());
  return container(0xF004, records);
}

Bytes Shape::bytes() const {
  if (!isGroup_) return ownContainer();
  std::vector<Bytes> records = {ownContainer()};
  for (const Shape& child : children_) records.push_back(child.bytes());
  return container(0xF003, records);
}

// Pictures.

Bytes threeBytes() {
  return {1, 2, 3};
}

Bytes Blip::bytes() const {
  ByteWriter body;
  body.fill(16, uid);
  if (isMetafile()) {
    body.u32(rawSize).zeros(24).u32(static_cast<uint32_t>(data.size())).u8(compression).u8(0xFE);
  } else {
    body.u8(0xFF);
  }
  return record(static_cast<uint16_t>(0xF018 + type), signatureOf(type), 0, body.bytes(data).take());
}

Bytes Blip::entry(uint32_t delayOffset) const {
  const Bytes blip = bytes();
  ByteWriter body;
  body.u8(type).u8(type).fill(16, uid).u16(0xFF).u32(static_cast<uint32_t>(blip.size())).u32(1);
  body.u32(delayOffset).zeros(4);
  if (!delayed) body.bytes(blip);
  return record(0xF007, type, 2, body.take());
}

// The document.

Bytes placeBytes(uint32_t shapeId, const Place& place) {
  constexpr uint16_t kBehindText = 1 << 14;
  return ByteWriter()
      .u32(shapeId)
      .bytes(rectBytes(place.rect))
      .u16(place.wrap << 5 | kFromParagraph | (place.isBehindText ? kBehindText : 0))
      .u32(0)
      .take();
}

Bytes drawingContainer(uint32_t rootShape, const std::vector<Bytes>& shapes) {
  std::vector<Bytes> group = {Shape(0, rootShape).flags(4).group({}, {}).ownContainer()};
  group.insert(group.end(), shapes.begin(), shapes.end());
  return container(0xF002, {record(0xF008, 1, 0, Bytes(8)), container(0xF003, group)});
}

Bytes groupContainer(const std::vector<Bytes>& blipEntries) {
  std::vector<Bytes> records = {record(0xF006, 0, 0, Bytes(16))};
  if (!blipEntries.empty()) records.push_back(container(0xF001, blipEntries));
  return container(0xF000, records);
}

std::vector<Shape> textBoxes(WordDocument& document, const std::vector<uint32_t>& shapeIds,
                             const FillStory& fill, bool inHeader) {
  constexpr uint16_t kTextBox = 202, kTextId = 0x0080, kNextShape = 0x008A;
  TextBoxText& text = document.addTextBox(inHeader);
  const uint16_t number = document.textBoxCount(inHeader);
  text.shapeId = shapeIds.at(0);
  text.boxCount = static_cast<uint32_t>(shapeIds.size());
  fill(text.story);
  std::vector<Shape> shapes;
  for (uint16_t place = 0; place < shapeIds.size(); ++place) {
    Props props;
    props.number(kTextId, uint32_t{number} << 16 | place);
    if (place + 1u < shapeIds.size()) props.number(kNextShape, shapeIds[place + 1u]);
    shapes.push_back(Shape(kTextBox, shapeIds[place]).props(props).textBox(number, place));
  }
  return shapes;
}

Drawing& Drawing::shape(uint32_t cp, const Shape& shape, const Place& place) {
  shapes_.push_back(shape);
  return anchor(cp, shape.id(), place);
}

Drawing& Drawing::shape(const Shape& shape) {
  shapes_.push_back(shape);
  return *this;
}

Drawing& Drawing::anchor(uint32_t cp, uint32_t shapeId, const Place& place) {
  anchors_[cp] = placeBytes(shapeId, place);
  return *this;
}

uint32_t Drawing::blip(const Blip& blip) {
  blips_.push_back(blip);
  return static_cast<uint32_t>(blips_.size());
}

Bytes Drawing::table(WordDocument& document) const {
  std::vector<Bytes> entries;
  for (const Blip& blip : blips_) {
    entries.push_back(blip.entry(blip.delayed ? document.wordDocumentData(blip.bytes()) : 0));
  }
  std::vector<Bytes> shapes;
  for (const Shape& shape : shapes_) shapes.push_back(shape.bytes());
  return ByteWriter().bytes(groupContainer(entries)).u8(0).bytes(drawingContainer(1024, shapes)).take();
}

void Drawing::addTo(WordDocument& document, const std::vector<uint32_t>& textBoxLengths) const {
  document.table(mso_word::FCLCB_DRAWINGS, table(document));
  if (!anchors_.empty()) {
    std::vector<uint32_t> positions;
    std::vector<Bytes> records;
    for (const auto& [cp, bytes] : anchors_) {
      positions.push_back(cp);
      records.push_back(bytes);
    }
    positions.push_back(positions.back() + 1);
    document.table(mso_word::FCLCB_SHAPE_ANCHORS, positionTable(positions, records));
  }
  if (!textBoxLengths.empty()) {
    std::vector<uint32_t> positions = {0};
    for (const uint32_t length : textBoxLengths) positions.push_back(positions.back() + length);
    const std::vector<Bytes> records(textBoxLengths.size(), Bytes(22));
    document.table(mso_word::FCLCB_TEXTBOXES, positionTable(positions, records));
  }
}

Bytes Inline::bytes() const {
  ByteWriter body;
  if (mm == 102) body.u8(3).text8("pic");
  body.bytes(shape.bytes());
  for (const Blip& blip : blips) body.bytes(blip.entry());
  const Bytes rest = body.take();
  ByteWriter picf;
  picf.u32(static_cast<uint32_t>(68 + rest.size())).u16(68).u16(static_cast<uint32_t>(mm)).zeros(6);
  picf.u16(static_cast<uint32_t>(kind)).zeros(12);
  picf.u16(goalWidth).u16(goalHeight).u16(scaleX).u16(scaleY).zeros(32);
  return picf.bytes(rest).take();
}

Sprms pictureRun(WordDocument& document, const Inline& picture) {
  return {sprm(0x6A03, document.data(picture.bytes()))};
}

}  // namespace support::drawing

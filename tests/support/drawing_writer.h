#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "support/bytes.h"
#include "support/word_document_writer.h"

/// Makes the drawings of test documents: records of the drawing layer, shapes, pictures, and the tables that
/// tie them to the text.
namespace support::drawing {

/// A record: version in the low 4 bits of the first word, instance above it.
Bytes record(uint16_t type, uint16_t instance, uint8_t version, const Bytes& body);
Bytes container(uint16_t type, const std::vector<Bytes>& records);

/// A property table, in the order in which the properties are given.
class Props {
 public:
  Props& number(uint16_t id, uint32_t value) { return add(id, value, {}); }
  /// A 16.16 value.
  Props& fixed(uint16_t id, double value) {
    return number(id, static_cast<uint32_t>(static_cast<int32_t>(value * 65536)));
  }
  /// Flags of one group share a property: its value bits and the bits that say that they count.
  Props& flag(uint16_t id, bool value);
  Props& complex(uint16_t id, const Bytes& data) {
    return add(static_cast<uint16_t>(id | 0x8000), static_cast<uint32_t>(data.size()), data);
  }
  Props& text(uint16_t id, std::u16string_view text);
  /// An array: count, count, element size, elements.
  Props& array(uint16_t id, uint16_t count, uint16_t elementSize, const Bytes& elements);
  bool empty() const { return entries_.empty(); }
  Bytes bytes(uint16_t recordType) const;

 private:
  struct Entry {
    uint16_t id;
    uint32_t value;
    Bytes data;
  };
  Props& add(uint16_t id, uint32_t value, const Bytes& data) {
    entries_.push_back({id, value, data});
    return *this;
  }
  std::vector<Entry> entries_;
};

struct Rect {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;
};

/// A shape, or with children a group. A shape in a group is a child by its bit and by its anchor.
class Shape {
 public:
  explicit Shape(uint16_t type, uint32_t id = 1025) : type_(type), id_(id) {}

  Shape& props(const Props& props) {
    props_ = props;
    return *this;
  }
  Shape& userProps(const Props& props) {
    userProps_ = props;
    return *this;
  }
  Shape& flip(bool x, bool y) {
    grf_ |= (x ? 0x40u : 0u) | (y ? 0x80u : 0u);
    return *this;
  }
  Shape& flags(uint32_t grf) {
    grf_ |= grf;
    return *this;
  }
  /// Makes it a child with this place in the group.
  Shape& at(const Rect& rect);
  /// Names the text box, from 1, and its place in a chain of boxes.
  Shape& textBox(uint16_t number, uint16_t place = 0);
  /// Makes it a group with this coordinate space.
  Shape& group(const Rect& bounds, const std::vector<Shape>& children);
  /// Adds a record to the shape's container.
  Shape& extra(const Bytes& record) {
    extra_.push_back(record);
    return *this;
  }

  uint32_t id() const { return id_; }
  /// The container, with its header.
  Bytes bytes() const;
  /// Without the children of a group.
  Bytes ownContainer() const;

 private:
  uint16_t type_;
  uint32_t id_;
  uint32_t grf_ = 0xA00;
  bool isGroup_ = false;
  Rect bounds_;
  std::vector<Shape> children_;
  Props props_, userProps_;
  std::vector<Bytes> extra_;
};

/// 1, 2, 3: as good as a picture to what only passes it on.
Bytes threeBytes();

/// A picture of the blip store.
struct Blip {
  uint8_t type = 6;            ///< 2 EMF, 3 WMF, 5 JPEG, 6 PNG, 7 DIB
  Bytes data = threeBytes();   ///< as stored
  uint8_t uid = 0x11;          ///< all 16 bytes of the identity
  uint32_t rawSize = 0;        ///< of a metafile
  uint8_t compression = 0xFE;  ///< of a metafile: 0 deflated, 0xFE stored
  bool delayed = false;        ///< kept in "WordDocument" instead of the store

  bool isMetafile() const { return type >= 2 && type <= 4; }
  /// The blip record.
  Bytes bytes() const;
  /// The entry that embeds it, as the store and inline pictures have it.
  Bytes entry(uint32_t delayOffset = 0) const;
};

/// The place of a floating shape, twips.
struct Place {
  Rect rect = {};
  uint16_t wrap = 3;
  bool isBehindText = false;
};
/// The anchor of a shape (FSPA).
Bytes placeBytes(uint32_t shapeId, const Place& place);

/// A drawing of these shapes, and the group of all drawings with its store of pictures.
Bytes drawingContainer(uint32_t rootShape, const std::vector<Bytes>& shapes);
Bytes groupContainer(const std::vector<Bytes>& blipEntries);

/// Anchors a shape at the end of a paragraph, of the text or of a header: the document writes the tables.
inline Paragraph& addShape(Paragraph& paragraph, const Shape& shape, const Place& place = {}) {
  return paragraph.floating(placeBytes(shape.id(), place), shape.bytes());
}
/// Text boxes that a story flows through, one for each number of a shape.
std::vector<Shape> textBoxes(WordDocument& document, const std::vector<uint32_t>& shapeIds,
                             const FillStory& fill, bool inHeader = false);
/// A text box with a story of its own.
inline Shape textBox(WordDocument& document, uint32_t shapeId, const FillStory& fill, bool inHeader = false) {
  return textBoxes(document, {shapeId}, fill, inHeader)[0];
}

/// Collects the top-level shapes of a document's main drawing, their anchors and pictures.
///
///     WordDocument document;
///     Drawing drawing;
///     document.paragraph().special(8);
///     drawing.shape(0, Shape(1), {.rect = {0, 0, 2000, 1000}});
///     drawing.addTo(document);
class Drawing {
 public:
  /// A shape that is anchored at a character position of the main text.
  Drawing& shape(uint32_t cp, const Shape& shape, const Place& place = {});
  /// A shape without anchor.
  Drawing& shape(const Shape& shape);
  /// An anchor for any shape number; the range ends at the next anchor.
  Drawing& anchor(uint32_t cp, uint32_t shapeId, const Place& place = {});
  /// Adds a picture; the result is its index, from 1.
  uint32_t blip(const Blip& blip);
  /// Writes the tables. Text boxes of the story are told by `textBoxes`: their lengths in characters.
  void addTo(WordDocument& document, const std::vector<uint32_t>& textBoxLengths = {}) const;
  /// The drawing group and the main drawing, as they stand in the table stream.
  Bytes table(WordDocument& document) const;

 private:
  std::vector<Shape> shapes_;
  std::map<uint32_t, Bytes> anchors_;
  std::vector<Blip> blips_;
};

/// An inline picture as it lies in "Data".
struct Inline {
  Shape shape = Shape(75);
  std::vector<Blip> blips = {};
  uint16_t goalWidth = 1440;  ///< twips
  uint16_t goalHeight = 720;
  uint16_t scaleX = 1000;  ///< per thousand
  uint16_t scaleY = 1000;
  int16_t mm = 100;
  int16_t kind = 0;  ///< the word at offset 14: 2 for no fallback
  Bytes bytes() const;
};

/// Adds the picture to the document and returns the properties of the run that shows it.
Sprms pictureRun(WordDocument& document, const Inline& picture);

}  // namespace support::drawing

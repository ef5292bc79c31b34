#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "support/bytes.h"

/// Writes the records of drawings (Escher), piece by piece: each function gives the bytes of one record, and
/// `joined` puts them together.
namespace escher {

using support::Bytes;
using support::ByteWriter;

Bytes joined(std::initializer_list<Bytes> parts);

/// A record: 8 bytes of header, and the body.
Bytes atom(uint16_t type, uint16_t instance, const Bytes& body);
/// A record that holds records.
Bytes container(uint16_t type, std::initializer_list<Bytes> records);

// --- Shapes ---
/// FSP: the identity of a shape, and its flags (1 group, 2 child, 0x40 and 0x80 flipped).
Bytes fsp(uint16_t type, uint32_t id, uint32_t flags = 0xA00);
/// Shape container.
Bytes shape(std::initializer_list<Bytes> records);
/// Shape container of a picture frame with this identity and nothing else.
Bytes plainShape(uint32_t id);
/// Group container: the group's own shape container, with these bounds, then the children.
Bytes group(uint32_t id, std::initializer_list<Bytes> children);
Bytes groupBounds(int32_t left, int32_t top, int32_t right, int32_t bottom);
Bytes childAnchor(int32_t left, int32_t top, int32_t right, int32_t bottom);
Bytes clientTextBox(uint32_t reference);

/// A property: the number with its flags, and either the operand or complex data.
struct ShapeProperty {
  uint16_t word = 0;
  uint32_t operand = 0;
  Bytes data = {};
};
ShapeProperty complexProperty(uint16_t id, const Bytes& data);
ShapeProperty textProperty(uint16_t id, std::u16string_view text);
/// An array property. The size of an element is written as it is given; the elements follow.
ShapeProperty arrayProperty(uint16_t id, uint16_t count, uint16_t elementSize, const Bytes& elements);
/// Property table: 0xF00B the shape's own, 0xF122 the user's.
Bytes propertyTable(const std::vector<ShapeProperty>& properties, uint16_t type = 0xF00B);

// --- Pictures ---
/// A bitmap's record: identities of 16 bytes of 0xA1, a tag, the image. `kind` counts from 0xF018: 5 JPEG, 6
/// PNG.
Bytes bitmapBlip(uint16_t kind, const Bytes& image, bool twoIdentities = false);
/// A metafile's record: identities, a header of 34 bytes with the image's size, the image. `kind` 2 EMF, 3
/// WMF.
Bytes metafileBlip(uint16_t kind, const Bytes& image, bool twoIdentities = false);
/// An entry of the blip store, with its record header. Its kind is the instance.
struct BlipEntry {
  uint16_t kind = 6;
  uint32_t references = 1;
  uint32_t delayOffset = 0;
  uint8_t nameBytes = 0;
  Bytes blip = {};         ///< embedded
  uint32_t sizeAdded = 0;  ///< to the size that is written
};
Bytes fbse(const BlipEntry& entry);

// --- Where they stand ---
/// The drawing group of a document with these entries in its blip store.
Bytes drawingGroup(std::initializer_list<Bytes> entries);
/// A drawing with its label: 0 the main document's, 1 that of the headers.
Bytes drawing(uint8_t label, std::initializer_list<Bytes> records);
/// An inline picture of the "Data" stream: PICF, a name if `kind` is 102, the shape container, the blip list.
Bytes inlinePicture(const Bytes& shapeContainer, const Bytes& blips = {}, int16_t kind = 100,
                    std::string_view name = {});

}  // namespace escher

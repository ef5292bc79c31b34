#pragma once

#include <cstdint>
#include <vector>

#include "drawing/shape.h"
#include "flow/shape_facts.h"

namespace pagerex {

/// The properties of a shape: its own, those of its master, and those of all shapes of the document. The
/// tables must outlive it.
class ShapeProperties {
 public:
  using Table = mso_escher::MsoROShapeOPT;
  using Property = mso_escher::MsoROShapeProp;

  /// What stands in an earlier table counts.
  void Add(const Table& table);
  /// Before anything is asked.
  void Sort();

  int32_t Number(PID id, int32_t otherwise) const;
  float Fixed(PID id, float otherwise) const;
  bool Flag(PID id, bool otherwise) const;
  /// Null where it is not told.
  const Property* Find(PID id) const;

 private:
  using Iterator = std::vector<Property>::const_iterator;
  std::pair<Iterator, Iterator> AllOf(PID id) const;

  std::vector<Property> properties_;
};

/// An OfficeArtCOLORREF as 0xRRGGBB. Some stand for another colour of the shape, or are made from it.
uint32_t shapeColour(const ShapeProperties& properties, PID id, uint32_t otherwise);

/// Everything but `box` and the place of the anchor.
void readShape(const mso_escher::MsoROShape& shape, const ShapeProperties& properties, ShapeFacts& out);
/// Sides, references and distances that stand at the shape.
void readShapePlace(const ShapeProperties& properties, ShapePlace& out);
/// Whether it has a fill, and which colour one sees most of.
bool hasFill(const ShapeProperties& properties, uint16_t type);

/// The rows of a pattern of 8 by 8 black and white pixels; zeros for any other picture.
std::array<uint8_t, 8> patternOf(ByteView dib);

}  // namespace pagerex

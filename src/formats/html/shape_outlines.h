#pragma once

#include "flow/shape_facts.h"
#include "formats/html/shape_path.h"

namespace pagerex {

/// The outline of a shape of this size: of its type, or of a freeform as the file has it. Twips from its left
/// upper corner, before flips and turns. False for one that is not known.
bool shapeOutline(const ShapeGeometry& shape, double width, double height, ShapePath& out);

/// Where its text stands, in the same way; all of it where nothing else is known.
ShapeBox shapeTextBox(const ShapeGeometry& shape, double width, double height);

/// Of a freeform: its vertices and segments.
bool freeformOutline(const ShapeGeometry& shape, double width, double height, ShapePath& out);

/// Types of shapes, their outlines below each other: see shape_outlines.cpp.
extern const char* const kShapeOutlines;

}  // namespace pagerex

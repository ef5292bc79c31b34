#pragma once

#include <string>

#include "flow/shape_facts.h"

namespace pagerex {

/// Whether the shape is lettering: its text fills it.
bool isWordArt(const ShapeFacts& shape);

/// The text as `text` elements, one for each line, stretched to the size; fill and line come from around it.
void appendWordArt(std::string& out, const ShapeArt& art, double width, double height);

}  // namespace pagerex

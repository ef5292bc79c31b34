#pragma once

#include <string>

#include "flow/shape_facts.h"
#include "formats/html/shape_path.h"

namespace pagerex {

/// Writes the heads of a line of this width, twips, at the ends of open parts, and makes the parts end in
/// them. `out` gets elements; they take the colour from `line`.
void appendArrowheads(std::string& out, const ShapeLine& line, double width, ShapePath& path);

}  // namespace pagerex

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "formats/html/shape_path.h"

namespace pagerex {

/// Pieces of SVG. Lengths are written as whole twips.

void appendLength(std::string& out, double length);
/// With two digits behind the point.
void appendDecimal(std::string& out, double value);
void appendPoint(std::string& out, PathPoint point);
/// `#rrggbb`.
void appendRgb(std::string& out, uint32_t rgb);
/// 0 to 1, with three digits.
void appendPart(std::string& out, double part);
/// ` name="..."`.
void appendLengthAttribute(std::string& out, std::string_view name, double length);
void appendRgbAttribute(std::string& out, std::string_view name, uint32_t rgb);
/// Nothing for 1, which is the usual.
void appendOpacity(std::string& out, std::string_view name, double opacity);
/// The steps as the value of `d`.
void appendSteps(std::string& out, const ShapePath::Part& part);
/// As text or the value of an attribute in quotes. What no document may hold is left out.
void appendEscaped(std::string& out, std::u16string_view text);
/// UTF-8.
void appendEscaped(std::string& out, std::string_view text);

/// `share` of the second colour in the first.
uint32_t mixedRgb(uint32_t first, uint32_t second, double share);

}  // namespace pagerex

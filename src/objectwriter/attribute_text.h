#pragma once

#include <initializer_list>
#include <string>

#include "base/number_text.h"
#include "base/write_archive.h"
#include "objectwriter/shape_props.h"

namespace ObjectWriter {

/// "%df": a 16.16 fraction as VML takes it.
inline NumberText fractionText(int value) {
  return NumberText().appendInt(value).append('f');
}

/// "%.2fpt".
inline NumberText pointText(double points) {
  return NumberText().appendFixed(points, 2).append("pt");
}

/// Numbers with a comma between them, each with its unit.
LongNumberText joinedNumbers(std::initializer_list<double> values, int decimals, const char* unit = "");
LongNumberText joinedIntegers(std::initializer_list<int> values);

/// Lengths in EMU as "%.2fpt,%.2fpt".
LongNumberText joinedPoints(std::initializer_list<int> lengths);

/// A colour of the drawing format; empty for a kind that has no text.
std::string colourText(int colour);

/// The difference of two 32-bit values of a file, which wraps.
constexpr int wrappedDifference(int a, int b) {
  return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}

/// How the operand of a property becomes the value of an attribute.
enum class Form {
  kInteger,      ///< "%d"
  kFraction,     ///< "%df"
  kColour,       ///< by `colourText`
  kPoints,       ///< EMU, "%.2fpt"
  kEmuDouble,    ///< EMU in points, as a double
  kWholeFixed,   ///< 16.16, truncated, "%d"
  kFixedDouble,  ///< 16.16 as a double
  kWord,         ///< by a table of words
};

/// An attribute that is written if its property is present.
struct AttributeRow {
  const char* name;
  PID id;
  Form form;
  const char* (*word)(int) = nullptr;  ///< for kWord
};

/// Writes the attributes of a table, in its order.
void writeAttribute(IWriteArchive* archive, const ShapeProps& props, const AttributeRow& row);
template <size_t N>
void writeAttributes(IWriteArchive* archive, const ShapeProps& props, const AttributeRow (&rows)[N]) {
  for (const AttributeRow& row : rows) writeAttribute(archive, props, row);
}

}  // namespace ObjectWriter

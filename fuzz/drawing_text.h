#pragma once

#include <cstddef>
#include <cstdint>

#include "support/word_document_writer.h"

/// The document around the drawings that the drawing fuzzer makes up.
namespace fuzz {

struct DrawingInput {
  support::Bytes table;  ///< drawing group and drawings
  support::Bytes data;   ///< the "Data" stream, with the pictures that stand in the line
};

/// 32 bits of the table's length, the table, the data.
DrawingInput splitDrawing(const uint8_t* input, size_t size);
support::Bytes joinDrawing(const DrawingInput& drawing);

constexpr uint32_t kFirstShapeId = 1025;
constexpr uint32_t kShapeCount = 8;

support::WordDocument documentWith(const DrawingInput& drawing);

}  // namespace fuzz

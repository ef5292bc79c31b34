#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "support/word_layout.h"
#include "support/word_text.h"
#include "support/word_text_tables.h"

namespace support {

/// The text of one text box, or of a chain of boxes that it flows through.
struct TextBoxText {
  Story story = {};
  uint32_t shapeId = 0;  ///< of the first box
  uint32_t boxCount = 1;
};
using TextBoxTexts = std::vector<std::unique_ptr<TextBoxText>>;

/// Makes the tables of what floats: anchors of the text and of headers, both drawings with their shapes, and
/// where each text box has its text. Those that would be empty are left out.
void addDrawingTables(const FlatText& text, const std::vector<Bytes>& storedPictures, TableSet& tables);
/// `type` is the story of text boxes, which lie in `boxes`, one part each.
void addTextBoxTables(const FlatText& text, uint32_t type, const TextBoxTexts& boxes, TableSet& tables);

}  // namespace support

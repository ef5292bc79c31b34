#pragma once

#include <cstdint>

/// Characters of the text that stand for something else. Those that a run of its own marks as special
/// (sprmCFSpec) are marks there only.
namespace text_mark {

constexpr uint16_t kPicture = 1;        ///< special: an inline picture or an OLE object
constexpr uint16_t kNoteReference = 2;  ///< special: a footnote or an endnote
constexpr uint16_t kAnnotation = 5;     ///< special: a comment
constexpr uint16_t kCellEnd = 7;        ///< ends a table cell, or a row
constexpr uint16_t kDrawnObject = 8;    ///< special: a floating shape
constexpr uint16_t kPageBreak = 12;     ///< a page break, or the end of a section
constexpr uint16_t kParagraphEnd = 13;
constexpr uint16_t kFieldBegin = 19;  ///< special, as are the next two
constexpr uint16_t kFieldSeparator = 20;
constexpr uint16_t kFieldEnd = 21;

}  // namespace text_mark

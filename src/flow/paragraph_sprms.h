#pragma once

#include <cstdint>

#include "base/byte_view.h"
#include "flow/properties.h"

namespace pagerex {

/// Applies a list of paragraph sprms (grpprl) to `properties`.
void applyParagraphSprms(ByteView sprms, ParagraphProperties& properties);

/// Where a paragraph stands in tables.
struct TablePlace {
  uint8_t depth = 0;            ///< 0 outside of tables
  bool isRowEnd = false;        ///< the mark that ends a row of depth 1: it has no text
  bool isInnerCellEnd = false;  ///< its mark ends a cell of depth 2 or more
  bool isInnerRowEnd = false;   ///< the mark that ends a row of depth 2 or more
};

/// Continues from `place`, so that a style's or piece's list can be put in front of or behind a paragraph's.
TablePlace tablePlaceOf(ByteView sprms, TablePlace place = {});

/// What each paragraph is asked for before anything else, in one quick look at its list.
struct ParagraphOutline {
  TablePlace place;
  bool isHuge = false;  ///< as hugeOffset
  uint32_t hugeOffset = 0;
};
ParagraphOutline outlineOf(ByteView sprms, TablePlace place = {});

/// Whether the list is kept elsewhere because it is long: `offset` in the stream "Data", where a 16-bit
/// length and then the list stand. That list takes the place of the whole one.
bool hugeOffset(ByteView sprms, uint32_t& offset);

/// The style and the list that sprms set; what they do not set stays.
struct ParagraphNames {
  uint16_t style = 0;
  bool setsStyle = false;  ///< what stood at the paragraph before does not count any more
  int16_t listNumber = 0;  ///< ilfo; negative where the list's indents do not count
  uint8_t listLevel = 0;
  bool setsList = false;  ///< they set the number or the level
};
void readParagraphNames(ByteView sprms, ParagraphNames& names);

}  // namespace pagerex

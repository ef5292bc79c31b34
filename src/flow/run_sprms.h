#pragma once

#include "base/byte_view.h"
#include "flow/properties.h"

namespace pagerex {

/// Applies a list of character sprms (grpprl) to `properties`. Toggles that ask for the value of the style,
/// or its opposite, are judged against `style`.
void applyRunSprms(ByteView sprms, RunProperties& properties, const RunProperties& style);

/// The character style that a list names; `style` where it names none.
uint16_t characterStyleOf(ByteView sprms, uint16_t style = 10);

/// A symbol that stands in the place of the run's characters.
struct RunSymbol {
  bool isThere = false;
  uint16_t font = 0;  ///< index in the font table
  char16_t character = 0;
};

/// What a run's list says beside its look.
struct RunSpecials {
  bool isSpecial = false;    ///< its characters 1 to 8 and 40 stand for something
  bool isFieldData = false;  ///< sprmCFData: character 1 has form field data
  bool isOle = false;        ///< sprmCFOle2
  bool hasPicture = false;
  uint32_t pictureOffset = 0;  ///< in the stream "Data"
  RunSymbol symbol;
};
RunSpecials specialsOf(ByteView sprms);

}  // namespace pagerex

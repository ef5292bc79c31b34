#pragma once

#include "base/byte_view.h"
#include "flow/properties.h"

namespace pagerex {

/// Applies a list of section sprms (grpprl of a SEPX) to `properties`.
void applySectionSprms(ByteView sprms, SectionProperties& properties);

}  // namespace pagerex

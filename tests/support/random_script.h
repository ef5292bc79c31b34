#pragma once

#include <cstdint>

#include "flow/handler.h"

namespace support {

/// Tells a document that nobody would write: every call that the walk may make, in any order that it may make
/// them in, with a bit of everything. The same one for each seed.
void tellRandomDocument(pagerex::FlowHandler& handler, uint32_t seed);

}  // namespace support

#pragma once

#include "flow/handler.h"
#include "formats/format.h"

namespace pagerex {

/// Walks the document of a job, with what the host chose, and counts what is told.
void walkFor(FormatJob& job, FlowHandler& writer);

}  // namespace pagerex

#pragma once

#include "json.h"
#include "pagerex/convert.h"

namespace cli {

/// What a document says of itself, as an object "summary" with what is told.
void putSummary(JsonWriter& json, const pagerex_summary& summary);

}  // namespace cli

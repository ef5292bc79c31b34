#pragma once

#include <string_view>

#include "formats/format.h"

namespace pagerex {

/// The formats in the order in which hosts see them; null behind the last.
const Format* formatAt(int index);
/// The format of that name; the first one for an empty name; null if there is none.
const Format* formatNamed(std::string_view name);

}  // namespace pagerex

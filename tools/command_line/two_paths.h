#pragma once

#include "request.h"

namespace cli {

/// SOURCE TARGET: the pages of a view, by the library's first calls. Returns the exit code.
int convertTwoPaths(const Request& request);

}  // namespace cli

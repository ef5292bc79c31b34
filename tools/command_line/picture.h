#pragma once

#include "request.h"

namespace cli {

/// A picture from a file or from standard input, as browsers show it, to a file or to standard output.
/// Returns the exit code.
int convertPicture(const Request& request);

}  // namespace cli

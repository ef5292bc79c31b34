#pragma once

#include <string>

#include "batch.h"
#include "request.h"

namespace cli {

/// A document from a file or from standard input, to a file or to standard output. Returns the exit code.
int convertOneDocument(const Request& request);

/// Tells what each file is, one line of JSON for each. Returns the exit code.
int tellInfo(const Request& request);

}  // namespace cli

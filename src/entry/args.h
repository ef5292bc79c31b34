#pragma once

#include <string>

#include "base/status.h"

/// Options of the form name=value.
struct args {
  /// Splits one option; both outputs are emptied first. kInvalidArgument for null; kFailure when there is not
  /// just one "=" or nothing stands before or behind it.
  static Status ParseArg(const char* arg, std::string& name, std::string& value);
};

#pragma once

#include "request.h"

namespace cli {

/// Reads the arguments into `request`. True if they make sense; else it has been said why not, and `exitCode`
/// is that of the program.
bool readArguments(int argc, char** argv, Request& request, int& exitCode);

}  // namespace cli

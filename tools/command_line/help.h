#pragma once

#include <string>

namespace cli {

/// To standard output; `all` with every option.
void printHelp(bool all);

/// To standard error, with the uses of the command line; returns the exit code.
int usageError(const std::string& message);
/// For SOURCE and TARGET.
int twoPathsUsageError(const std::string& message);
/// The uses alone, to standard error.
void printUsage(bool ofTwoPaths);

void printVersion();

}  // namespace cli

#pragma once

#include <string>

namespace cli {

/// Prints "pagerex: " and the message to standard error; returns the exit code.
int fail(int exitCode, const std::string& message);

/// A path for a message: what a terminal would take for a command, or would break the line, is escaped.
std::string shown(const std::string& path);

}  // namespace cli

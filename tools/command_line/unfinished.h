#pragma once

#include <sys/types.h>

#include <string>

namespace cli {

/// Removes what a process that is gone has left of the result at `output`: the library makes results under
/// names ".NAME.PROCESS-NUMBER.part" in the folder of the result.
void removeUnfinished(const std::string& output, pid_t process);

}  // namespace cli

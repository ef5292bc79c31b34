#pragma once

#include <map>
#include <string>
#include <vector>

namespace support {

/// All that a folder holds: kind, content or target of each name, relative to it. `except` and what lies
/// below are left out.
using Snapshot = std::map<std::string, std::string>;
Snapshot snapshotOf(const std::string& folder, const std::vector<std::string>& except = {});

/// The names that are new (+), different (*) and missing (-): empty for none.
std::string differences(const Snapshot& got, const Snapshot& wanted);

}  // namespace support

#pragma once

#include <string>

#include "pagerex/convert.h"

namespace cli {

/// Null if there is none.
const pagerex_format* formatNamed(const std::string& name);
/// The first whose main file ends so, in whatever case.
const pagerex_format* formatOfEnding(const std::string& path);
const pagerex_format* firstSingleFile();

}  // namespace cli

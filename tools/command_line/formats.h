#pragma once

#include <string>

#include "pagerex/convert.h"
#include "request.h"

namespace cli {

/// Null if there is none.
const pagerex_format* formatNamed(const std::string& name);
/// The first whose main file ends so, in whatever case.
const pagerex_format* formatOfEnding(const std::string& path);
/// What is shown where nobody says what to write.
const pagerex_format* formatToShow();

/// What the library is to be asked for.
pagerex_options optionsOf(const Request& request, const pagerex_format& format);
/// The same in words, as reports have it: what differs from what is usual.
std::string wordsFor(const Request& request, const pagerex_format& format);

}  // namespace cli

#pragma once

#include <string>

#include "pagerex/convert.h"
#include "request.h"

namespace cli {

/// Null if there is none.
const pagerex_format* formatNamed(const std::string& name);
/// The last whose main file ends so, in whatever case: the views of old come first, and are asked for by
/// name.
const pagerex_format* formatOfEnding(const std::string& path);
/// What is written where nobody says what.
const pagerex_format* formatByDefault();
/// Whether the page is cut into several files.
bool comesInPieces(const Request& request, const pagerex_format& format);
/// Whether pictures stand in the main file, unless it is said where they go.
bool hasItsPictures(const pagerex_format& format);

/// What the library is to be asked for.
pagerex_options optionsOf(const Request& request, const pagerex_format& format);
/// The same in words, as reports have it: what differs from what is usual.
std::string wordsFor(const Request& request, const pagerex_format& format);

}  // namespace cli

#pragma once

#include <string_view>

#include "base/number_text.h"

namespace pagerex {

/// Room for a path in the files folder. A path that does not fit is empty, which no file opens: a cut path
/// could name a file outside the folder.
using PathText = FixedText<260>;

/// "%s/%s".
PathText outputPath(std::string_view folder, std::string_view name);
/// "%s/%d.htm".
PathText pagePath(std::string_view folder, int page);

}  // namespace pagerex

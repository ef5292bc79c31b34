#pragma once

#include "formats/format.h"

namespace pagerex {

/// One page for any browser of today; with a page size, in pieces that together are that page.
Status writeHtml(FormatJob& job);

}  // namespace pagerex

#pragma once

#include "formats/format.h"

namespace pagerex {

/// Writes the headings of a document, each with the count of words below it, up to the next one.
Status writeWordCount(FormatJob& job);

}  // namespace pagerex

#pragma once

#include "pagerex/convert.h"
#include "wordreader/word_file.h"

namespace pagerex {

/// What a document says of itself, as hosts are told. Throws std::bad_alloc.
pagerex_summary summaryOf(WordFile& file);

}  // namespace pagerex

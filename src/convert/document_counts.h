#pragma once

#include "base/run_control.h"
#include "pagerex/convert.h"
#include "wordreader/word_file.h"

class KDRDocument;

namespace pagerex {

/// Counts what a document holds, without writing it. Reads its tables; throws as they do.
pagerex_counts countContents(const KDRDocument& document);

/// The same of a document that only the walk can read. Throws std::bad_alloc.
pagerex_counts countByWalk(WordFile& file, RunControl& control);

}  // namespace pagerex

#pragma once

#include "pagerex/convert.h"

class KDRDocument;

namespace pagerex {

/// Counts what a document holds, without writing it. Reads its tables; throws as they do.
pagerex_counts countContents(const KDRDocument& document);

}  // namespace pagerex

#pragma once

#include <string>

#include "pagerex/convert.h"
#include "support/bytes.h"

namespace safety {

/// What became of a document in the format "html".
struct OnePage {
  int result = 0;  ///< PAGEREX_RESULT_...
  std::string text;
};

/// Writes a document as one page in memory, whose pieces, if it comes in such, are put together; `options`
/// need neither size nor format.
OnePage onePageOf(const support::Bytes& document, pagerex_options options = {});

}  // namespace safety

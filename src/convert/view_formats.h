#pragma once

#include "formats/format.h"
#include "htmlwriter/view.h"

namespace pagerex {

/// Writes the document in one of the views, its pages safe.
Status writeView(FormatJob& job, VIEW view);

template <VIEW view>
Status writeView(FormatJob& job) {
  return writeView(job, view);
}

}  // namespace pagerex

#pragma once

#include <cerrno>

#include "base/output_files.h"

namespace pagerex {

/// Calls a function of the host. An exception of it ends the conversion, and is told apart from those that a
/// damaged document causes: the output counts as cancelled.
template <class Result, class... Parameters, class... Arguments>
Result CallHost(OutputFiles& files, Result (*function)(Parameters...), const Arguments&... arguments) try {
  return function(arguments...);
} catch (...) {
  files.NoteError(ECANCELED);
  throw;
}

}  // namespace pagerex

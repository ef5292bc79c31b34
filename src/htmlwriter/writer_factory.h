#pragma once

#include "base/status.h"
#include "htmlwriter/env.h"

namespace pagerex {

/// Makes and releases the set of writers for an environment's view.
struct KWriterFactory {
  /// Releases the writers that `env` has, then builds those of `env.view` for a sub-document. kNothing on any
  /// failure; what was built so far stays in `env` for the next release.
  static Status CreateWriterByView(KEnv& env, mso_word::SUBDOC_TYPE type);
  static void ReleaseWriterByView(KEnv& env);
};

}  // namespace pagerex

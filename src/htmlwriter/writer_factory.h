#pragma once

#include "base/status.h"
#include "htmlwriter/env.h"

namespace pagerex {

/// Makes and releases the set of writers for an environment's view.
struct KWriterFactory {
  /// Releases the writers that `env` has, then builds those of `env.view` for a sub-document. kNothing on any
  /// failure, and `env` has none then.
  static Status CreateWriterByView(KEnv& env, mso_word::SUBDOC_TYPE type);
  static void ReleaseWriterByView(KEnv& env);
};

}  // namespace pagerex

#pragma once

#include "base/status.h"

namespace pagerex {

/// Who asked for a conversion, and hears of it. Called on the conversion's thread.
class KHost {
 public:
  KHost() = default;
  KHost(const KHost&) = delete;
  KHost& operator=(const KHost&) = delete;
  virtual ~KHost() = default;

  /// Whether a page's file is to be closed before `FinishPage` tells of it.
  virtual bool WantsClosedPages() const = 0;
  /// A page, from 1, has been written to `path`, valid during the call. kOk when the conversion may go on,
  /// which the call may wait for; kStopped otherwise.
  virtual Status FinishPage(int page, const char* path) = 0;
  /// The document has been written, successfully or not, its index not yet.
  virtual void EndTransform() = 0;
};

}  // namespace pagerex

#include "htmlwriter/env.h"

#include "htmlwriter/writer_interfaces.h"

namespace pagerex {

KEnv::KEnv(KHtmlConversionEnv& shared) : conversion(&shared) {}
KEnv::KEnv(KEnv&&) noexcept = default;
KEnv::~KEnv() = default;

KEnv KEnv::NestedIn(const KEnv& outer) {
  KEnv nested(*outer.conversion);
  const KStoryEnv& story = outer;
  static_cast<KStoryEnv&>(nested) = story;
  nested.view = VIEW_NORMAL;
  nested.pageSize = -1;
  nested.navigation = nullptr;
  nested.pap = outer.pap;
  return nested;
}

}  // namespace pagerex

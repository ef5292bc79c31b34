#pragma once

#include <chrono>
#include <cstddef>
#include <new>

#include "base/run_control.h"
#include "convert/result_builder.h"
#include "pagerex/convert.h"

namespace pagerex {

/// What the first version of the structure held.
constexpr size_t kLimitsSize = sizeof(pagerex_limits);

/// One call's limits, from its beginning on.
inline void arm(RunControl& control, const pagerex_limits& limits) {
  constexpr uint64_t kLongest = uint64_t{1} << 40;  // milliseconds: beyond that there is no deadline
  control.WatchFlag(limits.cancel);
  if (limits.deadline_ms != 0 && limits.deadline_ms < kLongest)
    control.EndAt(RunControl::Clock::now() + std::chrono::milliseconds(limits.deadline_ms));
}

/// Fills in `result` for a call that has no memory for anything else, or that threw what nobody expects.
template <class Function>
int answer(pagerex_result* result, const Function& function) {
  ResultBuilder builder(result);
  int code;
  try {
    code = function(builder);
  } catch (const std::bad_alloc&) {
    code = builder.End(PAGEREX_RESULT_OUT_OF_MEMORY);
  } catch (...) {
    code = builder.End(PAGEREX_RESULT_DAMAGED);
  }
  builder.Give(result);
  return code;
}

}  // namespace pagerex

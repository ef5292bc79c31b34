#pragma once

#include "base/progress.h"
#include "base/run_control.h"
#include "base/warnings.h"
#include "pagerex/convert.h"

namespace pagerex {

/// Makes the result of one call.
class ResultBuilder {
 public:
  void SetKind(int kind) { result_.kind = kind; }
  void SetWritten(const WrittenCounts& written, uint64_t bytes, uint32_t files);
  void Add(const Warnings& warnings);
  /// Warnings that will be added again.
  void Forget() { result_.warning_count = 0, result_.warnings_total = 0; }

  /// `error` is a value of errno, 0 for none. Returns `code`.
  int End(int code, int error = 0);

  /// To a host, whose structure may be null or too short.
  void Give(pagerex_result* out) const;

 private:
  void Spell();

  pagerex_result result_{};
};

/// The code for what ended a conversion; PAGEREX_RESULT_OK for nothing.
int codeOf(StopCause cause);

}  // namespace pagerex

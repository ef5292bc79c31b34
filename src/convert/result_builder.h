#pragma once

#include "base/progress.h"
#include "base/run_control.h"
#include "base/warnings.h"
#include "pagerex/convert.h"

namespace pagerex {

/// Makes the result of one call.
class ResultBuilder {
 public:
  /// For a host's structure, which may be null or too short.
  explicit ResultBuilder(const pagerex_result* out);

  void SetKind(int kind) { result_.kind = kind; }
  void SetWritten(const WrittenCounts& written, uint64_t bytes, uint32_t files);
  void Add(const Warnings& warnings);
  /// Whether the host has room for what the document says of itself.
  bool wantsSummary() const { return wantsSummary_; }
  void SetSummary(const pagerex_summary& summary) { result_.summary = summary; }
  /// Warnings that will be added again.
  void Forget() { result_.warning_count = 0, result_.warnings_total = 0; }

  /// `error` is a value of errno, 0 for none. Returns `code`.
  int End(int code, int error = 0);

  void Give(pagerex_result* out) const;

 private:
  void Spell();

  pagerex_result result_{};
  const bool wantsSummary_;
};

/// The code for what ended a conversion; PAGEREX_RESULT_OK for nothing.
int codeOf(StopCause cause);

}  // namespace pagerex

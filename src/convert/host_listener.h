#pragma once

#include "formats/format.h"
#include "pagerex/convert.h"

namespace pagerex {

/// Tells a host's functions how far a conversion has come, and ends it when they say so or throw.
class HostListener final : public FormatListener {
 public:
  /// None is owned. `length` of the main text in characters.
  HostListener(const pagerex_options& options, RunControl& control, uint64_t length);
  static bool IsWanted(const pagerex_options& options) { return options.progress || options.may_go_on; }

  /// Progress 0 and 1.
  void Begin() { Tell(0); }
  void Done();

  void Reached(uint32_t position) override;
  Status PageFinished(int page, const char* name) override;

 private:
  static constexpr int kSteps = 100;

  void Tell(int step);
  /// Waits for the host. False when it ends the conversion.
  bool MayGoOn();
  template <class Function>
  void Call(const Function& function);

  const pagerex_options& options_;
  RunControl& control_;
  uint64_t length_;
  uint64_t nextPosition_ = 0;  ///< of the main text, from which the next step is told
  int told_ = -1;
};

}  // namespace pagerex

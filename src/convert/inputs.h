#pragma once

#include <sys/types.h>

#include <cstdint>
#include <memory>

#include "base/byte_source.h"
#include "base/run_control.h"
#include "pagerex/convert.h"

namespace pagerex {

/// What a host gives to be read. Failures, and the end of the call that reads, look to the reader as if the
/// input ended; `error` and the call's control tell.
class InputSource : public ByteSource {
 public:
  /// Of the call that reads from now on, which may find well what failed before; null between calls. Not
  /// owned.
  void SetControl(RunControl* control) {
    control_ = control;
    if (control) error_ = 0;
  }
  /// A value of errno for the first failure of the call, 0 for none.
  int error() const { return error_; }
  /// Whether `device` and `inode` name the file that is read.
  virtual bool IsFile(dev_t device, ino_t inode) const;

 protected:
  /// Whether the input is to be read on.
  bool MayRead();
  void Fail(int error);
  /// When a function of the host throws.
  void Cancel();
  /// For a host that takes long.
  void LookAtClock();

 private:
  RunControl* control_ = nullptr;
  int error_ = 0;
};

/// Opens an input whose structure has been checked. Null, and `error` a value of errno, for a path that is
/// not there, must not be read or is no regular file, and for a function that fails; the control may tell
/// more.
std::unique_ptr<InputSource> openInput(const pagerex_input& input, RunControl& control, int& error);

}  // namespace pagerex

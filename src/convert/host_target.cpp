#include "convert/output_target.h"

namespace pagerex {
namespace {

class HostTarget final : public OutputTarget {
 public:
  HostTarget(const pagerex_output& output, RunControl& control) : output_(output), control_(control) {}

  void* Begin(const char* name, const char* mediaType) override {
    return Call<void*>(nullptr, [&] { return output_.begin(output_.user, name, mediaType); });
  }
  bool Write(void* file, const void* data, size_t length) override {
    return Call(1, [&] { return output_.write(output_.user, file, data, length); }) == 0;
  }
  bool End(void* file, bool complete) override {
    return !output_.end || Call(1, [&] { return output_.end(output_.user, file, complete); }) == 0;
  }

 private:
  /// A function that throws ends the conversion.
  template <class Result, class Function>
  Result Call(Result failure, const Function& function) {
    Result result = failure;
    try {
      result = function();
    } catch (...) {
      control_.Stop(StopCause::kCanceled);
    }
    control_.LookAtClock();
    return result;
  }

  const pagerex_output output_;
  RunControl& control_;
};

}  // namespace

std::unique_ptr<OutputTarget> makeHostTarget(const pagerex_output& output, RunControl& control) {
  return std::make_unique<HostTarget>(output, control);
}

}  // namespace pagerex

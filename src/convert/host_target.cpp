#include "convert/output_target.h"

namespace pagerex {
namespace {

/// A function of the host that throws has failed.
template <class Result, class Function>
Result guarded(Result failure, const Function& function) try {
  return function();
} catch (...) {
  return failure;
}

class HostTarget final : public OutputTarget {
 public:
  explicit HostTarget(const pagerex_output& output) : output_(output) {}

  void* Begin(const char* name, const char* mediaType) override {
    return guarded<void*>(nullptr, [&] { return output_.begin(output_.user, name, mediaType); });
  }
  bool Write(void* file, const void* data, size_t length) override {
    return guarded(1, [&] { return output_.write(output_.user, file, data, length); }) == 0;
  }
  bool End(void* file, bool complete) override {
    return !output_.end || guarded(1, [&] { return output_.end(output_.user, file, complete); }) == 0;
  }

 private:
  const pagerex_output output_;
};

}  // namespace

std::unique_ptr<OutputTarget> makeHostTarget(const pagerex_output& output) {
  return std::make_unique<HostTarget>(output);
}

}  // namespace pagerex

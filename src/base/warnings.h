#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pagerex {

/// What was left out of an output, or mended: numbers of PAGEREX_WARNING_....
enum class WarningCode : int32_t {
  kTableDamaged = 1,
  kOutside = 2,
  kEndedEarly = 3,
  kWorkLimit = 4,
  kOutputFull = 5,
  kPicture = 6,
  kLinkRemoved = 7,
  kPicturesOff = 8,
  kFileShort = 9,
  kStopped = 10,
};

struct Warning {
  WarningCode code;
  uint32_t count;
  std::string where;  ///< the first time
};

/// The warnings of a document or of a conversion, in the order in which they came. Of one code and place only
/// the first is kept, and counted; of one code no more than a few places, and the rest is counted with the
/// last of them.
class Warnings {
 public:
  static constexpr size_t kMostPlaces = 6;  ///< for each code

  void Add(WarningCode code, std::string_view where = {});
  const std::vector<Warning>& all() const { return all_; }

 private:
  std::vector<Warning> all_;
};

/// Null stands for nobody who listens.
inline void warn(Warnings* warnings, WarningCode code, std::string_view where = {}) {
  if (warnings) warnings->Add(code, where);
}

}  // namespace pagerex

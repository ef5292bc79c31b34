#include "base/warnings.h"

namespace pagerex {

void Warnings::Add(WarningCode code, std::string_view where) {
  Warning* last = nullptr;
  size_t places = 0;
  for (Warning& each : all_) {
    if (each.code != code) continue;
    last = &each;
    ++places;
    if (each.where == where) break;
  }
  if (last && (last->where == where || places >= kMostPlaces)) {
    ++last->count;
  } else {
    all_.push_back({code, 1, std::string(where)});
  }
}

}  // namespace pagerex

// Asks what the bytes are as a whole, and what their first half is.

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "pagerex/convert.h"

namespace {

/// Each answer has a name, and only no bytes are empty.
void check(const uint8_t* input, size_t size) {
  const int kind = pagerex_detect(input, size);
  const bool isNamed = kind == PAGEREX_KIND_UNKNOWN || std::strcmp(pagerex_kind_name(kind), "unknown") != 0;
  if (!isNamed || (kind == PAGEREX_KIND_EMPTY) != (size == 0)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  check(input, size);
  check(input, size / 2);
  return 0;
}
